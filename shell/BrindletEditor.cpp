#include "shell/BrindletEditor.h"

#include "editor/CodeEditor.h"
#include "output/PanelGroup.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"
#include "shell/RecoveryStore.h"
#include "shell/StatusBar.h"
#include "sidebar/ActivityBar.h"
#include "sidebar/SideBar.h"
#include "tabs/CodeEditorGroup.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QSplitter>

BrindletEditor::BrindletEditor(QWidget* parent) : QWidget(parent), mainWindow(MayaUtil::GetMainWindow())
{
    setWindowTitle(Settings::APPLICATION_TITLE);
    InitializeForMaya();
    CreateActions();
    CreateMenus();
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    ApplyPreferences();
    recoveryStore = new RecoveryStore(this);
    RestoreCodeEditors();
    if (GetCodeEditorCount() == 0)
    {
        NewMelBuffer();
        NewPythonBuffer();
    }
    SetActiveCodeEditorGroup(GetActiveCodeEditorGroup(), true);
    // After the panels exist, since it applies to all of them.
    keyBindings.ReadUserKeyBindings();
    keyBindingsRead = true;
    // What the host printed before this widget existed.
    panelGroup->OutputAppendText(MayaUtil::GetExistingHistory());
    if (mainWindow)
        mainWindow->installEventFilter(this);
}

BrindletEditor::~BrindletEditor()
{
    if (mainWindow)
        mainWindow->removeEventFilter(this);
}

void BrindletEditor::InitializeForMaya()
{
    setAttribute(Qt::WA_DontCreateNativeAncestors);
    if (objectName().isEmpty())
        setObjectName(Settings::APPLICATION_NAME);
}

void BrindletEditor::CreateWidgets()
{
    editorGroupSplitter = new QSplitter(this);
    editorGroupSplitter->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    editorGroupSplitter->setOrientation(Settings::codeEditorOrientVertical ? Qt::Vertical : Qt::Horizontal);
    editorGroupSplitter->setChildrenCollapsible(false);
    for (int id = 0; id < Settings::NUM_CODE_EDITOR_GROUPS; ++id)
    {
        auto* group = new CodeEditorGroup(id, &keyBindings, editorGroupSplitter);
        group->setMinimumWidth(100);
        group->setMinimumHeight(100);
        editorGroupSplitter->addWidget(group);
        codeEditorGroups.append(group);
    }

    panelGroup = new PanelGroup(&keyBindings, this);
    panelGroup->setMinimumHeight(100);
    sideBar = new SideBar(&keyBindings, this);
    activityBar = new ActivityBar(&keyBindings, this);
    statusBar = new StatusBar(&keyBindings, this);

    outputSplitter = new QSplitter(this);
    outputSplitter->setStyleSheet(QStringLiteral("QSplitter::handle:vertical   {height: 1px; image: none;}"
                                                 "QSplitter::handle:horizontal {width:  1px; image: none;}"));
    outputSplitter->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    outputSplitter->setOrientation(Settings::outputOrientVertical ? Qt::Vertical : Qt::Horizontal);
    outputSplitter->setFrameStyle(0);
    if (Settings::outputTopLeft)
    {
        outputSplitter->addWidget(panelGroup);
        outputSplitter->addWidget(editorGroupSplitter);
    }
    else
    {
        outputSplitter->addWidget(editorGroupSplitter);
        outputSplitter->addWidget(panelGroup);
    }
    outputSplitter->setStretchFactor(outputSplitter->indexOf(editorGroupSplitter), 1);
    outputSplitter->setStretchFactor(outputSplitter->indexOf(panelGroup), 0);

    sideBarSplitter = new QSplitter(this);
    sideBarSplitter->setStyleSheet(
        QStringLiteral("QSplitter::handle:vertical   {height: 0px; image: none;}"
                       "QSplitter::handle:horizontal {width:  0px; image: none;}"));
    sideBarSplitter->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    sideBarSplitter->setFrameStyle(0);
    if (Settings::sideBarLeft)
    {
        sideBarSplitter->addWidget(sideBar);
        sideBarSplitter->addWidget(outputSplitter);
    }
    else
    {
        sideBarSplitter->addWidget(outputSplitter);
        sideBarSplitter->addWidget(sideBar);
    }
    const int sideBarIndex = sideBarSplitter->indexOf(sideBar);
    const int otherIndex = sideBarSplitter->indexOf(outputSplitter);
    sideBarSplitter->setCollapsible(sideBarIndex, true);
    sideBarSplitter->setStretchFactor(sideBarIndex, 0);
    sideBarSplitter->setCollapsible(otherIndex, false);
    sideBarSplitter->setStretchFactor(otherIndex, 1);

    InstallSplitterHandleFilters();
}

