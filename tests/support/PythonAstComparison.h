#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

// Compares the Python parser's symbols and faults with what CPython's ast and tokenize find in the
// same files. Every disagreement is put in a class named after the parser rule that causes it;
// what no rule explains lands in the class "unexplained".
class PythonAstComparison
{
public:
    struct Totals
    {
        int files = 0;
        int astFiles = 0;
        int astItems = 0;
        int parserItems = 0;
        int agreed = 0;
        QMap<QString, int> classes;       // disagreement class -> count
        QMap<QString, QStringList> samples; // disagreement class -> a few "file:line: detail"
        QMap<QString, int> faultClasses;  // parser faults on files that ast accepts
    };

    // factsScript is bench/python_ast_facts.py; python3 runs it over files.
    static bool Run(const QStringList& files, const QString& factsScript, Totals& totals);
    static QString Report(const Totals& totals);
};
