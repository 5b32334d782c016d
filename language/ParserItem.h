#pragma once

#include <QString>

// Symbols of a buffer, as the outline and the go-to palette show them.
enum ParserItemType
{
    ParserItemGlobalProc = 1,
    ParserItemProc = 2,
    ParserItemGlobalVariable = 3,
    ParserItemImport = 4,
    ParserItemImportAs = 5,
    ParserItemFromImport = 6,
    ParserItemMain = 7,
    ParserItemMethod = 8,
    ParserItemStaticMethod = 9,
    ParserItemClassMethod = 10,
    ParserItemClass = 11,
    ParserItemVariable = 12,
    ParserItemClassVariable = 13,
};

struct ParserItem
{
    QString name;
    ParserItemType type = ParserItemGlobalProc;
    int position = 0;
    int level = 0;
};
