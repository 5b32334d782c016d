// The substitute host's API classes, plug-in registry, callbacks, output, option variables and
// idle queue, driven through the same Maya API the plug-in uses.
#include "HostCommandResult.h"
#include "HostEvents.h"
#include "HostIdleQueue.h"
#include "HostMel.h"
#include "HostObjectHandle.h"
#include "HostOptionVars.h"
#include "HostOutput.h"
#include "HostPlugins.h"
#include "HostState.h"

#include <maya/MArgDatabase.h>
#include <maya/MCallbackIdArray.h>
#include <maya/MCommandMessage.h>
#include <maya/MCommandResult.h>
#include <maya/MEventMessage.h>
#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>
#include <maya/MMessage.h>
#include <maya/MPxCommand.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTemporaryFile>
#include <QtTest/QtTest>

#include "OutputRecorder.h"

#include <unistd.h>

namespace
{
using Recorder = OutputRecorder;

QString StdoutOf(const std::function<void()>& work)
{
    std::fflush(stdout);
    QTemporaryFile file;
    if (!file.open())
        return QStringLiteral("<no temporary file>");
    const int saved = dup(fileno(stdout));
    dup2(file.handle(), fileno(stdout));
    work();
    std::fflush(stdout);
    dup2(saved, fileno(stdout));
    close(saved);
    file.seek(0);
    return QString::fromUtf8(file.readAll());
}

// The test plug-in: one command with the flag kinds the product's command uses.
struct TestPluginState
{
    QStringList flagsSeen;
    QString openedFile;
    int created = 0;
    int deleted = 0;
    bool refuseUnload = false;
    QStringList unloadOrder;
};

TestPluginState& PluginState()
{
    static TestPluginState state;
    return state;
}

class TestCommand : public MPxCommand
{
public:
    TestCommand() { ++PluginState().created; }
    ~TestCommand() override { ++PluginState().deleted; }

    static void* Creator() { return new TestCommand; }

    static MSyntax Syntax()
    {
        MSyntax syntax;
        syntax.addFlag("-v", "-version");
        syntax.addFlag("-co", "-clearOutput");
        syntax.addFlag("-of", "-openFile", MSyntax::kString);
        syntax.addFlag("-tw", "-twice", MSyntax::kLong);
        syntax.addFlag("-h", "-half", MSyntax::kDouble);
        syntax.addFlag("-ls", "-list");
        syntax.addFlag("-f", "-fail");
        return syntax;
    }

    MStatus doIt(const MArgList& args) override
    {
        MStatus status;
        MArgDatabase database(syntax(), args, &status);
        if (!status)
            return status;
        PluginState().flagsSeen.clear();
        for (const char* flag :
             {"-version", "-clearOutput", "-openFile", "-twice", "-half", "-list", "-fail"})
        {
            if (database.isFlagSet(flag))
                PluginState().flagsSeen.append(QString::fromLatin1(flag));
        }
        MString text;
        int number = 0;
        double real = 0.0;
        if (database.isFlagSet("-v"))
            setResult("2.7.6");
        if (database.getFlagArgument("-of", 0, text))
            PluginState().openedFile = QString::fromUtf8(text.asChar());
        if (database.getFlagArgument("-tw", 0, number))
            setResult(number * 2);
        if (database.getFlagArgument("-h", 0, real))
            setResult(real / 2);
        if (database.isFlagSet("-ls"))
        {
            appendToResult("a");
            appendToResult("b c");
        }
        if (database.isFlagSet("-f"))
        {
            displayError("asked to fail");
            return MStatus::kFailure;
        }
        return MStatus::kSuccess;
    }
};

MStatus InitializeTestPlugin(MObject object)
{
    MStatus status;
    MFnPlugin plugin(object, "Tests", "1.0", "Any", &status);
    if (!status)
        return status;
    return plugin.registerCommand("hostTestCommand", TestCommand::Creator, TestCommand::Syntax);
}

MStatus UninitializeTestPlugin(MObject object)
{
    if (PluginState().refuseUnload)
        return MStatus::kFailure;
    MFnPlugin plugin(object);
    PluginState().unloadOrder.append(QString::fromUtf8(plugin.name().asChar()));
    return plugin.deregisterCommand("hostTestCommand");
}

MStatus InitializeEmptyPlugin(MObject object)
{
    MStatus status;
    MFnPlugin plugin(object, "Tests", "1.0", "Any", &status);
    return status;
}

MStatus UninitializeEmptyPlugin(MObject object)
{
    MFnPlugin plugin(object);
    PluginState().unloadOrder.append(QString::fromUtf8(plugin.name().asChar()));
    return MStatus::kSuccess;
}

MStatus InitializeTwice(MObject object)
{
    MFnPlugin plugin(object);
    if (!plugin.registerCommand("hostTwiceCommand", TestCommand::Creator))
        return MStatus::kFailure;
    // The same name again must be refused, and so must an already loaded plug-in's command.
    if (plugin.registerCommand("hostTwiceCommand", TestCommand::Creator))
        return MStatus::kFailure;
    if (plugin.registerCommand("hostTestCommand", TestCommand::Creator))
        return MStatus::kFailure;
    if (plugin.deregisterCommand("noSuchCommand"))
        return MStatus::kFailure;
    return MStatus::kSuccess;
}

// Callbacks for the callback tests.
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

void QuitCallback(void* data)
{
    static_cast<CallbackLog*>(data)->calls.append(QStringLiteral("quit"));
}
} // namespace

