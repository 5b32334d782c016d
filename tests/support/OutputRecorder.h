#pragma once

#include <maya/MCommandMessage.h>
#include <maya/MTypes.h>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

// Records every message the host prints, with its type, for as long as it lives.
class OutputRecorder
{
public:
    struct Message
    {
        MCommandMessage::MessageType type;
        QString text;
    };

    OutputRecorder();
    ~OutputRecorder();
    OutputRecorder(const OutputRecorder&) = delete;
    OutputRecorder& operator=(const OutputRecorder&) = delete;

    QStringList Texts(MCommandMessage::MessageType type) const;
    QString Printed() const { return Texts(MCommandMessage::kDisplay).join(QString()); }
    QStringList Errors() const { return Texts(MCommandMessage::kError); }
    bool Contains(const QString& fragment) const;
    // Every message as "type:text", joined by '|': order and kind at a glance.
    QString Described() const;

    QList<Message> messages;

private:
    static void Record(const MString& text, MCommandMessage::MessageType type, void* data);

    MCallbackId id = 0;
};
