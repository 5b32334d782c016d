#pragma once

#include "editor/CodeEditorProperties.h"
#include "language/MelParser.h"
#include "language/PythonParser.h"
#include "tabs/TabDropZone.h"

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtWidgets/QWidget>

class BaseParser;
class CodeEditor;
class CodeEditorGroupTabBar;
class FlatButton;
class KeyBindings;
class QMenu;
class QMimeData;
class QStackedWidget;

// One pane of editors: a tab bar with its mini toolbar above a stack of CodeEditor widgets, the
// tab at index i showing the editor at index i. The group holds no buffer logic of its own: it
// keeps tabs and stack in step, relays what its editors and its tab bar report, and offers the
// drop zones by which a dragged tab splits the view. Its owner decides what every request means.
//
// The parsers, the Pylint worker thread and the find bar join the group with the language
// services and the editor's search; the places where they attach are marked below.
class CodeEditorGroup : public QWidget
{
    Q_OBJECT

public:
    static const QString MOVE_CODE_EDITOR_MIME_TYPE;

    CodeEditorGroup(int id, KeyBindings* keyBindings, QWidget* parent = nullptr);
    ~CodeEditorGroup() override;

    int GetId() const { return id; }

    // Editors. Each mutation checks first that tabs and stack agree, and reports if they don't.
    int InsertCodeEditor(int index, CodeEditor* codeEditor);
    int InsertCodeEditor(int index, const CodeEditorProperties& properties, const QString& text);
    CodeEditor* RemoveCodeEditor(int index);
    void DeleteCodeEditor(int index);
    void MoveCodeEditor(int from, int to);
    void MoveCodeEditor(CodeEditorGroup* source, int from, int to);
    void UpdateFilePath(const QString& oldPath, const QString& newPath, CodeEditorLanguage language);
    int GetCodeEditorIndex(const QString& path) const;
    CodeEditor* GetCodeEditor(int index) const;
    // Every editor, in tab order.
    QList<CodeEditor*> GetCodeEditors() const;
    CodeEditor* GetCurrent() const;
    bool CodeEditorExists(int index) const;
    int GetCount() const;
    int GetCodeEditorCount() const { return GetCount(); }
    int GetCurrentIndex() const;
    void SetCurrentIndex(int index);
    int GetTabBarScrollValue() const;
    void SetTabBarScrollValue(int value);

    // Forwarders to the editor at an index; without one they return an empty value.
    bool GetProperties(int index, CodeEditorProperties& properties) const;
    void SetProperties(int index, const CodeEditorProperties& properties);
    CodeEditorType GetType(int index) const;
    CodeEditorLanguage GetLanguage(int index) const;
    QString GetFilePath(int index) const;
    QString GetLabel(int index) const;
    QString GetText(int index) const;
    void SetText(int index, const QString& text);
    QString GetSelectedTextForExecute(int index) const;
    QString GetCurrentLineForExecute(int index) const;
    bool IsModified(int index) const;
    void SetModified(int index, bool modified);
    int GetCursorPosition(int index) const;
    void SetCursorPosition(int index, int position, bool center);
    void SetCursorSelection(int index, int start, int end);
    int GetVerticalScrollBarValue(int index) const;
    void SetVerticalScrollBarValue(int index, int value);

    // What the tab at an index shows.
    void SetTabLabel(int index, const QString& label, bool modified, CodeEditorType type);
    void SetTabToolTip(int index, const CodeEditorProperties& properties);
    void SetTabLanguage(int index, CodeEditorLanguage language);
    void SetTabType(int index, CodeEditorType type);

    // The whole group.
    QList<CodeEditorProperties> GetAllProperties() const;
    QList<CodeEditorProperties> GetLastUsedEditors();
    void UpdateTextOptions();
    void UpdateFont();
    void UpdateOverwriteMode();
    void UpdateFontsAndColors();
    void UpdateKeyBindings();
    void UpdatePreferences();
    void SetMiniToolbarVisible(bool visible);
    bool IsMiniToolbarVisible() const { return miniToolbarVisible; }
    void SetTabDropOtherGroupsEnabled(bool enabled) { tabDropOtherGroupsEnabled = enabled; }
    bool IsTabDropOtherGroupsEnabled() const { return tabDropOtherGroupsEnabled; }
    TabDropZone GetDropZone() const { return dropZone; }

    // Parsing: one parser per language, owned by the group and reused for every run.
    void SetParsingEnabled(bool enabled) { parsingEnabled = enabled; }
    bool IsParsingEnabled() const { return parsingEnabled; }
    BaseParser* GetParser() const;
    void UpdateParser();
    void UpdateParser(CodeEditor* codeEditor);

