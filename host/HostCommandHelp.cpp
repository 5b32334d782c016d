#include "HostCommandHelp.h"

namespace
{
struct FlagRow
{
    const char* command;
    const char* shortName;
    const char* longName;
    const char* types; // blank-separated, empty for a flag without argument
};

// Taken from Maya's command documentation; a subset of each command's flags.
const FlagRow FLAG_ROWS[] = {
    {"polyCube", "e", "edit", ""},
    {"polyCube", "q", "query", ""},
    {"polyCube", "ax", "axis", "Length Length Length"},
    {"polyCube", "cch", "caching", "on|off"},
    {"polyCube", "ch", "constructionHistory", "on|off"},
    {"polyCube", "cuv", "createUVs", "Int"},
    {"polyCube", "d", "depth", "Length"},
    {"polyCube", "h", "height", "Length"},
    {"polyCube", "n", "name", "String"},
    {"polyCube", "nds", "nodeState", "Int"},
    {"polyCube", "o", "object", "on|off"},
    {"polyCube", "sd", "subdivisionsDepth", "Int"},
    {"polyCube", "sh", "subdivisionsHeight", "Int"},
    {"polyCube", "sw", "subdivisionsWidth", "Int"},
    {"polyCube", "sx", "subdivisionsX", "Int"},
    {"polyCube", "sy", "subdivisionsY", "Int"},
    {"polyCube", "sz", "subdivisionsZ", "Int"},
    {"polyCube", "w", "width", "Length"},
    {"ls", "ap", "allPaths", ""},
    {"ls", "as", "assemblies", ""},
    {"ls", "ca", "cameras", ""},
    {"ls", "dag", "dagObjects", ""},
    {"ls", "dep", "dependencyNodes", ""},
    {"ls", "et", "exactType", "String"},
    {"ls", "fl", "flatten", ""},
    {"ls", "g", "geometry", ""},
    {"ls", "hd", "head", "Int"},
    {"ls", "l", "long", ""},
    {"ls", "lt", "lights", ""},
    {"ls", "mat", "materials", ""},
    {"ls", "ni", "noIntermediate", ""},
    {"ls", "o", "objectsOnly", ""},
    {"ls", "r", "recursive", "on|off"},
    {"ls", "s", "shapes", ""},
    {"ls", "sl", "selection", ""},
    {"ls", "sn", "shortNames", ""},
    {"ls", "st", "showType", ""},
    {"ls", "tl", "tail", "Int"},
    {"ls", "tr", "transforms", ""},
    {"ls", "typ", "type", "String"},
    {"ls", "v", "visible", ""},
    {"xform", "q", "query", ""},
    {"xform", "a", "absolute", ""},
    {"xform", "bb", "boundingBox", ""},
    {"xform", "cp", "centerPivots", ""},
    {"xform", "m", "matrix", "Float Float Float Float Float Float Float Float Float Float Float Float Float "
                             "Float Float Float"},
    {"xform", "os", "objectSpace", ""},
    {"xform", "p", "preserve", "on|off"},
    {"xform", "piv", "pivots", "Length Length Length"},
    {"xform", "r", "relative", ""},
    {"xform", "ro", "rotation", "Angle Angle Angle"},
    {"xform", "roo", "rotateOrder", "String"},
    {"xform", "rp", "rotatePivot", "Length Length Length"},
    {"xform", "s", "scale", "Float Float Float"},
    {"xform", "sh", "shear", "Float Float Float"},
    {"xform", "sp", "scalePivot", "Length Length Length"},
    {"xform", "t", "translation", "Length Length Length"},
    {"xform", "ws", "worldSpace", ""},
    {"xform", "wd", "worldSpaceDistance", ""},
    {"setAttr", "av", "alteredValue", ""},
    {"setAttr", "c", "caching", "on|off"},
    {"setAttr", "cb", "channelBox", "on|off"},
    {"setAttr", "k", "keyable", "on|off"},
    {"setAttr", "l", "lock", "on|off"},
    {"setAttr", "s", "size", "UnsignedInt"},
    {"setAttr", "typ", "type", "String"},
};
} // namespace

QString HostCommandHelp::FlagLines(const QString& command)
{
    QString lines;
    for (const FlagRow& row : FLAG_ROWS)
    {
        if (command != QLatin1String(row.command))
            continue;
        const QString types = QString::fromLatin1(row.types);
        lines += QStringLiteral("   -%1 -%2%3\n")
                     .arg(QLatin1String(row.shortName), QLatin1String(row.longName),
                          types.isEmpty() ? QString() : QStringLiteral("  ") + types);
    }
    return lines.isEmpty() ? QString() : lines;
}
