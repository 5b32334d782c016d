#include "HostEvents.h"

#include "HostCallbacks.h"

void HostEvents::Fire(const QString& eventName)
{
    HostCallbacks::FireEvent(eventName);
}

int HostEvents::CallbackCount()
{
    return HostCallbacks::EventCallbackCount();
}
