#pragma once
#include <QtCore/QString>
#include <QtCore/QStringList>

// The substitute's embedded CPython 3.11, with an importable "maya" package.
// Output of the interpreter (print, tracebacks) goes through HostOutput with Maya's types.
class HostPython
{
public:
    // Starts the interpreter once per process; later calls do nothing and return true.
    static bool Initialize();
    static bool IsInitialized();

    // Runs statements in the __main__ namespace. With display on, a single expression's value
    // other than None is reported as a result message. False if an exception was raised.
    static bool Execute(const QString& code, bool displayEnabled);

    // Evaluate an expression in __main__ and convert its value. Code that is not an expression
    // runs as statements and gives false (no value); so do an exception and a value of another type.
    static bool EvaluateInt(const QString& code, int& result);
    static bool EvaluateDouble(const QString& code, double& result);
    static bool EvaluateString(const QString& code, QString& result);
    static bool EvaluateStringList(const QString& code, QStringList& result);
};
