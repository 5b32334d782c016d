#pragma once
#include <map>
#include <maya/MArgList.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>
#include <vector>

class MArgDatabase
{
public:
    MArgDatabase();
    MArgDatabase(const MSyntax& syntax, const MArgList& argList, MStatus* returnStatus = nullptr);
    virtual ~MArgDatabase();

    bool isFlagSet(const char* flag, MStatus* returnStatus = nullptr) const;
    bool isFlagSet(const MString& flag, MStatus* returnStatus = nullptr) const;
    unsigned int numberOfFlagsUsed() const;
    MStatus getFlagArgument(const char* flag, unsigned int index, MString& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, int& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, double& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, bool& result) const;
    MStatus getCommandArgument(unsigned int index, MString& result) const;

private:
    const MSyntax::Flag* findFlag(const char* name) const;

    MSyntax syntax_;
    std::map<std::string, std::vector<MString>> values_; // keyed by short flag name
    std::vector<MString> commandArgs_;
};
