// Typing and editing commands of a real CodeEditor: the text and cursor after each, and that one
// undo takes each back. A state is written as text with '|' for the cursor and '^' for the anchor.
#include "HostFixture.h"
#include "editor/CodeEditor.h"
#include "editor/CodeEditorBlockData.h"
#include "settings/ColorSettings.h"
#include "settings/Settings.h"

#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QSyntaxHighlighter>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

#include <functional>
#include <memory>

namespace
{
CodeEditorProperties Properties(CodeEditorLanguage language)
{
    CodeEditorProperties properties;
    properties.language = language;
    properties.filePath = QStringLiteral("/tmp/editing");
    return properties;
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
} // namespace

// Fills the block data as a highlighter of the language does: brackets outside strings and
// comments, the stretches of strings and comments, block comments across lines, and the indent.
class BlockDataHighlighter : public QSyntaxHighlighter
{
public:
    BlockDataHighlighter(QTextDocument* document, CodeEditorLanguage language)
        : QSyntaxHighlighter(document), language(language)
    {
    }

protected:
    void highlightBlock(const QString& text) override
    {
        auto* data = dynamic_cast<CodeEditorBlockData*>(currentBlockUserData());
        if (!data)
        {
            data = new CodeEditorBlockData;
            setCurrentBlockUserData(data);
        }
        data->Clear();
        data->SetEmpty(text.trimmed().isEmpty());
        int indent = 0;
        while (indent < text.size() &&
               (text.at(indent) == QLatin1Char(' ') || text.at(indent) == QLatin1Char('\t')))
            ++indent;
        data->SetIndent(text.left(indent));
        setCurrentBlockState(-1);
        const bool mel = language == CodeEditorLanguage::MEL;
        const QString lineComment = mel ? QStringLiteral("//") : QStringLiteral("#");
        int i = 0;
        if (previousBlockState() == 1)
            i = BlockComment(data, text, 0, false);
        while (i < text.size())
        {
            const QChar c = text.at(i);
            if (language != CodeEditorLanguage::TEXT && text.mid(i).startsWith(lineComment))
            {
                data->AppendIgnorePosition(i, text.size() - 1);
                data->AppendSingleLineCommentPosition(i, text.size() - 1);
                data->AppendIgnorePosition(text.size() - 1, text.size());
                data->AppendSingleLineCommentPosition(text.size() - 1, text.size());
                return;
            }
            if (mel && text.mid(i).startsWith(QLatin1String("/*")))
            {
                i = BlockComment(data, text, i, true);
                continue;
            }
            if (language != CodeEditorLanguage::TEXT &&
                (c == QLatin1Char('"') || (!mel && c == QLatin1Char('\''))))
            {
                const int end = text.indexOf(c, i + 1);
                if (end < 0)
                {
                    data->AppendIgnorePosition(i, text.size() - 1);
                    data->AppendIgnorePosition(text.size() - 1, text.size());
                    return;
                }
                data->AppendIgnorePosition(i, end);
                i = end + 1;
                continue;
            }
            if (QStringLiteral("(){}[]").contains(c))
                data->AppendBrace(c, i);
            ++i;
        }
    }

private:
    int BlockComment(CodeEditorBlockData* data, const QString& text, int start, bool opens)
    {
        if (opens)
            data->AppendBlockComment(start, 1);
        const int close = text.indexOf(QLatin1String("*/"), opens ? start + 2 : start);
        if (close < 0)
        {
            data->AppendIgnorePosition(start, text.size() - 1);
            data->AppendBlockCommentPosition(start, text.size() - 1);
            data->AppendIgnorePosition(text.size() - 1, text.size());
            data->AppendBlockCommentPosition(text.size() - 1, text.size());
            setCurrentBlockState(1);
            return text.size();
        }
        data->AppendBlockComment(close + 2, -1);
        data->AppendIgnorePosition(start, close + 1);
        data->AppendBlockCommentPosition(start, close + 1);
        return close + 2;
    }

