// Files on disk as they are in the field: other encodings and line endings, links, other
// owners, folders that can't be written, full disks, other programs writing meanwhile, and
// crashes. Each case goes through the real host and real files and looks at the bytes on disk
// and at what the user was told.
#include "DialogAnswer.h"
#include "HostApplication.h"
#include "ShellFixture.h"
#include "TestFiles.h"
#include "editor/CodeEditor.h"
#include "output/OutputTextEdit.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "tabs/CodeEditorGroup.h"
#include "tabs/CustomTabBar.h"

#include <QtTest/QtTest>
#include <QtWidgets/QMessageBox>

#include <sys/stat.h>
#include <unistd.h>

#include <tuple>

namespace
{
// Another program that saves by writing a new file and renaming it over the old one.
bool ReplaceByRename(const QString& path, const QByteArray& bytes)
{
    const QString temporary = path + QStringLiteral(".other~");
    return TestFiles::Write(temporary, bytes) &&
           ::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(path).constData()) == 0;
}

struct stat Stat(const QString& path)
{
    struct stat status = {};
    ::stat(QFile::encodeName(path).constData(), &status);
    return status;
}

} // namespace

class TestFileFaults : public ShellFixture
{
    Q_OBJECT

private:
    CodeEditor* OpenFile(const QString& path)
    {
        return editor->OpenFile(path) ? Active()->GetCurrent() : nullptr;
    }

    static void TypeAtEnd(CodeEditor* codeEditor, const QString& text)
    {
        codeEditor->moveCursor(QTextCursor::End);
        for (const QChar c : text)
        {
            // As a keyboard with that character sends it; QTest only types Latin letters.
            const bool newLine = c == QLatin1Char('\n');
            const int key = newLine             ? int(Qt::Key_Return)
                            : c.unicode() < 128 ? int(c.toUpper().unicode())
                                                : 0;
            const QString keyText = newLine ? QStringLiteral("\r") : QString(c);
            QTest::sendKeyEvent(QTest::Click, codeEditor, Qt::Key(key), keyText, Qt::NoModifier);
        }
    }

    QDir RecoveryFolder() const
    {
        return QDir(QFileInfo(Settings::GetInternalBufferDirectoryPath()).absolutePath() + "/recovery");
    }

    QStringList RecoveryCopies() const { return RecoveryFolder().entryList({"*.json"}, QDir::Files); }

    // The bytes of every recovery copy, so that a test can look for its text in them.
    QByteArray RecoveryBytes() const
    {
        QByteArray all;
        for (const QString& name : RecoveryCopies())
            all += TestFiles::Read(RecoveryFolder().filePath(name));
        return all;
    }

private slots:
    void cleanup()
    {
        for (const QString& path : std::as_const(immutable))
            TestFiles::MakeReadOnly(path, false);
        immutable.clear();
        Stop();
        if (!mountPoint.isEmpty())
            QProcess::execute(QStringLiteral("umount"), {mountPoint});
        mountPoint.clear();
    }

