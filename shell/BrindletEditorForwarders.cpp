// Forwarders of BrindletEditor to the find bar, the side bar's views, the go-to palette and the
// dialogs. Where the view behind one is not built yet, the forwarder says so and does nothing more.
#include "shell/BrindletEditor.h"

#include "editor/CodeEditor.h"
#include "output/OutputTextEdit.h"
#include "settings/Settings.h"

#include <QtWidgets/QApplication>

namespace
{
OutputTextEdit* FocusedOutput()
{
    return qobject_cast<OutputTextEdit*>(QApplication::focusWidget());
}
} // namespace

void BrindletEditor::Find(bool replace, bool updateFindText, bool dialogHasFocus, bool)
{
    // An editor's find bar belongs to its group and is not built yet; the output view has its own.
    if (OutputTextEdit* output = FocusedOutput(); output && !replace)
        output->ShowFindReplace(updateFindText, dialogHasFocus);
}

void BrindletEditor::Replace()
{
    Find(true, true, true, false);
}

void BrindletEditor::FindNext(bool backwards)
{
    if (OutputTextEdit* output = FocusedOutput())
        backwards ? output->FindPrevious() : output->FindNext();
}

void BrindletEditor::FindPrevious()
{
    FindNext(true);
}

void BrindletEditor::SelectAndFindNext()
{
    // Needs the editors' find bar, which is not built yet.
}

void BrindletEditor::SelectAndFindPrevious()
{
    // Needs the editors' find bar, which is not built yet.
}

void BrindletEditor::ReplaceNext()
{
    // Needs the editors' find bar, which is not built yet.
}

void BrindletEditor::ReplaceAll()
{
    // Needs the editors' find bar, which is not built yet.
}

void BrindletEditor::FindInFiles(bool)
{
    // The search view's fields are not built yet: the selected text and the replace row wait for
    // them. The view itself is shown.
    SetSideBarView(SideBarViewSearch);
    SetSideBarVisible(true);
}

void BrindletEditor::ReplaceInFiles()
{
    FindInFiles(true);
}

void BrindletEditor::ShowSearch()
{
    FindInFiles(false);
}

void BrindletEditor::FindInFilesNext()
{
    // The search results are not built yet.
}

void BrindletEditor::FindInFilesPrevious()
{
    // The search results are not built yet.
}

void BrindletEditor::UpdateSearch(const QString&, const QString&)
{
    // Search in files is not built yet; there are no results to refresh.
}

void BrindletEditor::ShowPreferencesDialog()
{
    // The preferences dialog is not built yet.
}

void BrindletEditor::OpenCommandReference()
{
    if (CodeEditor* codeEditor = GetActiveCodeEditor())
        codeEditor->CommandDocumentation();
}
