#pragma once
#include <maya/MPxCommand.h>
#include <maya/MSyntax.h>

// The syntax a command object was created with, which MPxCommand::syntax() hands back. Kept by the
// host per object, since a command may run another while its doIt is running.
class HostCommandSyntax
{
public:
    static void Set(const MPxCommand* command, const MSyntax& syntax);
    static MSyntax Of(const MPxCommand* command);
    static void Forget(const MPxCommand* command);
};
