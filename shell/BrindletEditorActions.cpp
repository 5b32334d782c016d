// Actions and menus of BrindletEditor.
#include "shell/BrindletEditor.h"

#include "plugin/MayaUtil.h"
#include "settings/Settings.h"

#include <QtGui/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

void BrindletEditor::CreateAction(QAction** action, const QString& text, const QString& statusTip,
                                  KeySequenceType type, bool checkable)
{
    *action = new QAction(text, this);
    (*action)->setStatusTip(statusTip);
    (*action)->setCheckable(checkable);
    keyBindings.SetAction(type, *action);
    // Shortcuts work with the menus closed.
    addAction(*action);
}

void BrindletEditor::CreateFileActions()
{
    CreateAction(&newBufferAction, QStringLiteral("New..."), QStringLiteral("New Buffer"),
                 KeySequenceType::NewBuffer);
    CreateAction(&newMelBufferAction, QStringLiteral("New MEL Buffer"), QStringLiteral("New MEL Buffer"),
                 KeySequenceType::NewMelBuffer);
    CreateAction(&newPythonBufferAction, QStringLiteral("New Python Buffer"),
                 QStringLiteral("New Python Buffer"), KeySequenceType::NewPythonBuffer);
    CreateAction(&openFileAction, QStringLiteral("Open File..."), QStringLiteral("Open File"),
                 KeySequenceType::OpenFile);
    CreateAction(&reopenClosedFileAction, QStringLiteral("Reopen Closed File"),
                 QStringLiteral("Reopen Closed File"), KeySequenceType::ReopenClosedFile);
    CreateAction(&clearRecentFilesAction, QStringLiteral("Clear Items"), QStringLiteral("Clear Items"),
                 KeySequenceType::NoBinding);
    CreateAction(&saveAction, QStringLiteral("Save"), QStringLiteral("Save"), KeySequenceType::Save);
    CreateAction(&saveAsAction, QStringLiteral("Save As..."), QStringLiteral("Save As"),
                 KeySequenceType::SaveAs);
    CreateAction(&saveAllAction, QStringLiteral("Save All"), QStringLiteral("Save All"),
                 KeySequenceType::SaveAll);
    CreateAction(&renameAction, QStringLiteral("Rename..."), QStringLiteral("Rename"),
                 KeySequenceType::Rename);
    CreateAction(&saveScriptToShelfAction, QStringLiteral("Save Script to Shelf..."),
                 QStringLiteral("Save Script to Shelf"), KeySequenceType::SaveScriptToShelf);
    CreateAction(&sourceScriptAction, QStringLiteral("Source Script..."), QStringLiteral("Source Script"),
                 KeySequenceType::SourceScript);
    CreateAction(&revertFileAction, QStringLiteral("Revert File"), QStringLiteral("Revert File"),
                 KeySequenceType::RevertFile);
    CreateAction(&closeFileAction, QStringLiteral("Close File"), QStringLiteral("Close File"),
                 KeySequenceType::CloseFile);
    CreateAction(&closeAllFilesAction, QStringLiteral("Close All Files"), QStringLiteral("Close All Files"),
                 KeySequenceType::CloseAllFiles);

    connect(newBufferAction, SIGNAL(triggered()), this, SLOT(NewBuffer()));
    connect(newMelBufferAction, SIGNAL(triggered()), this, SLOT(NewMelBuffer()));
    connect(newPythonBufferAction, SIGNAL(triggered()), this, SLOT(NewPythonBuffer()));
    connect(openFileAction, SIGNAL(triggered()), this, SLOT(OpenFile()));
    connect(reopenClosedFileAction, SIGNAL(triggered()), this, SLOT(ReopenClosedFile()));
    connect(clearRecentFilesAction, SIGNAL(triggered()), this, SLOT(ClearRecentFiles()));
    connect(saveAction, SIGNAL(triggered()), this, SLOT(Save()));
    connect(saveAsAction, SIGNAL(triggered()), this, SLOT(SaveAs()));
    connect(saveAllAction, SIGNAL(triggered()), this, SLOT(SaveAll()));
    connect(renameAction, SIGNAL(triggered()), this, SLOT(Rename()));
    connect(saveScriptToShelfAction, SIGNAL(triggered()), this, SLOT(SaveScriptToShelf()));
    connect(sourceScriptAction, SIGNAL(triggered()), this, SLOT(SourceScript()));
    connect(revertFileAction, SIGNAL(triggered()), this, SLOT(RevertFile()));
    connect(closeFileAction, SIGNAL(triggered()), this, SLOT(CloseFile()));
    connect(closeAllFilesAction, SIGNAL(triggered()), this, SLOT(CloseAllFiles()));
}

