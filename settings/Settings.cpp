#include "settings/Settings.h"

#include "plugin/Logger.h"
#include "plugin/MayaUtil.h"
#include "settings/IniValue.h"

#include <QtCore/QDataStream>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QIODevice>
#include <QtCore/QSettings>

#include <variant>

namespace
{
// The state is written at every change of tabs: a file that cannot be written is said once,
// and again only after it worked in between.
void ReportConfigFailure(bool failed, bool& reported, const QString& message)
{
    if (!failed)
    {
        reported = false;
        return;
    }
    if (reported)
        return;
    reported = true;
    Logger::Error(message);
}

bool& ReadFailureReported()
{
    static bool reported = false;
    return reported;
}

bool& WriteFailureReported()
{
    static bool reported = false;
    return reported;
}
} // namespace

const QString Settings::APPLICATION_NAME = QStringLiteral("BrindletEditor2");
const QString Settings::APPLICATION_TITLE = QStringLiteral("Brindlet Editor 2");
const QString Settings::MEL_COMMAND = QStringLiteral("brindletEditor2");
const QString Settings::VERSION_STRING = QStringLiteral("2.7.6");
const QString Settings::AUTHOR = QStringLiteral("Dara Tolvanek");
const QString Settings::CONFIG_FILE_NAME = QStringLiteral("brindletEditor2.ini");
const QString Settings::PREFS_DIRECTORY_NAME = QStringLiteral("brindletEditor2");
const QString Settings::INTERNAL_BUFFERS_DIRECTORY_NAME = QStringLiteral("internalBuffers");
const QString Settings::TEMP_DIRECTORY_NAME = QStringLiteral("temp");
const QString Settings::WORKSPACES_DIRECTORY_NAME = QStringLiteral("workspaces");
const QString Settings::DEFAULT_WORKSPACE_FILE_NAME = QStringLiteral("default");
const QString Settings::WORKSPACE_EXTENSION = QStringLiteral(".bq2-workspace");

