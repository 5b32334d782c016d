#pragma once

#include "editor/CodeEditorProperties.h"
#include "settings/KeyBindings.h"
#include "settings/PreferencePage.h"
#include "shell/ExecuteType.h"
#include "sidebar/GoToFilterType.h"
#include "sidebar/SideBarView.h"
#include "tabs/TabDropZone.h"

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtWidgets/QWidget>

class ActivityBar;
class BaseParser;
class CodeEditor;
class CodeEditorGroup;
class GoToWidget;
class QFileInfo;
class PanelGroup;
class PreferencesDialog;
class QAction;
class QHBoxLayout;
class QMenu;
class QMenuBar;
class QSplitter;
class QVBoxLayout;
class RecoveryStore;
struct FileStamp;
struct TextFileFormat;
class SideBar;
class StatusBar;

// The one top widget of the editor. It owns every panel, holds their layout and its
// persistence, and is the place through which the panels talk: each panel emits signals that
// are connected here, and this class forwards.
class BrindletEditor : public QWidget
{
    Q_OBJECT

public:
    explicit BrindletEditor(QWidget* parent = nullptr);
    ~BrindletEditor() override;

    void AppendToOutputThreadSafe(const QString& text);
    void Shutdown();
    void WriteUserConfigs();
    void ApplyPreferences();
    void UpdateTitleBar();

    void SaveWindowGeometry(bool force);
    void SaveSplitterState();
    void RestoreSplitterState();
    void SaveSideBarSizes();
    void SaveOutputSplitterSizes();

    int GetCodeEditorGroupCount() const;
    int GetCodeEditorGroupIndex(CodeEditorGroup* group) const;
    CodeEditorGroup* GetCodeEditorGroupByIndex(int index) const;
    CodeEditorGroup* GetCodeEditorGroupById(int id) const;
    int GetActiveCodeEditorGroupIndex() const;
    CodeEditorGroup* GetActiveCodeEditorGroup() const;
    void SetActiveCodeEditorGroup(CodeEditorGroup* group, bool force);
    int GetCodeEditorCount() const;
    void RefreshCodeEditorGroups(bool equalizeSizes);
    void KeepActiveCodeEditorGroup(CodeEditorGroup* active, bool activeWasShown);

    bool IsBrindletEditorWidget(QWidget* widget) const;
    bool IsSideBarWidget(QWidget* widget) const;

    CodeEditor* GetActiveCodeEditor() const;
    CodeEditor* GetCodeEditorWithFocus() const;
    CodeEditorGroup* GetCodeEditorGroupByPath(const QString& path) const;
    bool CodeEditorExists(const QString& path) const;
    QStringList GetCodeEditorPaths() const;

    // Buffers and files.
    int CreateCodeEditor(CodeEditorType type, CodeEditorLanguage language, const QString& filePath,
                         const QString& label, const QString& text, CodeEditorGroup* group, int index);
    int CreateCodeEditor(CodeEditorType type, const QString& filePath, const QString& label,
                         CodeEditorGroup* group, int index);
    CodeEditor* GetCodeEditor(const QString& path, bool open);
    int GetCodeEditorIndex(CodeEditorGroup* group, const QString& path) const;
    QString GetFileText(const QString& path) const;
    static CodeEditorLanguage GetLanguageFromFilename(const QFileInfo& info);
    bool SaveCodeEditor(int groupIndex, int index);
    bool SaveCodeEditor(const QString& filePath, const QString& text);
    bool CloseCodeEditor(CodeEditorGroup* group, int index, bool prompt);
    bool CloseCodeEditor(int groupIndex, int index, bool prompt);
    void UpdateCodeEditorGroupDetails();
    void RestoreCodeEditors();
    bool ModifiedFilesExist() const;
    int ShowUnsavedFileDialog(const QString& name);
    void AddRecentFile(const QString& path);

    // Script execution.
    bool IsPythonModuleStateUpdated() const;

