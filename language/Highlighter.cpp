#include "language/Highlighter.h"

#include "editor/CodeEditorBlockData.h"
#include "settings/ColorSettings.h"

#include <QtCore/QHash>
#include <QtCore/QTimer>
#include <QtCore/QVarLengthArray>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtGui/QTextLayout>

#include <algorithm>

#include <algorithm>

const QString Highlighter::EOL_PATTERN = QStringLiteral("$");

QTextCharFormat* Highlighter::sWhitespaceFormat = nullptr;
QStringList Highlighter::sMelKeywords;
QStringList Highlighter::sMelCommands;
QTextCharFormat* Highlighter::sMelKeywordFormat = nullptr;
QTextCharFormat* Highlighter::sMelCommandFormat = nullptr;
QStringList Highlighter::sPythonKeywords;
QStringList Highlighter::sPythonBuiltins;
QStringList Highlighter::sPythonMelCommands;
QTextCharFormat* Highlighter::sPythonKeywordFormat = nullptr;
QTextCharFormat* Highlighter::sPythonBuiltinsFormat = nullptr;
QTextCharFormat* Highlighter::sPythonMelCommandFormat = nullptr;

namespace
{
bool IsWordChar(char16_t c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_';
}

bool IsBlank(char16_t c)
{
    return c == u' ' || c == u'\t';
}

bool IsDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

// Printable ASCII and tabs: the characters on which the plain matchers and the expressions agree
// without a doubt about classes, line ends or surrogates.
bool IsPlainLine(const QString& text)
{
    for (const QChar c : text)
    {
        const char16_t u = c.unicode();
        if ((u < 0x20 || u > 0x7e) && u != u'\t')
            return false;
    }
    return true;
}

bool IsIdentifier(QStringView word)
{
    for (const QChar c : word)
    {
        if (!IsWordChar(c.unicode()))
            return false;
    }
    return !word.isEmpty();
}

// The text a pattern stands for when it uses nothing of the expression language but escaped
// punctuation; empty otherwise.
QString PlainText(const QString& pattern)
{
    static const QString special = QStringLiteral(".^$|?*+()[]{}");
    QString result;
    for (int i = 0; i < pattern.size(); ++i)
    {
        const QChar c = pattern.at(i);
        if (c == QLatin1Char('\\'))
        {
            if (i + 1 >= pattern.size())
                return QString();
            const QChar next = pattern.at(i + 1);
            if (next.unicode() > 127 || next.isLetterOrNumber())
                return QString();
            result += next;
            ++i;
        }
        else if (special.contains(c))
        {
            return QString();
        }
        else
        {
            result += c;
        }
    }
    return result;
}

// Where each start delimiter next occurs in one line. A later search never starts before an
// earlier one, so a position found once holds until the scan passes it, and a delimiter that is
// missing stays missing: every delimiter is searched through the line once.
class StartMemo
{
public:
    explicit StartMemo(int count) : positions(count, UNKNOWN) {}
    static constexpr int UNKNOWN = -2;
    int& At(int rule) { return positions[rule]; }

private:
    QVarLengthArray<int, 8> positions;
};

// The needles here are delimiters and short words: a scan for the first character, which is
// vectorised, beats the general search's set-up on lines of code.
int IndexOfText(const QString& text, const QString& needle, int from)
{
    const int size = int(needle.size());
    if (size == 0)
        return from <= text.size() ? from : -1;
    const QChar first = needle.front();
    for (int i = int(text.indexOf(first, from)); i >= 0 && i + size <= text.size();
         i = int(text.indexOf(first, i + 1)))
    {
        if (QStringView(text).mid(i, size) == needle)
            return i;
    }
    return -1;
}

bool CanMatch(const Highlighter::HighlightingRule& rule, const QString& text)
{
    if (!rule.requiredText.isEmpty() && IndexOfText(text, rule.requiredText, 0) < 0)
        return false;
    if (rule.requiredCharacters.isEmpty())
        return true;
    // The required characters are few and ASCII: a table beats a search per character.
    bool wanted[128] = {};
    for (const QChar c : rule.requiredCharacters)
    {
        if (c.unicode() >= 128)
            return true;
        wanted[c.unicode()] = true;
    }
    for (const QChar c : text)
    {
        if (c.unicode() < 128 && wanted[c.unicode()])
            return true;
    }
    return false;
}

int FindStart(const Highlighter::MultiLineHighlightingRule& rule, const QString& text, int from)
{
    if (rule.startText.size() == 1)
        return int(text.indexOf(rule.startText.front(), from));
    if (!rule.startText.isEmpty())
        return IndexOfText(text, rule.startText, from);
    const QRegularExpressionMatch match = rule.startPattern.match(text, from);
    return match.hasMatch() ? int(match.capturedStart(0)) : -1;
}

int ActiveRule(const QList<Highlighter::MultiLineHighlightingRule>& rules, const QString& text, int& index,
               StartMemo& memo)
{
    int best = -1;
    int bestPosition = -1;
    for (int i = 0; i < rules.size(); ++i)
    {
        int& position = memo.At(i);
        if (position == StartMemo::UNKNOWN || (position >= 0 && position < index))
            position = FindStart(rules.at(i), text, index);
        if (position >= 0 && (best < 0 || position < bestPosition))
        {
            best = i;
            bestPosition = position;
        }
    }
    index = best >= 0 ? bestPosition : -1;
    return best;
}
} // namespace

