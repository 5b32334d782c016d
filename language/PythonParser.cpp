#include "language/PythonParser.h"

#include <QtCore/QRegularExpression>

namespace
{
int IndentWidth(const QString& indent)
{
    int width = 0;
    for (const QChar c : indent)
        width += c == QLatin1Char('\t') ? 8 : 1;
    return width;
}

// The length of the match of pattern on line when it starts at 0, else -1.
int MatchLengthAtLineStart(const QRegularExpression& pattern, const QString& line)
{
    const QRegularExpressionMatch match = pattern.match(line);
    if (!match.hasMatch() || match.capturedStart() != 0)
        return -1;
    return static_cast<int>(match.capturedLength());
}

QStringList TrimmedParts(const QString& list)
{
    QStringList parts = list.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (QString& part : parts)
        part = part.trimmed();
    return parts;
}
} // namespace

void PythonParser::ClearAll()
{
    BaseParser::ClearAll();
    decorators.clear();
    indentErrorReported = false;
    mixedIndentReported = false;
    ResetIndentStack();
}

void PythonParser::ResetIndentStack()
{
    indentStack = QStringList(QString());
    expectIndent = false;
}

int PythonParser::GetIndentLevel() const
{
    return indentStack.isEmpty() ? 0 : static_cast<int>(indentStack.size()) - 1;
}

void PythonParser::Parse(const QString& source, const QString& path)
{
    BaseParser::Parse(source, path);
    firstTokenLength = -2;
    Newline(true);
    position = 0;
    while (position < script.size())
    {
        const QChar c = script.at(position);
        if (c == QLatin1Char('\n'))
        {
            Newline(false);
        }
        else if (!atLineStart)
        {
            ParseCharacter(c);
        }
        else if (c == QLatin1Char(' ') || c == QLatin1Char('\t'))
        {
            currentIndent.append(c);
        }
        else if (!ParseLineStart(c))
        {
            ParseCharacter(c);
        }
        ++position;
    }
}

// The first character of a logical line that is not indent. Returns true when the character is
// used up; false when it is to be scanned as any other.
bool PythonParser::ParseLineStart(QChar c)
{
    // Comment lines and lines that begin with other white space leave the indent stack alone.
    if (c != QLatin1Char('#') && !c.isSpace())
        ValidateIndent();
    switch (c.unicode())
    {
    case 'i':
        if (!ParseImport())
            ParseMain();
        // The rest of such a line is scanned from here on, but the letter itself starts no string
        // or comment.
        atLineStart = false;
        decorators.clear();
        return true;
    case 'f':
        ParseFromImport();
        atLineStart = false;
        decorators.clear();
        return true;
    case 'c':
    case 'd':
        if (c == QLatin1Char('c') ? ParseClass() : ParseMethod())
        {
            decorators.clear();
            atLineStart = false;
            return true;
        }
        break;
    case '@':
        // The decorators stay for the def or class below.
        if (ParseDecorator())
            return true;
        break;
    default:
        break;
    }
    atLineStart = false;
    decorators.clear();
    return false;
}

void PythonParser::ParseCharacter(QChar c)
{
    switch (c.unicode())
    {
    case ':':
        ParseNewIndent();
        break;
    case '{':
        ++braceDepth;
        break;
    case '[':
        ++bracketDepth;
        break;
    case '(':
        ++parenthesesDepth;
        break;
    case '}':
    case ']':
    case ')':
    {
        int& depth =
            c == QLatin1Char('}') ? braceDepth : (c == QLatin1Char(']') ? bracketDepth : parenthesesDepth);
        if (depth < 1)
            UnexpectedParenthesesError(c, position, position + 1);
        else
            --depth;
        break;
    }
    case '"':
    case '\'':
        ParseString(c, position, true);
        break;
    case '#':
        ParseComment();
        break;
    default:
        break;
    }
}

int PythonParser::FirstTokenLength()
{
    if (firstTokenLength == -2)
    {
        firstTokenLength = 0;
        const int first = NextNonSpace(0);
        if (first >= 0)
        {
            int end = first;
            while (end < script.size() && !script.at(end).isSpace())
                ++end;
            firstTokenLength = end - first;
        }
    }
    return firstTokenLength;
}

