#pragma once

#include <QtCore/QPointF>
#include <QtCore/Qt>

class QWidget;

// A wheel turned over a widget as the window system delivers it: `delta` in eighths of a degree,
// 120 for one notch up.
class WheelSimulation
{
public:
    static void Turn(QWidget* target, int delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                     const QPointF& pos = QPointF(5, 5));
};
