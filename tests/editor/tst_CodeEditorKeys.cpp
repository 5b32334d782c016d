#include "HostFixture.h"
#include "editor/CodeEditor.h"
#include "plugin/MayaUtil.h"
#include "settings/ColorSettings.h"
#include "settings/Settings.h"

#include <QtGui/QAction>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtTest/QtTest>
#include <QtWidgets/QVBoxLayout>

#include <memory>

namespace
{
CodeEditorProperties Properties(CodeEditorLanguage language)
{
    CodeEditorProperties properties;
    properties.language = language;
    properties.filePath = QStringLiteral("/tmp/keys");
    return properties;
}
} // namespace

// Stands in for a completer: a window with the completer's Accepted signal.
class Popup : public QWidget
{
    Q_OBJECT

public:
    explicit Popup(QWidget* parent) : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint) {}

signals:
    void Accepted(const QString& text, int prefixLength);
};

// Records what the key handling asks of the layers that attach to the editor.
class RecordingEditor : public CodeEditor
{
public:
    explicit RecordingEditor(CodeEditorLanguage language) : CodeEditor(Properties(language), nullptr)
    {
        SetProperties(GetProperties(), true); // now the overrides below make the completer
    }

    QStringList calls;
    QList<bool> popupUpdates;
    QPointer<Popup> popup;
    bool backspaceTakesKey = false;

    void IncreaseIndent(bool fullLine) override
    {
        Record(QStringLiteral("IncreaseIndent(%1)").arg(fullLine));
    }
    void DecreaseIndent() override { Record(QStringLiteral("DecreaseIndent")); }
    void CustomCut() override { Record(QStringLiteral("CustomCut")); }
    void CustomCopy() override { Record(QStringLiteral("CustomCopy")); }
    void CustomPaste() override { Record(QStringLiteral("CustomPaste")); }

protected:
    void InsertNewLine() override
    {
        Record(QStringLiteral("InsertNewLine"));
        CodeEditor::InsertNewLine();
    }
    void InsertOpeningBrace(QChar c) override { Record(QStringLiteral("InsertOpeningBrace ") + c); }
    void InsertClosingBrace(QChar c) override { Record(QStringLiteral("InsertClosingBrace ") + c); }
    void InsertQuote(QChar c) override { Record(QStringLiteral("InsertQuote ") + c); }
    bool InsertBackspace() override
    {
        Record(QStringLiteral("InsertBackspace"));
        return backspaceTakesKey;
    }
    bool IsIgnoredBlockDataPosition(const QTextCursor&) const override { return false; }
    QWidget* CreateAutoCompleter() override
    {
        popup = new Popup(this);
        return popup;
    }
    void UpdateAutoCompleterPopup(const QTextCursor&, const QRect&, bool force) override
    {
        popupUpdates.append(force);
        popup->show();
    }

private:
    void Record(const QString& call) { calls.append(call); }
};

// Logs the key presses that reach a widget, including the ones it sends itself.
class KeyLog : public QObject
{
public:
    QList<QPair<int, Qt::KeyboardModifiers>> presses;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress)
        {
            const auto* key = static_cast<QKeyEvent*>(event);
            presses.append({key->key(), key->modifiers()});
        }
        return false;
    }
};

class TestCodeEditorKeys : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<QWidget> window;
    RecordingEditor* editor = nullptr;
    QAction* executeAction = nullptr;

    void Show(CodeEditorLanguage language, const QString& text)
    {
        window = std::make_unique<QWidget>();
        auto* layout = new QVBoxLayout(window.get());
        editor = new RecordingEditor(language);
        layout->addWidget(editor);
        executeAction = new QAction(window.get());
        executeAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Enter));
        executeAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        window->addAction(executeAction);
        window->resize(400, 300);
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        editor->setFocus();
        editor->SetText(text);
        editor->moveCursor(QTextCursor::End);
    }

    QString Line(int block) const { return editor->document()->findBlockByNumber(block).text(); }

