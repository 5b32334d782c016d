#include "DialogAnswer.h"
#include "EditorWindow.h"
#include "HostApplication.h"
#include "HostFixture.h"
#include "TestFiles.h"
#include "editor/CodeEditor.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "tabs/CodeEditorGroup.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QSplitter>

using TestFiles::MakeReadOnly;
using TestFiles::Read;

// Buffers as real files in the user's prefs folder, files on disk, and the tabs across restarts.
class TestBuffersAndFiles : public QObject
{
    Q_OBJECT

private:
    BrindletEditor* Open() { return editor = EditorWindow::Open(*fixture); }

    CodeEditorGroup* Active() const { return EditorWindow::Active(*fixture); }

    static void Type(CodeEditor* codeEditor, const QString& text)
    {
        QTextCursor cursor = codeEditor->textCursor();
        cursor.movePosition(QTextCursor::End);
        cursor.insertText(text);
    }

    QString NewFile(const QString& name, const QByteArray& bytes)
    {
        const QString path = QDir(files.path()).filePath(name);
        TestFiles::Write(path, bytes);
        return path;
    }

private slots:
    void init()
    {
        fixture = std::make_unique<HostFixture>();
        QVERIFY(fixture->LoadPlugin() == MStatus::kSuccess);
        QVERIFY(Open());
    }

    void cleanup()
    {
        editor = nullptr;
        fixture.reset();
    }

    void firstStartMakesTwoBufferFiles()
    {
        QCOMPARE(editor->GetCodeEditorCount(), 2);
        const QDir buffers(Settings::GetInternalBufferDirectoryPath());
        const QStringList names = buffers.entryList(QDir::Files);
        QCOMPARE(names.size(), 2);
        QVERIFY(names.filter(QRegularExpression(QStringLiteral("^melBuffer_.{6}\\.mel$"))).size() == 1);
        QVERIFY(names.filter(QRegularExpression(QStringLiteral("^pythonBuffer_.{6}\\.py$"))).size() == 1);
        QCOMPARE(Active()->GetType(0), CodeEditorType::INTERNAL_BUFFER);
        QCOMPARE(Active()->GetLabel(1), QStringLiteral("Python"));
    }

    void buffersReachTheirFilesAtQuitNotAtEachKey()
    {
        const QString melPath = Active()->GetFilePath(0);
        const QString pythonPath = Active()->GetFilePath(1);
        Type(Active()->GetCodeEditor(0), QStringLiteral("print \"typed\";"));
        QCOMPARE(Read(melPath), QByteArray());
        editor->SaveAll();
        QCOMPARE(Read(melPath), QByteArray("print \"typed\";"));
        Type(Active()->GetCodeEditor(1), QStringLiteral("x = 1"));
        // Files are kept as the user left them at quit unless asked; buffers are always written.
        Settings::saveAllOnExit = false;
        QVERIFY(fixture->Host().Quit());
        QCOMPARE(Read(pythonPath), QByteArray("x = 1"));
    }

    void tabsComeBackAfterARestart()
    {
        const QString path = NewFile(QStringLiteral("tool.py"), QByteArray(4000, 'x').replace('x', "line\n"));
        QVERIFY(editor->OpenFile(path));
        CodeEditor* file = Active()->GetCurrent();
        QVERIFY(file);
        file->SetCursorPosition(120);
        file->SetVerticalScrollBarValue(300);
        QCOMPARE(file->GetVerticalScrollBarValue(), 300);
        Type(Active()->GetCodeEditor(1), QStringLiteral("print('kept')"));
        editor->SetActiveCodeEditor(0, 1);
        Active()->SetCursorPosition(1, 5, false);
        fixture->Restart();
        QVERIFY(Open());
        QCOMPARE(editor->GetCodeEditorCount(), 3);
        QCOMPARE(Active()->GetCurrentIndex(), 1);
        QCOMPARE(Active()->GetText(1), QStringLiteral("print('kept')"));
        QCOMPARE(Active()->GetCursorPosition(1), 5);
        const int index = Active()->GetCodeEditorIndex(QFileInfo(path).absoluteFilePath());
        QVERIFY(index >= 0);
        QCOMPARE(Active()->GetCursorPosition(index), 120);
        editor->SetActiveCodeEditor(0, index);
        QTRY_COMPARE(Active()->GetVerticalScrollBarValue(index), 300);
        QCOMPARE(Active()->GetType(index), CodeEditorType::FILE);
    }

    void quittingWithModifiedFilesAsksAndCancelStaysOpen()
    {
        Settings::saveAllOnExit = false;
        Settings::showUnsavedFileDialogOnMayaExit = true;
        const QString path = NewFile(QStringLiteral("unsaved.py"), "a = 1\n");
        editor->OpenFile(path);
        Type(Active()->GetCurrent(), QStringLiteral("b = 2\n"));
        {
            DialogAnswer cancel(QMessageBox::Cancel);
            QVERIFY(!fixture->Host().Quit());
            QCOMPARE(cancel.texts,
                     QStringList({"Brindlet Editor 2 files have been modified. Save all changes?"}));
        }
        QVERIFY(fixture->Editor());
        QVERIFY(fixture->Mel(QStringLiteral("brindletEditor2 -v")) == MStatus::kSuccess);
        DialogAnswer yes(QMessageBox::Yes);
        QVERIFY(fixture->Host().Quit());
        QCOMPARE(yes.texts.size(), 1);
        QCOMPARE(Read(path), QByteArray("a = 1\nb = 2\n"));
        QVERIFY(!fixture->Editor());
    }