int Settings::numRecentFiles;
bool Settings::insertPathForwardSlashes;
bool Settings::insertPathEscapeBackslashes;
int Settings::mainWindowSize;
int Settings::sideBarSize;
int Settings::codeEditorSize;
int Settings::outputSize;
bool Settings::overwriteEnabled;
bool Settings::searchViewActive;
double Settings::customScaleValue;
bool Settings::traceHideAll;
QString Settings::pylintPythonPath;
QStringList Settings::pythonParsedForcedImports;
QString Settings::defaultMelBufferLabel;
QString Settings::defaultPythonBufferLabel;
QString Settings::defaultTextBufferLabel;
QRegularExpression Settings::globalSearchRegEx;
QString Settings::globalSearchReplaceText;
QStringList Settings::globalSearchIncludePaths;
QStringList Settings::globalSearchExcludePaths;
QList<QRegularExpression> Settings::globalSearchIncludePatterns;
QList<QRegularExpression> Settings::globalSearchExcludePatterns;
QStringList Settings::workspaceFolders;
QList<QByteArray> Settings::workspaceExpandedFolderHashes;
QMultiHash<QString, QString> Settings::outlineExpandedHash;
QFont Settings::codeEditorFont;
QFont Settings::outputFont;
QRect Settings::windowGeometry;
QStringList Settings::recentFiles;
bool Settings::codeEditorVisible;
bool Settings::outputVisible;
bool Settings::sideBarVisible;
bool Settings::openEditorsVisible;
bool Settings::outlineVisible;
bool Settings::activityBarVisible;
bool Settings::statusBarVisible;
bool Settings::statusBarInterpreterVisible;
bool Settings::statusBarErrorCountVisible;
bool Settings::statusBarLineMessageVisible;
bool Settings::showCodeEditorExecuteBtn;
bool Settings::showCodeEditorExecuteAllBtn;
bool Settings::showCodeEditorExecuteLineBtn;
bool Settings::codeEditorOrientVertical;
QByteArray Settings::outputState;
bool Settings::outputOrientVertical;
bool Settings::outputTopLeft;
QByteArray Settings::sideBarState;
bool Settings::sideBarLeft;
QByteArray Settings::explorerState;
bool Settings::workspaceExpanded;
bool Settings::outlineExpanded;
bool Settings::openEditorsExpanded;
bool Settings::renderWhitespace;
bool Settings::renderEndOfLine;
bool Settings::wordWrapEnabled;
bool Settings::suppressStackWindow;
int Settings::codeEditorZoom;
int Settings::outputZoom;
bool Settings::insertPathAbsolute;
QStringList Settings::tabDetails;
QStringList Settings::tabBarScrolling;
int Settings::activeTabViewIndex;
QString Settings::workspacePath;
bool Settings::outlineHideImports;
bool Settings::outlineHideMain;
bool Settings::outlineHideGlobalProcs;
bool Settings::outlineHideGlobalVariables;
bool Settings::outlineHideProcs;
bool Settings::saveAllOnExecute;
bool Settings::saveAllOnExit;
bool Settings::overrideScriptEditorButton;
bool Settings::checkForModifiedFiles;
bool Settings::alwaysShowEditorAndOutputOnStartup;
bool Settings::showUnsavedFileDialogOnMayaExit;
bool Settings::showConfirmDialogOnInternalBufferClose;
bool Settings::executeScriptOnIdle;
bool Settings::showTabBar;
bool Settings::showCloseButtonOnTabs;
bool Settings::showTabBarMiniToolbar;
bool Settings::lockTabPositions;
bool Settings::mouseWheelChangesActiveTab;
int Settings::tabsSizeDefault;
bool Settings::tabsInsertSpacesDefault;
bool Settings::tabsAutoIndentDefault;
bool Settings::tabsUseDefaultsMel;
int Settings::tabsSizeMel;
bool Settings::tabsInsertSpacesMel;
bool Settings::tabsAutoIndentMel;
bool Settings::tabsUseDefaultsPython;
int Settings::tabsSizePython;
bool Settings::tabsInsertSpacesPython;
bool Settings::tabsAutoIndentPython;
bool Settings::codeEditorBackspaceToTabStop;
bool Settings::codeEditorDisplayIndentationGuides;
bool Settings::codeEditorMouseWheelChangesFontSize;
bool Settings::codeEditorMatchedSelectionWordsOnly;
int Settings::outputBufferSize;
bool Settings::outputMinimalTrace;
bool Settings::outputMouseWheelChangesFontSize;
bool Settings::outputDisableEchoAllOnStartup;
bool Settings::outputDoubleClickIncludesDollarSign;
bool Settings::outputMatchedSelectionWordsOnly;
bool Settings::outputSyntaxHighlightingEnabled;
bool Settings::outputWordWrapEnabled;
bool Settings::melDisplayErrors;
bool Settings::melSmartIndent;
bool Settings::melIndentToParentheses;
bool Settings::melInsertClosingParentheses;
bool Settings::melInsertClosingQuotes;
bool Settings::melTrimTrailingWhiteSpacesOnSave;
bool Settings::melEnsureNewLineAtEofOnSave;
bool Settings::melDoubleClickIncludesDollarSign;
bool Settings::melAutoCompleteToQuickHelp;
bool Settings::melCompleteOnUser;
bool Settings::melCompleteOnLetters;
bool Settings::pythonDisplayErrors;
bool Settings::pythonSmartIndent;
bool Settings::pythonIndentToParentheses;
bool Settings::pythonInsertClosingParentheses;
bool Settings::pythonInsertClosingQuotes;
bool Settings::pythonTrimTrailingWhiteSpacesOnSave;
bool Settings::pythonEnsureNewLineAtEofOnSave;
bool Settings::pythonHideCompiledFiles;
bool Settings::pythonImportPyMelOnLoad;
bool Settings::pythonAutoCompleteToQuickHelp;
bool Settings::pythonConfirmOverwriteModuleState;
bool Settings::pythonDisableRevertModuleStateOnExecuteOnStartup;
bool Settings::pythonRevertModuleStateOnExecute;
bool Settings::pythonCompleteOnUser;
bool Settings::pythonCompleteOnLetters;
bool Settings::pythonCompleteOnDot;
bool Settings::pythonIncludeKeywords;
bool Settings::pythonIncludeBuiltins;
bool Settings::pythonNativeMayaAutoCompleteFallback;
QString Settings::pythonForcedImports;
bool Settings::pylintEnabled;
QString Settings::pylintPath;
QString Settings::pylintPythonHomePath;
QString Settings::pylintConfigPath;
QString Settings::pylintAdditionalPythonPaths;
bool Settings::pylintUseMinimalCheckers;
bool Settings::pylintShowErrors;

