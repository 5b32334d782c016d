// The completion popup in a real CodeEditor on the real host: keys typed, rows read back; and the
// analysis script behind Python completion, asked through the host bridge as the completer asks it:
// what it finds, and that bad input gives an empty list and never an error.
#include "HostFixture.h"
#include "editor/CodeEditor.h"
#include "language/AutoCompleter.h"
#include "language/PythonAutoCompleter.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"

#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListView>
#include <QtWidgets/QVBoxLayout>

#include <memory>

namespace
{
QStringList Words(const char* words)
{
    return QString::fromLatin1(words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}
// In typed text, this character stands for Ctrl+Space.
const QChar CTRL_SPACE = QLatin1Char('^');
// In a buffer, this character marks the cursor.
const QChar CURSOR = QLatin1Char('|');
const QString LOCATOR = QStringLiteral("__brindlet_lctr_mvkt__ = None");

QStringList Query(const QString& source, const QString& object, bool fallback = false)
{
    Settings::pythonNativeMayaAutoCompleteFallback = fallback;
    QStringList results;
    MayaUtil::PythonAttributesFromSource(PythonAutoCompleter::EscapeForPython(source), object, results, true);
    return results;
}
} // namespace

class TestAutoCompleter : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<QWidget> window;
    CodeEditor* editor = nullptr;

    AutoCompleter* Completer() const { return editor->findChild<AutoCompleter*>(); }

    void Show(CodeEditorLanguage language, QString buffer)
    {
        window = std::make_unique<QWidget>();
        auto* layout = new QVBoxLayout(window.get());
        editor = new CodeEditor({CodeEditorType::INTERNAL_BUFFER, language, QString(), QString()}, nullptr);
        layout->addWidget(editor);
        window->resize(700, 500);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        const int cursor = static_cast<int>(buffer.indexOf(CURSOR));
        buffer.remove(CURSOR);
        editor->SetText(buffer);
        editor->SetCursorPosition(cursor < 0 ? static_cast<int>(buffer.size()) : cursor);
        editor->setFocus();
    }

    // Keys go where the user's keys go: to the popup's list while it is open.
    QWidget* KeyTarget() const
    {
        QWidget* popup = QApplication::activePopupWidget();
        return popup && popup->focusWidget() ? popup->focusWidget() : editor;
    }

    void Type(const QString& text)
    {
        for (const QChar c : text)
        {
            if (c == CTRL_SPACE)
                QTest::keyClick(KeyTarget(), Qt::Key_Space, Qt::ControlModifier);
            else
                QTest::keyClick(KeyTarget(), c.toLatin1());
        }
    }

    void Press(Qt::Key key) { QTest::keyClick(KeyTarget(), key); }

    QStringList Rows() const
    {
        const AutoCompleter* completer = Completer();
        return completer && completer->isVisible() ? completer->VisibleRows() : QStringList();
    }

    QString SelectedText() const { return Completer()->VisibleRows().value(Completer()->SelectedRow()); }

    static void CompareRows(const QStringList& rows, const QStringList& contains, const QStringList& excludes)
    {
        for (const QString& name : contains)
            QVERIFY2(rows.contains(name), qPrintable(name + QStringLiteral(" missing from: ") +
                                                     rows.mid(0, 40).join(QLatin1Char(' '))));
        for (const QString& name : excludes)
            QVERIFY2(!rows.contains(name), qPrintable(name + QStringLiteral(" offered")));
    }

private slots:
    void initTestCase()
    {
        fixture = std::make_unique<HostFixture>();
        QCOMPARE(fixture->LoadPlugin(), MStatus::kSuccess);
        QVERIFY(MayaUtil::MelCommands().contains(QStringLiteral("polyCube")));
    }

    void init()
    {
        Settings::melCompleteOnLetters = Settings::pythonCompleteOnLetters = Settings::pythonCompleteOnDot =
            true;
        Settings::pythonIncludeKeywords = true;
        Settings::pythonIncludeBuiltins = Settings::pythonNativeMayaAutoCompleteFallback = false;
    }

