#pragma once
#include <QtWidgets/QToolButton>

// A button of Maya's status line: an icon that runs a MEL command when clicked. Its name,
// command and annotation are what "symbolButton" edits and queries.
class HostSymbolButton : public QToolButton
{
    Q_OBJECT

public:
    HostSymbolButton(const QString& name, const QString& text, const QString& command,
                     const QString& annotation, QWidget* parent = nullptr);

    QString Command() const;
    void SetCommand(const QString& command);
    QString Annotation() const;
    void SetAnnotation(const QString& annotation);

private:
    void RunCommand() const;

    QString command;
};
