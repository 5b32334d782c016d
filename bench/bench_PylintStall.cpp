// The user interface's longest stall while Pylint checks a 5,000-line Python buffer after every
// keystroke, for 10 s of slow typing (one key per 300 ms, so each pause starts a check and kills the
// one before), beside the time Pylint itself takes for one check of the same text.
#include "BenchClock.h"
#include "HostApplication.h"
#include "editor/CodeEditor.h"
#include "plugin/BrindletEditorCommand.h"
#include "plugin/MayaUtil.h"
#include "plugin/PluginMain.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"

#include <maya/MGlobal.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cstdio>

namespace
{
const QString PYLINT = QStringLiteral("/usr/bin/pylint");
constexpr int LINE_COUNT = 5000;
constexpr int TYPING_MS = 10000;
constexpr int KEY_INTERVAL_MS = 300;

// The first 5,000 lines of a large standard-library module, cut at a top-level statement.
QString SourceText()
{
    QFile file(QStringLiteral("/usr/lib/python3.11/_pydecimal.py"));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    int cut = qMin(LINE_COUNT, static_cast<int>(lines.size()));
    while (cut > 0 && (lines.at(cut - 1).isEmpty() || lines.at(cut - 1).at(0).isSpace()))
        --cut;
    lines = lines.mid(0, qMax(cut - 1, 0));
    while (lines.size() < LINE_COUNT)
        lines.append(QStringLiteral("# padding"));
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

double PylintOnceMs(const QString& path)
{
    QProcess process;
    QElapsedTimer clock;
    clock.start();
    process.start(PYLINT, {QStringLiteral("--msg-template='::{C}:$$:{line}:$$:{column}:$$:[{msg_id}]:$$:{msg}::'"), path});
    process.waitForFinished(120000);
    return static_cast<double>(clock.nsecsElapsed()) / 1.0e6;
}
} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QTemporaryDir appDir;
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    QApplication app(argc, argv);
    if (!QFile::exists(PYLINT))
    {
        std::printf("pylint not installed\n");
        return 1;
    }
    const QString text = SourceText();

    HostApplication host(false);
    host.ShowMainWindow();
    host.LoadPlugin(QStringLiteral("brindletEditor2"), initializePlugin, uninitializePlugin);
    MGlobal::executeCommand(MString("brindletEditor2"));
    BrindletEditor* editor = BrindletEditorCommand::editorWidget;
    if (!editor || !QTest::qWaitForWindowExposed(editor->window()))
        return 1;
    Settings::pylintEnabled = true;
    Settings::pylintPath = PYLINT;
    MayaUtil::UpdatePylintPythonPath();
    editor->NewPythonBuffer();
    CodeEditor* codeEditor = editor->GetActiveCodeEditor();
    if (!codeEditor)
        return 1;
    codeEditor->setPlainText(text);
    codeEditor->setFocus();
    QTest::qWait(500);

    // A 1 ms heartbeat: the longest gap between two beats is the longest stall of the event loop.
    QElapsedTimer clock;
    clock.start();
    qint64 lastBeat = 0;
    qint64 longest = 0;
    QList<qint64> gaps;
    // The processor time of the UI thread between two beats: on a loaded machine a gap also holds
    // the time the thread waited for a core, this is the work it did.
    double lastCpu = 0.0;
    QList<double> cpuGaps;
    QTimer heartbeat;
    heartbeat.setInterval(1);
    QObject::connect(&heartbeat, &QTimer::timeout, [&] {
        const qint64 now = clock.nsecsElapsed();
        const double cpu = ThreadCpuMs();
        gaps.append(now - lastBeat);
        cpuGaps.append(cpu - lastCpu);
        longest = std::max(longest, now - lastBeat);
        lastBeat = now;
        lastCpu = cpu;
    });
    lastBeat = clock.nsecsElapsed();
    lastCpu = ThreadCpuMs();
    heartbeat.start();
    int keys = 0;
    while (clock.elapsed() < TYPING_MS)
    {
        QTest::keyClick(codeEditor, static_cast<char>('a' + keys % 26));
        ++keys;
        // A real event loop between keys: QTest::qWait sleeps up to 10 ms between its passes,
        // which the heartbeat would count as a stall of the editor.
        QEventLoop pause;
        QTimer::singleShot(KEY_INTERVAL_MS, &pause, &QEventLoop::quit);
        pause.exec();
    }
    heartbeat.stop();
    std::sort(gaps.begin(), gaps.end());
    const double p99 = gaps.isEmpty() ? 0.0 : static_cast<double>(gaps.at(gaps.size() * 99 / 100)) / 1.0e6;
    std::sort(cpuGaps.begin(), cpuGaps.end());
    const double cpuLongest = cpuGaps.isEmpty() ? 0.0 : cpuGaps.constLast();
    const double cpuP99 = cpuGaps.isEmpty() ? 0.0 : cpuGaps.at(cpuGaps.size() * 99 / 100);

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("check.py"));
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(codeEditor->toPlainText().toUtf8());
    file.close();
    QList<double> runs;
    for (int i = 0; i < 3; ++i)
        runs.append(PylintOnceMs(path));
    std::sort(runs.begin(), runs.end());

    std::printf("%d keys over %d ms into a %d-line Python buffer with Pylint on:\n", keys, TYPING_MS, LINE_COUNT);
    std::printf("  longest UI stall %.1f ms, 99th percentile gap %.1f ms (target < 16 ms)\n",
                static_cast<double>(longest) / 1.0e6, p99);
    std::printf("  UI thread's work between two beats: longest %.1f ms, 99th percentile %.1f ms\n", cpuLongest, cpuP99);
    std::printf("  Pylint alone on the same text: median %.0f ms per check (%d runs)\n", runs.at(1), 3);
    host.UnloadPlugin(QStringLiteral("brindletEditor2"));
    return 0;
}
