#pragma once
#include <maya/MCallbackIdArray.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MMessage
{
public:
    using MBasicFunction = void (*)(void* clientData);

    static MStatus removeCallback(MCallbackId id);
    static MStatus removeCallbacks(MCallbackIdArray& ids);
    static MCallbackId currentCallbackId(MStatus* returnStatus = nullptr);
};
