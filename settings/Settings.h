#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QMultiHash>
#include <QtCore/QRect>
#include <QtCore/QRegularExpression>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QFont>

class QSettings;

// The editor's configuration: one process-wide store of static members, persisted in
// "brindletEditor2.ini" under the host's preferences folder. Every class reads it directly;
// BrindletEditor::ApplyPreferences pushes changes to the widgets.
class Settings
{
public:
    Settings() = delete;

    static constexpr QChar PATH_SEP = QLatin1Char(':');
    static constexpr int MINIMUM_FONT_SIZE = 6;
    static constexpr int MAXIMUM_FONT_SIZE = 24;
    static constexpr int MINIMUM_RECENT_FILES = 0;
    static constexpr int MAXIMUM_RECENT_FILES = 10;
    static constexpr int DEFAULT_NUM_RECENT_FILES = 8;
    static constexpr int NUM_CODE_EDITOR_GROUPS = 3;
    static constexpr int CONFIG_FILE_VERSION = 1;
    static const QString APPLICATION_NAME;
    static const QString APPLICATION_TITLE;
    static const QString MEL_COMMAND;
    static const QString VERSION_STRING;
    static const QString AUTHOR;
    static const QString CONFIG_FILE_NAME;
    static const QString PREFS_DIRECTORY_NAME;
    static const QString INTERNAL_BUFFERS_DIRECTORY_NAME;
    static const QString TEMP_DIRECTORY_NAME;
    static const QString WORKSPACES_DIRECTORY_NAME;
    static const QString DEFAULT_WORKSPACE_FILE_NAME;
    static const QString WORKSPACE_EXTENSION;

    static QFont GetDefaultFont();
    static QString GetUserConfigDirectory();
    static QString GetUserConfigPath();
    static QString GetInternalBufferDirectoryPath();
    static QString GetTempDirectoryPath();
    static QString GetWorkspacesDirectoryPath();
    static QString GetDefaultWorkspacePath();
    static QString GetWorkspacePath();

    static void ReadUserConfig();
    static void WriteUserConfig();
    // Puts every member back to its default value, as at load.
    static void ResetToDefaults();

    static void AddRecentFile(const QString& path);
    static void UpdateRecentFiles(int count);
    static void ClearRecentFiles();

    static QByteArray GetWorkspaceState();
    static void RestoreWorkspaceState(const QByteArray& bytes);
    static QByteArray GetOutlineExpandedState();
    static void RestoreOutlineExpandedState(const QByteArray& bytes);

    // In memory only.
    static int numRecentFiles;
    static bool insertPathForwardSlashes;
    static bool insertPathEscapeBackslashes;
    static int mainWindowSize;
    static int sideBarSize;
    static int codeEditorSize;
    static int outputSize;
    static bool overwriteEnabled;
    static bool searchViewActive;
    static double customScaleValue;
    static bool traceHideAll;
    static QString pylintPythonPath;
    static QStringList pythonParsedForcedImports;
    static QString defaultMelBufferLabel;
    static QString defaultPythonBufferLabel;
    static QString defaultTextBufferLabel;
    static QRegularExpression globalSearchRegEx;
    static QString globalSearchReplaceText;
    static QStringList globalSearchIncludePaths;
    static QStringList globalSearchExcludePaths;
    static QList<QRegularExpression> globalSearchIncludePatterns;
    static QList<QRegularExpression> globalSearchExcludePatterns;
    static QStringList workspaceFolders;
    static QList<QByteArray> workspaceExpandedFolderHashes;
    static QMultiHash<QString, QString> outlineExpandedHash;
    static QFont codeEditorFont;
    static QFont outputFont;

    // Group "main".
    static QRect windowGeometry;
    static QStringList recentFiles;
    static bool codeEditorVisible;
    static bool outputVisible;
    static bool sideBarVisible;
    static bool openEditorsVisible;
    static bool outlineVisible;
    static bool activityBarVisible;
    static bool statusBarVisible;
    static bool statusBarInterpreterVisible;
    static bool statusBarErrorCountVisible;
    static bool statusBarLineMessageVisible;
    static bool showCodeEditorExecuteBtn;
    static bool showCodeEditorExecuteAllBtn;
    static bool showCodeEditorExecuteLineBtn;
    static bool codeEditorOrientVertical;
    static QByteArray outputState;
    static bool outputOrientVertical;
    static bool outputTopLeft;
    static QByteArray sideBarState;
    static bool sideBarLeft;
    static QByteArray explorerState;
    static bool workspaceExpanded;
    static bool outlineExpanded;
    static bool openEditorsExpanded;
    static bool renderWhitespace;
    static bool renderEndOfLine;
    static bool wordWrapEnabled;
    static bool suppressStackWindow;
    static int codeEditorZoom;
    static int outputZoom;
    static bool insertPathAbsolute;

