#include "HostVocabulary.h"

#include <QtCore/QFile>
#include <QtCore/QSet>

#include <algorithm>

namespace
{
QStringList ReadCommandNames()
{
    QStringList names;
    QFile file(QStringLiteral(":/bq2_host/maya-commands.txt"));
    if (!file.open(QIODevice::ReadOnly))
        return names;
    const QString text = QString::fromUtf8(file.readAll());
    for (const QString& line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
    {
        const QString name = line.trimmed();
        if (!name.isEmpty())
            names.append(name);
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

const QSet<QString>& CommandSet()
{
    static const QSet<QString> set(HostVocabulary::MayaCommands().cbegin(),
                                   HostVocabulary::MayaCommands().cend());
    return set;
}
} // namespace

const QStringList& HostVocabulary::MayaCommands()
{
    static const QStringList names = ReadCommandNames();
    return names;
}

bool HostVocabulary::IsMayaCommand(const QString& name)
{
    return CommandSet().contains(name);
}
