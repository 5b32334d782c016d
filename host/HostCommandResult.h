#pragma once
#include <maya/MCommandResult.h>

// A command result as the host fills it; the API's own class can only be read.
class HostCommandResult : public MCommandResult
{
public:
    HostCommandResult() = default;
    explicit HostCommandResult(const MCommandResult& result) : MCommandResult(result) {}

    void setInt(int value);
    void setDouble(double value);
    void setString(const MString& value);
    void setStringArray(const MStringArray& value);
    void reset();
};
