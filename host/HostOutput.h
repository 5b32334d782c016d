#pragma once
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <maya/MCommandMessage.h>

// Everything the substitute host prints passes through here: to the registered command-output
// callbacks with its type, to standard output as Maya's terminal shows it, and into the
// reporter history that "xvGetExistingHistory" reads back.
//
// The history holds the text as Maya's reporter shows it: history (echo) and display messages
// as they are; info, warning, error and result messages as "// Warning: text //" and so on, one
// line each, with "#" in place of "//" while the last echoed command was Python (an echo that
// does not end in ";\n"); stack traces as they are. It keeps the newest 8 MB or so.
//
// Standard output gets what Maya's terminal gets: no echo; display and stack-trace text raw;
// info as the text and a newline; "Warning: ", "Error: " and "Result: " before the others, each
// ending in a newline.
//
// Like Maya's own display calls, these are for the main thread only.
class HostOutput
{
public:
    static void Emit(const QString& message, MCommandMessage::MessageType type);

    static QString History();
    static void ClearHistory();

    // Standard output echo can be silenced (benchmarks); on by default.
    static void SetTerminalEchoEnabled(bool enabled);

    // Error messages (and stack traces) emitted between these are dropped, as under MEL's
    // catchQuiet. Calls nest.
    static void BeginErrorSuppression();
    static void EndErrorSuppression();
};
