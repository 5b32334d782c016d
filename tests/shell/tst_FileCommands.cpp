// Buffers and files as the user handles them: Save As, Close with its questions, the close
// variants of the tab menu, Rename, Revert, Open Recent, dropped files and moved tabs, quitting,
// restarts and other programs' changes, checked in the tabs the user sees and in the files on disk.
#include "DialogAnswer.h"
#include "HostApplication.h"
#include "ModalAnswer.h"
#include "ShellFixture.h"
#include "TestFiles.h"
#include "editor/CodeEditor.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "tabs/CodeEditorGroup.h"

#include <QtGui/QAction>
#include <QtTest/QtTest>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>

#include <tuple>

using TestFiles::Read;

class TestFileCommands : public ShellFixture
{
    Q_OBJECT

private:
    // The labels with the current one in brackets, as the tab bar shows it highlighted.
    static QString Tabs(const CodeEditorGroup* group)
    {
        QStringList labels;
        for (int i = 0; i < group->GetCount(); ++i)
            labels.append(i == group->GetCurrentIndex() ? QStringLiteral("[%1]").arg(group->GetLabel(i))
                                                        : group->GetLabel(i));
        return labels.join(QLatin1Char(' '));
    }

    // Opens the files named, separated by spaces, in the first group, behind its two buffers.
    void OpenAll(const QString& names)
    {
        for (const QString& name : names.split(QLatin1Char(' ')))
            QVERIFY(editor->OpenFile(NewFile(name)));
    }

    void AnswerSaveDialog(const QString& name)
    {
        const QString directory = files->path();
        WhenModal<QFileDialog>(
            this,
            [directory, name](QFileDialog* dialog)
            {
                dialog->setDirectory(directory);
                dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
                QMetaObject::invokeMethod(dialog, "accept");
            });
    }

private slots:
    void init()
    {
        QVERIFY(Start());
        QCOMPARE(Tabs(Active()), QStringLiteral("MEL [Python]"));
    }

    void saveAsOfAnOpenFileKeepsTheOriginal()
    {
        const QString original = NewFile(QStringLiteral("original.py"));
        QVERIFY(editor->OpenFile(original));
        Type(Active()->GetCurrent(), QStringLiteral("b = 2\n"));
        AnswerSaveDialog(QStringLiteral("copy.py"));
        editor->SaveAs();
        const QString copy = files->filePath(QStringLiteral("copy.py"));
        QCOMPARE(Read(original), QByteArray("a = 1\n"));
        QCOMPARE(Read(copy), QByteArray("a = 1\nb = 2\n"));
        QCOMPARE(Tabs(Active()), QStringLiteral("MEL Python [copy.py]"));
        QVERIFY(!Active()->IsModified(2));
        // Saving again writes the new file, never the old one.
        Type(Active()->GetCurrent(), QStringLiteral("c = 3\n"));
        editor->Save();
        QCOMPARE(Read(copy), QByteArray("a = 1\nb = 2\nc = 3\n"));
        QCOMPARE(Read(original), QByteArray("a = 1\n"));
    }

