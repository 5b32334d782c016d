#include "HostMelInfoBuiltins.h"

#include "HostCommandHelp.h"
#include "HostMelBuiltins.h"
#include "HostMelSession.h"
#include "HostOptionVars.h"
#include "HostOutput.h"
#include "HostPluginRegistry.h"
#include "HostState.h"

#include <QtCore/QDir>

namespace
{
// What the echo and error settings of the Script Editor hold; only recorded.
struct EditorSettings
{
    int echoState = 0;
    int lineNumbers = 0;
    int stackTrace = 0;
    QHash<QString, int> scriptEditorFlags; // by long name
};

EditorSettings& Settings()
{
    static EditorSettings settings;
    return settings;
}

HostMelFlagSpec Flag(const char* shortName, const char* longName, int argCount = 0)
{
    return HostMelFlagSpec{QString::fromLatin1(shortName), QString::fromLatin1(longName), argCount};
}

MString ToMString(const QString& text)
{
    return MString(text.toUtf8().constData());
}

MStatus Fail(const QString& message)
{
    HostMel::ReportError(message);
    return MStatus::kFailure;
}

MStatus NoFlag(const HostMelCall& call)
{
    return Fail(QStringLiteral("%1: No flag was given.").arg(call.name));
}

bool FirstFlag(const HostMelCall& call, QString& flag)
{
    if (call.flags.isEmpty())
        return false;
    flag = call.flags.first().first;
    return true;
}

// Sets or queries one integer setting per flag.
MStatus IntSettings(const HostMelCall& call, MCommandResult& result, QHash<QString, int*> settings)
{
    QString flag;
    if (!FirstFlag(call, flag))
        return NoFlag(call);
    for (const auto& [name, values] : call.flags)
    {
        int* target = settings.value(name);
        if (!target)
            continue;
        if (call.query)
        {
            result.setInt(*target);
            return MStatus::kSuccess;
        }
        if (!HostMelBuiltins::ToInt(values.value(0), *target))
            return Fail(QStringLiteral("Invalid value for flag -%1: \"%2\"").arg(name, values.value(0)));
    }
    return MStatus::kSuccess;
}

MStatus About(const HostMelCall& call, MCommandResult& result)
{
    QString flag;
    if (!FirstFlag(call, flag))
        return NoFlag(call);
    if (flag == QLatin1String("version"))
        result.setString(ToMString(HostState::MayaVersion()));
    else if (flag == QLatin1String("batch"))
        result.setInt(HostState::IsBatch() ? 1 : 0);
    else if (flag == QLatin1String("apiVersion"))
        result.setInt(20260000);
    else if (flag == QLatin1String("operatingSystem"))
        result.setString("linux64");
    else if (flag == QLatin1String("product"))
        result.setString("Maya 2026");
    else if (flag == QLatin1String("application"))
        result.setString("maya");
    else if (flag == QLatin1String("linux"))
        result.setInt(1);
    else if (flag == QLatin1String("windows") || flag == QLatin1String("macOS"))
        result.setInt(0);
    else if (flag == QLatin1String("qtVersion"))
        result.setString(qVersion());
    return MStatus::kSuccess;
}

MStatus InternalVar(const HostMelCall& call, MCommandResult& result)
{
    QString flag;
    if (!FirstFlag(call, flag))
        return NoFlag(call);
    const QString prefs = HostState::UserPrefDir();
    QString path;
    if (flag == QLatin1String("userPrefDir"))
        path = prefs;
    else if (flag == QLatin1String("userScriptDir"))
        path = HostState::UserScriptDir();
    else if (flag == QLatin1String("userAppDir"))
        path = HostState::MayaAppDir();
    else if (flag == QLatin1String("userTmpDir"))
        path = QDir::tempPath() + QLatin1Char('/');
    else if (flag == QLatin1String("userShelfDir"))
        path = prefs + QStringLiteral("shelves/");
    else if (flag == QLatin1String("userBitmapsDir"))
        path = prefs + QStringLiteral("icons/");
    else if (flag == QLatin1String("userWorkspaceDir"))
        path = HostState::MayaAppDir() + QStringLiteral("projects/");
    result.setString(ToMString(path));
    return MStatus::kSuccess;
}

// Tests vary the display scaling through the environment.
MStatus MayaDpiSetting(const HostMelCall& call, MCommandResult& result)
{
    if (!call.query)
        return MStatus::kSuccess;
    QString flag;
    if (!FirstFlag(call, flag))
        return NoFlag(call);
    if (flag == QLatin1String("mode"))
    {
        bool ok = false;
        const int mode = qEnvironmentVariableIntValue("BQ2_HOST_DPI_MODE", &ok);
        result.setInt(ok ? mode : 0);
        return MStatus::kSuccess;
    }
    bool ok = false;
    const double scale = qEnvironmentVariable("BQ2_HOST_DPI_SCALE").toDouble(&ok);
    result.setDouble(ok ? scale : 1.0);
    return MStatus::kSuccess;
}

QString TypeWord(MSyntax::MArgType type)
{
    switch (type)
    {
    case MSyntax::kBoolean:
        return QStringLiteral("on|off");
    case MSyntax::kLong:
        return QStringLiteral("Int");
    case MSyntax::kUnsigned:
        return QStringLiteral("UnsignedInt");
    case MSyntax::kDouble:
        return QStringLiteral("Float");
    case MSyntax::kDistance:
        return QStringLiteral("Length");
    case MSyntax::kAngle:
        return QStringLiteral("Angle");
    case MSyntax::kTime:
        return QStringLiteral("Time");
    case MSyntax::kSelectionItem:
        return QStringLiteral("SelectionItem");
    default:
        return QStringLiteral("String");
    }
}

QString FlagLine(const QString& shortName, const QString& longName, const QStringList& types)
{
    const QString typeText =
        types.isEmpty() ? QString() : QStringLiteral("  ") + types.join(QLatin1Char(' '));
    return QStringLiteral("   -%1 -%2%3\n")
        .arg(shortName, longName.isEmpty() ? shortName : longName, typeText);
}

bool FlagLines(const QString& command, QString& lines)
{
    const QString described = HostCommandHelp::FlagLines(command);
    if (!described.isNull())
    {
        lines = described;
        return true;
    }
    if (const HostPluginCommand* plugin = HostPluginRegistry::FindCommand(command))
    {
        const MSyntax syntax = plugin->syntax ? plugin->syntax() : MSyntax();
        for (const MSyntax::Flag& flag : syntax.flags())
        {
            QStringList types;
            for (const MSyntax::MArgType type : flag.argTypes)
                types.append(TypeWord(type));
            lines += FlagLine(QString::fromStdString(flag.shortName), QString::fromStdString(flag.longName),
                              types);
        }
        return true;
    }
    const HostMelSession& session = HostMelSession::Instance();
    const auto builtin = session.builtins.constFind(command);
    if (builtin == session.builtins.constEnd())
        return session.runTimeCommands.contains(command);
    for (const HostMelFlagSpec& flag : builtin->flags)
    {
        QStringList types;
        for (int i = 0; i < flag.argCount; ++i)
            types.append(QStringLiteral("String"));
        lines += FlagLine(flag.shortName, flag.longName, types);
    }
    return true;
}

MStatus Help(const HostMelCall& call, MCommandResult& result)
{
    const QString command = call.LastPositional();
    if (command.isEmpty())
        return Fail(QStringLiteral("help: Give the name of a command."));
    QString lines;
    if (!FlagLines(command, lines))
        return Fail(QStringLiteral("No help was found for \"%1\".").arg(command));
    result.setString(
        ToMString(QStringLiteral("\nSynopsis: %1 [flags] [String...]\nFlags:\n%2").arg(command, lines)));
    return MStatus::kSuccess;
}

MStatus MelInfo(const HostMelCall& /*call*/, MCommandResult& result)
{
    MStringArray names;
    for (const QString& name : HostMel::MelInfo())
        names.append(ToMString(name));
    result.setStringArray(names);
    return MStatus::kSuccess;
}

MStatus WhatIs(const HostMelCall& call, MCommandResult& result)
{
    if (call.positionals.size() != 1)
        return Fail(QStringLiteral("Wrong number of arguments on call to whatIs."));
    result.setString(ToMString(HostMel::WhatIs(call.positionals.first())));
    return MStatus::kSuccess;
}

MStatus CommandEcho(const HostMelCall& call, MCommandResult& result)
{
    return IntSettings(call, result,
                       {{QStringLiteral("state"), &Settings().echoState},
                        {QStringLiteral("lineNumbers"), &Settings().lineNumbers}});
}

MStatus StackTrace(const HostMelCall& call, MCommandResult& result)
{
    return IntSettings(call, result, {{QStringLiteral("state"), &Settings().stackTrace}});
}

MStatus ScriptEditorInfo(const HostMelCall& call, MCommandResult& result)
{
    QHash<QString, int*> settings;
    for (const QString& name : {QStringLiteral("suppressStackWindow"), QStringLiteral("suppressResults"),
                                QStringLiteral("suppressInfo"), QStringLiteral("suppressWarnings"),
                                QStringLiteral("suppressErrors")})
        settings.insert(name, &Settings().scriptEditorFlags[name]);
    if (!call.query && call.HasFlag(QStringLiteral("clearHistory")))
        HostOutput::ClearHistory();
    if (call.flags.size() == 1 && call.HasFlag(QStringLiteral("clearHistory")))
        return MStatus::kSuccess;
    return IntSettings(call, result, settings);
}

MStatus SetOptionVar(const QString& kind, const QStringList& values)
{
    const QString name = values.value(0);
    const QString text = values.value(1);
    bool ok = !name.isEmpty();
    if (ok && kind == QLatin1String("intValue"))
    {
        int value = 0;
        ok = HostMelBuiltins::ToInt(text, value) && HostOptionVars::SetInt(name, value);
    }
    else if (ok && kind == QLatin1String("floatValue"))
    {
        const double value = text.toDouble(&ok);
        ok = ok && HostOptionVars::SetDouble(name, value);
    }
    else if (ok)
    {
        ok = HostOptionVars::SetString(name, text);
    }
    return ok ? MStatus::kSuccess : Fail(QStringLiteral("optionVar: Could not set \"%1\".").arg(name));
}

MStatus OptionVar(const HostMelCall& call, MCommandResult& result)
{
    if (call.query)
    {
        const QVariant value = HostOptionVars::Value(call.LastPositional());
        if (value.typeId() == QMetaType::Double)
            result.setDouble(value.toDouble());
        else if (value.typeId() == QMetaType::QString)
            result.setString(ToMString(value.toString()));
        else
            result.setInt(value.toInt()); // a missing variable reads as 0, as in Maya
        return MStatus::kSuccess;
    }
    for (const auto& [name, values] : call.flags)
    {
        if (name == QLatin1String("exists"))
        {
            result.setInt(HostOptionVars::Exists(values.value(0)) ? 1 : 0);
        }
        else if (name == QLatin1String("remove"))
        {
            HostOptionVars::Remove(values.value(0));
        }
        else if (name == QLatin1String("list"))
        {
            MStringArray names;
            for (const QString& item : HostOptionVars::Names())
                names.append(ToMString(item));
            result.setStringArray(names);
        }
        else
        {
            const MStatus status = SetOptionVar(name, values);
            if (!status)
                return status;
        }
    }
    return MStatus::kSuccess;
}

void Add(HostMelSession& session, const QString& name, const QList<HostMelFlagSpec>& flags,
         const HostMelHandler& handler)
{
    HostMelBuiltin builtin;
    builtin.flags = flags;
    builtin.handler = handler;
    session.builtins.insert(name, builtin);
}
} // namespace

