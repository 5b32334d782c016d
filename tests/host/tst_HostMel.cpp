// The substitute's MEL: parsing, variables, procedures and their native substitutes, and the
// built-in commands the plug-in sends, all run from MEL text as Maya would run it.
#include "FlagsTestCommand.h"
#include "HostCommandResult.h"
#include "HostMel.h"
#include "HostOutput.h"
#include "HostPlugins.h"
#include "HostState.h"
#include "TestFiles.h"

#include <maya/MArgDatabase.h>
#include <maya/MCommandMessage.h>
#include <maya/MCommandResult.h>
#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>
#include <maya/MMessage.h>
#include <maya/MPxCommand.h>

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

MStatus InitializeFlagsPlugin(MObject object)
{
    MFnPlugin plugin(object, "Tests", "1.0");
    return plugin.registerCommand("melTestCommand", FlagsTestCommand::Creator, FlagsTestCommand::Syntax);
}

MStatus UninitializeFlagsPlugin(MObject object)
{
    MFnPlugin plugin(object);
    return plugin.deregisterCommand("melTestCommand");
}
} // namespace

class TestHostMel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(appDir.isValid());
        qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
        HostOutput::SetTerminalEchoEnabled(false);
        QVERIFY(HostPlugins::Load(QStringLiteral("melTest"), InitializeFlagsPlugin, UninitializeFlagsPlugin));
    }

    void cleanupTestCase() { QVERIFY(HostPlugins::UnloadAll()); }

    void init() { HostOutput::ClearHistory(); }

    void scripts_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QString>("printed");
        QTest::addColumn<QString>("error");
        QTest::newRow("comments and escapes")
            << "print \"a;b\"; // print \"comment\";\n/* print \"block\";\n */ "
               "print \"tab\\there\\n\";print(\"q\\\"\\\\\")"
            << true << "a;btab\there\nq\"\\"
            << "";
        QTest::newRow("statement over lines") << ";;print\n  \"x\"\n  ;" << true << "x"
                                              << "";
        QTest::newRow("concatenation")
            << "print (\"a\" + \"b\"); print \"n=\" + 3 + \"\\n\"; print(\"f=\" + 1.5)" << true
            << "abn=3\nf=1.5"
            << "";
        QTest::newRow("control flow")
            << "int $total = 0;\n"
               "for ($k = 1; $k <= 5; $k++) { if ($k == 2) continue; if ($k > 4) break; $total += $k; }\n"
               "string $out = \"\"; string $w;\n"
               "for ($w in {\"x\", \"y\"}) $out = $out + $w;\n"
               "int $j = 3; while ($j > 0) { $j--; }\n"
               "do { $j++; } while ($j < 2);\n"
               "print ($total + \" \" + $out + \" \" + $j + \" \" + (1 < 2 ? \"yes\" : \"no\"));"
            << true << "8 xy 2 yes"
            << "";
        QTest::newRow("undeclared variable")
            << "print \"before\";\nprint $foo;\nprint \"after\";" << false << "before"
            << "line 2: \"$foo\" is an undeclared variable.";
        QTest::newRow("unknown procedure") << "noSuchCommand -flag 1;" << false << ""
                                           << "line 1: Cannot find procedure \"noSuchCommand\".";
        QTest::newRow("division by zero") << "int $z = 1 / 0;" << false << ""
                                          << "*";
    }

    // What a script prints and the last error it reports ("*" for any).
    void scripts()
    {
        QFETCH(QString, script);
        QFETCH(bool, ok);
        QFETCH(QString, printed);
        QFETCH(QString, error);
        OutputRecorder recorder;
        QCOMPARE(bool(Mel(script)), ok);
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
        QCOMPARE(
            MelString(QStringLiteral("melTestCommand /a/b.mel A|B|C -5 1.5 12abc \"q q\" $word `about -v`;")),
            QStringLiteral("/a/b.mel|A|B|C|-5|1.5|12abc|q q|from variable|2026"));
        QCOMPARE(MelString(QStringLiteral("melTestCommand(\"call\", 2, {\"x\", \"y\"})")),
                 QStringLiteral("call|2|x|y"));
        QCOMPARE(MelString(QStringLiteral("melTestCommand \"// not a comment\" // a comment")),
                 QStringLiteral("// not a comment"));
        QCOMPARE(MelString(QStringLiteral("melTestCommand -of (\"a\" + \"b\") -v")), QStringLiteral("2.7.6"));
        QCOMPARE(FlagsTestCommand::openedFile, QStringLiteral("ab"));
        QCOMPARE(MelString(QStringLiteral("melTestCommand -sz 2 0.5")), QStringLiteral("2 0.5"));
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
        QCOMPARE(MelInt(QStringLiteral("catchQuiet(melTestCommand(\"-bad\"))")), 1);
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

private:
    QTemporaryDir appDir;
};

QTEST_GUILESS_MAIN(TestHostMel)
#include "tst_HostMel.moc"
