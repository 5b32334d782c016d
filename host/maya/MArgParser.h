#pragma once
#include <map>
#include <maya/MArgList.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>
#include <string>
#include <vector>

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MArgParser
{
public:
    MArgParser();
    MArgParser(const MSyntax& syntax, const MArgList& argList, MStatus* returnStatus = nullptr);
    virtual ~MArgParser();

    bool isFlagSet(const char* flag, MStatus* returnStatus = nullptr) const;
    unsigned int numberOfFlagsUsed() const;
    MStatus getFlagArgument(const char* flag, unsigned int index, MString& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, int& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, double& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, bool& result) const;
    MStatus getCommandArgument(unsigned int index, MString& result) const;

private:
    std::string shortNameOf(const char* flag) const;

    MSyntax syntax_;
    std::map<std::string, std::vector<MString>> values_; // keyed by short flag name
    std::vector<MString> commandArgs_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
