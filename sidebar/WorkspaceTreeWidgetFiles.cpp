#include "sidebar/WorkspaceTreeWidget.h"

#include "plugin/Logger.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QMessageBox>

namespace
{
// A folder is deleted only if it and every folder below it can be written, checked first, so
// that a refusal half way does not leave half a folder.
bool FolderTreeWritable(const QString& path)
{
    if (!QFileInfo(QFileInfo(path).absolutePath()).isWritable() || !QFileInfo(path).isWritable())
        return false;
    QDirIterator it(path, QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
    {
        if (!it.nextFileInfo().isWritable())
            return false;
    }
    return true;
}
} // namespace

QTreeWidgetItem* WorkspaceTreeWidget::TargetFolder(QTreeWidgetItem* item) const
{
    if (IsFolderItem(item))
        return item;
    QTreeWidgetItem* parent = GetParentItem(item);
    return IsFolderItem(parent) ? parent : nullptr;
}

void WorkspaceTreeWidget::NewFile()
{
    NewItem(WorkspaceItemFile);
}

void WorkspaceTreeWidget::NewFolder()
{
    NewItem(WorkspaceItemFolder);
}

void WorkspaceTreeWidget::NewItem(WorkspaceItemType type)
{
    QTreeWidgetItem* item = currentItem();
    if (!item)
    {
        Logger::Error("A folder needs to be selected first.");
        return;
    }
    QTreeWidgetItem* target = TargetFolder(item);
    if (!target)
        return;
    // The dialog runs the event loop, and a change on disk meanwhile rebuilds the tree: only
    // the folder's path is sure to outlive it.
    const QString targetPath = GetPath(target);
    const bool file = type == WorkspaceItemFile;
    const QString name = QInputDialog::getText(
        this, file ? QStringLiteral("New File") : QStringLiteral("New Folder"),
        file ? QStringLiteral("File Name") : QStringLiteral("Folder Name"), QLineEdit::Normal, QString(), nullptr,
        Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    if (name.isEmpty())
        return;
    const QString path = QStringLiteral("%1/%2").arg(targetPath, name);
    if (file)
    {
        if (QFileInfo::exists(path))
        {
            Logger::Error(QStringLiteral("File already exists: %1").arg(path));
            return;
        }
        QFile newFile(path);
        if (!newFile.open(QIODevice::WriteOnly | QIODevice::Text))
        {
            Logger::Error(QStringLiteral("Failed to create file: %1").arg(path));
            return;
        }
        newFile.close();
    }
    else
    {
        if (QFileInfo::exists(path))
        {
            Logger::Error(QStringLiteral("Directory already exists: %1").arg(path));
            return;
        }
        if (!QDir().mkpath(path))
        {
            Logger::Error(QStringLiteral("Failed to create directory: %1").arg(path));
            return;
        }
    }
    target = GetTopLevelItemByPath(targetPath);
    if (!target)
        target = FindItem(targetPath);
    if (!target)
        return; // the watcher's rebuild shows it
    // A folder still unread gets its whole listing, the new entry with it; adding the entry
    // beside the placeholder would keep the rest of the folder from being read.
    if (target->childCount() == 1 && IsPlaceholderItem(target->child(0)))
        ReplacePlaceholderWithContent(target);
    else
        AddChild(target, QFileInfo(path));
    if (file)
    {
        SetExpandedState(target, true);
        emit FileAdded();
    }
    else
    {
        target->setExpanded(true);
    }
}

void WorkspaceTreeWidget::Rename()
{
    QTreeWidgetItem* item = currentItem();
    if (IsFileItem(item))
        editItem(item, 0);
}

void WorkspaceTreeWidget::OnFileNameChanged(QTreeWidgetItem* item)
{
    if (!IsFileItem(item))
        return;
    const QString oldPath = GetPath(item);
    if (oldPath.isEmpty())
        return;
    const QString newPath = QStringLiteral("%1/%2").arg(QFileInfo(oldPath).absolutePath(), item->text(0));
    if (newPath == oldPath)
        return;
    if (QFileInfo::exists(newPath))
    {
        Logger::Error(QStringLiteral("Raname failed. File already exists: %1").arg(newPath));
        return;
    }
    if (!QFile::rename(oldPath, newPath))
    {
        Logger::Error(QStringLiteral("Rename file failed. Please verify file path and permissions: %1 -> %2")
                          .arg(oldPath, newPath));
        return;
    }
    emit FilePathChanged(oldPath, newPath);
}

void WorkspaceTreeWidget::Remove()
{
    QTreeWidgetItem* item = currentItem();
    if (!item || !item->parent() || IsPlaceholderItem(item))
        return;
    const bool folder = IsFolderItem(item);
    const QString path = GetPath(item);
    const QFileInfo info(path);
    QMessageBox box(QMessageBox::Question, folder ? QStringLiteral("Delete Folder") : QStringLiteral("Delete File"),
                    QStringLiteral("Delete '%1'").arg(folder ? info.baseName() : info.fileName()),
                    QMessageBox::Yes | QMessageBox::No, this);
    if (box.exec() != QMessageBox::Yes)
        return;
    if (folder)
    {
        if (!FolderTreeWritable(path) || !QDir(path).removeRecursively())
        {
            Logger::Error(QStringLiteral("Failed to delete folder: %1").arg(path));
            return;
        }
        emit ItemDeleted(path, true);
        return;
    }
    if (!QFile::remove(path))
    {
        Logger::Error(QStringLiteral("Failed to delete file: %1").arg(path));
        return;
    }
    emit ItemDeleted(path, false);
}

void WorkspaceTreeWidget::Copy()
{
    QTreeWidgetItem* item = currentItem();
    if (IsFileItem(item))
        copiedFilePath = GetPath(item);
}

void WorkspaceTreeWidget::Paste()
{
    QTreeWidgetItem* item = currentItem();
    const QFileInfo source(copiedFilePath);
    if (!IsFolderItem(item) || copiedFilePath.isEmpty() || !source.isFile())
        return;
    const QString target = QStringLiteral("%1/%2").arg(GetPath(item), source.fileName());
    if (QFileInfo::exists(target))
    {
        Logger::Error(QStringLiteral("File already exists: %1").arg(target));
        return;
    }
    if (!QFile::copy(copiedFilePath, target))
        Logger::Error(QStringLiteral("Copy file failed: %1 -> %2").arg(copiedFilePath, target));
}

void WorkspaceTreeWidget::CopyPath()
{
    QTreeWidgetItem* item = currentItem();
    if (!item)
        return;
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(GetPath(item));
}

void WorkspaceTreeWidget::Open()
{
    QTreeWidgetItem* item = currentItem();
    if (IsFileItem(item))
        emit FileOpenRequested(GetPath(item), false);
}
