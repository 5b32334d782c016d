#include "HostSymbolButton.h"
#include "HostMel.h"

HostSymbolButton::HostSymbolButton(const QString& name, const QString& text, const QString& command,
                                   const QString& annotation, QWidget* parent)
    : QToolButton(parent), command(command)
{
    setObjectName(name);
    setText(text);
    setAutoRaise(true);
    SetAnnotation(annotation);
    connect(this, &QToolButton::clicked, this, &HostSymbolButton::RunCommand);
}

QString HostSymbolButton::Command() const
{
    return command;
}

void HostSymbolButton::SetCommand(const QString& newCommand)
{
    command = newCommand;
}

QString HostSymbolButton::Annotation() const
{
    return toolTip();
}

void HostSymbolButton::SetAnnotation(const QString& annotation)
{
    setToolTip(annotation);
    setStatusTip(annotation);
}

void HostSymbolButton::RunCommand() const
{
    if (!command.isEmpty())
        HostMel::Execute(command, nullptr, true);
}
