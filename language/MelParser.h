#pragma once

#include "language/BaseParser.h"

// The live scanner of MEL buffers: procedures and global variables for the outline, TODO comments,
// and the empty-lines warning. Its error messages are dropped on purpose (see AppendError): the
// error paths only steer the scan, and a MEL buffer shows no parse errors.
class MelParser : public BaseParser
{
public:
    void ClearAll() override;
    void Parse(const QString& source, const QString& filePath) override;
    bool IsMel() const override { return true; }
    void AppendError(const QString& text, int start, int end) override;

private:
    void NoEmptyLinesAtStartCheck();
    void ParseSingleLineComment();
    void ParseMultiLineComment();
    void AppendTodoInfo(int start, int end);
    bool ParseString(int start);
    bool ParseGlobalVariable();
    bool ParseGlobalProc();
    bool ParseProc();
    bool ParseProcDeclaration(bool global);
    void ParseProcStructure(int start);

    bool inProc = false;
    int procDepth = 0;
};
