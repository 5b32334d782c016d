#pragma once
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MCommandResult
{
public:
    enum Type
    {
        kInvalid = 0,
        kInt = 1,
        kInt64 = 2,
        kIntArray = 3,
        kInt64Array = 4,
        kDouble = 5,
        kDoubleArray = 6,
        kString = 7,
        kStringArray = 8,
        kVector = 9,
        kVectorArray = 10,
        kMatrix = 11,
        kMatrixArray = 12
    };

    MCommandResult(MStatus* returnStatus = nullptr);
    virtual ~MCommandResult();

    Type resultType(MStatus* returnStatus = nullptr) const;
    MStatus getResult(int& result) const;
    MStatus getResult(double& result) const;
    MStatus getResult(MString& result) const;
    MStatus getResult(MStringArray& result) const;

private:
    friend class ::HostCommandResult;
    Type type_ = kInvalid;
    int int_ = 0;
    double double_ = 0.0;
    MString string_;
    MStringArray strings_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
