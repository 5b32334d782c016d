#pragma once
#include "HostMelAst.h"
#include "HostMelScanner.h"
#include <QtCore/QString>
#include <cstddef>
#include <memory>

// Turns MEL text into a syntax tree. The whole text is parsed before anything runs, so a syntax
// error anywhere means nothing of it runs, as in Maya.
class HostMelParser
{
public:
    struct Result
    {
        std::shared_ptr<HostMelProgram> program; // null on a syntax error
        QString error;
        int errorLine = 0;
    };

    static Result Parse(const QString& text, int firstLine = 1);

private:
    HostMelParser(const QString& text, int firstLine);

    bool ParseStatements(std::vector<HostMelStatementPtr>& statements, bool untilBrace);
    HostMelStatementPtr ParseStatement();
    HostMelStatementPtr ParseBlock();
    HostMelStatementPtr ParseIf(int line);
    HostMelStatementPtr ParseWhile(int line);
    HostMelStatementPtr ParseDoWhile(int line);
    HostMelStatementPtr ParseFor(int line);
    HostMelStatementPtr ParseReturn(int line);
    HostMelStatementPtr ParseDeclaration(int line, bool global);
    HostMelStatementPtr ParseProcedure(int line, bool global);
    HostMelStatementPtr ParseExpressionStatement(int line, HostMelExprPtr expr);
    HostMelStatementPtr ParseCondition(HostMelStatement::Kind kind, int line);
    bool ParseType(HostMelValue::Type& type);
    bool EndStatement();

    HostMelExprPtr ParseCommand(bool insideBackquotes);
    HostMelExprPtr ParseCommandOperand();
    HostMelExprPtr ParseBackquoted();

    HostMelExprPtr ParseExpression();
    HostMelExprPtr ParseTernary();
    HostMelExprPtr ParseBinary(int level);
    HostMelExprPtr ParseUnary();
    HostMelExprPtr ParsePostfix();
    HostMelExprPtr ParsePrimary();
    HostMelExprPtr ParseVariable();
    HostMelExprPtr ParseArrayLiteral();
    HostMelExprPtr ParseCallArguments(const QString& name, int line);

    HostMelExprPtr MakeExpr(HostMelExpr::Kind kind, int line) const;
    HostMelExprPtr MakeBinary(const QString& op, HostMelExprPtr left, HostMelExprPtr right) const;
    bool Fail(const QString& message = QString());
    // Fail, for the many places that return a node.
    std::nullptr_t Failure(const QString& message = QString());
    bool Failed() const { return scanner_.HasError(); }

    HostMelScanner scanner_;
    int depth_ = 0;
};