    // Menus as the group runs them; the caller owns each.
    QMenu* CreateMiniToolbarContextMenu();
    QMenu* CreateOpenCodeEditorMenu();

signals:
    void NewTabRequested();
    void CloseTabRequested(CodeEditorGroup* codeEditorGroup, int index);
    void CloseOtherTabsRequested(CodeEditorGroup* codeEditorGroup, int index);
    void CloseTabsToRightRequested(CodeEditorGroup* codeEditorGroup, int index);
    void CurrentTabChanged();
    void MoveTabRequested(int oldId, int oldIndex, int newId, int newIndex);
    void MoveTabToZoneRequested(int oldId, int oldIndex, int newId, TabDropZone dropZone);
    void OpenFileRequested(int groupId, int index, const QString& filePath);
    void OpenFilesRequested(int groupId, TabDropZone dropZone, const QStringList& filePaths);
    void RenameRequested(CodeEditorGroup* codeEditorGroup, int index);
    void ShowInSideBarRequested(const QString& path);
    void ReceivedFocus(CodeEditorGroup* codeEditorGroup);
    void TextChanged(const QString& path, const QString& text);
    void FileChanged(const QString& path);
    void CursorPositionChanged();
    void OverwriteModeChanged();
    void ErrorAndWarningTextChanged();
    void ExecutePressed();
    void ExecuteAllPressed();
    void ExecuteLinePressed();
    void SaveScriptToShelfPressed();
    void InsertPathRequested();
    void PythonDirRequested();
    void PythonHelpRequested();
    void PythonUpdateModuleStateRequested();
    void PythonRevertModuleStateRequested();
    void TogglePythonRevertModuleStateOnExecuteRequested();
    void ParserUpdated(BaseParser* parser);
    void QuickHelpChanged(const QString& text, bool showWhenHidden);
    void MiniToolbarDisplayModified();
    void IncreaseFontSizeRequested();
    void DecreaseFontSizeRequested();

public slots:
    void FocusCurrentCodeEditor();
    void CloseFindReplace();
    void ShowMiniToolbarContextMenu(const QPoint& pos);
    void ShowOpenCodeEditorContextMenu();
    void SetCurrentTabFromAction();
    void ToggleMiniToolbarDisplay();
    void CopyPath(int index);

private slots:
    // From the tab bar.
    void OnCurrentTabChanged(int index);
    void OnNewTabRequested();
    void OnCloseTabRequested(int index);
    void OnCloseOtherTabsRequested(int index);
    void OnCloseTabsToRightRequested(int index);
    void OnMoveTabRequested(int oldId, int oldIndex, int newId, int newIndex);
    void OnOpenFileRequested(int index, const QString& filePath);
    void OnRenameRequested(int index);
    void OnShowInFolder(int index);
    void OnShowInSideBar(int index);

    // From the mini toolbar.
    void OnExecuteBtnClicked();
    void OnExecuteAllBtnClicked();
    void OnExecuteLineBtnClicked();

    // From the editors.
    void OnCodeEditorReceivedFocus();
    void OnTextChanged(const QString& path, const QString& text);
    void OnModificationChanged(bool modified, CodeEditor* codeEditor);
    void OnFileChanged(const QString& path);
    void OnCursorPositionChanged();
    void OnOverwriteModeChanged();
    void OnErrorAndWarningTextChanged();
    void OnQuickHelpChanged(const QString& text, bool showWhenHidden);
    void OnIncreaseFontSizeRequested();
    void OnDecreaseFontSizeRequested();
    void OnExecute();
    void OnExecuteAll();
    void OnExecuteLine();
    void OnSaveScriptToShelf();
    void OnInsertPathRequested();
    void OnPythonDirRequested();
    void OnPythonHelpRequested();
    void OnPythonUpdateModuleStateRequested();
    void OnPythonRevertModuleStateRequested();
    void OnTogglePythonRevertModuleStateOnExecuteRequested();

protected:
    void showEvent(QShowEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void CreateWidgets();
    void CreateMiniToolbar();
    void CreateLayout();
    void CreateConnections();
    FlatButton* CreateButton(const QString& name, const QString& image, int padding, const QString& toolTip);

    bool CountsMatch(const char* failureMessage) const;
    void ConnectCodeEditor(CodeEditor* codeEditor);
    void DisconnectCodeEditor(CodeEditor* codeEditor);
    void UpdateLastUsedEditorOrder();

    void UpdateDropZone(const QPoint& pos, const QMimeData* mimeData);
    void SetDropZone(TabDropZone zone, const QRect& rect);
    void ClearDropZone();
    void DropUrls(const QMimeData* mimeData, TabDropZone zone);

    int id;
    KeyBindings* keyBindings; // not owned
    CodeEditorGroupTabBar* tabBar = nullptr;
    QStackedWidget* codeEditorStack = nullptr;
    FlatButton* scrollLeftBtn = nullptr;
    FlatButton* scrollRightBtn = nullptr;
    FlatButton* miniToolbarSeparator = nullptr; // takes room only; shows with the mini toolbar
    FlatButton* executeBtn = nullptr;
    FlatButton* executeAllBtn = nullptr;
    FlatButton* executeLineBtn = nullptr;
    FlatButton* listCodeEditorsBtn = nullptr;
    bool miniToolbarVisible = false; // the owner's wish; the settings decide what shows
    bool tabDropOtherGroupsEnabled = false;
    TabDropZone dropZone = TabDropZoneNone;
    QStringList lastUsedEditors; // file paths, most recent first
    bool parsingEnabled = true;
    MelParser melParser;
    PythonParser pythonParser;
};
