#include "EditorWindow.h"
#include "HostApplication.h"
#include "HostCallbacks.h"
#include "HostMainWindow.h"
#include "ShellFixture.h"
#include "TestFiles.h"
#include "output/OutputTextEdit.h"
#include "output/PanelGroup.h"
#include "plugin/BrindletEditorCommand.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "tabs/CodeEditorGroup.h"

#include <maya/MGlobal.h>
#include <maya/MQtUtil.h>

#include <QtCore/QThread>
#include <QtGui/QAction>
#include <QtGui/QClipboard>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>

// The plug-in driven end to end through the substitute host: load, the command and its
// flags, its panel, output formatting through the real callback, quit and unload.
class TestPluginLifecycle : public ShellFixture
{
    Q_OBJECT

public:
    TestPluginLifecycle() { openEditor = false; }

private:
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

    static int Collapsed()
    {
        return MelInt(QStringLiteral("workspaceControl -q -collapse %1").arg(MayaUtil::workspaceControlName));
    }

    static int Loaded(const char* module)
    {
        return PythonInt(QStringLiteral("int('%1' in sys.modules)").arg(QLatin1String(module)));
    }

private slots:
    void firstCallInTheProcess()
    {
        // Runs first: the first call and the comment token are once per process.
        // As Maya restores the panel from its layout before anybody runs the command.
        QVERIFY(fixture->Mel(QStringLiteral("workspaceControl -collapse true %1")
                                 .arg(MayaUtil::workspaceControlName)) == MStatus::kSuccess);
        QVERIFY(fixture->OpenEditor());
        QCOMPARE(Collapsed(), 1);
        // Every later call brings it back.
        QVERIFY(fixture->OpenEditor());
        QCOMPARE(Collapsed(), 0);
        // No echo yet: the first message is wrapped in MEL's comment token.
        MGlobal::displayInfo("hello");
        QVERIFY2(Output().endsWith(QStringLiteral("// hello //\n")), qPrintable(Output()));
        fixture->Mel(
            QStringLiteral("workspaceControl -e -collapse true %1").arg(MayaUtil::workspaceControlName));
        QVERIFY(fixture->OpenEditor());
        QCOMPARE(Collapsed(), 0);
    }

    void loadInstallsCommandMenuButtonAndCallbacks()
    {
        QCOMPARE(fixture->MelString(QStringLiteral("brindletEditor2 -v")), QStringLiteral("2.7.6"));
        QCOMPARE(fixture->MelString(QStringLiteral("brindletEditor2 -version")), QStringLiteral("2.7.6"));
        QCOMPARE(MayaUtil::callbackIds.length(), 2u);
        QAction* item = MQtUtil::findMenuItem(MayaUtil::ToMString(MayaUtil::mainMenuItemName));
        QVERIFY(item);
        QCOMPARE(item->text(), QStringLiteral("Brindlet Editor 2"));
        QVERIFY(ButtonCommands().contains(QStringLiteral("brindletEditor2")));
        QVERIFY(!ButtonCommands().contains(QStringLiteral("ScriptEditor")));
        QVERIFY(MayaUtil::melCommands.contains(QStringLiteral("brindletEditor2")));
        QVERIFY(!BrindletEditorCommand::GuiAvailable());
        // The settings file's folder exists from the first read on.
        QVERIFY(QDir(fixture->UserConfigDirectory()).exists());
        // Opened, the menu still lists the host's own editors beside the item.
        emit fixture->Host().HostWindow()->GeneralEditorsMenu()->aboutToShow();
        QVERIFY(MQtUtil::findMenuItem(MString("wmScriptEditorItem")));
        item->trigger();
        QVERIFY(BrindletEditorCommand::GuiAvailable());
    }

