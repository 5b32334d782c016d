#include "sidebar/SearchResultsTreeWidget.h"

#include "settings/Settings.h"
#include "sidebar/SearchMatchItem.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>

namespace
{
// A file with more matches than this is left collapsed.
constexpr int EXPANDED_MATCH_LIMIT = 6;

QString ItemPath(const QTreeWidgetItem* item)
{
    return item ? item->data(0, SearchResultsTreeWidget::PathRole).toString() : QString();
}

bool IsPrefixFolder(const QString& folder, const QString& path)
{
    return !folder.isEmpty() && (path == folder || path.startsWith(folder.endsWith(QLatin1Char('/'))
                                                                       ? folder
                                                                       : folder + QLatin1Char('/')));
}
} // namespace

SearchResultsTreeWidget::SearchResultsTreeWidget(QWidget* parent) : QTreeWidget(parent)
{
    setObjectName(QStringLiteral("SearchResultsTreeWidget"));
    setHeaderHidden(true);
    setFrameShape(QFrame::NoFrame);
    setIndentation(12);
    setColumnCount(1);
    setUniformRowHeights(true);
    setExpandsOnDoubleClick(false);
}

bool SearchResultsTreeWidget::IsMatchItem(const QTreeWidgetItem* item)
{
    return item && item->data(0, PositionRole).toInt() >= 0;
}

void SearchResultsTreeWidget::SetItemData(QTreeWidgetItem* item, const QString& path, int position)
{
    item->setData(0, PathRole, path);
    item->setData(0, PositionRole, position);
    item->setData(0, Qt::ToolTipRole, QDir::toNativeSeparators(path));
}

QTreeWidgetItem* SearchResultsTreeWidget::FindTopLevelItem(const QString& path) const
{
    for (int i = 0; i < topLevelItemCount(); ++i)
    {
        if (ItemPath(topLevelItem(i)) == path)
            return topLevelItem(i);
    }
    return nullptr;
}

QString SearchResultsTreeWidget::FileKey(const QTreeWidgetItem* root, const QString& path)
{
    return ItemPath(root) + QLatin1Char('\n') + path;
}

QTreeWidgetItem* SearchResultsTreeWidget::FindFileItem(const QTreeWidgetItem* root, const QString& path) const
{
    return fileItems.value(FileKey(root, path), nullptr);
}

void SearchResultsTreeWidget::DeleteFileItem(QTreeWidgetItem* root, QTreeWidgetItem* fileItem)
{
    if (!fileItem)
        return;
    fileItems.remove(FileKey(root, ItemPath(fileItem)));
    delete fileItem;
}

void SearchResultsTreeWidget::Clear()
{
    fileItems.clear();
    clear();
}

QTreeWidgetItem* SearchResultsTreeWidget::CreateTopLevelItem(const QString& path)
{
    auto* item = new QTreeWidgetItem;
    if (path == Settings::GetInternalBufferDirectoryPath())
    {
        item->setText(0, QStringLiteral("Internal"));
    }
    else
    {
        const QFileInfo info(path);
        item->setText(0, QStringLiteral("%1 (%2)").arg(info.fileName(), info.absolutePath()));
    }
    SetItemData(item, path, -1);
    addTopLevelItem(item);
    return item;
}

QTreeWidgetItem* SearchResultsTreeWidget::CreateFileItem(const QString& path, const QString& relativeDir,
                                                         const QString& label)
{
    auto* item = new QTreeWidgetItem;
    item->setText(0, relativeDir.isEmpty() ? label : QStringLiteral("%1 (%2)").arg(label, relativeDir));
    SetItemData(item, path, -1);
    return item;
}

QTreeWidgetItem* SearchResultsTreeWidget::CreateMatchItem(const SearchResult& result, const QString& path)
{
    return new SearchMatchItem(result.lineText, path, result.position);
}