    void cleanup()
    {
        window.reset();
        editor = nullptr;
    }

    void cleanupTestCase() { fixture.reset(); }

    // Lists are words split at blanks; a row named "mel ..." is MEL, any other Python.
    void rowsOffered_data()
    {
        QTest::addColumn<QString>("buffer");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("contains");
        QTest::addColumn<QStringList>("excludes");
        const char* const method = "class Shape(object):\n"
                                   "    def __init__(self):\n"
                                   "        self.width = 1\n"
                                   "        self.items = []\n\n"
                                   "    def grow(self, step):\n"
                                   "        |\n\n"
                                   "    def shrink(self):\n"
                                   "        pass\n";
        const char* const rows[][5] = {
            {"mel command", "", "polyCu", "polyCube", "polySphere PolyCube"},
            {"mel variable", "string $polyCube;\n|", "$polyCu", "", "polyCube"},
            {"mel flag", "polyCube |", "-po", "", "polyCube"},
            {"mel string", "print \"|\";", "polyCu", "", "polyCube"},
            {"mel comment", "// |", "polyCu", "", "polyCube"},
            {"module", "import os\n|", "os.pa", "path pardir", "join _exit"},
            {"module of module", "import os\n|", "os.path.jo", "join", "path"},
            {"case-insensitive filter", "import os\n|", "os.PAT", "path pathsep", "pardir"},
            {"self in a method", method, "self.", "width items grow shrink __init__", "step Shape"},
            {"self member", method, "self.items.ap", "append", "width"},
            {"locals and arguments", method, "^", "step self Shape while", "width"},
            {"def line", "import os\nimport sys\n|", "def ^", "os sys", "while def"},
            {"call over lines", "names = []\nresult = max(1,\n    |\n    2)\nafter = 1\n", "names.ap",
             "append", ""},
            {"bare module import", "", "import ma", "", "maya"},
            {"from package import", "", "from maya import cm", "cmds", "mel"},
            {"maya.cmds", "import maya.cmds as cmds\n|", "cmds.polyCu", "polyCube", "polySphere ls"},
            {"name below the cursor", "early_value = 1\nearly_other = 2\n|\nlate_value = 2\n", "^",
             "early_value", "late_value"},
            {"from import alias", "from os import path as osp\n|", "osp.jo", "join", ""},
            {"import line", "", "import os.pa", "path", "join"},
            {"try block", "try:\n    import json\nexcept ImportError:\n    json = None\n|", "json.lo",
             "loads load", "dumps"},
            {"unfinished try", "import os\ntry:\n    value = 1\n|", "val", "value", ""},
            {"unfinished line", "import os\nresult = max(|", "os.pa", "path", ""},
            {"empty block above", "def empty():\n\ndef work():\n    items = []\n    |\n", "items.ap",
             "append", ""},
            {"syntax error elsewhere", "import os\nbroken = = 1\n|", "os.pa", "path", ""},
            {"python string", "import os\nx = \"|\"", "os.pa", "", "path"},
            {"python comment", "import os\n# |", "os.pa", "", "path"}};
        for (const auto& row : rows)
            QTest::newRow(row[0]) << QString(row[1]) << QString(row[2]) << Words(row[3]) << Words(row[4]);
    }

    void rowsOffered()
    {
        QFETCH(QString, buffer);
        QFETCH(QString, typed);
        QFETCH(QStringList, contains);
        QFETCH(QStringList, excludes);
        const bool mel = QByteArray(QTest::currentDataTag()).startsWith("mel ");
        Show(mel ? CodeEditorLanguage::MEL : CodeEditorLanguage::PYTHON, buffer);
        Type(typed);
        CompareRows(Rows(), contains, excludes);
        if (contains.isEmpty())
            QVERIFY(!editor->AutoCompleterVisible());
        // The prefix filter: every row starts with the word before the cursor.
        const QString prefix = Completer() ? Completer()->GetPrefix() : QString();
        for (const QString& row : Rows())
            QVERIFY2(row.startsWith(prefix, mel ? Qt::CaseSensitive : Qt::CaseInsensitive), qPrintable(row));
    }