private slots:
    void initTestCase()
    {
        fixture = std::make_unique<HostFixture>();
        ColorSettings::Initialize();
    }

    void cleanupTestCase() { fixture.reset(); }

    void init() { Settings::ResetToDefaults(); }

    void cleanup()
    {
        window.reset();
        editor = nullptr;
    }

    void keypadEnterRunsAsCtrlEnter()
    {
        Show(CodeEditorLanguage::MEL, QStringLiteral("print 1;"));
        QSignalSpy executed(executeAction, &QAction::triggered);
        QTest::keyClick(editor, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(executed.count(), 1);
        QCOMPARE(editor->GetText(), QStringLiteral("print 1;"));

        // Without a shortcut to take it, the Ctrl+Enter that the editor sends itself changes nothing.
        executeAction->setEnabled(false);
        KeyLog log;
        editor->installEventFilter(&log);
        QTest::keyClick(editor, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(log.presses.size(), 2);
        QCOMPARE(log.presses.at(1).first, int(Qt::Key_Enter));
        QCOMPARE(log.presses.at(1).second, Qt::KeyboardModifiers(Qt::ControlModifier));
        QCOMPARE(editor->GetText(), QStringLiteral("print 1;"));
        QVERIFY(editor->calls.isEmpty());
    }

    void keypadEnterWithModifiers_data()
    {
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<bool>("newLine");
        QTest::newRow("shift") << Qt::KeyboardModifiers(Qt::ShiftModifier) << true;
        QTest::newRow("alt") << Qt::KeyboardModifiers(Qt::AltModifier) << false;
        QTest::newRow("meta") << Qt::KeyboardModifiers(Qt::MetaModifier) << false;
        QTest::newRow("alt shift") << (Qt::AltModifier | Qt::ShiftModifier) << true;
        QTest::newRow("meta shift") << (Qt::MetaModifier | Qt::ShiftModifier) << false;
    }

    void keypadEnterWithModifiers()
    {
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(bool, newLine);
        Show(CodeEditorLanguage::PYTHON, QStringLiteral("x = 1"));
        QSignalSpy executed(executeAction, &QAction::triggered);
        QTest::keyClick(editor, Qt::Key_Enter, modifiers | Qt::KeypadModifier);
        QCOMPARE(executed.count(), 0);
        QCOMPARE(editor->GetLineCount(), newLine ? 2 : 1);
        QCOMPARE(editor->calls, newLine ? QStringList{QStringLiteral("InsertNewLine")} : QStringList());
    }

    void returnKeys()
    {
        Show(CodeEditorLanguage::MEL, QStringLiteral("    abcd"));
        QTest::keyClick(editor, Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(editor->GetLineCount(), 2);
        QVERIFY(!editor->GetText().contains(QChar::LineSeparator));
        QCOMPARE(editor->calls, QStringList{QStringLiteral("InsertNewLine")});

        for (const Qt::KeyboardModifier modifier : {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier})
            QTest::keyClick(editor, Qt::Key_Return, modifier);
        QCOMPARE(editor->GetLineCount(), 2);

        // A selection is replaced by a bare new line: no indent logic runs.
        editor->SetCursorSelection(5, 7);
        QTest::keyClick(editor, Qt::Key_Return);
        QCOMPARE(editor->calls.size(), 1);
        QCOMPARE(Line(0), QStringLiteral("    a"));
        QCOMPARE(Line(1), QStringLiteral("d"));
    }

    void homeTogglesBetweenIndentAndLineStart()
    {
        Show(CodeEditorLanguage::PYTHON, QStringLiteral("first\n    x = 1\nabc"));
        const int lineStart = 6;
        editor->SetCursorPosition(lineStart + 9); // the end of "    x = 1"
        QTest::keyClick(editor, Qt::Key_Home);
        QCOMPARE(editor->GetCursorPosition(), lineStart + 4);
        QTest::keyClick(editor, Qt::Key_Home);
        QCOMPARE(editor->GetCursorPosition(), lineStart);
        QTest::keyClick(editor, Qt::Key_Home);
        QCOMPARE(editor->GetCursorPosition(), lineStart + 4);

        editor->SetCursorPosition(lineStart + 9);
        QTest::keyClick(editor, Qt::Key_Home, Qt::ShiftModifier);
        QCOMPARE(editor->GetSelectedText(), QStringLiteral("x = 1"));
        QTest::keyClick(editor, Qt::Key_Home, Qt::ShiftModifier);
        QCOMPARE(editor->GetSelectedText(), QStringLiteral("    x = 1"));

        editor->SetCursorPosition(lineStart + 12); // in "abc", without indent
        QTest::keyClick(editor, Qt::Key_Home);
        QCOMPARE(editor->GetCursorPosition(), lineStart + 10);
        QTest::keyClick(editor, Qt::Key_Home);
        QCOMPARE(editor->GetCursorPosition(), lineStart + 10);

        QTest::keyClick(editor, Qt::Key_Home, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(editor->GetSelectedStartPosition(), 0);
        QCOMPARE(editor->GetSelectedEndPosition(), lineStart + 10);
    }

    void insertTogglesOverwriteForAllEditors()
    {
        Show(CodeEditorLanguage::TEXT, QStringLiteral("abc"));
        CodeEditor other(Properties(CodeEditorLanguage::TEXT), nullptr);
        QSignalSpy spy(editor, &CodeEditor::OverwriteModeChanged);
        editor->SetCursorPosition(0);
        QTest::keyClick(editor, Qt::Key_Insert);
        QCOMPARE(spy.count(), 1);
        QVERIFY(Settings::overwriteEnabled);
        QVERIFY(editor->overwriteMode());
        QTest::keyClicks(editor, QStringLiteral("XY"));
        QCOMPARE(editor->GetText(), QStringLiteral("XYc"));

        QVERIFY(!other.overwriteMode());
        other.UpdateOverwriteMode();
        QVERIFY(other.overwriteMode());
        CodeEditor later(Properties(CodeEditorLanguage::MEL), nullptr);
        QVERIFY(later.overwriteMode());

        QTest::keyClick(editor, Qt::Key_Insert, Qt::ShiftModifier);   // paste, not a toggle
        QTest::keyClick(editor, Qt::Key_Insert, Qt::ControlModifier); // copy
        QCOMPARE(spy.count(), 1);
        QCOMPARE(editor->calls, (QStringList{QStringLiteral("CustomPaste"), QStringLiteral("CustomCopy")}));
        QTest::keyClick(editor, Qt::Key_Insert);
        QVERIFY(!editor->overwriteMode());
        QVERIFY(!Settings::overwriteEnabled);
    }

    // What each key does to the text is the editing test's; here, that the keys reach their operations,
    // whatever the modifiers of a bracket, and that Backspace asks the editing commands first.
    void commandKeysReachTheirOperations()
    {
        Show(CodeEditorLanguage::MEL, QStringLiteral("abc"));
        QSignalSpy escape(editor, &CodeEditor::EscapeKeyPressed);
        QTest::keyClick(editor, Qt::Key_Escape);
        QCOMPARE(escape.count(), 1);
        QTest::keyClick(editor, Qt::Key_BraceLeft, Qt::ControlModifier);
        QTest::keyClick(editor, '`');
        QTest::keyClick(editor, Qt::Key_X, Qt::ControlModifier);
        QTest::keyClick(editor, Qt::Key_C, Qt::ControlModifier);
        QTest::keyClick(editor, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(editor->calls, (QStringList{QStringLiteral("InsertOpeningBrace {"),
                                             QStringLiteral("InsertQuote `"), QStringLiteral("CustomCut"),
                                             QStringLiteral("CustomCopy"), QStringLiteral("CustomPaste")}));
        // The apostrophe is a quote of Python only; in MEL it is typed as it is.
        QTest::keyClick(editor, '\'');
        QCOMPARE(editor->GetText(), QStringLiteral("abc'"));

        editor->calls.clear();
        editor->backspaceTakesKey = true;
        QTest::keyClick(editor, Qt::Key_Backspace);
        QCOMPARE(editor->GetText(), QStringLiteral("abc'"));
        editor->backspaceTakesKey = false;
        QTest::keyClick(editor, Qt::Key_Backspace);
        QTest::keyClick(editor, Qt::Key_Backspace, Qt::ShiftModifier);
        QCOMPARE(editor->GetText(), QStringLiteral("ab"));
        QCOMPARE(editor->calls,
                 (QStringList{QStringLiteral("InsertBackspace"), QStringLiteral("InsertBackspace")}));
    }

    void completionFollowsTheLanguageSwitches()
    {
        Settings::melCompleteOnLetters = false;
        Show(CodeEditorLanguage::MEL, QString());
        QTest::keyClick(editor, Qt::Key_Space, Qt::ControlModifier);
        QTest::keyClicks(editor, QStringLiteral("ab"));
        QVERIFY(editor->popupUpdates.isEmpty());
        QCOMPARE(editor->GetText(), QStringLiteral("ab"));

        Settings::melCompleteOnLetters = true;
        QTest::keyClick(editor, Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(editor->popupUpdates, QList<bool>{true});
        QCOMPARE(editor->GetText(), QStringLiteral("ab"));

        // Keys typed while the popup shows keep it up to date; Left closes it.
        editor->popupUpdates.clear();
        QTest::keyClick(editor, '1');
        QCOMPARE(editor->popupUpdates, QList<bool>{false});
        QTest::keyClick(editor, Qt::Key_Left);
        QVERIFY(!editor->AutoCompleterVisible());

        editor->popupUpdates.clear();
        editor->setReadOnly(true);
        QTest::keyClick(editor, Qt::Key_Space, Qt::ControlModifier);
        QVERIFY(editor->popupUpdates.isEmpty());
    }

    void completionOnLettersAndDot()
    {
        Settings::pythonCompleteOnLetters = true;
        Settings::pythonCompleteOnDot = false;
        Show(CodeEditorLanguage::PYTHON, QString());
        QTest::keyClick(editor, '1');
        QTest::keyClick(editor, 'x', Qt::AltModifier);
        QVERIFY(editor->popupUpdates.isEmpty());
        QTest::keyClick(editor, '_');
        QVERIFY(!editor->popupUpdates.isEmpty());
        editor->popup->hide();
        editor->popupUpdates.clear();
        QTest::keyClick(editor, '.');
        QVERIFY(editor->popupUpdates.isEmpty());
        Settings::pythonCompleteOnDot = true;
        QTest::keyClick(editor, '.');
        QVERIFY(!editor->popupUpdates.isEmpty());

        // A backspace over the dot closes the popup.
        QVERIFY(editor->AutoCompleterVisible());
        QTest::keyClick(editor, Qt::Key_Backspace);
        QVERIFY(!editor->AutoCompleterVisible());
    }

    void acceptedCompletionReplacesThePrefix()
    {
        const QStringList commands = MayaUtil::melCommands;
        MayaUtil::melCommands = {QStringLiteral("polySphere")};
        Settings::melAutoCompleteToQuickHelp = true;
        Show(CodeEditorLanguage::MEL, QStringLiteral("x = pol"));
        QSignalSpy help(editor, &CodeEditor::QuickHelpChanged);
        QVERIFY(editor->popup);
        emit editor->popup->Accepted(QStringLiteral("polySphere"), 3);
        QCOMPARE(editor->GetText(), QStringLiteral("x = polySphere"));
        QCOMPARE(editor->GetCursorPosition(), 14);
        QCOMPARE(help.count(), 1);
        QCOMPARE(help.at(0).at(0).toString(), QStringLiteral("polySphere"));
        QCOMPARE(help.at(0).at(1).toBool(), false);

        // A prefix longer than the text before the cursor inserts nothing.
        Settings::melAutoCompleteToQuickHelp = false;
        emit editor->popup->Accepted(QStringLiteral("polySphere"), 50);
        QCOMPARE(editor->GetText(), QStringLiteral("x = polySphere"));
        QCOMPARE(help.count(), 1);
        MayaUtil::melCommands = commands;
    }

    void doubleClickTakesTheDollarSignInMel_data()
    {
        QTest::addColumn<CodeEditorLanguage>("language");
        QTest::addColumn<int>("clickAt");
        QTest::addColumn<QString>("selected");
        // "$foo = a$bar + $ ;"
        QTest::newRow("mel variable") << CodeEditorLanguage::MEL << 2 << QStringLiteral("$foo");
        QTest::newRow("mel on the dollar") << CodeEditorLanguage::MEL << 0 << QStringLiteral("$foo");
        QTest::newRow("mel after a name") << CodeEditorLanguage::MEL << 10 << QStringLiteral("bar");
        QTest::newRow("mel lone dollar") << CodeEditorLanguage::MEL << 15 << QStringLiteral("$");
        QTest::newRow("python") << CodeEditorLanguage::PYTHON << 2 << QStringLiteral("foo");
    }

    void doubleClickTakesTheDollarSignInMel()
    {
        QFETCH(CodeEditorLanguage, language);
        QFETCH(int, clickAt);
        QFETCH(QString, selected);
        Settings::melDoubleClickIncludesDollarSign = true;
        Show(language, QStringLiteral("$foo = a$bar + $ ;"));
        QTextCursor cursor(editor->document());
        cursor.setPosition(clickAt);
        const QPoint point = editor->cursorRect(cursor).center() + QPoint(2, 0);
        QTest::mouseDClick(editor->viewport(), Qt::LeftButton, Qt::NoModifier, point);
        QCOMPARE(editor->GetSelectedText(), selected);
    }
};

QTEST_MAIN(TestCodeEditorKeys)
#include "tst_CodeEditorKeys.moc"