    void bytesRoundTrip_data()
    {
        QTest::addColumn<QByteArray>("original");
        QTest::addColumn<QByteArray>("edited");
        QTest::addColumn<QString>("shown");
        // `edited` is the file after the user types a new line and "zé" at the end.
        const auto row =
            [](const char* name, const QByteArray& original, const QByteArray& added, const char* shown)
        { QTest::newRow(name) << original << original + added << QString(shown); };
        const QByteArray lf("\nz\xc3\xa9");
        row("UTF-8", "a = 1\nb = '\xc3\xa9'\n", lf, "UTF-8, LF");
        row("UTF-8 with BOM", "\xef\xbb\xbf\x61\n", lf, "UTF-8 with BOM, LF");
        row("UTF-16 LE BOM", QByteArray("\xff\xfe\x61\x00\r\x00\n\x00", 8),
            QByteArray("\r\x00\n\x00z\x00\xe9\x00", 8), "UTF-16 LE, CRLF");
        row("Latin-1", "s = '\xe9t\xe9'\n", "\nz\xe9", "Latin-1, LF");
        row("CRLF", "a\r\nb\r\n", "\r" + lf, "UTF-8, CRLF");
        row("lone CR", "a\rb\r", "\rz\xc3\xa9", "UTF-8, CR");
        row("U+2028 in a comment", "# one\xe2\x80\xa8two\nx = 1\n", lf, "UTF-8, LF");
        row("empty", "", lf, "UTF-8, LF");
        QTest::newRow("mixed, CRLF dominant")
            << QByteArray("a\r\nb\r\nc\nd") << QByteArray("a\r\nb\r\nc\r\nd\r\nz\xc3\xa9")
            << "mixed line endings (saved as CRLF)";
        QByteArray large;
        while (large.size() < 20 * 1024 * 1024)
            large += "value = 'a line of a large generated file with some length'  # 0123456789\r\n";
        row("large", large, "\r" + lf, "UTF-8, CRLF");
    }

    void bytesRoundTrip()
    {
        QFETCH(QByteArray, original);
        QFETCH(QString, shown);
        // Plain text: no tidy-up on save stands between the bytes and the file.
        const QString path = NewFile(QStringLiteral("round.txt"), original);
        CodeEditor* codeEditor = OpenFile(path);
        QVERIFY(codeEditor);
        QVERIFY(!codeEditor->IsModified());
        editor->Save();
        QCOMPARE(TestFiles::Read(path), original);
        // Running code and quitting save everything: still the same bytes.
        editor->SaveAll();
        QCOMPARE(TestFiles::Read(path), original);

        TypeAtEnd(codeEditor, QStringLiteral("\nz\u00e9"));
        editor->Save();
        QTEST(TestFiles::Read(path), "edited");
        QVERIFY(!codeEditor->IsModified());
        // The user sees how the file is stored.
        auto* tabBar = Active()->findChild<CustomTabBar*>();
        QVERIFY(tabBar);
        const QString toolTip = tabBar->GetTabToolTip(Active()->GetCurrentIndex());
        QVERIFY2(toolTip.contains(shown), qPrintable(toolTip));
    }

    void mixedLineEndingsAreSaid()
    {
        const QString path = NewFile(QStringLiteral("mixed.txt"), "a\nb\nc\r\n");
        QVERIFY(OpenFile(path));
        QVERIFY(fixture->HasMessageContaining(QStringLiteral("mixed line endings: a save writes LF")));
    }

    void nulBytesAreNeverWritten()
    {
        const QByteArray bytes("PK\x03\x04\x00\x00 binary \x00\xff\n", 16);
        const QString path = NewFile(QStringLiteral("data.py"), bytes);
        CodeEditor* codeEditor = OpenFile(path);
        QVERIFY(codeEditor);
        QVERIFY(codeEditor->isReadOnly());
        QVERIFY(fixture->HasMessageContaining(QStringLiteral("holds NUL bytes")));
        QTest::keyClicks(codeEditor, QStringLiteral("typed"));
        editor->Save();
        editor->SaveAll();
        codeEditor->SetModified(true);
        editor->SaveAll();
        QCOMPARE(TestFiles::Read(path), bytes);
        QVERIFY(fixture->Host().Quit());
        QCOMPARE(TestFiles::Read(path), bytes);
    }

