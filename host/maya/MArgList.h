#pragma once
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <vector>

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MArgList
{
public:
    MArgList();
    unsigned int length(MStatus* returnStatus = nullptr) const;
    MString asString(unsigned int index, MStatus* returnStatus = nullptr) const;
    int asInt(unsigned int index, MStatus* returnStatus = nullptr) const;
    double asDouble(unsigned int index, MStatus* returnStatus = nullptr) const;
    bool asBool(unsigned int index, MStatus* returnStatus = nullptr) const;
    int flagIndex(const char* shortFlag, const char* longFlag = nullptr) const;
    MStatus addArg(const MString& arg);

private:
    std::vector<MString> args_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