class TestHostCore : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void stringsAreUtf8();
    void arraysAndResultsGuardTheirBounds();
    void pluginCommandsComeAndGo();
    void registrationRefusesDuplicatesAndStrangers();
    void pluginRefusingToUnloadStaysLoaded();
    void unloadAllGoesInReverseOrder();
    void flagsByShortAndLongNames();
    void badFlagsFailLikeMaya();
    void typedResults();
    void typedResults_data();
    void callbackIdsAndRemoval();
    void callbackMayRemoveItselfWhileCalled();
    void terminalShowsWhatMayaShows();
    void melEchoAndResult();
    void optionVarsSurviveRestart();
    void corruptPreferencesGiveNoValues();
    void idleQueueRunsInOrderOnLaterTurns();
    void batchStateAndFolders();
    void sourceFileMissing();

private:
    QTemporaryDir appDir;
};

void TestHostCore::initTestCase()
{
    QVERIFY(appDir.isValid());
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    HostOutput::SetTerminalEchoEnabled(false);
}

void TestHostCore::init()
{
    PluginState() = TestPluginState();
    QVERIFY(HostPlugins::Load(QStringLiteral("hostTest"), InitializeTestPlugin, UninitializeTestPlugin));
}

void TestHostCore::cleanup()
{
    PluginState().refuseUnload = false;
    HostPlugins::UnloadAll();
    HostState::SetBatch(false);
}

void TestHostCore::stringsAreUtf8()
{
    const MString text(L"Grüße");
    QCOMPARE(QString::fromUtf8(text.asChar()), QStringLiteral("Grüße"));
    QCOMPARE(text.numChars(), 5u);
    QCOMPARE(text.length(), 7u);
    QCOMPARE(QString::fromUtf8(text.substringW(3, 4).asChar()), QStringLiteral("ße"));
    QCOMPARE(MString("abcdef").substring(1, 3), MString("bcd"));
    QCOMPARE(MString("abc").substring(2, 10), MString("c"));

    MStringArray parts;
    MString("a,,b,c,").split(',', parts);
    QCOMPARE(parts.length(), 3u);
    QCOMPARE(parts[1], MString("b"));

    MString number(" 42 ");
    QVERIFY(number.isInt());
    QCOMPARE(number.asInt(), 42);
    QVERIFY(!MString("4x").isInt());
    MString joined("v");
    joined += 2;
    joined += 0.5;
    QCOMPARE(joined, MString("v20.5"));
    QCOMPARE("pre" + MString("fix"), MString("prefix"));
    QCOMPARE(MString(static_cast<const char*>(nullptr)), MString(""));
}

void TestHostCore::arraysAndResultsGuardTheirBounds()
{
    MStringArray array;
    QVERIFY(array[5].isEmpty());
    array.set("x", 2);
    QCOMPARE(array.length(), 3u);
    QCOMPARE(array[2], MString("x"));
    QVERIFY(!array.remove(7));
    QVERIFY(!array.insert("y", 9));

    MCallbackIdArray ids;
    ids.append(5);
    QCOMPARE(ids[0], MCallbackId(5));
    QCOMPARE(static_cast<const MCallbackIdArray&>(ids)[3], MCallbackId(0));

    HostCommandResult result;
    QCOMPARE(result.resultType(), MCommandResult::kInvalid);
    result.setString("text");
    int number = 7;
    QVERIFY(!result.getResult(number));
    QCOMPARE(number, 7);
    MString text;
    QVERIFY(result.getResult(text));
    QCOMPARE(text, MString("text"));
}

