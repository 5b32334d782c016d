// Text typed into the standalone program survives a SIGKILL: the next run offers it back and
// restores exactly what was typed.
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
QString ProgramPath()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../app/brindlet-editor2"));
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
} // namespace

class TestCrashRecovery : public QObject
{
    Q_OBJECT

private slots:
    void typedTextSurvivesSigkill()
    {
        QVERIFY(QFileInfo(ProgramPath()).isExecutable());
        QTemporaryDir appDir;
        QVERIFY(appDir.isValid());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("MAYA_APP_DIR"), appDir.path());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));

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

QTEST_GUILESS_MAIN(TestCrashRecovery)

#include "tst_CrashRecovery.moc"
