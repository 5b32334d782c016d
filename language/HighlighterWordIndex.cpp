#include "language/HighlighterWordIndex.h"

void HighlighterWordIndex::SetWords(const QStringList& list)
{
    set.clear();
    // Shared string data is never written in place, so the views stay good while this copy lives.
    words = list;
    set.reserve(words.size());
    for (const QString& word : std::as_const(words))
    {
        // The host's lists hold empty entries between the names; no piece of a line is empty.
        if (!word.isEmpty())
            set.insert(QStringView(word));
    }
}
