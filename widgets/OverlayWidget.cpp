#include "widgets/OverlayWidget.h"

#include <QtGui/QPainter>

OverlayWidget::OverlayWidget(QWidget* parent) : QWidget(parent) {}

void OverlayWidget::paintEvent(QPaintEvent* event)
{
    Q_UNUSED(event)
    const QWidget* parent = parentWidget();
    if (!parent)
        return;
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, parent->width(), parent->height()), QColor(255, 255, 255, 50));
}
