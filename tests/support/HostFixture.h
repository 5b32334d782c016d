#pragma once

#include "OutputRecorder.h"

#include <maya/MCommandMessage.h>
#include <maya/MStatus.h>

#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

#include <memory>

class BrindletEditor;
class HostApplication;

// One substitute Maya session for a test: its own temporary MAYA_APP_DIR, a host, and the
// product plug-in loaded through the real entry points. Every message the host prints is
// recorded with its type.
class HostFixture
{
public:
    using Message = OutputRecorder::Message;

    explicit HostFixture(bool batch = false);
    ~HostFixture();

    HostFixture(const HostFixture&) = delete;
    HostFixture& operator=(const HostFixture&) = delete;

    MStatus LoadPlugin();
    MStatus UnloadPlugin();
    // Opens the editor as a user does, through the command.
    BrindletEditor* OpenEditor();
    BrindletEditor* Editor() const;

    HostApplication& Host() const;
    QString AppDir() const;
    QString UserConfigDirectory() const;

    MStatus Mel(const QString& text);
    QString MelString(const QString& text);

    const QList<Message>& Messages() const;
    QStringList MessagesOfType(MCommandMessage::MessageType type) const;
    bool HasMessageContaining(const QString& fragment) const;
    void ClearMessages();

    // Ends this session and starts a new one in the same MAYA_APP_DIR, as a restart of Maya.
    void Restart();

private:
    void StartHost();
    void StopHost();

    bool batch;
    QTemporaryDir appDir;
    std::unique_ptr<HostApplication> host;
    std::unique_ptr<OutputRecorder> recorder;
};
