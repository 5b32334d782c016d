#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

class QProcess;

// Runs the user's Pylint on one buffer at a time, on a thread of its own, so that waiting for the
// process never touches the user interface. The raw findings go back to the group, which reads
// them on the main thread.
class PylintWorker : public QObject
{
    Q_OBJECT

public:
    PylintWorker();
    ~PylintWorker() override;

    int GetId() const { return id; }
    QString GetTempFilePath() const { return tempFilePath; }

    static bool IsShowPylintExeNotFoundError() { return sShowPylintExeNotFoundError; }

signals:
    void PylintOutput(const QString& filePath, const QStringList& lines, int fieldCount);

public slots:
    void Pylint(const QString& text, const QString& filePath, const QString& pythonPath);
    void Shutdown();
    void ResetErrors();

private:
    bool KillProcess();
    void CreateTempFile();
    void WriteToTempFile(const QString& text);
    void ProcessPylintOutput();
    QStringList BuildArguments() const;

    static int sNextId;
    static bool sShowPylintExeNotFoundError;
    static bool sTempFileWriteFailed;

    int id;
    QProcess* process;
    QString tempFilePath;
    QString filePath;
    int runId = 0;
};
