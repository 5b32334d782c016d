#include "HostPythonSources.h"

const HostPythonSource* HostPythonSources::Find(const QString& moduleName)
{
    std::size_t count = 0;
    const HostPythonSource* table = Table(count);
    for (std::size_t i = 0; i < count; ++i)
    {
        if (moduleName == QLatin1String(table[i].moduleName))
        {
            return &table[i];
        }
    }
    return nullptr;
}
