// Actions and menus of BrindletEditor.
#include "shell/BrindletEditor.h"

#include "plugin/MayaUtil.h"
#include "settings/Settings.h"

#include "output/PanelGroup.h"

#include <QtGui/QAction>
#include <QtGui/QActionGroup>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

namespace
{
void Connect(QAction* action, QObject* receiver, const char* slot)
{
    QObject::connect(action, SIGNAL(triggered()), receiver, slot);
}
} // namespace

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
    CreateAction(&openWorkspaceAction, QStringLiteral("Open Workspace..."), QStringLiteral("Open Workspace"),
                 KeySequenceType::OpenWorkspace);
    CreateAction(&addFolderToWorkspaceAction, QStringLiteral("Add Folder to Workspace..."),
                 QStringLiteral("Add Folder to Workspace"), KeySequenceType::AddFolderToWorkspace);
    CreateAction(&saveWorkspaceAsAction, QStringLiteral("Save Workspace As..."),
                 QStringLiteral("Save Workspace As"), KeySequenceType::SaveWorkspaceAs);
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
    Connect(openWorkspaceAction, this, SLOT(OpenWorkspace()));
    Connect(addFolderToWorkspaceAction, this, SLOT(AddFolderToWorkspace()));
    Connect(saveWorkspaceAsAction, this, SLOT(SaveWorkspaceAs()));
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
    CreateAction(&openPylintrcAction, QStringLiteral("Open pylintrc"), QStringLiteral("Open pylintrc"),
                 KeySequenceType::NoBinding);
    Connect(openPylintrcAction, this, SLOT(OpenPylintrc()));
}

void BrindletEditor::CreateEditActions()
{
    CreateAction(&undoAction, QStringLiteral("Undo"), QStringLiteral("Undo"), KeySequenceType::Undo);
    CreateAction(&redoAction, QStringLiteral("Redo"), QStringLiteral("Redo"), KeySequenceType::Redo);
    CreateAction(&cutAction, QStringLiteral("Cut"), QStringLiteral("Cut"), KeySequenceType::Cut);
    CreateAction(&copyAction, QStringLiteral("Copy"), QStringLiteral("Copy"), KeySequenceType::Copy);
    CreateAction(&pasteAction, QStringLiteral("Paste"), QStringLiteral("Paste"), KeySequenceType::Paste);
    CreateAction(&selectAllAction, QStringLiteral("Select All"), QStringLiteral("Select All"),
                 KeySequenceType::SelectAll);
    CreateAction(&increaseIndentAction, QStringLiteral("Increase Indent"), QStringLiteral("Increase Indent"),
                 KeySequenceType::IncreaseIndent);
    CreateAction(&decreaseIndentAction, QStringLiteral("Decrease Indent"), QStringLiteral("Decrease Indent"),
                 KeySequenceType::DecreaseIndent);
    CreateAction(&copyLineUpAction, QStringLiteral("Copy Line Up"), QStringLiteral("Copy Line Up"),
                 KeySequenceType::CopyLineUp);
    CreateAction(&copyLineDownAction, QStringLiteral("Copy Line Down"), QStringLiteral("Copy Line Down"),
                 KeySequenceType::CopyLineDown);
    // The status tip's spelling is the one users have always seen.
    CreateAction(&moveLineUpAction, QStringLiteral("Move Line Up"), QStringLiteral("Move Line Upt"),
                 KeySequenceType::MoveLineUp);
    CreateAction(&moveLineDownAction, QStringLiteral("Move Line Down"), QStringLiteral("Move Line Down"),
                 KeySequenceType::MoveLineDown);
    CreateAction(&deleteLineAction, QStringLiteral("Delete Line"), QStringLiteral("Delete Line"),
                 KeySequenceType::DeleteLine);
    CreateAction(&toggleCommentAction, QStringLiteral("Toggle Comment"), QStringLiteral("Toggle Comment"),
                 KeySequenceType::ToggleComment);
    CreateAction(&toggleBlockCommentAction, QStringLiteral("Toggle Block Comment"),
                 QStringLiteral("Toggle Block Comment"), KeySequenceType::ToggleBlockComment);
    CreateAction(&convertTabsToSpacesAction, QStringLiteral("Convert Tabs to Spaces"),
                 QStringLiteral("Convert Tabs to Spaces"), KeySequenceType::ConvertTabsToSpaces);
    CreateAction(&insertPathAction, QStringLiteral("Insert Path..."), QStringLiteral("Insert Path"),
                 KeySequenceType::InsertPath);
    CreateAction(&clearOutputAction, QStringLiteral("Clear Output"), QStringLiteral("Clear Output"),
                 KeySequenceType::ClearOutput);
    CreateAction(&preferencesAction, QStringLiteral("Preferences..."), QStringLiteral("Preferences"),
                 KeySequenceType::Preferences);

    Connect(undoAction, this, SLOT(Undo()));
    Connect(redoAction, this, SLOT(Redo()));
    Connect(cutAction, this, SLOT(Cut()));
    Connect(copyAction, this, SLOT(Copy()));
    Connect(pasteAction, this, SLOT(Paste()));
    Connect(selectAllAction, this, SLOT(SelectAll()));
    Connect(increaseIndentAction, this, SLOT(IncreaseIndent()));
    Connect(decreaseIndentAction, this, SLOT(DecreaseIndent()));
    Connect(copyLineUpAction, this, SLOT(CopyLineUp()));
    Connect(copyLineDownAction, this, SLOT(CopyLineDown()));
    Connect(moveLineUpAction, this, SLOT(MoveLineUp()));
    Connect(moveLineDownAction, this, SLOT(MoveLineDown()));
    Connect(deleteLineAction, this, SLOT(DeleteLine()));
    Connect(toggleCommentAction, this, SLOT(ToggleComment()));
    Connect(toggleBlockCommentAction, this, SLOT(ToggleBlockComment()));
    Connect(convertTabsToSpacesAction, this, SLOT(ConvertTabsToSpaces()));
    Connect(insertPathAction, this, SLOT(ShowInsertPathDialog()));
    Connect(clearOutputAction, this, SLOT(ClearHistory()));
    Connect(preferencesAction, this, SLOT(ShowPreferencesDialog()));
}

