#pragma once
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>
#include <maya/MTypes.h>

typedef void* (*MCreatorFunction)();
typedef MSyntax (*MCreateSyntaxFunction)();

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MFnPlugin
{
public:
    MFnPlugin();
    MFnPlugin(MObject& object, const char* vendor = "Unknown", const char* version = "Unknown",
              const char* requiredApiVersion = "Any", MStatus* returnStatus = nullptr);
    virtual ~MFnPlugin();

    MString vendor(MStatus* returnStatus = nullptr) const;
    MString version(MStatus* returnStatus = nullptr) const;
    MString name(MStatus* returnStatus = nullptr) const;
    MStatus registerCommand(const MString& commandName, MCreatorFunction creatorFunction,
                            MCreateSyntaxFunction createSyntaxFunction = nullptr);
    MStatus deregisterCommand(const MString& commandName);

private:
    void* record_ = nullptr;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE

// The entry points every plug-in defines.
PLUGIN_EXPORT MStatus initializePlugin(MObject object);
PLUGIN_EXPORT MStatus uninitializePlugin(MObject object);
