#include <maya/MGlobal.h>

#include "HostCommandResult.h"
#include <maya/MCommandResult.h>

#include "HostIdleQueue.h"
#include "HostMel.h"
#include "HostOptionVars.h"
#include "HostOutput.h"
#include "HostPython.h"
#include "HostState.h"

namespace
{
QString ToQString(const MString& text)
{
    return QString::fromUtf8(text.asChar());
}

MString ToMString(const QString& text)
{
    return MString(text.toUtf8().constData());
}

// HostPython does not echo the code it runs; Maya shows it first, as typed.
bool StartPython(const QString& code, bool displayEnabled)
{
    if (displayEnabled)
    {
        QString echo = code;
        while (echo.endsWith(QLatin1Char('\n')) || echo.endsWith(QLatin1Char('\r')))
            echo.chop(1);
        HostOutput::Emit(echo + QLatin1Char('\n'), MCommandMessage::kHistory);
    }
    return HostPython::Initialize();
}

template <typename Value> MStatus TypedMel(const MString& command, Value& result, bool displayEnabled)
{
    HostCommandResult commandResult;
    const MStatus status = HostMel::Execute(ToQString(command), &commandResult, displayEnabled);
    if (!status)
        return status;
    Value value{};
    const MStatus typed = commandResult.getResult(value);
    if (!typed)
        return MStatus::kFailure;
    result = value;
    return MStatus::kSuccess;
}
} // namespace

MGlobal::MMayaState MGlobal::mayaState(MStatus* returnStatus)
{
    if (returnStatus)
        *returnStatus = MStatus::kSuccess;
    return HostState::IsBatch() ? kBatch : kInteractive;
}

MString MGlobal::mayaVersion()
{
    return ToMString(HostState::MayaVersion());
}

int MGlobal::apiVersion()
{
    return 20260000;
}

MStatus MGlobal::executeCommand(const MString& command, bool displayEnabled, bool /*undoEnabled*/)
{
    return HostMel::Execute(ToQString(command), nullptr, displayEnabled);
}

MStatus MGlobal::executeCommand(const MString& command, MCommandResult& result, bool displayEnabled,
                                bool /*undoEnabled*/)
{
    HostCommandResult filled;
    const MStatus status = HostMel::Execute(ToQString(command), &filled, displayEnabled);
    result = filled;
    return status;
}

MStatus MGlobal::executeCommand(const MString& command, int& result, bool displayEnabled,
                                bool /*undoEnabled*/)
{
    return TypedMel(command, result, displayEnabled);
}

MStatus MGlobal::executeCommand(const MString& command, double& result, bool displayEnabled,
                                bool /*undoEnabled*/)
{
    return TypedMel(command, result, displayEnabled);
}

MStatus MGlobal::executeCommand(const MString& command, MString& result, bool displayEnabled,
                                bool /*undoEnabled*/)
{
    return TypedMel(command, result, displayEnabled);
}

MStatus MGlobal::executeCommand(const MString& command, MStringArray& result, bool displayEnabled,
                                bool /*undoEnabled*/)
{
    return TypedMel(command, result, displayEnabled);
}

MStatus MGlobal::executeCommandOnIdle(const MString& command, bool displayEnabled)
{
    const MString text = command;
    HostIdleQueue::Post([text, displayEnabled] { executeCommand(text, displayEnabled, false); });
    return MStatus::kSuccess;
}

MString MGlobal::executeCommandStringResult(const MString& command, bool displayEnabled, bool undoEnabled,
                                            MStatus* returnStatus)
{
    HostCommandResult result;
    const MStatus status = executeCommand(command, result, displayEnabled, undoEnabled);
    MString text;
    if (status)
    {
        if (result.resultType() == MCommandResult::kString)
        {
            result.getResult(text);
        }
        else if (result.resultType() == MCommandResult::kInt)
        {
            int value = 0;
            result.getResult(value);
            text += value;
        }
        else if (result.resultType() == MCommandResult::kDouble)
        {
            double value = 0.0;
            result.getResult(value);
            text += value;
        }
    }
    if (returnStatus)
        *returnStatus = status;
    return text;
}