void BrindletEditor::InstallSplitterHandleFilters()
{
    if (QSplitterHandle* handle = outputSplitter->handle(1))
        handle->installEventFilter(this);
    if (QSplitterHandle* handle = sideBarSplitter->handle(1))
        handle->installEventFilter(this);
}

void BrindletEditor::CreateLayout()
{
    centralLayout = new QHBoxLayout();
    centralLayout->setContentsMargins(0, 0, 0, 0);
    centralLayout->setSpacing(0);
    if (Settings::sideBarLeft)
    {
        centralLayout->addWidget(activityBar);
        centralLayout->addWidget(sideBarSplitter);
    }
    else
    {
        centralLayout->addWidget(sideBarSplitter);
        centralLayout->addWidget(activityBar);
    }

    mainLayout = new QVBoxLayout(this);
    mainLayout->setContentsMargins(0, 0, 0, 0);
    mainLayout->setSpacing(0);
    mainLayout->addWidget(menuBar);
    mainLayout->addLayout(centralLayout);
    mainLayout->addWidget(statusBar);
}

void BrindletEditor::ConnectCodeEditorGroup(CodeEditorGroup* group)
{
    connect(group, SIGNAL(NewTabRequested()), this, SLOT(NewBuffer()));
    connect(group, SIGNAL(CloseTabRequested(CodeEditorGroup*, int)), this,
            SLOT(OnCloseTabRequested(CodeEditorGroup*, int)));
    connect(group, SIGNAL(CloseOtherTabsRequested(CodeEditorGroup*, int)), this,
            SLOT(OnCloseOtherTabsRequested(CodeEditorGroup*, int)));
    connect(group, SIGNAL(CloseTabsToRightRequested(CodeEditorGroup*, int)), this,
            SLOT(OnCloseTabsToRightRequested(CodeEditorGroup*, int)));
    connect(group, SIGNAL(CurrentTabChanged()), this, SLOT(OnActiveCodeEditorChanged()));
    connect(group, SIGNAL(MoveTabRequested(int, int, int, int)), this,
            SLOT(OnMoveTabRequested(int, int, int, int)));
    connect(group, SIGNAL(MoveTabToZoneRequested(int, int, int, TabDropZone)), this,
            SLOT(OnMoveTabToZoneRequested(int, int, int, TabDropZone)));
    connect(group, SIGNAL(ReceivedFocus(CodeEditorGroup*)), this,
            SLOT(OnCodeEditorGroupFocusReceived(CodeEditorGroup*)));
    connect(group, SIGNAL(OpenFileRequested(int, int, QString)), this,
            SLOT(OnOpenFileRequested(int, int, QString)));
    connect(group, SIGNAL(OpenFilesRequested(int, TabDropZone, QStringList)), this,
            SLOT(OnOpenFilesRequested(int, TabDropZone, QStringList)));
    connect(group, SIGNAL(FileChanged(QString)), this, SLOT(OnFileChanged(QString)));
    connect(group, SIGNAL(RenameRequested(CodeEditorGroup*, int)), this, SLOT(Rename(CodeEditorGroup*, int)));
    connect(group, SIGNAL(CursorPositionChanged()), this, SLOT(UpdateCursorPosition()));
    connect(group, SIGNAL(OverwriteModeChanged()), this, SLOT(UpdateOverwriteMode()));
    connect(group, SIGNAL(ErrorAndWarningTextChanged()), this, SLOT(UpdateStatusBarInfo()));
    connect(group, SIGNAL(ExecutePressed()), this, SLOT(Execute()));
    connect(group, SIGNAL(ExecuteAllPressed()), this, SLOT(ExecuteAll()));
    connect(group, SIGNAL(ExecuteLinePressed()), this, SLOT(ExecuteLine()));
    connect(group, SIGNAL(SaveScriptToShelfPressed()), this, SLOT(SaveScriptToShelf()));
    connect(group, SIGNAL(PythonDirRequested()), this, SLOT(PythonDirSelection()));
    connect(group, SIGNAL(PythonHelpRequested()), this, SLOT(PythonHelpSelection()));
    connect(group, SIGNAL(PythonUpdateModuleStateRequested()), this, SLOT(PythonUpdateModuleState()));
    connect(group, SIGNAL(PythonRevertModuleStateRequested()), this, SLOT(PythonRevertModuleState()));
    connect(group, SIGNAL(TogglePythonRevertModuleStateOnExecuteRequested()), this,
            SLOT(OnTogglePythonRevertModuleStateOnExecuteRequested()));
    connect(group, SIGNAL(ParserUpdated(BaseParser*)), this, SLOT(OnParserUpdated(BaseParser*)));
    connect(group, SIGNAL(MiniToolbarDisplayModified()), this, SLOT(RefreshCodeEditorGroupMiniToolbar()));
    connect(group, SIGNAL(IncreaseFontSizeRequested()), this, SLOT(IncreaseCodeEditorFontSize()));
    connect(group, SIGNAL(DecreaseFontSizeRequested()), this, SLOT(DecreaseCodeEditorFontSize()));
    connect(group, SIGNAL(InsertPathRequested()), this, SLOT(ShowInsertPathDialog()));
    connect(group, SIGNAL(QuickHelpChanged(QString, bool)), this,
            SLOT(SetQuickHelpSearchText(QString, bool)));
    connect(group, SIGNAL(ShowInSideBarRequested(QString)), this, SLOT(OnShowInSideBarRequested(QString)));
}

