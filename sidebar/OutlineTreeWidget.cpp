#include "sidebar/OutlineTreeWidget.h"

OutlineTreeWidget::OutlineTreeWidget(QWidget* parent) : QTreeWidget(parent)
{
    setHeaderHidden(true);
    setFrameStyle(0);
}

void OutlineTreeWidget::ClearAll()
{
    clear();
}

void OutlineTreeWidget::focusOutEvent(QFocusEvent* event)
{
    QTreeWidget::focusOutEvent(event);
    emit FocusOutClearSelection();
}
