#include "HostApplication.h"
#include "ShellFixture.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"

#include <maya/MGlobal.h>

#include <QtTest/QtTest>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QMainWindow>

// The host bridge against the substitute host: the text each operation sends and what it
// makes of the answer.
class TestMayaUtil : public ShellFixture
{
    Q_OBJECT

public:
    TestMayaUtil() { openEditor = false; }

private slots:
    void init()
    {
        QVERIFY(Start());
        fixture->ClearMessages();
    }

    void scriptsRunOnIdleWhenAsked()
    {
        Settings::executeScriptOnIdle = true;
        MayaUtil::ExecutePythonScript(QStringLiteral("print('later')"));
        QVERIFY(!fixture->HasMessageContaining(QStringLiteral("later")));
        fixture->Host().ProcessIdleQueue();
        QVERIFY(fixture->HasMessageContaining(QStringLiteral("later")));
        Settings::executeScriptOnIdle = false;
    }

    void shelfScriptArrivesEscapedAsOneString()
    {
        const QString script =
            QStringLiteral("print \"a\\\"b\\\\c\";") + QChar(0x2029) + QStringLiteral("// done");
        MayaUtil::SaveScriptToShelf(QStringLiteral("My Tool"), script, true);
        QVERIFY(fixture->Host().ShelfButtons().isEmpty());
        fixture->Host().ProcessIdleQueue();
        QCOMPARE(fixture->Host().ShelfButtons(),
                 (QList<QPair<QString, QString>>{{"My Tool", "print \"a\\\"b\\\\c\";\n// done"}}));
    }

    void menuItemAndButtonAreMadeOnceAndGiveBack()
    {
        const QString item = MayaUtil::mainMenuItemName;
        const QString button = MayaUtil::scriptEditorButtonName;
        QVERIFY(!item.isEmpty() && !button.isEmpty());
        MayaUtil::CreateMainMenuItem();
        MayaUtil::OverrideScriptEditorButton();
        QCOMPARE(MayaUtil::mainMenuItemName, item);
        QCOMPARE(MayaUtil::scriptEditorButtonName, button);
        QCOMPARE(fixture->MelString(QStringLiteral("symbolButton -q -ann %1").arg(button)),
                 QStringLiteral("Brindlet Editor 2"));
        for (int twice = 0; twice < 2; ++twice)
        {
            MayaUtil::RemoveMainMenuItem();
            MayaUtil::RestoreScriptEditorButton();
        }
        QVERIFY(MayaUtil::mainMenuItemName.isEmpty() && MayaUtil::scriptEditorButtonName.isEmpty());
        QCOMPARE(fixture->MelString(QStringLiteral("symbolButton -q -ann %1").arg(button)),
                 QStringLiteral("Script Editor"));
        QVERIFY(fixture->MessagesOfType(MCommandMessage::kError).isEmpty());
        // Overridden already, no button answers "ScriptEditor": none other is taken.
        MayaUtil::OverrideScriptEditorButton();
        MayaUtil::OverrideScriptEditorButton();
        QCOMPARE(MayaUtil::scriptEditorButtonName, button);
        MayaUtil::scriptEditorButtonName.clear();
        MayaUtil::OverrideScriptEditorButton();
        QVERIFY(MayaUtil::scriptEditorButtonName.isEmpty());
        QVERIFY(fixture->HasMessageContaining(
            QStringLiteral("[BrindletEditor2] Failed to identify Script Editor button")));
    }

    void workspaceControlLabelAndPlace()
    {
        Settings::windowGeometry = QRect(40, 60, 700, 500);
        QVERIFY(MayaUtil::CreateWorkspaceControl());
        QVERIFY(MayaUtil::CreateWorkspaceControl() == nullptr);
        QWidget* control = MayaUtil::GetWorkspaceControl();
        QVERIFY(control);
        QCOMPARE(control->window()->frameGeometry(), QRect(40, 60, 700, 500));
        QCOMPARE(fixture->Host().WorkspaceControlUiScript(MayaUtil::workspaceControlName),
                 QStringLiteral("brindletEditor2"));

        // A floating panel shows the title it is given; a docked one always the plain title.
        MayaUtil::SetWorkspaceLabel(QStringLiteral("tool.py - Brindlet Editor 2"));
        QCOMPARE(control->window()->windowTitle(), QStringLiteral("tool.py - Brindlet Editor 2"));
        fixture->Mel(
            QStringLiteral("workspaceControl -e -floating 0 %1").arg(MayaUtil::workspaceControlName));
        MayaUtil::SetWorkspaceLabel(QStringLiteral("tool.py - Brindlet Editor 2"));
        auto* dock = qobject_cast<QDockWidget*>(
            fixture->Host().MainWindow()->findChild<QDockWidget*>(MayaUtil::workspaceControlName));
        QVERIFY(dock);
        QCOMPARE(dock->windowTitle(), QStringLiteral("Brindlet Editor 2"));
        Settings::windowGeometry = QRect();
    }

