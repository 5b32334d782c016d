#include "sidebar/SearchFunctions.h"

#include "sidebar/LiteralSearch.h"

#include <QtCore/QFile>
#include <QtCore/QStringDecoder>
#include <QtCore/QTextStream>

namespace
{
// Bytes read from a file at a time; a line longer than this is gathered across reads.
constexpr qint64 READ_BLOCK_SIZE = 4 * 1024 * 1024;

// Whether a match of the expression over a whole text, with `^` and `$` at each line, can
// always be found again on the line it starts in. Lookaround, anchors to the whole subject,
// atomic and possessive parts, verbs and quoting can see or hold across a line end and are
// sent down the slower line-by-line path. The test errs on the side of "no".
bool IsLineSafePattern(const QString& pattern)
{
    const int size = pattern.size();
    for (int i = 0; i < size; ++i)
    {
        const QChar c = pattern.at(i);
        const QChar next = i + 1 < size ? pattern.at(i + 1) : QChar();
        if (c == QLatin1Char('\\'))
        {
            if (QStringLiteral("AzZGKQg").contains(next))
                return false;
            ++i;
            continue;
        }
        if (c == QLatin1Char('(') && next == QLatin1Char('*'))
            return false;
        if (c == QLatin1Char('(') && next == QLatin1Char('?'))
        {
            const QStringView rest = QStringView(pattern).mid(i + 2);
            const bool plainGroup = rest.startsWith(QLatin1Char(':')) || rest.startsWith(QLatin1String("P<")) ||
                                    rest.startsWith(QLatin1Char('\'')) ||
                                    (rest.startsWith(QLatin1Char('<')) && rest.size() > 1 && rest.at(1).isLetter());
            if (!plainGroup)
                return false;
        }
        if (QStringLiteral("*+?}").contains(c) && next == QLatin1Char('+'))
            return false;
    }
    return true;
}

// Whether every surrogate in the text is paired. A checked text is matched without the check
// that the expression would otherwise make over the whole subject at every call.
bool IsValidUtf16(QStringView text)
{
    const qsizetype size = text.size();
    for (qsizetype i = 0; i < size; ++i)
    {
        const QChar c = text.at(i);
        if (!c.isSurrogate())
            continue;
        if (c.isLowSurrogate() || i + 1 == size || !text.at(i + 1).isLowSurrogate())
            return false;
        ++i;
    }
    return true;
}

// The expression with `^` and `$` at each line. A search asks for it once per file: the copy
// shares the one compiled form. Searches run on the main thread only.
QRegularExpression WholeTextRegEx(const QRegularExpression& regEx)
{
    static QRegularExpression cached;
    const QRegularExpression::PatternOptions options = regEx.patternOptions() | QRegularExpression::MultilineOption;
    if (cached.pattern() != regEx.pattern() || cached.patternOptions() != options)
        cached = QRegularExpression(regEx.pattern(), options);
    return cached;
}

// Finds the matches of one expression line by line in texts made of whole lines. Where the
// pattern allows, one pass over the whole text finds the lines that can hold a match, and only
// those are matched one by one; the results are the same as matching every line.
class LineMatcher
{
public:
    LineMatcher(const QString& fileName, const QString& label, const QRegularExpression& regEx,
                QList<SearchResult>& results)
        : fileName(fileName), label(label), regEx(regEx), results(results)
    {
        if (IsLineSafePattern(regEx.pattern()))
        {
            wholeTextRegEx = WholeTextRegEx(regEx);
            useWholeText = wholeTextRegEx.isValid();
        }
    }

    // `text` holds lines separated by line feeds; `base` is the offset of its first line. The
    // part after the last line feed is a line only with `lastLineCounts`.
    void MatchText(const QString& text, qint64 base, bool lastLineCounts)
    {
        matchOptions = IsValidUtf16(text) ? QRegularExpression::DontCheckSubjectStringMatchOption
                                          : QRegularExpression::NoMatchOption;
        // Each call on a text that is not known to be valid checks it whole.
        if (useWholeText && matchOptions != QRegularExpression::NoMatchOption)
            MatchCandidateLines(text, base, lastLineCounts);
        else
            MatchEveryLine(text, base, lastLineCounts);
        matchOptions = QRegularExpression::NoMatchOption;
    }

