// Indenting and unindenting in both tab modes.
#include "editor/CodeEditor.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtWidgets/QScrollBar>

namespace
{
bool IsSpaceOrTab(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

int LeadingRunLength(const QString& text)
{
    int length = 0;
    while (length < text.size() && IsSpaceOrTab(text.at(length)))
        ++length;
    return length;
}

// Replaces the block's leading run of spaces and tabs, if it differs, and leaves the cursor after it.
void ReplaceLeadingRun(QTextCursor& cursor, const QString& run)
{
    const QTextBlock block = cursor.block();
    const int length = LeadingRunLength(block.text());
    cursor.setPosition(block.position());
    cursor.setPosition(block.position() + length, QTextCursor::KeepAnchor);
    if (cursor.selectedText() != run)
        cursor.insertText(run);
    else
        cursor.clearSelection();
}
} // namespace

// Spaces count 1, a tab goes on to the next tab stop, and anything else ends the run.
int CodeEditor::LeadingWidth(const QString& text) const
{
    int width = 0;
    for (const QChar c : text)
    {
        if (c == QLatin1Char(' '))
            ++width;
        else if (c == QLatin1Char('\t'))
            width += tabSize - width % tabSize;
        else
            break;
    }
    return width;
}

// The cursor's column as drawn, tabs counted to their stop.
int CodeEditor::ColumnWidth(const QTextCursor& cursor) const
{
    int width = 0;
    for (const QChar c : cursor.block().text().left(cursor.positionInBlock()))
        width += c == QLatin1Char('\t') ? tabSize - width % tabSize : 1;
    return width;
}

bool CodeEditor::IsCursorInBlockIndent(bool useAnchor) const
{
    return IsCursorInBlockIndent(textCursor(), useAnchor);
}

bool CodeEditor::IsCursorInBlockIndent(const QTextCursor& cursor, bool useAnchor) const
{
    const int position = useAnchor ? EarliestPosition(cursor) : cursor.position();
    const QTextBlock block = document()->findBlock(position);
    static const QRegularExpression nonWhite(QStringLiteral("\\S"));
    const int first = block.text().indexOf(nonWhite);
    return first < 0 || position - block.position() <= first;
}

void CodeEditor::ConvertLeadingTabsToSpaces(QTextCursor& cursor)
{
    ReplaceLeadingRun(cursor, ConvertLeadingTabsToSpaces(cursor.block().text()));
}

QString CodeEditor::ConvertLeadingTabsToSpaces(const QString& text) const
{
    QString result;
    for (const QChar c : text)
    {
        if (c == QLatin1Char(' '))
            result.append(c);
        else if (c == QLatin1Char('\t'))
            result.append(SpacesStr(tabSize - result.size() % tabSize));
        else
            break;
    }
    return result;
}

void CodeEditor::ConvertLeadingSpacesToTabs(QTextCursor& cursor, bool keepRemainder)
{
    const int width = LeadingWidth(cursor.block().text());
    QString run(width / tabSize, QLatin1Char('\t'));
    if (keepRemainder)
        run += SpacesStr(width % tabSize);
    ReplaceLeadingRun(cursor, run);
}

QString CodeEditor::ConvertLeadingSpacesToTabs(const QString& text) const
{
    const int width = LeadingWidth(text);
    return QString(width / tabSize, QLatin1Char('\t')) + SpacesStr(width % tabSize);
}

void CodeEditor::IncreaseSpacesIndent(QTextCursor& cursor)
{
    static const QRegularExpression blank(QStringLiteral("^[\\t ]+$"));
    if (IsCursorInBlockIndent(cursor, true))
    {
        cursor.removeSelectedText();
        const QTextBlock block = cursor.block();
        if (blank.match(block.text()).hasMatch())
        {
            // A blank line goes back to a tab stop first.
            const int width = ColumnWidth(cursor);
            cursor.setPosition(block.position());
            cursor.setPosition(block.position() + block.length() - 1, QTextCursor::KeepAnchor);
            cursor.insertText(SpacesStr(width / tabSize * tabSize));
        }
        else
        {
            ConvertLeadingTabsToSpaces(cursor);
        }
    }
    cursor.insertText(SpacesStr(tabSize - ColumnWidth(cursor) % tabSize));
}

void CodeEditor::IncreaseTabIndent(QTextCursor& cursor)
{
    static const QRegularExpression blank(QStringLiteral("^[\\t ]+$"));
    if (IsCursorInBlockIndent(cursor, true))
    {
        cursor.removeSelectedText();
        const QTextBlock block = cursor.block();
        if (blank.match(block.text()).hasMatch())
        {
            const int width = ColumnWidth(cursor);
            cursor.setPosition(block.position());
            cursor.setPosition(block.position() + block.length() - 1, QTextCursor::KeepAnchor);
            cursor.insertText(QString(width / tabSize, QLatin1Char('\t')));
        }
        else
        {
            ConvertLeadingSpacesToTabs(cursor, false);
        }
    }
    cursor.insertText(QStringLiteral("\t"));
}

void CodeEditor::DecreaseSpacesIndent(QTextCursor& cursor, bool fullStep)
{
    ConvertLeadingTabsToSpaces(cursor);
    const QTextBlock block = cursor.block();
    int count = tabSize;
    if (!fullStep)
    {
        // Back to the tab stop before the first word, not by a fixed width.
        const int column = LeadingRunLength(block.text());
        if (column == 0)
            return;
        count = column % tabSize == 0 ? tabSize : column % tabSize;
    }
    const QString text = block.text();
    int length = 0;
    while (length < count && length < text.size() && text.at(length) == QLatin1Char(' '))
        ++length;
    cursor.setPosition(block.position());
    cursor.setPosition(block.position() + length, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

void CodeEditor::DecreaseTabIndent(QTextCursor& cursor)
{
    ConvertLeadingSpacesToTabs(cursor, true);
    const QTextBlock block = cursor.block();
    const QString text = block.text();
    int length = 0;
    if (text.startsWith(QLatin1Char('\t')))
        length = 1;
    else
        while (length < tabSize && length < text.size() && text.at(length) == QLatin1Char(' '))
            ++length;
    cursor.setPosition(block.position());
    cursor.setPosition(block.position() + length, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

// The blocks that a command over lines works on: those of the selection, without a last one that
// the selection only touches at its start.
void CodeEditor::GetLineRange(int& firstBlock, int& lastBlock) const
{
    int start = 0;
    int end = 0;
    bool endsAtBlockStart = false;
    HasSelection(start, end, firstBlock, lastBlock, endsAtBlockStart);
    if (endsAtBlockStart && lastBlock > firstBlock)
        --lastBlock;
}

void CodeEditor::IncreaseIndent(bool fullLine)
{
    int start = 0;
    int end = 0;
    int firstBlock = 0;
    int lastBlock = 0;
    bool endsAtBlockStart = false;
    const bool severalLines =
        HasSelection(start, end, firstBlock, lastBlock, endsAtBlockStart) && firstBlock < lastBlock;
    if (!severalLines && !fullLine)
    {
        QTextCursor cursor = textCursor();
        cursor.beginEditBlock();
        insertSpaces ? IncreaseSpacesIndent(cursor) : IncreaseTabIndent(cursor);
        cursor.endEditBlock();
        setTextCursor(cursor);
        return;
    }
    IndentLines(true);
}

void CodeEditor::DecreaseIndent()
{
    int start = 0;
    int end = 0;
    int firstBlock = 0;
    int lastBlock = 0;
    bool endsAtBlockStart = false;
    if (HasSelection(start, end, firstBlock, lastBlock, endsAtBlockStart) && firstBlock < lastBlock)
    {
        IndentLines(false);
        return;
    }
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    insertSpaces ? DecreaseSpacesIndent(cursor, false) : DecreaseTabIndent(cursor);
    cursor.endEditBlock();
}

void CodeEditor::IndentLines(bool increase)
{
    int firstBlock = 0;
    int lastBlock = 0;
    GetLineRange(firstBlock, lastBlock);
    // A selection that starts at a line's start keeps the whole line, indent included.
    QTextCursor selection = textCursor();
    const bool startAtLineStart =
        selection.hasSelection() &&
        document()->findBlock(selection.selectionStart()).position() == selection.selectionStart();

    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    for (QTextBlock block = document()->findBlockByNumber(firstBlock);
         block.isValid() && block.blockNumber() <= lastBlock; block = block.next())
    {
        cursor.setPosition(block.position());
        if (increase)
        {
            if (block.text().isEmpty())
                continue;
            cursor.insertText(insertSpaces ? SpacesForTab() : QStringLiteral("\t"));
            insertSpaces ? ConvertLeadingTabsToSpaces(cursor) : ConvertLeadingSpacesToTabs(cursor, true);
        }
        else
        {
            insertSpaces ? DecreaseSpacesIndent(cursor, true) : DecreaseTabIndent(cursor);
        }
    }
    cursor.endEditBlock();

    if (startAtLineStart)
    {
        const int lineStart = document()->findBlockByNumber(firstBlock).position();
        const bool forward = selection.anchor() < selection.position();
        const int other = forward ? selection.position() : selection.anchor();
        selection.setPosition(forward ? lineStart : other);
        selection.setPosition(forward ? other : lineStart, QTextCursor::KeepAnchor);
        setTextCursor(selection);
    }
}

void CodeEditor::ConvertTabsToSpaces()
{
    const int horizontal = horizontalScrollBar()->value();
    const int vertical = verticalScrollBar()->value();
    const int cursorBlock = textCursor().blockNumber();
    const int column = textCursor().positionInBlock();
    int newColumn = column;

    QTextCursor cursor(document());
    cursor.beginEditBlock();
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
    {
        const QString text = block.text();
        if (!text.contains(QLatin1Char('\t')))
            continue;
        QString converted;
        for (int i = 0; i < text.size(); ++i)
        {
            if (i == column && block.blockNumber() == cursorBlock)
                newColumn = converted.size();
            if (text.at(i) == QLatin1Char('\t'))
                converted.append(SpacesStr(tabSize - converted.size() % tabSize));
            else
                converted.append(text.at(i));
        }
        if (column == text.size() && block.blockNumber() == cursorBlock)
            newColumn = converted.size();
        cursor.setPosition(block.position());
        cursor.setPosition(block.position() + text.size(), QTextCursor::KeepAnchor);
        cursor.insertText(converted);
    }
    cursor.endEditBlock();

    cursor.setPosition(document()->findBlockByNumber(cursorBlock).position() + newColumn);
    setTextCursor(cursor);
    horizontalScrollBar()->setValue(horizontal);
    verticalScrollBar()->setValue(vertical);
}
