#pragma once
#include <maya/MCommandMessage.h>
#include <QtCore/QString>
#include <QtCore/QStringList>

// Everything the substitute host prints passes through here: to the registered command-output
// callbacks with its type, to standard output as Maya's terminal shows it, and into the
// reporter history that "xvGetExistingHistory" reads back.
class HostOutput
{
public:
    static void Emit(const QString& message, MCommandMessage::MessageType type);

    static QString History();
    static void ClearHistory();

    // Standard output echo can be silenced (benchmarks); on by default.
    static void SetTerminalEchoEnabled(bool enabled);
};
