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
