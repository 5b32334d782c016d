#include "widgets/FlatButton.h"

#include "settings/Settings.h"

#include <QtGui/QEnterEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>

FlatButton::FlatButton(QWidget* parent) : QLabel(parent)
{
    backgroundColor = palette().window().color();
    borderColor = backgroundColor;
    currentColor = backgroundColor;
    setAlignment(Qt::AlignCenter);
    SetSize(30, 30);
    UpdateStylesheet();
}

void FlatButton::SetSize(int width, int height)
{
    const double scale = Settings::customScaleValue;
    if (scale != 1.0 && scale > 0.0)
    {
        width = static_cast<int>(width * scale);
        height = static_cast<int>(height * scale);
    }
    setFixedSize(width, height);
}

void FlatButton::SetSize(const QSize& size)
{
    SetSize(size.width(), size.height());
}

void FlatButton::SetImage(const QImage& newImage, int padding)
{
    image = newImage;
    imagePadding = padding;
    UpdatePixmap(false);
}

void FlatButton::SetColor(const QColor& background, const QColor& tint)
{
    backgroundColor = background.isValid() ? background : borderColor;
    currentColor = backgroundColor;
    tintColor = tint;
    UpdatePixmap(false);
    UpdateStylesheet();
}

void FlatButton::SetChecked(bool value)
{
    if (checked == value)
        return;
    checked = value;
    UpdatePixmap(false);
}

void FlatButton::SetMouseOverColor(const QColor& color)
{
    mouseOverColor = color;
}

void FlatButton::SetMouseOverEnabled(bool enabled)
{
    mouseOverEnabled = enabled;
}

void FlatButton::SetButtonDownColor(const QColor& color)
{
    buttonDownColor = color;
}

void FlatButton::SetButtonDownEnabled(bool enabled)
{
    buttonDownEnabled = enabled;
}

void FlatButton::SetBorderWidth(int width)
{
    borderWidth = width;
    UpdateStylesheet();
}

void FlatButton::UpdatePixmap(bool highlight)
{
    if (image.isNull())
    {
        setPixmap(QPixmap());
        return;
    }
    const QSize target(qMax(1, width() - imagePadding), qMax(1, height() - imagePadding));
    QImage scaled = image.scaled(target, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (tintColor.isValid() || highlight || checked)
    {
        // SourceIn keeps the icon's alpha and replaces its colours: one flat shape.
        QPainter painter(&scaled);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(scaled.rect(), tintColor.isValid() ? tintColor : mouseOverColor);
    }
    setPixmap(QPixmap::fromImage(scaled));
}

void FlatButton::UpdateStylesheet()
{
    setStyleSheet(QStringLiteral("QLabel { background-color : %1; border-radius: 0; border-width: %2; "
                                 "border-color: %3; border-style: solid }")
                      .arg(currentColor.name())
                      .arg(borderWidth)
                      .arg(borderColor.name()));
}

void FlatButton::enterEvent(QEnterEvent* event)
{
    QLabel::enterEvent(event);
    if (mouseOverEnabled)
        UpdatePixmap(true);
}

void FlatButton::leaveEvent(QEvent* event)
{
    QLabel::leaveEvent(event);
    if (mouseOverEnabled)
        UpdatePixmap(false);
}

void FlatButton::showEvent(QShowEvent* event)
{
    QLabel::showEvent(event);
    UpdatePixmap(false);
}

void FlatButton::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    UpdatePixmap(false);
}

void FlatButton::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
    {
        QLabel::mousePressEvent(event);
        return;
    }
    if (buttonDownEnabled)
    {
        currentColor = buttonDownColor;
        UpdateStylesheet();
    }
    emit pressed();
}

void FlatButton::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
    {
        QLabel::mouseReleaseEvent(event);
        return;
    }
    if (currentColor != backgroundColor)
    {
        currentColor = backgroundColor;
        UpdateStylesheet();
    }
    // Decided before any signal: a receiver may delete the button.
    const bool inside = rect().contains(event->position().toPoint());
    emit released();
    if (inside)
        emit clicked();
}
