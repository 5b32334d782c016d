#include "editor/TextFileCodec.h"

#include <QtCore/QStringDecoder>
#include <QtCore/QStringEncoder>

namespace
{
const QByteArray UTF8_BOM("\xEF\xBB\xBF");
const QByteArray UTF16LE_BOM("\xFF\xFE");
const QByteArray UTF16BE_BOM("\xFE\xFF");

// Null when the bytes are not valid in that encoding.
QString DecodeStrict(QStringConverter::Encoding encoding, QByteArrayView bytes)
{
    QStringDecoder decoder(encoding, QStringConverter::Flag::Stateless);
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        return QString();
    return text.isNull() ? QStringLiteral("") : text;
}
} // namespace

QString TextFileCodec::Decode(const QByteArray& bytes, TextFileFormat& format)
{
    format = TextFileFormat();
    const QString text = DecodeBytes(bytes, format);
    return NormalizeLineEndings(text, format);
}

QString TextFileCodec::DecodeBytes(const QByteArray& bytes, TextFileFormat& format)
{
    using Encoding = TextFileFormat::Encoding;
    if (bytes.startsWith(UTF16LE_BOM) || bytes.startsWith(UTF16BE_BOM))
    {
        const bool little = bytes.startsWith(UTF16LE_BOM);
        const QString text = (bytes.size() % 2 == 0)
                                 ? DecodeStrict(little ? QStringConverter::Utf16LE : QStringConverter::Utf16BE,
                                                QByteArrayView(bytes).sliced(2))
                                 : QString();
        if (!text.isNull())
        {
            format.encoding = little ? Encoding::Utf16LE : Encoding::Utf16BE;
            return text;
        }
    }
    if (bytes.contains('\0'))
    {
        // Shown, never written: the stand-in characters would not survive a save.
        format.binary = true;
        format.encoding = Encoding::Latin1;
        QString text = QString::fromLatin1(bytes);
        text.replace(QChar(0), QChar(0xFFFD));
        return text;
    }
    if (bytes.startsWith(UTF8_BOM))
    {
        const QString text = DecodeStrict(QStringConverter::Utf8, QByteArrayView(bytes).sliced(3));
        if (!text.isNull())
        {
            format.encoding = Encoding::Utf8Bom;
            return text;
        }
    }
    const QString text = DecodeStrict(QStringConverter::Utf8, bytes);
    if (!text.isNull())
        return text;
    // Not UTF-8: every byte is a character in Latin-1, so the bytes come back unchanged.
    format.encoding = Encoding::Latin1;
    const QString latin1 = QString::fromLatin1(bytes);
    return latin1.isNull() ? QStringLiteral("") : latin1;
}

QString TextFileCodec::NormalizeLineEndings(const QString& text, TextFileFormat& format)
{
    using LineEnding = TextFileFormat::LineEnding;
    qsizetype crlf = 0;
    qsizetype cr = 0;
    qsizetype lf = 0;
    QString result;
    result.reserve(text.size());
    const qsizetype size = text.size();
    for (qsizetype i = 0; i < size; ++i)
    {
        const QChar c = text.at(i);
        if (c == QLatin1Char('\r'))
        {
            if (i + 1 < size && text.at(i + 1) == QLatin1Char('\n'))
            {
                ++crlf;
                ++i;
            }
            else
            {
                ++cr;
            }
            result.append(QLatin1Char('\n'));
            continue;
        }
        if (c == QLatin1Char('\n'))
            ++lf;
        result.append(c);
    }
    format.mixedLineEndings = (crlf > 0) + (cr > 0) + (lf > 0) > 1;
    // A tie goes to the line feed, then to CRLF.
    format.lineEnding = LineEnding::LF;
    if (crlf > lf && crlf >= cr)
        format.lineEnding = LineEnding::CRLF;
    else if (cr > lf && cr > crlf)
        format.lineEnding = LineEnding::CR;
    return result;
}

QByteArray TextFileCodec::Encode(const QString& text, const TextFileFormat& format, bool* lossless)
{
    using Encoding = TextFileFormat::Encoding;
    using LineEnding = TextFileFormat::LineEnding;
    QString withEndings = text;
    if (format.lineEnding == LineEnding::CRLF)
        withEndings.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    else if (format.lineEnding == LineEnding::CR)
        withEndings.replace(QLatin1Char('\n'), QLatin1Char('\r'));
    if (lossless)
        *lossless = true;
    switch (format.encoding)
    {
    case Encoding::Utf8Bom:
        return UTF8_BOM + withEndings.toUtf8();
    case Encoding::Utf16LE:
    case Encoding::Utf16BE:
    {
        const bool little = format.encoding == Encoding::Utf16LE;
        QStringEncoder encoder(little ? QStringConverter::Utf16LE : QStringConverter::Utf16BE);
        const QByteArray body = encoder.encode(withEndings);
        return (little ? UTF16LE_BOM : UTF16BE_BOM) + body;
    }
    case Encoding::Latin1:
        for (const QChar c : withEndings)
        {
            if (c.unicode() > 0xff)
            {
                if (lossless)
                    *lossless = false;
                break;
            }
        }
        return withEndings.toLatin1();
    case Encoding::Utf8:
        break;
    }
    return withEndings.toUtf8();
}

QString TextFileCodec::LineEndingName(TextFileFormat::LineEnding lineEnding)
{
    switch (lineEnding)
    {
    case TextFileFormat::LineEnding::CRLF:
        return QStringLiteral("CRLF");
    case TextFileFormat::LineEnding::CR:
        return QStringLiteral("CR");
    case TextFileFormat::LineEnding::LF:
        break;
    }
    return QStringLiteral("LF");
}

QString TextFileCodec::Describe(const TextFileFormat& format)
{
    using Encoding = TextFileFormat::Encoding;
    if (format.binary)
        return QStringLiteral("Binary file, read-only");
    QString encoding = QStringLiteral("UTF-8");
    if (format.encoding == Encoding::Utf8Bom)
        encoding = QStringLiteral("UTF-8 with BOM");
    else if (format.encoding == Encoding::Utf16LE)
        encoding = QStringLiteral("UTF-16 LE");
    else if (format.encoding == Encoding::Utf16BE)
        encoding = QStringLiteral("UTF-16 BE");
    else if (format.encoding == Encoding::Latin1)
        encoding = QStringLiteral("Latin-1");
    const QString ending = LineEndingName(format.lineEnding);
    if (format.mixedLineEndings)
        return QStringLiteral("%1, mixed line endings (saved as %2)").arg(encoding, ending);
    return QStringLiteral("%1, %2").arg(encoding, ending);
}