    void keysMoveAcceptAndClose()
    {
        Settings::melAutoCompleteToQuickHelp = true;
        Show(CodeEditorLanguage::MEL, QStringLiteral("|;"));
        QSignalSpy quickHelp(editor, SIGNAL(QuickHelpChanged(QString, bool)));
        Type(QStringLiteral("poly"));
        const int broad = static_cast<int>(Rows().size());
        // Clipped at the screen's edges, not moved; away from them, twelve rows high.
        QVERIFY(broad > 12);
        AutoCompleter* completer = Completer();
        const QRect screen = completer->screen()->geometry();
        const QPoint corner(screen.right() - 40, screen.bottom() - 30);
        completer->UpdateRect(QRect(corner, QSize(1, 14)));
        QCOMPARE(completer->geometry().topLeft(), corner);
        QCOMPARE(completer->geometry().right(), screen.right());
        QCOMPARE(completer->geometry().bottom(), screen.bottom());
        completer->UpdateRect(QRect(screen.topLeft(), QSize(1, 14)));
        QCOMPARE(completer->geometry().height(), 12 * completer->findChild<QListView*>()->sizeHintForRow(0));
        Type(QStringLiteral("Cu"));
        const QStringList rows = Rows();
        QVERIFY(rows.size() >= 2 && rows.size() < broad);
        QCOMPARE(SelectedText(), rows.first());

        Press(Qt::Key_Up);
        QCOMPARE(Completer()->SelectedRow(), 0);
        Press(Qt::Key_Down);
        QCOMPARE(SelectedText(), rows.at(1));
        for (int i = 0; i < rows.size() + 2; ++i)
            Press(Qt::Key_Down);
        QCOMPARE(SelectedText(), rows.last());

        Press(Qt::Key_Escape);
        QVERIFY(!editor->AutoCompleterVisible());
        QCOMPARE(editor->GetText(), QStringLiteral("polyCu;"));

        Type(QStringLiteral("b"));
        QCOMPARE(Rows().first(), QStringLiteral("polyCube"));
        Press(Qt::Key_Return);
        QVERIFY(!editor->AutoCompleterVisible());
        QCOMPARE(editor->GetText(), QStringLiteral("polyCube;"));
        QVERIFY(editor->hasFocus());
        QCOMPARE(quickHelp.size(), 1);
        QCOMPARE(quickHelp.first(), (QVariantList{QStringLiteral("polyCube"), false}));

        // Tab takes the selected row, not the first.
        Type(QStringLiteral(" poly"));
        const QStringList polyRows = Rows();
        Press(Qt::Key_Down);
        Press(Qt::Key_Tab);
        QCOMPARE(editor->GetText(), QStringLiteral("polyCube ") + polyRows.at(1) + QLatin1Char(';'));
    }

