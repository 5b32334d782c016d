#pragma once

#include "language/Highlighter.h"

// MEL: numbers, variables, procedure names, keywords and the host's commands; line and block
// comments and double-quoted strings.
class MelHighlighter : public Highlighter
{
    Q_OBJECT

public:
    explicit MelHighlighter(QTextDocument* document);

protected:
    void HighlightKeywords(const QString& text) override;
    void UpdateSmartIndentData(CodeEditorBlockData* data, QStringView segment) override;

private:
    static void FetchWords();
};
