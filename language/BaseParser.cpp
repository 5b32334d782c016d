#include "language/BaseParser.h"

void BaseParser::ClearAll()
{
    items.clear();
    errors.clear();
    warnings.clear();
    infos.clear();
    parenthesesDepth = 0;
    braceDepth = 0;
    bracketDepth = 0;
    bracketErrorReported = false;
}

void BaseParser::Parse(const QString& source, const QString& path)
{
    ClearAll();
    // A QTextDocument hands out its paragraphs separated by U+2029; every line must end in a
    // newline, the last one too, so that the line rules need no end-of-text case.
    script = source;
    script.replace(QChar(QChar::ParagraphSeparator), QLatin1Char('\n'));
    script.append(QLatin1Char('\n'));
    position = 0;
    filePath = path;
}

void BaseParser::AppendItem(const QString& name, ParserItemType type, int itemPosition, int level)
{
    ParserItem item;
    item.name = name;
    item.type = type;
    item.position = itemPosition;
    item.level = level;
    items.append(item);
}

ParserMessage BaseParser::Message(const QString& text, int start, int end)
{
    ParserMessage message;
    message.text = text;
    message.start = start;
    message.end = end;
    return message;
}

void BaseParser::AppendError(const QString& text, int start, int end)
{
    errors.append(Message(text, start, end));
}

void BaseParser::AppendWarning(const QString& text, int start, int end)
{
    warnings.append(Message(text, start, end));
}

void BaseParser::AppendInfo(const QString& text, int start, int end)
{
    infos.append(Message(text, start, end));
}

void BaseParser::ParenthesesError(QChar expected, int start, int end)
{
    if (bracketErrorReported)
        return;
    AppendError(QStringLiteral("Expected a '%1'").arg(expected), start, end);
    bracketErrorReported = true;
}

void BaseParser::UnexpectedParenthesesError(QChar found, int start, int end)
{
    if (bracketErrorReported)
        return;
    AppendError(QStringLiteral("Unexpected '%1'").arg(found), start, end);
    bracketErrorReported = true;
}

QString BaseParser::GetLineFromScript(int offset) const
{
    const int newline = script.indexOf(QLatin1Char('\n'), offset);
    if (newline < 0)
        return script.mid(offset);
    return script.mid(offset, newline - offset);
}

bool BaseParser::LineStartsWith(int offset, QLatin1String word) const
{
    return QStringView(script).mid(offset).startsWith(word);
}

int BaseParser::NextNonSpace(int from) const
{
    const int length = static_cast<int>(script.size());
    for (int i = qMax(0, from); i < length; ++i)
    {
        if (!script.at(i).isSpace())
            return i;
    }
    return -1;
}

int BaseParser::CountBackslashesBefore(int index, int stop) const
{
    int count = 0;
    for (int i = index - 1; i > stop && script.at(i) == QLatin1Char('\\'); --i)
        ++count;
    return count;
}
