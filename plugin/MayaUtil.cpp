#include "plugin/MayaUtil.h"

#include "plugin/Logger.h"
#include "settings/Settings.h"

#include <maya/MCommandResult.h>
#include <maya/MGlobal.h>
#include <maya/MMessage.h>
#include <maya/MQtUtil.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>
#include <QtWidgets/QWidget>

MCallbackIdArray MayaUtil::callbackIds;
// Spelled out, not built from Settings::APPLICATION_NAME: a static of another file may not be set yet
// when this one is, since the plug-in links the whole library in an order of its own.
QString MayaUtil::workspaceControlName = QStringLiteral("BrindletEditor2Window");
QString MayaUtil::mainMenuItemName;
QString MayaUtil::scriptEditorButtonName;
QStringList MayaUtil::melCommands;
QStringList MayaUtil::melRunTimeCommands;
QStringList MayaUtil::melProcedures;
QStringList MayaUtil::pythonKeywords;
QStringList MayaUtil::pythonBuiltins;
QString MayaUtil::pythonVersion;

// ---------------------------------------------------------------------------------------------
// Plain forwarding

QWidget* MayaUtil::GetMainWindow()
{
    return MQtUtil::mainWindow();
}

QString MayaUtil::ToQString(const MString& text)
{
    return MQtUtil::toQString(text);
}

MString MayaUtil::ToMString(const QString& text)
{
    return MQtUtil::toMString(text);
}

QString MayaUtil::GetQtVersion()
{
    return QStringLiteral("6.5.3");
}

MStatus MayaUtil::AddCallbacks()
{
    return MStatus::kSuccess;
}

MStatus MayaUtil::RemoveCallbacks()
{
    if (callbackIds.length() == 0)
        return MStatus::kSuccess;
    const MStatus status = MMessage::removeCallbacks(callbackIds);
    callbackIds.clear();
    return status;
}

// ---------------------------------------------------------------------------------------------
// Generic execution

MStatus MayaUtil::ExecuteMel(const MString& cmd, bool displayEnabled, bool undoEnabled)
{
    return MGlobal::executeCommand(cmd, displayEnabled, undoEnabled);
}

MStatus MayaUtil::ExecuteMel(const QString& cmd, bool displayEnabled, bool undoEnabled)
{
    return ExecuteMel(ToMString(cmd), displayEnabled, undoEnabled);
}

MStatus MayaUtil::ExecutePython(const MString& cmd, bool displayEnabled, bool undoEnabled)
{
    return MGlobal::executePythonCommand(cmd, displayEnabled, undoEnabled);
}

MStatus MayaUtil::ExecutePython(const QString& cmd, bool displayEnabled, bool undoEnabled)
{
    return ExecutePython(ToMString(cmd), displayEnabled, undoEnabled);
}

bool MayaUtil::ExecutePythonHidden(const QString& cmd)
{
    Settings::traceHideAll = true;
    const MStatus status = ExecutePython(cmd, false, false);
    Settings::traceHideAll = false;
    return status == MStatus::kSuccess;
}

bool MayaUtil::ExecuteMelIntResult(const MString& cmd, int& result, bool displayEnabled, bool undoEnabled)
{
    MCommandResult commandResult;
    if (MGlobal::executeCommand(cmd, commandResult, displayEnabled, undoEnabled) != MStatus::kSuccess)
        return false;
    if (commandResult.resultType() != MCommandResult::kInt)
        return false;
    return commandResult.getResult(result) == MStatus::kSuccess;
}

bool MayaUtil::ExecuteMelIntResult(const QString& cmd, int& result, bool displayEnabled, bool undoEnabled)
{
    return ExecuteMelIntResult(ToMString(cmd), result, displayEnabled, undoEnabled);
}

bool MayaUtil::ExecuteMelDoubleResult(const MString& cmd, double& result, bool displayEnabled,
                                      bool undoEnabled)
{
    MCommandResult commandResult;
    if (MGlobal::executeCommand(cmd, commandResult, displayEnabled, undoEnabled) != MStatus::kSuccess)
        return false;
    if (commandResult.resultType() != MCommandResult::kDouble)
        return false;
    return commandResult.getResult(result) == MStatus::kSuccess;
}

