#include "HostPythonModule.h"
#include "HostIdleQueue.h"
#include "HostPythonErrors.h"
#include "HostPythonLock.h"
#include "HostPythonMainThread.h"
#include "HostPythonMel.h"
#include "HostPythonOutput.h"
#include "HostPythonSources.h"
#include "HostPythonText.h"

#include <maya/MCommandMessage.h>

#include <exception>
#include <functional>
#include <memory>

namespace
{

// No C++ exception may unwind through the interpreter's frames.
template <PyObject* (*Body)(PyObject*, PyObject*)> PyObject* Guarded(PyObject* self, PyObject* args)
{
    try
    {
        return Body(self, args);
    }
    catch (const std::exception& error)
    {
        PyErr_SetString(PyExc_RuntimeError, error.what());
    }
    catch (...)
    {
        PyErr_SetString(PyExc_RuntimeError, "unexpected error in the host");
    }
    return nullptr;
}

// Runs the work on the main thread: at once when already there, with the GIL kept (code called
// from Python may come back into it); from another thread with the GIL released meanwhile.
void OnMainThread(const std::function<void()>& work)
{
    if (HostPythonMainThread::IsCurrent())
    {
        work();
        return;
    }
    PyThreadState* saved = PyEval_SaveThread();
    HostPythonMainThread::RunAndWait(work);
    PyEval_RestoreThread(saved);
}

QString StringArgument(PyObject* argument)
{
    if (!PyUnicode_Check(argument))
    {
        PyErr_Format(PyExc_TypeError, "expected str, not %s", Py_TYPE(argument)->tp_name);
        return QString();
    }
    return HostPythonText::ToQString(argument);
}

PyObject* Write(PyObject*, PyObject* args)
{
    PyObject* text = nullptr;
    int type = 0;
    if (!PyArg_ParseTuple(args, "Ui:write", &text, &type))
    {
        return nullptr;
    }
    if (type < MCommandMessage::kHistory || type > MCommandMessage::kStackTrace)
    {
        PyErr_Format(PyExc_ValueError, "invalid message type %d", type);
        return nullptr;
    }
    const QString message = HostPythonText::ToQString(text);
    const auto messageType = MCommandMessage::MessageType(type);
    if (HostPythonMainThread::IsCurrent())
    {
        HostPythonOutput::Write(message, messageType);
    }
    else
    {
        HostPythonMainThread::Post([message, messageType]()
                                   { HostPythonOutput::Write(message, messageType); });
    }
    Py_RETURN_NONE;
}

PyObject* Flush(PyObject*, PyObject*)
{
    if (HostPythonMainThread::IsCurrent())
    {
        HostPythonOutput::Flush();
    }
    else
    {
        HostPythonMainThread::Post(&HostPythonOutput::Flush);
    }
    Py_RETURN_NONE;
}

PyObject* MelEval(PyObject*, PyObject* argument)
{
    const QString text = StringArgument(argument);
    if (PyErr_Occurred())
    {
        return nullptr;
    }
    HostPythonMel::Outcome outcome;
    OnMainThread([&outcome, &text]() { outcome = HostPythonMel::Run(text); });
    HostPythonObject value(outcome.ok ? HostPythonMel::ResultToPython(outcome.result) : Py_NewRef(Py_None));
    if (!value)
    {
        return nullptr;
    }
    HostPythonObject error(outcome.error.isEmpty() ? Py_NewRef(Py_None)
                                                   : HostPythonText::ToPython(outcome.error).Release());
    if (!error)
    {
        return nullptr;
    }
    return PyTuple_Pack(3, outcome.ok ? Py_True : Py_False, value.Get(), error.Get());
}

void ReleaseLater(PyObject* object)
{
    // Dropped by the idle queue, perhaps as late as the process's exit: the interpreter is never
    // finalised, so the reference can still go, under the GIL.
    if (Py_IsInitialized())
    {
        HostPythonLock lock;
        Py_DECREF(object);
    }
}

void RunDeferred(PyObject* callable)
{
    HostPythonLock lock;
    HostPythonObject result(PyObject_CallNoArgs(callable));
    if (!result)
    {
        HostPythonErrors::ReportCurrent();
    }
    HostPythonOutput::Flush();
}

PyObject* Defer(PyObject*, PyObject* callable)
{
    if (!PyCallable_Check(callable))
    {
        PyErr_SetString(PyExc_TypeError, "defer() needs a callable");
        return nullptr;
    }
    std::shared_ptr<PyObject> held(Py_NewRef(callable), &ReleaseLater);
    std::function<void()> work = [held]()
    {
        try
        {
            RunDeferred(held.get());
        }
        catch (...)
        {
            // The idle queue is no place for an exception either.
        }
    };
    if (HostPythonMainThread::IsCurrent())
    {
        HostIdleQueue::Post(work);
    }
    else
    {
        HostPythonMainThread::Post([work]() { HostIdleQueue::Post(work); });
    }
    Py_RETURN_NONE;
}

PyObject* CallInMainThread(PyObject*, PyObject* callable)
{
    if (!PyCallable_Check(callable))
    {
        PyErr_SetString(PyExc_TypeError, "call_in_main_thread() needs a callable");
        return nullptr;
    }
    if (HostPythonMainThread::IsCurrent())
    {
        return PyObject_CallNoArgs(callable);
    }
    // The call and its exception, if any, cross back to this thread.
    PyObject* result = nullptr;
    PyObject* errorType = nullptr;
    PyObject* errorValue = nullptr;
    PyObject* errorTraceback = nullptr;
    OnMainThread(
        [&]()
        {
            HostPythonLock lock;
            result = PyObject_CallNoArgs(callable);
            if (result == nullptr)
            {
                PyErr_Fetch(&errorType, &errorValue, &errorTraceback);
            }
        });
    if (result == nullptr && errorType != nullptr)
    {
        PyErr_Restore(errorType, errorValue, errorTraceback);
    }
    else if (result == nullptr)
    {
        PyErr_SetString(PyExc_RuntimeError, "the main thread did not run the call");
    }
    return result;
}

PyObject* EmbeddedSource(PyObject*, PyObject* argument)
{
    const QString name = StringArgument(argument);
    if (PyErr_Occurred())
    {
        return nullptr;
    }
    const HostPythonSource* source = HostPythonSources::Find(name);
    if (source == nullptr)
    {
        Py_RETURN_NONE;
    }
    return Py_BuildValue("(s#Os)", reinterpret_cast<const char*>(source->data), Py_ssize_t(source->size),
                         source->isPackage ? Py_True : Py_False, source->fileName);
}

PyObject* CommandExists(PyObject*, PyObject* argument)
{
    const QString name = StringArgument(argument);
    if (PyErr_Occurred())
    {
        return nullptr;
    }
    bool exists = false;
    OnMainThread([&exists, &name]() { exists = !name.isEmpty() && HostPythonMel::IsCommand(name); });
    return PyBool_FromLong(exists);
}

PyObject* CommandNames(PyObject*, PyObject*)
{
    HostPythonObject list(PyList_New(0));
    if (!list)
    {
        return nullptr;
    }
    QStringList names;
    OnMainThread([&names]() { names = HostPythonMel::CommandNames(); });
    for (const QString& name : names)
    {
        HostPythonObject item = HostPythonText::ToPython(name);
        if (!item || PyList_Append(list.Get(), item.Get()) != 0)
        {
            return nullptr;
        }
    }
    return list.Release();
}

PyMethodDef methods[] = {
    {"write", &Guarded<&Write>, METH_VARARGS, "write(text, type): text to the host's command output."},
    {"flush", &Guarded<&Flush>, METH_NOARGS, "flush(): sends unfinished output lines."},
    {"mel_eval", &Guarded<&MelEval>, METH_O, "mel_eval(text) -> (ok, result, error): runs MEL."},
    {"defer", &Guarded<&Defer>, METH_O, "defer(callable): calls it when the host is next idle."},
    {"call_in_main_thread", &Guarded<&CallInMainThread>, METH_O,
     "call_in_main_thread(callable): calls it on the main thread, waits and returns its result."},
    {"embedded_source", &Guarded<&EmbeddedSource>, METH_O,
     "embedded_source(name) -> (source, is_package, file) or None."},
    {"command_exists", &Guarded<&CommandExists>, METH_O, "command_exists(name) -> bool."},
    {"command_names", &Guarded<&CommandNames>, METH_NOARGS, "command_names() -> list of MEL commands."},
    {nullptr, nullptr, 0, nullptr}};

PyModuleDef moduleDef = {PyModuleDef_HEAD_INIT,
                         "_bq2host",
                         "The substitute Maya host's side of the embedded interpreter.",
                         -1,
                         methods,
                         nullptr,
                         nullptr,
                         nullptr,
                         nullptr};

} // namespace

const char* HostPythonModule::Name()
{
    return "_bq2host";
}

const char* HostPythonModule::ConsoleName()
{
    return "<maya console>";
}

PyObject* HostPythonModule::Create()
{
    HostPythonObject module(PyModule_Create(&moduleDef));
    if (!module || PyModule_AddStringConstant(module.Get(), "CONSOLE_NAME", ConsoleName()) != 0)
    {
        return nullptr;
    }
    return module.Release();
}
