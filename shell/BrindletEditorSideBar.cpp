#include "shell/BrindletEditor.h"

#include "editor/CodeEditor.h"
#include "settings/Settings.h"
#include "sidebar/ActivityBar.h"
#include "sidebar/GoToWidget.h"
#include "sidebar/SideBar.h"
#include "tabs/CodeEditorGroup.h"

#include <QtWidgets/QFileDialog>
#include <QtWidgets/QSplitter>

namespace
{
// Read once: the dialogs open where the workspaces are, wherever the user went last time.
const QString& WorkspacesFolder()
{
    static const QString folder = Settings::GetWorkspacesDirectoryPath();
    return folder;
}

QString WorkspaceFilter()
{
    return QStringLiteral("BQ2 Workspace (*%1)").arg(Settings::WORKSPACE_EXTENSION);
}

QString WorkspaceFileFilter()
{
    return QStringLiteral("%1;;%2").arg(WorkspaceFilter(), QStringLiteral("All Files(*.*)"));
}
} // namespace

// The seams between the side bar and the rest of the editor.

void BrindletEditor::ConnectSideBar()
{
    connect(sideBar, SIGNAL(CodeEditorSelected(int, int)), this, SLOT(SetActiveCodeEditor(int, int)));
    connect(sideBar, SIGNAL(FileOpenRequested(QString, bool)), this, SLOT(OpenFile(QString, bool)));
    connect(sideBar, SIGNAL(FilePathChanged(QString, QString)), this, SLOT(OnFilePathChanged(QString, QString)));
    connect(sideBar, SIGNAL(WorkspaceItemDeleted(QString, bool)), this, SLOT(OnWorkspaceItemDeleted(QString, bool)));
    connect(sideBar, SIGNAL(WorkspaceModified()), this, SLOT(OnWorkspaceModified()));
    connect(sideBar, SIGNAL(OutlineSelectionChanged(int, int)), this, SLOT(OnOutlineSelectionChanged(int, int)));
    connect(sideBar, SIGNAL(SaveAllRequested()), this, SLOT(SaveAll()));
    connect(sideBar, SIGNAL(CloseAllRequested()), this, SLOT(CloseAllFiles()));
    connect(sideBar, SIGNAL(QuickHelpFlagSelected(QString)), this, SLOT(InsertQuickHelpFlag(QString)));
    connect(activityBar, SIGNAL(EditPreferencesSelected(PreferencePage)), this,
            SLOT(ShowPreferencesDialog(PreferencePage)));
}

// ---------------------------------------------------------------------------------------------
// Open editors

void BrindletEditor::RefreshOpenCodeEditorsView()
{
    for (int i = 0; i < editorGroupSplitter->count(); ++i)
    {
        CodeEditorGroup* group = GetCodeEditorGroupByIndex(i);
        if (!group)
            continue;
        sideBar->SetOpenCodeEditors(i, group->GetAllProperties());
        if (i == GetActiveCodeEditorGroupIndex())
            sideBar->SetCurrentCodeEditor(i, group->GetCurrentIndex());
    }
}

void BrindletEditor::UpdateOpenCodeEditorViewSelection()
{
    const int index = GetActiveCodeEditorGroupIndex();
    CodeEditorGroup* group = GetCodeEditorGroupByIndex(index);
    if (index >= 0 && group)
        sideBar->SetCurrentCodeEditor(index, group->GetCurrentIndex());
}

// ---------------------------------------------------------------------------------------------
// Quick help

void BrindletEditor::ShowQuickHelp()
{
    CodeEditor* codeEditor = GetActiveCodeEditor();
    SetQuickHelpSearchText(codeEditor ? codeEditor->GetSelectedText() : QString(), true);
}

void BrindletEditor::SetQuickHelpSearchText(const QString& text, bool showWhenHidden)
{
    if (showWhenHidden)
    {
        SetSideBarView(SideBarViewQuickHelp);
        SetSideBarVisible(true);
    }
    if (Settings::sideBarVisible && sideBar->GetView() == SideBarViewQuickHelp)
        sideBar->SetQuickHelpSearchText(text, text.isEmpty());
}

void BrindletEditor::InsertQuickHelpFlag(const QString& flag)
{
    CodeEditor* codeEditor = GetActiveCodeEditor();
    if (!codeEditor || flag.isEmpty())
        return;
    if (codeEditor->GetLanguage() == CodeEditorLanguage::PYTHON)
        codeEditor->ClearSelectionAndInsertText(flag.mid(1));
    else if (codeEditor->GetLanguage() == CodeEditorLanguage::MEL)
        codeEditor->ClearSelectionAndInsertText(flag);
    else
        return;
    codeEditor->setFocus();
}

// ---------------------------------------------------------------------------------------------
// Outline

void BrindletEditor::OnOutlineSelectionChanged(int startPos, int endPos)
{
    if (CodeEditor* codeEditor = GetActiveCodeEditor())
        codeEditor->SetCursorSelection(startPos, endPos);
}

// ---------------------------------------------------------------------------------------------
// Workspace

void BrindletEditor::OnShowInSideBarRequested(const QString& path)
{
    sideBar->RevealInWorkspace(path);
}

void BrindletEditor::OnWorkspaceItemDeleted(const QString& /*path*/, bool /*isFolder*/)
{
    OnWorkspaceModified();
}

void BrindletEditor::OnWorkspaceModified()
{
    // The go-to palette reads the workspace's files again at its next use.
    if (goToWidget)
        goToWidget->SetFileUpdateRequired();
}

void BrindletEditor::RefreshWorkspace()
{
    sideBar->RefreshWorkspace();
}

void BrindletEditor::AddFolderToWorkspace(const QString& dirPath)
{
    sideBar->AddFolderToWorkspace(dirPath);
}

void BrindletEditor::SaveWorkspaceAs()
{
    QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Save Workspace"), WorkspacesFolder(),
                                                WorkspaceFileFilter());
    if (path.isEmpty())
        return;
    if (!path.endsWith(Settings::WORKSPACE_EXTENSION, Qt::CaseInsensitive))
        path += Settings::WORKSPACE_EXTENSION;
    sideBar->SaveWorkspaceAs(path);
}

void BrindletEditor::OpenWorkspace()
{
    QString selectedFilter = WorkspaceFilter();
    const QString path = QFileDialog::getOpenFileName(this, QStringLiteral("Open File"), WorkspacesFolder(),
                                                      WorkspaceFileFilter(), &selectedFilter);
    if (path.isEmpty())
        return;
    sideBar->OpenWorkspace(path);
    OnWorkspaceModified();
}
