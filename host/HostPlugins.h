#pragma once
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <maya/MObject.h>
#include <maya/MStatus.h>

using HostPluginEntry = MStatus (*)(MObject);

// Loading and unloading of plug-ins, with their commands registered through MFnPlugin.
class HostPlugins
{
public:
    static MStatus Load(const QString& name, HostPluginEntry initialize, HostPluginEntry uninitialize);
    static MStatus Unload(const QString& name);
    static MStatus UnloadAll();
    static bool IsLoaded(const QString& name);
    static QStringList Loaded();
    // Commands registered by loaded plug-ins.
    static QStringList Commands();
};
