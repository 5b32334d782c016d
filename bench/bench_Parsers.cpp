// One Parse of a large buffer, MEL and Python, against Python's own ast.parse of the same text in
// the same run; sizes from 20,000 to 100,000 lines to show that the cost grows linearly.
//
// Run a Release build: build-release/bench/bench_Parsers
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
// The standard library's modules in name order, cut to the first lineCount lines.
QString StandardLibraryText(int lineCount)
{
    const QDir library(QStringLiteral("/usr/lib/python3.11"));
    QStringList lines;
    for (const QString& name : library.entryList({QStringLiteral("*.py")}, QDir::Files, QDir::Name))
    {
        QFile file(library.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        lines += QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
        if (lines.size() >= lineCount)
            break;
    }
    return lines.mid(0, lineCount).join(QLatin1Char('\n')) + QLatin1Char('\n');
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

template <typename Parser> double BestParseMs(Parser& parser, const QString& text, int runs)
{
    double best = 1e9;
    for (int i = 0; i < runs; ++i)
    {
        QElapsedTimer timer;
        timer.start();
        parser.Parse(text, QStringLiteral("/bench/buffer"));
        best = std::min(best, timer.nsecsElapsed() / 1e6);
    }
    return best;
}

double AstParseMs(const QString& text, int runs)
{
    QProcess python;
    python.start(QStringLiteral("python3"),
                 {QStringLiteral("-c"),
                  QStringLiteral("import ast, sys, time\nsource = sys.stdin.read()\nbest = 1e9\n"
                                 "for _ in range(%1):\n    t = time.perf_counter(); ast.parse(source)\n"
                                 "    best = min(best, time.perf_counter() - t)\nprint(best * 1000)\n")
                      .arg(runs)});
    python.waitForStarted();
    python.write(text.toUtf8());
    python.closeWriteChannel();
    python.waitForFinished(-1);
    bool ok = false;
    const double ms = python.readAllStandardOutput().trimmed().toDouble(&ok);
    return ok ? ms : -1.0;
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    MelParser melParser;
    PythonParser pythonParser;
    std::printf("%8s %12s %12s %14s %10s %12s\n", "lines", "python ms", "ast.parse ms", "ratio", "mel ms",
                "python items");
    // An argument caps the largest size, for a quick look on a busy machine.
    const int largest = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 100000;
    for (const int lines : {20000, 40000, 60000, 80000, 100000})
    {
        if (lines > largest)
            break;
        const QString python = StandardLibraryText(lines);
        const QString mel = MelText(lines);
        const double pythonMs = BestParseMs(pythonParser, python, 10);
        const double melMs = BestParseMs(melParser, mel, 10);
        const double astMs = AstParseMs(python, 3);
        std::printf("%8d %12.2f %12.1f %14.3f %10.2f %12lld\n", lines, pythonMs, astMs,
                    astMs > 0 ? pythonMs / astMs : -1.0, melMs,
                    static_cast<long long>(pythonParser.GetItems().size()));
        std::fflush(stdout);
    }
    return 0;
}
