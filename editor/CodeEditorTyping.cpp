// Brackets, quotes and Backspace as CodeEditor types them: pairs closed and stepped over.
#include "editor/CodeEditor.h"
#include "editor/CodeEditorBlockData.h"

#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>

namespace
{
bool IsAnyQuote(QChar c)
{
    return c == QLatin1Char('"') || c == QLatin1Char('\'') || c == QLatin1Char('`');
}

// A character after which a quote starts a string rather than ends a word; '_' counts as none.
bool IsWordCharacter(QChar c)
{
    if (c.unicode() < 128)
        return (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
               (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
               (c >= QLatin1Char('0') && c <= QLatin1Char('9'));
    return c.isLetterOrNumber();
}
} // namespace

void CodeEditor::WrapSelection(QTextCursor& cursor, const QString& open, const QString& close)
{
    const int anchor = cursor.anchor();
    const int position = cursor.position();
    cursor.setPosition(cursor.selectionEnd());
    cursor.insertText(close);
    cursor.setPosition(qMin(anchor, position));
    cursor.insertText(open);
    cursor.setPosition(anchor + open.size());
    cursor.setPosition(position + open.size(), QTextCursor::KeepAnchor);
}

void CodeEditor::InsertOpeningBrace(QChar c)
{
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    if (IsInsertClosingBraceEnabled())
    {
        if (cursor.hasSelection())
        {
            WrapSelection(cursor, QString(c), QString(GetMatchingBrace(c)));
        }
        else
        {
            const QChar next = CharacterAt(cursor.position());
            if (!IsIgnoredBlockDataPosition(cursor) &&
                (next.isNull() || next.isSpace() || IsOpeningBrace(next) || IsClosingBrace(next)))
            {
                cursor.insertText(QString(GetMatchingBrace(c)));
                cursor.movePosition(QTextCursor::PreviousCharacter);
            }
            cursor.insertText(QString(c));
        }
    }
    else
    {
        cursor.removeSelectedText();
        if (c == QLatin1Char('{'))
            SmartIndentOpenCurlyBrace(cursor);
        cursor.insertText(QString(c));
    }
    cursor.endEditBlock();
    setTextCursor(cursor);
}

void CodeEditor::InsertClosingBrace(QChar c)
{
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    if (cursor.hasSelection())
    {
        cursor.removeSelectedText();
        cursor.insertText(QString(c));
    }
    else if (IsInsertClosingBraceEnabled() && CharacterAt(cursor.position()) == c)
    {
        cursor.movePosition(QTextCursor::NextCharacter);
    }
    else
    {
        QString indent;
        // The closing bracket lines up with the line that opens it.
        if (IsSmartIndentEnabled() && !IsIndentToParenthesesEnabled() &&
            cursor.block().text().trimmed().isEmpty() &&
            GetOpeningBraceIndent(c, cursor.positionInBlock(), indent, cursor.block()))
        {
            cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
            cursor.insertText(indent);
        }
        cursor.insertText(QString(c));
    }
    cursor.endEditBlock();
    setTextCursor(cursor);
}

void CodeEditor::InsertQuote(QChar c)
{
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    const QChar previous = CharacterAt(cursor.position() - 1);
    const QChar next = CharacterAt(cursor.position());
    if (!IsInsertClosingQuoteEnabled())
    {
        cursor.removeSelectedText();
        cursor.insertText(QString(c));
    }
    else if (cursor.hasSelection())
    {
        WrapSelection(cursor, QString(c), QString(c));
    }
    else if (next == c)
    {
        cursor.movePosition(QTextCursor::NextCharacter);
    }
    else if (IsIgnoredBlockDataPosition(cursor) || IsAnyQuote(previous) || IsAnyQuote(next))
    {
        cursor.insertText(QString(c));
    }
    else
    {
        const bool freeAfter = next.isNull() || next.isSpace() || IsClosingBrace(next);
        const bool freeBefore = previous.isNull() || !IsWordCharacter(previous);
        if ((freeAfter && freeBefore) || IsMatchingBraces(previous, next))
        {
            cursor.insertText(QString(2, c));
            cursor.movePosition(QTextCursor::PreviousCharacter);
        }
        else
        {
            cursor.insertText(QString(c));
        }
    }
    cursor.endEditBlock();
    setTextCursor(cursor);
}

bool CodeEditor::InsertBackspace()
{
    QTextCursor cursor = textCursor();
    const QChar previous = CharacterAt(cursor.position() - 1);
    const QChar next = CharacterAt(cursor.position());
    if (IsIgnoredBlockDataPosition(cursor) && !IsQuoteForLanguage(previous))
        return false;
    if (cursor.hasSelection())
        return false;
    if (IsBackspaceToTabStopEnabled())
    {
        const QString left = cursor.block().text().left(cursor.positionInBlock());
        if (!left.isEmpty() && left.trimmed().isEmpty())
        {
            DecreaseIndent();
            return true;
        }
    }
    if (IsInsertClosingBraceEnabled() && IsOpeningBrace(previous))
    {
        if (next != GetMatchingBrace(previous))
            return false;
    }
    else if (!IsInsertClosingQuoteEnabled() || !IsQuoteForLanguage(previous) || next != previous)
    {
        return false;
    }
    cursor.beginEditBlock();
    cursor.movePosition(QTextCursor::PreviousCharacter);
    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor, 2);
    cursor.removeSelectedText();
    cursor.endEditBlock();
    setTextCursor(cursor);
    return true;
}
