#pragma once

#include <QtCore/QString>

// One match of a search in files or in a buffer.
struct SearchResult
{
    QString fileName; // without folder
    QString label;    // the name shown for the file
    QString lineText; // the whole line, trimmed
    int position = 0; // from the start of the text, each line end counting as one character
};
