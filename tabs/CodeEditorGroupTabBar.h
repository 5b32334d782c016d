#pragma once

#include "tabs/CustomTabBar.h"

class KeyBindings;
class QAction;
class QMenu;

// The tab bar of an editor group. Each tab's data holds the CodeEditorType of its buffer as an
// integer, which decides what the tab menu offers.
class CodeEditorGroupTabBar : public CustomTabBar
{
    Q_OBJECT

public:
    explicit CodeEditorGroupTabBar(KeyBindings* keyBindings, QWidget* parent = nullptr);

    // The menu of the tab at an index, as ShowContextMenu runs it; the caller owns it.
    QMenu* CreateContextMenu(int index);

signals:
    void RenameRequested(int index);
    void CopyPathRequested(int index);
    void ShowInFolderRequested(int index);
    void ShowInSideBarRequested(int index);
    void EmptyZoneContextMenuSelected(const QPoint& pos);

public slots:
    void ShowContextMenu(const QPoint& pos);
    void RequestCloseTab();
    void RequestCloseOtherTabs();
    void RequestCloseTabsToRight();
    void RequestRename();
    void RequestCopyPath();
    void RequestShowInFolder();
    void RequestShowInSideBar();

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QAction* AddMenuAction(QMenu* menu, const QString& text, int index, const char* slot);
    int SenderIndex() const;

    KeyBindings* keyBindings; // not owned
};
