#pragma once

#include "editor/CodeEditorProperties.h"
#include "sidebar/SideBarView.h"

#include <QtWidgets/QWidget>

class BaseParser;
class ExplorerView;
class KeyBindings;
class QLabel;
class QStackedWidget;
class QuickHelpView;

// The stack of side bar views. It holds no logic: calls go down to the view that owns them,
// and the views' signals come up to the main widget.
class SideBar : public QWidget
{
    Q_OBJECT

public:
    SideBar(KeyBindings* keyBindings, QWidget* parent = nullptr);

    void SetView(SideBarView view);
    SideBarView GetView() const;
    void SaveState();
    void UpdateKeyBindings();
    void UpdateColors();

    void SetOpenCodeEditors(int groupIndex, const QList<CodeEditorProperties>& propertiesList);
    void SetCurrentCodeEditor(int groupIndex, int codeEditorIndex);

    void RefreshWorkspace();
    void OpenWorkspace(const QString& path);
    void SaveWorkspace();
    void SaveWorkspaceAs(const QString& path);
    void AddFolderToWorkspace(const QString& path);
    void RevealInWorkspace(const QString& path);
    QStringList GetWorkspaceFiles() const;

    void UpdateOutline(BaseParser* parser);
    void SaveOutline();
    void ClearStoredDetailsFromOutline(const QString& filePath);
    void ClearInvalidDetailsFromOutline(const QStringList& paths);

    void SetQuickHelpSearchText(const QString& text, bool selectAll);

    ExplorerView* GetExplorerView() const { return explorerView; }
    QuickHelpView* GetQuickHelpView() const { return quickHelpView; }

signals:
    void SideBarVisibilityChangeRequested(bool visible);
    void CodeEditorSelected(int groupIndex, int codeEditorIndex);
    void FileOpenRequested(const QString& filePath, bool temp);
    void FilePathChanged(const QString& oldFilePath, const QString& newFilePath);
    void WorkspaceItemDeleted(const QString& path, bool isFolder);
    void WorkspaceModified();
    void OutlineSelectionChanged(int startPos, int endPos);
    void SaveAllRequested();
    void CloseAllRequested();
    void ViewChangeRequested(SideBarView view);
    void QuickHelpFlagSelected(const QString& text);

public slots:
    void ShowSearchView(const QString& includeStr, const QString& excludeStr);
    void OnCodeEditorSelected(int groupIndex, int codeEditorIndex);
    void OnFileOpenRequested(const QString& filePath, bool temp);
    void OnFilePathChanged(const QString& oldFilePath, const QString& newFilePath);
    void OnWorkspaceItemDeleted(const QString& path, bool isFolder);
    void OnWorkspaceModified();
    void OnOutlineSelectionChanged(int startPos, int endPos);
    void OnSaveAllRequested();
    void OnCloseAllRequested();
    void OnQuickHelpFlagSelected(const QString& text);
    void OnHideSideBarRequested();

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    QWidget* CreatePage(const QString& title);

    KeyBindings* keyBindings;
    QStackedWidget* stack = nullptr;
    ExplorerView* explorerView = nullptr;
    QuickHelpView* quickHelpView = nullptr;
};
