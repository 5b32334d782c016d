#include "HostFixture.h"
#include "PanelPopupMenu.h"
#include "TestFiles.h"
#include "WheelSimulation.h"
#include "editor/FindReplaceWidget.h"
#include "output/OutputArrivalBuffer.h"
#include "output/OutputTextEdit.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "widgets/FlatButton.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtTest/QtTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollBar>

#include <memory>

class TestOutputTextEdit : public QObject
{
    Q_OBJECT

private:
    static QStringList NumberedLines(int count)
    {
        QStringList lines;
        for (int i = 1; i <= count; ++i)
            lines << QStringLiteral("line %1\n").arg(i);
        return lines;
    }

    static QPoint PointOfCharacter(OutputTextEdit* edit, int position)
    {
        QTextCursor cursor(edit->document());
        cursor.setPosition(position);
        const int half = edit->fontMetrics().horizontalAdvance(edit->document()->characterAt(position)) / 2;
        return edit->cursorRect(cursor).center() + QPoint(half, 0);
    }

    // Where the selections that the pane handed to the widget start: those with this background, or all.
    QList<int> Starts(const QColor& background = QColor()) const
    {
        QList<int> starts;
        for (const QTextEdit::ExtraSelection& selection : edit->QPlainTextEdit::extraSelections())
            if (!background.isValid() || selection.format.background().color() == background)
                starts << selection.cursor.selectionStart();
        return starts;
    }

    void Select(int from, int to) const
    {
        QTextCursor cursor = edit->textCursor();
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        edit->setTextCursor(cursor);
    }

    // The find bar, driven as the user does: typed text, its buttons, its keys.
    FindReplaceWidget* Bar() const { return edit->GetFindReplace(); }
    QLineEdit* Field() const { return Bar()->findChild<QLineEdit*>(QStringLiteral("searchLineEdit")); }
    QString Results() const { return Bar()->findChild<QLabel*>(QStringLiteral("resultsLabel"))->text(); }
    FlatButton* Button(const char* name) const { return Bar()->findChild<FlatButton*>(QLatin1String(name)); }

    void OpenFind()
    {
        edit->AppendText(QStringLiteral("// Result: alpha\nAlpha beta alphabet\n# alpha_1 alpha\n"));
        edit->setFocus();
        edit->ShowFindReplace(false, true);
        QVERIFY(Bar()->isVisible());
        QVERIFY(Field()->hasFocus());
    }

    std::unique_ptr<HostFixture> fixture;
    KeyBindings keyBindings;
    QTemporaryDir dir;
    std::unique_ptr<OutputTextEdit> edit; // shown

private slots:
    void init()
    {
        fixture = std::make_unique<HostFixture>();
        ColorSettings::Initialize();
        edit = std::make_unique<OutputTextEdit>(&keyBindings);
        edit->resize(600, 300);
        edit->show();
        QVERIFY(QTest::qWaitForWindowExposed(edit.get()));
        // A bad expression is never run: Qt would say so.
        QTest::failOnWarning(QRegularExpression(QStringLiteral("invalid QRegularExpression")));
    }

    void cleanup()
    {
        edit.reset();
        fixture.reset();
    }

    // Held back while hidden, the text goes to an open log on arrival and again when it is shown. Output
    // that arrives while the pane cannot take it is held within twice the cap, line by line.
    void hiddenOutputArrivesWholeAndInOrderOnShow()
    {
        OutputArrivalBuffer held;
        const QStringList lines = NumberedLines(35);
        for (const QString& line : lines)
            held.Append(line, 10);
        QVERIFY(held.ReplacesDocument());
        QCOMPARE(held.Take(), lines.mid(22).join(QString()));

        const QString path = dir.filePath(QStringLiteral("held.log"));
        edit->hide();
        QVERIFY(edit->BeginWriteToFile(path));
        for (const char* part : {"first\n", "second\n", "third"})
            edit->AppendText(part);
        QVERIFY(edit->toPlainText().isEmpty());

        QSignalSpy changes(edit->document(), SIGNAL(contentsChange(int, int, int)));
        edit->show();
        QVERIFY(QTest::qWaitForWindowExposed(edit.get()));
        QCOMPARE(edit->toPlainText(), QStringLiteral("first\nsecond\nthird"));
        QCOMPARE(changes.count(), 1);
        QVERIFY(edit->textCursor().atEnd());
        edit->EndWriteToFile();
        QCOMPARE(QString::fromUtf8(TestFiles::Read(path)),
                 QStringLiteral("first\nsecond\nthirdfirst\nsecond\nthird"));

        // Shown again after hiding, nothing is repeated.
        edit->hide();
        edit->AppendText(QStringLiteral(" and fourth"));
        edit->show();
        QCOMPARE(edit->GetText(), QStringLiteral("first\nsecond\nthird and fourth"));
    }

