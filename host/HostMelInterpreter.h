#pragma once
#include "HostMelAst.h"
#include "HostMelSession.h"

// Runs parsed MEL in one scope: the global table for top-level code, a procedure's own table
// for its body. Errors are reported through HostMel::ReportError as they happen and stop the run.
class HostMelInterpreter
{
public:
    enum class Flow
    {
        Normal,
        Break,
        Continue,
        Return,
        Error
    };

    HostMelInterpreter(HostMelScope& scope, bool topLevel);

    Flow Run(const std::vector<HostMelStatementPtr>& statements);
    // The value of the last statement run (a command's result, an expression's value).
    const HostMelValue& LastValue() const { return last_; }
    const HostMelValue& ReturnValue() const { return return_; }

private:
    Flow Execute(const HostMelStatement& statement);
    Flow ExecuteDeclaration(const HostMelStatement& statement);
    Flow ExecuteIf(const HostMelStatement& statement);
    Flow ExecuteLoop(const HostMelStatement& statement);
    Flow ExecuteForIn(const HostMelStatement& statement);
    // Runs a loop body; true if the loop goes on, with `flow` set when it must end.
    bool LoopBody(const HostMelStatement& body, Flow& flow);
    bool Declare(const QString& name, HostMelValue::Type type, bool global, const HostMelValue* init);

    bool Evaluate(const HostMelExpr& expr, HostMelValue& result);
    bool EvaluateCall(const HostMelExpr& expr, HostMelValue& result);
    bool EvaluateCatch(const HostMelExpr& expr, bool quiet, HostMelValue& result);
    bool EvaluateArray(const HostMelExpr& expr, HostMelValue& result);
    bool EvaluateUnary(const HostMelExpr& expr, HostMelValue& result);
    bool EvaluateBinary(const HostMelExpr& expr, HostMelValue& result);
    bool EvaluateAssign(const HostMelExpr& expr, HostMelValue& result);
    bool EvaluateStep(const HostMelExpr& expr, HostMelValue& result);
    bool ReadVariable(const HostMelExpr& expr, HostMelValue& result);
    bool Store(const HostMelExpr& target, const HostMelValue& value, HostMelValue& stored);
    bool Combine(const QString& op, const HostMelValue& left, const HostMelValue& right,
                 HostMelValue& result);
    bool Compare(const QString& op, const HostMelValue& left, const HostMelValue& right,
                 HostMelValue& result);

    std::shared_ptr<HostMelVariable> Lookup(const QString& name) const;
    bool Fail(const QString& message, int line = 0);

    HostMelScope& scope_;
    bool topLevel_;
    HostMelValue last_;
    HostMelValue return_;
};
