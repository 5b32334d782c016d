#include "HostMelInterpreter.h"

#include "HostMelDispatcher.h"
#include "HostOutput.h"

#include <cmath>

namespace
{
QString TypeName(HostMelValue::Type type)
{
    switch (type)
    {
    case HostMelValue::Type::Int:
        return QStringLiteral("int");
    case HostMelValue::Type::Float:
        return QStringLiteral("float");
    case HostMelValue::Type::String:
        return QStringLiteral("string");
    case HostMelValue::Type::IntArray:
        return QStringLiteral("int[]");
    case HostMelValue::Type::FloatArray:
        return QStringLiteral("float[]");
    case HostMelValue::Type::StringArray:
        return QStringLiteral("string[]");
    case HostMelValue::Type::None:
        break;
    }
    return QStringLiteral("void");
}

HostMelValue Number(double value, bool integer)
{
    return integer ? HostMelValue::FromNumbers({value}, true).At(0) : HostMelValue::FromFloat(value);
}
} // namespace

HostMelInterpreter::HostMelInterpreter(HostMelScope& scope, bool topLevel)
    : scope_(scope), topLevel_(topLevel)
{
}

bool HostMelInterpreter::Fail(const QString& message, int line)
{
    if (line > 0)
        HostMelSession::Instance().currentLine = line;
    HostMel::ReportError(message);
    return false;
}

std::shared_ptr<HostMelVariable> HostMelInterpreter::Lookup(const QString& name) const
{
    return scope_.value(name);
}

HostMelInterpreter::Flow HostMelInterpreter::Run(const std::vector<HostMelStatementPtr>& statements)
{
    for (const HostMelStatementPtr& statement : statements)
    {
        const Flow flow = Execute(*statement);
        if (flow != Flow::Normal)
            return flow;
    }
    return Flow::Normal;
}

HostMelInterpreter::Flow HostMelInterpreter::Execute(const HostMelStatement& statement)
{
    using Kind = HostMelStatement::Kind;
    if (statement.kind == Kind::Empty)
        return Flow::Normal;
    HostMelSession::Instance().currentLine = statement.line;
    last_ = HostMelValue();
    switch (statement.kind)
    {
    case Kind::Block:
        return Run(statement.children);
    case Kind::Expression:
        return Evaluate(*statement.expr, last_) ? Flow::Normal : Flow::Error;
    case Kind::Declaration:
        return ExecuteDeclaration(statement);
    case Kind::If:
        return ExecuteIf(statement);
    case Kind::While:
    case Kind::DoWhile:
    case Kind::For:
        return ExecuteLoop(statement);
    case Kind::ForIn:
        return ExecuteForIn(statement);
    case Kind::Return:
        return_ = HostMelValue();
        if (statement.expr && !Evaluate(*statement.expr, return_))
            return Flow::Error;
        return Flow::Return;
    case Kind::Break:
        return Flow::Break;
    case Kind::Continue:
        return Flow::Continue;
    case Kind::Procedure:
    {
        HostMelSession& session = HostMelSession::Instance();
        statement.procedure->sourceFile =
            session.sourceFiles.isEmpty() ? QString() : session.sourceFiles.last();
        session.procedures.insert(statement.procedure->name, statement.procedure);
        return Flow::Normal;
    }
    case Kind::Empty:
        break;
    }
    return Flow::Normal;
}

bool HostMelInterpreter::Declare(const QString& name, HostMelValue::Type type, bool global,
                                 const HostMelValue* init)
{
    HostMelValue value = HostMelValue::Default(type);
    if (init && !init->ConvertTo(type, value))
        return Fail(QStringLiteral("Cannot convert data of type %1 to type %2.")
                        .arg(TypeName(init->GetType()), TypeName(type)));
    HostMelScope& table = global ? HostMelSession::Instance().globals : scope_;
    std::shared_ptr<HostMelVariable> variable = table.value(name);
    if (variable && variable->type != type)
        return Fail(
            QStringLiteral("Invalid redeclaration of variable \"$%1\" as a different type.").arg(name));
    if (!variable)
    {
        variable = std::make_shared<HostMelVariable>();
        variable->type = type;
        table.insert(name, variable);
    }
    // A global declared again keeps its value unless given a new one.
    if (!global || init || variable->value.IsNone())
        variable->value = value;
    if (global && !topLevel_)
        scope_.insert(name, variable);
    return true;
}