    // Access for the panels' owner and its checks.
    QSplitter* GetEditorGroupSplitter() const { return editorGroupSplitter; }
    QSplitter* GetOutputSplitter() const { return outputSplitter; }
    QSplitter* GetSideBarSplitter() const { return sideBarSplitter; }
    PanelGroup* GetPanelGroup() const { return panelGroup; }
    SideBar* GetSideBar() const { return sideBar; }
    ActivityBar* GetActivityBar() const { return activityBar; }
    StatusBar* GetStatusBar() const { return statusBar; }
    KeyBindings* GetKeyBindings() { return &keyBindings; }
    QAction* GetToggleActivityBarAction() const { return toggleActivityBarAction; }
    QAction* GetToggleStatusBarAction() const { return toggleStatusBarAction; }
    QAction* GetToggleSideBarPositionAction() const { return toggleSideBarPositionAction; }
    // The go-to palette, made on first use.
    GoToWidget* GetGoToWidget();

signals:
    void AppendToOutputRequested(const QString& text);

public slots:
    void AppendToOutput(const QString& text);
    void ClearHistory();
    void SaveState();
    void OnPreferencesModified();

    void ShowSideBar();
    void HideSideBar();
    void SetSideBarVisible(bool visible, bool splitterMove = false);
    void ToggleSideBar();
    void ShowCodeEditorAndOutput();
    void HideCodeEditor();
    void HideOutput();
    void SetCodeEditorVisible(bool visible, bool splitterMove = false);
    void SetOutputVisible(bool visible, bool splitterMove = false);
    void ToggleCodeEditor();
    void ToggleOutput();
    void SetSideBarView(SideBarView view);
    void OnActivityBarViewSelected(SideBarView view);
    void ShowExplorer();
    void ShowQuickHelpView();
    void SetActivityBarVisible(bool visible);
    void ToggleActivityBar();
    void SetStatusBarVisible(bool visible);
    void ToggleStatusBar();
    void SetSideBarPosition(bool left);
    void ToggleSideBarPosition();
    void SetOutputPosition(bool vertical, bool topLeft);
    void OutputPositionTop();
    void OutputPositionBottom();
    void OutputPositionLeft();
    void OutputPositionRight();
    void ToggleCodeEditorLayout();
    void OnSplitterMoved();
    void OnApplicationFocusChanged(QWidget* old, QWidget* now);
    void FocusActiveCodeEditor();
    void RefreshCodeEditorGroupMiniToolbar();
    void OnActiveCodeEditorChanged();
    void OnCodeEditorGroupFocusReceived(CodeEditorGroup* group);
    void UpdateOverrideScriptEditorButton();
    void UpdateKeyBindings();
    void UpdateCodeEditorExtraSelections();
    void UpdateFontsAndColors();
    void UpdateCodeEditorFont();
    void UpdateCodeEditorTextOptions();
    void UpdateTabsAndSpaces();
    void UpdateOutputFont();
    void IncreaseCodeEditorFontSize();
    void DecreaseCodeEditorFontSize();
    void IncreaseOutputFontSize();
    void DecreaseOutputFontSize();
    void IncreaseFontSize();
    void DecreaseFontSize();
    void ResetFontSize();

    void UpdateInterpreter();
    void UpdateCursorPosition();
    void UpdateStatusBarInfo();
    void UpdateOverwriteMode();
    void SetParsingEnabled(bool enabled);
    void OnParserUpdated(BaseParser* parser);

