// The standalone program run as a user runs it: its flags, its standard output and its exit
// codes, each run with a fresh preferences folder; and text typed into it surviving a SIGKILL.
#include "TestFiles.h"
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
// The test binary lives in build/tests/, the program in build/app/.
QString ProgramPath()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../app/brindlet-editor2"));
}

// Starts the program on the preferences in `appDir`, never the user's, and a test hook's variable.
void Start(QProcess& process, const QTemporaryDir& appDir, const QStringList& arguments,
           const QString& variable = QString(), const QString& value = QString())
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("MAYA_APP_DIR"), appDir.path());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    if (!variable.isEmpty())
        environment.insert(variable, value);
    process.setProcessEnvironment(environment);
    process.start(ProgramPath(), arguments);
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
    return copies.size() == 1 ? QJsonDocument::fromJson(TestFiles::Read(copies.first()))["text"].toString()
                              : QString();
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
        QFETCH(QStringList, printed);
        QFETCH(QString, notPrinted);
        QTemporaryDir appDir;
        QProcess process;
        Start(process, appDir, arguments);
        // A guard against a program that never quits (QProcess kills it), not a measure of speed.
        QVERIFY(process.waitForFinished(120000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QTEST(process.exitCode(), "exitCode");
        const QString output = QString::fromUtf8(process.readAllStandardOutput());
        for (const QString& text : printed)
            QVERIFY2(output.contains(text), qPrintable(output + process.readAllStandardError()));
        if (!notPrinted.isEmpty())
            QVERIFY(!output.contains(notPrinted));
    }

    void typedTextSurvivesSigkill()
    {
        QTemporaryDir appDir;
        QVERIFY(appDir.isValid());
        // First run: keys into the editor, then the kill once the copy is written.
        QProcess first;
        Start(first, appDir, {}, QStringLiteral("BRINDLET_EDITOR2_TEST_TYPE"),
              QStringLiteral("crash = 1  # \u00e9 \u4e2d survives\nprint(crash)"));
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
        QVERIFY(QFile::exists(bufferPath));
        QCOMPARE(TestFiles::Read(bufferPath), QByteArray());

        // Second run: offered, restored, and saved with the buffers at quit.
        QProcess second;
        Start(second, appDir, {QStringLiteral("-command"), QStringLiteral("quit -f")},
              QStringLiteral("BRINDLET_EDITOR2_TEST_ANSWER"), QStringLiteral("Restore"));
        QVERIFY(second.waitForFinished(120000));
        const QString said = QString::fromUtf8(second.readAllStandardOutput());
        QVERIFY2(said.contains(QStringLiteral("message box:")) && said.contains(bufferPath) &&
                     said.contains(QStringLiteral("answered: Restore")),
                 qPrintable(said));
        QCOMPARE(QString::fromUtf8(TestFiles::Read(bufferPath)), typed);
        QVERIFY(RecoveryCopies(appDir.path()).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestStandaloneProgram)

#include "tst_StandaloneProgram.moc"