Highlighter::Highlighter(QTextDocument* document) : QSyntaxHighlighter(document)
{
    if (!sWhitespaceFormat)
        sWhitespaceFormat = ColorSettings::GetCodeEditorFormatPtr(ColorSettings::WHITESPACES, false);
    // Edits are highlighted by the bounded passes of this class instead of the base's slot. Where
    // the base is not connected that way, edits keep the base's unbounded behaviour.
    if (document && disconnect(document, SIGNAL(contentsChange(int, int, int)), this,
                               SLOT(_q_reformatBlocks(int, int, int))))
        connect(document, SIGNAL(contentsChange(int, int, int)), this, SLOT(OnContentsChange(int, int, int)));
}

void Highlighter::OnContentsChange(int from, int charsRemoved, int charsAdded)
{
    passTimer.start();
    Pass(from, charsRemoved, charsAdded, true);
}

void Highlighter::HighlightDocument()
{
    QTextDocument* doc = document();
    if (!doc)
        return;
    pending = false;
    Pass(0, 0, doc->characterCount(), false);
}

// The blocks that the edit touched, then those below while their states change, as the base
// walks them.
void Highlighter::Pass(int from, int charsRemoved, int charsAdded, bool budgeted)
{
    QTextDocument* doc = document();
    if (!doc)
        return;
    QTextBlock target = doc->findBlock(from);
    const QTextBlock last = doc->findBlock(from + charsAdded + (charsRemoved > 0 ? 1 : 0));
    const int end = last.isValid() ? last.position() + last.length() : doc->characterCount();
    // Positions by length from the first: a block's position is a walk of the document's tree.
    blockPosition = target.isValid() ? target.position() : 0;
    bool force = false;
    int blocks = 0;
    while (target.isValid() && (blockPosition < end || force))
    {
        if (budgeted && ++blocks > BUDGET_MIN_BLOCKS && passTimer.hasExpired(BUDGET_MS))
        {
            DeferFrom(target, end);
            break;
        }
        const int before = target.userState();
        HighlightOwnBlock(target);
        force = target.userState() != before;
        blockPosition += target.length();
        target = target.next();
    }
    FlushDirty();
}

void Highlighter::HighlightOwnBlock(const QTextBlock& target)
{
    block = target;
    ownPass = true;
    highlightBlock(target.text());
    ownPass = false;
    block = QTextBlock();
}

void Highlighter::ContinueHighlighting()
{
    continuationQueued = false;
    QTextDocument* doc = document();
    if (!pending || !doc || pendingStart.document() != doc)
        return;
    pending = false;
    const int from = pendingStart.position();
    const int end = pendingEnd.position();
    passTimer.start();
    Pass(from, 0, qMax(0, end - from - 1), true);
}

// Blocks from this one on keep their colours and states until a later turn redoes them, up to the
// end the interrupted pass had to reach at least.
void Highlighter::DeferFrom(const QTextBlock& from, int end)
{
    QTextDocument* doc = document();
    int start = from.position();
    end = qMax(end, from.position() + from.length());
    if (pending && pendingStart.document() == doc)
    {
        start = qMin(start, pendingStart.position());
        end = qMax(end, pendingEnd.position());
    }
    pendingStart = QTextCursor(doc);
    pendingEnd = QTextCursor(doc);
    pendingStart.setPosition(qMin(start, doc->characterCount() - 1));
    pendingEnd.setPosition(qMin(end, doc->characterCount() - 1));
    pending = true;
    if (!continuationQueued)
    {
        continuationQueued = true;
        QTimer::singleShot(0, this, SLOT(ContinueHighlighting()));
    }
}

