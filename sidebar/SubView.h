#pragma once

#include <QtCore/QList>
#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

class FlatButton;
class KeyBindings;
class OverlayWidget;
class QHBoxLayout;
class QLabel;
class QVBoxLayout;

// A collapsible section of the explorer: a title row with an arrow, a name and buttons that
// show under the mouse, above the content that subclasses add to the main layout.
class SubView : public QWidget
{
    Q_OBJECT

public:
    SubView(KeyBindings* keyBindings, QWidget* parent = nullptr);

    virtual void SetViewName(const QString& name, bool bold);
    virtual void UpdateVisibility();

    QVBoxLayout* GetMainLayout() const { return mainLayout; }
    QHBoxLayout* GetTitleLayout() const { return titleLayout; }
    KeyBindings* GetKeyBindings() const { return keyBindings; }
    bool IsExpanded() const { return expanded; }
    bool IsCollapsible() const { return collapsible; }
    void SetExpanded(bool value);
    void SetCollapable(bool value);
    void AppendTitleBarButton(FlatButton* button);
    void SetTitleBarButtonsVisible(bool visible);
    void SetOverlayVisible(bool visible);
    bool IsOverlayVisible() const;
    QSize GetTitleBarButtonSize() const;
    int TitleBarHeight() const { return titleBarHeight; }
    QRect TitleBarGeometry() const;
    QRect TitleBarLabelGeometry() const;
    QString GetTitleText() const;

signals:
    void ExpandedStateChanged();

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

    QLabel* GetArrowLabel() const { return arrowLabel; }
    QLabel* GetTitleLabel() const { return titleLabel; }

private:
    void CreateWidgets();
    void CreateLayout();
    void UpdateMainLabelWidth();

    KeyBindings* keyBindings;
    bool expanded = true;
    bool collapsible = true;
    bool titleBarButtonsAlwaysVisible = false;
    QHBoxLayout* titleLayout = nullptr;
    QVBoxLayout* mainLayout = nullptr;
    QLabel* arrowLabel = nullptr;
    QLabel* titleLabel = nullptr;
    QPixmap collapsedPixmap;
    QPixmap expandedPixmap;
    QList<FlatButton*> titleBarButtons;
    OverlayWidget* overlay = nullptr;
    int titleBarHeight = 20;
};
