#pragma once

#include <QChar>
#include <QList>
#include <QString>
#include <QTextBlockUserData>

// What the highlighter learnt about one text block: its real brackets (not those inside strings or
// comments), where its strings and comments lie, and its indent. Renewed at every highlighting pass.
class CodeEditorBlockData : public QTextBlockUserData
{
public:
    struct Entry
    {
        int position = 0;
        int delta = 0;
    };
    struct Range
    {
        int start = 0;
        int end = 0;
    };

    void Clear();

    void AppendBrace(QChar c, int position);
    QList<Entry> GetBraces(QChar c) const;
    void AppendBlockComment(int position, int delta);
    void AppendIgnorePosition(int start, int end);
    void AppendSingleLineCommentPosition(int start, int end);
    void AppendBlockCommentPosition(int start, int end);

    const QList<Entry>& GetBlockComments() const { return blockComments; }
    const QList<Range>& GetIgnorePositions() const { return ignorePositions; }
    const QList<Range>& GetSingleLineCommentPositions() const { return singleLineCommentPositions; }
    const QList<Range>& GetBlockCommentPositions() const { return blockCommentPositions; }

    void SetIndent(const QString& value) { indent = value; }
    QString GetIndent() const { return indent; }
    void SetSmartIndentCount(int value) { smartIndentCount = value; }
    int GetSmartIndentCount() const { return smartIndentCount; }
    void SetNonCommentLength(int value) { nonCommentLength = value; }
    int GetNonCommentLength() const { return nonCommentLength; }
    void SetEmpty(bool value) { empty = value; }
    bool IsEmpty() const { return empty; }

    bool IsIgnoredPosition(int position) const;
    bool IsBlockCommentPosition(int position) const;
    bool IsSingleLineCommentPosition(int position) const;

    int OpenBlockCommentPosition(int position) const;
    int CloseBlockCommentPosition(int position) const;

    bool GetLastOpenBrace(int position, QChar& c, int& bracePosition) const;
    bool GetLastClosingBrace(int position, QChar& c, int& bracePosition) const;

private:
    QList<Entry>* BraceList(QChar c);
    bool FindLastBrace(int position, bool opening, QChar& c, int& bracePosition) const;

    QList<Entry> parentheses;
    QList<Entry> curlyBraces;
    QList<Entry> squareBrackets;
    QList<Entry> blockComments;
    QList<Range> ignorePositions;
    QList<Range> singleLineCommentPositions;
    QList<Range> blockCommentPositions;
    QString indent;
    int smartIndentCount = 0;
    int nonCommentLength = 0;
    bool empty = true;
};
