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

void BrindletEditor::CreateActions()
{
    CreateAction(&saveStateAction, QStringLiteral("Save State"), QStringLiteral("Save State"),
                 KeySequenceType::SaveState);
    CreateAction(&clearOutputAction, QStringLiteral("Clear Output"), QStringLiteral("Clear Output"),
                 KeySequenceType::ClearOutput);
    CreateAction(&explorerAction, QStringLiteral("Explorer"), QStringLiteral("Explorer"), KeySequenceType::Explorer);
    CreateAction(&quickHelpAction, QStringLiteral("Quick Help"), QStringLiteral("Quick Help"),
                 KeySequenceType::QuickHelp);
    CreateAction(&toggleCodeEditorAction, QStringLiteral("Toggle Code Editor"), QStringLiteral("Toggle Code Editor"),
                 KeySequenceType::ToggleCodeEditor);
    CreateAction(&toggleOutputAction, QStringLiteral("Toggle Output"), QStringLiteral("Toggle Output"),
                 KeySequenceType::ToggleOutput);
    CreateAction(&toggleSideBarAction, QStringLiteral("Toggle Side Bar"), QStringLiteral("Toggle Side Bar"),
                 KeySequenceType::ToggleSideBar);
    CreateAction(&toggleActivityBarAction, QStringLiteral("Hide Activity Bar"), QStringLiteral("Hide Activity Bar"),
                 KeySequenceType::ToggleActivityBar);
    CreateAction(&toggleStatusBarAction, QStringLiteral("Hide Status Bar"), QStringLiteral("Hide Status Bar"),
                 KeySequenceType::ToggleStatusBar);
    CreateAction(&toggleCodeEditorLayoutAction, QStringLiteral("Toggle Code Editor Layout"),
                 QStringLiteral("Toggle Code Editor Layout"), KeySequenceType::ToggleCodeEditorLayout);
    const QString moveText = Settings::sideBarLeft ? QStringLiteral("Move Side Bar Right")
                                                   : QStringLiteral("Move Side Bar Left");
    CreateAction(&toggleSideBarPositionAction, moveText, moveText, KeySequenceType::ToggleSidebarPosition);
    CreateAction(&outputPositionTopAction, QStringLiteral("Top"), QStringLiteral("Top"), KeySequenceType::NoBinding);
    CreateAction(&outputPositionBottomAction, QStringLiteral("Bottom"), QStringLiteral("Bottom"),
                 KeySequenceType::NoBinding);
    CreateAction(&outputPositionLeftAction, QStringLiteral("Left"), QStringLiteral("Left"), KeySequenceType::NoBinding);
    CreateAction(&outputPositionRightAction, QStringLiteral("Right"), QStringLiteral("Right"),
                 KeySequenceType::NoBinding);
    CreateAction(&executeAction, QStringLiteral("Execute"), QStringLiteral("Execute"), KeySequenceType::Execute);

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
    connect(executeAction, SIGNAL(triggered()), this, SLOT(Execute()));
}

void BrindletEditor::CreateMenus()
{
    menuBar = new QMenuBar(this);

    QMenu* fileMenu = menuBar->addMenu(QStringLiteral("File"));
    fileMenu->setTearOffEnabled(true);
    fileMenu->addAction(saveStateAction);

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

    QMenu* commandMenu = menuBar->addMenu(QStringLiteral("Command"));
    commandMenu->setTearOffEnabled(true);
    commandMenu->addAction(executeAction);
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