    // Buffers and files.
    void NewBuffer();
    void NewBuffer(CodeEditorLanguage language);
    void NewMelBuffer();
    void NewPythonBuffer();
    void OpenFile();
    bool OpenFile(const QString& filePath, bool temp = false);
    void OpenRecentFile();
    void ReopenClosedFile();
    void ClearRecentFiles();
    void OpenPylintrc();
    void ShowPreferencesDialog();
    void ShowPreferencesDialog(PreferencePage page);
    void Save();
    void SaveAs();
    void SaveAll(bool internalBuffers = true, bool fileBuffers = true);
    void Rename();
    void Rename(CodeEditorGroup* codeEditorGroup, int codeEditorIndex);
    void RevertFile();
    void CloseFile();
    void CloseAllFiles();
    void OnCloseTabRequested(CodeEditorGroup* group, int index);
    void OnCloseOtherTabsRequested(CodeEditorGroup* group, int index);
    void OnCloseTabsToRightRequested(CodeEditorGroup* group, int index);
    void OnFileChanged(const QString& path);
    void CheckForFileChanges();
    void OnFilePathChanged(const QString& oldFilePath, const QString& newFilePath);
    void OnMoveTabRequested(int oldId, int oldIndex, int newId, int newIndex);
    void OnMoveTabToZoneRequested(int oldId, int oldIndex, int newId, TabDropZone dropZone);
    void OnOpenFileRequested(int groupId, int index, const QString& filePath);
    void OnOpenFilesRequested(int groupId, TabDropZone dropZone, const QStringList& filePaths);
    void SetActiveCodeEditor(int codeEditorGroupIndex, int codeEditorIndex, bool applyFocus = true);
    void SetActiveCodeEditor(const QString& filePath);
    void UpdateRecentFilesMenu();

    // Script execution.
    void Execute(ExecuteType type);
    void Execute();
    void ExecuteLine();
    void ExecuteAll();
    void PythonUpdateModuleState();
    void PythonRevertModuleState();
    void UpdatePythonRevertModuleStateOnExecute();
    void OnTogglePythonRevertModuleStateOnExecuteRequested();
    void SourceScript();
    void SaveScriptToShelf();
    void PythonDirSelection();
    void PythonHelpSelection();
    void PrintPythonPath();
    void PrintPythonEnviron();
    void PrintMayaEnvVarPaths();
    void ParseForcedImports();

    // Navigation.
    void ShowGotoWidget(GoToFilterType filter, bool reverse);
    void GoToFile();
    void GoToSymbolInFile();
    void GoToLine();
    void NextUsedEditor(bool backwards);
    void SetPosition(int position, bool startOfLine);
    void SetCurrentLine(int lineNumber);
    void SetPositionAndScrollValue(int position, int scrollValue);
    void ShowInsertPathDialog();

    // Menus and actions.
    void Undo();
    void Redo();
    void Cut();
    void Copy();
    void Paste();
    void SelectAll();
    void IncreaseIndent();
    void DecreaseIndent();
    void CopyLineUp();
    void CopyLineDown();
    void MoveLineUp();
    void MoveLineDown();
    void DeleteLine();
    void ToggleComment();
    void ToggleBlockComment();
    void ConvertTabsToSpaces();
    void ToggleRenderWhitespace();
    void ToggleWordWrap();
    void OnShowEditMenu();
    void OnShowViewMenu();
    void OnShowOutputVerbosityMenu();
    void UpdateOutputVerbosity();
    void ToggleEchoAllCommands();
    void OnEchoAllCommandsChanged();
    void ToggleLineNumbersInErrors();
    void ToggleShowStackTrace();
    void ToggleSuppressStackWindow();
    void ToggleWriteOutputToFile();
    void OnWriteOutputToFileUpdated(bool enabled);
    void GoToEditor();
    void GoToEditorGroup();
    void NextEditor(bool backwards);
    void NextEditorGroup(bool backwards);
    void MelCommandReference();
    void PythonCommandReference();
    void NodeAndAttributeReference();
    void ShowAboutDialog();

