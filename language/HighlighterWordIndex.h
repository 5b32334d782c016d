#pragma once

#include <QtCore/QSet>
#include <QtCore/QStringList>
#include <QtCore/QStringView>

// A word list with a hashed lookup by view, so that the highlighters can ask whether a piece of a
// line is a listed word without copying the piece. Keeps its own copy of the list, which the
// views of the set point into.
class HighlighterWordIndex
{
public:
    HighlighterWordIndex() = default;
    HighlighterWordIndex(const HighlighterWordIndex&) = delete;
    HighlighterWordIndex& operator=(const HighlighterWordIndex&) = delete;

    void SetWords(const QStringList& list);
    bool Contains(QStringView word) const { return set.contains(word); }
    bool IsEmpty() const { return set.isEmpty(); }

private:
    QStringList words;
    QSet<QStringView> set;
};
