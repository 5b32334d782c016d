#pragma once
#include "HostMelValue.h"
#include <QtCore/QString>
#include <memory>
#include <vector>

// The syntax tree of the substitute's MEL.

struct HostMelExpr;
struct HostMelStatement;
using HostMelExprPtr = std::unique_ptr<HostMelExpr>;
using HostMelStatementPtr = std::unique_ptr<HostMelStatement>;

// One argument of a command: a flag as written ("-of"), or a value.
struct HostMelArg
{
    QString flag; // empty for a value
    HostMelExprPtr value;
};

// A command or procedure call, in command syntax (`cmd -flag value arg`) or call syntax (`proc(a, b)`).
struct HostMelCallNode
{
    QString name;
    bool callSyntax = false;
    std::vector<HostMelArg> args;
};

struct HostMelExpr
{
    enum class Kind
    {
        Literal,
        Variable,     // name
        Index,        // name[operands[0]]
        ArrayLiteral, // {operands...}
        Unary,        // op operands[0]: "-", "!", "+"
        Binary,       // operands[0] op operands[1]
        Ternary,      // operands[0] ? operands[1] : operands[2]
        Assign,       // target operands[0] (Variable or Index), op "=", "+=", ..., value operands[1]
        Step,         // "++" or "--" on operands[0], prefix or postfix
        Call          // call
    };

    Kind kind = Kind::Literal;
    int line = 1;
    HostMelValue literal;
    QString name;
    QString op;
    bool prefix = false;
    std::vector<HostMelExprPtr> operands;
    std::unique_ptr<HostMelCallNode> call;
};

struct HostMelParam
{
    QString name;
    HostMelValue::Type type = HostMelValue::Type::String;
};

// A procedure as defined; its body is kept as text and parsed on its first call, so that a
// definition never fails for a construct only its body uses.
struct HostMelProgram;
struct HostMelProcedure
{
    QString name;
    bool global = false;
    HostMelValue::Type returnType = HostMelValue::Type::None;
    std::vector<HostMelParam> params;
    QString bodyText;
    int bodyLine = 1;
    QString sourceFile; // empty when entered interactively
    std::shared_ptr<HostMelProgram> body;
};

struct HostMelDeclarator
{
    QString name;
    bool array = false;
    HostMelExprPtr init;
};

struct HostMelStatement
{
    enum class Kind
    {
        Empty,
        Block,       // children
        Expression,  // expr
        Declaration, // global, declType, declarators
        If,          // expr, children[0] then, children[1] else (optional)
        While,       // expr, children[0]
        DoWhile,     // children[0], expr
        For,         // init, expr (optional), step, children[0]
        ForIn,       // variable, expr, children[0]
        Return,      // expr (optional)
        Break,
        Continue,
        Procedure // procedure
    };

    Kind kind = Kind::Empty;
    int line = 1;
    HostMelExprPtr expr;
    HostMelExprPtr init;
    HostMelExprPtr step;
    std::vector<HostMelStatementPtr> children;
    bool global = false;
    HostMelValue::Type declType = HostMelValue::Type::None;
    std::vector<HostMelDeclarator> declarators;
    QString variable;
    std::shared_ptr<HostMelProcedure> procedure;
};

struct HostMelProgram
{
    std::vector<HostMelStatementPtr> statements;
};
