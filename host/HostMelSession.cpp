#include "HostMelSession.h"

#include "HostMelBuiltins.h"
#include "HostMelInfoBuiltins.h"

#include <cstddef>

namespace
{
// Well inside the 8 MB a thread's stack has on Linux, whatever ran before the script.
constexpr std::ptrdiff_t STACK_BUDGET = 2 * 1024 * 1024;
} // namespace

bool HostMelSession::StackExhausted() const
{
    if (!stackBase)
        return false;
    const char marker = 0;
    const std::ptrdiff_t used = stackBase - &marker;
    return used > STACK_BUDGET || used < -STACK_BUDGET;
}

HostMelSession::HostMelSession()
{
    HostMelBuiltins::Register(*this);
    HostMelInfoBuiltins::Register(*this);
}

// Never destroyed: MEL may still be run from other static destructors at exit.
HostMelSession& HostMelSession::Instance()
{
    static HostMelSession* session = new HostMelSession;
    return *session;
}
