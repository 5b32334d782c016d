// Typing and editing commands of a real CodeEditor with its real highlighters: the text and cursor
// after each, and that one undo takes each back. A state is written as text with '|' for the
// cursor and '^' for the anchor. Then the keys themselves: which operation each reaches.
#include "HostFixture.h"
#include "editor/CodeEditor.h"
#include "settings/ColorSettings.h"
#include "settings/Settings.h"

#include <QtCore/QMimeData>
#include <QtGui/QAction>
#include <QtGui/QClipboard>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QVBoxLayout>

#include <functional>
#include <iterator>
#include <memory>

namespace
{
CodeEditorProperties Properties(CodeEditorLanguage language)
{
    return {CodeEditorType::INTERNAL_BUFFER, language, QStringLiteral("/tmp/editing"), QString()};
}

// Applies a comma separated list of switches to the settings the editor reads.
void ApplySettings(const QString& switches)
{
    for (const QString& name : switches.split(QLatin1Char(','), Qt::SkipEmptyParts))
    {
        if (name == QLatin1String("tabs"))
            Settings::tabsInsertSpacesDefault = false;
        else if (name == QLatin1String("noClosing"))
            Settings::melInsertClosingParentheses = Settings::pythonInsertClosingParentheses = false;
        else if (name == QLatin1String("noQuotes"))
            Settings::melInsertClosingQuotes = Settings::pythonInsertClosingQuotes = false;
        else if (name == QLatin1String("toParentheses"))
            Settings::melIndentToParentheses = Settings::pythonIndentToParentheses = true;
        else if (name == QLatin1String("noSmart"))
            Settings::melSmartIndent = Settings::pythonSmartIndent = false;
        else if (name == QLatin1String("noAuto"))
            Settings::tabsAutoIndentDefault = false;
        else if (name == QLatin1String("noTabStop"))
            Settings::codeEditorBackspaceToTabStop = false;
        else
            QTest::qFail(qPrintable(QStringLiteral("unknown switch ") + name), __FILE__, __LINE__);
    }
}
// A command's row: in a buffer of `language` with the `switches` applied, `command` takes the
// state `before` to the state `after`.
struct CommandRow
{
    const char* name;
    CodeEditorLanguage language;
    const char* switches;
    const char* before;
    const char* command;
    const char* after;
};

constexpr CodeEditorLanguage TEXT = CodeEditorLanguage::TEXT;
constexpr CodeEditorLanguage MEL = CodeEditorLanguage::MEL;
constexpr CodeEditorLanguage PYTHON = CodeEditorLanguage::PYTHON;

const CommandRow COMMAND_ROWS[] = {
    // Return and its indent.
    {"mel brace", MEL, "", "    if ($a) {|", "key:Return", "    if ($a) {\n        |"},
    {"mel two braces", MEL, "", "{ {|", "key:Return", "{ {\n        |"},
    {"mel between braces", MEL, "", "    {|}", "key:Return", "    {\n        |\n    }"},
    {"mel closing two", MEL, "", "        } }|", "key:Return", "        } }\n    |"},
    {"mel closing one", MEL, "", "        }|", "key:Return", "        }\n        |"},
    {"mel statement", MEL, "", "    print 1;|", "key:Return", "    print 1;\n    |"},
    {"mel parenthesis", MEL, "", "foo(|", "key:Return", "foo(\n    |"},
    {"mel brace in comment", MEL, "", "// {|", "key:Return", "// {\n|"},
    {"mel brace in string", MEL, "", "print \"{|", "key:Return", "print \"{\n|"},
    {"mel tabs", MEL, "tabs", "\tif (1) {|", "key:Return", "\tif (1) {\n\t\t|"},
    {"mel no smart", MEL, "noSmart", "  if (1) {|", "key:Return", "  if (1) {\n  |"},
    {"mel no auto", MEL, "noAuto", "  if (1) {|", "key:Return", "  if (1) {\n|"},
    {"mel to parenthesis", MEL, "toParentheses", "print(a,|", "key:Return", "print(a,\n\t  |"},
    {"mel after closing parenthesis", MEL, "toParentheses", "    foo(a,\n          b) {|", "key:Return",
     "    foo(a,\n          b) {\n        |"},
    {"python def", PYTHON, "", "def f():|", "key:Return", "def f():\n    |"},
    {"python between", PYTHON, "", "(|)", "key:Return", "(\n    |\n)"},
    {"python list", PYTHON, "", "x = [|", "key:Return", "x = [\n    |"},
    {"python to bracket", PYTHON, "toParentheses", "x = [1,|", "key:Return", "x = [1,\n\t |"},
    {"text keeps indent", TEXT, "", "    abc {|", "key:Return", "    abc {\n    |"},
    {"return over selection", PYTHON, "", "    a^b|", "key:Return", "    a\n|"},
    // Tab and Shift+Tab.
    {"tab blank to stop", PYTHON, "", "  |", "key:Tab", "    |"},
    {"tab in word pads", PYTHON, "", "ab|cd", "key:Tab", "ab  |cd"},
    {"tab in word tabs", PYTHON, "tabs", "ab|cd", "key:Tab", "ab\t|cd"},
    {"tab converts indent", PYTHON, "", "|\tx", "key:Tab", "        |x"},
    {"tab to tabs", MEL, "tabs", "    |x", "key:Tab", "\t\t|x"},
    {"tab lines", PYTHON, "", "a\n^b\nc\n|d", "key:Tab", "a\n^    b\n    c\n|d"},
    {"tab lines keep empty", PYTHON, "", "^a\n\nb|", "key:Tab", "^    a\n\n    b|"},
    {"tab lines tabs", MEL, "tabs", "^a\n  b|", "key:Tab", "^\ta\n\t  b|"},
    {"indent action", PYTHON, "", "a|b", "IncreaseIndentLine", "    a|b"},
    {"backtab to stop", PYTHON, "", "      |x", "key:Backtab", "    |x"},
    {"backtab full", PYTHON, "", "    x|", "key:Backtab", "x|"},
    {"backtab lines", PYTHON, "", "^    a\n      b|", "key:Backtab", "^a\n  b|"},
    {"backtab tab", MEL, "tabs", "\t\t|x", "key:Backtab", "\t|x"},
    {"backtab spaces in tab mode", MEL, "tabs", "  \t|x", "key:Backtab", "|x"},
    // Brackets and quotes.
    {"paren before letter", MEL, "", "|a", "type:(", "(|a"},
    {"paren before space", MEL, "", "| a", "type:(", "(|) a"},
    {"paren before paren", PYTHON, "", "|)", "type:(", "(|))"},
    {"paren at end", PYTHON, "", "x|", "type:[", "x[|]"},
    {"paren wraps", PYTHON, "", "^ab|", "type:(", "(^ab|)"},
    {"paren wraps backwards", MEL, "", "|ab^", "type:{", "{|ab^}"},
    {"paren in comment", PYTHON, "", "# |", "type:(", "# (|"},
    {"paren no closing", PYTHON, "noClosing", "|", "type:(", "(|"},
    {"closing steps over", PYTHON, "", "(|)", "type:)", "()|"},
    {"closing replaces", PYTHON, "", "^ab|", "type:)", ")|"},
    {"closing lines up", MEL, "", "    if (1) {\n        |", "type:}", "    if (1) {\n    }|"},
    {"brace at line start", MEL, "noClosing", "{\n|", "type:{", "{\n    {|"},
    {"quote after letter", PYTHON, "", "a|", "type:\"", "a\"|"},
    {"quote after space", PYTHON, "", "a |", "type:\"", "a \"|\""},
    {"quote steps over", PYTHON, "", "\"a|\"", "type:\"", "\"a\"|"},
    {"quote wraps", PYTHON, "", "^ab|", "type:'", "'^ab|'"},
    {"quote in comment", MEL, "", "// |", "type:\"", "// \"|"},
    {"quote after underscore", PYTHON, "", "_|", "type:'", "_'|'"},
    {"quote between parens", PYTHON, "", "(|)", "type:'", "('|')"},
    {"backtick in mel", MEL, "", "|", "type:`", "`|`"},
    {"quote off", PYTHON, "noQuotes", "a |", "type:\"", "a \"|"},
    // Backspace.
    {"backspace parens", PYTHON, "", "(|)", "key:Backspace", "|"},
    {"backspace brackets", MEL, "", "x[|]", "key:Backspace", "x|"},
    {"backspace quotes", PYTHON, "", "'|'", "key:Backspace", "|"},
    {"backspace unmatched", PYTHON, "", "(|a", "key:Backspace", "|a"},
    {"backspace to stop", PYTHON, "", "      |x", "key:Backspace", "    |x"},
    {"backspace no stop", PYTHON, "noTabStop", "      |x", "key:Backspace", "     |x"},
    {"backspace in comment", PYTHON, "", "# (|)", "key:Backspace", "# |)"},
    // Comments.
    {"comment aligned", MEL, "", "^    a\n        b|", "ToggleComment", "^    // a\n    //     b|"},
    {"comment mixed", PYTHON, "", "^# a\nb|", "ToggleComment", "^# # a\n# b|"},
    {"uncomment", MEL, "", "^    // a\n\n    //b|", "ToggleComment", "^    a\n\n    b|"},
    {"comment line", PYTHON, "", "    fo|o", "ToggleComment", "    # fo|o"},
    {"uncomment line", PYTHON, "", "  # fo|o", "ToggleComment", "  fo|o"},
    {"comment text", TEXT, "", "fo|o", "ToggleComment", "fo|o"},
    {"comment stops before the line the selection ends at", PYTHON, "", "^a\nb\n|c", "ToggleComment",
     "^# a\n# b\n|c"},
    {"block comment", MEL, "", "a ^b| c", "ToggleBlockComment", "a /*^b|*/ c"},
    {"block comment backwards", MEL, "", "a |b^ c", "ToggleBlockComment", "a /*|b^*/ c"},
    {"block comment empty", MEL, "", "ab|", "ToggleBlockComment", "ab/*|*/"},
    {"block uncomment", MEL, "", "/* a| */", "ToggleBlockComment", " a| "},
    {"block uncomment lines", MEL, "", "x /* a\nb| */", "ToggleBlockComment", "x  a\nb| "},
    {"block in line comment", MEL, "", "// a|", "ToggleBlockComment", "a|"},
    {"block python", PYTHON, "", "a|", "ToggleBlockComment", "# a|"},
    // Lines.
    {"move up", PYTHON, "", "a\nb|", "MoveLineUp", "b|\na"},
    {"move down", PYTHON, "", "a|\nb", "MoveLineDown", "b\na|"},
    {"move lines down", PYTHON, "", "a\n^b\nc|\nd", "MoveLineDown", "a\nd\n^b\nc|"},
    {"move up at top", PYTHON, "", "a|\nb", "MoveLineUp", "a|\nb"},
    {"copy down", PYTHON, "", "a|b\nc", "CopyLineDown", "ab\na|b\nc"},
    {"copy up", PYTHON, "", "a|b", "CopyLineUp", "a|b\nab"},
    {"copy lines to line start", PYTHON, "", "^a\n|b", "CopyLineDown", "a\n^a\n|b"},
    {"delete line", PYTHON, "", "a\nb|\nc", "DeleteLines", "a\n|c"},
    {"delete last line", PYTHON, "", "a\nb|", "DeleteLines", "a\n|"},
    {"delete to line start", PYTHON, "", "^a\n|b", "DeleteLines", "|b"},
    // Tidying.
    {"convert tabs", PYTHON, "", "\ta\tb|", "ConvertTabsToSpaces", "    a   b|"},
    {"convert tabs mid line", PYTHON, "", "\ta|\tb", "ConvertTabsToSpaces", "    a|   b"},
    {"trim", PYTHON, "", "a  \nb\t|  \nc ", "Trim", "a\nb|\nc"},
    {"trim keeps inner", PYTHON, "", "a  |b  ", "TrimAndNewLine", "a  |b\n"},
    {"trim only blanks", PYTHON, "", "a\u3000 |", "Trim", "a\u3000|"},
};
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
        calls.append(QStringLiteral("IncreaseIndent(%1)").arg(fullLine));
    }
    void DecreaseIndent() override { calls.append(QStringLiteral("DecreaseIndent")); }
    void CustomCut() override { calls.append(QStringLiteral("CustomCut")); }
    void CustomCopy() override { calls.append(QStringLiteral("CustomCopy")); }
    void CustomPaste() override { calls.append(QStringLiteral("CustomPaste")); }

