#pragma once

#include "sidebar/SearchResult.h"
#include "sidebar/SideBarView.h"

#include <QtWidgets/QWidget>

class KeyBindings;
class QLabel;
class QStackedWidget;
class SearchView;

// The stack of side bar views. The views themselves (workspace, outline, open editors,
// search, quick help) are still to come: each page is an empty titled pane for now.
class SideBar : public QWidget
{
    Q_OBJECT

public:
    SideBar(KeyBindings* keyBindings, QWidget* parent = nullptr);

    void SetView(SideBarView view);
    SideBarView GetView() const;
    void SaveState();
    void SaveOutline();
    void SaveWorkspace();
    void ClearInvalidDetailsFromOutline(const QStringList& paths);
    void UpdateKeyBindings();

    // The search view.
    SearchView* GetSearchView() const { return searchView; }
    void ClearSearchResults();
    void SetSearchText(const QString& text);
    void SelectAllSearchText();
    void SetReplaceText(const QString& text);
    void SetReplaceVisible(bool visible);
    void FocusSearch();
    void FocusReplace();
    void NextSearchResult();
    void PreviousSearchResult();
    void ReplaceAll();
    void AppendSearchResults(const QString& folder, const QString& relativeDir, QList<SearchResult> results);
    void UpdateSearchResults(const QString& path, QList<SearchResult> results);

signals:
    void SideBarVisibilityChangeRequested(bool visible);
    void ViewChangeRequested(SideBarView view);
    void SearchRequested(const QString& text, const QStringList& includeList, const QStringList& excludeList,
                         bool matchCase, bool matchWholeWords, bool useRegularExpression);
    void SearchCleared();
    void SearchFocusChanged(const QString& fileName, int position);
    void FindAndReplace(const QString& filePath, int position);

private slots:
    void OnSearchHideSideBarRequested();

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    QWidget* CreatePage(const QString& title);
    void ConnectSearchView();

    KeyBindings* keyBindings;
    QStackedWidget* stack = nullptr;
    SearchView* searchView = nullptr;
};