void BrindletEditor::CreateConnections()
{
    for (CodeEditorGroup* group : codeEditorGroups)
        ConnectCodeEditorGroup(group);
    connect(panelGroup, SIGNAL(IncreaseOutputFontSizeRequested()), this, SLOT(IncreaseOutputFontSize()));
    connect(panelGroup, SIGNAL(DecreaseOutputFontSizeRequested()), this, SLOT(DecreaseOutputFontSize()));
    connect(panelGroup, SIGNAL(ReceivedFocus()), this, SLOT(CheckForFileChanges()));
    connect(panelGroup, SIGNAL(EchoAllCommandsChanged()), this, SLOT(OnEchoAllCommandsChanged()));
    connect(panelGroup, SIGNAL(WriteToFileUpdated(bool)), this, SLOT(OnWriteOutputToFileUpdated(bool)));
    connect(sideBar, SIGNAL(SideBarVisibilityChangeRequested(bool)), this, SLOT(SetSideBarVisible(bool)));
    connect(sideBar, SIGNAL(ViewChangeRequested(SideBarView)), this, SLOT(SetSideBarView(SideBarView)));
    ConnectSideBar();
    connect(activityBar, SIGNAL(ViewSelected(SideBarView)), this,
            SLOT(OnActivityBarViewSelected(SideBarView)));
    connect(activityBar, SIGNAL(ActivityBarVisibilityChangeRequested(bool)), this,
            SLOT(SetActivityBarVisible(bool)));
    connect(statusBar, SIGNAL(StatusBarVisibilityChangeRequested(bool)), this,
            SLOT(SetStatusBarVisible(bool)));
    connect(sideBarSplitter, SIGNAL(splitterMoved(int, int)), this, SLOT(OnSplitterMoved()));
    connect(outputSplitter, SIGNAL(splitterMoved(int, int)), this, SLOT(OnSplitterMoved()));
    connect(qApp, SIGNAL(focusChanged(QWidget*, QWidget*)), this,
            SLOT(OnApplicationFocusChanged(QWidget*, QWidget*)));
    connect(this, SIGNAL(AppendToOutputRequested(QString)), this, SLOT(AppendToOutput(QString)));
    ConnectSearch();
}

// ---------------------------------------------------------------------------------------------
// Output

