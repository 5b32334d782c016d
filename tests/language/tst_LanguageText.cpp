// The highlighters through a real editor (colours and block data of text typed key by key), both
// parsers, and real text: samples of the standard library against Python's tokenize and ast, where
// every disagreement must belong to a class that a rule explains (bench/highlighter_tokenize_compare.py
// and bench/python_ast_facts.py classify them; bench_PythonParserAgainstAst measures the library).
#include "HostFixture.h"
#include "PythonAstComparison.h"
#include "TestFiles.h"
#include "bench/BenchTexts.h"
#include "bench/PythonCorpusDump.h"
#include "editor/CodeEditor.h"
#include "editor/CodeEditorBlockData.h"
#include "language/MelHighlighter.h"
#include "language/MelParser.h"
#include "language/PythonHighlighter.h"
#include "language/PythonParser.h"
#include "plugin/MayaUtil.h"
#include "settings/ColorSettings.h"
#include "settings/Settings.h"

#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtGui/QTextLayout>
#include <QtTest/QtTest>

#include <functional>
#include <memory>

namespace
{
// Every key of the tables gets a colour of its own, so that a format tells which row it came from
// even where the factory colours coincide.
const QStringList& FormatKeys()
{
    static const QStringList keys = {ColorSettings::WHITESPACES,        ColorSettings::MEL_KEYWORDS,
                                     ColorSettings::MEL_COMMANDS,       ColorSettings::MEL_STRINGS,
                                     ColorSettings::MEL_NUMBERS,        ColorSettings::MEL_VARIABLES,
                                     ColorSettings::MEL_PROCS,          ColorSettings::MEL_COMMENTS,
                                     ColorSettings::PYTHON_KEYWORDS,    ColorSettings::PYTHON_BUILTINS,
                                     ColorSettings::PYTHON_STRINGS,     ColorSettings::PYTHON_DOC_STRINGS,
                                     ColorSettings::PYTHON_NUMBERS,     ColorSettings::PYTHON_CLASSES,
                                     ColorSettings::PYTHON_METHODS,     ColorSettings::PYTHON_COMMENTS,
                                     ColorSettings::PYTHON_DECORATORS,  ColorSettings::PYTHON_SELF_CLS,
                                     ColorSettings::PYTHON_MEL_COMMANDS};
    return keys;
}

QColor KeyColor(int index)
{
    return QColor(20 + index * 11, 200 - index * 7, 60 + index * 5);
}

QString KeyOfFormat(const QTextCharFormat& format)
{
    if (!format.hasProperty(QTextFormat::ForegroundBrush))
        return QString();
    for (int i = 0; i < FormatKeys().size(); ++i)
    {
        if (format.foreground().color() == KeyColor(i))
            return FormatKeys().at(i);
    }
    return QStringLiteral("?") + format.foreground().color().name();
}

QString Ranges(const QList<CodeEditorBlockData::Range>& ranges)
{
    QStringList parts;
    for (const CodeEditorBlockData::Range& range : ranges)
        parts.append(QStringLiteral("%1-%2").arg(range.start).arg(range.end));
    return parts.join(QLatin1Char(','));
}

QString Braces(const CodeEditorBlockData& data)
{
    QStringList parts;
    for (const QChar open : {QLatin1Char('('), QLatin1Char('{'), QLatin1Char('[')})
    {
        for (const CodeEditorBlockData::Entry& entry : data.GetBraces(open))
        {
            const QChar c = entry.delta > 0 ? open : CodeEditor::GetMatchingBrace(open);
            parts.append(QStringLiteral("%1%2").arg(c).arg(entry.position));
        }
    }
    return parts.join(QLatin1Char(' '));
}

QString BlockComments(const CodeEditorBlockData& data)
{
    QStringList parts;
    for (const CodeEditorBlockData::Entry& entry : data.GetBlockComments())
        parts.append(QStringLiteral("%1%2").arg(entry.delta > 0 ? '+' : '-').arg(entry.position));
    return parts.join(QLatin1Char(' '));
}

// The record of a block and its state in one line that a test row can spell out: each field that
// differs from a plain line of code, and the length.
QString Describe(const QTextBlock& block)
{
    const CodeEditorBlockData* data = CodeEditor::GetBlockData(block);
    if (!data)
        return QStringLiteral("no data");
    const QString indent = QString(data->GetIndent()).replace(QLatin1Char('\t'), QLatin1String("\\t"));
    const QList<QPair<const char*, QString>> fields{
        {"state", block.userState() == -1 ? QString() : QString::number(block.userState())},
        {"ignore", Ranges(data->GetIgnorePositions())},
        {"single", Ranges(data->GetSingleLineCommentPositions())},
        {"block", Ranges(data->GetBlockCommentPositions())},
        {"comments", BlockComments(*data)},
        {"braces", Braces(*data)},
        {"indent", indent.isEmpty() ? QString() : QLatin1Char('\'') + indent + QLatin1Char('\'')},
        {"empty", data->IsEmpty() ? QStringLiteral("1") : QString()},
        {"smart",
         data->GetSmartIndentCount() == 0 ? QString() : QString::number(data->GetSmartIndentCount())},
        {"length", QString::number(data->GetNonCommentLength())}};
    QStringList parts;
    for (const auto& [name, value] : fields)
    {
        if (!value.isEmpty())
            parts.append(QLatin1String(name) + QLatin1Char('=') + value);
    }
    return parts.join(QLatin1Char(' '));
}

QTextCharFormat FormatAt(const QTextBlock& block, int column)
{
    QTextCharFormat format;
    for (const QTextLayout::FormatRange& range : block.layout()->formats())
    {
        if (column >= range.start && column < range.start + range.length)
            format = range.format;
    }
    return format;
}

// Calls back before each paint of a widget, with the region about to be painted.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(std::function<void(const QRegion&)> paint) : onPaint(std::move(paint)) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            onPaint(static_cast<QPaintEvent*>(event)->region());
        return false;
    }

