#include <maya/MSyntax.h>

#include <string>

namespace
{
std::string FlagName(const char* name)
{
    if (!name)
        return std::string();
    return name[0] == '-' ? std::string(name + 1) : std::string(name);
}
} // namespace

MSyntax::MSyntax() = default;

// Names are kept without their dash; a short or long name used twice is refused, as Maya does.
MStatus MSyntax::addFlag(const char* shortName, const char* longName, MArgType argType1, MArgType argType2,
                         MArgType argType3, MArgType argType4, MArgType argType5, MArgType argType6)
{
    Flag flag;
    flag.shortName = FlagName(shortName);
    flag.longName = FlagName(longName);
    if (flag.shortName.empty())
        return MStatus::kInvalidParameter;
    for (const Flag& existing : flags_)
    {
        if (existing.shortName == flag.shortName || existing.shortName == flag.longName ||
            (!flag.longName.empty() && existing.longName == flag.longName) ||
            (!existing.longName.empty() && existing.longName == flag.shortName))
            return MStatus::kFailure;
    }
    for (const MArgType type : {argType1, argType2, argType3, argType4, argType5, argType6})
    {
        if (type == kNoArg || type == kInvalidArgType || type == kLastArgType)
            break;
        flag.argTypes.push_back(type);
    }
    flags_.push_back(flag);
    return MStatus::kSuccess;
}

MStatus MSyntax::makeFlagMultiUse(const char* flagName)
{
    const std::string name = FlagName(flagName);
    for (const Flag& flag : flags_)
    {
        if (flag.shortName == name || flag.longName == name)
            return MStatus::kSuccess;
    }
    return MStatus::kInvalidParameter;
}

void MSyntax::useSelectionAsDefault(bool /*useSelection*/) {}

MStatus MSyntax::setObjectType(MObjectFormat objectFormat, unsigned int /*minObjects*/)
{
    return (objectFormat == kInvalidObjectFormat || objectFormat == kLastObjectFormat)
               ? MStatus::kInvalidParameter
               : MStatus::kSuccess;
}

void MSyntax::enableQuery(bool /*supportsQuery*/) {}

void MSyntax::enableEdit(bool /*supportsEdit*/) {}

void MSyntax::clear()
{
    flags_.clear();
}