HostMelInterpreter::Flow HostMelInterpreter::ExecuteDeclaration(const HostMelStatement& statement)
{
    for (const HostMelDeclarator& declarator : statement.declarators)
    {
        const HostMelValue::Type type =
            declarator.array ? HostMelValue::ArrayType(statement.declType) : statement.declType;
        HostMelValue init;
        if (declarator.init && !Evaluate(*declarator.init, init))
            return Flow::Error;
        if (!Declare(declarator.name, type, statement.global, declarator.init ? &init : nullptr))
            return Flow::Error;
    }
    return Flow::Normal;
}

HostMelInterpreter::Flow HostMelInterpreter::ExecuteIf(const HostMelStatement& statement)
{
    HostMelValue condition;
    if (!Evaluate(*statement.expr, condition))
        return Flow::Error;
    if (condition.IsTrue())
        return Execute(*statement.children.at(0));
    if (statement.children.size() > 1)
        return Execute(*statement.children.at(1));
    return Flow::Normal;
}

bool HostMelInterpreter::LoopBody(const HostMelStatement& body, Flow& flow)
{
    const Flow bodyFlow = Execute(body);
    if (bodyFlow == Flow::Break)
    {
        flow = Flow::Normal;
        return false;
    }
    if (bodyFlow == Flow::Return || bodyFlow == Flow::Error)
    {
        flow = bodyFlow;
        return false;
    }
    return true;
}

HostMelInterpreter::Flow HostMelInterpreter::ExecuteLoop(const HostMelStatement& statement)
{
    using Kind = HostMelStatement::Kind;
    HostMelValue scratch;
    if (statement.init && !Evaluate(*statement.init, scratch))
        return Flow::Error;
    bool first = true;
    Flow flow = Flow::Normal;
    while (true)
    {
        const bool testCondition = statement.kind != Kind::DoWhile || !first;
        first = false;
        if (testCondition && statement.expr)
        {
            HostMelValue condition;
            if (!Evaluate(*statement.expr, condition))
                return Flow::Error;
            if (!condition.IsTrue())
                return Flow::Normal;
        }
        if (!LoopBody(*statement.children.at(0), flow))
            return flow;
        if (statement.step && !Evaluate(*statement.step, scratch))
            return Flow::Error;
    }
}

HostMelInterpreter::Flow HostMelInterpreter::ExecuteForIn(const HostMelStatement& statement)
{
    HostMelValue items;
    if (!Evaluate(*statement.expr, items))
        return Flow::Error;
    if (!items.IsArray())
    {
        Fail(QStringLiteral("The for-in loop needs an array."));
        return Flow::Error;
    }
    std::shared_ptr<HostMelVariable> variable = Lookup(statement.variable);
    if (!variable)
    {
        if (!Declare(statement.variable, HostMelValue::ElementType(items.GetType()), false, nullptr))
            return Flow::Error;
        variable = Lookup(statement.variable);
    }
    Flow flow = Flow::Normal;
    for (int i = 0; i < items.Size(); ++i)
    {
        if (!items.At(i).ConvertTo(variable->type, variable->value))
        {
            Fail(QStringLiteral("Cannot convert data of type %1 to type %2.")
                     .arg(TypeName(items.At(i).GetType()), TypeName(variable->type)));
            return Flow::Error;
        }
        if (!LoopBody(*statement.children.at(0), flow))
            return flow;
    }
    return Flow::Normal;
}