    void fileIdentityIsKept_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char* kind : {"read-only folder", "hard link", "other owner", "symbolic link"})
            QTest::newRow(kind) << QString(kind);
    }

    void fileIdentityIsKept()
    {
        QFETCH(QString, kind);
        const QString path = NewFile(QStringLiteral("folder/tool.txt"), "old\n");
        const QString folder = QFileInfo(path).path();
        QString opened = path;
        const QString other = files->filePath(QStringLiteral("other.txt"));
        if (kind == QLatin1String("read-only folder"))
        {
            immutable.append(folder);
            if (!TestFiles::MakeReadOnly(folder, true))
                QSKIP("chattr +i is not available, and root writes into any folder");
        }
        else if (kind == QLatin1String("hard link"))
            QVERIFY(::link(QFile::encodeName(path).constData(), QFile::encodeName(other).constData()) == 0);
        else if (kind == QLatin1String("other owner"))
        {
            if (::geteuid() != 0)
                QSKIP("Giving a file to another user needs root");
            QVERIFY(::chown(QFile::encodeName(path).constData(), 4321, 4321) == 0);
        }
        else
        {
            QVERIFY(QFile::link(path, other));
            opened = other;
        }
        const struct stat before = Stat(path);
        CodeEditor* codeEditor = OpenFile(opened);
        QVERIFY(codeEditor);
        TypeAtEnd(codeEditor, QStringLiteral("new"));
        editor->Save();
        QVERIFY2(!codeEditor->IsModified(),
                 qPrintable(fixture->MessagesOfType(MCommandMessage::kError).join('\n')));
        QCOMPARE(TestFiles::Read(path), QByteArray("old\nnew"));
        const struct stat after = Stat(path);
        QCOMPARE(std::tie(after.st_ino, after.st_uid, after.st_gid, after.st_mode),
                 std::tie(before.st_ino, before.st_uid, before.st_gid, before.st_mode));
        if (kind == QLatin1String("hard link"))
            QCOMPARE(TestFiles::Read(other), QByteArray("old\nnew"));
        if (kind == QLatin1String("symbolic link"))
            QVERIFY(QFileInfo(other).isSymLink());
        QCOMPARE(QDir(folder).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("tool.txt")});
    }

    void failedSaveAtQuitAsksAndKeepsTheText()
    {
        Settings::saveAllOnExit = true;
        const QString path = NewFile(QStringLiteral("locked.txt"), "locked\n");
        immutable.append(path);
        if (!TestFiles::MakeReadOnly(path, true))
            QSKIP("chattr +i is not available, and root writes any file");
        CodeEditor* codeEditor = OpenFile(path);
        QVERIFY(codeEditor);
        TypeAtEnd(codeEditor, QStringLiteral("unsaved line"));
        {
            DialogAnswer cancel(QMessageBox::Cancel);
            QVERIFY(!fixture->Host().Quit());
            QVERIFY2(cancel.Told(QStringLiteral("'locked.txt' could not be saved: permission denied")),
                     qPrintable(cancel.texts.join('\n')));
            QVERIFY(cancel.labels.contains(QStringLiteral("Save As...")));
            QVERIFY(cancel.labels.contains(QStringLiteral("Discard")));
        }
        QVERIFY(fixture->Editor());
        QVERIFY(codeEditor->IsModified());
        QVERIFY(fixture->HasMessageContaining(QStringLiteral("permission denied")));
        {
            DialogAnswer discard(QMessageBox::Discard);
            QVERIFY(fixture->Host().Quit());
            QCOMPARE(discard.texts.size(), 1);
        }
        QCOMPARE(TestFiles::Read(path), QByteArray("locked\n"));
        QVERIFY(RecoveryBytes().contains("unsaved line"));

        // Offered back at the next start, and restored unsaved, over nothing on disk.
        fixture->Restart();
        DialogAnswer restore(QMessageBox::Yes);
        QVERIFY(Open());
        QVERIFY2(restore.Told(path), qPrintable(restore.texts.join('\n')));
        QVERIFY(restore.labels.contains(QStringLiteral("Restore")));
        CodeEditor* restored = editor->GetCodeEditor(QFileInfo(path).absoluteFilePath(), false);
        QVERIFY(restored);
        QCOMPARE(restored->GetText(), QStringLiteral("locked\nunsaved line"));
        QVERIFY(restored->IsModified());
        QCOMPARE(TestFiles::Read(path), QByteArray("locked\n"));
    }

    void diskFull()
    {
        if (::geteuid() != 0)
            QSKIP("Mounting a small file system needs root");
        const QString mount = files->filePath(QStringLiteral("small"));
        QVERIFY(QDir().mkpath(mount));
        if (QProcess::execute(QStringLiteral("mount"),
                              {QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"),
                               QStringLiteral("size=256k"), QStringLiteral("tmpfs"), mount}) != 0)
            QSKIP("mount -t tmpfs is not permitted here");
        mountPoint = mount;
        const QString path = mount + QStringLiteral("/full.txt");
        const QByteArray original = QByteArray("kept\n").repeated(100);
        QVERIFY(TestFiles::Write(path, original));
        QFile filler(mount + QStringLiteral("/filler"));
        QVERIFY(filler.open(QIODevice::WriteOnly));
        const QByteArray block(4096, 'f');
        while (filler.write(block) == block.size() && filler.flush())
        {
        }
        filler.close();
        CodeEditor* codeEditor = OpenFile(path);
        QVERIFY(codeEditor);
        Type(codeEditor, QString(64 * 1024, QLatin1Char('n')));
        editor->Save();
        QVERIFY(codeEditor->IsModified());
        QVERIFY(TestFiles::Read(path) == original);
        QVERIFY2(fixture->HasMessageContaining(QStringLiteral("disk full")),
                 qPrintable(fixture->MessagesOfType(MCommandMessage::kError).join('\n')));
        QCOMPARE(QDir(mount).entryList(QDir::Files | QDir::Hidden).size(), 2);
    }

    void fileDeletedUnderTheEditor()
    {
        const QString path = NewFile(QStringLiteral("gone.txt"), "text\n");
        CodeEditor* codeEditor = OpenFile(path);
        QVERIFY(codeEditor);
        QVERIFY(QFile::remove(path));
        QTRY_VERIFY(codeEditor->IsModified());
        editor->SaveAll();
        QCOMPARE(TestFiles::Read(path), QByteArray("text\n"));
        QVERIFY(!codeEditor->IsModified());
    }

    void fileChangedByAnotherProgram_data()
    {
        QTest::addColumn<bool>("byRename");
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QByteArray>("onDisk");
        const int cancel = QMessageBox::Cancel, overwrite = QMessageBox::Save, reload = QMessageBox::Discard;
        const QByteArray theirs("theirs = 2\n"), ours("mine = 1\nours = 3\n");
        for (const bool byRename : {false, true})
        {
            const char* how = byRename ? "by rename" : "in place";
            QTest::addRow("%s, save, cancel", how) << byRename << "save" << cancel << theirs;
            QTest::addRow("%s, execute, cancel", how) << byRename << "execute" << cancel << theirs;
            QTest::addRow("%s, quit, cancel", how) << byRename << "quit" << cancel << theirs;
        }
        QTest::newRow("in place, save, overwrite") << false << "save" << overwrite << ours;
        QTest::newRow("by rename, execute, overwrite") << true << "execute" << overwrite << ours;
        QTest::newRow("by rename, save, reload") << true << "save" << reload << theirs;
    }

    void fileChangedByAnotherProgram()
    {
        QFETCH(bool, byRename);
        QFETCH(QString, action);
        QFETCH(int, answer);
        Settings::saveAllOnExecute = Settings::saveAllOnExit = true;
        Settings::pythonTrimTrailingWhiteSpacesOnSave = Settings::pythonEnsureNewLineAtEofOnSave = false;
        const QString path = NewFile(QStringLiteral("shared.py"), "mine = 1\n");
        CodeEditor* codeEditor = OpenFile(path);
        QVERIFY(codeEditor);
        TypeAtEnd(codeEditor, QStringLiteral("ours = 3\n"));
        // Old enough that the time alone would not tell.
        QTest::qWait(50);
        QVERIFY(byRename ? ReplaceByRename(path, "theirs = 2\n") : TestFiles::Write(path, "theirs = 2\n"));
        codeEditor->activateWindow();
        codeEditor->setFocus();
        QTRY_VERIFY(codeEditor->hasFocus());
        DialogAnswer answered(static_cast<QMessageBox::StandardButton>(answer));
        if (action == QLatin1String("save"))
            editor->Save();
        else if (action == QLatin1String("execute"))
            editor->Execute();
        else
            fixture->Host().Quit();
        QTEST(TestFiles::Read(path), "onDisk");
        QVERIFY2(answered.Told(QStringLiteral("This file has been changed by another program")),
                 qPrintable(answered.texts.join('\n')));
        QVERIFY(answered.labels.contains(QStringLiteral("Overwrite")));
        QVERIFY(answered.labels.contains(QStringLiteral("Reload")));
        if (answer == QMessageBox::Discard)
        {
            QCOMPARE(codeEditor->GetText(), QStringLiteral("theirs = 2\n"));
            // What the user had typed is one undo away.
            codeEditor->undo();
            QCOMPARE(codeEditor->GetText(), QStringLiteral("mine = 1\nours = 3\n"));
        }
    }

    void unwritableSettingsAreSaidOnceAndBuffersStay()
    {
        CodeEditor* buffer = Active()->GetCodeEditor(0);
        QVERIFY(buffer);
        QTest::keyClicks(buffer, QStringLiteral("print \"kept\";"));
        const QString config = Settings::GetUserConfigPath();
        QVERIFY(QFile::remove(config));
        QVERIFY(QDir().mkpath(config));
        fixture->ClearMessages();
        editor->SaveState();
        editor->SaveState();
        const QStringList errors = fixture->MessagesOfType(MCommandMessage::kError);
        QCOMPARE(errors.filter(QStringLiteral("Failed to write %1").arg(config)).size(), 1);
        fixture->Restart();
        QVERIFY(Open());
        QVERIFY(fixture->HasMessageContaining(QStringLiteral("Failed to read %1").arg(config)));
        // No tab record could be kept, yet the buffer with the text comes back.
        bool found = false;
        for (int i = 0; i < Active()->GetCount(); ++i)
            found = found || Active()->GetText(i) == QStringLiteral("print \"kept\";");
        QVERIFY(found);
    }

    void recoveryCopyFollowsTyping()
    {
        CodeEditor* buffer = Active()->GetCodeEditor(1);
        QVERIFY(buffer);
        QVERIFY(RecoveryCopies().isEmpty());
        QTest::keyClicks(buffer, QStringLiteral("recovered = True"));
        QTRY_VERIFY_WITH_TIMEOUT(RecoveryBytes().contains("recovered = True"), 5000);
        // A save takes the copy away.
        editor->SaveAll();
        QVERIFY(RecoveryCopies().isEmpty());
        QTest::keyClicks(buffer, QStringLiteral(" # more"));
        QTRY_VERIFY_WITH_TIMEOUT(!RecoveryCopies().isEmpty(), 5000);
        QVERIFY(fixture->Host().Quit());
        QVERIFY(RecoveryCopies().isEmpty());
    }

    void outputLogTailIsOnDisk()
    {
        auto* output = editor->findChild<OutputTextEdit*>();
        QVERIFY(output);
        const QString path = files->filePath(QStringLiteral("session.log"));
        QVERIFY(output->BeginWriteToFile(path));
        // Two lines in one burst, and no turn of the event loop: a crash now keeps both.
        output->AppendText(QStringLiteral("first\n"));
        output->AppendText(QStringLiteral("last words\n"));
        QCOMPARE(TestFiles::Read(path), QByteArray("first\nlast words\n"));
        output->EndWriteToFile();
    }

private:
    QStringList immutable;
    QString mountPoint;
};

QTEST_MAIN(TestFileFaults)

#include "tst_FileFaults.moc"
