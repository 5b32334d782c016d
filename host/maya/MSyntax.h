#pragma once
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <vector>

class MSyntax
{
public:
    enum MArgType
    {
        kInvalidArgType = 0,
        kNoArg,
        kBoolean,
        kLong,
        kUnsigned,
        kDouble,
        kString,
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

    // Substitute only: the flag table the host's argument parser reads.
    struct Flag
    {
        std::string shortName;
        std::string longName;
        std::vector<MArgType> argTypes;
    };
    const std::vector<Flag>& flags() const { return flags_; }

private:
    std::vector<Flag> flags_;
};
