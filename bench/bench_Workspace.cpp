// Opens a workspace whose root holds 20,000 files in 2,000 folders and times what the user
// waits for: the root shown, the root opened (its 2,000 folders listed, each looked into once
// for an arrow), and the rebuild of the tree after one file is added on disk, with the root
// closed and open. Each figure is the median of several runs.
//
// "bench_Workspace [folders] [files-per-folder] [runs]"

#include "BenchClock.h"
#include "settings/Settings.h"
#include "sidebar/WorkspaceTreeWidget.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>

namespace
{
bool MakeTree(const QString& root, int folders, int filesPerFolder)
{
    for (int f = 0; f < folders; ++f)
    {
        const QString folder = QStringLiteral("%1/folder_%2").arg(root).arg(f, 4, 10, QLatin1Char('0'));
        if (!QDir().mkpath(folder))
            return false;
        for (int i = 0; i < filesPerFolder; ++i)
        {
            QFile file(QStringLiteral("%1/script_%2.py").arg(folder).arg(i));
            if (!file.open(QIODevice::WriteOnly))
                return false;
        }
    }
    return true;
}

double Median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.isEmpty() ? 0.0 : values.at(values.size() / 2);
}

struct Times
{
    QList<double> cpu;
    QList<double> wall;
};

// Milliseconds of the action, with the events it posts handled and the tree painted.
void Time(Times& times, QWidget* shown, const std::function<void()>& action)
{
    const double cpuStart = ProcessCpuMs();
    QElapsedTimer timer;
    timer.start();
    action();
    shown->repaint();
    QCoreApplication::processEvents();
    times.wall.append(static_cast<double>(timer.nsecsElapsed()) / 1.0e6);
    times.cpu.append(ProcessCpuMs() - cpuStart);
}

// The watcher answers a new file with a rebuild of its own; it runs here, untimed, so that each
// timed rebuild is one rebuild and not two.
void LetTheWatcherRebuild()
{
    QTest::qWait(100);
}

void Report(const char* name, const Times& times, double target)
{
    const double cpu = Median(times.cpu);
    std::printf("%-34s CPU %9.2f ms   wall %9.2f ms   target < %5.0f ms   %s\n", name, cpu, Median(times.wall),
                target, cpu < target ? "met" : "MISSED");
}
} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const int folders = argc > 1 ? QString::fromLatin1(argv[1]).toInt() : 2000;
    const int filesPerFolder = argc > 2 ? QString::fromLatin1(argv[2]).toInt() : 10;
    const int runs = argc > 3 ? QString::fromLatin1(argv[3]).toInt() : 7;

    QTemporaryDir disk;
    const QString root = disk.filePath(QStringLiteral("root"));
    if (!disk.isValid() || !MakeTree(root, folders, filesPerFolder))
    {
        std::fprintf(stderr, "could not make the tree\n");
        return 1;
    }
    std::printf("workspace root: %d folders, %d files\n", folders, folders * filesPerFolder);

    Times showRoot, openRoot, rebuildClosed, rebuildOpen;
    for (int run = 0; run < runs; ++run)
    {
        Settings::workspaceFolders.clear();
        Settings::workspaceExpandedFolderHashes.clear();
        auto tree = std::make_unique<WorkspaceTreeWidget>();
        tree->resize(400, 800);
        tree->show();
        if (!QTest::qWaitForWindowExposed(tree.get()))
            return 1;
        Time(showRoot, tree.get(), [&] { tree->AddTopLevelFolder(root); });
        QFile::remove(QStringLiteral("%1/added_%2.mel").arg(root).arg(run));
        QFile(QStringLiteral("%1/added_%2.mel").arg(root).arg(run)).open(QIODevice::WriteOnly);
        LetTheWatcherRebuild();
        Time(rebuildClosed, tree.get(), [&] { tree->Refresh(); });
        Time(openRoot, tree.get(), [&] { tree->SetExpandedState(tree->topLevelItem(0), true); });
        QFile(QStringLiteral("%1/folder_0000/added_%2.mel").arg(root).arg(run)).open(QIODevice::WriteOnly);
        LetTheWatcherRebuild();
        Time(rebuildOpen, tree.get(), [&] { tree->Refresh(); });
        if (tree->topLevelItem(0)->childCount() != folders + run + 1)
        {
            std::fprintf(stderr, "rebuild lost rows: %d\n", tree->topLevelItem(0)->childCount());
            return 1;
        }
    }
    Report("show the root", showRoot, 50);
    Report("open the root (2,000 folders)", openRoot, 100);
    Report("rebuild after a file, root closed", rebuildClosed, 100);
    Report("rebuild after a file, root open", rebuildOpen, 100);
    return 0;
}
