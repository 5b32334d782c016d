#include "HostUiCommands.h"
#include "HostMainWindow.h"
#include "HostOutput.h"
#include "HostSymbolButton.h"
#include "HostWorkspaceCommands.h"
#include "HostWorkspaceControl.h"
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <maya/MQtUtil.h>
#include <maya/MStringArray.h>

HostUiCommands* HostUiCommands::current = nullptr;

namespace
{
QString NotFound(const QString& command, const QString& name)
{
    return QStringLiteral("%1: Object '%2' not found.").arg(command, name);
}

MStringArray ToStringArray(const QStringList& list)
{
    MStringArray array;
    for (const QString& text : list)
        array.append(MQtUtil::toMString(text));
    return array;
}

// Names that address a control by its full path are looked up by their last part.
QString ShortName(const QString& name)
{
    return name.section(QLatin1Char('|'), -1);
}
} // namespace

HostUiCommands::HostUiCommands(HostMainWindow* mainWindow)
    : mainWindow(mainWindow), workspaceCommands(std::make_unique<HostWorkspaceCommands>(mainWindow))
{
    current = this;
    RegisterCommands();
}

HostUiCommands::~HostUiCommands()
{
    for (const QString& name : std::as_const(registeredCommands))
        HostMel::UnregisterCommand(name);
    // Procedure substitutes stay registered: they find no session and fail.
    if (current == this)
        current = nullptr;
}

QStringList HostUiCommands::ShownHelp() const
{
    return shownHelp;
}

QList<QPair<QString, QString>> HostUiCommands::ShelfButtons() const
{
    return shelfButtons;
}

QString HostUiCommands::WorkspaceControlUiScript(const QString& controlName) const
{
    const HostWorkspaceControl* control = workspaceCommands->Find(controlName);
    return control ? control->UiScript() : QString();
}

QWidget* HostUiCommands::CurrentParent() const
{
    return workspaceCommands->CurrentParent();
}

MStatus HostUiCommands::ReportError(const QString& message)
{
    HostMel::ReportError(message);
    return MStatus::kFailure;
}

MStatus HostUiCommands::ReportNoMainWindow(const QString& command)
{
    return ReportError(QStringLiteral("%1: There is no main window in batch mode.").arg(command));
}

bool HostUiCommands::ParseBool(const QString& text)
{
    const QString value = text.trimmed().toLower();
    if (value == QLatin1String("true") || value == QLatin1String("on") || value == QLatin1String("yes"))
        return true;
    bool ok = false;
    const double number = value.toDouble(&ok);
    return ok && number != 0.0;
}

void HostUiCommands::RegisterCommands()
{
    Register(QStringLiteral("workspaceControl"), HostWorkspaceCommands::ControlFlags(),
             &HostUiCommands::WorkspaceControl);
    Register(QStringLiteral("workspaceControlState"), HostWorkspaceCommands::StateFlags(),
             &HostUiCommands::WorkspaceControlState);
    Register(QStringLiteral("deleteUI"),
             {{QStringLiteral("wnd"), QStringLiteral("window"), 0},
              {QStringLiteral("mi"), QStringLiteral("menuItem"), 0},
              {QStringLiteral("ctl"), QStringLiteral("control"), 0},
              {QStringLiteral("lay"), QStringLiteral("layout"), 0}},
             &HostUiCommands::DeleteUi);
    Register(QStringLiteral("symbolButton"),
             {{QStringLiteral("ex"), QStringLiteral("exists"), 0},
              {QStringLiteral("c"), QStringLiteral("command"), 1},
              {QStringLiteral("ann"), QStringLiteral("annotation"), 1},
              {QStringLiteral("i"), QStringLiteral("image"), 1},
              {QStringLiteral("en"), QStringLiteral("enable"), 1},
              {QStringLiteral("vis"), QStringLiteral("visible"), 1}},
             &HostUiCommands::SymbolButton);
    Register(QStringLiteral("showHelp"),
             {{QStringLiteral("d"), QStringLiteral("docs"), 0},
              {QStringLiteral("a"), QStringLiteral("absolute"), 0},
              {QStringLiteral("ht"), QStringLiteral("helpTable"), 0}},
             &HostUiCommands::ShowHelp);
    Register(QStringLiteral("scriptToShelf"), {}, &HostUiCommands::ScriptToShelf);
    Register(QStringLiteral("lsUI"),
             {{QStringLiteral("typ"), QStringLiteral("type"), 1},
              {QStringLiteral("wnd"), QStringLiteral("windows"), 0},
              {QStringLiteral("mi"), QStringLiteral("menuItems"), 0}},
             &HostUiCommands::LsUi);
    Register(QStringLiteral("ScriptEditor"), {}, &HostUiCommands::ScriptEditor);
    Register(QStringLiteral("menu"),
             {{QStringLiteral("ia"), QStringLiteral("itemArray"), 0},
              {QStringLiteral("l"), QStringLiteral("label"), 1},
              {QStringLiteral("ex"), QStringLiteral("exists"), 0}},
             &HostUiCommands::Menu);
    Register(QStringLiteral("menuItem"),
             {{QStringLiteral("p"), QStringLiteral("parent"), 1},
              {QStringLiteral("d"), QStringLiteral("divider"), 1},
              {QStringLiteral("l"), QStringLiteral("label"), 1},
              {QStringLiteral("c"), QStringLiteral("command"), 1}},
             &HostUiCommands::MenuItem);
    Register(QStringLiteral("uiRes"), {}, &HostUiCommands::UiRes);
    // Scripts in Maya, so procedures here.
    RegisterSubstitute(QStringLiteral("buildViewMenu"), &HostUiCommands::BuildViewMenu);
    RegisterSubstitute(QStringLiteral("buildObjectEdMenu"), &HostUiCommands::BuildObjectEdMenu);
    RegisterSubstitute(QStringLiteral("xvGetScriptEditorButtonName"),
                       &HostUiCommands::ScriptEditorButtonName);
    registeredCommands = {QStringLiteral("workspaceControl"),
                          QStringLiteral("workspaceControlState"),
                          QStringLiteral("deleteUI"),
                          QStringLiteral("symbolButton"),
                          QStringLiteral("showHelp"),
                          QStringLiteral("scriptToShelf"),
                          QStringLiteral("lsUI"),
                          QStringLiteral("ScriptEditor"),
                          QStringLiteral("menu"),
                          QStringLiteral("menuItem"),
                          QStringLiteral("uiRes")};
    // Maya's own scripts: the menu builders are stood in for once they exist as procedures.
    HostMel::Execute(QStringLiteral("global string $gMainWindowMenu = \"mainWindowMenu\";"
                                    "global proc buildViewMenu(string $menu) {}"
                                    "global proc buildObjectEdMenu(string $menu) {}"),
                     nullptr, false);
}

