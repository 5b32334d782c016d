#pragma once
#include <maya/MMessage.h>
#include <maya/MString.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MEventMessage : public MMessage
{
public:
    static MCallbackId addEventCallback(const MString& event, MMessage::MBasicFunction func,
                                        void* clientData = nullptr, MStatus* returnStatus = nullptr);
    static void getEventNames(MStringArray& names);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
