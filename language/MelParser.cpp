#include "language/MelParser.h"

namespace
{
// The blanks of the declaration rules: space, tab, and the other ASCII line and page breaks.
bool IsBlank(QChar c)
{
    const char16_t u = c.unicode();
    return u == ' ' || (u >= '\t' && u <= '\r');
}

// The length of the MEL type name that starts at index of text, or 0. A type may end inside a
// longer word ("integer" starts with "int"); the caller's next test decides.
qsizetype TypeNameLength(QStringView text, qsizetype index)
{
    static constexpr QLatin1String types[] = {QLatin1String("string"), QLatin1String("int"),
                                              QLatin1String("float"), QLatin1String("matrix"),
                                              QLatin1String("vector")};
    const QStringView rest = text.sliced(index);
    for (const QLatin1String type : types)
    {
        if (rest.startsWith(type))
            return type.size();
    }
    return 0;
}

// "global", one blank, a type, any brackets and one blank: the length of that head of line, or -1.
qsizetype GlobalVariableHeadLength(QStringView line)
{
    static constexpr QLatin1String global("global");
    if (!line.startsWith(global) || line.size() <= global.size() || !IsBlank(line.at(global.size())))
        return -1;
    qsizetype index = global.size() + 1;
    const qsizetype type = TypeNameLength(line, index);
    if (type == 0)
        return -1;
    index += type;
    while (index < line.size() && (line.at(index) == QLatin1Char('[') || line.at(index) == QLatin1Char(']')))
        ++index;
    return index < line.size() && IsBlank(line.at(index)) ? index + 1 : -1;
}

// "proc" (after "global" and blanks when global), then blanks, types and brackets in any order: the
// length of that head of line up to and with its last blank, or -1 when no blank follows "proc".
qsizetype ProcHeadLength(QStringView line, bool global)
{
    static constexpr QLatin1String proc("proc");
    qsizetype index = 0;
    if (global)
    {
        static constexpr QLatin1String globalWord("global");
        if (!line.startsWith(globalWord))
            return -1;
        index = globalWord.size();
        const qsizetype blanks = index;
        while (index < line.size() && IsBlank(line.at(index)))
            ++index;
        if (index == blanks)
            return -1;
    }
    if (!line.sliced(index).startsWith(proc))
        return -1;
    index += proc.size();
    qsizetype head = -1;
    while (index < line.size())
    {
        const QChar c = line.at(index);
        if (IsBlank(c))
            head = ++index;
        else if (c == QLatin1Char('[') || c == QLatin1Char(']'))
            ++index;
        else if (const qsizetype type = TypeNameLength(line, index))
            index += type;
        else
            break;
    }
    return head;
}

// Where the run of characters that accept takes, from index from of text, ends; -1 when the run is
// empty.
template <typename Accept> qsizetype RunEnd(QStringView text, qsizetype from, Accept accept)
{
    qsizetype index = from;
    while (index < text.size() && accept(text.at(index)))
        ++index;
    return index > from ? index : -1;
}

bool IsProcNameCharacter(QChar c)
{
    return BaseParser::IsAsciiNameCharacter(c) || c == QLatin1Char('.');
}

// A variable name with its dollar sign at the start of text: its length, or -1.
qsizetype VariableLength(QStringView text)
{
    if (text.isEmpty() || text.at(0) != QLatin1Char('$'))
        return -1;
    return RunEnd(text, 1, BaseParser::IsAsciiNameCharacter);
}
} // namespace

void MelParser::ClearAll()
{
    BaseParser::ClearAll();
    inProc = false;
    procDepth = 0;
}

void MelParser::AppendError(const QString&, int, int)
{
    // MEL's own interpreter reports its syntax errors; the live scan keeps its error paths only to
    // find its way through the text.
}

void MelParser::Parse(const QString& source, const QString& path)
{
    BaseParser::Parse(source, path);
    NoEmptyLinesAtStartCheck();
    const int length = static_cast<int>(script.size());
    for (position = 0; position < length; ++position)
    {
        const QChar c = script.at(position);
        const bool afterSpace = position == 0 || script.at(position - 1).isSpace();
        switch (c.unicode())
        {
        case ';':
            if (parenthesesDepth > 0)
                ParenthesesError(QLatin1Char(')'), position, position + 1);
            else if (bracketDepth > 0)
                ParenthesesError(QLatin1Char(']'), position, position + 1);
            break;
        case '{':
            ++braceDepth;
            break;
        case '}':
            if (braceDepth < 1)
            {
                UnexpectedParenthesesError(c, position, position + 1);
                break;
            }
            --braceDepth;
            if (braceDepth == procDepth)
                inProc = false;
            break;
        case '[':
            ++bracketDepth;
            break;
        case ']':
            if (bracketDepth < 1)
                UnexpectedParenthesesError(c, position, position + 1);
            else
                --bracketDepth;
            break;
        case '(':
            ++parenthesesDepth;
            break;
        case ')':
            if (parenthesesDepth < 1)
                UnexpectedParenthesesError(c, position, position + 1);
            else
                --parenthesesDepth;
            break;
        case '"':
            ParseString(position);
            break;
        case '/':
            if (position < length - 1)
            {
                const QChar next = script.at(position + 1);
                if (next == QLatin1Char('/'))
                {
                    ++position;
                    ParseSingleLineComment();
                }
                else if (next == QLatin1Char('*'))
                {
                    ++position;
                    ParseMultiLineComment();
                }
            }
            break;
        case 'g':
            if (afterSpace && !ParseGlobalProc())
                ParseGlobalVariable();
            break;
        case 'p':
            if (afterSpace)
                ParseProc();
            break;
        default:
            break;
        }
    }
    if (braceDepth >= 1)
        ParenthesesError(QLatin1Char('}'), length - 1, length - 1);
}

