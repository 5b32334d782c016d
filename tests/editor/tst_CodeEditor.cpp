// The editor widget on its own, and what it draws over and beside the text: messages, marks,
// matched braces and selections, guides, the gutter and the error bar; then its find bar and its
// file on disk.
#include "HostFixture.h"
#include "TestFiles.h"
#include "WheelSimulation.h"
#include "editor/CodeEditor.h"
#include "editor/CodeEditorErrorBarOverlay.h"
#include "editor/FindReplaceWidget.h"
#include "editor/TextFileCodec.h"
#include "language/BaseParser.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "tabs/CodeEditorGroup.h"
#include "tabs/CodeEditorGroupTabBar.h"
#include "widgets/FlatButton.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QMimeData>
#include <QtCore/QProcess>
#include <QtCore/QSaveFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtTest/QtTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QToolTip>

#include <cstdio>
#include <memory>
#include <tuple>

namespace
{
// A buffer whose file name tells its language, unless a path is given.
CodeEditorProperties Properties(CodeEditorLanguage language, QString path = QString(),
                                CodeEditorType type = CodeEditorType::INTERNAL_BUFFER)
{
    if (path.isEmpty())
        path = language == CodeEditorLanguage::MEL      ? QStringLiteral("/tmp/buffer.mel")
               : language == CodeEditorLanguage::PYTHON ? QStringLiteral("/tmp/buffer.py")
                                                        : QStringLiteral("/tmp/buffer");
    return {type, language, path, QStringLiteral("buffer")};
}

QStringList ActionTexts(const QMenu* menu)
{
    QStringList texts;
    for (const QAction* action : menu->actions())
        texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    return texts;
}

bool IsNear(QRgb pixel, QRgb color, int tolerance)
{
    return qAbs(qRed(pixel) - qRed(color)) <= tolerance && qAbs(qGreen(pixel) - qGreen(color)) <= tolerance &&
           qAbs(qBlue(pixel) - qBlue(color)) <= tolerance;
}

// Antialiased marks blend into the background: compare hue, and ask for a clearly coloured pixel.
bool Resembles(QRgb pixel, QRgb color)
{
    const QColor p = QColor::fromRgb(pixel);
    const QColor c = QColor::fromRgb(color);
    const int hueDistance = qAbs(p.hsvHue() - c.hsvHue());
    return p.hsvSaturation() > 90 && p.value() > 90 && qMin(hueDistance, 360 - hueDistance) <= 20;
}

// The pixels in `area` that resemble `color`, or with a tolerance, that are near it.
int CountResembling(const QImage& image, const QRect& area, QRgb color, int tolerance = -1)
{
    int count = 0;
    const QRect clipped = area.intersected(image.rect());
    for (int y = clipped.top(); y <= clipped.bottom(); ++y)
    {
        for (int x = clipped.left(); x <= clipped.right(); ++x)
        {
            const QRgb pixel = image.pixel(x, y);
            count += (tolerance < 0 ? Resembles(pixel, color) : IsNear(pixel, color, tolerance)) ? 1 : 0;
        }
    }
    return count;
}

QStringList SelectedTexts(const CodeEditor& editor, const QTextCharFormat* format)
{
    QStringList texts;
    for (const QTextEdit::ExtraSelection& selection : editor.QPlainTextEdit::extraSelections())
    {
        if (selection.format == *format)
            texts.append(selection.cursor.selectedText());
    }
    return texts;
}

QString ShowToolTip(QWidget* widget, const QPoint& pos)
{
    QToolTip::hideText();
    QHelpEvent help(QEvent::ToolTip, pos, widget->mapToGlobal(pos));
    QApplication::sendEvent(widget, &help);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
}
const QString SAMPLE = QStringLiteral("foo Foo food\nbar foo\nfoo_bar fOO\nend");

constexpr QRgb ERROR_COLOR = CodeEditorErrorBarOverlay::ERROR_COLOR;
constexpr QRgb WARNING_COLOR = CodeEditorErrorBarOverlay::WARNING_COLOR;
constexpr QRgb INFO_COLOR = CodeEditorErrorBarOverlay::INFO_COLOR;
constexpr int NOTICE_TIMEOUT_MS = 5000;
// How long a change that must not be reported gets to show up anyway.
constexpr int QUIET_MS = 600;

bool AppendFromAnotherProcess(const QString& path)
{
    return QProcess::execute(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("echo x >> \"$1\""),
                                                    QStringLiteral("sh"), path}) == 0;
}
} // namespace

using LineEnding = TextFileFormat::LineEnding;
Q_DECLARE_METATYPE(TextFileFormat::LineEnding)
using EndingRow = std::tuple<QByteArray, LineEnding, bool>;
using ZoomRow = std::tuple<int, double, int, int>;
using MessageRow = std::tuple<CodeEditorLanguage, QString, QString, int, QString, QRgb, bool, int, int>;
using OffsetRow = std::tuple<int, int, int, int, int, int, int>;
using SelectionRow = std::tuple<CodeEditorLanguage, bool, QString, int, int, int>;
using SearchRow = std::tuple<QString, QStringList, QString, int>;