void BrindletEditor::CreateSearchActions()
{
    CreateAction(&findAction, QStringLiteral("Find"), QStringLiteral("Find"), KeySequenceType::Find);
    CreateAction(&replaceAction, QStringLiteral("Replace"), QStringLiteral("Replace"),
                 KeySequenceType::Replace);
    CreateAction(&findInFilesAction, QStringLiteral("Find in Files"), QStringLiteral("Find in Files"),
                 KeySequenceType::FindInFiles);
    CreateAction(&replaceInFilesAction, QStringLiteral("Replace in Files"),
                 QStringLiteral("Replace in Files"), KeySequenceType::ReplaceInFiles);
    // In no menu: these exist for their shortcuts.
    CreateAction(&findNextAction, QStringLiteral("Find Next"), QStringLiteral("Find Next"),
                 KeySequenceType::FindNext);
    CreateAction(&findPreviousAction, QStringLiteral("Find Previous"), QStringLiteral("Find Previous"),
                 KeySequenceType::FindPrevious);
    CreateAction(&selectAndFindNextAction, QStringLiteral("Select and Find Next"),
                 QStringLiteral("Select and Find Next"), KeySequenceType::SelectAndFindNext);
    CreateAction(&selectAndFindPreviousAction, QStringLiteral("Select and Find Previous"),
                 QStringLiteral("Select and Find Previous"), KeySequenceType::SelectAndFindPrevious);
    CreateAction(&findInFilesNextAction, QStringLiteral("Find in Files Next"),
                 QStringLiteral("Find in Files Next"), KeySequenceType::FindInFilesNext);
    CreateAction(&findInFilesPreviousAction, QStringLiteral("Find in Files Previous"),
                 QStringLiteral("Find in Files Previous"), KeySequenceType::FindInFilesPrevious);
    CreateAction(&replaceNextAction, QStringLiteral("Replace Next"), QStringLiteral("Replace Next"),
                 KeySequenceType::ReplaceNext);
    CreateAction(&replaceAllAction, QStringLiteral("Replace"), QStringLiteral("Replace"),
                 KeySequenceType::ReplaceAll);

    Connect(findAction, this, SLOT(Find()));
    Connect(replaceAction, this, SLOT(Replace()));
    Connect(findInFilesAction, this, SLOT(FindInFiles()));
    Connect(replaceInFilesAction, this, SLOT(ReplaceInFiles()));
    Connect(findNextAction, this, SLOT(FindNext()));
    Connect(findPreviousAction, this, SLOT(FindPrevious()));
    Connect(selectAndFindNextAction, this, SLOT(SelectAndFindNext()));
    Connect(selectAndFindPreviousAction, this, SLOT(SelectAndFindPrevious()));
    Connect(findInFilesNextAction, this, SLOT(FindInFilesNext()));
    Connect(findInFilesPreviousAction, this, SLOT(FindInFilesPrevious()));
    Connect(replaceNextAction, this, SLOT(ReplaceNext()));
    Connect(replaceAllAction, this, SLOT(ReplaceAll()));
}