int Highlighter::PreviousBlockState() const
{
    const QTextBlock previous = block.isValid() ? block.previous() : QTextBlock();
    return previous.isValid() ? previous.userState() : -1;
}

void Highlighter::SetCurrentBlockState(int state)
{
    if (block.isValid())
        block.setUserState(state);
}

HighlighterWordIndex& Highlighter::MelKeywordIndex()
{
    static HighlighterWordIndex index;
    return index;
}

HighlighterWordIndex& Highlighter::MelCommandIndex()
{
    static HighlighterWordIndex index;
    return index;
}

HighlighterWordIndex& Highlighter::PythonKeywordIndex()
{
    static HighlighterWordIndex index;
    return index;
}

HighlighterWordIndex& Highlighter::PythonBuiltinIndex()
{
    static HighlighterWordIndex index;
    return index;
}

HighlighterWordIndex& Highlighter::PythonMelCommandIndex()
{
    static HighlighterWordIndex index;
    return index;
}

Highlighter::HighlightingRule Highlighter::MakeRule(const QString& pattern, const QString& formatKey,
                                                    const QString& requiredText,
                                                    const QString& requiredCharacters)
{
    HighlightingRule rule;
    rule.requiredText = requiredText;
    rule.requiredCharacters = requiredCharacters;
    rule.pattern.setPattern(pattern);
    rule.pattern.optimize();
    rule.format = ColorSettings::GetCodeEditorFormatPtr(formatKey, false);
    RecogniseFastMatch(rule);
    return rule;
}

// Only the exact pattern texts of the rule tables are recognised; any other pattern is left to
// the expression engine.
void Highlighter::RecogniseFastMatch(HighlightingRule& rule)
{
    static const QRegularExpression word(QStringLiteral(R"(^\\b([A-Za-z_][A-Za-z0-9_]*)\\b$)"));
    static const QRegularExpression nameAfterWord(
        QStringLiteral(R"(^\(\?<=\\b([A-Za-z_][A-Za-z0-9_]*)\)\\s\+\[A-Za-z0-9_\]\+\(\?=\\s\*\\\(\)$)"));
    const QString pattern = rule.pattern.pattern();
    rule.fastMatch = FastMatch::None;
    rule.fastWord.clear();
    if (pattern == QLatin1String(R"(\b[0-9]*[.]?[0-9]*)"))
        rule.fastMatch = FastMatch::Number;
    else if (pattern == QLatin1String(R"(\b[A-Za-z0-9_]+(?=\s*\())"))
        rule.fastMatch = FastMatch::Call;
    else if (pattern == QLatin1String(R"((?<![A-Za-z0-9_\-])[A-Za-z0-9_]+(?=\s*\())"))
        rule.fastMatch = FastMatch::CallNotAfterDash;
    else if (pattern == QLatin1String(R"((?<![A-Za-z0-9_])(\$)[A-Za-z0-9_]+)"))
        rule.fastMatch = FastMatch::Variable;
    else if (pattern == QLatin1String(R"(^[\s]*[@](.)*)"))
        rule.fastMatch = FastMatch::Decorator;
    else if (const QRegularExpressionMatch match = word.match(pattern); match.hasMatch())
    {
        rule.fastMatch = FastMatch::Word;
        rule.fastWord = match.captured(1);
    }
    else if (const QRegularExpressionMatch match = nameAfterWord.match(pattern); match.hasMatch())
    {
        rule.fastMatch = FastMatch::NameAfterWord;
        rule.fastWord = match.captured(1);
    }
}

