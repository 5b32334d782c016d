#include "sidebar/SideBar.h"

#include "settings/Settings.h"
#include "sidebar/ExplorerView.h"
#include "sidebar/OpenCodeEditorsView.h"
#include "sidebar/OutlineView.h"
#include "sidebar/QuickHelpView.h"
#include "sidebar/WorkspaceView.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QVBoxLayout>

SideBar::SideBar(KeyBindings* bindings, QWidget* parent) : QWidget(parent), keyBindings(bindings)
{
    setObjectName(QStringLiteral("SideBar"));
    setAutoFillBackground(true);
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    SetView(SideBarViewExplorer);
}

QWidget* SideBar::CreatePage(const QString& title)
{
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(8, 4, 8, 4);
    auto* label = new QLabel(title.toUpper(), page);
    label->setObjectName(QStringLiteral("SideBarTitle"));
    layout->addWidget(label);
    layout->addStretch(1);
    return page;
}

void SideBar::CreateWidgets()
{
    stack = new QStackedWidget(this);
    explorerView = new ExplorerView(keyBindings, stack);
    quickHelpView = new QuickHelpView(keyBindings, stack);
    stack->addWidget(explorerView);
    stack->addWidget(CreatePage(QStringLiteral("Search")));
    stack->addWidget(quickHelpView);
}

void SideBar::CreateLayout()
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(stack);
}

void SideBar::CreateConnections()
{
    connect(explorerView, SIGNAL(CodeEditorSelected(int, int)), this, SLOT(OnCodeEditorSelected(int, int)));
    connect(explorerView, SIGNAL(FileOpenRequested(QString, bool)), this, SLOT(OnFileOpenRequested(QString, bool)));
    connect(explorerView, SIGNAL(FilePathChanged(QString, QString)), this,
            SLOT(OnFilePathChanged(QString, QString)));
    connect(explorerView, SIGNAL(FindInSelected(QString, QString)), this, SLOT(ShowSearchView(QString, QString)));
    connect(explorerView, SIGNAL(WorkspaceItemDeleted(QString, bool)), this,
            SLOT(OnWorkspaceItemDeleted(QString, bool)));
    connect(explorerView, SIGNAL(WorkspaceModified()), this, SLOT(OnWorkspaceModified()));
    connect(explorerView, SIGNAL(OutlineSelectionChanged(int, int)), this, SLOT(OnOutlineSelectionChanged(int, int)));
    connect(explorerView, SIGNAL(HideSideBarRequested()), this, SLOT(OnHideSideBarRequested()));
    connect(explorerView, SIGNAL(SaveAllRequested()), this, SLOT(OnSaveAllRequested()));
    connect(explorerView, SIGNAL(CloseAllRequested()), this, SLOT(OnCloseAllRequested()));
    connect(quickHelpView, SIGNAL(FlagSelected(QString)), this, SLOT(OnQuickHelpFlagSelected(QString)));
    connect(quickHelpView, SIGNAL(HideSideBarRequested()), this, SLOT(OnHideSideBarRequested()));
}

void SideBar::SetView(SideBarView view)
{
    stack->setCurrentIndex(static_cast<int>(view));
    Settings::searchViewActive = view == SideBarViewSearch;
}

SideBarView SideBar::GetView() const
{
    return static_cast<SideBarView>(stack->currentIndex());
}

void SideBar::SaveState()
{
    explorerView->SaveState();
}

void SideBar::UpdateKeyBindings() {}

void SideBar::UpdateColors()
{
    explorerView->GetWorkspaceView()->UpdateColors();
    explorerView->GetOutlineView()->UpdateColors();
    explorerView->GetOpenCodeEditorsView()->UpdateColors();
    quickHelpView->UpdateColors();
}

// ---------------------------------------------------------------------------------------------
// Downward

void SideBar::SetOpenCodeEditors(int groupIndex, const QList<CodeEditorProperties>& propertiesList)
{
    explorerView->GetOpenCodeEditorsView()->SetCodeEditors(groupIndex, propertiesList);
}

void SideBar::SetCurrentCodeEditor(int groupIndex, int codeEditorIndex)
{
    explorerView->GetOpenCodeEditorsView()->SetCurrentCodeEditor(groupIndex, codeEditorIndex);
}

void SideBar::RefreshWorkspace()
{
    explorerView->GetWorkspaceView()->Refresh();
}

void SideBar::OpenWorkspace(const QString& path)
{
    explorerView->GetWorkspaceView()->OpenWorkspace(path);
}

void SideBar::SaveWorkspace()
{
    explorerView->GetWorkspaceView()->SaveWorkspace();
}

void SideBar::SaveWorkspaceAs(const QString& path)
{
    explorerView->GetWorkspaceView()->SaveWorkspaceAs(path);
}

void SideBar::AddFolderToWorkspace(const QString& path)
{
    explorerView->AddFolderToWorkspace(path);
}

void SideBar::RevealInWorkspace(const QString& path)
{
    explorerView->GetWorkspaceView()->Reveal(path);
}

QStringList SideBar::GetWorkspaceFiles() const
{
    return explorerView->GetWorkspaceView()->GetWorkspaceFiles();
}

void SideBar::UpdateOutline(BaseParser* parser)
{
    explorerView->GetOutlineView()->Update(parser);
}

void SideBar::SaveOutline()
{
    explorerView->GetOutlineView()->Save();
}

void SideBar::ClearStoredDetailsFromOutline(const QString& filePath)
{
    OutlineView* outlineView = explorerView->GetOutlineView();
    outlineView->ClearStoredDetails(filePath, outlineView->GetFilePath() == filePath);
}

void SideBar::ClearInvalidDetailsFromOutline(const QStringList& paths)
{
    explorerView->GetOutlineView()->ClearInvalidDetails(paths);
}

void SideBar::SetQuickHelpSearchText(const QString& text, bool selectAll)
{
    quickHelpView->SetSearchText(text, selectAll);
}

void SideBar::ShowSearchView(const QString& /*includeStr*/, const QString& /*excludeStr*/)
{
    // The search page takes the folder as its include filter once it exists.
    emit ViewChangeRequested(SideBarViewSearch);
}

// ---------------------------------------------------------------------------------------------
// Upward

void SideBar::OnCodeEditorSelected(int groupIndex, int codeEditorIndex)
{
    emit CodeEditorSelected(groupIndex, codeEditorIndex);
}

void SideBar::OnFileOpenRequested(const QString& filePath, bool temp)
{
    emit FileOpenRequested(filePath, temp);
}

void SideBar::OnFilePathChanged(const QString& oldFilePath, const QString& newFilePath)
{
    emit FilePathChanged(oldFilePath, newFilePath);
}

void SideBar::OnWorkspaceItemDeleted(const QString& path, bool isFolder)
{
    emit WorkspaceItemDeleted(path, isFolder);
}

void SideBar::OnWorkspaceModified()
{
    emit WorkspaceModified();
}

void SideBar::OnOutlineSelectionChanged(int startPos, int endPos)
{
    emit OutlineSelectionChanged(startPos, endPos);
}

void SideBar::OnSaveAllRequested()
{
    emit SaveAllRequested();
}

void SideBar::OnCloseAllRequested()
{
    emit CloseAllRequested();
}

void SideBar::OnQuickHelpFlagSelected(const QString& text)
{
    emit QuickHelpFlagSelected(text);
}

void SideBar::OnHideSideBarRequested()
{
    emit SideBarVisibilityChangeRequested(false);
}