// Inside brackets a line end does not end the statement, unless the next line looks like the start
// of a new definition or import: then the bracket was left open. The next word is cut to the length
// of the script's first word, so the test succeeds only where the two lengths agree.
bool PythonParser::StatementGoesOn()
{
    const int next = NextNonSpace(position);
    if (next < 0)
        return false;
    const QStringView word = QStringView(script).mid(next, FirstTokenLength());
    if (word != QLatin1String("class") && word != QLatin1String("def") && word != QLatin1String("import") &&
        word != QLatin1String("from"))
        return true;
    if (braceDepth > 0)
        ParenthesesError(QLatin1Char('}'), position, position);
    else if (parenthesesDepth < 1)
        ParenthesesError(QLatin1Char(']'), position, position);
    else
        ParenthesesError(QLatin1Char(')'), position, position);
    parenthesesDepth = 0;
    braceDepth = 0;
    bracketDepth = 0;
    return false;
}

void PythonParser::Newline(bool initial)
{
    if ((parenthesesDepth >= 1 || braceDepth >= 1 || bracketDepth >= 1) && StatementGoesOn())
        return;
    atLineStart = true;
    lineStart = initial ? 0 : position + 1;
    // Kept allocated: the next line's indent is written into the same buffer.
    currentIndent.truncate(0);
}

void PythonParser::ParseNewIndent()
{
    if (parenthesesDepth >= 1 || braceDepth >= 1 || bracketDepth >= 1)
        return;
    const int newline = static_cast<int>(script.indexOf(QLatin1Char('\n'), position + 1));
    int nonBlank = position + 1;
    while (nonBlank < script.size() &&
           (script.at(nonBlank) == QLatin1Char(' ') || script.at(nonBlank) == QLatin1Char('\t')))
        ++nonBlank;
    if (nonBlank >= script.size())
        nonBlank = -1;
    // Only a colon that ends its line, before blanks or a comment, opens a block.
    if ((nonBlank >= 0 && script.at(nonBlank) == QLatin1Char('#') && newline >= 0) ||
        (newline >= 0 && newline == nonBlank))
    {
        expectIndent = true;
        position = newline;
        Newline(false);
    }
}

void PythonParser::ValidateIndent()
{
    if (!indentStack.isEmpty())
    {
        const int current = IndentWidth(currentIndent);
        const int top = IndentWidth(indentStack.constLast());
        if (expectIndent)
        {
            expectIndent = false;
            if (current > top)
            {
                indentStack.append(currentIndent);
            }
            else if (!indentErrorReported)
            {
                AppendError(QStringLiteral("Expected an indented block"), lineStart, position);
                indentErrorReported = true;
            }
        }
        else if (current > top)
        {
            if (!indentErrorReported)
            {
                AppendError(QStringLiteral("Unexpected indent"), lineStart, position);
                indentErrorReported = true;
            }
        }
        else
        {
            // The characters must agree, not only the widths.
            while (!indentStack.isEmpty() && indentStack.constLast() != currentIndent)
                indentStack.removeLast();
            if (indentStack.isEmpty())
            {
                if (!indentErrorReported)
                    AppendError(QStringLiteral("Unindent does not match any outer indentation level"),
                                lineStart, position);
                indentErrorReported = true;
                mixedIndentReported = true;
                indentStack.append(QString());
            }
        }
    }
    if (!mixedIndentReported && currentIndent.contains(QLatin1Char('\t')) &&
        currentIndent.contains(QLatin1Char(' ')))
    {
        AppendWarning(QStringLiteral("Indent contains both tabs and spaces"), lineStart, position);
        mixedIndentReported = true;
    }
    atLineStart = false;
}

void PythonParser::ParseComment()
{
    const int newline = static_cast<int>(script.indexOf(QLatin1Char('\n'), position + 1));
    if (newline >= 0)
    {
        if (ContainsTodo(QStringView(script).mid(position, newline - position)))
            AppendInfo(QStringLiteral("TODO:"), position, newline);
        position = newline;
        Newline(false);
        return;
    }
    if (ContainsTodo(QStringView(script).mid(position)))
        AppendInfo(QStringLiteral("TODO:"), position, -1);
    position = static_cast<int>(script.size()) - 1;
}

