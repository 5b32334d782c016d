#pragma once

#include "language/HighlighterWordIndex.h"

#include <QtCore/QList>
#include <QtCore/QRegularExpression>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QSyntaxHighlighter>
#include <QtGui/QTextCharFormat>

class CodeEditorBlockData;

// Colours a buffer and, in the same pass over each block, fills the block's CodeEditorBlockData
// with its real brackets, its string and comment stretches and its indent. The base class has
// empty rule lists and serves plain text: it still records indents and brackets.
//
// The only state carried from block to block is the block state: -1 when no span passes the line
// end, else the index in multiLineRules of the span that stays open.
class Highlighter : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    struct HighlightingRule
    {
        QRegularExpression pattern;
        QTextCharFormat* format = nullptr; // owned by ColorSettings: a colour edit reaches the rule
        // What any non-empty match needs in the line: this text, and one of these characters.
        // A line without them is skipped without running the expression, which most lines are.
        QString requiredText;
        QString requiredCharacters;
    };

    struct MultiLineHighlightingRule
    {
        QRegularExpression startPattern;
        QRegularExpression endPattern; // EOL_PATTERN: the span closes at the end of the line
        QTextCharFormat* format = nullptr;
        int startLength = 0;
        bool continuesWithBackslash = false;
        bool singleLineComment = false;
        bool blockComment = false;
        bool escapable = false;
        // The patterns as plain text when they are plain text, searched without the expression
        // engine; empty for a real expression. Every delimiter of the tables is plain text, and
        // these searches run several times per line.
        QString startText;
        QString endText;
        bool endsAtEol = false;
    };

    static const QString EOL_PATTERN;

    explicit Highlighter(QTextDocument* document);

    static bool IsEscaped(const QString& text, int position);
    static QString GetIndent(const QString& text);
    int GetActiveRuleIndex(const QString& text, int& index) const;

    const QList<HighlightingRule>& GetRules() const { return rules; }
    const QList<HighlightingRule>& GetEarlyRules() const { return earlyRules; }
    const QList<MultiLineHighlightingRule>& GetMultiLineRules() const { return multiLineRules; }

    // Shared by all highlighters for the life of the process; filled by the first constructor that
    // finds them empty.
    static QTextCharFormat* sWhitespaceFormat;
    static QStringList sMelKeywords;
    static QStringList sMelCommands;
    static QTextCharFormat* sMelKeywordFormat;
    static QTextCharFormat* sMelCommandFormat;
    static QStringList sPythonKeywords;
    static QStringList sPythonBuiltins;
    static QStringList sPythonMelCommands;
    static QTextCharFormat* sPythonKeywordFormat;
    static QTextCharFormat* sPythonBuiltinsFormat;
    static QTextCharFormat* sPythonMelCommandFormat;

protected:
    void highlightBlock(const QString& text) override;
    virtual void HighlightEarlyRules(const QString& text);
    virtual void HighlightKeywords(const QString& text);
    virtual void HighlightBuiltins(const QString& text);
    virtual void HighlightRules(const QString& text);
    virtual void UpdateSmartIndentData(CodeEditorBlockData* data, const QString& segment);

    void UpdateBlockData(const QString& text, int start, int end, bool force);
    void UpdateBraceData(CodeEditorBlockData* data, const QString& text, int start, int end);
    void UpdateIndentData(const QString& text);
    void UpdateMultiLine(const QString& text);
    void ClearBlockData();
    void HighlightHiddenCharacters(const QString& text);
    void UsePreviousIndent();

    // Table building for the subclasses.
    static HighlightingRule MakeRule(const QString& pattern, const QString& formatKey,
                                     const QString& requiredText = QString(),
                                     const QString& requiredCharacters = QString());
    static MultiLineHighlightingRule MakeMultiLineRule(const QString& start, const QString& end,
                                                       const QString& formatKey, int startLength);

    // Which occurrences of a listed word a keyword pass colours.
    enum class WordPlacement
    {
        Anywhere,
        NotAfterDollarOrDash, // MEL: "$ls" and "-ls" are a variable and a flag
        AfterDot,             // Python: "cmds.ls", never a bare "ls"
    };
    struct WordHit
    {
        QStringView word;
        QTextCharFormat* format = nullptr;
        WordPlacement placement = WordPlacement::Anywhere;
    };
    // Colours every whole-word occurrence of each hit in the line, as a search of "\bword\b"
    // would find it.
    void FormatWordHits(const QString& text, const QList<WordHit>& hits);
    // Calls visit(start, length) for each maximal run of characters that isPartChar accepts.
    template <typename IsPartChar, typename Visit>
    static void ForEachPart(const QString& text, IsPartChar isPartChar, Visit visit);

    CodeEditorBlockData* CurrentBlockData() const;

    QList<HighlightingRule> rules;
    QList<HighlightingRule> earlyRules;
    QList<MultiLineHighlightingRule> multiLineRules;

    static HighlighterWordIndex& MelKeywordIndex();
    static HighlighterWordIndex& MelCommandIndex();
    static HighlighterWordIndex& PythonKeywordIndex();
    static HighlighterWordIndex& PythonBuiltinIndex();
    static HighlighterWordIndex& PythonMelCommandIndex();

private:
    void ApplyRules(const QString& text, const QList<HighlightingRule>& list);
    int FindEnd(const MultiLineHighlightingRule& rule, const QString& text, int from, int& length) const;
    void FormatWordHitByExpression(const QString& text, const WordHit& hit);
    static bool IsWordPlacementValid(const QString& text, int position, WordPlacement placement);
};

template <typename IsPartChar, typename Visit>
void Highlighter::ForEachPart(const QString& text, IsPartChar isPartChar, Visit visit)
{
    const int length = int(text.size());
    const QChar* data = text.constData();
    int i = 0;
    while (i < length)
    {
        while (i < length && !isPartChar(data[i].unicode()))
            ++i;
        const int start = i;
        while (i < length && isPartChar(data[i].unicode()))
            ++i;
        if (i > start)
            visit(start, i - start);
    }
}
