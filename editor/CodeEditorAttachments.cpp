// What CodeEditor does where the layers built on it attach, as long as none has: the behaviour of
// a plain QPlainTextEdit, with no decorations and no language services.
#include "editor/CodeEditor.h"

#include <QtGui/QSyntaxHighlighter>

QSyntaxHighlighter* CodeEditor::CreateHighlighter()
{
    return nullptr;
}

QWidget* CodeEditor::CreateAutoCompleter()
{
    return nullptr;
}

void CodeEditor::UpdateAutoCompleterPopup(const QTextCursor&, const QRect&, bool) {}

void CodeEditor::OffsetMessages(int, int, int) {}

void CodeEditor::UpdateErrorBarBlockHeights() {}

void CodeEditor::ResizeErrorBar() {}

void CodeEditor::ResizeLineNumbers() {}

void CodeEditor::UpdateLineNumberWidth() {}

void CodeEditor::UpdateLineNumbers(const QRect&, int) {}

void CodeEditor::UpdateExtraSelections()
{
    extraSelections.clear();
    setExtraSelections(extraSelections);
}
