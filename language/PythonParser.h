#pragma once

#include "language/BaseParser.h"

#include <QtCore/QStringList>

class QRegularExpression;

// The live scanner of Python buffers, with no interpreter: imports, classes, functions and the
// __main__ guard for the outline; indentation, bracket and string faults; TODO comments. It follows
// logical lines by its own simple rules, so a statement continued over lines contributes only what
// stands on its first line.
class PythonParser : public BaseParser
{
public:
    void ClearAll() override;
    void Parse(const QString& source, const QString& filePath) override;
    bool IsPython() const override { return true; }

    int GetIndentLevel() const;

private:
    void ResetIndentStack();
    bool ParseLineStart(QChar c);
    void ParseCharacter(QChar c);
    void Newline(bool initial);
    bool StatementGoesOn();
    void ParseComment();
    void ParseNewIndent();
    void ParseDocString(const QString& closing);
    void ParseString(QChar quote, int start, bool checkDocString);
    void ParseMain();
    bool ParseMethod();
    bool ParseClass();
    bool ParseDefinition(const QRegularExpression& keyword, ParserItemType type);
    ParserItemType MethodType() const;
    bool ParseDecorator();
    bool ParseFromImport();
    bool ParseImport();
    bool ParseImportAs(const QString& line, int matchLength);
    void CutAtComment(QString& list) const;
    void ValidateIndent();
    int FirstTokenLength();

    bool atLineStart = false;
    int lineStart = 0;
    bool expectIndent = false;
    QString currentIndent;
    QStringList indentStack;
    QStringList decorators;
    bool indentErrorReported = false;
    bool mixedIndentReported = false;
    int firstTokenLength = -1; // of the whole script; -2 until it is measured
};