    void MatchLine(QStringView line, qint64 lineOffset)
    {
        QRegularExpressionMatchIterator matches =
            regEx.globalMatch(line, 0, QRegularExpression::NormalMatch, matchOptions);
        QString lineText;
        while (matches.hasNext())
        {
            const QRegularExpressionMatch match = matches.next();
            if (lineText.isNull())
                lineText = line.trimmed().toString();
            results.append(SearchResult{fileName, label, lineText,
                                        static_cast<int>(lineOffset + match.capturedStart())});
        }
    }

private:
    void MatchEveryLine(const QString& text, qint64 base, bool lastLineCounts)
    {
        qsizetype start = 0;
        while (start <= text.size())
        {
            qsizetype end = text.indexOf(QLatin1Char('\n'), start);
            if (end < 0)
            {
                if (start < text.size() || lastLineCounts)
                    MatchLine(QStringView(text).mid(start), base + start);
                return;
            }
            MatchLine(QStringView(text).mid(start, end - start), base + start);
            start = end + 1;
        }
    }

    void MatchCandidateLines(const QString& text, qint64 base, bool lastLineCounts)
    {
        qsizetype from = 0;
        while (from <= text.size())
        {
            // `^` never matches after a line feed that ends the subject, so an empty last line
            // is matched on its own.
            if (from == text.size() && from > 0)
            {
                if (lastLineCounts)
                    MatchLine(QStringView(), base + from);
                return;
            }
            const QRegularExpressionMatch match =
                wholeTextRegEx.match(text, from, QRegularExpression::NormalMatch, matchOptions);
            if (!match.hasMatch())
                return;
            const qsizetype found = match.capturedStart();
            const qsizetype lineStart = found > 0 ? text.lastIndexOf(QLatin1Char('\n'), found - 1) + 1 : 0;
            qsizetype lineEnd = text.indexOf(QLatin1Char('\n'), found);
            if (lineEnd < 0)
            {
                if (lineStart < text.size() || lastLineCounts)
                    MatchLine(QStringView(text).mid(lineStart), base + lineStart);
                return;
            }
            MatchLine(QStringView(text).mid(lineStart, lineEnd - lineStart), base + lineStart);
            from = lineEnd + 1;
        }
    }

    const QString& fileName;
    const QString& label;
    const QRegularExpression& regEx;
    QList<SearchResult>& results;
    QRegularExpression wholeTextRegEx;
    bool useWholeText = false;
    QRegularExpression::MatchOptions matchOptions = QRegularExpression::NoMatchOption;
};

bool IsSearchable(const QRegularExpression& regEx)
{
    return !regEx.pattern().isEmpty() && regEx.isValid();
}

// The stream's own reading, line by line: the reference for what a file's lines are. Taken for
// files with a byte order mark, whose encoding the stream finds itself.
QList<SearchResult> FindMatchingInStream(QFile& file, const QString& fileName, const QRegularExpression& regEx)
{
    QList<SearchResult> results;
    LineMatcher matcher(fileName, fileName, regEx, results);
    file.seek(0);
    file.setTextModeEnabled(true);
    QTextStream stream(&file);
    qint64 offset = 0;
    for (QString line = stream.readLine(); !line.isNull(); line = stream.readLine())
    {
        matcher.MatchLine(line, offset);
        offset += line.size() + 1;
    }
    return results;
}

bool StartsWithByteOrderMark(const QByteArray& bytes)
{
    return bytes.startsWith("\xEF\xBB\xBF") || bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
}
} // namespace

