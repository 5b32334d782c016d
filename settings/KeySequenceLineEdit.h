#pragma once

#include <QtWidgets/QLineEdit>

// Shows the key combination pressed in it instead of the typed text.
class KeySequenceLineEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit KeySequenceLineEdit(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