private:
    std::function<void(const QRegion&)> onPaint;
};

const char* const SAMPLE[] = {"argparse.py", "ast.py",      "configparser.py", "csv.py",
                              "difflib.py",  "inspect.py",  "pydoc.py",        "shlex.py",
                              "string.py",   "textwrap.py", "tokenize.py",     "_pydecimal.py"};

const QString SCRIPT = QStringLiteral(QT_TESTCASE_SOURCEDIR "/../bench/highlighter_tokenize_compare.py");

QJsonObject ReadJson(const QString& path)
{
    return QJsonDocument::fromJson(TestFiles::Read(path)).object();
}

// Parser rows: name, source, and the outcome's lines joined by '|'.
template <size_t N> void ParserRows(const char* const (&rows)[N][3])
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QStringList>("outcome");
    for (const auto& row : rows)
        QTest::newRow(row[0]) << QString::fromUtf8(row[1])
                              << QString::fromUtf8(row[2]).split(QLatin1Char('|'), Qt::SkipEmptyParts);
}
} // namespace

class TestLanguageText : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<CodeEditor> editor;
    QTemporaryDir folder;
    QStringList paths; // the corpus sample

    QString RecordsPath() const { return folder.filePath(QStringLiteral("records.json")); }
    QString SummaryPath() const { return folder.filePath(QStringLiteral("summary.json")); }

    // "mel", "python" ("py" will do) or anything else for text; a row's name may follow.
    CodeEditor* NewEditor(const QString& name)
    {
        const CodeEditorLanguage language = name.startsWith("mel")  ? CodeEditorLanguage::MEL
                                            : name.startsWith("py") ? CodeEditorLanguage::PYTHON
                                                                    : CodeEditorLanguage::TEXT;
        const CodeEditorProperties properties{CodeEditorType::INTERNAL_BUFFER, language,
                                              QStringLiteral("/tmp/highlight"), QString()};
        editor = std::make_unique<CodeEditor>(properties, nullptr);
        editor->resize(900, 400);
        editor->show();
        editor->setFocus();
        return editor.get();
    }

    // '\r' is typed as the Return key.
    void Type(const QString& text) { QTest::keyClicks(editor.get(), QString(text).replace('\n', '\r')); }

    QTextBlock Block(int number) const { return editor->document()->findBlockByNumber(number); }

    // A reused parser must start clean: indent stack, decorators and reported flags included. The
    // outcome lists the items as "type name@position/level", so that a row states all the outline
    // reads, then the errors, warnings and infos, each with its kind.
    static void Check(BaseParser& parser, const QString& old, const QString& path)
    {
        QFETCH(QString, source);
        QFETCH(QStringList, outcome);
        parser.Parse(old, QStringLiteral("old"));
        parser.Parse(source, path);
        QStringList found;
        for (const ParserItem& i : parser.GetItems())
            found.append(QStringLiteral("%1 %2@%3/%4").arg(i.type).arg(i.name).arg(i.position).arg(i.level));
        for (const auto& [kind, messages] : {std::pair{"error", parser.GetErrors()},
                                             {"warning", parser.GetWarnings()},
                                             {"info", parser.GetInfos()}})
        {
            for (const ParserMessage& m : messages)
                found.append(
                    QStringLiteral("%1 %2 %3-%4").arg(QLatin1String(kind), m.text).arg(m.start).arg(m.end));
        }
        QCOMPARE(found, outcome);
        QCOMPARE(parser.GetFilePath(), path);
    }

