#include "TestFiles.h"
#include "sidebar/LiteralSearch.h"
#include "sidebar/SearchFunctions.h"

#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>
#include <QtTest/QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace
{
using Found = QList<QPair<int, QString>>;

Found Simplify(const QList<SearchResult>& results)
{
    Found found;
    for (const SearchResult& result : results)
        found.append({result.position, result.lineText});
    return found;
}

Found MatchLines(const QStringList& lines, const QRegularExpression& regEx)
{
    Found found;
    int offset = 0;
    for (const QString& line : lines)
    {
        QRegularExpressionMatchIterator matches = regEx.globalMatch(line);
        while (matches.hasNext())
            found.append({offset + static_cast<int>(matches.next().capturedStart()), line.trimmed()});
        offset += static_cast<int>(line.size()) + 1;
    }
    return found;
}

// The plain meaning of a search in a file: the stream's lines, each matched on its own.
Found ReferenceForFile(const QString& path, const QRegularExpression& regEx)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QTextStream stream(&file);
    QStringList lines;
    for (QString line = stream.readLine(); !line.isNull(); line = stream.readLine())
        lines.append(line);
    return MatchLines(lines, regEx);
}

const QStringList PATTERNS{"a",       "ab",      "^a",      "a$",      "\\ba\\b", "a\\s+b",  "[^x]+b",  "a(?=\\n)",
                           "(?<=a)b", "a*",      "$",       "^",       "\\s",     "b\\n?a",  "a|b$",    "(?i)A",
                           "\\Ab",    "b\\z",    "a++b",    "(?>a+)b", "x?",      "\\Qa\\E", "(?:a|_)b", "(?<n>a)\\k<n>",
                           "\\W+",    "b\\R",    "a.b",     "\\Bb"};
} // namespace

// The free functions of the search: the expression, the filters, and matching line by line.
class TestSearchFunctions : public QObject
{
    Q_OBJECT

private slots:
    void expressionFollowsTheOptions_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("matchCase");
        QTest::addColumn<bool>("word");
        QTest::addColumn<bool>("regex");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<bool>("caseInsensitive");