    CodeEditorLanguage language;
};

// The editor as the product makes it, with its block data filled as above.
class TestEditor : public CodeEditor
{
public:
    explicit TestEditor(CodeEditorLanguage language) : CodeEditor(Properties(language), nullptr)
    {
        SetProperties(GetProperties(), true);
    }

protected:
    QSyntaxHighlighter* CreateHighlighter() override
    {
        return new BlockDataHighlighter(document(), GetLanguage());
    }
};

class TestCodeEditorEditing : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<CodeEditor> editor;

    void Show(CodeEditorLanguage language, const QString& state)
    {
        editor = std::make_unique<TestEditor>(language);
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
            {QStringLiteral("EnsureNewLineAtEof"), [](CodeEditor* e) { e->EnsureNewLineAtEof(); }},
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

    QString Line(int block) const { return editor->document()->findBlockByNumber(block).text(); }

private slots:
    void initTestCase()
    {
        fixture = std::make_unique<HostFixture>();
        ColorSettings::Initialize();
    }

    void cleanupTestCase() { fixture.reset(); }

    void init() { Settings::ResetToDefaults(); }

    void cleanup() { editor.reset(); }

    void commands_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("switches");
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("after");
        const int text = int(CodeEditorLanguage::TEXT);
        const int mel = int(CodeEditorLanguage::MEL);
        const int python = int(CodeEditorLanguage::PYTHON);

        // Return and its indent.
        QTest::newRow("mel brace") << mel << ""
                                   << "    if ($a) {|"
                                   << "key:Return"
                                   << "    if ($a) {\n        |";
        QTest::newRow("mel two braces") << mel << ""
                                        << "{ {|"
                                        << "key:Return"
                                        << "{ {\n        |";
        QTest::newRow("mel between braces") << mel << ""
                                            << "    {|}"
                                            << "key:Return"
                                            << "    {\n        |\n    }";
        QTest::newRow("mel closing two") << mel << ""
                                         << "        } }|"
                                         << "key:Return"
                                         << "        } }\n    |";
        QTest::newRow("mel closing one") << mel << ""
                                         << "        }|"
                                         << "key:Return"
                                         << "        }\n        |";
        QTest::newRow("mel statement") << mel << ""
                                       << "    print 1;|"
                                       << "key:Return"
                                       << "    print 1;\n    |";
        QTest::newRow("mel parenthesis") << mel << ""
                                         << "foo(|"
                                         << "key:Return"
                                         << "foo(\n    |";
        QTest::newRow("mel brace in comment") << mel << ""
                                              << "// {|"
                                              << "key:Return"
                                              << "// {\n|";
        QTest::newRow("mel brace in string") << mel << ""
                                             << "print \"{|"
                                             << "key:Return"
                                             << "print \"{\n|";
        QTest::newRow("mel tabs") << mel << "tabs"
                                  << "\tif (1) {|"
                                  << "key:Return"
                                  << "\tif (1) {\n\t\t|";
        QTest::newRow("mel no smart") << mel << "noSmart"
                                      << "  if (1) {|"
                                      << "key:Return"
                                      << "  if (1) {\n  |";
        QTest::newRow("mel no auto") << mel << "noAuto"
                                     << "  if (1) {|"
                                     << "key:Return"
                                     << "  if (1) {\n|";
        QTest::newRow("mel to parenthesis") << mel << "toParentheses"
                                            << "print(a,|"
                                            << "key:Return"
                                            << "print(a,\n\t  |";
        QTest::newRow("mel after closing parenthesis") << mel << "toParentheses"
                                                       << "    foo(a,\n          b) {|"
                                                       << "key:Return"
                                                       << "    foo(a,\n          b) {\n        |";
        QTest::newRow("python def") << python << ""
                                    << "def f():|"
                                    << "key:Return"
                                    << "def f():\n    |";
        QTest::newRow("python statement") << python << ""
                                          << "    x = 1|"
                                          << "key:Return"
                                          << "    x = 1\n    |";
        QTest::newRow("python between") << python << ""
                                        << "foo(|)"
                                        << "key:Return"
                                        << "foo(\n    |\n)";
        QTest::newRow("python list") << python << ""
                                     << "x = [|"
                                     << "key:Return"
                                     << "x = [\n    |";
        QTest::newRow("python to bracket") << python << "toParentheses"
                                           << "x = [1,|"
                                           << "key:Return"
                                           << "x = [1,\n\t |";
        QTest::newRow("text keeps indent") << text << ""
                                           << "    abc {|"
                                           << "key:Return"
                                           << "    abc {\n    |";
        QTest::newRow("return over selection") << python << ""
                                               << "    a^b|"
                                               << "key:Return"
                                               << "    a\n|";

        // Tab and Shift+Tab.
        QTest::newRow("tab blank to stop") << python << ""
                                           << "  |"
                                           << "key:Tab"
                                           << "    |";
        QTest::newRow("tab in word pads") << python << ""
                                          << "ab|cd"
                                          << "key:Tab"
                                          << "ab  |cd";
        QTest::newRow("tab in word tabs") << python << "tabs"
                                          << "ab|cd"
                                          << "key:Tab"
                                          << "ab\t|cd";
        QTest::newRow("tab converts indent") << python << ""
                                             << "|\tx"
                                             << "key:Tab"
                                             << "        |x";
        QTest::newRow("tab to tabs") << mel << "tabs"
                                     << "    |x"
                                     << "key:Tab"
                                     << "\t\t|x";
        QTest::newRow("tab lines") << python << ""
                                   << "a\n^b\nc\n|d"
                                   << "key:Tab"
                                   << "a\n^    b\n    c\n|d";
        QTest::newRow("tab lines keep empty") << python << ""
                                              << "^a\n\nb|"
                                              << "key:Tab"
                                              << "^    a\n\n    b|";
        QTest::newRow("tab lines tabs") << mel << "tabs"
                                        << "^a\n  b|"
                                        << "key:Tab"
                                        << "^\ta\n\t  b|";
        QTest::newRow("indent action") << python << ""
                                       << "a|b"
                                       << "IncreaseIndentLine"
                                       << "    a|b";
        QTest::newRow("backtab to stop") << python << ""
                                         << "      |x"
                                         << "key:Backtab"
                                         << "    |x";
        QTest::newRow("backtab full") << python << ""
                                      << "    x|"
                                      << "key:Backtab"
                                      << "x|";
        QTest::newRow("backtab lines") << python << ""
                                       << "^    a\n      b|"
                                       << "key:Backtab"
                                       << "^a\n  b|";
        QTest::newRow("backtab tab") << mel << "tabs"
                                     << "\t\t|x"
                                     << "key:Backtab"
                                     << "\t|x";
        QTest::newRow("backtab spaces in tab mode") << mel << "tabs"
                                                    << "  \t|x"
                                                    << "key:Backtab"
                                                    << "|x";

        // Brackets and quotes.
        QTest::newRow("paren before letter") << mel << ""
                                             << "|a"
                                             << "type:("
                                             << "(|a";
        QTest::newRow("paren before space") << mel << ""
                                            << "| a"
                                            << "type:("
                                            << "(|) a";
        QTest::newRow("paren before paren") << python << ""
                                            << "|)"
                                            << "type:("
                                            << "(|))";
        QTest::newRow("paren at end") << python << ""
                                      << "x|"
                                      << "type:["
                                      << "x[|]";
        QTest::newRow("paren wraps") << python << ""
                                     << "^ab|"
                                     << "type:("
                                     << "(^ab|)";
        QTest::newRow("paren wraps backwards") << mel << ""
                                               << "|ab^"
                                               << "type:{"
                                               << "{|ab^}";
        QTest::newRow("paren in comment") << python << ""
                                          << "# |"
                                          << "type:("
                                          << "# (|";
        QTest::newRow("paren no closing") << python << "noClosing"
                                          << "|"
                                          << "type:("
                                          << "(|";
        QTest::newRow("closing steps over") << python << ""
                                            << "(|)"
                                            << "type:)"
                                            << "()|";
        QTest::newRow("closing replaces") << python << ""
                                          << "^ab|"
                                          << "type:)"
                                          << ")|";
        QTest::newRow("closing lines up") << mel << ""
                                          << "    if (1) {\n        |"
                                          << "type:}"
                                          << "    if (1) {\n    }|";
        QTest::newRow("brace at line start") << mel << "noClosing"
                                             << "{\n|"
                                             << "type:{"
                                             << "{\n    {|";
        QTest::newRow("quote after letter") << python << ""
                                            << "a|"
                                            << "type:\""
                                            << "a\"|";
        QTest::newRow("quote after space") << python << ""
                                           << "a |"
                                           << "type:\""
                                           << "a \"|\"";
        QTest::newRow("quote steps over") << python << ""
                                          << "\"a|\""
                                          << "type:\""
                                          << "\"a\"|";
        QTest::newRow("quote wraps") << python << ""
                                     << "^ab|"
                                     << "type:'"
                                     << "'^ab|'";
        QTest::newRow("quote in comment") << mel << ""
                                          << "// |"
                                          << "type:\""
                                          << "// \"|";
        QTest::newRow("quote after underscore") << python << ""
                                                << "_|"
                                                << "type:'"
                                                << "_'|'";
        QTest::newRow("quote between parens") << python << ""
                                              << "(|)"
                                              << "type:'"
                                              << "('|')";
        QTest::newRow("backtick in mel") << mel << ""
                                         << "|"
                                         << "type:`"
                                         << "`|`";
        QTest::newRow("quote off") << python << "noQuotes"
                                   << "a |"
                                   << "type:\""
                                   << "a \"|";

        // Backspace.
        QTest::newRow("backspace parens") << python << ""
                                          << "(|)"
                                          << "key:Backspace"
                                          << "|";
        QTest::newRow("backspace brackets") << mel << ""
                                            << "x[|]"
                                            << "key:Backspace"
                                            << "x|";
        QTest::newRow("backspace quotes") << python << ""
                                          << "'|'"
                                          << "key:Backspace"
                                          << "|";
        QTest::newRow("backspace unmatched") << python << ""
                                             << "(|a"
                                             << "key:Backspace"
                                             << "|a";
        QTest::newRow("backspace to stop") << python << ""
                                           << "      |x"
                                           << "key:Backspace"
                                           << "    |x";
        QTest::newRow("backspace no stop") << python << "noTabStop"
                                           << "      |x"
                                           << "key:Backspace"
                                           << "     |x";
        QTest::newRow("backspace in comment") << python << ""
                                              << "# (|)"
                                              << "key:Backspace"
                                              << "# |)";

        // Comments.
        QTest::newRow("comment aligned") << mel << ""
                                         << "^    a\n        b|"
                                         << "ToggleComment"
                                         << "^    // a\n    //     b|";
        QTest::newRow("comment mixed") << python << ""
                                       << "^# a\nb|"
                                       << "ToggleComment"
                                       << "^# # a\n# b|";
        QTest::newRow("uncomment") << mel << ""
                                   << "^    // a\n\n    //b|"
                                   << "ToggleComment"
                                   << "^    a\n\n    b|";
        QTest::newRow("comment line") << python << ""
                                      << "    fo|o"
                                      << "ToggleComment"
                                      << "    # fo|o";
        QTest::newRow("uncomment line") << python << ""
                                        << "  # fo|o"
                                        << "ToggleComment"
                                        << "  fo|o";
        QTest::newRow("comment text") << text << ""
                                      << "fo|o"
                                      << "ToggleComment"
                                      << "fo|o";
        QTest::newRow("block comment") << mel << ""
                                       << "a ^b| c"
                                       << "ToggleBlockComment"
                                       << "a /*^b|*/ c";
        QTest::newRow("block comment backwards") << mel << ""
                                                 << "a |b^ c"
                                                 << "ToggleBlockComment"
                                                 << "a /*|b^*/ c";
        QTest::newRow("block comment empty") << mel << ""
                                             << "ab|"
                                             << "ToggleBlockComment"
                                             << "ab/*|*/";
        QTest::newRow("block uncomment") << mel << ""
                                         << "/* a| */"
                                         << "ToggleBlockComment"
                                         << " a| ";
        QTest::newRow("block uncomment lines") << mel << ""
                                               << "x /* a\nb| */"
                                               << "ToggleBlockComment"
                                               << "x  a\nb| ";
        QTest::newRow("block in line comment") << mel << ""
                                               << "// a|"
                                               << "ToggleBlockComment"
                                               << "a|";
        QTest::newRow("block python") << python << ""
                                      << "a|"
                                      << "ToggleBlockComment"
                                      << "# a|";

        // Lines.
        QTest::newRow("move up") << python << ""
                                 << "a\nb|"
                                 << "MoveLineUp"
                                 << "b|\na";
        QTest::newRow("move down") << python << ""
                                   << "a|\nb"
                                   << "MoveLineDown"
                                   << "b\na|";
        QTest::newRow("move lines down") << python << ""
                                         << "a\n^b\nc|\nd"
                                         << "MoveLineDown"
                                         << "a\nd\n^b\nc|";
        QTest::newRow("move up at top") << python << ""
                                        << "a|\nb"
                                        << "MoveLineUp"
                                        << "a|\nb";
        QTest::newRow("copy down") << python << ""
                                   << "a|b\nc"
                                   << "CopyLineDown"
                                   << "ab\na|b\nc";
        QTest::newRow("copy up") << python << ""
                                 << "a|b"
                                 << "CopyLineUp"
                                 << "a|b\nab";
        QTest::newRow("copy lines to line start") << python << ""
                                                  << "^a\n|b"
                                                  << "CopyLineDown"
                                                  << "a\n^a\n|b";
        QTest::newRow("delete line") << python << ""
                                     << "a\nb|\nc"
                                     << "DeleteLines"
                                     << "a\n|c";
        QTest::newRow("delete last line") << python << ""
                                          << "a\nb|"
                                          << "DeleteLines"
                                          << "a\n|";
        QTest::newRow("delete to line start") << python << ""
                                              << "^a\n|b"
                                              << "DeleteLines"
                                              << "|b";

        // Tidying.
        QTest::newRow("convert tabs") << python << ""
                                      << "\ta\tb|"
                                      << "ConvertTabsToSpaces"
                                      << "    a   b|";
        QTest::newRow("trim") << python << ""
                              << "a  \nb\t|  \nc "
                              << "Trim"
                              << "a\nb|\nc";
        QTest::newRow("trim keeps inner") << python << ""
                                          << "a  |b  "
                                          << "TrimAndNewLine"
                                          << "a  |b\n";
        QTest::newRow("trim only blanks") << python << ""
                                          << "a\u3000 |"
                                          << "Trim"
                                          << "a\u3000|";
        QTest::newRow("ensure newline") << python << ""
                                        << "a|"
                                        << "EnsureNewLineAtEof"
                                        << "a|\n";
    }

