#pragma once
#include <QtCore/QString>

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
};
