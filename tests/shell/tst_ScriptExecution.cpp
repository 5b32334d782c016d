#include "HostApplication.h"
#include "ShellFixture.h"
#include "TestFiles.h"
#include "editor/CodeEditor.h"
#include "output/OutputTextEdit.h"
#include "output/PanelGroup.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "tabs/CodeEditorGroup.h"

#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

// Running code from the editor as a user does: focus a buffer, type, execute, read the output.
class TestScriptExecution : public ShellFixture
{
    Q_OBJECT

private:
    // The first buffer of the language, made current and focused, its text entered as an edit,
    // as typing would: the buffer becomes modified.
    CodeEditor* FocusedBuffer(CodeEditorLanguage language, const QString& text) const
    {
        CodeEditorGroup* group = editor->GetActiveCodeEditorGroup();
        for (int i = 0; group && i < group->GetCount(); ++i)
        {
            if (group->GetLanguage(i) != language)
                continue;
            group->SetCurrentIndex(i);
            CodeEditor* codeEditor = group->GetCodeEditor(i);
            QApplication::setActiveWindow(codeEditor->window());
            codeEditor->setFocus();
            codeEditor->selectAll();
            codeEditor->textCursor().insertText(text);
            return codeEditor;
        }
        return nullptr;
    }

    QString Output() const { return editor->GetPanelGroup()->GetOutputTextEdit()->GetText(); }

private slots:
    void typedPythonRunsAndPrints()
    {
        CodeEditor* python = FocusedBuffer(CodeEditorLanguage::PYTHON, QString());
        QVERIFY(python);
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(python));
        QTest::keyClicks(python, QStringLiteral("print(6*7"));
        if (!python->GetText().endsWith(QLatin1Char(')')))
            QTest::keyClicks(python, QStringLiteral(")"));
        QCOMPARE(python->GetText(), QStringLiteral("print(6*7)"));
        editor->ClearHistory();
        QTest::keyClick(python, Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(Output(), QStringLiteral("print(6*7)\n42\n"));

        // The number pad's Enter runs too, and types nothing.
        editor->ClearHistory();
        QTest::keyClick(python, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(Output(), QStringLiteral("print(6*7)\n42\n"));
        QCOMPARE(python->GetText(), QStringLiteral("print(6*7)"));
    }

    void expressionsErrorsAndMelVariables()
    {
        CodeEditor* python = FocusedBuffer(CodeEditorLanguage::PYTHON, QStringLiteral("3 * 14"));
        QVERIFY(python);
        editor->ClearHistory();
        editor->Execute();
        QVERIFY(Output().endsWith(QStringLiteral("# Result: 42 #\n")));

        python->SetText(QStringLiteral("raise ValueError('no luck')"));
        editor->Execute();
        QVERIFY(Output().contains(QStringLiteral("# Error: ValueError: ")));
        QVERIFY(Output().endsWith(QStringLiteral("no luck #\n")));

        CodeEditor* mel =
            FocusedBuffer(CodeEditorLanguage::MEL, QStringLiteral("string $bq2Answer = \"yes\";"));
        QVERIFY(mel);
        editor->Execute();
        mel->SetText(QStringLiteral("$bq2Answer"));
        editor->ClearHistory();
        editor->Execute();
        // The lone variable prints its value, without an echo.
        QCOMPARE(Output(), QStringLiteral("yes\n"));
    }

    void typesChooseTheText()
    {
        CodeEditor* python =
            FocusedBuffer(CodeEditorLanguage::PYTHON, QStringLiteral("print('a')\nprint('b')"));
        QVERIFY(python);
        python->SetCursorSelection(0, 10);
        editor->ClearHistory();
        editor->Execute(ExecuteType::Selection);
        QCOMPARE(Output(), QStringLiteral("print('a')\na\n"));

        editor->ClearHistory();
        editor->Execute(ExecuteType::All);
        QCOMPARE(Output(), QStringLiteral("print('a')\nprint('b')\na\nb\n"));

        python->SetCursorPosition(13);
        editor->ClearHistory();
        editor->ExecuteLine();
        QCOMPARE(Output(), QStringLiteral("print('b')\nb\n"));
    }

    void nothingRunsWithoutAFocusedEditor()
    {
        FocusedBuffer(CodeEditorLanguage::PYTHON, QStringLiteral("print('should not run')"));
        OutputTextEdit* output = editor->GetPanelGroup()->GetOutputTextEdit();
        output->setFocus();
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(output));
        editor->ClearHistory();
        editor->Execute();
        QVERIFY(!Output().contains(QStringLiteral("should not run")));
    }

