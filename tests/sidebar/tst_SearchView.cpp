#include "EditorWindow.h"
#include "HostFixture.h"
#include "ModalAnswer.h"
#include "TestFiles.h"
#include "TreeRows.h"
#include "editor/CodeEditor.h"
#include "editor/FindReplaceWidget.h"
#include "settings/ColorSettings.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "sidebar/SearchResultsTreeWidget.h"
#include "sidebar/SearchResultsView.h"
#include "sidebar/SearchView.h"
#include "sidebar/SideBar.h"
#include "tabs/CodeEditorGroup.h"
#include "widgets/FlatButton.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtGui/QTextCursor>
#include <QtTest/QtTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <sys/stat.h>

// Search and replace in files through the main widget: a real folder tree, the side bar's view
// typed into, the editors opened and changed.
class TestSearchView : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    BrindletEditor* editor = nullptr;
    QTemporaryDir workspace;

    SearchView* View() const { return editor->GetSideBar()->GetSearchView(); }
    SearchResultsTreeWidget* Tree() const { return View()->GetResultsView()->GetTreeWidget(); }
    QLineEdit* Edit(const char* name) const { return View()->findChild<QLineEdit*>(QLatin1String(name)); }
    QString Ws(const QString& relative) const { return workspace.filePath(relative); }
    QString RootText() const
    {
        const QFileInfo info(workspace.path());
        return QStringLiteral("%1 (%2)").arg(info.fileName(), info.absolutePath());
    }

    void SearchFor(const QString& text, const QString& include = QString(),
                   const QString& exclude = QString())
    {
        if (!View()->isVisible())
            editor->ShowSearch();
        Edit("searchEdit")->setText(text);
        Edit("includeEdit")->setText(include);
        Edit("excludeEdit")->setText(exclude);
        QTest::keyClick(Edit("searchEdit"), Qt::Key_Return);
    }

    CodeEditor* OpenedEditor(const QString& path) const { return editor->GetCodeEditor(path, false); }

