#include "HostOptionVars.h"

#include "HostState.h"

#include <QtCore/QFile>
#include <QtCore/QLocale>
#include <QtCore/QMap>
#include <QtCore/QRegularExpression>
#include <QtCore/QSaveFile>

namespace
{
struct Store
{
    QString loadedFrom; // empty: nothing read yet
    QMap<QString, QVariant> values;
};

Store& TheStore()
{
    static Store store;
    return store;
}

// A preferences file is small; anything far larger is not one.
constexpr qint64 MAX_FILE_SIZE = 16 * 1024 * 1024;

QString Unescape(const QString& text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i)
    {
        QChar c = text.at(i);
        if (c == QLatin1Char('\\') && i + 1 < text.size())
        {
            c = text.at(++i);
            if (c == QLatin1Char('n'))
                c = QLatin1Char('\n');
            else if (c == QLatin1Char('t'))
                c = QLatin1Char('\t');
            else if (c == QLatin1Char('r'))
                c = QLatin1Char('\r');
        }
        result += c;
    }
    return result;
}

QString Escape(const QString& text)
{
    QString result = text;
    result.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    result.replace(QLatin1Char('"'), QLatin1String("\\\""));
    result.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    result.replace(QLatin1Char('\t'), QLatin1String("\\t"));
    result.replace(QLatin1Char('\r'), QLatin1String("\\r"));
    return result;
}

QVariant ParseValue(const QString& kind, const QString& text)
{
    bool ok = false;
    if (kind == QLatin1String("iv"))
    {
        const int value = text.toInt(&ok);
        return ok ? QVariant(value) : QVariant();
    }
    if (kind == QLatin1String("fv"))
    {
        const double value = text.toDouble(&ok);
        return ok ? QVariant(value) : QVariant();
    }
    if (text.size() >= 2 && text.startsWith(QLatin1Char('"')) && text.endsWith(QLatin1Char('"')))
        return QVariant(Unescape(text.mid(1, text.size() - 2)));
    return QVariant();
}

QMap<QString, QVariant> ReadFile(const QString& path)
{
    static const QRegularExpression line(
        QStringLiteral("^\\s*optionVar\\s+-(iv|fv|sv)\\s+\"((?:[^\"\\\\]|\\\\.)*)\"\\s+(.*?)\\s*;\\s*$"));
    QMap<QString, QVariant> values;
    QFile file(path);
    if (file.size() > MAX_FILE_SIZE || !file.open(QIODevice::ReadOnly))
        return values;
    const QString text = QString::fromUtf8(file.readAll());
    for (const QString& row : text.split(QLatin1Char('\n')))
    {
        const QRegularExpressionMatch match = line.match(row);
        if (!match.hasMatch())
            continue;
        const QVariant value = ParseValue(match.captured(1), match.captured(3));
        if (value.isValid())
            values.insert(Unescape(match.captured(2)), value);
    }
    return values;
}

QString Line(const QString& name, const QVariant& value)
{
    QString kind;
    QString text;
    if (value.typeId() == QMetaType::Int)
    {
        kind = QStringLiteral("iv");
        text = QString::number(value.toInt());
    }
    else if (value.typeId() == QMetaType::Double)
    {
        kind = QStringLiteral("fv");
        text = QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    }
    else
    {
        kind = QStringLiteral("sv");
        text = QStringLiteral("\"%1\"").arg(Escape(value.toString()));
    }
    return QStringLiteral("optionVar -%1 \"%2\" %3;\n").arg(kind, Escape(name), text);
}

bool WriteFile(const QString& path, const QMap<QString, QVariant>& values)
{
    QString text = QStringLiteral("//Maya Preference 2026\n//\n\n");
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        text += Line(it.key(), it.value());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(text.toUtf8());
    return file.commit();
}

Store& Loaded()
{
    Store& store = TheStore();
    const QString path = HostOptionVars::FilePath();
    if (store.loadedFrom != path)
    {
        store.values = ReadFile(path);
        store.loadedFrom = path;
    }
    return store;
}

bool Set(const QString& name, const QVariant& value)
{
    if (name.isEmpty())
        return false;
    Store& store = Loaded();
    store.values.insert(name, value);
    return WriteFile(store.loadedFrom, store.values);
}
} // namespace

QVariant HostOptionVars::Value(const QString& name)
{
    return Loaded().values.value(name);
}

bool HostOptionVars::Exists(const QString& name)
{
    return Loaded().values.contains(name);
}

bool HostOptionVars::SetInt(const QString& name, int value)
{
    return Set(name, QVariant(value));
}

bool HostOptionVars::SetDouble(const QString& name, double value)
{
    return Set(name, QVariant(value));
}

bool HostOptionVars::SetString(const QString& name, const QString& value)
{
    return Set(name, QVariant(value));
}

bool HostOptionVars::Remove(const QString& name)
{
    Store& store = Loaded();
    if (store.values.remove(name) == 0)
        return false;
    return WriteFile(store.loadedFrom, store.values);
}

QStringList HostOptionVars::Names()
{
    return Loaded().values.keys();
}

QString HostOptionVars::FilePath()
{
    return HostState::UserPrefDir() + QStringLiteral("userPrefs.mel");
}

void HostOptionVars::Forget()
{
    TheStore().loadedFrom.clear();
    TheStore().values.clear();
}
