// The analysis script behind Python completion, asked through the host bridge as the completer
// asks it: what it finds, and that bad input gives an empty list and never an error.
#include "HostFixture.h"
#include "language/PythonAutoCompleter.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"

#include <QtTest/QtTest>

namespace
{
const QString LOCATOR = QStringLiteral("__brindlet_lctr_mvkt__ = None");

QStringList Query(const QString& source, const QString& object, bool fallback = false)
{
    Settings::pythonNativeMayaAutoCompleteFallback = fallback;
    QStringList results;
    MayaUtil::PythonAttributesFromSource(PythonAutoCompleter::EscapeForPython(source), object, results, true);
    return results;
}

QString Repeated(const QString& text, int count)
{
    QString result;
    result.reserve(text.size() * count);
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}
} // namespace

class TestPythonCompleterScript : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;

private slots:
    void initTestCase()
    {
        fixture = std::make_unique<HostFixture>();
        QCOMPARE(fixture->LoadPlugin(), MStatus::kSuccess);
    }

    void cleanupTestCase() { fixture.reset(); }

    void names_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("object");
        QTest::addColumn<bool>("fallback");
        QTest::addColumn<QStringList>("contains");
        QTest::addColumn<QStringList>("excludes");
        const QString L = LOCATOR;
        QTest::newRow("list value") << "x = []\n" + L << "x" << false << QStringList{"append", "sort"}
                                    << QStringList{"keys"};
        QTest::newRow("conflicting kinds")
            << "x = 1\nx = 'a'\n" + L << "x" << false << QStringList() << QStringList{"upper", "real"};
        QTest::newRow("linked name") << "a = {}\nb = a\n" + L << "b" << false << QStringList{"keys"}
                                     << QStringList();
        QTest::newRow("instance of own class")
            << "class Foo:\n    size = 1\n    def bar(self): pass\nobj = Foo()\n" + L << "obj" << false
            << QStringList{"bar", "size"} << QStringList{"Foo"};
        QTest::newRow("instance of module class")
            << "import collections\nd = collections.OrderedDict()\n" + L << "d" << false
            << QStringList{"move_to_end"} << QStringList();
        QTest::newRow("function result") << "import os\n" + L << "os.getcwd" << false << QStringList()
                                         << QStringList{"__call__", "__name__"};
        QTest::newRow("from import alias")
            << "from os import path as p\n" + L << "p" << false << QStringList{"join"} << QStringList();
        QTest::newRow("module read, not run")
            << "import wsgiref.headers as h\n" + L << "h" << false << QStringList{"Headers"} << QStringList();
        QTest::newRow("names below the cursor")
            << "early = 1\ndef f(arg):\n    local = 'a \\\" \\\\ b'\n    " + L + "\nlate = 2\n"
            << QString() << false << QStringList{"early", "f", "arg", "local"} << QStringList{"late"};
        QTest::newRow("functions below a block")
            << "early = 1\nif early:\n    " + L + "\ndef later(): pass\n"
            << QString() << false << QStringList{"early"} << QStringList{"later"};
        QTest::newRow("top level after error") << "import os\nvalue = 1\n)\n" + L << QString() << false
                                               << QStringList{"os", "value"} << QStringList();
        QTest::newRow("imports after error") << "import os\nvalue = (\n" + L << QString() << false
                                             << QStringList{"os"} << QStringList{"value"};
        QTest::newRow("inherited members")
            << "class Base(object):\n    def base_method(self): pass\n"
               "class Child(Base):\n    def own(self, arg):\n        self.made = 1\n        " +
                   L
            << "self" << false << QStringList{"base_method", "own", "made", "__init__"} << QStringList{"arg"};
        QTest::newRow("method name typed")
            << "class Base(object):\n    def first(self): pass\n    def "
               "__bqdefloc__(__brindlet_lctr_mvkt__): pass"
            << QString() << false << QStringList{"first", "self", "cls", "__init__", "__repr__"}
            << QStringList{"__bqdefloc__"};
        QTest::newRow("live object fallback")
            << L << "sys.flags" << true << QStringList{"optimize"} << QStringList();
        QTest::newRow("no fallback") << L << "sys.flags" << false << QStringList() << QStringList{"optimize"};
        QTest::newRow("maya.cmds") << "import maya.cmds as cmds\n" + L << "cmds" << false
                                   << QStringList{"polyCube", "ls", "xform"} << QStringList{"polyCubeX"};
    }

    void names()
    {
        QFETCH(QString, source);
        QFETCH(QString, object);
        QFETCH(bool, fallback);
        QFETCH(QStringList, contains);
        QFETCH(QStringList, excludes);
        const QStringList results = Query(source, object, fallback);
        for (const QString& name : contains)
            QVERIFY2(results.contains(name), qPrintable(name + QStringLiteral(" missing from: ") +
                                                        results.mid(0, 40).join(QLatin1Char(' '))));
        for (const QString& name : excludes)
            QVERIFY2(!results.contains(name), qPrintable(name));
        if (contains.isEmpty())
            QVERIFY2(results.isEmpty(), qPrintable(results.mid(0, 10).join(QLatin1Char(' '))));
    }

    // Requests in a row reuse the statements of parts that did not change: an edit above the
    // cursor shows at once, and a cut inside a literal falls back to the whole text, every time.
    void requestsInARowFollowEdits()
    {
        const QString L = LOCATOR;
        QVERIFY(Query("def alpha(): pass\n" + L, QString()).contains(QStringLiteral("alpha")));
        const QStringList renamed = Query("def beta(): pass\n" + L, QString());
        QVERIFY(renamed.contains(QStringLiteral("beta")) && !renamed.contains(QStringLiteral("alpha")));
        for (int i = 0; i < 2; ++i)
        {
            const QStringList split = Query("d = {\n'k': 1,\n}\ne = 1\n" + L, QString());
            QVERIFY2(split.contains(QStringLiteral("d")) && split.contains(QStringLiteral("e")),
                     qPrintable(split.join(QLatin1Char(' '))));
        }
    }

    void order()
    {
        // Public names first, each part sorted without regard to case; locator names never show.
        const QStringList results = Query(
            QStringLiteral("_b = 1\nZeta = 1\nalpha = 1\n_A = 1\n__bqclsloc__ = 1\n") + LOCATOR, QString());
        QCOMPARE(results, (QStringList{"alpha", "Zeta", "_A", "_b"}));
    }

    void badInputGivesNothing_data()
    {
        QTest::addColumn<QString>("source");
        QString binary = QStringLiteral("\x01\x02\xff\xfe") + QChar(0) + QChar(0xD800) +
                         QStringLiteral("\r\n\"\\x\\\n") + QChar(0xFFFF);
        QTest::newRow("broken") << QStringLiteral("def (:\n  ))((\n\tclass\n");
        QTest::newRow("binary-ish") << Repeated(binary, 200);
        QTest::newRow("huge") << QStringLiteral("value = foo(\n") +
                                     Repeated(QStringLiteral("    1 +\n"), 100000);
        QTest::newRow("nested brackets") << QStringLiteral("x = ") + Repeated(QStringLiteral("("), 5000) +
                                                Repeated(QStringLiteral(")"), 5000);
        QString blocks;
        for (int depth = 0; depth < 150; ++depth)
            blocks += QString(depth, QLatin1Char(' ')) + QStringLiteral("if x:\n");
        QTest::newRow("nested blocks") << blocks;
        QTest::newRow("deep attribute") << QStringLiteral("= a") + Repeated(QStringLiteral(".b"), 50000);
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

QTEST_MAIN(TestPythonCompleterScript)
#include "tst_PythonCompleterScript.moc"
