#include "EditorWindow.h"
#include "HostFixture.h"
#include "TestFiles.h"
#include "editor/CodeEditor.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "sidebar/GoToWidget.h"
#include "tabs/CodeEditorGroup.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QTextDocument>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>

#include <memory>

namespace
{
// What a person reads in the rows: the rich text as the delegate lays it out.
QStringList ShownRows(const GoToWidget& palette)
{
    QStringList rows;
    QTextDocument document;
    for (int row = 0; row < palette.GetRowCount(); ++row)
    {
        document.setHtml(palette.GetRowText(row));
        rows.append(document.toPlainText());
    }
    return rows;
}

QString Numbered(int lines)
{
    QStringList text;
    for (int i = 1; i <= lines; ++i)
        text.append(QStringLiteral("line %1").arg(i));
    return text.join(QLatin1Char('\n'));
}
} // namespace

// The go-to palette on its own with plain inputs, and opened from the main widget as a user
// opens it, on real files and real editors.
class TestGoToWidget : public QObject
{
    Q_OBJECT

private:
    void MakeFile(const QString& relative, const QByteArray& bytes = QByteArray())
    {
        QVERIFY(TestFiles::Write(workspace->filePath(relative), bytes));
    }

    bool OpenEditor()
    {
        editor = EditorWindow::Open(*fixture, QSize(1200, 800), true);
        return editor;
    }

    CodeEditor* OpenFocused() { return OpenEditor() ? FocusActive(editor) : nullptr; }

    // The active editor with the keyboard focus, as when the user works in it.
    static CodeEditor* FocusActive(BrindletEditor* editor)
    {
        CodeEditor* codeEditor = editor->GetActiveCodeEditor();
        if (!codeEditor)
            return nullptr;
        codeEditor->setFocus();
        QCoreApplication::processEvents();
        return QApplication::focusWidget() == codeEditor ? codeEditor : nullptr;
    }

    std::unique_ptr<GoToWidget> ShowFiles()
    {
        auto palette = std::make_unique<GoToWidget>();
        palette->Show(GoToFilterFile, nullptr, 1, 0, 0, {}, false);
        return palette;
    }

private slots:
    void init()
    {
        fixture = std::make_unique<HostFixture>();
        QVERIFY(fixture->LoadPlugin() == MStatus::kSuccess);
        workspace = std::make_unique<QTemporaryDir>();
        QVERIFY(workspace->isValid());
        Settings::workspaceFolders = QStringList{workspace->path()};
    }

    void cleanup()
    {
        editor = nullptr;
        Settings::workspaceFolders.clear();
        workspace.reset();
        fixture.reset();
    }

    void fileModeFiltersAsTyped_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<int>("selected");