    void appendsJoinPerTurnAndEndTheSelection()
    {
        QSignalSpy changes(edit->document(), SIGNAL(contentsChange(int, int, int)));
        const QStringList lines = NumberedLines(500);
        for (const QString& line : lines)
            edit->AppendText(line);
        // The first is shown at once, the rest when the turn ends.
        QVERIFY(edit->toPlainText().startsWith(QStringLiteral("line 1\n")));
        QCoreApplication::processEvents();
        QCOMPARE(edit->toPlainText(), lines.join(QString()));
        QVERIFY(changes.count() <= 3);

        // Reading the text does not wait for the turn to end.
        edit->AppendText(QStringLiteral("a"));
        edit->AppendText(QStringLiteral("b"));
        QVERIFY(edit->GetText().endsWith(QStringLiteral("line 500\nab")));

        QCoreApplication::processEvents();
        Select(0, 4);
        edit->verticalScrollBar()->setValue(0);
        QCOMPARE(edit->GetSelectedText(), QStringLiteral("line"));

        edit->AppendText(QStringLiteral("tail\n"));
        QVERIFY(!edit->textCursor().hasSelection());
        QVERIFY(edit->textCursor().atEnd());
        QVERIFY(edit->viewport()->rect().contains(edit->cursorRect()));

        // Within the burst, a selection that reaches the end is not the caret resting there: what
        // arrives is shown at once and takes the selection away.
        const int end = edit->document()->characterCount() - 1;
        Select(end - 5, end);
        edit->AppendText(QStringLiteral("more\n"));
        QVERIFY(edit->toPlainText().endsWith(QStringLiteral("tail\nmore\n")));
        QVERIFY(!edit->textCursor().hasSelection());
    }

    void capTrimsFromTheTop_data()
    {
        QTest::addColumn<bool>("turnPerAppend");
        QTest::addColumn<int>("cap");
        QTest::addColumn<int>("count");
        QTest::addColumn<bool>("chunked");
        QTest::newRow("one turn each, default cap") << true << 3000 << 3001 << false;
        QTest::newRow("one burst, default cap") << false << 3000 << 3001 << false;
        QTest::newRow("one burst, many times the cap") << false << 3000 << 20000 << false;
        QTest::newRow("one burst, small cap") << false << 7 << 100 << false;
        // Chunks of several lines, with lines split across appends.
        for (const int cap : {1, 2, 5, 50})
            QTest::addRow("chunks, cap %d", cap) << false << cap << 2000 << true;
    }

    // Capped, the pane holds what a plain document with the same cap holds after the same appends.
    void capTrimsFromTheTop()
    {
        QFETCH(bool, turnPerAppend);
        QFETCH(int, cap);
        QFETCH(int, count);
        QFETCH(bool, chunked);
        QStringList chunks{QStringLiteral("before\n")};
        QRandomGenerator random(7);
        for (int i = 0; i < count; ++i)
        {
            QString chunk;
            const int lines = chunked ? static_cast<int>(random.bounded(4)) : 0;
            for (int l = 0; l < lines; ++l)
                chunk += QStringLiteral("c%1.%2\n").arg(i).arg(l);
            chunks << chunk + QStringLiteral("line %1").arg(i) + (chunked ? QString() : QStringLiteral("\n"));
        }
        edit->SetMaximumBlockCount(cap);
        edit->AppendText(chunks.first());
        QCoreApplication::processEvents();
        for (const QString& chunk : std::as_const(chunks).mid(1))
        {
            edit->AppendText(chunk);
            if (turnPerAppend)
                QCoreApplication::processEvents();
        }
        QCoreApplication::processEvents();
        QTextDocument reference;
        reference.setUndoRedoEnabled(false);
        reference.setMaximumBlockCount(cap);
        QTextCursor cursor(&reference);
        for (const QString& chunk : std::as_const(chunks))
        {
            cursor.movePosition(QTextCursor::End);
            cursor.insertText(chunk);
        }
        QCOMPARE(edit->toPlainText(), reference.toPlainText());
        QVERIFY(edit->textCursor().atEnd());
    }

