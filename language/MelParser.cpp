#include "language/MelParser.h"

#include <QtCore/QRegularExpression>

namespace
{
bool ContainsTodo(QStringView text)
{
    static const QRegularExpression todo(QStringLiteral("\\bTODO\\b"));
    return text.contains(QLatin1String("TODO")) && todo.match(text.toString()).hasMatch();
}

// A match of pattern that starts exactly at the start of text; its length, or -1. The callers pass
// the rest of a line, never the whole script: a match on the whole script costs its whole length.
int MatchLengthAt(const QRegularExpression& pattern, const QString& text, QString* captured)
{
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch() || match.capturedStart() != 0)
        return -1;
    if (captured)
        *captured = match.captured();
    return static_cast<int>(match.capturedLength());
}
bool IsAsciiNameCharacter(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') || u == '_';
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
    static const QRegularExpression declaration(
        QStringLiteral("^global[\\s](string|int|float|matrix|vector){1}(\\[|\\])*[\\s]"));
    static const QRegularExpression variable(QStringLiteral("\\$[a-zA-Z0-9_]+"));
    if (!LineStartsWith(position, QLatin1String("global")))
        return false;
    const QRegularExpressionMatch match = declaration.match(GetLineFromScript(position));
    if (!match.hasMatch() || match.capturedStart() != 0)
        return false;
    const int offset = position + static_cast<int>(match.capturedLength());
    QString name;
    const int nameLength = MatchLengthAt(variable, GetLineFromScript(offset), &name);
    if (nameLength < 0)
        return false;
    AppendItem(name, ParserItemGlobalVariable, offset, braceDepth);
    position = offset + nameLength - 1;
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
    static const QRegularExpression globalProc(
        QStringLiteral("^global[\\s]+proc([\\s]|string|int|float|matrix|vector|\\[|\\])*[\\s]"));
    static const QRegularExpression localProc(
        QStringLiteral("^proc([\\s]|string|int|float|matrix|vector|\\[|\\])*[\\s]"));
    static const QRegularExpression procName(QStringLiteral("[a-zA-Z0-9_.]+"));

    if (!LineStartsWith(position, global ? QLatin1String("global") : QLatin1String("proc")))
        return false;
    const QRegularExpressionMatch match =
        (global ? globalProc : localProc).match(GetLineFromScript(position));
    if (!match.hasMatch() || match.capturedStart() != 0)
        return false;
    const int matchLength = static_cast<int>(match.capturedLength());
    if (global)
        procDepth = braceDepth;
    if (inProc && (global || braceDepth >= 1))
    {
        AppendError(QStringLiteral("Procedures cannot be nested within each other. Expected a '}'."),
                    position, position + matchLength);
        return true;
    }
    const int offset = position + matchLength;
    QString name;
    const int nameLength = MatchLengthAt(procName, GetLineFromScript(offset), &name);
    if (nameLength < 0)
        return false;
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
