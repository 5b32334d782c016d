#pragma once

#include "sidebar/SearchResult.h"

#include <QtCore/QList>
#include <QtCore/QStringList>
#include <QtWidgets/QWidget>

class FlatButton;
class KeyBindings;
class QLabel;
class QLineEdit;
class SearchResultsView;

// The side bar's search in files: what to look for and where, and the tree of what was found.
// The search itself runs in the main widget, which feeds the tree folder by folder.
class SearchView : public QWidget
{
    Q_OBJECT

public:
    SearchView(KeyBindings* keyBindings, QWidget* parent = nullptr);

    void SetSearchText(const QString& text);
    void SelectAllSearchText();
    void SetReplaceText(const QString& text);
    void SetIncludeText(const QString& text);
    void SetExcludeText(const QString& text);
    void SetReplaceVisible(bool visible);
    bool IsReplaceActive() const;
    void FocusSearch();
    void FocusReplace();
    void ClearResults();
    void NextResult();
    void PreviousResult();
    void Append(const QString& folder, const QString& relativeDir, QList<SearchResult> results);
    void Update(const QString& path, QList<SearchResult> results);
    void UpdateColors();
    void UpdateKeyBindings();
    SearchResultsView* GetResultsView() const { return resultsView; }

signals:
    void HideSideBarRequested();
    void SearchRequested(const QString& text, const QStringList& includeList, const QStringList& excludeList,
                         bool matchCase, bool matchWholeWords, bool useRegularExpression);
    void SearchCleared();
    void SearchFocusChanged(const QString& fileName, int position);
    void FindAndReplace(const QString& filePath, int position);

public slots:
    void Refresh();
    void CollapseAll();
    void Clear();
    void ToggleReplace();
    void ToggleMatchCase();
    void ToggleMatchWord();
    void ToggleRegularExpression();
    void ReplaceAll();
    void SetFiltersVisible(bool visible);
    void ShowFilters();
    void HideFilters();
    void OnSearchTextChanged();
    void UpdateReplaceText();
    void OnSearchFocusChanged(const QString& fileName, int position);
    void OnFindAndReplace(const QString& filePath, int position);
    void OnHideSideBarRequested();
    void ShowContextMenu(const QPoint& p);

protected:
    void hideEvent(QHideEvent* event) override;

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    FlatButton* CreateButton(const QString& name, const QString& image, int padding, const QString& toolTip);
    static QStringList SplitFilters(const QString& text);

    KeyBindings* keyBindings;
    QWidget* titleRow = nullptr;
    QLabel* titleLabel = nullptr;
    FlatButton* refreshBtn = nullptr;
    FlatButton* collapseBtn = nullptr;
    FlatButton* clearBtn = nullptr;
    FlatButton* toggleReplaceBtn = nullptr;
    FlatButton* matchCaseBtn = nullptr;
    FlatButton* matchWordBtn = nullptr;
    FlatButton* regExBtn = nullptr;
    FlatButton* replaceAllBtn = nullptr;
    FlatButton* showFiltersBtn = nullptr;
    FlatButton* hideFiltersBtn = nullptr;
    QLineEdit* searchEdit = nullptr;
    QLineEdit* replaceEdit = nullptr;
    QLineEdit* includeEdit = nullptr;
    QLineEdit* excludeEdit = nullptr;
    QLabel* includeLabel = nullptr;
    QLabel* excludeLabel = nullptr;
    SearchResultsView* resultsView = nullptr;
    bool searchPerformed = false;
};