void BrindletEditor::CreateViewActions()
{
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
    CreateAction(&toggleRenderWhitespaceAction, QStringLiteral("Toggle Render Whitespaces"),
                 QStringLiteral("Toggle Render Whitespaces"), KeySequenceType::ToggleRenderWhitespace);
    CreateAction(&toggleWordWrapAction, QStringLiteral("Toggle Word Wrap"),
                 QStringLiteral("Toggle Word Wrap"), KeySequenceType::ToggleWordWrap);
    CreateAction(&increaseFontSizeAction, QStringLiteral("Increase Font Size"),
                 QStringLiteral("Increase Font Size"), KeySequenceType::IncreaseFontSize);
    CreateAction(&decreaseFontSizeAction, QStringLiteral("Decrease Font Size"),
                 QStringLiteral("Decrease Font Size"), KeySequenceType::DecreaseFontSize);
    CreateAction(&resetFontSizeAction, QStringLiteral("Reset Font Size"), QStringLiteral("Reset Font Size"),
                 KeySequenceType::ResetFontSize);

    Connect(explorerAction, this, SLOT(ShowExplorer()));
    Connect(quickHelpAction, this, SLOT(ShowQuickHelp()));
    Connect(toggleCodeEditorAction, this, SLOT(ToggleCodeEditor()));
    Connect(toggleOutputAction, this, SLOT(ToggleOutput()));
    Connect(toggleSideBarAction, this, SLOT(ToggleSideBar()));
    Connect(toggleActivityBarAction, this, SLOT(ToggleActivityBar()));
    Connect(toggleStatusBarAction, this, SLOT(ToggleStatusBar()));
    Connect(toggleCodeEditorLayoutAction, this, SLOT(ToggleCodeEditorLayout()));
    Connect(toggleSideBarPositionAction, this, SLOT(ToggleSideBarPosition()));
    Connect(outputPositionTopAction, this, SLOT(OutputPositionTop()));
    Connect(outputPositionBottomAction, this, SLOT(OutputPositionBottom()));
    Connect(outputPositionLeftAction, this, SLOT(OutputPositionLeft()));
    Connect(outputPositionRightAction, this, SLOT(OutputPositionRight()));
    Connect(toggleRenderWhitespaceAction, this, SLOT(ToggleRenderWhitespace()));
    Connect(toggleWordWrapAction, this, SLOT(ToggleWordWrap()));
    Connect(increaseFontSizeAction, this, SLOT(IncreaseFontSize()));
    Connect(decreaseFontSizeAction, this, SLOT(DecreaseFontSize()));
    Connect(resetFontSizeAction, this, SLOT(ResetFontSize()));
}

