// Floods the output view with lines of 40 to 120 characters and reports lines per second and
// peak memory, against a plain QPlainTextEdit fed one appendPlainText per line.
//
// Without arguments every case runs in a child process of its own, so that each peak memory
// figure (VmHWM) belongs to one case alone. "--case <name> <lines>" runs one case.
//
// Cases:
//   output-burst   all lines through OutputTextEdit::AppendText without a turn of the event loop,
//                  as while a script prints
//   output-turns   the same with a turn of the event loop after every 100 lines
//   output-each    a turn of the event loop after every line
//   plain          QPlainTextEdit::appendPlainText, one line at a time, no cap
//   plain-each     the same with a turn of the event loop after every line

#include "output/OutputTextEdit.h"
#include "settings/ColorSettings.h"
#include "settings/Settings.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPlainTextEdit>

#include <cstdio>
#include <functional>

namespace
{
struct Result
{
    QString name;
    qint64 lines = 0;
    double seconds = 0.0;
    qint64 peakKb = 0;
    double Rate() const { return seconds > 0.0 ? static_cast<double>(lines) / seconds : 0.0; }
};

// Line `index` of the flood: 40 to 120 characters and a line feed, the same in every run.
QString MakeLine(quint32 index)
{
    quint32 state = index * 2654435761u + 12345u;
    state ^= state >> 13;
    state *= 1274126177u;
    const int length = 40 + static_cast<int>((state >> 8) % 81);
    QString line = QStringLiteral("# Result: %1 ").arg(index);
    line.reserve(length + 1);
    while (line.size() < length)
        line += QLatin1Char(static_cast<char>('a' + (line.size() * 7 + index) % 26));
    line += QLatin1Char('\n');
    return line;
}

qint64 PeakMemoryKb()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
    {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toLongLong();
    }
    return -1;
}

bool ShowAndWait(QWidget& widget)
{
    widget.resize(900, 500);
    widget.show();
    return QTest::qWaitForWindowExposed(&widget);
}

double RunOutput(qint64 count, int linesPerTurn)
{
    OutputTextEdit edit(nullptr);
    edit.SetMaximumBlockCount(Settings::outputBufferSize);
    if (!ShowAndWait(edit))
        return -1.0;
    QElapsedTimer timer;
    timer.start();
    for (qint64 i = 0; i < count; ++i)
    {
        edit.AppendText(MakeLine(static_cast<quint32>(i)));
        if (linesPerTurn > 0 && (i + 1) % linesPerTurn == 0)
            QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
    const double seconds = timer.nsecsElapsed() / 1e9;
    // Checked after the clock stops: the cap held and the last line is there.
    if (edit.document()->blockCount() > Settings::outputBufferSize ||
        !edit.GetText().endsWith(MakeLine(static_cast<quint32>(count - 1))))
        return -1.0;
    return seconds;
}

double RunPlain(qint64 count, bool turnPerLine)
{
    QPlainTextEdit edit;
    if (!ShowAndWait(edit))
        return -1.0;
    QElapsedTimer timer;
    timer.start();
    for (qint64 i = 0; i < count; ++i)
    {
        QString line = MakeLine(static_cast<quint32>(i));
        line.chop(1); // the widget adds the line break itself
        edit.appendPlainText(line);
        if (turnPerLine)
            QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
    return timer.nsecsElapsed() / 1e9;
}

int RunCase(const QString& name, qint64 count)
{
    double seconds = -1.0;
    if (name == QLatin1String("output-burst"))
        seconds = RunOutput(count, 0);
    else if (name == QLatin1String("output-turns"))
        seconds = RunOutput(count, 100);
    else if (name == QLatin1String("output-each"))
        seconds = RunOutput(count, 1);
    else if (name == QLatin1String("plain"))
        seconds = RunPlain(count, false);
    else if (name == QLatin1String("plain-each"))
        seconds = RunPlain(count, true);
    if (seconds < 0.0)
    {
        std::fprintf(stderr, "case %s failed\n", qPrintable(name));
        return 1;
    }
    std::printf("%s %lld %.6f %lld\n", qPrintable(name), static_cast<long long>(count), seconds,
                static_cast<long long>(PeakMemoryKb()));
    return 0;
}

bool RunChild(const QString& name, qint64 count, Result& result)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--case"), name, QString::number(count)});
    if (!child.waitForFinished(-1) || child.exitCode() != 0)
        return false;
    const QList<QByteArray> fields = child.readAllStandardOutput().trimmed().split(' ');
    if (fields.size() != 4)
        return false;
    result = {name, fields.at(1).toLongLong(), fields.at(2).toDouble(), fields.at(3).toLongLong()};
    return true;
}

void Print(const Result& result)
{
    std::printf("%-14s %9lld lines %9.3f s %12.0f lines/s  peak %8.1f MB\n", qPrintable(result.name),
                static_cast<long long>(result.lines), result.seconds, result.Rate(), result.peakKb / 1024.0);
    std::fflush(stdout);
}
} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Settings are read from nowhere: the defaults stand, whatever the home folder holds.
    QTemporaryDir appDir;
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    QApplication app(argc, argv);
    Settings::ResetToDefaults();
    ColorSettings::Initialize();

    const QStringList args = QCoreApplication::arguments();
    if (args.size() == 4 && args.at(1) == QLatin1String("--case"))
        return RunCase(args.at(2), args.at(3).toLongLong());

    const qint64 lines = args.size() > 1 ? args.at(1).toLongLong() : 1000000;
    std::printf("Output flood, default cap %d lines, offscreen platform\n", Settings::outputBufferSize);
    // The cases with a turn of the event loop per line paint every line, in both widgets, and
    // run on a hundredth of the lines.
    const QList<QPair<QString, qint64>> cases = {
        {QStringLiteral("output-burst"), lines / 10},
        {QStringLiteral("output-burst"), lines},
        {QStringLiteral("output-turns"), lines},
        {QStringLiteral("plain"), lines / 10},
        {QStringLiteral("plain"), lines},
        {QStringLiteral("output-each"), lines / 100},
        {QStringLiteral("plain-each"), lines / 100},
    };
    QList<Result> results;
    for (const auto& [name, count] : cases)
    {
        Result result;
        if (!RunChild(name, count, result))
        {
            std::fprintf(stderr, "case %s with %lld lines failed\n", qPrintable(name),
                         static_cast<long long>(count));
            return 1;
        }
        Print(result);
        results << result;
    }
    const double plainRate = results.at(4).Rate();
    if (plainRate > 0.0 && results.at(6).Rate() > 0.0)
    {
        std::printf("against plain, %lld lines: output-burst %.1f times, output-turns %.1f times; "
                    "a turn per line: output-each / plain-each %.2f times\n",
                    static_cast<long long>(lines), results.at(1).Rate() / plainRate,
                    results.at(2).Rate() / plainRate, results.at(5).Rate() / results.at(6).Rate());
    }
    return 0;
}