namespace
{
// One plain key of the file, bound to the member that holds it.
struct IntRange
{
    int* member;
    int minimum;
    int maximum;
};
using Member = std::variant<bool*, IntRange, QString*, QStringList*, QByteArray*, QRect*>;
struct Entry
{
    const char* key;
    Member member;
};

const QList<Entry>& MainEntries()
{
    static const QList<Entry> entries = {
        {"windowGeometry", &Settings::windowGeometry},
        {"recentFiles", &Settings::recentFiles},
        {"codeEditorVisible", &Settings::codeEditorVisible},
        {"outputVisible", &Settings::outputVisible},
        {"sideBarVisible", &Settings::sideBarVisible},
        {"openEditorsVisible", &Settings::openEditorsVisible},
        {"outlineVisible", &Settings::outlineVisible},
        {"activityBarVisible", &Settings::activityBarVisible},
        {"statusBarVisible", &Settings::statusBarVisible},
        {"statusBarInterpreterVisible", &Settings::statusBarInterpreterVisible},
        {"statusBarErrorCountVisible", &Settings::statusBarErrorCountVisible},
        {"statusBarLineMessageVisible", &Settings::statusBarLineMessageVisible},
        {"showCodeEditorExecuteBtn", &Settings::showCodeEditorExecuteBtn},
        {"showCodeEditorExecuteAllBtn", &Settings::showCodeEditorExecuteAllBtn},
        {"showCodeEditorExecuteLineBtn", &Settings::showCodeEditorExecuteLineBtn},
        {"codeEditorOrientVertical", &Settings::codeEditorOrientVertical},
        {"outputState", &Settings::outputState},
        {"outputOrientVertical", &Settings::outputOrientVertical},
        {"outputTopLeft", &Settings::outputTopLeft},
        {"sideBarState", &Settings::sideBarState},
        {"sideBarLeft", &Settings::sideBarLeft},
        {"explorerState", &Settings::explorerState},
        {"workspaceExpanded", &Settings::workspaceExpanded},
        {"outlineExpanded", &Settings::outlineExpanded},
        {"openEditorsExpanded", &Settings::openEditorsExpanded},
        {"renderWhitespace", &Settings::renderWhitespace},
        {"renderEndOfLine", &Settings::renderEndOfLine},
        {"wordWrapEnabled", &Settings::wordWrapEnabled},
        {"suppressStackWindow", &Settings::suppressStackWindow},
        {"codeEditorZoom", IntRange{&Settings::codeEditorZoom, -100, 100}},
        {"outputZoom", IntRange{&Settings::outputZoom, -100, 100}},
        {"insertPathAbsolute", &Settings::insertPathAbsolute},
    };
    return entries;
}

const QList<Entry>& TabsEntries()
{
    static const QList<Entry> entries = {
        {"tabDetails", &Settings::tabDetails},
        {"tabBarScrolling", &Settings::tabBarScrolling},
        {"activeTabViewIndex",
         IntRange{&Settings::activeTabViewIndex, 0, Settings::NUM_CODE_EDITOR_GROUPS - 1}},
    };
    return entries;
}

const QList<Entry>& OutlineEntries()
{
    static const QList<Entry> entries = {
        {"outlineHideImports", &Settings::outlineHideImports},
        {"outlineHideMain", &Settings::outlineHideMain},
        {"outlineHideGlobalProcs", &Settings::outlineHideGlobalProcs},
        {"outlineHideGlobalVariables", &Settings::outlineHideGlobalVariables},
        {"outlineHideProcs", &Settings::outlineHideProcs},
    };
    return entries;
}

// The preferences in four runs, around the keys that need more than a plain read.
const QList<Entry>& PreferencesEntriesBeforeFonts()
{
    static const QList<Entry> entries = {
        {"saveAllOnExecute", &Settings::saveAllOnExecute},
        {"saveAllOnExit", &Settings::saveAllOnExit},
        {"overrideScriptEditorButton", &Settings::overrideScriptEditorButton},
        {"checkForModifiedFiles", &Settings::checkForModifiedFiles},
        {"alwaysShowEditorAndOutputOnStartUp", &Settings::alwaysShowEditorAndOutputOnStartup},
        {"showUnsavedFileDialogOnMayaExit", &Settings::showUnsavedFileDialogOnMayaExit},
        {"showConfirmDialogOnInternalBufferClose", &Settings::showConfirmDialogOnInternalBufferClose},
    };
    return entries;
}

const QList<Entry>& PreferencesEntriesAfterIdle()
{
    static const QList<Entry> entries = {
        {"showTabBar", &Settings::showTabBar},
        {"showCloseButtonOnTabs", &Settings::showCloseButtonOnTabs},
        {"showTabBarMiniToolbar", &Settings::showTabBarMiniToolbar},
        {"lockTabPositions", &Settings::lockTabPositions},
        {"mouseWheelChangesActiveTab", &Settings::mouseWheelChangesActiveTab},
        {"tabsSizeDefault", IntRange{&Settings::tabsSizeDefault, 1, 32}},
        {"tabsInsertSpacesDefault", &Settings::tabsInsertSpacesDefault},
        {"tabsAutoIndentDefault", &Settings::tabsAutoIndentDefault},
        {"tabsUseDefaultsMel", &Settings::tabsUseDefaultsMel},
        {"tabsSizeMel", IntRange{&Settings::tabsSizeMel, 1, 32}},
        {"tabsInsertSpacesMel", &Settings::tabsInsertSpacesMel},
        {"tabsAutoIndentMel", &Settings::tabsAutoIndentMel},
        {"tabsUseDefaultsPython", &Settings::tabsUseDefaultsPython},
        {"tabsSizePython", IntRange{&Settings::tabsSizePython, 1, 32}},
        {"tabsInsertSpacesPython", &Settings::tabsInsertSpacesPython},
        {"tabsAutoIndentPython", &Settings::tabsAutoIndentPython},
        {"codeEditorBackspaceToTabStop", &Settings::codeEditorBackspaceToTabStop},
        {"codeEditorDisplayIndentationGuides", &Settings::codeEditorDisplayIndentationGuides},
        {"codeEditorMouseWheelChangesFontSize", &Settings::codeEditorMouseWheelChangesFontSize},
        {"codeEditorMatchedSelectionWordsOnly", &Settings::codeEditorMatchedSelectionWordsOnly},
    };
    return entries;
}

const QList<Entry>& PreferencesEntriesAfterFonts()
{
    static const QList<Entry> entries = {
        {"outputBufferSize", IntRange{&Settings::outputBufferSize, 0, 100000000}},
        {"outputMinimalTrace", &Settings::outputMinimalTrace},
        {"outputMouseWheelChangesFontSize", &Settings::outputMouseWheelChangesFontSize},
        {"outputDisableEchoAllOnStartup", &Settings::outputDisableEchoAllOnStartup},
        {"outputDoubleClickIncludesDollarSign", &Settings::outputDoubleClickIncludesDollarSign},
        {"outputMatchedSelectionWordsOnly", &Settings::outputMatchedSelectionWordsOnly},
        {"outputSyntaxHighlightingEnabled", &Settings::outputSyntaxHighlightingEnabled},
        {"outputWordWrapEnabled", &Settings::outputWordWrapEnabled},
        {"melDisplayErrors", &Settings::melDisplayErrors},
        {"melSmartIndent", &Settings::melSmartIndent},
        {"melIndentToParentheses", &Settings::melIndentToParentheses},
        {"melInsertClosingParentheses", &Settings::melInsertClosingParentheses},
        {"melInsertClosingQuotes", &Settings::melInsertClosingQuotes},
        {"melTrimTrailingWhiteSpacesOnSave", &Settings::melTrimTrailingWhiteSpacesOnSave},
        {"melEnsureNewLineAtEofOnSave", &Settings::melEnsureNewLineAtEofOnSave},
        {"melDoubleClickIncludesDollarSign", &Settings::melDoubleClickIncludesDollarSign},
        {"melAutoCompleteToQuickHelp", &Settings::melAutoCompleteToQuickHelp},
        {"melCompleteOnUser", &Settings::melCompleteOnUser},
        {"melCompleteOnLetters", &Settings::melCompleteOnLetters},
        {"pythonDisplayErrors", &Settings::pythonDisplayErrors},
        {"pythonSmartIndent", &Settings::pythonSmartIndent},
        {"pythonIndentToParentheses", &Settings::pythonIndentToParentheses},
        {"pythonInsertClosingParentheses", &Settings::pythonInsertClosingParentheses},
        {"pythonInsertClosingQuotes", &Settings::pythonInsertClosingQuotes},
        {"pythonTrimTrailingWhiteSpacesOnSave", &Settings::pythonTrimTrailingWhiteSpacesOnSave},
        {"pythonEnsureNewLineAtEofOnSave", &Settings::pythonEnsureNewLineAtEofOnSave},
        {"pythonHideCompiledFiles", &Settings::pythonHideCompiledFiles},
        {"pythonImportPyMelOnLoad", &Settings::pythonImportPyMelOnLoad},
        {"pythonAutoCompleteToQuickHelp", &Settings::pythonAutoCompleteToQuickHelp},
        {"pythonConfirmOverwriteModuleState", &Settings::pythonConfirmOverwriteModuleState},
    };
    return entries;
}

const QList<Entry>& PreferencesEntriesAfterRevert()
{
    static const QList<Entry> entries = {
        {"pythonCompleteOnUser", &Settings::pythonCompleteOnUser},
        {"pythonCompleteOnLetters", &Settings::pythonCompleteOnLetters},
        {"pythonCompleteOnDot", &Settings::pythonCompleteOnDot},
        {"pythonIncludeKeywords", &Settings::pythonIncludeKeywords},
        {"pythonIncludeBuiltins", &Settings::pythonIncludeBuiltins},
        {"pythonNativeMayaAutoCompleteFallback", &Settings::pythonNativeMayaAutoCompleteFallback},
        {"pythonForcedImports", &Settings::pythonForcedImports},
        {"pylintEnabled", &Settings::pylintEnabled},
        {"pylintPath", &Settings::pylintPath},
        {"pylintPythonHomePath", &Settings::pylintPythonHomePath},
        {"pylintConfigPath", &Settings::pylintConfigPath},
        {"pylintAdditionalImportPaths", &Settings::pylintAdditionalPythonPaths},
        {"pylintUseMinimalCheckers", &Settings::pylintUseMinimalCheckers},
        {"pylintShowErrors", &Settings::pylintShowErrors},
    };
    return entries;
}

struct EntryReader
{
    const QSettings& file;
    QString key;
    void operator()(bool* member) const { *member = IniValue::ReadBool(file, key, *member); }
    void operator()(const IntRange& range) const
    {
        *range.member = IniValue::ReadInt(file, key, *range.member, range.minimum, range.maximum);
    }
    void operator()(QString* member) const { *member = IniValue::ReadString(file, key, *member); }
    void operator()(QStringList* member) const { *member = IniValue::ReadStringList(file, key, *member); }
    void operator()(QByteArray* member) const { *member = IniValue::ReadByteArray(file, key, *member); }
    void operator()(QRect* member) const { *member = IniValue::ReadRect(file, key, *member); }
};

struct EntryWriter
{
    QSettings& file;
    QString key;
    void operator()(bool* member) const { file.setValue(key, *member); }
    void operator()(const IntRange& range) const { file.setValue(key, *range.member); }
    void operator()(QString* member) const { file.setValue(key, *member); }
    void operator()(QStringList* member) const { file.setValue(key, *member); }
    void operator()(QByteArray* member) const { file.setValue(key, *member); }
    void operator()(QRect* member) const { file.setValue(key, *member); }
};

void ReadEntries(const QSettings& file, const QList<Entry>& entries)
{
    for (const Entry& entry : entries)
        std::visit(EntryReader{file, QLatin1String(entry.key)}, entry.member);
}

void WriteEntries(QSettings& file, const QList<Entry>& entries)
{
    for (const Entry& entry : entries)
        std::visit(EntryWriter{file, QLatin1String(entry.key)}, entry.member);
}

void ReadFont(const QSettings& file, const QString& prefix, QFont& font)
{
    const QString family = IniValue::ReadString(file, prefix + QStringLiteral("FontFamily"), font.family());
    if (!family.trimmed().isEmpty())
        font.setFamily(family);
    font.setPointSize(IniValue::ReadInt(file, prefix + QStringLiteral("FontSize"), font.pointSize(),
                                        Settings::MINIMUM_FONT_SIZE, Settings::MAXIMUM_FONT_SIZE));
}

void WriteFont(QSettings& file, const QString& prefix, const QFont& font)
{
    file.setValue(prefix + QStringLiteral("FontFamily"), font.family());
    file.setValue(prefix + QStringLiteral("FontSize"), font.pointSize());
}

const bool defaultsApplied = (Settings::ResetToDefaults(), true);
} // namespace