void TestHostCore::pluginCommandsComeAndGo()
{
    QVERIFY(HostPlugins::IsLoaded(QStringLiteral("hostTest")));
    QCOMPARE(HostPlugins::Commands(), QStringList{QStringLiteral("hostTestCommand")});
    QVERIFY(HostMel::CommandExists(QStringLiteral("hostTestCommand")));
    MString version;
    QVERIFY(MGlobal::executeCommand("hostTestCommand -v", version));
    QCOMPARE(version, MString("2.7.6"));
    // One command object per call, deleted after it.
    QCOMPARE(PluginState().created, 1);
    QCOMPARE(PluginState().deleted, 1);

    QVERIFY(HostPlugins::Unload(QStringLiteral("hostTest")));
    QVERIFY(!HostPlugins::IsLoaded(QStringLiteral("hostTest")));
    QVERIFY(!HostMel::CommandExists(QStringLiteral("hostTestCommand")));
    Recorder recorder;
    QVERIFY(!MGlobal::executeCommand("hostTestCommand -v"));
    QCOMPARE(recorder.Texts(MCommandMessage::kError),
             QStringList{QStringLiteral("line 1: Cannot find procedure \"hostTestCommand\".")});
    QVERIFY(!HostPlugins::Unload(QStringLiteral("hostTest")));
}

void TestHostCore::registrationRefusesDuplicatesAndStrangers()
{
    QVERIFY(HostPlugins::Load(QStringLiteral("twice"), InitializeTwice, nullptr));
    QVERIFY(HostMel::CommandExists(QStringLiteral("hostTwiceCommand")));
    Recorder recorder;
    QVERIFY(!HostPlugins::Load(QStringLiteral("twice"), InitializeTwice, nullptr));
    QCOMPARE(recorder.Texts(MCommandMessage::kError).size(), 1);

    // A handle that names no plug-in record is refused.
    int notARecord = 0;
    const MObject stranger = HostObjectHandle::Make(&notARecord);
    MStatus status;
    MObject handle = stranger;
    MFnPlugin plugin(handle, "x", "1", "Any", &status);
    QVERIFY(!status);
    QVERIFY(!plugin.registerCommand("strangerCommand", TestCommand::Creator));
    QVERIFY(!HostMel::CommandExists(QStringLiteral("strangerCommand")));
    MObject null;
    MFnPlugin nullPlugin(null, "x", "1", "Any", &status);
    QVERIFY(!status);

    // A plug-in that fails to start leaves no trace.
    QVERIFY(!HostPlugins::Load(
        QStringLiteral("broken"), [](MObject) { return MStatus(MStatus::kFailure); }, nullptr));
    QVERIFY(!HostPlugins::IsLoaded(QStringLiteral("broken")));
}

void TestHostCore::pluginRefusingToUnloadStaysLoaded()
{
    PluginState().refuseUnload = true;
    Recorder recorder;
    QVERIFY(!HostPlugins::Unload(QStringLiteral("hostTest")));
    QVERIFY(HostPlugins::IsLoaded(QStringLiteral("hostTest")));
    QVERIFY(MGlobal::executeCommand("hostTestCommand -v"));
    QCOMPARE(recorder.Texts(MCommandMessage::kError).size(), 1);
    PluginState().refuseUnload = false;
    QVERIFY(HostPlugins::Unload(QStringLiteral("hostTest")));
}

void TestHostCore::unloadAllGoesInReverseOrder()
{
    QVERIFY(HostPlugins::Load(QStringLiteral("second"), InitializeEmptyPlugin, UninitializeEmptyPlugin));
    QVERIFY(HostPlugins::Load(QStringLiteral("third"), InitializeEmptyPlugin, UninitializeEmptyPlugin));
    QCOMPARE(HostPlugins::Loaded(),
             (QStringList{QStringLiteral("hostTest"), QStringLiteral("second"), QStringLiteral("third")}));
    QVERIFY(HostPlugins::UnloadAll());
    QCOMPARE(PluginState().unloadOrder,
             (QStringList{QStringLiteral("third"), QStringLiteral("second"), QStringLiteral("hostTest")}));
    QVERIFY(HostPlugins::Loaded().isEmpty());
}

