// Line commands of CodeEditor: comments, moving, copying and deleting lines, the line-aware
// clipboard, and the tidying of a file before it is saved.
#include "editor/CodeEditor.h"
#include "editor/CodeEditorBlockData.h"

#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtGui/QTextDocumentFragment>
#include <QtWidgets/QScrollBar>

const char* const CodeEditor::LINE_MIME_TYPE = "text/brindletEditorLine";

namespace
{
int LeadingRunLength(const QString& text)
{
    int length = 0;
    while (length < text.size() &&
           (text.at(length) == QLatin1Char(' ') || text.at(length) == QLatin1Char('\t')))
        ++length;
    return length;
}

// How many of the characters removed from [from, from + count) stood before a position.
int RemovedBefore(int position, int from, int count)
{
    return qBound(0, position - from, count);
}

// The selection's ends, with an end at column 0 of a later line taken back into the line before.
void GetLineSelection(const QTextCursor& cursor, int& start, int& end)
{
    start = cursor.selectionStart();
    end = cursor.selectionEnd();
    if (start != end && cursor.document()->findBlock(end).position() == end)
        --end;
}

void SetSelection(QTextCursor& cursor, int anchor, int position)
{
    cursor.setPosition(anchor);
    cursor.setPosition(position, QTextCursor::KeepAnchor);
}
} // namespace

void CodeEditor::ToggleComment()
{
    QString mark;
    if (GetLanguage() == CodeEditorLanguage::MEL)
        mark = QStringLiteral("//");
    else if (GetLanguage() == CodeEditorLanguage::PYTHON)
        mark = QStringLiteral("#");
    else
        return;

    int start = 0;
    int end = 0;
    int firstBlock = 0;
    int lastBlock = 0;
    bool endsAtBlockStart = false;
    if (HasSelection(start, end, firstBlock, lastBlock, endsAtBlockStart) && firstBlock < lastBlock)
        ToggleCommentLines(mark, firstBlock, endsAtBlockStart ? lastBlock - 1 : lastBlock);
    else
        ToggleCommentLine(mark);
}

void CodeEditor::ToggleCommentLines(const QString& mark, int firstBlock, int lastBlock)
{
    QTextCursor selection = textCursor();
    const bool startAtLineStart =
        document()->findBlock(selection.selectionStart()).position() == selection.selectionStart();
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();

    // First the decision and the column: the marks of all lines stand in one column.
    bool comment = false;
    int minimumIndent = -1;
    for (int number = firstBlock; number <= lastBlock; ++number)
    {
        if (insertSpaces)
        {
            cursor.setPosition(document()->findBlockByNumber(number).position());
            ConvertLeadingTabsToSpaces(cursor);
        }
        const QString text = document()->findBlockByNumber(number).text();
        const QString trimmed = text.trimmed();
        if (trimmed.isEmpty())
            continue;
        if (!trimmed.startsWith(mark))
            comment = true;
        const int indent = LeadingRunLength(text);
        minimumIndent = minimumIndent < 0 ? indent : qMin(minimumIndent, indent);
    }

    for (int number = firstBlock; number <= lastBlock; ++number)
    {
        const QTextBlock block = document()->findBlockByNumber(number);
        if (block.text().trimmed().isEmpty())
            continue;
        if (comment)
        {
            cursor.setPosition(block.position() + minimumIndent);
            cursor.insertText(mark + QLatin1Char(' '));
        }
        else
        {
            cursor.setPosition(block.position() + LeadingRunLength(block.text()));
            RemoveCommentMark(cursor, mark);
        }
    }
    cursor.endEditBlock();

    if (startAtLineStart && selection.hasSelection())
    {
        // A selection of whole lines keeps their start, so that the marks are selected too.
        const int lineStart = document()->findBlockByNumber(firstBlock).position();
        const bool forward = selection.anchor() < selection.position();
        const int other = forward ? selection.position() : selection.anchor();
        SetSelection(selection, forward ? lineStart : other, forward ? other : lineStart);
        setTextCursor(selection);
    }
}

void CodeEditor::ToggleCommentLine(const QString& mark)
{
    QTextCursor cursor = textCursor();
    const QTextBlock block = cursor.block();
    const QString text = block.text();
    if (text.trimmed().isEmpty())
        return;
    const int column = LeadingRunLength(text);
    cursor.setPosition(block.position() + column);
    // One change each way, so that a single undo takes the whole toggle back.
    if (text.mid(column).startsWith(mark))
        RemoveCommentMark(cursor, mark);
    else
        cursor.insertText(mark + QLatin1Char(' '));
}