void Settings::ResetToDefaults()
{
    numRecentFiles = DEFAULT_NUM_RECENT_FILES;
    insertPathForwardSlashes = true;
    insertPathEscapeBackslashes = false;
    mainWindowSize = 3;
    sideBarSize = 1;
    codeEditorSize = 2;
    outputSize = 1;
    overwriteEnabled = false;
    searchViewActive = false;
    customScaleValue = 1.0;
    traceHideAll = false;
    pylintPythonPath.clear();
    pythonParsedForcedImports.clear();
    defaultMelBufferLabel = QStringLiteral("MEL");
    defaultPythonBufferLabel = QStringLiteral("Python");
    defaultTextBufferLabel = QStringLiteral("Text");
    globalSearchRegEx = QRegularExpression();
    globalSearchReplaceText.clear();
    globalSearchIncludePaths.clear();
    globalSearchExcludePaths.clear();
    globalSearchIncludePatterns.clear();
    globalSearchExcludePatterns.clear();
    workspaceFolders.clear();
    workspaceExpandedFolderHashes.clear();
    outlineExpandedHash.clear();
    codeEditorFont = GetDefaultFont();
    outputFont = GetDefaultFont();

    windowGeometry = QRect();
    recentFiles.clear();
    codeEditorVisible = outputVisible = sideBarVisible = true;
    openEditorsVisible = outlineVisible = activityBarVisible = true;
    statusBarVisible = statusBarInterpreterVisible = true;
    statusBarErrorCountVisible = statusBarLineMessageVisible = true;
    showCodeEditorExecuteBtn = showCodeEditorExecuteAllBtn = showCodeEditorExecuteLineBtn = true;
    codeEditorOrientVertical = false;
    outputState.clear();
    outputOrientVertical = true;
    outputTopLeft = true;
    sideBarState.clear();
    sideBarLeft = true;
    explorerState.clear();
    workspaceExpanded = outlineExpanded = openEditorsExpanded = true;
    renderWhitespace = renderEndOfLine = wordWrapEnabled = false;
    suppressStackWindow = true;
    codeEditorZoom = 0;
    outputZoom = 0;
    insertPathAbsolute = true;

    tabDetails.clear();
    tabBarScrolling.clear();
    activeTabViewIndex = 0;
    workspacePath.clear();

    outlineHideImports = true;
    outlineHideMain = outlineHideGlobalProcs = outlineHideGlobalVariables = outlineHideProcs = false;

    saveAllOnExecute = saveAllOnExit = overrideScriptEditorButton = checkForModifiedFiles = true;
    alwaysShowEditorAndOutputOnStartup = true;
    showUnsavedFileDialogOnMayaExit = showConfirmDialogOnInternalBufferClose = true;
    // Depends on the host's version, which is only known once the host runs: see ReadUserConfig.
    executeScriptOnIdle = false;
    showTabBar = showCloseButtonOnTabs = true;
    showTabBarMiniToolbar = lockTabPositions = mouseWheelChangesActiveTab = false;
    tabsSizeDefault = tabsSizeMel = tabsSizePython = 4;
    tabsInsertSpacesDefault = tabsAutoIndentDefault = true;
    tabsUseDefaultsMel = tabsInsertSpacesMel = tabsAutoIndentMel = true;
    tabsUseDefaultsPython = tabsInsertSpacesPython = tabsAutoIndentPython = true;
    codeEditorBackspaceToTabStop = codeEditorDisplayIndentationGuides = true;
    codeEditorMouseWheelChangesFontSize = true;
    codeEditorMatchedSelectionWordsOnly = false;
    outputBufferSize = 3000;
    outputMinimalTrace = false;
    outputMouseWheelChangesFontSize = true;
    outputDisableEchoAllOnStartup = false;
    outputDoubleClickIncludesDollarSign = true;
    outputMatchedSelectionWordsOnly = false;
    outputSyntaxHighlightingEnabled = true;
    outputWordWrapEnabled = false;
    melDisplayErrors = melSmartIndent = true;
    melIndentToParentheses = false;
    melInsertClosingParentheses = melInsertClosingQuotes = true;
    melTrimTrailingWhiteSpacesOnSave = melEnsureNewLineAtEofOnSave = false;
    melDoubleClickIncludesDollarSign = melAutoCompleteToQuickHelp = true;
    melCompleteOnUser = melCompleteOnLetters = true;
    pythonDisplayErrors = pythonSmartIndent = true;
    pythonIndentToParentheses = false;
    pythonInsertClosingParentheses = pythonInsertClosingQuotes = true;
    pythonTrimTrailingWhiteSpacesOnSave = pythonEnsureNewLineAtEofOnSave = false;
    pythonHideCompiledFiles = true;
    pythonImportPyMelOnLoad = false;
    pythonAutoCompleteToQuickHelp = pythonConfirmOverwriteModuleState = true;
    pythonDisableRevertModuleStateOnExecuteOnStartup = true;
    pythonRevertModuleStateOnExecute = false;
    pythonCompleteOnUser = pythonCompleteOnLetters = pythonCompleteOnDot = true;
    pythonIncludeKeywords = pythonIncludeBuiltins = true;
    pythonNativeMayaAutoCompleteFallback = false;
    pythonForcedImports.clear();
    pylintEnabled = false;
    pylintPath.clear();
    pylintPythonHomePath.clear();
    pylintConfigPath.clear();
    pylintAdditionalPythonPaths.clear();
    pylintUseMinimalCheckers = true;
    pylintShowErrors = false;
}

