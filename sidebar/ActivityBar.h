#pragma once

#include "settings/PreferencePage.h"
#include "sidebar/SideBarView.h"

#include <QtWidgets/QWidget>

class FlatButton;
class KeyBindings;
class QMenu;
class QVBoxLayout;

// The narrow column of view buttons beside the side bar, with the settings menu at its foot.
class ActivityBar : public QWidget
{
    Q_OBJECT

public:
    ActivityBar(KeyBindings* keyBindings, QWidget* parent = nullptr);

    void SetView(SideBarView view);
    SideBarView GetView() const { return view; }
    void UpdateKeyBindings();
    FlatButton* GetViewButton(SideBarView view) const;
    FlatButton* GetSettingsButton() const { return settingsButton; }

signals:
    void ViewSelected(SideBarView view);
    void EditPreferencesSelected(PreferencePage page);
    void ActivityBarVisibilityChangeRequested(bool visibility);

public slots:
    void OnViewSelected();
    void EditPreferences();
    void EditFontsAndColors();
    void EditKeyboardShortcuts();
    void OnHideActivityBarRequested();
    void ShowSettingsMenu();
    void ShowContextMenu(const QPoint& p);

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    FlatButton* CreateButton(const QString& resource, int padding, bool mirrored, const QString& toolTip);

    KeyBindings* keyBindings;
    SideBarView view = SideBarViewExplorer;
    QList<FlatButton*> viewButtons;
    FlatButton* settingsButton = nullptr;
    QVBoxLayout* mainLayout = nullptr;
};
