#pragma once

#include <QtCore/QString>

class HostMelSession;

// The MEL commands of the language itself and of running code: print, size, eval, python,
// source, quit, getenv, putenv, exists, error, warning; and the native bodies of the history and
// command-list procedures that the plug-in's MEL file defines.
class HostMelBuiltins
{
public:
    static void Register(HostMelSession& session);

    // Reads a MEL integer argument: a number, or true/false, on/off, yes/no.
    static bool ToInt(const QString& text, int& value);
};
