// Time from a completion request to the filled popup, in a shown editor on the loaded host:
// Python after a typed dot in a buffer of about 5,000 lines of the standard library (the whole
// buffer goes through the analysis script in the embedded interpreter), and MEL after a typed
// letter in a 5,000-line buffer. Targets: under 50 ms for Python, under 5 ms for MEL.
//
// Prints CPU and wall medians of five repetitions, the Python request split into its parts, and,
// as the peer, CPython's ast.parse of the same text in a separate python3.
//
// Run the default (RelWithDebInfo) or a Release build: QT_QPA_PLATFORM=offscreen build/bench/bench_Completion
#include "BenchClock.h"
#include "BenchTexts.h"
#include "HostApplication.h"
#include "HostPython.h"
#include "editor/CodeEditor.h"
#include "language/AutoCompleter.h"
#include "language/PythonAutoCompleter.h"
#include "plugin/MayaUtil.h"
#include "plugin/PluginMain.h"
#include "settings/Settings.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace
{
constexpr int REPETITIONS = 5;
constexpr int RUNS = 10;

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

struct Figures
{
    double cpuMs = 0;
    double wallMs = 0;
};

// `prepare` runs outside the clock, `request` inside it.
Figures Measure(const std::function<void()>& prepare, const std::function<void()>& request)
{
    std::vector<double> cpu;
    std::vector<double> wall;
    for (int repetition = 0; repetition < REPETITIONS; ++repetition)
    {
        std::vector<double> runCpu;
        std::vector<double> runWall;
        for (int run = 0; run < RUNS; ++run)
        {
            prepare();
            QElapsedTimer timer;
            const double cpuStart = ProcessCpuMs();
            timer.start();
            request();
            runWall.push_back(timer.nsecsElapsed() / 1e6);
            runCpu.push_back(ProcessCpuMs() - cpuStart);
        }
        cpu.push_back(Median(runCpu));
        wall.push_back(Median(runWall));
    }
    return {Median(cpu), Median(wall)};
}

// Whole modules of the standard library in name order, until the count is reached, so that the
// buffer parses as the user's file would.
QString StandardLibraryModules(int lineCount)
{
    const QDir dir(QStringLiteral("/usr/lib/python3.11"));
    QString text;
    int lines = 0;
    for (const QString& name : dir.entryList({QStringLiteral("*.py")}, QDir::Files, QDir::Name))
    {
        QFile file(dir.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString module = QString::fromUtf8(file.readAll());
        const int moduleLines = static_cast<int>(module.count(QLatin1Char('\n'))) + 1;
        // "from __future__" is only valid at the top of a file; big modules would overshoot.
        if (module.contains(QLatin1String("from __future__")) || lines + moduleLines > lineCount)
            continue;
        text += module + QLatin1Char('\n');
        lines += moduleLines;
        if (lines >= lineCount * 49 / 50)
            break;
    }
    return text;
}

double AstParseMs(const QString& text)
{
    QProcess python;
    python.start(QStringLiteral("python3.11"),
                 {QStringLiteral("-c"),
                  QStringLiteral("import ast, sys, time\nsource = sys.stdin.read()\ntimes = []\n"
                                 "for _ in range(15):\n    t = time.process_time(); ast.parse(source)\n"
                                 "    times.append(time.process_time() - t)\n"
                                 "print(sorted(times)[7] * 1000)\n")});
    python.waitForStarted();
    python.write(text.toUtf8());
    python.closeWriteChannel();
    python.waitForFinished(-1);
    bool ok = false;
    const double ms = python.readAllStandardOutput().trimmed().toDouble(&ok);
    return ok ? ms : -1.0;
}

void Print(const char* what, const Figures& figures, const char* peer = "", double peerMs = -1)
{
    std::printf("%-44s cpu %8.2f ms   wall %8.2f ms", what, figures.cpuMs, figures.wallMs);
    if (peerMs > 0)
        std::printf("   %s %.2f ms (ratio %.2f)", peer, peerMs, figures.cpuMs / peerMs);
    std::printf("\n");
    std::fflush(stdout);
}

std::unique_ptr<CodeEditor> ShownEditor(CodeEditorLanguage language, const QString& text)
{
    CodeEditorProperties properties;
    properties.language = language;
    auto editor = std::make_unique<CodeEditor>(properties, nullptr);
    editor->SetText(text);
    editor->resize(1000, 700);
    editor->show();
    if (!QTest::qWaitForWindowExposed(editor.get()))
        std::printf("editor window not exposed\n");
    editor->activateWindow();
    editor->setFocus();
    editor->SetCursorPosition(static_cast<int>(text.size()));
    return editor;
}

void RemoveLastCharacter(CodeEditor* editor)
{
    QTextCursor cursor = editor->textCursor();
    cursor.movePosition(QTextCursor::End);
    cursor.deletePreviousChar();
    editor->setTextCursor(cursor);
}
} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QTemporaryDir appDir;
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    HostApplication host(false);
    if (!host.LoadPlugin(QStringLiteral("brindletEditor2"), initializePlugin, uninitializePlugin))
        return 1;
    Settings::melCompleteOnLetters = Settings::pythonCompleteOnLetters = Settings::pythonCompleteOnDot = true;
    Settings::pythonIncludeKeywords = Settings::pythonIncludeBuiltins = false;

    const QString python = StandardLibraryModules(5000) + QStringLiteral("import os\nos");
    auto pythonEditor = ShownEditor(CodeEditorLanguage::PYTHON, python);
    auto* pythonCompleter = pythonEditor->findChild<PythonAutoCompleter*>();
    std::printf("Python buffer: %d lines; MEL buffer: 5000 lines; machine shared with other builds\n",
                pythonEditor->GetLineCount());
    const Figures pythonRequest = Measure(
        [&]
        {
            pythonCompleter->hide();
            if (pythonEditor->GetText().endsWith(QLatin1Char('.')))
                RemoveLastCharacter(pythonEditor.get());
        },
        [&] { QTest::keyClick(pythonEditor.get(), '.'); });
    if (!pythonCompleter->isVisible() || !pythonCompleter->VisibleRows().contains(QStringLiteral("path")))
    {
        std::printf("Python popup did not open with os's names\n");
        return 1;
    }
    const double astMs = AstParseMs(python);
    Print("Python: '.' typed to filled popup", pythonRequest, "python3 ast.parse", astMs);

    // Typing on in the open popup only narrows the last result.
    const Figures pythonNarrow = Measure(
        [&]
        {
            if (pythonEditor->GetText().endsWith(QLatin1Char('p')))
                RemoveLastCharacter(pythonEditor.get());
        },
        [&]
        {
            QTest::keyClick(
                pythonCompleter->focusWidget() ? pythonCompleter->focusWidget() : pythonEditor.get(), 'p');
        });
    if (!pythonCompleter->isVisible())
        std::printf("Python popup closed while typing on\n");
    Print("Python: letter typed in the open popup", pythonNarrow);

    bool namesOnly = false;
    QString source;
    Print("  of which the statement rewrite",
          Measure([] {},
                  [&] { source = pythonCompleter->BuildSource(pythonEditor->textCursor(), namesOnly); }));
    Print("  of which the request without the key",
          Measure([&] { pythonCompleter->hide(); }, [&] { pythonEditor->UpdateAutoCompleter(false); }));
    const QString escaped = PythonAutoCompleter::EscapeForPython(source);
    QStringList results;
    Print("  of which the analysis script",
          Measure([] {},
                  [&] {
                      MayaUtil::PythonAttributesFromSource(escaped, QStringLiteral("os"), results, namesOnly);
                  }));
    // The peer in the same interpreter and process: CPython's own parse of the text sent.
    HostPython::Execute(QStringLiteral("bq2_bench_source = \"%1\"").arg(escaped), false);
    Print("  peer: ast.parse in the embedded interpreter",
          Measure([] {},
                  [&] {
                      HostPython::Execute(QStringLiteral("__import__('ast').parse(bq2_bench_source)"), false);
                  }));

    auto melEditor =
        ShownEditor(CodeEditorLanguage::MEL, BenchTexts::MelLines(5000) + QStringLiteral("\npolyC"));
    auto* melCompleter = melEditor->findChild<AutoCompleter*>();
    const Figures melRequest = Measure(
        [&]
        {
            melCompleter->hide();
            if (melEditor->GetText().endsWith(QLatin1Char('u')))
                RemoveLastCharacter(melEditor.get());
        },
        [&] { QTest::keyClick(melEditor.get(), 'u'); });
    if (!melCompleter->isVisible() || !melCompleter->VisibleRows().contains(QStringLiteral("polyCube")))
    {
        std::printf("MEL popup did not open with polyCube\n");
        return 1;
    }
    Print("MEL: letter typed to filled popup", melRequest);
    // Typing on in an open popup only narrows the list.
    const Figures melNarrow = Measure(
        [&]
        {
            if (melEditor->GetText().endsWith(QLatin1Char('b')))
                RemoveLastCharacter(melEditor.get());
        },
        [&] {
            QTest::keyClick(melCompleter->focusWidget() ? melCompleter->focusWidget() : melEditor.get(), 'b');
        });
    Print("MEL: letter typed in the open popup", melNarrow);
    pythonEditor.reset();
    melEditor.reset();
    return 0;
}
