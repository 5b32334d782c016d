#pragma once
#include <maya/MMessage.h>
#include <maya/MString.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MCommandMessage : public MMessage
{
public:
    enum MessageType
    {
        kHistory = 0,
        kDisplay,
        kInfo,
        kWarning,
        kError,
        kResult,
        kStackTrace
    };

    enum MProcType
    {
        kMELProc = 0,
        kMELCommand
    };

    typedef void (*MMessageFunction)(const MString& message, MCommandMessage::MessageType messageType,
                                     void* clientData);

    static MCallbackId addCommandOutputCallback(MMessageFunction func, void* clientData = nullptr,
                                                MStatus* returnStatus = nullptr);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
