#pragma once
#include "HostPythonObject.h"

#include <QtCore/QString>

// Text between Qt and Python. Call with the GIL held.
class HostPythonText
{
public:
    // A new str, or null with a Python exception set.
    static HostPythonObject ToPython(const QString& text);
    // The text of a str; any other object gives an empty string. Never leaves an exception set.
    static QString ToQString(PyObject* text);
};
