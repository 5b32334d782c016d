#include "HostMelDispatcher.h"

#include "HostCommandStack.h"
#include "HostCommandSyntax.h"
#include "HostMelInterpreter.h"
#include "HostMelParser.h"
#include "HostMelSession.h"
#include "HostPluginRegistry.h"
#include "HostVocabulary.h"

#include <maya/MArgList.h>
#include <maya/MPxCommand.h>

namespace
{
bool IsModeFlag(const QString& flag, const char* shortName, const char* longName)
{
    return flag == QLatin1Char('-') + QLatin1String(shortName) ||
           flag == QLatin1Char('-') + QLatin1String(longName);
}

// The words a token stands for on a command line: a flag, or each element of an array.
QStringList Words(const HostMelToken& token)
{
    if (!token.flag.isEmpty())
        return QStringList{token.flag};
    return token.value.ToStringList();
}

QString CommandString(const QString& name, const std::vector<HostMelToken>& tokens)
{
    QStringList parts{name};
    for (const HostMelToken& token : tokens)
        parts += Words(token);
    return parts.join(QLatin1Char(' '));
}

MStatus CallHandler(const HostMelHandler& handler, const HostMelCall& call, HostCommandResult& result)
{
    try
    {
        return handler(call, result);
    }
    catch (...)
    {
        // A handler's exception must not unwind through the MEL layer.
        return MStatus::kFailure;
    }
}

bool Report(const QString& message)
{
    HostMel::ReportError(message);
    return false;
}

class DepthScope
{
public:
    DepthScope() { ++HostMelSession::Instance().depth; }
    ~DepthScope() { --HostMelSession::Instance().depth; }
    DepthScope(const DepthScope&) = delete;
    DepthScope& operator=(const DepthScope&) = delete;
    bool TooDeep() const { return HostMelSession::Instance().depth > HostMelSession::MAX_DEPTH; }
};
} // namespace

bool HostMelDispatcher::Run(const QString& name, const std::vector<HostMelToken>& tokens,
                            HostMelValue& result)
{
    result = HostMelValue();
    if (const HostPluginCommand* command = HostPluginRegistry::FindCommand(name))
        return RunPluginCommand(*command, tokens, result);
    HostMelSession& session = HostMelSession::Instance();
    const auto builtin = session.builtins.constFind(name);
    if (builtin != session.builtins.constEnd())
        return RunBuiltin(name, builtin.value(), tokens, result);
    const auto runTime = session.runTimeCommands.constFind(name);
    if (runTime != session.runTimeCommands.constEnd())
    {
        HostCommandResult commandResult;
        const MStatus status = HostMel::Execute(runTime.value(), &commandResult, false);
        result = HostMelValue::FromCommandResult(commandResult);
        return status;
    }
    const std::shared_ptr<HostMelProcedure> procedure = session.procedures.value(name);
    if (!procedure && HostVocabulary::IsMayaCommand(name))
        return Report(QStringLiteral("%1: this host knows the command by name only and cannot run it.").arg(name));
    if (!procedure)
        return Report(QStringLiteral("Cannot find procedure \"%1\".").arg(name));
    const auto substitute = session.substitutes.constFind(name);
    if (substitute == session.substitutes.constEnd())
        return RunProcedure(procedure, tokens, result);
    HostMelCall call;
    call.name = name;
    for (const HostMelToken& token : tokens)
        call.positionals += Words(token);
    HostCommandResult commandResult;
    const HostMelHandler handler = substitute.value();
    const MStatus status = CallHandler(handler, call, commandResult);
    result = HostMelValue::FromCommandResult(commandResult);
    return status;
}

bool HostMelDispatcher::BuildCall(const QString& name, const QList<HostMelFlagSpec>& specs,
                                  const std::vector<HostMelToken>& tokens, HostMelCall& call)
{
    call = HostMelCall();
    call.name = name;
    // Query and edit decide how many values the other flags take, wherever they stand.
    for (const HostMelToken& token : tokens)
    {
        call.query = call.query || IsModeFlag(token.flag, "q", "query");
        call.edit = call.edit || IsModeFlag(token.flag, "e", "edit");
    }
    for (size_t i = 0; i < tokens.size(); ++i)
    {
        const HostMelToken& token = tokens[i];
        if (token.flag.isEmpty())
        {
            call.positionals += Words(token);
            continue;
        }
        if (IsModeFlag(token.flag, "q", "query") || IsModeFlag(token.flag, "e", "edit"))
            continue;
        const QString bare = token.flag.mid(1);
        const HostMelFlagSpec* match = nullptr;
        for (const HostMelFlagSpec& candidate : specs)
        {
            if (candidate.shortName == bare || candidate.longName == bare)
                match = &candidate;
        }
        if (!match)
            return Report(QStringLiteral("Invalid flag '%1'").arg(token.flag));
        const int count = call.query ? 0 : match->argCount;
        QStringList values;
        for (int k = 0; k < count; ++k)
        {
            if (++i >= tokens.size())
                return Report(QStringLiteral("Flag '%1' must be passed %2.")
                                  .arg(token.flag, count == 1 ? QStringLiteral("an argument")
                                                              : QStringLiteral("%1 arguments").arg(count)));
            values.append(Words(tokens[i]).join(QLatin1Char(' ')));
        }
        call.flags.append(qMakePair(match->longName.isEmpty() ? match->shortName : match->longName, values));
    }
    return true;
}

