#pragma once
#include "HostPythonObject.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include "HostCommandResult.h"

// MEL as maya.cmds and maya.mel reach it. Call on the main thread.
class HostPythonMel
{
public:
    struct Outcome
    {
        bool ok = false;
        HostCommandResult result;
        QString error; // the last error message that the MEL printed
    };

    // Runs MEL text without echo, after sending what Python has printed so far.
    static Outcome Run(const QString& text);

    // A new reference to the result as Python: int, float, str, list of str, or None for no
    // result (and for types that have no getter). Null with an exception set on failure.
    static PyObject* ResultToPython(const MCommandResult& result);

    // Commands and run-time commands, as maya.cmds offers them; procedures are not commands.
    static bool IsCommand(const QString& name);
    static QStringList CommandNames();
};
