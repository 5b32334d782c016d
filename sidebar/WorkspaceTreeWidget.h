#pragma once

#include "sidebar/WorkspaceItemType.h"

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QSet>
#include <QtGui/QIcon>
#include <QtWidgets/QTreeWidget>

class QFileInfo;

// The file tree of the workspace. Folders are read when they are opened; until then a folder
// with entries holds one hidden placeholder. Every folder that has been read is watched, and a
// change in any of them rebuilds the tree, keeping the open folders and the current item.
class WorkspaceTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    explicit WorkspaceTreeWidget(QWidget* parent = nullptr);

    void AddTopLevelFolder(const QString& path);
    QStringList GetTopLevelFolders() const;
    QList<QTreeWidgetItem*> GetTopLevelItems() const;
    QTreeWidgetItem* GetTopLevelItemByPath(const QString& path) const;
    static QString GetPath(const QTreeWidgetItem* item);
    static void SetPath(QTreeWidgetItem* item, const QString& path);
    QTreeWidgetItem* FindItem(const QString& path);
    void Reveal(const QString& path);
    static bool IsFolderItem(const QTreeWidgetItem* item);
    static bool IsFileItem(const QTreeWidgetItem* item);
    static bool IsPlaceholderItem(const QTreeWidgetItem* item);
    static QTreeWidgetItem* GetParentItem(QTreeWidgetItem* item);
    QStringList GetWatchedDirectories() const;
    void SetExpandedState(QTreeWidgetItem* item, bool expanded);
    void ClearAll();

signals:
    void FileOpenRequested(const QString& filePath, bool temp);
    void FilePathChanged(const QString& oldFilePath, const QString& newFilePath);
    void FindInSelected(const QString& includeStr, const QString& excludeStr);
    void FileAdded();
    void ItemDeleted(QString path, bool isFolder);
    void WorkspaceModified();

public slots:
    void NewItem(WorkspaceItemType type);
    void NewFile();
    void NewFolder();
    void Open();
    void Copy();
    void Paste();
    void CopyPath();
    void Rename();
    void Remove();
    void SearchInFolder();
    void RevealInFolder();
    void Refresh();
    void OnItemCollapsed(QTreeWidgetItem* item);
    void ReplacePlaceholderWithContent(QTreeWidgetItem* item);
    void OnFileNameChanged(QTreeWidgetItem* item);
    void AddFolderToWorkspace();
    void RemoveFolderFromWorkspace();
    void FindInWorkspace();
    void OnDirectoryChanged(const QString& path);
    void ShowContextMenu(const QPoint& p, QTreeWidgetItem* item);

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void CreateConnections();
    void AddChildren(QTreeWidgetItem* item, const QFileInfo& info, bool placeholder);
    QTreeWidgetItem* AddChild(QTreeWidgetItem* parent, const QFileInfo& info);
    QTreeWidgetItem* CreateChild(const QFileInfo& info) const;
    void WatchDirectory(const QString& path);
    void WatchDirectories(const QStringList& paths);
    void RestoreExpandedState(QTreeWidgetItem* item);
    static QByteArray PathHash(const QString& path);
    static void AddPathHash(const QByteArray& hash);
    static void RemovePathHash(const QByteArray& hash);
    static bool PathHashExists(const QByteArray& hash);
    void SetCurrentByPath(const QString& topPath, const QString& currentPath);
    QTreeWidgetItem* FindItem(QTreeWidgetItem* item, const QString& dirPath, const QString& filePath);
    QTreeWidgetItem* TargetFolder(QTreeWidgetItem* item) const;
    QIcon FileIcon(const QFileInfo& info) const;

    QFileSystemWatcher watcher;
    // The watcher's paths as a set: asking the watcher costs a copy of its list each time.
    QSet<QString> watchedDirectories;
    // While the tree is rebuilt, the watches of the old tree: a folder that is still shown takes
    // its watch back, the rest are removed at the end.
    QSet<QString> unclaimedWatches;
    QString copiedFilePath;
    QIcon melIcon;
    QIcon pythonIcon;
    QIcon textIcon;
    QIcon folderClosedIcon;
    QIcon folderOpenedIcon;
};