bool MayaUtil::ExecuteMelDoubleResult(const QString& cmd, double& result, bool displayEnabled,
                                      bool undoEnabled)
{
    return ExecuteMelDoubleResult(ToMString(cmd), result, displayEnabled, undoEnabled);
}

bool MayaUtil::ExecuteMelStringResult(const MString& cmd, MString& result, bool displayEnabled,
                                      bool undoEnabled)
{
    MCommandResult commandResult;
    if (MGlobal::executeCommand(cmd, commandResult, displayEnabled, undoEnabled) != MStatus::kSuccess)
        return false;
    if (commandResult.resultType() != MCommandResult::kString)
        return false;
    return commandResult.getResult(result) == MStatus::kSuccess;
}

bool MayaUtil::ExecuteMelStringResult(const QString& cmd, QString& result, bool displayEnabled,
                                      bool undoEnabled)
{
    MString text;
    if (!ExecuteMelStringResult(ToMString(cmd), text, displayEnabled, undoEnabled))
        return false;
    result = ToQString(text);
    return true;
}

bool MayaUtil::ExecuteMelStringArrayResult(const MString& cmd, MStringArray& result, bool displayEnabled,
                                           bool undoEnabled)
{
    return MGlobal::executeCommand(cmd, result, displayEnabled, undoEnabled) == MStatus::kSuccess;
}

bool MayaUtil::ExecuteMelStringArrayResult(const QString& cmd, QStringList& result, bool displayEnabled,
                                           bool undoEnabled)
{
    MStringArray array;
    if (!ExecuteMelStringArrayResult(ToMString(cmd), array, displayEnabled, undoEnabled))
        return false;
    result = ToQStringList(array);
    return true;
}

bool MayaUtil::ExecutePythonIntResult(const MString& cmd, int& result, bool displayEnabled, bool undoEnabled)
{
    return MGlobal::executePythonCommand(cmd, result, displayEnabled, undoEnabled) == MStatus::kSuccess;
}

bool MayaUtil::ExecutePythonIntResult(const QString& cmd, int& result, bool displayEnabled, bool undoEnabled)
{
    return ExecutePythonIntResult(ToMString(cmd), result, displayEnabled, undoEnabled);
}

bool MayaUtil::ExecutePythonStringResult(const MString& cmd, MString& result, bool displayEnabled,
                                         bool undoEnabled)
{
    return MGlobal::executePythonCommand(cmd, result, displayEnabled, undoEnabled) == MStatus::kSuccess;
}

bool MayaUtil::ExecutePythonStringResult(const QString& cmd, QString& result, bool displayEnabled,
                                         bool undoEnabled)
{
    MString text;
    if (!ExecutePythonStringResult(ToMString(cmd), text, displayEnabled, undoEnabled))
        return false;
    result = ToQString(text);
    return true;
}

bool MayaUtil::ExecutePythonStringArrayResult(const MString& cmd, MStringArray& result, bool displayEnabled,
                                              bool undoEnabled)
{
    return MGlobal::executePythonCommand(cmd, result, displayEnabled, undoEnabled) == MStatus::kSuccess;
}

bool MayaUtil::ExecutePythonStringArrayResult(const QString& cmd, QStringList& result, bool displayEnabled,
                                              bool undoEnabled)
{
    MStringArray array;
    if (!ExecutePythonStringArrayResult(ToMString(cmd), array, displayEnabled, undoEnabled))
        return false;
    result.clear();
    result.append(ToQStringList(array));
    return true;
}

QStringList MayaUtil::ToQStringList(const MStringArray& array)
{
    QStringList list;
    list.reserve(static_cast<int>(array.length()));
    for (unsigned int i = 0; i < array.length(); ++i)
        list.append(ToQString(array[i]));
    return list;
}

// ---------------------------------------------------------------------------------------------
// The user's code

void MayaUtil::ExecuteMelScript(const QString& script)
{
    static const QRegularExpression loneVariable(QStringLiteral("^\\$[a-zA-Z0-9_]+$"));
    QString text = script;
    bool display = true;
    // A lone variable name would print nothing; show its value instead.
    if (loneVariable.match(script).hasMatch())
    {
        text = QStringLiteral("print(%1); print(\"\\n\")").arg(script);
        display = false;
    }
    if (Settings::executeScriptOnIdle)
        MGlobal::executeCommandOnIdle(ToMString(text), display);
    else
        MGlobal::executeCommand(ToMString(text), display, true);
}

