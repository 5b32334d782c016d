#include "settings/KeySequenceLineEdit.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QKeySequence>

KeySequenceLineEdit::KeySequenceLineEdit(QWidget* parent) : QLineEdit(parent) {}

void KeySequenceLineEdit::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Meta || key == Qt::Key_Alt ||
        key == Qt::Key_unknown)
        return;
    const Qt::KeyboardModifiers modifiers =
        event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const QKeySequence sequence(QKeyCombination(modifiers, static_cast<Qt::Key>(key)));
    setText(sequence.toString(QKeySequence::PortableText));
    emit textEdited(text());
}