    // A script holds the main thread while it prints: no turn of the event loop ends the burst, yet
    // what it printed is shown and logged at least every 250 ms.
    void logHoldsExactlyWhatWasShown()
    {
        const QString path = dir.filePath(QStringLiteral("out.log"));
        edit->AppendText(QStringLiteral("not logged\n"));
        QVERIFY(edit->BeginWriteToFile(path));
        for (const char* part : {"first\n", "second\n"})
            edit->AppendText(part);
        QThread::msleep(300);
        edit->AppendText(QStringLiteral("third\n"));
        QCOMPARE(edit->toPlainText(), QStringLiteral("not logged\nfirst\nsecond\nthird\n"));
        QCOMPARE(QString::fromUtf8(TestFiles::Read(path)), QStringLiteral("first\nsecond\nthird\n"));

        edit->AppendText(QStringLiteral("// Result: 1 //\n"));
        QCoreApplication::processEvents();
        for (int i = 0; i < 100; ++i)
            edit->AppendText(QStringLiteral("line %1 \u00e9\u4e2d\n").arg(i));
        QCoreApplication::processEvents();

        const QString logged = QString::fromUtf8(TestFiles::Read(path));
        QCOMPARE(QStringLiteral("not logged\n") + logged, edit->GetText());

        edit->AppendText(QStringLiteral("last"));
        edit->EndWriteToFile();
        QVERIFY(!edit->IsWriteToFileActive());
        edit->AppendText(QStringLiteral("after"));
        QCOMPARE(QString::fromUtf8(TestFiles::Read(path)), logged + QStringLiteral("last"));
    }

    void userRulesColourNewText()
    {
        const auto painted = [this](const QColor& color)
        {
            QStringList texts;
            for (const QTextEdit::ExtraSelection& selection : edit->QPlainTextEdit::extraSelections())
                if (selection.format.hasProperty(QTextFormat::ForegroundBrush) &&
                    selection.format.foreground().color() == color)
                    texts << selection.cursor.selectedText();
            return texts;
        };
        // The factory rules colour whole lines that start with the marker.
        const QColor red(0xf4, 0x28, 0x28);
        edit->AppendText(
            QStringLiteral("# Error: boom #\nplain\n// Warning: careful //\nx # Error: not at start\n"));
        QCOMPARE(painted(red), QStringList{QStringLiteral("# Error: boom #")});
        QCOMPARE(painted(QColor(0xdf, 0xe5, 0x27)), QStringList{QStringLiteral("// Warning: careful //")});

        // Rules of the user's: plain text (the dot is no wildcard), per match or for the whole line;
        // later rules paint over earlier ones, so they come later in the list.
        const QColor blue(0, 0, 255);
        const QColor green(0, 255, 0);
        auto& rules = ColorSettings::outputUserDefinedSelections;
        rules.append(
            ExtraSelectionProperties(QStringLiteral("Words"), green, QColor(), QStringLiteral("a.b")));
        rules.append(ExtraSelectionProperties(QStringLiteral("Mine"), blue, QColor(), QStringLiteral("a.b"),
                                              false, true));
        edit->AppendText(QStringLiteral("has axb inside\nhas a.b and a.b inside\n"));
        QCoreApplication::processEvents();
        QCOMPARE(painted(blue), QStringList{QStringLiteral("has a.b and a.b inside")});
        QCOMPARE(painted(green), (QStringList{QStringLiteral("a.b"), QStringLiteral("a.b")}));
        QCOMPARE(edit->QPlainTextEdit::extraSelections().last().format.foreground().color(), blue);

        // Switched off, or both colours off: skipped.
        rules.last().enabled = false;
        rules[rules.size() - 2].foregroundEnabled = false;
        edit->UpdateExtraSelections();
        QVERIFY(painted(blue).isEmpty());
        QVERIFY(painted(green).isEmpty());
        QCOMPARE(painted(red).size(), 1);
        rules.last().enabled = true;
        edit->UpdateExtraSelections();
        QCOMPARE(painted(blue).size(), 1);

        Settings::outputSyntaxHighlightingEnabled = false;
        edit->UpdateExtraSelections();
        QVERIFY(Starts().isEmpty());
    }

