#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

// How a text file is stored on disk, kept per buffer so that a save writes it back the same way.
struct TextFileFormat
{
    enum class Encoding
    {
        Utf8,
        Utf8Bom,
        Utf16LE,
        Utf16BE,
        Latin1,
    };
    enum class LineEnding
    {
        LF,
        CRLF,
        CR,
    };

    Encoding encoding = Encoding::Utf8;
    LineEnding lineEnding = LineEnding::LF;
    // More than one kind of line ending was read; the dominant one is written back.
    bool mixedLineEndings = false;
    // NUL bytes: the file is shown read-only and never written.
    bool binary = false;
};

// Turns file bytes into editor text and back. The editor holds text with '\n' between lines;
// the encoding, byte order mark and line ending of the file live in TextFileFormat.
class TextFileCodec
{
public:
    static QString Decode(const QByteArray& bytes, TextFileFormat& format);
    // False in `lossless` when the encoding cannot hold every character of the text.
    static QByteArray Encode(const QString& text, const TextFileFormat& format, bool* lossless = nullptr);
    static QString Describe(const TextFileFormat& format);
    static QString LineEndingName(TextFileFormat::LineEnding lineEnding);

private:
    static QString DecodeBytes(const QByteArray& bytes, TextFileFormat& format);
    static QString NormalizeLineEndings(const QString& text, TextFileFormat& format);
};
