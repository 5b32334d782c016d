#include "tabs/CodeEditorGroupTabBar.h"

#include "editor/CodeEditorType.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"

#include <QtGui/QAction>
#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QMenu>

#include <cmath>

CodeEditorGroupTabBar::CodeEditorGroupTabBar(KeyBindings* bindings, QWidget* parent)
    : CustomTabBar(parent), keyBindings(bindings)
{
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, SIGNAL(customContextMenuRequested(QPoint)), this, SLOT(ShowContextMenu(QPoint)));
}

void CodeEditorGroupTabBar::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && TabAt(event->position().toPoint()) < 0)
        emit NewTabRequested();
}

void CodeEditorGroupTabBar::wheelEvent(QWheelEvent* event)
{
    if (!Settings::mouseWheelChangesActiveTab)
    {
        CustomTabBar::wheelEvent(event);
        return;
    }
    // One notch is 15 degrees; smaller steps of smooth wheels do nothing and are not summed.
    const int degreesY = static_cast<int>(std::lround(event->angleDelta().y() * 0.125));
    const int degreesX = static_cast<int>(std::lround(event->angleDelta().x() * 0.125));
    if (degreesY == 0 && degreesX == 0)
        return;
    if (degreesY > 14)
        SetCurrentIndex(GetCurrentIndex() - 1, true);
    else if (degreesY < -14)
        SetCurrentIndex(GetCurrentIndex() + 1, true);
}

void CodeEditorGroupTabBar::ShowContextMenu(const QPoint& pos)
{
    const int index = TabAt(pos);
    if (index < 0)
    {
        emit EmptyZoneContextMenuSelected(pos);
        return;
    }
    QMenu* menu = CreateContextMenu(index);
    menu->exec(mapToGlobal(pos));
    delete menu;
}

QMenu* CodeEditorGroupTabBar::CreateContextMenu(int index)
{
    auto* menu = new QMenu(this);
    QAction* close = AddMenuAction(menu, QStringLiteral("Close"), index, SLOT(RequestCloseTab()));
    AddMenuAction(menu, QStringLiteral("Close Other Tabs"), index, SLOT(RequestCloseOtherTabs()));
    AddMenuAction(menu, QStringLiteral("Close Tabs to the Right"), index, SLOT(RequestCloseTabsToRight()));
    menu->addSeparator();
    QAction* rename = AddMenuAction(menu, QStringLiteral("Rename"), index, SLOT(RequestRename()));
    menu->addSeparator();
    AddMenuAction(menu, QStringLiteral("Copy Path"), index, SLOT(RequestCopyPath()));
    AddMenuAction(menu, QStringLiteral("Reveal in Folder"), index, SLOT(RequestShowInFolder()));
    if (GetData(index).toInt() == static_cast<int>(CodeEditorType::FILE))
        AddMenuAction(menu, QStringLiteral("Reveal in Side Bar"), index, SLOT(RequestShowInSideBar()));
    if (keyBindings)
    {
        close->setShortcut(keyBindings->GetShortcut(KeySequenceType::CloseFile));
        rename->setShortcut(keyBindings->GetShortcut(KeySequenceType::Rename));
    }
    return menu;
}

QAction* CodeEditorGroupTabBar::AddMenuAction(QMenu* menu, const QString& text, int index, const char* slot)
{
    QAction* action = menu->addAction(text);
    action->setData(index);
    connect(action, SIGNAL(triggered()), this, slot);
    return action;
}

int CodeEditorGroupTabBar::SenderIndex() const
{
    const auto* action = qobject_cast<const QAction*>(sender());
    return action ? action->data().toInt() : -1;
}

void CodeEditorGroupTabBar::RequestCloseTab()
{
    const int index = SenderIndex();
    if (index >= 0)
        emit CloseTabRequested(index);
}

void CodeEditorGroupTabBar::RequestCloseOtherTabs()
{
    const int index = SenderIndex();
    if (index >= 0)
        emit CloseOtherTabsRequested(index);
}

void CodeEditorGroupTabBar::RequestCloseTabsToRight()
{
    const int index = SenderIndex();
    if (index >= 0)
        emit CloseTabsToRightRequested(index);
}

void CodeEditorGroupTabBar::RequestRename()
{
    const int index = SenderIndex();
    if (index >= 0)
        emit RenameRequested(index);
}

void CodeEditorGroupTabBar::RequestCopyPath()
{
    const int index = SenderIndex();
    if (index >= 0)
        emit CopyPathRequested(index);
}

void CodeEditorGroupTabBar::RequestShowInFolder()
{
    const int index = SenderIndex();
    if (index >= 0)
        emit ShowInFolderRequested(index);
}

void CodeEditorGroupTabBar::RequestShowInSideBar()
{
    const int index = SenderIndex();
    if (index >= 0)
        emit ShowInSideBarRequested(index);
}
