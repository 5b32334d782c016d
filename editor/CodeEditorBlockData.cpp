#include "editor/CodeEditorBlockData.h"

namespace
{
bool RangesHold(const QList<CodeEditorBlockData::Range>& ranges, int position)
{
    for (const CodeEditorBlockData::Range& range : ranges)
    {
        if (position >= range.start && position <= range.end)
            return true;
    }
    return false;
}
} // namespace

void CodeEditorBlockData::Clear()
{
    parentheses.clear();
    curlyBraces.clear();
    squareBrackets.clear();
    blockComments.clear();
    ignorePositions.clear();
    singleLineCommentPositions.clear();
    blockCommentPositions.clear();
    indent.clear();
    smartIndentCount = 0;
}

QList<CodeEditorBlockData::Entry>* CodeEditorBlockData::BraceList(QChar c)
{
    switch (c.unicode())
    {
    case '(':
    case ')':
        return &parentheses;
    case '{':
    case '}':
        return &curlyBraces;
    case '[':
    case ']':
        return &squareBrackets;
    default:
        return nullptr;
    }
}

void CodeEditorBlockData::AppendBrace(QChar c, int position)
{
    QList<Entry>* list = BraceList(c);
    if (!list)
        return;
    const bool opening = c == QLatin1Char('(') || c == QLatin1Char('{') || c == QLatin1Char('[');
    list->append({position, opening ? 1 : -1});
}

QList<CodeEditorBlockData::Entry> CodeEditorBlockData::GetBraces(QChar c) const
{
    QList<Entry>* list = const_cast<CodeEditorBlockData*>(this)->BraceList(c);
    return list ? *list : QList<Entry>();
}

void CodeEditorBlockData::AppendBlockComment(int position, int delta)
{
    blockComments.append({position, delta});
}

void CodeEditorBlockData::AppendIgnorePosition(int start, int end)
{
    ignorePositions.append({start, end});
}

void CodeEditorBlockData::AppendSingleLineCommentPosition(int start, int end)
{
    singleLineCommentPositions.append({start, end});
}

void CodeEditorBlockData::AppendBlockCommentPosition(int start, int end)
{
    blockCommentPositions.append({start, end});
}

bool CodeEditorBlockData::IsIgnoredPosition(int position) const
{
    return RangesHold(ignorePositions, position);
}

bool CodeEditorBlockData::IsBlockCommentPosition(int position) const
{
    return RangesHold(blockCommentPositions, position);
}

bool CodeEditorBlockData::IsSingleLineCommentPosition(int position) const
{
    return RangesHold(singleLineCommentPositions, position);
}

int CodeEditorBlockData::OpenBlockCommentPosition(int position) const
{
    for (int i = blockComments.size() - 1; i >= 0; --i)
    {
        const Entry& entry = blockComments.at(i);
        if (entry.delta == 1 && (position < 0 || entry.position <= position))
            return entry.position;
    }
    return -1;
}

int CodeEditorBlockData::CloseBlockCommentPosition(int position) const
{
    for (const Entry& entry : blockComments)
    {
        if (entry.delta == -1 && entry.position > position)
            return entry.position;
    }
    return -1;
}

// The running sum is deliberately not reset between the three lists: a surplus of closing
// parentheses counts against the curly braces that follow.
bool CodeEditorBlockData::FindLastBrace(int position, bool opening, QChar& c, int& bracePosition) const
{
    const QList<Entry>* lists[] = {&parentheses, &curlyBraces, &squareBrackets};
    const QChar openChars[] = {QLatin1Char('('), QLatin1Char('{'), QLatin1Char('[')};
    const QChar closeChars[] = {QLatin1Char(')'), QLatin1Char('}'), QLatin1Char(']')};
    bracePosition = -1;
    int sum = 0;
    for (int l = 0; l < 3; ++l)
    {
        const QList<Entry>& list = *lists[l];
        for (int i = list.size() - 1; i >= 0; --i)
        {
            const Entry& entry = list.at(i);
            if (entry.position > position)
                continue;
            sum += entry.delta;
            if (opening ? sum > 0 : sum < 0)
            {
                if (entry.position > bracePosition)
                {
                    bracePosition = entry.position;
                    c = opening ? openChars[l] : closeChars[l];
                }
                break;
            }
        }
    }
    return bracePosition >= 0;
}

bool CodeEditorBlockData::GetLastOpenBrace(int position, QChar& c, int& bracePosition) const
{
    return FindLastBrace(position, true, c, bracePosition);
}

bool CodeEditorBlockData::GetLastClosingBrace(int position, QChar& c, int& bracePosition) const
{
    return FindLastBrace(position, false, c, bracePosition);
}
