#include "TestFiles.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>

namespace
{
bool Writable(const QString& path)
{
    const bool folder = QFileInfo(path).isDir();
    QFile probe(folder ? path + QStringLiteral("/.probe") : path);
    if (!probe.open(folder ? QIODevice::WriteOnly : QIODevice::Append))
        return false;
    probe.close();
    if (folder)
        probe.remove();
    return true;
}
} // namespace

bool TestFiles::Write(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

QByteArray TestFiles::Read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool TestFiles::MakeReadOnly(const QString& path, bool readOnly)
{
    const bool folder = QFileInfo(path).isDir();
    const QFileDevice::Permissions exec = folder ? QFileDevice::ExeOwner : QFileDevice::Permissions();
    if (!readOnly)
    {
        QProcess::execute(QStringLiteral("chattr"), {QStringLiteral("-i"), path});
        return QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | exec);
    }
    QFile::setPermissions(path, QFileDevice::ReadOwner | exec);
    if (!Writable(path))
        return true;
    // Root ignores permissions; the immutable flag stops it too.
    QProcess::execute(QStringLiteral("chattr"), {QStringLiteral("+i"), path});
    return !Writable(path);
}
