#pragma once
#include <maya/MArgList.h>
#include <maya/MArgParser.h>
#include <maya/MStatus.h>
#include <maya/MSyntax.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MArgDatabase : public MArgParser
{
public:
    MArgDatabase();
    MArgDatabase(const MSyntax& syntax, const MArgList& argList, MStatus* returnStatus = nullptr);
    ~MArgDatabase() override;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
