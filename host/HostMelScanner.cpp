#include "HostMelScanner.h"

#include <cctype>

HostMelScanner::HostMelScanner(const QString& text, int firstLine) : text_(text), line_(firstLine) {}

bool HostMelScanner::IsIdentifierStart(QChar c)
{
    return c.isLetter() || c == QLatin1Char('_');
}

bool HostMelScanner::IsIdentifierChar(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

bool HostMelScanner::AtEnd() const
{
    return position_ >= text_.size();
}

QChar HostMelScanner::Peek(qsizetype offset) const
{
    const qsizetype index = position_ + offset;
    return index >= 0 && index < text_.size() ? text_.at(index) : QChar();
}

void HostMelScanner::Restore(const Mark& mark)
{
    position_ = mark.position;
    line_ = mark.line;
}

void HostMelScanner::Advance(qsizetype count)
{
    for (; count > 0 && !AtEnd(); --count)
    {
        if (text_.at(position_) == QLatin1Char('\n'))
            ++line_;
        ++position_;
    }
}

void HostMelScanner::SetError(const QString& message)
{
    if (!HasError())
    {
        error_ = message;
        errorLine_ = line_;
    }
}

bool HostMelScanner::SkipComment()
{
    if (Peek() != QLatin1Char('/'))
        return false;
    if (Peek(1) == QLatin1Char('/'))
    {
        while (!AtEnd() && Peek() != QLatin1Char('\n'))
            Advance();
        return true;
    }
    if (Peek(1) != QLatin1Char('*'))
        return false;
    Advance(2);
    while (!AtEnd() && !(Peek() == QLatin1Char('*') && Peek(1) == QLatin1Char('/')))
        Advance();
    if (AtEnd())
        SetError(QStringLiteral("Unterminated comment"));
    Advance(2);
    return true;
}

void HostMelScanner::SkipSpace()
{
    while (!AtEnd())
    {
        if (Peek().isSpace())
            Advance();
        else if (!SkipComment())
            return;
    }
}

bool HostMelScanner::Accept(const QString& text)
{
    SkipSpace();
    if (!QStringView(text_).mid(position_).startsWith(text))
        return false;
    Advance(text.size());
    return true;
}

bool HostMelScanner::AcceptOperator(const QString& text, const QString& notFollowedBy)
{
    SkipSpace();
    if (!QStringView(text_).mid(position_).startsWith(text))
        return false;
    const QChar next = Peek(text.size());
    if (!next.isNull() && notFollowedBy.contains(next))
        return false;
    Advance(text.size());
    return true;
}

bool HostMelScanner::PeekIdentifier(QString& name)
{
    const Mark mark = Save();
    const bool found = ReadIdentifier(name);
    Restore(mark);
    return found;
}

bool HostMelScanner::ReadIdentifier(QString& name)
{
    SkipSpace();
    if (!IsIdentifierStart(Peek()))
        return false;
    const qsizetype start = position_;
    while (IsIdentifierChar(Peek()))
        Advance();
    name = text_.mid(start, position_ - start);
    return true;
}

bool HostMelScanner::ReadString(QString& value)
{
    SkipSpace();
    if (Peek() != QLatin1Char('"'))
        return false;
    Advance();
    value.clear();
    while (!AtEnd() && Peek() != QLatin1Char('"'))
    {
        QChar c = Peek();
        if (c == QLatin1Char('\\') && position_ + 1 < text_.size())
        {
            Advance();
            c = Peek();
            if (c == QLatin1Char('n'))
                c = QLatin1Char('\n');
            else if (c == QLatin1Char('t'))
                c = QLatin1Char('\t');
            else if (c == QLatin1Char('r'))
                c = QLatin1Char('\r');
        }
        else if (c == QLatin1Char('\n'))
        {
            SetError(QStringLiteral("Unterminated string"));
            return false;
        }
        value += c;
        Advance();
    }
    if (AtEnd())
    {
        SetError(QStringLiteral("Unterminated string"));
        return false;
    }
    Advance();
    return true;
}

bool HostMelScanner::ReadNumber(HostMelValue& value)
{
    SkipSpace();
    const qsizetype start = position_;
    qsizetype end = position_;
    const auto digitAt = [this](qsizetype i) { return i < text_.size() && text_.at(i).isDigit(); };
    if (end + 1 < text_.size() && text_.at(end) == QLatin1Char('0') &&
        (text_.at(end + 1) == QLatin1Char('x') || text_.at(end + 1) == QLatin1Char('X')))
    {
        qsizetype hexEnd = end + 2;
        while (hexEnd < text_.size() && isxdigit(text_.at(hexEnd).toLatin1()))
            ++hexEnd;
        bool ok = false;
        const qlonglong number = text_.mid(end + 2, hexEnd - end - 2).toLongLong(&ok, 16);
        if (!ok || IsIdentifierChar(hexEnd < text_.size() ? text_.at(hexEnd) : QChar()))
            return false;
        value = HostMelValue::FromInt(static_cast<int>(static_cast<quint32>(number)));
        Advance(hexEnd - start);
        return true;
    }
    bool isFloat = false;
    while (digitAt(end))
        ++end;
    if (end < text_.size() && text_.at(end) == QLatin1Char('.'))
    {
        isFloat = true;
        ++end;
        while (digitAt(end))
            ++end;
    }
    if (end == start || (isFloat && end == start + 1))
        return false;
    if (end < text_.size() && (text_.at(end) == QLatin1Char('e') || text_.at(end) == QLatin1Char('E')))
    {
        qsizetype exponent = end + 1;
        if (exponent < text_.size() &&
            (text_.at(exponent) == QLatin1Char('+') || text_.at(exponent) == QLatin1Char('-')))
            ++exponent;
        if (digitAt(exponent))
        {
            isFloat = true;
            end = exponent;
            while (digitAt(end))
                ++end;
        }
    }
    if (end < text_.size() && IsIdentifierChar(text_.at(end)))
        return false;
    const QString digits = text_.mid(start, end - start);
    if (isFloat)
        value = HostMelValue::FromFloat(digits.toDouble());
    else
        value = HostMelValue::FromNumbers({digits.toDouble()}, true).At(0);
    Advance(end - start);
    return true;
}

// A command argument written without quotes: a name, a path, "file.mel", "a|b|c".
bool HostMelScanner::ReadBareWord(QString& word)
{
    SkipSpace();
    static const QString stops = QStringLiteral(";{}()\"`");
    const qsizetype start = position_;
    while (!AtEnd() && !Peek().isSpace() && !stops.contains(Peek()))
    {
        if (Peek() == QLatin1Char('/') && (Peek(1) == QLatin1Char('/') || Peek(1) == QLatin1Char('*')))
            break;
        Advance();
    }
    word = text_.mid(start, position_ - start);
    return !word.isEmpty();
}

bool HostMelScanner::SkipQuoted()
{
    const QChar quote = Peek();
    Advance();
    while (!AtEnd() && Peek() != quote)
    {
        if (Peek() == QLatin1Char('\\'))
            Advance();
        Advance();
    }
    if (AtEnd())
        return false;
    Advance();
    return true;
}

bool HostMelScanner::ReadBracedText(QString& body, int& bodyLine)
{
    SkipSpace();
    if (Peek() != QLatin1Char('{'))
        return false;
    Advance();
    bodyLine = line_;
    const qsizetype start = position_;
    int depth = 1;
    while (!AtEnd())
    {
        const QChar c = Peek();
        if (c == QLatin1Char('"') || c == QLatin1Char('`'))
        {
            if (!SkipQuoted())
                break;
            continue;
        }
        if (SkipComment())
            continue;
        if (c == QLatin1Char('{'))
            ++depth;
        else if (c == QLatin1Char('}') && --depth == 0)
        {
            body = text_.mid(start, position_ - start);
            Advance();
            return true;
        }
        Advance();
    }
    SetError(QStringLiteral("Unterminated block"));
    return false;
}
