#include <maya/MFnPlugin.h>

#include "HostMel.h"
#include "HostObjectHandle.h"
#include "HostPluginRegistry.h"

namespace
{
QString ToQString(const MString& text)
{
    return QString::fromUtf8(text.asChar());
}

MString ToMString(const QString& text)
{
    return MString(text.toUtf8().constData());
}
} // namespace

MFnPlugin::MFnPlugin() = default;

MFnPlugin::MFnPlugin(MObject& object, const char* vendor, const char* version,
                     const char* /*requiredApiVersion*/, MStatus* returnStatus)
{
    HostPluginRecord* record = HostPluginRegistry::FromHandle(HostObjectHandle::Of(object));
    if (record)
    {
        record->vendor = QString::fromUtf8(vendor ? vendor : "");
        record->version = QString::fromUtf8(version ? version : "");
        record_ = record;
    }
    if (returnStatus)
        *returnStatus = record ? MStatus::kSuccess : MStatus::kInvalidParameter;
}

MFnPlugin::~MFnPlugin() = default;

MString MFnPlugin::vendor(MStatus* returnStatus) const
{
    const HostPluginRecord* record = HostPluginRegistry::FromHandle(record_);
    if (returnStatus)
        *returnStatus = record ? MStatus::kSuccess : MStatus::kFailure;
    return record ? ToMString(record->vendor) : MString();
}

MString MFnPlugin::version(MStatus* returnStatus) const
{
    const HostPluginRecord* record = HostPluginRegistry::FromHandle(record_);
    if (returnStatus)
        *returnStatus = record ? MStatus::kSuccess : MStatus::kFailure;
    return record ? ToMString(record->version) : MString();
}

MString MFnPlugin::name(MStatus* returnStatus) const
{
    const HostPluginRecord* record = HostPluginRegistry::FromHandle(record_);
    if (returnStatus)
        *returnStatus = record ? MStatus::kSuccess : MStatus::kFailure;
    return record ? ToMString(record->name) : MString();
}

MStatus MFnPlugin::registerCommand(const MString& commandName, MCreatorFunction creatorFunction,
                                   MCreateSyntaxFunction createSyntaxFunction)
{
    HostPluginRecord* record = HostPluginRegistry::FromHandle(record_);
    if (!record)
        return MStatus::kFailure;
    const QString name = ToQString(commandName);
    if (name.isEmpty() || !creatorFunction)
        return MStatus::kInvalidParameter;
    if (HostMel::CommandExists(name))
        return MStatus::kFailure;
    record->commands.push_back(HostPluginCommand{name, creatorFunction, createSyntaxFunction});
    return MStatus::kSuccess;
}

MStatus MFnPlugin::deregisterCommand(const MString& commandName)
{
    HostPluginRecord* record = HostPluginRegistry::FromHandle(record_);
    if (!record)
        return MStatus::kFailure;
    const QString name = ToQString(commandName);
    auto& commands = record->commands;
    for (auto it = commands.begin(); it != commands.end(); ++it)
    {
        if (it->name == name)
        {
            commands.erase(it);
            return MStatus::kSuccess;
        }
    }
    return MStatus::kFailure;
}