    void highlightingCoversOnlyTheVisibleStretch()
    {
        edit->SetMaximumBlockCount(3000);
        for (int i = 0; i < 5000; ++i)
            edit->AppendText(QStringLiteral("# Error: number %1\n").arg(i));
        QCoreApplication::processEvents();
        const QList<int> atEnd = Starts();
        QVERIFY(!atEnd.isEmpty());
        const int visibleLines = edit->viewport()->height() / edit->fontMetrics().height() + 2;
        // The visible lines, plus the lines in the 600 characters above them.
        QVERIFY2(atEnd.size() <= visibleLines + 600 / 20 + 2, qPrintable(QString::number(atEnd.size())));
        const int firstVisible = edit->cursorForPosition(QPoint(0, 0)).position();
        for (const int start : atEnd)
            QVERIFY(start >= firstVisible - 600);

        // A page step up paints the lines that come into view.
        edit->verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepSub);
        QTest::qWait(20);
        const int top = edit->cursorForPosition(QPoint(0, 0)).position();
        QVERIFY(Starts().contains(edit->document()->findBlock(top).position()));
    }

    // A selection marks its other occurrences; find marks its matches while it is open.
    void selectionAndFindMarkTheirMatches()
    {
        const QColor matching =
            ColorSettings::GetOutputFormat(ColorSettings::MATCHING_SELECTION).background().color();
        edit->AppendText(QStringLiteral("foo.bar foo aaaa foofoo\nfoo"));
        Select(8, 11);
        QCOMPARE(Starts(matching), (QList<int>{0, 8, 17, 20, 24}));
        // Overlapping occurrences are all marked.
        Select(12, 14);
        QCOMPARE(Starts(matching), (QList<int>{12, 13, 14}));

        Settings::outputMatchedSelectionWordsOnly = true;
        Select(8, 11);
        QCOMPARE(Starts(matching), (QList<int>{0, 8, 24}));
        Select(0, 7);
        QVERIFY(Starts(matching).isEmpty());
        // Several lines: nothing.
        Select(20, 27);
        QVERIFY(Starts(matching).isEmpty());
        edit->ClearAll();

        const QColor found =
            ColorSettings::GetOutputFormat(ColorSettings::FIND_REPLACE_MATCHING).background().color();
        edit->AppendText(QStringLiteral("one two one\nthree one"));
        edit->OnSearchChanged(QRegularExpression(QStringLiteral("one")), false, true);
        QCOMPARE(Starts(found).size(), 0);

        edit->ShowFindReplace(false, true);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("one"));
        QCOMPARE(Starts(found).size(), 3);

        // Escape in the pane closes find and drops the selection.
        edit->setFocus();
        QTest::keyClick(edit.get(), Qt::Key_Escape);
        QVERIFY(!edit->textCursor().hasSelection());
        QCOMPARE(Starts(found).size(), 0);
        // A selection made after that has the ordinary colours again, not those of a found match.
        const QTextCharFormat selected = ColorSettings::GetOutputFormat(ColorSettings::SELECTED_TEXT, false);
        QCOMPARE(edit->palette().color(QPalette::Highlight), selected.background().color());

        // Opening find takes the word under the cursor and selects it there, not at another match.
        Select(19, 19);
        edit->ShowFindReplace();
        QCOMPARE(edit->GetSelectedText(), QStringLiteral("one"));
        QCOMPARE(edit->GetSelectedStartPosition(), 18);
    }

    void doubleClickTakesLeadingDollar_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("clickAt");
        QTest::addColumn<QString>("expected");
        QTest::newRow("letter before dollar") << QStringLiteral("$foo$bar") << 6 << QStringLiteral("bar");
        QTest::newRow("blank before dollar") << QStringLiteral("= $bar;") << 4 << QStringLiteral("$bar");
        QTest::newRow("capital B before dollar") << QStringLiteral("B$bar") << 3 << QStringLiteral("$bar");
        QTest::newRow("capital A before dollar") << QStringLiteral("A$bar") << 3 << QStringLiteral("bar");
        QTest::newRow("at start of text") << QStringLiteral("$var rest") << 2 << QStringLiteral("$var");
        QTest::newRow("on the dollar") << QStringLiteral("x = $name;") << 4 << QStringLiteral("$name");
    }

    void doubleClickTakesLeadingDollar()
    {
        QFETCH(QString, text);
        QFETCH(int, clickAt);
        QFETCH(QString, expected);
        edit->AppendText(text);
        QTest::mouseDClick(edit->viewport(), Qt::LeftButton, {}, PointOfCharacter(edit.get(), clickAt));
        QCOMPARE(edit->GetSelectedText(), expected);

        Settings::outputDoubleClickIncludesDollarSign = false;
        QTest::mouseDClick(edit->viewport(), Qt::LeftButton, {}, PointOfCharacter(edit.get(), clickAt));
        QVERIFY(!edit->GetSelectedText().startsWith(QLatin1Char('$')) ||
                text.at(clickAt) == QLatin1Char('$'));
    }

    void zoomStaysWithinLimits()
    {
        edit->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(edit.get()));
        const int base = Settings::outputFont.pointSize();
        QVERIFY(base > Settings::MINIMUM_FONT_SIZE && base < Settings::MAXIMUM_FONT_SIZE);
        // The main widget's part: a step of the zoom, then the font again.
        const auto step = [this](int by)
        {
            Settings::outputZoom += by;
            edit->UpdateFont();
        };
        connect(edit.get(), &OutputTextEdit::IncreaseFontSizeRequested, this, [&] { step(1); });
        connect(edit.get(), &OutputTextEdit::DecreaseFontSizeRequested, this, [&] { step(-1); });

        for (int i = 0; i < 40; ++i)
            WheelSimulation::Turn(edit->viewport(), 120, Qt::ControlModifier);
        QCOMPARE(edit->font().pointSize(), Settings::MAXIMUM_FONT_SIZE);
        QCOMPARE(Settings::outputZoom, Settings::MAXIMUM_FONT_SIZE - base);

        for (int i = 0; i < 40; ++i)
            WheelSimulation::Turn(edit->viewport(), -120, Qt::ControlModifier);
        QCOMPARE(edit->font().pointSize(), Settings::MINIMUM_FONT_SIZE);
        QCOMPARE(Settings::outputZoom, Settings::MINIMUM_FONT_SIZE - base);
        WheelSimulation::Turn(edit->viewport(), 120, Qt::ControlModifier);
        QCOMPARE(edit->font().pointSize(), Settings::MINIMUM_FONT_SIZE + 1);

        // Other modifiers, and the setting off, are swallowed: no zoom and no scroll.
        edit->AppendText(NumberedLines(300).join(QString()));
        QCoreApplication::processEvents();
        const int value = edit->verticalScrollBar()->value();
        QSignalSpy increaseSpy(edit.get(), SIGNAL(IncreaseFontSizeRequested()));
        WheelSimulation::Turn(edit->viewport(), 120, Qt::ShiftModifier);
        WheelSimulation::Turn(edit->viewport(), 120, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(edit->verticalScrollBar()->value(), value);
        Settings::outputMouseWheelChangesFontSize = false;
        WheelSimulation::Turn(edit->viewport(), 120, Qt::ControlModifier);
        QCOMPARE(increaseSpy.count(), 0);
        WheelSimulation::Turn(edit->viewport(), 120);
        QVERIFY(edit->verticalScrollBar()->value() < value);
    }

    void countsFollowTheOptions_data()
    {
        QTest::addColumn<QString>("search");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("results");

        QTest::newRow("folded") << "alpha" << QStringList{} << "1 of 5";
        QTest::newRow("case") << "Alpha" << QStringList{"matchCaseButton"} << "1 of 1";
        QTest::newRow("regex") << "alpha_\\d" << QStringList{"regExpButton"} << "1 of 1";
        QTest::newRow("invalid") << "alpha[" << QStringList{"regExpButton"} << "No Results";
    }

    void countsFollowTheOptions()
    {
        QFETCH(QString, search);
        QFETCH(QStringList, options);
        QFETCH(QString, results);
        OpenFind();
        for (const QString& option : options)
            QTest::mouseClick(Button(option.toLatin1().constData()), Qt::LeftButton);
        QTest::keyClicks(Field(), search);
        QCOMPARE(Results(), results);
    }

    // The bar offers no replacing, steps with Return and closes with Escape; then the context menu.
    void barStepsWrapsAndClosesThenMenuClears()
    {
        OpenFind();
        QVERIFY(!Button("toggleReplaceButton")->isVisible());
        QVERIFY(!Button("findInSelectionButton")->isVisible());
        QVERIFY(!Bar()->findChild<QLineEdit*>(QStringLiteral("replaceLineEdit"))->isVisible());
        QSignalSpy replace(Bar(), SIGNAL(ReplaceAllRequested(QString)));
        Bar()->ToggleReplace();
        Bar()->ReplaceAll();
        QCOMPARE(replace.count(), 0);

        QTest::mouseClick(Button("matchWordButton"), Qt::LeftButton);
        QTest::keyClicks(Field(), QStringLiteral("alpha"));
        // The cursor rests at the end after output: the first step wraps to the top.
        QCOMPARE(edit->GetSelectedStartPosition(), 11);
        QCOMPARE(edit->GetSelectedText(), QStringLiteral("alpha"));
        QCOMPARE(Results(), QStringLiteral("1 of 3"));
        QTest::keyClick(Field(), Qt::Key_Return);
        QCOMPARE(Results(), QStringLiteral("2 of 3"));
        QTest::keyClick(Field(), Qt::Key_Return);
        QCOMPARE(Results(), QStringLiteral("3 of 3"));
        QTest::keyClick(Field(), Qt::Key_Return);
        QCOMPARE(edit->GetSelectedStartPosition(), 11);
        QTest::keyClick(Field(), Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(Results(), QStringLiteral("3 of 3"));
        QTest::mouseClick(Button("previousButton"), Qt::LeftButton);
        QCOMPARE(Results(), QStringLiteral("2 of 3"));

        // New output is counted at once.
        edit->AppendText(QStringLiteral("alpha again\n"));
        QCOMPARE(Results(), QStringLiteral("2 of 4"));
        edit->ClearAll();
        QCOMPARE(Results(), QStringLiteral("No Results"));
        QTest::keyClick(Field(), Qt::Key_Escape);
        QVERIFY(!Bar()->isVisible());
        QVERIFY(edit->hasFocus());

        // Text for running is taken with line feeds, not paragraph separators.
        edit->AppendText(QStringLiteral("print(1)\nprint(2)\n"));
        QCoreApplication::processEvents();
        edit->selectAll();
        QCOMPARE(edit->GetSelectedText(), QStringLiteral("print(1)\u2029print(2)\u2029"));
        QCOMPARE(edit->GetSelectedTextForExecute(), QStringLiteral("print(1)\nprint(2)\n"));
        QStringList texts;
        WhenPopupMenu(this, &texts, 4);
        edit->ShowContextMenu(QPoint(10, 10));
        QCOMPARE(texts, (QStringList{"Copy", "-", "Select All", "-", "Clear Output"}));
        QVERIFY(edit->GetText().isEmpty());
    }
};

QTEST_MAIN(TestOutputTextEdit)
#include "tst_OutputTextEdit.moc"
