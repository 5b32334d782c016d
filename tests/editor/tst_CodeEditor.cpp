#include "HostFixture.h"
#include "editor/CodeEditor.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QMimeData>
#include <QtGui/QSyntaxHighlighter>
#include <QtGui/QTextDocument>
#include <QtTest/QtTest>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollBar>

#include <memory>

namespace
{
CodeEditorProperties Properties(CodeEditorLanguage language,
                                const QString& path = QStringLiteral("/tmp/buffer"),
                                CodeEditorType type = CodeEditorType::INTERNAL_BUFFER)
{
    CodeEditorProperties properties;
    properties.type = type;
    properties.language = language;
    properties.filePath = path;
    properties.label = QStringLiteral("buffer");
    return properties;
}

class CountingHighlighter : public QSyntaxHighlighter
{
public:
    using QSyntaxHighlighter::QSyntaxHighlighter;
    int blocksSeen = 0;

protected:
    void highlightBlock(const QString&) override { ++blocksSeen; }
};

// An editor whose language layer is a counting highlighter, to see when it is replaced and run.
class HighlightedEditor : public CodeEditor
{
public:
    explicit HighlightedEditor(CodeEditorProperties properties) : CodeEditor(std::move(properties), nullptr)
    {
        SetProperties(GetProperties(), true);
    }
    QList<CodeEditorLanguage> created;
    CountingHighlighter* last = nullptr;

protected:
    QSyntaxHighlighter* CreateHighlighter() override
    {
        created.append(GetLanguage());
        last = new CountingHighlighter(document());
        return last;
    }
};

QStringList ActionTexts(const QMenu* menu)
{
    QStringList texts;
    for (const QAction* action : menu->actions())
        texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    return texts;
}
} // namespace

class TestCodeEditor : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;

