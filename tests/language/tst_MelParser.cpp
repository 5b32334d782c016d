#include "language/MelParser.h"

#include <QtTest/QtTest>

namespace
{
// One item as "type name@position/level", so that a row states everything the outline reads.
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
} // namespace

class TestMelParser : public QObject
{
    Q_OBJECT

private slots:
    void Parse_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QStringList>("items");
        QTest::addColumn<QStringList>("warnings");
        QTest::addColumn<QStringList>("infos");

        const QString emptyLines =
            QStringLiteral("Empty line(s) at start of file. Line numbers in trace may be incorrect. 0-0");
        QTest::newRow("empty") << QString() << QStringList() << QStringList() << QStringList();
        QTest::newRow("blank lines only") << QStringLiteral("\n \n\t\n") << QStringList() << QStringList()
                                          << QStringList();
        QTest::newRow("blank line before code")
            << QStringLiteral("\n\nproc foo() {}") << QStringList{QStringLiteral("2 foo@7/0")}
            << QStringList{emptyLines} << QStringList();
        QTest::newRow("array return type")
            << QStringLiteral("global proc string[] foo()\n{\n}\n") << QStringList{QStringLiteral("1 foo@21/0")}
            << QStringList() << QStringList();
        QTest::newRow("two dots") << QStringLiteral("global proc foo..bar() {}") << QStringList() << QStringList()
                                  << QStringList();
        QTest::newRow("trailing dot") << QStringLiteral("global proc foo.() {}") << QStringList()
                                      << QStringList() << QStringList();
        QTest::newRow("nested proc not listed")
            << QStringLiteral("proc a() {\n proc b() {}\n}\nproc c() {}")
            << QStringList{QStringLiteral("2 a@5/0"), QStringLiteral("2 c@31/0")} << QStringList()
            << QStringList();
        QTest::newRow("nested global proc not listed")
            << QStringLiteral("global proc a() {\nglobal proc b() {}\n}\nglobal proc c() {}")
            << QStringList{QStringLiteral("1 a@12/0"), QStringLiteral("1 c@51/0")} << QStringList()
            << QStringList();
        QTest::newRow("first variable only")
            << QStringLiteral("global int $a, $b;") << QStringList{QStringLiteral("3 $a@11/0")} << QStringList()
            << QStringList();
        QTest::newRow("variable in braces")
            << QStringLiteral("{ global string[] $s; }") << QStringList{QStringLiteral("3 $s@18/1")}
            << QStringList() << QStringList();
        QTest::newRow("line comment TODO") << QStringLiteral("// TODO fix\nproc a() {}")
                                           << QStringList{QStringLiteral("2 a@17/0")} << QStringList()
                                           << QStringList{QStringLiteral("TODO: 1-11")};
        QTest::newRow("TODOS is no TODO") << QStringLiteral("//TODOS") << QStringList() << QStringList()
                                          << QStringList();
        QTest::newRow("block comment TODO") << QStringLiteral("/* TODO */ proc a() {}")
                                            << QStringList{QStringLiteral("2 a@16/0")} << QStringList()
                                            << QStringList{QStringLiteral("TODO: 1-8")};
        QTest::newRow("block comment over lines hides a proc")
            << QStringLiteral("/*\nproc a() {}\n TODO */") << QStringList() << QStringList()
            << QStringList{QStringLiteral("TODO: 1-21")};
        QTest::newRow("proc inside a string")
            << QStringLiteral("string $s = \" proc x() {\";") << QStringList() << QStringList() << QStringList();
        QTest::newRow("proc after an unterminated string")
            << QStringLiteral("print \"abc\nproc x() {}") << QStringList{QStringLiteral("2 x@16/0")}
            << QStringList() << QStringList();
        QTest::newRow("escaped quote") << QStringLiteral("print \"a\\\" proc x() {}\";\nproc y() {}")
                                       << QStringList{QStringLiteral("2 y@30/0")} << QStringList() << QStringList();
        QTest::newRow("even backslashes close the string")
            << QStringLiteral("print \"a\\\\\"; proc x() {}") << QStringList{QStringLiteral("2 x@18/0")}
            << QStringList() << QStringList();
        QTest::newRow("continued line stays in the string")
            << QStringLiteral("print \"abc\\\nproc x() {}\";") << QStringList() << QStringList() << QStringList();
        QTest::newRow("not after white space")
            << QStringLiteral("$rgb=1;xglobal int $v;xproc foo() {}") << QStringList() << QStringList() << QStringList();
        QTest::newRow("stray closing brace") << QStringLiteral("}\nglobal proc foo() {}")
                                             << QStringList{QStringLiteral("1 foo@14/0")} << QStringList()
                                             << QStringList();
        QTest::newRow("brace in a string does not end the proc")
            << QStringLiteral("proc a() {\n print \"}\";\n proc b() {}\n}") << QStringList{QStringLiteral("2 a@5/0")}
            << QStringList() << QStringList();
        QTest::newRow("array parameter") << QStringLiteral("global proc foo(string $a[]) {}")
                                         << QStringList{QStringLiteral("1 foo@12/0")} << QStringList()
                                         << QStringList();
        QTest::newRow("paragraph separators")
            << QStringLiteral("proc a() {}\u2029proc b() {}") << QStringList{QStringLiteral("2 a@5/0"),
                                                                              QStringLiteral("2 b@17/0")}
            << QStringList() << QStringList();
    }

    void Parse()
    {
        QFETCH(QString, source);
        QFETCH(QStringList, items);
        QFETCH(QStringList, warnings);
        QFETCH(QStringList, infos);

        MelParser parser;
        // A reused parser must start clean.
        parser.Parse(QStringLiteral("\n\nglobal proc old() {} // TODO\nprint \"x"), QStringLiteral("old.mel"));
        parser.Parse(source, QStringLiteral("/tmp/a.mel"));
        QCOMPARE(Describe(parser.GetItems()), items);
        QCOMPARE(Describe(parser.GetWarnings()), warnings);
        QCOMPARE(Describe(parser.GetInfos()), infos);
        // MEL shows no parse errors, whatever the text.
        QVERIFY(parser.GetErrors().isEmpty());
        QCOMPARE(parser.GetFilePath(), QStringLiteral("/tmp/a.mel"));
        QVERIFY(parser.IsMel());
        QVERIFY(!parser.IsPython());
    }

    void ListsSurviveTheNextRun()
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

QTEST_GUILESS_MAIN(TestMelParser)
#include "tst_MelParser.moc"
