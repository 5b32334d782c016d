#pragma once

#include <maya/MPxCommand.h>
#include <maya/MSyntax.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

// A plug-in command for the host's tests with the flag kinds the product's command uses. -v
// answers "2.7.6", -tw N twice N, -h X half X, -sz N X "N X", -ls the array {"a", "b c"}, -f fails
// with an error; -of keeps its file. Without flags it answers its arguments, if any, joined by '|'.
class FlagsTestCommand : public MPxCommand
{
public:
    static void* Creator() { return new FlagsTestCommand; }
    static MSyntax Syntax();
    MStatus doIt(const MArgList& args) override;

    // The long names of the flags of the last call, and the last -of argument.
    static QStringList flagsSeen;
    static QString openedFile;
};