void BrindletEditor::CreateGoActions()
{
    CreateAction(&nextEditorAction, QStringLiteral("Next Editor"), QStringLiteral("Next Editor"),
                 KeySequenceType::NextEditor);
    CreateAction(&previousEditorAction, QStringLiteral("Previous Editor"), QStringLiteral("Previous Editor"),
                 KeySequenceType::PreviousEditor);
    CreateAction(&nextUsedEditorAction, QStringLiteral("Next Used Editor in Group"),
                 QStringLiteral("Next Used Editor in Group"), KeySequenceType::NextUsedEditor);
    CreateAction(&previousUsedEditorAction, QStringLiteral("Previous Used Editor in Group"),
                 QStringLiteral("Previous Used Editor in Group"), KeySequenceType::PreviousUsedEditor);
    CreateAction(&nextEditorGroupAction, QStringLiteral("Next Editor Group"),
                 QStringLiteral("Next Editor Group"), KeySequenceType::NextEditorGroup);
    CreateAction(&previousEditorGroupAction, QStringLiteral("Previous Editor Group"),
                 QStringLiteral("Previous Editor Group"), KeySequenceType::PreviousEditorGroup);
    CreateAction(&goToFileAction, QStringLiteral("Go to File..."), QStringLiteral("Go to File"),
                 KeySequenceType::GotoFile);
    CreateAction(&goToSymbolInFileAction, QStringLiteral("Go to Symbol in File..."),
                 QStringLiteral("Go to Symbol in File"), KeySequenceType::GotoSymbolInFile);
    CreateAction(&goToLineAction, QStringLiteral("Go to Line..."), QStringLiteral("Go to Line"),
                 KeySequenceType::GotoLine);

    for (QAction* action :
         {nextEditorAction, previousEditorAction, nextUsedEditorAction, previousUsedEditorAction})
        Connect(action, this, SLOT(GoToEditor()));
    Connect(nextEditorGroupAction, this, SLOT(GoToEditorGroup()));
    Connect(previousEditorGroupAction, this, SLOT(GoToEditorGroup()));
    Connect(goToFileAction, this, SLOT(GoToFile()));
    Connect(goToSymbolInFileAction, this, SLOT(GoToSymbolInFile()));
    Connect(goToLineAction, this, SLOT(GoToLine()));
}

void BrindletEditor::CreateOutputActions()
{
    CreateAction(&echoAllAction, QStringLiteral("Echo All"), QStringLiteral("Echo All"),
                 KeySequenceType::NoBinding, true);
    CreateAction(&normalVerbosityAction, QStringLiteral("Normal"), QStringLiteral("Normal"),
                 KeySequenceType::NoBinding, true);
    CreateAction(&minimalVerbosityAction, QStringLiteral("Minimal"), QStringLiteral("Minimal"),
                 KeySequenceType::NoBinding, true);
    auto* verbosityGroup = new QActionGroup(this);
    for (QAction* action : {echoAllAction, normalVerbosityAction, minimalVerbosityAction})
    {
        verbosityGroup->addAction(action);
        Connect(action, this, SLOT(UpdateOutputVerbosity()));
    }
    CreateAction(&lineNumbersInErrorsAction, QStringLiteral("Line Numbers in Errors"),
                 QStringLiteral("Line Numbers in Errors"), KeySequenceType::ToggleLineNumbersInErrors, true);
    CreateAction(&showStackTraceAction, QStringLiteral("Show Stack Trace"),
                 QStringLiteral("Show Stack Trace"), KeySequenceType::ToggleShowStackTrace, true);
    CreateAction(&suppressStackWindowAction, QStringLiteral("Suppress Stack Window"),
                 QStringLiteral("Suppress Stack Window"), KeySequenceType::ToggleSuppressStackWindow, true);
    CreateAction(&writeOutputToFileAction, QStringLiteral("Write Output to File"),
                 QStringLiteral("Write Output to File"), KeySequenceType::ToggleWriteOutputToFile, true);
    // In no menu: the verbosity choice covers it, the shortcut is for the keyboard.
    CreateAction(&echoAllCommandsAction, QStringLiteral("Echo All Commands"),
                 QStringLiteral("Echo All Commands"), KeySequenceType::ToggleEchoAllCommands, true);

    Connect(lineNumbersInErrorsAction, this, SLOT(ToggleLineNumbersInErrors()));
    Connect(showStackTraceAction, this, SLOT(ToggleShowStackTrace()));
    Connect(suppressStackWindowAction, this, SLOT(ToggleSuppressStackWindow()));
    Connect(writeOutputToFileAction, this, SLOT(ToggleWriteOutputToFile()));
    Connect(echoAllCommandsAction, this, SLOT(ToggleEchoAllCommands()));
}

void BrindletEditor::CreateHelpActions()
{
    CreateAction(&melCommandReferenceAction, QStringLiteral("MEL Command Reference"),
                 QStringLiteral("MEL Command Reference"), KeySequenceType::NoBinding);
    CreateAction(&pythonCommandReferenceAction, QStringLiteral("Python Command Reference"),
                 QStringLiteral("Python Command Reference"), KeySequenceType::NoBinding);
    CreateAction(&nodeAndAttributeReferenceAction, QStringLiteral("Node and Attribute Reference"),
                 QStringLiteral("Node and Attribute Reference"), KeySequenceType::NoBinding);
    CreateAction(&aboutAction, QStringLiteral("About..."), QStringLiteral("About"),
                 KeySequenceType::NoBinding);
    CreateAction(&commandReferenceAction, QStringLiteral("Command Reference"),
                 QStringLiteral("Command Reference"), KeySequenceType::CommandReference);

    Connect(melCommandReferenceAction, this, SLOT(MelCommandReference()));
    Connect(pythonCommandReferenceAction, this, SLOT(PythonCommandReference()));
    Connect(nodeAndAttributeReferenceAction, this, SLOT(NodeAndAttributeReference()));
    Connect(aboutAction, this, SLOT(ShowAboutDialog()));
    Connect(commandReferenceAction, this, SLOT(OpenCommandReference()));
}

