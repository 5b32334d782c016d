#include "sidebar/ActivityBar.h"

#include "settings/KeyBindings.h"

#include <QtGui/QIcon>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

ActivityBar::ActivityBar(KeyBindings* bindings, QWidget* parent) : QWidget(parent), keyBindings(bindings)
{
    setObjectName(QStringLiteral("ActivityBar"));
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    SetView(SideBarViewExplorer);
}

QToolButton* ActivityBar::CreateViewButton(const QString& iconName, const QString& toolTip)
{
    auto* button = new QToolButton(this);
    button->setIcon(QIcon(QStringLiteral(":/bq2_icons/%1.png").arg(iconName)));
    button->setIconSize(QSize(22, 22));
    button->setToolTip(toolTip);
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setFixedSize(32, 32);
    return button;
}

void ActivityBar::CreateWidgets()
{
    viewButtons = {CreateViewButton(QStringLiteral("explorer_view"), QStringLiteral("Explorer")),
                   CreateViewButton(QStringLiteral("search_view"), QStringLiteral("Search")),
                   CreateViewButton(QStringLiteral("quick_help_view"), QStringLiteral("Quick Help"))};
}

void ActivityBar::CreateLayout()
{
    mainLayout = new QVBoxLayout(this);
    mainLayout->setContentsMargins(2, 2, 2, 2);
    mainLayout->setSpacing(2);
    for (QToolButton* button : viewButtons)
        mainLayout->addWidget(button);
    mainLayout->addStretch(1);
}

void ActivityBar::CreateConnections()
{
    for (QToolButton* button : viewButtons)
        connect(button, SIGNAL(clicked()), this, SLOT(OnViewSelected()));
}

void ActivityBar::SetView(SideBarView newView)
{
    view = newView;
    for (int i = 0; i < viewButtons.size(); ++i)
        viewButtons.at(i)->setChecked(i == static_cast<int>(view));
}

void ActivityBar::OnViewSelected()
{
    const int index = viewButtons.indexOf(qobject_cast<QToolButton*>(sender()));
    SetView(view); // the bar's state follows the editor's answer, not the click
    if (index >= 0)
        emit ViewSelected(static_cast<SideBarView>(index));
}

void ActivityBar::UpdateKeyBindings()
{
    if (!keyBindings)
        return;
    const QString explorer =
        keyBindings->GetShortcut(KeySequenceType::Explorer).toString(QKeySequence::NativeText);
    viewButtons.at(0)->setToolTip(explorer.isEmpty() ? QStringLiteral("Explorer")
                                                     : QStringLiteral("Explorer (%1)").arg(explorer));
}