void BrindletEditor::AppendToOutputThreadSafe(const QString& text)
{
    emit AppendToOutputRequested(text);
}

void BrindletEditor::AppendToOutput(const QString& text)
{
    panelGroup->OutputAppendText(text);
}

void BrindletEditor::ClearHistory()
{
    panelGroup->OutputClearAll();
}

// ---------------------------------------------------------------------------------------------
// Editor groups

int BrindletEditor::GetCodeEditorGroupCount() const
{
    return editorGroupSplitter->count();
}

int BrindletEditor::GetCodeEditorGroupIndex(CodeEditorGroup* group) const
{
    return editorGroupSplitter->indexOf(group);
}

CodeEditorGroup* BrindletEditor::GetCodeEditorGroupByIndex(int index) const
{
    if (index < 0 || index >= editorGroupSplitter->count())
        return nullptr;
    return qobject_cast<CodeEditorGroup*>(editorGroupSplitter->widget(index));
}

CodeEditorGroup* BrindletEditor::GetCodeEditorGroupById(int id) const
{
    for (CodeEditorGroup* group : codeEditorGroups)
    {
        if (group->GetId() == id)
            return group;
    }
    return nullptr;
}

int BrindletEditor::GetActiveCodeEditorGroupIndex() const
{
    return Settings::activeTabViewIndex;
}

CodeEditorGroup* BrindletEditor::GetActiveCodeEditorGroup() const
{
    return GetCodeEditorGroupByIndex(GetActiveCodeEditorGroupIndex());
}

void BrindletEditor::SetActiveCodeEditorGroup(CodeEditorGroup* group, bool force)
{
    const int index = GetCodeEditorGroupIndex(group);
    if (index == Settings::activeTabViewIndex && !force)
        return;
    Settings::activeTabViewIndex = index;
    RefreshCodeEditorGroupMiniToolbar();
    OnActiveCodeEditorChanged();
}

int BrindletEditor::GetCodeEditorCount() const
{
    int count = 0;
    for (CodeEditorGroup* group : codeEditorGroups)
        count += group->GetCodeEditorCount();
    return count;
}

void BrindletEditor::RefreshCodeEditorGroupMiniToolbar()
{
    for (CodeEditorGroup* group : codeEditorGroups)
        group->SetMiniToolbarVisible(false);
    if (CodeEditorGroup* active = GetActiveCodeEditorGroup())
        active->SetMiniToolbarVisible(true);
}

void BrindletEditor::RefreshCodeEditorGroups(bool equalizeSizes)
{
    // Groups with tabs stay in front; an empty one moves to the end and hides.
    CodeEditorGroup* active = GetActiveCodeEditorGroup();
    const bool activeWasShown = active && !active->isHidden();
    int count = 0;
    for (int i = codeEditorGroups.size() - 1; i >= 0; --i)
    {
        CodeEditorGroup* group = codeEditorGroups.at(i);
        if (group->GetCodeEditorCount() > 0)
        {
            group->show();
            ++count;
            continue;
        }
        group->hide();
        if (i != codeEditorGroups.size() - 1)
            codeEditorGroups.append(codeEditorGroups.takeAt(i));
    }
    RefreshCodeEditorGroupMiniToolbar();
    for (int i = 0; i < codeEditorGroups.size(); ++i)
        editorGroupSplitter->insertWidget(i, codeEditorGroups.at(i));
    if (count == 0 && !codeEditorGroups.isEmpty())
    {
        codeEditorGroups.first()->show();
        count = 1;
    }
    for (CodeEditorGroup* group : codeEditorGroups)
        group->SetTabDropOtherGroupsEnabled(count != codeEditorGroups.size());
    RefreshOpenCodeEditorsView();
    if (equalizeSizes)
        editorGroupSplitter->setSizes(QList<int>(editorGroupSplitter->count(), 1));
    KeepActiveCodeEditorGroup(active, activeWasShown);
}