void BrindletEditor::CreateActions()
{
    CreateFileActions();
    CreateAction(&saveStateAction, QStringLiteral("Save State"), QStringLiteral("Save State"),
                 KeySequenceType::SaveState);
    Connect(saveStateAction, this, SLOT(SaveState()));
    CreateEditActions();
    CreateSearchActions();
    CreateViewActions();
    CreateGoActions();
    CreateOutputActions();
    CreateCommandActions();
    CreateHelpActions();
}

QMenu* BrindletEditor::AddMenu(QMenu* parent, const QString& title)
{
    QMenu* menu = parent ? parent->addMenu(title) : menuBar->addMenu(title);
    menu->setTearOffEnabled(true);
    return menu;
}

void BrindletEditor::CreateMenus()
{
    menuBar = new QMenuBar(this);
    CreateFileMenu();
    CreateEditMenu();
    CreateViewMenu();
    CreateGoMenu();
    CreateOutputMenu();
    CreateCommandMenu();
    CreateHelpMenu();
}

void BrindletEditor::CreateEditMenu()
{
    editMenu = AddMenu(nullptr, QStringLiteral("Edit"));
    // "Find in Files" here is "Search" in the View menu: one action under two names.
    connect(editMenu, SIGNAL(aboutToShow()), this, SLOT(OnShowEditMenu()));
    editMenu->addAction(undoAction);
    editMenu->addAction(redoAction);
    editMenu->addSeparator();
    editMenu->addAction(cutAction);
    editMenu->addAction(copyAction);
    editMenu->addAction(pasteAction);
    editMenu->addAction(selectAllAction);
    editMenu->addSeparator();
    QMenu* lineMenu = AddMenu(editMenu, QStringLiteral("Line"));
    lineMenu->addActions({increaseIndentAction, decreaseIndentAction, copyLineUpAction, copyLineDownAction,
                          moveLineUpAction, moveLineDownAction, deleteLineAction});
    QMenu* commentMenu = AddMenu(editMenu, QStringLiteral("Comment"));
    commentMenu->addActions({toggleCommentAction, toggleBlockCommentAction});
    editMenu->addSeparator();
    editMenu->addAction(convertTabsToSpacesAction);
    editMenu->addSeparator();
    editMenu->addAction(findAction);
    editMenu->addAction(replaceAction);
    editMenu->addSeparator();
    editMenu->addAction(findInFilesAction);
    editMenu->addAction(replaceInFilesAction);
    editMenu->addSeparator();
    editMenu->addAction(insertPathAction);
    editMenu->addSeparator();
    editMenu->addAction(clearOutputAction);
    editMenu->addSeparator();
    editMenu->addAction(preferencesAction);
}

void BrindletEditor::CreateViewMenu()
{
    viewMenu = AddMenu(nullptr, QStringLiteral("View"));
    connect(viewMenu, SIGNAL(aboutToShow()), this, SLOT(OnShowViewMenu()));
    viewMenu->addAction(explorerAction);
    viewMenu->addAction(findInFilesAction);
    viewMenu->addAction(quickHelpAction);
    viewMenu->addSeparator();
    viewMenu->addActions({toggleCodeEditorAction, toggleOutputAction, toggleSideBarAction,
                          toggleActivityBarAction, toggleStatusBarAction});
    viewMenu->addSeparator();
    viewMenu->addAction(toggleCodeEditorLayoutAction);
    viewMenu->addAction(toggleSideBarPositionAction);
    QMenu* outputPositionMenu = AddMenu(viewMenu, QStringLiteral("Output Position"));
    outputPositionMenu->addActions({outputPositionTopAction, outputPositionBottomAction,
                                    outputPositionLeftAction, outputPositionRightAction});
    viewMenu->addSeparator();
    viewMenu->addAction(toggleRenderWhitespaceAction);
    viewMenu->addAction(toggleWordWrapAction);
    viewMenu->addSeparator();
    viewMenu->addActions({increaseFontSizeAction, decreaseFontSizeAction, resetFontSizeAction});
}