// Each shape below is matched as the expression engine runs it with a global match: the leftmost
// match from the current offset, greedy, the next search from its end. On printable ASCII, \s is a
// blank, \b a change between [A-Za-z0-9_] and anything else, and "." any character. No shape
// gains from backtracking: a shorter name is followed by a name character, which neither \s nor
// "(" accepts. Empty matches are left out, as they change nothing.
template <typename Visit>
void Highlighter::ForEachFastMatch(const HighlightingRule& rule, const QString& text, Visit visit)
{
    const int n = int(text.size());
    const char16_t* c = reinterpret_cast<const char16_t*>(text.constData());
    const auto isWordAt = [&](int i) { return i >= 0 && i < n && IsWordChar(c[i]); };
    const auto runEnd = [&](int i)
    {
        while (i < n && IsWordChar(c[i]))
            ++i;
        return i;
    };
    const auto opensParenthesis = [&](int i)
    {
        while (i < n && IsBlank(c[i]))
            ++i;
        return i < n && c[i] == u'(';
    };
    switch (rule.fastMatch)
    {
    case FastMatch::Number:
        for (int i = 0; i < n;)
        {
            if ((IsDigit(c[i]) || c[i] == u'.') && isWordAt(i - 1) != isWordAt(i))
            {
                int j = i;
                while (j < n && IsDigit(c[j]))
                    ++j;
                if (j < n && c[j] == u'.')
                    ++j;
                while (j < n && IsDigit(c[j]))
                    ++j;
                visit(i, j - i);
                i = j;
            }
            else
            {
                ++i;
            }
        }
        break;
    case FastMatch::Word:
    case FastMatch::Call:
    case FastMatch::CallNotAfterDash:
        for (int i = 0; i < n;)
        {
            if (!IsWordChar(c[i]))
            {
                ++i;
                continue;
            }
            const int end = runEnd(i);
            if (rule.fastMatch == FastMatch::Word
                    ? QStringView(c + i, end - i) == rule.fastWord
                    : opensParenthesis(end) &&
                          (rule.fastMatch == FastMatch::Call || i == 0 || c[i - 1] != u'-'))
                visit(i, end - i);
            i = end;
        }
        break;
    case FastMatch::NameAfterWord:
    {
        const int k = int(rule.fastWord.size());
        for (int from = 0;;)
        {
            const int found = int(text.indexOf(rule.fastWord, from));
            if (found < 0 || k == 0)
                break;
            const int blanks = found + k;
            int name = blanks;
            while (name < n && IsBlank(c[name]))
                ++name;
            const int end = runEnd(name);
            if (!isWordAt(found - 1) && name > blanks && end > name && opensParenthesis(end))
            {
                visit(blanks, end - blanks);
                from = end;
            }
            else
            {
                from = found + 1;
            }
        }
        break;
    }
    case FastMatch::Variable:
        for (int i = 0; i < n;)
        {
            const int end = c[i] == u'$' && !isWordAt(i - 1) ? runEnd(i + 1) : i + 1;
            if (end > i + 1)
                visit(i, end - i);
            i = end;
        }
        break;
    case FastMatch::Decorator:
    {
        int i = 0;
        while (i < n && IsBlank(c[i]))
            ++i;
        if (i < n && c[i] == u'@')
            visit(0, n);
        break;
    }
    case FastMatch::None:
        break;
    }
}

template <typename Visit>
void Highlighter::ForEachExpressionMatch(const HighlightingRule& rule, const QString& text, Visit visit)
{
    QRegularExpressionMatchIterator it = rule.pattern.globalMatch(text);
    while (it.hasNext())
    {
        const QRegularExpressionMatch match = it.next();
        // Empty matches (the number pattern yields one at every word boundary) change nothing.
        if (match.capturedLength(0) > 0)
            visit(int(match.capturedStart(0)), int(match.capturedLength(0)));
    }
}

QList<QPair<int, int>> Highlighter::RuleMatches(const HighlightingRule& rule, const QString& text,
                                                bool byExpression)
{
    QList<QPair<int, int>> matches;
    const auto append = [&matches](int start, int length) { matches.append({start, length}); };
    if (byExpression || rule.fastMatch == FastMatch::None || !IsPlainLine(text))
        ForEachExpressionMatch(rule, text, append);
    else
        ForEachFastMatch(rule, text, append);
    return matches;
}

Highlighter::MultiLineHighlightingRule Highlighter::MakeMultiLineRule(const QString& start,
                                                                      const QString& end,
                                                                      const QString& formatKey,
                                                                      int startLength)
{
    MultiLineHighlightingRule rule;
    rule.startPattern.setPattern(start);
    rule.endPattern.setPattern(end);
    rule.format = ColorSettings::GetCodeEditorFormatPtr(formatKey, false);
    rule.startLength = startLength;
    rule.startText = PlainText(start);
    rule.endsAtEol = end == EOL_PATTERN;
    if (!rule.endsAtEol)
        rule.endText = PlainText(end);
    return rule;
}

bool Highlighter::IsEscaped(const QString& text, int position)
{
    if (position <= 0 || position > text.size())
        return false;
    int count = 0;
    for (int i = position - 1; i >= 0 && text.at(i) == QLatin1Char('\\'); --i)
        ++count;
    return count % 2 == 1;
}

