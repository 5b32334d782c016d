#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QString>

// What a file on disk looked like when the editor last read or wrote it, so that a change by
// another program is seen before the editor writes over it.
struct FileStamp
{
    bool exists = false;
    qint64 size = -1;
    QDateTime modified;
    QByteArray hash;
    QDateTime taken;

    // The stamp of `path` just after `bytes` were read from it or written to it.
    static FileStamp Take(const QString& path, const QByteArray& bytes);
    // The stamp of what `path` holds now.
    static FileStamp Current(const QString& path);
    static QByteArray Hash(const QByteArray& bytes);
    // True when the file now holds something else than it did. A file that went away is not a
    // change: writing it back harms nobody.
    bool ChangedOnDisk(const QString& path) const;
};
