#include "HostObjectHandle.h"

MObject HostObjectHandle::Make(void* handle)
{
    MObject object;
    object.handle_ = handle;
    return object;
}

void* HostObjectHandle::Of(const MObject& object)
{
    return object.handle_;
}
