#pragma once

#include <QtWidgets/QWidget>

// A translucent white cover laid over its parent, e.g. where a dragged tab would land.
class OverlayWidget : public QWidget
{
    Q_OBJECT

public:
    explicit OverlayWidget(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
