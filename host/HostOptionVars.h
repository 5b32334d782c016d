#pragma once
#include <QtCore/QString>
#include <QtCore/QVariant>

// Maya's option variables: typed values kept across sessions in
// "$MAYA_APP_DIR/2026/prefs/userPrefs.mel" as lines such as `optionVar -iv "name" 1;`.
// The file is read on first use (and again whenever MAYA_APP_DIR points elsewhere), and
// rewritten whole on each change, through a temporary file renamed over the old one. Lines that
// do not read as option variables are ignored.
class HostOptionVars
{
public:
    // An int, double or QString value; invalid if the variable does not exist.
    static QVariant Value(const QString& name);
    static bool Exists(const QString& name);
    static bool SetInt(const QString& name, int value);
    static bool SetDouble(const QString& name, double value);
    static bool SetString(const QString& name, const QString& value);
    static bool Remove(const QString& name);
    static QStringList Names();

    static QString FilePath();
    // Drops what is held in memory, as a new session would; the next use reads the file.
    static void Forget();
};
