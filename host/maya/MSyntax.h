#pragma once
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <string>
#include <vector>

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MSyntax
{
public:
    enum MArgType
    {
        kInvalidArgType = 0,
        kNoArg,
        kBoolean,
        kLong,
        kDouble,
        kString,
        kUnsigned,
        kDistance,
        kAngle,
        kTime,
        kSelectionItem,
        kLastArgType
    };

    enum MObjectFormat
    {
        kInvalidObjectFormat = 0,
        kNone,
        kStringObjects,
        kSelectionList,
        kLastObjectFormat
    };

    MSyntax();
    MStatus addFlag(const char* shortName, const char* longName, MArgType argType1 = kNoArg,
                    MArgType argType2 = kNoArg, MArgType argType3 = kNoArg, MArgType argType4 = kNoArg,
                    MArgType argType5 = kNoArg, MArgType argType6 = kNoArg);
    MStatus makeFlagMultiUse(const char* flagName);
    void useSelectionAsDefault(bool useSelection);
    MStatus setObjectType(MObjectFormat objectFormat, unsigned int minObjects = 0);
    void enableQuery(bool supportsQuery = true);
    void enableEdit(bool supportsEdit = true);
    void clear();

private:
    friend class ::HostSyntaxTable;
    struct Flag
    {
        std::string shortName;
        std::string longName;
        std::vector<MArgType> argTypes;
    };
    std::vector<Flag> flags_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
