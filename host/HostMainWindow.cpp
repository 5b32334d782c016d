#include "HostMainWindow.h"
#include "HostCommandLine.h"
#include "HostMel.h"
#include "HostScriptEditorWindow.h"
#include "HostSymbolButton.h"
#include "HostWorkspaceControl.h"
#include <QtGui/QCloseEvent>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>
#include <maya/MGlobal.h>
#include <maya/MQtUtil.h>

HostMainWindow::HostMainWindow(QWidget* parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("MayaWindow"));
    setWindowTitle(QStringLiteral("Autodesk Maya 2026 - substitute host"));
    resize(1280, 800);
    setDockNestingEnabled(true);
    CreateWidgets();
    CreateLayout();
    CreateConnections();
}

QMenu* HostMainWindow::WindowsMenu() const
{
    return windowsMenu;
}

QMenu* HostMainWindow::GeneralEditorsMenu() const
{
    return generalEditorsMenu;
}

QToolBar* HostMainWindow::StatusLine() const
{
    return statusLine;
}

QToolBar* HostMainWindow::ShelfBar() const
{
    return shelfBar;
}

HostCommandLine* HostMainWindow::CommandLine() const
{
    return commandLine;
}

QList<HostSymbolButton*> HostMainWindow::SymbolButtons() const
{
    return statusLine->findChildren<HostSymbolButton*>();
}

HostSymbolButton* HostMainWindow::FindSymbolButton(const QString& name) const
{
    if (name.isEmpty())
        return nullptr;
    return statusLine->findChild<HostSymbolButton*>(name);
}

QList<HostWorkspaceControl*> HostMainWindow::WorkspaceControls() const
{
    QList<HostWorkspaceControl*> controls;
    const auto children = findChildren<HostWorkspaceControl*>(QString(), Qt::FindDirectChildrenOnly);
    for (HostWorkspaceControl* control : children)
    {
        if (!control->IsDiscarded())
            controls.append(control);
    }
    return controls;
}

HostWorkspaceControl* HostMainWindow::FindWorkspaceControl(const QString& name) const
{
    if (name.isEmpty())
        return nullptr;
    const auto controls = WorkspaceControls();
    for (HostWorkspaceControl* control : controls)
    {
        if (control->Name() == name)
            return control;
    }
    return nullptr;
}

QToolButton* HostMainWindow::AddShelfButton(const QString& label, const QString& command, bool isMel)
{
    auto* button = new QToolButton(shelfBar);
    button->setText(label);
    button->setToolTip(label);
    button->setAutoRaise(true);
    connect(button, &QToolButton::clicked, this,
            [command, isMel]()
            {
                const MString text = MQtUtil::toMString(command);
                if (isMel)
                    MGlobal::executeCommand(text, true, true);
                else
                    MGlobal::executePythonCommand(text, true, true);
            });
    shelfBar->addWidget(button);
    shelfBar->show();
    return button;
}

HostScriptEditorWindow* HostMainWindow::ShowScriptEditor()
{
    if (!scriptEditor)
        scriptEditor = new HostScriptEditorWindow(this);
    scriptEditor->Refresh();
    scriptEditor->show();
    scriptEditor->raise();
    return scriptEditor;
}

void HostMainWindow::closeEvent(QCloseEvent* event)
{
    // A filter may have ignored the event and still passed it on: that is a veto too.
    if (!event->isAccepted())
        return;
    emit CloseAccepted();
}

void HostMainWindow::CreateWidgets()
{
    CreateMenus();
    CreateStatusLine();

    shelfBar = new QToolBar(QStringLiteral("Custom"), this);
    shelfBar->setObjectName(QStringLiteral("Custom"));
    shelfBar->setMovable(false);

    commandLine = new HostCommandLine(this);
    commandLineBar = new QToolBar(QStringLiteral("Command Line"), this);
    commandLineBar->setObjectName(QStringLiteral("commandLineToolBar"));
    commandLineBar->setMovable(false);

    viewport = new QWidget(this);
    viewport->setObjectName(QStringLiteral("viewPanes"));
    viewport->setMinimumSize(320, 240);
    QPalette palette = viewport->palette();
    palette.setColor(QPalette::Window, QColor(68, 68, 68));
    viewport->setPalette(palette);
    viewport->setAutoFillBackground(true);
}

void HostMainWindow::CreateMenus()
{
    QMenu* fileMenu = menuBar()->addMenu(QStringLiteral("File"));
    fileMenu->setObjectName(QStringLiteral("mainFileMenu"));
    exitAction = fileMenu->addAction(QStringLiteral("Exit"));
    exitAction->setObjectName(QStringLiteral("exitMenuItem"));

    // Empty until it is built, as in Maya.
    windowsMenu = menuBar()->addMenu(QStringLiteral("Windows"));
    windowsMenu->setObjectName(QStringLiteral("mainWindowMenu"));
}

void HostMainWindow::BuildWindowsMenu()
{
    if (generalEditorsMenu)
        return;
    generalEditorsMenu = windowsMenu->addMenu(QStringLiteral("General Editors"));
    generalEditorsMenu->setObjectName(QStringLiteral("wmGeneralEditorsMenu"));
    connect(generalEditorsMenu, &QMenu::aboutToShow, this, &HostMainWindow::BuildGeneralEditorsMenu);
}

void HostMainWindow::BuildGeneralEditorsMenu()
{
    // As in Maya, a menu that already holds items is taken as built.
    if (!generalEditorsMenu || !generalEditorsMenu->actions().isEmpty())
        return;
    scriptEditorAction = generalEditorsMenu->addAction(QStringLiteral("Script Editor"));
    scriptEditorAction->setObjectName(QStringLiteral("wmScriptEditorItem"));
    connect(scriptEditorAction, &QAction::triggered, this,
            []() { HostMel::Execute(QStringLiteral("ScriptEditor"), nullptr, true); });
}

void HostMainWindow::CreateStatusLine()
{
    statusLine = new QToolBar(QStringLiteral("Status Line"), this);
    statusLine->setObjectName(QStringLiteral("StatusLine"));
    statusLine->setMovable(false);
    // A second button, so that finding the Script Editor one means looking at the commands.
    statusLine->addWidget(new HostSymbolButton(QStringLiteral("renderViewStatusLineButton"),
                                               QStringLiteral("RV"), QStringLiteral("RenderViewWindow"),
                                               QStringLiteral("Render View"), statusLine));
    statusLine->addWidget(new HostSymbolButton(QStringLiteral("scriptEditorStatusLineButton"),
                                               QStringLiteral("SE"), QStringLiteral("ScriptEditor"),
                                               QStringLiteral("Script Editor"), statusLine));
}

void HostMainWindow::CreateLayout()
{
    addToolBar(Qt::TopToolBarArea, statusLine);
    addToolBarBreak(Qt::TopToolBarArea);
    addToolBar(Qt::TopToolBarArea, shelfBar);
    commandLineBar->addWidget(commandLine);
    addToolBar(Qt::BottomToolBarArea, commandLineBar);
    setCentralWidget(viewport);
}

void HostMainWindow::CreateConnections()
{
    connect(exitAction, &QAction::triggered, this, &QWidget::close);
    connect(windowsMenu, &QMenu::aboutToShow, this, &HostMainWindow::BuildWindowsMenu);
}
