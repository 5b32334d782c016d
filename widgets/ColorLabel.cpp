#include "widgets/ColorLabel.h"

#include <QtGui/QPixmap>

ColorLabel::ColorLabel(QWidget* parent) : QLabel(parent) {}

void ColorLabel::SetColor(const QColor& newColor)
{
    color = newColor;
    UpdatePixmap();
}

void ColorLabel::UpdatePixmap()
{
    if (width() <= 0 || height() <= 0)
    {
        setPixmap(QPixmap());
        return;
    }
    QPixmap pixmap(size());
    pixmap.fill(color.isValid() ? color : QColor(Qt::transparent));
    setPixmap(pixmap);
}

void ColorLabel::mouseReleaseEvent(QMouseEvent* event)
{
    QLabel::mouseReleaseEvent(event);
    emit Clicked();
}

void ColorLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    UpdatePixmap();
}
