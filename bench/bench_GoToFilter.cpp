// Cost of filtering the go-to palette's file mode over a workspace of 20,000 files: each
// keystroke, with the repaint it causes, has to stay inside one frame (16 ms). The first use,
// which walks the folders, is measured apart.
//
// Run a Release build with QT_QPA_PLATFORM=offscreen.
#include "BenchClock.h"
#include "settings/ColorSettings.h"
#include "settings/Settings.h"
#include "sidebar/GoToWidget.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace
{
constexpr int FILE_COUNT = 20000;
const char* const NAMES[] = {"rig", "anim", "shader", "export", "utils", "bake", "camera", "light"};
const char* const SUFFIXES[] = {"mel", "py", "txt", "json"};

struct Times
{
    double wall = 0.0;
    double cpu = 0.0;
};

QString Describe(QList<double> times)
{
    std::sort(times.begin(), times.end());
    return QStringLiteral("median %1 ms, 95th percentile %2 ms, worst %3 ms")
        .arg(times.at(times.size() / 2), 0, 'f', 2)
        .arg(times.at(times.size() * 95 / 100), 0, 'f', 2)
        .arg(times.last(), 0, 'f', 2);
}
} // namespace

class BenchGoToFilter : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir workspace;
    std::unique_ptr<GoToWidget> palette;

    // One keystroke as the user makes it, and the paint that follows.
    Times Keystroke(Qt::Key key, QChar text = QChar())
    {
        const double cpuStart = ProcessCpuMs();
        QElapsedTimer timer;
        timer.start();
        if (text.isNull())
            QTest::keyClick(palette->GetLineEdit(), key);
        else
            QTest::keyClick(palette->GetLineEdit(), text.toLatin1());
        palette->repaint();
        QCoreApplication::processEvents();
        return {static_cast<double>(timer.nsecsElapsed()) / 1.0e6, ProcessCpuMs() - cpuStart};
    }

    void Record(const Times& times)
    {
        wallTimes.append(times.wall);
        cpuTimes.append(times.cpu);
    }

    QList<double> wallTimes;
    QList<double> cpuTimes;

private slots:
    void initTestCase()
    {
        ColorSettings::Initialize();
        QVERIFY(workspace.isValid());
        // Forty folders of five hundred files, names that share their beginnings as real ones do.
        for (int i = 0; i < FILE_COUNT; ++i)
        {
            const QString folder = QStringLiteral("%1/%2_tools/part%3")
                                       .arg(workspace.path())
                                       .arg(QLatin1String(NAMES[i % 8]))
                                       .arg(i / 500);
            if (i % 500 < 8)
                QDir().mkpath(folder);
            QFile file(QStringLiteral("%1/%2_%3_%4.%5")
                           .arg(folder, QLatin1String(NAMES[(i / 8) % 8]), QLatin1String(NAMES[i % 8]))
                           .arg(i)
                           .arg(QLatin1String(SUFFIXES[i % 4])));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        Settings::workspaceFolders = QStringList{workspace.path()};
        palette = std::make_unique<GoToWidget>();
    }

    void cleanupTestCase() { palette.reset(); }

    void firstUseWalksTheWorkspace()
    {
        const double cpuStart = ProcessCpuMs();
        QElapsedTimer timer;
        timer.start();
        palette->Show(GoToFilterFile, nullptr, 1, 0, 0, {}, false);
        QCoreApplication::processEvents();
        const double ms = static_cast<double>(timer.nsecsElapsed()) / 1.0e6;
        QCOMPARE(palette->GetRowCount(), FILE_COUNT);
        std::printf("first use (walk of %d files): %.1f ms CPU, %.1f ms wall\n", FILE_COUNT,
                    ProcessCpuMs() - cpuStart, ms);
    }

    // Types "shader_rig_1", then deletes it again, twenty times over; reports each keystroke.
    void keystrokes()
    {
        const QString typed = QStringLiteral("shader_rig_1");
        for (int round = 0; round < 20; ++round)
        {
            for (const QChar c : typed)
                Record(Keystroke(Qt::Key_unknown, c));
            QVERIFY(palette->GetRowCount() > 0);
            QVERIFY(palette->GetRowCount() < FILE_COUNT);
            for (int i = 0; i < typed.size(); ++i)
                Record(Keystroke(Qt::Key_Backspace));
            QCOMPARE(palette->GetRowCount(), FILE_COUNT);
        }
        std::printf("keystrokes: %lld (frame: 16 ms)\n  CPU:  %s\n  wall: %s\n",
                    static_cast<long long>(cpuTimes.size()), qPrintable(Describe(cpuTimes)),
                    qPrintable(Describe(wallTimes)));
    }
};

QTEST_MAIN(BenchGoToFilter)
#include "bench_GoToFilter.moc"
