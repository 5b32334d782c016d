#include "sidebar/ActivityBar.h"

#include "settings/KeyBindings.h"
#include "widgets/FlatButton.h"

#include <QtGui/QCursor>
#include <QtGui/QImage>
#include <QtWidgets/QMenu>
#include <QtWidgets/QVBoxLayout>

namespace
{
const char* const VIEW_LABELS[] = {"Explorer", "Search", "Quick Help"};
} // namespace

ActivityBar::ActivityBar(KeyBindings* bindings, QWidget* parent) : QWidget(parent), keyBindings(bindings)
{
    setObjectName(QStringLiteral("ActivityBar"));
    setContextMenuPolicy(Qt::CustomContextMenu);
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    SetView(SideBarViewExplorer);
}

FlatButton* ActivityBar::CreateButton(const QString& resource, int padding, bool mirrored,
                                      const QString& toolTip)
{
    auto* button = new FlatButton(this);
    QImage image(resource);
    if (mirrored)
        image = image.mirrored(true, false);
    button->SetImage(image, padding);
    button->setToolTip(toolTip);
    return button;
}

void ActivityBar::CreateWidgets()
{
    viewButtons = {
        CreateButton(QStringLiteral(":/bq2_icons/explorer_view.png"), 6, false, QStringLiteral("Explorer")),
        CreateButton(QStringLiteral(":/bq2_icons/search_view.png"), 8, true, QStringLiteral("Search")),
        CreateButton(QStringLiteral(":/bq2_icons/quick_help_view.png"), 8, false, QStringLiteral("Quick Help"))};
    settingsButton = CreateButton(QStringLiteral(":/bq2_icons/settings.png"), 12, false, QString());
}

void ActivityBar::CreateLayout()
{
    mainLayout = new QVBoxLayout(this);
    mainLayout->setContentsMargins(4, 8, 4, 4);
    mainLayout->setSpacing(10);
    for (FlatButton* button : std::as_const(viewButtons))
        mainLayout->addWidget(button);
    mainLayout->addStretch(1);
    mainLayout->addWidget(settingsButton);
}

void ActivityBar::CreateConnections()
{
    for (FlatButton* button : std::as_const(viewButtons))
        connect(button, SIGNAL(clicked()), this, SLOT(OnViewSelected()));
    connect(settingsButton, SIGNAL(clicked()), this, SLOT(ShowSettingsMenu()));
    connect(this, SIGNAL(customContextMenuRequested(QPoint)), this, SLOT(ShowContextMenu(QPoint)));
}

FlatButton* ActivityBar::GetViewButton(SideBarView buttonView) const
{
    return viewButtons.value(static_cast<int>(buttonView));
}

void ActivityBar::SetView(SideBarView newView)
{
    view = newView;
    for (int i = 0; i < viewButtons.size(); ++i)
        viewButtons.at(i)->SetChecked(i == static_cast<int>(view));
}

void ActivityBar::OnViewSelected()
{
    const int index = viewButtons.indexOf(qobject_cast<FlatButton*>(sender()));
    if (index < 0)
        return;
    emit ViewSelected(static_cast<SideBarView>(index));
    SetView(static_cast<SideBarView>(index));
}

void ActivityBar::UpdateKeyBindings()
{
    if (!keyBindings)
        return;
    const KeySequenceType types[] = {KeySequenceType::Explorer, KeySequenceType::FindInFiles,
                                     KeySequenceType::QuickHelp};
    for (int i = 0; i < viewButtons.size(); ++i)
    {
        const QString keys = keyBindings->GetShortcut(types[i]).toString(QKeySequence::NativeText);
        viewButtons.at(i)->setToolTip(QStringLiteral("%1 (%2)").arg(QLatin1String(VIEW_LABELS[i]), keys));
    }
}

void ActivityBar::EditPreferences()
{
    // No particular page: the dialog opens where the user left it.
    emit EditPreferencesSelected(static_cast<PreferencePage>(10));
}

void ActivityBar::EditFontsAndColors()
{
    emit EditPreferencesSelected(FONTS_AND_COLORS_PAGE);
}

void ActivityBar::EditKeyboardShortcuts()
{
    emit EditPreferencesSelected(KEYBOARD_PAGE);
}

void ActivityBar::OnHideActivityBarRequested()
{
    emit ActivityBarVisibilityChangeRequested(false);
}

void ActivityBar::ShowSettingsMenu()
{
    QMenu menu(this);
    menu.addAction(QStringLiteral("Preferences"), this, SLOT(EditPreferences()));
    menu.addSeparator();
    menu.addAction(QStringLiteral("Fonts and Colors"), this, SLOT(EditFontsAndColors()));
    menu.addAction(QStringLiteral("Keyboard Shortcuts"), this, SLOT(EditKeyboardShortcuts()));
    menu.exec(QCursor::pos());
}

void ActivityBar::ShowContextMenu(const QPoint& p)
{
    for (const FlatButton* button : std::as_const(viewButtons))
    {
        if (button->geometry().contains(p))
            return;
    }
    if (settingsButton->geometry().contains(p))
        return;
    QMenu menu(this);
    QAction* hide = menu.addAction(QStringLiteral("Hide Activity Bar"), this, SLOT(OnHideActivityBarRequested()));
    if (keyBindings)
        hide->setShortcut(keyBindings->GetShortcut(KeySequenceType::ToggleActivityBar));
    menu.exec(mapToGlobal(p));
}
