#include "editor/FileStamp.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace
{
// Modification times are coarse on some file systems: a second write within this time of the
// stamp may keep the same time, so the content decides.
constexpr qint64 DOUBT_MS = 2000;
} // namespace

FileStamp FileStamp::Take(const QString& path, const QByteArray& bytes)
{
    FileStamp stamp;
    const QFileInfo info(path);
    stamp.exists = info.exists();
    stamp.size = info.size();
    stamp.modified = info.lastModified();
    stamp.hash = Hash(bytes);
    stamp.taken = QDateTime::currentDateTimeUtc();
    return stamp;
}

FileStamp FileStamp::Current(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return FileStamp();
    return Take(path, file.readAll());
}

QByteArray FileStamp::Hash(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
}

bool FileStamp::ChangedOnDisk(const QString& path) const
{
    if (!exists)
        return false;
    const QFileInfo info(path);
    if (!info.exists())
        return false;
    if (info.size() != size)
        return true;
    const bool sameTime = info.lastModified() == modified;
    if (sameTime && qAbs(modified.toUTC().msecsTo(taken)) > DOUBT_MS)
        return false;
    // Same size but a new time (or too close to tell): only the content can say.
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return true;
    return Hash(file.readAll()) != hash;
}