void BrindletEditor::CreateCommandActions()
{
    CreateAction(&executeAction, QStringLiteral("Execute"), QStringLiteral("Execute"),
                 KeySequenceType::Execute);
    CreateAction(&executeAltAction, QStringLiteral("Execute Alt"), QStringLiteral("Execute Alt"),
                 KeySequenceType::ExecuteAlt);
    CreateAction(&executeLineAction, QStringLiteral("Execute Line"), QStringLiteral("Execute Line"),
                 KeySequenceType::ExecuteLine);
    CreateAction(&executeAllAction, QStringLiteral("Execute All"), QStringLiteral("Execute All"),
                 KeySequenceType::ExecuteAll);
    CreateAction(&printPythonPathAction, QStringLiteral("sys.path"), QStringLiteral("sys.path"),
                 KeySequenceType::NoBinding);
    CreateAction(&printPythonEnvironAction, QStringLiteral("os.environ"), QStringLiteral("os.environ"),
                 KeySequenceType::NoBinding);
    CreateAction(&pythonSelectionDirAction, QStringLiteral("dir( )"), QStringLiteral("dir( )"),
                 KeySequenceType::PythonSelectionDir);
    CreateAction(&pythonSelectionHelpAction, QStringLiteral("help( )"), QStringLiteral("help( )"),
                 KeySequenceType::PythonSelectionHelp);
    CreateAction(&pythonUpdateModuleStateAction, QStringLiteral("Update Module State"),
                 QStringLiteral("Update Module State"), KeySequenceType::PythonUpdateModuleState);
    CreateAction(&pythonRevertModuleStateAction, QStringLiteral("Revert Module State"),
                 QStringLiteral("Revert Module State"), KeySequenceType::PythonRevertModuleState);
    CreateAction(&pythonRevertModuleStateOnExecuteAction, QStringLiteral("Revert Module State on Execute"),
                 QStringLiteral("Revert Module State on Execute"),
                 KeySequenceType::PythonRevertModuleStateOnExecute, true);
    pythonRevertModuleStateOnExecuteAction->setChecked(Settings::pythonRevertModuleStateOnExecute);
    for (const char* name : {"MAYA_SCRIPT_PATH", "MAYA_PLUG_IN_PATH", "MAYA_MODULE_PATH", "MAYA_SHELF_PATH",
                             "XBMLANGPATH", "PYTHONPATH"})
    {
        QAction* action = nullptr;
        CreateAction(&action, QLatin1String(name), QLatin1String(name), KeySequenceType::NoBinding);
        connect(action, SIGNAL(triggered()), this, SLOT(PrintMayaEnvVarPaths()));
        envVarActions.append(action);
    }

    connect(executeAction, SIGNAL(triggered()), this, SLOT(Execute()));
    connect(executeAltAction, SIGNAL(triggered()), this, SLOT(Execute()));
    connect(executeLineAction, SIGNAL(triggered()), this, SLOT(ExecuteLine()));
    connect(executeAllAction, SIGNAL(triggered()), this, SLOT(ExecuteAll()));
    connect(printPythonPathAction, SIGNAL(triggered()), this, SLOT(PrintPythonPath()));
    connect(printPythonEnvironAction, SIGNAL(triggered()), this, SLOT(PrintPythonEnviron()));
    connect(pythonSelectionDirAction, SIGNAL(triggered()), this, SLOT(PythonDirSelection()));
    connect(pythonSelectionHelpAction, SIGNAL(triggered()), this, SLOT(PythonHelpSelection()));
    connect(pythonUpdateModuleStateAction, SIGNAL(triggered()), this, SLOT(PythonUpdateModuleState()));
    connect(pythonRevertModuleStateAction, SIGNAL(triggered()), this, SLOT(PythonRevertModuleState()));
    connect(pythonRevertModuleStateOnExecuteAction, SIGNAL(triggered()), this,
            SLOT(UpdatePythonRevertModuleStateOnExecute()));
}