void HostUiCommands::Register(const QString& name, const QList<HostMelFlagSpec>& flags, Method method)
{
    HostMel::RegisterCommand(name, flags,
                             [method](const HostMelCall& call, HostCommandResult& result)
                             {
                                 if (!current)
                                     return ReportNoMainWindow(call.name);
                                 return (current->*method)(call, result);
                             });
}

void HostUiCommands::RegisterSubstitute(const QString& name, Method method)
{
    HostMel::RegisterProcedureSubstitute(name,
                                         [method](const HostMelCall& call, HostCommandResult& result)
                                         {
                                             if (!current)
                                                 return ReportNoMainWindow(call.name);
                                             return (current->*method)(call, result);
                                         });
}

MStatus HostUiCommands::WorkspaceControl(const HostMelCall& call, HostCommandResult& result)
{
    return workspaceCommands->Control(call, result);
}

MStatus HostUiCommands::WorkspaceControlState(const HostMelCall& call, HostCommandResult& result)
{
    if (!mainWindow)
        return ReportNoMainWindow(call.name);
    return workspaceCommands->State(call, result);
}

MStatus HostUiCommands::DeleteUi(const HostMelCall& call, HostCommandResult&)
{
    if (!mainWindow)
        return ReportNoMainWindow(call.name);
    if (call.positionals.isEmpty())
        return ReportError(QStringLiteral("deleteUI: No object name given."));
    for (const QString& name : call.positionals)
    {
        if (!DeleteNamed(ShortName(name), call))
            return ReportError(NotFound(call.name, name));
    }
    return MStatus::kSuccess;
}

bool HostUiCommands::DeleteNamed(const QString& name, const HostMelCall& call)
{
    if (call.HasFlag(QStringLiteral("menuItem")))
        return DeleteMenuItem(name);
    if (call.HasFlag(QStringLiteral("window")))
        return DeleteWindow(name);
    if (HostWorkspaceControl* control = mainWindow->FindWorkspaceControl(name))
    {
        control->Discard();
        return true;
    }
    if (DeleteWindow(name) || DeleteMenuItem(name))
        return true;
    QWidget* widget = mainWindow->findChild<QWidget*>(name);
    if (!widget)
        return false;
    widget->setObjectName(QString());
    widget->hide();
    widget->deleteLater();
    return true;
}

bool HostUiCommands::DeleteMenuItem(const QString& name)
{
    QAction* action = MQtUtil::findMenuItem(MQtUtil::toMString(name));
    if (!action)
        return false;
    const auto widgets = action->associatedObjects();
    for (QObject* object : widgets)
    {
        if (auto* widget = qobject_cast<QWidget*>(object))
            widget->removeAction(action);
    }
    action->setObjectName(QString());
    action->deleteLater();
    return true;
}