private slots:
    void initTestCase()
    {
        fixture = std::make_unique<HostFixture>();
        QVERIFY(fixture->LoadPlugin());
        // Typing here must give exactly the characters typed: no pairs, no indent, no completion.
        Settings::tabsAutoIndentDefault = Settings::tabsAutoIndentMel = Settings::tabsAutoIndentPython =
            false;
        Settings::melInsertClosingParentheses = Settings::melInsertClosingQuotes = false;
        Settings::pythonInsertClosingParentheses = Settings::pythonInsertClosingQuotes = false;
        Settings::melCompleteOnLetters = Settings::pythonCompleteOnLetters = false;
        Settings::pythonCompleteOnDot = false;
        // The error bar's measuring of every block is not what these tests are about.
        Settings::melDisplayErrors = Settings::pythonDisplayErrors = false;
        for (int i = 0; i < FormatKeys().size(); ++i)
        {
            QTextCharFormat format = ColorSettings::GetCodeEditorFormat(FormatKeys().at(i));
            format.setForeground(KeyColor(i));
            ColorSettings::SetCodeEditorFormat(FormatKeys().at(i), format);
        }
        for (const char* name : SAMPLE)
            paths.append(QStringLiteral("/usr/lib/python3.11/") + QString::fromLatin1(name));
        QVERIFY(QFileInfo::exists(SCRIPT));
        QVERIFY(PythonCorpusDump::WriteRecords(paths, RecordsPath()));
    }

    void cleanupTestCase()
    {
        editor.reset();
        fixture.reset();
    }

    // The plain matchers stand in for the expressions on lines of printable ASCII: over real code
    // of both languages and lines made to sit on each shape's edges, they find the same matches.
    void plainMatchersAgreeWithExpressions()
    {
        QStringList lines = BenchTexts::MelLines(400).split(QLatin1Char('\n'));
        for (const char* name : {"argparse.py", "ast.py", "dataclasses.py", "tokenize.py", "_pydecimal.py"})
            lines += QString::fromUtf8(
                         TestFiles::Read(QStringLiteral("/usr/lib/python3.11/") + QLatin1String(name)))
                         .split(QLatin1Char('\n'));
        QVERIFY(lines.size() > 5000);
        lines +=
            QStringLiteral("1.2.3 x1 .5 a.5 1. _1 9_ 0x1f 1e5 ..\nself.selfish(cls, self_)\n"
                           "class  Foo (x): classclass A( subclass B( class C\t(\nclass\n"
                           "def\tf (a): def g: undef h( def  _ ( def 9x(\n@ deco(x)\n \t@x\nx @y\n"
                           "$a$b $1 -$c x$d $ $_\nglobal proc  p( proc q ( aproc r( proc\n"
                           "a -b(c) -x (y)-z(\nf(g(h (\t(\n\ncaf\u00e9 $x f(1.5)\na\u0001b(\u000b1.5 $v\n"
                           "\u00a0class\u00a0K(")
                .split(QLatin1Char('\n'));
        int rulesWithPlainMatchers = 0;
        for (const QString& language : {QStringLiteral("mel"), QStringLiteral("python")})
        {
            NewEditor(language);
            const Highlighter* highlighter = editor->document()->findChild<Highlighter*>();
            QVERIFY(highlighter);
            for (const Highlighter::HighlightingRule& rule :
                 highlighter->GetEarlyRules() + highlighter->GetRules())
            {
                QVERIFY2(rule.fastMatch != Highlighter::FastMatch::None, qPrintable(rule.pattern.pattern()));
                ++rulesWithPlainMatchers;
                for (const QString& line : std::as_const(lines))
                {
                    QCOMPARE(Highlighter::RuleMatches(rule, line, false),
                             Highlighter::RuleMatches(rule, line, true));
                }
            }
        }
        QCOMPARE(rulesWithPlainMatchers, 11);
        // The word lists come from the host: its procedures are MEL commands to MEL, not to cmds.
        QVERIFY(Highlighter::sMelCommands.contains(QStringLiteral("xvGetMelInfo")));
        QVERIFY(!Highlighter::sPythonMelCommands.contains(QStringLiteral("xvGetMelInfo")));
    }

    // A span opened at the top of a long buffer recolours it in bounded steps, over several turns
    // of the event loop; what those steps leave is what one full pass gives.
    void boundedPassesEndAsAFullPass_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("keys");
        QTest::newRow("mel block comment") << QStringLiteral("mel") << QStringLiteral("/*");
        QTest::newRow("python triple quote") << QStringLiteral("python") << QStringLiteral("\"\"\"");
    }

    void boundedPassesEndAsAFullPass()
    {
        QFETCH(QString, language);
        QFETCH(QString, keys);
        NewEditor(language);
        // No block comment or triple quote closes below, so the one opened reaches the end.
        editor->SetText(language == QLatin1String("mel")
                            ? BenchTexts::MelLines(20000).remove(QStringLiteral("/* how many */"))
                            : BenchTexts::PythonLines(20000).remove(keys));
        const Highlighter* highlighter = editor->document()->findChild<Highlighter*>();
        QVERIFY(highlighter);
        QTRY_VERIFY_WITH_TIMEOUT(!highlighter->IsHighlightPending(), 60000);
        // The lines on screen are far below the edit and recoloured by a later step, which must
        // paint them again: the last paint of such a line shows its new colour.
        editor->setTextCursor(QTextCursor(Block(10000)));
        editor->centerCursor();
        QVERIFY(QTest::qWaitForWindowExposed(editor.get()));
        QCoreApplication::processEvents();
        const QTextBlock shown = Block(10003); // not the caret's line, which blinks
        const int column = int(Highlighter::GetIndent(shown.text()).size());
        QVERIFY(column < shown.text().size());
        QString painted;
        PaintWatch watch(
            [&](const QRegion& region)
            {
                if (region.contains(editor->cursorRect(QTextCursor(shown)).center()))
                    painted = KeyOfFormat(FormatAt(shown, column));
            });
        editor->viewport()->installEventFilter(&watch);
        QTextCursor(editor->document()).insertText(keys);
        QVERIFY(highlighter->IsHighlightPending()); // 20,000 lines do not fit in one step
        QTRY_VERIFY_WITH_TIMEOUT(!highlighter->IsHighlightPending(), 60000);
        QTRY_COMPARE(painted, language == QLatin1String("mel") ? ColorSettings::MEL_COMMENTS
                                                               : ColorSettings::PYTHON_DOC_STRINGS);
        editor->viewport()->removeEventFilter(&watch);
        const auto record = [this]
        {
            QStringList lines;
            for (QTextBlock block = editor->document()->begin(); block.isValid(); block = block.next())
            {
                QString line = Describe(block);
                for (const QTextLayout::FormatRange& range : block.layout()->formats())
                    line += QStringLiteral(" %1+%2:%3")
                                .arg(range.start)
                                .arg(range.length)
                                .arg(KeyOfFormat(range.format));
                lines.append(line);
            }
            return lines;
        };
        const QStringList bounded = record();
        editor->document()->findChild<Highlighter*>()->rehighlight();
        QCOMPARE(bounded, record());
    }

    // Each row's name starts with the buffer's language: mel, py or text.
    void formats_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("key");
        const QString proc = QStringLiteral("proc int foo(string $a) { return 1.5; }");
        QTest::newRow("mel keyword") << proc << 0 << ColorSettings::MEL_KEYWORDS;
        QTest::newRow("mel call") << proc << 9 << ColorSettings::MEL_PROCS;
        QTest::newRow("mel variable") << proc << 20 << ColorSettings::MEL_VARIABLES;
        QTest::newRow("mel number") << proc << 34 << ColorSettings::MEL_NUMBERS;
        QTest::newRow("mel brace") << proc << 24 << QString();
        QTest::newRow("mel proc name") << "proc  bar ()" << 6 << ColorSettings::MEL_PROCS;
        const QString command = QStringLiteral("polyCube -n \"ls x\" $ls;");
        QTest::newRow("mel command") << command << 0 << ColorSettings::MEL_COMMANDS;
        QTest::newRow("mel flag") << command << 10 << QString();
        QTest::newRow("mel string") << command << 13 << ColorSettings::MEL_STRINGS;
        QTest::newRow("mel blank in string") << command << 15 << ColorSettings::WHITESPACES;
        QTest::newRow("mel variable, not command") << command << 20 << ColorSettings::MEL_VARIABLES;
        QTest::newRow("mel -ls") << "-ls ls" << 1 << QString();
        QTest::newRow("mel ls after -ls") << "-ls ls" << 4 << ColorSettings::MEL_COMMANDS;
        QTest::newRow("mel keyword after dash") << "a-string string" << 2 << QString();
        QTest::newRow("mel same keyword alone") << "a-string string" << 9 << ColorSettings::MEL_KEYWORDS;
        QTest::newRow("mel line comment") << "ls; // ls \"x\"" << 7 << ColorSettings::MEL_COMMENTS;
        QTest::newRow("mel block comment") << "/* ls */ ls" << 3 << ColorSettings::MEL_COMMENTS;

        const QString classLine = QStringLiteral("class Foo(object):");
        QTest::newRow("py class") << classLine << 6 << ColorSettings::PYTHON_CLASSES;
        QTest::newRow("py builtin") << classLine << 10 << ColorSettings::PYTHON_BUILTINS;
        QTest::newRow("py class without bases") << "class Foo:" << 6 << QString();
        const QString def = QStringLiteral("def run(self, x=1.0):");
        QTest::newRow("py def") << def << 4 << ColorSettings::PYTHON_METHODS;
        QTest::newRow("py self") << def << 8 << ColorSettings::PYTHON_SELF_CLS;
        QTest::newRow("py number") << def << 17 << ColorSettings::PYTHON_NUMBERS;
        QTest::newRow("py decorator") << "@property" << 3 << ColorSettings::PYTHON_DECORATORS;
        QTest::newRow("py cls") << "cls.x" << 0 << ColorSettings::PYTHON_SELF_CLS;
        const QString cmds = QStringLiteral("cmds.polyCube(ls)");
        QTest::newRow("py command attribute") << cmds << 5 << ColorSettings::PYTHON_MEL_COMMANDS;
        QTest::newRow("py bare command") << cmds << 14 << QString();
        QTest::newRow("py command at line start") << "ls = 1" << 0 << QString();
        QTest::newRow("py dotted builtin with bare one")
            << "os.open(p) or open(p)" << 3 << ColorSettings::PYTHON_BUILTINS;
        QTest::newRow("py dotted call alone") << "os.open(p)" << 3 << ColorSettings::PYTHON_METHODS;
        QTest::newRow("py keyword beats builtin") << "x = True" << 4 << ColorSettings::PYTHON_KEYWORDS;
        const QString strings = QStringLiteral("x = \"a # b\"  # c 'q'");
        QTest::newRow("py hash in string") << strings << 7 << ColorSettings::PYTHON_STRINGS;
        QTest::newRow("py quote in comment") << strings << 18 << ColorSettings::PYTHON_COMMENTS;
        QTest::newRow("py doc string") << "s = '''doc''' + 'x'" << 7 << ColorSettings::PYTHON_DOC_STRINGS;
        QTest::newRow("py string after doc string")
            << "s = '''doc''' + 'x'" << 17 << ColorSettings::PYTHON_STRINGS;
        QTest::newRow("text has no rules") << "def f(): # x" << 9 << QString();
        QTest::newRow("text blanks") << "def f(): # x" << 3 << ColorSettings::WHITESPACES;
    }

    void formats()
    {
        QFETCH(QString, text);
        QFETCH(int, column);
        QFETCH(QString, key);
        NewEditor(QTest::currentDataTag());
        Type(text);
        QCOMPARE(editor->GetText(), text);
        QCOMPARE(KeyOfFormat(FormatAt(Block(0), column)), key);
    }

    // A line past the limit shows no colours but keeps its state: the string it opens still
    // colours the next line. One character less, and it is coloured.
    void longLineKeepsStateWithoutColours_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<bool>("coloured");
        QTest::newRow("at the limit") << Highlighter::LONGEST_COLOURED_LINE << true;
        QTest::newRow("one past it") << Highlighter::LONGEST_COLOURED_LINE + 1 << false;
    }

    void longLineKeepsStateWithoutColours()
    {
        QFETCH(int, length);
        QFETCH(bool, coloured);
        NewEditor(QStringLiteral("python"));
        const QString head = QStringLiteral("def f(): s = '''");
        editor->SetText(head + QString(length - int(head.size()), QLatin1Char('a')) +
                        QStringLiteral("\nclass C:"));
        QCOMPARE(Block(0).length() - 1, length);
        QCOMPARE(KeyOfFormat(FormatAt(Block(0), 0)), coloured ? ColorSettings::PYTHON_KEYWORDS : QString());
        QCOMPARE(KeyOfFormat(FormatAt(Block(1), 0)), ColorSettings::PYTHON_DOC_STRINGS);
    }

    // As formats: each row's name starts with the buffer's language.
    void blockData_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const char* text, int line, const char* expected)
        { QTest::newRow(name) << QString(text) << line << QString(expected); };
        row("mel string cut off at the line end", "\"abc", 0, "ignore=0-3,3-4 single=0-3,3-4 length=4");
        row("mel string continued by a backslash", "\"ab\\\ncd\" x", 0, "state=2 ignore=0-3,3-4 length=4");
        row("mel continued string line two", "\"ab\\\ncd\" x", 1, "ignore=0-2 length=5");
        row("mel escaped quote", "\"a\\\"b\" (", 0, "ignore=0-5 braces=(7 smart=1 length=8");
        row("mel escaped backslash", "\"a\\\\\" (", 0, "ignore=0-4 braces=(6 smart=1 length=7");
        row("mel comment after string", "\"abc\" // {", 0, "ignore=0-4,6-9,9-10 single=6-9,9-10 length=6");
        row("mel block comment opens", "a /* b\nc */ d {", 0,
            "state=1 ignore=2-5,5-6 block=2-5,5-6 comments=+2 length=6");
        row("mel block comment closes", "a /* b\nc */ d {", 1,
            "ignore=0-3 block=0-3 comments=-4 braces={7 smart=1 length=8");
        row("mel block comment after a string", "\"a\" /* b", 0,
            "state=1 ignore=0-2,4-7,7-8 block=4-7,7-8 comments=+4 length=8");
        row("mel braces", "  if ($a) {", 0, "braces=(5 )8 {10 indent='  ' smart=1 length=11");
        row("mel closing braces", "} }", 0, "braces=}0 }2 smart=-2 length=3");
        row("mel empty line", "x\n\ny", 1, "empty=1 length=0");
        row("py blank line", "   ", 0, "indent='   ' empty=1 length=3");
        row("py triple quote opens", "'''abc\nx ' y", 0, "state=2 ignore=0-5,5-6 length=6");
        row("py empty line in doc string", "\"\"\"a\n\nb\"\"\"", 1,
            "state=1 ignore=0--1,-1-0 empty=1 length=0");
        row("py string continued", "x = \"a\\", 0, "state=3 ignore=4-6,6-7 length=7");
        row("py comment after colon", "def f():  # note", 0,
            "ignore=10-15,15-16 single=10-15,15-16 braces=(5 )6 smart=1 length=10");
        row("py brackets in strings and comments", "f('(', \"[\")  # {", 0,
            "ignore=2-4,7-9,13-15,15-16 single=13-15,15-16 braces=(1 )10 length=13");
        row("py open bracket", "x = [", 0, "braces=[4 smart=1 length=5");
        row("py comma", "x = [1,", 0, "braces=[4 length=7");
        row("py prefix stays outside", "x = rb'\\d'", 0, "ignore=6-9 length=10");
        row("text records brackets", "f(x) # y", 0, "braces=(1 )3 length=8");
    }

    void blockData()
    {
        QFETCH(QString, text);
        QFETCH(int, line);
        QFETCH(QString, expected);
        NewEditor(QTest::currentDataTag());
        Type(text);
        QCOMPARE(editor->GetText(), text);
        QCOMPARE(Describe(Block(line)), expected);
    }

    // Opening a block comment at the top recolours every line below, and closing it again
    // restores them: the block state carries the span from line to line.
    void spanReachesLinesBelow()
    {
        NewEditor(QStringLiteral("mel"));
        editor->SetText(QStringLiteral("ls -sl;\n").repeated(199) + QStringLiteral("ls -sl;"));
        const QTextBlock last = Block(199);
        // Under load, a colouring of 200 lines may take more than one step.
        QTRY_COMPARE(KeyOfFormat(FormatAt(last, 0)), ColorSettings::MEL_COMMANDS);
        editor->moveCursor(QTextCursor::Start);
        Type(QStringLiteral("/*"));
        QTRY_COMPARE(KeyOfFormat(FormatAt(last, 0)), ColorSettings::MEL_COMMENTS);
        QCOMPARE(last.userState(), 1);
        QVERIFY(CodeEditor::GetBlockData(last)->IsBlockCommentPosition(3));
        QTest::keyClick(editor.get(), Qt::Key_Backspace);
        QTRY_COMPARE(KeyOfFormat(FormatAt(last, 0)), ColorSettings::MEL_COMMANDS);
        QCOMPARE(last.userState(), -1);
        QVERIFY(!CodeEditor::GetBlockData(last)->IsIgnoredPosition(3));
    }

    // A colour edited in the store reaches the buffer at the next rehighlight, through the same
    // highlighter.
    void colourChangeKeepsTheHighlighter()
    {
        NewEditor(QStringLiteral("mel"));
        Type(QStringLiteral("string $a;"));
        const QPointer<Highlighter> before = editor->document()->findChild<Highlighter*>();
        QVERIFY(before);
        const QString key = ColorSettings::MEL_KEYWORDS;
        const QTextCharFormat saved = ColorSettings::GetCodeEditorFormat(key);
        QTextCharFormat changed = saved;
        changed.setForeground(QColor(1, 2, 3));
        changed.setFontItalic(true);
        ColorSettings::SetCodeEditorFormat(key, changed);
        editor->UpdateFontsAndColors();
        const QTextCharFormat now = FormatAt(Block(0), 2);
        ColorSettings::SetCodeEditorFormat(key, saved);
        QCOMPARE(editor->document()->findChild<Highlighter*>(), before.data());
        QCOMPARE(now.foreground().color(), QColor(1, 2, 3));
        QVERIFY(now.fontItalic());
    }

    void languageDecidesTheHighlighter()
    {
        NewEditor(QStringLiteral("text"));
        Type(QStringLiteral("import os  # x"));
        // Another path in the same language keeps the highlighter; another language replaces it.
        const QPointer<Highlighter> before = editor->document()->findChild<Highlighter*>();
        CodeEditorProperties properties = editor->GetProperties();
        properties.filePath = QStringLiteral("/tmp/other");
        editor->SetProperties(properties);
        QCOMPARE(editor->document()->findChild<Highlighter*>(), before.data());
        properties.language = CodeEditorLanguage::PYTHON;
        editor->SetProperties(properties);
        QVERIFY(before.isNull());
        QCOMPARE(editor->document()->findChildren<Highlighter*>().size(), 1);
        QVERIFY(editor->document()->findChild<PythonHighlighter*>());
        QCoreApplication::processEvents(); // the new highlighter's first full pass
        QCOMPARE(KeyOfFormat(FormatAt(Block(0), 0)), ColorSettings::PYTHON_KEYWORDS);
        QVERIFY(CodeEditor::GetBlockData(Block(0))->IsSingleLineCommentPosition(12));
    }

    void mel_data()
    {
        const char* const rows[][3] = {
            {"empty", "", ""},
            {"blank lines only", "\n \n\t\n", ""},
            {"blank line before code", "\n\nproc foo() {}",
             "2 foo@7/0|warning Empty line(s) at start of file. Line numbers in trace may be incorrect. 0-0"},
            {"array return type", "global proc string[] foo()\n{\n}\n", "1 foo@21/0"},
            // A name that starts with a type word, after a tab: the head of the line ends at the last blank.
            {"name begins with a type", "global\tproc int\tintegerMax() {}", "1 integerMax@16/0"},
            {"two dots", "global proc foo..bar() {}", ""},
            {"trailing dot", "global proc foo.() {}", ""},
            {"nested proc not listed", "proc a() {\n proc b() {}\n}\nproc c() {}", "2 a@5/0|2 c@31/0"},
            {"nested global proc not listed", "global proc a() {\nglobal proc b() {}\n}\nglobal proc c() {}",
             "1 a@12/0|1 c@51/0"},
            {"first variable only", "global int $a, $b;", "3 $a@11/0"},
            {"type word with a letter more", "global ints$a;", ""},
            {"variable in braces", "{ global string[] $s; }", "3 $s@18/1"},
            {"line comment TODO", "// TODO fix\nproc a() {}", "2 a@17/0|info TODO: 1-11"},
            {"TODOS is no TODO", "//TODOS x_TODO TODO1", ""},
            {"block comment TODO", "/* TODO */ proc a() {}", "2 a@16/0|info TODO: 1-8"},
            {"block comment over lines hides a proc", "/*\nproc a() {}\n TODO */", "info TODO: 1-21"},
            {"proc inside a string", "string $s = \" proc x() {\";", ""},
            {"proc after an unterminated string", "print \"abc\nproc x() {}", "2 x@16/0"},
            {"escaped quote", "print \"a\\\" proc x() {}\";\nproc y() {}", "2 y@30/0"},
            {"even backslashes close the string", "print \"a\\\\\"; proc x() {}", "2 x@18/0"},
            {"continued line stays in the string", "print \"abc\\\nproc x() {}\";", ""},
            {"not after white space", "$rgb=1;xglobal int $v;xproc foo() {}", ""},
            {"stray closing brace", "}\nglobal proc foo() {}", "1 foo@14/0"},
            {"brace in a string does not end the proc", "proc a() {\n print \"}\";\n proc b() {}\n}",
             "2 a@5/0"},
            {"array parameter", "global proc foo(string $a[]) {}", "1 foo@12/0"},
            {"paragraph separators", "proc a() {}\u2029proc b() {}", "2 a@5/0|2 b@17/0"}};
        ParserRows(rows);
    }

    void mel()
    {
        MelParser parser;
        Check(parser, QStringLiteral("\n\nglobal proc old() {} // TODO\nprint \"x"),
              QStringLiteral("/tmp/a.mel"));
        // MEL shows no parse errors, whatever the text: no row expects one.
        QVERIFY(parser.IsMel() && !parser.IsPython());
    }

    void python_data()
    {
        const char* const rows[][3] = {
            {"empty", "", ""},
            {"def at the end", "def f():\n", "8 f@4/0"},
            {"expected an indented block", "if a:\nb = 1", "error Expected an indented block 6-6"},
            {"unexpected indent", "a = 1\n    b = 2\n    c = 3", "error Unexpected indent 6-10"},
            {"unindent without a level", "if a:\n    x = 1\n  y = 2\n z = 3\n",
             "error Unindent does not match any outer indentation level 16-18"},
            {"colon in a dictionary over lines", "d = {\n  'a':\n  1}\nx = 1", ""},
            {"stray bracket once", "x = 1)\ny = 2]", "error Unexpected ')' 5-6"},
            {"colon before a comment opens a block", "if a:  # why\nb = 1",
             "error Expected an indented block 13-13"},
            {"colon with code after it", "if a: b = 1\nc = 2", ""},
            {"static and class methods alone",
             "class A:\n    @staticmethod\n    def f(): pass\n    @classmethod\n    def g(): pass\n",
             "11 A@6/0|9 f@35/1|10 g@70/1"},
            {"class method wins when later",
             "class A:\n    @staticmethod\n    @classmethod\n    def f(): pass\n", "11 A@6/0|10 f@52/1"},
            {"static method wins when later",
             "class A:\n    @classmethod\n    @staticmethod\n    def f(): pass\n", "11 A@6/0|9 f@52/1"},
            {"decorator with arguments is no static method", "@staticmethod # x\ndef f(): pass", "8 f@22/0"},
            {"comment clears decorators", "@staticmethod\n# c\ndef f(): pass", "8 f@22/0"},
            {"plain imports", "import os, sys # tools", "4 os@7/0|4 sys@11/0"},
            {"import with a bad name", "import os, s-y", ""},
            {"import as", "import os.path as p", "5 p = os.path@18/0"},
            {"two aliases are rejected", "import a as b, c as d", ""},
            {"from import as", "from a import b as c, d", "6 c = b (a)@19/0|6 d (a)@22/0"},
            {"from import star", "from m import *", "6 * (m)@14/0"},
            {"single bracketed name as it stands", "from m import (a)", "6 (a) (m)@14/0"},
            {"bracketed list with two names rejected", "from m import (a, b)", ""},
            {"indented import level", "def f():\n    import os\n", "8 f@4/0|4 os@20/1"},
            {"main guard", "if __name__ == \"__main__\":\n    main()\n", "7 __main__@16/0"},
            {"main guard single quoted", "if __name__ == '__main__':\n    main()\n", "7 __main__@16/0"},
            {"docstring TODO", "'''TODO'''", "info TODO: 0-7"},
            {"unterminated docstring is no error", "x = '''abc\ndef f(): pass", ""},
            {"unterminated string", "x = 'abc\ny = 1", "error Unterminated String 4-8"},
            {"escaped quote", "x = 'a\\'b'\ndef f(): pass", "8 f@15/0"},
            {"comment TODO", "x = 1  # TODO: later\n", "info TODO: 7-20"},
            {"class at margin resets the stack", "class A(B):\n  x\n    y\nclass C:\n    pass\n",
             "11 A@6/0|11 C@28/0|error Unexpected indent 16-20"},
            {"mixed indent once", "if a:\n\t x = 1\n\t y = 2\n",
             "warning Indent contains both tabs and spaces 6-8"},
            {"open bracket before a keyword of the first word's length",
             "class A:\n    x = (1,\nclass B:\n    pass\n", "11 A@6/0|11 B@27/0|error Expected a ')' 20-20"},
            {"open bracket before a keyword of another length", "x = (1,\nclass B:\n    pass\n", ""},
            {"paragraph separators", "def f():\u2029    pass\u2029def g(): pass", "8 f@4/0|8 g@22/0"}};
        ParserRows(rows);
    }

    void python()
    {
        PythonParser parser;
        Check(parser, QStringLiteral("if a:\nx\n\t y\n@staticmethod\n"), QStringLiteral("/tmp/a.py"));
        QVERIFY(parser.IsPython() && !parser.IsMel());
    }

    void agreesWithTokenize()
    {
        QString report;
        QVERIFY2(PythonCorpusDump::Compare(SCRIPT, RecordsPath(), SummaryPath(), report), qPrintable(report));
        const QJsonObject summary = ReadJson(SummaryPath());
        const QJsonObject totals = summary.value(QStringLiteral("totals")).toObject();
        const QJsonObject classes = summary.value(QStringLiteral("classes")).toObject();
        QCOMPARE(totals.value(QStringLiteral("files")).toInt(), paths.size());
        QVERIFY2(!classes.contains(QStringLiteral("unexplained")), qPrintable(report));
        // The sample holds raw and byte strings, so the one explained class shows up.
        QVERIFY2(classes.value(QStringLiteral("prefix")).toInt() > 0, qPrintable(report));
        const double characters = totals.value(QStringLiteral("characters")).toDouble();
        QVERIFY(characters > 100000);
        QVERIFY2(totals.value(QStringLiteral("string_comment_agree")).toDouble() / characters > 0.999,
                 qPrintable(report));

        // The comparison itself catches a stretch that the highlighter got wrong: one docstring
        // line taken out of the records.
        QJsonObject records = ReadJson(RecordsPath());
        QJsonArray files = records.value(QStringLiteral("files")).toArray();
        QJsonObject file = files.at(0).toObject();
        QJsonArray lines = file.value(QStringLiteral("lines")).toArray();
        int changed = 0;
        while (changed < lines.size() && lines.at(changed).toArray().at(0).toArray().isEmpty())
            ++changed;
        QVERIFY(changed < lines.size());
        lines.replace(changed, QJsonArray{QJsonArray(), QJsonArray()});
        file.insert(QStringLiteral("lines"), lines);
        files.replace(0, file);
        records.insert(QStringLiteral("files"), files);
        const QString broken = folder.filePath(QStringLiteral("broken.json"));
        QVERIFY(TestFiles::Write(broken, QJsonDocument(records).toJson()));
        QVERIFY(PythonCorpusDump::Compare(SCRIPT, broken, SummaryPath(), report));
        const QJsonObject brokenClasses = ReadJson(SummaryPath()).value(QStringLiteral("classes")).toObject();
        QVERIFY2(brokenClasses.value(QStringLiteral("unexplained")).toInt() > 0, qPrintable(report));
    }

    // Chosen for variety: decorators, nested classes, long import lists, __main__ guards, backslash
    // continuations, tabs.
    void parserAgreesWithAst()
    {
        const QStringList names =
            QStringLiteral("abc argparse bdb calendar dataclasses enum functools imaplib "
                           "pathlib pydoc tabnanny typing")
                .split(QLatin1Char(' '));
        QStringList files;
        for (const QString& name : names)
            files.append(QStringLiteral("/usr/lib/python3.11/%1.py").arg(name));
        const QString script = QFINDTESTDATA("../../bench/python_ast_facts.py");
        QVERIFY(!script.isEmpty());
        PythonAstComparison::Totals totals;
        QVERIFY(PythonAstComparison::Run(files, script, totals));
        const QString report = PythonAstComparison::Report(totals);
        QCOMPARE(totals.files, names.size());
        QCOMPARE(totals.astFiles, names.size());
        QVERIFY2(totals.astItems > 1000, qPrintable(report));
        for (auto it = totals.classes.cbegin(); it != totals.classes.cend(); ++it)
            QVERIFY2(!it.key().contains(QLatin1String("unexplained")), qPrintable(report));
        for (auto it = totals.faultClasses.cbegin(); it != totals.faultClasses.cend(); ++it)
            QVERIFY2(!it.key().contains(QLatin1String("unexplained")), qPrintable(report));
        // Nine items in ten, at least, as ast has them.
        QVERIFY2(totals.agreed * 10 >= totals.astItems * 9, qPrintable(report));
    }
};

QTEST_MAIN(TestLanguageText)
#include "tst_LanguageText.moc"
