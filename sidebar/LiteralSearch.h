#pragma once

#include "sidebar/SearchResult.h"

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <QtCore/QList>
#include <QtCore/QRegularExpression>


// An expression that matches one plain printable-ASCII string (with or without case, with or
// without word boundaries at its ends), matched straight on the bytes of ASCII text. Most of a
// search's files are ASCII scripts and most searches are plain words: those need neither
// decoding nor the expression engine, and give the matches the expression would give.
class LiteralSearch
{
public:
    explicit LiteralSearch(const QRegularExpression& regEx);

    // Whether the expression is such a string.
    bool IsValid() const { return valid; }

    // Appends the matches in `bytes`, whole lines of ASCII text whose first character is at
    // `base`, in the order the expression would find them line by line.
    void Match(QByteArrayView bytes, qint64 base, const QString& fileName, const QString& label,
               QList<SearchResult>& results) const;

    static bool IsAscii(QByteArrayView bytes);

private:
    bool Parse(const QString& pattern);
    bool IsWholeWord(QByteArrayView bytes, qsizetype at) const;
    qsizetype Find(QByteArrayView haystack, qsizetype from) const;

    QByteArray needle;
    bool ignoreCase = false;
    bool wordStart = false;
    bool wordEnd = false;
    bool valid = false;
};
