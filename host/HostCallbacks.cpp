#include "HostCallbacks.h"

#include <map>
#include <vector>

namespace
{
struct Entry
{
    QString eventName; // empty for command-output callbacks
    MMessage::MBasicFunction basic = nullptr;
    MCommandMessage::MMessageFunction output = nullptr;
    void* clientData = nullptr;
};

struct Table
{
    std::map<MCallbackId, Entry> entries; // ordered by id, so in registration order
    MCallbackId nextId = 1;
    std::vector<MCallbackId> running;
    int outputDepth = 0;
};

// Never destroyed: output can still arrive from other static destructors at exit.
Table& TheTable()
{
    static Table* table = new Table;
    return *table;
}

// Output produced by an output callback is passed on, but not without bound.
constexpr int MAX_OUTPUT_DEPTH = 8;

template <typename Call> void RunGuarded(MCallbackId id, Call call)
{
    Table& table = TheTable();
    table.running.push_back(id);
    try
    {
        call();
    }
    catch (...)
    {
        // A callback's exception must not unwind through the host.
    }
    table.running.pop_back();
}

std::vector<MCallbackId> Snapshot(bool output, const QString& eventName)
{
    std::vector<MCallbackId> ids;
    for (const auto& [id, entry] : TheTable().entries)
    {
        if (output ? (entry.output != nullptr) : (entry.basic != nullptr && entry.eventName == eventName))
            ids.push_back(id);
    }
    return ids;
}
} // namespace

MCallbackId HostCallbacks::AddEventCallback(const QString& eventName, MMessage::MBasicFunction function,
                                            void* clientData)
{
    if (!function || eventName.isEmpty())
        return 0;
    Table& table = TheTable();
    const MCallbackId id = table.nextId++;
    table.entries[id] = Entry{eventName, function, nullptr, clientData};
    return id;
}

MCallbackId HostCallbacks::AddOutputCallback(MCommandMessage::MMessageFunction function, void* clientData)
{
    if (!function)
        return 0;
    Table& table = TheTable();
    const MCallbackId id = table.nextId++;
    table.entries[id] = Entry{QString(), nullptr, function, clientData};
    return id;
}

bool HostCallbacks::Remove(MCallbackId id)
{
    return TheTable().entries.erase(id) > 0;
}

void HostCallbacks::FireEvent(const QString& eventName)
{
    for (const MCallbackId id : Snapshot(false, eventName))
    {
        const auto it = TheTable().entries.find(id);
        if (it == TheTable().entries.end())
            continue;
        const Entry entry = it->second;
        RunGuarded(id, [&entry] { entry.basic(entry.clientData); });
    }
}

void HostCallbacks::DispatchOutput(const MString& message, MCommandMessage::MessageType type)
{
    Table& table = TheTable();
    if (table.outputDepth >= MAX_OUTPUT_DEPTH)
        return;
    ++table.outputDepth;
    for (const MCallbackId id : Snapshot(true, QString()))
    {
        const auto it = table.entries.find(id);
        if (it == table.entries.end())
            continue;
        const Entry entry = it->second;
        RunGuarded(id, [&] { entry.output(message, type, entry.clientData); });
    }
    --table.outputDepth;
}

int HostCallbacks::EventCallbackCount()
{
    int count = 0;
    for (const auto& item : TheTable().entries)
        count += item.second.basic != nullptr ? 1 : 0;
    return count;
}

int HostCallbacks::OutputCallbackCount()
{
    int count = 0;
    for (const auto& item : TheTable().entries)
        count += item.second.output != nullptr ? 1 : 0;
    return count;
}

MCallbackId HostCallbacks::CurrentId()
{
    const Table& table = TheTable();
    return table.running.empty() ? 0 : table.running.back();
}