QString Highlighter::GetIndent(const QString& text)
{
    int length = 0;
    while (length < text.size() &&
           (text.at(length) == QLatin1Char(' ') || text.at(length) == QLatin1Char('\t')))
        ++length;
    return text.left(length);
}

int Highlighter::GetActiveRuleIndex(const QString& text, int& index) const
{
    StartMemo memo(int(multiLineRules.size()));
    return ActiveRule(multiLineRules, text, index, memo);
}

CodeEditorBlockData* Highlighter::CurrentBlockData() const
{
    return blockData ? blockData : dynamic_cast<CodeEditorBlockData*>(block.userData());
}

// The passes keep their order of priority (a later one overwrites an earlier one), but strings
// and comments are found first, on their own layer above the others, so that the others can be
// skipped on lines that lie wholly inside them, as in a long docstring or comment.
void Highlighter::highlightBlock(const QString& text)
{
    if (ownPass)
    {
        HighlightText(text);
        return;
    }
    block = currentBlock();
    HighlightText(text);
    block = QTextBlock();
}

void Highlighter::HighlightText(const QString& text)
{
    const int n = int(text.size());
    // A line too long to colour gets no layers: they would cost a pointer per character per key.
    const int layered = n > LONGEST_COLOURED_LINE ? 0 : n;
    baseLayer.resize(layered);
    spanLayer.resize(layered);
    std::fill(baseLayer.begin(), baseLayer.end(), nullptr);
    std::fill(spanLayer.begin(), spanLayer.end(), nullptr);
    plainLine = IsPlainLine(text);
    blockData = nullptr;
    ClearBlockData();
    blockData = CurrentBlockData();

    paintLayer = &spanLayer;
    UpdateMultiLine(text);
    if (n > LONGEST_COLOURED_LINE)
    {
        paintLayer = &baseLayer;
        blockData = nullptr;
        FlushFormats(0);
        return;
    }
    if (!SpansCoverLine(text))
    {
        paintLayer = &baseLayer;
        HighlightEarlyRules(text);
        HighlightBuiltins(text);
        HighlightKeywords(text);
        HighlightRules(text);
    }
    paintLayer = &spanLayer;
    HighlightHiddenCharacters(text);
    FlushFormats(n);
    paintLayer = &baseLayer;
    blockData = nullptr;
}

void Highlighter::ClearBlockData()
{
    SetCurrentBlockState(-1);
    CodeEditorBlockData* data = CurrentBlockData();
    if (data)
        data->Clear();
    else if (block.isValid())
        block.setUserData(new CodeEditorBlockData);
}

void Highlighter::ApplyRules(const QString& text, const QList<HighlightingRule>& list)
{
    for (const HighlightingRule& rule : list)
    {
        if (!rule.format || !CanMatch(rule, text))
            continue;
        const auto paint = [this, &rule](int start, int length) { Paint(start, length, rule.format); };
        if (plainLine && rule.fastMatch != FastMatch::None)
            ForEachFastMatch(rule, text, paint);
        else
            ForEachExpressionMatch(rule, text, paint);
    }
}

void Highlighter::Paint(int start, int count, const QTextCharFormat* format)
{
    // Bounded as QSyntaxHighlighter::setFormat bounds it.
    FormatLayer& layer = *paintLayer;
    const int n = int(layer.size());
    if (start < 0 || start >= n || count <= 0)
        return;
    const int end = qMin(n, start + count);
    for (int i = start; i < end; ++i)
        layer[i] = format;
}

// Calls visit(start, end, format) for each run of characters with one format that is not empty.
template <typename Visit> void Highlighter::ForEachFormatRun(int length, Visit visit) const
{
    int i = 0;
    while (i < length)
    {
        const QTextCharFormat* format = FormatAt(i);
        int end = i + 1;
        while (end < length && FormatAt(end) == format)
            ++end;
        if (format && !format->isEmpty())
            visit(i, end, format);
        i = end;
    }
}

void Highlighter::FlushFormats(int length)
{
    if (ownPass)
        SetLayoutFormats(length);
    else
        ForEachFormatRun(length, [this](int start, int end, const QTextCharFormat* format)
                         { setFormat(start, end - start, *format); });
}