void PythonParser::ParseString(QChar quote, int start, bool checkDocString)
{
    if (checkDocString && position + 2 < script.size() && script.at(position + 1) == quote &&
        script.at(position + 2) == quote)
    {
        ParseDocString(QString(3, quote));
        return;
    }
    ParseQuotedString(quote, start);
}

void PythonParser::ParseDocString(const QString& closing)
{
    int from = position + 3;
    int found = -1;
    for (;;)
    {
        found = static_cast<int>(script.indexOf(closing, from));
        if (found > 0 && script.at(found - 1) == QLatin1Char('\\'))
        {
            from = found + 1;
            continue;
        }
        break;
    }
    if (found >= 0)
    {
        if (ContainsTodo(QStringView(script).mid(position, found - position)))
            AppendInfo(QStringLiteral("TODO:"), position, found);
        position = found + 2;
        return;
    }
    if (ContainsTodo(QStringView(script).mid(position)))
        AppendInfo(QStringLiteral("TODO:"), position, -1);
    position = static_cast<int>(script.size()) - 1;
}

void PythonParser::ParseMain()
{
    static const QRegularExpression doubleQuoted(
        QStringLiteral("^if[ \\t]+__name__[ \\t]+==[ \\t]+[\"]{1}__main__[\"]{1}"));
    static const QRegularExpression singleQuoted(
        QStringLiteral("^if[ \\t]+__name__[ \\t]+==[ \\t]+[']{1}__main__[']{1}"));
    if (!LineStartsWith(position, QLatin1String("if")))
        return;
    const QString line = GetLineFromScript(position);
    int length = MatchLengthAtLineStart(doubleQuoted, line);
    if (length < 0)
        length = MatchLengthAtLineStart(singleQuoted, line);
    if (length < 0)
        return;
    if (currentIndent.isEmpty())
        ResetIndentStack();
    AppendItem(QStringLiteral("__main__"), ParserItemMain, position + length - 9, GetIndentLevel());
    // Onto the closing quote, so that it is not taken for the start of a string.
    position += length - 1;
}

bool PythonParser::ParseClass()
{
    static const QRegularExpression keyword(QStringLiteral("^class[\\s]+"));
    if (!LineStartsWith(position, QLatin1String("class")))
        return false;
    return ParseDefinition(keyword, ParserItemClass);
}

bool PythonParser::ParseMethod()
{
    static const QRegularExpression keyword(QStringLiteral("^def[ \\t]+"));
    if (!LineStartsWith(position, QLatin1String("def")))
        return false;
    return ParseDefinition(keyword, MethodType());
}

bool PythonParser::ParseDefinition(const QRegularExpression& keyword, ParserItemType type)
{
    const int length = MatchLengthAtLineStart(keyword, GetLineFromScript(position));
    if (length < 0)
        return false;
    const int offset = position + length;
    int end = offset;
    while (end < script.size() && IsAsciiNameCharacter(script.at(end)))
        ++end;
    if (end == offset)
        return false;
    // A definition at the left margin starts afresh, so that an earlier indentation fault does not
    // cascade through the rest of the text.
    if (currentIndent.isEmpty())
        ResetIndentStack();
    AppendItem(script.mid(offset, end - offset), type, offset, GetIndentLevel());
    position = end - 1;
    return true;
}

ParserItemType PythonParser::MethodType() const
{
    const int staticIndex = static_cast<int>(decorators.indexOf(QStringLiteral("staticmethod")));
    const int classIndex = static_cast<int>(decorators.indexOf(QStringLiteral("classmethod")));
    if (staticIndex >= 0 && classIndex >= 0)
        return classIndex < staticIndex ? ParserItemStaticMethod : ParserItemClassMethod;
    if (staticIndex >= 0)
        return ParserItemStaticMethod;
    if (classIndex >= 0)
        return ParserItemClassMethod;
    return ParserItemMethod;
}

bool PythonParser::ParseDecorator()
{
    const int newline = static_cast<int>(script.indexOf(QLatin1Char('\n'), position + 1));
    if (newline < 0)
    {
        position = static_cast<int>(script.size()) - 1;
        return false;
    }
    decorators.append(script.mid(position + 1, newline - position - 1));
    position = newline;
    Newline(false);
    return true;
}

