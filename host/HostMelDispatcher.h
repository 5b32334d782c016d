#pragma once
#include "HostMelValue.h"
#include <QtCore/QString>
#include <vector>

struct HostMelProcedure;
struct HostMelBuiltin;
struct HostPluginCommand;
struct HostMelCall;
struct HostMelFlagSpec;

// An evaluated argument: a flag as written ("-of"), or a value.
struct HostMelToken
{
    QString flag;
    HostMelValue value;
};

// Runs a command or procedure by name: plug-in commands, built-ins, run-time commands, then
// procedures (through their native substitute where one is registered).
class HostMelDispatcher
{
public:
    static bool Run(const QString& name, const std::vector<HostMelToken>& tokens, HostMelValue& result);

    // Sorts tokens into a HostMelCall by the flag table; reports a bad flag as Maya does.
    static bool BuildCall(const QString& name, const QList<HostMelFlagSpec>& specs,
                          const std::vector<HostMelToken>& tokens, HostMelCall& call);

private:
    static bool RunPluginCommand(const HostPluginCommand& command, const std::vector<HostMelToken>& tokens,
                                 HostMelValue& result);
    static bool RunBuiltin(const QString& name, const HostMelBuiltin& builtin,
                           const std::vector<HostMelToken>& tokens, HostMelValue& result);
    static bool RunProcedure(const std::shared_ptr<HostMelProcedure>& procedure,
                             const std::vector<HostMelToken>& tokens, HostMelValue& result);
};
