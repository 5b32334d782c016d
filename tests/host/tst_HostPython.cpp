// The substitute host's embedded Python: output as command messages, typed evaluation, error
// reports, and the "maya" package reaching MEL.
#include "HostCommandResult.h"
#include "HostIdleQueue.h"
#include "HostMel.h"
#include "HostOutput.h"
#include "HostPython.h"
#include "OutputRecorder.h"
#include <QtCore/QCoreApplication>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtTest/QTest>
#include <csignal>
#include <maya/MCommandMessage.h>
#include <maya/MGlobal.h>
#include <maya/MMessage.h>

namespace
{
OutputRecorder* recorder = nullptr;
QString lastCall;
bool everythingOnMainThread = true;

void CheckMainThread()
{
    everythingOnMainThread =
        everythingOnMainThread && QThread::currentThread() == QCoreApplication::instance()->thread();
}

// Answers with a result of the kind that its -kind flag names.
MStatus ValueCommand(const HostMelCall& call, HostCommandResult& result)
{
    CheckMainThread();
    const QString kind = call.FlagValue(QStringLiteral("kind"));
    if (kind == QLatin1String("int"))
        result.setInt(42);
    else if (kind == QLatin1String("string"))
        result.setString(MString("text \"quoted\""));
    else if (kind == QLatin1String("array"))
    {
        MStringArray array;
        array.append(MString("a"));
        array.append(MString("b c"));
        result.setStringArray(array);
    }
    return MStatus::kSuccess;
}

// Records the call as its mode, its objects, then each flag with its values.
MStatus RecordingCommand(const HostMelCall& call, HostCommandResult& result)
{
    QStringList seen;
    if (call.edit)
        seen << QStringLiteral("edit");
    if (call.query)
        seen << QStringLiteral("query");
    seen += call.positionals;
    for (const auto& flag : call.flags)
        seen << QLatin1Char('-') + flag.first << flag.second;
    lastCall = seen.join(QLatin1Char('|'));
    result.setInt(int(call.flags.size()));
    return MStatus::kSuccess;
}

MStatus FailingCommand(const HostMelCall&, HostCommandResult&)
{
    MGlobal::displayError(MString("h2 failure text"));
    return MStatus::kFailure;
}

void IgnoreSignal(int) {}

// The value of Python code, or a marker where it has none of that type.
int PyInt(const QString& code)
{
    int value = 0;
    return HostPython::EvaluateInt(code, value) ? value : -12345;
}

QString PyText(const QString& code)
{
    QString text;
    return HostPython::EvaluateString(code, text) ? text : QStringLiteral("<no string>");
}
} // namespace

