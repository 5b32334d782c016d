#include "HostFixture.h"
#include "TestFiles.h"

#include "language/PylintWorker.h"
#include "settings/Settings.h"

#include <QtTest/QtTest>

#include <memory>

#include <sys/resource.h>

namespace
{
const QString PYLINT = QStringLiteral("/usr/bin/pylint");

const QString SOURCE_WITH_FAULTS = QStringLiteral("import os\n\n\ndef run():\n    return undefined_name\n");

// A worker on its own thread, wired as an editor group wires it: its output is received on the
// main thread.
class WorkerOnThread
{
public:
    struct Output
    {
        QString filePath;
        QStringList lines;
        int fieldCount = 0;
        QThread* thread = nullptr;
    };

    WorkerOnThread() : worker(new PylintWorker)
    {
        QObject::connect(worker, &PylintWorker::PylintOutput, &receiver,
                         [this](const QString& filePath, const QStringList& lines, int fieldCount) {
                             outputs.append({filePath, lines, fieldCount, QThread::currentThread()});
                         });
        worker->moveToThread(&thread);
        thread.start();
    }
    ~WorkerOnThread()
    {
        Shutdown();
        delete worker;
    }
    void Check(const QString& text, const QString& filePath)
    {
        QMetaObject::invokeMethod(worker, "Pylint", Qt::QueuedConnection, Q_ARG(QString, text),
                                  Q_ARG(QString, filePath), Q_ARG(QString, QString()));
    }
    bool Shutdown()
    {
        if (thread.isFinished())
            return true;
        QMetaObject::invokeMethod(worker, "Shutdown", Qt::QueuedConnection);
        return thread.wait(1000);
    }
    PylintWorker* worker;
    QThread thread;
    QObject receiver;
    QList<Output> outputs;
};

// The message ids and lines of every templated finding, as "W0611@1".
QStringList Findings(const QStringList& lines)
{
    QStringList findings;
    for (const QString& line : lines)
    {
        const QStringList parts = line.split(QStringLiteral(":$$:"), Qt::SkipEmptyParts);
        if (parts.size() == 5)
            findings << QStringLiteral("%1@%2").arg(parts.at(3).mid(1, 5), parts.at(1));
    }
    return findings;
}
} // namespace

class tst_PylintWorker : public QObject
{
    Q_OBJECT

private:
    // A shell script in Pylint's place; none where it cannot be written.
    void UseScript(const QString& name, const QString& body)
    {
        const QString path = scripts.filePath(name);
        const bool written = TestFiles::Write(path, ("#!/bin/sh\n" + body + "\n").toUtf8());
        Settings::pylintPath =
            written && QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)
                ? path
                : QString();
    }

    int CountMessages(const QString& fragment) const
    {
        const auto& messages = host->Messages();
        return int(std::count_if(messages.cbegin(), messages.cend(),
                                 [&](const HostFixture::Message& m) { return m.text.contains(fragment); }));
    }

    std::unique_ptr<HostFixture> host;
    QTemporaryDir scripts;