class TestCodeEditor : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<KeyBindings> keyBindings;
    std::unique_ptr<CodeEditorGroup> group;
    BaseParser* lastParser = nullptr; // the last parser the group reported, and how often it did
    int parses = 0;

    FindReplaceWidget* Bar() const { return group->GetFindReplace(); }
    CodeEditor* Editor() const { return group->GetCurrent(); }
    QLineEdit* SearchField() const { return Bar()->findChild<QLineEdit*>(QStringLiteral("searchLineEdit")); }
    QLineEdit* ReplaceField() const { return Bar()->findChild<QLineEdit*>(QLatin1String("replaceLineEdit")); }
    QString Results() const { return Bar()->findChild<QLabel*>(QStringLiteral("resultsLabel"))->text(); }
    void Click(const char* name) const
    {
        auto* button = Bar()->findChild<FlatButton*>(QLatin1String(name));
        QVERIFY(button && button->isVisible());
        QTest::mouseClick(button, Qt::LeftButton);
    }
    QString Selected() const { return Editor()->textCursor().selectedText(); }
    int SelectionStart() const { return Editor()->textCursor().selectionStart(); }

    // A shown group with one buffer holding `text` and the cursor at its start, as the user has it:
    // the group parses after each pause.
    void Open(const QString& text, CodeEditorLanguage language = CodeEditorLanguage::TEXT)
    {
        group = std::make_unique<CodeEditorGroup>(0, keyBindings.get());
        group->UpdatePreferences();
        group->UpdateFontsAndColors();
        group->InsertCodeEditor(-1, Properties(language), text);
        group->resize(700, 400);
        group->show();
        QVERIFY(QTest::qWaitForWindowExposed(group.get()));
        lastParser = nullptr;
        parses = 0;
        connect(group.get(), &CodeEditorGroup::ParserUpdated, this,
                [this](BaseParser* parser)
                {
                    lastParser = parser;
                    ++parses;
                });
        Editor()->setFocus();
        Editor()->moveCursor(QTextCursor::Start);
    }

    void OpenFind(const QString& text, bool replace = false)
    {
        Open(text);
        group->ShowFindReplace(replace, false, true, false);
        QVERIFY(Bar()->isVisible());
    }

    void TypeSearch(const QString& text)
    {
        SearchField()->setFocus();
        SearchField()->selectAll();
        QTest::keyClicks(SearchField(), text);
    }

    // Types at the end of the buffer and waits for the parse after the pause.
    void TypeAtEnd(const QString& typed)
    {
        Editor()->moveCursor(QTextCursor::End);
        const int before = parses;
        QTest::keyClicks(Editor(), typed);
        QTRY_VERIFY_WITH_TIMEOUT(parses > before, 3000);
    }

    static QRect LineRect(CodeEditor* editor, int blockNumber)
    {
        QTextCursor cursor(editor->document()->findBlockByNumber(blockNumber));
        return editor->cursorRect(cursor);
    }

