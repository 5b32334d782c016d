#include "HostApplication.h"
#include "HostFixture.h"
#include "output/OutputTextEdit.h"
#include "output/PanelGroup.h"
#include "plugin/BrindletEditorCommand.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"

#include <maya/MGlobal.h>
#include <maya/MQtUtil.h>

#include <QtCore/QThread>
#include <QtGui/QAction>
#include <QtGui/QClipboard>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

// The plug-in driven end to end through the substitute host: load, the command and its
// flags, output formatting through the real callback, quit and unload.
class TestPluginLifecycle : public QObject
{
    Q_OBJECT

private:
    // The commands of the host's status-line symbol buttons.
    static QStringList ButtonCommands()
    {
        QStringList buttons;
        MayaUtil::ExecuteMelStringArrayResult(QStringLiteral("lsUI -type symbolButton"), buttons);
        QStringList commands;
        for (const QString& button : buttons)
        {
            QString command;
            MayaUtil::ExecuteMelStringResult(QStringLiteral("symbolButton -q -c %1").arg(button), command);
            commands.append(command);
        }
        return commands;
    }

    static QString Output()
    {
        return BrindletEditorCommand::editorWidget->GetPanelGroup()->GetOutputTextEdit()->GetText();
    }

private slots:
    void firstFormattedMessageUsesTheMelCommentToken()
    {
        // Runs first: the comment token is kept from message to message for the process.
        HostFixture fixture;
        QVERIFY(fixture.LoadPlugin() == MStatus::kSuccess);
        QVERIFY(fixture.OpenEditor());
        MGlobal::displayInfo("hello");
        QVERIFY(Output().endsWith(QStringLiteral("// hello //\n")));
    }

    void loadInstallsCommandMenuButtonAndCallbacks()
    {
        HostFixture fixture;
        QVERIFY(fixture.LoadPlugin() == MStatus::kSuccess);
        QCOMPARE(fixture.MelString(QStringLiteral("brindletEditor2 -v")), QStringLiteral("2.7.6"));
        QCOMPARE(fixture.MelString(QStringLiteral("brindletEditor2 -version")), QStringLiteral("2.7.6"));
        QCOMPARE(MayaUtil::callbackIds.length(), 2u);
        QVERIFY(!MayaUtil::mainMenuItemName.isEmpty());
        QAction* item = MQtUtil::findMenuItem(MayaUtil::ToMString(MayaUtil::mainMenuItemName));
        QVERIFY(item);
        QCOMPARE(item->text(), QStringLiteral("Brindlet Editor 2"));
        QVERIFY(ButtonCommands().contains(QStringLiteral("brindletEditor2")));
        QVERIFY(!ButtonCommands().contains(QStringLiteral("ScriptEditor")));
        QVERIFY(MayaUtil::melCommands.contains(QStringLiteral("brindletEditor2")));
        QVERIFY(!BrindletEditorCommand::GuiAvailable());
        // The settings file's folder exists from the first read on.
        QVERIFY(QDir(fixture.UserConfigDirectory()).exists());
    }

    void menuItemOpensTheEditor()
    {
        HostFixture fixture;
        fixture.LoadPlugin();
        QAction* item = MQtUtil::findMenuItem(MayaUtil::ToMString(MayaUtil::mainMenuItemName));
        QVERIFY(item);
        item->trigger();
        QVERIFY(BrindletEditorCommand::GuiAvailable());
    }

