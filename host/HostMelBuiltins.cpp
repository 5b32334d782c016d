#include "HostMelBuiltins.h"

#include "HostMelSession.h"
#include "HostOutput.h"
#include "HostPython.h"
#include "HostState.h"

namespace
{
void Add(HostMelSession& session, const QString& name, const QList<HostMelFlagSpec>& flags,
         const HostMelHandler& handler)
{
    HostMelBuiltin builtin;
    builtin.flags = flags;
    builtin.handler = handler;
    session.builtins.insert(name, builtin);
}

void AddValueCommand(HostMelSession& session, const QString& name, const HostMelValueHandler& handler)
{
    HostMelBuiltin builtin;
    builtin.valueHandler = handler;
    session.builtins.insert(name, builtin);
}

MStatus WrongArguments(const QString& name)
{
    HostMel::ReportError(QStringLiteral("Wrong number of arguments on call to %1.").arg(name));
    return MStatus::kInvalidParameter;
}

MString ToMString(const QString& text)
{
    return MString(text.toUtf8().constData());
}

// MEL's python command: an expression gives its value as a string ("" for None), statements
// run for their effects. One Python call decides which it is, so nothing runs twice; the code
// travels as hex so that no quoting can break it.
QString PythonRunner(const QString& code)
{
    static const QString runner = QStringLiteral(
        "(lambda bq2_ast, bq2_src: (lambda bq2_tree: "
        "(lambda bq2_value: '' if bq2_value is None else str(bq2_value))"
        "(eval(compile(bq2_ast.Expression(bq2_tree.body[0].value), '<maya console>', 'eval'), globals())) "
        "if len(bq2_tree.body) == 1 and isinstance(bq2_tree.body[0], bq2_ast.Expr) "
        "else (exec(compile(bq2_tree, '<maya console>', 'exec'), globals()), '')[1])"
        "(compile(bq2_src, '<maya console>', 'exec', bq2_ast.PyCF_ONLY_AST)))"
        "(__import__('ast'), bytes.fromhex('%1').decode('utf-8'))");
    return runner.arg(QString::fromLatin1(code.toUtf8().toHex()));
}

MStatus Print(const std::vector<HostMelValue>& values, HostMelValue& /*result*/)
{
    if (values.empty())
        return WrongArguments(QStringLiteral("print"));
    QString text;
    for (const HostMelValue& value : values)
    {
        if (!value.IsArray())
        {
            text += value.ToString();
            continue;
        }
        for (const QString& element : value.ToStringList())
            text += element + QLatin1Char('\n');
    }
    if (!text.isEmpty())
        HostOutput::Emit(text, MCommandMessage::kDisplay);
    return MStatus::kSuccess;
}

MStatus Size(const std::vector<HostMelValue>& values, HostMelValue& result)
{
    if (values.size() != 1)
        return WrongArguments(QStringLiteral("size"));
    result = HostMelValue::FromInt(values.front().Size());
    return MStatus::kSuccess;
}

MStatus Python(const HostMelCall& call, HostCommandResult& result)
{
    if (call.positionals.size() != 1)
        return WrongArguments(call.name);
    if (!HostPython::Initialize())
    {
        HostMel::ReportError(QStringLiteral("Python is not available."));
        return MStatus::kFailure;
    }
    QString value;
    if (!HostPython::EvaluateString(PythonRunner(call.positionals.first()), value))
        return MStatus::kFailure;
    result.setString(ToMString(value));
    return MStatus::kSuccess;
}

MStatus Eval(const HostMelCall& call, HostCommandResult& result)
{
    return HostMel::Execute(call.positionals.join(QLatin1Char(' ')), &result, false);
}

MStatus Source(const HostMelCall& call, HostCommandResult& /*result*/)
{
    if (call.positionals.size() != 1)
        return WrongArguments(call.name);
    return HostMel::SourceFile(call.positionals.first());
}

MStatus Quit(const HostMelCall& /*call*/, HostCommandResult& /*result*/)
{
    HostState::RequestQuit();
    return MStatus::kSuccess;
}

MStatus GetEnv(const HostMelCall& call, HostCommandResult& result)
{
    if (call.positionals.size() != 1)
        return WrongArguments(call.name);
    result.setString(ToMString(qEnvironmentVariable(call.positionals.first().toLocal8Bit().constData())));
    return MStatus::kSuccess;
}

MStatus PutEnv(const HostMelCall& call, HostCommandResult& /*result*/)
{
    if (call.positionals.size() != 2 || call.positionals.first().isEmpty())
        return WrongArguments(call.name);
    qputenv(call.positionals.first().toLocal8Bit().constData(), call.positionals.last().toLocal8Bit());
    return MStatus::kSuccess;
}

MStatus Exists(const HostMelCall& call, HostCommandResult& result)
{
    if (call.positionals.size() != 1)
        return WrongArguments(call.name);
    const QString& name = call.positionals.first();
    result.setInt(HostMel::CommandExists(name) || HostMel::ProcedureDefined(name) ? 1 : 0);
    return MStatus::kSuccess;
}

// "error" prints its message and stops the script; "warning" only prints.
MStatus Error(const HostMelCall& call, HostCommandResult& /*result*/)
{
    HostOutput::Emit(call.positionals.join(QLatin1Char(' ')), MCommandMessage::kError);
    return MStatus::kFailure;
}

MStatus Warning(const HostMelCall& call, HostCommandResult& /*result*/)
{
    HostOutput::Emit(call.positionals.join(QLatin1Char(' ')), MCommandMessage::kWarning);
    return MStatus::kSuccess;
}

MStatus GetExistingHistory(const HostMelCall& /*call*/, HostCommandResult& result)
{
    result.setString(ToMString(HostOutput::History()));
    return MStatus::kSuccess;
}

MStatus ClearExistingHistory(const HostMelCall& /*call*/, HostCommandResult& /*result*/)
{
    HostOutput::ClearHistory();
    return MStatus::kSuccess;
}

// Maya ships startsWith as a script; the host answers it as a command would.
MStatus StartsWith(const std::vector<HostMelValue>& values, HostMelValue& result)
{
    if (values.size() != 2)
        return WrongArguments(QStringLiteral("startsWith"));
    result = HostMelValue::FromInt(values.front().ToString().startsWith(values.back().ToString()) ? 1 : 0);
    return MStatus::kSuccess;
}
} // namespace

