#pragma once

#include "language/HighlighterWordIndex.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QList>
#include <QtCore/QRegularExpression>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVarLengthArray>
#include <QtGui/QSyntaxHighlighter>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCharFormat>
#include <QtGui/QTextCursor>
#include <QtGui/QTextLayout>

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
    // Longer lines (minified code, binary shown as text) keep their block data and state but get
    // no colours: Qt lays out a line again on every key, and with a format per token a line of a
    // megabyte would take seconds each time.
    static constexpr int LONGEST_COLOURED_LINE = 10000;
    enum class FastMatch
    {
        None,
        Number,           // \b[0-9]*[.]?[0-9]*
        Word,             // \bword\b
        NameAfterWord,    // (?<=\bword)\s+[A-Za-z0-9_]+(?=\s*\()
        Call,             // \b[A-Za-z0-9_]+(?=\s*\()
        CallNotAfterDash, // (?<![A-Za-z0-9_\-])[A-Za-z0-9_]+(?=\s*\()
        Variable,         // (?<![A-Za-z0-9_])(\$)[A-Za-z0-9_]+
        Decorator,        // ^[\s]*[@](.)*
    };

    struct HighlightingRule
    {
        QRegularExpression pattern;
        QTextCharFormat* format = nullptr; // owned by ColorSettings: a colour edit reaches the rule
        // What any non-empty match needs in the line: this text, and one of these characters.
        // A line without them is skipped without running the expression, which most lines are.
        QString requiredText;
        QString requiredCharacters;
        // A pattern of a known shape is also matched by plain code on lines of printable ASCII,
        // where the expression's classes (\s, \b, .) are plain character tests; it finds exactly
        // the matches of the expression, which stays the reference for every other line.
        FastMatch fastMatch = FastMatch::None;
        QString fastWord;
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
    // The non-empty matches of a rule in a line, as (start, length): by the expression, or by the
    // plain code where the line allows it.
    static QList<QPair<int, int>> RuleMatches(const HighlightingRule& rule, const QString& text,
                                              bool byExpression);

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

    // True while blocks wait for a re-highlight that an edit set off and that was cut short to keep
    // the editor responsive; the rest follows in later turns of the event loop.
    bool IsHighlightPending() const { return pending; }

public slots:
    // The result of rehighlight(), without its cost per character and without laying out again the
    // blocks whose colours did not change.
    void HighlightDocument();

protected:
    void highlightBlock(const QString& text) override;
    virtual void HighlightEarlyRules(const QString& text);
    virtual void HighlightKeywords(const QString& text);
    virtual void HighlightBuiltins(const QString& text);
    virtual void HighlightRules(const QString& text);
    virtual void UpdateSmartIndentData(CodeEditorBlockData* data, QStringView segment);

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
    using WordHits = QVarLengthArray<WordHit, 16>;
    void FormatWordHits(const QString& text, const WordHits& hits);
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

private slots:
    void OnContentsChange(int from, int charsRemoved, int charsAdded);
    void ContinueHighlighting();

private:
    // An edit re-highlights the blocks it touched and then every block below while their states
    // change: at the top of a long buffer, an opened block comment or triple quote would colour
    // the whole buffer before the key returns. So the work of one such pass is bounded; the blocks
    // past the budget keep their old colours and states, and a later turn of the event loop goes
    // on from there. The final colours are those of a full pass.
    //
    // These passes walk the blocks themselves rather than through QSyntaxHighlighter, which copies
    // a format per character and marks every block for a new layout, changed or not. Here the
    // formats go to the block's layout as ranges, and only the blocks whose ranges changed are
    // marked, in one stretch per pass.
    static constexpr int BUDGET_MS = 5;
    static constexpr int BUDGET_MIN_BLOCKS = 96; // short passes always finish at once
    void Pass(int from, int charsRemoved, int charsAdded, bool budgeted);
    void HighlightOwnBlock(const QTextBlock& target);
    void HighlightText(const QString& text);
    void DeferFrom(const QTextBlock& from, int end);
    void SetLayoutFormats(int length);
    void MoveAroundPreedit(const QList<QTextLayout::FormatRange>& before, int start, int length);
    void FlushDirty();

    // The block being highlighted, by either kind of pass; the base's block accessors only work
    // inside its own.
    int PreviousBlockState() const;
    int CurrentBlockState() const { return block.isValid() ? block.userState() : -1; }
    void SetCurrentBlockState(int state);

    QTextBlock block;
    int blockPosition = 0;                        // of the block, in a pass of our own
    bool ownPass = false;                         // formats go straight to the block's layout
    QList<QTextLayout::FormatRange> formatRanges; // kept for its capacity
    int dirtyFrom = -1; // the stretch whose layouts must be redone, once the pass ends
    int dirtyTo = -1;
    QElapsedTimer passTimer;
    bool pending = false;
    bool continuationQueued = false;
    QTextCursor pendingStart;
    QTextCursor pendingEnd;

    // Formats are gathered per character and handed on once per run at the end of the block:
    // passes that overwrite one another then cost a pointer per character, not a format copy.
    // Strings, comments and blanks go to a layer above the other passes, so they can be worked
    // out first and the other passes skipped where they cover the whole line.
    using FormatLayer = QVarLengthArray<const QTextCharFormat*, 256>;
    void Paint(int start, int count, const QTextCharFormat* format);
    void FlushFormats(int length);
    template <typename Visit> void ForEachFormatRun(int length, Visit visit) const;
    const QTextCharFormat* FormatAt(int position) const
    {
        return spanLayer[position] ? spanLayer[position] : baseLayer[position];
    }
    bool SpansCoverLine(const QString& text) const;

    void ApplyRules(const QString& text, const QList<HighlightingRule>& list);
    int FindEnd(const MultiLineHighlightingRule& rule, const QString& text, int from, int& length) const;
    void FormatWordHitByExpression(const QString& text, const WordHit& hit);
    static bool IsWordPlacementValid(const QString& text, int position, WordPlacement placement);
    static void RecogniseFastMatch(HighlightingRule& rule);
    template <typename Visit>
    static void ForEachFastMatch(const HighlightingRule& rule, const QString& text, Visit visit);
    template <typename Visit>
    static void ForEachExpressionMatch(const HighlightingRule& rule, const QString& text, Visit visit);

    FormatLayer baseLayer;
    FormatLayer spanLayer;
    FormatLayer* paintLayer = &baseLayer;
    CodeEditorBlockData* blockData = nullptr; // of the block being highlighted
    bool plainLine = false;                   // the block holds printable ASCII and tabs only
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
