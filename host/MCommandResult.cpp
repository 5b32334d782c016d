#include <maya/MCommandResult.h>

MCommandResult::MCommandResult(MStatus* returnStatus)
{
    if (returnStatus)
        *returnStatus = MStatus::kSuccess;
}

MCommandResult::~MCommandResult() = default;

MCommandResult::Type MCommandResult::resultType(MStatus* returnStatus) const
{
    if (returnStatus)
        *returnStatus = MStatus::kSuccess;
    return type_;
}

MStatus MCommandResult::getResult(int& result) const
{
    if (type_ != kInt)
        return MStatus::kInvalidParameter;
    result = int_;
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(double& result) const
{
    if (type_ != kDouble)
        return MStatus::kInvalidParameter;
    result = double_;
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(MString& result) const
{
    if (type_ != kString)
        return MStatus::kInvalidParameter;
    result = string_;
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(MStringArray& result) const
{
    if (type_ != kStringArray)
        return MStatus::kInvalidParameter;
    result = strings_;
    return MStatus::kSuccess;
}
