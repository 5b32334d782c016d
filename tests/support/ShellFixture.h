#pragma once

#include "HostFixture.h"

#include <QtCore/QObject>
#include <QtCore/QSize>
#include <QtCore/QTemporaryDir>
#include <QtCore/QVariant>
#include <QtTest/QTest>

#include <memory>

class BrindletEditor;
class CodeEditor;
class CodeEditorGroup;

// The base of a test program on the plug-in: each test function gets a fresh host with the
// plug-in loaded, the editor opened as a user opens it (unless `openEditor` is cleared), and a
// folder of its own for files.
class ShellFixture : public QObject
{
    Q_OBJECT

public:
    explicit ShellFixture(const QSize& size = QSize(1000, 700), bool active = false);

protected:
    // Opens the editor, again after a restart of the host; null if it never comes up.
    BrindletEditor* Open();
    CodeEditorGroup* Active() const;
    CodeEditorGroup* Group(int index) const;
    QString NewFile(const QString& name, const QByteArray& bytes = "a = 1\n") const;
    // Text put in at the end as one edit, as a paste would.
    static void Type(CodeEditor* codeEditor, const QString& text);
    // The number a MEL command or a Python expression answers; -1 when it fails.
    static int MelInt(const QString& command);
    static int PythonInt(const QString& expression);
    // A value left in one of the editor's settings files, as an earlier session or a hand edit would.
    static void WriteSetting(const QString& key, const QVariant& value,
                             const QString& file = QStringLiteral("brindletEditor2.ini"));
    bool Start();
    void Stop();

    std::unique_ptr<HostFixture> fixture;
    BrindletEditor* editor = nullptr;
    std::unique_ptr<QTemporaryDir> files;
    bool openEditor = true;

private slots:
    void init() { QVERIFY(Start()); }
    void cleanup() { Stop(); }

private:
    QSize size;
    bool active;
};