bool HostMelDispatcher::RunBuiltin(const QString& name, const HostMelBuiltin& builtin,
                                   const std::vector<HostMelToken>& tokens, HostMelValue& result)
{
    // Copies: a handler may replace or remove its own registration.
    if (builtin.valueHandler)
    {
        std::vector<HostMelValue> values;
        for (const HostMelToken& token : tokens)
        {
            if (!token.flag.isEmpty())
                return Report(QStringLiteral("Invalid flag '%1'").arg(token.flag));
            values.push_back(token.value);
        }
        const HostMelValueHandler handler = builtin.valueHandler;
        try
        {
            return handler(values, result);
        }
        catch (...)
        {
            return false;
        }
    }
    HostMelCall call;
    if (!BuildCall(name, builtin.flags, tokens, call))
        return false;
    const HostMelHandler handler = builtin.handler;
    HostCommandResult commandResult;
    const MStatus status = CallHandler(handler, call, commandResult);
    result = HostMelValue::FromCommandResult(commandResult);
    return status;
}

bool HostMelDispatcher::RunPluginCommand(const HostPluginCommand& command,
                                         const std::vector<HostMelToken>& tokens, HostMelValue& result)
{
    // Copied first: the plug-in may deregister the command while it runs.
    const MCreatorFunction creator = command.creator;
    const MCreateSyntaxFunction syntaxFunction = command.syntax;
    MArgList args;
    for (const HostMelToken& token : tokens)
    {
        for (const QString& word : Words(token))
            args.addArg(MString(word.toUtf8().constData()));
    }
    HostCommandStack::Push(CommandString(command.name, tokens));
    MStatus status = MStatus::kFailure;
    try
    {
        MPxCommand* instance = static_cast<MPxCommand*>(creator());
        if (instance)
        {
            HostCommandSyntax::Set(instance, syntaxFunction ? syntaxFunction() : MSyntax());
            status = instance->doIt(args);
            delete instance;
        }
    }
    catch (...)
    {
        status = MStatus::kFailure;
    }
    result = HostMelValue::FromCommandResult(HostCommandStack::Pop());
    return status;
}

bool HostMelDispatcher::RunProcedure(const std::shared_ptr<HostMelProcedure>& procedure,
                                     const std::vector<HostMelToken>& tokens, HostMelValue& result)
{
    if (tokens.size() != procedure->params.size())
        return Report(QStringLiteral("Wrong number of arguments on call to %1.").arg(procedure->name));
    DepthScope depth;
    if (depth.TooDeep())
        return Report(QStringLiteral("Procedure calls are nested too deeply in %1.").arg(procedure->name));
    if (!procedure->body)
    {
        const HostMelParser::Result parsed = HostMelParser::Parse(procedure->bodyText, procedure->bodyLine);
        if (!parsed.program)
        {
            HostMelSession::Instance().currentLine = parsed.errorLine;
            return Report(parsed.error);
        }
        procedure->body = parsed.program;
    }
    HostMelScope locals;
    for (size_t i = 0; i < tokens.size(); ++i)
    {
        const HostMelParam& param = procedure->params[i];
        HostMelValue value =
            tokens[i].flag.isEmpty() ? tokens[i].value : HostMelValue::FromString(tokens[i].flag);
        auto variable = std::make_shared<HostMelVariable>();
        variable->type = param.type;
        if (!value.ConvertTo(param.type, variable->value))
            return Report(
                QStringLiteral("Wrong type of argument %1 on call to %2.").arg(i + 1).arg(procedure->name));
        locals.insert(param.name, variable);
    }
    // The body stays alive even if the procedure is redefined while it runs.
    const std::shared_ptr<HostMelProgram> body = procedure->body;
    HostMelLineScope lineScope;
    HostMelInterpreter interpreter(locals, false);
    if (interpreter.Run(body->statements) == HostMelInterpreter::Flow::Error)
        return false;
    if (procedure->returnType == HostMelValue::Type::None)
        return true;
    if (!interpreter.ReturnValue().ConvertTo(procedure->returnType, result))
        return Report(QStringLiteral("The value returned by %1 has the wrong type.").arg(procedure->name));
    return true;
}
