#include "sidebar/SideBar.h"

#include "sidebar/SearchView.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QVBoxLayout>

SideBar::SideBar(KeyBindings* bindings, QWidget* parent) : QWidget(parent), keyBindings(bindings)
{
    setObjectName(QStringLiteral("SideBar"));
    CreateWidgets();
    CreateLayout();
    CreateConnections();
}

QWidget* SideBar::CreatePage(const QString& title)
{
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(8, 4, 8, 4);
    auto* label = new QLabel(title.toUpper(), page);
    label->setObjectName(QStringLiteral("SideBarTitle"));
    layout->addWidget(label);
    layout->addStretch(1);
    return page;
}

void SideBar::CreateWidgets()
{
    stack = new QStackedWidget(this);
    stack->addWidget(CreatePage(QStringLiteral("Explorer")));
    searchView = new SearchView(keyBindings, this);
    stack->addWidget(searchView);
    stack->addWidget(CreatePage(QStringLiteral("Quick Help")));
}

void SideBar::CreateLayout()
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(stack);
}

void SideBar::CreateConnections()
{
    ConnectSearchView();
}

void SideBar::SetView(SideBarView view)
{
    stack->setCurrentIndex(static_cast<int>(view));
}

SideBarView SideBar::GetView() const
{
    return static_cast<SideBarView>(stack->currentIndex());
}

void SideBar::SaveState() {}

void SideBar::SaveOutline() {}

void SideBar::SaveWorkspace() {}

void SideBar::ClearInvalidDetailsFromOutline(const QStringList& /*paths*/) {}

void SideBar::UpdateKeyBindings()
{
    searchView->UpdateKeyBindings();
}
