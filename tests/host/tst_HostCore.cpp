// The substitute host's core: the API classes, plug-in commands, callbacks, option variables and
// idle queue, driven through the Maya API the plug-in uses; and its MEL (parsing, variables,
// procedures and their native substitutes, the built-ins the plug-in sends, Maya's own command
// names), run from MEL text as Maya would run it.
#include "FlagsTestCommand.h"
#include "HostCommandResult.h"
#include "HostIdleQueue.h"
#include "HostMel.h"
#include "HostOptionVars.h"
#include "HostOutput.h"
#include "HostPlugins.h"
#include "HostState.h"
#include "HostVocabulary.h"
#include "TestFiles.h"

#include <maya/MCommandMessage.h>
#include <maya/MCommandResult.h>
#include <maya/MEventMessage.h>
#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>
#include <maya/MMessage.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include "MelText.h"
#include "OutputRecorder.h"

namespace
{
constexpr auto Mel = &MelText::Run;
constexpr auto MelString = &MelText::String;
constexpr auto MelInt = &MelText::Int;
constexpr auto MelArray = &MelText::Array;

MStatus InitializeTestPlugin(MObject object)
{
    MStatus status;
    MFnPlugin plugin(object, "Tests", "1.0", "Any", &status);
    if (!status)
        return status;
    return plugin.registerCommand("hostTestCommand", FlagsTestCommand::Creator, FlagsTestCommand::Syntax);
}

MStatus UninitializeTestPlugin(MObject object)
{
    MFnPlugin plugin(object);
    return plugin.deregisterCommand("hostTestCommand");
}

struct CallbackLog
{
    QStringList calls;
    MCallbackId selfRemoving = 0;
    MCallbackId other = 0;
};

void SelfRemovingCallback(const MString& text, MCommandMessage::MessageType, void* data)
{
    auto* log = static_cast<CallbackLog*>(data);
    log->calls.append(QStringLiteral("self:") + QString::fromUtf8(text.asChar()));
    MMessage::removeCallback(log->selfRemoving);
    MMessage::removeCallback(log->other);
}

void OtherCallback(const MString& text, MCommandMessage::MessageType, void* data)
{
    static_cast<CallbackLog*>(data)->calls.append(QStringLiteral("other:") +
                                                  QString::fromUtf8(text.asChar()));
}
} // namespace