void SearchResultsTreeWidget::Append(const QString& folder, const QString& relativeDir,
                                     const QList<SearchResult>& results)
{
    QTreeWidgetItem* root = FindTopLevelItem(folder);
    if (!root)
        root = CreateTopLevelItem(folder);
    const QString directory = relativeDir.isEmpty() ? folder : QStringLiteral("%1/%2").arg(folder, relativeDir);
    // The results of one file come together: its rows go into the tree in one step, and a new
    // file item is filled before it joins the tree, so that the view lays out once per file.
    qsizetype first = 0;
    while (first < results.size())
    {
        const QString& fileName = results.at(first).fileName;
        qsizetype end = first + 1;
        while (end < results.size() && results.at(end).fileName == fileName)
            ++end;
        const QString path = QStringLiteral("%1/%2").arg(directory, fileName);
        QList<QTreeWidgetItem*> matches;
        matches.reserve(end - first);
        for (qsizetype i = first; i < end; ++i)
            matches.append(CreateMatchItem(results.at(i), path));
        QTreeWidgetItem* fileItem = FindFileItem(root, path);
        if (fileItem)
        {
            fileItem->addChildren(matches);
        }
        else
        {
            fileItem = CreateFileItem(path, relativeDir, results.at(first).label);
            fileItem->addChildren(matches);
            root->addChild(fileItem);
            fileItems.insert(FileKey(root, path), fileItem);
        }
        // A file with many matches is left collapsed.
        fileItem->setExpanded(fileItem->childCount() < EXPANDED_MATCH_LIMIT);
        first = end;
    }
    root->setExpanded(true);
}

QStringList SearchResultsTreeWidget::GetRootFolders() const
{
    QStringList folders{Settings::GetInternalBufferDirectoryPath()};
    folders.append(Settings::workspaceFolders);
    return folders;
}

void SearchResultsTreeWidget::PlaceTopLevelItem(QTreeWidgetItem* root)
{
    // Internal buffers first, then the workspace folders in their order.
    const QStringList order = GetRootFolders();
    const int rank = order.indexOf(ItemPath(root));
    takeTopLevelItem(indexOfTopLevelItem(root));
    int index = 0;
    while (index < topLevelItemCount())
    {
        const int otherRank = order.indexOf(ItemPath(topLevelItem(index)));
        if (otherRank < 0 || otherRank > rank)
            break;
        ++index;
    }
    insertTopLevelItem(index, root);
}

void SearchResultsTreeWidget::Update(const QString& path, const QList<SearchResult>& results)
{
    if (path.isEmpty())
        return;
    QTreeWidgetItem* current = currentItem();
    const bool currentInFile = IsMatchItem(current) && ItemPath(current) == path;
    const int currentPosition = currentInFile ? current->data(0, PositionRole).toInt() : -1;

    QString folder;
    for (const QString& candidate : GetRootFolders())
    {
        if (IsPrefixFolder(candidate, path))
        {
            folder = candidate;
            break;
        }
    }
    if (folder.isEmpty())
        return;

    QTreeWidgetItem* root = FindTopLevelItem(folder);
    if (!root && results.isEmpty())
        return;
    if (!root)
    {
        root = CreateTopLevelItem(folder);
        PlaceTopLevelItem(root);
        root->setExpanded(true);
    }
    QTreeWidgetItem* fileItem = FindFileItem(root, path);
    if (results.isEmpty())
    {
        DeleteFileItem(root, fileItem);
        if (root->childCount() == 0)
            delete root;
        return;
    }
    if (fileItem)
    {
        qDeleteAll(fileItem->takeChildren());
    }
    else
    {
        QString relativeDir = QDir(folder).relativeFilePath(QFileInfo(path).absolutePath());
        if (relativeDir == QLatin1String("."))
            relativeDir.clear();
        fileItem = CreateFileItem(path, relativeDir, results.first().label);
        int index = 0;
        while (index < root->childCount() &&
               ItemPath(root->child(index)).compare(path, Qt::CaseInsensitive) <= 0)
            ++index;
        root->insertChild(index, fileItem);
        fileItems.insert(FileKey(root, path), fileItem);
    }
    fileItem->setExpanded(true);
    for (const SearchResult& result : results)
    {
        QTreeWidgetItem* item = CreateMatchItem(result, path);
        fileItem->addChild(item);
        if (currentInFile && result.position == currentPosition)
            setCurrentItem(item);
    }
}

int SearchResultsTreeWidget::GetFileCount() const
{
    int count = 0;
    for (int i = 0; i < topLevelItemCount(); ++i)
        count += topLevelItem(i)->childCount();
    return count;
}

int SearchResultsTreeWidget::GetReplaceCount() const
{
    int count = 0;
    for (int i = 0; i < topLevelItemCount(); ++i)
    {
        const QTreeWidgetItem* root = topLevelItem(i);
        for (int j = 0; j < root->childCount(); ++j)
            count += root->child(j)->childCount();
    }
    return count;
}

// ---------------------------------------------------------------------------------------------
// Navigation

QTreeWidgetItem* SearchResultsTreeWidget::GetFirstFoundItem(QTreeWidgetItem* item)
{
    // The first match at or below an item.
    while (item && !IsMatchItem(item))
    {
        if (item->childCount() == 0)
            return nullptr;
        item = item->child(0);
    }
    return item;
}