bool HostMelInterpreter::Evaluate(const HostMelExpr& expr, HostMelValue& result)
{
    using Kind = HostMelExpr::Kind;
    if (HostMelSession::Instance().StackExhausted())
        return Fail(QStringLiteral("The script nests too deeply."), expr.line);
    switch (expr.kind)
    {
    case Kind::Literal:
        result = expr.literal;
        return true;
    case Kind::Variable:
    case Kind::Index:
        return ReadVariable(expr, result);
    case Kind::ArrayLiteral:
        return EvaluateArray(expr, result);
    case Kind::Unary:
        return EvaluateUnary(expr, result);
    case Kind::Binary:
        return EvaluateBinary(expr, result);
    case Kind::Ternary:
    {
        HostMelValue condition;
        if (!Evaluate(*expr.operands[0], condition))
            return false;
        return Evaluate(*expr.operands[condition.IsTrue() ? 1 : 2], result);
    }
    case Kind::Assign:
        return EvaluateAssign(expr, result);
    case Kind::Step:
        return EvaluateStep(expr, result);
    case Kind::Call:
        return EvaluateCall(expr, result);
    }
    return false;
}

bool HostMelInterpreter::EvaluateCall(const HostMelExpr& expr, HostMelValue& result)
{
    const HostMelCallNode& call = *expr.call;
    if (call.name == QLatin1String("catch") || call.name == QLatin1String("catchQuiet"))
        return EvaluateCatch(expr, call.name == QLatin1String("catchQuiet"), result);
    std::vector<HostMelToken> tokens;
    for (const HostMelArg& arg : call.args)
    {
        HostMelToken token;
        token.flag = arg.flag;
        if (arg.value && !Evaluate(*arg.value, token.value))
            return false;
        tokens.push_back(token);
    }
    HostMelSession::Instance().currentLine = expr.line;
    HostMelLineScope lineScope;
    result = HostMelValue();
    return HostMelDispatcher::Run(call.name, tokens, result);
}

// catch and catchQuiet run their argument and turn its failure into the value 1.
bool HostMelInterpreter::EvaluateCatch(const HostMelExpr& expr, bool quiet, HostMelValue& result)
{
    const HostMelCallNode& call = *expr.call;
    if (call.args.size() != 1 || !call.args[0].value)
        return Fail(QStringLiteral("Wrong number of arguments on call to %1.").arg(call.name), expr.line);
    if (quiet)
        HostOutput::BeginErrorSuppression();
    HostMelValue ignored;
    bool succeeded = false;
    {
        HostMelLineScope lineScope;
        succeeded = Evaluate(*call.args[0].value, ignored);
    }
    if (quiet)
        HostOutput::EndErrorSuppression();
    result = HostMelValue::FromInt(succeeded ? 0 : 1);
    return true;
}

bool HostMelInterpreter::EvaluateArray(const HostMelExpr& expr, HostMelValue& result)
{
    std::vector<HostMelValue> elements;
    bool anyString = false;
    bool anyFloat = false;
    for (const HostMelExprPtr& operand : expr.operands)
    {
        HostMelValue element;
        if (!Evaluate(*operand, element))
            return false;
        if (element.IsArray() || element.IsNone())
            return Fail(QStringLiteral("An array element must be a single value."), expr.line);
        anyString = anyString || element.GetType() == HostMelValue::Type::String;
        anyFloat = anyFloat || element.GetType() == HostMelValue::Type::Float;
        elements.push_back(element);
    }
    result = HostMelValue::Default(anyString          ? HostMelValue::Type::StringArray
                                   : anyFloat         ? HostMelValue::Type::FloatArray
                                   : elements.empty() ? HostMelValue::Type::StringArray
                                                      : HostMelValue::Type::IntArray);
    for (const HostMelValue& element : elements)
        result.Append(element);
    return true;
}

