#pragma once

#include "editor/CodeEditorProperties.h"

#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QTimer>

class CodeEditor;

// Copies of unsaved text, written a short time after typing stops into the "recovery" folder
// beside "internalBuffers", so that a crash of the host loses at most the last moments. A copy
// goes when its buffer is saved, closed, or discarded; the copies found at start are what a
// crash left behind.
class RecoveryStore : public QObject
{
    Q_OBJECT

public:
    struct Entry
    {
        QString copyPath;
        CodeEditorProperties properties;
        QDateTime time;
        QString text;
    };

    static constexpr int WRITE_DELAY_MS = 2000;

    explicit RecoveryStore(QObject* parent = nullptr);

    static QString GetDirectoryPath();
    static QString CopyPath(const QString& filePath);

    void Watch(CodeEditor* codeEditor);
    // Copies of every modified buffer waiting for the timer, now.
    void WritePending();
    bool Write(CodeEditor* codeEditor);
    void Remove(const QString& filePath);
    bool Has(const QString& filePath) const;
    QList<Entry> ReadAll() const;

private slots:
    void OnTextChanged();
    void OnWriteTimeout();

private:
    QTimer writeTimer;
    QList<QPointer<CodeEditor>> pending;
    // Reported once: a full disk would otherwise repeat the line every pause in typing.
    bool failureReported = false;
};
