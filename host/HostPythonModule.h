#pragma once
#include "HostPythonObject.h"

// The built-in module "_bq2host", through which Python code reaches the host. Calls made from
// threads that Python code started are carried over to the main thread.
//   write(text, type)      text to the command output as a message of that type (HostPythonOutput)
//   flush()                sends the unfinished lines of the output
//   mel_eval(text)         runs MEL; returns (ok, result, last error message or None)
//   defer(callable)        calls it from the host's idle queue
//   call_in_main_thread(callable)  calls it on the main thread and returns its result
//   embedded_source(name)  (source, is_package, file_name) of a compiled-in module, or None
//   command_exists(name)   whether MEL knows a command of that name
//   command_names()        every MEL command
//   CONSOLE_NAME           the file name of code run from the host, "<maya console>"
class HostPythonModule
{
public:
    static const char* Name();
    static const char* ConsoleName();

    // The module's init function, for PyImport_AppendInittab.
    static PyObject* Create();
};
