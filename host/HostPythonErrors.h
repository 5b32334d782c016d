#pragma once
#include "HostPythonObject.h"

// Reports uncaught Python exceptions as Maya does: the traceback as one kStackTrace message,
// then one kError line "<type>: file <maya console> line <n>: <message>".
class HostPythonErrors
{
public:
    // The Python function that formats an exception into (traceback, error line).
    static void SetDescriber(HostPythonObject describer);

    // Reports the exception that is set and clears it. Needs the GIL; does nothing if none is set.
    static void ReportCurrent();
};
