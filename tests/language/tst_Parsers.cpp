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
        QTest::newRow("empty") << QString() << L() << L() << L();
        QTest::newRow("blank lines only") << QString("\n \n\t\n") << L() << L() << L();
        QTest::newRow("blank line before code")
            << QString("\n\nproc foo() {}") << L{"2 foo@7/0"} << L{emptyLines} << L();
        QTest::newRow("array return type")
            << QString("global proc string[] foo()\n{\n}\n") << L{"1 foo@21/0"} << L() << L();
        // A name that starts with a type word, after a tab: the head of the line ends at the last blank.
        QTest::newRow("name begins with a type")
            << QString("global\tproc int\tintegerMax() {}") << L{"1 integerMax@16/0"} << L() << L();
        QTest::newRow("two dots") << QString("global proc foo..bar() {}") << L() << L() << L();
        QTest::newRow("trailing dot") << QString("global proc foo.() {}") << L() << L() << L();
        QTest::newRow("nested proc not listed")
            << QString("proc a() {\n proc b() {}\n}\nproc c() {}") << L{"2 a@5/0", "2 c@31/0"} << L() << L();
        QTest::newRow("nested global proc not listed")
            << QString("global proc a() {\nglobal proc b() {}\n}\nglobal proc c() {}")
            << L{"1 a@12/0", "1 c@51/0"} << L() << L();
        QTest::newRow("first variable only") << QString("global int $a, $b;") << L{"3 $a@11/0"} << L() << L();
        QTest::newRow("variable in braces")
            << QString("{ global string[] $s; }") << L{"3 $s@18/1"} << L() << L();
        QTest::newRow("line comment TODO")
            << QString("// TODO fix\nproc a() {}") << L{"2 a@17/0"} << L() << L{"TODO: 1-11"};
        QTest::newRow("TODOS is no TODO") << QString("//TODOS x_TODO TODO1") << L() << L() << L();
        QTest::newRow("block comment TODO")
            << QString("/* TODO */ proc a() {}") << L{"2 a@16/0"} << L() << L{"TODO: 1-8"};
        QTest::newRow("block comment over lines hides a proc")
            << QString("/*\nproc a() {}\n TODO */") << L() << L() << L{"TODO: 1-21"};
        QTest::newRow("proc inside a string") << QString("string $s = \" proc x() {\";") << L() << L() << L();
        QTest::newRow("proc after an unterminated string")
            << QString("print \"abc\nproc x() {}") << L{"2 x@16/0"} << L() << L();
        QTest::newRow("escaped quote")
            << QString("print \"a\\\" proc x() {}\";\nproc y() {}") << L{"2 y@30/0"} << L() << L();
        QTest::newRow("even backslashes close the string")
            << QString("print \"a\\\\\"; proc x() {}") << L{"2 x@18/0"} << L() << L();
        QTest::newRow("continued line stays in the string")
            << QString("print \"abc\\\nproc x() {}\";") << L() << L() << L();
        QTest::newRow("not after white space")
            << QString("$rgb=1;xglobal int $v;xproc foo() {}") << L() << L() << L();
        QTest::newRow("stray closing brace")
            << QString("}\nglobal proc foo() {}") << L{"1 foo@14/0"} << L() << L();
        QTest::newRow("brace in a string does not end the proc")
            << QString("proc a() {\n print \"}\";\n proc b() {}\n}") << L{"2 a@5/0"} << L() << L();
        QTest::newRow("array parameter")
            << QString("global proc foo(string $a[]) {}") << L{"1 foo@12/0"} << L() << L();
        QTest::newRow("paragraph separators")
            << QString("proc a() {}\u2029proc b() {}") << L{"2 a@5/0", "2 b@17/0"} << L() << L();
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
        QTest::newRow("def at the end") << QString("def f():\n") << L{"8 f@4/0"} << L() << L() << L();
        QTest::newRow("expected an indented block")
            << QString("if a:\nb = 1") << L() << L{"Expected an indented block 6-6"} << L() << L();
        QTest::newRow("unexpected indent")
            << QString("a = 1\n    b = 2\n    c = 3") << L() << L{"Unexpected indent 6-10"} << L() << L();
        QTest::newRow("unindent without a level")
            << QString("if a:\n    x = 1\n  y = 2\n z = 3\n") << L()
            << L{"Unindent does not match any outer indentation level 16-18"} << L() << L();
        QTest::newRow("colon in a dictionary over lines")
            << QString("d = {\n  'a':\n  1}\nx = 1") << L() << L() << L() << L();
        QTest::newRow("stray bracket once")
            << QString("x = 1)\ny = 2]") << L() << L{"Unexpected ')' 5-6"} << L() << L();
        QTest::newRow("colon before a comment opens a block")
            << QString("if a:  # why\nb = 1") << L() << L{"Expected an indented block 13-13"} << L() << L();
        QTest::newRow("colon with code after it")
            << QString("if a: b = 1\nc = 2") << L() << L() << L() << L();
        QTest::newRow("static and class methods alone")
            << QString("class A:\n    @staticmethod\n    def f(): pass\n    @classmethod\n    def g(): pass\n")
            << L{"11 A@6/0", "9 f@35/1", "10 g@70/1"} << L() << L() << L();
        QTest::newRow("class method wins when later")
            << QString("class A:\n    @staticmethod\n    @classmethod\n    def f(): pass\n")
            << L{"11 A@6/0", "10 f@52/1"} << L() << L() << L();
        QTest::newRow("static method wins when later")
            << QString("class A:\n    @classmethod\n    @staticmethod\n    def f(): pass\n")
            << L{"11 A@6/0", "9 f@52/1"} << L() << L() << L();
        QTest::newRow("decorator with arguments is no static method")
            << QString("@staticmethod # x\ndef f(): pass") << L{"8 f@22/0"} << L() << L() << L();
        QTest::newRow("comment clears decorators")
            << QString("@staticmethod\n# c\ndef f(): pass") << L{"8 f@22/0"} << L() << L() << L();
        QTest::newRow("plain imports")
            << QString("import os, sys # tools") << L{"4 os@7/0", "4 sys@11/0"} << L() << L() << L();
        QTest::newRow("import with a bad name") << QString("import os, s-y") << L() << L() << L() << L();
        QTest::newRow("import as") << QString("import os.path as p") << L{"5 p = os.path@18/0"} << L() << L()
                                   << L();
        QTest::newRow("two aliases are rejected")
            << QString("import a as b, c as d") << L() << L() << L() << L();
        QTest::newRow("from import as") << QString("from a import b as c, d")
                                        << L{"6 c = b (a)@19/0", "6 d (a)@22/0"} << L() << L() << L();
        QTest::newRow("from import star")
            << QString("from m import *") << L{"6 * (m)@14/0"} << L() << L() << L();
        QTest::newRow("single bracketed name as it stands")
            << QString("from m import (a)") << L{"6 (a) (m)@14/0"} << L() << L() << L();
        QTest::newRow("bracketed list with two names rejected")
            << QString("from m import (a, b)") << L() << L() << L() << L();
        QTest::newRow("indented import level")
            << QString("def f():\n    import os\n") << L{"8 f@4/0", "4 os@20/1"} << L() << L() << L();
        QTest::newRow("main guard") << QString("if __name__ == \"__main__\":\n    main()\n")
                                    << L{"7 __main__@16/0"} << L() << L() << L();
        QTest::newRow("main guard single quoted") << QString("if __name__ == '__main__':\n    main()\n")
                                                  << L{"7 __main__@16/0"} << L() << L() << L();
        QTest::newRow("docstring TODO") << QString("'''TODO'''") << L() << L() << L() << L{"TODO: 0-7"};
        QTest::newRow("unterminated docstring is no error")
            << QString("x = '''abc\ndef f(): pass") << L() << L() << L() << L();
        QTest::newRow("unterminated string")
            << QString("x = 'abc\ny = 1") << L() << L{"Unterminated String 4-8"} << L() << L();
        QTest::newRow("escaped quote")
            << QString("x = 'a\\'b'\ndef f(): pass") << L{"8 f@15/0"} << L() << L() << L();
        QTest::newRow("comment TODO")
            << QString("x = 1  # TODO: later\n") << L() << L() << L() << L{"TODO: 7-20"};
        QTest::newRow("class at margin resets the stack")
            << QString("class A(B):\n  x\n    y\nclass C:\n    pass\n") << L{"11 A@6/0", "11 C@28/0"}
            << L{"Unexpected indent 16-20"} << L() << L();
        QTest::newRow("mixed indent once") << QString("if a:\n\t x = 1\n\t y = 2\n") << L() << L()
                                           << L{"Indent contains both tabs and spaces 6-8"} << L();
        QTest::newRow("open bracket before a keyword of the first word's length")
            << QString("class A:\n    x = (1,\nclass B:\n    pass\n") << L{"11 A@6/0", "11 B@27/0"}
            << L{"Expected a ')' 20-20"} << L() << L();
        QTest::newRow("open bracket before a keyword of another length")
            << QString("x = (1,\nclass B:\n    pass\n") << L() << L() << L() << L();
        QTest::newRow("paragraph separators") << QString("def f():\u2029    pass\u2029def g(): pass")
                                              << L{"8 f@4/0", "8 g@22/0"} << L() << L() << L();
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