// The ranges that QSyntaxHighlighter would set: equal formats side by side are one range, an empty
// format is none, and a range of the input method's text being composed stays, with the colours
// moved around it.
void Highlighter::SetLayoutFormats(int length)
{
    QTextLayout* layout = block.layout();
    if (!layout)
        return;
    // Qt shapes a line again for the cursor's place and for each paint unless the layout keeps
    // its glyphs; in a line of a megabyte that is most of a key's cost. Short lines do without.
    layout->setCacheEnabled(block.length() - 1 > LONGEST_COLOURED_LINE); // without the separator
    formatRanges.clear();
    const QTextCharFormat* previous = nullptr;
    ForEachFormatRun(length,
                     [&](int start, int end, const QTextCharFormat* format)
                     {
                         if (previous &&
                             formatRanges.constLast().start + formatRanges.constLast().length == start &&
                             (previous == format || *previous == *format))
                             formatRanges.last().length += end - start;
                         else
                             formatRanges.append({start, end - start, *format});
                         previous = format;
                     });
    const QList<QTextLayout::FormatRange> before = layout->formats();
    const int preeditLength = int(layout->preeditAreaText().size());
    if (preeditLength != 0)
        MoveAroundPreedit(before, layout->preeditAreaPosition(), preeditLength);
    if (formatRanges == before)
        return;
    layout->setFormats(formatRanges);
    dirtyFrom = dirtyFrom < 0 ? blockPosition : qMin(dirtyFrom, blockPosition);
    dirtyTo = qMax(dirtyTo, blockPosition + block.length());
}

void Highlighter::MoveAroundPreedit(const QList<QTextLayout::FormatRange>& before, int start, int length)
{
    QList<QTextLayout::FormatRange> ranges;
    for (const QTextLayout::FormatRange& range : before)
    {
        if (range.start >= start && range.start + range.length <= start + length)
            ranges.append(range);
    }
    for (QTextLayout::FormatRange range : std::as_const(formatRanges))
    {
        if (range.start >= start)
            range.start += length;
        else if (range.start + range.length >= start)
            range.length += length;
        ranges.append(range);
    }
    formatRanges = ranges;
}

// One stretch for the pass: the plain text layout then lays out again, when shown, the blocks in
// it, instead of laying out each recoloured block at once.
void Highlighter::FlushDirty()
{
    QTextDocument* doc = document();
    if (doc && dirtyFrom >= 0)
        doc->markContentsDirty(dirtyFrom, qMin(dirtyTo, doc->characterCount()) - dirtyFrom);
    dirtyFrom = dirtyTo = -1;
}

// True when strings and comments leave nothing but blanks: the passes before them would be
// overwritten everywhere, by the spans or by the blanks' own format.
bool Highlighter::SpansCoverLine(const QString& text) const
{
    const QChar* c = text.constData();
    for (int i = 0; i < text.size(); ++i)
    {
        if (!spanLayer[i] && !(sWhitespaceFormat && IsBlank(c[i].unicode())))
            return false;
    }
    return true;
}

void Highlighter::HighlightEarlyRules(const QString& text)
{
    ApplyRules(text, earlyRules);
}

void Highlighter::HighlightRules(const QString& text)
{
    ApplyRules(text, rules);
}

void Highlighter::HighlightKeywords(const QString&) {}

void Highlighter::HighlightBuiltins(const QString&) {}

void Highlighter::UpdateSmartIndentData(CodeEditorBlockData*, QStringView) {}

bool Highlighter::IsWordPlacementValid(const QString& text, int position, WordPlacement placement)
{
    switch (placement)
    {
    case WordPlacement::NotAfterDollarOrDash:
        return position == 0 ||
               (text.at(position - 1) != QLatin1Char('$') && text.at(position - 1) != QLatin1Char('-'));
    case WordPlacement::AfterDot:
        return position > 0 && text.at(position - 1) == QLatin1Char('.');
    case WordPlacement::Anywhere:
        break;
    }
    return true;
}

