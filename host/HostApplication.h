#pragma once
#include "HostPlugins.h"
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPair>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <maya/MStatus.h>
#include <memory>

class QMainWindow;
class QWidget;
class HostMainWindow;
class HostUiCommands;

// The substitute Maya session: what the standalone program and the tests start.
// Needs a QApplication to exist. One at a time per process.
class HostApplication : public QObject
{
    Q_OBJECT

public:
    explicit HostApplication(bool batch, QObject* parent = nullptr);
    ~HostApplication() override; // unloads every plug-in still loaded

    static HostApplication* Instance();

    bool IsBatch() const;
    QMainWindow* MainWindow() const; // null in batch mode
    HostMainWindow* HostWindow() const;
    // The main window is created hidden; the program shows it once the session is set up.
    void ShowMainWindow();

    MStatus LoadPlugin(const QString& name, HostPluginEntry initialize, HostPluginEntry uninitialize);
    MStatus UnloadPlugin(const QString& name);

    // Runs text as the command line does (display on, undo on).
    MStatus RunMel(const QString& text);
    MStatus RunPython(const QString& code);

    // Runs everything queued with executeCommandOnIdle / executePythonCommandOnIdle.
    void ProcessIdleQueue();

    // Maya's quit: a close event to the main window (an event filter may veto it by ignoring
    // the event), then the "quitApplication" event, then every plug-in unloaded.
    // Returns false if the close was vetoed. Emits QuitFinished when it went through.
    bool Quit();
    bool HasQuit() const;

    // What the host recorded for checks: "showHelp" topics, shelf buttons added by
    // scriptToShelf (label and command), the current "workspaceControl -uiScript".
    QStringList ShownHelp() const;
    QList<QPair<QString, QString>> ShelfButtons() const;
    QString WorkspaceControlUiScript(const QString& controlName) const;

    // The content widget of the workspace control created last: Maya's current parent.
    QWidget* CurrentParent() const;

signals:
    void QuitFinished();

private:
    bool SendCloseEvent();
    void FinishQuit();
    void OnMainWindowCloseAccepted();
    void InstallQuitHandler();

    static HostApplication* instance;

    const bool batch;
    bool hasQuit = false;
    bool quitting = false;
    QPointer<HostMainWindow> mainWindow;
    std::unique_ptr<HostUiCommands> uiCommands;
};
