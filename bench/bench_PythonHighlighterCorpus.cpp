// The whole CPython 3.11 standard library (/usr/lib/python3.11/*.py): the string and comment
// stretches that PythonHighlighter records against Python's own tokenize. Prints the agreement
// rate and every class of disagreement with the highlighting rule that explains it; a class that
// no rule explains is listed line by line, and is a bug.
#include "HostApplication.h"
#include "bench/PythonCorpusDump.h"
#include "plugin/PluginMain.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    // Nothing here may read or write the real preferences folder.
    QTemporaryDir appDir;
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    QApplication app(argc, argv);
    HostApplication host(false);
    host.LoadPlugin(QStringLiteral("brindletEditor2"), initializePlugin, uninitializePlugin);

    const QDir library(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("/usr/lib/python3.11"));
    QStringList paths;
    for (const QString& name : library.entryList({QStringLiteral("*.py")}, QDir::Files, QDir::Name))
        paths.append(library.filePath(name));
    const QString records = appDir.filePath(QStringLiteral("records.json"));
    if (paths.isEmpty() || !PythonCorpusDump::WriteRecords(paths, records))
    {
        std::fprintf(stderr, "No Python files in %s\n", qPrintable(library.path()));
        return 1;
    }
    QString report;
    const bool ok =
        PythonCorpusDump::Compare(QStringLiteral(QT_TESTCASE_SOURCEDIR "/highlighter_tokenize_compare.py"),
                                  records, appDir.filePath(QStringLiteral("summary.json")), report);
    std::printf("%s", qPrintable(report));
    return ok ? 0 : 1;
}
