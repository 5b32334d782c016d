#include "HostFixture.h"
#include "editor/CodeEditor.h"
#include "editor/FindReplaceWidget.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "tabs/CodeEditorGroup.h"
#include "tabs/CodeEditorGroupTabBar.h"
#include "widgets/FlatButton.h"

#include <QtGui/QTextBlock>
#include <QtTest/QtTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollBar>

#include <memory>

namespace
{
const QString SAMPLE = QStringLiteral("foo Foo food\nbar foo\nfoo_bar fOO\nend");

CodeEditorProperties Properties(const QString& label)
{
    CodeEditorProperties properties;
    properties.type = CodeEditorType::INTERNAL_BUFFER;
    properties.language = CodeEditorLanguage::TEXT;
    properties.filePath = QStringLiteral("/tmp/find-test/") + label;
    properties.label = label;
    return properties;
}
} // namespace

// The find bar over a real editor group: what the user types and clicks, what the bar shows and
// what the editor selects and changes.
class TestFindReplace : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<KeyBindings> keyBindings;
    std::unique_ptr<CodeEditorGroup> group;

    FindReplaceWidget* Bar() const { return group->GetFindReplace(); }
    CodeEditor* Editor() const { return group->GetCurrent(); }
    QLineEdit* SearchField() const { return Bar()->findChild<QLineEdit*>(QStringLiteral("searchLineEdit")); }
    QLineEdit* ReplaceField() const { return Bar()->findChild<QLineEdit*>(QStringLiteral("replaceLineEdit")); }
    QString Results() const { return Bar()->findChild<QLabel*>(QStringLiteral("resultsLabel"))->text(); }
    void Click(const char* name) const
    {
        auto* button = Bar()->findChild<FlatButton*>(QLatin1String(name));
        QVERIFY(button && button->isVisible());
        QTest::mouseClick(button, Qt::LeftButton);
    }
    QString Selected() const { return Editor()->textCursor().selectedText(); }
    int SelectionStart() const { return Editor()->textCursor().selectionStart(); }

    // A shown group with one buffer holding `text`, the cursor at its start and the bar open.
    void Open(const QString& text, bool replace = false)
    {
        group = std::make_unique<CodeEditorGroup>(0, keyBindings.get());
        group->UpdatePreferences();
        group->UpdateFontsAndColors();
        group->InsertCodeEditor(-1, Properties(QStringLiteral("a.txt")), text);
        group->resize(700, 400);
        group->show();
        QVERIFY(QTest::qWaitForWindowExposed(group.get()));
        Editor()->setFocus();
        Editor()->moveCursor(QTextCursor::Start);
        group->ShowFindReplace(replace, false, true, false);
        QVERIFY(Bar()->isVisible());
    }

    void TypeSearch(const QString& text)
    {
        SearchField()->setFocus();
        SearchField()->selectAll();
        QTest::keyClicks(SearchField(), text);
    }