bool HostUiCommands::DeleteWindow(const QString& name)
{
    QWidget* window = MQtUtil::findWindow(MQtUtil::toMString(name));
    if (!window || window == mainWindow)
        return false;
    window->setObjectName(QString());
    window->hide();
    window->deleteLater();
    return true;
}

MStatus HostUiCommands::SymbolButton(const HostMelCall& call, HostCommandResult& result)
{
    const QString name = ShortName(call.LastPositional());
    if (call.query && call.HasFlag(QStringLiteral("exists")))
    {
        result.setInt(mainWindow && mainWindow->FindSymbolButton(name) ? 1 : 0);
        return MStatus::kSuccess;
    }
    if (!mainWindow)
        return ReportNoMainWindow(call.name);
    if (!call.query && !call.edit)
        return ReportError(
            QStringLiteral("symbolButton: Only the status line's buttons exist in this host."));
    HostSymbolButton* button = mainWindow->FindSymbolButton(name);
    if (!button)
        return ReportError(NotFound(call.name, name));
    if (call.flags.isEmpty())
        return ReportError(QStringLiteral("symbolButton: No flag given."));

    if (call.query)
    {
        const QString flag = call.flags.first().first;
        if (flag == QLatin1String("command"))
            result.setString(MQtUtil::toMString(button->Command()));
        else if (flag == QLatin1String("annotation"))
            result.setString(MQtUtil::toMString(button->Annotation()));
        else if (flag == QLatin1String("enable"))
            result.setInt(button->isEnabled() ? 1 : 0);
        else if (flag == QLatin1String("visible"))
            result.setInt(button->isHidden() ? 0 : 1);
        else
            return ReportError(QStringLiteral("symbolButton: Flag -%1 cannot be queried.").arg(flag));
        return MStatus::kSuccess;
    }
    for (const auto& [flag, values] : call.flags)
    {
        const QString value = values.value(0);
        if (flag == QLatin1String("command"))
            button->SetCommand(value);
        else if (flag == QLatin1String("annotation"))
            button->SetAnnotation(value);
        else if (flag == QLatin1String("enable"))
            button->setEnabled(ParseBool(value));
        else if (flag == QLatin1String("visible"))
            button->setVisible(ParseBool(value));
    }
    return MStatus::kSuccess;
}

MStatus HostUiCommands::ShowHelp(const HostMelCall& call, HostCommandResult&)
{
    if (!mainWindow)
        return ReportNoMainWindow(call.name);
    const QString topic = call.LastPositional();
    if (topic.isEmpty())
        return ReportError(QStringLiteral("showHelp: No help topic given."));
    shownHelp.append(topic);
    // There is no help browser here: the request is only reported.
    HostOutput::Emit(QStringLiteral("Help requested: %1").arg(topic), MCommandMessage::kInfo);
    return MStatus::kSuccess;
}

MStatus HostUiCommands::ScriptToShelf(const HostMelCall& call, HostCommandResult&)
{
    if (!mainWindow)
        return ReportNoMainWindow(call.name);
    if (call.positionals.size() < 2)
        return ReportError(QStringLiteral("scriptToShelf: Expected a label, a script and a source type."));
    const QString label = call.positionals.at(0);
    const QString command = call.positionals.at(1);
    const QString sourceType = call.positionals.value(2, QStringLiteral("1")).trimmed().toLower();
    const bool isMel = sourceType == QLatin1String("mel") || ParseBool(sourceType);
    shelfButtons.append({label, command});
    mainWindow->AddShelfButton(label, command, isMel);
    return MStatus::kSuccess;
}

MStatus HostUiCommands::LsUi(const HostMelCall& call, HostCommandResult& result)
{
    if (!mainWindow)
        return ReportNoMainWindow(call.name);
    QStringList names;
    for (const auto& [flag, values] : call.flags)
    {
        const QString type = values.value(0);
        if (flag == QLatin1String("type") && type == QLatin1String("symbolButton"))
        {
            for (const HostSymbolButton* button : mainWindow->SymbolButtons())
                names.append(button->objectName());
        }
        else if (flag == QLatin1String("type") && type == QLatin1String("workspaceControl"))
        {
            for (const HostWorkspaceControl* control : mainWindow->WorkspaceControls())
                names.append(control->Name());
        }
        else if (flag == QLatin1String("windows"))
        {
            names.append(mainWindow->objectName());
            const auto widgets = mainWindow->findChildren<QWidget*>();
            for (const QWidget* widget : widgets)
            {
                if (widget->isWindow() && !widget->objectName().isEmpty())
                    names.append(widget->objectName());
            }
        }
        else if (flag == QLatin1String("menuItems"))
        {
            const auto actions = mainWindow->findChildren<QAction*>();
            for (const QAction* action : actions)
            {
                if (!action->objectName().isEmpty())
                    names.append(action->objectName());
            }
        }
    }
    result.setStringArray(ToStringArray(names));
    return MStatus::kSuccess;
}

