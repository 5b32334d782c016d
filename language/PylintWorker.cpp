#include "language/PylintWorker.h"

#include "plugin/Logger.h"
#include "settings/Settings.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QTextStream>
#include <QtCore/QThread>

#if defined(Q_OS_UNIX)
#include <unistd.h>
#endif

namespace
{
const char* const MESSAGE_TEMPLATE = "--msg-template='::{C}:$$:{line}:$$:{column}:$$:[{msg_id}]:$$:{msg}::'";
const char* const MINIMAL_DISABLE = "--disable=W,R,C,E1111";
const char* const MINIMAL_ENABLE = "--enable=import-error,unreachable,duplicate-key,unnecessary-semicolon,"
                                   "global-variable-not-assigned,unused-variable,binary-op-exception,"
                                   "bad-format-string,anomalous-backslash-in-string,bad-open-mode";
constexpr int FIELD_COUNT = 5;
constexpr int KILL_WAIT_MS = 500;
constexpr int START_WAIT_MS = 1000;
// Ten steps below normal: the scheduler then gives a busy user interface about nine tenths of a
// shared core.
constexpr int PYLINT_NICENESS = 10;
} // namespace

int PylintWorker::sNextId = 0;
bool PylintWorker::sShowPylintExeNotFoundError = true;
bool PylintWorker::sTempFileWriteFailed = false;

PylintWorker::PylintWorker() : id(sNextId++), process(new QProcess(this))
{
#if defined(Q_OS_UNIX)
    // A check runs for seconds at full speed: below the user interface's priority, it takes only
    // the processor time that typing leaves.
    process->setChildProcessModifier([] { [[maybe_unused]] const int niceness = ::nice(PYLINT_NICENESS); });
#endif
    CreateTempFile();
}

PylintWorker::~PylintWorker()
{
    KillProcess();
}

void PylintWorker::CreateTempFile()
{
    if (sTempFileWriteFailed)
        return;
    const QString directory = Settings::GetTempDirectoryPath();
    if (directory.isEmpty())
        return;
    tempFilePath = QStringLiteral("%1/bq2_worker%2_temp.py").arg(directory).arg(id);
    WriteToTempFile(QString());
    if (!QFile::exists(tempFilePath))
    {
        Logger::Error("Failed to create worker file");
        tempFilePath.clear();
    }
}

void PylintWorker::WriteToTempFile(const QString& text)
{
    if (sTempFileWriteFailed)
        return;
    QFile file(tempFilePath);
    if (tempFilePath.isEmpty() || !file.open(QIODevice::WriteOnly | QIODevice::Truncate))
    {
        Logger::Error("Failed to write to worker file");
        sTempFileWriteFailed = true;
        return;
    }
    QTextStream stream(&file);
    stream << text;
}

bool PylintWorker::KillProcess()
{
    if (process->state() == QProcess::NotRunning)
        return true;
    process->kill();
    return process->waitForFinished(KILL_WAIT_MS);
}

QStringList PylintWorker::BuildArguments() const
{
    QStringList arguments{QString::fromLatin1(MESSAGE_TEMPLATE)};
    if (Settings::pylintUseMinimalCheckers)
        arguments << QString::fromLatin1(MINIMAL_DISABLE) << QString::fromLatin1(MINIMAL_ENABLE);
    if (!Settings::pylintConfigPath.isEmpty())
        arguments << QStringLiteral("--rcfile=%1").arg(Settings::pylintConfigPath);
    arguments << tempFilePath;
    return arguments;
}

void PylintWorker::Pylint(const QString& text, const QString& path, const QString& pythonPath)
{
    const int myRun = ++runId;
    // A check still running is given up for the new one.
    if (!KillProcess())
        return;
    filePath = path;
    if (!Settings::pylintEnabled)
        return;
    if (!QFile::exists(Settings::pylintPath))
    {
        Logger::Error(QStringLiteral("Pylint executable not found: %1").arg(Settings::pylintPath));
        sShowPylintExeNotFoundError = false;
        return;
    }
    WriteToTempFile(text);
    if (sTempFileWriteFailed)
        return;

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PYTHONPATH"), pythonPath);
    if (!Settings::pylintPythonHomePath.isEmpty())
        environment.insert(QStringLiteral("PYTHONHOME"), Settings::pylintPythonHomePath);
    process->setProcessEnvironment(environment);
    process->start(Settings::pylintPath, BuildArguments(), QIODevice::ReadWrite);
    if (!process->waitForStarted(START_WAIT_MS))
        return;

    // Handling events while waiting lets a newer check or Shutdown arrive; a newer check kills
    // this process and raises runId, so this run then reports nothing. Posted events are sent
    // explicitly too: an event loop may hold back those queued before this slot began.
    while (process->state() != QProcess::NotRunning)
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
        QThread::msleep(1);
    }
    if (myRun == runId)
        ProcessPylintOutput();
}

void PylintWorker::ProcessPylintOutput()
{
    const QString output = QString::fromUtf8(process->readAllStandardOutput());
    if (Settings::pylintShowErrors)
    {
        const QString errors = QString::fromUtf8(process->readAllStandardError());
        if (!errors.isEmpty())
            Logger::Error(errors);
    }
    emit PylintOutput(filePath, output.split(QStringLiteral("::"), Qt::SkipEmptyParts), FIELD_COUNT);
}

void PylintWorker::Shutdown()
{
    KillProcess();
    QThread::currentThread()->exit(0);
}

void PylintWorker::ResetErrors()
{
    if (id == 0)
        sShowPylintExeNotFoundError = true;
}