// A search of "\bword\b" for a word of word characters finds exactly the maximal runs of word
// characters equal to the word. So one walk over the runs of the line, with the hits in a hash,
// colours what a search per hit would, without building an expression per word.
void Highlighter::FormatWordHits(const QString& text, const WordHits& hits)
{
    if (hits.isEmpty())
        return;
    for (const WordHit& hit : hits)
    {
        if (!IsIdentifier(hit.word))
        {
            // A listed word with other characters: search each hit in order, as written.
            for (const WordHit& each : hits)
                FormatWordHitByExpression(text, each);
            return;
        }
    }
    // Most lines have a few hits, looked through in turn; a long line, with a hit for each
    // occurrence, gets a hash of them. A word found twice gives the same hit twice.
    QHash<QStringView, const WordHit*> byWord;
    if (hits.size() > 8)
    {
        for (const WordHit& hit : hits)
            byWord.insert(hit.word, &hit);
    }
    const auto find = [&](QStringView run) -> const WordHit*
    {
        if (!byWord.isEmpty())
            return byWord.value(run, nullptr);
        for (const WordHit& hit : hits)
        {
            if (hit.word.size() == run.size() && hit.word == run)
                return &hit;
        }
        return nullptr;
    };
    ForEachPart(text, IsWordChar,
                [&](int start, int length)
                {
                    const WordHit* hit = find(QStringView(text).mid(start, length));
                    if (hit && hit->format && IsWordPlacementValid(text, start, hit->placement))
                        Paint(start, length, hit->format);
                });
}

void Highlighter::FormatWordHitByExpression(const QString& text, const WordHit& hit)
{
    if (!hit.format)
        return;
    const QRegularExpression expression(QStringLiteral("\\b%1\\b").arg(hit.word),
                                        QRegularExpression::InvertedGreedinessOption);
    const int from = hit.placement == WordPlacement::AfterDot ? 1 : 0;
    QRegularExpressionMatchIterator it = expression.globalMatch(text, from);
    while (it.hasNext())
    {
        const int position = int(it.next().capturedStart(0));
        if (IsWordPlacementValid(text, position, hit.placement))
            Paint(position, int(hit.word.size()), hit.format);
    }
}

int Highlighter::FindEnd(const MultiLineHighlightingRule& rule, const QString& text, int from,
                         int& length) const
{
    length = 0;
    if (rule.endsAtEol)
        return from <= text.size() ? int(text.size()) : -1;
    if (!rule.endText.isEmpty())
    {
        length = int(rule.endText.size());
        if (length == 1)
            return int(text.indexOf(rule.endText.front(), from));
        return IndexOfText(text, rule.endText, from);
    }
    const QRegularExpressionMatch match = rule.endPattern.match(text, from);
    if (!match.hasMatch())
        return -1;
    length = int(match.capturedLength(0));
    return int(match.capturedStart(0));
}

void Highlighter::UpdateMultiLine(const QString& text)
{
    CodeEditorBlockData* data = CurrentBlockData();
    const int n = int(text.size());
    StartMemo memo(int(multiLineRules.size()));
    const MultiLineHighlightingRule* rule = nullptr;
    int activeIndex = -1;
    int startIndex = 0;
    int offset = 0;
    bool endsAtEol = false;

    // A state left by another language's highlighter, before the rehighlight reaches this
    // block, names no rule here.
    const int previous = PreviousBlockState();
    if (previous < 0 || previous >= multiLineRules.size())
    {
        activeIndex = ActiveRule(multiLineRules, text, startIndex, memo);
        if (activeIndex < 0)
        {
            UpdateBlockData(text, 0, -1, false);
        }
        else
        {
            rule = &multiLineRules.at(activeIndex);
            offset = rule->startLength;
            endsAtEol = rule->endsAtEol;
            UpdateBlockData(text, 0, startIndex > 0 ? startIndex - 1 : 0, endsAtEol);
            if (rule->blockComment && data)
                data->AppendBlockComment(startIndex, 1);
        }
    }
    else
    {
        activeIndex = previous;
        rule = &multiLineRules.at(activeIndex);
    }

    while (rule && startIndex >= 0)
    {
        int capturedLength = 0;
        const int endIndex = FindEnd(*rule, text, startIndex + offset, capturedLength);
        if (endIndex >= 0 && rule->escapable && IsEscaped(text, endIndex))
        {
            offset = endIndex - startIndex + 1;
            continue;
        }
        int length = 0;
        // A line comment leaves no code after it: the line's length without comment and its smart
        // indent stay as the stretch before the comment gave them.
        bool reachedLineEnd = false;
        if (endIndex >= 0)
        {
            length = endIndex - startIndex + capturedLength;
            if (rule->blockComment && data)
                data->AppendBlockComment(endIndex + capturedLength, -1);
            SetCurrentBlockState(-1);
            reachedLineEnd = rule->endsAtEol;
        }
        else if (rule->continuesWithBackslash && !text.endsWith(QLatin1Char('\\')))
        {
            SetCurrentBlockState(-1);
            endsAtEol = true;
            length = n - startIndex;
        }
        else
        {
            SetCurrentBlockState(activeIndex);
            length = n - startIndex;
        }
        if (rule->format)
            Paint(startIndex, length, rule->format);
        if (data)
        {
            const int last = startIndex + length - 1;
            data->AppendIgnorePosition(startIndex, last);
            // A string cut off at the line end counts as a line comment too, on purpose.
            if (rule->singleLineComment || endsAtEol)
                data->AppendSingleLineCommentPosition(startIndex, last);
            else if (rule->blockComment)
                data->AppendBlockCommentPosition(startIndex, last);
        }

        const int next = startIndex + length;
        int found = next;
        activeIndex = ActiveRule(multiLineRules, text, found, memo);
        if (activeIndex < 0)
        {
            if (!reachedLineEnd)
                UpdateBlockData(text, next, -1, false);
            startIndex = -1;
            rule = nullptr;
        }
        else
        {
            rule = &multiLineRules.at(activeIndex);
            offset = rule->startLength;
            endsAtEol = rule->endsAtEol;
            startIndex = found;
            UpdateBlockData(text, next, startIndex - 1, endsAtEol);
            if (rule->blockComment && data)
                data->AppendBlockComment(startIndex, 1);
        }
    }

    const int state = CurrentBlockState();
    if (data && (activeIndex >= 0 || state >= 0 || endsAtEol))
    {
        data->AppendIgnorePosition(n - 1, n);
        const int ruleIndex = activeIndex >= 0 ? activeIndex : state;
        const MultiLineHighlightingRule* open =
            ruleIndex >= 0 && ruleIndex < multiLineRules.size() ? &multiLineRules.at(ruleIndex) : nullptr;
        if (endsAtEol || (open && open->singleLineComment))
            data->AppendSingleLineCommentPosition(n - 1, n);
        else if (open && open->blockComment)
            data->AppendBlockCommentPosition(n - 1, n);
    }
    UpdateIndentData(text);
}

