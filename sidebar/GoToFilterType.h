#pragma once

// What the go-to palette lists; the text's first character switches between the first three.
enum GoToFilterType
{
    GoToFilterFile = 0,
    GoToFilterSymbol = 1,
    GoToFilterLine = 2,
    GoToFilterCodeEditor = 3
};
