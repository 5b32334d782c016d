#include "OutputRecorder.h"

#include <maya/MMessage.h>
#include <maya/MString.h>

OutputRecorder::OutputRecorder()
{
    id = MCommandMessage::addCommandOutputCallback(&OutputRecorder::Record, this);
}

OutputRecorder::~OutputRecorder()
{
    MMessage::removeCallback(id);
}

QStringList OutputRecorder::Texts(MCommandMessage::MessageType type) const
{
    QStringList texts;
    for (const Message& message : messages)
    {
        if (message.type == type)
            texts.append(message.text);
    }
    return texts;
}

bool OutputRecorder::Contains(const QString& fragment) const
{
    for (const Message& message : messages)
    {
        if (message.text.contains(fragment))
            return true;
    }
    return false;
}

QString OutputRecorder::Described() const
{
    QStringList lines;
    for (const Message& message : messages)
        lines.append(QStringLiteral("%1:%2").arg(int(message.type)).arg(message.text));
    return lines.join(QLatin1Char('|'));
}

void OutputRecorder::Record(const MString& text, MCommandMessage::MessageType type, void* data)
{
    static_cast<OutputRecorder*>(data)->messages.append({type, QString::fromUtf8(text.asUTF8())});
}
