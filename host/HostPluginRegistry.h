#pragma once
#include "HostPlugins.h"
#include <QtCore/QString>
#include <maya/MFnPlugin.h>
#include <memory>
#include <vector>

struct HostPluginCommand
{
    QString name;
    MCreatorFunction creator = nullptr;
    MCreateSyntaxFunction syntax = nullptr;
};

// One plug-in as the host knows it. The MObject handed to its entry points points at this record;
// handles are always checked against the live records before use, so a stale one fails cleanly.
struct HostPluginRecord
{
    enum class State
    {
        Loading,
        Loaded,
        Unloading
    };

    QString name;
    HostPluginEntry initialize = nullptr;
    HostPluginEntry uninitialize = nullptr;
    QString vendor;
    QString version;
    State state = State::Loading;
    std::vector<HostPluginCommand> commands;
};

// The records behind HostPlugins and MFnPlugin, in load order.
class HostPluginRegistry
{
public:
    static std::vector<std::unique_ptr<HostPluginRecord>>& Records();
    static HostPluginRecord* FromHandle(const void* handle);
    static HostPluginRecord* FromName(const QString& name);
    static void Erase(const HostPluginRecord* record);
    static const HostPluginCommand* FindCommand(const QString& name);
};