QFont Settings::GetDefaultFont()
{
    QFont font(QStringLiteral("Liberation Mono"), 9);
    font.setStyleHint(QFont::TypeWriter, QFont::PreferDefault);
    return font;
}

QString Settings::GetUserConfigDirectory()
{
    QString prefs = MayaUtil::GetMayaPrefsDirectory();
    if (prefs.isEmpty())
    {
        Logger::Error("Failed to retrieve Maya prefs directory");
        return QString();
    }
    if (!prefs.endsWith(QLatin1Char('/')))
        prefs += QLatin1Char('/');
    const QString path =
        QStringLiteral("%1%2").arg(QDir(prefs).absolutePath() + QLatin1Char('/'), PREFS_DIRECTORY_NAME);
    if (!QDir(path).exists() && !QDir().mkpath(path))
        Logger::Error("Failed to create user config directory");
    return path;
}

QString Settings::GetUserConfigPath()
{
    const QString directory = GetUserConfigDirectory();
    if (directory.isEmpty())
        return QString();
    return QFileInfo(directory + QLatin1Char('/') + CONFIG_FILE_NAME).absoluteFilePath();
}

QString Settings::EnsureDirectory(const QString& name, const char* failureMessage)
{
    const QString path = QFileInfo(GetUserConfigDirectory() + QLatin1Char('/') + name).absoluteFilePath();
    if (!QDir(path).exists() && !QDir().mkpath(path))
        Logger::Error(failureMessage);
    return path;
}

