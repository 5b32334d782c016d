#include "HostWorkspaceControl.h"
#include <QtGui/QCloseEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QVBoxLayout>

HostWorkspaceControl::HostWorkspaceControl(const QString& name, QMainWindow* mainWindow)
    : QDockWidget(name, mainWindow)
{
    setObjectName(name);
    content = new QWidget(this);
    content->setObjectName(name);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    setWidget(content);
}

QString HostWorkspaceControl::Name() const
{
    return objectName();
}

QWidget* HostWorkspaceControl::Content() const
{
    return content;
}

bool HostWorkspaceControl::IsRetained() const
{
    return retained;
}

void HostWorkspaceControl::SetRetained(bool newRetained)
{
    retained = newRetained;
}

QString HostWorkspaceControl::UiScript() const
{
    return uiScript;
}

void HostWorkspaceControl::SetUiScript(const QString& script)
{
    uiScript = script;
}

bool HostWorkspaceControl::IsCollapsed() const
{
    return collapsed;
}

void HostWorkspaceControl::SetCollapsed(bool newCollapsed)
{
    collapsed = newCollapsed;
    // Collapsed, only the title bar stays.
    content->setVisible(!collapsed);
}

bool HostWorkspaceControl::IsShown() const
{
    // Independent of whether the main window itself is on screen yet.
    return !isHidden();
}

void HostWorkspaceControl::SetShown(bool shown)
{
    setVisible(shown);
}

void HostWorkspaceControl::SetLabel(const QString& label)
{
    setWindowTitle(label);
}

void HostWorkspaceControl::SetFloatingGeometry(const QRect& frame)
{
    if (isFloating() && frame.isValid())
    {
        // The window's frame is known once it exists on the platform.
        winId();
        const QRect client = geometry();
        const QRect outer = frameGeometry();
        const QMargins margins(client.left() - outer.left(), client.top() - outer.top(),
                               outer.right() - client.right(), outer.bottom() - client.bottom());
        setGeometry(frame.marginsRemoved(margins));
        placed = true;
    }
}

void HostWorkspaceControl::PlaceFirstTime()
{
    // A floating panel that no saved state places opens at a working size over the main window,
    // as Maya opens a new panel.
    placed = true;
    if (!isFloating())
        return;
    const QSize size = content->sizeHint().expandedTo(QSize(DEFAULT_WIDTH, DEFAULT_HEIGHT));
    QRect area = parentWidget() && parentWidget()->isVisible() ? parentWidget()->geometry() : QRect();
    if (area.isEmpty() && screen())
        area = screen()->availableGeometry();
    QRect frame(QPoint(0, 0), size);
    frame.moveCenter(area.center());
    setGeometry(frame);
}

void HostWorkspaceControl::Restore()
{
    SetCollapsed(false);
    if (!placed)
        PlaceFirstTime();
    show();
    raise();
}

void HostWorkspaceControl::CloseControl()
{
    if (retained)
        hide();
    else
        Discard();
}

void HostWorkspaceControl::Discard()
{
    if (discarded)
        return;
    discarded = true;
    setObjectName(QString());
    content->setObjectName(QString());
    hide();
    if (auto* mainWindow = qobject_cast<QMainWindow*>(parentWidget()))
        mainWindow->removeDockWidget(this);
    // Later, since the call may come from a widget inside the control.
    deleteLater();
}

bool HostWorkspaceControl::IsDiscarded() const
{
    return discarded;
}

void HostWorkspaceControl::closeEvent(QCloseEvent* event)
{
    QDockWidget::closeEvent(event);
    if (event->isAccepted() && !retained)
        Discard();
}