void BrindletEditor::CreateActions()
{
    CreateFileActions();
    CreateCommandActions();
    CreateAction(&saveStateAction, QStringLiteral("Save State"), QStringLiteral("Save State"),
                 KeySequenceType::SaveState);
    CreateAction(&clearOutputAction, QStringLiteral("Clear Output"), QStringLiteral("Clear Output"),
                 KeySequenceType::ClearOutput);
    CreateAction(&explorerAction, QStringLiteral("Explorer"), QStringLiteral("Explorer"),
                 KeySequenceType::Explorer);
    CreateAction(&quickHelpAction, QStringLiteral("Quick Help"), QStringLiteral("Quick Help"),
                 KeySequenceType::QuickHelp);
    CreateAction(&toggleCodeEditorAction, QStringLiteral("Toggle Code Editor"),
                 QStringLiteral("Toggle Code Editor"), KeySequenceType::ToggleCodeEditor);
    CreateAction(&toggleOutputAction, QStringLiteral("Toggle Output"), QStringLiteral("Toggle Output"),
                 KeySequenceType::ToggleOutput);
    CreateAction(&toggleSideBarAction, QStringLiteral("Toggle Side Bar"), QStringLiteral("Toggle Side Bar"),
                 KeySequenceType::ToggleSideBar);
    CreateAction(&toggleActivityBarAction, QStringLiteral("Hide Activity Bar"),
                 QStringLiteral("Hide Activity Bar"), KeySequenceType::ToggleActivityBar);
    CreateAction(&toggleStatusBarAction, QStringLiteral("Hide Status Bar"), QStringLiteral("Hide Status Bar"),
                 KeySequenceType::ToggleStatusBar);
    CreateAction(&toggleCodeEditorLayoutAction, QStringLiteral("Toggle Code Editor Layout"),
                 QStringLiteral("Toggle Code Editor Layout"), KeySequenceType::ToggleCodeEditorLayout);
    const QString moveText =
        Settings::sideBarLeft ? QStringLiteral("Move Side Bar Right") : QStringLiteral("Move Side Bar Left");
    CreateAction(&toggleSideBarPositionAction, moveText, moveText, KeySequenceType::ToggleSidebarPosition);
    CreateAction(&outputPositionTopAction, QStringLiteral("Top"), QStringLiteral("Top"),
                 KeySequenceType::NoBinding);
    CreateAction(&outputPositionBottomAction, QStringLiteral("Bottom"), QStringLiteral("Bottom"),
                 KeySequenceType::NoBinding);
    CreateAction(&outputPositionLeftAction, QStringLiteral("Left"), QStringLiteral("Left"),
                 KeySequenceType::NoBinding);
    CreateAction(&outputPositionRightAction, QStringLiteral("Right"), QStringLiteral("Right"),
                 KeySequenceType::NoBinding);

    CreateAction(&increaseFontSizeAction, QStringLiteral("Increase Font Size"),
                 QStringLiteral("Increase Font Size"), KeySequenceType::IncreaseFontSize);
    CreateAction(&decreaseFontSizeAction, QStringLiteral("Decrease Font Size"),
                 QStringLiteral("Decrease Font Size"), KeySequenceType::DecreaseFontSize);
    CreateAction(&resetFontSizeAction, QStringLiteral("Reset Font Size"), QStringLiteral("Reset Font Size"),
                 KeySequenceType::ResetFontSize);
    connect(increaseFontSizeAction, SIGNAL(triggered()), this, SLOT(IncreaseFontSize()));
    connect(decreaseFontSizeAction, SIGNAL(triggered()), this, SLOT(DecreaseFontSize()));
    connect(resetFontSizeAction, SIGNAL(triggered()), this, SLOT(ResetFontSize()));
    connect(saveStateAction, SIGNAL(triggered()), this, SLOT(SaveState()));
    connect(clearOutputAction, SIGNAL(triggered()), this, SLOT(ClearHistory()));
    connect(explorerAction, SIGNAL(triggered()), this, SLOT(ShowExplorer()));
    connect(quickHelpAction, SIGNAL(triggered()), this, SLOT(ShowQuickHelpView()));
    connect(toggleCodeEditorAction, SIGNAL(triggered()), this, SLOT(ToggleCodeEditor()));
    connect(toggleOutputAction, SIGNAL(triggered()), this, SLOT(ToggleOutput()));
    connect(toggleSideBarAction, SIGNAL(triggered()), this, SLOT(ToggleSideBar()));
    connect(toggleActivityBarAction, SIGNAL(triggered()), this, SLOT(ToggleActivityBar()));
    connect(toggleStatusBarAction, SIGNAL(triggered()), this, SLOT(ToggleStatusBar()));
    connect(toggleCodeEditorLayoutAction, SIGNAL(triggered()), this, SLOT(ToggleCodeEditorLayout()));
    connect(toggleSideBarPositionAction, SIGNAL(triggered()), this, SLOT(ToggleSideBarPosition()));
    connect(outputPositionTopAction, SIGNAL(triggered()), this, SLOT(OutputPositionTop()));
    connect(outputPositionBottomAction, SIGNAL(triggered()), this, SLOT(OutputPositionBottom()));
    connect(outputPositionLeftAction, SIGNAL(triggered()), this, SLOT(OutputPositionLeft()));
    connect(outputPositionRightAction, SIGNAL(triggered()), this, SLOT(OutputPositionRight()));
}

