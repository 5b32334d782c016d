#pragma once

class HostMelSession;

// The MEL commands that answer about the session or keep its options: about, internalVar,
// mayaDpiSetting, help, melInfo, whatIs, commandEcho, stackTrace, scriptEditorInfo, optionVar.
class HostMelInfoBuiltins
{
public:
    static void Register(HostMelSession& session);
};
