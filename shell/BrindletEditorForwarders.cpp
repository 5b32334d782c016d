// Forwarders of BrindletEditor to the go-to palette and the dialogs. Where the view behind one is
// not built yet, the forwarder says so and does nothing more.
#include "shell/BrindletEditor.h"

#include "editor/CodeEditor.h"

void BrindletEditor::ShowInsertPathDialog()
{
    // The insert path dialog is not built yet.
}

void BrindletEditor::GoToFile()
{
    // The go-to palette is not built yet.
}

void BrindletEditor::GoToSymbolInFile()
{
    // The go-to palette is not built yet.
}

void BrindletEditor::GoToLine()
{
    // The go-to palette is not built yet.
}

void BrindletEditor::OpenCommandReference()
{
    if (CodeEditor* codeEditor = GetActiveCodeEditor())
        codeEditor->CommandDocumentation();
}
