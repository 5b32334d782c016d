#pragma once

// The language of a buffer. It decides the highlighter, the completer, the parser and most of
// the editing behaviour. The values are stored with the open tabs and must not change.
enum class CodeEditorLanguage : int
{
    TEXT = 0,
    MEL = 1,
    PYTHON = 2,
};