    void damagedTabRecordsAreSkippedOrRepaired()
    {
        const QString a = NewFile(QStringLiteral("a.mel"), "print 1;");
        const QString b = NewFile(QStringLiteral("b.py"), "print(2)");
        QVERIFY(fixture->UnloadPlugin() == MStatus::kSuccess);
        {
            QSettings ini(Settings::GetUserConfigPath(), QSettings::IniFormat);
            ini.setValue(QStringLiteral("tabs/tabDetails"),
                         QStringList{QStringLiteral("0;1;%1;1;0").arg(a),
                                     QStringLiteral("7;1;%1;1;0;0").arg(b),
                                     QStringLiteral("0;5;%1;1;0;0").arg(a),
                                     QStringLiteral("x;1;/gone/file.py;1;0;0")});
        }
        fixture->Restart();
        QVERIFY(Open());
        // The five-field entry and the bad type are skipped, group 7 means group 0, the
        // missing file has no tab. The two first buffers, which no record names any more, come
        // back behind it rather than being lost.
        QCOMPARE(editor->GetCodeEditorCount(), 3);
        QCOMPARE(editor->GetCodeEditorGroupByIndex(0)->GetFilePath(0), b);
        QCOMPARE(editor->GetCodeEditorGroupByIndex(0)->GetType(1), CodeEditorType::INTERNAL_BUFFER);
        QVERIFY(fixture->HasMessageContaining(QStringLiteral("Failed to open file: /gone/file.py")));
    }

    void aFileIsOpenOnlyOnce()
    {
        const QString path = NewFile(QStringLiteral("once.mel"), "// once");
        QVERIFY(editor->OpenFile(path));
        editor->OnMoveTabToZoneRequested(Active()->GetId(), Active()->GetCurrentIndex(), Active()->GetId(),
                                         TabDropZoneAfter);
        QVERIFY(editor->GetCodeEditorGroupByPath(path) != editor->GetCodeEditorGroupByIndex(0));
        editor->SetActiveCodeEditor(0, 0);
        const int count = editor->GetCodeEditorCount();
        QVERIFY(!editor->OpenFile(path));
        QCOMPARE(editor->GetCodeEditorCount(), count);
        QCOMPARE(editor->GetActiveCodeEditorGroup(), editor->GetCodeEditorGroupByPath(path));
    }

    void changesByOtherProgramsReloadOrAsk()
    {
        const QString path = NewFile(QStringLiteral("watched.py"), "old = 1\n");
        editor->OpenFile(path);
        CodeEditor* codeEditor = Active()->GetCurrent();
        QProcess::execute(QStringLiteral("sh"),
                          {QStringLiteral("-c"), QStringLiteral("echo 'new = 2' > '%1'").arg(path)});
        QTRY_VERIFY(editor->GetCodeEditorGroupByPath(path));
        QTest::qWait(300);
        // Nothing happens until the user comes back to the editor.
        QCOMPARE(codeEditor->GetText(), QStringLiteral("old = 1\n"));
        editor->CheckForFileChanges();
        QCOMPARE(codeEditor->GetText(), QStringLiteral("new = 2\n"));
        QVERIFY(!codeEditor->IsModified());

        // A modified editor asks first.
        Type(codeEditor, QStringLiteral("# mine\n"));
        TestFiles::Write(path + QStringLiteral(".tmp"), "newer = 3\n");
        QFile::remove(path);
        QFile::rename(path + QStringLiteral(".tmp"), path);
        QTest::qWait(300);
        {
            DialogAnswer no(QMessageBox::No);
            editor->CheckForFileChanges();
            QCOMPARE(no.texts.size(), 1);
            QVERIFY(
                no.texts.first().contains(QStringLiteral("This file has been modified by another program.")));
        }
        QVERIFY(codeEditor->GetText().contains(QStringLiteral("# mine")));

        // The editor's own save does not ask; the watch follows the replaced file.
        editor->Save();
        QCOMPARE(Read(path), QByteArray("new = 2\n# mine\n"));
        QTest::qWait(300);
        DialogAnswer any(QMessageBox::No);
        editor->CheckForFileChanges();
        QVERIFY(any.texts.isEmpty());
        QProcess::execute(QStringLiteral("sh"),
                          {QStringLiteral("-c"), QStringLiteral("echo 'x = 4' > '%1'").arg(path)});
        QTest::qWait(300);
        editor->CheckForFileChanges();
        QCOMPARE(codeEditor->GetText(), QStringLiteral("x = 4\n"));
    }

    void tabsDraggedToAnEdgeOpenTheNextGroup()
    {
        QCOMPARE(editor->GetCodeEditorGroupByIndex(1)->isVisible(), false);
        CodeEditorGroup* first = Active();
        editor->OnMoveTabToZoneRequested(first->GetId(), 1, first->GetId(), TabDropZoneAfter);
        CodeEditorGroup* second = editor->GetCodeEditorGroupByIndex(1);
        QVERIFY(second->isVisible());
        QCOMPARE(second->GetCount(), 1);
        QVERIFY(first->IsTabDropOtherGroupsEnabled());

        // Moving the only tab out hides the group again.
        editor->OnMoveTabRequested(second->GetId(), 0, first->GetId(), 1);
        QVERIFY(!second->isVisible());
        QCOMPARE(first->GetCount(), 2);
        QCOMPARE(editor->GetCodeEditorGroupByIndex(0), first);
    }

private:
    std::unique_ptr<HostFixture> fixture;
    BrindletEditor* editor = nullptr;
    QTemporaryDir files;
};

QTEST_MAIN(TestBuffersAndFiles)
#include "tst_BuffersAndFiles.moc"