bool HostMelBuiltins::ToInt(const QString& text, int& value)
{
    const QString word = text.trimmed().toLower();
    if (word == QLatin1String("true") || word == QLatin1String("on") || word == QLatin1String("yes"))
    {
        value = 1;
        return true;
    }
    if (word == QLatin1String("false") || word == QLatin1String("off") || word == QLatin1String("no"))
    {
        value = 0;
        return true;
    }
    bool ok = false;
    const double number = word.toDouble(&ok);
    if (!ok || number < -2147483648.0 || number > 2147483647.0)
        return false;
    value = static_cast<int>(number);
    return true;
}

void HostMelBuiltins::Register(HostMelSession& session)
{
    AddValueCommand(session, QStringLiteral("print"), Print);
    AddValueCommand(session, QStringLiteral("size"), Size);
    AddValueCommand(session, QStringLiteral("startsWith"), StartsWith);
    Add(session, QStringLiteral("python"), {}, Python);
    Add(session, QStringLiteral("eval"), {}, Eval);
    Add(session, QStringLiteral("source"), {}, Source);
    Add(session, QStringLiteral("quit"),
        {{QStringLiteral("f"), QStringLiteral("force"), 0},
         {QStringLiteral("a"), QStringLiteral("abort"), 0},
         {QStringLiteral("ec"), QStringLiteral("exitCode"), 1}},
        Quit);
    Add(session, QStringLiteral("getenv"), {}, GetEnv);
    Add(session, QStringLiteral("putenv"), {}, PutEnv);
    Add(session, QStringLiteral("exists"), {}, Exists);
    Add(session, QStringLiteral("error"),
        {{QStringLiteral("sl"), QStringLiteral("showLineNumber"), 1},
         {QStringLiteral("n"), QStringLiteral("noContext"), 0}},
        Error);
    Add(session, QStringLiteral("warning"),
        {{QStringLiteral("sl"), QStringLiteral("showLineNumber"), 1},
         {QStringLiteral("n"), QStringLiteral("noContext"), 0}},
        Warning);

    session.substitutes.insert(QStringLiteral("xvGetExistingHistory"), GetExistingHistory);
    session.substitutes.insert(QStringLiteral("xvClearExistingHistory"), ClearExistingHistory);
}
