#pragma once

#include <QtGui/QColor>
#include <QtWidgets/QLabel>

// The colour swatch of the dialogs: a label filled with its colour.
class ColorLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ColorLabel(QWidget* parent = nullptr);

    void SetColor(const QColor& color);
    QColor GetColor() const { return color; }

signals:
    void Clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void UpdatePixmap();

    QColor color;
};
