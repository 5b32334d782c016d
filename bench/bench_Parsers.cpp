// One Parse of a large buffer, MEL and Python, against Python's own ast.parse of the same text in
// the same run; sizes from 20,000 to 100,000 lines to show that the cost grows linearly.
//
// Run the default (RelWithDebInfo) build: build/bench/bench_Parsers [largest line count]
#include "BenchClock.h"
#include "language/MelParser.h"
#include "language/PythonParser.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QProcess>

#include <algorithm>
#include <cstdio>

namespace
{
// The standard library's modules in name order: whole modules up to lineCount lines, so that
// ast.parse accepts the text (a cut inside a docstring would stop it at the last line).
QString StandardLibraryText(int lineCount, int& lines)
{
    const QDir library(QStringLiteral("/usr/lib/python3.11"));
    QString text;
    lines = 0;
    for (const QString& name : library.entryList({QStringLiteral("*.py")}, QDir::Files, QDir::Name))
    {
        QFile file(library.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        QString module = QString::fromUtf8(file.readAll());
        if (!module.endsWith(QLatin1Char('\n')))
            module += QLatin1Char('\n');
        const int moduleLines = int(module.count(QLatin1Char('\n')));
        if (lines > 0 && lines + moduleLines > lineCount)
            break;
        text += module;
        lines += moduleLines;
    }
    return text;
}

// MEL as a rigging script is written: global procs with locals, globals, strings, comments.
QString MelText(int lineCount)
{
    QStringList lines;
    for (int i = 0; lines.size() < lineCount; ++i)
    {
        lines << QStringLiteral("// Builds control %1. TODO: mirror").arg(i)
              << QStringLiteral("global proc string[] buildControl%1(string $name, float $size)").arg(i)
              << QStringLiteral("{")
              << QStringLiteral("    global string $gControls%1[];").arg(i)
              << QStringLiteral("    string $curve[] = `circle -n ($name + \"_ctl\") -r $size -nr 0 1 0`;")
              << QStringLiteral("    /* keep the shape */ setAttr ($curve[0] + \".overrideEnabled\") 1;")
              << QStringLiteral("    if (size($curve) > 0) { $gControls%1[size($gControls%1)] = $curve[0]; }").arg(i)
              << QStringLiteral("    print (\"made \\\"\" + $curve[0] + \"\\\"\\n\");")
              << QStringLiteral("    return $curve;") << QStringLiteral("}")
              << QStringLiteral("proc int helper%1(int $a) { return $a * 2; }").arg(i) << QString();
    }
    return lines.mid(0, lineCount).join(QLatin1Char('\n')) + QLatin1Char('\n');
}

struct Cost
{
    double wall = 1e9;
    double cpu = 1e9;
};

// The best of the runs, by the wall clock and by this thread's processor time.
template <typename Parser> Cost BestParse(Parser& parser, const QString& text, int runs)
{
    Cost best;
    for (int i = 0; i < runs; ++i)
    {
        QElapsedTimer timer;
        const double cpuStart = ThreadCpuMs();
        timer.start();
        parser.Parse(text, QStringLiteral("/bench/buffer"));
        best.wall = std::min(best.wall, timer.nsecsElapsed() / 1e6);
        best.cpu = std::min(best.cpu, ThreadCpuMs() - cpuStart);
    }
    return best;
}

// ast.parse in a python3 beside this program, best of the runs by the wall clock and by its
// process time; -1 when it fails.
Cost AstParse(const QString& text, int runs)
{
    QProcess python;
    python.start(QStringLiteral("python3"),
                 {QStringLiteral("-c"),
                  QStringLiteral("import ast, sys, time\nsource = sys.stdin.read()\nwall = cpu = 1e9\n"
                                 "for _ in range(%1):\n"
                                 "    t = time.perf_counter(); c = time.process_time(); ast.parse(source)\n"
                                 "    wall = min(wall, time.perf_counter() - t)\n"
                                 "    cpu = min(cpu, time.process_time() - c)\n"
                                 "print(wall * 1000, cpu * 1000)\n")
                      .arg(runs)});
    python.waitForStarted();
    python.write(text.toUtf8());
    python.closeWriteChannel();
    python.waitForFinished(-1);
    const QList<QByteArray> fields = python.readAllStandardOutput().trimmed().split(' ');
    Cost cost{-1.0, -1.0};
    if (fields.size() == 2)
    {
        cost.wall = fields.at(0).toDouble();
        cost.cpu = fields.at(1).toDouble();
    }
    return cost;
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    MelParser melParser;
    PythonParser pythonParser;
    std::printf("Processor time (wall clock in brackets), best of 10 runs; ast.parse best of 3.\n");
    std::printf("%8s %20s %20s %8s %20s %8s\n", "lines", "python ms", "ast.parse ms", "ratio", "mel ms", "items");
    // An argument caps the largest size, for a quick look on a busy machine.
    const int largest = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 100000;
    for (const int target : {20000, 40000, 60000, 80000, 100000})
    {
        if (target > largest)
            break;
        int lines = 0;
        const QString python = StandardLibraryText(target, lines);
        const QString mel = MelText(lines);
        const Cost pythonCost = BestParse(pythonParser, python, 10);
        const Cost melCost = BestParse(melParser, mel, 10);
        const Cost astCost = AstParse(python, 3);
        std::printf("%8d %9.2f (%8.2f) %9.1f (%8.1f) %8.3f %9.2f (%8.2f) %8lld\n", lines, pythonCost.cpu,
                    pythonCost.wall, astCost.cpu, astCost.wall, astCost.cpu > 0 ? pythonCost.cpu / astCost.cpu : -1.0,
                    melCost.cpu, melCost.wall, static_cast<long long>(pythonParser.GetItems().size()));
        std::fflush(stdout);
    }
    return 0;
}
