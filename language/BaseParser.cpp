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
    // The copy goes into the buffer of the last run: a fresh allocation of a large text costs its
    // page faults on every keystroke.
    const qsizetype length = source.size();
    script.reserve(length + 1);
    script.resize(length);
    const QChar* in = source.constData();
    QChar* out = script.data();
    for (qsizetype i = 0; i < length; ++i)
        out[i] = in[i] == QChar(QChar::ParagraphSeparator) ? QChar(QLatin1Char('\n')) : in[i];
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

QStringView BaseParser::LineViewFromScript(int offset) const
{
    const QStringView rest = QStringView(script).sliced(offset);
    const qsizetype newline = rest.indexOf(QLatin1Char('\n'));
    return newline < 0 ? rest : rest.first(newline);
}

bool BaseParser::IsAsciiNameCharacter(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') || u == '_';
}

bool BaseParser::ContainsTodo(QStringView text)
{
    static constexpr qsizetype wordLength = 4;
    for (qsizetype at = text.indexOf(QLatin1String("TODO")); at >= 0;
         at = text.indexOf(QLatin1String("TODO"), at + 1))
    {
        const qsizetype after = at + wordLength;
        if ((at == 0 || !IsAsciiNameCharacter(text.at(at - 1))) &&
            (after == text.size() || !IsAsciiNameCharacter(text.at(after))))
            return true;
    }
    return false;
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

bool BaseParser::ParseQuotedString(QChar quote, int start)
{
    // Written as a loop: an escaped quote or a backslash at the line end starts the same search
    // again.
    const int last = static_cast<int>(script.size()) - 1;
    for (;;)
    {
        int newline = static_cast<int>(script.indexOf(QLatin1Char('\n'), position + 1));
        const int closing = static_cast<int>(script.indexOf(quote, position + 1));
        if (closing >= 1 && (newline < 0 || closing < newline))
        {
            const bool escaped = CountBackslashesBefore(closing, position) % 2 == 1;
            position = closing;
            if (escaped)
                continue;
            return true;
        }
        if (newline >= 1 && newline < last && CountBackslashesBefore(newline, position) % 2 == 1)
        {
            position = newline;
            continue;
        }
        if (newline < 1 || newline >= last)
            newline = last;
        AppendError(QStringLiteral("Unterminated String"), start, newline);
        position = newline;
        return false;
    }
}