void MelParser::NoEmptyLinesAtStartCheck()
{
    const int newline = static_cast<int>(script.indexOf(QLatin1Char('\n')));
    const int firstNonBlank = NextNonSpace(0);
    if (newline >= 0 && firstNonBlank >= 0 && newline < firstNonBlank)
        AppendWarning(
            QStringLiteral("Empty line(s) at start of file. Line numbers in trace may be incorrect."), 0, 0);
}

void MelParser::AppendTodoInfo(int start, int end)
{
    const int stop = end < 0 ? static_cast<int>(script.size()) : end;
    if (ContainsTodo(QStringView(script).mid(start, stop - start)))
        AppendInfo(QStringLiteral("TODO:"), start, end);
}

void MelParser::ParseSingleLineComment()
{
    const int newline = static_cast<int>(script.indexOf(QLatin1Char('\n'), position + 1));
    AppendTodoInfo(position, newline);
    position = newline >= 0 ? newline : static_cast<int>(script.size()) - 1;
}

void MelParser::ParseMultiLineComment()
{
    const int close = static_cast<int>(script.indexOf(QLatin1String("*/"), position + 1));
    AppendTodoInfo(position, close);
    position = close >= 0 ? close + 1 : static_cast<int>(script.size()) - 1;
}

bool MelParser::ParseString(int start)
{
    return ParseQuotedString(QLatin1Char('"'), start);
}

bool MelParser::ParseGlobalVariable()
{
    if (!LineStartsWith(position, QLatin1String("global")))
        return false;
    const qsizetype head = GlobalVariableHeadLength(LineViewFromScript(position));
    if (head < 0)
        return false;
    const int offset = position + static_cast<int>(head);
    const QStringView line = LineViewFromScript(offset);
    const qsizetype nameLength = VariableLength(line);
    if (nameLength < 0)
        return false;
    AppendItem(line.first(nameLength).toString(), ParserItemGlobalVariable, offset, braceDepth);
    position = offset + static_cast<int>(nameLength) - 1;
    return true;
}

bool MelParser::ParseGlobalProc()
{
    return ParseProcDeclaration(true);
}

bool MelParser::ParseProc()
{
    return ParseProcDeclaration(false);
}

bool MelParser::ParseProcDeclaration(bool global)
{
    if (!LineStartsWith(position, global ? QLatin1String("global") : QLatin1String("proc")))
        return false;
    const qsizetype head = ProcHeadLength(LineViewFromScript(position), global);
    if (head < 0)
        return false;
    const int matchLength = static_cast<int>(head);
    if (global)
        procDepth = braceDepth;
    if (inProc && (global || braceDepth >= 1))
    {
        AppendError(QStringLiteral("Procedures cannot be nested within each other. Expected a '}'."),
                    position, position + matchLength);
        return true;
    }
    const int offset = position + matchLength;
    const QStringView line = LineViewFromScript(offset);
    const int nameLength = static_cast<int>(RunEnd(line, 0, IsProcNameCharacter));
    if (nameLength < 0)
        return false;
    const QString name = line.first(nameLength).toString();
    if (name.endsWith(QLatin1Char('.')) || name.contains(QLatin1String("..")))
    {
        AppendError(QStringLiteral("Invalid procedure name"), position, offset + nameLength);
        return true;
    }
    AppendItem(name, global ? ParserItemGlobalProc : ParserItemProc, offset, global ? braceDepth : 0);
    position = offset + nameLength;
    ParseProcStructure(offset);
    return true;
}

void MelParser::ParseProcStructure(int start)
{
    const int last = static_cast<int>(script.size()) - 1;

    const int open = NextNonSpace(position);
    if (open < 0)
    {
        ParenthesesError(QLatin1Char('('), start, position);
        position = last;
        return;
    }
    if (script.at(open) != QLatin1Char('('))
    {
        ParenthesesError(QLatin1Char('('), start, position);
        position = open;
        return;
    }
    position = open;
    const int close = static_cast<int>(script.indexOf(QLatin1Char(')'), open + 1));
    // Only names, commas, dollar signs, blanks, '*' and '/' may stand in a parameter list.
    bool bad = false;
    for (int i = open + 1; close >= 0 && i < close && !bad; ++i)
    {
        const QChar c = script.at(i);
        bad = !(IsAsciiNameCharacter(c) || c.isSpace() || c == QLatin1Char(',') || c == QLatin1Char('$') ||
                c == QLatin1Char('*') || c == QLatin1Char('/'));
    }
    if (close < 0 || bad)
    {
        ParenthesesError(QLatin1Char(')'), start, position);
        return;
    }
    position = close + 1;
    const int body = NextNonSpace(position);
    if (body < 0)
    {
        ParenthesesError(QLatin1Char('{'), start, position);
        position = last;
        return;
    }
    if (script.at(body) == QLatin1Char('{'))
        inProc = true;
    else
        ParenthesesError(QLatin1Char('{'), start, position);
    // The main loop goes on at that character, and counts the brace.
    position = body - 1;
}