void TestHostCore::flagsByShortAndLongNames()
{
    QVERIFY(MGlobal::executeCommand("hostTestCommand -version -clearOutput"));
    QCOMPARE(PluginState().flagsSeen,
             (QStringList{QStringLiteral("-version"), QStringLiteral("-clearOutput")}));

    QVERIFY(MGlobal::executeCommand("hostTestCommand -of \"/path with spaces/x.py\""));
    QCOMPARE(PluginState().openedFile, QStringLiteral("/path with spaces/x.py"));
    QVERIFY(MGlobal::executeCommand(R"(hostTestCommand -openFile "C:\\dir\\a \"quoted\".py")"));
    QCOMPARE(PluginState().openedFile, QStringLiteral("C:\\dir\\a \"quoted\".py"));
    QVERIFY(MGlobal::executeCommand("string $p = \"/tmp/\"; hostTestCommand -of ($p + \"v.mel\")"));
    QCOMPARE(PluginState().openedFile, QStringLiteral("/tmp/v.mel"));
    QVERIFY(MGlobal::executeCommand("hostTestCommand -of $p"));
    QCOMPARE(PluginState().openedFile, QStringLiteral("/tmp/"));
}

void TestHostCore::badFlagsFailLikeMaya()
{
    Recorder recorder;
    QVERIFY(!MGlobal::executeCommand("hostTestCommand -x"));
    QCOMPARE(recorder.Texts(MCommandMessage::kError),
             QStringList{QStringLiteral("line 1: Invalid flag '-x'")});
    QVERIFY(PluginState().flagsSeen.isEmpty());

    recorder.messages.clear();
    QVERIFY(!MGlobal::executeCommand("hostTestCommand -v;\nhostTestCommand -of"));
    QCOMPARE(recorder.Texts(MCommandMessage::kError),
             QStringList{QStringLiteral("line 2: Flag 'openFile' must be passed a string argument")});

    recorder.messages.clear();
    QVERIFY(!MGlobal::executeCommand("hostTestCommand -twice many"));
    QCOMPARE(recorder.Texts(MCommandMessage::kError),
             QStringList{QStringLiteral("line 1: Flag 'twice' must be passed an integer argument")});

    // A failing command stops the script there.
    recorder.messages.clear();
    QVERIFY(!MGlobal::executeCommand("hostTestCommand -fail; print \"after\""));
    QCOMPARE(recorder.Texts(MCommandMessage::kError), QStringList{QStringLiteral("asked to fail")});
    QVERIFY(recorder.Texts(MCommandMessage::kDisplay).isEmpty());

    // Outside a MEL statement there is no line to name.
    MArgList args;
    args.addArg("-nope");
    MStatus status;
    recorder.messages.clear();
    MArgDatabase database(TestCommand::Syntax(), args, &status);
    QVERIFY(!status);
    QCOMPARE(recorder.Texts(MCommandMessage::kError), QStringList{QStringLiteral("Invalid flag '-nope'")});
}

void TestHostCore::typedResults_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("type");
    QTest::newRow("string") << QStringLiteral("hostTestCommand -v") << int(MCommandResult::kString);
    QTest::newRow("int") << QStringLiteral("hostTestCommand -tw 21") << int(MCommandResult::kInt);
    QTest::newRow("double") << QStringLiteral("hostTestCommand -h 5") << int(MCommandResult::kDouble);
    QTest::newRow("array") << QStringLiteral("hostTestCommand -ls") << int(MCommandResult::kStringArray);
    QTest::newRow("none") << QStringLiteral("hostTestCommand") << int(MCommandResult::kInvalid);
}

// Each typed overload succeeds for its own type only and leaves its argument alone otherwise.
void TestHostCore::typedResults()
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
    if (type == MCommandResult::kStringArray)
    {
        QCOMPARE(array.length(), 2u);
        QCOMPARE(array[1], MString("b c"));
    }
    else
    {
        QCOMPARE(array[0], MString("unchanged"));
    }
}

