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
    void runs_data();
    void runs();

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

void TestStandaloneProgram::runs_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QStringList>("printed");
    QTest::addColumn<QString>("notPrinted");
    const QString batch = QStringLiteral("-batch");
    const QString command = QStringLiteral("-command");
    QTest::newRow("version through python")
        << QStringList{command, "python(\"import maya.mel; print(maya.mel.eval(\\\"brindletEditor2 -v\\\"))\"); "
                                "quit -f"}
        << 0 << QStringList{Settings::VERSION_STRING + QLatin1Char('\n')} << "";
    // Without -batch the program opens the editor before the command runs.
    QTest::newRow("editor open")
        << QStringList{command, "print(\"visible=\" + `workspaceControl -q -visible BrindletEditor2Window` + "
                                "\"\\n\"); quit -f"}
        << 0 << QStringList{"visible=1"} << "";
    QTest::newRow("batch has no editor command")
        << QStringList{batch, command, "brindletEditor2 -v; print \"not reached\\n\""} << 1
        << QStringList{"Cannot find procedure"} << "not reached";
    QTest::newRow("python print") << QStringList{batch, command, "python(\"print('from ' + 'python')\")"} << 0
                                  << QStringList{"from python"} << "";
    QTest::newRow("quit in command") << QStringList{batch, command, "print \"before quit\\n\"; quit -f"} << 0
                                     << QStringList{"before quit"} << "";
    QTest::newRow("error") << QStringList{batch, command, "print \"partial\\n\"; error \"deliberate\""} << 1
                           << QStringList{"partial", "deliberate"} << "";
    QTest::newRow("no command") << QStringList{batch} << 0 << QStringList() << "";
    QTest::newRow("help") << QStringList{"-help"} << 0 << QStringList{"-batch", "-command"} << "";
}

void TestStandaloneProgram::runs()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QStringList, printed);
    QFETCH(QString, notPrinted);
    const RunResult result = Run(arguments);
    QVERIFY(result.finished);
    QCOMPARE(result.exitCode, exitCode);
    for (const QString& text : printed)
        QVERIFY2(result.standardOutput.contains(text), qPrintable(result.standardOutput + result.standardError));
    if (!notPrinted.isEmpty())
        QVERIFY(!result.standardOutput.contains(notPrinted));
}

QTEST_GUILESS_MAIN(TestStandaloneProgram)

#include "tst_StandaloneProgram.moc"
