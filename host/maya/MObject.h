#pragma once
#include <maya/MApiNamespace.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MObject
{
public:
    MObject() = default;
    bool isNull() const { return handle_ == nullptr; }
    static const MObject kNullObj;

private:
    friend class ::HostObjectHandle;
    void* handle_ = nullptr;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