private slots:
    void initTestCase()
    {
        if (!QFile::exists(PYLINT))
            QSKIP("Pylint is not installed (scripts/setup.sh installs it)");
        host = std::make_unique<HostFixture>(true);
        QVERIFY(host->LoadPlugin());
    }

    void init() { Settings::pylintEnabled = true; }

    void cleanup()
    {
        Settings::pylintUseMinimalCheckers = false;
        Settings::pylintConfigPath.clear();
        Settings::pylintShowErrors = false;
        host->ClearMessages();
    }

    void realPylintReportsFindings_data()
    {
        QTest::addColumn<bool>("minimal");
        QTest::addColumn<QString>("rc");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<QStringList>("absent");
        // The minimal set keeps unused variables and the like but drops style and unused imports.
        using L = QStringList;
        QTest::newRow("full") << false << QString() << L{"W0611@1", "E0602@5", "C0116@4"} << L{};
        QTest::newRow("minimal") << true << QString() << L{"E0602@5"} << L{"W0611@1", "C0116@4"};
        // An rc file that disables the unused import: Pylint must have read it.
        QTest::newRow("rc file") << false << "[MESSAGES CONTROL]\ndisable=unused-import\n"
                                 << L{"E0602@5"} << L{"W0611@1"};
    }

    void realPylintReportsFindings()
    {
        QFETCH(bool, minimal);
        QFETCH(QStringList, expected);
        QFETCH(QString, rc);
        QFETCH(QStringList, absent);
        Settings::pylintPath = PYLINT;
        Settings::pylintUseMinimalCheckers = minimal;
        if (!rc.isEmpty())
        {
            Settings::pylintConfigPath = scripts.filePath(QStringLiteral("pylintrc"));
            QVERIFY(TestFiles::Write(Settings::pylintConfigPath, rc.toUtf8()));
        }
        WorkerOnThread worker;
        worker.Check(SOURCE_WITH_FAULTS, QStringLiteral("/scripts/faults.py"));
        QTRY_COMPARE_WITH_TIMEOUT(worker.outputs.size(), 1, 60000);
        const WorkerOnThread::Output& output = worker.outputs.first();
        QCOMPARE(output.filePath, QStringLiteral("/scripts/faults.py"));
        QCOMPARE(output.fieldCount, 5);
        QCOMPARE(output.thread, QThread::currentThread());
        const QStringList findings = Findings(output.lines);
        for (const QString& finding : expected)
            QVERIFY2(findings.contains(finding), qPrintable(findings.join(QLatin1Char(' '))));
        for (const QString& finding : absent)
            QVERIFY2(!findings.contains(finding), qPrintable(findings.join(QLatin1Char(' '))));
    }

    void newerCheckReplacesRunningOne()
    {
        // A slow checker that reports the text it was given: only the newest text may come back.
        UseScript("slow.sh",
                  QStringLiteral("sleep 1\n"
                                 "for last; do :; done\n"
                                 "printf '::W:$$:1:$$:0:$$:[W0001]:$$:%s::' \"$(cat \"$last\")\""));
        WorkerOnThread worker;
        worker.Check(QStringLiteral("first"), QStringLiteral("a.py"));
        QTest::qWait(300);
        worker.Check(QStringLiteral("second"), QStringLiteral("a.py"));
        QTRY_COMPARE_WITH_TIMEOUT(worker.outputs.size(), 1, 10000);
        QTest::qWait(1500);
        QCOMPARE(worker.outputs.size(), 1);
        QCOMPARE(worker.outputs.first().lines,
                 QStringList{QStringLiteral("W:$$:1:$$:0:$$:[W0001]:$$:second")});
    }

    void missingExecutableIsReportedOnEachAttempt()
    {
        Settings::pylintPath = scripts.filePath(QStringLiteral("no-such-pylint"));
        WorkerOnThread worker;
        const QString message = QStringLiteral("Pylint executable not found: %1").arg(Settings::pylintPath);
        worker.Check(QStringLiteral("x = 1\n"), QString());
        worker.Check(QStringLiteral("x = 2\n"), QString());
        QTRY_COMPARE(CountMessages(message), 2);
        QVERIFY(!PylintWorker::IsShowPylintExeNotFoundError());
        QMetaObject::invokeMethod(worker.worker, "ResetErrors", Qt::BlockingQueuedConnection);
        QCOMPARE(PylintWorker::IsShowPylintExeNotFoundError(), worker.worker->GetId() == 0);
        QVERIFY(worker.outputs.isEmpty());
    }

    void misbehavingExecutables_data()
    {
        QTest::addColumn<QString>("body");
        QTest::addColumn<int>("outputs");
        QTest::newRow("garbage") << QStringLiteral("echo 'no :$$: template :: here ::x:$$:y::'") << 1;
        QTest::newRow("exits at once") << QStringLiteral("exit 3") << 1;
        QTest::newRow("50 MB flood") << QStringLiteral("yes 'flood line' | head -c 52428800") << 1;
        QTest::newRow("hangs") << QStringLiteral("sleep 600") << 0;
    }

    void misbehavingExecutables()
    {
        QFETCH(QString, body);
        QFETCH(int, outputs);
        UseScript(QStringLiteral("%1.sh").arg(QTest::currentDataTag()).replace(' ', '_'), body);
        WorkerOnThread worker;
        worker.Check(QStringLiteral("x = 1\n"), QString());
        // The main thread keeps handling events however the process behaves.
        QElapsedTimer clock;
        clock.start();
        qint64 longestGap = 0;
        qint64 last = 0;
        while (clock.elapsed() < 3000 && worker.outputs.size() < outputs)
        {
            QTest::qWait(5);
            longestGap = qMax(longestGap, clock.elapsed() - last);
            last = clock.elapsed();
        }
        QCOMPARE(worker.outputs.size(), outputs);
        QVERIFY2(longestGap < 500, qPrintable(QString::number(longestGap)));
        for (const WorkerOnThread::Output& output : worker.outputs)
            QVERIFY(Findings(output.lines).isEmpty());
        // Even during a check that hangs, a shutdown is prompt.
        clock.restart();
        QVERIFY(worker.Shutdown());
        QVERIFY(clock.elapsed() < 1000);
    }

    void checksRunBelowTheInterfacesPriority()
    {
        const QString reported = scripts.filePath(QStringLiteral("niceness"));
        // Field 19 of the process's stat line is its niceness.
        UseScript(
            "niceness.sh",
            QStringLiteral("awk '{print $19}' /proc/$$/stat > '%1.part' && mv '%1.part' '%1'").arg(reported));
        WorkerOnThread worker;
        worker.Check(QStringLiteral("x = 1\n"), QString());
        QTRY_VERIFY(QFile::exists(reported));
        QCOMPARE(TestFiles::Read(reported).trimmed().toInt(), qMin(19, getpriority(PRIO_PROCESS, 0) + 10));
    }

    // Last: an unwritable worker file stops checks for the rest of the process.
    void disabledOrUnwritableCheckerDoesNothing()
    {
        Settings::pylintEnabled = false;
        UseScript("marker.sh", QStringLiteral("touch '%1'").arg(scripts.filePath("ran")));
        WorkerOnThread worker;
        worker.Check(QStringLiteral("x = 1\n"), QString());
        QTest::qWait(500);
        QVERIFY(!QFile::exists(scripts.filePath(QStringLiteral("ran"))));
        Settings::pylintEnabled = true;
        // A folder in the file's place cannot be written, even by root.
        const QString tempFile = worker.worker->GetTempFilePath();
        QVERIFY(QFile::remove(tempFile));
        QVERIFY(QDir().mkdir(tempFile));
        worker.Check(QStringLiteral("x = 1\n"), QString());
        worker.Check(QStringLiteral("x = 2\n"), QString());
        QTRY_COMPARE(CountMessages(QStringLiteral("Failed to write to worker file")), 1);
        QTest::qWait(500);
        QCOMPARE(CountMessages(QStringLiteral("Failed to write to worker file")), 1);
        QVERIFY(!QFile::exists(scripts.filePath(QStringLiteral("ran"))));
        QVERIFY(worker.outputs.isEmpty());
    }
};

QTEST_MAIN(tst_PylintWorker)
#include "tst_PylintWorker.moc"