        // %L stands for the workspace folder's name, which the test makes later.
        const auto row = [](const char* name, const char* relative)
        { return QStringLiteral("%1 %L/%2").arg(QLatin1String(name), QLatin1String(relative)); };
        // Matches in any case; among them alphabetical; the first that starts with the text in
        // its own case is chosen, else the first row.
        const QStringList barfoo{row("barfoo.mel", "sub/barfoo.mel")};
        const QStringList foos{row("Foo.py", "Foo.py"), barfoo.first(), row("foo.txt", "foo.txt")};
        QTest::newRow("case of the text picks the row") << "foo" << foos << 2;
        QTest::newRow("capital") << "Foo" << foos << 0;
        QTest::newRow("inside a name") << "arf" << barfoo << 0;
        QTest::newRow("folder of the path") << "sub/" << barfoo << 0;
        QTest::newRow("nothing") << "zzz" << QStringList() << -1;
        // Backspace and typing again start from filters already run: the result is the same.
        QTest::newRow("widened by Backspace") << "sub/x\b" << barfoo << 0;
        QTest::newRow("retyped after Backspace") << "fooz\b.t" << QStringList{row("foo.txt", "foo.txt")} << 0;
        QTest::newRow("markup is text") << "b <c" << QStringList{row("a&b <c>.mel", "a&b <c>.mel")} << 0;
    }

    void fileModeFiltersAsTyped()
    {
        QFETCH(QString, typed);
        QFETCH(QStringList, rows);
        QFETCH(int, selected);
        for (const char* name : {"foo.txt", "Foo.py", "sub/barfoo.mel", "other.py", "a&b <c>.mel"})
            MakeFile(QLatin1String(name));
        rows.replaceInStrings(QStringLiteral("%L"), QFileInfo(workspace->path()).fileName());

        auto palette = ShowFiles();
        QVERIFY(palette->isVisible());
        // Before typing: every file in the order of the walk, none chosen.
        QCOMPARE(palette->GetRowCount(), 5);
        QCOMPARE(palette->GetSelectedRow(), -1);
        // One line a row, even when measured before the list had its width.
        QVERIFY(palette->GetListView()->sizeHintForRow(0) < 3 * palette->fontMetrics().height());
        QTest::keyClicks(palette->GetLineEdit(), typed);
        QCOMPARE(ShownRows(*palette), rows);
        QCOMPARE(palette->GetSelectedRow(), selected);
        QVERIFY(palette->GetListView()->isVisibleTo(palette.get()));
        QVERIFY(!palette->GetHelpLabel()->isVisibleTo(palette.get()));
        if (selected >= 0)
            QCOMPARE(palette->GetListView()->currentIndex().row(), selected);
    }

    // The walk is done once and again only when asked; compiled Python shows by the setting.
    void fileListIsReadAgainOnlyWhenAsked()
    {
        MakeFile(QStringLiteral("a.mel"));
        MakeFile(QStringLiteral("a.pyc"));
        Settings::pythonHideCompiledFiles = true;
        auto palette = ShowFiles();
        QCOMPARE(palette->GetRowCount(), 1);
        MakeFile(QStringLiteral("b.mel"));
        Settings::pythonHideCompiledFiles = false;
        palette->Show(GoToFilterFile, nullptr, 1, 0, 0, {}, false);
        QCOMPARE(palette->GetRowCount(), 1);
        palette->SetFileUpdateRequired();
        palette->Show(GoToFilterFile, nullptr, 1, 0, 0, {}, false);
        QCOMPARE(palette->GetRowCount(), 3);
    }

    void symbolModeListsProcsMethodsAndClasses()
    {
        const QStringList names{"globalProc", "$gVariable", "os",     "localProc", "__main__", "<b>Tool</b>",
                                "operator<",  "a&b",        "create", "count",     "value"};
        const QList<ParserItemType> types{
            ParserItemGlobalProc,  ParserItemGlobalVariable, ParserItemImport,  ParserItemProc,
            ParserItemMain,        ParserItemClass,          ParserItemMethod,  ParserItemStaticMethod,
            ParserItemClassMethod, ParserItemClassVariable,  ParserItemVariable};
        QList<ParserItem> symbols;
        for (int i = 0; i < names.size(); ++i)
            symbols.append({names.at(i), types.at(i), 10 * (i + 1)});
        GoToWidget palette;
        QSignalSpy seeks(&palette, SIGNAL(SeekPositionRequested(int, bool)));
        palette.Show(GoToFilterSymbol, symbols, 1, 0, 0, {}, false);
        QCOMPARE(palette.GetLineEdit()->text(), QStringLiteral("@"));
        QCOMPARE(ShownRows(palette),
                 (QStringList{"globalProc", "localProc", "<b>Tool</b>", "operator<", "a&b", "create"}));
        QCOMPARE(seeks.count(), 0);
        QTest::keyClick(palette.GetLineEdit(), Qt::Key_Up);
        QCOMPARE(palette.GetSelectedRow(), 5); // up from the first row wraps to the last

        // The editor follows the list while the user types and moves.
        QTest::keyClicks(palette.GetLineEdit(), QStringLiteral("proc"));
        QCOMPARE(ShownRows(palette), (QStringList{"globalProc", "localProc"}));
        QCOMPARE(seeks.last(), (QVariantList{10, true}));
        QTest::keyClick(palette.GetLineEdit(), Qt::Key_Down);
        QCOMPARE(seeks.last(), (QVariantList{40, true}));
        QTest::keyClick(palette.GetLineEdit(), Qt::Key_Down);
        QCOMPARE(palette.GetSelectedRow(), 0);
        QTest::keyClick(palette.GetLineEdit(), Qt::Key_Up);
        QCOMPARE(palette.GetSelectedRow(), 1);
        seeks.clear();
        QTest::keyClick(palette.GetLineEdit(), Qt::Key_Return);
        QCOMPARE(seeks.count(), 1);
        QCOMPARE(seeks.last(), (QVariantList{40, true}));
        QVERIFY(!palette.isVisible());

        // Names are text, not markup, to the filter too.
        palette.Show(GoToFilterSymbol, symbols, 1, 0, 0, {}, false);
        QTest::keyClicks(palette.GetLineEdit(), QStringLiteral("&"));
        QCOMPARE(ShownRows(palette), QStringList{QStringLiteral("a&b")});
    }

    // The first character chooses the mode: "@" symbols, ":" lines, anything else files; without
    // workspace folders the file mode only says so and the other modes still work.
    void prefixChoosesTheMode()
    {
        MakeFile(QStringLiteral("one.mel"));
        MakeFile(QStringLiteral("two.py"));
        const QList<ParserItem> symbols{{"proc1", ParserItemProc, 0}};
        GoToWidget palette;
        palette.Show(GoToFilterSymbol, symbols, 7, 0, 0, {}, false);
        QCOMPARE(ShownRows(palette), QStringList{QStringLiteral("proc1")});
        QTest::keyClick(palette.GetLineEdit(), Qt::Key_Backspace);
        QCOMPARE(palette.GetRowCount(), 2);
        QTest::keyClicks(palette.GetLineEdit(), QStringLiteral("@"));
        QCOMPARE(ShownRows(palette), QStringList{QStringLiteral("proc1")});
        QTest::keyClick(palette.GetLineEdit(), Qt::Key_Home);
        QTest::keyClick(palette.GetLineEdit(), Qt::Key_Delete);
        QCOMPARE(palette.GetRowCount(), 2);

        Settings::workspaceFolders.clear();
        GoToWidget bare;
        bare.Show(GoToFilterFile, symbols, 7, 0, 0, {}, false);
        const QString none = QStringLiteral("No workspace folders found");
        QVERIFY(bare.IsHelpVisible());
        QVERIFY(bare.GetHelpLabel()->isVisibleTo(&bare));
        QVERIFY(!bare.GetListView()->isVisibleTo(&bare));
        QCOMPARE(bare.GetHelpLabel()->text(), none);
        QTest::keyClicks(bare.GetLineEdit(), QStringLiteral("abc"));
        QCOMPARE(bare.GetHelpLabel()->text(), none);
        bare.GetLineEdit()->clear();
        QTest::keyClicks(bare.GetLineEdit(), QStringLiteral("@"));
        QVERIFY(bare.GetListView()->isVisibleTo(&bare));
        QCOMPARE(ShownRows(bare), QStringList{QStringLiteral("proc1")});
        bare.GetLineEdit()->clear();
        QTest::keyClicks(bare.GetLineEdit(), QStringLiteral(":"));
        QCOMPARE(bare.GetHelpLabel()->text(), QStringLiteral("Type a line between 1 and 7 to navigate to"));
    }

    // An empty list, of files in an empty workspace folder or of symbols without a parser: Down
    // and Return only close it.
    void emptyListsChooseNothing()
    {
        for (const GoToFilterType filter : {GoToFilterFile, GoToFilterSymbol})
        {
            GoToWidget palette;
            QSignalSpy opens(&palette, SIGNAL(OpenFileRequested(QString)));
            QSignalSpy seeks(&palette, SIGNAL(SeekPositionRequested(int, bool)));
            palette.Show(filter, nullptr, 1, 0, 0, {}, false);
            QCOMPARE(palette.GetRowCount(), 0);
            QVERIFY(palette.GetListView()->isVisibleTo(&palette));
            QTest::keyClick(palette.GetLineEdit(), Qt::Key_Down);
            QTest::keyClick(palette.GetLineEdit(), Qt::Key_Return);
            QCOMPARE(opens.count() + seeks.count(), 0);
            QVERIFY(!palette.isVisible());
        }
    }

    // The palette is as tall as its rows, up to twelve: it shrinks as typing narrows the list,
    // down to the text line alone, and grows back as the text is deleted.
    void paletteFollowsItsListsLength()
    {
        for (int i = 0; i < 15; ++i)
            MakeFile(QStringLiteral("tools/%1_%2.py").arg(i < 3 ? "rig" : "anim").arg(i));
        auto palette = ShowFiles();
        QVERIFY(QTest::qWaitForWindowExposed(palette.get()));
        const QListView* list = palette->GetListView();
        const int rowHeight = list->sizeHintForRow(0);
        QVERIFY(rowHeight > 0);
        const auto listHeight = [&](int rows) { return rowHeight * rows + 2 * list->frameWidth(); };
        QCOMPARE(list->height(), listHeight(GoToWidget::MaxVisibleRows));
        const int fullHeight = palette->height();

        QTest::keyClicks(palette->GetLineEdit(), QStringLiteral("rig_"));
        QCOMPARE(palette->GetRowCount(), 3);
        QCOMPARE(list->height(), listHeight(3));
        QCOMPARE(palette->height(), fullHeight - listHeight(GoToWidget::MaxVisibleRows) + listHeight(3));
        // Every row is seen whole: the list is in the palette and fills it to its last row.
        QVERIFY(palette->rect().contains(list->geometry()));
        QCOMPARE(list->visualRect(list->model()->index(2, 0)).bottom() + 1 + list->frameWidth(),
                 list->height());

        QTest::keyClicks(palette->GetLineEdit(), QStringLiteral("9"));
        QCOMPARE(palette->GetRowCount(), 0);
        QCOMPARE(palette->height(), fullHeight - listHeight(GoToWidget::MaxVisibleRows) + listHeight(0));

        for (int i = 0; i < 5; ++i)
            QTest::keyClick(palette->GetLineEdit(), Qt::Key_Backspace);
        QCOMPARE(palette->GetRowCount(), 15);
        QCOMPARE(palette->height(), fullHeight);
    }

    void twentyThousandFiles()
    {
        for (int i = 0; i < 20000; ++i)
        {
            const QString path = workspace->filePath(
                QStringLiteral("d%1/f%2.mel").arg(i / 1000).arg(i, 5, 10, QLatin1Char('0')));
            if (i % 1000 == 0)
                QVERIFY(QDir().mkpath(QFileInfo(path).absolutePath()));
            QVERIFY(QFile(path).open(QIODevice::WriteOnly));
        }
        auto palette = ShowFiles();
        QSignalSpy opens(palette.get(), SIGNAL(OpenFileRequested(QString)));
        QCOMPARE(palette->GetRowCount(), 20000);
        QTest::keyClicks(palette->GetLineEdit(), QStringLiteral("f1234"));
        QCOMPARE(palette->GetRowCount(), 10);
        QTest::keyClick(palette->GetLineEdit(), Qt::Key_Down);
        QTest::keyClick(palette->GetLineEdit(), Qt::Key_Return);
        QCOMPARE(opens.count(), 1);
        QCOMPARE(opens.last().first().toString(), workspace->filePath(QStringLiteral("d12/f12341.mel")));
    }

    void lineModeHelpAndJumps_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("help");
        QTest::addColumn<int>("followed");
        QTest::addColumn<bool>("escape");

        const QString ask = "Type a line between 1 and 600 to navigate to";
        // From line 300 the editor follows each valid prefix as it is typed: "601" passes line 60.
        QTest::newRow("nothing yet") << QString() << ask << 300 << false;
        QTest::newRow("a line") << "12" << QStringLiteral("Go to line 12") << 12 << false;
        QTest::newRow("the last line") << "600" << QStringLiteral("Go to line 600") << 600 << false;
        QTest::newRow("beyond the end") << "601" << ask << 60 << false;
        QTest::newRow("far beyond") << "99999999999" << ask << 99 << false;
        QTest::newRow("zero") << "0" << ask << 300 << false;
        QTest::newRow("negative") << "-4" << ask << 300 << false;
        QTest::newRow("not a number") << "abc" << ask << 300 << false;
        QTest::newRow("number and text") << "3x" << ask << 3 << false;
        QTest::newRow("escape") << "12" << QStringLiteral("Go to line 12") << 12 << true;
    }

    // Through the main widget, which opens the palette only from an editor with the keyboard: the
    // editor follows the digits, Return closes where it stands, Escape brings back the position
    // and the scroll.
    void lineModeHelpAndJumps()
    {
        QFETCH(QString, typed);
        QFETCH(QString, help);
        QFETCH(int, followed);
        QFETCH(bool, escape);
        CodeEditor* codeEditor = OpenFocused();
        QVERIFY(codeEditor);
        codeEditor->SetText(Numbered(600));
        codeEditor->SetCurrentLine(300);
        codeEditor->SetCursorPosition(codeEditor->GetCursorPosition() + 3);
        const int position = codeEditor->GetCursorPosition();
        const int scroll = codeEditor->GetVerticalScrollBarValue();
        QVERIFY(scroll > 0);

        editor->window()->setFocus();
        editor->setFocus();
        QVERIFY(!qobject_cast<CodeEditor*>(QApplication::focusWidget()));
        editor->GoToLine();
        GoToWidget* palette = editor->GetGoToWidget();
        QVERIFY(!palette->isVisible());
        QVERIFY(FocusActive(editor));
        editor->GoToLine();
        QVERIFY(palette->isVisible());
        QCOMPARE(palette->GetLineEdit()->text(), QStringLiteral(":"));
        QVERIFY(palette->GetHelpLabel()->isVisibleTo(palette));
        QVERIFY(!palette->GetListView()->isVisibleTo(palette));
        QTest::keyClicks(palette->GetLineEdit(), typed);
        QCOMPARE(palette->GetHelpLabel()->text(), help);
        QCOMPARE(codeEditor->GetCurrentLine(), followed);
        QCOMPARE(codeEditor->GetVerticalScrollBarValue() < scroll, followed < 300);
        QTest::keyClick(palette->GetLineEdit(), escape ? Qt::Key_Escape : Qt::Key_Return);
        QVERIFY(!palette->isVisible());
        QCOMPARE(codeEditor->GetCurrentLine(), escape ? 300 : followed);
        if (escape || followed == 300)
            QCOMPARE(codeEditor->GetCursorPosition(), position);
        if (escape)
            QCOMPARE(codeEditor->GetVerticalScrollBarValue(), scroll);
    }

    // The symbols of the buffer as the MEL parser found them, without global variables.
    void symbolModeReadsTheParser()
    {
        QVERIFY(OpenEditor());
        editor->GetActiveCodeEditorGroup()->SetCurrentIndex(0);
        CodeEditor* codeEditor = FocusActive(editor);
        QVERIFY(codeEditor);
        QCOMPARE(codeEditor->GetLanguage(), CodeEditorLanguage::MEL);
        codeEditor->textCursor().insertText(
            QStringLiteral("global proc alpha() {}\nglobal string $gName;\nproc beta() {}"));
        // The parser runs after the pause in typing; on a loaded machine that may take a while.
        QSignalSpy parsed(editor->GetActiveCodeEditorGroup(), SIGNAL(ParserUpdated(BaseParser*)));
        QTRY_VERIFY_WITH_TIMEOUT(!parsed.isEmpty(), 20000);
        GoToWidget* palette = editor->GetGoToWidget();
        QVERIFY(FocusActive(editor));
        editor->GoToSymbolInFile();
        QVERIFY(palette->isVisible());
        QCOMPARE(palette->GetLineEdit()->text(), QStringLiteral("@"));
        QCOMPARE(ShownRows(*palette), (QStringList{QStringLiteral("alpha"), QStringLiteral("beta")}));
        QTest::keyClicks(palette->GetLineEdit(), QStringLiteral("bet"));
        QTest::keyClick(palette->GetLineEdit(), Qt::Key_Return);
        QVERIFY(!palette->isVisible());
        QCOMPARE(codeEditor->GetCurrentLine(), 3);
        QCOMPARE(codeEditor->GetCursorPosition(), codeEditor->GetText().indexOf(QStringLiteral("proc beta")));
    }

    void fileJumpOpensTheFileAndActivatesItsEditor()
    {
        MakeFile(QStringLiteral("scripts/tool.py"), "print('tool')\n");
        MakeFile(QStringLiteral("scripts/setup.mel"), "print \"setup\";\n");
        QVERIFY(OpenFocused());
        const int editors = editor->GetCodeEditorCount();

        editor->GoToFile();
        GoToWidget* palette = editor->GetGoToWidget();
        QVERIFY(palette->isVisible());
        QCOMPARE(palette->GetRowCount(), 2);
        QTest::keyClicks(palette->GetLineEdit(), QStringLiteral("set"));
        QCOMPARE(palette->GetRowCount(), 1);
        QTest::keyClick(palette->GetLineEdit(), Qt::Key_Enter);
        QVERIFY(!palette->isVisible());
        QCOMPARE(editor->GetCodeEditorCount(), editors + 1);
        CodeEditor* opened = editor->GetActiveCodeEditor();
        QVERIFY(opened);
        QCOMPARE(opened->GetFilePath(), workspace->filePath(QStringLiteral("scripts/setup.mel")));
        QCOMPARE(opened->GetText(), QStringLiteral("print \"setup\";\n"));
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(opened));
    }

    // Ctrl held: Tab steps through the group's recent editors; letting go of Ctrl switches, Escape
    // keeps the editor that was current.
    void editorModeSwitchesLikeAWindowSwitcher_data()
    {
        QTest::addColumn<bool>("reverse");
        QTest::addColumn<int>("tabs");
        QTest::addColumn<bool>("escape");
        QTest::addColumn<QString>("expected");
        QTest::newRow("second most recent") << false << 0 << false << "b.mel";
        QTest::newRow("one more") << false << 1 << false << "a.mel";
        QTest::newRow("wraps to the current") << false << 3 << false << "c.mel";
        QTest::newRow("reverse: the oldest") << true << 0 << false << "MEL";
        QTest::newRow("escape") << true << 1 << true << "c.mel";
    }

    void editorModeSwitchesLikeAWindowSwitcher()
    {
        QFETCH(bool, reverse);
        QFETCH(int, tabs);
        QFETCH(bool, escape);
        QFETCH(QString, expected);
        QVERIFY(OpenEditor());
        // Close the Python buffer so the group holds four: MEL, then a, b, c used in that order.
        CodeEditorGroup* group = editor->GetActiveCodeEditorGroup();
        QVERIFY(group->GetCount() == 2);
        for (const char* name : {"a.mel", "b.mel", "c.mel"})
        {
            MakeFile(QLatin1String(name), "// file\n");
            QVERIFY(editor->OpenFile(workspace->filePath(QLatin1String(name))));
            QVERIFY(FocusActive(editor));
        }
        QVERIFY(editor->CloseCodeEditor(group, group->GetCodeEditorIndex(group->GetFilePath(1)), false));
        QVERIFY(FocusActive(editor));
        QCOMPARE(editor->GetActiveCodeEditor()->GetLabel(), QStringLiteral("c.mel"));

        editor->NextUsedEditor(reverse);
        GoToWidget* palette = editor->GetGoToWidget();
        QVERIFY(palette->isVisible());
        QVERIFY(!palette->GetLineEdit()->isVisibleTo(palette));
        QCOMPARE(palette->GetRowCount(), 4);
        QVERIFY(ShownRows(*palette).first().startsWith(QStringLiteral("c.mel ")));
        QWidget* list = palette->GetListView();
        // Tab with Ctrl held throughout; QTest::keyClick would let go of Ctrl after each Tab.
        for (int i = 0; i < tabs; ++i)
        {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Tab, Qt::ControlModifier);
            QApplication::sendEvent(list, &press);
            QKeyEvent release(QEvent::KeyRelease, Qt::Key_Tab, Qt::ControlModifier);
            QApplication::sendEvent(list, &release);
            QVERIFY(palette->isVisible());
        }
        if (escape)
            QTest::keyClick(list, Qt::Key_Escape);
        else
            QTest::keyRelease(list, Qt::Key_Control);
        QVERIFY(!palette->isVisible());
        QCOMPARE(editor->GetActiveCodeEditor()->GetLabel(), expected);
    }

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<QTemporaryDir> workspace;
    BrindletEditor* editor = nullptr;
};

QTEST_MAIN(TestGoToWidget)
#include "tst_GoToWidget.moc"