    void plainRunOpensOneEditorInTheWorkspaceControl()
    {
        HostFixture fixture;
        fixture.LoadPlugin();
        BrindletEditor* editor = fixture.OpenEditor();
        QVERIFY(editor);
        QWidget* control = MayaUtil::GetWorkspaceControl();
        QVERIFY(control);
        QVERIFY(control->isAncestorOf(editor));
        QVERIFY(MayaUtil::WorkspaceControlExists());
        QVERIFY(MayaUtil::WorkspaceControlVisible());
        QVERIFY(MayaUtil::WorkspaceControlFloating());

        // Closing the panel only hides it; the next run shows the same widget.
        MayaUtil::SetWorkspaceControlVisible(false);
        QVERIFY(!MayaUtil::WorkspaceControlVisible());
        MGlobal::displayInfo("while hidden");
        QVERIFY(fixture.OpenEditor() == editor);
        QVERIFY(MayaUtil::WorkspaceControlVisible());
        QVERIFY(Output().contains(QStringLiteral("while hidden")));
    }

    void firstFlagWins()
    {
        HostFixture fixture;
        fixture.LoadPlugin();
        fixture.OpenEditor();
        MGlobal::displayInfo("keep me");
        QCOMPARE(fixture.MelString(QStringLiteral("brindletEditor2 -v -co")), QStringLiteral("2.7.6"));
        QVERIFY(Output().contains(QStringLiteral("keep me")));
        QVERIFY(fixture.Mel(QStringLiteral("brindletEditor2 -clearOutput")) == MStatus::kSuccess);
        QVERIFY(!Output().contains(QStringLiteral("keep me")));
    }

    void unknownFlagFails()
    {
        HostFixture fixture;
        fixture.LoadPlugin();
        QVERIFY(fixture.Mel(QStringLiteral("brindletEditor2 -bogus")) != MStatus::kSuccess);
        QVERIFY(!fixture.MessagesOfType(MCommandMessage::kError).isEmpty());
        QVERIFY(!BrindletEditorCommand::GuiAvailable());
    }

    void clearOutputBeforeTheEditorClearsTheHostHistory()
    {
        HostFixture fixture;
        fixture.LoadPlugin();
        MGlobal::displayInfo("before the editor");
        QVERIFY(fixture.Mel(QStringLiteral("brindletEditor2 -co")) == MStatus::kSuccess);
        MGlobal::displayInfo("after clearing");
        fixture.OpenEditor();
        QVERIFY(!Output().contains(QStringLiteral("before the editor")));
        QVERIFY(Output().contains(QStringLiteral("after clearing")));
    }

    void outputBeforeTheEditorArrivesThroughTheHistory()
    {
        HostFixture fixture;
        fixture.LoadPlugin();
        MGlobal::executeCommand("print \"early line\\n\"", true);
        fixture.OpenEditor();
        QVERIFY(Output().contains(QStringLiteral("early line")));
    }

    void openFileChecksItsArgument()
    {
        HostFixture fixture;
        fixture.LoadPlugin();
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("a b.py"));
        QFile(file).open(QIODevice::WriteOnly);

