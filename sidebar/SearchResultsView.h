#pragma once

#include "sidebar/SearchResult.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QList>
#include <QtGui/QImage>
#include <QtWidgets/QWidget>

class FlatButton;
class QTreeWidgetItem;
class SearchResultsTreeWidget;

// The result tree of the search view, with a replace button that stands at the right end of
// the current row while replacing is on.
class SearchResultsView : public QWidget
{
    Q_OBJECT

public:
    explicit SearchResultsView(QWidget* parent = nullptr);

    void Next();
    void Previous();
    void ReplaceAll();
    void CollapseAll();
    int GetFileCount() const;
    int GetReplaceCount() const;
    void Clear();
    void SetReplaceVisible(bool visible);
    void Append(const QString& folder, const QString& relativeDir, QList<SearchResult> results);
    void Update(const QString& path, QList<SearchResult> results);
    SearchResultsTreeWidget* GetTreeWidget() const { return treeWidget; }
    FlatButton* GetReplaceButton() const { return replaceBtn; }

signals:
    void SearchFocusChanged(const QString& fileName, int position);
    void FindAndReplace(const QString& filePath, int position);

public slots:
    void OnCurrentItemChanged(QTreeWidgetItem* currentItem);
    void UpdateOverlayItems();
    void OnSearchFocusChanged(const QString& fileName, int position);
    void OnFindAndReplace(const QString& filePath, int position);
    void Dismiss();
    void Replace();

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    void RepaintIfDue();

    SearchResultsTreeWidget* treeWidget = nullptr;
    FlatButton* replaceBtn = nullptr;
    FlatButton* replaceBtnStrip = nullptr;
    QImage replaceImage;
    QImage replaceAllImage;
    QTreeWidgetItem* currentResultItem = nullptr;
    bool replaceVisible = false;
    // The search holds the main thread; the tree repaints itself now and then as it grows.
    QElapsedTimer repaintTimer;
};
