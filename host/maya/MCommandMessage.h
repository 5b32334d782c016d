#pragma once
#include <maya/MMessage.h>
#include <maya/MString.h>

class MCommandMessage : public MMessage
{
public:
    enum MessageType
    {
        kHistory = 0,
        kDisplay = 1,
        kInfo = 2,
        kWarning = 3,
        kError = 4,
        kResult = 5,
        kStackTrace = 6,
        kMelCommand = 7,
        kMelProc = 8
    };

    using MessageFunction = void (*)(const MString& message, MCommandMessage::MessageType messageType,
                                     void* clientData);

    static MCallbackId addCommandOutputCallback(MessageFunction func, void* clientData = nullptr,
                                                MStatus* returnStatus = nullptr);
};