    // Group "tabs".
    static QStringList tabDetails;
    static QStringList tabBarScrolling;
    static int activeTabViewIndex;

    // Group "workspace".
    static QString workspacePath;

    // Group "outline".
    static bool outlineHideImports;
    static bool outlineHideMain;
    static bool outlineHideGlobalProcs;
    static bool outlineHideGlobalVariables;
    static bool outlineHideProcs;

    // Group "preferences".
    static bool saveAllOnExecute;
    static bool saveAllOnExit;
    static bool overrideScriptEditorButton;
    static bool checkForModifiedFiles;
    static bool alwaysShowEditorAndOutputOnStartup;
    static bool showUnsavedFileDialogOnMayaExit;
    static bool showConfirmDialogOnInternalBufferClose;
    static bool executeScriptOnIdle;
    static bool showTabBar;
    static bool showCloseButtonOnTabs;
    static bool showTabBarMiniToolbar;
    static bool lockTabPositions;
    static bool mouseWheelChangesActiveTab;
    static int tabsSizeDefault;
    static bool tabsInsertSpacesDefault;
    static bool tabsAutoIndentDefault;
    static bool tabsUseDefaultsMel;
    static int tabsSizeMel;
    static bool tabsInsertSpacesMel;
    static bool tabsAutoIndentMel;
    static bool tabsUseDefaultsPython;
    static int tabsSizePython;
    static bool tabsInsertSpacesPython;
    static bool tabsAutoIndentPython;
    static bool codeEditorBackspaceToTabStop;
    static bool codeEditorDisplayIndentationGuides;
    static bool codeEditorMouseWheelChangesFontSize;
    static bool codeEditorMatchedSelectionWordsOnly;
    static int outputBufferSize;
    static bool outputMinimalTrace;
    static bool outputMouseWheelChangesFontSize;
    static bool outputDisableEchoAllOnStartup;
    static bool outputDoubleClickIncludesDollarSign;
    static bool outputMatchedSelectionWordsOnly;
    static bool outputSyntaxHighlightingEnabled;
    static bool outputWordWrapEnabled;
    static bool melDisplayErrors;
    static bool melSmartIndent;
    static bool melIndentToParentheses;
    static bool melInsertClosingParentheses;
    static bool melInsertClosingQuotes;
    static bool melTrimTrailingWhiteSpacesOnSave;
    static bool melEnsureNewLineAtEofOnSave;
    static bool melDoubleClickIncludesDollarSign;
    static bool melAutoCompleteToQuickHelp;
    static bool melCompleteOnUser;
    static bool melCompleteOnLetters;
    static bool pythonDisplayErrors;
    static bool pythonSmartIndent;
    static bool pythonIndentToParentheses;
    static bool pythonInsertClosingParentheses;
    static bool pythonInsertClosingQuotes;
    static bool pythonTrimTrailingWhiteSpacesOnSave;
    static bool pythonEnsureNewLineAtEofOnSave;
    static bool pythonHideCompiledFiles;
    static bool pythonImportPyMelOnLoad;
    static bool pythonAutoCompleteToQuickHelp;
    static bool pythonConfirmOverwriteModuleState;
    static bool pythonDisableRevertModuleStateOnExecuteOnStartup;
    static bool pythonRevertModuleStateOnExecute;
    static bool pythonCompleteOnUser;
    static bool pythonCompleteOnLetters;
    static bool pythonCompleteOnDot;
    static bool pythonIncludeKeywords;
    static bool pythonIncludeBuiltins;
    static bool pythonNativeMayaAutoCompleteFallback;
    static QString pythonForcedImports;
    static bool pylintEnabled;
    static QString pylintPath;
    static QString pylintPythonHomePath;
    static QString pylintConfigPath;
    static QString pylintAdditionalPythonPaths;
    static bool pylintUseMinimalCheckers;
    static bool pylintShowErrors;

private:
    static QString EnsureDirectory(const QString& name, const char* failureMessage);
    static bool ExecuteScriptOnIdleDefault();
    static bool ExecuteScriptOnIdleIsWritten();
    static void ReadWorkspaceGroup(QSettings& file);
    static void ReadOutlineGroup(QSettings& file);
    static void ReadPreferencesGroup(QSettings& file);
    static void WriteWorkspaceGroup(QSettings& file);
    static void WriteOutlineGroup(QSettings& file);
    static void WritePreferencesGroup(QSettings& file);
    static void MakeVisibilitySane();
};
