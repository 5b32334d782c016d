// The substitute host's interface side: workspace controls, menu, status line, shelf, command
// line, MQtUtil and the quit path, driven through MEL text and real widgets.
#include "HostApplication.h"
#include "HostCommandLine.h"
#include "HostCommandResult.h"
#include "HostMainWindow.h"
#include "HostMel.h"
#include "HostPlugins.h"
#include "MelText.h"
#include "OutputRecorder.h"
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>
#include <maya/MCommandMessage.h>
#include <maya/MCommandResult.h>
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
int countCalls = 0;
QStringList countArguments;

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
    explicit CloseVeto(bool consume) : consume(consume) {}
    int seen = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::Close)
            return QObject::eventFilter(watched, event);
        ++seen;
        event->ignore();
        return consume;
    }

private:
    bool consume;
};

} // namespace

class TestHostUi : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void workspaceControlCreateQueryEdit();
    void workspaceControlCloseAndRetain();
    void workspaceControlTitleBarClose();
    void qtUtilLookups();
    void scriptEditorCommand();
    void quitVetoedThenCompleted();
    void userCloseRunsQuitOnce();
    void quitCommandIsQueued();
    void commandLineRunsAndRecalls();
    void batchModeFailures();

private:
    HostMainWindow* Window() const;
    void LoadTestPlugin();

    std::unique_ptr<HostApplication> host;
    std::unique_ptr<OutputRecorder> recorder;
    int ErrorCount() const { return static_cast<int>(recorder->Errors().size()); }
};

void TestHostUi::initTestCase()
{
    HostMel::RegisterCommand(QStringLiteral("hostUiTestCount"), {},
                             [](const HostMelCall& call, MCommandResult&)
                             {
                                 ++countCalls;
                                 countArguments.append(call.positionals);
                                 return MStatus(MStatus::kSuccess);
                             });
}

void TestHostUi::init()
{
    pluginLog.clear();
    recorder = std::make_unique<OutputRecorder>();
    countCalls = 0;
    countArguments.clear();
    host = std::make_unique<HostApplication>(false);
}

