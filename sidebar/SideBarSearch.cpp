// The side bar's forwarders to and from its search view.
#include "sidebar/SearchView.h"
#include "sidebar/SideBar.h"

void SideBar::ConnectSearchView()
{
    connect(searchView,
            SIGNAL(SearchRequested(const QString&, const QStringList&, const QStringList&, bool, bool, bool)), this,
            SIGNAL(SearchRequested(const QString&, const QStringList&, const QStringList&, bool, bool, bool)));
    connect(searchView, SIGNAL(SearchCleared()), this, SIGNAL(SearchCleared()));
    connect(searchView, SIGNAL(SearchFocusChanged(const QString&, int)), this,
            SIGNAL(SearchFocusChanged(const QString&, int)));
    connect(searchView, SIGNAL(FindAndReplace(const QString&, int)), this,
            SIGNAL(FindAndReplace(const QString&, int)));
    connect(searchView, SIGNAL(HideSideBarRequested()), this, SLOT(OnSearchHideSideBarRequested()));
}

void SideBar::OnSearchHideSideBarRequested()
{
    emit SideBarVisibilityChangeRequested(false);
}

void SideBar::ClearSearchResults()
{
    searchView->ClearResults();
}

void SideBar::SetSearchText(const QString& text)
{
    searchView->SetSearchText(text);
}

void SideBar::SelectAllSearchText()
{
    searchView->SelectAllSearchText();
}

void SideBar::SetReplaceText(const QString& text)
{
    searchView->SetReplaceText(text);
}

void SideBar::SetReplaceVisible(bool visible)
{
    searchView->SetReplaceVisible(visible);
}

void SideBar::FocusSearch()
{
    searchView->FocusSearch();
}

void SideBar::FocusReplace()
{
    searchView->FocusReplace();
}

void SideBar::NextSearchResult()
{
    searchView->NextResult();
}

void SideBar::PreviousSearchResult()
{
    searchView->PreviousResult();
}

void SideBar::ReplaceAll()
{
    searchView->ReplaceAll();
}

void SideBar::AppendSearchResults(const QString& folder, const QString& relativeDir, QList<SearchResult> results)
{
    searchView->Append(folder, relativeDir, std::move(results));
}

void SideBar::UpdateSearchResults(const QString& path, QList<SearchResult> results)
{
    searchView->Update(path, std::move(results));
}
