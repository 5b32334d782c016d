#include "language/MelParser.h"
#include "language/PythonParser.h"

#include <QtTest/QtTest>

namespace
{
// One item as "type name@position/level", so that a row states everything the outline reads.
QStringList Describe(const QList<ParserItem>& items)
{
    QStringList result;
    for (const ParserItem& item : items)
        result.append(
            QStringLiteral("%1 %2@%3/%4").arg(item.type).arg(item.name).arg(item.position).arg(item.level));
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

// Both parsers on text as the editor hands it over: the outline items and the messages.
class TestParsers : public QObject
{
    Q_OBJECT

private:
    // A reused parser must start clean: indent stack, decorators and reported flags included.
    static void Check(BaseParser& parser, const QString& old, const QString& path)
    {
        QFETCH(QString, source);
        QFETCH(QStringList, items);
        QFETCH(QStringList, warnings);
        QFETCH(QStringList, infos);
        parser.Parse(old, QStringLiteral("old"));
        parser.Parse(source, path);
        QCOMPARE(Describe(parser.GetItems()), items);
        QCOMPARE(Describe(parser.GetWarnings()), warnings);
        QCOMPARE(Describe(parser.GetInfos()), infos);
        QCOMPARE(parser.GetFilePath(), path);
    }

private slots:
    void mel_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<QStringList>("warnings");
        QTest::addColumn<QStringList>("infos");

        const QString emptyLines =
            QStringLiteral("Empty line(s) at start of file. Line numbers in trace may be incorrect. 0-0");
        QTest::newRow("empty") << QString() << QStringList() << QStringList() << QStringList();
        QTest::newRow("blank lines only")
            << QStringLiteral("\n \n\t\n") << QStringList() << QStringList() << QStringList();
        QTest::newRow("blank line before code")
            << QStringLiteral("\n\nproc foo() {}") << QStringList{QStringLiteral("2 foo@7/0")}
            << QStringList{emptyLines} << QStringList();
        QTest::newRow("array return type")
            << QStringLiteral("global proc string[] foo()\n{\n}\n")
            << QStringList{QStringLiteral("1 foo@21/0")} << QStringList() << QStringList();
        // A name that starts with a type word, after a tab: the head of the line ends at the last blank.
        QTest::newRow("name begins with a type")
            << QStringLiteral("global\tproc int\tintegerMax() {}") << QStringList{QStringLiteral("1 integerMax@16/0")}
            << QStringList() << QStringList();
        QTest::newRow("two dots") << QStringLiteral("global proc foo..bar() {}") << QStringList()
                                  << QStringList() << QStringList();
        QTest::newRow("trailing dot")
            << QStringLiteral("global proc foo.() {}") << QStringList() << QStringList() << QStringList();
        QTest::newRow("nested proc not listed")
            << QStringLiteral("proc a() {\n proc b() {}\n}\nproc c() {}")
            << QStringList{QStringLiteral("2 a@5/0"), QStringLiteral("2 c@31/0")} << QStringList()
            << QStringList();
        QTest::newRow("nested global proc not listed")
            << QStringLiteral("global proc a() {\nglobal proc b() {}\n}\nglobal proc c() {}")
            << QStringList{QStringLiteral("1 a@12/0"), QStringLiteral("1 c@51/0")} << QStringList()
            << QStringList();
        QTest::newRow("first variable only")
            << QStringLiteral("global int $a, $b;") << QStringList{QStringLiteral("3 $a@11/0")}
            << QStringList() << QStringList();
        QTest::newRow("variable in braces")
            << QStringLiteral("{ global string[] $s; }") << QStringList{QStringLiteral("3 $s@18/1")}
            << QStringList() << QStringList();
        QTest::newRow("line comment TODO")
            << QStringLiteral("// TODO fix\nproc a() {}") << QStringList{QStringLiteral("2 a@17/0")}
            << QStringList() << QStringList{QStringLiteral("TODO: 1-11")};
        QTest::newRow("TODOS is no TODO")
            << QStringLiteral("//TODOS x_TODO TODO1") << QStringList() << QStringList() << QStringList();
        QTest::newRow("block comment TODO")
            << QStringLiteral("/* TODO */ proc a() {}") << QStringList{QStringLiteral("2 a@16/0")}
            << QStringList() << QStringList{QStringLiteral("TODO: 1-8")};
        QTest::newRow("block comment over lines hides a proc")
            << QStringLiteral("/*\nproc a() {}\n TODO */") << QStringList() << QStringList()
            << QStringList{QStringLiteral("TODO: 1-21")};
        QTest::newRow("proc inside a string") << QStringLiteral("string $s = \" proc x() {\";")
                                              << QStringList() << QStringList() << QStringList();
        QTest::newRow("proc after an unterminated string")
            << QStringLiteral("print \"abc\nproc x() {}") << QStringList{QStringLiteral("2 x@16/0")}
            << QStringList() << QStringList();
        QTest::newRow("escaped quote")
            << QStringLiteral("print \"a\\\" proc x() {}\";\nproc y() {}")
            << QStringList{QStringLiteral("2 y@30/0")} << QStringList() << QStringList();
        QTest::newRow("even backslashes close the string")
            << QStringLiteral("print \"a\\\\\"; proc x() {}") << QStringList{QStringLiteral("2 x@18/0")}
            << QStringList() << QStringList();
        QTest::newRow("continued line stays in the string")
            << QStringLiteral("print \"abc\\\nproc x() {}\";") << QStringList() << QStringList()
            << QStringList();
        QTest::newRow("not after white space") << QStringLiteral("$rgb=1;xglobal int $v;xproc foo() {}")
                                               << QStringList() << QStringList() << QStringList();
        QTest::newRow("stray closing brace")
            << QStringLiteral("}\nglobal proc foo() {}") << QStringList{QStringLiteral("1 foo@14/0")}
            << QStringList() << QStringList();
        QTest::newRow("brace in a string does not end the proc")
            << QStringLiteral("proc a() {\n print \"}\";\n proc b() {}\n}")
            << QStringList{QStringLiteral("2 a@5/0")} << QStringList() << QStringList();
        QTest::newRow("array parameter")
            << QStringLiteral("global proc foo(string $a[]) {}") << QStringList{QStringLiteral("1 foo@12/0")}
            << QStringList() << QStringList();
        QTest::newRow("paragraph separators")
            << QStringLiteral("proc a() {}\u2029proc b() {}")
            << QStringList{QStringLiteral("2 a@5/0"), QStringLiteral("2 b@17/0")} << QStringList()
            << QStringList();
    }

    void mel()
    {
        MelParser parser;
        Check(parser, QStringLiteral("\n\nglobal proc old() {} // TODO\nprint \"x"),
              QStringLiteral("/tmp/a.mel"));
        // MEL shows no parse errors, whatever the text.
        QVERIFY(parser.GetErrors().isEmpty());
        QVERIFY(parser.IsMel() && !parser.IsPython());
    }

    void python_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<QStringList>("errors");
        QTest::addColumn<QStringList>("warnings");
        QTest::addColumn<QStringList>("infos");

        QTest::newRow("empty") << QString() << L() << L() << L() << L();
        QTest::newRow("def at the end")
            << QStringLiteral("def f():\n") << L{QStringLiteral("8 f@4/0")} << L() << L() << L();
        QTest::newRow("expected an indented block")
            << QStringLiteral("if a:\nb = 1") << L() << L{QStringLiteral("Expected an indented block 6-6")}
            << L() << L();
        QTest::newRow("unexpected indent") << QStringLiteral("a = 1\n    b = 2\n    c = 3") << L()
                                           << L{QStringLiteral("Unexpected indent 6-10")} << L() << L();
        QTest::newRow("unindent without a level")
            << QStringLiteral("if a:\n    x = 1\n  y = 2\n z = 3\n") << L()
            << L{QStringLiteral("Unindent does not match any outer indentation level 16-18")} << L() << L();
        QTest::newRow("colon in a dictionary over lines")
            << QStringLiteral("d = {\n  'a':\n  1}\nx = 1") << L() << L() << L() << L();
        QTest::newRow("stray bracket once") << QStringLiteral("x = 1)\ny = 2]") << L()
                                            << L{QStringLiteral("Unexpected ')' 5-6")} << L() << L();
        QTest::newRow("colon before a comment opens a block")
            << QStringLiteral("if a:  # why\nb = 1") << L()
            << L{QStringLiteral("Expected an indented block 13-13")} << L() << L();
        QTest::newRow("colon with code after it")
            << QStringLiteral("if a: b = 1\nc = 2") << L() << L() << L() << L();
        QTest::newRow("class method wins when later")
            << QStringLiteral("class A:\n    @staticmethod\n    @classmethod\n    def f(): pass\n")
            << L{QStringLiteral("11 A@6/0"), QStringLiteral("10 f@52/1")} << L() << L() << L();
        QTest::newRow("static method wins when later")
            << QStringLiteral("class A:\n    @classmethod\n    @staticmethod\n    def f(): pass\n")
            << L{QStringLiteral("11 A@6/0"), QStringLiteral("9 f@52/1")} << L() << L() << L();
        QTest::newRow("decorator with arguments is no static method")
            << QStringLiteral("@staticmethod # x\ndef f(): pass") << L{QStringLiteral("8 f@22/0")} << L()
            << L() << L();
        QTest::newRow("comment clears decorators") << QStringLiteral("@staticmethod\n# c\ndef f(): pass")
                                                   << L{QStringLiteral("8 f@22/0")} << L() << L() << L();
        QTest::newRow("plain imports")
            << QStringLiteral("import os, sys # tools")
            << L{QStringLiteral("4 os@7/0"), QStringLiteral("4 sys@11/0")} << L() << L() << L();
        QTest::newRow("import with a bad name")
            << QStringLiteral("import os, s-y") << L() << L() << L() << L();
        QTest::newRow("import as") << QStringLiteral("import os.path as p")
                                   << L{QStringLiteral("5 p = os.path@18/0")} << L() << L() << L();
        QTest::newRow("two aliases are rejected")
            << QStringLiteral("import a as b, c as d") << L() << L() << L() << L();
        QTest::newRow("from import as")
            << QStringLiteral("from a import b as c, d")
            << L{QStringLiteral("6 c = b (a)@19/0"), QStringLiteral("6 d (a)@22/0")} << L() << L() << L();
        QTest::newRow("from import star")
            << QStringLiteral("from m import *") << L{QStringLiteral("6 * (m)@14/0")} << L() << L() << L();
        QTest::newRow("single bracketed name as it stands")
            << QStringLiteral("from m import (a)") << L{QStringLiteral("6 (a) (m)@14/0")} << L() << L()
            << L();
        QTest::newRow("bracketed list with two names rejected")
            << QStringLiteral("from m import (a, b)") << L() << L() << L() << L();
        QTest::newRow("indented import level")
            << QStringLiteral("def f():\n    import os\n")
            << L{QStringLiteral("8 f@4/0"), QStringLiteral("4 os@20/1")} << L() << L() << L();
        QTest::newRow("main guard") << QStringLiteral("if __name__ == \"__main__\":\n    main()\n")
                                    << L{QStringLiteral("7 __main__@16/0")} << L() << L() << L();
        QTest::newRow("main guard single quoted")
            << QStringLiteral("if __name__ == '__main__':\n    main()\n")
            << L{QStringLiteral("7 __main__@16/0")} << L() << L() << L();
        QTest::newRow("docstring TODO")
            << QStringLiteral("'''TODO'''") << L() << L() << L() << L{QStringLiteral("TODO: 0-7")};
        QTest::newRow("unterminated docstring is no error")
            << QStringLiteral("x = '''abc\ndef f(): pass") << L() << L() << L() << L();
        QTest::newRow("unterminated string") << QStringLiteral("x = 'abc\ny = 1") << L()
                                             << L{QStringLiteral("Unterminated String 4-8")} << L() << L();
        QTest::newRow("escaped quote") << QStringLiteral("x = 'a\\'b'\ndef f(): pass")
                                       << L{QStringLiteral("8 f@15/0")} << L() << L() << L();
        QTest::newRow("comment TODO") << QStringLiteral("x = 1  # TODO: later\n") << L() << L() << L()
                                      << L{QStringLiteral("TODO: 7-20")};
        QTest::newRow("class at margin resets the stack")
            << QStringLiteral("class A(B):\n  x\n    y\nclass C:\n    pass\n")
            << L{QStringLiteral("11 A@6/0"), QStringLiteral("11 C@28/0")}
            << L{QStringLiteral("Unexpected indent 16-20")} << L() << L();
        QTest::newRow("mixed indent once")
            << QStringLiteral("if a:\n\t x = 1\n\t y = 2\n") << L() << L()
            << L{QStringLiteral("Indent contains both tabs and spaces 6-8")} << L();
        QTest::newRow("open bracket before a keyword of the first word's length")
            << QStringLiteral("class A:\n    x = (1,\nclass B:\n    pass\n")
            << L{QStringLiteral("11 A@6/0"), QStringLiteral("11 B@27/0")}
            << L{QStringLiteral("Expected a ')' 20-20")} << L() << L();
        QTest::newRow("open bracket before a keyword of another length")
            << QStringLiteral("x = (1,\nclass B:\n    pass\n") << L() << L() << L() << L();
        QTest::newRow("paragraph separators")
            << QStringLiteral("def f():\u2029    pass\u2029def g(): pass")
            << L{QStringLiteral("8 f@4/0"), QStringLiteral("8 g@22/0")} << L() << L() << L();
    }

    void python()
    {
        PythonParser parser;
        Check(parser, QStringLiteral("if a:\nx\n\t y\n@staticmethod\n"), QStringLiteral("/tmp/a.py"));
        QFETCH(QStringList, errors);
        QCOMPARE(Describe(parser.GetErrors()), errors);
        QVERIFY(parser.IsPython() && !parser.IsMel());
    }

    void listsSurviveTheNextRun()
    {
        MelParser parser;
        parser.Parse(QStringLiteral("global proc a() {}"), QString());
        const QList<ParserItem> before = parser.GetItems();
        parser.Parse(QString(), QString());
        QCOMPARE(before.size(), 1);
        QCOMPARE(before.first().name, QStringLiteral("a"));
        QVERIFY(parser.GetItems().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestParsers)
#include "tst_Parsers.moc"