MStatus MGlobal::executePythonCommand(const MString& command, bool displayEnabled, bool /*undoEnabled*/)
{
    const QString code = ToQString(command);
    if (!StartPython(code, displayEnabled))
        return MStatus::kFailure;
    return HostPython::Execute(code, displayEnabled) ? MStatus::kSuccess : MStatus::kFailure;
}

MStatus MGlobal::executePythonCommand(const MString& command, int& result, bool displayEnabled,
                                      bool /*undoEnabled*/)
{
    const QString code = ToQString(command);
    int value = 0;
    if (!StartPython(code, displayEnabled) || !HostPython::EvaluateInt(code, value))
        return MStatus::kFailure;
    result = value;
    return MStatus::kSuccess;
}

MStatus MGlobal::executePythonCommand(const MString& command, double& result, bool displayEnabled,
                                      bool /*undoEnabled*/)
{
    const QString code = ToQString(command);
    double value = 0.0;
    if (!StartPython(code, displayEnabled) || !HostPython::EvaluateDouble(code, value))
        return MStatus::kFailure;
    result = value;
    return MStatus::kSuccess;
}

MStatus MGlobal::executePythonCommand(const MString& command, MString& result, bool displayEnabled,
                                      bool /*undoEnabled*/)
{
    const QString code = ToQString(command);
    QString value;
    if (!StartPython(code, displayEnabled) || !HostPython::EvaluateString(code, value))
        return MStatus::kFailure;
    result = ToMString(value);
    return MStatus::kSuccess;
}

MStatus MGlobal::executePythonCommand(const MString& command, MStringArray& result, bool displayEnabled,
                                      bool /*undoEnabled*/)
{
    const QString code = ToQString(command);
    QStringList values;
    if (!StartPython(code, displayEnabled) || !HostPython::EvaluateStringList(code, values))
        return MStatus::kFailure;
    result.clear();
    for (const QString& value : values)
        result.append(ToMString(value));
    return MStatus::kSuccess;
}

MString MGlobal::executePythonCommandStringResult(const MString& command, bool displayEnabled,
                                                  bool undoEnabled, MStatus* returnStatus)
{
    MString result;
    const MStatus status = executePythonCommand(command, result, displayEnabled, undoEnabled);
    if (returnStatus)
        *returnStatus = status;
    return result;
}

MStatus MGlobal::executePythonCommandOnIdle(const MString& command, bool displayEnabled)
{
    const MString text = command;
    HostIdleQueue::Post([text, displayEnabled] { executePythonCommand(text, displayEnabled, false); });
    return MStatus::kSuccess;
}

MStatus MGlobal::sourceFile(const MString& fileName)
{
    return HostMel::SourceFile(ToQString(fileName));
}

int MGlobal::optionVarIntValue(const MString& name, bool* exists)
{
    const QVariant value = HostOptionVars::Value(ToQString(name));
    if (exists)
        *exists = value.isValid();
    return value.toInt();
}

double MGlobal::optionVarDoubleValue(const MString& name, bool* exists)
{
    const QVariant value = HostOptionVars::Value(ToQString(name));
    if (exists)
        *exists = value.isValid();
    return value.toDouble();
}

MString MGlobal::optionVarStringValue(const MString& name, bool* exists)
{
    const QVariant value = HostOptionVars::Value(ToQString(name));
    if (exists)
        *exists = value.isValid();
    return ToMString(value.toString());
}

bool MGlobal::setOptionVarValue(const MString& name, int value)
{
    return HostOptionVars::SetInt(ToQString(name), value);
}

bool MGlobal::setOptionVarValue(const MString& name, double value)
{
    return HostOptionVars::SetDouble(ToQString(name), value);
}

bool MGlobal::setOptionVarValue(const MString& name, MString value)
{
    return HostOptionVars::SetString(ToQString(name), ToQString(value));
}

void MGlobal::removeOptionVar(const MString& name)
{
    HostOptionVars::Remove(ToQString(name));
}

void MGlobal::displayInfo(const MString& message)
{
    HostOutput::Emit(ToQString(message), MCommandMessage::kInfo);
}

void MGlobal::displayWarning(const MString& message)
{
    HostOutput::Emit(ToQString(message), MCommandMessage::kWarning);
}

void MGlobal::displayError(const MString& message)
{
    HostOutput::Emit(ToQString(message), MCommandMessage::kError);
}
