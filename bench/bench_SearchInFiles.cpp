// Search in files over a generated tree of 5,000 Python and MEL files (about 50 MB), through the
// main widget's own search with the side bar's result tree, against ripgrep over the same tree
// with the same pattern. Each case runs cold (the tree's pages dropped from the cache first) and
// warm, and the matches of both are compared as (file, line, column) lists.
//
// ripgrep comes from Debian's package: bench/setup_search_bench.sh installs it if it is missing.
// Usage: bench_SearchInFiles [runs]
#include "BenchClock.h"
#include "HostApplication.h"
#include "plugin/BrindletEditorCommand.h"
#include "plugin/PluginMain.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "sidebar/SearchFunctions.h"
#include "sidebar/SearchResultsTreeWidget.h"
#include "sidebar/SearchResultsView.h"
#include "sidebar/SearchView.h"
#include "sidebar/SideBar.h"

#include <maya/MGlobal.h>

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace
{
constexpr int FOLDERS = 50;
constexpr int FILES_PER_FOLDER = 100;
constexpr int LINES_PER_FILE = 320;

const char* const PYTHON_LINES[] = {
    "import maya.cmds as cmds",
    "def build_rig_%1(name, count=%2):",
    "    \"\"\"Build the rig number %1 with %2 joints.\"\"\"",
    "    joints = [cmds.joint(p=(0, i, 0)) for i in range(count)]",
    "    cube = cmds.polyCube(name='%1_cube', w=%2)[0]",
    "    for index, joint in enumerate(joints):",
    "        cmds.setAttr(joint + '.radius', index * 0.%2)",
    "    return {'joints': joints, 'cube': cube}  # %1",
    "class Rig%1(object):",
    "    def __init__(self, size=%2):",
    "        self.size = size",
    "",
};
const char* const MEL_LINES[] = {
    "global proc build_rig_%1(string $name, int $count)",
    "{",
    "    string $cube[] = `polyCube -n \"cube%1\" -w %2`;",
    "    for ($i = 0; $i < $count; $i++) {",
    "        joint -p 0 $i 0;",
    "    }",
    "    setAttr ($cube[0] + \".translateY\") %2;",
    "    // %1: done",
    "}",
    "",
};

using Match = std::tuple<QString, int, int>; // relative path, line, column (1-based, bytes)

double ChildrenCpuMilliseconds()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto ms = [](const timeval& t)
    { return static_cast<double>(t.tv_sec) * 1.0e3 + static_cast<double>(t.tv_usec) / 1.0e3; };
    return ms(usage.ru_utime) + ms(usage.ru_stime);
}

double Median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

void Generate(const QString& root)
{
    QRandomGenerator random(2026);
    for (int folder = 0; folder < FOLDERS; ++folder)
    {
        const QString dir = QStringLiteral("%1/pkg%2/sub%3").arg(root).arg(folder % 10).arg(folder);
        QDir().mkpath(dir);
        for (int index = 0; index < FILES_PER_FOLDER; ++index)
        {
            const bool python = index % 2 == 0;
            QByteArray text;
            for (int line = 0; line < LINES_PER_FILE; ++line)
            {
                const quint32 pick = random.bounded(python ? 12u : 10u);
                const char* format = python ? PYTHON_LINES[pick] : MEL_LINES[pick];
                text += QByteArray(format)
                            .replace("%1", QByteArray::number(random.bounded(100000u)))
                            .replace("%2", QByteArray::number(random.bounded(100u)));
                text += '\n';
            }
            QFile file(QStringLiteral("%1/module_%2.%3").arg(dir).arg(index).arg(python ? "py" : "mel"));
            if (file.open(QIODevice::WriteOnly))
                file.write(text);
        }
    }
}

