#pragma once

#include "sidebar/SubView.h"

class FlatButton;
class WorkspaceTreeWidget;

// The workspace section of the explorer: the tree of root folders kept in a ".bq2-workspace"
// file, with buttons for a new file, a new folder, a refresh and collapsing the tree.
class WorkspaceView : public SubView
{
    Q_OBJECT

public:
    WorkspaceView(KeyBindings* keyBindings, QWidget* parent = nullptr);

    void SetViewName(const QString& name, bool bold) override;
    void UpdateVisibility() override;

    void OpenWorkspace(const QString& path);
    void SaveWorkspaceAs(const QString& path);
    void AddFolderToWorkspace(const QString& path);
    void Reveal(const QString& path);
    void ShowTitlePrefix(bool show);
    bool TitleBarGeomentryContains(const QPoint& p) const;
    void UpdateColors();
    WorkspaceTreeWidget* GetTreeWidget() const { return treeWidget; }
    // Every file below the root folders, read from disk whether its folder is open or not.
    QStringList GetWorkspaceFiles() const;

signals:
    void FileOpenRequested(const QString& filePath, bool temp);
    void FilePathChanged(const QString& oldPathName, const QString& newPathName);
    void FindInSelected(const QString& includedStr, const QString& excludeStr);
    void ItemDeleted(const QString& path, bool isFolder);
    void WorkspaceModified();

public slots:
    void Refresh();
    void SaveWorkspace();
    void OnWorkspaceModified();
    void OnFileOpenRequested(const QString& filePath, bool temp);
    void OnFilePathChanged(const QString& oldFilePath, const QString& newFilePath);
    void OnFindInSelected(const QString& includeStr, const QString& excludeStr);
    void OnFileAdded();
    void OnItemDeleted(const QString& path, bool isFolder);

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    void OpenStartWorkspace();
    FlatButton* CreateTitleBarButton(const QString& resource, const QString& toolTip);

    WorkspaceTreeWidget* treeWidget = nullptr;
    FlatButton* newFileBtn = nullptr;
    FlatButton* newFolderBtn = nullptr;
    FlatButton* refreshBtn = nullptr;
    FlatButton* collapseAllBtn = nullptr;
    QString viewName;
    bool showTitlePrefix = false;
};