void TestHostUi::cleanup()
{
    recorder.reset();
    host.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

HostMainWindow* TestHostUi::Window() const
{
    return host->HostWindow();
}

void TestHostUi::LoadTestPlugin()
{
    QCOMPARE(host->LoadPlugin(TEST_PLUGIN, InitializeTestPlugin, UninitializeTestPlugin), MStatus::kSuccess);
    pluginLog.clear();
}

void TestHostUi::workspaceControlCreateQueryEdit()
{
    QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -exists testPanel")), 0);
    QCOMPARE(MelString(QStringLiteral("workspaceControl -label \"Test Panel\" -retain 1 -floating 0 "
                                      "-visible 1 -uiScript \"print 1\" -initialWidth 300 testPanel")),
             QStringLiteral("testPanel"));

    auto* dock = Window()->findChild<QDockWidget*>(QStringLiteral("testPanel"));
    QVERIFY(dock);
    QCOMPARE(dock->windowTitle(), QStringLiteral("Test Panel"));
    QVERIFY(Window()->dockWidgetArea(dock) != Qt::NoDockWidgetArea);
    QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -ex testPanel")), 1);
    QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -vis testPanel")), 1);
    QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -floating testPanel")), 0);
    QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -collapse testPanel")), 0);
    QCOMPARE(MelString(QStringLiteral("workspaceControl -q -l testPanel")), QStringLiteral("Test Panel"));
    QCOMPARE(host->WorkspaceControlUiScript(QStringLiteral("testPanel")), QStringLiteral("print 1"));

    // Hiding, collapsing and restoring are driven by the plug-in's own tests.
    QCOMPARE(Mel(QStringLiteral("workspaceControl -e -l \"Renamed\" -fl 1 -uiScript \"brindletEditor2\" "
                                "testPanel")),
             MStatus::kSuccess);
    QCOMPARE(dock->windowTitle(), QStringLiteral("Renamed"));
    QVERIFY(dock->isFloating());
    QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -fl testPanel")), 1);
    QCOMPARE(host->WorkspaceControlUiScript(QStringLiteral("testPanel")), QStringLiteral("brindletEditor2"));

    // A second control of the same name, and any question about a missing one, fail loudly.
    const int errorsBefore = ErrorCount();
    QCOMPARE(Mel(QStringLiteral("workspaceControl testPanel")), MStatus::kFailure);
    QCOMPARE(Mel(QStringLiteral("workspaceControl -q -visible missingPanel")), MStatus::kFailure);
    QCOMPARE(Mel(QStringLiteral("workspaceControl -e -restore missingPanel")), MStatus::kFailure);
    QCOMPARE(ErrorCount(), errorsBefore + 3);
    QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -exists missingPanel")), 0);
}

void TestHostUi::workspaceControlCloseAndRetain()
{
    QCOMPARE(Mel(QStringLiteral("workspaceControl -rt 1 keptPanel")), MStatus::kSuccess);
    QCOMPARE(Mel(QStringLiteral("workspaceControl -e -close keptPanel")), MStatus::kSuccess);
    QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -exists keptPanel")), 1);
    QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -visible keptPanel")), 0);
    QCOMPARE(Mel(QStringLiteral("workspaceControl -e -rs keptPanel")), MStatus::kSuccess);
    QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -visible keptPanel")), 1);

    QCOMPARE(Mel(QStringLiteral("workspaceControl -retain 0 droppedPanel")), MStatus::kSuccess);
    QPointer<QWidget> content = MQtUtil::findControl("droppedPanel");
    QVERIFY(content);
    QCOMPARE(Mel(QStringLiteral("workspaceControl -e -cl droppedPanel")), MStatus::kSuccess);
    QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -exists droppedPanel")), 0);
    QVERIFY(!MQtUtil::findControl("droppedPanel"));
    QVERIFY(!MQtUtil::getCurrentParent());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(content.isNull());

    // deleteUI removes a retained control too.
    QCOMPARE(Mel(QStringLiteral("deleteUI keptPanel")), MStatus::kSuccess);
    QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -exists keptPanel")), 0);
    QCOMPARE(Mel(QStringLiteral("deleteUI keptPanel")), MStatus::kFailure);
}

void TestHostUi::workspaceControlTitleBarClose()
{
    host->ShowMainWindow();
    QVERIFY(QTest::qWaitForWindowExposed(Window()));
    QCOMPARE(Mel(QStringLiteral("workspaceControl -rt 1 keptPanel")), MStatus::kSuccess);
    QCOMPARE(Mel(QStringLiteral("workspaceControl -rt 0 droppedPanel")), MStatus::kSuccess);

    const auto clickClose = [this](const QString& name)
    {
        auto* dock = Window()->findChild<QDockWidget*>(name);
        auto* button =
            dock ? dock->findChild<QAbstractButton*>(QStringLiteral("qt_dockwidget_closebutton")) : nullptr;
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

void TestHostUi::qtUtilLookups()
{
    QCOMPARE(MQtUtil::mainWindow(), static_cast<QWidget*>(host->MainWindow()));
    QCOMPARE(MQtUtil::findWindow("MayaWindow"), static_cast<QWidget*>(host->MainWindow()));
    QVERIFY(!MQtUtil::getCurrentParent());

    QCOMPARE(Mel(QStringLiteral("workspaceControl panelA")), MStatus::kSuccess);
    QWidget* contentA = MQtUtil::getCurrentParent();
    QCOMPARE(Mel(QStringLiteral("workspaceControl panelB")), MStatus::kSuccess);
    QWidget* contentB = MQtUtil::getCurrentParent();
    QVERIFY(contentA && contentB && contentA != contentB);
    QCOMPARE(MQtUtil::findControl("panelA"), contentA);
    QCOMPARE(MQtUtil::findControl("panelB"), contentB);
    QVERIFY(qobject_cast<QDockWidget*>(contentB->parentWidget()));
    QCOMPARE(MQtUtil::toQString(MQtUtil::fullName(contentB)), QStringLiteral("MayaWindow|panelB|panelB"));
    QCOMPARE(MQtUtil::findControl(MQtUtil::fullName(contentB)), contentB);
    QVERIFY(!MQtUtil::findControl("noSuchControl"));
    QCOMPARE(MQtUtil::findControl("commandLineField", host->MainWindow()),
             static_cast<QWidget*>(Window()->CommandLine()->InputField()));

    auto* label = new QLabel(QStringLiteral("child"));
    QVERIFY(!MQtUtil::addWidgetToMayaLayout(label, contentB).isEmpty());
    QCOMPARE(label->parentWidget(), contentB);
    QVERIFY(contentB->layout()->indexOf(label) >= 0);

    auto* bare = new QWidget(host->MainWindow());
    bare->setObjectName(QStringLiteral("bareLayout"));
    QCOMPARE(MQtUtil::findLayout("bareLayout"), bare);
    auto* second = new QLabel(QStringLiteral("second"));
    QCOMPARE(MQtUtil::toQString(MQtUtil::addWidgetToMayaLayout(second, bare)),
             QStringLiteral("MayaWindow|bareLayout"));
    QVERIFY(qobject_cast<QVBoxLayout*>(bare->layout()));
    QCOMPARE(bare->layout()->contentsMargins(), QMargins());
    QVERIFY(MQtUtil::addWidgetToMayaLayout(nullptr, bare).isEmpty());
    QVERIFY(MQtUtil::addWidgetToMayaLayout(second, nullptr).isEmpty());

    const QString text = QStringLiteral("Gr\u00FC\u00DFe \u2713 \U0001F600");
    QCOMPARE(MQtUtil::toQString(MQtUtil::toMString(text)), text);
    QCOMPARE(QByteArray(MQtUtil::toMString(text).asUTF8()), text.toUtf8());
    QCOMPARE(MQtUtil::dpiScale(17), 17);
}

void TestHostUi::scriptEditorCommand()
{
    MGlobal::displayInfo("a line for the script editor");
    QCOMPARE(Mel(QStringLiteral("ScriptEditor")), MStatus::kSuccess);
    QWidget* window = MQtUtil::findWindow("scriptEditorPanel1Window");
    QVERIFY(window && window->isVisible());
    auto* view = window->findChild<QPlainTextEdit*>();
    QVERIFY(view && view->isReadOnly());
    QVERIFY(view->toPlainText().contains(QStringLiteral("a line for the script editor")));
}

void TestHostUi::quitVetoedThenCompleted()
{
    LoadTestPlugin();
    QSignalSpy finished(host.get(), &HostApplication::QuitFinished);

    // Vetoed both ways: the filter eats the event, or ignores it and passes it on.
    for (const bool consume : {true, false})
    {
        CloseVeto veto(consume);
        host->MainWindow()->installEventFilter(&veto);
        QVERIFY(!host->Quit());
        host->MainWindow()->removeEventFilter(&veto);
        QCOMPARE(veto.seen, 1);
        QVERIFY(!host->HasQuit());
        QVERIFY(HostPlugins::IsLoaded(TEST_PLUGIN));
        QVERIFY(pluginLog.isEmpty());
        QCOMPARE(finished.count(), 0);
    }

    host->ShowMainWindow();
    QVERIFY(host->Quit());
    QVERIFY(host->HasQuit());
    QCOMPARE(pluginLog, QStringList({QStringLiteral("quitApplication"), QStringLiteral("uninitialize")}));
    QVERIFY(!HostPlugins::IsLoaded(TEST_PLUGIN));
    QVERIFY(!host->MainWindow()->isVisible());
    QCOMPARE(finished.count(), 1);

    QVERIFY(host->Quit());
    QCOMPARE(finished.count(), 1);
    QCOMPARE(pluginLog.size(), 2);
}

void TestHostUi::userCloseRunsQuitOnce()
{
    LoadTestPlugin();
    QSignalSpy finished(host.get(), &HostApplication::QuitFinished);
    host->ShowMainWindow();
    QVERIFY(QTest::qWaitForWindowExposed(Window()));

    CloseVeto veto(true);
    Window()->installEventFilter(&veto);
    QVERIFY(!Window()->close());
    Window()->removeEventFilter(&veto);
    QVERIFY(!host->HasQuit());
    QVERIFY(pluginLog.isEmpty());

    QVERIFY(Window()->close());
    QVERIFY(host->HasQuit());
    QCOMPARE(pluginLog, QStringList({QStringLiteral("quitApplication"), QStringLiteral("uninitialize")}));
    QCOMPARE(finished.count(), 1);
    Window()->show();
    Window()->close();
    QVERIFY(host->Quit());
    QCOMPARE(finished.count(), 1);
    QCOMPARE(pluginLog.size(), 2);
}

void TestHostUi::quitCommandIsQueued()
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

void TestHostUi::commandLineRunsAndRecalls()
{
    HostCommandLine* commandLine = Window()->CommandLine();
    QLineEdit* input = commandLine->InputField();
    QTest::keyClicks(input, QStringLiteral("hostUiTestCount fromCommandLine; print \"mel says hi\\n\""));
    QTest::keyClick(input, Qt::Key_Return);
    QCOMPARE(countArguments, QStringList({QStringLiteral("fromCommandLine")}));
    QCOMPARE(commandLine->ResultText(), QStringLiteral("mel says hi"));
    QVERIFY(input->text().isEmpty());

    auto* languageButton = commandLine->findChild<QToolButton*>(QStringLiteral("commandLineLanguageButton"));
    QVERIFY(languageButton);
    QCOMPARE(languageButton->text(), QStringLiteral("MEL"));
    QTest::mouseClick(languageButton, Qt::LeftButton);
    QVERIFY(commandLine->IsPython());
    QCOMPARE(languageButton->text(), QStringLiteral("Python"));
    QTest::keyClicks(input, QStringLiteral("print(6 * 7)"));
    QTest::keyClick(input, Qt::Key_Return);
    QCOMPARE(commandLine->ResultText(), QStringLiteral("42"));

    QTest::keyClicks(input, QStringLiteral("unfinished"));
    QTest::keyClick(input, Qt::Key_Up);
    QCOMPARE(input->text(), QStringLiteral("print(6 * 7)"));
    QTest::keyClick(input, Qt::Key_Up);
    QVERIFY(input->text().startsWith(QStringLiteral("hostUiTestCount fromCommandLine")));
    QTest::keyClick(input, Qt::Key_Up);
    QVERIFY(input->text().startsWith(QStringLiteral("hostUiTestCount fromCommandLine")));
    QTest::keyClick(input, Qt::Key_Down);
    QTest::keyClick(input, Qt::Key_Down);
    QCOMPARE(input->text(), QStringLiteral("unfinished"));
}

void TestHostUi::batchModeFailures()
{
    host.reset();
    host = std::make_unique<HostApplication>(true);
    QVERIFY(!host->MainWindow());
    QVERIFY(!MQtUtil::mainWindow());
    QVERIFY(!MQtUtil::findControl("MayaWindow"));
    QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -exists anyPanel")), 0);

    const QStringList failing = {
        QStringLiteral("workspaceControl anyPanel"),
        QStringLiteral("workspaceControl -q -visible anyPanel"),
        QStringLiteral("workspaceControlState -e -tlc 1 2 -w 3 -h 4 anyPanel"),
        QStringLiteral("symbolButton -q -c anyButton"),
        QStringLiteral("showHelp DocsMelCommands"),
        QStringLiteral("scriptToShelf \"a\" \"b\" 1"),
        QStringLiteral("lsUI -type symbolButton"),
        QStringLiteral("deleteUI -mi menuItem1"),
        QStringLiteral("ScriptEditor"),
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

int main(int argc, char** argv)
{
    // Nothing may read the real home folder: the temporary prefs folder comes first.
    QTemporaryDir appDir;
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    TestHostUi test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_HostUi.moc"
