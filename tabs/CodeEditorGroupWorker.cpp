#include "tabs/CodeEditorGroup.h"

#include "editor/CodeEditor.h"
#include "language/ParserMessage.h"
#include "language/PylintWorker.h"

#include <QtCore/QThread>

namespace
{
constexpr int WORKER_SHUTDOWN_WAIT_MS = 1000;
} // namespace

void CodeEditorGroup::CreateWorkerThread()
{
    workerThread = new QThread;
    workerThread->setObjectName(QStringLiteral("PylintWorker%1").arg(id));
    pylintWorker = new PylintWorker;
    connect(this, SIGNAL(ShutdownWorkers()), pylintWorker, SLOT(Shutdown()));
    connect(this, SIGNAL(PylintSourceCode(QString, QString, QString)), pylintWorker,
            SLOT(Pylint(QString, QString, QString)));
    connect(pylintWorker, SIGNAL(PylintOutput(QString, QStringList, int)), this,
            SLOT(OnPylintOutput(QString, QStringList, int)));
    pylintWorker->moveToThread(workerThread);
    workerThread->start(QThread::InheritPriority);
}

void CodeEditorGroup::DestroyWorkerThread()
{
    if (!workerThread)
        return;
    emit ShutdownWorkers();
    disconnect(pylintWorker, nullptr, this, nullptr);
    if (workerThread->wait(WORKER_SHUTDOWN_WAIT_MS))
    {
        delete pylintWorker;
        delete workerThread;
    }
    else
    {
        // A thread still running cannot be destroyed: both go once it has ended by itself.
        connect(workerThread, SIGNAL(finished()), pylintWorker, SLOT(deleteLater()));
        connect(workerThread, SIGNAL(finished()), workerThread, SLOT(deleteLater()));
    }
    pylintWorker = nullptr;
    workerThread = nullptr;
}

void CodeEditorGroup::OnPylintOutput(const QString& path, const QStringList& issues, int elementCount)
{
    // Widgets are touched here only; the worker reaches this slot through a queued connection.
    Q_ASSERT(QThread::currentThread() == thread());
    QList<ParserMessage> errors;
    QList<ParserMessage> warnings;
    QList<ParserMessage> infos;
    for (const QString& issue : issues)
    {
        const QStringList parts = issue.split(QStringLiteral(":$$:"), Qt::SkipEmptyParts);
        if (parts.size() != elementCount || parts.size() < 5)
            continue;
        bool lineOk = false;
        bool columnOk = false;
        const int line = parts.at(1).toInt(&lineOk, 10);
        const int column = parts.at(2).toInt(&columnOk, 10);
        if (!lineOk || !columnOk)
            continue;
        ParserMessage message;
        message.text = QStringLiteral("%1 %2").arg(parts.at(3), parts.at(4).trimmed());
        message.line = line - 1;
        message.column = column;
        const QString& category = parts.at(0);
        if (category == QLatin1String("C") || category == QLatin1String("R"))
            infos.append(message);
        else if (category == QLatin1String("W"))
            warnings.append(message);
        else if (category == QLatin1String("E") || category == QLatin1String("F"))
            errors.append(message);
    }
    // Findings for a buffer that is no longer current are dropped; the next change asks again.
    CodeEditor* current = GetCurrent();
    if (current && current->GetFilePath() == path)
        current->UpdateErrorsAndWarnings(errors, warnings, infos);
}
