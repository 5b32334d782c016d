#include <maya/MPxCommand.h>

#include "HostCommandStack.h"
#include "HostCommandSyntax.h"

#include <maya/MGlobal.h>

#include <vector>

namespace
{
struct Slot
{
    QString commandString;
    HostCommandResult result;
};

std::vector<Slot>& CommandSlots()
{
    static std::vector<Slot>* stack = new std::vector<Slot>; // never destroyed, like the MEL session
    return *stack;
}
} // namespace

void HostCommandStack::Push(const QString& commandString)
{
    CommandSlots().push_back(Slot{commandString, HostCommandResult()});
}

HostCommandResult HostCommandStack::Pop()
{
    if (CommandSlots().empty())
        return HostCommandResult();
    HostCommandResult result = CommandSlots().back().result;
    CommandSlots().pop_back();
    return result;
}

HostCommandResult& HostCommandStack::Current()
{
    static HostCommandResult scratch;
    if (CommandSlots().empty())
    {
        scratch.reset();
        return scratch;
    }
    return CommandSlots().back().result;
}

QString HostCommandStack::CurrentCommandString()
{
    return CommandSlots().empty() ? QString() : CommandSlots().back().commandString;
}

MPxCommand::MPxCommand() = default;

MPxCommand::~MPxCommand()
{
    HostCommandSyntax::Forget(this);
}

MStatus MPxCommand::doIt(const MArgList& /*args*/)
{
    return MStatus::kSuccess;
}

MStatus MPxCommand::undoIt()
{
    return MStatus::kSuccess;
}

MStatus MPxCommand::redoIt()
{
    return MStatus::kSuccess;
}

bool MPxCommand::isUndoable() const
{
    return false;
}

bool MPxCommand::hasSyntax() const
{
    return true;
}

MSyntax MPxCommand::syntax() const
{
    return HostCommandSyntax::Of(this);
}

bool MPxCommand::isHistoryOn() const
{
    return true;
}

MString MPxCommand::commandString() const
{
    return MString(HostCommandStack::CurrentCommandString().toUtf8().constData());
}

void MPxCommand::clearResult()
{
    HostCommandStack::Current().reset();
}

// As in Maya, a boolean result reads back as an integer.
void MPxCommand::setResult(bool result)
{
    HostCommandStack::Current().setInt(result ? 1 : 0);
}

void MPxCommand::setResult(int result)
{
    HostCommandStack::Current().setInt(result);
}

void MPxCommand::setResult(double result)
{
    HostCommandStack::Current().setDouble(result);
}

void MPxCommand::setResult(const MString& result)
{
    HostCommandStack::Current().setString(result);
}

void MPxCommand::setResult(const char* result)
{
    HostCommandStack::Current().setString(MString(result));
}

// Appending turns the result into a string array; a single string result becomes its first element.
void MPxCommand::appendToResult(const MString& result)
{
    HostCommandResult& current = HostCommandStack::Current();
    MStringArray items;
    if (current.resultType() == MCommandResult::kStringArray)
    {
        current.getResult(items);
    }
    else if (current.resultType() == MCommandResult::kString)
    {
        MString single;
        current.getResult(single);
        items.append(single);
    }
    items.append(result);
    current.setStringArray(items);
}

void MPxCommand::displayInfo(const MString& message)
{
    MGlobal::displayInfo(message);
}

void MPxCommand::displayWarning(const MString& message)
{
    MGlobal::displayWarning(message);
}

void MPxCommand::displayError(const MString& message)
{
    MGlobal::displayError(message);
}
