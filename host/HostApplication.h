#pragma once
#include <maya/MStatus.h>
#include "HostPlugins.h"
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

class QMainWindow;
class QWidget;
class HostMainWindow;

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

signals:
    void QuitFinished();
};
