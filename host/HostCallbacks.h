#pragma once
#include <QtCore/QString>
#include <maya/MCommandMessage.h>
#include <maya/MMessage.h>
#include <maya/MTypes.h>

// The one table of every callback registered through the message classes. Ids are unique for the
// whole session and never reused; dispatch walks a snapshot of ids and skips any removed meanwhile,
// so a callback may remove itself or others while it is called.
class HostCallbacks
{
public:
    static MCallbackId AddEventCallback(const QString& eventName, MMessage::MBasicFunction function,
                                        void* clientData);
    static MCallbackId AddOutputCallback(MCommandMessage::MMessageFunction function, void* clientData);
    static bool Remove(MCallbackId id);

    static void FireEvent(const QString& eventName);
    static void DispatchOutput(const MString& message, MCommandMessage::MessageType type);

    static int EventCallbackCount();
    static int OutputCallbackCount();
    // The id of the callback running now, 0 outside of any.
    static MCallbackId CurrentId();
};
