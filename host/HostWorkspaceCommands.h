#pragma once
#include "HostMel.h"
#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtCore/QRect>

class HostMainWindow;
class HostWorkspaceControl;
class QWidget;

// "workspaceControl" and "workspaceControlState": dock widgets of the main window made,
// queried and changed by name, and the floating geometry remembered for each name.
class HostWorkspaceCommands
{
public:
    explicit HostWorkspaceCommands(HostMainWindow* mainWindow);

    static QList<HostMelFlagSpec> ControlFlags();
    static QList<HostMelFlagSpec> StateFlags();

    MStatus Control(const HostMelCall& call, HostCommandResult& result);
    MStatus State(const HostMelCall& call, HostCommandResult& result);

    QWidget* CurrentParent() const;
    HostWorkspaceControl* Find(const QString& name) const;

private:
    MStatus Create(const HostMelCall& call, HostCommandResult& result);
    MStatus Query(const HostMelCall& call, HostCommandResult& result) const;
    MStatus Edit(const HostMelCall& call);
    void SetFloating(HostWorkspaceControl* control, bool floating) const;
    void ApplyCreateSize(HostWorkspaceControl* control, const HostMelCall& call) const;
    QString UniqueName() const;

    QPointer<HostMainWindow> mainWindow;
    QPointer<QWidget> currentParent;
    QHash<QString, QRect> floatingGeometry;
};
