#pragma once
#include <maya/MArgList.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MPxCommand
{
public:
    MPxCommand();
    virtual ~MPxCommand();
    virtual MStatus doIt(const MArgList& args);
    virtual MStatus undoIt();
    virtual MStatus redoIt();
    virtual bool isUndoable() const;
    virtual bool hasSyntax() const;

    MSyntax syntax() const;
    bool isHistoryOn() const;
    MString commandString() const;

    static void clearResult();
    static void setResult(bool result);
    static void setResult(int result);
    static void setResult(double result);
    static void setResult(const MString& result);
    static void setResult(const char* result);
    static void appendToResult(const MString& result);
    static void displayInfo(const MString& message);
    static void displayWarning(const MString& message);
    static void displayError(const MString& message);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
