#pragma once

#include <QtCore/QString>

// Output that arrived during one burst of appends and is not in the document yet. It never holds
// more than a capped document could keep: once it has twice the cap in lines, everything before
// the last `cap` lines is dropped, and the document is then to be replaced instead of extended.
class OutputArrivalBuffer
{
public:
    void Append(const QString& text, int maximumBlockCount);
    bool IsEmpty() const { return text.isEmpty() && !replacesDocument; }
    bool ReplacesDocument() const { return replacesDocument; }
    // Hands the text over and leaves the buffer empty.
    QString Take();
    void Clear();

    // Where the part of `text` starts that can still be in a document capped at
    // `maximumBlockCount` blocks once `text` is appended to it; -1 when the whole text and some of
    // the document survive. A text with at least as many line feeds as the cap leaves nothing of
    // the document.
    static qsizetype SurvivingStart(const QString& text, qsizetype lineFeeds, int maximumBlockCount);

private:
    QString text;
    qsizetype lineFeeds = 0;
    bool replacesDocument = false;
};
