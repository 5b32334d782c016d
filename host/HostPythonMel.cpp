#include "HostPythonMel.h"
#include "HostMel.h"
#include "HostPythonOutput.h"
#include "HostPythonText.h"

#include <maya/MCommandMessage.h>
#include <maya/MMessage.h>

namespace
{

QString FromMString(const MString& text)
{
    int length = 0;
    const char* utf8 = text.asUTF8(length);
    return QString::fromUtf8(utf8, length);
}

PyObject* ToPython(const MString& text)
{
    return HostPythonText::ToPython(FromMString(text)).Release();
}

// Keeps the last error message that MEL prints while it is alive, for Python's exception.
class MelErrorCapture
{
public:
    MelErrorCapture()
    {
        MStatus status;
        id_ = MCommandMessage::addCommandOutputCallback(&MelErrorCapture::OnOutput, this, &status);
        registered_ = bool(status);
    }
    ~MelErrorCapture()
    {
        if (registered_)
        {
            MMessage::removeCallback(id_);
        }
    }
    MelErrorCapture(const MelErrorCapture&) = delete;
    MelErrorCapture& operator=(const MelErrorCapture&) = delete;

    const QString& LastError() const { return lastError_; }

private:
    static void OnOutput(const MString& message, MCommandMessage::MessageType type, void* clientData)
    {
        if (type == MCommandMessage::kError && clientData != nullptr)
        {
            static_cast<MelErrorCapture*>(clientData)->lastError_ = FromMString(message);
        }
    }

    MCallbackId id_ = 0;
    bool registered_ = false;
    QString lastError_;
};

} // namespace

HostPythonMel::Outcome HostPythonMel::Run(const QString& text)
{
    // What Python printed so far comes before what MEL prints.
    HostPythonOutput::Flush();
    Outcome outcome;
    MelErrorCapture capture;
    outcome.ok = bool(HostMel::Execute(text, &outcome.result, false));
    outcome.error = capture.LastError();
    return outcome;
}

PyObject* HostPythonMel::ResultToPython(const MCommandResult& result)
{
    switch (result.resultType())
    {
    case MCommandResult::kInt:
    {
        int value = 0;
        result.getResult(value);
        return PyLong_FromLong(value);
    }
    case MCommandResult::kDouble:
    {
        double value = 0.0;
        result.getResult(value);
        return PyFloat_FromDouble(value);
    }
    case MCommandResult::kString:
    {
        MString value;
        result.getResult(value);
        return ToPython(value);
    }
    case MCommandResult::kStringArray:
    {
        MStringArray values;
        result.getResult(values);
        HostPythonObject list(PyList_New(values.length()));
        for (unsigned int i = 0; list && i < values.length(); ++i)
        {
            PyObject* item = ToPython(values[i]);
            if (item == nullptr)
            {
                return nullptr;
            }
            PyList_SET_ITEM(list.Get(), i, item);
        }
        return list.Release();
    }
    default:
        Py_RETURN_NONE;
    }
}

bool HostPythonMel::IsCommand(const QString& name)
{
    if (HostMel::CommandExists(name))
    {
        return true;
    }
    const QString kind = HostMel::WhatIs(name);
    return kind == QLatin1String("Command") || kind == QLatin1String("Run Time Command");
}

QStringList HostPythonMel::CommandNames()
{
    QStringList names;
    const QStringList all = HostMel::MelInfo();
    for (const QString& name : all)
    {
        if (IsCommand(name))
        {
            names.append(name);
        }
    }
    return names;
}