    void ctrlSpaceAppliesTheOnlyRow_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("buffer");
        QTest::newRow("mel") << int(CodeEditorLanguage::MEL) << QString("polyCub");
        QTest::newRow("python") << int(CodeEditorLanguage::PYTHON)
                                << QString("import maya.cmds as cmds\ncmds.polyCub");
    }

    void ctrlSpaceAppliesTheOnlyRow()
    {
        QFETCH(int, language);
        QFETCH(QString, buffer);
        Settings::pythonAutoCompleteToQuickHelp = true;
        Show(static_cast<CodeEditorLanguage>(language), buffer);
        QSignalSpy quickHelp(editor, SIGNAL(QuickHelpChanged(QString, bool)));
        Type(QString(CTRL_SPACE));
        QVERIFY(!editor->AutoCompleterVisible());
        QCOMPARE(editor->GetText(), buffer + QLatin1Char('e'));
        QCOMPARE(quickHelp.size(), 1);

        // With the letters switch off, Ctrl+Space does nothing.
        Settings::melCompleteOnLetters = Settings::pythonCompleteOnLetters = false;
        Type(QStringLiteral("\b"));
        editor->SetText(buffer);
        editor->SetCursorPosition(static_cast<int>(buffer.size()));
        Type(QString(CTRL_SPACE));
        QCOMPARE(editor->GetText(), buffer);
    }

    void popupSelectsClosesAndStays()
    {
        Show(CodeEditorLanguage::PYTHON, QStringLiteral("import os\n|"));
        // The filter folds case; the row selected first is the first that matches the case typed.
        Type(QStringLiteral("os.Pat"));
        QVERIFY(Rows().size() >= 2 && Rows().first() != QStringLiteral("PathLike"));
        QCOMPARE(SelectedText(), QStringLiteral("PathLike"));
        // A prefix that matches nothing closes the popup.
        Type(QStringLiteral("qz"));
        QVERIFY(!editor->AutoCompleterVisible());
        // Backspace over a dot and the arrows close it too.
        Type(QStringLiteral("\b\b\b\b\b\b."));
        QVERIFY(editor->AutoCompleterVisible());
        Press(Qt::Key_Backspace);
        QVERIFY(!editor->AutoCompleterVisible());
        Type(QStringLiteral(".p"));
        QVERIFY(editor->AutoCompleterVisible());
        Press(Qt::Key_Left);
        QVERIFY(!editor->AutoCompleterVisible());
        QCOMPARE(editor->GetText(), QStringLiteral("import os\nos.p"));
    }

    // As in rowsOffered, lists are words split at blanks; '|' stands for the locator.
    void names_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("object");
        QTest::addColumn<bool>("fallback");
        QTest::addColumn<QStringList>("contains");
        QTest::addColumn<QStringList>("excludes");
        const auto row = [](const char* name, const char* source, const char* object, bool fallback,
                            const char* contains, const char* excludes)
        {
            QTest::newRow(name) << QString(source).replace(CURSOR, LOCATOR) << QString(object) << fallback
                                << Words(contains) << Words(excludes);
        };
        row("list value", "x = []\n|", "x", false, "append sort", "keys");
        row("conflicting kinds", "x = 1\nx = 'a'\n|", "x", false, "", "upper real");
        row("linked name", "a = {}\nb = a\n|", "b", false, "keys", "");
        row("linked ahead of its value", "b = a\na = {}\n|", "b", false, "keys", "");
        row("instance of own class", "class Foo:\n    size = 1\n    def bar(self): pass\nobj = Foo()\n|",
            "obj", false, "bar size", "Foo");
        row("instance of module class", "import collections\nd = collections.OrderedDict()\n|", "d", false,
            "move_to_end", "");
        row("function result", "import os\n|", "os.getcwd", false, "", "__call__ __name__");
        row("from import alias", "from os import path as p\n|", "p", false, "join", "");
        row("module read, not run", "import wsgiref.headers as h\n|", "h", false, "Headers", "");
        row("names below the cursor",
            "early = 1\ndef f(arg):\n    local = 'a \\\" \\\\ b'\n    |\nlate = 2\n", "", false,
            "early f arg local", "late");
        row("functions below a block", "early = 1\nif early:\n    |\ndef later(): pass\n", "", false, "early",
            "later");
        row("top level after error", "import os\nvalue = 1\n)\n|", "", false, "os value", "");
        row("imports after error", "import os\nvalue = (\n|", "", false, "os", "value");
        row("inherited members",
            "class Base(object):\n    def base_method(self): pass\n"
            "class Child(Base):\n    def own(self, arg):\n        self.made = 1\n        |",
            "self", false, "base_method own made __init__", "arg");
        row("method name typed",
            "class Base(object):\n    def first(self): pass\n"
            "    def __bqdefloc__(__brindlet_lctr_mvkt__): pass",
            "", false, "first self cls __init__ __repr__", "__bqdefloc__");
        row("live object fallback", "|", "sys.flags", true, "optimize", "");
        row("no fallback", "|", "sys.flags", false, "", "optimize");
        row("maya.cmds", "import maya.cmds as cmds\n|", "cmds", false, "polyCube ls xform", "polyCubeX");
    }

    void names()
    {
        QFETCH(QString, source);
        QFETCH(QString, object);
        QFETCH(bool, fallback);
        QFETCH(QStringList, contains);
        QFETCH(QStringList, excludes);
        const QStringList results = Query(source, object, fallback);
        CompareRows(results, contains, excludes);
        if (contains.isEmpty())
            QVERIFY2(results.isEmpty(), qPrintable(results.mid(0, 10).join(QLatin1Char(' '))));
    }

    // Public names come first, each part sorted without regard to case; locator names never show.
    // Requests in a row reuse the statements of parts that did not change: an edit above the
    // cursor shows at once, and a cut inside a literal falls back to the whole text, every time.
    void orderAndRequestsInARow()
    {
        const QString here = LOCATOR;
        QCOMPARE(Query("_b = 1\nZeta = 1\nalpha = 1\n_A = 1\n__bqclsloc__ = 1\n" + here, QString()),
                 (QStringList{"alpha", "Zeta", "_A", "_b"}));
        QVERIFY(Query("def alpha(): pass\n" + here, QString()).contains(QStringLiteral("alpha")));
        const QStringList renamed = Query("def beta(): pass\n" + here, QString());
        QVERIFY(renamed.contains(QStringLiteral("beta")) && !renamed.contains(QStringLiteral("alpha")));
        for (int i = 0; i < 2; ++i)
        {
            const QStringList split = Query("d = {\n'k': 1,\n}\ne = 1\n" + here, QString());
            QVERIFY2(split.contains(QStringLiteral("d")) && split.contains(QStringLiteral("e")),
                     qPrintable(split.join(QLatin1Char(' '))));
        }
    }

    void badInputGivesNothing_data()
    {
        QTest::addColumn<QString>("source");
        QString binary = QStringLiteral("\x01\x02\xff\xfe") + QChar(0) + QChar(0xD800) +
                         QStringLiteral("\r\n\"\\x\\\n") + QChar(0xFFFF);
        QTest::newRow("broken") << QStringLiteral("def (:\n  ))((\n\tclass\n");
        QTest::newRow("binary-ish") << binary.repeated(200);
        QTest::newRow("huge") << "value = foo(\n" + QString("    1 +\n").repeated(100000);
        QTest::newRow("nested brackets")
            << "x = " + QString("(").repeated(5000) + QString(")").repeated(5000);
        QString blocks;
        for (int depth = 0; depth < 150; ++depth)
            blocks += QString(depth, QLatin1Char(' ')) + QStringLiteral("if x:\n");
        QTest::newRow("nested blocks") << blocks;
        QTest::newRow("deep attribute") << QStringLiteral("= a") + QStringLiteral(".b").repeated(50000);
    }

    void badInputGivesNothing()
    {
        QFETCH(QString, source);
        fixture->ClearMessages();
        QCOMPARE(Query(source, QString()), QStringList());
        QCOMPARE(Query(source, QStringLiteral("os.path")), QStringList());
        QCOMPARE(fixture->MessagesOfType(MCommandMessage::kError), QStringList());
        // The interpreter is still there for the next request.
        QVERIFY(Query(QStringLiteral("import os\n") + LOCATOR, QStringLiteral("os")).contains("path"));
    }
};

QTEST_MAIN(TestAutoCompleter)
#include "tst_AutoCompleter.moc"