void BrindletEditor::CreateGoMenu()
{
    QMenu* goMenu = AddMenu(nullptr, QStringLiteral("Go"));
    QMenu* switchEditorMenu = AddMenu(goMenu, QStringLiteral("Switch Editor"));
    switchEditorMenu->addAction(nextEditorAction);
    switchEditorMenu->addAction(previousEditorAction);
    switchEditorMenu->addSeparator();
    switchEditorMenu->addAction(nextUsedEditorAction);
    switchEditorMenu->addAction(previousUsedEditorAction);
    QMenu* switchGroupMenu = AddMenu(goMenu, QStringLiteral("Switch Group"));
    switchGroupMenu->addActions({nextEditorGroupAction, previousEditorGroupAction});
    goMenu->addSeparator();
    goMenu->addActions({goToFileAction, goToSymbolInFileAction, goToLineAction});
}

void BrindletEditor::CreateOutputMenu()
{
    QMenu* outputMenu = AddMenu(nullptr, QStringLiteral("Output"));
    verbosityMenu = outputMenu->addMenu(QStringLiteral("Verbosity"));
    verbosityMenu->addActions({echoAllAction, normalVerbosityAction, minimalVerbosityAction});
    connect(verbosityMenu, SIGNAL(aboutToShow()), this, SLOT(OnShowOutputVerbosityMenu()));
    outputMenu->addSeparator();
    outputMenu->addAction(lineNumbersInErrorsAction);
    outputMenu->addAction(showStackTraceAction);
    outputMenu->addSeparator();
    outputMenu->addAction(suppressStackWindowAction);
    outputMenu->addSeparator();
    outputMenu->addAction(writeOutputToFileAction);
}

void BrindletEditor::CreateHelpMenu()
{
    QMenu* helpMenu = AddMenu(nullptr, QStringLiteral("Help"));
    helpMenu->addActions(
        {melCommandReferenceAction, pythonCommandReferenceAction, nodeAndAttributeReferenceAction});
    helpMenu->addSeparator();
    helpMenu->addAction(aboutAction);
}

void BrindletEditor::CreateFileMenu()
{
    QMenu* fileMenu = AddMenu(nullptr, QStringLiteral("File"));
    fileMenu->addAction(newBufferAction);
    fileMenu->addAction(newMelBufferAction);
    fileMenu->addAction(newPythonBufferAction);
    fileMenu->addSeparator();
    fileMenu->addAction(openFileAction);
    recentFilesMenu = fileMenu->addMenu(QStringLiteral("Recent Files"));
    UpdateRecentFilesMenu();
    fileMenu->addSeparator();
    fileMenu->addAction(openWorkspaceAction);
    fileMenu->addSeparator();
    fileMenu->addAction(addFolderToWorkspaceAction);
    fileMenu->addAction(saveWorkspaceAsAction);
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
    QMenu* commandMenu = AddMenu(nullptr, QStringLiteral("Command"));
    commandMenu->addAction(executeAction);
    commandMenu->addAction(executeLineAction);
    commandMenu->addAction(executeAllAction);
    commandMenu->addSeparator();
    QMenu* environmentMenu = AddMenu(commandMenu, QStringLiteral("Environment Variables"));
    for (QAction* action : envVarActions)
    {
        if (action->text() == QLatin1String("PYTHONPATH"))
            environmentMenu->addSeparator();
        environmentMenu->addAction(action);
    }
    commandMenu->addSeparator();
    QMenu* pythonMenu = AddMenu(commandMenu, QStringLiteral("Python"));
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
    QMenu* pylintMenu = AddMenu(commandMenu, QStringLiteral("Pylint"));
    pylintMenu->addAction(openPylintrcAction);
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
    // What Maya holds may have changed while the editor was hidden.
    lineNumbersInErrorsAction->setChecked(MayaUtil::LineNumbersInErrorsEnabled());
    showStackTraceAction->setChecked(MayaUtil::ShowStackTraceEnabled());
    suppressStackWindowAction->setChecked(Settings::suppressStackWindow);

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
