#pragma once

#include <QString>

// A diagnostic. The parsers fill start and end; Pylint fills line and column instead.
struct ParserMessage
{
    QString text;
    int start = -1;
    int end = -1;
    int line = -1;
    int column = -1;
};