void TestHostCore::callbackIdsAndRemoval()
{
    CallbackLog log;
    MStatus status;
    const MCallbackId quit = MEventMessage::addEventCallback("quitApplication", QuitCallback, &log, &status);
    QVERIFY(status);
    const MCallbackId output = MCommandMessage::addCommandOutputCallback(OtherCallback, &log, &status);
    QVERIFY(status);
    QVERIFY(quit != 0 && output != 0 && quit != output);
    QCOMPARE(MEventMessage::addEventCallback("noSuchEvent", QuitCallback, &log, &status), MCallbackId(0));
    QVERIFY(!status);

    MGlobal::displayInfo("one");
    MCallbackIdArray ids;
    ids.append(quit);
    ids.append(output);
    QVERIFY(MMessage::removeCallbacks(ids));
    MGlobal::displayInfo("two");
    HostEvents::Fire(QStringLiteral("quitApplication"));
    QCOMPARE(log.calls, QStringList{QStringLiteral("other:one")});
    QVERIFY(!MMessage::removeCallback(output));
    QVERIFY(!MMessage::removeCallback(0));
}

void TestHostCore::callbackMayRemoveItselfWhileCalled()
{
    CallbackLog log;
    log.selfRemoving = MCommandMessage::addCommandOutputCallback(SelfRemovingCallback, &log);
    log.other = MCommandMessage::addCommandOutputCallback(OtherCallback, &log);
    Recorder recorder; // registered after both, still called
    MGlobal::displayWarning("first");
    MGlobal::displayWarning("second");
    // The second callback was removed by the first before its turn, so it is never called.
    QCOMPARE(log.calls, QStringList{QStringLiteral("self:first")});
    QCOMPARE(recorder.Texts(MCommandMessage::kWarning),
             (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
}

void TestHostCore::terminalShowsWhatMayaShows()
{
    HostOutput::SetTerminalEchoEnabled(true);
    const QString printed = StdoutOf(
        []
        {
            HostOutput::Emit(QStringLiteral("echoed;\n"), MCommandMessage::kHistory);
            HostOutput::Emit(QStringLiteral("raw"), MCommandMessage::kDisplay);
            HostOutput::Emit(QStringLiteral("|\n"), MCommandMessage::kDisplay);
            MGlobal::displayInfo("info");
            MGlobal::displayWarning("careful");
            MGlobal::displayError("broken");
            HostOutput::Emit(QStringLiteral("5"), MCommandMessage::kResult);
            HostOutput::Emit(QStringLiteral("Traceback\n"), MCommandMessage::kStackTrace);
        });
    HostOutput::SetTerminalEchoEnabled(false);
    QCOMPARE(printed, QStringLiteral("raw|\ninfo\nWarning: careful\nError: broken\nResult: 5\nTraceback\n"));
    QVERIFY(StdoutOf([] { MGlobal::displayInfo("silent"); }).isEmpty());
}

void TestHostCore::melEchoAndResult()
{
    Recorder recorder;
    QVERIFY(MGlobal::executeCommand("hostTestCommand -tw 2", true));
    QVERIFY(MGlobal::executeCommand("hostTestCommand -ls;  \n", true, true));
    QVERIFY(MGlobal::executeCommand("hostTestCommand", true));
    QVERIFY(MGlobal::executeCommand("hostTestCommand -v", false));
    QVERIFY(!MGlobal::executeCommand("hostTestCommand -f", true));
    const QList<QPair<int, QString>> expected = {
        {MCommandMessage::kHistory, QStringLiteral("hostTestCommand -tw 2;\n")},
        {MCommandMessage::kResult, QStringLiteral("4")},
        {MCommandMessage::kHistory, QStringLiteral("hostTestCommand -ls;\n")},
        {MCommandMessage::kResult, QStringLiteral("a b c")},
        {MCommandMessage::kHistory, QStringLiteral("hostTestCommand;\n")},
        {MCommandMessage::kHistory, QStringLiteral("hostTestCommand -f;\n")},
        {MCommandMessage::kError, QStringLiteral("asked to fail")},
    };
    QCOMPARE(recorder.messages.size(), expected.size());
    for (int i = 0; i < expected.size(); ++i)
    {
        QCOMPARE(int(recorder.messages[i].type), expected[i].first);
        QCOMPARE(recorder.messages[i].text, expected[i].second);
    }
}

void TestHostCore::optionVarsSurviveRestart()
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
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("optionVar -iv \"echoAllLines\" 1;\n"));
    // Only the finished file is left: the write went through a temporary file.
    QCOMPARE(QDir(dir.path() + QStringLiteral("/2026/prefs")).entryList(QDir::Files),
             QStringList{QStringLiteral("userPrefs.mel")});

    HostOptionVars::Forget();
    QCOMPARE(MGlobal::optionVarIntValue("echoAllLines", &exists), 1);
    QVERIFY(exists);
    QCOMPARE(MGlobal::optionVarIntValue("stackTraceIsOn", &exists), 0);
    QVERIFY(exists);
    QCOMPARE(MGlobal::optionVarStringValue("quote"), MString("say \"hi\"\n"));
    QCOMPARE(MGlobal::optionVarDoubleValue("scale"), 1.25);
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
}

