#include "HostFixture.h"
#include "editor/FindReplaceWidget.h"
#include "output/OutputTextEdit.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "widgets/FlatButton.h"

#include <QtTest/QtTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollBar>

#include <memory>

namespace
{
const QString OUTPUT = QStringLiteral("// Result: alpha\nAlpha beta alphabet\n# alpha_1 alpha\n");
} // namespace

// The find bar of the output view, driven as the user does: typed text, its buttons, its keys.
class TestOutputFind : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    KeyBindings keyBindings;
    std::unique_ptr<OutputTextEdit> edit;

    FindReplaceWidget* Bar() const { return edit->GetFindReplace(); }
    QLineEdit* Field() const { return Bar()->findChild<QLineEdit*>(QStringLiteral("searchLineEdit")); }
    QString Results() const { return Bar()->findChild<QLabel*>(QStringLiteral("resultsLabel"))->text(); }
    FlatButton* Button(const char* name) const { return Bar()->findChild<FlatButton*>(QLatin1String(name)); }
    int SelectionStart() const { return edit->GetSelectedStartPosition(); }

    void Open()
    {
        edit = std::make_unique<OutputTextEdit>(&keyBindings);
        edit->resize(600, 300);
        edit->show();
        QVERIFY(QTest::qWaitForWindowExposed(edit.get()));
        edit->AppendText(OUTPUT);
        edit->setFocus();
        edit->ShowFindReplace(false, true);
        QVERIFY(Bar()->isVisible());
        QVERIFY(Field()->hasFocus());
    }

private slots:
    void initTestCase()
    {
        fixture = std::make_unique<HostFixture>();
        ColorSettings::Initialize();
    }

    void cleanupTestCase()
    {
        edit.reset();
        fixture.reset();
    }

    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("invalid QRegularExpression"))); }
    void cleanup() { edit.reset(); }

    void countsFollowTheOptions_data()
    {
        QTest::addColumn<QString>("search");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("results");

        QTest::newRow("folded") << "alpha" << QStringList{} << "1 of 5";
        QTest::newRow("case") << "Alpha" << QStringList{"matchCaseButton"} << "1 of 1";
        QTest::newRow("word") << "alpha" << QStringList{"matchWordButton"} << "1 of 3";
        QTest::newRow("regex") << "alpha_\\d" << QStringList{"regExpButton"} << "1 of 1";
        QTest::newRow("invalid") << "alpha[" << QStringList{"regExpButton"} << "No Results";
        QTest::newRow("none") << "omega" << QStringList{} << "No Results";
    }

    void countsFollowTheOptions()
    {
        QFETCH(QString, search);
        QFETCH(QStringList, options);
        QFETCH(QString, results);
        Open();
        for (const QString& option : options)
            QTest::mouseClick(Button(option.toLatin1().constData()), Qt::LeftButton);
        QTest::keyClicks(Field(), search);
        QCOMPARE(Results(), results);
    }

    void returnStepsAndWraps()
    {
        Open();
        QTest::mouseClick(Button("matchWordButton"), Qt::LeftButton);
        QTest::keyClicks(Field(), QStringLiteral("alpha"));
        // The cursor rests at the end after output: the first step wraps to the top.
        QCOMPARE(SelectionStart(), 11);
        QCOMPARE(Results(), QStringLiteral("1 of 3"));
        QTest::keyClick(Field(), Qt::Key_Return);
        QCOMPARE(Results(), QStringLiteral("2 of 3"));
        QTest::keyClick(Field(), Qt::Key_Return);
        QCOMPARE(Results(), QStringLiteral("3 of 3"));
        QTest::keyClick(Field(), Qt::Key_Return);
        QCOMPARE(SelectionStart(), 11);
        QTest::keyClick(Field(), Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(Results(), QStringLiteral("3 of 3"));
        QTest::mouseClick(Button("previousButton"), Qt::LeftButton);
        QCOMPARE(Results(), QStringLiteral("2 of 3"));

        // New output is counted at once.
        edit->AppendText(QStringLiteral("alpha again\n"));
        QCOMPARE(Results(), QStringLiteral("2 of 4"));
        edit->ClearAll();
        QCOMPARE(Results(), QStringLiteral("No Results"));
    }

    void barHasNoReplacingAndSitsTopRight()
    {
        Open();
        QVERIFY(!Button("toggleReplaceButton")->isVisible());
        QVERIFY(!Button("findInSelectionButton")->isVisible());
        QVERIFY(!Bar()->findChild<QLineEdit*>(QStringLiteral("replaceLineEdit"))->isVisible());
        QSignalSpy replace(Bar(), SIGNAL(ReplaceAllRequested(QString)));
        Bar()->ToggleReplace();
        Bar()->ReplaceAll();
        QCOMPARE(replace.count(), 0);

        QCOMPARE(Bar()->geometry().top(), 0);
        const int scrollBar = edit->verticalScrollBar()->isVisible() ? edit->verticalScrollBar()->width() : 0;
        QCOMPARE(Bar()->geometry().right(), edit->width() - scrollBar - 20);
        QCOMPARE(edit->grab(Bar()->geometry()).toImage(), Bar()->grab().toImage());
    }

    void escapeInTheBarClosesAndReturnsFocus()
    {
        Open();
        QTest::keyClicks(Field(), QStringLiteral("beta"));
        QCOMPARE(edit->GetSelectedText(), QStringLiteral("beta"));
        QTest::keyClick(Field(), Qt::Key_Escape);
        QVERIFY(!Bar()->isVisible());
        QVERIFY(edit->hasFocus());
        // Opened again on a word, the bar takes it.
        QTextCursor cursor = edit->textCursor();
        cursor.setPosition(OUTPUT.indexOf(QLatin1String("alphabet")) + 2);
        edit->setTextCursor(cursor);
        edit->ShowFindReplace();
        QCOMPARE(Field()->text(), QStringLiteral("alphabet"));
        QCOMPARE(Results(), QStringLiteral("1 of 1"));
    }
};

QTEST_MAIN(TestOutputFind)
#include "tst_OutputFind.moc"
