#pragma once
// Large texts for the benchmarks: real Python from the standard library and MEL of the usual
// shapes.
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace BenchTexts
{
// The standard library's modules in name order, whole lines, until the count is reached.
inline QString PythonLines(int count)
{
    static QStringList all;
    if (all.isEmpty())
    {
        const QDir dir(QStringLiteral("/usr/lib/python3.11"));
        for (const QString& name : dir.entryList({QStringLiteral("*.py")}, QDir::Files, QDir::Name))
        {
            QFile file(dir.filePath(name));
            if (file.open(QIODevice::ReadOnly))
                all += QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
            if (all.size() > 100000)
                break;
        }
    }
    return all.mid(0, count).join(QLatin1Char('\n'));
}

// MEL of the usual shapes: procedures, declarations, command calls with flags, strings, loops and
// both kinds of comment.
inline QString MelLines(int count)
{
    const QStringList commands = {QStringLiteral("setAttr"),     QStringLiteral("getAttr"),
                                  QStringLiteral("polyCube"),    QStringLiteral("xform"),
                                  QStringLiteral("select"),      QStringLiteral("ls"),
                                  QStringLiteral("connectAttr"), QStringLiteral("textField")};
    QStringList lines;
    lines.reserve(count);
    int i = 0;
    while (lines.size() < count)
    {
        const QString command = commands.at(i % commands.size());
        lines << QStringLiteral("// Builds rig part %1 from the selection.").arg(i)
              << QStringLiteral("global proc string[] buildPart%1(string $root, float $scale)").arg(i)
              << QStringLiteral("{") << QStringLiteral("    string $nodes[] = `ls -sl -type \"transform\"`;")
              << QStringLiteral("    int $count = size($nodes); /* how many */")
              << QStringLiteral("    for ($i = 0; $i < $count; $i++)") << QStringLiteral("    {")
              << QStringLiteral("        %1 -e -width 1.5 ($nodes[$i] + \".tx\") ($scale * %2.25);")
                     .arg(command)
                     .arg(i)
              << QStringLiteral(
                     "        if ($scale > 0.001 && $root != \"\") print(\"node \" + $nodes[$i] + \"\\n\");")
              << QStringLiteral("    }") << QStringLiteral("    return $nodes;") << QStringLiteral("}")
              << QString();
        ++i;
    }
    return lines.mid(0, count).join(QLatin1Char('\n'));
}
} // namespace BenchTexts
