#pragma once
#include <maya/MString.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MStatus
{
public:
    enum MStatusCode
    {
        kSuccess = 0,
        kFailure,
        kInsufficientMemory,
        kInvalidParameter,
        kLicenseFailure,
        kUnknownParameter,
        kNotImplemented,
        kNotFound,
        kEndOfFile
    };

    MStatus();
    MStatus(MStatusCode code);
    MStatus(const MStatus& other) = default;
    MStatus& operator=(const MStatus& other) = default;

    bool operator==(const MStatus& other) const;
    bool operator==(MStatusCode code) const;
    bool operator!=(const MStatus& other) const;
    bool operator!=(MStatusCode code) const;
    operator bool() const;

    bool error() const;
    void clear();
    MStatusCode statusCode() const;
    MString errorString() const;
    void perror(const char* message = nullptr) const;
    void perror(const MString& message) const;

private:
    MStatusCode code_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