void TestHostCore::corruptPreferencesGiveNoValues()
{
    QTemporaryDir dir;
    qputenv("MAYA_APP_DIR", QFile::encodeName(dir.path()));
    QFile file(HostOptionVars::FilePath());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("\xff\xfe\x00optionVar -iv \"broken\" notanumber;\noptionVar -iv \"open", 56));
    file.write(QByteArray(4096, '\0'));
    file.close();
    HostOptionVars::Forget();
    bool exists = true;
    QCOMPARE(MGlobal::optionVarIntValue("broken", &exists), 0);
    QVERIFY(!exists);
    QVERIFY(HostOptionVars::Names().isEmpty());
    // Writing replaces the garbage with a readable file.
    QVERIFY(MGlobal::setOptionVarValue("fresh", 3));
    HostOptionVars::Forget();
    QCOMPARE(HostOptionVars::Names(), QStringList{QStringLiteral("fresh")});
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
}

void TestHostCore::idleQueueRunsInOrderOnLaterTurns()
{
    HostIdleQueue::Flush();
    QStringList order;
    HostIdleQueue::Post(
        [&order]
        {
            order.append(QStringLiteral("first"));
            HostIdleQueue::Post([&order] { order.append(QStringLiteral("posted while flushing")); });
        });
    HostIdleQueue::Post([&order] { order.append(QStringLiteral("second")); });
    QVERIFY(MGlobal::executeCommandOnIdle("hostTestCommand -of \"idle.py\""));
    QCOMPARE(HostIdleQueue::Pending(), 3);
    QVERIFY(order.isEmpty());
    QVERIFY(PluginState().openedFile.isEmpty());

    HostIdleQueue::Flush();
    QCOMPARE(order, (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
    QCOMPARE(PluginState().openedFile, QStringLiteral("idle.py"));
    QCOMPARE(HostIdleQueue::Pending(), 1);

    // The event loop flushes by itself.
    QTRY_COMPARE(HostIdleQueue::Pending(), 0);
    QCOMPARE(order.last(), QStringLiteral("posted while flushing"));
}

void TestHostCore::batchStateAndFolders()
{
    QCOMPARE(MGlobal::mayaState(), MGlobal::kInteractive);
    HostState::SetBatch(true);
    QCOMPARE(MGlobal::mayaState(), MGlobal::kBatch);
    int batch = 0;
    QVERIFY(MGlobal::executeCommand("about -batch", batch));
    QCOMPARE(batch, 1);
    QCOMPARE(HostState::UserPrefDir(), appDir.path() + QStringLiteral("/2026/prefs/"));
    QVERIFY(QDir(HostState::UserScriptDir()).exists());
    QCOMPARE(HostState::UserScriptDir(), appDir.path() + QStringLiteral("/2026/scripts/"));

    int calls = 0;
    QVERIFY(!HostState::RequestQuit());
    HostState::SetQuitHandler([&calls] { ++calls; });
    QVERIFY(MGlobal::executeCommand("quit -f"));
    QVERIFY(MGlobal::executeCommand("quit -force"));
    QCOMPARE(calls, 2);
    HostState::SetQuitHandler({});
}

void TestHostCore::sourceFileMissing()
{
    Recorder recorder;
    QVERIFY(!MGlobal::sourceFile("/no/such/file.mel"));
    QCOMPARE(recorder.Texts(MCommandMessage::kError),
             QStringList{QStringLiteral("Cannot find file \"/no/such/file.mel\" for source statement.")});
}

QTEST_GUILESS_MAIN(TestHostCore)
#include "tst_HostCore.moc"