void BrindletEditor::KeepActiveCodeEditorGroup(CodeEditorGroup* active, bool activeWasShown)
{
    // The active group is a group, not a place: the index follows it when the groups move.
    if (!active)
        return;
    const int index = GetCodeEditorGroupIndex(active);
    if (!active->isHidden() || !activeWasShown || !statusBar)
    {
        Settings::activeTabViewIndex = index;
        return;
    }
    // Emptied and hidden: the group now in its place, or the last one shown before it, takes over,
    // so that the title, the status bar and the keyboard follow an editor the user sees.
    int successor = qMin(index, codeEditorGroups.size() - 1);
    while (successor > 0 && codeEditorGroups.at(successor)->isHidden())
        --successor;
    // The closed editor's focus has passed on to whatever came next, the output perhaps: it goes to
    // the new active editor, unless the user is working outside this widget.
    QWidget* focus = QApplication::focusWidget();
    const bool focusInside = !focus || !focus->isVisible() || isAncestorOf(focus);
    SetActiveCodeEditorGroup(codeEditorGroups.value(successor), true);
    if (focusInside)
        FocusActiveCodeEditor();
}

void BrindletEditor::FocusActiveCodeEditor()
{
    if (CodeEditorGroup* group = GetActiveCodeEditorGroup())
        group->FocusCurrentCodeEditor();
    RefreshCodeEditorGroupMiniToolbar();
}

void BrindletEditor::OnActiveCodeEditorChanged()
{
    UpdateOpenCodeEditorViewSelection();
    sideBar->SaveOutline();
    if (CodeEditorGroup* group = GetActiveCodeEditorGroup())
        group->UpdateParser();
    UpdateInterpreter();
    UpdateCursorPosition();
    UpdateTitleBar();
    UpdateStatusBarInfo();
}

void BrindletEditor::OnCodeEditorGroupFocusReceived(CodeEditorGroup* group)
{
    SetActiveCodeEditorGroup(group, false);
    CheckForFileChanges();
}

void BrindletEditor::SetParsingEnabled(bool enabled)
{
    for (CodeEditorGroup* group : codeEditorGroups)
        group->SetParsingEnabled(enabled);
}

void BrindletEditor::OnParserUpdated(BaseParser* parser)
{
    sideBar->UpdateOutline(parser);
}

// ---------------------------------------------------------------------------------------------
// Status bar

void BrindletEditor::UpdateInterpreter()
{
    CodeEditor* codeEditor = GetActiveCodeEditor();
    statusBar->SetInterpreter(codeEditor ? codeEditor->GetLanguage() : CodeEditorLanguage::TEXT);
}

void BrindletEditor::UpdateCursorPosition()
{
    CodeEditor* codeEditor = GetActiveCodeEditor();
    if (!codeEditor)
    {
        statusBar->SetInfo(QString());
        statusBar->SetCursorPosition(0, 0, 0);
        return;
    }
    int line = 0;
    int column = 0;
    int selected = 0;
    codeEditor->GetCursorStatus(line, column, selected);
    statusBar->SetInfo(codeEditor->GetErrorAndWarningsText());
    statusBar->SetCursorPosition(line, column, selected);
}

void BrindletEditor::UpdateStatusBarInfo()
{
    const CodeEditor* codeEditor = GetActiveCodeEditor();
    if (!codeEditor)
    {
        statusBar->SetErrorAndWarningCount(0, 0);
        statusBar->SetInfo(QString());
        return;
    }
    statusBar->SetErrorAndWarningCount(codeEditor->GetNumberOfErrors(), codeEditor->GetNumberOfWarnings());
    statusBar->SetInfo(codeEditor->GetErrorAndWarningsText());
}

void BrindletEditor::UpdateOverwriteMode()
{
    statusBar->SetOverwriteEnabled(Settings::overwriteEnabled);
    for (CodeEditorGroup* group : codeEditorGroups)
        group->UpdateOverwriteMode();
}

bool BrindletEditor::IsBrindletEditorWidget(QWidget* widget) const
{
    for (QWidget* w = widget; w; w = w->parentWidget())
    {
        if (w == this)
            return true;
    }
    return false;
}

bool BrindletEditor::IsSideBarWidget(QWidget* widget) const
{
    for (QWidget* w = widget; w && w != this; w = w->parentWidget())
    {
        if (w == sideBar)
            return true;
    }
    return false;
}