class TestHostCore : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(appDir.isValid());
        qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
        HostOutput::SetTerminalEchoEnabled(false);
        QVERIFY(HostPlugins::Load(QStringLiteral("hostTest"), InitializeTestPlugin, UninitializeTestPlugin));
    }

    void cleanupTestCase() { QVERIFY(HostPlugins::UnloadAll()); }

    // A test that moves the preferences folder may fail before it moves it back.
    void cleanup() { qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path())); }

    void badFlagsFailLikeMaya_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("error");
        QTest::newRow("missing string") << "hostTestCommand -v;\nhostTestCommand -of"
                                        << "line 2: Flag 'openFile' must be passed a string argument";
        QTest::newRow("not an integer") << "hostTestCommand -twice many"
                                        << "line 1: Flag 'twice' must be passed an integer argument";
        // A failing command stops the script there: nothing is printed after it.
        QTest::newRow("failing command") << "hostTestCommand -fail; print \"after\""
                                         << "asked to fail";
    }

    void badFlagsFailLikeMaya()
    {
        QFETCH(QString, command);
        QFETCH(QString, error);
        OutputRecorder recorder;
        QVERIFY(!MGlobal::executeCommand(MString(command.toUtf8().constData())));
        QCOMPARE(recorder.Texts(MCommandMessage::kError), QStringList{error});
        QVERIFY(recorder.Texts(MCommandMessage::kDisplay).isEmpty());
    }

    // Each typed overload succeeds for its own type only and leaves its argument alone otherwise.
    void typedResults()
    {
        QFETCH(QString, command);
        QFETCH(int, type);
        const MString text(command.toUtf8().constData());

        MCommandResult result;
        QVERIFY(MGlobal::executeCommand(text, result));
        QCOMPARE(int(result.resultType()), type);

        int number = -1;
        double real = -1.0;
        MString string("unchanged");
        MStringArray array(1, "unchanged");
        QCOMPARE(bool(MGlobal::executeCommand(text, number)), type == MCommandResult::kInt);
        QCOMPARE(bool(MGlobal::executeCommand(text, real)), type == MCommandResult::kDouble);
        QCOMPARE(bool(MGlobal::executeCommand(text, string)), type == MCommandResult::kString);
        QCOMPARE(bool(MGlobal::executeCommand(text, array)), type == MCommandResult::kStringArray);
        QCOMPARE(number, type == MCommandResult::kInt ? 42 : -1);
        QCOMPARE(real, type == MCommandResult::kDouble ? 2.5 : -1.0);
        QCOMPARE(string, MString(type == MCommandResult::kString ? "2.7.6" : "unchanged"));
        QCOMPARE(array[array.length() - 1],
                 MString(type == MCommandResult::kStringArray ? "b c" : "unchanged"));
    }

    void typedResults_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("type");
        QTest::newRow("string") << QStringLiteral("hostTestCommand -v") << int(MCommandResult::kString);
        QTest::newRow("int") << QStringLiteral("hostTestCommand -tw 21") << int(MCommandResult::kInt);
        QTest::newRow("double") << QStringLiteral("hostTestCommand -h 5") << int(MCommandResult::kDouble);
        QTest::newRow("array") << QStringLiteral("hostTestCommand -ls") << int(MCommandResult::kStringArray);
        QTest::newRow("none") << QStringLiteral("hostTestCommand") << int(MCommandResult::kInvalid);
    }

    void callbacksMayBeRemovedWhileCalled()
    {
        CallbackLog log;
        MStatus status;
        log.selfRemoving = MCommandMessage::addCommandOutputCallback(SelfRemovingCallback, &log, &status);
        QVERIFY(status);
        log.other = MCommandMessage::addCommandOutputCallback(OtherCallback, &log);
        QVERIFY(log.selfRemoving != 0 && log.other != 0 && log.selfRemoving != log.other);
        QCOMPARE(MEventMessage::addEventCallback("noSuchEvent", nullptr, &log, &status), MCallbackId(0));
        QVERIFY(!status);
        OutputRecorder recorder; // registered after both, still called
        MGlobal::displayWarning("first");
        MGlobal::displayWarning("second");
        // The second callback was removed by the first before its turn, so it is never called.
        QCOMPARE(log.calls, QStringList{QStringLiteral("self:first")});
        QCOMPARE(recorder.Texts(MCommandMessage::kWarning),
                 (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
        QVERIFY(!MMessage::removeCallback(log.other));
    }

    void optionVarsSurviveRestart()
    {
        QTemporaryDir dir;
        qputenv("MAYA_APP_DIR", QFile::encodeName(dir.path()));
        bool exists = true;
        QCOMPARE(MGlobal::optionVarIntValue("echoAllLines", &exists), 0);
        QVERIFY(!exists);
        QVERIFY(MGlobal::setOptionVarValue("echoAllLines", 1));
        QVERIFY(MGlobal::setOptionVarValue("stackTraceIsOn", 0));
        QVERIFY(MGlobal::setOptionVarValue("quote", MString("say \"hi\"\n")));
        QVERIFY(MGlobal::setOptionVarValue("scale", 1.25));

        const QString path = dir.path() + QStringLiteral("/2026/prefs/userPrefs.mel");
        QCOMPARE(HostOptionVars::FilePath(), path);
        // Only the finished file is left: the write went through a temporary file.
        QCOMPARE(QDir(dir.path() + QStringLiteral("/2026/prefs")).entryList(QDir::Files),
                 QStringList{QStringLiteral("userPrefs.mel")});

        HostOptionVars::Forget();
        QCOMPARE(MGlobal::optionVarIntValue("echoAllLines", &exists), 1);
        QCOMPARE(MGlobal::optionVarIntValue("stackTraceIsOn", &exists), 0);
        QVERIFY(exists);
        QCOMPARE(MGlobal::optionVarStringValue("quote"), MString("say \"hi\"\n"));
        // Maya sources the file as MEL: the quotes in a value are escaped.
        QVERIFY(TestFiles::Read(path).contains("optionVar -sv \"quote\" \"say \\\"hi\\\"\\n\";"));
        QCOMPARE(MGlobal::optionVarDoubleValue("scale"), 1.25);

        // A corrupt file gives no values, and writing replaces it with a readable one.
        const QByteArray garbage("\xff\xfe\x00optionVar -iv \"broken\" notanumber;\noptionVar -iv \"open",
                                 56);
        QVERIFY(TestFiles::Write(path, garbage + QByteArray(4096, '\0')));
        HostOptionVars::Forget();
        QVERIFY(HostOptionVars::Names().isEmpty());
        QVERIFY(MGlobal::setOptionVarValue("fresh", 3));
        HostOptionVars::Forget();
        QCOMPARE(HostOptionVars::Names(), QStringList{QStringLiteral("fresh")});
    }

    void idleQueueRunsInOrderOnLaterTurns()
    {
        HostIdleQueue::Flush();
        QStringList order;
        HostIdleQueue::Post(
            [&order]
            {
                order.append(QStringLiteral("first"));
                HostIdleQueue::Post([&order] { order.append(QStringLiteral("posted while flushing")); });
            });
        QVERIFY(MGlobal::executeCommandOnIdle("hostTestCommand -of \"idle.py\""));
        HostIdleQueue::Post([&order] { order.append(FlagsTestCommand::openedFile); });
        QCOMPARE(HostIdleQueue::Pending(), 3);
        QVERIFY(order.isEmpty());

        HostIdleQueue::Flush();
        QCOMPARE(order, (QStringList{QStringLiteral("first"), QStringLiteral("idle.py")}));
        QCOMPARE(HostIdleQueue::Pending(), 1);
        // The event loop flushes by itself.
        QTRY_COMPARE(HostIdleQueue::Pending(), 0);
        QCOMPARE(order.last(), QStringLiteral("posted while flushing"));
        HostIdleQueue::Post([&order] { order.append(QStringLiteral("later")); });
        QTRY_COMPARE(order.last(), QStringLiteral("later"));
    }

    void scripts_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("printed");
        QTest::addColumn<QString>("error");
        // The last error the script reports ("*" for any); a script without one succeeds.
        const char* const rows[][4] = {
            {"comments and escapes",
             "print \"a;b\"; // print \"comment\";\n/* print \"block\";\n */ "
             "print \"tab\\there\\n\";print(\"q\\\"\\\\\")",
             "a;btab\there\nq\"\\", ""},
            {"statement over lines", ";;print\n  \"x\"\n  ;", "x", ""},
            {"concatenation", "print (\"a\" + \"b\"); print \"n=\" + 3 + \"\\n\"; print(\"f=\" + 1.5)",
             "abn=3\nf=1.5", ""},
            {"control flow",
             "int $total = 0;\n"
             "for ($k = 1; $k <= 5; $k++) { if ($k == 2) continue; if ($k > 4) break; $total += $k; }\n"
             "string $out = \"\"; string $w;\n"
             "for ($w in {\"x\", \"y\"}) $out = $out + $w;\n"
             "int $j = 3; while ($j > 0) { $j--; }\n"
             "do { $j++; } while ($j < 2);\n"
             "print ($total + \" \" + $out + \" \" + $j + \" \" + (1 < 2 ? \"yes\" : \"no\"));",
             "8 xy 2 yes", ""},
            {"undeclared variable", "print \"before\";\nprint $foo;\nprint \"after\";", "before",
             "line 2: \"$foo\" is an undeclared variable."},
            {"unknown procedure", "noSuchCommand -flag 1;", "",
             "line 1: Cannot find procedure \"noSuchCommand\"."},
            {"division by zero", "int $z = 1 / 0;", "", "*"},
        };
        for (const auto& row : rows)
            QTest::newRow(row[0]) << row[1] << row[2] << row[3];
    }

    void scripts()
    {
        QFETCH(QString, script);
        QFETCH(QString, printed);
        QFETCH(QString, error);
        OutputRecorder recorder;
        QCOMPARE(bool(Mel(script)), error.isEmpty());
        QCOMPARE(recorder.Printed(), printed);
        if (error.isEmpty())
            QVERIFY(recorder.Errors().isEmpty());
        else if (error != QLatin1String("*"))
            QCOMPARE(recorder.Errors(), QStringList{error});
        else
            QVERIFY(!recorder.Errors().isEmpty());
    }

    void commandArgumentWords()
    {
        QVERIFY(Mel(QStringLiteral("string $word = \"from variable\";")));
        QCOMPARE(MelString(
                     QStringLiteral("hostTestCommand /a/b.mel A|B|C -5 1.5 12abc \"q q\" $word `about -v`;")),
                 QStringLiteral("/a/b.mel|A|B|C|-5|1.5|12abc|q q|from variable|2026"));
        QCOMPARE(MelString(QStringLiteral("hostTestCommand(\"call\", 2, {\"x\", \"y\"})")),
                 QStringLiteral("call|2|x|y"));
        QCOMPARE(MelString(QStringLiteral("hostTestCommand \"// not a comment\" // a comment")),
                 QStringLiteral("// not a comment"));
        QCOMPARE(MelString(QStringLiteral("hostTestCommand -of (\"a\" + \"b\") -v")),
                 QStringLiteral("2.7.6"));
        QCOMPARE(FlagsTestCommand::openedFile, QStringLiteral("ab"));
        QCOMPARE(MelString(QStringLiteral("hostTestCommand -sz 2 0.5")), QStringLiteral("2 0.5"));
    }

    void expressions_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("value");
        const int integer = MCommandResult::kInt;
        const int real = MCommandResult::kDouble;
        const int text = MCommandResult::kString;
        QTest::newRow("precedence") << "1 + 2 * 3" << integer << "7";
        QTest::newRow("integer division") << "-7 / 2" << integer << "-3";
        QTest::newRow("float division") << "7 / 2.0" << real << "3.5";
        QTest::newRow("int wraps") << "2147483647 + 1" << integer << "-2147483648";
        QTest::newRow("string first") << "\"a\" + 1 + 2" << text << "a12";
        QTest::newRow("numbers first") << "1 + 2 + \"a\"" << text << "3a";
        QTest::newRow("string order") << "\"abc\" < \"abd\"" << integer << "1";
        QTest::newRow("mixed compares numbers") << "\"10\" == 10.0" << integer << "1";
        QTest::newRow("float text") << "1.0 / 3 + \"\"" << text << "0.3333333333";
        QTest::newRow("whole float text") << "2.0 + \"\"" << text << "2";
        QTest::newRow("logic") << "3 > 2 && (2 > 5 || 1)" << integer << "1";
        QTest::newRow("constants") << "true + yes + on + off" << integer << "3";
        QTest::newRow("backquotes") << "`about -version` + \"!\"" << text << "2026!";
        QTest::newRow("ternary") << "0 ? \"a\" : \"b\"" << text << "b";
        QTest::newRow("eval") << "eval(\"string $e = \\\"in eval\\\"; $e\")" << text << "in eval";
        QTest::newRow("float array") << "$inferredArray = {1, 2.5}; $inferredArray"
                                     << int(MCommandResult::kStringArray) << "1 2.5";
    }

    void expressions()
    {
        QFETCH(QString, expression);
        QFETCH(int, type);
        QFETCH(QString, value);
        HostCommandResult result;
        QVERIFY(HostMel::Execute(expression, &result, false));
        QCOMPARE(int(result.resultType()), type);
        QString shown;
        int number = 0;
        double real = 0.0;
        MString text;
        MStringArray array;
        if (result.getResult(number))
            shown = QString::number(number);
        else if (result.getResult(real))
            shown = QString::number(real, 'g', 10);
        else if (result.getResult(text))
            shown = QString::fromUtf8(text.asChar());
        else if (result.getResult(array))
            for (unsigned int i = 0; i < array.length(); ++i)
                shown += (i > 0 ? QStringLiteral(" ") : QString()) + QString::fromUtf8(array[i].asChar());
        QCOMPARE(shown, value);
    }

    void variablesAndTypes()
    {
        OutputRecorder recorder;
        QVERIFY(Mel(QStringLiteral("string $s = \"x\"; int $i = 3; float $f; $f = $i / 2; $s = $s + $i;")));
        QCOMPARE(MelString(QStringLiteral("$s")), QStringLiteral("x3"));
        QCOMPARE(MelString(QStringLiteral("$f + \"\"")), QStringLiteral("1"));
        // Variables of one run are there in the next, as at Maya's top level.
        QVERIFY(Mel(QStringLiteral("print $s; print $i;")));
        QCOMPARE(recorder.Printed(), QStringLiteral("x33"));
        // Assignment converts to the declared type; an array grows to the index written.
        QCOMPARE(MelInt(QStringLiteral("int $n = \"12abc\"; $n")), 12);
        QCOMPARE(MelArray(QStringLiteral("string $a[] = {\"p\"}; $a[2] = \"s\"; $a")),
                 (QStringList{QStringLiteral("p"), QString(), QStringLiteral("s")}));

        QVERIFY(!Mel(QStringLiteral("int $s;")));
        QCOMPARE(recorder.Errors(),
                 QStringList{QStringLiteral(
                     "line 1: Invalid redeclaration of variable \"$s\" as a different type.")});
    }

    void syntaxErrorRunsNothing()
    {
        OutputRecorder recorder;
        QVERIFY(!Mel(QStringLiteral("print \"first\";\nprint \"unterminated;")));
        QVERIFY(!Mel(QStringLiteral("print \"first\";\nint $x = (1 + ;")));
        QVERIFY(!Mel(QStringLiteral("{ print \"open block\";")));
        QVERIFY(!Mel(QStringLiteral("global proc broken( {")));
        QVERIFY(!Mel(QString(500, QLatin1Char('(')) + QStringLiteral("1") + QString(500, QLatin1Char(')'))));
        QString chain = QStringLiteral("1");
        for (int i = 0; i < 5000; ++i)
            chain += QStringLiteral(" + 1");
        QVERIFY(!Mel(QStringLiteral("print \"first\"; print (%1);").arg(chain)));
        QVERIFY(recorder.Printed().isEmpty());
        QCOMPARE(recorder.Errors().size(), 6);
        // A long chain within bounds works.
        QCOMPARE(MelInt(chain.left(4 * 500 + 1)), 501);
        QVERIFY(recorder.Errors().at(0).startsWith(QLatin1String("line 2: ")));
    }

    void userProcedures()
    {
        OutputRecorder recorder;
        QVERIFY(Mel(QStringLiteral(
            "global proc sayHello() { print \"hello\"; print \" there\"; }\n"
            "global proc int twice(int $n) { return $n * 2; }\n"
            "global proc string[] pair(string $a, string $b) { string $r[] = {$a, $b}; return $r; }\n"
            "global proc counter() { global int $gCount; $gCount++; }\n"
            "global proc string brace() { return \"}\"; /* } */ }")));
        QCOMPARE(MelString(QStringLiteral("brace()")), QStringLiteral("}"));
        QVERIFY(recorder.Printed().isEmpty());
        QVERIFY(HostMel::ProcedureDefined(QStringLiteral("sayHello")));
        QVERIFY(Mel(QStringLiteral("sayHello; sayHello();")));
        QCOMPARE(recorder.Printed(), QStringLiteral("hello therehello there"));
        QCOMPARE(MelInt(QStringLiteral("twice(21)")), 42);
        QCOMPARE(MelArray(QStringLiteral("pair(\"x\", \"y\")")),
                 (QStringList{QStringLiteral("x"), QStringLiteral("y")}));
        QVERIFY(Mel(QStringLiteral("counter; counter;")));
        QCOMPARE(MelInt(QStringLiteral("global int $gCount; $gCount")), 2);

        recorder.messages.clear();
        QVERIFY(!Mel(QStringLiteral("twice(1, 2)")));
        QCOMPARE(recorder.Errors(),
                 QStringList{QStringLiteral("line 1: Wrong number of arguments on call to twice.")});
        // A procedure's locals are its own.
        QVERIFY(!Mel(QStringLiteral("global proc peek() { print $s; } peek;")));
        QCOMPARE(recorder.Errors().last(), QStringLiteral("line 1: \"$s\" is an undeclared variable."));
        // Endless recursion ends in an error, not a crash.
        QVERIFY(!Mel(QStringLiteral("global proc forever() { forever; } forever;")));
    }

    void catchAndCatchQuiet()
    {
        OutputRecorder recorder;
        QCOMPARE(MelInt(QStringLiteral("catch(`noSuchCommand`)")), 1);
        QCOMPARE(recorder.Errors().size(), 1);
        QCOMPARE(MelInt(QStringLiteral("catchQuiet(`noSuchCommand`)")), 1);
        QCOMPARE(MelInt(QStringLiteral("catchQuiet(hostTestCommand(\"-bad\"))")), 1);
        QCOMPARE(recorder.Errors().size(), 1);
        QCOMPARE(MelInt(QStringLiteral("catch(`about -version`)")), 0);
        // The script goes on after a caught failure.
        QVERIFY(Mel(QStringLiteral("catchQuiet(noSuchProc()); print \"went on\";")));
        QCOMPARE(recorder.Printed(), QStringLiteral("went on"));
        MGlobal::displayError("after catchQuiet");
        QCOMPARE(recorder.Errors().size(), 2);
    }

    void substitutesOnlyAfterDefinition()
    {
        OutputRecorder recorder;
        HostMel::RegisterProcedureSubstitute(
            QStringLiteral("xvSubstituteProbe"),
            [](const HostMelCall& call, HostCommandResult& result)
            {
                result.setString(MString(call.positionals.join(QLatin1Char('|')).toUtf8().constData()));
                return MStatus(MStatus::kSuccess);
            });
        QVERIFY(!Mel(QStringLiteral("xvSubstituteProbe(\"a\", 1)")));
        QCOMPARE(recorder.Errors(),
                 QStringList{QStringLiteral("line 1: Cannot find procedure \"xvSubstituteProbe\".")});
        QVERIFY(!HostMel::ProcedureDefined(QStringLiteral("xvSubstituteProbe")));
        QVERIFY(Mel(QStringLiteral(
            "global proc string xvSubstituteProbe(string $a, int $b) { return \"mel body\"; }")));
        // Once defined, the native substitute answers in place of the MEL body.
        QCOMPARE(MelString(QStringLiteral("xvSubstituteProbe(\"a\", 1)")), QStringLiteral("a|1"));
    }

    // Run time commands run their text, and the plug-in's script lists them where it asks.
    void runTimeCommands()
    {
        QVERIFY(
            Mel(QString::fromLatin1(TestFiles::Read(QStringLiteral(":/bq2_scripts/BrindletEditor2.mel")))));
        HostMel::RegisterRunTimeCommand(QStringLiteral("SayRunTime"), QStringLiteral("print \"run time\""));
        OutputRecorder recorder;
        QVERIFY(Mel(QStringLiteral("SayRunTime")));
        QCOMPARE(recorder.Printed(), QStringLiteral("run time"));
        QCOMPARE(HostMel::WhatIs(QStringLiteral("SayRunTime")), QStringLiteral("Run Time Command"));
        QCOMPARE(MelArray(QStringLiteral("xvGetMelInfo(0, 1, 0)")).last(), QStringLiteral("SayRunTime"));
    }

    void sourceFindsScriptsAndRecordsThem()
    {
        QCOMPARE(HostState::UserScriptDir(), appDir.path() + QStringLiteral("/2026/scripts/"));
        const QString path = HostState::UserScriptDir() + QStringLiteral("sourcedHere.mel");
        QVERIFY(TestFiles::Write(path, "global proc string fromSourcedFile() { return \"sourced\"; }\n"));

        OutputRecorder recorder;
        QVERIFY(Mel(QStringLiteral("source sourcedHere.mel;")));
        QCOMPARE(MelString(QStringLiteral("fromSourcedFile()")), QStringLiteral("sourced"));
        QCOMPARE(HostMel::WhatIs(QStringLiteral("fromSourcedFile")),
                 QStringLiteral("Mel procedure found in: ") + path);
        QVERIFY(Mel(QStringLiteral("source \"%1\"").arg(path)));
        QVERIFY(MGlobal::sourceFile(MString(path.toUtf8().constData())));
        QVERIFY(recorder.Errors().isEmpty());
        QVERIFY(!Mel(QStringLiteral("source \"missing.mel\"")));
        QCOMPARE(recorder.Errors(), QStringList{QStringLiteral(
                                        "line 1: Cannot find file \"missing.mel\" for source statement.")});

        // A binary file is an error in the script, nothing worse.
        QVERIFY(TestFiles::Write(path, QByteArray("\x00\xff\x01\"{", 5)));
        QVERIFY(!MGlobal::sourceFile(MString(path.toUtf8().constData())));
    }

    void pythonCommand()
    {
        OutputRecorder recorder;
        QCOMPARE(MelString(QStringLiteral("python(\"6 * 7\")")), QStringLiteral("42"));
        QCOMPARE(MelString(QStringLiteral("python(\"bq2_mel_name = 'set by MEL'\")")), QString());
        QCOMPARE(MelString(QStringLiteral("python \"bq2_mel_name\"")), QStringLiteral("set by MEL"));
        QVERIFY(Mel(QStringLiteral("python(\"print('from python')\")")));
        QCOMPARE(recorder.Printed(), QStringLiteral("from python\n"));
        QVERIFY(recorder.Texts(MCommandMessage::kHistory).isEmpty());
        QVERIFY(!Mel(QStringLiteral("python(\"1/0\"); print \"not reached\"")));
        QVERIFY(!recorder.Errors().isEmpty());
        QVERIFY(!recorder.Printed().contains(QLatin1String("not reached")));
    }

    void melAnswers_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("whatIs");
        QTest::addColumn<bool>("inMelInfo");
        QTest::newRow("known by name only") << "polyCube"
                                            << "Command" << true;
        QTest::newRow("run by the host as well") << "about"
                                                 << "Command" << true;
        QTest::newRow("no such command") << "polyCubeX"
                                         << "Unknown" << false;
    }

    // Maya's real command names answer as commands, whether or not the host can run them.
    void melAnswers()
    {
        QFETCH(QString, name);
        QFETCH(QString, whatIs);
        QFETCH(bool, inMelInfo);
        QCOMPARE(MelString(QStringLiteral("whatIs %1").arg(name)), whatIs);
        QCOMPARE(MelArray(QStringLiteral("melInfo")).count(name), inMelInfo ? 1 : 0);
        QCOMPARE(MelInt(QStringLiteral("exists %1").arg(name)), inMelInfo ? 1 : 0);
    }

    void nameOnlyCommandFailsClearly()
    {
        const QStringList& names = HostVocabulary::MayaCommands();
        QVERIFY(names.size() > 1000);
        QVERIFY(std::is_sorted(names.cbegin(), names.cend()));
        QVERIFY(HostVocabulary::IsMayaCommand(QStringLiteral("xform")));
        QVERIFY(!HostVocabulary::IsMayaCommand(QStringLiteral("polycube")));
        OutputRecorder recorder;
        QVERIFY(!Mel(QStringLiteral("polyCube -n \"box\"")));
        QVERIFY(recorder.Contains(QStringLiteral("polyCube: this host knows the command by name only")));
        // A procedure of that name is the user's to define, and runs.
        QVERIFY(Mel(QStringLiteral("global proc string polySphere() { return \"mine\"; }")));
        QCOMPARE(MelString(QStringLiteral("polySphere")), QStringLiteral("mine"));
    }

private:
    QTemporaryDir appDir;
};

QTEST_GUILESS_MAIN(TestHostCore)
#include "tst_HostCore.moc"
