#include "HostFixture.h"

#include "HostApplication.h"
#include "plugin/BrindletEditorCommand.h"
#include "plugin/PluginMain.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"

#include <maya/MCommandResult.h>
#include <maya/MGlobal.h>
#include <maya/MMessage.h>
#include <maya/MQtUtil.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QRegularExpression>
#include <QtCore/QtGlobal>
#include <QtTest/QTest>

namespace
{
const QString PLUGIN_NAME = QStringLiteral("brindletEditor2");
}

HostFixture::HostFixture(bool batchMode) : batch(batchMode)
{
    // Connections by signature fail only at run time: make that a test failure.
    QTest::failOnWarning(QRegularExpression(QStringLiteral("QObject::connect")));
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    StartHost();
}

HostFixture::~HostFixture()
{
    StopHost();
}

void HostFixture::StartHost()
{
    // Settings outlive a plug-in unload inside one process; a new session starts from defaults,
    // as a fresh Maya would.
    Settings::ResetToDefaults();
    // A completion popup takes the keyboard while it is open; tests that type to edit do so
    // without it, and the completion tests switch it on.
    Settings::melCompleteOnLetters = Settings::pythonCompleteOnLetters = Settings::pythonCompleteOnDot = false;
    // The first host of a process meets the command's own first-call state; later ones start
    // over as a fresh Maya would.
    static bool restarted = false;
    if (restarted)
        BrindletEditorCommand::firstCall = true;
    restarted = true;
    host = std::make_unique<HostApplication>(batch);
    // A user sees the host's window; widgets inside it only count as visible once it is shown.
    if (!batch)
        host->ShowMainWindow();
    recorder = std::make_unique<OutputRecorder>();
}

void HostFixture::StopHost()
{
    if (!host)
        return;
    recorder.reset();
    host.reset();
}

void HostFixture::Restart()
{
    StopHost();
    StartHost();
    LoadPlugin();
}

MStatus HostFixture::LoadPlugin()
{
    return host->LoadPlugin(PLUGIN_NAME, initializePlugin, uninitializePlugin);
}

MStatus HostFixture::UnloadPlugin()
{
    return host->UnloadPlugin(PLUGIN_NAME);
}

BrindletEditor* HostFixture::OpenEditor()
{
    MGlobal::executeCommand(MString("brindletEditor2"));
    // A widget added to a shown layout is shown on the next turn of the event loop.
    QCoreApplication::processEvents();
    return BrindletEditorCommand::editorWidget;
}

BrindletEditor* HostFixture::Editor() const
{
    return BrindletEditorCommand::editorWidget;
}

HostApplication& HostFixture::Host() const
{
    return *host;
}

QString HostFixture::AppDir() const
{
    return appDir.path();
}

QString HostFixture::UserConfigDirectory() const
{
    return Settings::GetUserConfigDirectory();
}

MStatus HostFixture::Mel(const QString& text)
{
    return MGlobal::executeCommand(MQtUtil::toMString(text));
}

QString HostFixture::MelString(const QString& text)
{
    MCommandResult result;
    MString value;
    if (MGlobal::executeCommand(MQtUtil::toMString(text), result) != MStatus::kSuccess)
        return QString();
    if (result.getResult(value) != MStatus::kSuccess)
        return QString();
    return MQtUtil::toQString(value);
}

const QList<HostFixture::Message>& HostFixture::Messages() const
{
    return recorder->messages;
}

QStringList HostFixture::MessagesOfType(MCommandMessage::MessageType type) const
{
    return recorder->Texts(type);
}

bool HostFixture::HasMessageContaining(const QString& fragment) const
{
    return recorder->Contains(fragment);
}

void HostFixture::ClearMessages()
{
    recorder->messages.clear();
}
