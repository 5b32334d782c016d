// What CodeEditor does where the layers built on it attach. The highlighters and their block data
// are in place; where no other layer has attached yet, the behaviour of a plain QPlainTextEdit.
#include "editor/CodeEditor.h"

#include "editor/CodeEditorBlockData.h"
#include "language/MelAutoCompleter.h"
#include "language/MelHighlighter.h"
#include "language/PythonAutoCompleter.h"
#include "language/PythonHighlighter.h"

#include <QtGui/QTextBlock>

CodeEditorBlockData* CodeEditor::GetBlockData(const QTextBlock& block)
{
    return block.isValid() ? dynamic_cast<CodeEditorBlockData*>(block.userData()) : nullptr;
}

CodeEditorBlockData* CodeEditor::GetBlockData(const QTextCursor& cursor)
{
    return GetBlockData(cursor.block());
}

CodeEditorBlockData* CodeEditor::GetPreviousBlockData(const QTextCursor& cursor)
{
    return GetBlockData(cursor.block().previous());
}

bool CodeEditor::IsIgnoredBlockDataPosition(const QTextCursor& cursor) const
{
    // A block the highlighter has not seen yet counts as ignored.
    const CodeEditorBlockData* data = GetBlockData(cursor);
    return !data || data->IsIgnoredPosition(cursor.positionInBlock());
}

QSyntaxHighlighter* CodeEditor::CreateHighlighter()
{
    // The highlighter belongs to the document, which deletes it with itself.
    switch (GetLanguage())
    {
    case CodeEditorLanguage::MEL:
        return new MelHighlighter(document());
    case CodeEditorLanguage::PYTHON:
        return new PythonHighlighter(document());
    case CodeEditorLanguage::TEXT:
        break;
    }
    return new Highlighter(document());
}

QWidget* CodeEditor::CreateAutoCompleter()
{
    AutoCompleter* completer = nullptr;
    switch (GetLanguage())
    {
    case CodeEditorLanguage::MEL:
        completer = new MelAutoCompleter(this);
        break;
    case CodeEditorLanguage::PYTHON:
        completer = new PythonAutoCompleter(this);
        break;
    case CodeEditorLanguage::TEXT:
        return nullptr;
    }
    completer->Initialize();
    return completer;
}

void CodeEditor::UpdateAutoCompleterPopup(const QTextCursor& cursor, const QRect& rect, bool force)
{
    auto* completer = qobject_cast<AutoCompleter*>(autoCompleter.data());
    if (!completer)
        return;
    if (!completer->isVisible())
        completer->SetFont(font());
    completer->Update(cursor, rect, force);
}
