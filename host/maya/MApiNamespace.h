#pragma once
// Every API class lives in a namespace named after the API version and is brought into the global
// scope by a using-declaration, as in the devkit. A product header that forward-declares one of these
// names at global scope then declares a second, unrelated class, and the build rejects it as Maya's
// own build does: include the header instead.
#define OPENMAYA_MAJOR_NAMESPACE OpenMaya20260000
#define OPENMAYA_MAJOR_NAMESPACE_OPEN                                                                      \
    namespace Autodesk                                                                                     \
    {                                                                                                      \
    namespace Maya                                                                                         \
    {                                                                                                      \
    namespace OPENMAYA_MAJOR_NAMESPACE                                                                     \
    {
#define OPENMAYA_MAJOR_NAMESPACE_CLOSE                                                                     \
    }                                                                                                      \
    }                                                                                                      \
    }

OPENMAYA_MAJOR_NAMESPACE_OPEN
class MArgDatabase;
class MArgList;
class MArgParser;
class MCallbackIdArray;
class MCommandMessage;
class MCommandResult;
class MEventMessage;
class MFnPlugin;
class MGlobal;
class MMessage;
class MObject;
class MPxCommand;
class MQtUtil;
class MStatus;
class MString;
class MStringArray;
class MSyntax;
OPENMAYA_MAJOR_NAMESPACE_CLOSE

using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MArgDatabase;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MArgList;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MArgParser;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MCallbackIdArray;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MCommandMessage;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MCommandResult;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MEventMessage;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MFnPlugin;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MGlobal;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MMessage;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MObject;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MPxCommand;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MQtUtil;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MStatus;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MString;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MStringArray;
using Autodesk::Maya::OPENMAYA_MAJOR_NAMESPACE::MSyntax;

// Host-side classes that fill in what the API keeps private (see the host's own headers).
class HostCommandResult;
class HostObjectHandle;
class HostSyntaxTable;
