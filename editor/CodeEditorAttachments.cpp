// What CodeEditor does where the layers built on it attach, as long as none has: the behaviour of
// a plain QPlainTextEdit, with no indent logic, no decorations and no language services.
#include "editor/CodeEditor.h"

#include <QtGui/QSyntaxHighlighter>

void CodeEditor::CustomCut()
{
    cut();
}

void CodeEditor::CustomCopy()
{
    copy();
}

void CodeEditor::CustomPaste()
{
    paste();
}

void CodeEditor::IncreaseIndent(bool)
{
    textCursor().insertText(QStringLiteral("\t"));
}

void CodeEditor::DecreaseIndent() {}

void CodeEditor::InsertNewLine()
{
    QTextCursor cursor = textCursor();
    cursor.insertBlock();
    setTextCursor(cursor);
}

void CodeEditor::InsertOpeningBrace(QChar c)
{
    textCursor().insertText(QString(c));
}

void CodeEditor::InsertClosingBrace(QChar c)
{
    textCursor().insertText(QString(c));
}

void CodeEditor::InsertQuote(QChar c)
{
    textCursor().insertText(QString(c));
}

bool CodeEditor::InsertBackspace()
{
    return false;
}

bool CodeEditor::IsIgnoredBlockDataPosition(const QTextCursor&) const
{
    // No highlighter fills block data here, and a block without data counts as ignored.
    return true;
}

QSyntaxHighlighter* CodeEditor::CreateHighlighter()
{
    return nullptr;
}

QWidget* CodeEditor::CreateAutoCompleter()
{
    return nullptr;
}

void CodeEditor::UpdateAutoCompleterPopup(const QTextCursor&, const QRect&, bool) {}
