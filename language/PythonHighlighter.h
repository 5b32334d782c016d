#pragma once

#include "language/Highlighter.h"

// Python: self and cls, numbers, class and function names, decorators, keywords, builtins and
// the host's commands as attributes ("cmds.ls"); comments, triple-quoted and quoted strings.
class PythonHighlighter : public Highlighter
{
    Q_OBJECT

public:
    explicit PythonHighlighter(QTextDocument* document);

protected:
    void HighlightKeywords(const QString& text) override;
    void HighlightBuiltins(const QString& text) override;
    void UpdateSmartIndentData(CodeEditorBlockData* data, QStringView segment) override;

private:
    static void FetchWords();
};
