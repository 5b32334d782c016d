#pragma once
#include "HostMel.h"
#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <memory>

class HostMainWindow;
class HostWorkspaceCommands;
class QAction;
class QMenu;
class QWidget;

// The MEL commands of Maya's interface, registered into HostMel for as long as the object
// lives. Without a main window (batch mode) they fail as Maya's do, but for the existence
// query of a workspace control.
class HostUiCommands
{
public:
    explicit HostUiCommands(HostMainWindow* mainWindow);
    ~HostUiCommands();
    HostUiCommands(const HostUiCommands&) = delete;
    HostUiCommands& operator=(const HostUiCommands&) = delete;

    QStringList ShownHelp() const;
    QList<QPair<QString, QString>> ShelfButtons() const;
    QString WorkspaceControlUiScript(const QString& controlName) const;
    QWidget* CurrentParent() const;

    // An error line as Maya reports a failed command, and the failure to return.
    static MStatus ReportError(const QString& message);
    static MStatus ReportNoMainWindow(const QString& command);
    // MEL's spellings of a boolean argument.
    static bool ParseBool(const QString& text);

private:
    using Method = MStatus (HostUiCommands::*)(const HostMelCall&, HostCommandResult&);

    void RegisterCommands();
    static void Register(const QString& name, const QList<HostMelFlagSpec>& flags, Method method);
    static void RegisterSubstitute(const QString& name, Method method);

    MStatus WorkspaceControl(const HostMelCall& call, HostCommandResult& result);
    MStatus WorkspaceControlState(const HostMelCall& call, HostCommandResult& result);
    MStatus DeleteUi(const HostMelCall& call, HostCommandResult& result);
    MStatus SymbolButton(const HostMelCall& call, HostCommandResult& result);
    MStatus ShowHelp(const HostMelCall& call, HostCommandResult& result);
    MStatus ScriptToShelf(const HostMelCall& call, HostCommandResult& result);
    MStatus LsUi(const HostMelCall& call, HostCommandResult& result);
    MStatus ScriptEditor(const HostMelCall& call, HostCommandResult& result);
    MStatus Menu(const HostMelCall& call, HostCommandResult& result);
    MStatus MenuItem(const HostMelCall& call, HostCommandResult& result);
    MStatus UiRes(const HostMelCall& call, HostCommandResult& result);
    MStatus BuildViewMenu(const HostMelCall& call, HostCommandResult& result);
    MStatus BuildObjectEdMenu(const HostMelCall& call, HostCommandResult& result);
    MStatus ScriptEditorButtonName(const HostMelCall& call, HostCommandResult& result);

    bool DeleteNamed(const QString& name, const HostMelCall& call);
    bool DeleteMenuItem(const QString& name);
    bool DeleteWindow(const QString& name);
    QString UniqueMenuItemName() const;
    QMenu* FindMenu(const QString& name) const;

    static HostUiCommands* current;

    QPointer<HostMainWindow> mainWindow;
    std::unique_ptr<HostWorkspaceCommands> workspaceCommands;
    QStringList shownHelp;
    QList<QPair<QString, QString>> shelfButtons;
    QStringList registeredCommands;
};