// At the cursor: each character of the mark that is there, and one space after them.
void CodeEditor::RemoveCommentMark(QTextCursor& cursor, const QString& mark)
{
    const int position = cursor.position();
    int length = 0;
    for (const QChar c : mark)
    {
        if (document()->characterAt(position + length) == c)
            ++length;
    }
    if (length > 0 && document()->characterAt(position + length) == QLatin1Char(' '))
        ++length;
    if (length == 0)
        return;
    cursor.setPosition(position + length, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

void CodeEditor::ToggleBlockComment()
{
    if (GetLanguage() != CodeEditorLanguage::MEL)
    {
        ToggleComment();
        return;
    }
    QTextCursor cursor = textCursor();
    const CodeEditorBlockData* data = GetBlockData(cursor);
    if (!data)
        return;
    const int column = cursor.positionInBlock();
    const bool acrossBlocks = cursor.hasSelection() && document()->findBlock(cursor.anchor()) !=
                                                           document()->findBlock(cursor.position());
    if (!acrossBlocks && data->IsSingleLineCommentPosition(column))
    {
        ToggleComment();
        return;
    }
    // A selection that ends just after a comment's closing still counts as inside it.
    const bool behindAnchor = cursor.position() > cursor.anchor();
    const bool inComment = data->IsBlockCommentPosition(column);
    if (inComment || (behindAnchor && data->IsBlockCommentPosition(column - 1)))
    {
        RemoveBlockComment(cursor, inComment ? 0 : -1);
        return;
    }

    const int anchor = cursor.anchor();
    const int position = cursor.position();
    cursor.beginEditBlock();
    cursor.setPosition(qMax(anchor, position));
    cursor.insertText(QStringLiteral("*/"));
    cursor.setPosition(qMin(anchor, position));
    cursor.insertText(QStringLiteral("/*"));
    cursor.endEditBlock();
    SetSelection(cursor, anchor + 2, position + 2);
    setTextCursor(cursor);
}

void CodeEditor::RemoveBlockComment(QTextCursor& cursor, int closeOffset)
{
    const int open = GetBlockCommentOpenPosition(cursor);
    const int close = GetBlockCommentClosePosition(cursor, closeOffset);
    int anchor = cursor.anchor();
    int position = cursor.position();

    cursor.beginEditBlock();
    // The closing first, so that the opening's position still holds.
    if (close >= 2)
    {
        cursor.setPosition(close - 2);
        cursor.setPosition(close, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        anchor -= RemovedBefore(anchor, close - 2, 2);
        position -= RemovedBefore(position, close - 2, 2);
    }
    if (open >= 0)
    {
        cursor.setPosition(open);
        cursor.setPosition(open + 2, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        anchor -= RemovedBefore(anchor, open, 2);
        position -= RemovedBefore(position, open, 2);
    }
    cursor.endEditBlock();
    SetSelection(cursor, anchor, position);
    setTextCursor(cursor);
}

void CodeEditor::MoveLine(bool up)
{
    QTextCursor cursor = textCursor();
    int start = 0;
    int end = 0;
    GetLineSelection(cursor, start, end);
    const QTextBlock first = document()->findBlock(start);
    const QTextBlock last = document()->findBlock(end);
    const QTextBlock neighbour = up ? first.previous() : last.next();
    if (!neighbour.isValid())
        return;

    const int anchor = cursor.anchor();
    const int position = cursor.position();
    const int lastNumber = last.blockNumber();
    const int offset = up ? -neighbour.length() : neighbour.length();
    const int firstPosition = first.position();
    cursor.beginEditBlock();
    if (up)
    {
        const QString text = neighbour.text();
        cursor.setPosition(neighbour.position());
        cursor.setPosition(first.position(), QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        const QTextBlock moved = document()->findBlockByNumber(lastNumber - 1);
        cursor.setPosition(moved.position() + moved.length() - 1);
        cursor.insertText(QLatin1Char('\n') + text);
    }
    else
    {
        cursor.setPosition(first.position());
        cursor.setPosition(last.position() + last.length() - 1, QTextCursor::KeepAnchor);
        const QString text = cursor.selection().toPlainText();
        cursor.setPosition(last.position() + last.length(), QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        const QTextBlock below = document()->findBlock(firstPosition);
        cursor.setPosition(below.position() + below.length() - 1);
        cursor.insertText(QLatin1Char('\n') + text);
    }
    cursor.endEditBlock();
    SetSelection(cursor, anchor + offset, position + offset);
    setTextCursor(cursor);
}

void CodeEditor::CopyLine(bool up)
{
    QTextCursor cursor = textCursor();
    int start = 0;
    int end = 0;
    GetLineSelection(cursor, start, end);
    const QTextBlock first = document()->findBlock(start);
    const QTextBlock last = document()->findBlock(end);
    const int anchor = cursor.anchor();
    const int position = cursor.position();

    cursor.setPosition(first.position());
    cursor.setPosition(last.position() + last.length() - 1, QTextCursor::KeepAnchor);
    const QString text = cursor.selection().toPlainText();
    cursor.beginEditBlock();
    cursor.setPosition(last.position() + last.length() - 1);
    cursor.insertText(QLatin1Char('\n') + text);
    cursor.endEditBlock();
    // Down: the selection goes on to the copy. Up: it stays, and the copy lies below it.
    const int offset = up ? 0 : text.size() + 1;
    SetSelection(cursor, anchor + offset, position + offset);
    setTextCursor(cursor);
}

void CodeEditor::DeleteLines()
{
    QTextCursor cursor = textCursor();
    int start = 0;
    int end = 0;
    GetLineSelection(cursor, start, end);
    const QTextBlock first = document()->findBlock(start);
    const QTextBlock last = document()->findBlock(end);
    cursor.beginEditBlock();
    cursor.setPosition(first.position());
    if (last.next().isValid())
        cursor.setPosition(last.next().position(), QTextCursor::KeepAnchor);
    else
        cursor.setPosition(last.position() + last.length() - 1, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    cursor.endEditBlock();
    setTextCursor(cursor);
}

void CodeEditor::CustomCopy()
{
    if (textCursor().hasSelection())
    {
        copy();
        return;
    }
    auto* mimeData = new QMimeData;
    mimeData->setText(GetCurrentLineText());
    mimeData->setData(QLatin1String(LINE_MIME_TYPE), QByteArrayLiteral("1"));
    QGuiApplication::clipboard()->setMimeData(mimeData);
}

void CodeEditor::CustomCut()
{
    if (textCursor().hasSelection())
    {
        cut();
        return;
    }
    CustomCopy();
    if (!isReadOnly())
        DeleteLines();
}

void CodeEditor::CustomPaste()
{
    const QMimeData* mimeData = QGuiApplication::clipboard()->mimeData();
    if (isReadOnly() || textCursor().hasSelection() || !mimeData ||
        mimeData->data(QLatin1String(LINE_MIME_TYPE)).isEmpty())
    {
        paste();
        return;
    }
    // A whole line goes in above the current one; the cursor keeps its place on its own line.
    QTextCursor cursor = textCursor();
    const QString text = mimeData->text();
    cursor.beginEditBlock();
    cursor.movePosition(QTextCursor::StartOfBlock);
    cursor.insertText(text + QLatin1Char('\n'));
    cursor.endEditBlock();
}

void CodeEditor::TrimTrailingWhiteSpaces(bool ensureNewLineAtEof)
{
    if (document()->isEmpty())
        return;
    const QString text = GetText();
    int anchor = textCursor().anchor();
    int position = textCursor().position();

    // From the end, so that a blank is known to stand before a line end when it is reached.
    QString reversed;
    reversed.reserve(text.size() + 1);
    bool atLineEnd = true;
    for (int i = text.size() - 1; i >= 0; --i)
    {
        const QChar c = text.at(i);
        if (atLineEnd && (c == QLatin1Char(' ') || c == QLatin1Char('\t')))
        {
            if (anchor > i)
                --anchor;
            if (position > i)
                --position;
            continue;
        }
        atLineEnd = c == QLatin1Char('\n');
        reversed.append(c);
    }
    QString result(reversed.size(), Qt::Uninitialized);
    std::copy(reversed.crbegin(), reversed.crend(), result.begin());
    if (ensureNewLineAtEof && !result.endsWith(QLatin1Char('\n')))
        result.append(QLatin1Char('\n'));

    const int horizontal = horizontalScrollBar()->value();
    const int vertical = verticalScrollBar()->value();
    QTextCursor cursor = textCursor();
    ignoreContentsChange = true;
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.insertText(result);
    cursor.endEditBlock();
    ignoreContentsChange = false;
    const int limit = document()->characterCount() - 1;
    SetSelection(cursor, qMin(anchor, limit), qMin(position, limit));
    setTextCursor(cursor);
    horizontalScrollBar()->setValue(horizontal);
    verticalScrollBar()->setValue(vertical);
}

void CodeEditor::EnsureNewLineAtEof()
{
    if (document()->isEmpty() || GetText().endsWith(QLatin1Char('\n')))
        return;
    QTextCursor cursor = textCursor();
    const int anchor = cursor.anchor();
    const int position = cursor.position();
    cursor.beginEditBlock();
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QStringLiteral("\n"));
    cursor.endEditBlock();
    SetSelection(cursor, anchor, position);
    setTextCursor(cursor);
}
