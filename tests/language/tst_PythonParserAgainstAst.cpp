#include "PythonAstComparison.h"

#include <QtCore/QFileInfo>
#include <QtTest/QtTest>

// A fixed sample of the standard library, chosen for variety: decorators, nested classes, long
// import lists, __main__ guards, backslash continuations, tabs. The whole library is measured by
// bench/bench_PythonParserAgainstAst.
class TestPythonParserAgainstAst : public QObject
{
    Q_OBJECT

private slots:
    void sampleAgreesWithAst()
    {
        const QStringList names{QStringLiteral("abc.py"),      QStringLiteral("argparse.py"),
                                QStringLiteral("bdb.py"),      QStringLiteral("calendar.py"),
                                QStringLiteral("dataclasses.py"), QStringLiteral("enum.py"),
                                QStringLiteral("functools.py"), QStringLiteral("imaplib.py"),
                                QStringLiteral("pathlib.py"),  QStringLiteral("pydoc.py"),
                                QStringLiteral("tabnanny.py"), QStringLiteral("typing.py")};
        QStringList files;
        for (const QString& name : names)
        {
            const QString path = QStringLiteral("/usr/lib/python3.11/") + name;
            if (!QFileInfo::exists(path))
                QSKIP("CPython 3.11's standard library is not installed");
            files.append(path);
        }
        const QString script = QFINDTESTDATA("../../bench/python_ast_facts.py");
        QVERIFY(!script.isEmpty());
        PythonAstComparison::Totals totals;
        QVERIFY(PythonAstComparison::Run(files, script, totals));
        const QString report = PythonAstComparison::Report(totals);
        QCOMPARE(totals.files, names.size());
        QCOMPARE(totals.astFiles, names.size());
        QVERIFY2(totals.astItems > 1000, qPrintable(report));
        // Every disagreement is one that a rule of the parser explains.
        for (auto it = totals.classes.cbegin(); it != totals.classes.cend(); ++it)
            QVERIFY2(!it.key().contains(QLatin1String("unexplained")), qPrintable(report));
        for (auto it = totals.faultClasses.cbegin(); it != totals.faultClasses.cend(); ++it)
            QVERIFY2(!it.key().contains(QLatin1String("unexplained")), qPrintable(report));
        QVERIFY2(totals.agreed * 100 >= totals.astItems * AGREEMENT_PERCENT, qPrintable(report));
    }

private:
    static constexpr int AGREEMENT_PERCENT = 90;
};

QTEST_GUILESS_MAIN(TestPythonParserAgainstAst)
#include "tst_PythonParserAgainstAst.moc"
