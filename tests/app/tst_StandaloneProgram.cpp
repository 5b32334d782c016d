// The standalone program run as a user runs it: its flags, its standard output and its exit
// codes, each run with a fresh preferences folder.
#include "settings/Settings.h"
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

namespace
{
struct RunResult
{
    bool finished = false;
    int exitCode = -1;
    QString standardOutput;
    QString standardError;
};

// The test binary lives in build/tests/, the program in build/app/.
QString ProgramPath()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../app/brindlet-editor2"));
}
} // namespace

class TestStandaloneProgram : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void versionThroughPython();
    void editorOpensWithoutBatch();
    void batchHasNoEditorCommand();
    void batchExitCodes_data();
    void batchExitCodes();
    void helpFlag();

private:
    RunResult Run(const QStringList& arguments);
};

void TestStandaloneProgram::initTestCase()
{
    QVERIFY2(QFileInfo(ProgramPath()).isExecutable(), qPrintable(ProgramPath()));
}

RunResult TestStandaloneProgram::Run(const QStringList& arguments)
{
    RunResult result;
    QTemporaryDir appDir;
    if (!appDir.isValid())
        return result;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("MAYA_APP_DIR"), appDir.path());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(ProgramPath(), arguments);
    // A guard against a program that never quits, not a measure of speed.
    result.finished = process.waitForFinished(120000);
    if (!result.finished)
    {
        process.kill();
        process.waitForFinished();
    }
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.standardOutput = QString::fromUtf8(process.readAllStandardOutput());
    result.standardError = QString::fromUtf8(process.readAllStandardError());
    return result;
}

void TestStandaloneProgram::versionThroughPython()
{
    const RunResult result =
        Run({QStringLiteral("-command"),
             QStringLiteral(
                 "python(\"import maya.mel; print(maya.mel.eval(\\\"brindletEditor2 -v\\\"))\"); quit -f")});
    QVERIFY(result.finished);
    QCOMPARE(result.exitCode, 0);
    const QStringList lines = result.standardOutput.split(QLatin1Char('\n'));
    QVERIFY2(lines.contains(Settings::VERSION_STRING),
             qPrintable(result.standardOutput + result.standardError));
}

void TestStandaloneProgram::editorOpensWithoutBatch()
{
    // The program opens the editor before the command runs.
    const RunResult result =
        Run({QStringLiteral("-command"),
             QStringLiteral(
                 "print(\"visible=\" + `workspaceControl -q -visible BrindletEditor2Window` + \"\\n\"); "
                 "quit -f")});
    QVERIFY(result.finished);
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.standardOutput.contains(QStringLiteral("visible=1")), qPrintable(result.standardOutput));
}

void TestStandaloneProgram::batchHasNoEditorCommand()
{
    const RunResult result = Run({QStringLiteral("-batch"), QStringLiteral("-command"),
                                  QStringLiteral("brindletEditor2 -v; print \"not reached\\n\"")});
    QVERIFY(result.finished);
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.standardOutput.contains(QStringLiteral("Cannot find procedure")),
             qPrintable(result.standardOutput));
    QVERIFY(!result.standardOutput.contains(QStringLiteral("not reached")));
}

void TestStandaloneProgram::batchExitCodes_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("printed");
    QTest::newRow("mel print") << QStringLiteral("print \"batch ok\\n\"") << 0 << QStringLiteral("batch ok");
    QTest::newRow("python print") << QStringLiteral("python(\"print('from ' + 'python')\")") << 0
                                  << QStringLiteral("from python");
    QTest::newRow("quit in command") << QStringLiteral("print \"before quit\\n\"; quit -f") << 0
                                     << QStringLiteral("before quit");
    QTest::newRow("error") << QStringLiteral("print \"partial\\n\"; error \"deliberate\"") << 1
                           << QStringLiteral("deliberate");
    QTest::newRow("no command") << QString() << 0 << QString();
}

void TestStandaloneProgram::batchExitCodes()
{
    QFETCH(QString, command);
    QFETCH(int, exitCode);
    QFETCH(QString, printed);
    QStringList arguments = {QStringLiteral("-batch")};
    if (!command.isEmpty())
        arguments << QStringLiteral("-command") << command;
    const RunResult result = Run(arguments);
    QVERIFY(result.finished);
    QCOMPARE(result.exitCode, exitCode);
    QVERIFY2(result.standardOutput.contains(printed), qPrintable(result.standardOutput));
}

void TestStandaloneProgram::helpFlag()
{
    const RunResult result = Run({QStringLiteral("-help")});
    QVERIFY(result.finished);
    QCOMPARE(result.exitCode, 0);
    QVERIFY(result.standardOutput.contains(QStringLiteral("-batch")));
    QVERIFY(result.standardOutput.contains(QStringLiteral("-command")));
}

QTEST_GUILESS_MAIN(TestStandaloneProgram)

#include "tst_StandaloneProgram.moc"