void MayaUtil::ExecutePythonScript(const QString& script)
{
    if (Settings::executeScriptOnIdle)
        MGlobal::executePythonCommandOnIdle(ToMString(script), true);
    else
        MGlobal::executePythonCommand(ToMString(script), true, true);
}

void MayaUtil::SourceScript(const QString& path)
{
    MGlobal::sourceFile(ToMString(path));
}

void MayaUtil::SaveScriptToShelf(const QString& name, const QString& script, bool isMel)
{
    QString escaped = script;
    escaped.replace(QChar(0x2029), QLatin1Char('\n'));
    escaped.replace(QLatin1String("\\"), QLatin1String("\\\\"));
    escaped.replace(QRegularExpression(QStringLiteral("\n")), QStringLiteral("\\n"));
    escaped.replace(QRegularExpression(QStringLiteral("\"")), QStringLiteral("\\\""));
    const QString command = QStringLiteral("scriptToShelf(\"%1\", \"%2\", %3)")
                                .arg(name, escaped, isMel ? QStringLiteral("1") : QStringLiteral("0"));
    MGlobal::executeCommandOnIdle(ToMString(command), false);
}

// ---------------------------------------------------------------------------------------------
// Echo and error options: the state lives in the host so that its own Script Editor agrees.

void MayaUtil::SetOptionFlag(const QString& mel, const char* optionVar, bool enabled)
{
    MGlobal::executeCommandOnIdle(ToMString(mel.arg(enabled ? 1 : 0)), false);
    MGlobal::setOptionVarValue(MString(optionVar), enabled ? 1 : 0);
}

bool MayaUtil::OptionFlag(const char* optionVar)
{
    return MGlobal::optionVarIntValue(MString(optionVar)) != 0;
}

void MayaUtil::SetEchoAllCommandsEnabled(bool enabled)
{
    SetOptionFlag(QStringLiteral("commandEcho -state %1"), "echoAllLines", enabled);
}

bool MayaUtil::EchoAllCommandsEnabled()
{
    return OptionFlag("echoAllLines");
}

void MayaUtil::SetLineNumbersInErrorsEnabled(bool enabled)
{
    SetOptionFlag(QStringLiteral("commandEcho -lineNumbers %1"), "showLineNumbersIsOn", enabled);
}

bool MayaUtil::LineNumbersInErrorsEnabled()
{
    return OptionFlag("showLineNumbersIsOn");
}

void MayaUtil::SetShowStackTraceEnabled(bool enabled)
{
    SetOptionFlag(QStringLiteral("stackTrace -state %1"), "stackTraceIsOn", enabled);
}

bool MayaUtil::ShowStackTraceEnabled()
{
    return OptionFlag("stackTraceIsOn");
}

void MayaUtil::SetSuppressStackWindowEnabled(bool enabled)
{
    MGlobal::executeCommandOnIdle(ToMString(QStringLiteral("scriptEditorInfo -ssw %1").arg(enabled ? 1 : 0)),
                                  false);
    Settings::suppressStackWindow = enabled;
}

// ---------------------------------------------------------------------------------------------
// Workspace control

bool MayaUtil::QueryWorkspaceControl(const QString& flag)
{
    int value = 0;
    const QString cmd = QStringLiteral("workspaceControl -q %1 %2").arg(flag, workspaceControlName);
    return ExecuteMelIntResult(cmd, value) && value != 0;
}

bool MayaUtil::WorkspaceControlExists()
{
    return QueryWorkspaceControl(QStringLiteral("-exists"));
}

bool MayaUtil::WorkspaceControlVisible()
{
    return QueryWorkspaceControl(QStringLiteral("-visible"));
}

bool MayaUtil::WorkspaceControlFloating()
{
    return QueryWorkspaceControl(QStringLiteral("-floating"));
}

bool MayaUtil::WorkspaceControlCollapsed()
{
    return QueryWorkspaceControl(QStringLiteral("-collapse"));
}

void MayaUtil::SetWorkspaceControlVisible(bool visible)
{
    QString cmd = QStringLiteral("workspaceControl -e");
    cmd += visible ? QStringLiteral(" -restore") : QStringLiteral(" -visible 0");
    cmd += QStringLiteral(" %1").arg(workspaceControlName);
    ExecuteMel(cmd);
}