private slots:
    void initTestCase()
    {
        fixture = std::make_unique<HostFixture>();
        ColorSettings::Initialize();
        keyBindings = std::make_unique<KeyBindings>();
    }

    void cleanupTestCase()
    {
        group.reset();
        keyBindings.reset();
        fixture.reset();
    }

    void init()
    {
        Settings::ResetToDefaults();
        // A bad expression is never run: Qt would say so.
        QTest::failOnWarning(QRegularExpression(QStringLiteral("invalid QRegularExpression")));
    }
    void cleanup() { group.reset(); }

    void optionsDecideTheMatches_data()
    {
        QTest::addColumn<QString>("search");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("results");
        QTest::addColumn<int>("firstStart");

        QTest::newRow("case folded") << "foo" << QStringList{} << "1 of 6" << 0;
        QTest::newRow("match case") << "Foo" << QStringList{"matchCaseButton"} << "1 of 1" << 4;
        QTest::newRow("whole word") << "foo" << QStringList{"matchWordButton"} << "1 of 4" << 0;
        QTest::newRow("word and case") << "fOO" << QStringList{"matchWordButton", "matchCaseButton"}
                                       << "1 of 1" << 29;
        QTest::newRow("regex") << "fo+d" << QStringList{"regExpButton"} << "1 of 1" << 8;
        QTest::newRow("regex is literal without the option") << "fo+d" << QStringList{} << "No Results" << -1;
        QTest::newRow("regex anchored per line") << "^foo" << QStringList{"regExpButton"} << "1 of 2" << 0;
        QTest::newRow("whole word wraps the expression") << "fo+" << QStringList{"regExpButton", "matchWordButton"}
                                                         << "1 of 4" << 0;
        QTest::newRow("invalid expression") << "(foo" << QStringList{"regExpButton"} << "No Results" << -1;
        QTest::newRow("no match") << "zebra" << QStringList{} << "No Results" << -1;
    }

    void optionsDecideTheMatches()
    {
        QFETCH(QString, search);
        QFETCH(QStringList, options);
        QFETCH(QString, results);
        QFETCH(int, firstStart);
        Open(SAMPLE);
        for (const QString& option : options)
            Click(option.toLatin1().constData());
        TypeSearch(search);
        QCOMPARE(Results(), results);
        if (firstStart < 0)
            return;
        // Typing moves to the first match after the cursor and selects it.
        QCOMPARE(SelectionStart(), firstStart);
    }

    void nextAndPreviousWrapAndCount()
    {
        Open(SAMPLE);
        Click("matchWordButton");
        TypeSearch(QStringLiteral("foo"));
        QCOMPARE(Results(), QStringLiteral("1 of 4"));
        QList<int> starts{SelectionStart()};
        for (int i = 0; i < 4; ++i)
        {
            QTest::keyClick(SearchField(), Qt::Key_Return);
            starts.append(SelectionStart());
        }
        // Four whole-word matches, and the fifth step is the first again.
        QCOMPARE(starts, (QList<int>{0, 4, 17, 29, 0}));
        QCOMPARE(Results(), QStringLiteral("1 of 4"));
        QTest::keyClick(SearchField(), Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(SelectionStart(), 29);
        QCOMPARE(Results(), QStringLiteral("4 of 4"));
        Click("previousButton");
        QCOMPARE(SelectionStart(), 17);
        QCOMPARE(Results(), QStringLiteral("3 of 4"));
        Click("nextButton");
        QCOMPARE(Results(), QStringLiteral("4 of 4"));

        // Moving the cursor off the match keeps the number shown.
        Editor()->moveCursor(QTextCursor::End);
        group->FindPrevious();
        group->FindNext();
        QCOMPARE(Results(), QStringLiteral("1 of 4"));
    }

    void findInSelectionStaysInWholeLines()
    {
        const QString text = QStringLiteral("x1\nab x2\nx3\nx4 cd\nx5\n");
        Open(text);
        // From the middle of line 2 to the middle of line 4.
        QTextCursor cursor = Editor()->textCursor();
        cursor.setPosition(text.indexOf(QLatin1String("b x2")));
        cursor.setPosition(text.indexOf(QLatin1String(" cd")), QTextCursor::KeepAnchor);
        Editor()->setTextCursor(cursor);
        Click("findInSelectionButton");
        QVERIFY(Editor()->IsFindInSelectionEnabled());
        QCOMPARE(Editor()->GetFindInSelectionStart(), text.indexOf(QLatin1String("ab x2")));
        QCOMPARE(Editor()->GetFindInSelectionEnd(), text.indexOf(QLatin1String("x5")));

        Click("regExpButton");
        TypeSearch(QStringLiteral("x\\d"));
        QCOMPARE(Results(), QStringLiteral("1 of 3"));
        QStringList found;
        for (int i = 0; i < 4; ++i)
        {
            group->FindNext();
            found.append(Selected());
        }
        QCOMPARE(found, (QStringList{"x3", "x4", "x2", "x3"}));

        // Replace all in the range changes the range only, and the range follows the new text.
        Click("toggleReplaceButton");
        QVERIFY(ReplaceField()->isVisible());
        QTest::keyClicks(ReplaceField(), QStringLiteral("yyy"));
        Click("replaceAllButton");
        QCOMPARE(Editor()->toPlainText(), QStringLiteral("x1\nab yyy\nyyy\nyyy cd\nx5\n"));
        QCOMPARE(Editor()->GetFindInSelectionEnd(), Editor()->toPlainText().indexOf(QLatin1String("x5")));
        QCOMPARE(Results(), QStringLiteral("No Results"));
        Editor()->document()->undo();
        QCOMPARE(Editor()->toPlainText(), text);

        // Closing the bar ends the range.
        Click("closeButton");
        QVERIFY(!Bar()->isVisible());
        QVERIFY(!Editor()->IsFindInSelectionEnabled());
    }

    void replaceOneByOne()
    {
        Open(SAMPLE, true);
        Click("matchCaseButton");
        TypeSearch(QStringLiteral("foo"));
        QCOMPARE(Results(), QStringLiteral("1 of 4"));
        ReplaceField()->setFocus();
        QTest::keyClicks(ReplaceField(), QStringLiteral("baz"));
        QTest::keyClick(ReplaceField(), Qt::Key_Return);
        QCOMPARE(Editor()->toPlainText(), QStringLiteral("baz Foo food\nbar foo\nfoo_bar fOO\nend"));
        // The next match is selected and counted.
        QCOMPARE(SelectionStart(), 8);
        QCOMPARE(Results(), QStringLiteral("1 of 3"));
        Click("replaceButton");
        Click("replaceButton");
        QCOMPARE(Editor()->toPlainText(), QStringLiteral("baz Foo bazd\nbar baz\nfoo_bar fOO\nend"));
        QCOMPARE(Results(), QStringLiteral("1 of 1"));
    }

    void replaceAllUsesCapturesAndKeepsTheCursor()
    {
        Open(SAMPLE, true);
        Editor()->SetCursorPosition(SAMPLE.indexOf(QLatin1String("end")) + 2);
        Click("regExpButton");
        TypeSearch(QStringLiteral("(f)(o+)"));
        ReplaceField()->setFocus();
        QTest::keyClicks(ReplaceField(), QStringLiteral("\\2\\1"));
        Editor()->SetCursorPosition(SAMPLE.indexOf(QLatin1String("end")) + 2);
        Click("replaceAllButton");
        QCOMPARE(Editor()->toPlainText(), QStringLiteral("oof ooF oofd\nbar oof\noof_bar OOf\nend"));
        QCOMPARE(Editor()->textCursor().blockNumber(), 3);
        QCOMPARE(Editor()->textCursor().positionInBlock(), 2);
        // One undo step brings it all back.
        Editor()->document()->undo();
        QCOMPARE(Editor()->toPlainText(), SAMPLE);
    }

    void emptyReplaceTextDoesNothing()
    {
        Open(SAMPLE, true);
        TypeSearch(QStringLiteral("foo"));
        Click("replaceButton");
        Click("replaceAllButton");
        QCOMPARE(Editor()->toPlainText(), SAMPLE);
    }

    void tabStaysInTheBarAndEscapeCloses()
    {
        Open(SAMPLE, true);
        SearchField()->setFocus();
        QTest::keyClick(SearchField(), Qt::Key_Tab);
        QVERIFY(ReplaceField()->hasFocus());
        QTest::keyClick(ReplaceField(), Qt::Key_Backtab);
        QVERIFY(SearchField()->hasFocus());
        Bar()->SetReplaceVisible(false);
        QTest::keyClick(SearchField(), Qt::Key_Tab);
        QVERIFY(SearchField()->hasFocus());
        TypeSearch(QStringLiteral("foo"));
        QTest::keyClick(SearchField(), Qt::Key_Escape);
        QVERIFY(!Bar()->isVisible());
        QVERIFY(group->GetSearchRegEx().pattern().isEmpty());
    }

    void barOpensWithTheWordUnderTheCursorAndSitsTopRight()
    {
        Open(SAMPLE);
        group->CloseFindReplace();
        Editor()->setFocus();
        Editor()->SetCursorPosition(SAMPLE.indexOf(QLatin1String("bar")) + 1);
        group->ShowFindReplace();
        QCOMPARE(SearchField()->text(), QStringLiteral("bar"));
        QVERIFY(SearchField()->hasFocus());
        QCOMPARE(Results(), QStringLiteral("1 of 2"));

        const QRect bar = Bar()->geometry();
        const int tabBarHeight = group->findChild<CodeEditorGroupTabBar*>()->height();
        QCOMPARE(bar.top(), tabBarHeight);
        QCOMPARE(bar.right(), group->width() - 20 - Editor()->GetVerticalScrollBarWidth());
        // The bar is drawn over the editor: what the group shows there is the bar.
        Editor()->setFocus();
        QCOMPARE(group->grab(Bar()->geometry()).toImage(), Bar()->grab().toImage());
    }

    void changingTabClearsTheSearch()
    {
        Open(SAMPLE);
        group->InsertCodeEditor(-1, Properties(QStringLiteral("b.txt")), QStringLiteral("foo foo"));
        TypeSearch(QStringLiteral("foo"));
        QVERIFY(!group->GetSearchRegEx().pattern().isEmpty());
        group->SetCurrentIndex(1);
        // The bar's text now counts in the new tab, and the next step searches there.
        QCOMPARE(Results(), QStringLiteral("1 of 2"));
        QVERIFY(!Editor()->IsFindInSelectionEnabled());
        QTest::keyClick(SearchField(), Qt::Key_Return);
        QCOMPARE(Selected(), QStringLiteral("foo"));
        QCOMPARE(SelectionStart(), 0);
    }
};

QTEST_MAIN(TestFindReplace)
#include "tst_FindReplace.moc"