    void commands()
    {
        QFETCH(int, language);
        QFETCH(QString, switches);
        QFETCH(QString, before);
        QFETCH(QString, command);
        QFETCH(QString, after);
        ApplySettings(switches);
        Show(CodeEditorLanguage(language), before);
        const QString original = editor->GetText();
        QVERIFY(!editor->document()->isUndoAvailable());

        Run(command);
        QCOMPARE(State(), after);

        // One step back restores the text, and it was the only step.
        if (editor->GetText() != original)
        {
            editor->undo();
            QCOMPARE(editor->GetText(), original);
        }
        QVERIFY(!editor->document()->isUndoAvailable());
    }

    void commentToggleRoundTrip()
    {
        Show(CodeEditorLanguage::PYTHON, QStringLiteral("^    a\n\n        b\n|"));
        editor->ToggleComment();
        QCOMPARE(State(), QStringLiteral("^    # a\n\n    #     b\n|"));
        editor->ToggleComment();
        QCOMPARE(State(), QStringLiteral("^    a\n\n        b\n|"));
    }

    void lineClipboard()
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

        // Copying a line and pasting it duplicates it.
        SetState(QStringLiteral("ab|c"));
        QTest::keyClick(editor.get(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(editor->GetText(), QStringLiteral("abc"));
        editor->CustomPaste();
        QCOMPARE(State(), QStringLiteral("abc\nab|c"));

        // Over a selection, the line is pasted as plain text.
        SetState(QStringLiteral("^xy|z"));
        editor->CustomPaste();
        QCOMPARE(State(), QStringLiteral("abc|z"));
    }

    void plainClipboard()
    {
        Show(CodeEditorLanguage::PYTHON, QStringLiteral("a|b"));
        QGuiApplication::clipboard()->setText(QStringLiteral("xy"));
        editor->CustomPaste();
        QCOMPARE(State(), QStringLiteral("axy|b"));

        SetState(QStringLiteral("a^bc|d"));
        editor->CustomCut();
        QCOMPARE(State(), QStringLiteral("a|d"));
        QVERIFY(QGuiApplication::clipboard()
                    ->mimeData()
                    ->data(QStringLiteral("text/brindletEditorLine"))
                    .isEmpty());
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("bc"));

        // A read-only buffer gives its line but keeps it.
        SetState(QStringLiteral("ab|c\nd"));
        editor->setReadOnly(true);
        editor->CustomCut();
        QCOMPARE(editor->GetText(), QStringLiteral("abc\nd"));
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("abc"));
    }

    void smartIndentQueries()
    {
        Show(CodeEditorLanguage::MEL, QStringLiteral("}\n}\n{\n|"));
        QCOMPARE(editor->GetIndentCountAtPreviousBlock(editor->textCursor()), 0);
        SetState(QStringLiteral("{\n  {\n  }\n{\n|"));
        QCOMPARE(editor->GetIndentCountAtPreviousBlock(editor->textCursor()), 2);

        // The indent of the line that opens the bracket closed at a position, across lines.
        SetState(QStringLiteral("  proc a() {\n      if (1) { print 1; }\n    |}"));
        QString indent;
        QVERIFY(editor->GetOpeningBraceIndent(QLatin1Char('}'), 4, indent));
        QCOMPARE(indent, QStringLiteral("  "));
        QVERIFY(!editor->GetOpeningBraceIndent(QLatin1Char(')'), 4, indent));
        QVERIFY(indent.isEmpty());

        SetState(QStringLiteral("a /* b\nc\nd| */ e"));
        QCOMPARE(editor->GetBlockCommentOpenPosition(editor->textCursor()), 2);
        QCOMPARE(editor->GetBlockCommentClosePosition(editor->textCursor(), 0), 13);
        SetState(QStringLiteral("a /* b| */"));
        QCOMPARE(editor->GetBlockCommentClosePosition(editor->textCursor(), 0), 9);
    }

    void typedBlock()
    {
        // A function typed key by key comes out indented.
        Show(CodeEditorLanguage::MEL, QString());
        QTest::keyClicks(editor.get(), QStringLiteral("proc a() {"));
        QTest::keyClick(editor.get(), Qt::Key_Return);
        QTest::keyClicks(editor.get(), QStringLiteral("if ($b) {"));
        QTest::keyClick(editor.get(), Qt::Key_Return);
        QTest::keyClicks(editor.get(), QStringLiteral("print \"x\";"));
        // Each brace was closed as it was typed, and Return put the closing on its own line.
        QCOMPARE(State(), QStringLiteral("proc a() {\n    if ($b) {\n        print \"x\";|\n    }\n}"));

        Show(CodeEditorLanguage::PYTHON, QString());
        QTest::keyClicks(editor.get(), QStringLiteral("def f(a):"));
        QTest::keyClick(editor.get(), Qt::Key_Return);
        QTest::keyClicks(editor.get(), QStringLiteral("return [a,"));
        QTest::keyClick(editor.get(), Qt::Key_Return);
        QTest::keyClicks(editor.get(), QStringLiteral("'b'"));
        QCOMPARE(State(), QStringLiteral("def f(a):\n    return [a,\n    'b'|]"));
    }
};

QTEST_MAIN(TestCodeEditorEditing)
#include "tst_CodeEditorEditing.moc"