qint64 TreeBytes(const QString& root)
{
    qint64 bytes = 0;
    QDirIterator it(root, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        bytes += QFileInfo(it.next()).size();
    return bytes;
}

// Cold: the tree's pages leave the page cache (no root needed for clean pages).
void DropFromCache(const QString& root)
{
    QDirIterator it(root, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
    {
        const int fd = ::open(QFile::encodeName(it.next()).constData(), O_RDONLY);
        if (fd < 0)
            continue;
        ::fdatasync(fd);
        ::posix_fadvise(fd, 0, 0, POSIX_FADV_DONTNEED);
        ::close(fd);
    }
}

QList<Match> ToMatches(const QString& root, const QList<QPair<QString, int>>& found)
{
    // Positions count characters with one per line end; the text is ASCII, so they are bytes.
    QHash<QString, QList<int>> lineStarts;
    QList<Match> matches;
    for (const auto& [path, position] : found)
    {
        QList<int>& starts = lineStarts[path];
        if (starts.isEmpty())
        {
            QFile file(path);
            file.open(QIODevice::ReadOnly);
            const QByteArray bytes = file.readAll();
            starts.append(0);
            for (int i = 0; i < bytes.size(); ++i)
            {
                if (bytes.at(i) == '\n')
                    starts.append(i + 1);
            }
        }
        const auto line = std::upper_bound(starts.cbegin(), starts.cend(), position) - starts.cbegin();
        matches.append({QDir(root).relativeFilePath(path), static_cast<int>(line),
                        position - starts.at(line - 1) + 1});
    }
    std::sort(matches.begin(), matches.end());
    return matches;
}

QList<Match> OurMatches(const QString& root, BrindletEditor* editor)
{
    const QTreeWidget* tree = editor->GetSideBar()->GetSearchView()->GetResultsView()->GetTreeWidget();
    QList<QPair<QString, int>> found;
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
    {
        const QTreeWidgetItem* top = tree->topLevelItem(i);
        for (int j = 0; j < top->childCount(); ++j)
        {
            const QTreeWidgetItem* file = top->child(j);
            for (int k = 0; k < file->childCount(); ++k)
                found.append({file->child(k)->data(0, SearchResultsTreeWidget::PathRole).toString(),
                              file->child(k)->data(0, SearchResultsTreeWidget::PositionRole).toInt()});
        }
    }
    return ToMatches(root, found);
}

QList<Match> RunRipgrep(const QString& root, const QStringList& arguments, double& milliseconds, double& cpu)
{
    const double cpuStart = ChildrenCpuMilliseconds();
    QProcess rg;
    rg.setWorkingDirectory(root);
    QElapsedTimer timer;
    timer.start();
    rg.start(QStringLiteral("rg"), arguments + QStringList{QStringLiteral("--vimgrep"), QStringLiteral("--no-ignore"),
                                                             QStringLiteral(".")});
    rg.waitForFinished(-1);
    const QByteArray output = rg.readAllStandardOutput();
    milliseconds = static_cast<double>(timer.nsecsElapsed()) / 1.0e6;
    cpu = ChildrenCpuMilliseconds() - cpuStart;
    QList<Match> matches;
    for (const QByteArray& line : output.split('\n'))
    {
        const QList<QByteArray> parts = line.split(':');
        if (parts.size() < 4)
            continue;
        matches.append({QDir::cleanPath(QString::fromUtf8(parts.at(0))), parts.at(1).toInt(), parts.at(2).toInt()});
    }
    std::sort(matches.begin(), matches.end());
    return matches;
}

struct Case
{
    const char* name;
    QString text;
    bool matchCase;
    bool regex;
    QStringList rgArguments;
};
} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QTemporaryDir appDir;
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    QApplication app(argc, argv);
    const int runs = argc > 1 ? qMax(1, atoi(argv[1])) : 5;

    if (QProcess::execute(QStringLiteral("rg"), {QStringLiteral("--version")}) != 0)
    {
        std::fprintf(stderr, "ripgrep (rg) is missing: run bench/setup_search_bench.sh\n");
        return 2;
    }
    QTemporaryDir tree(QStringLiteral("/tmp/bq2-search-bench-XXXXXX"));
    Generate(tree.path());
    std::printf("tree: %d files, %.1f MB\n", FOLDERS * FILES_PER_FOLDER,
                static_cast<double>(TreeBytes(tree.path())) / 1.0e6);

    HostApplication host(false);
    host.ShowMainWindow();
    host.LoadPlugin(QStringLiteral("brindletEditor2"), initializePlugin, uninitializePlugin);
    MGlobal::executeCommand(MString("brindletEditor2"));
    BrindletEditor* editor = BrindletEditorCommand::editorWidget;
    if (!editor || !QTest::qWaitForWindowExposed(editor->window()))
        return 1;
    editor->ShowSearch();
    Settings::workspaceFolders = {tree.path()};

    const QList<Case> cases{
        {"literal", QStringLiteral("polyCube"), true, false, {QStringLiteral("-F"), QStringLiteral("-s"), "polyCube"}},
        {"regex", QStringLiteral("def \\w+_\\d+\\("), false, true, {QStringLiteral("-i"), "def \\w+_\\d+\\("}},
    };
    bool allEqual = true;
    for (const Case& c : cases)
    {
        for (const bool cold : {true, false})
        {
            QList<double> ours;
            QList<double> theirs;
            QList<double> ourCpu;
            QList<double> theirCpu;
            QList<double> readCpu;
            QList<Match> ourMatches;
            QList<Match> rgMatches;
            for (int run = 0; run < runs; ++run)
            {
                if (cold)
                    DropFromCache(tree.path());
                const double cpuStart = ProcessCpuMs();
                QElapsedTimer timer;
                timer.start();
                editor->Search(c.text, {}, {}, c.matchCase, false, c.regex);
                ours.append(static_cast<double>(timer.nsecsElapsed()) / 1.0e6);
                ourCpu.append(ProcessCpuMs() - cpuStart);
                if (cold)
                    DropFromCache(tree.path());
                double rgTime = 0.0;
                double rgCpu = 0.0;
                rgMatches = RunRipgrep(tree.path(), c.rgArguments, rgTime, rgCpu);
                theirs.append(rgTime);
                theirCpu.append(rgCpu);
                if (!cold)
                {
                    // The share of reading and matching alone, without the result tree.
                    const double readStart = ProcessCpuMs();
                    QDirIterator it(tree.path(), QDir::Files, QDirIterator::Subdirectories);
                    while (it.hasNext())
                        FindMatchingInFile(it.next(), Settings::globalSearchRegEx);
                    readCpu.append(ProcessCpuMs() - readStart);
                }
            }
            ourMatches = OurMatches(tree.path(), editor);
            const double ourMedian = Median(ours);
            const double theirMedian = Median(theirs);
            const bool equal = ourMatches == rgMatches;
            allEqual = allEqual && equal;
            std::printf("%-7s %-4s CPU: ours %7.1f ms  rg %7.1f ms  ratio %5.2f | wall: ours %7.1f ms  rg %7.1f ms  "
                        "ratio %5.2f | matches %lld vs %lld %s\n",
                        c.name, cold ? "cold" : "warm", Median(ourCpu), Median(theirCpu),
                        Median(ourCpu) / Median(theirCpu), ourMedian, theirMedian, ourMedian / theirMedian,
                        static_cast<long long>(ourMatches.size()), static_cast<long long>(rgMatches.size()),
                        equal ? "equal" : "DIFFERENT");
            if (!readCpu.isEmpty())
                std::printf("        of which reading and matching alone: %.1f ms CPU\n", Median(readCpu));
        }
    }
    host.UnloadPlugin(QStringLiteral("brindletEditor2"));
    return allEqual ? 0 : 1;
}
