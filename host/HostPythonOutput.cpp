#include "HostPythonOutput.h"
#include "HostOutput.h"

namespace
{

struct PendingText
{
    QString display;
    QString error;
};

PendingText& Pending()
{
    static PendingText pending;
    return pending;
}

void EmitError(QString line)
{
    if (line.endsWith(QLatin1Char('\n')))
    {
        line.chop(1);
    }
    if (!line.isEmpty())
    {
        HostOutput::Emit(line, MCommandMessage::kError);
    }
}

void EmitPart(const QString& part, MCommandMessage::MessageType type)
{
    if (type == MCommandMessage::kError)
    {
        EmitError(part);
    }
    else if (!part.isEmpty())
    {
        HostOutput::Emit(part, type);
    }
}

// Takes the text out of the buffer before sending it: a receiver may write again.
void EmitLines(QString& buffer, MCommandMessage::MessageType type)
{
    qsizetype end = buffer.indexOf(QLatin1Char('\n'));
    while (end >= 0)
    {
        const QString line = buffer.left(end + 1);
        buffer.remove(0, end + 1);
        EmitPart(line, type);
        end = buffer.indexOf(QLatin1Char('\n'));
    }
}

void EmitRest(QString& buffer, MCommandMessage::MessageType type)
{
    const QString rest = buffer;
    buffer.clear();
    EmitPart(rest, type);
}

} // namespace

void HostPythonOutput::Write(const QString& text, MCommandMessage::MessageType type)
{
    PendingText& pending = Pending();
    if (type == MCommandMessage::kDisplay)
    {
        // The other stream's unfinished line goes first, to keep the order of the writes.
        EmitRest(pending.error, MCommandMessage::kError);
        pending.display += text;
        EmitLines(pending.display, type);
    }
    else if (type == MCommandMessage::kError)
    {
        EmitRest(pending.display, MCommandMessage::kDisplay);
        pending.error += text;
        EmitLines(pending.error, type);
    }
    else
    {
        Flush();
        HostOutput::Emit(text, type);
    }
}

void HostPythonOutput::Flush()
{
    PendingText& pending = Pending();
    EmitRest(pending.display, MCommandMessage::kDisplay);
    EmitRest(pending.error, MCommandMessage::kError);
}
