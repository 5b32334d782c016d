#pragma once
#include <maya/MStatus.h>
#include <maya/MTypes.h>

// Identifies an installed callback.
typedef MUintPtrSz MCallbackId;

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MMessage
{
public:
    using MBasicFunction = void (*)(void* clientData);

    static MStatus removeCallback(MCallbackId id);
    static MStatus removeCallbacks(MCallbackIdArray& ids);
    static MCallbackId currentCallbackId(MStatus* returnStatus = nullptr);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