private slots:
    void init()
    {
        QVERIFY(workspace.isValid());
        QDir(workspace.path()).removeRecursively();
        QDir().mkpath(workspace.path());
        TestFiles::Write(Ws("b.py"), "import os\nos.path  # os twice: os\n");
        TestFiles::Write(Ws("A/x.mel"), "// nothing\nproc os_proc() {}\n");
        TestFiles::Write(Ws("a.txt"), "first os\n");
        TestFiles::Write(Ws("c/deep/z.py"), "\n\nx = os\n");
        TestFiles::Write(Ws("c/bin.dat"), QByteArray("\0\0os\0\xff\xfe\nos", 10));
        TestFiles::Write(Ws("c/latin1.txt"), "caf\xe9 os\n");
        TestFiles::Write(Ws(".hidden/h.py"), "os\n");
        QVERIFY(QFile::link(Ws("c"), Ws("c/deep/loop")));
        QVERIFY(QFile::link(Ws("b.py"), Ws("link.py")));
        QCOMPARE(mkfifo(Ws("c/pipe").toLocal8Bit().constData(), 0600), 0);

        fixture = std::make_unique<HostFixture>();
        QVERIFY(fixture->LoadPlugin() == MStatus::kSuccess);
        editor = EditorWindow::Open(*fixture, QSize(1200, 800));
        QVERIFY(editor);
        Settings::workspaceFolders = {workspace.path()};
    }

    void cleanup()
    {
        fixture.reset();
        editor = nullptr;
    }

    void resultsArriveFolderByFolder()
    {
        QSignalSpy appended(View(),
                            SIGNAL(SearchRequested(QString, QStringList, QStringList, bool, bool, bool)));
        SearchFor(QStringLiteral("os"));
        QCOMPARE(appended.count(), 1);
        QVERIFY(editor->GetSideBar()->isVisible());
        // Names interleave files and folders, case ignored; links, hidden folders and the pipe
        // are left out; the binary and Latin-1 files still give their matches.
        // A folder's files reach the tree before the walk goes down into a folder.
        const QStringList expected =
            (RootText() +
             QStringLiteral("\n  x.mel (A)\n    proc os_proc() {}\n  a.txt\n    first os\n  b.py"
                            "\n    import os\n    os.path  # os twice: os\n    os.path  # os twice: os"
                            "\n    os.path  # os twice: os\n  bin.dat (c)\n    os\n  z.py (c/deep)"
                            "\n    x = os\n  latin1.txt (c)\n    caf\uFFFD os"))
                .split(QLatin1Char('\n'));
        const QStringList rows = TreeRows::Below(Tree()->invisibleRootItem());
        // The binary file's first line, control characters and all, is not compared.
        QCOMPARE(rows.mid(0, 11) + rows.mid(12), expected);
        QCOMPARE(View()->GetResultsView()->GetFileCount(), 6);
        QCOMPARE(View()->GetResultsView()->GetReplaceCount(), 10);
        // Positions count each line end as one character.
        const QTreeWidgetItem* b = Tree()->topLevelItem(0)->child(2);
        QCOMPARE(b->child(1)->data(0, SearchResultsTreeWidget::PositionRole).toInt(), 10);
        QCOMPARE(b->child(3)->data(0, SearchResultsTreeWidget::PositionRole).toInt(), 31);
        QCOMPARE(b->data(0, Qt::ToolTipRole).toString(), QDir::toNativeSeparators(Ws("b.py")));

        SearchFor(QString());
        QCOMPARE(TreeRows::Below(Tree()->invisibleRootItem()), rows);
        // A buffer that comes to match while the view shows gets its branch above the folders.
        CodeEditor* buffer = editor->GetActiveCodeEditor();
        QVERIFY(buffer && buffer->GetType() == CodeEditorType::INTERNAL_BUFFER);
        QTest::keyClicks(buffer, QStringLiteral("proc os_proc"));
        QTRY_COMPARE(Tree()->topLevelItemCount(), 2);
        QCOMPARE(Tree()->topLevelItem(0)->text(0), QStringLiteral("Internal"));
        QCOMPARE(Tree()->topLevelItem(1)->text(0), RootText());
        View()->ToggleRegularExpression();
        SearchFor(QStringLiteral("os("));
        QCOMPARE(Tree()->topLevelItemCount(), 0);
    }

    void filtersChooseWhatIsSearched_data()
    {
        QTest::addColumn<QString>("include");
        QTest::addColumn<QString>("exclude");
        QTest::addColumn<QStringList>("files");

        const QStringList top{"Internal", "x.mel (A)", "a.txt", "b.py"};
        QTest::newRow("all") << QString() << QString()
                             << top + QStringList{"bin.dat (c)", "z.py (c/deep)", "latin1.txt (c)"};
        QTest::newRow("pattern skips buffers") << QStringLiteral("*.py") << QString() << QStringList();
        QTest::newRow("full pattern") << QStringLiteral("/*/*/b.py, */z.py") << QString() << QStringList();
        QTest::newRow("exclude folder") << QString() << QStringLiteral("c") << top;
        QTest::newRow("include one file") << QStringLiteral("b.py") << QString() << QStringList{"b.py"};
        QTest::newRow("include folder") << QStringLiteral("c/deep") << QString() << QStringList{"z.py"};
    }

    void filtersChooseWhatIsSearched()
    {
        QFETCH(QString, include);
        QFETCH(QString, exclude);
        QFETCH(QStringList, files);
        editor->NewPythonBuffer();
        CodeEditor* buffer = editor->GetActiveCodeEditor();
        QVERIFY(buffer);
        buffer->setPlainText(QStringLiteral("import os"));
        // Relative entries are taken from the working folder.
        const QString oldDir = QDir::currentPath();
        QDir::setCurrent(workspace.path());
        SearchFor(QStringLiteral("os"), include, exclude);
        QDir::setCurrent(oldDir);
        // The buffers' branch by its name, a folder's by the files in it.
        QStringList shown;
        for (int i = 0; i < Tree()->topLevelItemCount(); ++i)
        {
            const QTreeWidgetItem* root = Tree()->topLevelItem(i);
            const bool buffers = root->text(0) == QLatin1String("Internal");
            shown += buffers ? QStringList{root->text(0)} : TreeRows::Below(root, false);
        }
        if (files.isEmpty())
        {
            // Wildcards match the whole path: only the spelled-out one finds its file.
            QCOMPARE(shown.contains(QStringLiteral("Internal")), false);
            return;
        }
        QCOMPARE(shown, files);
    }

    void openFilesAreSearchedAsTheyStandAndFollowEdits()
    {
        QVERIFY(editor->OpenFile(Ws("a.txt")));
        CodeEditor* code = OpenedEditor(Ws("a.txt"));
        QVERIFY(code);
        code->moveCursor(QTextCursor::End);
        code->insertPlainText(QStringLiteral("unsaved os\n"));
        SearchFor(QStringLiteral("os"));
        const QTreeWidgetItem* a = Tree()->topLevelItem(0)->child(1);
        QCOMPARE(a->text(0), QStringLiteral("a.txt"));
        QCOMPARE(a->childCount(), 2);
        QCOMPARE(a->child(1)->text(0), QStringLiteral("unsaved os"));

        // While the view shows, an edit rebuilds that file's branch only.
        code->moveCursor(QTextCursor::End);
        QTest::keyClicks(code, QStringLiteral("os again"));
        QTRY_COMPARE(Tree()->topLevelItem(0)->child(1)->childCount(), 3);
        code->selectAll();
        QTest::keyClicks(code, QStringLiteral("nothing"));
        QTRY_COMPARE(Tree()->topLevelItem(0)->child(1)->text(0), QStringLiteral("b.py"));
        // Back again, in its place by name.
        code->selectAll();
        QTest::keyClicks(code, QStringLiteral("os"));
        QTRY_COMPARE(Tree()->topLevelItem(0)->child(0)->text(0), QStringLiteral("a.txt"));
        QCOMPARE(TestFiles::Read(Ws("a.txt")), QByteArray("first os\n"));
    }

    void nextResultSelectsTheMatchInItsEditor()
    {
        SearchFor(QStringLiteral("os"));
        editor->FindInFilesNext();
        CodeEditor* code = OpenedEditor(Ws("A/x.mel"));
        QVERIFY(code);
        QCOMPARE(editor->GetActiveCodeEditor(), code);
        QCOMPARE(code->textCursor().selectedText(), QStringLiteral("os"));
        QCOMPARE(code->textCursor().selectionStart(), 16);
        editor->FindInFilesNext();
        QCOMPARE(OpenedEditor(Ws("a.txt"))->textCursor().selectionStart(), 6);
        editor->FindInFilesNext();
        CodeEditor* b = OpenedEditor(Ws("b.py"));
        QVERIFY(b);
        QCOMPARE(b->textCursor().selectionStart(), 7);
        for (int i = 0; i < 3; ++i)
            editor->FindInFilesPrevious();
        // Back past the first: the last match of all.
        QCOMPARE(editor->GetActiveCodeEditor(), OpenedEditor(Ws("c/latin1.txt")));
    }

    void replaceInFilesEditsBuffersAndLeavesDisksAlone()
    {
        const QByteArray bBefore = TestFiles::Read(Ws("b.py"));
        const QByteArray zBefore = TestFiles::Read(Ws("c/deep/z.py"));
        const QString where = Ws("b.py") + QStringLiteral(", ") + Ws("c/deep");
        editor->ReplaceInFiles();
        FlatButton* rowButton = View()->GetResultsView()->GetReplaceButton();
        // With nothing to put in, a row's replace opens the file and changes nothing.
        SearchFor(QStringLiteral("os"), where);
        Tree()->setCurrentItem(Tree()->topLevelItem(0)->child(0)->child(0));
        QTest::mouseClick(rowButton, Qt::LeftButton);
        CodeEditor* b = OpenedEditor(Ws("b.py"));
        QVERIFY(b);
        QCOMPARE(b->GetText(), QString::fromLatin1(bBefore));
        QVERIFY(!b->IsModified());

        Edit("replaceEdit")->setText(QStringLiteral("sys"));
        SearchFor(QStringLiteral("os"), where);
        QVERIFY(View()->IsReplaceActive());
        QCOMPARE(Tree()->topLevelItemCount(), 2);
        Tree()->setCurrentItem(Tree()->topLevelItem(0)->child(0)->child(0));
        QVERIFY(rowButton->isVisible());
        QCOMPARE(rowButton->geometry().right(), Tree()->viewport()->width() - 1);
        // The button follows its row when the results above it fold.
        Tree()->setCurrentItem(Tree()->topLevelItem(1)->child(0)->child(0));
        Tree()->collapseItem(Tree()->topLevelItem(0));
        QCOMPARE(rowButton->y(), Tree()->visualItemRect(Tree()->currentItem()).top());
        Tree()->expandItem(Tree()->topLevelItem(0));
        Tree()->setCurrentItem(Tree()->topLevelItem(0)->child(0)->child(0));
        QTest::mouseClick(rowButton, Qt::LeftButton);
        QCOMPARE(b->GetText(), QStringLiteral("import sys\nos.path  # os twice: os\n"));

        WhenModal<QMessageBox>(this,
                               [](QMessageBox* box)
                               {
                                   if (box->defaultButton()->text() == QLatin1String("Replace"))
                                       box->defaultButton()->click();
                               });
        View()->ReplaceAll();
        QCOMPARE(b->GetText(), QStringLiteral("import sys\nsys.path  # sys twice: sys\n"));
        CodeEditor* z = OpenedEditor(Ws("c/deep/z.py"));
        QVERIFY(z);
        QCOMPARE(z->GetText(), QStringLiteral("\n\nx = sys\n"));
        QVERIFY(b->IsModified());
        QVERIFY(z->IsModified());
        QCOMPARE(TestFiles::Read(Ws("b.py")), bBefore);
        QCOMPARE(TestFiles::Read(Ws("c/deep/z.py")), zBefore);

        // After the search text changes, replacing waits for the next search.
        Edit("searchEdit")->setText(QStringLiteral("sys"));
        QVERIFY(!View()->IsReplaceActive());
    }

    // What the user sees: the find bar's matches and those of the search in files are painted
    // in the editor's text with the matching colour, and go when the bar closes or the search
    // view hides.
    void matchesArePaintedInTheEditor()
    {
        CodeEditor* codeEditor = editor->GetActiveCodeEditor();
        QVERIFY(codeEditor);
        const QString text = QStringLiteral("alpha os beta\nzz os gamma\nlast line");
        codeEditor->SetText(text);
        codeEditor->setFocus();
        codeEditor->SetCursorPosition(static_cast<int>(text.indexOf(QStringLiteral("last"))));
        const QColor matching =
            ColorSettings::GetCodeEditorFormat(ColorSettings::FIND_REPLACE_MATCHING).background().color();
        // The top of a character's cell, above the glyphs of lower-case letters.
        const auto shade = [&](const QString& word, int from = 0)
        {
            QTextCursor cursor(codeEditor->document());
            cursor.setPosition(static_cast<int>(text.indexOf(word, from)) + 1);
            const QRect rect = codeEditor->cursorRect(cursor);
            return codeEditor->viewport()->grab().toImage().pixelColor(rect.left() + 1, rect.top() + 1);
        };
        const int secondOs = static_cast<int>(text.indexOf(QStringLiteral("zz os"))) + 3;
        QVERIFY(shade(QStringLiteral("os"), secondOs) != matching);

        QTest::keyClick(codeEditor, Qt::Key_F, Qt::ControlModifier);
        FindReplaceWidget* bar = editor->GetActiveCodeEditorGroup()->GetFindReplace();
        QTRY_VERIFY(bar->isVisible());
        auto* findEdit = bar->findChild<QLineEdit*>(QStringLiteral("searchLineEdit"));
        findEdit->selectAll();
        QTest::keyClicks(findEdit, QStringLiteral("os"));
        // The first hit is selected; the other stands in the matching colour, the rest does not.
        QCOMPARE(shade(QStringLiteral("os"), secondOs), matching);
        QVERIFY(shade(QStringLiteral("gamma")) != matching);
        QVERIFY(shade(QStringLiteral("beta")) != matching);
        QTest::keyClick(findEdit, Qt::Key_Escape);
        QTRY_VERIFY(!bar->isVisible());
        QVERIFY(shade(QStringLiteral("os"), secondOs) != matching);

        // The search in files marks its hits while its view shows.
        SearchFor(QStringLiteral("gamma"));
        QCOMPARE(shade(QStringLiteral("gamma")), matching);
        QVERIFY(shade(QStringLiteral("os"), secondOs) != matching);
        editor->SetSideBarVisible(false, false);
        QVERIFY(shade(QStringLiteral("gamma")) != matching);
    }

    void folderOfManyEntries()
    {
        QTemporaryDir big(QStringLiteral("/tmp/bq2-many-XXXXXX"));
        for (int i = 0; i < 100000; ++i)
        {
            QFile file(big.filePath(QStringLiteral("f%1.txt").arg(i, 6, 10, QLatin1Char('0'))));
            QVERIFY(file.open(QIODevice::WriteOnly));
            if (i == 99999)
                file.write("os last\n");
        }
        Settings::workspaceFolders = {big.path()};
        SearchFor(QStringLiteral("os"));
        QCOMPARE(Tree()->topLevelItemCount(), 1);
        QCOMPARE(Tree()->topLevelItem(0)->child(0)->text(0), QStringLiteral("f099999.txt"));
    }
};

QTEST_MAIN(TestSearchView)
#include "tst_SearchView.moc"