void MayaUtil::CloseWorkspaceControl()
{
    if (!WorkspaceControlExists())
        return;
    SetWorkspaceControlVisible(false);
    ExecuteMel(QStringLiteral("workspaceControl -e -close %1").arg(workspaceControlName));
}

QWidget* MayaUtil::CreateWorkspaceControl()
{
    if (WorkspaceControlExists())
        return nullptr;
    QString cmd = QStringLiteral("workspaceControl");
    cmd += QStringLiteral(" -label \"%1\"").arg(Settings::APPLICATION_TITLE);
    cmd += QStringLiteral(" -retain 1");
    cmd += QStringLiteral(" -floating 1");
    cmd += QStringLiteral(" -visible 0");
    cmd += QStringLiteral(" -requiredPlugin %1").arg(Settings::APPLICATION_NAME);
    cmd += QStringLiteral(" -checksPlugins 1");
    cmd += QStringLiteral(" %1").arg(workspaceControlName);
    ExecuteMel(cmd);
    if (!WorkspaceControlExists())
        return nullptr;

    QWidget* parent = MQtUtil::getCurrentParent();
    if (!parent)
        return nullptr;

    const QRect& geometry = Settings::windowGeometry;
    if (geometry.left() <= geometry.right() && geometry.top() <= geometry.bottom())
    {
        ExecuteMel(QStringLiteral("workspaceControlState -e -tlc %1 %2 -width %3 -height %4 %5")
                       .arg(geometry.top())
                       .arg(geometry.left())
                       .arg(geometry.right() - geometry.left() + 1)
                       .arg(geometry.bottom() - geometry.top() + 1)
                       .arg(workspaceControlName));
    }
    ExecuteMel(QStringLiteral("workspaceControl -e -uiScript %1 %2")
                   .arg(Settings::MEL_COMMAND, workspaceControlName));
    SetWorkspaceControlVisible(true);
    return parent;
}

void MayaUtil::SetWorkspaceLabel(const QString& title)
{
    // A docked tab always reads the plain title.
    const QString label = WorkspaceControlFloating() ? title : Settings::APPLICATION_TITLE;
    ExecuteMel(QStringLiteral("workspaceControl -e -label \"%1\" %2").arg(label, workspaceControlName));
}

QWidget* MayaUtil::GetWorkspaceControl()
{
    return MQtUtil::findControl(ToMString(workspaceControlName));
}

void MayaUtil::SetWorkspaceChild(QWidget* child, QWidget* parent)
{
    QWidget* layout = parent ? parent : MQtUtil::findControl(ToMString(workspaceControlName));
    MQtUtil::addWidgetToMayaLayout(child, layout, MString());
}

void MayaUtil::UpdateWorkspaceControlGeometry()
{
    const QRect& geometry = Settings::windowGeometry;
    if (geometry.left() > geometry.right() || geometry.top() > geometry.bottom())
        return;
    QWidget* mainWindow = GetMainWindow();
    QWidget* widget = GetWorkspaceControl();
    while (widget && widget->parentWidget() && widget->parentWidget() != mainWindow)
        widget = widget->parentWidget();
    if (widget)
        widget->setGeometry(geometry);
}

// ---------------------------------------------------------------------------------------------
// Host information

bool MayaUtil::IsBatchMode()
{
    int value = 0;
    return ExecuteMelIntResult(QStringLiteral("about -batch"), value) && value != 0;
}

QString MayaUtil::GetMayaVersionString()
{
    QString version;
    ExecuteMelStringResult(QStringLiteral("about -version;"), version);
    return version;
}

QString MayaUtil::GetUserScriptsDirectory()
{
    QString path;
    ExecuteMelStringResult(QStringLiteral("internalVar -userScriptDir"), path);
    return path;
}

QString MayaUtil::GetMayaPrefsDirectory()
{
    QString path;
    ExecuteMelStringResult(QStringLiteral("internalVar -userPrefDir"), path);
    return path;
}

double MayaUtil::GetCustomScaleValue()
{
    int mode = 0;
    if (!ExecuteMelIntResult(QStringLiteral("mayaDpiSetting -q -m;"), mode) || mode == 2)
        return 1.0;
    double scale = 1.0;
    if (!ExecuteMelDoubleResult(QStringLiteral("mayaDpiSetting -q -rsv;"), scale))
        return 1.0;
    return scale;
}

