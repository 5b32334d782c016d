#include <maya/MStatus.h>

#include <cstdio>

MStatus::MStatus() : code_(kSuccess) {}

MStatus::MStatus(MStatusCode code) : code_(code) {}

bool MStatus::operator==(const MStatus& other) const
{
    return code_ == other.code_;
}

bool MStatus::operator==(MStatusCode code) const
{
    return code_ == code;
}

bool MStatus::operator!=(const MStatus& other) const
{
    return code_ != other.code_;
}

bool MStatus::operator!=(MStatusCode code) const
{
    return code_ != code;
}

MStatus::operator bool() const
{
    return code_ == kSuccess;
}

bool MStatus::error() const
{
    return code_ != kSuccess;
}

void MStatus::clear()
{
    code_ = kSuccess;
}

MStatus::MStatusCode MStatus::statusCode() const
{
    return code_;
}

MString MStatus::errorString() const
{
    switch (code_)
    {
    case kSuccess:
        return "Success";
    case kFailure:
        return "Failure";
    case kInsufficientMemory:
        return "Insufficient Memory";
    case kInvalidParameter:
        return "Invalid Parameter";
    case kLicenseFailure:
        return "License Failure";
    case kUnknownParameter:
        return "Unknown Parameter";
    case kNotImplemented:
        return "Not Implemented";
    case kNotFound:
        return "Not Found";
    case kEndOfFile:
        return "End of File";
    }
    return "Unknown Status";
}

// Maya writes these to its terminal (stderr), not to the Script Editor.
void MStatus::perror(const char* message) const
{
    if (message && *message)
        std::fprintf(stderr, "%s: %s\n", message, errorString().asChar());
    else
        std::fprintf(stderr, "%s\n", errorString().asChar());
    std::fflush(stderr);
}

void MStatus::perror(const MString& message) const
{
    perror(message.asChar());
}
