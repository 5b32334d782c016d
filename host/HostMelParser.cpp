#include "HostMelParser.h"

#include <QtCore/QStringList>

namespace
{
// Deeper nesting than this is refused rather than risking the stack.
constexpr int MAX_DEPTH = 200;
// "a + b + c ..." nests to the left; a longer chain is refused for the same reason.
constexpr int MAX_CHAIN = 1000;

class DepthGuard
{
public:
    explicit DepthGuard(int& depth) : depth_(depth) { ++depth_; }
    ~DepthGuard() { --depth_; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;

private:
    int& depth_;
};

bool TypeFromName(const QString& name, HostMelValue::Type& type)
{
    if (name == QLatin1String("string"))
        type = HostMelValue::Type::String;
    else if (name == QLatin1String("int"))
        type = HostMelValue::Type::Int;
    else if (name == QLatin1String("float"))
        type = HostMelValue::Type::Float;
    else
        return false;
    return true;
}

bool IsTypeName(const QString& name)
{
    return name == QLatin1String("string") || name == QLatin1String("int") ||
           name == QLatin1String("float") || name == QLatin1String("vector") ||
           name == QLatin1String("matrix");
}

bool ConstantValue(const QString& name, int& value)
{
    static const QStringList truths = {QStringLiteral("true"), QStringLiteral("on"), QStringLiteral("yes")};
    static const QStringList falsehoods = {QStringLiteral("false"), QStringLiteral("off"),
                                           QStringLiteral("no")};
    if (truths.contains(name))
        value = 1;
    else if (falsehoods.contains(name))
        value = 0;
    else
        return false;
    return true;
}

// A bare command word that reads as a number is one: "5", "-2", "1.5", "1e3", "0x1f".
bool WordAsNumber(const QString& word, HostMelValue& value)
{
    bool ok = false;
    if (word.startsWith(QLatin1String("0x")) || word.startsWith(QLatin1String("0X")))
    {
        const qlonglong number = word.mid(2).toLongLong(&ok, 16);
        if (ok)
            value = HostMelValue::FromInt(static_cast<int>(static_cast<quint32>(number)));
        return ok;
    }
    const double number = word.toDouble(&ok);
    if (!ok || word.contains(QLatin1String("inf"), Qt::CaseInsensitive) ||
        word.contains(QLatin1String("nan"), Qt::CaseInsensitive))
        return false;
    const bool isFloat =
        word.contains(QLatin1Char('.')) || word.contains(QLatin1Char('e')) || word.contains(QLatin1Char('E'));
    value = isFloat ? HostMelValue::FromFloat(number) : HostMelValue::FromNumbers({number}, true).At(0);
    return true;
}
} // namespace

HostMelParser::HostMelParser(const QString& text, int firstLine) : scanner_(text, firstLine) {}

HostMelParser::Result HostMelParser::Parse(const QString& text, int firstLine)
{
    HostMelParser parser(text, firstLine);
    auto program = std::make_shared<HostMelProgram>();
    Result result;
    if (parser.ParseStatements(program->statements, false) && !parser.Failed())
    {
        result.program = program;
        return result;
    }
    parser.Fail();
    result.error = parser.scanner_.Error();
    result.errorLine = parser.scanner_.ErrorLine();
    return result;
}

bool HostMelParser::Fail(const QString& message)
{
    scanner_.SetError(message.isEmpty() ? QStringLiteral("Syntax error") : message);
    return false;
}

std::nullptr_t HostMelParser::Failure(const QString& message)
{
    Fail(message);
    return nullptr;
}

HostMelExprPtr HostMelParser::MakeExpr(HostMelExpr::Kind kind, int line) const
{
    auto expr = std::make_unique<HostMelExpr>();
    expr->kind = kind;
    expr->line = line;
    return expr;
}

HostMelExprPtr HostMelParser::MakeBinary(const QString& op, HostMelExprPtr left, HostMelExprPtr right) const
{
    auto expr = MakeExpr(HostMelExpr::Kind::Binary, left->line);
    expr->op = op;
    expr->operands.push_back(std::move(left));
    expr->operands.push_back(std::move(right));
    return expr;
}

bool HostMelParser::ParseStatements(std::vector<HostMelStatementPtr>& statements, bool untilBrace)
{
    while (true)
    {
        scanner_.SkipSpace();
        if (Failed())
            return false;
        if (scanner_.AtEnd())
            return untilBrace ? Fail(QStringLiteral("Unterminated block")) : true;
        if (scanner_.Peek() == QLatin1Char('}'))
        {
            if (!untilBrace)
                return Fail();
            scanner_.Advance();
            return true;
        }
        HostMelStatementPtr statement = ParseStatement();
        if (!statement || Failed())
            return false;
        statements.push_back(std::move(statement));
    }
}

HostMelStatementPtr HostMelParser::ParseStatement()
{
    DepthGuard guard(depth_);
    if (depth_ > MAX_DEPTH)
        return Failure(QStringLiteral("Too deeply nested"));
    scanner_.SkipSpace();
    const int line = scanner_.Line();
    const QChar c = scanner_.Peek();
    if (c == QLatin1Char(';'))
    {
        scanner_.Advance();
        auto statement = std::make_unique<HostMelStatement>();
        statement->line = line;
        return statement;
    }
    if (c == QLatin1Char('{'))
        return ParseBlock();
    QString word;
    if (!scanner_.PeekIdentifier(word))
        return ParseExpressionStatement(line, ParseExpression());

    int constant = 0;
    if (IsTypeName(word))
        return ParseDeclaration(line, false);
    if (ConstantValue(word, constant))
        return ParseExpressionStatement(line, ParseExpression());
    const HostMelScanner::Mark mark = scanner_.Save();
    scanner_.ReadIdentifier(word);
    if (word == QLatin1String("if"))
        return ParseIf(line);
    if (word == QLatin1String("while"))
        return ParseCondition(HostMelStatement::Kind::While, line);
    if (word == QLatin1String("do"))
        return ParseDoWhile(line);
    if (word == QLatin1String("for"))
        return ParseFor(line);
    if (word == QLatin1String("return"))
        return ParseReturn(line);
    if (word == QLatin1String("break") || word == QLatin1String("continue"))
    {
        auto statement = std::make_unique<HostMelStatement>();
        statement->kind =
            word == QLatin1String("break") ? HostMelStatement::Kind::Break : HostMelStatement::Kind::Continue;
        statement->line = line;
        return EndStatement() ? std::move(statement) : nullptr;
    }
    if (word == QLatin1String("proc"))
        return ParseProcedure(line, false);
    if (word == QLatin1String("global"))
    {
        QString next;
        if (scanner_.PeekIdentifier(next) && next == QLatin1String("proc"))
        {
            scanner_.ReadIdentifier(next);
            return ParseProcedure(line, true);
        }
        return ParseDeclaration(line, true);
    }
    scanner_.SkipSpace();
    const bool callSyntax = scanner_.Peek() == QLatin1Char('(');
    scanner_.Restore(mark);
    return ParseExpressionStatement(line, callSyntax ? ParseExpression() : ParseCommand(false));
}

bool HostMelParser::EndStatement()
{
    scanner_.SkipSpace();
    if (scanner_.Accept(QStringLiteral(";")))
        return true;
    // The last statement of a script or a block may go without its semicolon.
    if (scanner_.AtEnd() || scanner_.Peek() == QLatin1Char('}'))
        return !Failed();
    return Fail();
}

HostMelStatementPtr HostMelParser::ParseExpressionStatement(int line, HostMelExprPtr expr)
{
    if (!expr || Failed())
        return nullptr;
    auto statement = std::make_unique<HostMelStatement>();
    statement->kind = HostMelStatement::Kind::Expression;
    statement->line = line;
    statement->expr = std::move(expr);
    return EndStatement() ? std::move(statement) : nullptr;
}

HostMelStatementPtr HostMelParser::ParseBlock()
{
    auto statement = std::make_unique<HostMelStatement>();
    statement->kind = HostMelStatement::Kind::Block;
    statement->line = scanner_.Line();
    scanner_.Advance(); // "{"
    return ParseStatements(statement->children, true) ? std::move(statement) : nullptr;
}

HostMelStatementPtr HostMelParser::ParseCondition(HostMelStatement::Kind kind, int line)
{
    auto statement = std::make_unique<HostMelStatement>();
    statement->kind = kind;
    statement->line = line;
    if (!scanner_.Accept(QStringLiteral("(")))
        return Failure();
    statement->expr = ParseExpression();
    if (!statement->expr || !scanner_.Accept(QStringLiteral(")")))
        return Failure();
    HostMelStatementPtr body = ParseStatement();
    if (!body)
        return nullptr;
    statement->children.push_back(std::move(body));
    return statement;
}

HostMelStatementPtr HostMelParser::ParseIf(int line)
{
    HostMelStatementPtr statement = ParseCondition(HostMelStatement::Kind::If, line);
    if (!statement)
        return nullptr;
    QString word;
    if (scanner_.PeekIdentifier(word) && word == QLatin1String("else"))
    {
        scanner_.ReadIdentifier(word);
        HostMelStatementPtr otherwise = ParseStatement();
        if (!otherwise)
            return nullptr;
        statement->children.push_back(std::move(otherwise));
    }
    return statement;
}

HostMelStatementPtr HostMelParser::ParseDoWhile(int line)
{
    auto statement = std::make_unique<HostMelStatement>();
    statement->kind = HostMelStatement::Kind::DoWhile;
    statement->line = line;
    HostMelStatementPtr body = ParseStatement();
    QString word;
    if (!body || !scanner_.ReadIdentifier(word) || word != QLatin1String("while") ||
        !scanner_.Accept(QStringLiteral("(")))
        return Failure();
    statement->children.push_back(std::move(body));
    statement->expr = ParseExpression();
    if (!statement->expr || !scanner_.Accept(QStringLiteral(")")))
        return Failure();
    return EndStatement() ? std::move(statement) : nullptr;
}

HostMelStatementPtr HostMelParser::ParseFor(int line)
{
    auto statement = std::make_unique<HostMelStatement>();
    statement->kind = HostMelStatement::Kind::For;
    statement->line = line;
    if (!scanner_.Accept(QStringLiteral("(")))
        return Failure();
    const HostMelScanner::Mark mark = scanner_.Save();
    QString name;
    QString word;
    if (scanner_.Accept(QStringLiteral("$")) && scanner_.ReadIdentifier(name) &&
        scanner_.ReadIdentifier(word) && word == QLatin1String("in"))
    {
        statement->kind = HostMelStatement::Kind::ForIn;
        statement->variable = name;
        statement->expr = ParseExpression();
    }
    else
    {
        scanner_.Restore(mark);
        const auto part = [this](const QString& end) -> HostMelExprPtr
        {
            scanner_.SkipSpace();
            return scanner_.Peek() == end.at(0) ? nullptr : ParseExpression();
        };
        statement->init = part(QStringLiteral(";"));
        if (Failed() || !scanner_.Accept(QStringLiteral(";")))
            return Failure();
        statement->expr = part(QStringLiteral(";"));
        if (Failed() || !scanner_.Accept(QStringLiteral(";")))
            return Failure();
        statement->step = part(QStringLiteral(")"));
    }
    if (Failed() || !scanner_.Accept(QStringLiteral(")")))
        return Failure();
    HostMelStatementPtr body = ParseStatement();
    if (!body)
        return nullptr;
    statement->children.push_back(std::move(body));
    return statement;
}

HostMelStatementPtr HostMelParser::ParseReturn(int line)
{
    auto statement = std::make_unique<HostMelStatement>();
    statement->kind = HostMelStatement::Kind::Return;
    statement->line = line;
    scanner_.SkipSpace();
    if (!scanner_.AtEnd() && scanner_.Peek() != QLatin1Char(';') && scanner_.Peek() != QLatin1Char('}'))
    {
        statement->expr = ParseExpression();
        if (!statement->expr)
            return nullptr;
    }
    return EndStatement() ? std::move(statement) : nullptr;
}

bool HostMelParser::ParseType(HostMelValue::Type& type)
{
    QString name;
    if (!scanner_.ReadIdentifier(name))
        return Fail();
    if (!TypeFromName(name, type))
        return Fail(QStringLiteral("The type \"%1\" is not supported").arg(name));
    return true;
}

HostMelStatementPtr HostMelParser::ParseDeclaration(int line, bool global)
{
    auto statement = std::make_unique<HostMelStatement>();
    statement->kind = HostMelStatement::Kind::Declaration;
    statement->line = line;
    statement->global = global;
    if (!ParseType(statement->declType))
        return nullptr;
    do
    {
        HostMelDeclarator declarator;
        if (!scanner_.Accept(QStringLiteral("$")) || !scanner_.ReadIdentifier(declarator.name))
            return Failure();
        if (scanner_.Accept(QStringLiteral("[")))
        {
            declarator.array = true;
            scanner_.SkipSpace();
            // A declared size is accepted and ignored: MEL arrays grow as needed.
            if (scanner_.Peek() != QLatin1Char(']') && !ParseExpression())
                return nullptr;
            if (!scanner_.Accept(QStringLiteral("]")))
                return Failure();
        }
        if (scanner_.AcceptOperator(QStringLiteral("="), QStringLiteral("=")))
        {
            declarator.init = ParseExpression();
            if (!declarator.init)
                return nullptr;
        }
        statement->declarators.push_back(std::move(declarator));
    } while (scanner_.Accept(QStringLiteral(",")));
    return EndStatement() ? std::move(statement) : nullptr;
}

HostMelStatementPtr HostMelParser::ParseProcedure(int line, bool global)
{
    auto procedure = std::make_shared<HostMelProcedure>();
    procedure->global = global;
    QString first;
    if (!scanner_.ReadIdentifier(first))
        return Failure();
    procedure->name = first;
    HostMelValue::Type type = HostMelValue::Type::None;
    if (TypeFromName(first, type))
    {
        const HostMelScanner::Mark mark = scanner_.Save();
        const bool array = scanner_.Accept(QStringLiteral("[")) && scanner_.Accept(QStringLiteral("]"));
        QString name;
        if (scanner_.ReadIdentifier(name))
        {
            procedure->returnType = array ? HostMelValue::ArrayType(type) : type;
            procedure->name = name;
        }
        else
        {
            scanner_.Restore(mark);
        }
    }
    if (!scanner_.Accept(QStringLiteral("(")))
        return Failure();
    if (!scanner_.Accept(QStringLiteral(")")))
    {
        do
        {
            HostMelParam param;
            if (!ParseType(param.type))
                return nullptr;
            if (!scanner_.Accept(QStringLiteral("$")) || !scanner_.ReadIdentifier(param.name))
                return Failure();
            if (scanner_.Accept(QStringLiteral("[")))
            {
                if (!scanner_.Accept(QStringLiteral("]")))
                    return Failure();
                param.type = HostMelValue::ArrayType(param.type);
            }
            procedure->params.push_back(param);
        } while (scanner_.Accept(QStringLiteral(",")));
        if (!scanner_.Accept(QStringLiteral(")")))
            return Failure();
    }
    if (!scanner_.ReadBracedText(procedure->bodyText, procedure->bodyLine))
        return Failure();
    auto statement = std::make_unique<HostMelStatement>();
    statement->kind = HostMelStatement::Kind::Procedure;
    statement->line = line;
    statement->procedure = procedure;
    return statement;
}

HostMelExprPtr HostMelParser::ParseCommand(bool insideBackquotes)
{
    scanner_.SkipSpace();
    auto expr = MakeExpr(HostMelExpr::Kind::Call, scanner_.Line());
    expr->call = std::make_unique<HostMelCallNode>();
    if (!scanner_.ReadIdentifier(expr->call->name))
        return Failure();
    while (true)
    {
        scanner_.SkipSpace();
        if (Failed())
            return nullptr;
        const QChar c = scanner_.Peek();
        if (scanner_.AtEnd() || c == QLatin1Char(';') || c == QLatin1Char('}') ||
            (insideBackquotes && c == QLatin1Char('`')))
            break;
        if (c == QLatin1Char(')'))
            return Failure();
        HostMelArg arg;
        if (c == QLatin1Char('-') && HostMelScanner::IsIdentifierStart(scanner_.Peek(1)))
        {
            scanner_.Advance();
            QString flag;
            scanner_.ReadIdentifier(flag);
            arg.flag = QLatin1Char('-') + flag;
        }
        else
        {
            arg.value = ParseCommandOperand();
            int chain = 0;
            while (arg.value && scanner_.AcceptOperator(QStringLiteral("+"), QStringLiteral("+=")))
            {
                if (++chain > MAX_CHAIN)
                    return Failure(QStringLiteral("Expression too long"));
                HostMelExprPtr right = ParseCommandOperand();
                if (!right)
                    return nullptr;
                arg.value = MakeBinary(QStringLiteral("+"), std::move(arg.value), std::move(right));
            }
            if (!arg.value)
                return nullptr;
        }
        expr->call->args.push_back(std::move(arg));
    }
    return expr;
}

HostMelExprPtr HostMelParser::ParseCommandOperand()
{
    scanner_.SkipSpace();
    const int line = scanner_.Line();
    const QChar c = scanner_.Peek();
    if (c == QLatin1Char('"') || c == QLatin1Char('$') || c == QLatin1Char('{') || c == QLatin1Char('`'))
        return ParsePrimary();
    if (c == QLatin1Char('('))
    {
        scanner_.Advance();
        HostMelExprPtr inner = ParseExpression();
        if (!inner || !scanner_.Accept(QStringLiteral(")")))
            return Failure();
        return inner;
    }
    QString word;
    if (!scanner_.ReadBareWord(word))
        return Failure();
    auto expr = MakeExpr(HostMelExpr::Kind::Literal, line);
    if (!WordAsNumber(word, expr->literal))
        expr->literal = HostMelValue::FromString(word);
    return expr;
}

HostMelExprPtr HostMelParser::ParseBackquoted()
{
    scanner_.Advance(); // "`"
    const HostMelScanner::Mark mark = scanner_.Save();
    const int line = scanner_.Line();
    QString name;
    if (!scanner_.ReadIdentifier(name))
        return Failure();
    scanner_.SkipSpace();
    HostMelExprPtr expr;
    if (scanner_.Peek() == QLatin1Char('('))
    {
        expr = ParseCallArguments(name, line);
    }
    else
    {
        scanner_.Restore(mark);
        expr = ParseCommand(true);
    }
    if (!expr || !scanner_.Accept(QStringLiteral("`")))
        return Failure();
    return expr;
}

HostMelExprPtr HostMelParser::ParseExpression()
{
    DepthGuard guard(depth_);
    if (depth_ > MAX_DEPTH)
        return Failure(QStringLiteral("Too deeply nested"));
    HostMelExprPtr target = ParseTernary();
    if (!target)
        return nullptr;
    QString op;
    for (const char* candidate : {"+=", "-=", "*=", "/="})
    {
        if (scanner_.AcceptOperator(QString::fromLatin1(candidate)))
        {
            op = QString::fromLatin1(candidate);
            break;
        }
    }
    if (op.isEmpty() && scanner_.AcceptOperator(QStringLiteral("="), QStringLiteral("=")))
        op = QStringLiteral("=");
    if (op.isEmpty())
        return target;
    if (target->kind != HostMelExpr::Kind::Variable && target->kind != HostMelExpr::Kind::Index)
        return Failure();
    HostMelExprPtr value = ParseExpression();
    if (!value)
        return nullptr;
    auto assign = MakeExpr(HostMelExpr::Kind::Assign, target->line);
    assign->op = op;
    assign->operands.push_back(std::move(target));
    assign->operands.push_back(std::move(value));
    return assign;
}

HostMelExprPtr HostMelParser::ParseTernary()
{
    HostMelExprPtr condition = ParseBinary(0);
    if (!condition || !scanner_.AcceptOperator(QStringLiteral("?")))
        return condition;
    HostMelExprPtr whenTrue = ParseExpression();
    if (!whenTrue || !scanner_.Accept(QStringLiteral(":")))
        return Failure();
    HostMelExprPtr whenFalse = ParseExpression();
    if (!whenFalse)
        return nullptr;
    auto expr = MakeExpr(HostMelExpr::Kind::Ternary, condition->line);
    expr->operands.push_back(std::move(condition));
    expr->operands.push_back(std::move(whenTrue));
    expr->operands.push_back(std::move(whenFalse));
    return expr;
}

HostMelExprPtr HostMelParser::ParseBinary(int level)
{
    // Operators by precedence, loosest first; each with what may not follow it.
    struct Operator
    {
        const char* text;
        const char* notFollowedBy;
    };
    static const std::vector<std::vector<Operator>> levels = {
        {{"||", ""}},
        {{"&&", ""}},
        {{"==", ""}, {"!=", ""}},
        {{"<=", ""}, {">=", ""}, {"<", "<"}, {">", ">"}},
        {{"+", "+="}, {"-", "-="}},
        {{"*", "="}, {"/", "="}, {"%", "="}},
    };
    if (level >= static_cast<int>(levels.size()))
        return ParseUnary();
    HostMelExprPtr left = ParseBinary(level + 1);
    for (int chain = 0; left; ++chain)
    {
        if (chain > MAX_CHAIN)
            return Failure(QStringLiteral("Expression too long"));
        QString op;
        for (const Operator& candidate : levels[static_cast<size_t>(level)])
        {
            if (scanner_.AcceptOperator(QString::fromLatin1(candidate.text),
                                        QString::fromLatin1(candidate.notFollowedBy)))
            {
                op = QString::fromLatin1(candidate.text);
                break;
            }
        }
        if (op.isEmpty())
            break;
        HostMelExprPtr right = ParseBinary(level + 1);
        if (!right)
            return nullptr;
        left = MakeBinary(op, std::move(left), std::move(right));
    }
    return left;
}

HostMelExprPtr HostMelParser::ParseUnary()
{
    DepthGuard guard(depth_);
    if (depth_ > MAX_DEPTH)
        return Failure(QStringLiteral("Too deeply nested"));
    scanner_.SkipSpace();
    const int line = scanner_.Line();
    for (const char* step : {"++", "--"})
    {
        if (scanner_.AcceptOperator(QString::fromLatin1(step)))
        {
            HostMelExprPtr target = ParsePostfix();
            if (!target ||
                (target->kind != HostMelExpr::Kind::Variable && target->kind != HostMelExpr::Kind::Index))
                return Failure();
            auto expr = MakeExpr(HostMelExpr::Kind::Step, line);
            expr->op = QString::fromLatin1(step);
            expr->prefix = true;
            expr->operands.push_back(std::move(target));
            return expr;
        }
    }
    for (const char* op : {"!", "-", "+"})
    {
        if (scanner_.AcceptOperator(QString::fromLatin1(op), QStringLiteral("=")))
        {
            HostMelExprPtr operand = ParseUnary();
            if (!operand)
                return nullptr;
            auto expr = MakeExpr(HostMelExpr::Kind::Unary, line);
            expr->op = QString::fromLatin1(op);
            expr->operands.push_back(std::move(operand));
            return expr;
        }
    }
    return ParsePostfix();
}

HostMelExprPtr HostMelParser::ParsePostfix()
{
    HostMelExprPtr expr = ParsePrimary();
    if (!expr || (expr->kind != HostMelExpr::Kind::Variable && expr->kind != HostMelExpr::Kind::Index))
        return expr;
    for (const char* step : {"++", "--"})
    {
        if (scanner_.AcceptOperator(QString::fromLatin1(step)))
        {
            auto stepExpr = MakeExpr(HostMelExpr::Kind::Step, expr->line);
            stepExpr->op = QString::fromLatin1(step);
            stepExpr->operands.push_back(std::move(expr));
            return stepExpr;
        }
    }
    return expr;
}

HostMelExprPtr HostMelParser::ParsePrimary()
{
    scanner_.SkipSpace();
    const int line = scanner_.Line();
    const QChar c = scanner_.Peek();
    if (c == QLatin1Char('"'))
    {
        auto expr = MakeExpr(HostMelExpr::Kind::Literal, line);
        QString text;
        if (!scanner_.ReadString(text))
            return Failure();
        expr->literal = HostMelValue::FromString(text);
        return expr;
    }
    if (c == QLatin1Char('$'))
        return ParseVariable();
    if (c == QLatin1Char('('))
    {
        scanner_.Advance();
        HostMelExprPtr inner = ParseExpression();
        if (!inner || !scanner_.Accept(QStringLiteral(")")))
            return Failure();
        return inner;
    }
    if (c == QLatin1Char('{'))
        return ParseArrayLiteral();
    if (c == QLatin1Char('`'))
        return ParseBackquoted();
    if (c.isDigit() || (c == QLatin1Char('.') && scanner_.Peek(1).isDigit()))
    {
        auto expr = MakeExpr(HostMelExpr::Kind::Literal, line);
        if (!scanner_.ReadNumber(expr->literal))
            return Failure();
        return expr;
    }
    QString name;
    if (!scanner_.ReadIdentifier(name))
        return Failure();
    int constant = 0;
    if (ConstantValue(name, constant))
    {
        auto expr = MakeExpr(HostMelExpr::Kind::Literal, line);
        expr->literal = HostMelValue::FromInt(constant);
        return expr;
    }
    scanner_.SkipSpace();
    if (scanner_.Peek() != QLatin1Char('('))
        return Failure();
    return ParseCallArguments(name, line);
}

HostMelExprPtr HostMelParser::ParseVariable()
{
    const int line = scanner_.Line();
    QString name;
    if (!scanner_.Accept(QStringLiteral("$")) || !scanner_.ReadIdentifier(name))
        return Failure();
    if (!scanner_.Accept(QStringLiteral("[")))
    {
        auto expr = MakeExpr(HostMelExpr::Kind::Variable, line);
        expr->name = name;
        return expr;
    }
    auto expr = MakeExpr(HostMelExpr::Kind::Index, line);
    expr->name = name;
    HostMelExprPtr index = ParseExpression();
    if (!index || !scanner_.Accept(QStringLiteral("]")))
        return Failure();
    expr->operands.push_back(std::move(index));
    return expr;
}

HostMelExprPtr HostMelParser::ParseArrayLiteral()
{
    auto expr = MakeExpr(HostMelExpr::Kind::ArrayLiteral, scanner_.Line());
    scanner_.Advance(); // "{"
    if (scanner_.Accept(QStringLiteral("}")))
        return expr;
    do
    {
        HostMelExprPtr element = ParseExpression();
        if (!element)
            return nullptr;
        expr->operands.push_back(std::move(element));
    } while (scanner_.Accept(QStringLiteral(",")));
    if (!scanner_.Accept(QStringLiteral("}")))
        return Failure();
    return expr;
}

HostMelExprPtr HostMelParser::ParseCallArguments(const QString& name, int line)
{
    auto expr = MakeExpr(HostMelExpr::Kind::Call, line);
    expr->call = std::make_unique<HostMelCallNode>();
    expr->call->name = name;
    expr->call->callSyntax = true;
    scanner_.Accept(QStringLiteral("("));
    if (scanner_.Accept(QStringLiteral(")")))
        return expr;
    do
    {
        HostMelArg arg;
        arg.value = ParseExpression();
        if (!arg.value)
            return nullptr;
        expr->call->args.push_back(std::move(arg));
    } while (scanner_.Accept(QStringLiteral(",")));
    if (!scanner_.Accept(QStringLiteral(")")))
        return Failure();
    return expr;
}
