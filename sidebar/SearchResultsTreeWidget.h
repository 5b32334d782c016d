#pragma once

#include "sidebar/SearchResult.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtWidgets/QTreeWidget>

// The results of a search in files, in three levels: a root per searched folder, a file under
// it, and a row per match with the matched line.
class SearchResultsTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    static constexpr int PathRole = Qt::UserRole;
    static constexpr int PositionRole = Qt::UserRole + 1;

    explicit SearchResultsTreeWidget(QWidget* parent = nullptr);

    void Append(const QString& folder, const QString& relativeDir, const QList<SearchResult>& results);
    void Update(const QString& path, const QList<SearchResult>& results);
    void Next();
    void Previous();
    int GetFileCount() const;
    int GetReplaceCount() const;
    void Clear();

    static bool IsMatchItem(const QTreeWidgetItem* item);

signals:
    void SearchFocusChanged(const QString& filePath, int position);
    void FindAndReplace(const QString& filePath, int position);
    void Resized();

public slots:
    void UpdateSearchFocus(QTreeWidgetItem* newItem);
    void Replace(QTreeWidgetItem* item);
    void ReplaceAll();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QTreeWidgetItem* FindTopLevelItem(const QString& path) const;
    QTreeWidgetItem* FindFileItem(const QTreeWidgetItem* root, const QString& path) const;
    void DeleteFileItem(QTreeWidgetItem* root, QTreeWidgetItem* fileItem);
    static QString FileKey(const QTreeWidgetItem* root, const QString& path);
    QTreeWidgetItem* CreateTopLevelItem(const QString& path);
    QTreeWidgetItem* CreateFileItem(const QString& path, const QString& relativeDir, const QString& label);
    static QTreeWidgetItem* CreateMatchItem(const SearchResult& result, const QString& path);
    static void SetItemData(QTreeWidgetItem* item, const QString& path, int position);
    static QTreeWidgetItem* GetFirstFoundItem(QTreeWidgetItem* item);
    static QTreeWidgetItem* GetLastFoundItem(QTreeWidgetItem* item);
    QStringList GetRootFolders() const;
    void PlaceTopLevelItem(QTreeWidgetItem* root);
    QList<QTreeWidgetItem*> MatchItems() const;

    // File items by root and path: a search appends thousands of files under one root.
    QHash<QString, QTreeWidgetItem*> fileItems;
};
