#pragma once
#include "HostMelValue.h"
#include <QtCore/QString>

// Reads MEL text character by character for the parser: blanks and comments, names, string and
// number literals, the bare words of command arguments, and whole braced bodies. Keeps the line.
class HostMelScanner
{
public:
    struct Mark
    {
        qsizetype position = 0;
        int line = 1;
    };

    HostMelScanner(const QString& text, int firstLine);

    // Skips blanks and comments; an unterminated block comment is an error.
    void SkipSpace();
    bool AtEnd() const;
    QChar Peek(qsizetype offset = 0) const;
    int Line() const { return line_; }
    Mark Save() const { return Mark{position_, line_}; }
    void Restore(const Mark& mark);
    void Advance(qsizetype count = 1);

    // After blanks: consumes the text if it comes next.
    bool Accept(const QString& text);
    // Like Accept, but refuses a match followed by one of the characters in `notFollowedBy`.
    bool AcceptOperator(const QString& text, const QString& notFollowedBy = QString());
    bool PeekIdentifier(QString& name);
    bool ReadIdentifier(QString& name);
    bool ReadString(QString& value);
    bool ReadNumber(HostMelValue& value);
    bool ReadBareWord(QString& word);
    // At "{": reads through the matching "}", giving the text between and the line it starts on.
    bool ReadBracedText(QString& body, int& bodyLine);

    bool HasError() const { return !error_.isEmpty(); }
    QString Error() const { return error_; }
    int ErrorLine() const { return errorLine_; }
    void SetError(const QString& message);

    static bool IsIdentifierStart(QChar c);
    static bool IsIdentifierChar(QChar c);

private:
    bool SkipComment();
    bool SkipQuoted();

    QString text_;
    qsizetype position_ = 0;
    int line_ = 1;
    QString error_;
    int errorLine_ = 0;
};
