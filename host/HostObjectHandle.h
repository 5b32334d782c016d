#pragma once
#include <maya/MObject.h>

// What an MObject stands for in this host: the plug-in record handed to a plug-in's entry points.
class HostObjectHandle
{
public:
    static MObject Make(void* handle);
    static void* Of(const MObject& object);
};
