#pragma once
// Python.h has to come before any standard header.
#define PY_SSIZE_T_CLEAN
#include <Python.h>

// An owned reference to a Python object, released when it goes out of scope.
// Create, move and destroy only with the GIL held.
class HostPythonObject
{
public:
    HostPythonObject() = default;
    explicit HostPythonObject(PyObject* owned) : object_(owned) {}
    HostPythonObject(const HostPythonObject&) = delete;
    HostPythonObject& operator=(const HostPythonObject&) = delete;
    HostPythonObject(HostPythonObject&& other) noexcept : object_(other.Release()) {}
    HostPythonObject& operator=(HostPythonObject&& other) noexcept
    {
        if (this != &other)
        {
            Reset(other.Release());
        }
        return *this;
    }
    ~HostPythonObject() { Py_XDECREF(object_); }

    static HostPythonObject Borrowed(PyObject* borrowed)
    {
        Py_XINCREF(borrowed);
        return HostPythonObject(borrowed);
    }

    PyObject* Get() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

    // Hands the reference to the caller.
    PyObject* Release()
    {
        PyObject* object = object_;
        object_ = nullptr;
        return object;
    }

    void Reset(PyObject* owned = nullptr)
    {
        PyObject* old = object_;
        object_ = owned;
        Py_XDECREF(old);
    }

private:
    PyObject* object_ = nullptr;
};
