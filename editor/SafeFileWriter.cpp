#include "editor/SafeFileWriter.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

#include <sys/stat.h>
#include <unistd.h>

bool SafeFileWriter::Write(const QString& path, const QByteArray& bytes, QString& reason)
{
    reason.clear();
    const QString target = ResolveTarget(path);
    // Through a link the file is someone else's arrangement: it is changed where it lies.
    if (QFileInfo(path).isSymLink() || NeedsInPlaceWrite(target))
        return WriteInPlace(target, bytes, reason);
    bool couldNotStart = false;
    if (WriteAtomically(target, bytes, reason, couldNotStart))
        return true;
    // No copy could be made beside the file (a folder without write permission): the file
    // itself may still be writable. QSaveFile's own fallback would truncate first; this one
    // keeps the old bytes until the new ones are in.
    if (couldNotStart && QFileInfo::exists(target))
        return WriteInPlace(target, bytes, reason);
    return false;
}

QString SafeFileWriter::ResolveTarget(const QString& path)
{
    const QFileInfo info(path);
    if (!info.isSymLink())
        return info.absoluteFilePath();
    // A link whose target is missing still names where the text belongs.
    const QString canonical = info.canonicalFilePath();
    return canonical.isEmpty() ? info.symLinkTarget() : canonical;
}

bool SafeFileWriter::NeedsInPlaceWrite(const QString& target)
{
    struct stat status;
    if (::stat(QFile::encodeName(target).constData(), &status) != 0)
        return false;
    // A rename would leave the other links with the old text, or hand the file to this user.
    return status.st_nlink > 1 || status.st_uid != ::geteuid() || status.st_gid != ::getegid();
}

bool SafeFileWriter::WriteAtomically(const QString& target, const QByteArray& bytes, QString& reason,
                                     bool& couldNotStart)
{
    QSaveFile file(target);
    file.setDirectWriteFallback(false);
    if (!file.open(QIODevice::WriteOnly))
    {
        couldNotStart = true;
        reason = Reason(file.errorString());
        return false;
    }
    if (file.write(bytes) != bytes.size())
    {
        reason = Reason(file.errorString());
        file.cancelWriting();
        return false;
    }
    if (!file.commit())
    {
        reason = Reason(file.errorString());
        return false;
    }
    return true;
}

bool SafeFileWriter::WriteInPlace(const QString& target, const QByteArray& bytes, QString& reason)
{
    QFile file(target);
    if (!file.open(QIODevice::ReadWrite))
    {
        reason = Reason(file.errorString());
        return false;
    }
    const QByteArray old = file.readAll();
    // Written over the old bytes first and cut to length last, so that a disk that fills up
    // fails where the file grows and the old bytes can be put back in the space they had.
    const bool written = file.seek(0) && file.write(bytes) == bytes.size() && file.flush() &&
                         file.resize(bytes.size()) && ::fsync(file.handle()) == 0;
    if (written)
        return true;
    reason = Reason(file.errorString());
    file.unsetError();
    if (file.seek(0) && file.write(old) == old.size() && file.flush())
        file.resize(old.size());
    return false;
}

QString SafeFileWriter::Reason(const QString& errorString)
{
    const auto has = [&errorString](const char* text)
    { return errorString.contains(QLatin1String(text), Qt::CaseInsensitive); };
    if (has("No space left") || has("quota"))
        return QStringLiteral("disk full");
    if (has("Permission denied") || has("Operation not permitted"))
        return QStringLiteral("permission denied");
    if (has("Read-only file system"))
        return QStringLiteral("read-only file system");
    if (has("No such file or directory"))
        return QStringLiteral("folder not found");
    if (has("Is a directory"))
        return QStringLiteral("a folder has that name");
    return errorString.isEmpty() ? QStringLiteral("unknown error") : errorString.toLower();
}
