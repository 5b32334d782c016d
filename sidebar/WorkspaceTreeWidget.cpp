#include "sidebar/WorkspaceTreeWidget.h"

#include "plugin/Logger.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMenu>

#include <utility>

WorkspaceTreeWidget::WorkspaceTreeWidget(QWidget* parent) : QTreeWidget(parent)
{
    setHeaderHidden(true);
    setFrameStyle(0);
    setExpandsOnDoubleClick(false);
    setItemsExpandable(false);
    // Double click opens a file; renaming starts only from the menu.
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    melIcon.addFile(QStringLiteral(":/bq2_icons/mel_icon.png"));
    pythonIcon.addFile(QStringLiteral(":/bq2_icons/python_icon.png"));
    textIcon.addFile(QStringLiteral(":/bq2_icons/text_icon.png"));
    folderClosedIcon.addFile(QStringLiteral(":/bq2_icons/folder_closed.png"));
    folderOpenedIcon.addFile(QStringLiteral(":/bq2_icons/folder_opened.png"));
    CreateConnections();
}

void WorkspaceTreeWidget::CreateConnections()
{
    connect(this, SIGNAL(itemCollapsed(QTreeWidgetItem*)), this, SLOT(OnItemCollapsed(QTreeWidgetItem*)));
    connect(this, SIGNAL(itemExpanded(QTreeWidgetItem*)), this,
            SLOT(ReplacePlaceholderWithContent(QTreeWidgetItem*)));
    connect(this, SIGNAL(itemChanged(QTreeWidgetItem*, int)), this, SLOT(OnFileNameChanged(QTreeWidgetItem*)));
    connect(&watcher, SIGNAL(directoryChanged(QString)), this, SLOT(OnDirectoryChanged(QString)));
}

// ---------------------------------------------------------------------------------------------
// Items and paths

QString WorkspaceTreeWidget::GetPath(const QTreeWidgetItem* item)
{
    return item ? item->data(0, Qt::UserRole).toString() : QString();
}

void WorkspaceTreeWidget::SetPath(QTreeWidgetItem* item, const QString& path)
{
    item->setData(0, Qt::UserRole, path);
    item->setData(0, Qt::ToolTipRole, QDir::toNativeSeparators(path));
}

bool WorkspaceTreeWidget::IsFolderItem(const QTreeWidgetItem* item)
{
    return item && item->type() == WorkspaceItemFolder;
}

bool WorkspaceTreeWidget::IsFileItem(const QTreeWidgetItem* item)
{
    return item && item->type() == WorkspaceItemFile;
}

bool WorkspaceTreeWidget::IsPlaceholderItem(const QTreeWidgetItem* item)
{
    return item && item->type() == WorkspaceItemPlaceholder;
}

QTreeWidgetItem* WorkspaceTreeWidget::GetParentItem(QTreeWidgetItem* item)
{
    return item ? item->parent() : nullptr;
}

QStringList WorkspaceTreeWidget::GetTopLevelFolders() const
{
    QStringList folders;
    for (int i = 0; i < topLevelItemCount(); ++i)
        folders.append(GetPath(topLevelItem(i)));
    return folders;
}

QList<QTreeWidgetItem*> WorkspaceTreeWidget::GetTopLevelItems() const
{
    QList<QTreeWidgetItem*> items;
    for (int i = 0; i < topLevelItemCount(); ++i)
        items.append(topLevelItem(i));
    return items;
}

QTreeWidgetItem* WorkspaceTreeWidget::GetTopLevelItemByPath(const QString& path) const
{
    for (int i = 0; i < topLevelItemCount(); ++i)
    {
        if (GetPath(topLevelItem(i)) == path)
            return topLevelItem(i);
    }
    return nullptr;
}

QStringList WorkspaceTreeWidget::GetWatchedDirectories() const
{
    return watcher.directories();
}

QIcon WorkspaceTreeWidget::FileIcon(const QFileInfo& info) const
{
    const QString suffix = info.suffix().toLower();
    if (suffix == QLatin1String("mel"))
        return melIcon;
    if (suffix == QLatin1String("py") || suffix == QLatin1String("pyw") || suffix == QLatin1String("pyi"))
        return pythonIcon;
    return textIcon;
}

// ---------------------------------------------------------------------------------------------
// Building the tree

void WorkspaceTreeWidget::AddTopLevelFolder(const QString& path)
{
    const QFileInfo info(path);
    const QString absolutePath = info.absoluteFilePath();
    if (GetTopLevelItemByPath(absolutePath) || !info.exists() || !info.isDir())
        return;
    const QString name = QDir(absolutePath).dirName();
    auto* item = new QTreeWidgetItem(WorkspaceItemFolder);
    item->setText(0, name.isEmpty() ? absolutePath : name);
    item->setIcon(0, folderClosedIcon);
    SetPath(item, absolutePath);
    addTopLevelItem(item);
    AddChildren(item, info, true);
    if (!Settings::workspaceFolders.contains(absolutePath))
    {
        Settings::workspaceFolders.append(absolutePath);
        emit WorkspaceModified();
    }
}