    void saveDialogExtensions_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("saved");
        // Tab 0 is the MEL buffer, tab 1 the Python one; the extension is added only when missing.
        const QList<std::tuple<int, const char*, const char*>> rows{
            {1, "tool", "tool.py"},      {1, "tool.PY", "tool.PY"},      {1, "tool.pyw", "tool.pyw"},
            {1, "tool.pyi", "tool.pyi"}, {1, "tool.txt", "tool.txt.py"}, {0, "tool", "tool.mel"},
            {0, "tool.MEL", "tool.MEL"}};
        for (const auto& [tab, typed, saved] : rows)
            QTest::addRow("%s %s", tab ? "python" : "mel", typed) << tab << QString(typed) << QString(saved);
    }

    void saveDialogExtensions()
    {
        QFETCH(int, tab);
        QFETCH(QString, typed);
        QFETCH(QString, saved);
        const QString bufferPath = Active()->GetFilePath(tab);
        Active()->SetCurrentIndex(tab);
        Type(Active()->GetCodeEditor(tab), QStringLiteral("print('saved')"));
        AnswerSaveDialog(typed);
        editor->SaveAs();
        const QString target = files->filePath(saved);
        QCOMPARE(Read(target), QByteArray("print('saved')"));
        QCOMPARE(Active()->GetFilePath(tab), target);
        QCOMPARE(Active()->GetType(tab), CodeEditorType::FILE);
        QCOMPARE(Active()->GetLabel(tab), saved);
        // The buffer's own file goes once the text is safe elsewhere.
        QVERIFY(!QFile::exists(bufferPath));
    }

    void closeAsks_data()
    {
        QTest::addColumn<bool>("buffer");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("closed");
        QTest::addColumn<QByteArray>("onDisk");
        const int yes = QMessageBox::Yes, no = QMessageBox::No, cancel = QMessageBox::Cancel;
        const QByteArray saved("a = 1\nb = 2\n"), kept("a = 1\n");
        QTest::newRow("modified file, yes saves") << false << "b = 2\n" << yes << true << saved;
        QTest::newRow("modified file, no discards") << false << "b = 2\n" << no << true << kept;
        QTest::newRow("modified file, cancel keeps") << false << "b = 2\n" << cancel << false << kept;
        QTest::newRow("unmodified file") << false << "" << cancel << true << kept;
        QTest::newRow("empty buffer") << true << "" << no << true << QByteArray();
        QTest::newRow("buffer with text, yes deletes") << true << "x = 1" << yes << true << QByteArray();
        QTest::newRow("buffer with text, no keeps") << true << "x = 1" << no << false << QByteArray();
    }

    void closeAsks()
    {
        QFETCH(bool, buffer);
        QFETCH(QString, typed);
        QFETCH(int, answer);
        QFETCH(bool, closed);
        const QString path = buffer ? Active()->GetFilePath(1) : NewFile(QStringLiteral("closing.py"));
        if (!buffer)
            QVERIFY(editor->OpenFile(path));
        Active()->SetCurrentIndex(Active()->GetCodeEditorIndex(path));
        Type(Active()->GetCurrent(), typed);
        {
            DialogAnswer reply(static_cast<QMessageBox::StandardButton>(answer));
            editor->CloseFile();
            QCOMPARE(reply.texts.size(), typed.isEmpty() ? 0 : 1);
            if (!typed.isEmpty())
                QVERIFY(reply.Told(buffer ? QStringLiteral("Delete buffer 'Python'?")
                                          : QStringLiteral("'closing.py' has been modified. Save changes?")));
        }
        QCOMPARE(editor->CodeEditorExists(path), !closed);
        // A buffer closed is destroyed; a file is left on disk as the answer said.
        QCOMPARE(QFile::exists(path), !(buffer && closed));
        if (QFile::exists(path))
            QTEST(Read(path), "onDisk");
        // Only files enter the recent list, and only once closed.
        QCOMPARE(Settings::recentFiles.contains(path), closed && !buffer);
        if (!closed)
            QCOMPARE(Active()->GetText(Active()->GetCodeEditorIndex(path)),
                     (buffer ? QString() : QStringLiteral("a = 1\n")) + typed);
    }

    void closeFromTheTabMenu_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("clicked");
        QTest::addColumn<QString>("left");
        QTest::newRow("close") << "close" << 3 << "MEL Python a.py c.py [d.py]";
        QTest::newRow("close current") << "close" << 5 << "MEL Python a.py b.py [c.py]";
        QTest::newRow("others") << "others" << 3 << "[b.py]";
        QTest::newRow("to the right") << "right" << 3 << "MEL Python a.py [b.py]";
        QTest::newRow("to the right of the last") << "right" << 5 << "MEL Python a.py b.py c.py [d.py]";
        QTest::newRow("to the right of the first") << "right" << 0 << "[MEL]";
    }

    void closeFromTheTabMenu()
    {
        QFETCH(QString, command);
        QFETCH(int, clicked);
        OpenAll(QStringLiteral("a.py b.py c.py d.py"));
        CodeEditorGroup* group = Active();
        DialogAnswer no(QMessageBox::No);
        if (command == QLatin1String("close"))
            emit group->CloseTabRequested(group, clicked);
        else if (command == QLatin1String("others"))
            emit group->CloseOtherTabsRequested(group, clicked);
        else
            emit group->CloseTabsToRightRequested(group, clicked);
        QVERIFY(no.texts.isEmpty());
        QTEST(Tabs(group), "left");
    }

    void closeAllEmptiesEveryGroup()
    {
        OpenAll(QStringLiteral("a.py b.py"));
        emit Active()->MoveTabToZoneRequested(Active()->GetId(), 2, Active()->GetId(), TabDropZoneAfter);
        QVERIFY(Group(1)->isVisible());
        const QString kept = Group(0)->GetFilePath(1);
        Type(Group(0)->GetCodeEditor(1), QStringLiteral("kept = 1"));
        DialogAnswer no(QMessageBox::No);
        editor->CloseAllFiles();
        // The buffer that the user keeps stays; everything else goes, in every group.
        QCOMPARE(no.texts.size(), 1);
        QCOMPARE(editor->GetCodeEditorPaths(), QStringList{kept});
        QVERIFY(!Group(1)->isVisible());
    }

    void renameOnDisk_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("moved");
        QTest::newRow("new name") << "renamed.mel" << true;
        QTest::newRow("name taken") << "taken.py" << false;
        QTest::newRow("cancelled") << "" << false;
    }

    void renameOnDisk()
    {
        QFETCH(QString, name);
        QFETCH(bool, moved);
        const QString old = NewFile(QStringLiteral("old.py"), "print(1)\n");
        const QString taken = NewFile(QStringLiteral("taken.py"), "taken\n");
        QVERIFY(editor->OpenFile(old));
        DialogAnswer answer(QMessageBox::Ok);
        answer.input = name;
        fixture->ClearMessages();
        editor->Rename();
        const QString renamed = files->filePath(name);
        QCOMPARE(Active()->GetLabel(2), moved ? name : QStringLiteral("old.py"));
        QCOMPARE(QFile::exists(old), !moved);
        QCOMPARE(Active()->GetFilePath(2), moved ? renamed : old);
        QCOMPARE(Read(moved ? renamed : taken), QByteArray(moved ? "print(1)\n" : "taken\n"));
        if (moved)
            QCOMPARE(Active()->GetLanguage(2), CodeEditorLanguage::MEL);
        // The refusal names the file in the way; nothing else is reported as a failed rename.
        const bool refused = renamed == taken;
        QCOMPARE(fixture->HasMessageContaining(
                     refused ? QStringLiteral("Raname failed. File already exists: ") + taken
                             : QStringLiteral("Raname failed")),
                 refused);
    }

    void renameABufferChangesOnlyItsLabel()
    {
        const QString path = Active()->GetFilePath(1);
        DialogAnswer answer(QMessageBox::Ok);
        answer.input = QStringLiteral("sc;ratch");
        editor->Rename();
        QCOMPARE(Tabs(Active()), QStringLiteral("MEL [scratch]"));
        QCOMPARE(Active()->GetFilePath(1), path);
        QVERIFY(QFile::exists(path));
        QVERIFY(fixture->HasMessageContaining(QStringLiteral("Rename: ';' is an invalid character.")));
    }

    void revertAsksAndReloads_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("text");
        QTest::newRow("yes") << int(QMessageBox::Yes) << "a = 1\n";
        QTest::newRow("no") << int(QMessageBox::No) << "a = 1\nmine\n";
    }

    void revertAsksAndReloads()
    {
        QFETCH(int, answer);
        const QString path = NewFile(QStringLiteral("revert.py"));
        QVERIFY(editor->OpenFile(path));
        CodeEditor* codeEditor = Active()->GetCurrent();
        {
            // An unmodified file is not read again, and nothing is asked.
            DialogAnswer none(QMessageBox::Yes);
            editor->RevertFile();
            QVERIFY(none.texts.isEmpty());
        }
        Type(codeEditor, QStringLiteral("mine\n"));
        DialogAnswer reply(static_cast<QMessageBox::StandardButton>(answer));
        editor->RevertFile();
        QCOMPARE(reply.titles, QStringList{QStringLiteral("Reload")});
        QTEST(codeEditor->GetText(), "text");
        QCOMPARE(codeEditor->IsModified(), answer != QMessageBox::Yes);
        // What the question said would be lost is not one undo step away.
        QCOMPARE(codeEditor->document()->isUndoAvailable(), answer != QMessageBox::Yes);
        QCOMPARE(Read(path), QByteArray("a = 1\n"));
    }

    void openRecentFromTheMenu()
    {
        OpenAll(QStringLiteral("one.py two.py"));
        const QString one = Active()->GetFilePath(2);
        const QString two = Active()->GetFilePath(3);
        editor->CloseFile();
        Active()->SetCurrentIndex(2);
        editor->CloseFile();
        QCOMPARE(Settings::recentFiles, QStringList({one, two}));
        // The menu lists them newest first; choosing one opens it.
        QMenu* menu = nullptr;
        for (QMenu* candidate : editor->findChildren<QMenu*>())
            menu = candidate->title() == QLatin1String("Recent Files") ? candidate : menu;
        QVERIFY(menu);
        QList<QAction*> entries = menu->actions();
        entries.removeIf([](const QAction* action) { return action->data().toString().isEmpty(); });
        QCOMPARE(entries.size(), 2);
        QCOMPARE(entries.at(0)->text(), one);
        entries.at(1)->trigger();
        QCOMPARE(Tabs(Active()), QStringLiteral("MEL Python [two.py]"));
        // Reopen Closed File takes the newest that is not open.
        editor->ReopenClosedFile();
        QCOMPARE(Tabs(Active()), QStringLiteral("MEL Python two.py [one.py]"));
        // With every recent file open it does nothing, not even move to one of them.
        Active()->SetCurrentIndex(2);
        editor->ReopenClosedFile();
        QCOMPARE(Tabs(Active()), QStringLiteral("MEL Python [two.py] one.py"));
        QVERIFY(!menu->isTearOffEnabled());
        menu->actions().constLast()->trigger();
        QCOMPARE(menu->actions().constLast()->text(), QStringLiteral("Clear Items"));
        QCOMPARE(menu->actions().size(), 3);
        QVERIFY(Settings::recentFiles.isEmpty());
    }

    void droppedFiles()
    {
        const QString a = NewFile(QStringLiteral("a.py"));
        const QString b = NewFile(QStringLiteral("b.mel"));
        // On the tab bar, at the place of the drop.
        CodeEditorGroup* first = Active();
        emit first->OpenFileRequested(first->GetId(), 1, a);
        QCOMPARE(Tabs(first), QStringLiteral("MEL [a.py] Python"));
        // Beside the group: a new group on that side, holding them all.
        emit first->OpenFilesRequested(first->GetId(), TabDropZoneBefore, {b, a});
        QCOMPARE(Tabs(first), QStringLiteral("MEL [a.py] Python"));
        CodeEditorGroup* second = Group(0);
        QVERIFY(second != first);
        QCOMPARE(Tabs(second), QStringLiteral("[b.mel]"));
        QCOMPARE(editor->GetActiveCodeEditorGroup(), second);
        QTRY_VERIFY(second->isVisible());
        QVERIFY(second->geometry().right() < first->geometry().left());
        // A drop in the middle is the tab bar's business, not a new group.
        emit first->OpenFilesRequested(first->GetId(), TabDropZoneCenter, {NewFile(QStringLiteral("c.py"))});
        QVERIFY(!Group(2)->isVisible());
    }

    void currentTabAfterEveryMove_data()
    {
        QTest::addColumn<QString>("move");
        QTest::addColumn<QString>("firstTabs");
        QTest::addColumn<QString>("secondTabs");
        QTest::addColumn<int>("activeGroup");
        const char* const rows[][5] = {
            {"right within the group", "within 0 2", "Python a.py [MEL] b.py", "", "0"},
            {"left within the group", "within 3 1", "MEL [b.py] Python a.py", "", "0"},
            {"onto the same place", "within 1 1", "MEL Python a.py [b.py]", "", "0"},
            {"into another group", "across 1 1", "MEL a.py [b.py]", "x.py [Python]", "1"},
            {"onto another group's middle", "centre 0", "Python a.py [b.py]", "x.py [MEL]", "1"},
            {"to the edge", "edge 2", "MEL Python [b.py]", "[a.py]", "1"}};
        for (const auto& row : rows)
            QTest::newRow(row[0]) << row[1] << row[2] << row[3] << QByteArray(row[4]).toInt();
    }

    void currentTabAfterEveryMove()
    {
        QFETCH(QString, move);
        QFETCH(QString, secondTabs);
        QFETCH(int, activeGroup);
        OpenAll(QStringLiteral("a.py b.py"));
        CodeEditorGroup* first = Active();
        const QStringList words = move.split(QLatin1Char(' '));
        const bool otherGroup =
            words.first() == QLatin1String("across") || words.first() == QLatin1String("centre");
        if (otherGroup)
        {
            // A second group holding x.py, made by dragging it to the edge.
            QVERIFY(editor->OpenFile(NewFile(QStringLiteral("x.py"))));
            emit first->MoveTabToZoneRequested(first->GetId(), 4, first->GetId(), TabDropZoneAfter);
            first->SetCurrentIndex(3);
        }
        const int from = words.at(1).toInt(), target = (otherGroup ? Group(1) : first)->GetId();
        if (words.size() == 3)
            emit first->MoveTabRequested(first->GetId(), from, target, words.at(2).toInt());
        else
            emit first->MoveTabToZoneRequested(first->GetId(), from, target,
                                               otherGroup ? TabDropZoneCenter : TabDropZoneAfter);
        QTEST(Tabs(Group(0)), "firstTabs");
        if (!secondTabs.isEmpty())
            QCOMPARE(Tabs(Group(1)), secondTabs);
        QCOMPARE(editor->GetActiveCodeEditorGroup(), Group(activeGroup));
        // What the user sees in front is the current tab.
        CodeEditorGroup* active = Group(activeGroup);
        QTRY_VERIFY(active->GetCurrent() && active->GetCurrent()->isVisible());
    }

    void tidyingAtSave_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("trim");
        QTest::addColumn<bool>("newLine");
        QTest::addColumn<QByteArray>("saved");
        QTest::newRow("python, both") << "t.py" << true << true << QByteArray("a = 1\nb = 2\n");
        QTest::newRow("python, trim only") << "t.py" << true << false << QByteArray("a = 1\nb = 2");
        QTest::newRow("python, new line only") << "t.py" << false << true << QByteArray("a = 1  \nb = 2\t\n");
        QTest::newRow("python, neither") << "t.py" << false << false << QByteArray("a = 1  \nb = 2\t");
        QTest::newRow("mel, both") << "t.mel" << true << true << QByteArray("a = 1\nb = 2\n");
        QTest::newRow("mel, new line only") << "t.mel" << false << true << QByteArray("a = 1  \nb = 2\t\n");
        QTest::newRow("mel, neither") << "t.mel" << false << false << QByteArray("a = 1  \nb = 2\t");
        QTest::newRow("text is never tidied") << "t.txt" << true << true << QByteArray("a = 1  \nb = 2\t");
    }

    void tidyingAtSave()
    {
        QFETCH(QString, name);
        QFETCH(bool, trim);
        QFETCH(bool, newLine);
        Settings::melTrimTrailingWhiteSpacesOnSave = Settings::pythonTrimTrailingWhiteSpacesOnSave = trim;
        Settings::melEnsureNewLineAtEofOnSave = Settings::pythonEnsureNewLineAtEofOnSave = newLine;
        const QString path = NewFile(name, "a = 1  \nb = 2");
        QVERIFY(editor->OpenFile(path));
        CodeEditor* codeEditor = Active()->GetCurrent();
        Type(codeEditor, QStringLiteral("\t"));
        codeEditor->SetCursorPosition(5);
        editor->Save();
        QTEST(Read(path), "saved");
        QCOMPARE(codeEditor->GetCursorPosition(), 5);
        QVERIFY(!codeEditor->IsModified());
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
        // A buffer emptied after a save comes back empty, not with the saved text.
        const QString mel = Active()->GetFilePath(0);
        Type(Active()->GetCodeEditor(0), QStringLiteral("print 1;"));
        editor->SaveAll();
        Active()->GetCodeEditor(0)->selectAll();
        QTest::keyClick(Active()->GetCodeEditor(0), Qt::Key_Delete);
        editor->SetActiveCodeEditor(0, 1);
        Active()->SetCursorPosition(1, 5, false);
        fixture->Restart();
        QVERIFY(Open());
        QCOMPARE(editor->GetCodeEditorCount(), 3);
        QCOMPARE(Active()->GetCurrentIndex(), 1);
        QCOMPARE(Active()->GetText(1), QStringLiteral("print('kept')"));
        QCOMPARE(Read(mel), QByteArray());
        QCOMPARE(Active()->GetText(0), QString());
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
        WriteSetting(QStringLiteral("tabs/tabDetails"),
                     QStringList{QStringLiteral("0;1;%1;1;0").arg(a), QStringLiteral("7;1;%1;1;0;0").arg(b),
                                 QStringLiteral("0;5;%1;1;0;0").arg(a),
                                 QStringLiteral("x;1;/gone/file.py;1;0;0")});
        fixture->Restart();
        QVERIFY(Open());
        // The five-field entry and the bad type are skipped, group 7 means group 0, the
        // missing file has no tab. The two first buffers, which no record names any more, come
        // back behind it rather than being lost.
        QCOMPARE(editor->GetCodeEditorCount(), 3);
        QCOMPARE(Group(0)->GetFilePath(0), b);
        QCOMPARE(Group(0)->GetType(1), CodeEditorType::INTERNAL_BUFFER);
        QVERIFY(fixture->HasMessageContaining(QStringLiteral("Failed to open file: /gone/file.py")));
    }

    void aFileIsOpenOnlyOnce()
    {
        const QString path = NewFile(QStringLiteral("once.mel"), "// once");
        QVERIFY(editor->OpenFile(path));
        editor->OnMoveTabToZoneRequested(Active()->GetId(), Active()->GetCurrentIndex(), Active()->GetId(),
                                         TabDropZoneAfter);
        QVERIFY(editor->GetCodeEditorGroupByPath(path) != Group(0));
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
        QVERIFY(TestFiles::Write(path, "new = 2\n"));
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
            QVERIFY(no.Told(QStringLiteral("This file has been modified by another program.")));
        }
        QVERIFY(codeEditor->GetText().contains(QStringLiteral("# mine")));

        // The editor's own save does not ask, even once the text has changed again; the watch
        // follows the replaced file.
        editor->Save();
        QCOMPARE(Read(path), QByteArray("new = 2\n# mine\n"));
        Type(codeEditor, QStringLiteral("# more\n"));
        QTest::qWait(300);
        DialogAnswer yes(QMessageBox::Yes);
        editor->CheckForFileChanges();
        QVERIFY(yes.texts.isEmpty());
        QVERIFY(TestFiles::Write(path, "x = 4\n"));
        QTest::qWait(300);
        editor->CheckForFileChanges();
        QCOMPARE(yes.texts.size(), 1);
        QCOMPARE(codeEditor->GetText(), QStringLiteral("x = 4\n"));
        // Quit writes nothing stale over the newer file.
        QVERIFY(fixture->Host().Quit());
        QCOMPARE(Read(path), QByteArray("x = 4\n"));
    }
};

QTEST_MAIN(TestFileCommands)
#include "tst_FileCommands.moc"