QString Settings::GetInternalBufferDirectoryPath()
{
    return EnsureDirectory(INTERNAL_BUFFERS_DIRECTORY_NAME, "Failed to create internal buffer directory");
}

QString Settings::GetTempDirectoryPath()
{
    return EnsureDirectory(TEMP_DIRECTORY_NAME, "Failed to create temp directory");
}

QString Settings::GetWorkspacesDirectoryPath()
{
    return EnsureDirectory(WORKSPACES_DIRECTORY_NAME, "Failed to create workspaces directory");
}

QString Settings::GetDefaultWorkspacePath()
{
    return QStringLiteral("%1/%2%3").arg(GetWorkspacesDirectoryPath(), DEFAULT_WORKSPACE_FILE_NAME,
                                         WORKSPACE_EXTENSION);
}

QString Settings::GetWorkspacePath()
{
    return workspacePath.isEmpty() ? GetDefaultWorkspacePath() : workspacePath;
}

bool Settings::ExecuteScriptOnIdleIsWritten()
{
    return !ExecuteScriptOnIdleDefault();
}

bool Settings::ExecuteScriptOnIdleDefault()
{
    const QString version = MayaUtil::GetMayaVersionString();
    return version.startsWith(QLatin1String("2018")) || version.startsWith(QLatin1String("2019"));
}

