#pragma once
#include <QtCore/QString>
#include "HostCommandResult.h"

// The result slot of each plug-in command while it runs. Commands may run commands, so each
// call gets its own slot; MPxCommand::setResult writes to the innermost one.
class HostCommandStack
{
public:
    static void Push(const QString& commandString);
    static HostCommandResult Pop();
    // The innermost slot; outside of any command a scratch slot that nobody reads.
    static HostCommandResult& Current();
    static QString CurrentCommandString();
};