        QVERIFY(fixture.Mel(QStringLiteral("brindletEditor2 -of \"\"")) == MStatus::kSuccess);
        QVERIFY(fixture.Mel(QStringLiteral("brindletEditor2 -of \"%1\"").arg(dir.filePath("none.py"))) !=
                MStatus::kSuccess);
        QVERIFY(fixture.HasMessageContaining(
            QStringLiteral("[BrindletEditor2] File not found: %1").arg(dir.filePath("none.py"))));
        QVERIFY(fixture.Mel(QStringLiteral("brindletEditor2 -openFile \"%1\"").arg(dir.path())) !=
                MStatus::kSuccess);
        QVERIFY(fixture.HasMessageContaining(QStringLiteral("Invalid file path: %1").arg(dir.path())));
        QVERIFY(fixture.Mel(QStringLiteral("brindletEditor2 -of \"%1\"").arg(file)) != MStatus::kSuccess);
        QVERIFY(
            fixture.HasMessageContaining(QStringLiteral("Brindlet Editor 2 GUI has not been initialized.")));
        QVERIFY(!BrindletEditorCommand::GuiAvailable());
    }

    void revertModuleStateWithoutEditorSucceeds()
    {
        HostFixture fixture;
        fixture.LoadPlugin();
        QVERIFY(fixture.Mel(QStringLiteral("brindletEditor2 -rms")) == MStatus::kSuccess);
    }

    void messagesAreWrappedByTheLastEcho()
    {
        HostFixture fixture;
        fixture.LoadPlugin();
        fixture.OpenEditor();

        MGlobal::executeCommand("stackTrace -q -state", true);
        MGlobal::displayWarning("careful");
        QVERIFY(Output().endsWith(
            QStringLiteral("stackTrace -q -state;\n// Result: 0 //\n// Warning: careful //\n")));
        // Printed text sets the token too: what does not end a MEL statement is Python's.
        MGlobal::executeCommand("print \"mel\\n\"", true);
        MGlobal::displayError("broken");
        QVERIFY(Output().endsWith(QStringLiteral("mel\n# Error: broken #\n")));

        MGlobal::executePythonCommand("2 + 3", true);
        QVERIFY(Output().endsWith(QStringLiteral("2 + 3\n# Result: 5 #\n")));
        MGlobal::displayInfo("info %1 stays");
        QVERIFY(Output().endsWith(QStringLiteral("# info %1 stays #\n")));

        MGlobal::executeCommand("about -version", true);
        QVERIFY(Output().endsWith(QStringLiteral("about -version;\n// Result: 2026 //\n")));
    }

    void minimalTraceDropsEchoesButKeepsTheirToken()
    {
        HostFixture fixture;
        fixture.LoadPlugin();
        fixture.OpenEditor();
        Settings::outputMinimalTrace = true;
        MGlobal::executePythonCommand("6 * 7", true);
        QVERIFY(!Output().contains(QStringLiteral("6 * 7")));
        QVERIFY(Output().endsWith(QStringLiteral("# Result: 42 #\n")));
        Settings::outputMinimalTrace = false;
    }

    void stackTracesAndHiddenCallsStayOut()
    {
        HostFixture fixture;
        fixture.LoadPlugin();
        fixture.OpenEditor();
        MGlobal::executePythonCommand("def f():\n    raise ValueError('deep')\nf()", true);
        QVERIFY(Output().contains(QStringLiteral("# Error: ")));
        QVERIFY(Output().contains(QStringLiteral("deep")));
        QVERIFY(!Output().contains(QStringLiteral("Traceback")));
        MayaUtil::ExecutePythonHidden(QStringLiteral("print('secret')"));
        QVERIFY(!Output().contains(QStringLiteral("secret")));
        QCOMPARE(Settings::traceHideAll, false);
    }

    void outputFromAnotherThreadArrivesInOrder()
    {
        HostFixture fixture;
        fixture.LoadPlugin();
        fixture.OpenEditor();
        BrindletEditorCommand::editorWidget->ClearHistory();
        QThread* worker = QThread::create(
            []
            {
                for (int i = 0; i < 500; ++i)
                    BrindletEditorCommand::AppendToOutput(QStringLiteral("line %1\n").arg(i));
            });
        worker->start();
        QVERIFY(worker->wait(10000));
        delete worker;
        QTRY_VERIFY(Output().count(QLatin1Char('\n')) >= 500);
        const QStringList lines = Output().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (int i = 0; i < 500; ++i)
            QCOMPARE(lines.at(i), QStringLiteral("line %1").arg(i));
    }

    void quitShutsDownThenUnloads()
    {
        HostFixture fixture;
        fixture.LoadPlugin();
        fixture.OpenEditor();
        const QString menuItem = MayaUtil::mainMenuItemName;
        Settings::outputBufferSize = 4321;
        QVERIFY(fixture.Host().Quit());
        QVERIFY(!BrindletEditorCommand::GuiAvailable());
        QVERIFY(MQtUtil::findMenuItem(MayaUtil::ToMString(menuItem)) == nullptr);
        QVERIFY(MayaUtil::mainMenuItemName.isEmpty());
        QVERIFY(MayaUtil::scriptEditorButtonName.isEmpty());
        QVERIFY(ButtonCommands().contains(QStringLiteral("ScriptEditor")));
        QVERIFY(!ButtonCommands().contains(QStringLiteral("brindletEditor2")));
        QVERIFY(!MayaUtil::WorkspaceControlVisible());
        QVERIFY(fixture.Mel(QStringLiteral("brindletEditor2 -v")) != MStatus::kSuccess);
        QVERIFY(!fixture.HasMessageContaining(QStringLiteral("Failed to remove callbacks")));
        QVERIFY(!fixture.HasMessageContaining(QStringLiteral("Failed to remove")));
        QCOMPARE(MayaUtil::callbackIds.length(), 0u);
        // The settings reached the disk.
        QSettings raw(Settings::GetUserConfigPath(), QSettings::IniFormat);
        QCOMPARE(raw.value(QStringLiteral("preferences/outputBufferSize")).toInt(), 4321);
    }

    void shutdownTwiceIsHarmless()
    {
        HostFixture fixture;
        fixture.LoadPlugin();
        fixture.OpenEditor();
        BrindletEditorCommand::Shutdown();
        BrindletEditorCommand::Shutdown();
        QVERIFY(fixture.UnloadPlugin() == MStatus::kSuccess);
        QVERIFY(fixture.MessagesOfType(MCommandMessage::kError).isEmpty());
        // A second load works and opens a fresh editor.
        QVERIFY(fixture.LoadPlugin() == MStatus::kSuccess);
        QVERIFY(fixture.OpenEditor());
    }

    void batchModeLoadsEmptyAndStillClearsTheClipboard()
    {
        HostFixture fixture(true);
        QVERIFY(fixture.LoadPlugin() == MStatus::kSuccess);
        QCOMPARE(MayaUtil::callbackIds.length(), 0u);
        QVERIFY(fixture.Mel(QStringLiteral("brindletEditor2 -v")) != MStatus::kSuccess);
        QVERIFY(fixture.HasMessageContaining(QStringLiteral("Cannot find procedure")));
        QApplication::clipboard()->setText(QStringLiteral("copied in batch"));
        QVERIFY(fixture.UnloadPlugin() == MStatus::kSuccess);
        QVERIFY(QApplication::clipboard()->text().isEmpty());
    }

    void startupOptionsReachTheHost()
    {
        HostFixture fixture;
        qputenv("BQ2_HOST_DPI_MODE", "1");
        qputenv("BQ2_HOST_DPI_SCALE", "1.5");
        MGlobal::setOptionVarValue("echoAllLines", 1);
        {
            QSettings ini(Settings::GetUserConfigPath(), QSettings::IniFormat);
            ini.setValue(QStringLiteral("preferences/outputMinimalTrace"), true);
        }
        fixture.LoadPlugin();
        // Echo-all and minimal trace exclude one another.
        QCOMPARE(Settings::outputMinimalTrace, false);
        QCOMPARE(Settings::customScaleValue, 1.5);
        fixture.UnloadPlugin();

        qputenv("BQ2_HOST_DPI_MODE", "2");
        {
            QSettings ini(Settings::GetUserConfigPath(), QSettings::IniFormat);
            ini.setValue(QStringLiteral("preferences/outputDisableEchoAllOnStartup"), true);
        }
        fixture.LoadPlugin();
        QCOMPARE(Settings::customScaleValue, 1.0);
        fixture.Host().ProcessIdleQueue();
        QCOMPARE(MGlobal::optionVarIntValue("echoAllLines"), 0);
        int state = -1;
        QVERIFY(MayaUtil::ExecuteMelIntResult(QStringLiteral("commandEcho -q -state"), state));
        QCOMPARE(state, 0);
        qunsetenv("BQ2_HOST_DPI_MODE");
        qunsetenv("BQ2_HOST_DPI_SCALE");
    }
};

QTEST_MAIN(TestPluginLifecycle)
#include "tst_PluginLifecycle.moc"
