#pragma once

#include "language/ParserItem.h"
#include "language/ParserMessage.h"

#include <QtCore/QList>
#include <QtCore/QString>

// The frame of the live parsers: one pass over the whole text of a buffer, character by character,
// that picks out the symbols the outline shows, notes TODO comments and reports a few structural
// faults. A parser object is reused for every run; each run starts from empty lists.
class BaseParser
{
public:
    BaseParser() = default;
    virtual ~BaseParser() = default;
    BaseParser(const BaseParser&) = default;
    BaseParser& operator=(const BaseParser&) = default;

    virtual void ClearAll();
    virtual void Parse(const QString& source, const QString& filePath);
    virtual bool IsMel() const { return false; }
    virtual bool IsPython() const { return false; }
    virtual void AppendError(const QString& text, int start, int end);
    // Letters, digits and the underscore of ASCII: the word characters of the scanners' rules.
    static bool IsAsciiNameCharacter(QChar c);

    // Copies of the lists of the last run; implicitly shared, so a handover costs nothing.
    QString GetFilePath() const { return filePath; }
    QList<ParserItem> GetItems() const { return items; }
    QList<ParserMessage> GetErrors() const { return errors; }
    QList<ParserMessage> GetWarnings() const { return warnings; }
    QList<ParserMessage> GetInfos() const { return infos; }

    void AppendItem(const QString& name, ParserItemType type, int position, int level);
    void AppendWarning(const QString& text, int start, int end);
    void AppendInfo(const QString& text, int start, int end);

protected:
    // At most one bracket fault is reported per run, whichever kind comes first.
    void ParenthesesError(QChar expected, int start, int end);
    void UnexpectedParenthesesError(QChar found, int start, int end);
    // The text from offset up to the next newline, without it.
    QString GetLineFromScript(int offset) const;
    QStringView LineViewFromScript(int offset) const;
    // Whether the text at offset up to the end of its line starts with the word; a cheap test done
    // before a line is cut out and matched.
    bool LineStartsWith(int offset, QLatin1String word) const;
    // The index of the first non-blank character at or after from, or -1.
    int NextNonSpace(int from) const;
    // The number of backslashes directly before index, not looking at or before stop.
    int CountBackslashesBefore(int index, int stop) const;
    static ParserMessage Message(const QString& text, int start, int end);
    // Whether the text holds TODO as a whole word.
    static bool ContainsTodo(QStringView text);
    // A one-line string from its opening quote at position; a backslash escapes the quote or the
    // line end. Leaves position on the closing quote, or reports "Unterminated String" and leaves
    // it on the line end. The result tells whether the string was closed.
    bool ParseQuotedString(QChar quote, int start);

    QString script;
    int position = 0;
    QString filePath;
    QList<ParserItem> items;
    QList<ParserMessage> errors;
    QList<ParserMessage> warnings;
    QList<ParserMessage> infos;
    int parenthesesDepth = 0;
    int braceDepth = 0;
    int bracketDepth = 0;
    bool bracketErrorReported = false;
};
