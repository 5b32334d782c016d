#include <maya/MArgList.h>

#include <cstring>

namespace
{
// Flag names are accepted with or without their leading dash.
const char* WithoutDash(const char* name)
{
    return (name && name[0] == '-') ? name + 1 : name;
}
} // namespace

MArgList::MArgList() = default;

unsigned int MArgList::length(MStatus* returnStatus) const
{
    if (returnStatus)
        *returnStatus = MStatus::kSuccess;
    return static_cast<unsigned int>(args_.size());
}

MString MArgList::asString(unsigned int index, MStatus* returnStatus) const
{
    const bool valid = index < args_.size();
    if (returnStatus)
        *returnStatus = valid ? MStatus::kSuccess : MStatus::kInvalidParameter;
    return valid ? args_[index] : MString();
}

int MArgList::asInt(unsigned int index, MStatus* returnStatus) const
{
    const MString text = asString(index);
    const bool valid = index < args_.size() && text.isInt();
    if (returnStatus)
        *returnStatus = valid ? MStatus::kSuccess : MStatus::kInvalidParameter;
    return valid ? text.asInt() : 0;
}

double MArgList::asDouble(unsigned int index, MStatus* returnStatus) const
{
    const MString text = asString(index);
    const bool valid = index < args_.size() && text.isDouble();
    if (returnStatus)
        *returnStatus = valid ? MStatus::kSuccess : MStatus::kInvalidParameter;
    return valid ? text.asDouble() : 0.0;
}

bool MArgList::asBool(unsigned int index, MStatus* returnStatus) const
{
    const MString text = asString(index).toLowerCase();
    bool valid = index < args_.size();
    bool value = false;
    if (text == "true" || text == "on" || text == "yes")
        value = true;
    else if (text == "false" || text == "off" || text == "no")
        value = false;
    else if (text.isDouble())
        value = text.asDouble() != 0.0;
    else
        valid = false;
    if (returnStatus)
        *returnStatus = valid ? MStatus::kSuccess : MStatus::kInvalidParameter;
    return valid && value;
}

int MArgList::flagIndex(const char* shortFlag, const char* longFlag) const
{
    const char* shortName = WithoutDash(shortFlag);
    const char* longName = WithoutDash(longFlag);
    for (size_t i = 0; i < args_.size(); ++i)
    {
        const char* arg = args_[i].asChar();
        if (arg[0] != '-')
            continue;
        if ((shortName && std::strcmp(arg + 1, shortName) == 0) ||
            (longName && std::strcmp(arg + 1, longName) == 0))
            return static_cast<int>(i);
    }
    return -1;
}

MStatus MArgList::addArg(const MString& arg)
{
    args_.push_back(arg);
    return MStatus::kSuccess;
}