private slots:
    void initTestCase()
    {
        fixture = std::make_unique<HostFixture>();
        ColorSettings::Initialize();
    }

    void cleanupTestCase() { fixture.reset(); }

    void init() { Settings::ResetToDefaults(); }

    void typingPausesGiveOneTextChangedAfterTheLastKey()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::MEL, QStringLiteral("/tmp/typed.mel")), nullptr);
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
        QCOMPARE(spy.at(0).at(0).toString(), QStringLiteral("/tmp/typed.mel"));
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

    void modificationStateFollowsTheDocument()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::TEXT), nullptr);
        editor.SetText(QStringLiteral("abc"));
        editor.SetModified(false);
        QSignalSpy spy(&editor, &CodeEditor::ModificationChanged);
        QVERIFY(!editor.IsModified());

        editor.textCursor().insertText(QStringLiteral("x"));
        QVERIFY(editor.IsModified());
        editor.textCursor().insertText(QStringLiteral("y"));
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toBool(), true);
        QCOMPARE(spy.at(0).at(1).value<CodeEditor*>(), &editor);

        editor.SetModified(false);
        QCOMPARE(spy.count(), 2);
        QCOMPARE(spy.at(1).at(0).toBool(), false);
        editor.undo();
        QVERIFY(editor.IsModified());
    }

    void zoomIsHeldWithinTheFontLimits_data()
    {
        QTest::addColumn<int>("zoom");
        QTest::addColumn<double>("scale");
        QTest::addColumn<int>("expectedSize");
        QTest::addColumn<int>("expectedZoom");
        QTest::newRow("no zoom") << 0 << 1.0 << 9 << 0;
        QTest::newRow("within") << 3 << 1.0 << 12 << 3;
        QTest::newRow("above the maximum") << 100 << 1.0 << 24 << 15;
        QTest::newRow("below the minimum") << -100 << 1.0 << 6 << -3;
        QTest::newRow("scaled") << 1 << 1.5 << 15 << 1;
        QTest::newRow("scale ignored when not positive") << 1 << -2.0 << 10 << 1;
    }

    void zoomIsHeldWithinTheFontLimits()
    {
        QFETCH(int, zoom);
        QFETCH(double, scale);
        QFETCH(int, expectedSize);
        QFETCH(int, expectedZoom);
        Settings::codeEditorFont.setPointSize(9);
        Settings::customScaleValue = scale;
        CodeEditor editor(Properties(CodeEditorLanguage::MEL), nullptr);
        Settings::codeEditorZoom = zoom;
        editor.UpdateFont();
        QCOMPARE(editor.font().pointSize(), expectedSize);
        QCOMPARE(Settings::codeEditorZoom, expectedZoom);
        QCOMPARE(editor.font().family(), Settings::codeEditorFont.family());
        QCOMPARE(editor.GetTabStopPixels(), editor.fontMetrics().horizontalAdvance(QLatin1Char(' ')) * 4);
    }

    void ctrlWheelAsksForAnotherFontSize()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::MEL), nullptr);
        QSignalSpy bigger(&editor, &CodeEditor::IncreaseFontSizeRequested);
        QSignalSpy smaller(&editor, &CodeEditor::DecreaseFontSizeRequested);
        auto wheel = [&editor](int delta, Qt::KeyboardModifiers modifiers)
        {
            QWheelEvent event(QPointF(5, 5), editor.viewport()->mapToGlobal(QPointF(5, 5)), QPoint(),
                              QPoint(0, delta), Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
            QApplication::sendEvent(editor.viewport(), &event);
        };
        Settings::codeEditorMouseWheelChangesFontSize = true;
        wheel(120, Qt::ControlModifier);
        wheel(-120, Qt::ControlModifier);
        wheel(-120, Qt::ControlModifier);
        wheel(120, Qt::ControlModifier | Qt::ShiftModifier);
        wheel(120, Qt::NoModifier);
        QCOMPARE(bigger.count(), 1);
        QCOMPARE(smaller.count(), 2);
        Settings::codeEditorMouseWheelChangesFontSize = false;
        wheel(120, Qt::ControlModifier);
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

        // A language change brings the other language's tab rules.
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
        CodeEditor editor(Properties(CodeEditorLanguage::MEL), nullptr);
        QCOMPARE(editor.palette().color(QPalette::Active, QPalette::Text), QColor(1, 2, 3));
        QCOMPARE(editor.viewport()->palette().color(QPalette::Inactive, QPalette::Base), QColor(4, 5, 6));
        ColorSettings::Initialize();
    }

    void languageChangeReplacesTheHighlighter()
    {
        HighlightedEditor editor(Properties(CodeEditorLanguage::MEL));
        editor.SetText(QStringLiteral("a\nb\nc"));
        QCOMPARE(editor.created, QList<CodeEditorLanguage>{CodeEditorLanguage::MEL});
        QPointer<CountingHighlighter> first = editor.last;

        editor.SetProperties(Properties(CodeEditorLanguage::MEL, QStringLiteral("/tmp/other")));
        QCOMPARE(editor.created.size(), 1);
        editor.SetProperties(Properties(CodeEditorLanguage::PYTHON));
        QCOMPARE(editor.created.last(), CodeEditorLanguage::PYTHON);
        QVERIFY(first.isNull());

        editor.last->blocksSeen = 0;
        editor.UpdateFontsAndColors();
        QCOMPARE(editor.last->blocksSeen, 3);
    }

    void linesAndPositionsOutOfRangeAreIgnored()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::TEXT), nullptr);
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
    }

    void selectionQueries()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::TEXT), nullptr);
        editor.SetText(QStringLiteral("  one two\nthree\nfour"));
        int start, end, first, last;
        bool endsAtBlockStart;
        editor.SetCursorPosition(3);
        QVERIFY(!editor.HasSelection(start, end, first, last, endsAtBlockStart));
        QCOMPARE(start, 3);
        QCOMPARE(end, 3);
        QCOMPARE(first, 0);
        QCOMPARE(last, 0);

        editor.SetCursorSelection(16, 4); // from the start of "four" back into "one"
        QVERIFY(editor.HasSelection(start, end, first, last, endsAtBlockStart));
        QCOMPARE(start, 4);
        QCOMPARE(end, 16);
        QCOMPARE(first, 0);
        QCOMPARE(last, 2);
        QVERIFY(endsAtBlockStart);

        editor.SetCursorPosition(7);
        QCOMPARE(editor.SelectWordUnderCursor(), QStringLiteral("two"));
        QCOMPARE(editor.GetSelectedText(), QStringLiteral("two"));
        QCOMPARE(editor.GetCurrentLineForExecute(), QStringLiteral("one two"));

        editor.SetCursorSelection(5, 2); // anchor behind the position: the text goes after "one"
        editor.ClearSelectionAndInsertText(QStringLiteral("!"));
        QCOMPARE(editor.GetCurrentLineText(), QStringLiteral("  one! two"));
    }

    void cursorStatusCountsTabsToTheirStops()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::TEXT), nullptr);
        editor.SetText(QStringLiteral("x\n\tab\tc d"));
        editor.SetCursorSelection(editor.GetText().size() - 2, editor.GetText().size());
        int line, column, selected;
        editor.GetCursorStatus(line, column, selected);
        QCOMPARE(line, 2);
        QCOMPARE(column, 12); // tab to 4, "ab" to 6, tab to 8, "c d" to 11
        QCOMPARE(selected, 2);
    }

    void textForPythonIsEscapedInOrder()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::PYTHON), nullptr);
        QVERIFY(!editor.GetText().isNull());
        editor.SetText(QStringLiteral("x = \"a\\b\"  \ny \t "));
        QCOMPARE(editor.GetTextForPythonProcessing(), QStringLiteral(R"(x = \"a\\b\"  \ny\n)"));
    }

    void scrollValueWaitsForTheEditorToShow()
    {
        CodeEditor editor(Properties(CodeEditorLanguage::TEXT), nullptr);
        QStringList lines;
        for (int i = 0; i < 500; ++i)
            lines.append(QString::number(i));
        editor.SetText(lines.join(QLatin1Char('\n')));
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
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/a.mel"))});
        QDragEnterEvent fileDrag(QPoint(5, 5), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(editor.viewport(), &fileDrag);
        QVERIFY(!fileDrag.isAccepted());

        QMimeData text;
        text.setText(QStringLiteral("dragged"));
        QDragEnterEvent textDrag(QPoint(5, 5), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(editor.viewport(), &textDrag);
        QVERIFY(textDrag.isAccepted());
    }
};

QTEST_MAIN(TestCodeEditor)
#include "tst_CodeEditor.moc"
