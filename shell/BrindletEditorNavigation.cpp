// BrindletEditor: the go-to palette, the jumps it asks for, and the insert path dialog.

#include "editor/CodeEditor.h"
#include "shell/BrindletEditor.h"
#include "sidebar/GoToWidget.h"
#include "tabs/CodeEditorGroup.h"
#include "widgets/InsertPathDialog.h"

#include <QtWidgets/QSplitter>

// ---------------------------------------------------------------------------------------------
// Go-to palette

void BrindletEditor::GoToFile()
{
    ShowGotoWidget(GoToFilterFile, false);
}

void BrindletEditor::GoToSymbolInFile()
{
    ShowGotoWidget(GoToFilterSymbol, false);
}

void BrindletEditor::GoToLine()
{
    ShowGotoWidget(GoToFilterLine, false);
}

void BrindletEditor::NextUsedEditor(bool backwards)
{
    if (!GetActiveCodeEditorGroup())
        return;
    ShowGotoWidget(GoToFilterCodeEditor, backwards);
    FocusActiveCodeEditor();
}

GoToWidget* BrindletEditor::GetGoToWidget()
{
    if (goToWidget)
        return goToWidget;
    goToWidget = new GoToWidget(this);
    connect(goToWidget, SIGNAL(SeekPositionRequested(int, bool)), this, SLOT(SetPosition(int, bool)));
    connect(goToWidget, SIGNAL(SeekLineNumberRequested(int)), this, SLOT(SetCurrentLine(int)));
    connect(goToWidget, SIGNAL(OpenFileRequested(QString)), this, SLOT(OpenFile(QString)));
    connect(goToWidget, SIGNAL(CodeEditorRequested(QString)), this, SLOT(SetActiveCodeEditor(QString)));
    connect(goToWidget, SIGNAL(Cancelled(int, int)), this, SLOT(SetPositionAndScrollValue(int, int)));
    return goToWidget;
}

void BrindletEditor::ShowGotoWidget(GoToFilterType filter, bool reverse)
{
    CodeEditor* codeEditor = GetCodeEditorWithFocus();
    CodeEditorGroup* group = GetActiveCodeEditorGroup();
    if (!codeEditor || !group)
        return;
    GoToWidget* palette = GetGoToWidget();

    // At the top of the code area, centred.
    const QPoint areaTopLeft = editorGroupSplitter->mapToGlobal(QPoint(0, 0));
    const int x = static_cast<int>(static_cast<float>(areaTopLeft.x()) +
                                   static_cast<float>(editorGroupSplitter->width()) * 0.5f -
                                   static_cast<float>(palette->width()) * 0.5f);
    palette->move(x, areaTopLeft.y());

    const QList<CodeEditorProperties> editors =
        filter == GoToFilterCodeEditor ? group->GetLastUsedEditors() : QList<CodeEditorProperties>();
    palette->Show(filter, group->GetParser(), codeEditor->GetLineCount(), codeEditor->GetCursorPosition(),
                  codeEditor->GetVerticalScrollBarValue(), editors, reverse);
}

void BrindletEditor::SetPosition(int position, bool startOfLine)
{
    if (CodeEditor* codeEditor = GetActiveCodeEditor())
        codeEditor->SetCursorPosition(position, startOfLine, true);
}

void BrindletEditor::SetCurrentLine(int lineNumber)
{
    if (CodeEditor* codeEditor = GetActiveCodeEditor())
        codeEditor->SetCurrentLine(lineNumber);
}

void BrindletEditor::SetPositionAndScrollValue(int position, int scrollValue)
{
    CodeEditor* codeEditor = GetActiveCodeEditor();
    if (!codeEditor)
        return;
    codeEditor->SetCursorPosition(position);
    codeEditor->SetVerticalScrollBarValue(scrollValue);
}

// ---------------------------------------------------------------------------------------------
// Insert path

void BrindletEditor::ShowInsertPathDialog()
{
    CodeEditor* codeEditor = GetCodeEditorWithFocus();
    if (!codeEditor)
        return;
    InsertPathDialog dialog(codeEditor->GetFilePath(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QString path = dialog.GetPath();
    if (!path.isEmpty())
        codeEditor->insertPlainText(path);
}
