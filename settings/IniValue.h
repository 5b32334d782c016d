#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <climits>

class QSettings;

// Typed reads from an INI store that keep the caller's value when a key is missing or holds
// something that is not a value of the expected type (a hand-edited or damaged file).
class IniValue
{
public:
    IniValue() = delete;

    static bool ReadBool(const QSettings& file, const QString& key, bool fallback);
    static int ReadInt(const QSettings& file, const QString& key, int fallback, int minimum = INT_MIN,
                       int maximum = INT_MAX);
    static double ReadDouble(const QSettings& file, const QString& key, double fallback);
    static QString ReadString(const QSettings& file, const QString& key, const QString& fallback);
    static QStringList ReadStringList(const QSettings& file, const QString& key, const QStringList& fallback);
    static QByteArray ReadByteArray(const QSettings& file, const QString& key, const QByteArray& fallback);
    static QRect ReadRect(const QSettings& file, const QString& key, const QRect& fallback);
};
