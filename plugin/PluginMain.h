#pragma once

#include <maya/MCommandMessage.h>
#include <maya/MFnPlugin.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

// The callbacks that Maya calls back into. The entry points, initializePlugin and
// uninitializePlugin, are declared by MFnPlugin.h.

MStatus AddCallbacks();
void OnApplicationExit(void* clientData);
void OnCommandOutputReceived(const MString& message, MCommandMessage::MessageType type, void* clientData);
