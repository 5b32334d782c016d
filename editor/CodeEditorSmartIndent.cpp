// Block data queries of CodeEditor and the indent of a new line.
#include "editor/CodeEditor.h"
#include "editor/CodeEditorBlockData.h"

#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>

CodeEditorBlockData* CodeEditor::GetBlockData(const QTextCursor& cursor) const
{
    return GetBlockData(cursor.block());
}

CodeEditorBlockData* CodeEditor::GetBlockData(const QTextBlock& block) const
{
    return block.isValid() ? dynamic_cast<CodeEditorBlockData*>(block.userData()) : nullptr;
}

CodeEditorBlockData* CodeEditor::GetPreviousBlockData(const QTextCursor& cursor) const
{
    return GetBlockData(cursor.block().previous());
}

bool CodeEditor::IsIgnoredBlockDataPosition(const QTextCursor& cursor) const
{
    // Without data nothing is known of the line, and typing aids stay out of it.
    const CodeEditorBlockData* data = GetBlockData(cursor);
    return !data || data->IsIgnoredPosition(cursor.positionInBlock());
}

int CodeEditor::GetBlockCommentOpenPosition(const QTextCursor& cursor) const
{
    QTextBlock block = cursor.block();
    const CodeEditorBlockData* data = GetBlockData(block);
    if (!data)
        return -1;
    int column = data->OpenBlockCommentPosition(cursor.positionInBlock());
    while (column < 0)
    {
        // The comment may have opened lines above; each is asked from its end.
        block = block.previous();
        data = GetBlockData(block);
        if (!data)
            return -1;
        column = data->OpenBlockCommentPosition(-1);
    }
    return block.position() + column;
}

int CodeEditor::GetBlockCommentClosePosition(const QTextCursor& cursor, int offset) const
{
    QTextBlock block = cursor.block();
    const CodeEditorBlockData* data = GetBlockData(block);
    if (!data)
        return -1;
    int column = data->CloseBlockCommentPosition(cursor.positionInBlock() + offset);
    while (column < 0)
    {
        block = block.next();
        data = GetBlockData(block);
        if (!data)
            return -1;
        column = data->CloseBlockCommentPosition(-1);
    }
    return block.position() + column;
}

int CodeEditor::GetIndentCountAtPreviousBlock(const QTextCursor& cursor) const
{
    const int stop = cursor.blockNumber();
    int count = 0;
    for (QTextBlock block = document()->begin(); block.isValid() && block.blockNumber() < stop;
         block = block.next())
    {
        if (const CodeEditorBlockData* data = GetBlockData(block))
        {
            for (const CodeEditorBlockData::Entry& entry : data->GetBraces(QLatin1Char('{')))
                count += entry.delta;
        }
    }
    return qMax(0, count);
}

bool CodeEditor::GetOpeningBraceIndent(QChar c, int position, QString& indent) const
{
    return GetOpeningBraceIndent(c, position, indent, textCursor().block());
}

bool CodeEditor::GetOpeningBraceIndent(QChar c, int position, QString& indent, const QTextBlock& start) const
{
    // The closing bracket itself counts -1; the line whose opening brings the count to 0 is the one
    // that opens it.
    int counter = -1;
    int limit = position;
    for (QTextBlock block = start; block.isValid(); block = block.previous())
    {
        const CodeEditorBlockData* data = GetBlockData(block);
        if (!data)
            break;
        const QList<CodeEditorBlockData::Entry> braces = data->GetBraces(c);
        for (int i = braces.size() - 1; i >= 0; --i)
        {
            if (limit >= 0 && braces.at(i).position >= limit)
                continue;
            counter += braces.at(i).delta;
            if (counter == 0)
            {
                indent = data->GetIndent();
                return true;
            }
        }
        limit = -1;
    }
    indent.clear();
    return false;
}

void CodeEditor::SmartIndentOpenCurlyBrace(QTextCursor& cursor)
{
    if (GetLanguage() != CodeEditorLanguage::MEL || !IsAutoIndentEnabled() || !IsSmartIndentEnabled() ||
        IsIgnoredBlockDataPosition(cursor))
        return;
    const QString left = cursor.block().text().left(cursor.positionInBlock());
    if (!left.trimmed().isEmpty())
        return;
    const int count = GetIndentCountAtPreviousBlock(cursor);
    cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
    cursor.insertText(insertSpaces ? SpacesStr(tabSize * count) : QString(count, QLatin1Char('\t')));
}

