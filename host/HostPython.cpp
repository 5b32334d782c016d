#include "HostPythonObject.h"

#include "HostOutput.h"
#include "HostPython.h"
#include "HostPythonErrors.h"
#include "HostPythonLock.h"
#include "HostPythonMainThread.h"
#include "HostPythonModule.h"
#include "HostPythonOutput.h"
#include "HostPythonSources.h"
#include "HostPythonText.h"

#include <climits>
#include <csignal>
#include <cstdlib>
#include <exception>

namespace
{

enum class InterpreterState
{
    NotStarted,
    Running,
    Failed
};

InterpreterState state = InterpreterState::NotStarted;

bool StartInterpreter()
{
    if (PyImport_AppendInittab(HostPythonModule::Name(), &HostPythonModule::Create) != 0)
    {
        return false;
    }
    // UTF-8 mode, and the process's locale left alone: it belongs to the application.
    PyPreConfig preConfig;
    PyPreConfig_InitPythonConfig(&preConfig);
    preConfig.utf8_mode = 1;
    preConfig.configure_locale = 0;
    PyStatus status = Py_PreInitialize(&preConfig);
    if (PyStatus_Exception(status))
    {
        return false;
    }

    PyConfig config;
    PyConfig_InitPythonConfig(&config);
    config.install_signal_handlers = 0;
    config.write_bytecode = 0;
    config.user_site_directory = 0;
    config.parse_argv = 0;
    config.configure_c_stdio = 0;
    wchar_t emptyArgument[] = L"";
    wchar_t* argv[] = {emptyArgument};
    status = PyConfig_SetArgv(&config, 1, argv);
    if (!PyStatus_Exception(status))
    {
        status = Py_InitializeFromConfig(&config);
    }
    PyConfig_Clear(&config);
    return !PyStatus_Exception(status);
}

// Importing "signal" installs Python's SIGINT handler whatever the configuration says. Import it
// now, once, and put back the process's own handler.
void KeepSigintHandler()
{
    struct sigaction previous = {};
    const bool saved = sigaction(SIGINT, nullptr, &previous) == 0;
    HostPythonObject module(PyImport_ImportModule("_signal"));
    PyErr_Clear();
    if (saved)
    {
        sigaction(SIGINT, &previous, nullptr);
    }
}

// The interpreter is never finalised: code may call it up to the process's very end (plug-in
// unloads, idle work dropped in static destructors). At exit the main thread takes the GIL for
// good instead, so that threads started by Python code stop before the C++ runtime is torn down.
void HoldInterpreterAtExit()
{
    PyGILState_Ensure();
}

// Runs the embedded start-up module: streams, the "maya" package's finder, error reports.
bool Bootstrap()
{
    const HostPythonSource* source = HostPythonSources::Find(QStringLiteral("_bq2host_bootstrap"));
    if (source == nullptr)
    {
        return false;
    }
    HostPythonObject code(
        Py_CompileString(reinterpret_cast<const char*>(source->data), source->fileName, Py_file_input));
    if (!code)
    {
        return false;
    }
    HostPythonObject module(
        PyImport_ExecCodeModuleWithPathnames(source->moduleName, code.Get(), source->fileName, nullptr));
    if (!module)
    {
        return false;
    }
    HostPythonObject result(PyObject_CallMethod(module.Get(), "install", nullptr));
    if (!result)
    {
        return false;
    }
    HostPythonErrors::SetDescriber(
        HostPythonObject(PyObject_GetAttrString(module.Get(), "describe_exception")));
    return !PyErr_Occurred();
}

// With the GIL held when the interpreter is ours, so that the reason can be reported too.
void ReportStartFailure(bool interpreterOwned)
{
    if (interpreterOwned && PyErr_Occurred())
    {
        HostPythonErrors::ReportCurrent();
    }
    HostOutput::Emit(QStringLiteral("The embedded Python interpreter could not be started."),
                     MCommandMessage::kError);
}

// The namespace of __main__, which persists from one call to the next.
PyObject* MainNamespace()
{
    PyObject* main = PyImport_AddModule("__main__");
    if (main == nullptr)
    {
        return nullptr;
    }
    if (!PyModule_Check(main))
    {
        PyErr_SetString(PyExc_RuntimeError, "sys.modules['__main__'] is not a module");
        return nullptr;
    }
    PyObject* globals = PyModule_GetDict(main);
    if (PyDict_GetItemString(globals, "__builtins__") == nullptr &&
        PyDict_SetItemString(globals, "__builtins__", PyEval_GetBuiltins()) != 0)
    {
        return nullptr;
    }
    return globals;
}

// Compiles the code as the console does, under the file name "<maya console>".
HostPythonObject Compile(const QString& code, int mode)
{
    if (code.contains(QChar(0)))
    {
        PyErr_SetString(PyExc_SyntaxError, "source code string cannot contain null bytes");
        return {};
    }
    HostPythonObject fileName(PyUnicode_FromString(HostPythonModule::ConsoleName()));
    if (!fileName)
    {
        return {};
    }
    // The text is decoded already: a coding declaration in it means nothing.
    PyCompilerFlags flags;
    flags.cf_flags = PyCF_SOURCE_IS_UTF8 | PyCF_IGNORE_COOKIE;
    flags.cf_feature_version = PY_MINOR_VERSION;
    const QByteArray utf8 = code.toUtf8();
    return HostPythonObject(Py_CompileStringObject(utf8.constData(), fileName.Get(), mode, &flags, -1));
}

// Compiles the code as an expression if it is one. Null without an exception set means a
// statement, which is left for the caller to compile as such.
HostPythonObject CompileExpression(const QString& code)
{
    HostPythonObject compiled = Compile(code, Py_eval_input);
    if (!compiled && PyErr_ExceptionMatches(PyExc_SyntaxError))
    {
        PyErr_Clear();
    }
    return compiled;
}

HostPythonObject Run(PyObject* compiled)
{
    PyObject* globals = MainNamespace();
    if (globals == nullptr)
    {
        return {};
    }
    return HostPythonObject(PyEval_EvalCode(compiled, globals, globals));
}

// Runs the code as statements. False if it raised (the error is then reported).
bool RunStatements(const QString& code)
{
    HostPythonObject compiled = Compile(code, Py_file_input);
    HostPythonObject result = compiled ? Run(compiled.Get()) : HostPythonObject();
    if (!result)
    {
        HostPythonErrors::ReportCurrent();
        return false;
    }
    return true;
}

// Runs the code: as an expression when it compiles as one, its value then in `value`; else as
// statements, `value` left null. False if it raised; the error is reported.
bool RunCode(const QString& code, HostPythonObject& value)
{
    HostPythonObject expression = CompileExpression(code);
    if (!expression)
    {
        if (PyErr_Occurred())
        {
            HostPythonErrors::ReportCurrent();
            return false;
        }
        return RunStatements(code);
    }
    value = Run(expression.Get());
    if (!value)
    {
        HostPythonErrors::ReportCurrent();
        return false;
    }
    return true;
}

bool ExecuteLocked(const QString& code, bool displayEnabled)
{
    if (!displayEnabled)
    {
        return RunStatements(code);
    }
    HostPythonObject value;
    if (!RunCode(code, value))
    {
        return false;
    }
    if (!value || value.Get() == Py_None)
    {
        return true;
    }
    HostPythonObject text(PyObject_Str(value.Get()));
    if (!text)
    {
        HostPythonErrors::ReportCurrent();
        return false;
    }
    HostPythonOutput::Flush();
    HostOutput::Emit(HostPythonText::ToQString(text.Get()), MCommandMessage::kResult);
    return true;
}

bool ToInt(PyObject* value, int& result)
{
    if (!PyLong_Check(value))
    {
        return false;
    }
    int overflow = 0;
    const long long number = PyLong_AsLongLongAndOverflow(value, &overflow);
    if (overflow != 0 || number < INT_MIN || number > INT_MAX || PyErr_Occurred())
    {
        PyErr_Clear();
        return false;
    }
    result = int(number);
    return true;
}

bool ToDouble(PyObject* value, double& result)
{
    if (!PyFloat_Check(value) && !PyLong_Check(value))
    {
        return false;
    }
    const double number = PyFloat_AsDouble(value);
    if (PyErr_Occurred())
    {
        PyErr_Clear();
        return false;
    }
    result = number;
    return true;
}

bool ToString(PyObject* value, QString& result)
{
    if (!PyUnicode_Check(value))
    {
        return false;
    }
    result = HostPythonText::ToQString(value);
    return true;
}

bool ToStringList(PyObject* value, QStringList& result)
{
    if (!PyList_Check(value) && !PyTuple_Check(value))
    {
        return false;
    }
    HostPythonObject items(PySequence_Fast(value, "a list or tuple"));
    if (!items)
    {
        PyErr_Clear();
        return false;
    }
    QStringList strings;
    const Py_ssize_t count = PySequence_Fast_GET_SIZE(items.Get());
    for (Py_ssize_t i = 0; i < count; ++i)
    {
        PyObject* item = PySequence_Fast_GET_ITEM(items.Get(), i);
        HostPythonObject text(PyUnicode_Check(item) ? Py_NewRef(item) : PyObject_Str(item));
        if (!text)
        {
            HostPythonErrors::ReportCurrent();
            return false;
        }
        strings.append(HostPythonText::ToQString(text.Get()));
    }
    result = strings;
    return true;
}

// Evaluates the code and converts its value; the result is written only on success.
template <typename Result, typename Converter>
bool Evaluate(const QString& code, Result& result, Converter convert)
{
    if (!HostPython::Initialize())
    {
        return false;
    }
    try
    {
        HostPythonLock lock;
        HostPythonObject value;
        const bool converted = RunCode(code, value) && value && convert(value.Get(), result);
        HostPythonOutput::Flush();
        return converted;
    }
    catch (const std::exception&)
    {
        return false;
    }
}

} // namespace