    void aBlankLineRunsAndSavesNothing()
    {
        Settings::saveAllOnExecute = true;
        CodeEditor* python =
            FocusedBuffer(CodeEditorLanguage::PYTHON, QStringLiteral("print(1)\n    \nprint(2)"));
        QVERIFY(python);
        QVERIFY(python->IsModified());
        python->SetCursorPosition(10);
        editor->ClearHistory();
        editor->ExecuteLine();
        QVERIFY(Output().isEmpty());
        QVERIFY(python->IsModified());
        QCOMPARE(QFile(python->GetFilePath()).size(), 0);

        // A line that runs saves every buffer first.
        python->SetCursorPosition(0);
        editor->ExecuteLine();
        QVERIFY(!python->IsModified());
        QCOMPARE(TestFiles::Read(python->GetFilePath()), QByteArray("print(1)\n    \nprint(2)"));
    }

    void revertOnExecuteDropsModulesImportedSinceTheSnapshot()
    {
        // The first show took the snapshot.
        fixture->Host().ProcessIdleQueue();
        MayaUtil::ExecutePython(QStringLiteral("import sys\nsys.modules.pop('fractions', None)"));
        CodeEditor* python = FocusedBuffer(CodeEditorLanguage::PYTHON, QStringLiteral("import fractions"));
        QVERIFY(python);
        // Off, the run leaves what it imported in place.
        editor->Execute();
        fixture->Host().ProcessIdleQueue();
        QCOMPARE(PythonInt(QStringLiteral("int('fractions' in sys.modules)")), 1);

        // Also a MEL run reverts.
        Settings::pythonRevertModuleStateOnExecute = true;
        FocusedBuffer(CodeEditorLanguage::MEL, QStringLiteral("print \"mel\\n\";"));
        editor->Execute();
        fixture->Host().ProcessIdleQueue();
        QCOMPARE(PythonInt(QStringLiteral("int('fractions' in sys.modules)")), 0);
        Settings::pythonRevertModuleStateOnExecute = false;
    }

    void forcedImportsAreCheckedAndRun()
    {
        fixture->ClearMessages();
        Settings::pythonForcedImports =
            QStringLiteral("import os; from json import dumps; import a:b; print(1);"
                           "  ;import no_such_module_bq2");
        editor->ParseForcedImports();
        QCOMPARE(Settings::pythonParsedForcedImports,
                 QStringList({QStringLiteral("import os"), QStringLiteral("from json import dumps")}));
        for (const char* bad : {"import a:b", "print(1)", "import no_such_module_bq2"})
            QVERIFY2(fixture->HasMessageContaining(
                         QStringLiteral("Skipping invalid forced import: %1").arg(QLatin1String(bad))),
                     bad);
        QCOMPARE(PythonInt(QStringLiteral("int('dumps' in globals())")), 1);
    }

    void dirAndHelpOfTheSelection()
    {
        CodeEditor* python = FocusedBuffer(CodeEditorLanguage::PYTHON, QStringLiteral("len"));
        QVERIFY(python);
        editor->ClearHistory();
        editor->PythonHelpSelection();
        QVERIFY(Output().isEmpty());
        python->SetCursorSelection(0, 3);
        editor->PythonDirSelection();
        QVERIFY(Output().contains(QStringLiteral("# Result: ")));
        QVERIFY(Output().contains(QStringLiteral("__call__")));
        editor->ClearHistory();
        editor->PythonHelpSelection();
        QVERIFY(Output().contains(QStringLiteral("Return the number of items")));
    }
};

QTEST_MAIN(TestScriptExecution)
#include "tst_ScriptExecution.moc"
