#include "HostOutput.h"

#include "HostCallbacks.h"

#include <QtCore/QMutex>

#include <cstdio>

namespace
{
struct OutputState
{
    QString history;
    QString commentPrefix = QStringLiteral("//");
    bool terminalEcho = true;
    int errorSuppression = 0;
};

// Never destroyed: output can still arrive from other static destructors at exit.
OutputState& State()
{
    static OutputState* state = new OutputState;
    return *state;
}

constexpr qsizetype MAX_HISTORY = 8 * 1024 * 1024;

QString Wrapped(const QString& label, const QString& message)
{
    const QString& prefix = State().commentPrefix;
    return QStringLiteral("%1 %2%3 %1\n").arg(prefix, label, message);
}

QString HistoryText(const QString& message, MCommandMessage::MessageType type)
{
    switch (type)
    {
    case MCommandMessage::kInfo:
        return Wrapped(QString(), message);
    case MCommandMessage::kWarning:
        return Wrapped(QStringLiteral("Warning: "), message);
    case MCommandMessage::kError:
        return Wrapped(QStringLiteral("Error: "), message);
    case MCommandMessage::kResult:
        return Wrapped(QStringLiteral("Result: "), message);
    default:
        return message;
    }
}

QString TerminalText(const QString& message, MCommandMessage::MessageType type)
{
    switch (type)
    {
    case MCommandMessage::kHistory:
        return QString();
    case MCommandMessage::kInfo:
        return message + QLatin1Char('\n');
    case MCommandMessage::kWarning:
        return QStringLiteral("Warning: ") + message + QLatin1Char('\n');
    case MCommandMessage::kError:
        return QStringLiteral("Error: ") + message + QLatin1Char('\n');
    case MCommandMessage::kResult:
        return QStringLiteral("Result: ") + message + QLatin1Char('\n');
    default:
        return message;
    }
}

void AppendHistory(const QString& message, MCommandMessage::MessageType type)
{
    OutputState& state = State();
    if (type == MCommandMessage::kHistory)
        state.commentPrefix =
            message.endsWith(QLatin1String(";\n")) ? QStringLiteral("//") : QStringLiteral("#");
    state.history += HistoryText(message, type);
    if (state.history.size() > MAX_HISTORY)
    {
        // Drop the oldest quarter, up to the end of a line.
        qsizetype cut = state.history.indexOf(QLatin1Char('\n'), MAX_HISTORY / 4);
        cut = cut < 0 ? MAX_HISTORY / 4 : cut + 1;
        state.history.remove(0, cut);
    }
}

void WriteTerminal(const QString& message, MCommandMessage::MessageType type)
{
    if (!State().terminalEcho)
        return;
    const QByteArray bytes = TerminalText(message, type).toUtf8();
    if (bytes.isEmpty())
        return;
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}
} // namespace

void HostOutput::Emit(const QString& message, MCommandMessage::MessageType type)
{
    // Plug-in threads print too (a checker's worker reporting a failure): one message at a time.
    static QRecursiveMutex* mutex = new QRecursiveMutex;
    QMutexLocker lock(mutex);
    const bool isError = type == MCommandMessage::kError || type == MCommandMessage::kStackTrace;
    if (isError && State().errorSuppression > 0)
        return;
    HostCallbacks::DispatchOutput(MString(message.toUtf8().constData()), type);
    AppendHistory(message, type);
    WriteTerminal(message, type);
}

QString HostOutput::History()
{
    return State().history;
}

void HostOutput::ClearHistory()
{
    State().history.clear();
}

void HostOutput::SetTerminalEchoEnabled(bool enabled)
{
    State().terminalEcho = enabled;
}

void HostOutput::BeginErrorSuppression()
{
    ++State().errorSuppression;
}

void HostOutput::EndErrorSuppression()
{
    if (State().errorSuppression > 0)
        --State().errorSuppression;
}
