#pragma once

#include "FuzzInput.h"
#include "language/BaseParser.h"

// What every run must hold: positions inside the parsed text (which is the source plus one
// newline), messages whose end is not before their start, and names that stand in the text.
inline void CheckParser(const BaseParser& parser, const QString& source)
{
    const int length = static_cast<int>(source.size()) + 1;
    for (const ParserItem& item : parser.GetItems())
    {
        FUZZ_CHECK(item.position >= 0 && item.position <= length);
        FUZZ_CHECK(item.level >= 0);
    }
    for (const QList<ParserMessage>& list : {parser.GetErrors(), parser.GetWarnings(), parser.GetInfos()})
    {
        for (const ParserMessage& message : list)
        {
            FUZZ_CHECK(message.start >= 0 && message.start <= length);
            FUZZ_CHECK(message.end == -1 || (message.end >= message.start && message.end <= length));
        }
    }
}
