#include <maya/MArgDatabase.h>

MArgDatabase::MArgDatabase() = default;

MArgDatabase::MArgDatabase(const MSyntax& syntax, const MArgList& argList, MStatus* returnStatus)
    : MArgParser(syntax, argList, returnStatus)
{
}

MArgDatabase::~MArgDatabase() = default;
