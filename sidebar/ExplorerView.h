#pragma once

#include <QtWidgets/QWidget>

class KeyBindings;
class OpenCodeEditorsView;
class OutlineView;
class QHBoxLayout;
class QLabel;
class QMimeData;
class QSplitter;
class SubView;
class WorkspaceView;

// The explorer page of the side bar: workspace, outline and open editors as collapsible
// sections of a vertical splitter, which the user reorders by dragging their titles.
class ExplorerView : public QWidget
{
    Q_OBJECT

public:
    ExplorerView(KeyBindings* keyBindings, QWidget* parent = nullptr);

    void SaveState();
    OpenCodeEditorsView* GetOpenCodeEditorsView() const { return openCodeEditorsView; }
    WorkspaceView* GetWorkspaceView() const { return workspaceView; }
    OutlineView* GetOutlineView() const { return outlineView; }
    QSplitter* GetSplitter() const { return splitter; }
    QLabel* GetTitleLabel() const { return titleLabel; }
    QWidget* GetFillerWidget() const { return fillerWidget; }
    int GetTitleBarHeight() const;

signals:
    void CodeEditorSelected(int groupIndex, int codeEditorIndex);
    void FileOpenRequested(const QString& filePath, bool temp);
    void FilePathChanged(const QString& oldFileName, const QString& newFileName);
    void FindInSelected(const QString& includeStr, const QString& excludeStr);
    void WorkspaceItemDeleted(const QString& path, bool isFolder);
    void WorkspaceModified();
    void OutlineSelectionChanged(int startPos, int endPos);
    void HideSideBarRequested();
    void SaveAllRequested();
    void CloseAllRequested();

public slots:
    void AddFolderToWorkspace(const QString& dirPath);
    void ToggleOpenEditorVisibility();
    void ToggleOutlineVisibility();
    void OnSubViewVisibilityChanged();
    void OnExpandedStateChanged();
    void ShowContextMenu(const QPoint& p);
    void OnHideSideBarRequested();

protected:
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    QList<SubView*> Sections() const;
    void UpdateDropZone(const QPoint& pos, const QMimeData* mimeData);
    void ClearDropZone();

    QHBoxLayout* titleLayout = nullptr;
    QLabel* titleLabel = nullptr;
    QSplitter* splitter = nullptr;
    OpenCodeEditorsView* openCodeEditorsView = nullptr;
    WorkspaceView* workspaceView = nullptr;
    OutlineView* outlineView = nullptr;
    QWidget* fillerWidget = nullptr;
    KeyBindings* keyBindings;
    int dragIndex = -1;
    int dropIndex = -1;
    QPoint dragStartPosition;
};