    void echoOptionsLiveInTheHost()
    {
        MayaUtil::SetEchoAllCommandsEnabled(true);
        QVERIFY(MayaUtil::EchoAllCommandsEnabled());
        fixture->Host().ProcessIdleQueue();
        QCOMPARE(MelInt(QStringLiteral("commandEcho -q -state")), 1);
        MayaUtil::SetShowStackTraceEnabled(true);
        QVERIFY(MayaUtil::ShowStackTraceEnabled());
        MayaUtil::SetLineNumbersInErrorsEnabled(false);
        QVERIFY(!MayaUtil::LineNumbersInErrorsEnabled());
        MayaUtil::SetSuppressStackWindowEnabled(false);
        QCOMPARE(Settings::suppressStackWindow, false);

        // Option variables survive a restart of the host.
        fixture->Restart();
        QVERIFY(MayaUtil::EchoAllCommandsEnabled());
        QVERIFY(MayaUtil::ShowStackTraceEnabled());
    }

    void commandListsKeepTheirPlaces()
    {
        QVERIFY(MayaUtil::MelCommands().contains(QStringLiteral("workspaceControl")));
        QVERIFY(MayaUtil::MelProcedures().contains(QStringLiteral("xvGetMelInfo")));
        QVERIFY(!MayaUtil::MelCommands().contains(QStringLiteral("xvGetMelInfo")));
        // Each list holds its names at their index in the host's full list.
        QStringList all;
        QVERIFY(MayaUtil::ExecuteMelStringArrayResult(QStringLiteral("melInfo"), all));
        const QStringList commands = MayaUtil::MelCommands();
        QVERIFY(commands.size() <= all.size());
        for (int i = 0; i < commands.size(); ++i)
            QVERIFY(commands.at(i).isEmpty() || commands.at(i) == all.at(i));
        const QStringList procedures = MayaUtil::MelProcedures();
        QVERIFY(!procedures.isEmpty() && !procedures.last().isEmpty());
        for (int i = 0; i < procedures.size(); ++i)
            QVERIFY(procedures.at(i).isEmpty() || procedures.at(i) == all.at(i));
        // Whichever list comes later in the full list holds empty places before its names.
        QVERIFY(commands.contains(QString()) || procedures.contains(QString()));
        QCOMPARE(MayaUtil::MelKeywords().size(), 25);
        QCOMPARE(MayaUtil::MelKeywords().first(), QStringLiteral("break"));
    }

    void commandFlagsComeInThrees()
    {
        const QStringList flags = MayaUtil::CommandFlags(QStringLiteral("brindletEditor2"));
        QCOMPARE(flags.size(), 12);
        QVERIFY(flags.contains(QStringLiteral("-of")));
        QVERIFY(flags.contains(QStringLiteral("-openFile")));
        // A word that is no command, as the completer meets many, is not asked about: no error shows.
        QVERIFY(MayaUtil::CommandFlags(QString()).isEmpty());
        QVERIFY(MayaUtil::CommandFlags(QStringLiteral("noSuchCommand")).isEmpty());
        QVERIFY(fixture->MessagesOfType(MCommandMessage::kError).isEmpty());
    }

    void documentationPages()
    {
        MayaUtil::CommandDocumentation(QString(), false);
        MayaUtil::CommandDocumentation(QStringLiteral("workspaceControl"), true);
        QCOMPARE(fixture->Host().ShownHelp().mid(0, 2),
                 QStringList({"Commands/index.html", "CommandsPython/workspaceControl.html"}));
        MayaUtil::CommandDocumentation(QStringLiteral("notACommand"), false);
        QVERIFY(fixture->HasMessageContaining(QStringLiteral("Command not found: notACommand")));
        QCOMPARE(fixture->Host().ShownHelp().size(), 2);
    }

    void pythonAnswersAreCached()
    {
        MayaUtil::pythonKeywords.clear();
        MayaUtil::ExecutePython(
            QStringLiteral("_bq2_calls = [0]\n"
                           "_bq2_orig = BrindletEditorHelpers.list_keywords\n"
                           "def _bq2_counting():\n"
                           "    _bq2_calls[0] += 1\n"
                           "    return _bq2_orig()\n"
                           "BrindletEditorHelpers.list_keywords = staticmethod(_bq2_counting)\n"));
        const QStringList first = MayaUtil::PythonKeywords();
        QCOMPARE(MayaUtil::PythonKeywords(), first);
        QVERIFY(first.contains(QStringLiteral("None")));
        QVERIFY(first.contains(QStringLiteral("lambda")));
        QCOMPARE(PythonInt(QStringLiteral("_bq2_calls[0]")), 1);
        MayaUtil::ExecutePython(QStringLiteral("BrindletEditorHelpers.list_keywords = _bq2_orig"));
        QVERIFY(MayaUtil::PythonBuiltins().contains(QStringLiteral("len")));
        QCOMPARE(MayaUtil::GetPythonVersion().left(4), QStringLiteral("3.11"));
    }