void CodeEditor::InsertNewLine()
{
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    const QTextBlock block = cursor.block();
    const CodeEditorBlockData* data = GetBlockData(block);
    const QString text = block.text();
    const int column = cursor.positionInBlock();
    const QChar previous = PrevNonWhitespace(text, column - 1);
    const QChar next = NextNonWhitespace(text, column);
    cursor.insertBlock();
    UpdateIndentationOnNewLine(cursor, block, data, column, previous, next);
    cursor.endEditBlock();
    setTextCursor(cursor);
}

namespace
{
bool IsPair(QChar open, QChar close)
{
    return (open == QLatin1Char('(') && close == QLatin1Char(')')) ||
           (open == QLatin1Char('[') && close == QLatin1Char(']')) ||
           (open == QLatin1Char('{') && close == QLatin1Char('}'));
}

// A new line and an indent after the cursor, which stays where it was.
void InsertLineAfterCursor(QTextCursor& cursor, const QString& indent)
{
    const int position = cursor.position();
    cursor.insertText(QLatin1Char('\n') + indent);
    cursor.setPosition(position);
}
} // namespace

void CodeEditor::UpdateIndentationOnNewLine(QTextCursor& cursor, const QTextBlock& block,
                                            const CodeEditorBlockData* data, int column, QChar previous,
                                            QChar next)
{
    if (!data || !IsAutoIndentEnabled())
        return;
    const bool mel = GetLanguage() == CodeEditorLanguage::MEL;
    const bool python = GetLanguage() == CodeEditorLanguage::PYTHON;

    if (IsIndentToParenthesesEnabled())
    {
        QChar c;
        int bracePosition = -1;
        QString indent;
        if (data->GetLastOpenBrace(column - 1, c, bracePosition) && (python || c == QLatin1Char('(')))
        {
            // Aligned one column right of the bracket; built with tabs whatever the buffer uses.
            cursor.insertText(ConvertLeadingSpacesToTabs(SpacesStr(bracePosition + 1)));
            return;
        }
        if (data->GetLastClosingBrace(column - 1, c, bracePosition) && (python || c == QLatin1Char(')')) &&
            GetOpeningBraceIndent(c, bracePosition, indent, block))
        {
            cursor.insertText(indent);
            if ((mel && previous == QLatin1Char('{')) || (python && previous == QLatin1Char(':')))
                insertSpaces ? IncreaseSpacesIndent(cursor) : IncreaseTabIndent(cursor);
            if (mel && next == QLatin1Char('}'))
                InsertLineAfterCursor(cursor, indent);
            return;
        }
    }

    QString indent = data->GetIndent();
    if (indent.size() > column)
        indent.truncate(column);
    if (!indent.isEmpty())
    {
        indent = insertSpaces ? ConvertLeadingTabsToSpaces(indent) : ConvertLeadingSpacesToTabs(indent);
        cursor.insertText(indent);
    }
    if (!IsSmartIndentEnabled())
        return;

    int count = 0;
    if (mel)
    {
        if (previous == QLatin1Char('(') || previous == QLatin1Char('['))
        {
            count = 1;
        }
        else
        {
            const QList<CodeEditorBlockData::Entry> braces = data->GetBraces(QLatin1Char('{'));
            if (braces.isEmpty())
                return;
            int sum = 0;
            for (const CodeEditorBlockData::Entry& entry : braces)
            {
                if (entry.position < column)
                    sum += entry.delta;
            }
            if (sum >= -1 && sum <= 0)
                return;
            if (sum < -1)
            {
                // A line of closing braces: the next line goes back, one level fewer than it closes.
                QTextCursor end = cursor;
                for (int i = 0; i < -sum - 1; ++i)
                    insertSpaces ? DecreaseSpacesIndent(cursor, true) : DecreaseTabIndent(cursor);
                cursor.setPosition(end.position());
                return;
            }
            count = sum;
        }
    }
    else if (python)
    {
        if (previous != QLatin1Char(':') && previous != QLatin1Char('(') && previous != QLatin1Char('[') &&
            previous != QLatin1Char('{'))
            return;
        count = 1;
    }
    else
    {
        return;
    }

    for (int i = 0; i < count; ++i)
        insertSpaces ? IncreaseSpacesIndent(cursor) : IncreaseTabIndent(cursor);
    if (IsPair(previous, next))
        InsertLineAfterCursor(cursor, indent);
}
