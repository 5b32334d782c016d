#pragma once
#include "HostMel.h"
#include "HostMelAst.h"
#include <QtCore/QHash>
#include <functional>
#include <memory>
#include <vector>

// A built-in whose arguments must keep their MEL types (print, size): positional values only.
using HostMelValueHandler =
    std::function<MStatus(const std::vector<HostMelValue>& values, HostMelValue& result)>;

struct HostMelBuiltin
{
    QList<HostMelFlagSpec> flags;
    HostMelHandler handler;
    HostMelValueHandler valueHandler; // used instead of handler when set
};

struct HostMelVariable
{
    HostMelValue value;
    HostMelValue::Type type = HostMelValue::Type::None;
};

using HostMelScope = QHash<QString, std::shared_ptr<HostMelVariable>>;

// Everything the MEL layer remembers for the session.
class HostMelSession
{
public:
    static HostMelSession& Instance();

    QHash<QString, HostMelBuiltin> builtins;
    QHash<QString, QString> runTimeCommands; // name -> MEL it runs
    QHash<QString, HostMelHandler> substitutes;
    QHash<QString, std::shared_ptr<HostMelProcedure>> procedures;
    HostMelScope globals;

    int currentLine = 0;     // of the statement running now; 0 outside MEL
    int depth = 0;           // nested scripts and procedure calls
    QStringList sourceFiles; // files being sourced, innermost last

    static constexpr int MAX_DEPTH = 120;

    // Where the outermost running script's frame is; null when none runs.
    const char* stackBase = nullptr;
    // True when the stack has grown too far below stackBase to go deeper safely.
    bool StackExhausted() const;

private:
    HostMelSession();
};

// Restores the session's current line when a nested run ends.
class HostMelLineScope
{
public:
    HostMelLineScope() : saved_(HostMelSession::Instance().currentLine) {}
    ~HostMelLineScope() { HostMelSession::Instance().currentLine = saved_; }
    HostMelLineScope(const HostMelLineScope&) = delete;
    HostMelLineScope& operator=(const HostMelLineScope&) = delete;

private:
    int saved_;
};
