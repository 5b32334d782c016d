// Find and replace in one buffer: the find bar's searches, and the jumps and replacements of
// the search in files.
#include "editor/CodeEditor.h"

#include "settings/Settings.h"

#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>

namespace
{
bool IsSearchable(const QRegularExpression& regEx)
{
    return !regEx.pattern().isEmpty() && regEx.isValid();
}
} // namespace

void CodeEditor::SetSearchRegEx(const QRegularExpression& regEx)
{
    searchRegEx = regEx;
}

bool CodeEditor::SelectionIsFullMatch(const QRegularExpression& regEx) const
{
    const QString selected = textCursor().selectedText();
    if (selected.isEmpty() || !IsSearchable(regEx))
        return false;
    const QRegularExpressionMatch match = regEx.match(selected);
    return match.hasMatch() && match.capturedStart() == 0 && match.capturedLength() == selected.size();
}

void CodeEditor::GetSearchResults(const QRegularExpression& regEx, int& current, int& total) const
{
    current = -1;
    total = 0;
    if (!IsSearchable(regEx))
        return;
    const bool selectionIsMatch = SelectionIsFullMatch(regEx);
    const int selectionStart = GetSelectedStartPosition();
    // Line by line, as the steps of Find see the text, so that `^` and `$` count the same.
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
    {
        const int blockStart = block.position();
        if (findInSelection && (blockStart + block.length() <= findInSelectionStart || blockStart > findInSelectionEnd))
            continue;
        QRegularExpressionMatchIterator matches = regEx.globalMatch(block.text());
        while (matches.hasNext())
        {
            const QRegularExpressionMatch match = matches.next();
            const int start = blockStart + static_cast<int>(match.capturedStart());
            const int end = blockStart + static_cast<int>(match.capturedEnd());
            if (findInSelection && (start < findInSelectionStart || end > findInSelectionEnd))
                continue;
            ++total;
            if (selectionIsMatch && start == selectionStart)
                current = total;
        }
    }
}

void CodeEditor::ShowFoundCursor(const QTextCursor& cursor)
{
    setCenterOnScroll(true);
    setTextCursor(cursor);
    ensureCursorVisible();
    setCenterOnScroll(false);
}

bool CodeEditor::Find(int position, bool backward)
{
    if (!IsSearchable(searchRegEx))
        return false;
    QTextDocument::FindFlags flags;
    if (backward)
        flags |= QTextDocument::FindBackward;
    if (!(searchRegEx.patternOptions() & QRegularExpression::CaseInsensitiveOption))
        flags |= QTextDocument::FindCaseSensitively;

    const bool ranged = findInSelection && findInSelectionStart >= 0 && findInSelectionEnd >= 0;
    const auto inRange = [this, ranged](const QTextCursor& cursor)
    { return !ranged || (cursor.selectionStart() >= findInSelectionStart && cursor.selectionEnd() <= findInSelectionEnd); };

    bool wrapped = false;
    if (ranged && (position < findInSelectionStart || position > findInSelectionEnd))
    {
        position = backward ? findInSelectionEnd : findInSelectionStart;
        wrapped = true;
    }
    QTextCursor found = document()->find(searchRegEx, position, flags);
    if ((found.isNull() || !inRange(found)) && !wrapped)
    {
        const int documentEnd = document()->characterCount() - 1;
        const int restart = ranged ? (backward ? findInSelectionEnd : findInSelectionStart)
                                   : (backward ? documentEnd : 0);
        found = document()->find(searchRegEx, restart, flags);
    }
    if (found.isNull() || !inRange(found))
        return false;
    ShowFoundCursor(found);
    return true;
}

bool CodeEditor::FindNext()
{
    const QTextCursor cursor = textCursor();
    const bool match = SelectionIsFullMatch(searchRegEx);
    return Find(match ? LatestPosition(cursor) : EarliestPosition(cursor), false);
}

bool CodeEditor::FindPrevious()
{
    const QTextCursor cursor = textCursor();
    const bool match = SelectionIsFullMatch(searchRegEx);
    return Find(match ? EarliestPosition(cursor) : LatestPosition(cursor), true);
}

bool CodeEditor::FindGlobal(int position)
{
    const QRegularExpression& regEx = Settings::globalSearchRegEx;
    if (!IsSearchable(regEx))
        return false;
    const QTextCursor found = document()->find(regEx, position);
    if (found.isNull() || found.anchor() != position)
        return false;
    ShowFoundCursor(found);
    return true;
}

