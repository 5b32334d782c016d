#pragma once

#include <QtCore/QAbstractProxyModel>
#include <QtCore/QList>
#include <QtCore/QString>

// The go-to palette's proxy over a flat list: a case-insensitive substring filter on one role,
// the matches in the order of that role's text, and every row in the source's order while the
// filter is empty. It keeps each row's text, a folded copy and its place in the sorted order, so
// that a keystroke over twenty thousand rows is one pass with no string compare beyond the
// substring test; a stock sorting proxy asks the source for each text through a variant, runs a
// regular expression, sorts again, and reports a narrowed filter as thousands of removals.
class GoToFilterProxyModel : public QAbstractProxyModel
{
    Q_OBJECT

public:
    explicit GoToFilterProxyModel(int keyRole, QObject* parent = nullptr);

    void setSourceModel(QAbstractItemModel* model) override;

    // Filters on `text` (empty: every row, in the source's order).
    void SetFilterText(const QString& text);
    QString GetFilterText() const { return filterText; }
    // The text a proxy row is filtered and sorted on.
    QString GetKey(int proxyRow) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex mapToSource(const QModelIndex& proxyIndex) const override;
    QModelIndex mapFromSource(const QModelIndex& sourceIndex) const override;

private slots:
    void OnSourceAboutToChange();
    void OnSourceChanged();
    void OnSourceDestroyed();

private:
    void ReadKeys();
    void Filter();
    struct RecentFilter;
    // The recent filter that the present text narrows most (or equals), or null.
    const RecentFilter* NarrowestRecentFilter() const;
    void RememberFilter();

    const int keyRole;
    QString filterText;
    QString foldedFilterText;
    QList<QString> keys;
    QList<QString> foldedKeys;
    // Source rows in the order of their text (a case-sensitive compare, ties in source order).
    QList<int> sortedRows;
    // Whether each source row passes the present filter text.
    QList<bool> accepted;
    QList<int> proxyToSource;
    QList<int> sourceToProxy;
    bool resetting = false;

    // The accepted rows of recent filter texts, newest last: Backspace, and a character typed
    // again, cost a copy instead of a pass over every key.
    struct RecentFilter
    {
        QString foldedText;
        QList<bool> accepted;
    };
    static constexpr int RECENT_FILTER_COUNT = 32;
    QList<RecentFilter> recentFilters;
};
