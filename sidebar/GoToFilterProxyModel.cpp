#include "sidebar/GoToFilterProxyModel.h"

#include <algorithm>
#include <numeric>

GoToFilterProxyModel::GoToFilterProxyModel(int role, QObject* parent) : QAbstractProxyModel(parent), keyRole(role)
{
}

void GoToFilterProxyModel::setSourceModel(QAbstractItemModel* model)
{
    beginResetModel();
    if (sourceModel())
        disconnect(sourceModel(), nullptr, this, nullptr);
    QAbstractProxyModel::setSourceModel(model);
    if (model)
    {
        // Rows change only when the palette fills a list anew: each change is a reset here.
        connect(model, SIGNAL(modelAboutToBeReset()), this, SLOT(OnSourceAboutToChange()));
        connect(model, SIGNAL(modelReset()), this, SLOT(OnSourceChanged()));
        connect(model, SIGNAL(rowsAboutToBeInserted(QModelIndex, int, int)), this, SLOT(OnSourceAboutToChange()));
        connect(model, SIGNAL(rowsInserted(QModelIndex, int, int)), this, SLOT(OnSourceChanged()));
        connect(model, SIGNAL(rowsAboutToBeRemoved(QModelIndex, int, int)), this, SLOT(OnSourceAboutToChange()));
        connect(model, SIGNAL(rowsRemoved(QModelIndex, int, int)), this, SLOT(OnSourceChanged()));
        connect(model, SIGNAL(layoutAboutToBeChanged()), this, SLOT(OnSourceAboutToChange()));
        connect(model, SIGNAL(layoutChanged()), this, SLOT(OnSourceChanged()));
        connect(model, SIGNAL(dataChanged(QModelIndex, QModelIndex, QList<int>)), this,
                SLOT(OnSourceAboutToChange()));
        connect(model, SIGNAL(dataChanged(QModelIndex, QModelIndex, QList<int>)), this, SLOT(OnSourceChanged()));
        connect(model, SIGNAL(destroyed()), this, SLOT(OnSourceDestroyed()));
    }
    ReadKeys();
    Filter();
    endResetModel();
}

void GoToFilterProxyModel::OnSourceAboutToChange()
{
    if (resetting)
        return;
    resetting = true;
    beginResetModel();
}

void GoToFilterProxyModel::OnSourceChanged()
{
    if (!resetting)
        beginResetModel();
    ReadKeys();
    Filter();
    resetting = false;
    endResetModel();
}

void GoToFilterProxyModel::OnSourceDestroyed()
{
    // The model is half gone: let go of it first, so that no view asks it anything during the
    // reset, then forget its rows.
    QAbstractProxyModel::setSourceModel(nullptr);
    beginResetModel();
    keys.clear();
    foldedKeys.clear();
    sortedRows.clear();
    accepted.clear();
    proxyToSource.clear();
    sourceToProxy.clear();
    recentFilters.clear();
    resetting = false;
    endResetModel();
}

void GoToFilterProxyModel::SetFilterText(const QString& text)
{
    filterText = text;
    foldedFilterText = text.toCaseFolded();
    emit layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    QModelIndexList sources;
    sources.reserve(before.size());
    for (const QModelIndex& index : before)
        sources.append(mapToSource(index));
    Filter();
    QModelIndexList after;
    after.reserve(sources.size());
    for (const QModelIndex& source : sources)
        after.append(mapFromSource(source));
    changePersistentIndexList(before, after);
    emit layoutChanged();
}

QString GoToFilterProxyModel::GetKey(int proxyRow) const
{
    if (proxyRow < 0 || proxyRow >= proxyToSource.size())
        return QString();
    return keys.at(proxyToSource.at(proxyRow));
}

