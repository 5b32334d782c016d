#include "HostPlugins.h"

#include "HostMel.h"
#include "HostObjectHandle.h"
#include "HostPluginRegistry.h"

#include <algorithm>

namespace
{
MStatus CallEntry(HostPluginEntry entry, HostPluginRecord* record)
{
    if (!entry)
        return MStatus::kSuccess;
    try
    {
        return entry(HostObjectHandle::Make(record));
    }
    catch (...)
    {
        // A plug-in's exception must not unwind through the host.
        return MStatus::kFailure;
    }
}

QString StatusText(const MStatus& status)
{
    return QString::fromUtf8(status.errorString().asChar());
}
} // namespace

std::vector<std::unique_ptr<HostPluginRecord>>& HostPluginRegistry::Records()
{
    static std::vector<std::unique_ptr<HostPluginRecord>> records;
    return records;
}

HostPluginRecord* HostPluginRegistry::FromHandle(const void* handle)
{
    for (const std::unique_ptr<HostPluginRecord>& record : Records())
    {
        if (record.get() == handle)
            return record.get();
    }
    return nullptr;
}

HostPluginRecord* HostPluginRegistry::FromName(const QString& name)
{
    for (const std::unique_ptr<HostPluginRecord>& record : Records())
    {
        if (record->name == name)
            return record.get();
    }
    return nullptr;
}

void HostPluginRegistry::Erase(const HostPluginRecord* record)
{
    auto& records = Records();
    records.erase(std::remove_if(records.begin(), records.end(),
                                 [record](const std::unique_ptr<HostPluginRecord>& r)
                                 { return r.get() == record; }),
                  records.end());
}

const HostPluginCommand* HostPluginRegistry::FindCommand(const QString& name)
{
    for (const std::unique_ptr<HostPluginRecord>& record : Records())
    {
        for (const HostPluginCommand& command : record->commands)
        {
            if (command.name == name)
                return &command;
        }
    }
    return nullptr;
}

MStatus HostPlugins::Load(const QString& name, HostPluginEntry initialize, HostPluginEntry uninitialize)
{
    if (name.isEmpty() || !initialize)
        return MStatus::kInvalidParameter;
    if (HostPluginRegistry::FromName(name))
    {
        HostMel::ReportError(QStringLiteral("Plug-in \"%1\" is already loaded.").arg(name));
        return MStatus::kFailure;
    }
    auto owned = std::make_unique<HostPluginRecord>();
    HostPluginRecord* record = owned.get();
    record->name = name;
    record->initialize = initialize;
    record->uninitialize = uninitialize;
    HostPluginRegistry::Records().push_back(std::move(owned));

    const MStatus status = CallEntry(initialize, record);
    record = HostPluginRegistry::FromHandle(record);
    if (!record)
        return MStatus::kFailure;
    if (!status)
    {
        // A plug-in that fails to start leaves nothing behind, its commands included.
        HostPluginRegistry::Erase(record);
        HostMel::ReportError(
            QStringLiteral("(%1) : initializePlugin function failed (%2)").arg(name, StatusText(status)));
        return status;
    }
    record->state = HostPluginRecord::State::Loaded;
    return MStatus::kSuccess;
}

MStatus HostPlugins::Unload(const QString& name)
{
    HostPluginRecord* record = HostPluginRegistry::FromName(name);
    if (!record)
    {
        HostMel::ReportError(QStringLiteral("Plug-in \"%1\" is not loaded.").arg(name));
        return MStatus::kInvalidParameter;
    }
    if (record->state != HostPluginRecord::State::Loaded)
        return MStatus::kFailure;
    record->state = HostPluginRecord::State::Unloading;
    const MStatus status = CallEntry(record->uninitialize, record);
    record = HostPluginRegistry::FromHandle(record);
    if (!record)
        return status;
    if (!status)
    {
        // As in Maya: a plug-in that refuses to stop stays loaded, commands and all.
        record->state = HostPluginRecord::State::Loaded;
        HostMel::ReportError(
            QStringLiteral("(%1) : uninitializePlugin function failed (%2)").arg(name, StatusText(status)));
        return status;
    }
    HostPluginRegistry::Erase(record);
    return MStatus::kSuccess;
}

MStatus HostPlugins::UnloadAll()
{
    MStatus result;
    QStringList names = Loaded();
    std::reverse(names.begin(), names.end());
    for (const QString& name : names)
    {
        if (!IsLoaded(name))
            continue;
        const MStatus status = Unload(name);
        if (!status)
            result = status;
    }
    return result;
}

bool HostPlugins::IsLoaded(const QString& name)
{
    const HostPluginRecord* record = HostPluginRegistry::FromName(name);
    return record && record->state != HostPluginRecord::State::Loading;
}

QStringList HostPlugins::Loaded()
{
    QStringList names;
    for (const std::unique_ptr<HostPluginRecord>& record : HostPluginRegistry::Records())
    {
        if (record->state != HostPluginRecord::State::Loading)
            names.append(record->name);
    }
    return names;
}

QStringList HostPlugins::Commands()
{
    QStringList names;
    for (const std::unique_ptr<HostPluginRecord>& record : HostPluginRegistry::Records())
    {
        for (const HostPluginCommand& command : record->commands)
            names.append(command.name);
    }
    return names;
}
