#pragma once
#include "HostPythonObject.h"

// Holds the GIL for a scope. Re-entrant: code called from Python may take it again.
class HostPythonLock
{
public:
    HostPythonLock() : state_(PyGILState_Ensure()) {}
    ~HostPythonLock() { PyGILState_Release(state_); }
    HostPythonLock(const HostPythonLock&) = delete;
    HostPythonLock& operator=(const HostPythonLock&) = delete;

private:
    PyGILState_STATE state_;
};
