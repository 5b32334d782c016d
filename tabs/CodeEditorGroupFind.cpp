// The find bar of an editor group: it floats over the current editor, and its searches and
// replacements go to that editor.
#include "tabs/CodeEditorGroup.h"

#include "editor/CodeEditor.h"
#include "editor/FindReplaceWidget.h"
#include "tabs/CodeEditorGroupTabBar.h"

#include <QtGui/QResizeEvent>

void CodeEditorGroup::CreateFindReplace()
{
    findReplace = new FindReplaceWidget(true, this);
    findReplace->setObjectName(QStringLiteral("findReplace"));
    findReplace->SetReplaceEnabled(true);
    findReplace->hide();
}

void CodeEditorGroup::ConnectFindReplace()
{
    connect(findReplace, SIGNAL(SearchChanged(const QRegularExpression&, bool, bool, bool)), this,
            SLOT(OnSearchChanged(const QRegularExpression&, bool, bool, bool)));
    connect(findReplace, SIGNAL(ReplaceRequested(const QString&)), this, SLOT(Replace(const QString&)));
    connect(findReplace, SIGNAL(ReplaceAllRequested(const QString&)), this, SLOT(ReplaceAll(const QString&)));
    connect(findReplace, SIGNAL(FindNextRequested()), this, SLOT(FindNext()));
    connect(findReplace, SIGNAL(FindPreviousRequested()), this, SLOT(FindPrevious()));
    connect(findReplace, SIGNAL(ShowRequested(bool)), this, SLOT(ShowFindReplace(bool)));
    connect(findReplace, SIGNAL(Closed()), this, SLOT(OnFindReplaceClosed()));
}

bool CodeEditorGroup::IsFindReplaceVisible() const
{
    return findReplace && !findReplace->isHidden();
}

void CodeEditorGroup::ShowFindReplace(bool replace, bool updateFindText, bool hasFocus, bool keepReplaceVisible)
{
    CodeEditor* codeEditor = GetCurrent();
    if (!codeEditor)
        return;
    QString text;
    if (updateFindText)
    {
        text = codeEditor->GetSelectedText();
        if (text.isEmpty())
            text = codeEditor->SelectWordUnderCursor();
        if (!text.isEmpty() && !text.contains(QLatin1Char('\n')))
            findReplace->SetSearchText(text);
    }
    if (!updateFindText || text.isEmpty() || text.contains(QLatin1Char('\n')))
        findReplace->OnSearchParametersChanged(false, false);
    SetFindReplaceVisible(true, replace, hasFocus, keepReplaceVisible);
    codeEditor->UpdateExtraSelections();
}

void CodeEditorGroup::SetFindReplaceVisible(bool visible, bool replace, bool hasFocus, bool keepReplaceVisible)
{
    if (!(IsFindReplaceVisible() && keepReplaceVisible))
        findReplace->SetReplaceVisible(replace);
    findReplace->setVisible(visible);
    if (visible)
    {
        findReplace->SetParentWidth(width());
        UpdateFindReplacePosition();
        findReplace->raise();
    }
    if (!hasFocus)
        return;
    if (replace && findReplace->HasSearchText())
        findReplace->FocusReplaceText();
    else
        findReplace->FocusSearchText();
}

