// The substitute host's API classes, plug-in commands, callbacks, output, option variables and
// idle queue, driven through the same Maya API the plug-in uses.
#include "FlagsTestCommand.h"
#include "HostIdleQueue.h"
#include "HostOptionVars.h"
#include "HostOutput.h"
#include "HostPlugins.h"
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

#include "OutputRecorder.h"

namespace
{
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
    }

    void init()
    {
        FlagsTestCommand::openedFile.clear();
        QVERIFY(HostPlugins::Load(QStringLiteral("hostTest"), InitializeTestPlugin, UninitializeTestPlugin));
    }

    void cleanup() { HostPlugins::UnloadAll(); }

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
        qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    }

    void corruptPreferencesGiveNoValues()
    {
        QTemporaryDir dir;
        qputenv("MAYA_APP_DIR", QFile::encodeName(dir.path()));
        const QByteArray garbage("\xff\xfe\x00optionVar -iv \"broken\" notanumber;\noptionVar -iv \"open",
                                 56);
        QVERIFY(TestFiles::Write(HostOptionVars::FilePath(), garbage + QByteArray(4096, '\0')));
        HostOptionVars::Forget();
        QVERIFY(HostOptionVars::Names().isEmpty());
        // Writing replaces the garbage with a readable file.
        QVERIFY(MGlobal::setOptionVarValue("fresh", 3));
        HostOptionVars::Forget();
        QCOMPARE(HostOptionVars::Names(), QStringList{QStringLiteral("fresh")});
        qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
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
        // And work posted after that is flushed in its turn too.
        HostIdleQueue::Post([&order] { order.append(QStringLiteral("later")); });
        QTRY_COMPARE(order.last(), QStringLiteral("later"));
    }

private:
    QTemporaryDir appDir;
};

QTEST_GUILESS_MAIN(TestHostCore)
#include "tst_HostCore.moc"
