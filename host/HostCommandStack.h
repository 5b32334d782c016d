#pragma once
#include <QtCore/QString>
#include <maya/MCommandResult.h>

// The result slot of each plug-in command while it runs. Commands may run commands, so each
// call gets its own slot; MPxCommand::setResult writes to the innermost one.
class HostCommandStack
{
public:
    static void Push(const QString& commandString);
    static MCommandResult Pop();
    // The innermost slot; outside of any command a scratch slot that nobody reads.
    static MCommandResult& Current();
    static QString CurrentCommandString();
};
