#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

// Writes a file so that it keeps its identity and nothing is harmed when the write fails.
// Where it is safe, a complete copy is written beside the file and renamed over it. Where a
// rename would change what the file is (a folder the user may not write in, several hard
// links, another owner, the target of a symbolic link), the file is overwritten in place, and
// its old bytes are put back if that fails.
class SafeFileWriter
{
public:
    // On failure `reason` says why, in words ("permission denied", "disk full").
    static bool Write(const QString& path, const QByteArray& bytes, QString& reason);
    static QString ResolveTarget(const QString& path);
    static bool NeedsInPlaceWrite(const QString& target);

private:
    static bool WriteAtomically(const QString& target, const QByteArray& bytes, QString& reason,
                                bool& couldNotStart);
    static bool WriteInPlace(const QString& target, const QByteArray& bytes, QString& reason);
    static QString Reason(const QString& errorString);
};