void Highlighter::UpdateBlockData(const QString& text, int start, int end, bool force)
{
    CodeEditorBlockData* data = CurrentBlockData();
    if (!data)
        return;
    UpdateBraceData(data, text, start, end);
    // A stretch of code followed by a string is not the line's tail.
    if (end >= 0 && !force)
        return;
    QStringView segment;
    if (end >= 0)
    {
        data->SetNonCommentLength(end + 1);
        // One character short of the stretch: the segment stops before the character in front of
        // the comment.
        segment = QStringView(text).mid(start, qMax(0, end - start));
    }
    else
    {
        data->SetNonCommentLength(int(text.size()));
        segment = QStringView(text).mid(start);
    }
    UpdateSmartIndentData(data, segment);
}

void Highlighter::UpdateBraceData(CodeEditorBlockData* data, const QString& text, int start, int end)
{
    const int last = end < 0 ? int(text.size()) - 1 : qMin(end, int(text.size()) - 1);
    const QChar* chars = text.constData();
    for (int i = qMax(0, start); i <= last; ++i)
    {
        switch (chars[i].unicode())
        {
        case u'(':
        case u')':
        case u'{':
        case u'}':
        case u'[':
        case u']':
            data->AppendBrace(chars[i], i);
            break;
        default:
            break;
        }
    }
}

void Highlighter::UpdateIndentData(const QString& text)
{
    CodeEditorBlockData* data = CurrentBlockData();
    if (!data)
        return;
    data->SetIndent(GetIndent(text));
    bool empty = true;
    for (const QChar c : text)
    {
        if (!c.isSpace())
        {
            empty = false;
            break;
        }
    }
    data->SetEmpty(empty);
}

void Highlighter::HighlightHiddenCharacters(const QString& text)
{
    if (!sWhitespaceFormat)
        return;
    // Runs of blanks at once: the same formats as one call per character.
    const auto isBlank = [](char16_t c) { return c == u' ' || c == u'\t'; };
    ForEachPart(text, isBlank, [this](int start, int length) { Paint(start, length, sWhitespaceFormat); });
}

void Highlighter::UsePreviousIndent()
{
    CodeEditorBlockData* data = CurrentBlockData();
    if (!data)
        return;
    const CodeEditorBlockData* previous =
        dynamic_cast<const CodeEditorBlockData*>(block.previous().userData());
    data->SetIndent(previous ? previous->GetIndent() : QString());
}