void WorkspaceTreeWidget::AddChildren(QTreeWidgetItem* item, const QFileInfo& info, bool placeholder)
{
    const QString path = info.absoluteFilePath();
    const QDir dir(path);
    if (!dir.exists())
        return;
    WatchDirectory(path);
    if (placeholder)
    {
        // Only whether the folder has any entry matters here; its listing waits for the user.
        if (dir.isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System))
            return;
        auto* child = new QTreeWidgetItem(WorkspaceItemPlaceholder);
        child->setText(0, QStringLiteral("placeholder"));
        item->addChild(child);
        child->setHidden(true);
        RestoreExpandedState(item);
        return;
    }
    const QFileInfoList entries = dir.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden |
                                                        QDir::System,
                                                    QDir::DirsFirst | QDir::IgnoreCase | QDir::Name);
    // Made apart and inserted in one go: an open folder of thousands of entries would
    // otherwise relayout the view at each row.
    QList<QTreeWidgetItem*> children;
    QList<QTreeWidgetItem*> folders;
    QStringList folderPaths;
    for (const QFileInfo& entry : entries)
    {
        QTreeWidgetItem* child = CreateChild(entry);
        if (!child)
            continue;
        children.append(child);
        if (IsFolderItem(child))
        {
            folderPaths.append(entry.absoluteFilePath());
            if (!QDir(entry.absoluteFilePath())
                     .isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System))
            {
                auto* placeholderItem = new QTreeWidgetItem(WorkspaceItemPlaceholder);
                placeholderItem->setText(0, QStringLiteral("placeholder"));
                child->addChild(placeholderItem);
                folders.append(child);
            }
        }
    }
    WatchDirectories(folderPaths);
    item->addChildren(children);
    for (QTreeWidgetItem* folder : std::as_const(folders))
    {
        folder->child(0)->setHidden(true);
        RestoreExpandedState(folder);
    }
}

QTreeWidgetItem* WorkspaceTreeWidget::CreateChild(const QFileInfo& info) const
{
    const bool folder = info.isDir();
    const QString name = info.fileName();
    if (Settings::pythonHideCompiledFiles)
    {
        if (folder && name == QLatin1String("__pycache__"))
            return nullptr;
        if (!folder && name.endsWith(QLatin1String(".pyc"), Qt::CaseInsensitive))
            return nullptr;
    }
    auto* item = new QTreeWidgetItem(folder ? WorkspaceItemFolder : WorkspaceItemFile);
    item->setText(0, name);
    if (folder)
    {
        item->setIcon(0, folderClosedIcon);
    }
    else
    {
        item->setFlags(item->flags() | Qt::ItemIsEditable);
        item->setIcon(0, FileIcon(info));
    }
    SetPath(item, info.absoluteFilePath());
    return item;
}

QTreeWidgetItem* WorkspaceTreeWidget::AddChild(QTreeWidgetItem* parent, const QFileInfo& info)
{
    QTreeWidgetItem* item = CreateChild(info);
    if (!item)
        return nullptr;
    parent->addChild(item);
    if (IsFolderItem(item))
        AddChildren(item, info, true);
    return item;
}

void WorkspaceTreeWidget::WatchDirectory(const QString& path)
{
    WatchDirectories({path});
}

void WorkspaceTreeWidget::WatchDirectories(const QStringList& paths)
{
    // One call for the folders of a listing: the watcher's own work per call outweighs that of a path.
    QStringList added;
    for (const QString& path : paths)
    {
        if (watchedDirectories.contains(path))
            continue;
        if (unclaimedWatches.remove(path))
            watchedDirectories.insert(path);
        else
            added.append(path);
    }
    if (added.isEmpty())
        return;
    const QStringList failed = watcher.addPaths(added);
    for (const QString& path : std::as_const(added))
    {
        if (!failed.contains(path))
            watchedDirectories.insert(path);
    }
}

void WorkspaceTreeWidget::ClearAll()
{
    clear();
    const QStringList directories = watcher.directories();
    if (!directories.isEmpty())
        watcher.removePaths(directories);
    watchedDirectories.clear();
}

void WorkspaceTreeWidget::ReplacePlaceholderWithContent(QTreeWidgetItem* item)
{
    if (!item)
        return;
    if (item->childCount() == 1 && IsPlaceholderItem(item->child(0)))
    {
        const QString path = GetPath(item);
        WatchDirectory(path);
        delete item->takeChild(0);
        AddChildren(item, QFileInfo(path), false);
    }
    item->setIcon(0, folderOpenedIcon);
}