void HostMelInfoBuiltins::Register(HostMelSession& session)
{
    Add(session, QStringLiteral("about"),
        {Flag("v", "version"), Flag("b", "batch"), Flag("api", "apiVersion"), Flag("os", "operatingSystem"),
         Flag("p", "product"), Flag("a", "application"), Flag("li", "linux"), Flag("win", "windows"),
         Flag("mac", "macOS"), Flag("qt", "qtVersion")},
        About);
    Add(session, QStringLiteral("internalVar"),
        {Flag("upd", "userPrefDir"), Flag("usd", "userScriptDir"), Flag("uad", "userAppDir"),
         Flag("utd", "userTmpDir"), Flag("ush", "userShelfDir"), Flag("ubd", "userBitmapsDir"),
         Flag("uwd", "userWorkspaceDir")},
        InternalVar);
    Add(session, QStringLiteral("mayaDpiSetting"),
        {Flag("m", "mode", 1), Flag("rsv", "realScaleValue"), Flag("sv", "scaleValue", 1)}, MayaDpiSetting);
    Add(session, QStringLiteral("help"),
        {Flag("so", "syntaxOnly"), Flag("doc", "documentation"), Flag("lng", "language", 1),
         Flag("l", "list")},
        Help);
    Add(session, QStringLiteral("melInfo"), {}, MelInfo);
    Add(session, QStringLiteral("whatIs"), {}, WhatIs);
    Add(session, QStringLiteral("commandEcho"),
        {Flag("st", "state", 1), Flag("ln", "lineNumbers", 1), Flag("f", "filter", 1),
         Flag("af", "addFilter", 1)},
        CommandEcho);
    Add(session, QStringLiteral("stackTrace"), {Flag("st", "state", 1), Flag("d", "dump")}, StackTrace);
    Add(session, QStringLiteral("scriptEditorInfo"),
        {Flag("ssw", "suppressStackWindow", 1), Flag("ch", "clearHistory"), Flag("sr", "suppressResults", 1),
         Flag("si", "suppressInfo", 1), Flag("sw", "suppressWarnings", 1), Flag("se", "suppressErrors", 1)},
        ScriptEditorInfo);
    Add(session, QStringLiteral("optionVar"),
        {Flag("iv", "intValue", 2), Flag("fv", "floatValue", 2), Flag("sv", "stringValue", 2),
         Flag("ex", "exists", 1), Flag("rm", "remove", 1), Flag("l", "list")},
        OptionVar);
}
