#include "sidebar/ActivityBar.h"

#include "settings/KeyBindings.h"

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

QToolButton* ActivityBar::CreateViewButton(const QString& text, const QString& toolTip)
{
    auto* button = new QToolButton(this);
    button->setText(text);
    button->setToolTip(toolTip);
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setFixedSize(32, 32);
    return button;
}

void ActivityBar::CreateWidgets()
{
    viewButtons = {CreateViewButton(QStringLiteral("E"), QStringLiteral("Explorer")),
                   CreateViewButton(QStringLiteral("S"), QStringLiteral("Search")),
                   CreateViewButton(QStringLiteral("?"), QStringLiteral("Quick Help"))};
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
    const QString explorer = keyBindings->GetShortcut(KeySequenceType::Explorer).toString(QKeySequence::NativeText);
    viewButtons.at(0)->setToolTip(explorer.isEmpty() ? QStringLiteral("Explorer")
                                                     : QStringLiteral("Explorer (%1)").arg(explorer));
}
