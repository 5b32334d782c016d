#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

// Files on disk as a test sets them up and reads them back.
namespace TestFiles
{
// Writes the whole file, making its folder first where there is none.
bool Write(const QString& path, const QByteArray& bytes);
// The whole file, or an empty array where it can't be read.
QByteArray Read(const QString& path);
// Makes a folder (or file) read-only for everybody, root included, or writable again. Returns
// false where the platform has no way to stop root writing into it.
bool MakeReadOnly(const QString& path, bool readOnly);
} // namespace TestFiles
