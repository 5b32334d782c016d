#include <maya/MCommandMessage.h>

#include "HostCallbacks.h"

MCallbackId MCommandMessage::addCommandOutputCallback(MMessageFunction func, void* clientData,
                                                      MStatus* returnStatus)
{
    const MCallbackId id = HostCallbacks::AddOutputCallback(func, clientData);
    if (returnStatus)
        *returnStatus = id != 0 ? MStatus::kSuccess : MStatus::kInvalidParameter;
    return id;
}