MStatus HostUiCommands::ScriptEditor(const HostMelCall& call, HostCommandResult&)
{
    if (!mainWindow)
        return ReportNoMainWindow(call.name);
    mainWindow->ShowScriptEditor();
    return MStatus::kSuccess;
}

QMenu* HostUiCommands::FindMenu(const QString& name) const
{
    return name.isEmpty() || !mainWindow ? nullptr : mainWindow->findChild<QMenu*>(ShortName(name));
}

MStatus HostUiCommands::Menu(const HostMelCall& call, HostCommandResult& result)
{
    const QString name = call.LastPositional();
    if (call.query && call.HasFlag(QStringLiteral("exists")))
    {
        result.setInt(FindMenu(name) ? 1 : 0);
        return MStatus::kSuccess;
    }
    if (!mainWindow)
        return ReportNoMainWindow(call.name);
    QMenu* menu = FindMenu(name);
    if (!call.query || call.flags.isEmpty())
        return ReportError(QStringLiteral("menu: Only queries of existing menus are known to this host."));
    if (!menu)
        return ReportError(NotFound(call.name, name));
    if (call.flags.first().first == QLatin1String("label"))
    {
        result.setString(MQtUtil::toMString(menu->title()));
        return MStatus::kSuccess;
    }
    // A submenu is listed under its menu's name, as Maya lists cascading items.
    QStringList items;
    for (const QAction* action : menu->actions())
    {
        const QString item = action->menu() ? action->menu()->objectName() : action->objectName();
        if (!item.isEmpty())
            items.append(item);
    }
    result.setStringArray(ToStringArray(items));
    return MStatus::kSuccess;
}

MStatus HostUiCommands::MenuItem(const HostMelCall& call, HostCommandResult& result)
{
    if (!mainWindow)
        return ReportNoMainWindow(call.name);
    QMenu* menu = FindMenu(call.FlagValue(QStringLiteral("parent")));
    if (call.query || call.edit || !menu)
        return ReportError(
            QStringLiteral("menuItem: Only new items of an existing menu are known to this host."));
    QAction* action = nullptr;
    if (ParseBool(call.FlagValue(QStringLiteral("divider"))))
    {
        action = menu->addSeparator();
    }
    else
    {
        action = menu->addAction(call.FlagValue(QStringLiteral("label")));
        const QString command = call.FlagValue(QStringLiteral("command"));
        QObject::connect(action, &QAction::triggered, action,
                         [command]() { HostMel::Execute(command, nullptr, false); });
    }
    action->setObjectName(UniqueMenuItemName());
    result.setString(MQtUtil::toMString(action->objectName()));
    return MStatus::kSuccess;
}

MStatus HostUiCommands::UiRes(const HostMelCall& call, HostCommandResult& result)
{
    // The one resource the plug-in reads; others come back as their keys.
    const QString key = call.positionals.value(0);
    result.setString(MQtUtil::toMString(
        key == QLatin1String("m_WindowMenu.kGeneralEditorsLabel") ? QStringLiteral("General Editors") : key));
    return MStatus::kSuccess;
}

MStatus HostUiCommands::BuildViewMenu(const HostMelCall& call, HostCommandResult&)
{
    if (!mainWindow)
        return ReportNoMainWindow(call.name);
    mainWindow->BuildWindowsMenu();
    return MStatus::kSuccess;
}

MStatus HostUiCommands::BuildObjectEdMenu(const HostMelCall& call, HostCommandResult&)
{
    if (!mainWindow)
        return ReportNoMainWindow(call.name);
    mainWindow->BuildGeneralEditorsMenu();
    return MStatus::kSuccess;
}

MStatus HostUiCommands::ScriptEditorButtonName(const HostMelCall& call, HostCommandResult& result)
{
    if (!mainWindow)
        return ReportNoMainWindow(call.name);
    QString name;
    for (const HostSymbolButton* button : mainWindow->SymbolButtons())
    {
        if (button->Command() == QLatin1String("ScriptEditor"))
        {
            name = button->objectName();
            break;
        }
    }
    result.setString(MQtUtil::toMString(name));
    return MStatus::kSuccess;
}

QString HostUiCommands::UniqueMenuItemName() const
{
    // Maya numbers its menu items across the whole session.
    static int counter = 1000;
    QString name;
    do
        name = QStringLiteral("menuItem%1").arg(++counter);
    while (MQtUtil::findMenuItem(MQtUtil::toMString(name)));
    return name;
}
