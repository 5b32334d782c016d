#pragma once

#include <maya/MCallbackIdArray.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

class QWidget;

// The one door to the host: every call into Maya, and every piece of MEL or Python text sent
// to it, goes through these operations.
class MayaUtil
{
public:
    MayaUtil() = delete;

    static MCallbackIdArray callbackIds;
    static QString workspaceControlName;
    static QString mainMenuItemName;
    static QString scriptEditorButtonName;
    static QStringList melCommands;
    static QStringList melRunTimeCommands;
    static QStringList melProcedures;
    static QStringList pythonKeywords;
    static QStringList pythonBuiltins;
    static QString pythonVersion;

    // Plain forwarding.
    static QWidget* GetMainWindow();
    static QString ToQString(const MString& text);
    static MString ToMString(const QString& text);
    static QString GetQtVersion();
    static MStatus AddCallbacks();
    static MStatus RemoveCallbacks();

    // Generic execution.
    static MStatus ExecuteMel(const MString& cmd, bool displayEnabled = false, bool undoEnabled = false);
    static MStatus ExecuteMel(const QString& cmd, bool displayEnabled = false, bool undoEnabled = false);
    static MStatus ExecutePython(const MString& cmd, bool displayEnabled = false, bool undoEnabled = false);
    static MStatus ExecutePython(const QString& cmd, bool displayEnabled = false, bool undoEnabled = false);
    static bool ExecutePythonHidden(const QString& cmd);
    static bool ExecuteMelIntResult(const MString& cmd, int& result, bool displayEnabled = false,
                                    bool undoEnabled = false);
    static bool ExecuteMelIntResult(const QString& cmd, int& result, bool displayEnabled = false,
                                    bool undoEnabled = false);
    static bool ExecuteMelDoubleResult(const MString& cmd, double& result, bool displayEnabled = false,
                                       bool undoEnabled = false);
    static bool ExecuteMelDoubleResult(const QString& cmd, double& result, bool displayEnabled = false,
                                       bool undoEnabled = false);
    static bool ExecuteMelStringResult(const MString& cmd, MString& result, bool displayEnabled = false,
                                       bool undoEnabled = false);
    static bool ExecuteMelStringResult(const QString& cmd, QString& result, bool displayEnabled = false,
                                       bool undoEnabled = false);
    static bool ExecuteMelStringArrayResult(const MString& cmd, MStringArray& result,
                                            bool displayEnabled = false, bool undoEnabled = false);
    static bool ExecuteMelStringArrayResult(const QString& cmd, QStringList& result,
                                            bool displayEnabled = false, bool undoEnabled = false);
    static bool ExecutePythonIntResult(const MString& cmd, int& result, bool displayEnabled = false,
                                       bool undoEnabled = false);
    static bool ExecutePythonIntResult(const QString& cmd, int& result, bool displayEnabled = false,
                                       bool undoEnabled = false);
    static bool ExecutePythonStringResult(const MString& cmd, MString& result, bool displayEnabled = false,
                                          bool undoEnabled = false);
    static bool ExecutePythonStringResult(const QString& cmd, QString& result, bool displayEnabled = false,
                                          bool undoEnabled = false);
    static bool ExecutePythonStringArrayResult(const MString& cmd, MStringArray& result,
                                               bool displayEnabled = false, bool undoEnabled = false);
    static bool ExecutePythonStringArrayResult(const QString& cmd, QStringList& result,
                                               bool displayEnabled = false, bool undoEnabled = false);

    // The user's code.
    static void ExecuteMelScript(const QString& script);
    static void ExecutePythonScript(const QString& script);
    static void SourceScript(const QString& path);
    static void SaveScriptToShelf(const QString& name, const QString& script, bool isMel);

    // Echo and error options, kept in the host.
    static void SetEchoAllCommandsEnabled(bool enabled);
    static bool EchoAllCommandsEnabled();
    static void SetLineNumbersInErrorsEnabled(bool enabled);
    static bool LineNumbersInErrorsEnabled();
    static void SetShowStackTraceEnabled(bool enabled);
    static bool ShowStackTraceEnabled();
    static void SetSuppressStackWindowEnabled(bool enabled);

    // Workspace control.
    static bool WorkspaceControlExists();
    static bool WorkspaceControlVisible();
    static bool WorkspaceControlFloating();
    static bool WorkspaceControlCollapsed();
    static void SetWorkspaceControlVisible(bool visible);
    static void CloseWorkspaceControl();
    static QWidget* CreateWorkspaceControl();
    static void SetWorkspaceLabel(const QString& title);
    static QWidget* GetWorkspaceControl();
    static void SetWorkspaceChild(QWidget* child, QWidget* parent);
    static void UpdateWorkspaceControlGeometry();

    // Host information.
    static bool IsBatchMode();
    static QString GetMayaVersionString();
    static QString GetUserScriptsDirectory();
    static QString GetMayaPrefsDirectory();
    static double GetCustomScaleValue();
    static QString GetPythonVersion();
    static QStringList PythonKeywords();
    static QStringList PythonBuiltins();
    static QStringList MelCommands();
    static QStringList MelRunTimeCommands();
    static QStringList MelProcedures();
    static QStringList MelKeywords();
    static void RefreshCommandList();
    static QStringList CommandFlags(const QString& command);
    static QString GetExistingHistory();
    static void ClearExistingHistory();

    // Help.
    static void ShowHelp(const QString& topic);
    static void CommandDocumentation(const QString& command, bool python);
    static void RevealInFolder(const QString& path);

    // The embedded Python helpers.
    static void PythonUpdateModuleState();
    static void PythonRevertModuleState();
    static void PrintPythonPath();
    static void PrintPythonEnviron();
    static void PrintMayaEnvVarPaths(const QString& name);
    static bool PythonExecStatement(const QString& code);
    static void PythonSyntaxCheck(const QString& code, QStringList& result);
    static void PythonAttributesFromSource(const QString& source, const QString& object, QStringList& result,
                                           bool namesOnly);
    static void ClearCommandResponse();
    static void ImportPyMel();
    static void UpdatePylintPythonPath();

    // Menu and button.
    static void CreateMainMenuItem();
    static void RemoveMainMenuItem();
    static void OverrideScriptEditorButton();
    static void RestoreScriptEditorButton();

    // Load time.
    static void SourceApplicationScripts();

private:
    static void SetOptionFlag(const QString& mel, const char* optionVar, bool enabled);
    static bool OptionFlag(const char* optionVar);
    static bool QueryWorkspaceControl(const QString& flag);
    static QString ReadResource(const QString& path, bool* ok);
    static QStringList ToQStringList(const MStringArray& array);
};
