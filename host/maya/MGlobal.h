#pragma once
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MGlobal
{
public:
    enum MMayaState
    {
        kInteractive,
        kBatch,
        kLibraryApp,
        kBaseUIMode
    };

    static MMayaState mayaState(MStatus* returnStatus = nullptr);
    static MString mayaVersion();
    static int apiVersion();

    static MStatus executeCommand(const MString& command, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MCommandResult& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, int& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, double& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MString& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MStringArray& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommandOnIdle(const MString& command, bool displayEnabled = false);
    static MString executeCommandStringResult(const MString& command, bool displayEnabled = false,
                                              bool undoEnabled = false, MStatus* returnStatus = nullptr);

    static MStatus executePythonCommand(const MString& command, bool displayEnabled = false,
                                        bool undoEnabled = false);
    static MStatus executePythonCommand(const MString& command, int& result, bool displayEnabled = false,
                                        bool undoEnabled = false);
    static MStatus executePythonCommand(const MString& command, double& result, bool displayEnabled = false,
                                        bool undoEnabled = false);
    static MStatus executePythonCommand(const MString& command, MString& result, bool displayEnabled = false,
                                        bool undoEnabled = false);
    static MStatus executePythonCommand(const MString& command, MStringArray& result,
                                        bool displayEnabled = false, bool undoEnabled = false);
    static MString executePythonCommandStringResult(const MString& command, bool displayEnabled = false,
                                                    bool undoEnabled = false,
                                                    MStatus* returnStatus = nullptr);
    static MStatus executePythonCommandOnIdle(const MString& command, bool displayEnabled = false);

    static MStatus sourceFile(const MString& fileName);

    static int optionVarIntValue(const MString& name, bool* exists = nullptr);
    static double optionVarDoubleValue(const MString& name, bool* exists = nullptr);
    static MString optionVarStringValue(const MString& name, bool* exists = nullptr);
    static bool setOptionVarValue(const MString& name, int value);
    static bool setOptionVarValue(const MString& name, double value);
    static bool setOptionVarValue(const MString& name, MString value);
    static void removeOptionVar(const MString& name);

    static void displayInfo(const MString& message);
    static void displayWarning(const MString& message);
    static void displayError(const MString& message);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
