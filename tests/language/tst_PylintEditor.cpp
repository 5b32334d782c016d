#include "ShellFixture.h"
#include "TestFiles.h"

#include "editor/CodeEditor.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "tabs/CodeEditorGroup.h"

#include <QtGui/QTextBlock>
#include <QtTest/QtTest>

namespace
{
const QString PYLINT = QStringLiteral("/usr/bin/pylint");
constexpr int PYLINT_WAIT_MS = 60000;

// The messages the editor shows for a line, as the status bar and the gutter's tooltip read them,
// hold the id.
void ExpectMessage(CodeEditor* editor, int line, const char* id)
{
    editor->setTextCursor(QTextCursor(editor->document()->findBlockByNumber(line)));
    QVERIFY2(editor->GetErrorAndWarningsText().contains(QLatin1String(id)),
             qPrintable(editor->GetErrorAndWarningsText()));
}
} // namespace

class tst_PylintEditor : public ShellFixture
{
    Q_OBJECT

private:
    CodeEditor* NewPythonBuffer(const QString& text)
    {
        editor->NewPythonBuffer();
        CodeEditor* codeEditor = editor->GetActiveCodeEditor();
        if (!codeEditor)
            return nullptr;
        codeEditor->setFocus();
        QTest::keyClicks(codeEditor, text.left(1));
        codeEditor->insertPlainText(text.mid(1));
        return codeEditor;
    }

    // A shell script in Pylint's place.
    bool UseChecker(const char* name, const QByteArray& body)
    {
        Settings::pylintPath = scripts.filePath(QLatin1String(name));
        return TestFiles::Write(Settings::pylintPath, "#!/bin/sh\n" + body) &&
               QFile::setPermissions(Settings::pylintPath,
                                     QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QTemporaryDir scripts;

private slots:
    void initTestCase()
    {
        if (!QFile::exists(PYLINT))
            QSKIP("Pylint is not installed (scripts/setup.sh installs it)");
    }

    void init()
    {
        QVERIFY(Start());
        Settings::pylintEnabled = true;
        Settings::pylintPath = PYLINT;
    }

    // Which checkers run is the worker test's; here, that the findings reach the editor's lines, on
    // the main thread.
    void findingsReachDecorations()
    {
        Settings::pylintUseMinimalCheckers = false;
        CodeEditor* codeEditor =
            NewPythonBuffer(QStringLiteral("import os\n\n\ndef run():\n    return undefined_name\n"));
        QVERIFY(codeEditor);
        QList<QThread*> threads;
        connect(
            codeEditor, &CodeEditor::ErrorAndWarningTextChanged, this,
            [&threads] { threads.append(QThread::currentThread()); }, Qt::DirectConnection);
        QTRY_VERIFY_WITH_TIMEOUT(codeEditor->GetNumberOfErrors() > 0, PYLINT_WAIT_MS);
        ExpectMessage(codeEditor, 4, "[E0602]");
        QVERIFY(codeEditor->GetNumberOfWarnings() > 0);
        ExpectMessage(codeEditor, 0, "[W0611]");
        for (QThread* thread : threads)
            QCOMPARE(thread, QThread::currentThread());

        // A syntax error is an error.
        codeEditor = NewPythonBuffer(QStringLiteral("x = 1\ndef broken(:\n    pass\n"));
        QVERIFY(codeEditor);
        QTRY_VERIFY_WITH_TIMEOUT(codeEditor->GetNumberOfErrors() > 0, PYLINT_WAIT_MS);
        ExpectMessage(codeEditor, 1, "[E0001]");
    }

    void informationalFindingsAreLeftOut()
    {
        QVERIFY(UseChecker("kinds.sh",
                           "printf '::I:$$:1:$$:0:$$:[I0011]:$$:a::F:$$:1:$$:0:$$:[F0001]:$$:b::'\n"));
        CodeEditor* codeEditor = NewPythonBuffer(QStringLiteral("x = 1\n"));
        QVERIFY(codeEditor);
        QTRY_COMPARE(codeEditor->GetNumberOfErrors(), 1);
        ExpectMessage(codeEditor, 0, "[F0001]");
        QVERIFY(!codeEditor->GetErrorAndWarningsText().contains(QLatin1String("[I0011]")));
    }

    void editorNoLongerCurrentGetsNothing()
    {
        // A slow checker: its findings arrive after the user has moved on to another buffer.
        QVERIFY(UseChecker("slow.sh", "sleep 1\nprintf '::E:$$:1:$$:0:$$:[E9999]:$$:late::'\n"));
        CodeEditor* first = NewPythonBuffer(QStringLiteral("x = 1\n"));
        QVERIFY(first);
        QTest::qWait(400); // the check of the first buffer is running
        editor->NewMelBuffer();
        QTest::qWait(2000);
        QCOMPARE(first->GetNumberOfErrors(), 0);
        // Nor does the buffer that is current now take them.
        QCOMPARE(editor->GetActiveCodeEditor()->GetNumberOfErrors(), 0);
    }

    void closingGroupDuringCheckIsPrompt()
    {
        QVERIFY(UseChecker("hang.sh", "sleep 600\n"));
        auto* group = new CodeEditorGroup(7, editor->GetKeyBindings());
        group->show();
        group->InsertCodeEditor(
            0, {CodeEditorType::INTERNAL_BUFFER, CodeEditorLanguage::PYTHON, QString(), QString()},
            QStringLiteral("x = 1\n"));
        group->SetCurrentIndex(0);
        group->UpdateParser();
        QTest::qWait(300);
        QElapsedTimer clock;
        clock.start();
        delete group;
        QVERIFY2(clock.elapsed() < 1100, qPrintable(QString::number(clock.elapsed())));
    }

    void quitDuringCheckIsClean()
    {
        CodeEditor* codeEditor = NewPythonBuffer(QStringLiteral("import os\n"));
        QVERIFY(codeEditor);
        QTest::qWait(400); // Pylint is running
        QElapsedTimer clock;
        clock.start();
        Stop();
        QVERIFY2(clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
    }
};

QTEST_MAIN(tst_PylintEditor)
#include "tst_PylintEditor.moc"
