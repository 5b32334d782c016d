#include "language/PythonParser.h"

#include <QtTest/QtTest>

namespace
{
QStringList Describe(const QList<ParserItem>& items)
{
    QStringList result;
    for (const ParserItem& item : items)
        result.append(QStringLiteral("%1 %2@%3/%4").arg(item.type).arg(item.name).arg(item.position).arg(item.level));
    return result;
}

QStringList Describe(const QList<ParserMessage>& messages)
{
    QStringList result;
    for (const ParserMessage& message : messages)
        result.append(QStringLiteral("%1 %2-%3").arg(message.text).arg(message.start).arg(message.end));
    return result;
}

using L = QStringList;
} // namespace

class TestPythonParser : public QObject
{
    Q_OBJECT

private slots:
    void Parse_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<QStringList>("errors");
        QTest::addColumn<QStringList>("warnings");
        QTest::addColumn<QStringList>("infos");

        QTest::newRow("empty") << QString() << L() << L() << L() << L();
        QTest::newRow("def at the end") << QStringLiteral("def f():\n") << L{QStringLiteral("8 f@4/0")} << L() << L()
                                        << L();
        QTest::newRow("expected an indented block")
            << QStringLiteral("if a:\nb = 1") << L() << L{QStringLiteral("Expected an indented block 6-6")} << L()
            << L();
        QTest::newRow("unexpected indent") << QStringLiteral("a = 1\n    b = 2\n    c = 3") << L()
                                           << L{QStringLiteral("Unexpected indent 6-10")} << L() << L();
        QTest::newRow("unindent without a level")
            << QStringLiteral("if a:\n    x = 1\n  y = 2\n z = 3\n") << L()
            << L{QStringLiteral("Unindent does not match any outer indentation level 16-18")} << L() << L();
        QTest::newRow("colon in a dictionary over lines")
            << QStringLiteral("d = {\n  'a':\n  1}\nx = 1") << L() << L() << L() << L();
        QTest::newRow("stray bracket once")
            << QStringLiteral("x = 1)\ny = 2]") << L() << L{QStringLiteral("Unexpected ')' 5-6")} << L() << L();
        QTest::newRow("colon before a comment opens a block")
            << QStringLiteral("if a:  # why\nb = 1") << L() << L{QStringLiteral("Expected an indented block 13-13")}
            << L() << L();
        QTest::newRow("colon with code after it") << QStringLiteral("if a: b = 1\nc = 2") << L() << L() << L() << L();
        QTest::newRow("class method wins when later")
            << QStringLiteral("class A:\n    @staticmethod\n    @classmethod\n    def f(): pass\n")
            << L{QStringLiteral("11 A@6/0"), QStringLiteral("10 f@52/1")} << L() << L() << L();
        QTest::newRow("static method wins when later")
            << QStringLiteral("class A:\n    @classmethod\n    @staticmethod\n    def f(): pass\n")
            << L{QStringLiteral("11 A@6/0"), QStringLiteral("9 f@52/1")} << L() << L() << L();
        QTest::newRow("decorator with arguments is no static method")
            << QStringLiteral("@staticmethod # x\ndef f(): pass") << L{QStringLiteral("8 f@22/0")} << L() << L()
            << L();
        QTest::newRow("comment clears decorators")
            << QStringLiteral("@staticmethod\n# c\ndef f(): pass") << L{QStringLiteral("8 f@22/0")} << L() << L()
            << L();
        QTest::newRow("plain imports") << QStringLiteral("import os, sys # tools")
                                       << L{QStringLiteral("4 os@7/0"), QStringLiteral("4 sys@11/0")} << L() << L()
                                       << L();
        QTest::newRow("import with a bad name") << QStringLiteral("import os, s-y") << L() << L() << L() << L();
        QTest::newRow("import as") << QStringLiteral("import os.path as p") << L{QStringLiteral("5 p = os.path@18/0")}
                                   << L() << L() << L();
        QTest::newRow("two aliases are rejected") << QStringLiteral("import a as b, c as d") << L() << L() << L()
                                                  << L();
        QTest::newRow("from import as")
            << QStringLiteral("from a import b as c, d") << L{QStringLiteral("6 c = b (a)@19/0"), QStringLiteral("6 d (a)@22/0")}
            << L() << L() << L();
        QTest::newRow("from import star") << QStringLiteral("from m import *") << L{QStringLiteral("6 * (m)@14/0")}
                                          << L() << L() << L();
        QTest::newRow("single bracketed name as it stands")
            << QStringLiteral("from m import (a)") << L{QStringLiteral("6 (a) (m)@14/0")} << L() << L() << L();
        QTest::newRow("bracketed list with two names rejected")
            << QStringLiteral("from m import (a, b)") << L() << L() << L() << L();
        QTest::newRow("indented import level")
            << QStringLiteral("def f():\n    import os\n") << L{QStringLiteral("8 f@4/0"), QStringLiteral("4 os@20/1")}
            << L() << L() << L();
        QTest::newRow("main guard")
            << QStringLiteral("if __name__ == \"__main__\":\n    main()\n") << L{QStringLiteral("7 __main__@16/0")}
            << L() << L() << L();
        QTest::newRow("main guard single quoted")
            << QStringLiteral("if __name__ == '__main__':\n    main()\n") << L{QStringLiteral("7 __main__@16/0")}
            << L() << L() << L();
        QTest::newRow("docstring TODO") << QStringLiteral("'''TODO'''") << L() << L() << L()
                                        << L{QStringLiteral("TODO: 0-7")};
        QTest::newRow("unterminated docstring is no error")
            << QStringLiteral("x = '''abc\ndef f(): pass") << L() << L() << L() << L();
        QTest::newRow("unterminated string")
            << QStringLiteral("x = 'abc\ny = 1") << L() << L{QStringLiteral("Unterminated String 4-8")} << L() << L();
        QTest::newRow("escaped quote") << QStringLiteral("x = 'a\\'b'\ndef f(): pass") << L{QStringLiteral("8 f@15/0")}
                                       << L() << L() << L();
        QTest::newRow("comment TODO") << QStringLiteral("x = 1  # TODO: later\n") << L() << L() << L()
                                      << L{QStringLiteral("TODO: 7-20")};
        QTest::newRow("class at margin resets the stack")
            << QStringLiteral("class A(B):\n  x\n    y\nclass C:\n    pass\n")
            << L{QStringLiteral("11 A@6/0"), QStringLiteral("11 C@28/0")} << L{QStringLiteral("Unexpected indent 16-20")}
            << L() << L();
        QTest::newRow("mixed indent once")
            << QStringLiteral("if a:\n\t x = 1\n\t y = 2\n") << L() << L() << L{QStringLiteral("Indent contains both tabs and spaces 6-8")}
            << L();
        QTest::newRow("open bracket before a keyword of the first word's length")
            << QStringLiteral("class A:\n    x = (1,\nclass B:\n    pass\n")
            << L{QStringLiteral("11 A@6/0"), QStringLiteral("11 B@27/0")} << L{QStringLiteral("Expected a ')' 20-20")}
            << L() << L();
        QTest::newRow("open bracket before a keyword of another length")
            << QStringLiteral("x = (1,\nclass B:\n    pass\n") << L() << L() << L() << L();
        QTest::newRow("paragraph separators")
            << QStringLiteral("def f():\u2029    pass\u2029def g(): pass")
            << L{QStringLiteral("8 f@4/0"), QStringLiteral("8 g@22/0")} << L() << L() << L();
    }

    void Parse()
    {
        QFETCH(QString, source);
        QFETCH(QStringList, items);
        QFETCH(QStringList, errors);
        QFETCH(QStringList, warnings);
        QFETCH(QStringList, infos);

        PythonParser parser;
        // A reused parser must start clean: indent stack, decorators and reported flags included.
        parser.Parse(QStringLiteral("if a:\nx\n\t y\n@staticmethod\n"), QStringLiteral("old.py"));
        parser.Parse(source, QStringLiteral("/tmp/a.py"));
        QCOMPARE(Describe(parser.GetItems()), items);
        QCOMPARE(Describe(parser.GetErrors()), errors);
        QCOMPARE(Describe(parser.GetWarnings()), warnings);
        QCOMPARE(Describe(parser.GetInfos()), infos);
        QVERIFY(parser.IsPython());
        QVERIFY(!parser.IsMel());
    }
};

QTEST_GUILESS_MAIN(TestPythonParser)
#include "tst_PythonParser.moc"