void WorkspaceTreeWidget::OnItemCollapsed(QTreeWidgetItem* item)
{
    if (item)
        item->setIcon(0, folderClosedIcon);
}

// ---------------------------------------------------------------------------------------------
// Expanded folders, kept as hashes of their paths

QByteArray WorkspaceTreeWidget::PathHash(const QString& path)
{
    return QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Md5);
}

void WorkspaceTreeWidget::AddPathHash(const QByteArray& hash)
{
    if (!PathHashExists(hash))
        Settings::workspaceExpandedFolderHashes.append(hash);
}

void WorkspaceTreeWidget::RemovePathHash(const QByteArray& hash)
{
    Settings::workspaceExpandedFolderHashes.removeAll(hash);
}

bool WorkspaceTreeWidget::PathHashExists(const QByteArray& hash)
{
    return Settings::workspaceExpandedFolderHashes.contains(hash);
}

void WorkspaceTreeWidget::SetExpandedState(QTreeWidgetItem* item, bool expanded)
{
    if (!item)
        return;
    const QString path = GetPath(item);
    if (!path.isEmpty())
    {
        if (expanded)
            AddPathHash(PathHash(path));
        else
            RemovePathHash(PathHash(path));
    }
    item->setExpanded(expanded);
}

void WorkspaceTreeWidget::RestoreExpandedState(QTreeWidgetItem* item)
{
    if (PathHashExists(PathHash(GetPath(item))))
        item->setExpanded(true);
}

// ---------------------------------------------------------------------------------------------
// Staying in step with the disk

void WorkspaceTreeWidget::OnDirectoryChanged(const QString& /*path*/)
{
    Refresh();
}

void WorkspaceTreeWidget::Refresh()
{
    const QStringList folders = GetTopLevelFolders();
    QString currentPath;
    QString topPath;
    if (QTreeWidgetItem* item = currentItem())
    {
        currentPath = GetPath(item);
        QTreeWidgetItem* top = item;
        while (top->parent())
            top = top->parent();
        topPath = GetPath(top);
    }
    // The tree is made anew, but the watches stay: removing thousands of them and adding them
    // back costs more than listing the folders. Those of folders no longer shown go at the end.
    clear();
    unclaimedWatches = std::exchange(watchedDirectories, {});
    for (const QString& folder : folders)
        AddTopLevelFolder(folder);
    if (!unclaimedWatches.isEmpty())
        watcher.removePaths(unclaimedWatches.values());
    unclaimedWatches.clear();
    if (!currentPath.isEmpty())
        SetCurrentByPath(topPath, currentPath);
}

void WorkspaceTreeWidget::SetCurrentByPath(const QString& topPath, const QString& currentPath)
{
    QTreeWidgetItem* item = GetTopLevelItemByPath(topPath);
    if (!item)
        return;
    if (currentPath == GetPath(item))
    {
        setCurrentItem(item);
        return;
    }
    // Searching with the top folder as the folder keeps the walk at its first level: only a
    // direct child of a root gets its place back.
    if (QTreeWidgetItem* found = FindItem(item, topPath, currentPath))
        setCurrentItem(found);
}

QTreeWidgetItem* WorkspaceTreeWidget::FindItem(QTreeWidgetItem* item, const QString& dirPath,
                                               const QString& filePath)
{
    ReplacePlaceholderWithContent(item);
    for (int i = 0; i < item->childCount(); ++i)
    {
        QTreeWidgetItem* child = item->child(i);
        if (IsFolderItem(child) && dirPath.startsWith(GetPath(child)))
        {
            if (QTreeWidgetItem* found = FindItem(child, dirPath, filePath))
                return found;
        }
    }
    for (int i = 0; i < item->childCount(); ++i)
    {
        if (GetPath(item->child(i)) == filePath)
            return item->child(i);
    }
    return nullptr;
}

QTreeWidgetItem* WorkspaceTreeWidget::FindItem(const QString& path)
{
    const QString dirPath = QFileInfo(path).absolutePath();
    for (QTreeWidgetItem* item : GetTopLevelItems())
    {
        if (!dirPath.startsWith(GetPath(item)))
            continue;
        if (QTreeWidgetItem* found = FindItem(item, dirPath, path))
            return found;
    }
    return nullptr;
}

void WorkspaceTreeWidget::Reveal(const QString& path)
{
    QTreeWidgetItem* item = FindItem(path);
    if (!item)
        return;
    setCurrentItem(item);
    for (QTreeWidgetItem* parent = item->parent(); parent; parent = parent->parent())
        SetExpandedState(parent, true);
    scrollToItem(item);
}

