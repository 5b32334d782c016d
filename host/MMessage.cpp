#include <maya/MMessage.h>
#include <maya/MCallbackIdArray.h>

#include "HostCallbacks.h"

MStatus MMessage::removeCallback(MCallbackId id)
{
    return HostCallbacks::Remove(id) ? MStatus::kSuccess : MStatus::kInvalidParameter;
}

// Removes every id it can; any unknown id makes the whole call report failure.
MStatus MMessage::removeCallbacks(MCallbackIdArray& ids)
{
    MStatus status;
    for (unsigned int i = 0; i < ids.length(); ++i)
    {
        if (!HostCallbacks::Remove(ids[i]))
            status = MStatus::kInvalidParameter;
    }
    return status;
}

MCallbackId MMessage::currentCallbackId(MStatus* returnStatus)
{
    const MCallbackId id = HostCallbacks::CurrentId();
    if (returnStatus)
        *returnStatus = id != 0 ? MStatus::kSuccess : MStatus::kFailure;
    return id;
}