void BrindletEditor::CreateMenus()
{
    menuBar = new QMenuBar(this);

    CreateFileMenu();

    QMenu* editMenu = menuBar->addMenu(QStringLiteral("Edit"));
    editMenu->setTearOffEnabled(true);
    editMenu->addAction(clearOutputAction);

    QMenu* viewMenu = menuBar->addMenu(QStringLiteral("View"));
    viewMenu->setTearOffEnabled(true);
    viewMenu->addAction(explorerAction);
    viewMenu->addAction(quickHelpAction);
    viewMenu->addSeparator();
    viewMenu->addAction(toggleCodeEditorAction);
    viewMenu->addAction(toggleOutputAction);
    viewMenu->addAction(toggleSideBarAction);
    viewMenu->addAction(toggleActivityBarAction);
    viewMenu->addAction(toggleStatusBarAction);
    viewMenu->addSeparator();
    viewMenu->addAction(toggleCodeEditorLayoutAction);
    viewMenu->addAction(toggleSideBarPositionAction);
    QMenu* outputPositionMenu = viewMenu->addMenu(QStringLiteral("Output Position"));
    outputPositionMenu->setTearOffEnabled(true);
    outputPositionMenu->addAction(outputPositionTopAction);
    outputPositionMenu->addAction(outputPositionBottomAction);
    outputPositionMenu->addAction(outputPositionLeftAction);
    outputPositionMenu->addAction(outputPositionRightAction);
    viewMenu->addSeparator();
    viewMenu->addAction(increaseFontSizeAction);
    viewMenu->addAction(decreaseFontSizeAction);
    viewMenu->addAction(resetFontSizeAction);

    CreateCommandMenu();
}

