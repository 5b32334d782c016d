#pragma once

#include <QtCore/QString>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// Bytes as an editor hands text over: decoded as UTF-8 (invalid sequences become U+FFFD), with
// paragraph separators where the user's lines end.
inline QString FuzzText(const uint8_t* data, size_t size)
{
    QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (!text.isEmpty() && text.at(0) == QLatin1Char('\x01'))
        text.replace(QLatin1Char('\n'), QChar(QChar::ParagraphSeparator));
    return text;
}

// A broken promise of the parsers is a crash for the fuzzer.
#define FUZZ_CHECK(condition)                                                                                    \
    do                                                                                                           \
    {                                                                                                            \
        if (!(condition))                                                                                        \
            std::abort();                                                                                        \
    } while (false)
