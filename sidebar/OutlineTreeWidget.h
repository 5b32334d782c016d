#pragma once

#include <QtWidgets/QTreeWidget>

// The outline's tree; it tells the view when the focus leaves, so that the highlight goes
// without moving the editor.
class OutlineTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    explicit OutlineTreeWidget(QWidget* parent = nullptr);

    void ClearAll();

signals:
    void FocusOutClearSelection();

protected:
    void focusOutEvent(QFocusEvent* event) override;
};
