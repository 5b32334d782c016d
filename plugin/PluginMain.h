#pragma once

#include <maya/MCommandMessage.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

// The plug-in's entry points and the callbacks that Maya calls back into.
PLUGIN_EXPORT MStatus initializePlugin(MObject object);
PLUGIN_EXPORT MStatus uninitializePlugin(MObject object);

MStatus AddCallbacks();
void OnApplicationExit(void* clientData);
void OnCommandOutputReceived(const MString& message, MCommandMessage::MessageType type, void* clientData);