bool HostMelInterpreter::EvaluateUnary(const HostMelExpr& expr, HostMelValue& result)
{
    HostMelValue operand;
    if (!Evaluate(*expr.operands[0], operand))
        return false;
    if (operand.IsArray())
        return Fail(QStringLiteral("The operator \"%1\" cannot be used on an array.").arg(expr.op),
                    expr.line);
    if (expr.op == QLatin1String("!"))
    {
        result = HostMelValue::FromInt(operand.IsTrue() ? 0 : 1);
        return true;
    }
    const bool integer = operand.GetType() == HostMelValue::Type::Int;
    const double value = operand.ToDouble();
    result = Number(expr.op == QLatin1String("-") ? -value : value, integer);
    return true;
}

bool HostMelInterpreter::EvaluateBinary(const HostMelExpr& expr, HostMelValue& result)
{
    HostMelValue left;
    if (!Evaluate(*expr.operands[0], left))
        return false;
    if (expr.op == QLatin1String("&&") || expr.op == QLatin1String("||"))
    {
        const bool isAnd = expr.op == QLatin1String("&&");
        if (left.IsTrue() != isAnd)
        {
            result = HostMelValue::FromInt(isAnd ? 0 : 1);
            return true;
        }
        HostMelValue right;
        if (!Evaluate(*expr.operands[1], right))
            return false;
        result = HostMelValue::FromInt(right.IsTrue() ? 1 : 0);
        return true;
    }
    HostMelValue right;
    if (!Evaluate(*expr.operands[1], right))
        return false;
    HostMelSession::Instance().currentLine = expr.line;
    return Combine(expr.op, left, right, result);
}

bool HostMelInterpreter::Combine(const QString& op, const HostMelValue& left, const HostMelValue& right,
                                 HostMelValue& result)
{
    if (left.IsArray() || right.IsArray() || left.IsNone() || right.IsNone())
        return Fail(QStringLiteral("The operator \"%1\" needs two single values.").arg(op));
    static const QStringList comparisons = {QStringLiteral("=="), QStringLiteral("!="), QStringLiteral("<"),
                                            QStringLiteral(">"),  QStringLiteral("<="), QStringLiteral(">=")};
    if (comparisons.contains(op))
        return Compare(op, left, right, result);
    const bool strings =
        left.GetType() == HostMelValue::Type::String || right.GetType() == HostMelValue::Type::String;
    if (op == QLatin1String("+") && strings)
    {
        result = HostMelValue::FromString(left.ToString() + right.ToString());
        return true;
    }
    const bool integers =
        left.GetType() != HostMelValue::Type::Float && right.GetType() != HostMelValue::Type::Float;
    const double a = integers ? left.ToInt() : left.ToDouble();
    const double b = integers ? right.ToInt() : right.ToDouble();
    if ((op == QLatin1String("/") || op == QLatin1String("%")) && b == 0.0)
        return Fail(QStringLiteral("Division by zero."));
    if (op == QLatin1String("+"))
        result = Number(a + b, integers);
    else if (op == QLatin1String("-"))
        result = Number(a - b, integers);
    else if (op == QLatin1String("*"))
        result = Number(a * b, integers);
    else if (op == QLatin1String("/"))
        result = Number(integers ? std::trunc(a / b) : a / b, integers);
    else if (op == QLatin1String("%"))
        result = Number(std::fmod(a, b), integers);
    else
        return Fail(QStringLiteral("Syntax error"));
    return true;
}

bool HostMelInterpreter::Compare(const QString& op, const HostMelValue& left, const HostMelValue& right,
                                 HostMelValue& result)
{
    int order = 0;
    if (left.GetType() == HostMelValue::Type::String && right.GetType() == HostMelValue::Type::String)
    {
        order = QString::compare(left.ToString(), right.ToString());
    }
    else
    {
        const double a = left.ToDouble();
        const double b = right.ToDouble();
        order = a < b ? -1 : (a > b ? 1 : 0);
    }
    bool truth = false;
    if (op == QLatin1String("=="))
        truth = order == 0;
    else if (op == QLatin1String("!="))
        truth = order != 0;
    else if (op == QLatin1String("<"))
        truth = order < 0;
    else if (op == QLatin1String(">"))
        truth = order > 0;
    else if (op == QLatin1String("<="))
        truth = order <= 0;
    else
        truth = order >= 0;
    result = HostMelValue::FromInt(truth ? 1 : 0);
    return true;
}

