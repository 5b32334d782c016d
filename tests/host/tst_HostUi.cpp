// The substitute host's interface side: workspace controls, batch mode and the quit path, driven
// through MEL text and real widgets.
#include "HostApplication.h"
#include "HostMainWindow.h"
#include "HostPlugins.h"
#include "MelText.h"
#include "OutputRecorder.h"
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QDockWidget>
#include <maya/MEventMessage.h>
#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>
#include <maya/MMessage.h>
#include <maya/MPxCommand.h>
#include <maya/MQtUtil.h>
#include <memory>

namespace
{
constexpr auto Mel = &MelText::Run;
constexpr auto MelString = &MelText::String;
constexpr auto MelInt = &MelText::Int;

const QString TEST_PLUGIN = QStringLiteral("hostUiTestPlugin");

QStringList pluginLog;
bool loadedAfterQuitCommand = false;
MCallbackId quitCallbackId = 0;

void OnQuitApplication(void*)
{
    pluginLog.append(QStringLiteral("quitApplication"));
}

// A plug-in command that quits the session from inside its own code.
class QuitFromCommand : public MPxCommand
{
public:
    static void* Creator() { return new QuitFromCommand; }
    MStatus doIt(const MArgList&) override
    {
        const MStatus status = MGlobal::executeCommand("quit -f");
        loadedAfterQuitCommand = HostPlugins::IsLoaded(TEST_PLUGIN);
        return status;
    }
};

MStatus InitializeTestPlugin(MObject object)
{
    MFnPlugin plugin(object, "test", "1.0");
    quitCallbackId = MEventMessage::addEventCallback("quitApplication", OnQuitApplication);
    pluginLog.append(QStringLiteral("initialize"));
    return plugin.registerCommand("hostUiTestQuit", QuitFromCommand::Creator);
}

MStatus UninitializeTestPlugin(MObject object)
{
    MFnPlugin plugin(object, "test", "1.0");
    MMessage::removeCallback(quitCallbackId);
    pluginLog.append(QStringLiteral("uninitialize"));
    return plugin.deregisterCommand("hostUiTestQuit");
}

// Vetoes close events of the main window, as an unsaved-files dialog's Cancel does.
class CloseVeto : public QObject
{
public:
    int seen = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Close)
            return QObject::eventFilter(watched, event);
        ++seen;
        event->ignore();
        return true;
    }
};
} // namespace