    void plainRunOpensOneEditorInTheWorkspaceControl()
    {
        BrindletEditor* editor = fixture->OpenEditor();
        QVERIFY(editor);
        QVERIFY(MayaUtil::GetWorkspaceControl() && MayaUtil::GetWorkspaceControl()->isAncestorOf(editor));
        QVERIFY(MayaUtil::WorkspaceControlExists());
        QVERIFY(MayaUtil::WorkspaceControlVisible());
        QVERIFY(MayaUtil::WorkspaceControlFloating());

        // Closing the panel only hides it; the next run shows the same widget.
        MayaUtil::SetWorkspaceControlVisible(false);
        QVERIFY(!MayaUtil::WorkspaceControlVisible());
        MGlobal::displayInfo("while hidden");
        QVERIFY(fixture->OpenEditor() == editor);
        QVERIFY(MayaUtil::WorkspaceControlVisible());
        QVERIFY(Output().contains(QStringLiteral("while hidden")));
    }

    void commandFlags_data()
    {
        QTest::addColumn<bool>("editorOpen");
        QTest::addColumn<QString>("command");
        QTest::addColumn<bool>("succeeds");
        QTest::addColumn<QString>("told");
        // Whether a line printed before the command is in the editor's output afterwards.
        QTest::addColumn<bool>("earlierLineShown");
        const QString gui = QStringLiteral("Brindlet Editor 2 GUI has not been initialized.");
        QTest::newRow("the first flag wins") << true << "-v -co" << true << "" << true;
        QTest::newRow("clear output") << true << "-clearOutput" << true << "" << false;
        QTest::newRow("clear before the editor") << false << "-co" << true << "" << false;
        QTest::newRow("open before the editor") << false << "" << true << "" << true;
        QTest::newRow("unknown flag") << false << "-bogus" << false << "Invalid flag" << true;
        QTest::newRow("open no file") << false << "-of \"\"" << true << "" << true;
        QTest::newRow("open a missing file") << false << "-of \"DIR/none.py\"" << false
                                             << "[BrindletEditor2] File not found: DIR/none.py" << true;
        QTest::newRow("open a folder")
            << false << "-openFile \"DIR\"" << false << "Invalid file path: DIR" << true;
        QTest::newRow("open a file before the editor")
            << false << "-of \"DIR/a b.py\"" << false << gui << true;
        QTest::newRow("open a file") << true << "-openFile \"DIR/a b.py\"" << true << "" << true;
        QTest::newRow("revert before the editor") << false << "-rms" << true << "" << true;
    }

    void commandFlags()
    {
        QFETCH(bool, editorOpen);
        QFETCH(QString, command);
        QFETCH(bool, succeeds);
        QFETCH(QString, told);
        QVERIFY(TestFiles::Write(files->filePath(QStringLiteral("a b.py")), "x = 1\n"));
        if (editorOpen)
            QVERIFY(fixture->OpenEditor());
        MGlobal::executeCommand("print \"earlier line\\n\"", true);
        fixture->ClearMessages();
        command.replace(QLatin1String("DIR"), files->path());
        told.replace(QLatin1String("DIR"), files->path());
        QCOMPARE(fixture->Mel(QStringLiteral("brindletEditor2 ") + command) == MStatus::kSuccess, succeeds);
        // An error is printed exactly where one is expected, and it names the fault.
        const QStringList errors = fixture->MessagesOfType(MCommandMessage::kError);
        QVERIFY2(told.isEmpty() ? errors.isEmpty() : errors.join(QLatin1Char('\n')).contains(told),
                 qPrintable(errors.join(QLatin1Char('\n'))));
        // Only the plain call opens an editor.
        QCOMPARE(BrindletEditorCommand::GuiAvailable(), editorOpen || command.isEmpty());
        QVERIFY(fixture->OpenEditor());
        QTEST(Output().contains(QStringLiteral("earlier line")), "earlierLineShown");
        // A file opened goes into a tab of its own, made current, behind the two buffers.
        CodeEditorGroup* group = EditorWindow::Active(*fixture);
        QCOMPARE(group->GetCount(), succeeds && command.contains(QLatin1String(".py")) ? 3 : 2);
        QCOMPARE(group->GetText(group->GetCurrentIndex()),
                 group->GetCount() == 3 ? QStringLiteral("x = 1\n") : QString());
    }

