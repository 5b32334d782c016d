// Real text, fixed samples of the standard library: the string and comment stretches that
// PythonHighlighter records, against Python's own tokenize, and the items that PythonParser finds,
// against Python's ast. Every disagreement must belong to a class that a rule explains;
// bench/highlighter_tokenize_compare.py and bench/python_ast_facts.py classify them, and
// bench/bench_PythonParserAgainstAst measures the whole library.
#include "HostFixture.h"
#include "PythonAstComparison.h"
#include "TestFiles.h"
#include "bench/PythonCorpusDump.h"

#include <QtTest/QtTest>

#include <memory>

namespace
{
const char* const SAMPLE[] = {"argparse.py", "ast.py",      "configparser.py", "csv.py",
                              "difflib.py",  "inspect.py",  "pydoc.py",        "shlex.py",
                              "string.py",   "textwrap.py", "tokenize.py",     "_pydecimal.py"};

QString Script()
{
    return QStringLiteral(QT_TESTCASE_SOURCEDIR "/../bench/highlighter_tokenize_compare.py");
}

QJsonObject ReadJson(const QString& path)
{
    return QJsonDocument::fromJson(TestFiles::Read(path)).object();
}
} // namespace

class TestPythonCorpus : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    QTemporaryDir folder;
    QStringList paths;

    QString RecordsPath() const { return folder.filePath(QStringLiteral("records.json")); }
    QString SummaryPath() const { return folder.filePath(QStringLiteral("summary.json")); }

private slots:
    void initTestCase()
    {
        fixture = std::make_unique<HostFixture>();
        QVERIFY(fixture->LoadPlugin());
        for (const char* name : SAMPLE)
        {
            const QString path = QStringLiteral("/usr/lib/python3.11/") + QString::fromLatin1(name);
            if (!QFileInfo::exists(path))
                QSKIP("The CPython 3.11 standard library is not installed here.");
            paths.append(path);
        }
        QVERIFY(QFileInfo::exists(Script()));
        QVERIFY(PythonCorpusDump::WriteRecords(paths, RecordsPath()));
    }

    void cleanupTestCase() { fixture.reset(); }

    void agreesWithTokenize()
    {
        QString report;
        QVERIFY2(PythonCorpusDump::Compare(Script(), RecordsPath(), SummaryPath(), report),
                 qPrintable(report));
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
    }

    // The comparison itself catches a stretch that the highlighter got wrong: one docstring line
    // taken out of the records.
    void comparisonCatchesAWrongStretch()
    {
        QJsonObject records = ReadJson(RecordsPath());
        QJsonArray files = records.value(QStringLiteral("files")).toArray();
        QJsonObject file = files.at(0).toObject();
        QJsonArray lines = file.value(QStringLiteral("lines")).toArray();
        int changed = -1;
        for (int i = 0; i < lines.size() && changed < 0; ++i)
        {
            if (!lines.at(i).toArray().at(0).toArray().isEmpty())
                changed = i;
        }
        QVERIFY(changed >= 0);
        lines.replace(changed, QJsonArray{QJsonArray(), QJsonArray()});
        file.insert(QStringLiteral("lines"), lines);
        files.replace(0, file);
        records.insert(QStringLiteral("files"), files);
        const QString broken = folder.filePath(QStringLiteral("broken.json"));
        QVERIFY(TestFiles::Write(broken, QJsonDocument(records).toJson()));
        QString report;
        QVERIFY(PythonCorpusDump::Compare(Script(), broken, SummaryPath(), report));
        const QJsonObject classes = ReadJson(SummaryPath()).value(QStringLiteral("classes")).toObject();
        QVERIFY2(classes.value(QStringLiteral("unexplained")).toInt() > 0, qPrintable(report));
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

QTEST_MAIN(TestPythonCorpus)
#include "tst_PythonCorpus.moc"