class TestHostUi : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Nothing may read the real home folder: the temporary prefs folder comes first.
        qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    }

    void init()
    {
        pluginLog.clear();
        recorder = std::make_unique<OutputRecorder>();
        host = std::make_unique<HostApplication>(false);
    }

    void cleanup()
    {
        recorder.reset();
        host.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void workspaceControlCreateQueryEdit()
    {
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -exists testPanel")), 0);
        QCOMPARE(MelString(QStringLiteral("workspaceControl -label \"Test Panel\" -retain 1 -floating 0 "
                                          "-visible 1 -uiScript \"print 1\" -initialWidth 300 testPanel")),
                 QStringLiteral("testPanel"));

        auto* dock = Window()->findChild<QDockWidget*>(QStringLiteral("testPanel"));
        QVERIFY(dock);
        QCOMPARE(dock->windowTitle(), QStringLiteral("Test Panel"));
        QVERIFY(Window()->dockWidgetArea(dock) != Qt::NoDockWidgetArea);
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -vis testPanel")), 1);
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -floating testPanel")), 0);
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -collapse testPanel")), 0);
        QCOMPARE(MelString(QStringLiteral("workspaceControl -q -l testPanel")), QStringLiteral("Test Panel"));
        QCOMPARE(host->WorkspaceControlUiScript(QStringLiteral("testPanel")), QStringLiteral("print 1"));

        // Hiding, collapsing and restoring are driven by the plug-in's own tests.
        QVERIFY(Mel(QStringLiteral(
            "workspaceControl -e -l \"Renamed\" -fl 1 -uiScript \"brindletEditor2\" testPanel")));
        QCOMPARE(dock->windowTitle(), QStringLiteral("Renamed"));
        QVERIFY(dock->isFloating());
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -fl testPanel")), 1);
        QCOMPARE(host->WorkspaceControlUiScript(QStringLiteral("testPanel")),
                 QStringLiteral("brindletEditor2"));

        // A second control of the same name, and any question about a missing one, fail loudly.
        const int errorsBefore = ErrorCount();
        QCOMPARE(Mel(QStringLiteral("workspaceControl testPanel")), MStatus::kFailure);
        QCOMPARE(Mel(QStringLiteral("workspaceControl -q -visible missingPanel")), MStatus::kFailure);
        QCOMPARE(Mel(QStringLiteral("workspaceControl -e -restore missingPanel")), MStatus::kFailure);
        QCOMPARE(ErrorCount(), errorsBefore + 3);
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -exists missingPanel")), 0);

        QCOMPARE(Mel(QStringLiteral("deleteUI testPanel")), MStatus::kSuccess);
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -exists testPanel")), 0);
        QCOMPARE(Mel(QStringLiteral("deleteUI testPanel")), MStatus::kFailure);
    }

    void workspaceControlTitleBarClose()
    {
        host->ShowMainWindow();
        QVERIFY(QTest::qWaitForWindowExposed(Window()));
        QCOMPARE(Mel(QStringLiteral("workspaceControl -rt 1 keptPanel")), MStatus::kSuccess);
        QCOMPARE(Mel(QStringLiteral("workspaceControl -rt 0 droppedPanel")), MStatus::kSuccess);

        const auto clickClose = [this](const QString& name)
        {
            auto* dock = Window()->findChild<QDockWidget*>(name);
            auto* button =
                dock ? dock->findChild<QAbstractButton*>(QStringLiteral("qt_dockwidget_closebutton"))
                     : nullptr;
            if (!button || !button->isVisible())
                return false;
            QTest::mouseClick(button, Qt::LeftButton);
            return true;
        };
        QVERIFY(clickClose(QStringLiteral("keptPanel")));
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -exists keptPanel")), 1);
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -visible keptPanel")), 0);
        QVERIFY(clickClose(QStringLiteral("droppedPanel")));
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -exists droppedPanel")), 0);
    }

    // The user's close of the main window quits once, unless something vetoes it.
    void userCloseQuitsUnlessVetoed()
    {
        LoadTestPlugin();
        QSignalSpy finished(host.get(), &HostApplication::QuitFinished);
        host->ShowMainWindow();
        QVERIFY(QTest::qWaitForWindowExposed(Window()));
        CloseVeto veto;
        Window()->installEventFilter(&veto);
        QVERIFY(!Window()->close());
        Window()->removeEventFilter(&veto);
        QCOMPARE(veto.seen, 1);
        QVERIFY(!host->HasQuit());
        QVERIFY(HostPlugins::IsLoaded(TEST_PLUGIN));

        QVERIFY(Window()->close());
        QVERIFY(host->HasQuit());
        QCOMPARE(pluginLog, QStringList({QStringLiteral("quitApplication"), QStringLiteral("uninitialize")}));
        QVERIFY(!Window()->isVisible());
        QVERIFY(host->Quit());
        QCOMPARE(finished.count(), 1);
    }

    void quitCommandIsQueued()
    {
        LoadTestPlugin();
        QCOMPARE(Mel(QStringLiteral("hostUiTestQuit")), MStatus::kSuccess);
        QVERIFY(loadedAfterQuitCommand);
        QVERIFY(!host->HasQuit());
        QVERIFY(HostPlugins::IsLoaded(TEST_PLUGIN));

        host->ProcessIdleQueue();
        QVERIFY(host->HasQuit());
        QVERIFY(!HostPlugins::IsLoaded(TEST_PLUGIN));
        QCOMPARE(pluginLog, QStringList({QStringLiteral("quitApplication"), QStringLiteral("uninitialize")}));
    }

    void batchModeFailures()
    {
        host.reset();
        host = std::make_unique<HostApplication>(true);
        QVERIFY(!host->MainWindow());
        QVERIFY(!MQtUtil::mainWindow());
        QVERIFY(!MQtUtil::findControl("MayaWindow"));
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -exists anyPanel")), 0);

        const QStringList failing = {
            QStringLiteral("workspaceControl anyPanel"),
            QStringLiteral("workspaceControlState -e -tlc 1 2 -w 3 -h 4 anyPanel"),
            QStringLiteral("symbolButton -q -c anyButton"),
            QStringLiteral("showHelp DocsMelCommands"),
            QStringLiteral("scriptToShelf \"a\" \"b\" 1"),
            QStringLiteral("lsUI -type symbolButton"),
            QStringLiteral("menu -q -ia mainWindowMenu"),
            QStringLiteral("menuItem -p mainWindowMenu -l \"a\""),
        };
        for (const QString& command : failing)
        {
            const int errorsBefore = ErrorCount();
            QVERIFY2(Mel(command) == MStatus::kFailure, qPrintable(command));
            QVERIFY2(ErrorCount() > errorsBefore, qPrintable(command));
        }
        QVERIFY(host->ShownHelp().isEmpty());
        QVERIFY(host->ShelfButtons().isEmpty());

        // The quit path works without a window.
        LoadTestPlugin();
        QVERIFY(host->Quit());
        QCOMPARE(pluginLog, QStringList({QStringLiteral("quitApplication"), QStringLiteral("uninitialize")}));
    }

private:
    HostMainWindow* Window() const { return host->HostWindow(); }

    void LoadTestPlugin()
    {
        QCOMPARE(host->LoadPlugin(TEST_PLUGIN, InitializeTestPlugin, UninitializeTestPlugin),
                 MStatus::kSuccess);
        pluginLog.clear();
    }

    QTemporaryDir appDir;
    std::unique_ptr<HostApplication> host;
    std::unique_ptr<OutputRecorder> recorder;
    int ErrorCount() const { return static_cast<int>(recorder->Errors().size()); }
};

QTEST_MAIN(TestHostUi)
#include "tst_HostUi.moc"