    void revertModuleStateWithAnEditorOpen()
    {
        QVERIFY(EditorWindow::Open(*fixture));
        // The first show took the snapshot of the loaded modules.
        fixture->Host().ProcessIdleQueue();
        MayaUtil::ExecutePython(QStringLiteral("import sys\nsys.modules.pop('fractions', None)"));
        MayaUtil::ExecutePython(QStringLiteral("import fractions"));
        QCOMPARE(Loaded("fractions"), 1);
        QVERIFY(fixture->Mel(QStringLiteral("brindletEditor2 -revertModuleState")) == MStatus::kSuccess);
        fixture->Host().ProcessIdleQueue();
        QCOMPARE(Loaded("fractions"), 0);
        QCOMPARE(Loaded("sys"), 1);
        QVERIFY(fixture->HasMessageContaining(QStringLiteral("Python module state reverted.")));
    }

    void messagesAreWrappedByTheLastEcho()
    {
        fixture->OpenEditor();

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

        // Stack traces and hidden calls stay out.
        MGlobal::executePythonCommand("def f():\n    raise ValueError('deep')\nf()", true);
        QVERIFY2(Output().contains(QStringLiteral("# Error: ValueError")), qPrintable(Output()));
        QVERIFY(!Output().contains(QStringLiteral("Traceback")));
        MayaUtil::ExecutePythonHidden(QStringLiteral("print('secret')"));
        QVERIFY(!Output().contains(QStringLiteral("secret")));
        QCOMPARE(Settings::traceHideAll, false);

        // A minimal trace drops the echoes but keeps their token.
        Settings::outputMinimalTrace = true;
        MGlobal::executePythonCommand("6 * 7", true);
        QVERIFY(!Output().contains(QStringLiteral("6 * 7")));
        QVERIFY(Output().endsWith(QStringLiteral("# Result: 42 #\n")));
        Settings::outputMinimalTrace = false;
    }

    void outputFromAnotherThreadArrivesInOrder()
    {
        fixture->OpenEditor();
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
        fixture->OpenEditor();
        const QString menuItem = MayaUtil::mainMenuItemName;
        Settings::outputBufferSize = 4321;
        QVERIFY(fixture->Host().Quit());
        QVERIFY(!BrindletEditorCommand::GuiAvailable());
        QVERIFY(MQtUtil::findMenuItem(MayaUtil::ToMString(menuItem)) == nullptr);
        QVERIFY(ButtonCommands().contains(QStringLiteral("ScriptEditor")));
        QVERIFY(!ButtonCommands().contains(QStringLiteral("brindletEditor2")));
        QVERIFY(!MayaUtil::WorkspaceControlVisible());
        QVERIFY(fixture->Mel(QStringLiteral("brindletEditor2 -v")) != MStatus::kSuccess);
        QVERIFY(!fixture->HasMessageContaining(QStringLiteral("Failed to remove")));
        QCOMPARE(MayaUtil::callbackIds.length(), 0u);
        QSettings raw(Settings::GetUserConfigPath(), QSettings::IniFormat);
        QCOMPARE(raw.value(QStringLiteral("preferences/outputBufferSize")).toInt(), 4321);
    }

    void shutdownTwiceIsHarmless()
    {
        // Maya's quit event shuts the editor down on its own, before any unload.
        fixture->OpenEditor();
        HostCallbacks::FireEvent(QStringLiteral("quitApplication"));
        QVERIFY(!BrindletEditorCommand::GuiAvailable());
        BrindletEditorCommand::Shutdown();
        QVERIFY(fixture->UnloadPlugin() == MStatus::kSuccess);
        QVERIFY(fixture->MessagesOfType(MCommandMessage::kError).isEmpty());
        QVERIFY(fixture->LoadPlugin() == MStatus::kSuccess);
        QVERIFY(fixture->OpenEditor());
    }

