// The command reference of the active editor.
#include "shell/BrindletEditor.h"

#include "editor/CodeEditor.h"

void BrindletEditor::OpenCommandReference()
{
    if (CodeEditor* codeEditor = GetActiveCodeEditor())
        codeEditor->CommandDocumentation();
}