    void OpenCommandReference();
    // Side bar.
    void RefreshOpenCodeEditorsView();
    void UpdateOpenCodeEditorViewSelection();
    void ShowQuickHelp();
    void SetQuickHelpSearchText(const QString& text, bool showWhenHidden);
    void InsertQuickHelpFlag(const QString& flag);
    void OnOutlineSelectionChanged(int startPos, int endPos);
    void OnShowInSideBarRequested(const QString& path);
    void OnWorkspaceItemDeleted(const QString& path, bool isFolder);
    void OnWorkspaceModified();
    void RefreshWorkspace();
    void AddFolderToWorkspace(const QString& dirPath = QString());
    void SaveWorkspaceAs();
    void OpenWorkspace();
    // Find in a buffer or in the output, as the focus decides; search in files.
    void Find(bool replace = false, bool updateFindText = true, bool dialogHasFocus = true,
              bool maintainReplaceVisibility = false);
    void Replace();
    void FindNext(bool backwards = false);
    void FindPrevious();
    void SelectAndFindNext();
    void SelectAndFindPrevious();
    void ReplaceNext();
    void ReplaceAll();
    void FindInFiles(bool replace = false);
    void ReplaceInFiles();
    void ShowSearch();
    void FindInFilesNext();
    void FindInFilesPrevious();
    void Search(const QString& text, const QStringList& includeList, const QStringList& excludeList,
                bool matchCase, bool matchWholeWords, bool useRegularExpression);
    void UpdateSearch(const QString& path, const QString& text);
    void OnSearchCleared();
    void OnSearchFocusChanged(const QString& path, int position);
    void OnFindAndReplace(const QString& path, int position);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void InitializeForMaya();
    void CreateActions();
    void CreateAction(QAction** action, const QString& text, const QString& statusTip, KeySequenceType type,
                      bool checkable = false);
    void CreateMenus();
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    void ConnectCodeEditorGroup(CodeEditorGroup* group);
    void SyncActions();
    void InstallSplitterHandleFilters();
    void StoreOutputSplitterSizesOnPress();
    void StoreSideBarSplitterSizesOnPress();
    bool HandleMainWindowClose(QEvent* event);
    void SetOutputSplitterSizes(int codeEditorSize, int outputSize);
    void SetSideBarSplitterSizes(int sideBarSize, int otherSize);
    int SideBarSplitterSize() const;
    int OutputSplitterSize() const;
    int CodeEditorSplitterSize() const;
    void CreateFileActions();
    void CreateCommandActions();
    void CreateFileMenu();
    void CreateCommandMenu();
    void CreateEditActions();
    void CreateViewActions();
    void CreateGoActions();
    void CreateOutputActions();
    void CreateSearchActions();
    void CreateHelpActions();
    void CreateEditMenu();
    void CreateViewMenu();
    void CreateGoMenu();
    void CreateOutputMenu();
    void CreateHelpMenu();
    QMenu* AddMenu(QMenu* parent, const QString& title);
    void PreSave(CodeEditor* codeEditor);
    QString ShowSaveFileNameDialog(const CodeEditorProperties& properties);
    bool ShowConfirmCloseInternalBufferDialog(const QString& label);
    void DeleteFileByPath(const QString& path);
    static void ReplaceOutlineExpandedHashPath(const QString& oldPath, const QString& newPath);
    void ReloadChangedFile(const QString& path);
    void ChangeFocusedFontSize(int step);
    CodeEditorGroup* FirstHiddenCodeEditorGroup() const;
    void PlaceCodeEditorGroupBeside(CodeEditorGroup* group, CodeEditorGroup* target, TabDropZone dropZone);
    void ConnectSideBar();
    // Files kept byte for byte, conflicts, failed saves and recovery copies.
    QString ReadFileText(const QString& path, TextFileFormat& format, FileStamp& stamp) const;
    void ApplyFileFormat(CodeEditor* codeEditor, const TextFileFormat& format, const FileStamp& stamp);
    bool WriteCodeEditor(CodeEditor* codeEditor, const QString& path);
    bool ConfirmOverwriteChangedFile(CodeEditor* codeEditor);
    bool ReloadCodeEditor(CodeEditor* codeEditor, bool undoable);
    void FindLostFileChanges();
    void RestoreOrphanedBuffers();
    void OfferRecoveredBuffers();
    void RestoreRecoveredBuffer(const QString& filePath, const CodeEditorProperties& properties,
                                const QString& text);
    bool SaveFilesBeforeQuit(bool saveAll);
    int ShowFailedSaveDialog(const QString& label, const QString& reason);
    void KeepChangedFilesInRecovery();
    void ConnectSearch();
    void SelectAndFind(bool backwards);
    void SearchFolder(const QString& topPath, const QString& relativePath);
    bool IncludePathInSearch(const QString& path) const;
    void SearchInternalBuffers();
    CodeEditor* GetSearchCodeEditor(const QString& path, bool open);