bool HostMelInterpreter::ReadVariable(const HostMelExpr& expr, HostMelValue& result)
{
    const std::shared_ptr<HostMelVariable> variable = Lookup(expr.name);
    if (!variable)
        return Fail(QStringLiteral("\"$%1\" is an undeclared variable.").arg(expr.name), expr.line);
    if (expr.kind == HostMelExpr::Kind::Variable)
    {
        result = variable->value;
        return true;
    }
    if (!variable->value.IsArray())
        return Fail(QStringLiteral("\"$%1\" is not an array.").arg(expr.name), expr.line);
    HostMelValue index;
    if (!Evaluate(*expr.operands[0], index))
        return false;
    result = variable->value.At(index.ToInt());
    return true;
}

bool HostMelInterpreter::Store(const HostMelExpr& target, const HostMelValue& value, HostMelValue& stored)
{
    std::shared_ptr<HostMelVariable> variable = Lookup(target.name);
    const bool indexed = target.kind == HostMelExpr::Kind::Index;
    if (!variable)
    {
        // Assignment declares a variable of the value's type, as MEL does.
        if (value.IsNone() || (indexed && value.IsArray()))
            return Fail(QStringLiteral("\"$%1\" is an undeclared variable.").arg(target.name), target.line);
        const HostMelValue::Type type = indexed ? HostMelValue::ArrayType(value.GetType()) : value.GetType();
        if (!Declare(target.name, type, false, nullptr))
            return false;
        variable = Lookup(target.name);
    }
    if (!indexed)
    {
        if (!value.ConvertTo(variable->type, variable->value))
            return Fail(QStringLiteral("Cannot convert data of type %1 to type %2.")
                            .arg(TypeName(value.GetType()), TypeName(variable->type)),
                        target.line);
        stored = variable->value;
        return true;
    }
    if (!variable->value.IsArray())
        return Fail(QStringLiteral("\"$%1\" is not an array.").arg(target.name), target.line);
    if (value.IsArray() || value.IsNone())
        return Fail(QStringLiteral("Cannot convert data of type %1 to type %2.")
                        .arg(TypeName(value.GetType()), TypeName(HostMelValue::ElementType(variable->type))),
                    target.line);
    HostMelValue index;
    if (!Evaluate(*target.operands[0], index))
        return false;
    if (index.ToInt() < 0)
        return Fail(QStringLiteral("Array index out of bounds."), target.line);
    // Far beyond any real script; refused so that a stray index cannot exhaust memory.
    if (index.ToInt() > 10000000)
        return Fail(QStringLiteral("Array index out of bounds."), target.line);
    variable->value.SetAt(index.ToInt(), value);
    stored = variable->value.At(index.ToInt());
    return true;
}

bool HostMelInterpreter::EvaluateAssign(const HostMelExpr& expr, HostMelValue& result)
{
    const HostMelExpr& target = *expr.operands[0];
    HostMelValue value;
    if (!Evaluate(*expr.operands[1], value))
        return false;
    if (expr.op != QLatin1String("="))
    {
        HostMelValue current;
        if (!ReadVariable(target, current))
            return false;
        HostMelSession::Instance().currentLine = expr.line;
        HostMelValue combined;
        if (!Combine(expr.op.left(1), current, value, combined))
            return false;
        value = combined;
    }
    return Store(target, value, result);
}

bool HostMelInterpreter::EvaluateStep(const HostMelExpr& expr, HostMelValue& result)
{
    const HostMelExpr& target = *expr.operands[0];
    HostMelValue current;
    if (!ReadVariable(target, current))
        return false;
    HostMelValue next;
    if (!Combine(expr.op.left(1), current, HostMelValue::FromInt(1), next))
        return false;
    HostMelValue stored;
    if (!Store(target, next, stored))
        return false;
    result = expr.prefix ? stored : current;
    return true;
}
