// The Python parser against CPython's ast over the whole standard library (or the files given):
// agreement rate and every class of disagreement, named after the parser rule behind it.
#include "PythonAstComparison.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QStringList files = app.arguments().mid(1);
    if (files.isEmpty())
    {
        const QDir library(QStringLiteral("/usr/lib/python3.11"));
        for (const QString& name : library.entryList({QStringLiteral("*.py")}, QDir::Files, QDir::Name))
            files.append(library.filePath(name));
    }
    // Next to this source: found from the build folder beside the sources, or from the working folder.
    QString script = QCoreApplication::applicationDirPath() + QStringLiteral("/../../bench/python_ast_facts.py");
    if (!QFileInfo::exists(script))
        script = QFileInfo(QStringLiteral(__FILE__)).dir().filePath(QStringLiteral("python_ast_facts.py"));
    PythonAstComparison::Totals totals;
    if (!PythonAstComparison::Run(files, script, totals))
    {
        std::fprintf(stderr, "python3 with %s failed\n", qPrintable(script));
        return 1;
    }
    std::printf("%s", qPrintable(PythonAstComparison::Report(totals)));
    return 0;
}