void CodeEditorGroup::OnSearchChanged(const QRegularExpression& regEx, bool findInSelection, bool findNext,
                                      bool updateSelection)
{
    searchRegEx = regEx;
    CodeEditor* codeEditor = GetCurrent();
    if (codeEditor)
    {
        codeEditor->SetSearchRegEx(searchRegEx);
        const int start = codeEditor->GetSelectedStartPosition();
        const int end = codeEditor->GetSelectedEndPosition();
        if (!codeEditor->IsFindInSelectionEnabled())
        {
            if (findInSelection)
                codeEditor->SetSelectedSearchRegion(true, start, end);
        }
        else if (findInSelection && updateSelection)
        {
            if (codeEditor->GetSelectedText().contains(QLatin1Char('\n')))
                codeEditor->SetSelectedSearchRegion(true, start, end);
            else
                codeEditor->SetSelectedSearchRegion(true, -1, -1);
        }
        else
        {
            codeEditor->SetSelectedSearchRegion(findInSelection, -1, -1);
        }
        if (!searchRegEx.pattern().isEmpty() && findNext)
        {
            // A selection that is a match already stays; otherwise go to the next one.
            const QString selected = codeEditor->GetSelectedText();
            const QRegularExpressionMatch match =
                searchRegEx.isValid() ? searchRegEx.match(selected) : QRegularExpressionMatch();
            const bool covered = !selected.isEmpty() && match.hasMatch() && match.capturedStart() == 0 &&
                                 match.capturedLength() == selected.size();
            if (!covered)
                codeEditor->FindNext();
            codeEditor->UpdateExtraSelections();
        }
    }
    UpdateSearchResults(codeEditor);
}

void CodeEditorGroup::UpdateSearchResults(CodeEditor* codeEditor)
{
    if (!codeEditor)
    {
        findReplace->SetResults(0, 0);
        return;
    }
    int current = 0;
    int total = 0;
    codeEditor->GetSearchResults(searchRegEx, current, total);
    findReplace->SetResults(current, total);
}

void CodeEditorGroup::FindNext()
{
    CodeEditor* codeEditor = GetCurrent();
    if (searchRegEx.pattern().isEmpty() || !codeEditor)
        return;
    codeEditor->FindNext();
    UpdateSearchResults(codeEditor);
}

void CodeEditorGroup::FindPrevious()
{
    CodeEditor* codeEditor = GetCurrent();
    if (searchRegEx.pattern().isEmpty() || !codeEditor)
        return;
    codeEditor->FindPrevious();
    UpdateSearchResults(codeEditor);
}

void CodeEditorGroup::Replace(const QString& text)
{
    CodeEditor* codeEditor = GetCurrent();
    if (searchRegEx.pattern().isEmpty() || !codeEditor)
        return;
    codeEditor->Replace(text);
    UpdateSearchResults(codeEditor);
}

void CodeEditorGroup::ReplaceAll(const QString& text)
{
    CodeEditor* codeEditor = GetCurrent();
    if (searchRegEx.pattern().isEmpty() || !codeEditor)
        return;
    codeEditor->ReplaceAll(searchRegEx, text, codeEditor->IsFindInSelectionEnabled());
    UpdateSearchResults(codeEditor);
}

void CodeEditorGroup::Replace()
{
    findReplace->Replace();
}

void CodeEditorGroup::ReplaceAll()
{
    findReplace->ReplaceAll();
}

void CodeEditorGroup::ClearSearch()
{
    searchRegEx = QRegularExpression();
    if (CodeEditor* codeEditor = GetCurrent())
    {
        codeEditor->SetSearchRegEx(searchRegEx);
        codeEditor->SetSelectedSearchRegion(false, -1, -1);
    }
}

void CodeEditorGroup::ClearSearchSelection()
{
    if (CodeEditor* codeEditor = GetCurrent())
        codeEditor->SetSelectedSearchRegion(false, -1, -1);
}

void CodeEditorGroup::OnFindReplaceClosed()
{
    ClearSearch();
}

void CodeEditorGroup::UpdateFindReplacePosition()
{
    if (!findReplace)
        return;
    const CodeEditor* codeEditor = GetCurrent();
    const int scrollBarWidth = codeEditor ? codeEditor->GetVerticalScrollBarWidth() : 0;
    QRect geometry = findReplace->geometry();
    geometry.moveRight(width() - 20 - scrollBarWidth);
    geometry.moveTop(tabBar->isHidden() ? 0 : tabBar->height());
    findReplace->setGeometry(geometry);
}

void CodeEditorGroup::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    findReplace->SetParentWidth(width());
    UpdateFindReplacePosition();
    findReplace->raise();
}
