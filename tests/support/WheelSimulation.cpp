#include "WheelSimulation.h"

#include <QtGui/QWheelEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

void WheelSimulation::Turn(QWidget* target, int delta, Qt::KeyboardModifiers modifiers, const QPointF& pos)
{
    QWheelEvent event(pos, target->mapToGlobal(pos), QPoint(), QPoint(0, delta), Qt::NoButton, modifiers,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(target, &event);
}
