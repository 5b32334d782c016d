#pragma once
#include <QtCore/QString>

// Fires the event callbacks registered with MEventMessage::addEventCallback.
class HostEvents
{
public:
    static void Fire(const QString& eventName);
    static int CallbackCount();
};