    // The host's main window; it may be gone before this widget is.
    QPointer<QWidget> mainWindow;

    QAction* saveStateAction = nullptr;
    QAction* clearOutputAction = nullptr;
    QAction* explorerAction = nullptr;
    QAction* quickHelpAction = nullptr;
    QAction* toggleCodeEditorAction = nullptr;
    QAction* toggleOutputAction = nullptr;
    QAction* toggleSideBarAction = nullptr;
    QAction* toggleActivityBarAction = nullptr;
    QAction* toggleStatusBarAction = nullptr;
    QAction* toggleCodeEditorLayoutAction = nullptr;
    QAction* toggleSideBarPositionAction = nullptr;
    QAction* outputPositionTopAction = nullptr;
    QAction* outputPositionBottomAction = nullptr;
    QAction* outputPositionLeftAction = nullptr;
    QAction* outputPositionRightAction = nullptr;
    QAction* increaseFontSizeAction = nullptr;
    QAction* decreaseFontSizeAction = nullptr;
    QAction* resetFontSizeAction = nullptr;
    QAction* newBufferAction = nullptr;
    QAction* newMelBufferAction = nullptr;
    QAction* newPythonBufferAction = nullptr;
    QAction* openFileAction = nullptr;
    QAction* reopenClosedFileAction = nullptr;
    QAction* clearRecentFilesAction = nullptr;
    QAction* saveAction = nullptr;
    QAction* saveAsAction = nullptr;
    QAction* saveAllAction = nullptr;
    QAction* renameAction = nullptr;
    QAction* saveScriptToShelfAction = nullptr;
    QAction* sourceScriptAction = nullptr;
    QAction* revertFileAction = nullptr;
    QAction* closeFileAction = nullptr;
    QAction* closeAllFilesAction = nullptr;
    QAction* executeAction = nullptr;
    QAction* executeAltAction = nullptr;
    QAction* executeLineAction = nullptr;
    QAction* executeAllAction = nullptr;
    QAction* printPythonPathAction = nullptr;
    QAction* printPythonEnvironAction = nullptr;
    QAction* pythonSelectionDirAction = nullptr;
    QAction* pythonSelectionHelpAction = nullptr;
    QAction* pythonUpdateModuleStateAction = nullptr;
    QAction* pythonRevertModuleStateAction = nullptr;
    QAction* pythonRevertModuleStateOnExecuteAction = nullptr;
    QList<QAction*> envVarActions;
    QAction* openWorkspaceAction = nullptr;
    QAction* addFolderToWorkspaceAction = nullptr;
    QAction* saveWorkspaceAsAction = nullptr;
    QAction* undoAction = nullptr;
    QAction* redoAction = nullptr;
    QAction* cutAction = nullptr;
    QAction* copyAction = nullptr;
    QAction* pasteAction = nullptr;
    QAction* selectAllAction = nullptr;
    QAction* increaseIndentAction = nullptr;
    QAction* decreaseIndentAction = nullptr;
    QAction* copyLineUpAction = nullptr;
    QAction* copyLineDownAction = nullptr;
    QAction* moveLineUpAction = nullptr;
    QAction* moveLineDownAction = nullptr;
    QAction* deleteLineAction = nullptr;
    QAction* toggleCommentAction = nullptr;
    QAction* toggleBlockCommentAction = nullptr;
    QAction* convertTabsToSpacesAction = nullptr;
    QAction* findAction = nullptr;
    QAction* replaceAction = nullptr;
    QAction* findInFilesAction = nullptr;
    QAction* replaceInFilesAction = nullptr;
    QAction* insertPathAction = nullptr;
    QAction* preferencesAction = nullptr;
    QAction* toggleRenderWhitespaceAction = nullptr;
    QAction* toggleWordWrapAction = nullptr;
    QAction* nextEditorAction = nullptr;
    QAction* previousEditorAction = nullptr;
    QAction* nextUsedEditorAction = nullptr;
    QAction* previousUsedEditorAction = nullptr;
    QAction* nextEditorGroupAction = nullptr;
    QAction* previousEditorGroupAction = nullptr;
    QAction* goToFileAction = nullptr;
    QAction* goToSymbolInFileAction = nullptr;
    QAction* goToLineAction = nullptr;
    QAction* echoAllAction = nullptr;
    QAction* normalVerbosityAction = nullptr;
    QAction* minimalVerbosityAction = nullptr;
    QAction* lineNumbersInErrorsAction = nullptr;
    QAction* showStackTraceAction = nullptr;
    QAction* suppressStackWindowAction = nullptr;
    QAction* writeOutputToFileAction = nullptr;
    QAction* openPylintrcAction = nullptr;
    QAction* melCommandReferenceAction = nullptr;
    QAction* pythonCommandReferenceAction = nullptr;
    QAction* nodeAndAttributeReferenceAction = nullptr;
    QAction* aboutAction = nullptr;
    QAction* findNextAction = nullptr;
    QAction* findPreviousAction = nullptr;
    QAction* selectAndFindNextAction = nullptr;
    QAction* selectAndFindPreviousAction = nullptr;
    QAction* findInFilesNextAction = nullptr;
    QAction* findInFilesPreviousAction = nullptr;
    QAction* replaceNextAction = nullptr;
    QAction* replaceAllAction = nullptr;
    QAction* echoAllCommandsAction = nullptr;
    QAction* commandReferenceAction = nullptr;