    void batchModeLoadsEmptyAndStillClearsTheClipboard()
    {
        fixture.reset();
        fixture = std::make_unique<HostFixture>(true);
        QVERIFY(fixture->LoadPlugin() == MStatus::kSuccess);
        QCOMPARE(MayaUtil::callbackIds.length(), 0u);
        QVERIFY(fixture->Mel(QStringLiteral("brindletEditor2 -v")) != MStatus::kSuccess);
        QVERIFY(fixture->HasMessageContaining(QStringLiteral("Cannot find procedure")));
        QApplication::clipboard()->setText(QStringLiteral("copied in batch"));
        QVERIFY(fixture->UnloadPlugin() == MStatus::kSuccess);
        QVERIFY(QApplication::clipboard()->text().isEmpty());
    }

    void startupOptionsReachTheHost()
    {
        QVERIFY(fixture->UnloadPlugin() == MStatus::kSuccess);
        qputenv("BQ2_HOST_DPI_MODE", "1");
        qputenv("BQ2_HOST_DPI_SCALE", "1.5");
        MGlobal::setOptionVarValue("echoAllLines", 1);
        WriteSetting(QStringLiteral("preferences/outputMinimalTrace"), true);
        fixture->LoadPlugin();
        // Echo-all and minimal trace exclude one another.
        QCOMPARE(Settings::outputMinimalTrace, false);
        QCOMPARE(Settings::customScaleValue, 1.5);
        fixture->UnloadPlugin();

        qputenv("BQ2_HOST_DPI_MODE", "2");
        WriteSetting(QStringLiteral("preferences/outputDisableEchoAllOnStartup"), true);
        fixture->LoadPlugin();
        QCOMPARE(Settings::customScaleValue, 1.0);
        fixture->Host().ProcessIdleQueue();
        QCOMPARE(MGlobal::optionVarIntValue("echoAllLines"), 0);
        QCOMPARE(MelInt(QStringLiteral("commandEcho -q -state")), 0);
        qunsetenv("BQ2_HOST_DPI_MODE");
        qunsetenv("BQ2_HOST_DPI_SCALE");
    }

    // A floating panel across restarts: it comes back where the user left it, frame for frame.
    void floatingPanelStaysPutAcrossRestarts_data()
    {
        QTest::addColumn<QRect>("frame");
        QTest::newRow("where the user put it") << QRect(141, 70, 998, 679);
        QTest::newRow("near the origin") << QRect(0, 0, 640, 480);
    }

    void floatingPanelStaysPutAcrossRestarts()
    {
        QFETCH(QRect, frame);
        BrindletEditor* editor = fixture->OpenEditor();
        QVERIFY(editor);
        QWidget* window = editor->window();
        QVERIFY(window != editor && window != MayaUtil::GetMainWindow());
        // The user drags and sizes the floating window: a move places its frame, a resize its inside.
        window->move(frame.topLeft());
        window->resize(frame.size() - (window->frameGeometry().size() - window->size()));
        QCoreApplication::processEvents();
        QCOMPARE(window->frameGeometry(), frame);
        const QRect editorArea(editor->mapToGlobal(QPoint(0, 0)), editor->size());
        for (int restart = 1; restart <= 3; ++restart)
        {
            fixture->Restart();
            QSettings file(Settings::GetUserConfigPath(), QSettings::IniFormat);
            QCOMPARE(file.value(QStringLiteral("main/windowGeometry")).toRect(), frame);
            editor = fixture->OpenEditor();
            QVERIFY(editor);
            QCOMPARE(editor->window()->frameGeometry(), frame);
            QCOMPARE(QRect(editor->mapToGlobal(QPoint(0, 0)), editor->size()), editorArea);
        }
    }
};

QTEST_MAIN(TestPluginLifecycle)
#include "tst_PluginLifecycle.moc"