QString MayaUtil::GetPythonVersion()
{
    if (pythonVersion.isEmpty())
        ExecutePythonStringResult(QStringLiteral("BrindletEditorHelpers.python_version()"), pythonVersion);
    return pythonVersion;
}

QStringList MayaUtil::PythonKeywords()
{
    if (pythonKeywords.isEmpty())
        ExecutePythonStringArrayResult(QStringLiteral("BrindletEditorHelpers.list_keywords()"),
                                       pythonKeywords);
    return pythonKeywords;
}

QStringList MayaUtil::PythonBuiltins()
{
    if (pythonBuiltins.isEmpty())
        ExecutePythonStringArrayResult(QStringLiteral("BrindletEditorHelpers.list_builtins()"),
                                       pythonBuiltins);
    return pythonBuiltins;
}

QStringList MayaUtil::MelCommands()
{
    return melCommands;
}

QStringList MayaUtil::MelRunTimeCommands()
{
    return melRunTimeCommands;
}

QStringList MayaUtil::MelProcedures()
{
    return melProcedures;
}

QStringList MayaUtil::MelKeywords()
{
    return {QStringLiteral("break"),   QStringLiteral("case"),   QStringLiteral("continue"),
            QStringLiteral("default"), QStringLiteral("do"),     QStringLiteral("else"),
            QStringLiteral("false"),   QStringLiteral("float"),  QStringLiteral("for"),
            QStringLiteral("global"),  QStringLiteral("if"),     QStringLiteral("in"),
            QStringLiteral("int"),     QStringLiteral("matrix"), QStringLiteral("no"),
            QStringLiteral("off"),     QStringLiteral("on"),     QStringLiteral("proc"),
            QStringLiteral("return"),  QStringLiteral("string"), QStringLiteral("switch"),
            QStringLiteral("true"),    QStringLiteral("vector"), QStringLiteral("while"),
            QStringLiteral("yes")};
}

void MayaUtil::RefreshCommandList()
{
    melCommands.clear();
    melRunTimeCommands.clear();
    melProcedures.clear();
    // Entries keep their index in the host's full list, so empty strings stand between them.
    ExecuteMelStringArrayResult(QStringLiteral("xvGetMelInfo(1, 0, 0)"), melCommands);
    ExecuteMelStringArrayResult(QStringLiteral("xvGetMelInfo(0, 1, 0)"), melRunTimeCommands);
    ExecuteMelStringArrayResult(QStringLiteral("xvGetMelInfo(0, 0, 1)"), melProcedures);
}

QStringList MayaUtil::CommandFlags(const QString& command)
{
    if (command.isEmpty() || !melCommands.contains(command))
        return {};
    QString help;
    if (!ExecuteMelStringResult(QStringLiteral("help -so %1").arg(command), help))
        return {};
    const QStringList parts = help.split(QStringLiteral("Flags:"), Qt::SkipEmptyParts);
    if (parts.size() != 2)
        return {};
    static const QRegularExpression lineBreak(QStringLiteral("[\r\n]"));
    static const QRegularExpression blank(QStringLiteral("[ \t]"));
    QStringList flags;
    for (const QString& line : parts.at(1).split(lineBreak, Qt::SkipEmptyParts))
    {
        const QStringList tokens = line.split(blank, Qt::SkipEmptyParts);
        for (int i = 0; i < 3; ++i)
            flags.append(i < tokens.size() ? tokens.at(i) : QString());
    }
    return flags;
}

QString MayaUtil::GetExistingHistory()
{
    QString history;
    ExecuteMelStringResult(QStringLiteral("xvGetExistingHistory()"), history);
    return history;
}

void MayaUtil::ClearExistingHistory()
{
    ExecuteMel(QStringLiteral("xvClearExistingHistory()"));
}

// ---------------------------------------------------------------------------------------------
// Help

void MayaUtil::ShowHelp(const QString& topic)
{
    ExecuteMel(QStringLiteral("showHelp %1").arg(topic));
}