void PythonParser::CutAtComment(QString& list) const
{
    const int hash = static_cast<int>(list.indexOf(QLatin1Char('#')));
    if (hash >= 0)
        list.truncate(hash);
}

bool PythonParser::ParseImport()
{
    static const QRegularExpression importAs(
        QStringLiteral("^import[ \\t]+[a-zA-Z0-9_\\.]+[ \\t]+as[ \\t]+"));
    static const QRegularExpression plainImport(QStringLiteral("^import[ \\t]+"));
    static const QRegularExpression notInName(QStringLiteral("[^a-zA-Z0-9_\\.]+"));
    if (!LineStartsWith(position, QLatin1String("import")))
        return false;
    const QString line = GetLineFromScript(position);
    const int asLength = MatchLengthAtLineStart(importAs, line);
    if (asLength >= 0)
        return ParseImportAs(line, asLength);
    const int length = MatchLengthAtLineStart(plainImport, line);
    if (length < 0)
        return false;
    const int listStart = position + length;
    QString list = line.mid(length);
    position += static_cast<int>(line.size()) - 1;
    CutAtComment(list);
    const QStringList parts = TrimmedParts(list);
    for (const QString& part : parts)
    {
        if (notInName.match(part).hasMatch())
            return false;
    }
    for (const QString& part : parts)
        AppendItem(part, ParserItemImport, listStart + static_cast<int>(list.indexOf(part)),
                   GetIndentLevel());
    return true;
}

bool PythonParser::ParseImportAs(const QString& line, int matchLength)
{
    static const QRegularExpression name(QStringLiteral("[a-zA-Z0-9_\\.]+"));
    static const QRegularExpression notInName(QStringLiteral("[^a-zA-Z0-9_\\.]+"));
    const int lineOffset = position;
    const QString module = name.match(line.mid(6)).captured();
    QString rest = line.mid(matchLength);
    CutAtComment(rest);
    const QString alias = rest.trimmed();
    position += static_cast<int>(line.size()) - 1;
    if (notInName.match(alias).hasMatch())
        return false;
    AppendItem(QStringLiteral("%1 = %2").arg(alias, module), ParserItemImportAs,
               lineOffset + matchLength + static_cast<int>(rest.indexOf(alias)), GetIndentLevel());
    return true;
}

bool PythonParser::ParseFromImport()
{
    static const QRegularExpression fromImport(
        QStringLiteral("^from[ \\t]+[a-zA-Z0-9_\\.]+[ \\t]+import[ \\t]+"));
    static const QRegularExpression name(QStringLiteral("[a-zA-Z0-9_\\.]+"));
    static const QRegularExpression notInList(QStringLiteral("[^a-zA-Z0-9_\\. ]+"));
    static const QRegularExpression blank(QStringLiteral("\\s"));
    if (!LineStartsWith(position, QLatin1String("from")))
        return false;
    const QString line = GetLineFromScript(position);
    const int length = MatchLengthAtLineStart(fromImport, line);
    if (length < 0)
        return false;
    const QString module = name.match(line.mid(4)).captured();
    const int listStart = position + length;
    QString list = line.mid(length);
    position += static_cast<int>(line.size()) - 1;
    CutAtComment(list);
    const QStringList parts = TrimmedParts(list);
    // A single name is taken as it stands, brackets and all.
    if (parts.size() >= 2)
    {
        for (const QString& part : parts)
        {
            if (part != QLatin1String("*") && notInList.match(part).hasMatch())
                return false;
        }
    }
    for (const QString& part : parts)
    {
        int offset = listStart + static_cast<int>(list.indexOf(part));
        QString shown = part;
        const QStringList pieces = part.split(blank, Qt::SkipEmptyParts);
        if (pieces.size() == 3 && pieces.at(1) == QLatin1String("as"))
        {
            shown = QStringLiteral("%1 = %2").arg(pieces.at(2), pieces.at(0));
            offset += static_cast<int>(part.size() - pieces.at(2).size());
        }
        AppendItem(QStringLiteral("%1 (%2)").arg(shown, module), ParserItemFromImport, offset,
                   GetIndentLevel());
    }
    return true;
}
