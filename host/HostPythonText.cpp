#include "HostPythonText.h"

#include <QtCore/QSysInfo>

HostPythonObject HostPythonText::ToPython(const QString& text)
{
    // UTF-16 with "surrogatepass" keeps every QString intact, even one with a lone surrogate.
    int byteOrder = QSysInfo::ByteOrder == QSysInfo::LittleEndian ? -1 : 1;
    const auto* data = reinterpret_cast<const char*>(text.utf16());
    return HostPythonObject(
        PyUnicode_DecodeUTF16(data, text.size() * Py_ssize_t(sizeof(char16_t)), "surrogatepass", &byteOrder));
}

QString HostPythonText::ToQString(PyObject* text)
{
    if (text == nullptr || !PyUnicode_Check(text))
    {
        return QString();
    }
    Py_ssize_t size = 0;
    if (const char* utf8 = PyUnicode_AsUTF8AndSize(text, &size))
    {
        return QString::fromUtf8(utf8, size);
    }
    // A lone surrogate has no UTF-8 form: it becomes a question mark.
    PyErr_Clear();
    HostPythonObject bytes(PyUnicode_AsEncodedString(text, "utf-8", "replace"));
    if (!bytes)
    {
        PyErr_Clear();
        return QString();
    }
    return QString::fromUtf8(PyBytes_AS_STRING(bytes.Get()), PyBytes_GET_SIZE(bytes.Get()));
}
