#pragma once

#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtWidgets/QLabel>

class QEnterEvent;

// The image button of every title bar and toolbar. A label rather than a push button, so that
// its icon can be painted in one flat colour: the tint, or white while hovered or checked.
class FlatButton : public QLabel
{
    Q_OBJECT

public:
    explicit FlatButton(QWidget* parent = nullptr);

    void SetSize(int width, int height);
    void SetSize(const QSize& size);
    void SetImage(const QImage& image, int padding);
    void SetColor(const QColor& background, const QColor& tint = QColor());
    QColor GetColor() const { return backgroundColor; }
    void SetChecked(bool value);
    bool IsChecked() const { return checked; }
    void SetMouseOverColor(const QColor& color);
    void SetMouseOverEnabled(bool enabled);
    void SetButtonDownColor(const QColor& color);
    void SetButtonDownEnabled(bool enabled);
    void SetBorderWidth(int width);

signals:
    void clicked();
    void pressed();
    void released();

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void UpdatePixmap(bool highlight);
    void UpdateStylesheet();

    QImage image;
    int imagePadding = 0;
    QColor backgroundColor;
    QColor tintColor;
    QColor currentColor;
    QColor borderColor;
    QColor buttonDownColor = QColor(30, 30, 30);
    QColor mouseOverColor = Qt::white;
    int borderWidth = 0;
    bool mouseOverEnabled = true;
    bool buttonDownEnabled = true;
    bool checked = false;
};
