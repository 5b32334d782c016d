#pragma once

#include "sidebar/SideBarView.h"

#include <QtWidgets/QWidget>

class KeyBindings;
class QToolButton;
class QVBoxLayout;

// The narrow column of view buttons beside the side bar.
// For now it holds the three view buttons only; the settings menu comes with the side bar views.
class ActivityBar : public QWidget
{
    Q_OBJECT

public:
    ActivityBar(KeyBindings* keyBindings, QWidget* parent = nullptr);

    void SetView(SideBarView view);
    SideBarView GetView() const { return view; }
    void UpdateKeyBindings();

signals:
    void ViewSelected(SideBarView view);
    void ActivityBarVisibilityChangeRequested(bool visibility);

public slots:
    void OnViewSelected();

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    QToolButton* CreateViewButton(const QString& iconName, const QString& toolTip);

    KeyBindings* keyBindings;
    SideBarView view = SideBarViewExplorer;
    QList<QToolButton*> viewButtons;
    QVBoxLayout* mainLayout = nullptr;
};
