#pragma once

#include "sidebar/SearchResult.h"

#include <QtCore/QFileInfo>
#include <QtCore/QList>
#include <QtCore/QRegularExpression>
#include <QtCore/QString>

// The expression that the find bar and the search in files share. An empty text gives an empty
// expression, which matches nothing.
QRegularExpression CreateSearchRegEx(const QString& text, bool matchCase, bool matchWholeWords,
                                     bool useRegularExpression);

// The trimmed, non-empty entries as file infos.
QList<QFileInfo> CreateSearchPaths(const QList<QString>& entries);

// Splits filter entries into existing paths (into `paths`) and case-insensitive wildcards that
// must match a whole absolute path (returned).
QList<QRegularExpression> CreateSearchFilter(const QList<QString>& filters, QList<QString>& paths);

// Matches line by line: a match never spans two lines, and `^` and `$` are a line's ends.
QList<SearchResult> FindMatchingInText(const QString& fileName, const QString& label, const QString& text,
                                       const QRegularExpression& regEx);

// The same over a file read as UTF-8 text; a file that cannot be read gives no results.
QList<SearchResult> FindMatchingInFile(const QString& path, const QRegularExpression& regEx);