QRegularExpression CreateSearchRegEx(const QString& text, bool matchCase, bool matchWholeWords,
                                     bool useRegularExpression)
{
    if (text.isEmpty())
        return QRegularExpression();
    QString pattern = useRegularExpression ? text : QRegularExpression::escape(text);
    if (matchWholeWords)
        pattern = QStringLiteral("\\b%1\\b").arg(pattern);
    QRegularExpression::PatternOptions options = QRegularExpression::NoPatternOption;
    if (!matchCase)
        options |= QRegularExpression::CaseInsensitiveOption;
    return QRegularExpression(pattern, options);
}

QList<QFileInfo> CreateSearchPaths(const QList<QString>& entries)
{
    QList<QFileInfo> paths;
    for (const QString& entry : entries)
    {
        const QString trimmed = entry.trimmed();
        if (!trimmed.isEmpty())
            paths.append(QFileInfo(trimmed));
    }
    return paths;
}

QList<QRegularExpression> CreateSearchFilter(const QList<QString>& filters, QList<QString>& paths)
{
    paths.clear();
    QList<QRegularExpression> patterns;
    for (const QString& filter : filters)
    {
        const QString entry = filter.trimmed();
        if (entry.isEmpty())
            continue;
        const QFileInfo info(entry);
        if (info.exists())
        {
            QString path = info.absoluteFilePath();
            while (path.size() > 1 && path.endsWith(QLatin1Char('/')))
                path.chop(1);
            paths.append(path);
            continue;
        }
        patterns.append(QRegularExpression(
            QRegularExpression::anchoredPattern(QRegularExpression::wildcardToRegularExpression(entry)),
            QRegularExpression::CaseInsensitiveOption));
    }
    return patterns;
}

QList<SearchResult> FindMatchingInText(const QString& fileName, const QString& label, const QString& text,
                                       const QRegularExpression& regEx)
{
    QList<SearchResult> results;
    if (!IsSearchable(regEx))
        return results;
    LineMatcher matcher(fileName, label, regEx, results);
    matcher.MatchText(text, 0, true);
    return results;
}

QList<SearchResult> FindMatchingInFile(const QString& path, const QRegularExpression& regEx)
{
    const QFileInfo info(path);
    if (!info.exists() || !info.isFile() || !IsSearchable(regEx))
        return {};
    QFile file(path);
    // Read as bytes: carriage returns are dropped below, as a text-mode read would, but only in
    // the blocks that hold one.
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString fileName = info.fileName();

    // Read in blocks cut after a line feed, so that memory stays bounded by the longest line.
    QList<SearchResult> results;
    LineMatcher matcher(fileName, fileName, regEx, results);
    const LiteralSearch literal(regEx);
    QStringDecoder decoder(QStringDecoder::Utf8);
    QByteArray pending;
    qint64 offset = 0;
    bool first = true;
    while (true)
    {
        // A small file is read in one piece, not into a buffer of the largest block.
        const qint64 left = file.size() - file.pos();
        QByteArray block = file.read(left > 0 ? qMin(left + 1, READ_BLOCK_SIZE) : READ_BLOCK_SIZE);
        const bool atEnd = block.isEmpty();
        if (first && StartsWithByteOrderMark(block))
            return FindMatchingInStream(file, fileName, regEx);
        first = false;
        if (block.contains('\r'))
            block.replace("\r", "");
        pending += block;
        // Only the new block can hold the last line feed.
        const qsizetype lastFeed = block.lastIndexOf('\n');
        const qsizetype cut = atEnd ? pending.size() : lastFeed < 0 ? 0 : pending.size() - block.size() + lastFeed + 1;
        if (cut > 0)
        {
            const QByteArrayView lines = QByteArrayView(pending).first(cut);
            if (literal.IsValid() && LiteralSearch::IsAscii(lines))
            {
                literal.Match(lines, offset, fileName, fileName, results);
                offset += cut;
            }
            else
            {
                const QString text = decoder.decode(lines);
                matcher.MatchText(text, offset, false);
                offset += text.size();
            }
            pending.remove(0, cut);
        }
        if (atEnd)
            break;
    }
    return results;
}
