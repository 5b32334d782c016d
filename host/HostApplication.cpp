#include "HostApplication.h"
#include "HostEvents.h"
#include "HostIdleQueue.h"
#include "HostMainWindow.h"
#include "HostState.h"
#include "HostStyle.h"
#include "HostUiCommands.h"
#include <QtCore/QCoreApplication>
#include <QtGui/QCloseEvent>
#include <maya/MGlobal.h>
#include <maya/MQtUtil.h>

HostApplication* HostApplication::instance = nullptr;

HostApplication::HostApplication(bool batch, QObject* parent) : QObject(parent), batch(batch)
{
    instance = this;
    HostState::SetBatch(batch);
    if (!batch)
    {
        HostStyle::Apply();
        mainWindow = new HostMainWindow();
        connect(mainWindow, &HostMainWindow::CloseAccepted, this,
                &HostApplication::OnMainWindowCloseAccepted);
    }
    uiCommands = std::make_unique<HostUiCommands>(mainWindow);
    InstallQuitHandler();
}

HostApplication::~HostApplication()
{
    HostState::SetQuitHandler({});
    // The plug-ins go first: their tear-down may still talk to the interface.
    HostPlugins::UnloadAll();
    uiCommands.reset();
    delete mainWindow.data();
    if (instance == this)
        instance = nullptr;
}

HostApplication* HostApplication::Instance()
{
    return instance;
}

bool HostApplication::IsBatch() const
{
    return batch;
}

QMainWindow* HostApplication::MainWindow() const
{
    return mainWindow.data();
}

HostMainWindow* HostApplication::HostWindow() const
{
    return mainWindow.data();
}

void HostApplication::ShowMainWindow()
{
    if (mainWindow)
        mainWindow->show();
}

MStatus HostApplication::LoadPlugin(const QString& name, HostPluginEntry initialize,
                                    HostPluginEntry uninitialize)
{
    return HostPlugins::Load(name, initialize, uninitialize);
}

MStatus HostApplication::UnloadPlugin(const QString& name)
{
    return HostPlugins::Unload(name);
}

MStatus HostApplication::RunMel(const QString& text)
{
    return MGlobal::executeCommand(MQtUtil::toMString(text), true, true);
}

MStatus HostApplication::RunPython(const QString& code)
{
    return MGlobal::executePythonCommand(MQtUtil::toMString(code), true, true);
}

void HostApplication::ProcessIdleQueue()
{
    HostIdleQueue::Flush();
}

bool HostApplication::Quit()
{
    if (hasQuit)
        return true;
    if (quitting)
        return false;
    quitting = true;
    const bool accepted = SendCloseEvent();
    if (accepted)
        FinishQuit();
    quitting = false;
    return accepted;
}

bool HostApplication::HasQuit() const
{
    return hasQuit;
}

QStringList HostApplication::ShownHelp() const
{
    return uiCommands->ShownHelp();
}

QList<QPair<QString, QString>> HostApplication::ShelfButtons() const
{
    return uiCommands->ShelfButtons();
}

QString HostApplication::WorkspaceControlUiScript(const QString& controlName) const
{
    return uiCommands->WorkspaceControlUiScript(controlName);
}

QWidget* HostApplication::CurrentParent() const
{
    return uiCommands->CurrentParent();
}

bool HostApplication::SendCloseEvent()
{
    if (!mainWindow)
        return true;
    QCloseEvent event;
    QCoreApplication::sendEvent(mainWindow.data(), &event);
    return event.isAccepted();
}

void HostApplication::FinishQuit()
{
    HostEvents::Fire(QStringLiteral("quitApplication"));
    HostPlugins::UnloadAll();
    if (mainWindow)
        mainWindow->hide();
    hasQuit = true;
    emit QuitFinished();
}

void HostApplication::OnMainWindowCloseAccepted()
{
    // Quit() sends the close event itself and goes on by its own; this is the user's close.
    if (quitting || hasQuit)
        return;
    quitting = true;
    FinishQuit();
    quitting = false;
}

void HostApplication::InstallQuitHandler()
{
    // Queued, never run at once: "quit -f" inside a plug-in's command must not unload the
    // plug-in while its code is still on the stack.
    HostState::SetQuitHandler(
        [this]()
        {
            const QPointer<HostApplication> self(this);
            HostIdleQueue::Post(
                [self]()
                {
                    if (self)
                        self->Quit();
                });
        });
}
