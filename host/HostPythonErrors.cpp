#include "HostPythonErrors.h"
#include "HostOutput.h"
#include "HostPythonOutput.h"
#include "HostPythonText.h"

#include <QtCore/QPair>
#include <utility>

namespace
{

// Never destroyed: the interpreter is never finalised, and a reference must not be dropped
// without the GIL during the process's exit.
HostPythonObject& Describer()
{
    static auto* describer = new HostPythonObject;
    return *describer;
}

// The plain "<type>: <message>" for when the describer is missing or fails itself.
QString FallbackErrorLine(PyObject* type, PyObject* value)
{
    QString name = QStringLiteral("Exception");
    if (type != nullptr && PyType_Check(type))
    {
        name = QString::fromUtf8(reinterpret_cast<PyTypeObject*>(type)->tp_name);
    }
    HostPythonObject text(value != nullptr ? PyObject_Str(value) : nullptr);
    PyErr_Clear();
    return QStringLiteral("%1: %2").arg(name, HostPythonText::ToQString(text.Get()));
}

// (traceback, error line) from the describer, or empty texts if it fails.
QPair<QString, QString> Describe(PyObject* value)
{
    if (!Describer() || value == nullptr)
    {
        return {};
    }
    HostPythonObject description(PyObject_CallOneArg(Describer().Get(), value));
    if (!description || !PyTuple_Check(description.Get()) || PyTuple_GET_SIZE(description.Get()) != 2)
    {
        PyErr_Clear();
        return {};
    }
    return {HostPythonText::ToQString(PyTuple_GET_ITEM(description.Get(), 0)),
            HostPythonText::ToQString(PyTuple_GET_ITEM(description.Get(), 1))};
}

} // namespace

void HostPythonErrors::SetDescriber(HostPythonObject describer)
{
    Describer() = std::move(describer);
}

void HostPythonErrors::ReportCurrent()
{
    if (!PyErr_Occurred())
    {
        return;
    }
    PyObject* rawType = nullptr;
    PyObject* rawValue = nullptr;
    PyObject* rawTraceback = nullptr;
    PyErr_Fetch(&rawType, &rawValue, &rawTraceback);
    PyErr_NormalizeException(&rawType, &rawValue, &rawTraceback);
    HostPythonObject type(rawType);
    HostPythonObject value(rawValue);
    HostPythonObject traceback(rawTraceback);
    if (value && traceback)
    {
        PyException_SetTraceback(value.Get(), traceback.Get());
    }

    // What the code printed before it failed comes first.
    HostPythonOutput::Flush();
    QPair<QString, QString> description = Describe(value.Get());
    if (description.second.isEmpty())
    {
        description.second = FallbackErrorLine(type.Get(), value.Get());
    }
    if (!description.first.isEmpty())
    {
        HostOutput::Emit(description.first, MCommandMessage::kStackTrace);
    }
    HostOutput::Emit(description.second, MCommandMessage::kError);
}
