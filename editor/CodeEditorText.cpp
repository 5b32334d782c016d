// Text, cursor and character queries of CodeEditor.
#include "editor/CodeEditor.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtWidgets/QScrollBar>

namespace
{
QString ParagraphsToNewLines(QString text)
{
    return text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

bool IsSpaceOrTab(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}
} // namespace

QString CodeEditor::GetText() const
{
    QString text = document()->toPlainText();
    if (text.isNull())
        text = QStringLiteral("");
    return text;
}

void CodeEditor::SetText(const QString& text)
{
    setPlainText(text);
}

QString CodeEditor::GetSelectedText() const
{
    return textCursor().selectedText();
}

QString CodeEditor::GetSelectedTextForExecute() const
{
    return ParagraphsToNewLines(textCursor().selectedText());
}

QString CodeEditor::GetCurrentLineText() const
{
    return textCursor().block().text();
}

QString CodeEditor::GetCurrentLineForExecute() const
{
    return GetCurrentLineText().trimmed();
}

QString CodeEditor::GetTextForPythonProcessing() const
{
    // Ready to sit between double quotes of a Python literal. The order of the steps matters:
    // the backslashes are doubled before the ones of the escapes are added.
    static const QRegularExpression trailingBlanks(QStringLiteral("[ \\t]+$"));
    QString text = GetText();
    text.remove(trailingBlanks);
    text.append(QLatin1Char('\n'));
    text.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    text.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
    text.replace(QLatin1Char('"'), QStringLiteral("\\\""));
    return text;
}

int CodeEditor::GetSelectedStartPosition() const
{
    return EarliestPosition(textCursor());
}

int CodeEditor::GetSelectedEndPosition() const
{
    return LatestPosition(textCursor());
}

void CodeEditor::ClearSelection()
{
    QTextCursor cursor = textCursor();
    cursor.clearSelection();
    setTextCursor(cursor);
}

void CodeEditor::ClearSelectionAndInsertText(const QString& text)
{
    QTextCursor cursor = textCursor();
    const int end = cursor.selectionEnd();
    const bool anchorBehind = cursor.anchor() > cursor.position();
    cursor.clearSelection();
    if (anchorBehind)
        cursor.setPosition(end);
    cursor.insertText(text);
    setTextCursor(cursor);
}

int CodeEditor::GetCurrentLine() const
{
    return textCursor().blockNumber() + 1;
}

int CodeEditor::GetLineCount() const
{
    return document()->blockCount();
}

void CodeEditor::SetCurrentLine(int line)
{
    if (line < 1 || line > GetLineCount())
        return;
    QTextCursor cursor = textCursor();
    cursor.setPosition(0);
    cursor.movePosition(QTextCursor::Down, QTextCursor::MoveAnchor, line - 1);
    setCenterOnScroll(true);
    setTextCursor(cursor);
    ensureCursorVisible();
    setCenterOnScroll(false);
}

int CodeEditor::GetCursorPosition() const
{
    return textCursor().position();
}

void CodeEditor::SetCursorPosition(int position, bool goHome, bool center)
{
    if (position < 0 || position >= document()->characterCount())
        return;
    QTextCursor cursor = textCursor();
    cursor.setPosition(position);
    setTextCursor(cursor);
    if (goHome)
        OnHomeKeyPressed(false, false);
    if (center)
        centerCursor();
}

void CodeEditor::SetCursorSelection(int start, int end)
{
    const int limit = document()->characterCount();
    if (start < 0 || end < 0 || start >= limit || end >= limit)
        return;
    QTextCursor cursor = textCursor();
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    centerCursor();
}

int CodeEditor::GetVerticalScrollBarValue() const
{
    return verticalScrollBar()->sliderPosition();
}

void CodeEditor::SetVerticalScrollBarValue(int value)
{
    // A hidden editor has no layout yet, so the value waits for showEvent.
    if (isVisible())
        verticalScrollBar()->setValue(value);
    else
        pendingScrollValue = value;
}

int CodeEditor::GetVerticalScrollBarWidth() const
{
    const QScrollBar* bar = verticalScrollBar();
    return bar->isVisible() ? bar->width() : bar->sizeHint().width();
}

QString CodeEditor::SelectWordUnderCursor()
{
    QTextCursor cursor = textCursor();
    cursor.select(QTextCursor::WordUnderCursor);
    const QString word = cursor.selectedText();
    if (!word.isEmpty())
        setTextCursor(cursor);
    return ParagraphsToNewLines(word);
}

bool CodeEditor::HasSelection(int& start, int& end, int& firstBlock, int& lastBlock,
                              bool& endsAtBlockStart) const
{
    const QTextCursor cursor = textCursor();
    endsAtBlockStart = false;
    if (!cursor.hasSelection())
    {
        start = end = cursor.position();
        firstBlock = lastBlock = cursor.blockNumber();
        return false;
    }
    start = cursor.selectionStart();
    end = cursor.selectionEnd();
    const QTextBlock first = document()->findBlock(start);
    const QTextBlock last = document()->findBlock(end);
    firstBlock = first.blockNumber();
    lastBlock = last.blockNumber();
    endsAtBlockStart = end == last.position();
    return true;
}

void CodeEditor::GetCursorStatus(int& line, int& column, int& selected) const
{
    GetCursorStatus(textCursor(), line, column, selected);
}

void CodeEditor::GetCursorStatus(const QTextCursor& cursor, int& line, int& column, int& selected) const
{
    line = cursor.blockNumber() + 1;
    const QString text = cursor.block().text().left(cursor.positionInBlock());
    int width = 0;
    for (const QChar c : text)
        width += c == QLatin1Char('\t') ? tabSize - width % tabSize : 1;
    column = width + 1;
    selected = cursor.selectionEnd() - cursor.selectionStart();
}

QChar CodeEditor::CharacterAt(int position) const
{
    // As GetText() would give it, without building the whole text.
    if (position < 0 || position >= document()->characterCount() - 1)
        return QChar();
    const QChar c = document()->characterAt(position);
    switch (c.unicode())
    {
    case QChar::ParagraphSeparator:
    case QChar::LineSeparator:
    case 0xfdd0:
    case 0xfdd1:
        return QLatin1Char('\n');
    case QChar::Nbsp:
        return QLatin1Char(' ');
    default:
        return c;
    }
}

QString CodeEditor::SpacesForTab() const
{
    return SpacesStr(tabSize);
}

QString CodeEditor::SpacesStr(int count)
{
    return QString(qMax(0, count), QLatin1Char(' '));
}

QChar CodeEditor::GetMatchingBrace(QChar c)
{
    switch (c.unicode())
    {
    case '(':
        return QLatin1Char(')');
    case ')':
        return QLatin1Char('(');
    case '[':
        return QLatin1Char(']');
    case ']':
        return QLatin1Char('[');
    case '{':
        return QLatin1Char('}');
    case '}':
        return QLatin1Char('{');
    default:
        return QChar();
    }
}

bool CodeEditor::IsOpeningBrace(QChar c)
{
    return c == QLatin1Char('(') || c == QLatin1Char('[') || c == QLatin1Char('{');
}

bool CodeEditor::IsClosingBrace(QChar c)
{
    return c == QLatin1Char(')') || c == QLatin1Char(']') || c == QLatin1Char('}');
}

bool CodeEditor::IsMatchingBraces(QChar open, QChar close)
{
    // '[' pairs only with a second '[': quote insertion relies on this and it has to stay.
    if (open == QLatin1Char('('))
        return close == QLatin1Char(')');
    if (open == QLatin1Char('{'))
        return close == QLatin1Char('}');
    if (open == QLatin1Char('['))
        return close == QLatin1Char('[');
    return false;
}

QChar CodeEditor::PrevNonWhitespace(const QString& text, int index)
{
    if (index < 0 || index >= text.size())
        return QChar();
    for (int i = index; i >= 0; --i)
    {
        if (!IsSpaceOrTab(text.at(i)))
            return text.at(i);
    }
    return QChar();
}

QChar CodeEditor::NextNonWhitespace(const QString& text, int index)
{
    if (index < 0 || index >= text.size())
        return QChar();
    for (int i = index; i < text.size(); ++i)
    {
        if (!IsSpaceOrTab(text.at(i)))
            return text.at(i);
    }
    return QChar();
}

int CodeEditor::EarliestPosition(const QTextCursor& cursor)
{
    return qMin(cursor.position(), cursor.anchor());
}

int CodeEditor::LatestPosition(const QTextCursor& cursor)
{
    return qMax(cursor.position(), cursor.anchor());
}