void Settings::ReadUserConfig()
{
    const QString path = GetUserConfigPath();
    if (path.isEmpty())
        return;
    QSettings file(path, QSettings::IniFormat);
    const QFileInfo info(path);
    ReportConfigFailure((info.exists() && (!info.isFile() || !info.isReadable())) ||
                            file.status() == QSettings::AccessError,
                        ReadFailureReported(), QStringLiteral("Failed to read %1").arg(path));

    file.beginGroup(QStringLiteral("main"));
    ReadEntries(file, MainEntries());
    file.endGroup();

    file.beginGroup(QStringLiteral("tabs"));
    ReadEntries(file, TabsEntries());
    file.endGroup();

    file.beginGroup(QStringLiteral("workspace"));
    ReadWorkspaceGroup(file);
    file.endGroup();

    file.beginGroup(QStringLiteral("outline"));
    ReadOutlineGroup(file);
    file.endGroup();

    file.beginGroup(QStringLiteral("preferences"));
    ReadPreferencesGroup(file);
    file.endGroup();

    MakeVisibilitySane();
}

void Settings::ReadWorkspaceGroup(QSettings& file)
{
    workspacePath = IniValue::ReadString(file, QStringLiteral("workspacePath"), workspacePath);
    if (!workspacePath.isEmpty() && QFileInfo(workspacePath).isRelative())
        workspacePath = QStringLiteral("%1/%2").arg(GetWorkspacesDirectoryPath(), workspacePath);
    RestoreWorkspaceState(
        IniValue::ReadByteArray(file, QStringLiteral("workspaceState"), GetWorkspaceState()));
}

void Settings::ReadOutlineGroup(QSettings& file)
{
    ReadEntries(file, OutlineEntries());
    const QByteArray state = IniValue::ReadByteArray(file, QStringLiteral("outlineState"), QByteArray());
    if (!state.isEmpty())
        RestoreOutlineExpandedState(state);
}

void Settings::ReadPreferencesGroup(QSettings& file)
{
    ReadEntries(file, PreferencesEntriesBeforeFonts());
    executeScriptOnIdle =
        IniValue::ReadBool(file, QStringLiteral("executeScriptOnIdle"), ExecuteScriptOnIdleDefault());
    ReadEntries(file, PreferencesEntriesAfterIdle());
    ReadFont(file, QStringLiteral("codeEditor"), codeEditorFont);
    ReadFont(file, QStringLiteral("output"), outputFont);
    ReadEntries(file, PreferencesEntriesAfterFonts());
    pythonDisableRevertModuleStateOnExecuteOnStartup =
        IniValue::ReadBool(file, QStringLiteral("pythonDisableRevertModuleStateOnExecuteOnStartup"),
                           pythonDisableRevertModuleStateOnExecuteOnStartup);
    // With the disable option on, the revert starts off at every start whatever the file says.
    if (!pythonDisableRevertModuleStateOnExecuteOnStartup)
        pythonRevertModuleStateOnExecute = IniValue::ReadBool(
            file, QStringLiteral("pythonRevertModuleStateOnExecute"), pythonRevertModuleStateOnExecute);
    ReadEntries(file, PreferencesEntriesAfterRevert());
}

