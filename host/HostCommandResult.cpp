#include "HostCommandResult.h"

void HostCommandResult::setInt(int value)
{
    reset();
    type_ = MCommandResult::kInt;
    int_ = value;
}

void HostCommandResult::setDouble(double value)
{
    reset();
    type_ = MCommandResult::kDouble;
    double_ = value;
}

void HostCommandResult::setString(const MString& value)
{
    reset();
    type_ = MCommandResult::kString;
    string_ = value;
}

void HostCommandResult::setStringArray(const MStringArray& value)
{
    reset();
    type_ = MCommandResult::kStringArray;
    strings_ = value;
}

void HostCommandResult::reset()
{
    type_ = MCommandResult::kInvalid;
    int_ = 0;
    double_ = 0.0;
    string_.clear();
    strings_.clear();
}