class TestHostPython : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
        // A handler of the application's own, which Python must leave in place.
        struct sigaction handler = {};
        handler.sa_handler = &IgnoreSignal;
        sigaction(SIGINT, &handler, &sigintBefore);

        HostOutput::SetTerminalEchoEnabled(false);
        recorder = new OutputRecorder;
        // Output from a Python thread must reach the callbacks on the main thread.
        threadCheckId = MCommandMessage::addCommandOutputCallback(
            [](const MString&, MCommandMessage::MessageType, void*) { CheckMainThread(); });
        QVERIFY(HostPython::Initialize());
        QVERIFY(HostPython::IsInitialized());
        QVERIFY(HostPython::Initialize());

        HostMel::RegisterCommand(QStringLiteral("h2Value"),
                                 {{QStringLiteral("k"), QStringLiteral("kind"), 1}}, &ValueCommand);
        HostMel::RegisterCommand(QStringLiteral("h2Record"),
                                 {{QStringLiteral("q"), QStringLiteral("query"), 0},
                                  {QStringLiteral("e"), QStringLiteral("edit"), 0},
                                  {QStringLiteral("vis"), QStringLiteral("visible"), 1},
                                  {QStringLiteral("cl"), QStringLiteral("close"), 0},
                                  {QStringLiteral("l"), QStringLiteral("label"), 1},
                                  {QStringLiteral("it"), QStringLiteral("item"), 1},
                                  {QStringLiteral("p"), QStringLiteral("pair"), 2}},
                                 &RecordingCommand);
        HostMel::RegisterCommand(QStringLiteral("h2Fail"), {}, &FailingCommand);
        QVERIFY(HostPython::Execute(
            QStringLiteral("import sys\nimport maya.cmds as cmds\nimport maya.mel as mel"), false));
    }

    void init() { recorder->messages.clear(); }

    void cleanupTestCase()
    {
        HostMel::UnregisterCommand(QStringLiteral("h2Value"));
        HostMel::UnregisterCommand(QStringLiteral("h2Record"));
        HostMel::UnregisterCommand(QStringLiteral("h2Fail"));
        MMessage::removeCallback(threadCheckId);
        delete recorder;
        sigaction(SIGINT, &sigintBefore, nullptr);
    }

    void interpreterIsolatedAndQuiet()
    {
        // Importing signal must not take Ctrl+C away from the application.
        QVERIFY(HostPython::Execute(QStringLiteral("import signal"), false));
        struct sigaction now = {};
        sigaction(SIGINT, nullptr, &now);
        QVERIFY(now.sa_handler == &IgnoreSignal);

        // No terminal to read from: input() ends at once instead of blocking.
        QVERIFY(HostPython::Execute(
            QStringLiteral("try:\n    input()\n    got_eof = False\nexcept EOFError:\n    got_eof = True"),
            false));
        QCOMPARE(PyInt(QStringLiteral("got_eof")), 1);
    }

    void printGoesOutLineByLine()
    {
        // Line by line, in order with what MEL prints meanwhile.
        QVERIFY(HostPython::Execute(
            QStringLiteral("print('a\\nb', end='')\nprint()\nmel.eval('print \"c\\\\n\"')\n"
                           "sys.stdout.write('tail')"),
            false));
        QCOMPARE(recorder->Texts(MCommandMessage::kDisplay),
                 (QStringList{QStringLiteral("a\n"), QStringLiteral("b\n"), QStringLiteral("c\n"),
                              QStringLiteral("tail")}));

        recorder->messages.clear();
        QVERIFY(HostPython::Execute(
            QStringLiteral("print('oops', file=sys.stderr)\nsys.stderr.write('one\\ntwo')"), false));
        QCOMPARE(recorder->Errors(),
                 (QStringList{QStringLiteral("oops"), QStringLiteral("one"), QStringLiteral("two")}));
        QVERIFY(recorder->Texts(MCommandMessage::kDisplay).isEmpty());
    }

    void typedEvaluationRunsStatementsWithoutValue()
    {
        int value = -1;
        QVERIFY(!HostPython::EvaluateInt(QStringLiteral("y = 3"), value));
        QCOMPARE(value, -1);
        QVERIFY(recorder->messages.isEmpty());
        QCOMPARE(PyInt(QStringLiteral("y")), 3);

        QString text = QStringLiteral("unchanged");
        QVERIFY(!HostPython::EvaluateString(QStringLiteral("for i in range(2):\n    print(i)"), text));
        QCOMPARE(text, QStringLiteral("unchanged"));
        QCOMPARE(recorder->Texts(MCommandMessage::kDisplay),
                 (QStringList{QStringLiteral("0\n"), QStringLiteral("1\n")}));
    }

    void conversions_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("code");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QString>("expected");
        // The expected value as text (a list joined by '|'); none where the conversion is refused.
        const char* const rows[][4] = {
            {"int", "int", "41 + 1", "42"},
            {"int from bool", "int", "True", "1"},
            {"int from float", "int", "1.5", nullptr},
            {"int too large", "int", "2 ** 40", nullptr},
            {"double", "double", "1.25", "1.25"},
            {"double from int", "double", "3", "3"},
            {"double from None", "double", "None", nullptr},
            {"string", "string", "'abc'", "abc"},
            {"string beyond BMP", "string", "'\\u00e9\\u20ac\\U0001F600'", "\u00e9\u20ac\U0001F600"},
            {"string from int", "string", "5", nullptr},
            {"list", "list", "['a', 1, None]", "a|1|None"},
            {"empty list", "list", "[]", ""},
            {"list from str", "list", "'abc'", nullptr},
        };
        for (const auto& row : rows)
            QTest::newRow(row[0]) << row[1] << row[2] << (row[3] != nullptr) << QString::fromUtf8(row[3]);
    }

    void conversions()
    {
        QFETCH(QString, kind);
        QFETCH(QString, code);
        QFETCH(bool, ok);
        QFETCH(QString, expected);

        // A failed conversion leaves the result as it was.
        const auto check = [&](auto evaluate, auto value)
        {
            QCOMPARE(evaluate(code, value), ok);
            const QVariant got(value);
            QCOMPARE(got.typeId() == QMetaType::QStringList ? got.toStringList().join(QLatin1Char('|'))
                                                            : got.toString(),
                     ok ? expected : QStringLiteral("-7"));
        };
        if (kind == QLatin1String("int"))
            check(&HostPython::EvaluateInt, -7);
        else if (kind == QLatin1String("double"))
            check(&HostPython::EvaluateDouble, -7.0);
        else if (kind == QLatin1String("string"))
            check(&HostPython::EvaluateString, QStringLiteral("-7"));
        else
            check(&HostPython::EvaluateStringList, QStringList{QStringLiteral("-7")});
        // A value of the wrong type is no error of the code.
        QVERIFY2(recorder->Errors().isEmpty(), qPrintable(recorder->Described()));
    }

    void tracebackAndErrorLine()
    {
        const QString code = QStringLiteral("def fail():\n"
                                            "    raise ValueError('bad')\n"
                                            "print('before')\n"
                                            "fail()\n");
        QVERIFY(!HostPython::Execute(code, true));
        const QList<OutputRecorder::Message>& messages = recorder->messages;
        QCOMPARE(messages.size(), 3);
        QCOMPARE(messages[0].text, QStringLiteral("before\n"));
        QCOMPARE(messages[1].type, MCommandMessage::kStackTrace);
        QVERIFY(messages[1].text.startsWith(QLatin1String("Traceback (most recent call last):\n")));
        QVERIFY(messages[1].text.contains(QLatin1String("File \"<maya console>\", line 4, in <module>")));
        QVERIFY(messages[1].text.contains(QLatin1String("File \"<maya console>\", line 2, in fail")));
        QCOMPARE(messages[2].type, MCommandMessage::kError);
        QCOMPARE(messages[2].text, QStringLiteral("ValueError: file <maya console> line 2: bad"));
    }

    void errorsNameTheirLine_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<bool>("evaluate");
        QTest::addColumn<QString>("error");
        // Frames outside the code that was run don't count: the line is the deepest one of ours.
        const char* const rows[][4] = {
            {"in a library", "import json\n\njson.loads('{')", "",
             "JSONDecodeError: file <maya console> line 3: "},
            {"evaluated", "1 / 0", "e", "ZeroDivisionError: file <maya console> line 1: division by zero"},
            {"syntax", "ran = 1\nif ran\n    pass", "", "SyntaxError: file <maya console> line 2: "},
            {"indentation", "x = 1\n  y = 2", "e", "IndentationError: file <maya console> line 2: "},
            {"missing module", "import maya.OpenMayaCloth", "",
             "ModuleNotFoundError: file <maya console> line 1: No module named 'maya.OpenMayaCloth'"},
            {"failing MEL", "\nmel.eval('h2Fail')", "",
             "RuntimeError: file <maya console> line 2: Error occurred during execution of MEL script"},
        };
        for (const auto& row : rows)
            QTest::newRow(row[0]) << QString::fromUtf8(row[1]) << (*row[2] != 0) << QString::fromUtf8(row[3]);
    }

    void errorsNameTheirLine()
    {
        QFETCH(QString, code);
        QFETCH(bool, evaluate);
        QFETCH(QString, error);
        QVERIFY(HostPython::Execute(QStringLiteral("ran = 0"), false));
        QString text;
        QVERIFY(evaluate ? !HostPython::EvaluateString(code, text) : !HostPython::Execute(code, false));
        // A row that ends in ": " gives the start of the message, any other the whole of it.
        const QString last = recorder->Errors().value(recorder->Errors().size() - 1);
        QVERIFY2(error.endsWith(QLatin1String(": ")) ? last.startsWith(error) : last == error,
                 qPrintable(last));
        QCOMPARE(PyInt(QStringLiteral("ran")), 0); // nothing of code that does not compile runs
    }

    void melEvalRoundTrip()
    {
        QCOMPARE(PyText(QStringLiteral("repr(mel.eval('h2Value -kind \"int\"'))")), QStringLiteral("42"));
        QCOMPARE(PyText(QStringLiteral("mel.eval('h2Value -k string')")), QStringLiteral("text \"quoted\""));
        QCOMPARE(PyText(QStringLiteral("repr(mel.eval('h2Value -kind array'))")),
                 QStringLiteral("['a', 'b c']"));
        QCOMPARE(PyText(QStringLiteral("repr(mel.eval('h2Value -kind none'))")), QStringLiteral("None"));
        QCOMPARE(PyText(QStringLiteral("repr(cmds.h2Value(kind='array'))")), QStringLiteral("['a', 'b c']"));
        QVERIFY2(recorder->Errors().isEmpty(), qPrintable(recorder->Described()));
    }

    void cmdsBuildsFlagsAndObjects()
    {
        // In query mode a boolean only names the flag asked about; a false one is left out.
        const char* const calls[][2] = {
            {"h2Record('ctl', e=True, visible=False)", "edit|ctl|-visible|0"},
            {"h2Record('ctl', q=True, visible=True)", "query|ctl|-visible"},
            {"h2Record(['a', 'b'], 'c', close=False, label='say \"hi\"\\n\\\\')",
             "a|b|c|-label|say \"hi\"\n\\"},
            {"h2Record(item=['x', 'y z'], pair=(1, 2.5))", "-item|x|-item|y z|-pair|1|2.5"},
        };
        for (const auto& call : calls)
        {
            lastCall.clear();
            QVERIFY(HostPython::Execute(QStringLiteral("cmds.") + QString::fromUtf8(call[0]), false));
            QCOMPARE(lastCall, QString::fromUtf8(call[1]));
        }
        QVERIFY2(recorder->Errors().isEmpty(), qPrintable(recorder->Described()));
    }

    void failingMelRaisesRuntimeError()
    {
        const QString code = QStringLiteral("try:\n"
                                            "    %1\n"
                                            "    caught = None\n"
                                            "except RuntimeError as error:\n"
                                            "    caught = str(error)\n");
        QVERIFY(HostPython::Execute(code.arg(QStringLiteral("mel.eval('h2Fail')")), false));
        QCOMPARE(PyText(QStringLiteral("caught")),
                 QStringLiteral("Error occurred during execution of MEL script"));
        QVERIFY(recorder->Errors().contains(QStringLiteral("h2 failure text")));

        // A command called from Python carries MEL's own error text.
        QVERIFY(HostPython::Execute(code.arg(QStringLiteral("cmds.h2Fail()")), false));
        QCOMPARE(PyText(QStringLiteral("caught")), QStringLiteral("h2 failure text"));
        // Every Maya command is in cmds; one the host knows by name only raises and says so.
        QVERIFY(HostPython::Execute(code.arg(QStringLiteral("cmds.polyCube()")), false));
        QVERIFY(PyText(QStringLiteral("caught")).contains(QLatin1String("by name only")));
        QCOMPARE(PyInt(QStringLiteral("int(callable(cmds.polyCube))")), 1);
        QCOMPARE(PyInt(QStringLiteral("int(hasattr(cmds, 'polyCubeX'))")), 0);
    }

    void mayaPackageModules()
    {
        QVERIFY(HostPython::Execute(
            QStringLiteral("import maya.cmds, maya.mel, maya.utils\n"
                           "import maya.OpenMaya, maya.OpenMayaAnim, maya.OpenMayaFX\n"
                           "import maya.OpenMayaMPx, maya.OpenMayaRender, maya.OpenMayaUI\n"
                           "import maya.api.OpenMaya"),
            false));
        QVERIFY2(recorder->messages.isEmpty(), qPrintable(recorder->Described()));
        // Removing a module of the maya package forces a fresh import, as the module state revert needs.
        QVERIFY(HostPython::Execute(QStringLiteral("import maya.OpenMaya\n"
                                                   "first = maya.OpenMaya\n"
                                                   "del sys.modules['maya.OpenMaya']\n"
                                                   "import maya.OpenMaya\n"
                                                   "fresh = maya.OpenMaya is not first"),
                                    false));
        QCOMPARE(PyInt(QStringLiteral("fresh")), 1);
    }

    void executeDeferredWaitsForIdle()
    {
        QVERIFY(HostPython::Execute(QStringLiteral("import maya.utils\n"
                                                   "deferred = []\n"
                                                   "maya.utils.executeDeferred(deferred.append, 1)\n"
                                                   "maya.utils.executeDeferred('deferred.append(2)')\n"
                                                   "maya.utils.executeDeferred('1/0')"),
                                    false));
        QCOMPARE(PyInt(QStringLiteral("len(deferred)")), 0);
        QVERIFY(recorder->messages.isEmpty());
        HostIdleQueue::Flush();
        QCOMPARE(PyText(QStringLiteral("repr(deferred)")), QStringLiteral("[1, 2]"));
        QCOMPARE(recorder->Errors(), QStringList{QStringLiteral(
                                         "ZeroDivisionError: file <maya console> line 1: division by zero")});
    }

    void threadsReachTheHostOnTheMainThread()
    {
        everythingOnMainThread = true;
        QVERIFY(HostPython::Execute(
            QStringLiteral("import threading, maya.utils\n"
                           "thread_results = []\n"
                           "def work():\n"
                           "    thread_results.append(mel.eval('h2Value -k int'))\n"
                           "    on_main = lambda: threading.current_thread() is threading.main_thread()\n"
                           "    thread_results.append(maya.utils.executeInMainThreadWithResult(on_main))\n"
                           "    thread_results.append(on_main())\n"
                           "    in_main = maya.utils.executeInMainThreadWithResult('len(thread_results)')\n"
                           "    thread_results.append(in_main)\n"
                           "    print('from thread')\n"
                           "worker = threading.Thread(target=work)\n"
                           "worker.start()"),
            false));
        // The worker runs while the main thread waits in its event loop, without the GIL.
        QTRY_COMPARE(recorder->Texts(MCommandMessage::kDisplay),
                     QStringList{QStringLiteral("from thread\n")});
        QVERIFY(HostPython::Execute(QStringLiteral("worker.join()"), false));
        QCOMPARE(PyText(QStringLiteral("repr(thread_results)")), QStringLiteral("[42, True, False, 3]"));
        QVERIFY(everythingOnMainThread);
    }

private:
    QTemporaryDir appDir;
    struct sigaction sigintBefore = {};
    MCallbackId threadCheckId = 0;
};

QTEST_GUILESS_MAIN(TestHostPython)
#include "tst_HostPython.moc"