bool CodeEditor::FindAndReplaceGlobal(int position)
{
    const QRegularExpression& regEx = Settings::globalSearchRegEx;
    const QString& replacement = Settings::globalSearchReplaceText;
    if (!IsSearchable(regEx) || replacement.isEmpty())
        return false;
    QTextCursor found = document()->find(regEx, position);
    if (found.isNull() || found.anchor() != position)
        return false;
    found.insertText(replacement);
    found.setPosition(position);
    found.setPosition(position + static_cast<int>(replacement.size()), QTextCursor::KeepAnchor);
    setTextCursor(found);
    ensureCursorVisible();
    return true;
}

void CodeEditor::FindAndReplaceAllGlobal()
{
    ReplaceAll(Settings::globalSearchRegEx, Settings::globalSearchReplaceText, false);
}

void CodeEditor::Replace(const QString& text)
{
    QTextCursor cursor = textCursor();
    if (text.isEmpty() || !cursor.hasSelection())
        return;
    const bool leavesRange = findInSelection && (cursor.selectionStart() < findInSelectionStart ||
                                                 cursor.selectionEnd() > findInSelectionEnd);
    if (!leavesRange && SelectionIsFullMatch(searchRegEx))
    {
        cursor.insertText(text);
        // The length of the last replace text of the search in files, not of this one: kept so.
        const int end = cursor.position();
        cursor.setPosition(qMax(0, end - static_cast<int>(Settings::globalSearchReplaceText.size())));
        cursor.setPosition(end, QTextCursor::KeepAnchor);
        setTextCursor(cursor);
    }
    FindNext();
}

void CodeEditor::ReplaceAll(const QRegularExpression& regEx, const QString& text, bool inSelection)
{
    if (text.isEmpty() || !IsSearchable(regEx))
        return;
    const QString plainText = document()->toPlainText();
    const bool ranged = inSelection && findInSelectionStart >= 0 && findInSelectionEnd >= findInSelectionStart;
    const int rangeStart = ranged ? qMin(findInSelectionStart, static_cast<int>(plainText.size())) : 0;
    const int rangeEnd = ranged ? qMin(findInSelectionEnd, static_cast<int>(plainText.size()))
                                : static_cast<int>(plainText.size());
    QString range = plainText.mid(rangeStart, rangeEnd - rangeStart);

    // `^` and `$` stand for the ends of each line, as in the steps of Find.
    const QRegularExpression lineRegEx(regEx.pattern(), regEx.patternOptions() | QRegularExpression::MultilineOption);
    if (!lineRegEx.match(range).hasMatch())
        return;

    const int oldLength = static_cast<int>(range.size());
    range.replace(lineRegEx, text);
    QString newText = range;
    if (ranged)
    {
        findInSelectionEnd += static_cast<int>(range.size()) - oldLength;
        newText = QStringLiteral("%1%2%3").arg(plainText.left(rangeStart), range, plainText.mid(rangeEnd));
    }

    // One undo step; the cursor comes back to its line and column.
    const QTextCursor old = textCursor();
    const int blockNumber = old.blockNumber();
    const int column = old.positionInBlock();
    QTextCursor cursor(document());
    ignoreContentsChange = true;
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.insertText(newText);
    cursor.endEditBlock();
    ignoreContentsChange = false;

    const QTextBlock block = document()->findBlockByNumber(blockNumber);
    if (block.isValid())
    {
        // A block's length counts its line end.
        cursor.setPosition(block.position() + qBound(0, column, qMax(0, block.length() - 1)));
    }
    else
    {
        cursor.movePosition(QTextCursor::End);
    }
    setTextCursor(cursor);
}

void CodeEditor::SetSelectedSearchRegion(bool enabled, int start, int end)
{
    if (!enabled && start < 0 && end < 0)
    {
        findInSelectionStart = -1;
        findInSelectionEnd = -1;
    }
    else if (start >= 0 || end >= 0)
    {
        // The range is made of whole lines.
        if (start >= 0)
            findInSelectionStart = document()->findBlock(start).position();
        if (end >= 0)
        {
            const QTextBlock last = document()->findBlock(end);
            const QTextBlock after = last.next();
            findInSelectionEnd = after.isValid() ? after.position() : document()->characterCount() - 1;
        }
    }
    findInSelection = enabled;
    UpdateExtraSelections();
}

void CodeEditor::ClearFindInSelection()
{
    SetSelectedSearchRegion(false, -1, -1);
}
