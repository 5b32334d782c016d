#pragma once
#include <QtCore/QString>
#include <functional>

// Process-wide facts of the substitute host.
class HostState
{
public:
    static void SetBatch(bool batch);
    static bool IsBatch();
    // "$MAYA_APP_DIR/2026/prefs/" with MAYA_APP_DIR defaulting to "~/maya"; created on demand.
    static QString UserPrefDir();
    static QString UserScriptDir();
    static QString MayaVersion(); // "2026"
    // "$MAYA_APP_DIR/" (default "~/maya/"), Maya's "internalVar -userAppDir".
    static QString MayaAppDir();

    // What MEL's "quit" calls; without a handler quitting does nothing.
    static void SetQuitHandler(std::function<void()> handler);
    // Calls the handler; false if none is set.
    static bool RequestQuit();
};