private slots:
    void initTestCase()
    {
        fixture = std::make_unique<HostFixture>();
        QVERIFY(fixture->LoadPlugin());
        ColorSettings::Initialize();
        keyBindings = std::make_unique<KeyBindings>();
    }

    void cleanupTestCase()
    {
        keyBindings.reset();
        fixture.reset();
    }

    void init()
    {
        Settings::ResetToDefaults(); // messages shown, pylint off
        // A bad expression is never run: Qt would say so.
        QTest::failOnWarning(QRegularExpression(QStringLiteral("invalid QRegularExpression")));
    }

    void cleanup() { group.reset(); }

    void typingPausesGiveOneTextChangedAfterTheLastKey()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::MEL), nullptr);
        editor.show();
        QVERIFY(QTest::qWaitForWindowExposed(&editor));
        QSignalSpy spy(&editor, &CodeEditor::TextChanged);

        QElapsedTimer gap;
        gap.start();
        qint64 longestGap = 0;
        const QString typed = QStringLiteral("abcdefghij");
        for (const QChar c : typed)
        {
            longestGap = qMax(longestGap, gap.restart());
            QTest::keyClick(&editor, c.toLatin1());
            QTest::qWait(100);
            if (longestGap >= CodeEditor::TEXT_CHANGED_DELAY_MS)
                QSKIP("The machine is too busy to keep 100 ms between keys");
            QCOMPARE(spy.count(), 0);
        }
        QTRY_COMPARE_WITH_TIMEOUT(spy.count(), 1, 3000);
        QCOMPARE(spy.at(0).at(0).toString(), QStringLiteral("/tmp/buffer.mel"));
        QCOMPARE(spy.at(0).at(1).toString(), typed);
        QTest::qWait(2 * CodeEditor::TEXT_CHANGED_DELAY_MS);
        QCOMPARE(spy.count(), 1);
    }

    void settingTextAlsoEndsInOneTextChanged()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::PYTHON), nullptr);
        QSignalSpy spy(&editor, &CodeEditor::TextChanged);
        editor.SetText(QStringLiteral("first"));
        editor.SetText(QStringLiteral("second"));
        QVERIFY(spy.wait(2000));
        QTest::qWait(CodeEditor::TEXT_CHANGED_DELAY_MS + 100);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(1).toString(), QStringLiteral("second"));
    }

    void zoomIsHeldWithinTheFontLimits_data()
    {
        QTest::addColumn<ZoomRow>("row"); // zoom, scale, expected size, expected zoom
        QTest::newRow("no zoom") << ZoomRow{0, 1.0, 9, 0};
        QTest::newRow("within") << ZoomRow{3, 1.0, 12, 3};
        QTest::newRow("above the maximum") << ZoomRow{100, 1.0, 24, 15};
        QTest::newRow("below the minimum") << ZoomRow{-100, 1.0, 6, -3};
        QTest::newRow("scaled") << ZoomRow{1, 1.5, 15, 1};
        QTest::newRow("scale ignored when not positive") << ZoomRow{1, -2.0, 10, 1};
    }

    void zoomIsHeldWithinTheFontLimits()
    {
        QFETCH(ZoomRow, row);
        const auto [zoom, scale, expectedSize, expectedZoom] = row;
        Settings::codeEditorFont.setPointSize(9);
        Settings::customScaleValue = scale;
        CodeEditor editor(Properties(CodeEditorLanguage::MEL), nullptr);
        Settings::codeEditorZoom = zoom;
        editor.UpdateFont();
        QCOMPARE(editor.font().pointSize(), expectedSize);
        QCOMPARE(Settings::codeEditorZoom, expectedZoom);
        // Tabs keep their four blanks' width at the new size.
        QCOMPARE(editor.GetTabStopPixels(), editor.fontMetrics().horizontalAdvance(QLatin1Char(' ')) * 4);
    }

    void ctrlWheelAsksForAnotherFontSize()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::MEL), nullptr);
        QSignalSpy bigger(&editor, &CodeEditor::IncreaseFontSizeRequested);
        QSignalSpy smaller(&editor, &CodeEditor::DecreaseFontSizeRequested);
        Settings::codeEditorMouseWheelChangesFontSize = true;
        for (const int delta : {120, -120, -120})
            WheelSimulation::Turn(editor.viewport(), delta, Qt::ControlModifier);
        WheelSimulation::Turn(editor.viewport(), 120, Qt::ControlModifier | Qt::ShiftModifier);
        WheelSimulation::Turn(editor.viewport(), 120);
        QCOMPARE(bigger.count(), 1);
        QCOMPARE(smaller.count(), 2);
        Settings::codeEditorMouseWheelChangesFontSize = false;
        WheelSimulation::Turn(editor.viewport(), 120, Qt::ControlModifier);
        QCOMPARE(bigger.count(), 1);
    }

    void textOptionsFollowTheLanguage()
    {
        Settings::tabsSizeDefault = 0;
        Settings::tabsUseDefaultsMel = false;
        Settings::tabsSizeMel = 2;
        Settings::tabsInsertSpacesMel = false;
        Settings::tabsUseDefaultsPython = true;
        Settings::tabsSizePython = 8;
        Settings::renderWhitespace = true;
        Settings::wordWrapEnabled = false;

        CodeEditor text(Properties(CodeEditorLanguage::TEXT), nullptr);
        QCOMPARE(text.GetTabSize(), 4);
        CodeEditor python(Properties(CodeEditorLanguage::PYTHON), nullptr);
        QCOMPARE(python.GetTabSize(), 4);
        CodeEditor mel(Properties(CodeEditorLanguage::MEL), nullptr);
        QCOMPARE(mel.GetTabSize(), 2);
        QVERIFY(!mel.IsInsertSpacesEnabled());
        QCOMPARE(mel.GetTabStopPixels(), mel.fontMetrics().horizontalAdvance(QLatin1Char(' ')) * 2);

        const QTextOption option = mel.document()->defaultTextOption();
        QCOMPARE(option.wrapMode(), QTextOption::NoWrap);
        QVERIFY(option.flags() & QTextOption::ShowTabsAndSpaces);

        Settings::wordWrapEnabled = true;
        Settings::renderWhitespace = false;
        mel.UpdateTextOptions();
        QCOMPARE(mel.document()->defaultTextOption().wrapMode(), QTextOption::WordWrap);
        QVERIFY(!(mel.document()->defaultTextOption().flags() & QTextOption::ShowTabsAndSpaces));

        CodeEditorProperties properties = mel.GetProperties();
        properties.language = CodeEditorLanguage::PYTHON;
        mel.SetProperties(properties);
        QCOMPARE(mel.GetTabSize(), 4);
    }

    void colorsComeFromTheColorTable()
    {
        QTextCharFormat plain = ColorSettings::GetCodeEditorFormat(ColorSettings::PLAIN_TEXT);
        plain.setForeground(QColor(1, 2, 3));
        plain.setBackground(QColor(4, 5, 6));
        ColorSettings::SetCodeEditorFormat(ColorSettings::PLAIN_TEXT, plain);
        QTextCharFormat numbers = ColorSettings::GetCodeEditorFormat(ColorSettings::LINE_NUMBERS);
        numbers.setForeground(QColor(7, 8, 9));
        ColorSettings::SetCodeEditorFormat(ColorSettings::LINE_NUMBERS, numbers);
        CodeEditor editor(Properties(CodeEditorLanguage::MEL), nullptr);
        QCOMPARE(editor.palette().color(QPalette::Active, QPalette::Text), QColor(1, 2, 3));
        QCOMPARE(CodeEditor::sLineNumbersFormat->foreground().color(), QColor(7, 8, 9));
        QCOMPARE(editor.viewport()->palette().color(QPalette::Inactive, QPalette::Base), QColor(4, 5, 6));
        ColorSettings::Initialize();
    }

    void indentGuidesAreDrawn()
    {
        Settings::codeEditorDisplayIndentationGuides = true;
        CodeEditor editor(Properties(CodeEditorLanguage::PYTHON), nullptr);
        editor.resize(500, 300);
        editor.SetText(QStringLiteral("if a:\n        b\nc"));
        editor.show();
        QVERIFY(QTest::qWaitForWindowExposed(&editor));
        const QImage image = editor.viewport()->grab().toImage();
        const QRgb guide = CodeEditor::sIndentationGuidesFormat->foreground().color().rgb();
        const QRect line1 = LineRect(&editor, 1);
        const QRect line2 = LineRect(&editor, 2);
        const int firstGuideX = line1.left();
        const int secondGuideX = firstGuideX + editor.GetTabStopPixels();
        const auto column = [&](int x, const QRect& line)
        { return CountResembling(image, QRect(x - 1, line.top(), 3, line.height()), guide, 6); };
        QVERIFY(column(firstGuideX, line1) >= line1.height() / 2);
        QVERIFY(column(secondGuideX, line1) >= line1.height() / 2);
        QVERIFY(column(secondGuideX, line2) < line2.height() / 4);

        Settings::codeEditorDisplayIndentationGuides = false;
        editor.viewport()->update();
        const QImage without = editor.viewport()->grab().toImage();
        QCOMPARE(CountResembling(without, QRect(secondGuideX - 1, line1.top(), 3, line1.height()), guide, 6),
                 0);
    }

    void gutterWidthFollowsTheLineCount()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::TEXT), nullptr);
        editor.show();
        QVERIFY(QTest::qWaitForWindowExposed(&editor));
        const int digit = editor.fontMetrics().horizontalAdvance(QLatin1Char('9'));
        const int twoDigits = editor.GetLineNumberWidth();
        editor.SetText(QStringLiteral("\n").repeated(999));
        QCOMPARE(editor.GetLineNumberWidth(), twoDigits + 2 * digit);
        QTRY_COMPARE(editor.findChild<QWidget*>(QStringLiteral("lineNumbers"))->width(),
                     editor.GetLineNumberWidth());
        QCOMPARE(editor.viewport()->x(), editor.GetLineNumberWidth());
    }

    void linesAndPositionsOutOfRangeAreIgnored()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::TEXT), nullptr);
        QVERIFY(!editor.GetText().isNull());
        editor.SetText(QStringLiteral("one\ntwo\nthree"));
        editor.SetCurrentLine(2);
        QCOMPARE(editor.GetCurrentLine(), 2);
        editor.SetCurrentLine(0);
        editor.SetCurrentLine(editor.GetLineCount() + 1);
        QCOMPARE(editor.GetCurrentLine(), 2);
        QVERIFY(!editor.centerOnScroll());

        editor.SetCursorPosition(9);
        QCOMPARE(editor.GetCursorPosition(), 9);
        editor.SetCursorPosition(100);
        editor.SetCursorPosition(-1);
        QCOMPARE(editor.GetCursorPosition(), 9);
        editor.SetCursorSelection(8, 4);
        QCOMPARE(editor.GetSelectedText(), QStringLiteral("two\u2029"));
        QCOMPARE(editor.GetSelectedTextForExecute(), QStringLiteral("two\n"));
        QCOMPARE(editor.GetSelectedStartPosition(), 4);
        QCOMPARE(editor.GetSelectedEndPosition(), 8);
        editor.SetCursorSelection(0, 500);
        QCOMPARE(editor.GetSelectedStartPosition(), 4);

        editor.SetText(QStringLiteral("x = \"a\\b\"  \ny \t "));
        QCOMPARE(editor.GetTextForPythonProcessing(), QStringLiteral(R"(x = \"a\\b\"  \ny\n)"));
    }

    void selectionQueries()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::TEXT), nullptr);
        editor.SetText(QStringLiteral("  one two\nthree\nfour"));
        int start, end, first, last;
        bool endsAtBlockStart;
        editor.SetCursorPosition(3);
        QVERIFY(!editor.HasSelection(start, end, first, last, endsAtBlockStart));
        QCOMPARE((QList<int>{start, end, first, last}), (QList<int>{3, 3, 0, 0}));

        editor.SetCursorSelection(16, 4); // from the start of "four" back into "one"
        QVERIFY(editor.HasSelection(start, end, first, last, endsAtBlockStart));
        QCOMPARE((QList<int>{start, end, first, last}), (QList<int>{4, 16, 0, 2}));
        QVERIFY(endsAtBlockStart);

        editor.SetCursorPosition(7);
        QCOMPARE(editor.SelectWordUnderCursor(), QStringLiteral("two"));
        QCOMPARE(editor.GetSelectedText(), QStringLiteral("two"));
        QCOMPARE(editor.GetCurrentLineForExecute(), QStringLiteral("one two"));

        editor.SetCursorSelection(5, 2); // anchor behind the position: the text goes after "one"
        editor.ClearSelectionAndInsertText(QStringLiteral("!"));
        QCOMPARE(editor.GetCurrentLineText(), QStringLiteral("  one! two"));

        editor.SetText(QStringLiteral("x\n\tab\tc d"));
        editor.SetCursorSelection(editor.GetText().size() - 2, editor.GetText().size());
        int line, column, selected;
        editor.GetCursorStatus(line, column, selected);
        // Line 2; tab to 4, "ab" to 6, tab to 8, "c d" to 11: column 12; two characters selected.
        QCOMPARE((QList<int>{line, column, selected}), (QList<int>{2, 12, 2}));
    }

    void scrollValueWaitsForTheEditorToShow()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::TEXT), nullptr);
        editor.SetText(QString(QLatin1Char('\n')).repeated(499)); // 500 lines
        editor.resize(300, 200);
        editor.SetVerticalScrollBarValue(120);
        QCOMPARE(editor.GetVerticalScrollBarValue(), 0);
        editor.show();
        QVERIFY(QTest::qWaitForWindowExposed(&editor));
        QCOMPARE(editor.GetVerticalScrollBarValue(), 120);
        editor.SetVerticalScrollBarValue(40);
        QCOMPARE(editor.GetVerticalScrollBarValue(), 40);
    }

    // Both languages share the editing and running entries; Python adds its submenu before the help.
    void contextMenuOffersTheLanguagesEntries()
    {
        KeyBindings bindings;
        CodeEditor mel(Properties(CodeEditorLanguage::MEL), &bindings);
        QMenu* menu = mel.CreateContextMenu(); // belongs to the editor
        const QStringList melTexts = ActionTexts(menu);
        const QStringList help{QStringLiteral("Quick Help"), QStringLiteral("Command Reference")};
        QCOMPARE(melTexts.mid(melTexts.size() - 2), help);
        QAction* execute = menu->actions().at(melTexts.indexOf(QStringLiteral("Execute")));
        QCOMPARE(execute->shortcut(), bindings.GetShortcut(KeySequenceType::Execute));
        QSignalSpy executeSpy(&mel, &CodeEditor::ExecuteRequested);
        execute->trigger();
        QCOMPARE(executeSpy.count(), 1);

        Settings::pythonRevertModuleStateOnExecute = true;
        CodeEditor python(Properties(CodeEditorLanguage::PYTHON), &bindings);
        menu = python.CreateContextMenu();
        const QStringList pythonTexts = ActionTexts(menu);
        const QStringList pythonEntries{QStringLiteral("Python"), QStringLiteral("-")};
        QCOMPARE(pythonTexts, melTexts.mid(0, melTexts.size() - 2) + pythonEntries + help);
        QMenu* submenu = menu->actions().at(pythonTexts.indexOf(QStringLiteral("Python")))->menu();
        QVERIFY(submenu);
        QCOMPARE(ActionTexts(submenu).size(), 7);
        QAction* toggle = submenu->actions().last();
        QCOMPARE(toggle->text(), QStringLiteral("Revert Module State on Execute"));
        QVERIFY(toggle->isCheckable() && toggle->isChecked());
        QSignalSpy toggleSpy(&python, &CodeEditor::TogglePythonRevertModuleStateOnExecuteRequested);
        toggle->trigger();
        QCOMPARE(toggleSpy.count(), 1);

        python.SetText(QStringLiteral("ls -sl"));
        python.selectAll();
        QSignalSpy helpSpy(&python, &CodeEditor::QuickHelpChanged);
        menu->actions().at(pythonTexts.indexOf(QStringLiteral("Quick Help")))->trigger();
        QCOMPARE(helpSpy.count(), 1);
        QCOMPARE(helpSpy.at(0).at(0).toString(), QStringLiteral("ls -sl"));
        QCOMPARE(helpSpy.at(0).at(1).toBool(), true);
    }

    void droppedFilesAreLeftToTheParent()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::TEXT), nullptr);
        QMimeData files, text;
        files.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a.mel"))});
        text.setText(QStringLiteral("dragged"));
        for (const QMimeData* data : {&files, &text})
        {
            QDragEnterEvent drag(QPoint(5, 5), Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(editor.viewport(), &drag);
            QCOMPARE(drag.isAccepted(), data == &text);
        }
    }

    void typedTextShowsItsMessages_data()
    {
        // Language, text, typed at its end, the marked line, its message and colour, whether it is
        // underlined, and the errors and warnings counted.
        QTest::addColumn<MessageRow>("row");
        const auto py = CodeEditorLanguage::PYTHON;
        const auto mel = CodeEditorLanguage::MEL;
        const auto row = [](const char* name, const MessageRow& values) { QTest::newRow(name) << values; };
        row("python unexpected indent", {py, "import os\n\ndef f():\n    pass\n", "        x = 1", 4,
                                         "Unexpected indent", ERROR_COLOR, true, 2, 0});
        row("python syntax error from the host",
            {py, "a = 1\nb = 2\n", "c = = 3", 2, "Invalid syntax", ERROR_COLOR, true, 1, 0});
        row("python mixed indent warning",
            {py, "if a:\n\t b = 1\n", "c = 2", 1, "Indent contains both tabs and spaces", WARNING_COLOR, true,
             0, 1});
        row("python TODO info, no underline",
            {py, "x = 1\n", "# TODO: tidy", 1, "TODO:", INFO_COLOR, false, 0, 0});
        row("mel empty lines warning",
            {mel, "\n\n", "print 1;", 0,
             "Empty line(s) at start of file. Line numbers in trace may be incorrect.", WARNING_COLOR, false,
             0, 1});
        row("mel TODO info",
            {mel, "global proc f() {}\n", "// TODO: more", 1, "TODO:", INFO_COLOR, false, 0, 0});
        row("mel shows no parse error",
            {mel, "print \"a;\n", "proc f( {", -1, QString(), ERROR_COLOR, false, 0, 0});
    }

    void typedTextShowsItsMessages()
    {
        QFETCH(MessageRow, row);
        const auto& [language, text, typed, line, message, color, underlined, errorCount, warningCount] = row;
        Open(text, language);
        CodeEditor* editor = Editor();
        TypeAtEnd(typed);
        QVERIFY(lastParser);
        QCOMPARE(lastParser, group->GetParser());
        QCOMPARE(editor->GetNumberOfErrors(), errorCount);
        QCOMPARE(editor->GetNumberOfWarnings(), warningCount);

        QWidget* gutter = editor->findChild<QWidget*>(QStringLiteral("lineNumbers"));
        QWidget* bar = editor->verticalScrollBar()->findChild<QWidget*>(QStringLiteral("errorBarOverlay"));
        QVERIFY(gutter && bar);
        // Drawn over the scroll bar, the error bar leaves the clicks to it.
        QVERIFY(bar->testAttribute(Qt::WA_TransparentForMouseEvents));
        QCOMPARE(gutter->width(), editor->GetLineNumberWidth());
        const QImage gutterImage = gutter->grab().toImage();
        const QImage barImage = bar->grab().toImage();
        const int blocks = editor->document()->blockCount();
        const int dotX = editor->GetGutterWidth() / 2;

        for (int block = 0; block < blocks; ++block)
        {
            const QRect rect = LineRect(editor, block);
            const bool marked = block == line;
            const QRgb dotPixel = gutterImage.pixel(dotX, rect.center().y());
            QVERIFY2(Resembles(dotPixel, color) == marked,
                     qPrintable(QStringLiteral("gutter at line %1: %2").arg(block).arg(dotPixel, 0, 16)));
            const int barY = block * bar->height() / blocks + 1;
            const int barCount = CountResembling(barImage, QRect(0, barY, bar->width(), 2), color);
            QVERIFY2((barCount > 0) == marked, qPrintable(QStringLiteral("bar at line %1").arg(block)));
        }
        // Errors and warnings, not infos, are underlined in the text (a mark on a line end shows nothing).
        const QTextCharFormat* format = color == ERROR_COLOR     ? &ColorSettings::errorFormat
                                        : color == WARNING_COLOR ? &ColorSettings::warningFormat
                                                                 : &ColorSettings::infoFormat;
        QCOMPARE(SelectedTexts(*editor, format).join(QString()).remove(QChar::ParagraphSeparator).isEmpty(),
                 !underlined);
        if (line < 0)
            return;

        // The gutter's tooltip and the status bar's text for the line.
        const QRect rect = LineRect(editor, line);
        QCOMPARE(ShowToolTip(gutter, QPoint(dotX, rect.center().y())), message);
        editor->setTextCursor(QTextCursor(editor->document()->findBlockByNumber(line)));
        QCOMPARE(editor->GetErrorAndWarningsText(), message);
        if (underlined)
            QCOMPARE(ShowToolTip(editor->viewport(), QPoint(rect.left() + 2, rect.center().y())), message);
        QToolTip::hideText();
    }

    void hiddenMessagesWhenDisplayIsOff()
    {
        Settings::pythonDisplayErrors = false;
        Open(QStringLiteral("a = 1\n"), CodeEditorLanguage::PYTHON);
        TypeAtEnd(QStringLiteral("  b = = 2"));
        // The parser's messages are dropped; nothing is marked, dotted or told.
        QCOMPARE(Editor()->GetNumberOfWarnings(), 0);
        QCOMPARE(Editor()->GetErrorAndWarningsText(), QString());
        QCOMPARE(SelectedTexts(*Editor(), &ColorSettings::errorFormat), QStringList());
        QWidget* gutter = Editor()->findChild<QWidget*>(QStringLiteral("lineNumbers"));
        QCOMPARE(CountResembling(gutter->grab().toImage(), gutter->rect(), ERROR_COLOR), 0);
    }

    void plainTextHasNoParser()
    {
        Open(QStringLiteral("if a:\nb"));
        lastParser = reinterpret_cast<BaseParser*>(this);
        TypeAtEnd(QStringLiteral(")"));
        QCOMPARE(lastParser, nullptr);
        QCOMPARE(Editor()->GetNumberOfErrors(), 0);
    }

    void deletingTheTextOfAMessageErasesItAtOnce()
    {
        Open(QStringLiteral("if a:\n\t b = 1\n"), CodeEditorLanguage::PYTHON);
        TypeAtEnd(QStringLiteral("c = 3"));
        CodeEditor* editor = Editor();
        QCOMPARE(editor->GetNumberOfWarnings(), 1);
        // Typing a line above moves the mark along, before any new parse.
        QTextCursor cursor(editor->document());
        cursor.insertText(QStringLiteral("# \n"));
        QCOMPARE(editor->GetNumberOfWarnings(), 1);
        editor->setTextCursor(QTextCursor(editor->document()->findBlockByNumber(2)));
        QCOMPARE(editor->GetErrorAndWarningsText(), QStringLiteral("Indent contains both tabs and spaces"));
        cursor.setPosition(editor->document()->findBlockByNumber(2).position());
        cursor.setPosition(cursor.position() + 2, QTextCursor::KeepAnchor);
        QCOMPARE(cursor.selectedText(), QStringLiteral("\t "));
        cursor.removeSelectedText();
        QCOMPARE(editor->GetNumberOfWarnings(), 0);
        QCOMPARE(editor->GetErrorAndWarningsText(), QString());
    }

    void offsetParserMessages_data()
    {
        // A message from start to end; an edit at position removes and adds characters; the message
        // then runs from newStart to newEnd (-100: erased).
        QTest::addColumn<OffsetRow>("row");
        QTest::newRow("insert before") << OffsetRow{10, 12, 2, 0, 3, 13, 15};
        QTest::newRow("insert after") << OffsetRow{10, 12, 20, 0, 3, 10, 12};
        QTest::newRow("insert at the start") << OffsetRow{10, 12, 10, 0, 3, 13, 15};
        QTest::newRow("insert inside") << OffsetRow{10, 12, 11, 0, 3, 10, 15};
        QTest::newRow("delete the text") << OffsetRow{10, 12, 10, 2, 0, -100, -100};
        QTest::newRow("delete over the start") << OffsetRow{10, 12, 8, 3, 0, 10, 9};
        QTest::newRow("delete the tail from inside") << OffsetRow{10, 12, 11, 1, 0, 10, 12};
        QTest::newRow("delete behind a point mark") << OffsetRow{10, 10, 10, 1, 0, 10, 10};
        QTest::newRow("delete a mark's only character") << OffsetRow{10, 11, 10, 1, 0, -100, -100};
        QTest::newRow("replace behind") << OffsetRow{10, 12, 12, 2, 1, 10, 12};
    }

    void offsetParserMessages()
    {
        QFETCH(OffsetRow, row);
        const auto [start, end, position, removed, added, newStart, newEnd] = row;
        ParserMessage message;
        message.start = start;
        message.end = end;
        QList<ParserMessage> messages{message};
        CodeEditor::OffsetParserMessages(messages, position, removed, added);
        QList<int> bounds;
        for (const ParserMessage& m : std::as_const(messages))
            bounds << m.start << m.end;
        QCOMPARE(bounds, newStart == -100 ? QList<int>() : (QList<int>{newStart, newEnd}));
    }

    void matchedBraces_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("cursor");
        QTest::addColumn<QList<int>>("marked");

        QTest::newRow("before an opener") << QStringLiteral("f(a, (b))") << 1 << QList<int>{1, 8};
        QTest::newRow("after a closer") << QStringLiteral("f(a, (b))") << 9 << QList<int>{8, 1};
        QTest::newRow("between ) and ( the ( wins") << QStringLiteral("(a)(b)") << 3 << QList<int>{3, 5};
        QTest::newRow("over lines") << QStringLiteral("{\n  x;\n  {\n  }\n}") << 0 << QList<int>{0, 15};
        QTest::newRow("backwards over lines")
            << QStringLiteral("{\n  x;\n  {\n  }\n}") << 16 << QList<int>{15, 0};
        QTest::newRow("in a string") << QStringLiteral("a = \"(\" + (b)") << 5 << QList<int>();
        QTest::newRow("string bracket is skipped")
            << QStringLiteral("(a, \")\", b)") << 0 << QList<int>{0, 10};
        QTest::newRow("unmatched") << QStringLiteral("{ a ") << 0 << QList<int>();
    }

    void matchedBraces()
    {
        QFETCH(QString, text);
        QFETCH(int, cursor);
        QFETCH(QList<int>, marked);
        CodeEditor editor(Properties(CodeEditorLanguage::MEL), nullptr);
        editor.SetText(text);
        QTextCursor textCursor = editor.textCursor();
        textCursor.setPosition(cursor);
        editor.setTextCursor(textCursor);
        QList<int> positions;
        for (const QTextEdit::ExtraSelection& selection : editor.QPlainTextEdit::extraSelections())
        {
            if (selection.format == *CodeEditor::sMatchingBracesFormat)
            {
                QCOMPARE(selection.cursor.selectionEnd() - selection.cursor.selectionStart(), 1);
                positions.append(selection.cursor.selectionStart());
            }
        }
        QCOMPARE(positions, marked);
    }

    void matchingSelection_data()
    {
        QTest::addColumn<SelectionRow>("row"); // language, words only, text, selection, matches marked
        const auto mel = CodeEditorLanguage::MEL;
        const auto py = CodeEditorLanguage::PYTHON;
        QTest::newRow("words only") << SelectionRow{py, true, "foo foobar foo", 0, 3, 2};
        QTest::newRow("anywhere") << SelectionRow{py, false, "foo foobar foo", 0, 3, 3};
        QTest::newRow("dollar variable marks variables only")
            << SelectionRow{mel, true, "$foo = foo + $foo;", 0, 4, 2};
        QTest::newRow("dot is no word") << SelectionRow{py, true, "a.b a.b", 0, 3, 0};
        QTest::newRow("dot anywhere") << SelectionRow{py, false, "a.b axb a.b", 0, 3, 2};
        QTest::newRow("blank selection") << SelectionRow{py, false, "a  b  c", 1, 3, 0};
    }

    void matchingSelection()
    {
        QFETCH(SelectionRow, row);
        const auto& [language, wordsOnly, text, start, end, hits] = row;
        Settings::codeEditorMatchedSelectionWordsOnly = wordsOnly;
        Settings::melDoubleClickIncludesDollarSign = true;
        CodeEditor editor(Properties(language), nullptr);
        editor.SetText(text);
        editor.SetCursorSelection(start, end);
        const QStringList marked = SelectedTexts(editor, CodeEditor::sMatchingSelectionFormat);
        QCOMPARE(marked.size(), hits);
        for (const QString& m : marked)
            QCOMPARE(m, text.mid(start, end - start));
    }

    void indentGuides_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<int>>("counts");
        QTest::newRow("levels") << QStringLiteral("a\n    b\n        c\n  d") << QList<int>{0, 1, 2, 1};
        QTest::newRow("tab") << QStringLiteral("\tb\n\t  c") << QList<int>{1, 2};
        QTest::newRow("blank lines take the next line's")
            << QStringLiteral("if a:\n    b\n\n    \n    c\n\nd") << QList<int>{0, 1, 1, 1, 1, 0, 0};
    }

    void indentGuides()
    {
        QFETCH(QString, text);
        QFETCH(QList<int>, counts);
        CodeEditor editor(Properties(CodeEditorLanguage::PYTHON), nullptr);
        editor.SetText(text);
        QList<int> actual;
        for (QTextBlock block = editor.document()->firstBlock(); block.isValid(); block = block.next())
            actual.append(editor.GetIndentGuideCount(block));
        QCOMPARE(actual, counts);
    }

    void optionsDecideTheMatches_data()
    {
        QTest::addColumn<SearchRow>("row"); // search, option buttons, results shown, first match
        const auto row = [](const char* name, const SearchRow& values) { QTest::newRow(name) << values; };
        row("case folded", {"foo", {}, "1 of 6", 0});
        row("match case", {"Foo", {"matchCaseButton"}, "1 of 1", 4});
        row("whole word", {"foo", {"matchWordButton"}, "1 of 4", 0});
        row("word and case", {"fOO", {"matchWordButton", "matchCaseButton"}, "1 of 1", 29});
        row("regex", {"fo+d", {"regExpButton"}, "1 of 1", 8});
        row("regex is literal without the option", {"fo+d", {}, "No Results", -1});
        row("regex anchored per line", {"^foo", {"regExpButton"}, "1 of 2", 0});
        row("whole word wraps the expression", {"fo+", {"regExpButton", "matchWordButton"}, "1 of 4", 0});
        row("invalid expression", {"(foo", {"regExpButton"}, "No Results", -1});
        row("no match", {"zebra", {}, "No Results", -1});
    }

    void optionsDecideTheMatches()
    {
        QFETCH(SearchRow, row);
        const auto& [search, options, results, firstStart] = row;
        OpenFind(SAMPLE);
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
        OpenFind(SAMPLE);
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
        OpenFind(text);
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

        Click("closeButton");
        QVERIFY(!Bar()->isVisible());
        QVERIFY(!Editor()->IsFindInSelectionEnabled());
    }

    // A range that runs to the end of the text holds the match that ends there.
    void findInSelectionReachesTheEnd()
    {
        OpenFind(QStringLiteral("x1\nab x2"));
        Editor()->moveCursor(QTextCursor::End);
        Editor()->moveCursor(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
        Click("findInSelectionButton");
        Click("regExpButton");
        TypeSearch(QStringLiteral("x\\d"));
        QCOMPARE(Results(), QStringLiteral("1 of 1"));
        QCOMPARE(Selected(), QStringLiteral("x2"));
    }

    void replaceOneByOne()
    {
        OpenFind(SAMPLE, true);
        Click("matchCaseButton");
        TypeSearch(QStringLiteral("foo"));
        QCOMPARE(Results(), QStringLiteral("1 of 4"));
        // An empty replace text changes nothing.
        Click("replaceButton");
        Click("replaceAllButton");
        QCOMPARE(Editor()->toPlainText(), SAMPLE);
        ReplaceField()->setFocus();
        QTest::keyClicks(ReplaceField(), QStringLiteral("baz"));
        QTest::keyClick(ReplaceField(), Qt::Key_Return);
        QCOMPARE(Editor()->toPlainText(), QStringLiteral("baz Foo food\nbar foo\nfoo_bar fOO\nend"));
        QCOMPARE(SelectionStart(), 8);
        QCOMPARE(Results(), QStringLiteral("1 of 3"));
        Click("replaceButton");
        Click("replaceButton");
        QCOMPARE(Editor()->toPlainText(), QStringLiteral("baz Foo bazd\nbar baz\nfoo_bar fOO\nend"));
        QCOMPARE(Results(), QStringLiteral("1 of 1"));
    }

    void replaceAllUsesCapturesAndKeepsTheCursor()
    {
        OpenFind(SAMPLE, true);
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
        Editor()->document()->undo();
        QCOMPARE(Editor()->toPlainText(), SAMPLE);
    }

    void tabStaysInTheBarAndEscapeClosesIt()
    {
        OpenFind(SAMPLE, true);
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

        // Opened again, the bar takes the word under the cursor.
        Editor()->setFocus();
        Editor()->SetCursorPosition(SAMPLE.indexOf(QLatin1String("bar")) + 1);
        group->ShowFindReplace();
        QCOMPARE(SearchField()->text(), QStringLiteral("bar"));
        QVERIFY(SearchField()->hasFocus());
        QCOMPARE(Results(), QStringLiteral("1 of 2"));
    }

    void changingTabClearsTheSearch()
    {
        OpenFind(SAMPLE);
        group->InsertCodeEditor(-1, Properties(CodeEditorLanguage::TEXT, QStringLiteral("/tmp/b.txt")),
                                QStringLiteral("foo foo"));
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

    void dominantLineEnding_data()
    {
        QTest::addColumn<EndingRow>("row"); // bytes, the ending taken, whether they are mixed
        QTest::newRow("none") << EndingRow{"one line", LineEnding::LF, false};
        QTest::newRow("lf") << EndingRow{"a\nb\n", LineEnding::LF, false};
        QTest::newRow("crlf") << EndingRow{"a\r\nb\r\n", LineEnding::CRLF, false};
        QTest::newRow("cr") << EndingRow{"a\rb\r", LineEnding::CR, false};
        QTest::newRow("crlf over lf") << EndingRow{"a\r\nb\r\nc\n", LineEnding::CRLF, true};
        QTest::newRow("tie of lf and crlf goes to lf") << EndingRow{"a\r\nb\n", LineEnding::LF, true};
        QTest::newRow("tie of crlf and cr goes to crlf") << EndingRow{"a\r\nb\rc", LineEnding::CRLF, true};
        QTest::newRow("tie of lf and cr goes to lf") << EndingRow{"a\rb\n", LineEnding::LF, true};
        QTest::newRow("cr over both") << EndingRow{"a\rb\rc\r\nd\n", LineEnding::CR, true};
    }

    void dominantLineEnding()
    {
        QFETCH(EndingRow, row);
        const auto& [bytes, ending, mixed] = row;
        TextFileFormat format;
        const QString text = TextFileCodec::Decode(bytes, format);
        QVERIFY(!text.contains(QLatin1Char('\r')));
        QCOMPARE(format.lineEnding, ending);
        QCOMPARE(format.mixedLineEndings, mixed);
    }

    void latin1HoldsItsWholeRange_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("lossless");
        QTest::newRow("ascii") << QStringLiteral("abc") << true;
        QTest::newRow("last latin-1 character") << QStringLiteral("caf\u00e9 \u00ff") << true;
        QTest::newRow("first beyond") << QStringLiteral("\u0100") << false;
        QTest::newRow("euro sign") << QStringLiteral("5 \u20ac") << false;
    }

    void latin1HoldsItsWholeRange()
    {
        QFETCH(QString, text);
        QFETCH(bool, lossless);
        TextFileFormat format;
        format.encoding = TextFileFormat::Encoding::Latin1;
        bool held = !lossless;
        const QByteArray bytes = TextFileCodec::Encode(text, format, &held);
        QCOMPARE(held, lossless);
        if (lossless)
            QCOMPARE(QString::fromLatin1(bytes), text);
    }

    void changesAreReported_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<bool>("reported");
        // Each step: "append" (from another process), "delete", "save" (QSaveFile, a rename over the
        // file), "rename" (a finished temporary file renamed over it, as other editors save), "move"
        // (the buffer takes another path), "buffer" (it becomes an internal buffer); the last one is
        // the change that is or is not reported.
        QTest::newRow("file appended") << QStringList{"append"} << true;
        QTest::newRow("file deleted") << QStringList{"delete"} << true;
        QTest::newRow("buffer appended") << QStringList{"buffer", "append"} << false;
        QTest::newRow("buffer deleted") << QStringList{"buffer", "delete"} << false;
        QTest::newRow("append after saves") << QStringList{"save", "save", "rename", "append"} << true;
        QTest::newRow("old path after a move") << QStringList{"move", "append"} << false;
        QTest::newRow("new path after a move") << QStringList{"move", "append other"} << true;
        QTest::newRow("moved, then a buffer") << QStringList{"move", "buffer", "append other"} << false;
    }

    void changesAreReported()
    {
        QFETCH(QStringList, steps);
        QFETCH(bool, reported);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("watched.mel"));
        const QString other = dir.filePath(QStringLiteral("other.mel"));
        QVERIFY(TestFiles::Write(path, "print 1;\n") && TestFiles::Write(other, "print 5;\n"));
        CodeEditor editor(Properties(CodeEditorLanguage::MEL, path, CodeEditorType::FILE), nullptr);
        QSignalSpy spy(&editor, &CodeEditor::FileChanged);
        QString watched = path;
        for (const QString& step : std::as_const(steps))
        {
            const bool last = &step == &steps.constLast();
            if (step == QLatin1String("buffer"))
                editor.SetProperties(Properties(CodeEditorLanguage::MEL, watched));
            else if (step == QLatin1String("move"))
                editor.SetProperties(
                    Properties(CodeEditorLanguage::MEL, watched = other, CodeEditorType::FILE));
            else if (step.startsWith(QLatin1String("append")))
                QVERIFY(AppendFromAnotherProcess(step == QLatin1String("append") ? path : other));
            else if (step == QLatin1String("delete"))
                QVERIFY(QFile::remove(path));
            else if (step == QLatin1String("save"))
            {
                QSaveFile file(path);
                QVERIFY(file.open(QIODevice::WriteOnly));
                file.write("print 2;\n");
                QVERIFY(file.commit());
            }
            else if (step == QLatin1String("rename"))
            {
                const QString temporary = dir.filePath(QStringLiteral("watched.mel.tmp"));
                QVERIFY(TestFiles::Write(temporary, "print 3;\n"));
                QCOMPARE(std::rename(QFile::encodeName(temporary).constData(),
                                     QFile::encodeName(path).constData()),
                         0);
            }
            if (last)
                break;
            // A save is seen, and the watch goes on after it.
            if (step == QLatin1String("save") || step == QLatin1String("rename"))
                QTRY_VERIFY_WITH_TIMEOUT(spy.count() >= 1, NOTICE_TIMEOUT_MS);
            QTest::qWait(200);
            spy.clear();
        }
        if (!reported)
        {
            QTest::qWait(QUIET_MS);
            QCOMPARE(spy.count(), 0);
            return;
        }
        QTRY_VERIFY_WITH_TIMEOUT(spy.count() >= 1, NOTICE_TIMEOUT_MS);
        QCOMPARE(spy.last().first().toString(), watched);
    }
};

QTEST_MAIN(TestCodeEditor)
#include "tst_CodeEditor.moc"