// ---------------------------------------------------------------------------------------------
// Mouse and menu

void WorkspaceTreeWidget::mouseReleaseEvent(QMouseEvent* event)
{
    QTreeWidget::mouseReleaseEvent(event);
    QTreeWidgetItem* item = itemAt(event->position().toPoint());
    if (item && item != currentItem())
        setCurrentItem(item);
    if (item && (event->button() == Qt::LeftButton || event->button() == Qt::MiddleButton))
    {
        if (IsFolderItem(item))
            SetExpandedState(item, !item->isExpanded());
        else if (IsFileItem(item))
            emit FileOpenRequested(GetPath(item), true);
    }
    else if (event->button() == Qt::RightButton)
    {
        ShowContextMenu(event->globalPosition().toPoint(), item);
    }
}

void WorkspaceTreeWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    QTreeWidgetItem* item = itemAt(event->position().toPoint());
    if (IsFileItem(item))
        emit FileOpenRequested(GetPath(item), false);
}

void WorkspaceTreeWidget::mouseMoveEvent(QMouseEvent* event)
{
    // No rubber band and no item drag.
    event->accept();
}

void WorkspaceTreeWidget::ShowContextMenu(const QPoint& p, QTreeWidgetItem* item)
{
    if (IsPlaceholderItem(item))
        return;
    QMenu menu(this);
    if (IsFileItem(item))
    {
        menu.addAction(QStringLiteral("Open"), this, SLOT(Open()));
        menu.addAction(QStringLiteral("Reveal in Folder"), this, SLOT(RevealInFolder()));
        menu.addSeparator();
        menu.addAction(QStringLiteral("Copy"), this, SLOT(Copy()));
        menu.addAction(QStringLiteral("Copy Path"), this, SLOT(CopyPath()));
        menu.addSeparator();
        menu.addAction(QStringLiteral("Rename"), this, SLOT(Rename()));
        menu.addAction(QStringLiteral("Delete"), this, SLOT(Remove()));
    }
    else if (IsFolderItem(item))
    {
        const bool topLevel = !item->parent();
        menu.addAction(QStringLiteral("New File"), this, SLOT(NewFile()));
        menu.addAction(QStringLiteral("New Folder"), this, SLOT(NewFolder()));
        menu.addAction(QStringLiteral("Reveal in Folder"), this, SLOT(RevealInFolder()));
        menu.addSeparator();
        if (topLevel)
        {
            menu.addAction(QStringLiteral("Add Folder to Workspace..."), this, SLOT(AddFolderToWorkspace()));
            menu.addAction(QStringLiteral("Remove Folder from Workspace"), this,
                           SLOT(RemoveFolderFromWorkspace()));
            menu.addSeparator();
        }
        menu.addAction(QStringLiteral("Find in Folder..."), this, SLOT(SearchInFolder()));
        menu.addSeparator();
        QAction* paste = menu.addAction(QStringLiteral("Paste"), this, SLOT(Paste()));
        paste->setEnabled(!copiedFilePath.isEmpty() && QFileInfo::exists(copiedFilePath));
        menu.addAction(QStringLiteral("Copy Path"), this, SLOT(CopyPath()));
        if (!topLevel)
        {
            menu.addSeparator();
            menu.addAction(QStringLiteral("Delete"), this, SLOT(Remove()));
        }
    }
    else
    {
        menu.addAction(QStringLiteral("Add Folder to Workspace..."), this, SLOT(AddFolderToWorkspace()));
        menu.addSeparator();
        menu.addAction(QStringLiteral("Find in Workspace..."), this, SLOT(FindInWorkspace()));
    }
    menu.exec(p);
}

// ---------------------------------------------------------------------------------------------
// Root folders

void WorkspaceTreeWidget::AddFolderToWorkspace()
{
    const QString path =
        QFileDialog::getExistingDirectory(this, QStringLiteral("Add Folder to Workspace"));
    if (!path.isEmpty())
        AddTopLevelFolder(path);
}

void WorkspaceTreeWidget::RemoveFolderFromWorkspace()
{
    QTreeWidgetItem* item = currentItem();
    if (!item || item->parent())
        return;
    Settings::workspaceFolders.removeAll(GetPath(item));
    delete item;
    emit WorkspaceModified();
}

void WorkspaceTreeWidget::FindInWorkspace()
{
    emit FindInSelected(QString(), QString());
}

void WorkspaceTreeWidget::SearchInFolder()
{
    QTreeWidgetItem* item = currentItem();
    if (IsFolderItem(item))
        emit FindInSelected(GetPath(item), QString());
}

void WorkspaceTreeWidget::RevealInFolder()
{
    if (QTreeWidgetItem* item = currentItem())
        MayaUtil::RevealInFolder(GetPath(item));
}
