#include "HostMelSession.h"

#include "HostMelBuiltins.h"
#include "HostMelInfoBuiltins.h"

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