    QMenuBar* menuBar = nullptr;
    QMenu* recentFilesMenu = nullptr;
    QMenu* editMenu = nullptr;
    QMenu* viewMenu = nullptr;
    QMenu* verbosityMenu = nullptr;
    PanelGroup* panelGroup = nullptr;
    PreferencesDialog* preferencesDialog = nullptr; // made at its first showing
    SideBar* sideBar = nullptr;
    ActivityBar* activityBar = nullptr;
    StatusBar* statusBar = nullptr;
    QSplitter* editorGroupSplitter = nullptr;
    QSplitter* outputSplitter = nullptr;
    QSplitter* sideBarSplitter = nullptr;
    QVBoxLayout* mainLayout = nullptr;
    QHBoxLayout* centralLayout = nullptr;
    QList<CodeEditorGroup*> codeEditorGroups;
    KeyBindings keyBindings;
    QStringList watchedChanges;
    QStringList ownSaves;
    bool keyBindingsEnabled = true;
    // The first buffers are made, and saved, before the bindings are read; writing the file
    // then would replace the user's bindings with the defaults.
    bool keyBindingsRead = false;
    bool moduleStateUpdated = false;
    RecoveryStore* recoveryStore = nullptr;
    // Files whose save failed at quit and that the user let go: kept as recovery copies only.
    QStringList keptInRecovery;
    // Why the last write failed, in words, for the question at quit.
    QString lastSaveFailure;
    GoToWidget* goToWidget = nullptr; // child popup, made on first use
};
