#pragma once
#include <QtCore/QString>
#include <maya/MCommandMessage.h>

// Python's standard streams, as command output: what is written is held until a line is complete
// (or until Flush, at the end of each call into Python) so that print(6*7) is one message "42\n".
// Standard output becomes kDisplay messages with their line feeds; standard error becomes one
// kError message per line, without the line feed, as the output view wraps each error itself.
class HostPythonOutput
{
public:
    // kDisplay and kError are buffered as above; any other type is sent at once.
    static void Write(const QString& text, MCommandMessage::MessageType type);
    // Sends what is left of an unfinished line of either stream.
    static void Flush();
};
