// The standalone program run as a user runs it: its flags, its standard output and its exit
// codes, each run with a fresh preferences folder; and text typed into it surviving a SIGKILL.
#include "settings/Settings.h"
#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
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

// Fresh preferences for each run, never the user's.
QProcessEnvironment Environment(const QTemporaryDir& appDir)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("MAYA_APP_DIR"), appDir.path());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    return environment;
}

QStringList RecoveryCopies(const QString& root)
{
    QStringList copies;
    QDirIterator it(root, {QStringLiteral("recovery_*.json")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        copies.append(it.next());
    return copies;
}

QString RecoveredText(const QString& root)
{
    const QStringList copies = RecoveryCopies(root);
    if (copies.size() != 1)
        return QString();
    QFile file(copies.first());
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QJsonDocument::fromJson(file.readAll()).object().value(QStringLiteral("text")).toString();
}

RunResult Run(const QStringList& arguments)
{
    RunResult result;
    QTemporaryDir appDir;
    if (!appDir.isValid())
        return result;
    QProcess process;
    process.setProcessEnvironment(Environment(appDir));
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

} // namespace

class TestStandaloneProgram : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY2(QFileInfo(ProgramPath()).isExecutable(), qPrintable(ProgramPath())); }

    void runs_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QStringList>("printed");
        QTest::addColumn<QString>("notPrinted");
        const QString batch = QStringLiteral("-batch");
        const QString command = QStringLiteral("-command");
        QTest::newRow("version through python")
            << QStringList{command,
                           "python(\"import maya.mel; print(maya.mel.eval(\\\"brindletEditor2 -v\\\"))\"); "
                           "quit -f"}
            << 0 << QStringList{Settings::VERSION_STRING + QLatin1Char('\n')} << "";
        // Without -batch the program opens the editor before the command runs.
        QTest::newRow("editor open")
            << QStringList{command,
                           "print(\"visible=\" + `workspaceControl -q -visible BrindletEditor2Window` + "
                           "\"\\n\"); quit -f"}
            << 0 << QStringList{"visible=1"} << "";
        QTest::newRow("batch has no editor command")
            << QStringList{batch, command, "brindletEditor2 -v; print \"not reached\\n\""} << 1
            << QStringList{"Cannot find procedure"} << "not reached";
        QTest::newRow("python print") << QStringList{batch, command, "python(\"print('from ' + 'python')\")"}
                                      << 0 << QStringList{"from python"} << "";
        QTest::newRow("quit in command") << QStringList{batch, command, "print \"before quit\\n\"; quit -f"}
                                         << 0 << QStringList{"before quit"} << "";
        QTest::newRow("error") << QStringList{batch, command, "print \"partial\\n\"; error \"deliberate\""}
                               << 1 << QStringList{"partial", "deliberate"} << "";
        QTest::newRow("no command") << QStringList{batch} << 0 << QStringList() << "";
        QTest::newRow("help") << QStringList{"-help"} << 0 << QStringList{"-batch", "-command"} << "";
    }

    void runs()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QStringList, printed);
        QFETCH(QString, notPrinted);
        const RunResult result = Run(arguments);
        QVERIFY(result.finished);
        QCOMPARE(result.exitCode, exitCode);
        for (const QString& text : printed)
            QVERIFY2(result.standardOutput.contains(text),
                     qPrintable(result.standardOutput + result.standardError));
        if (!notPrinted.isEmpty())
            QVERIFY(!result.standardOutput.contains(notPrinted));
    }

    void typedTextSurvivesSigkill()
    {
        QTemporaryDir appDir;
        QVERIFY(appDir.isValid());
        const QProcessEnvironment environment = Environment(appDir);

        // First run: keys into the editor, then the kill once the copy is written.
        QProcessEnvironment typing = environment;
        typing.insert(QStringLiteral("BRINDLET_EDITOR2_TEST_TYPE"),
                      QStringLiteral("crash = 1  # \u00e9 \u4e2d survives\nprint(crash)"));
        QProcess first;
        first.setProcessEnvironment(typing);
        first.start(ProgramPath(), {});
        QVERIFY(first.waitForStarted());
        QByteArray output;
        QDeadlineTimer deadline(120000);
        while (!output.contains("typed into") || output.count('\n') < 2)
        {
            QVERIFY2(!deadline.hasExpired() && first.state() == QProcess::Running, output.constData());
            first.waitForReadyRead(1000);
            output += first.readAllStandardOutput();
        }
        const QList<QByteArray> lines = output.mid(output.indexOf("typed into")).split('\n');
        const QString bufferPath = QString::fromUtf8(lines.at(0).mid(11).chopped(1));
        const QString typed = QString::fromUtf8(QByteArray::fromBase64(lines.at(1)));
        QVERIFY2(typed.contains(QStringLiteral("\u00e9 \u4e2d survives")), qPrintable(typed));
        QTRY_COMPARE_WITH_TIMEOUT(RecoveredText(appDir.path()), typed, 30000);
        first.kill();
        QVERIFY(first.waitForFinished());
        QCOMPARE(first.exitStatus(), QProcess::CrashExit);
        // The buffer's own file never received the text: only the copy holds it.
        QFile buffer(bufferPath);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        QCOMPARE(buffer.readAll(), QByteArray());
        buffer.close();

        // Second run: offered, restored, and saved with the buffers at quit.
        QProcessEnvironment answering = environment;
        answering.insert(QStringLiteral("BRINDLET_EDITOR2_TEST_ANSWER"), QStringLiteral("Restore"));
        QProcess second;
        second.setProcessEnvironment(answering);
        second.start(ProgramPath(), {QStringLiteral("-command"), QStringLiteral("quit -f")});
        QVERIFY(second.waitForFinished(120000));
        const QString said = QString::fromUtf8(second.readAllStandardOutput());
        QVERIFY2(said.contains(QStringLiteral("message box:")) && said.contains(bufferPath) &&
                     said.contains(QStringLiteral("answered: Restore")),
                 qPrintable(said));
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(buffer.readAll()), typed);
        QVERIFY(RecoveryCopies(appDir.path()).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestStandaloneProgram)

#include "tst_StandaloneProgram.moc"