        QTest::newRow("empty") << "" << false << true << true << "" << false;
        QTest::newRow("literal escaped") << "a.b(" << true << false << false << "a\\.b\\(" << false;
        QTest::newRow("folded") << "abc" << false << false << false << "abc" << true;
        QTest::newRow("word literal") << "a+b" << true << true << false << "\\ba\\+b\\b" << false;
        QTest::newRow("word wraps the whole expression") << "a|b" << true << true << true << "\\ba|b\\b" << false;
        QTest::newRow("regex as typed") << "^\\s*def" << false << false << true << "^\\s*def" << true;
    }

    void expressionFollowsTheOptions()
    {
        QFETCH(QString, text);
        QFETCH(bool, matchCase);
        QFETCH(bool, word);
        QFETCH(bool, regex);
        QFETCH(QString, pattern);
        QFETCH(bool, caseInsensitive);
        const QRegularExpression regEx = CreateSearchRegEx(text, matchCase, word, regex);
        QCOMPARE(regEx.pattern(), pattern);
        QCOMPARE(bool(regEx.patternOptions() & QRegularExpression::CaseInsensitiveOption), caseInsensitive);
    }

    void filtersSplitIntoPathsAndWildcards()
    {
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkpath(QStringLiteral("src")));
        QStringList paths{QStringLiteral("stale")};
        const QList<QRegularExpression> patterns = CreateSearchFilter(
            {QStringLiteral(" *.py "), QStringLiteral(""), dir.path() + QStringLiteral("/src//"),
             QStringLiteral("/*/tests/*.MEL"), QStringLiteral("   ")},
            paths);
        QCOMPARE(paths, QStringList{dir.path() + QStringLiteral("/src")});
        QCOMPARE(patterns.size(), 2);
        // Matched against a whole path: '*' does not cross a folder.
        QVERIFY(patterns.at(0).match(QStringLiteral("setup.PY")).hasMatch());
        QVERIFY(!patterns.at(0).match(QStringLiteral("/a/setup.py")).hasMatch());
        QVERIFY(patterns.at(1).match(QStringLiteral("/x/tests/a.mel")).hasMatch());
        QVERIFY(!patterns.at(1).match(QStringLiteral("/x/tests/a.mel.bak")).hasMatch());

        const QList<QFileInfo> infos = CreateSearchPaths({QStringLiteral(" /tmp "), QStringLiteral(" ")});
        QCOMPARE(infos.size(), 1);
        QCOMPARE(infos.first().filePath(), QStringLiteral("/tmp"));
    }

    // Whatever path the matching takes, the results are those of matching each line alone.
    void textMatchesEqualLineByLine()
    {
        QRandomGenerator random(17);
        const QString alphabet = QStringLiteral("aab b_\n\nxA");
        for (int round = 0; round < 3000; ++round)
        {
            QString text;
            const int length = static_cast<int>(random.bounded(40));
            for (int i = 0; i < length; ++i)
                text += alphabet.at(static_cast<int>(random.bounded(alphabet.size())));
            const QString pattern = PATTERNS.at(static_cast<int>(random.bounded(PATTERNS.size())));
            const QRegularExpression regEx(pattern, random.bounded(2) ? QRegularExpression::CaseInsensitiveOption
                                                                      : QRegularExpression::NoPatternOption);
            const Found expected = MatchLines(text.split(QLatin1Char('\n')), regEx);
            const Found actual = Simplify(FindMatchingInText(QStringLiteral("f"), QStringLiteral("l"), text, regEx));
            if (actual != expected)
                QFAIL(qPrintable(QStringLiteral("pattern %1 on %2").arg(pattern, text.toHtmlEscaped())));
        }
        // Every result carries the names it was given.
        const QList<SearchResult> results = FindMatchingInText(QStringLiteral("f.py"), QStringLiteral("label"),
                                                               QStringLiteral("  a a \n"), QRegularExpression("a"));
        QCOMPARE(results.size(), 2);
        QCOMPARE(results.at(1).fileName, QStringLiteral("f.py"));
        QCOMPARE(results.at(1).label, QStringLiteral("label"));
        QCOMPARE(results.at(1).lineText, QStringLiteral("a a"));
        QCOMPARE(results.at(1).position, 4);
        QVERIFY(FindMatchingInText("f", "l", "abc", QRegularExpression("(")).isEmpty());
        QVERIFY(FindMatchingInText("f", "l", "abc", QRegularExpression()).isEmpty());
    }

    void fileMatchesEqualTheStreamsLines_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("patterns");
        QTest::newRow("plain") << QByteArray("a b\nab\n\nxab") << PATTERNS;
        QTest::newRow("crlf") << QByteArray("ab\r\nb a\r\n\ra b\r") << PATTERNS;
        QTest::newRow("utf-8 bom") << QByteArray("\xEF\xBB\xBF" "ab a\nb") << PATTERNS;
        QTest::newRow("utf-16 bom") << QByteArray("\xFF\xFE" "a\0b\0\n\0a\0", 10) << PATTERNS;
        QTest::newRow("not utf-8") << QByteArray("caf\xE9 ab\n\xFF\xFE\xFD a\n\xC3(b a") << PATTERNS;
        QTest::newRow("binary") << QByteArray("\0\0ab\0\x01\x02\nb\0a\n", 12) << PATTERNS;
        QTest::newRow("umlauts before a match") << QByteArray("\xC3\xA4\xC3\xB6 ab\n\xF0\x9F\x98\x80 a b\n") << PATTERNS;
        QTest::newRow("empty") << QByteArray() << PATTERNS;
        QTest::newRow("one feed") << QByteArray("\n") << PATTERNS;
        QByteArray longLine(5 * 1024 * 1024, 'x');
        longLine += "ab\nab b\n";
        // Big texts with the patterns that stay cheap on them.
        const QStringList few{"a", "ab", "^a", "b$", "b\\z", "(?<=a)b", "a\\s+b"};
        QTest::newRow("line longer than a read") << longLine << few;
        QByteArray manyLines;
        for (int i = 0; i < 400000; ++i)
            manyLines += i % 1000 == 0 ? "a b ab\n" : "xxxxxxxxxx\n";
        QTest::newRow("lines across reads") << manyLines << few;
    }

    void fileMatchesEqualTheStreamsLines()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, patterns);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("f.txt"));
        QVERIFY(TestFiles::Write(path, bytes));
        for (const QString& pattern : patterns)
        {
            const QRegularExpression regEx(pattern);
            const Found expected = ReferenceForFile(path, regEx);
            const Found actual = Simplify(FindMatchingInFile(path, regEx));
            if (actual != expected)
                QFAIL(qPrintable(QStringLiteral("pattern %1: %2 results, %3 expected")
                                     .arg(pattern)
                                     .arg(actual.size())
                                     .arg(expected.size())));
        }
        const QList<SearchResult> results = FindMatchingInFile(path, QRegularExpression("a"));
        for (const SearchResult& result : results)
        {
            QCOMPARE(result.fileName, QStringLiteral("f.txt"));
            QCOMPARE(result.label, QStringLiteral("f.txt"));
        }
    }

    void filesThatCannotBeReadGiveNothing()
    {
        QTemporaryDir dir;
        const QRegularExpression regEx(QStringLiteral("a"));
        QVERIFY(FindMatchingInFile(dir.filePath(QStringLiteral("missing")), regEx).isEmpty());
        QVERIFY(FindMatchingInFile(dir.path(), regEx).isEmpty());
        // A pipe is not a file: opening it would wait for a writer for ever.
        const QString fifo = dir.filePath(QStringLiteral("pipe"));
        QCOMPARE(mkfifo(fifo.toLocal8Bit().constData(), 0600), 0);
        QVERIFY(FindMatchingInFile(fifo, regEx).isEmpty());
        const QString locked = dir.filePath(QStringLiteral("locked.txt"));
        QVERIFY(TestFiles::Write(locked, "a\n"));
        QVERIFY(QFile::setPermissions(locked, QFileDevice::Permissions()));
        // Root reads it anyway; anyone else gets nothing, and nobody a crash.
        QCOMPARE(FindMatchingInFile(locked, regEx).size(), geteuid() == 0 ? 1 : 0);
    }

    void hugeFileIsReadToTheEnd()
    {
        // 200 MB without a line end, then a line with the match: sparse, so it costs no disk.
        QTemporaryDir dir(QStringLiteral("/tmp/bq2-huge-XXXXXX"));
        const QString path = dir.filePath(QStringLiteral("huge.bin"));
        {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            QVERIFY(file.resize(200LL * 1024 * 1024));
            QVERIFY(file.seek(200LL * 1024 * 1024));
            QVERIFY(file.write("\nneedle here\n") > 0);
        }
        const QList<SearchResult> results = FindMatchingInFile(path, QRegularExpression(QStringLiteral("needle")));
        QCOMPARE(results.size(), 1);
        QCOMPARE(results.first().position, 200 * 1024 * 1024 + 1);
        QCOMPARE(results.first().lineText, QStringLiteral("needle here"));
        QFile::remove(path);
    }

    // Plain words are searched on the bytes of ASCII files. Random ASCII files, every needle with and without case and whole words: the file search
    // gives what the expression gives on each line alone.
    void fileMatchesEqualTheExpressionsOnEachLine()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("f.mel"));
        const QByteArray alphabet("aAbB_ .-x\t\n");
        const QStringList needles{"a", "ab", "Ab", "a.b", "_a", ".a", "a b", "b-", "aa"};
        QRandomGenerator random(5);
        for (int round = 0; round < 300; ++round)
        {
            QByteArray bytes;
            const int length = static_cast<int>(random.bounded(60));
            for (int i = 0; i < length; ++i)
                bytes += alphabet.at(static_cast<int>(random.bounded(alphabet.size())));
            QVERIFY(TestFiles::Write(path, bytes));
            const QStringList lines = QString::fromLatin1(bytes).split(QLatin1Char('\n'));
            for (const QString& needle : needles)
            {
                for (int options = 0; options < 4; ++options)
                {
                    const QRegularExpression regEx = CreateSearchRegEx(needle, options & 1, options & 2, false);
                    QVERIFY(LiteralSearch(regEx).IsValid());
                    if (Simplify(FindMatchingInFile(path, regEx)) != MatchLines(lines, regEx))
                        QFAIL(qPrintable(QStringLiteral("%1 (options %2) in \"%3\"")
                                             .arg(regEx.pattern())
                                             .arg(options)
                                             .arg(QString::fromLatin1(bytes))));
                }
            }
        }
    }
};

QTEST_MAIN(TestSearchFunctions)
#include "tst_SearchFunctions.moc"