bool HostPython::Initialize()
{
    if (state != InterpreterState::NotStarted)
    {
        return state == InterpreterState::Running;
    }
    state = InterpreterState::Failed;
    HostPythonMainThread::Remember();
    // An interpreter started by someone else has no "_bq2host" module and is left alone.
    if (Py_IsInitialized() || !StartInterpreter())
    {
        ReportStartFailure(false);
        return false;
    }
    KeepSigintHandler();
    if (!Bootstrap())
    {
        ReportStartFailure(true);
        PyEval_SaveThread();
        return false;
    }
    // The main thread keeps no hold on the GIL between calls; each call takes it.
    PyEval_SaveThread();
    std::atexit(&HoldInterpreterAtExit);
    state = InterpreterState::Running;
    return true;
}

bool HostPython::IsInitialized()
{
    return state == InterpreterState::Running;
}

bool HostPython::Execute(const QString& code, bool displayEnabled)
{
    if (!HostPython::Initialize())
    {
        return false;
    }
    try
    {
        HostPythonLock lock;
        const bool ok = ExecuteLocked(code, displayEnabled);
        HostPythonOutput::Flush();
        return ok;
    }
    catch (const std::exception&)
    {
        return false;
    }
}

bool HostPython::EvaluateInt(const QString& code, int& result)
{
    return Evaluate(code, result, &ToInt);
}

bool HostPython::EvaluateDouble(const QString& code, double& result)
{
    return Evaluate(code, result, &ToDouble);
}

bool HostPython::EvaluateString(const QString& code, QString& result)
{
    return Evaluate(code, result, &ToString);
}

bool HostPython::EvaluateStringList(const QString& code, QStringList& result)
{
    return Evaluate(code, result, &ToStringList);
}