void GoToFilterProxyModel::ReadKeys()
{
    keys.clear();
    foldedKeys.clear();
    const QAbstractItemModel* model = sourceModel();
    const int rows = model ? model->rowCount() : 0;
    keys.reserve(rows);
    foldedKeys.reserve(rows);
    for (int row = 0; row < rows; ++row)
    {
        keys.append(model->index(row, 0).data(keyRole).toString());
        foldedKeys.append(keys.constLast().toCaseFolded());
    }
    sortedRows.resize(rows);
    std::iota(sortedRows.begin(), sortedRows.end(), 0);
    std::stable_sort(sortedRows.begin(), sortedRows.end(),
                     [this](int left, int right) { return keys.at(left).compare(keys.at(right)) < 0; });
    accepted.fill(true, rows);
    recentFilters.clear();
}

const GoToFilterProxyModel::RecentFilter* GoToFilterProxyModel::NarrowestRecentFilter() const
{
    // A text that holds an earlier one matches only rows that matched it.
    const RecentFilter* best = nullptr;
    for (const RecentFilter& recent : recentFilters)
    {
        if (foldedFilterText.contains(recent.foldedText) &&
            (!best || recent.foldedText.size() > best->foldedText.size()))
            best = &recent;
    }
    return best;
}

void GoToFilterProxyModel::RememberFilter()
{
    for (qsizetype i = 0; i < recentFilters.size(); ++i)
    {
        if (recentFilters.at(i).foldedText == foldedFilterText)
        {
            recentFilters.move(i, recentFilters.size() - 1);
            return;
        }
    }
    if (recentFilters.size() >= RECENT_FILTER_COUNT)
        recentFilters.removeFirst();
    recentFilters.append({foldedFilterText, accepted});
}

void GoToFilterProxyModel::Filter()
{
    const int rows = static_cast<int>(keys.size());
    if (foldedFilterText.isEmpty())
    {
        accepted.fill(true, rows);
    }
    else
    {
        const RecentFilter* start = NarrowestRecentFilter();
        if (start)
            accepted = start->accepted;
        if (!start || start->foldedText.size() != foldedFilterText.size())
        {
            for (int row = 0; row < rows; ++row)
            {
                if (!start || accepted.at(row))
                    accepted[row] = foldedKeys.at(row).contains(foldedFilterText);
            }
        }
        RememberFilter();
    }
    proxyToSource.clear();
    sourceToProxy.fill(-1, rows);
    // With a filter the matches come in the order of their text, without one in the source's.
    for (int i = 0; i < rows; ++i)
    {
        const int row = filterText.isEmpty() ? i : sortedRows.at(i);
        if (!accepted.at(row))
            continue;
        sourceToProxy[row] = static_cast<int>(proxyToSource.size());
        proxyToSource.append(row);
    }
}

QModelIndex GoToFilterProxyModel::index(int row, int column, const QModelIndex& parent) const
{
    if (parent.isValid() || row < 0 || row >= proxyToSource.size() || column < 0 || column >= columnCount())
        return QModelIndex();
    return createIndex(row, column);
}

QModelIndex GoToFilterProxyModel::parent(const QModelIndex&) const
{
    return QModelIndex();
}

int GoToFilterProxyModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(proxyToSource.size());
}

int GoToFilterProxyModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() || !sourceModel() ? 0 : sourceModel()->columnCount();
}

QModelIndex GoToFilterProxyModel::mapToSource(const QModelIndex& proxyIndex) const
{
    if (!proxyIndex.isValid() || !sourceModel() || proxyIndex.row() >= proxyToSource.size())
        return QModelIndex();
    return sourceModel()->index(proxyToSource.at(proxyIndex.row()), proxyIndex.column());
}

QModelIndex GoToFilterProxyModel::mapFromSource(const QModelIndex& sourceIndex) const
{
    if (!sourceIndex.isValid() || sourceIndex.parent().isValid() || sourceIndex.row() >= sourceToProxy.size())
        return QModelIndex();
    const int row = sourceToProxy.at(sourceIndex.row());
    return row < 0 ? QModelIndex() : index(row, sourceIndex.column());
}
