#include "sidebar/LiteralSearch.h"

#include <QtCore/QString>

#include <cstring>
#include <string_view>

namespace
{
bool IsWordByte(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

char ToLowerAscii(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

QByteArray ToLowerAscii(QByteArrayView bytes)
{
    QByteArray lower(bytes.size(), Qt::Uninitialized);
    char* out = lower.data();
    for (qsizetype i = 0; i < bytes.size(); ++i)
        out[i] = ToLowerAscii(bytes[i]);
    return lower;
}
} // namespace

LiteralSearch::LiteralSearch(const QRegularExpression& regEx)
{
    const QRegularExpression::PatternOptions options = regEx.patternOptions();
    if ((options & ~QRegularExpression::PatternOptions(QRegularExpression::CaseInsensitiveOption)) != 0 ||
        !regEx.isValid())
        return;
    ignoreCase = options.testFlag(QRegularExpression::CaseInsensitiveOption);
    valid = Parse(regEx.pattern()) && !needle.isEmpty();
    if (valid && ignoreCase)
        needle = ToLowerAscii(needle);
}

bool LiteralSearch::Parse(const QString& pattern)
{
    static const char metaCharacters[] = "^$.|?*+()[]{}";
    const qsizetype size = pattern.size();
    for (qsizetype i = 0; i < size; ++i)
    {
        const char16_t c = pattern.at(i).unicode();
        if (c < 0x20 || c > 0x7e)
            return false;
        if (c != u'\\')
        {
            if (std::strchr(metaCharacters, static_cast<char>(c)))
                return false;
            needle.append(static_cast<char>(c));
            continue;
        }
        if (i + 1 == size)
            return false;
        const char16_t escaped = pattern.at(++i).unicode();
        if (escaped == u'b' && i == 1)
            wordStart = true;
        else if (escaped == u'b' && i == size - 1)
            wordEnd = true;
        else if (escaped < 0x20 || escaped > 0x7e || IsWordByte(static_cast<char>(escaped)))
            return false; // a class, an anchor, a back reference or a code
        else
            needle.append(static_cast<char>(escaped));
    }
    return true;
}

bool LiteralSearch::IsAscii(QByteArrayView bytes)
{
    const char* data = bytes.data();
    const qsizetype size = bytes.size();
    qsizetype i = 0;
    quint64 high = 0;
    for (; i + 8 <= size; i += 8)
    {
        quint64 word;
        std::memcpy(&word, data + i, sizeof(word));
        high |= word;
    }
    for (; i < size; ++i)
        high |= static_cast<unsigned char>(data[i]);
    return (high & 0x8080808080808080ULL) == 0;
}

bool LiteralSearch::IsWholeWord(QByteArrayView bytes, qsizetype at) const
{
    // A boundary lies between a word character and anything else; a line end is not a word character.
    const auto boundary = [&bytes](qsizetype position)
    {
        const bool before = position > 0 && IsWordByte(bytes[position - 1]);
        const bool after = position < bytes.size() && IsWordByte(bytes[position]);
        return before != after;
    };
    return (!wordStart || boundary(at)) && (!wordEnd || boundary(at + needle.size()));
}

qsizetype LiteralSearch::Find(QByteArrayView haystack, qsizetype from) const
{
    // The library's find looks for the first byte with memchr and compares from there: on script
    // text that beats the skip tables of Boyer-Moore for the short words people search.
    const std::string_view text(haystack.data(), static_cast<size_t>(haystack.size()));
    const size_t found = text.find(std::string_view(needle.constData(), static_cast<size_t>(needle.size())),
                                   static_cast<size_t>(from));
    return found == std::string_view::npos ? -1 : static_cast<qsizetype>(found);
}

void LiteralSearch::Match(QByteArrayView bytes, qint64 base, const QString& fileName, const QString& label,
                          QList<SearchResult>& results) const
{
    if (!valid || bytes.size() < needle.size())
        return;
    const QByteArray lower = ignoreCase ? ToLowerAscii(bytes) : QByteArray();
    const QByteArrayView haystack = ignoreCase ? QByteArrayView(lower) : bytes;
    const char* data = haystack.data();
    qsizetype lineEnd = -1;
    QString lineText;
    for (qsizetype at = Find(haystack, 0); at >= 0;)
    {
        if (!IsWholeWord(haystack, at))
        {
            at = Find(haystack, at + 1);
            continue;
        }
        if (at > lineEnd)
        {
            qsizetype lineStart = at;
            while (lineStart > 0 && data[lineStart - 1] != '\n')
                --lineStart;
            const void* feed = std::memchr(data + at, '\n', static_cast<size_t>(haystack.size() - at));
            lineEnd = feed ? static_cast<const char*>(feed) - data : haystack.size();
            lineText = QString::fromLatin1(bytes.sliced(lineStart, lineEnd - lineStart)).trimmed();
        }
        results.append(SearchResult{fileName, label, lineText, static_cast<int>(base + at)});
        at = Find(haystack, at + needle.size());
    }
}