QTreeWidgetItem* SearchResultsTreeWidget::GetLastFoundItem(QTreeWidgetItem* item)
{
    while (item && !IsMatchItem(item))
    {
        if (item->childCount() == 0)
            return nullptr;
        item = item->child(item->childCount() - 1);
    }
    return item;
}

QList<QTreeWidgetItem*> SearchResultsTreeWidget::MatchItems() const
{
    QList<QTreeWidgetItem*> items;
    for (int i = 0; i < topLevelItemCount(); ++i)
    {
        const QTreeWidgetItem* root = topLevelItem(i);
        for (int j = 0; j < root->childCount(); ++j)
        {
            const QTreeWidgetItem* file = root->child(j);
            for (int k = 0; k < file->childCount(); ++k)
                items.append(file->child(k));
        }
    }
    return items;
}

void SearchResultsTreeWidget::Next()
{
    if (topLevelItemCount() == 0)
        return;
    QTreeWidgetItem* item = currentItem();
    QTreeWidgetItem* next = nullptr;
    if (IsMatchItem(item))
    {
        const QList<QTreeWidgetItem*> items = MatchItems();
        const qsizetype index = items.indexOf(item);
        if (index >= 0 && index + 1 < items.size())
            next = items.at(index + 1);
    }
    else if (item)
    {
        next = GetFirstFoundItem(item);
    }
    if (!next)
        next = GetFirstFoundItem(topLevelItem(0));
    if (!next)
        return;
    setCurrentItem(next);
    UpdateSearchFocus(next);
}

void SearchResultsTreeWidget::Previous()
{
    if (topLevelItemCount() == 0)
        return;
    QTreeWidgetItem* item = currentItem();
    QTreeWidgetItem* previous = nullptr;
    if (IsMatchItem(item))
    {
        const QList<QTreeWidgetItem*> items = MatchItems();
        const qsizetype index = items.indexOf(item);
        if (index > 0)
            previous = items.at(index - 1);
    }
    else if (item)
    {
        previous = GetLastFoundItem(item);
    }
    if (!previous)
        previous = GetLastFoundItem(topLevelItem(topLevelItemCount() - 1));
    if (!previous)
        return;
    setCurrentItem(previous);
    UpdateSearchFocus(previous);
}

void SearchResultsTreeWidget::UpdateSearchFocus(QTreeWidgetItem* newItem)
{
    if (IsMatchItem(newItem))
        emit SearchFocusChanged(ItemPath(newItem), newItem->data(0, PositionRole).toInt());
}

// ---------------------------------------------------------------------------------------------
// Replacing

void SearchResultsTreeWidget::Replace(QTreeWidgetItem* item)
{
    if (!item)
        return;
    if (IsMatchItem(item))
    {
        emit FindAndReplace(ItemPath(item), item->data(0, PositionRole).toInt());
        return;
    }
    // A root or a file: every file below it. The paths are taken first, as each replacement
    // rebuilds the file's branch.
    QStringList paths;
    if (item->parent())
    {
        paths.append(ItemPath(item));
    }
    else
    {
        for (int i = 0; i < item->childCount(); ++i)
            paths.append(ItemPath(item->child(i)));
    }
    for (const QString& path : paths)
        emit FindAndReplace(path, -1);
}

void SearchResultsTreeWidget::ReplaceAll()
{
    QStringList paths;
    for (int i = 0; i < topLevelItemCount(); ++i)
    {
        const QTreeWidgetItem* root = topLevelItem(i);
        for (int j = 0; j < root->childCount(); ++j)
            paths.append(ItemPath(root->child(j)));
    }
    for (const QString& path : paths)
        emit FindAndReplace(path, -1);
}

// ---------------------------------------------------------------------------------------------
// Events

void SearchResultsTreeWidget::mouseReleaseEvent(QMouseEvent* event)
{
    QTreeWidget::mouseReleaseEvent(event);
    QTreeWidgetItem* item = itemAt(event->position().toPoint());
    if (!item)
        return;
    setCurrentItem(item);
    UpdateSearchFocus(item);
    const bool toggles = event->button() == Qt::LeftButton || event->button() == Qt::MiddleButton;
    if (toggles && !IsMatchItem(item))
        item->setExpanded(!item->isExpanded());
}

void SearchResultsTreeWidget::keyPressEvent(QKeyEvent* event)
{
    QTreeWidget::keyPressEvent(event);
    UpdateSearchFocus(currentItem());
}

void SearchResultsTreeWidget::resizeEvent(QResizeEvent* event)
{
    QTreeWidget::resizeEvent(event);
    emit Resized();
}