protected:
    void InsertNewLine() override
    {
        calls.append(QStringLiteral("InsertNewLine"));
        CodeEditor::InsertNewLine();
    }
    void InsertOpeningBrace(QChar c) override { calls.append(QStringLiteral("InsertOpeningBrace ") + c); }
    void InsertClosingBrace(QChar c) override { calls.append(QStringLiteral("InsertClosingBrace ") + c); }
    void InsertQuote(QChar c) override { calls.append(QStringLiteral("InsertQuote ") + c); }
    bool InsertBackspace() override
    {
        calls.append(QStringLiteral("InsertBackspace"));
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

class TestCodeEditorEditing : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<CodeEditor> editor;
    // The key tests' editor, in a window with an Execute action.
    std::unique_ptr<QWidget> window;
    RecordingEditor* recorder = nullptr;
    QAction* executeAction = nullptr;

    void ShowRecorder(CodeEditorLanguage language, const QString& text)
    {
        window = std::make_unique<QWidget>();
        auto* layout = new QVBoxLayout(window.get());
        recorder = new RecordingEditor(language);
        layout->addWidget(recorder);
        executeAction = new QAction(window.get());
        executeAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Enter));
        executeAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        window->addAction(executeAction);
        window->resize(400, 300);
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        recorder->setFocus();
        recorder->SetText(text);
        recorder->moveCursor(QTextCursor::End);
    }

    void Show(CodeEditorLanguage language, const QString& state)
    {
        editor = std::make_unique<CodeEditor>(Properties(language), nullptr);
        editor->resize(500, 300);
        editor->show();
        editor->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(editor.get()));
        editor->setFocus();
        SetState(state);
    }

    void SetState(const QString& state)
    {
        QString text = state;
        const int position = text.indexOf(QLatin1Char('|'));
        text.remove(QLatin1Char('|'));
        const int anchor = text.indexOf(QLatin1Char('^'));
        text.remove(QLatin1Char('^'));
        editor->SetText(text);
        int cursorPosition = position < 0 ? text.size() : position;
        if (anchor >= 0 && anchor < cursorPosition)
            --cursorPosition;
        QTextCursor cursor = editor->textCursor();
        cursor.setPosition(anchor < 0 ? cursorPosition : anchor);
        cursor.setPosition(cursorPosition, QTextCursor::KeepAnchor);
        editor->setTextCursor(cursor);
    }

    QString State() const
    {
        QString text = editor->GetText();
        const QTextCursor cursor = editor->textCursor();
        const int position = cursor.position();
        const int anchor = cursor.anchor();
        if (cursor.hasSelection() && anchor > position)
            text.insert(anchor, QLatin1Char('^'));
        text.insert(position, QLatin1Char('|'));
        if (cursor.hasSelection() && anchor < position)
            text.insert(anchor, QLatin1Char('^'));
        return text;
    }

    // Runs a command by name: "key:..." types, anything else calls the editor.
    void Run(const QString& command)
    {
        static const QMap<QString, std::function<void(CodeEditor*)>> calls = {
            {QStringLiteral("MoveLineUp"), [](CodeEditor* e) { e->MoveLine(true); }},
            {QStringLiteral("MoveLineDown"), [](CodeEditor* e) { e->MoveLine(false); }},
            {QStringLiteral("CopyLineUp"), [](CodeEditor* e) { e->CopyLine(true); }},
            {QStringLiteral("CopyLineDown"), [](CodeEditor* e) { e->CopyLine(false); }},
            {QStringLiteral("DeleteLines"), [](CodeEditor* e) { e->DeleteLines(); }},
            {QStringLiteral("ToggleComment"), [](CodeEditor* e) { e->ToggleComment(); }},
            {QStringLiteral("ToggleBlockComment"), [](CodeEditor* e) { e->ToggleBlockComment(); }},
            {QStringLiteral("IncreaseIndentLine"), [](CodeEditor* e) { e->IncreaseIndent(true); }},
            {QStringLiteral("ConvertTabsToSpaces"), [](CodeEditor* e) { e->ConvertTabsToSpaces(); }},
            {QStringLiteral("Trim"), [](CodeEditor* e) { e->TrimTrailingWhiteSpaces(false); }},
            {QStringLiteral("TrimAndNewLine"), [](CodeEditor* e) { e->TrimTrailingWhiteSpaces(true); }},
        };
        static const QMap<QString, QPair<int, Qt::KeyboardModifiers>> keys = {
            {QStringLiteral("key:Return"), {Qt::Key_Return, Qt::NoModifier}},
            {QStringLiteral("key:Tab"), {Qt::Key_Tab, Qt::NoModifier}},
            {QStringLiteral("key:Backtab"), {Qt::Key_Backtab, Qt::ShiftModifier}},
            {QStringLiteral("key:Backspace"), {Qt::Key_Backspace, Qt::NoModifier}},
        };
        if (calls.contains(command))
            calls.value(command)(editor.get());
        else if (keys.contains(command))
            QTest::keyClick(editor.get(), Qt::Key(keys.value(command).first), keys.value(command).second);
        else if (command.startsWith(QLatin1String("type:")))
            QTest::keyClicks(editor.get(), command.mid(5));
        else
            QFAIL(qPrintable(QStringLiteral("unknown command ") + command));
    }

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
        editor.reset();
        window.reset();
        recorder = nullptr;
    }

    void commands_data()
    {
        QTest::addColumn<int>("row"); // in COMMAND_ROWS
        for (int row = 0; row < int(std::size(COMMAND_ROWS)); ++row)
            QTest::newRow(COMMAND_ROWS[row].name) << row;
    }

    void commands()
    {
        QFETCH(int, row);
        const CommandRow& command = COMMAND_ROWS[row];
        ApplySettings(QString::fromUtf8(command.switches));
        Show(command.language, QString::fromUtf8(command.before));
        const QString original = editor->GetText();
        QVERIFY(!editor->document()->isUndoAvailable());

        Run(QString::fromUtf8(command.command));
        QCOMPARE(State(), QString::fromUtf8(command.after));

        // One step back restores the text, and it was the only step.
        if (editor->GetText() != original)
        {
            editor->undo();
            QCOMPARE(editor->GetText(), original);
        }
        QVERIFY(!editor->document()->isUndoAvailable());
    }

    void clipboard()
    {
        Show(CodeEditorLanguage::MEL, QStringLiteral("a\nb|c\nd"));
        editor->CustomCut();
        QCOMPARE(State(), QStringLiteral("a\n|d"));
        const QMimeData* mimeData = QGuiApplication::clipboard()->mimeData();
        QVERIFY(mimeData);
        QCOMPARE(mimeData->text(), QStringLiteral("bc"));
        QCOMPARE(mimeData->data(QStringLiteral("text/brindletEditorLine")), QByteArray("1"));

        // The line goes in above the current one, whatever the cursor's column.
        SetState(QStringLiteral("xy|z"));
        QTest::keyClick(editor.get(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(State(), QStringLiteral("bc\nxy|z"));
        editor->undo();
        QCOMPARE(editor->GetText(), QStringLiteral("xyz"));
        QVERIFY(!editor->document()->isUndoAvailable());
        editor->redo();

        SetState(QStringLiteral("ab|c"));
        QTest::keyClick(editor.get(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(editor->GetText(), QStringLiteral("abc"));
        editor->CustomPaste();
        QCOMPARE(State(), QStringLiteral("abc\nab|c"));

        // Over a selection, the line is pasted as plain text.
        SetState(QStringLiteral("^xy|z"));
        editor->CustomPaste();
        QCOMPARE(State(), QStringLiteral("abc|z"));

        // Plain text from elsewhere is pasted as it is, and a selection is cut as it is.
        SetState(QStringLiteral("a|b"));
        QGuiApplication::clipboard()->setText(QStringLiteral("xy"));
        editor->CustomPaste();
        QCOMPARE(State(), QStringLiteral("axy|b"));

        SetState(QStringLiteral("a^bc|d"));
        editor->CustomCut();
        QCOMPARE(State(), QStringLiteral("a|d"));
        const QMimeData* cut = QGuiApplication::clipboard()->mimeData();
        QVERIFY(cut->data(QStringLiteral("text/brindletEditorLine")).isEmpty());
        QCOMPARE(cut->text(), QStringLiteral("bc"));

        SetState(QStringLiteral("ab|c\nd"));
        editor->setReadOnly(true);
        editor->CustomCut();
        QCOMPARE(editor->GetText(), QStringLiteral("abc\nd"));
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("abc"));
    }

    void typedBlock()
    {
        // '\r' is typed as the Return key.
        Show(CodeEditorLanguage::MEL, QString());
        QTest::keyClicks(editor.get(), QStringLiteral("proc a() {\rif ($b) {\rprint \"x\";"));
        // Each brace was closed as it was typed, and Return put the closing on its own line.
        QCOMPARE(State(), QStringLiteral("proc a() {\n    if ($b) {\n        print \"x\";|\n    }\n}"));

        Show(CodeEditorLanguage::PYTHON, QString());
        QTest::keyClicks(editor.get(), QStringLiteral("def f(a):\rreturn [a,\r'b'"));
        QCOMPARE(State(), QStringLiteral("def f(a):\n    return [a,\n    'b'|]"));
    }

    void keypadEnterRunsAsCtrlEnter()
    {
        ShowRecorder(CodeEditorLanguage::MEL, QStringLiteral("print 1;"));
        QSignalSpy executed(executeAction, &QAction::triggered);
        QTest::keyClick(recorder, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(executed.count(), 1);
        QCOMPARE(recorder->GetText(), QStringLiteral("print 1;"));

        // Without a shortcut to take it, the Ctrl+Enter that the editor sends itself changes nothing.
        executeAction->setEnabled(false);
        KeyLog log;
        recorder->installEventFilter(&log);
        QTest::keyClick(recorder, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(log.presses.size(), 2);
        QCOMPARE(log.presses.at(1).first, int(Qt::Key_Enter));
        QCOMPARE(log.presses.at(1).second, Qt::KeyboardModifiers(Qt::ControlModifier));
        QCOMPARE(recorder->GetText(), QStringLiteral("print 1;"));
        QVERIFY(recorder->calls.isEmpty());
    }

    void returnAndEnterWithModifiers_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<bool>("newLine");
        const Qt::KeyboardModifiers keypad = Qt::KeypadModifier;
        QTest::newRow("keypad shift") << int(Qt::Key_Enter) << (keypad | Qt::ShiftModifier) << true;
        QTest::newRow("keypad alt") << int(Qt::Key_Enter) << (keypad | Qt::AltModifier) << false;
        QTest::newRow("keypad meta") << int(Qt::Key_Enter) << (keypad | Qt::MetaModifier) << false;
        QTest::newRow("keypad alt shift")
            << int(Qt::Key_Enter) << (keypad | Qt::AltModifier | Qt::ShiftModifier) << true;
        QTest::newRow("keypad meta shift")
            << int(Qt::Key_Enter) << (keypad | Qt::MetaModifier | Qt::ShiftModifier) << false;
        QTest::newRow("shift") << int(Qt::Key_Return) << Qt::KeyboardModifiers(Qt::ShiftModifier) << true;
        QTest::newRow("control") << int(Qt::Key_Return) << Qt::KeyboardModifiers(Qt::ControlModifier)
                                 << false;
        QTest::newRow("alt") << int(Qt::Key_Return) << Qt::KeyboardModifiers(Qt::AltModifier) << false;
        QTest::newRow("meta") << int(Qt::Key_Return) << Qt::KeyboardModifiers(Qt::MetaModifier) << false;
    }

    // Only Shift adds to Return a plain new line (never a line separator); the others run or do nothing.
    void returnAndEnterWithModifiers()
    {
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(bool, newLine);
        ShowRecorder(CodeEditorLanguage::PYTHON, QStringLiteral("x = 1"));
        QSignalSpy executed(executeAction, &QAction::triggered);
        QTest::keyClick(recorder, Qt::Key(key), modifiers);
        QCOMPARE(executed.count(), 0);
        QCOMPARE(recorder->GetLineCount(), newLine ? 2 : 1);
        QVERIFY(!recorder->GetText().contains(QChar::LineSeparator));
        QCOMPARE(recorder->calls, newLine ? QStringList{QStringLiteral("InsertNewLine")} : QStringList());
    }

    void homeTogglesBetweenIndentAndLineStart()
    {
        ShowRecorder(CodeEditorLanguage::PYTHON, QStringLiteral("first\n    x = 1\nabc"));
        const int lineStart = 6;
        recorder->SetCursorPosition(lineStart + 9); // the end of "    x = 1"
        for (const int column : {4, 0, 4})
        {
            QTest::keyClick(recorder, Qt::Key_Home);
            QCOMPARE(recorder->GetCursorPosition(), lineStart + column);
        }

        recorder->SetCursorPosition(lineStart + 9);
        QTest::keyClick(recorder, Qt::Key_Home, Qt::ShiftModifier);
        QCOMPARE(recorder->GetSelectedText(), QStringLiteral("x = 1"));
        QTest::keyClick(recorder, Qt::Key_Home, Qt::ShiftModifier);
        QCOMPARE(recorder->GetSelectedText(), QStringLiteral("    x = 1"));

        recorder->SetCursorPosition(lineStart + 12); // in "abc", without indent
        QTest::keyClick(recorder, Qt::Key_Home);
        QCOMPARE(recorder->GetCursorPosition(), lineStart + 10);
        QTest::keyClick(recorder, Qt::Key_Home);
        QCOMPARE(recorder->GetCursorPosition(), lineStart + 10);

        QTest::keyClick(recorder, Qt::Key_Home, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(recorder->GetSelectedStartPosition(), 0);
        QCOMPARE(recorder->GetSelectedEndPosition(), lineStart + 10);
    }

    void insertTogglesOverwriteForAllEditors()
    {
        ShowRecorder(CodeEditorLanguage::TEXT, QStringLiteral("abc"));
        CodeEditor other(Properties(CodeEditorLanguage::TEXT), nullptr);
        QSignalSpy spy(recorder, &CodeEditor::OverwriteModeChanged);
        recorder->SetCursorPosition(0);
        QTest::keyClick(recorder, Qt::Key_Insert);
        QCOMPARE(spy.count(), 1);
        QVERIFY(Settings::overwriteEnabled);
        QVERIFY(recorder->overwriteMode());
        QTest::keyClicks(recorder, QStringLiteral("XY"));
        QCOMPARE(recorder->GetText(), QStringLiteral("XYc"));

        QVERIFY(!other.overwriteMode());
        other.UpdateOverwriteMode();
        QVERIFY(other.overwriteMode());
        CodeEditor later(Properties(CodeEditorLanguage::MEL), nullptr);
        QVERIFY(later.overwriteMode());

        QTest::keyClick(recorder, Qt::Key_Insert, Qt::ShiftModifier);   // paste, not a toggle
        QTest::keyClick(recorder, Qt::Key_Insert, Qt::ControlModifier); // copy
        QCOMPARE(spy.count(), 1);
        QCOMPARE(recorder->calls, (QStringList{QStringLiteral("CustomPaste"), QStringLiteral("CustomCopy")}));
        QTest::keyClick(recorder, Qt::Key_Insert);
        QVERIFY(!recorder->overwriteMode());
        QVERIFY(!Settings::overwriteEnabled);
    }

    // What each key does to the text is the editing test's; here, that the keys reach their operations,
    // whatever the modifiers of a bracket, and that Backspace asks the editing commands first.
    void commandKeysReachTheirOperations()
    {
        ShowRecorder(CodeEditorLanguage::MEL, QStringLiteral("abc"));
        QSignalSpy escape(recorder, &CodeEditor::EscapeKeyPressed);
        QTest::keyClick(recorder, Qt::Key_Escape);
        QCOMPARE(escape.count(), 1);
        QTest::keyClick(recorder, Qt::Key_BraceLeft, Qt::ControlModifier);
        QTest::keyClick(recorder, '`');
        QTest::keyClick(recorder, Qt::Key_X, Qt::ControlModifier);
        QTest::keyClick(recorder, Qt::Key_C, Qt::ControlModifier);
        QTest::keyClick(recorder, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(recorder->calls, (QStringList{QStringLiteral("InsertOpeningBrace {"),
                                               QStringLiteral("InsertQuote `"), QStringLiteral("CustomCut"),
                                               QStringLiteral("CustomCopy"), QStringLiteral("CustomPaste")}));
        // The apostrophe is a quote of Python only; in MEL it is typed as it is.
        QTest::keyClick(recorder, '\'');
        QCOMPARE(recorder->GetText(), QStringLiteral("abc'"));

        recorder->calls.clear();
        recorder->backspaceTakesKey = true;
        QTest::keyClick(recorder, Qt::Key_Backspace);
        QCOMPARE(recorder->GetText(), QStringLiteral("abc'"));
        recorder->backspaceTakesKey = false;
        QTest::keyClick(recorder, Qt::Key_Backspace);
        QTest::keyClick(recorder, Qt::Key_Backspace, Qt::ShiftModifier);
        QCOMPARE(recorder->GetText(), QStringLiteral("ab"));
        QCOMPARE(recorder->calls,
                 (QStringList{QStringLiteral("InsertBackspace"), QStringLiteral("InsertBackspace")}));
    }

    void completionFollowsTheSwitches()
    {
        Settings::melCompleteOnLetters = false;
        ShowRecorder(CodeEditorLanguage::MEL, QString());
        QTest::keyClick(recorder, Qt::Key_Space, Qt::ControlModifier);
        QTest::keyClicks(recorder, QStringLiteral("ab"));
        QVERIFY(recorder->popupUpdates.isEmpty());
        Settings::melCompleteOnLetters = true;
        QTest::keyClick(recorder, Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(recorder->popupUpdates, QList<bool>{true});
        QCOMPARE(recorder->GetText(), QStringLiteral("ab"));
        // Keys typed while the popup shows keep it up to date.
        QTest::keyClick(recorder, '1');
        QCOMPARE(recorder->popupUpdates, (QList<bool>{true, false}));

        Settings::pythonCompleteOnDot = false;
        ShowRecorder(CodeEditorLanguage::PYTHON, QString());
        QTest::keyClick(recorder, '1');
        QTest::keyClick(recorder, 'x', Qt::AltModifier);
        QVERIFY(recorder->popupUpdates.isEmpty());
        QTest::keyClick(recorder, '_');
        QVERIFY(!recorder->popupUpdates.isEmpty());
        recorder->popup->hide();
        recorder->popupUpdates.clear();
        QTest::keyClick(recorder, '.');
        QVERIFY(recorder->popupUpdates.isEmpty());
        Settings::pythonCompleteOnDot = true;
        QTest::keyClick(recorder, '.');
        QVERIFY(!recorder->popupUpdates.isEmpty());
        recorder->popup->hide();
        recorder->popupUpdates.clear();
        recorder->setReadOnly(true);
        QTest::keyClick(recorder, Qt::Key_Space, Qt::ControlModifier);
        QVERIFY(recorder->popupUpdates.isEmpty());

        // What an accepted row puts in is the completer tests'; a prefix longer than the text before
        // the cursor, though, inserts nothing.
        ShowRecorder(CodeEditorLanguage::MEL, QStringLiteral("x = pol"));
        QVERIFY(recorder->popup);
        emit recorder->popup->Accepted(QStringLiteral("polySphere"), 50);
        QCOMPARE(recorder->GetText(), QStringLiteral("x = pol"));
        emit recorder->popup->Accepted(QStringLiteral("polySphere"), 3);
        QCOMPARE(recorder->GetText(), QStringLiteral("x = polySphere"));
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
        ShowRecorder(language, QStringLiteral("$foo = a$bar + $ ;"));
        QTextCursor cursor(recorder->document());
        cursor.setPosition(clickAt);
        const QPoint point = recorder->cursorRect(cursor).center() + QPoint(2, 0);
        QTest::mouseDClick(recorder->viewport(), Qt::LeftButton, Qt::NoModifier, point);
        QCOMPARE(recorder->GetSelectedText(), selected);
    }
};

QTEST_MAIN(TestCodeEditorEditing)
#include "tst_CodeEditorEditing.moc"
