#include "HostMel.h"

#include "HostMelInterpreter.h"
#include "HostMelParser.h"
#include "HostMelSession.h"
#include "HostOutput.h"
#include "HostPluginRegistry.h"
#include "HostState.h"
#include "HostVocabulary.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>

namespace
{
QString EchoText(const QString& text)
{
    QString echo = text;
    while (!echo.isEmpty() && echo.back().isSpace())
        echo.chop(1);
    if (!echo.endsWith(QLatin1Char(';')))
        echo += QLatin1Char(';');
    return echo + QLatin1Char('\n');
}

// Relative names are looked up as Maya does: as given, then in the user's script folder, then
// along MAYA_SCRIPT_PATH.
QString ResolveScript(const QString& path)
{
    if (QFileInfo(path).isFile() || QDir::isAbsolutePath(path))
        return path;
    QStringList folders{HostState::UserScriptDir()};
    folders += qEnvironmentVariable("MAYA_SCRIPT_PATH").split(QLatin1Char(':'), Qt::SkipEmptyParts);
    for (const QString& folder : folders)
    {
        const QString candidate = QDir(folder).filePath(path);
        if (QFileInfo(candidate).isFile())
            return candidate;
    }
    return path;
}

QStringList Sorted(QStringList names)
{
    std::sort(names.begin(), names.end());
    return names;
}
} // namespace

bool HostMelCall::HasFlag(const QString& longName) const
{
    for (const auto& flag : flags)
    {
        if (flag.first == longName)
            return true;
    }
    return false;
}

QString HostMelCall::FlagValue(const QString& longName, int index) const
{
    for (const auto& flag : flags)
    {
        if (flag.first == longName)
            return flag.second.value(index);
    }
    return QString();
}

QString HostMelCall::LastPositional() const
{
    return positionals.isEmpty() ? QString() : positionals.last();
}

MStatus HostMel::Execute(const QString& text, HostCommandResult* result, bool displayEnabled)
{
    if (result)
        result->reset();
    if (displayEnabled)
        HostOutput::Emit(EchoText(text), MCommandMessage::kHistory);
    HostMelSession& session = HostMelSession::Instance();
    HostMelLineScope lineScope;
    const HostMelParser::Result parsed = HostMelParser::Parse(text);
    if (!parsed.program)
    {
        session.currentLine = parsed.errorLine;
        ReportError(parsed.error);
        return MStatus::kFailure;
    }
    if (session.depth >= HostMelSession::MAX_DEPTH)
    {
        ReportError(QStringLiteral("Scripts are nested too deeply."));
        return MStatus::kFailure;
    }
    const char frame = 0;
    const bool outermost = session.stackBase == nullptr;
    if (outermost)
        session.stackBase = &frame;
    ++session.depth;
    HostMelInterpreter interpreter(session.globals, true);
    const HostMelInterpreter::Flow flow = interpreter.Run(parsed.program->statements);
    --session.depth;
    if (outermost)
        session.stackBase = nullptr;
    if (flow == HostMelInterpreter::Flow::Error)
        return MStatus::kFailure;
    const HostMelValue& value = interpreter.LastValue();
    if (result)
        value.ToCommandResult(*result);
    if (displayEnabled && !value.IsNone())
    {
        const QString shown = value.DisplayText();
        if (!shown.isEmpty())
            HostOutput::Emit(shown, MCommandMessage::kResult);
    }
    return MStatus::kSuccess;
}

void HostMel::RegisterCommand(const QString& name, const QList<HostMelFlagSpec>& flags,
                              const HostMelHandler& handler)
{
    if (name.isEmpty() || !handler)
        return;
    HostMelBuiltin builtin;
    builtin.flags = flags;
    builtin.handler = handler;
    HostMelSession::Instance().builtins.insert(name, builtin);
}

void HostMel::UnregisterCommand(const QString& name)
{
    HostMelSession::Instance().builtins.remove(name);
}

bool HostMel::CommandExists(const QString& name)
{
    const HostMelSession& session = HostMelSession::Instance();
    return session.builtins.contains(name) || session.runTimeCommands.contains(name) ||
           HostPluginRegistry::FindCommand(name) != nullptr || HostVocabulary::IsMayaCommand(name);
}

void HostMel::RegisterProcedureSubstitute(const QString& name, const HostMelHandler& handler)
{
    if (name.isEmpty() || !handler)
        return;
    HostMelSession::Instance().substitutes.insert(name, handler);
}

bool HostMel::ProcedureDefined(const QString& name)
{
    return HostMelSession::Instance().procedures.contains(name);
}

QStringList HostMel::MelInfo()
{
    const HostMelSession& session = HostMelSession::Instance();
    QStringList commands = session.builtins.keys();
    commands += HostPlugins::Commands();
    commands += HostVocabulary::MayaCommands();
    commands.removeDuplicates();
    return Sorted(commands) + Sorted(session.runTimeCommands.keys()) + Sorted(session.procedures.keys());
}

QString HostMel::WhatIs(const QString& name)
{
    const HostMelSession& session = HostMelSession::Instance();
    if (session.builtins.contains(name) || HostPluginRegistry::FindCommand(name) ||
        HostVocabulary::IsMayaCommand(name))
        return QStringLiteral("Command");
    if (session.runTimeCommands.contains(name))
        return QStringLiteral("Run Time Command");
    const std::shared_ptr<HostMelProcedure> procedure = session.procedures.value(name);
    if (procedure)
    {
        if (procedure->sourceFile.isEmpty())
            return QStringLiteral("Mel procedure entered interactively.");
        return QStringLiteral("Mel procedure found in: %1").arg(procedure->sourceFile);
    }
    if (name.startsWith(QLatin1Char('$')))
    {
        const std::shared_ptr<HostMelVariable> variable = session.globals.value(name.mid(1));
        if (variable)
        {
            const HostMelValue::Type element = HostMelValue::ElementType(variable->type);
            const QString type = element == HostMelValue::Type::Int     ? QStringLiteral("int")
                                 : element == HostMelValue::Type::Float ? QStringLiteral("float")
                                                                        : QStringLiteral("string");
            return variable->value.IsArray() ? QStringLiteral("%1[] variable").arg(type)
                                             : QStringLiteral("%1 variable").arg(type);
        }
    }
    return QStringLiteral("Unknown");
}

void HostMel::RegisterRunTimeCommand(const QString& name, const QString& mel)
{
    if (!name.isEmpty())
        HostMelSession::Instance().runTimeCommands.insert(name, mel);
}

MStatus HostMel::SourceFile(const QString& path)
{
    const QString resolved = ResolveScript(path);
    QFile file(resolved);
    if (path.isEmpty() || !QFileInfo(resolved).isFile() || !file.open(QIODevice::ReadOnly))
    {
        ReportError(QStringLiteral("Cannot find file \"%1\" for source statement.").arg(path));
        return MStatus::kNotFound;
    }
    const QString text = QString::fromUtf8(file.readAll());
    HostMelSession& session = HostMelSession::Instance();
    session.sourceFiles.append(QFileInfo(resolved).absoluteFilePath());
    const MStatus status = Execute(text, nullptr, false);
    session.sourceFiles.removeLast();
    return status;
}

void HostMel::ReportError(const QString& message)
{
    const int line = HostMelSession::Instance().currentLine;
    if (line > 0)
        HostOutput::Emit(QStringLiteral("line %1: %2").arg(line).arg(message), MCommandMessage::kError);
    else
        HostOutput::Emit(message, MCommandMessage::kError);
}
