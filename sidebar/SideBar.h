#pragma once

#include "sidebar/SideBarView.h"

#include <QtWidgets/QWidget>

class KeyBindings;
class QLabel;
class QStackedWidget;

// The stack of side bar views. The views themselves (workspace, outline, open editors,
// search, quick help) are still to come: each page is an empty titled pane for now.
class SideBar : public QWidget
{
    Q_OBJECT

public:
    SideBar(KeyBindings* keyBindings, QWidget* parent = nullptr);

    void SetView(SideBarView view);
    SideBarView GetView() const;
    void SaveState();
    void SaveOutline();
    void SaveWorkspace();
    void ClearInvalidDetailsFromOutline(const QStringList& paths);
    void UpdateKeyBindings();

signals:
    void SideBarVisibilityChangeRequested(bool visible);
    void ViewChangeRequested(SideBarView view);

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    QWidget* CreatePage(const QString& title);

    KeyBindings* keyBindings;
    QStackedWidget* stack = nullptr;
};