void MayaUtil::CommandDocumentation(const QString& command, bool python)
{
    if (!command.isEmpty() && !melCommands.contains(command))
    {
        Logger::Error(QStringLiteral("Command not found: %1").arg(command));
        return;
    }
    const QString page =
        QStringLiteral("%1/%2").arg(python ? QStringLiteral("CommandsPython") : QStringLiteral("Commands"),
                                    command.isEmpty() ? QStringLiteral("index") : command);
    ExecuteMel(QStringLiteral("showHelp -docs \"%1.html\"").arg(page));
}

void MayaUtil::RevealInFolder(const QString& path)
{
    const QFileInfo info(path);
    const QString folder = info.isDir() ? path : info.path();
    QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

// ---------------------------------------------------------------------------------------------
// The embedded Python helpers

void MayaUtil::PythonUpdateModuleState()
{
    MGlobal::executePythonCommandOnIdle(MString("BrindletEditorHelpers.update_modules()"), false);
}

void MayaUtil::PythonRevertModuleState()
{
    MGlobal::executePythonCommandOnIdle(MString("BrindletEditorHelpers.revert_modules()"), false);
}

void MayaUtil::PrintPythonPath()
{
    MGlobal::executePythonCommandOnIdle(MString("BrindletEditorHelpers.print_python_path()"), false);
}

void MayaUtil::PrintPythonEnviron()
{
    MGlobal::executePythonCommandOnIdle(MString("BrindletEditorHelpers.print_python_environ()"), false);
}

void MayaUtil::PrintMayaEnvVarPaths(const QString& name)
{
    const QString cmd = QStringLiteral("BrindletEditorHelpers.print_maya_env_var_paths('%1')").arg(name);
    MGlobal::executePythonCommandOnIdle(ToMString(cmd), false);
}

bool MayaUtil::PythonExecStatement(const QString& code)
{
    int value = 0;
    Settings::traceHideAll = true;
    const bool ok = ExecutePythonIntResult(
        QStringLiteral("BrindletEditorParser.exec_statement(\"%1\")").arg(code), value);
    ClearCommandResponse();
    Settings::traceHideAll = false;
    return ok && value != 0;
}

void MayaUtil::PythonSyntaxCheck(const QString& code, QStringList& result)
{
    Settings::traceHideAll = true;
    result.clear();
    ExecutePythonStringArrayResult(QStringLiteral("BrindletEditorParser.syntax_check(\"%1\")").arg(code),
                                   result);
    ClearCommandResponse();
    Settings::traceHideAll = false;
}

void MayaUtil::PythonAttributesFromSource(const QString& source, const QString& object, QStringList& result,
                                          bool namesOnly)
{
    const int keywords = namesOnly ? 0 : (Settings::pythonIncludeKeywords ? 1 : 0);
    const int builtins = namesOnly ? 0 : (Settings::pythonIncludeBuiltins ? 1 : 0);
    QString call;
    if (object.isEmpty())
    {
        call = QStringLiteral("BrindletEditorParser().parse_source(\"%3\", None, %1, %2)")
                   .arg(QString::number(keywords), QString::number(builtins), source);
    }
    else
    {
        const int fallback = Settings::pythonNativeMayaAutoCompleteFallback ? 1 : 0;
        call = QStringLiteral("BrindletEditorParser().parse_source(\"%5\", \"%4\", %1, %2, %3)")
                   .arg(QString::number(keywords), QString::number(builtins), QString::number(fallback),
                        object, source);
    }
    Settings::traceHideAll = true;
    result.clear();
    ExecutePythonStringArrayResult(call, result, false, false);
    ClearCommandResponse();
    Settings::traceHideAll = false;
}

void MayaUtil::ClearCommandResponse()
{
    ExecutePython(QStringLiteral("pass"), false, false);
}

void MayaUtil::ImportPyMel()
{
    ExecutePython(QStringLiteral("import pymel.core"));
}

void MayaUtil::UpdatePylintPythonPath()
{
    QString pathText;
    if (!ExecutePythonStringResult(QStringLiteral("BrindletEditorHelpers.get_python_path_str()"), pathText))
        return;
    QString paths;
    // The host's own interpreter folders are kept out of the checker's path.
    for (const QString& part : pathText.split(Settings::PATH_SEP, Qt::SkipEmptyParts))
    {
        if (!part.contains(QLatin1String("/lib/python"), Qt::CaseInsensitive))
            paths += part + Settings::PATH_SEP;
    }
    if (!Settings::pylintAdditionalPythonPaths.isEmpty())
        Settings::pylintPythonPath = QStringLiteral("%1%2%3").arg(Settings::pylintAdditionalPythonPaths,
                                                                  QString(Settings::PATH_SEP), paths);
    else
        Settings::pylintPythonPath = paths;
}

// ---------------------------------------------------------------------------------------------
// Menu and button

void MayaUtil::CreateMainMenuItem()
{
    if (!mainMenuItemName.isEmpty())
        return;
    const QString cmd = QStringLiteral("xvCreateBrindletEditorMenuItem(\"%1\", \"%2\")")
                            .arg(Settings::APPLICATION_TITLE, Settings::MEL_COMMAND);
    if (!ExecuteMelStringResult(cmd, mainMenuItemName) || mainMenuItemName.isEmpty())
    {
        Logger::Error(QStringLiteral("Failed to create '%1' menu item").arg(Settings::APPLICATION_TITLE));
        mainMenuItemName.clear();
    }
}

void MayaUtil::RemoveMainMenuItem()
{
    if (mainMenuItemName.isEmpty())
        return;
    if (ExecuteMel(QStringLiteral("deleteUI -mi %1").arg(mainMenuItemName)) == MStatus::kSuccess)
        mainMenuItemName.clear();
    else
        Logger::Error(QStringLiteral("Failed to remove '%1' menu item").arg(Settings::APPLICATION_TITLE));
}

void MayaUtil::OverrideScriptEditorButton()
{
    if (!scriptEditorButtonName.isEmpty())
        return;
    if (!ExecuteMelStringResult(QStringLiteral("xvGetScriptEditorButtonName()"), scriptEditorButtonName) ||
        scriptEditorButtonName.isEmpty())
    {
        Logger::Error("Failed to identify Script Editor button");
        scriptEditorButtonName.clear();
        return;
    }
    if (ExecuteMel(QStringLiteral("symbolButton -e -c \"%1\" %2")
                       .arg(Settings::MEL_COMMAND, scriptEditorButtonName)) != MStatus::kSuccess)
    {
        Logger::Error("Failed to override Script Editor button command");
        return;
    }
    if (ExecuteMel(QStringLiteral("symbolButton -e -ann \"%1\" %2")
                       .arg(Settings::APPLICATION_TITLE, scriptEditorButtonName)) != MStatus::kSuccess)
        Logger::Error("Failed to override Script Editor button annotation");
}

void MayaUtil::RestoreScriptEditorButton()
{
    if (scriptEditorButtonName.isEmpty())
        return;
    if (ExecuteMel(QStringLiteral("symbolButton -e -c \"ScriptEditor\" %2").arg(scriptEditorButtonName)) !=
        MStatus::kSuccess)
    {
        Logger::Error("Failed to restore Script Editor button command");
        return;
    }
    if (ExecuteMel(QStringLiteral("symbolButton -e -ann \"Script Editor\" %2").arg(scriptEditorButtonName)) !=
        MStatus::kSuccess)
    {
        Logger::Error("Failed to restore Script Editor button annotation");
        return;
    }
    scriptEditorButtonName.clear();
}

// ---------------------------------------------------------------------------------------------
// Load time

QString MayaUtil::ReadResource(const QString& path, bool* ok)
{
    QFile file(path);
    *ok = file.open(QIODevice::ReadOnly);
    return *ok ? QString::fromLatin1(file.readAll()) : QString();
}

void MayaUtil::SourceApplicationScripts()
{
    bool ok = false;
    const QString mel = ReadResource(QStringLiteral(":/bq2_scripts/BrindletEditor2.mel"), &ok);
    if (ok)
        ExecuteMel(mel, false, false);
    else
        Logger::Error("Failed to load MEL scripts.");

    const QString helpers = ReadResource(QStringLiteral(":/bq2_python/brindlet_editor_helpers.py"), &ok);
    if (ok)
        ExecutePython(helpers, false, false);
    else
        Logger::Error("Failed to load Python helpers.");

    const QString parser = ReadResource(QStringLiteral(":/bq2_python/brindlet_editor_parser.py"), &ok);
    if (ok)
    {
        ExecutePython(parser, false, false);
        ExecutePython(QStringLiteral("BrindletEditorParser.initialize()"), false, false);
    }
    else
    {
        Logger::Error("Failed to load Python parser.");
    }
}