void BrindletEditor::CreateFileMenu()
{
    QMenu* fileMenu = menuBar->addMenu(QStringLiteral("File"));
    fileMenu->setTearOffEnabled(true);
    fileMenu->addAction(newBufferAction);
    fileMenu->addAction(newMelBufferAction);
    fileMenu->addAction(newPythonBufferAction);
    fileMenu->addSeparator();
    fileMenu->addAction(openFileAction);
    recentFilesMenu = fileMenu->addMenu(QStringLiteral("Recent Files"));
    UpdateRecentFilesMenu();
    fileMenu->addSeparator();
    fileMenu->addAction(saveAction);
    fileMenu->addAction(saveAsAction);
    fileMenu->addAction(saveAllAction);
    fileMenu->addAction(renameAction);
    fileMenu->addSeparator();
    fileMenu->addAction(saveScriptToShelfAction);
    fileMenu->addAction(sourceScriptAction);
    fileMenu->addSeparator();
    fileMenu->addAction(revertFileAction);
    fileMenu->addAction(closeFileAction);
    fileMenu->addAction(closeAllFilesAction);
    fileMenu->addSeparator();
    fileMenu->addAction(saveStateAction);
}

void BrindletEditor::CreateCommandMenu()
{
    QMenu* commandMenu = menuBar->addMenu(QStringLiteral("Command"));
    commandMenu->setTearOffEnabled(true);
    commandMenu->addAction(executeAction);
    commandMenu->addAction(executeLineAction);
    commandMenu->addAction(executeAllAction);
    commandMenu->addSeparator();
    QMenu* environmentMenu = commandMenu->addMenu(QStringLiteral("Environment Variables"));
    environmentMenu->setTearOffEnabled(true);
    for (QAction* action : envVarActions)
    {
        if (action->text() == QLatin1String("PYTHONPATH"))
            environmentMenu->addSeparator();
        environmentMenu->addAction(action);
    }
    commandMenu->addSeparator();
    QMenu* pythonMenu = commandMenu->addMenu(QStringLiteral("Python"));
    pythonMenu->setTearOffEnabled(true);
    pythonMenu->addAction(printPythonPathAction);
    pythonMenu->addAction(printPythonEnvironAction);
    pythonMenu->addSeparator();
    pythonMenu->addAction(pythonSelectionDirAction);
    pythonMenu->addAction(pythonSelectionHelpAction);
    pythonMenu->addSeparator();
    pythonMenu->addAction(pythonUpdateModuleStateAction);
    pythonMenu->addAction(pythonRevertModuleStateAction);
    pythonMenu->addSeparator();
    pythonMenu->addAction(pythonRevertModuleStateOnExecuteAction);
}

void BrindletEditor::UpdateRecentFilesMenu()
{
    recentFilesMenu->clear();
    recentFilesMenu->addAction(reopenClosedFileAction);
    recentFilesMenu->addSeparator();
    if (!Settings::recentFiles.isEmpty())
    {
        for (const QString& path : Settings::recentFiles)
        {
            QAction* action = recentFilesMenu->addAction(path, this, SLOT(OpenRecentFile()));
            action->setData(path);
        }
        recentFilesMenu->addSeparator();
    }
    recentFilesMenu->addAction(clearRecentFilesAction);
}

void BrindletEditor::SyncActions()
{
    // The flags are taken first: the next steps change them.
    const bool outputVisible = Settings::outputVisible;
    const bool codeEditorVisible = Settings::codeEditorVisible;
    ShowCodeEditorAndOutput();
    if (!outputVisible)
        HideOutput();
    else if (!codeEditorVisible)
        HideCodeEditor();
    SetSideBarVisible(Settings::sideBarVisible);
    SetActivityBarVisible(Settings::activityBarVisible);
    SetStatusBarVisible(Settings::statusBarVisible);
}
