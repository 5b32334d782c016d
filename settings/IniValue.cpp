#include "IniValue.h"

#include <QtCore/QSettings>
#include <QtCore/QVariant>

namespace
{
bool IsStringLike(const QVariant& value)
{
    const int type = value.typeId();
    return type == QMetaType::QString || type == QMetaType::QByteArray;
}
} // namespace

bool IniValue::ReadBool(const QSettings& file, const QString& key, bool fallback)
{
    const QVariant value = file.value(key);
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    if (!IsStringLike(value))
        return fallback;
    const QString text = value.toString().trimmed().toLower();
    if (text == QLatin1String("true") || text == QLatin1String("1"))
        return true;
    if (text == QLatin1String("false") || text == QLatin1String("0"))
        return false;
    return fallback;
}

int IniValue::ReadInt(const QSettings& file, const QString& key, int fallback, int minimum, int maximum)
{
    const QVariant value = file.value(key);
    bool ok = false;
    int number = 0;
    if (value.typeId() == QMetaType::Int || value.typeId() == QMetaType::LongLong)
        number = value.toInt(&ok);
    else if (IsStringLike(value))
        number = value.toString().trimmed().toInt(&ok);
    if (!ok || number < minimum || number > maximum)
        return fallback;
    return number;
}

double IniValue::ReadDouble(const QSettings& file, const QString& key, double fallback)
{
    const QVariant value = file.value(key);
    if (!value.isValid() || value.typeId() == QMetaType::QStringList)
        return fallback;
    bool ok = false;
    const double number = value.toString().trimmed().toDouble(&ok);
    return ok ? number : fallback;
}

QString IniValue::ReadString(const QSettings& file, const QString& key, const QString& fallback)
{
    const QVariant value = file.value(key);
    if (IsStringLike(value))
        return value.toString();
    // An unquoted value with commas comes back as a list: it was one string when written.
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList().join(QStringLiteral(", "));
    return fallback;
}

QStringList IniValue::ReadStringList(const QSettings& file, const QString& key, const QStringList& fallback)
{
    const QVariant value = file.value(key);
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList();
    if (IsStringLike(value))
    {
        const QString text = value.toString();
        return text.isEmpty() ? QStringList() : QStringList{text};
    }
    return fallback;
}

QByteArray IniValue::ReadByteArray(const QSettings& file, const QString& key, const QByteArray& fallback)
{
    const QVariant value = file.value(key);
    if (value.typeId() == QMetaType::QByteArray)
        return value.toByteArray();
    if (value.typeId() == QMetaType::QString)
        return value.toString().toLatin1();
    return fallback;
}

QRect IniValue::ReadRect(const QSettings& file, const QString& key, const QRect& fallback)
{
    const QVariant value = file.value(key);
    if (value.typeId() == QMetaType::QRect)
        return value.toRect();
    return fallback;
}