    void hiddenPythonCallsLeaveNoTrace()
    {
        QVERIFY(MayaUtil::PythonExecStatement(QStringLiteral("import json")));
        QVERIFY(!MayaUtil::PythonExecStatement(QStringLiteral("import no_such_module_here")));
        QStringList result{QStringLiteral("stale")};
        MayaUtil::PythonSyntaxCheck(QStringLiteral("def f(:\\n    pass"), result);
        QCOMPARE(result.size(), 2);
        QCOMPARE(result.at(1), QStringLiteral("1"));
        MayaUtil::PythonSyntaxCheck(QStringLiteral("x = 1"), result);
        QVERIFY(result.isEmpty());
        MayaUtil::PythonAttributesFromSource(QStringLiteral("import os\\nalpha = 1\\ndef beta(): pass"),
                                             QString(), result, true);
        QVERIFY(result.contains(QStringLiteral("alpha")));
        QVERIFY(result.contains(QStringLiteral("beta")));
        QVERIFY(!result.contains(QStringLiteral("lambda")));
        QCOMPARE(Settings::traceHideAll, false);
    }

    void typedResultsCheckTheirType()
    {
        int number = 17;
        QVERIFY(!MayaUtil::ExecuteMelIntResult(QStringLiteral("about -version"), number));
        QCOMPARE(number, 17);
        QString text = QStringLiteral("unchanged");
        QVERIFY(!MayaUtil::ExecuteMelStringResult(QStringLiteral("about -batch"), text));
        QVERIFY(!MayaUtil::ExecutePythonStringResult(QStringLiteral("1/0"), text));
        QCOMPARE(text, QStringLiteral("unchanged"));
        QStringList list{QStringLiteral("old")};
        QVERIFY(MayaUtil::ExecutePythonStringArrayResult(QStringLiteral("['a', 'b']"), list));
        QCOMPARE(list, QStringList({"a", "b"}));
        double scale = 0;
        QVERIFY(MayaUtil::ExecuteMelDoubleResult(QStringLiteral("mayaDpiSetting -q -rsv"), scale));
    }

    void pylintPathLeavesOutTheHostInterpreter()
    {
        MayaUtil::ExecutePython(
            QStringLiteral("import sys\nsys.path[:0] = ['/studio/tools', '/usr/lib/python3.11/x']"));
        Settings::pylintAdditionalPythonPaths = QStringLiteral("/extra");
        MayaUtil::UpdatePylintPythonPath();
        QVERIFY(Settings::pylintPythonPath.startsWith(QStringLiteral("/extra:/studio/tools:")));
        QVERIFY(!Settings::pylintPythonPath.contains(QStringLiteral("/lib/python")));
        MayaUtil::ExecutePython(QStringLiteral("del sys.path[:2]"));
        Settings::pylintAdditionalPythonPaths.clear();
    }

    void helpersPrintPathsAndEnvironment()
    {
        // The host's MEL reads the process environment; Python's os.environ was taken at its start.
        qputenv("BQ2_TEST_PATHS", "/one:/two");
        MayaUtil::ExecutePython(QStringLiteral("import os\nos.environ['BQ2_TEST_PATHS'] = '/one:/two'"));
        MayaUtil::PrintMayaEnvVarPaths(QStringLiteral("BQ2_TEST_PATHS"));
        MayaUtil::PrintPythonPath();
        MayaUtil::PrintPythonEnviron();
        fixture->Host().ProcessIdleQueue();
        const QString printed = fixture->MessagesOfType(MCommandMessage::kDisplay).join(QString());
        QVERIFY(printed.contains(QStringLiteral("\nBQ2_TEST_PATHS:\n/one\n/two\n")));
        QVERIFY(printed.contains(QStringLiteral("\nsys.path:\n")));
        QVERIFY(printed.contains(QStringLiteral("BQ2_TEST_PATHS: /one:/two")));
        MayaUtil::PrintMayaEnvVarPaths(QStringLiteral("BQ2_UNSET_VARIABLE"));
        fixture->ClearMessages();
        fixture->Host().ProcessIdleQueue();
        QCOMPARE(fixture->MessagesOfType(MCommandMessage::kDisplay).join(QString()),
                 QStringLiteral("\nBQ2_UNSET_VARIABLE:\n\n"));
    }
};

QTEST_MAIN(TestMayaUtil)
#include "tst_MayaUtil.moc"
