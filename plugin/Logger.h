#pragma once

#include <maya/MString.h>

class QString;

// The system's one channel for reporting: every line goes through the host's display calls,
// and so back into the output view like any other message.
class Logger
{
public:
    Logger() = delete;

    static void Info(const MString& message);
    static void Info(const QString& message);
    static void Info(const char* message);
    static void Warning(const MString& message);
    static void Warning(const QString& message);
    static void Warning(const char* message);
    static void Error(const MString& message);
    static void Error(const QString& message);
    static void Error(const char* message);

    static const MString PREFIX;
};