void Settings::MakeVisibilitySane()
{
    if (!alwaysShowEditorAndOutputOnStartup)
    {
        if (!codeEditorVisible && !outputVisible)
            codeEditorVisible = true;
        return;
    }
    if (!codeEditorVisible || !outputVisible)
    {
        outputState.clear();
        codeEditorVisible = true;
        outputVisible = true;
    }
}

void Settings::WriteUserConfig()
{
    const QString path = GetUserConfigPath();
    if (path.isEmpty())
        return;
    QSettings file(path, QSettings::IniFormat);

    file.beginGroup(QStringLiteral("main"));
    file.setValue(QStringLiteral("version"), CONFIG_FILE_VERSION);
    WriteEntries(file, MainEntries());
    file.endGroup();

    file.beginGroup(QStringLiteral("tabs"));
    WriteEntries(file, TabsEntries());
    file.endGroup();

    file.beginGroup(QStringLiteral("workspace"));
    WriteWorkspaceGroup(file);
    file.endGroup();

    file.beginGroup(QStringLiteral("outline"));
    WriteOutlineGroup(file);
    file.endGroup();

    file.beginGroup(QStringLiteral("preferences"));
    WritePreferencesGroup(file);
    file.endGroup();

    // QSettings replaces the file only through a complete temporary copy, so a failed write
    // leaves the last good file in place.
    file.sync();
    ReportConfigFailure(file.status() == QSettings::AccessError, WriteFailureReported(),
                        QStringLiteral("Failed to write %1").arg(path));
}

void Settings::WriteWorkspaceGroup(QSettings& file)
{
    const QString workspacesDirectory = GetWorkspacesDirectoryPath() + QLatin1Char('/');
    QString path = workspacePath;
    if (path.startsWith(workspacesDirectory))
        path = QDir(workspacesDirectory).relativeFilePath(path);
    file.setValue(QStringLiteral("workspacePath"), path);
    file.setValue(QStringLiteral("workspaceState"), GetWorkspaceState());
}

void Settings::WriteOutlineGroup(QSettings& file)
{
    WriteEntries(file, OutlineEntries());
    file.setValue(QStringLiteral("outlineState"), GetOutlineExpandedState());
}

void Settings::WritePreferencesGroup(QSettings& file)
{
    WriteEntries(file, PreferencesEntriesBeforeFonts());
    if (ExecuteScriptOnIdleIsWritten())
        file.setValue(QStringLiteral("executeScriptOnIdle"), executeScriptOnIdle);
    WriteEntries(file, PreferencesEntriesAfterIdle());
    WriteFont(file, QStringLiteral("codeEditor"), codeEditorFont);
    WriteFont(file, QStringLiteral("output"), outputFont);
    WriteEntries(file, PreferencesEntriesAfterFonts());
    file.setValue(QStringLiteral("pythonDisableRevertModuleStateOnExecuteOnStartup"),
                  pythonDisableRevertModuleStateOnExecuteOnStartup);
    file.setValue(QStringLiteral("pythonRevertModuleStateOnExecute"), pythonRevertModuleStateOnExecute);
    WriteEntries(file, PreferencesEntriesAfterRevert());
}

void Settings::AddRecentFile(const QString& path)
{
    if (path.isEmpty())
        return;
    recentFiles.removeAll(path);
    recentFiles.prepend(path);
    UpdateRecentFiles(numRecentFiles);
    WriteUserConfig();
}

void Settings::UpdateRecentFiles(int count)
{
    const bool valid = count >= MINIMUM_RECENT_FILES && count <= MAXIMUM_RECENT_FILES;
    numRecentFiles = valid ? count : DEFAULT_NUM_RECENT_FILES;
    while (recentFiles.size() > numRecentFiles)
        recentFiles.removeLast();
}

void Settings::ClearRecentFiles()
{
    recentFiles.clear();
    WriteUserConfig();
}

QByteArray Settings::GetWorkspaceState()
{
    QByteArray bytes;
    for (const QByteArray& hash : workspaceExpandedFolderHashes)
        bytes.append(hash);
    return bytes;
}

void Settings::RestoreWorkspaceState(const QByteArray& bytes)
{
    constexpr int hashSize = 16;
    workspaceExpandedFolderHashes.clear();
    for (int offset = 0; offset < bytes.size(); offset += hashSize)
        workspaceExpandedFolderHashes.append(bytes.mid(offset, hashSize));
}

QByteArray Settings::GetOutlineExpandedState()
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << outlineExpandedHash;
    return bytes;
}

void Settings::RestoreOutlineExpandedState(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    QMultiHash<QString, QString> hash;
    stream >> hash;
    // A damaged record must not leave half a hash behind.
    outlineExpandedHash = stream.status() == QDataStream::Ok ? hash : QMultiHash<QString, QString>();
}
