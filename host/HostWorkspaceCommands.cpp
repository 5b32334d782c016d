#include "HostWorkspaceCommands.h"
#include "HostMainWindow.h"
#include "HostUiCommands.h"
#include "HostWorkspaceControl.h"
#include <maya/MQtUtil.h>

namespace
{
QString NotFound(const QString& command, const QString& name)
{
    return QStringLiteral("%1: Object '%2' not found.").arg(command, name);
}

int ToInt(const QString& text, int fallback)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    return ok ? value : fallback;
}
} // namespace

HostWorkspaceCommands::HostWorkspaceCommands(HostMainWindow* mainWindow) : mainWindow(mainWindow) {}

QList<HostMelFlagSpec> HostWorkspaceCommands::ControlFlags()
{
    return {
        {QStringLiteral("ex"), QStringLiteral("exists"), 0},
        {QStringLiteral("l"), QStringLiteral("label"), 1},
        {QStringLiteral("rt"), QStringLiteral("retain"), 1},
        {QStringLiteral("fl"), QStringLiteral("floating"), 1},
        {QStringLiteral("vis"), QStringLiteral("visible"), 1},
        {QStringLiteral("clp"), QStringLiteral("collapse"), 1},
        {QStringLiteral("rs"), QStringLiteral("restore"), 0},
        {QStringLiteral("cl"), QStringLiteral("close"), 0},
        {QStringLiteral("r"), QStringLiteral("raise"), 0},
        {QStringLiteral("rp"), QStringLiteral("requiredPlugin"), 1},
        {QStringLiteral("ckp"), QStringLiteral("checksPlugins"), 1},
        {QStringLiteral("ui"), QStringLiteral("uiScript"), 1},
        {QStringLiteral("iw"), QStringLiteral("initialWidth"), 1},
        {QStringLiteral("ih"), QStringLiteral("initialHeight"), 1},
        {QStringLiteral("mw"), QStringLiteral("minimumWidth"), 1},
        {QStringLiteral("mh"), QStringLiteral("minimumHeight"), 1},
        {QStringLiteral("wp"), QStringLiteral("widthProperty"), 1},
        {QStringLiteral("hp"), QStringLiteral("heightProperty"), 1},
        {QStringLiteral("li"), QStringLiteral("loadImmediately"), 1},
        {QStringLiteral("dtm"), QStringLiteral("dockToMainWindow"), 2},
    };
}

QList<HostMelFlagSpec> HostWorkspaceCommands::StateFlags()
{
    return {
        {QStringLiteral("ex"), QStringLiteral("exists"), 0},
        {QStringLiteral("tlc"), QStringLiteral("topLeftCorner"), 2},
        {QStringLiteral("w"), QStringLiteral("width"), 1},
        {QStringLiteral("h"), QStringLiteral("height"), 1},
        {QStringLiteral("wh"), QStringLiteral("widthHeight"), 2},
        {QStringLiteral("r"), QStringLiteral("remove"), 0},
    };
}

MStatus HostWorkspaceCommands::Control(const HostMelCall& call, HostCommandResult& result)
{
    if (call.query && call.HasFlag(QStringLiteral("exists")))
    {
        // The one question that batch mode answers too.
        result.setInt(Find(call.LastPositional()) ? 1 : 0);
        return MStatus::kSuccess;
    }
    if (!mainWindow)
        return HostUiCommands::ReportNoMainWindow(call.name);
    if (call.query)
        return Query(call, result);
    if (call.edit)
        return Edit(call);
    return Create(call, result);
}

MStatus HostWorkspaceCommands::State(const HostMelCall& call, HostCommandResult& result)
{
    const QString name = call.LastPositional();
    if (name.isEmpty())
        return HostUiCommands::ReportError(QStringLiteral("workspaceControlState: No object name given."));
    if (call.query)
    {
        if (!call.HasFlag(QStringLiteral("exists")))
            return HostUiCommands::ReportError(
                QStringLiteral("workspaceControlState: Only -exists can be queried here."));
        result.setInt(floatingGeometry.contains(name) ? 1 : 0);
        return MStatus::kSuccess;
    }
    if (call.HasFlag(QStringLiteral("remove")))
    {
        floatingGeometry.remove(name);
        return MStatus::kSuccess;
    }
    QRect geometry = floatingGeometry.value(name, QRect(0, 0, 400, 600));
    if (call.HasFlag(QStringLiteral("topLeftCorner")))
    {
        geometry.moveTop(ToInt(call.FlagValue(QStringLiteral("topLeftCorner"), 0), geometry.top()));
        geometry.moveLeft(ToInt(call.FlagValue(QStringLiteral("topLeftCorner"), 1), geometry.left()));
    }
    if (call.HasFlag(QStringLiteral("widthHeight")))
    {
        geometry.setWidth(ToInt(call.FlagValue(QStringLiteral("widthHeight"), 0), geometry.width()));
        geometry.setHeight(ToInt(call.FlagValue(QStringLiteral("widthHeight"), 1), geometry.height()));
    }
    if (call.HasFlag(QStringLiteral("width")))
        geometry.setWidth(ToInt(call.FlagValue(QStringLiteral("width")), geometry.width()));
    if (call.HasFlag(QStringLiteral("height")))
        geometry.setHeight(ToInt(call.FlagValue(QStringLiteral("height")), geometry.height()));
    floatingGeometry.insert(name, geometry);
    if (HostWorkspaceControl* control = Find(name))
        control->SetFloatingGeometry(geometry);
    return MStatus::kSuccess;
}

QWidget* HostWorkspaceCommands::CurrentParent() const
{
    // A discarded control loses its name at once and its widgets a little later.
    if (!currentParent || currentParent->objectName().isEmpty())
        return nullptr;
    return currentParent;
}

HostWorkspaceControl* HostWorkspaceCommands::Find(const QString& name) const
{
    return mainWindow ? mainWindow->FindWorkspaceControl(name) : nullptr;
}

MStatus HostWorkspaceCommands::Create(const HostMelCall& call, HostCommandResult& result)
{
    QString name = call.LastPositional();
    if (name.isEmpty())
        name = UniqueName();
    if (Find(name) || mainWindow->findChild<QWidget*>(name))
        return HostUiCommands::ReportError(
            QStringLiteral("workspaceControl: Object's name '%1' is not unique.").arg(name));

    auto* control = new HostWorkspaceControl(name, mainWindow);
    control->SetLabel(call.HasFlag(QStringLiteral("label")) ? call.FlagValue(QStringLiteral("label")) : name);
    if (call.HasFlag(QStringLiteral("retain")))
        control->SetRetained(HostUiCommands::ParseBool(call.FlagValue(QStringLiteral("retain"))));
    control->SetUiScript(call.FlagValue(QStringLiteral("uiScript")));
    mainWindow->addDockWidget(Qt::RightDockWidgetArea, control);
    ApplyCreateSize(control, call);

    if (call.HasFlag(QStringLiteral("floating")))
        SetFloating(control, HostUiCommands::ParseBool(call.FlagValue(QStringLiteral("floating"))));
    if (call.HasFlag(QStringLiteral("collapse")))
        control->SetCollapsed(HostUiCommands::ParseBool(call.FlagValue(QStringLiteral("collapse"))));
    const bool visible = !call.HasFlag(QStringLiteral("visible")) ||
                         HostUiCommands::ParseBool(call.FlagValue(QStringLiteral("visible")));
    control->SetShown(visible);

    // As in Maya, what follows is made inside the new control.
    currentParent = control->Content();
    result.setString(MQtUtil::toMString(name));
    return MStatus::kSuccess;
}

MStatus HostWorkspaceCommands::Query(const HostMelCall& call, HostCommandResult& result) const
{
    const QString name = call.LastPositional();
    const HostWorkspaceControl* control = Find(name);
    if (!control)
        return HostUiCommands::ReportError(NotFound(call.name, name));
    if (call.flags.isEmpty())
        return HostUiCommands::ReportError(QStringLiteral("workspaceControl: No flag given to query."));

    const QString flag = call.flags.first().first;
    if (flag == QLatin1String("visible"))
        result.setInt(control->IsShown() ? 1 : 0);
    else if (flag == QLatin1String("floating"))
        result.setInt(control->isFloating() ? 1 : 0);
    else if (flag == QLatin1String("collapse"))
        result.setInt(control->IsCollapsed() ? 1 : 0);
    else if (flag == QLatin1String("retain"))
        result.setInt(control->IsRetained() ? 1 : 0);
    else if (flag == QLatin1String("label"))
        result.setString(MQtUtil::toMString(control->windowTitle()));
    else if (flag == QLatin1String("uiScript"))
        result.setString(MQtUtil::toMString(control->UiScript()));
    else
        return HostUiCommands::ReportError(
            QStringLiteral("workspaceControl: Flag -%1 cannot be queried.").arg(flag));
    return MStatus::kSuccess;
}

MStatus HostWorkspaceCommands::Edit(const HostMelCall& call)
{
    const QString name = call.LastPositional();
    HostWorkspaceControl* control = Find(name);
    if (!control)
        return HostUiCommands::ReportError(NotFound(call.name, name));

    for (const auto& [flag, values] : call.flags)
    {
        const QString value = values.value(0);
        if (flag == QLatin1String("label"))
            control->SetLabel(value);
        else if (flag == QLatin1String("visible"))
            control->SetShown(HostUiCommands::ParseBool(value));
        else if (flag == QLatin1String("restore") || flag == QLatin1String("raise"))
            control->Restore();
        else if (flag == QLatin1String("collapse"))
            control->SetCollapsed(HostUiCommands::ParseBool(value));
        else if (flag == QLatin1String("floating"))
            SetFloating(control, HostUiCommands::ParseBool(value));
        else if (flag == QLatin1String("retain"))
            control->SetRetained(HostUiCommands::ParseBool(value));
        else if (flag == QLatin1String("uiScript"))
            control->SetUiScript(value);
        else if (flag == QLatin1String("close"))
        {
            // The control may be gone now: nothing after this flag can apply.
            control->CloseControl();
            break;
        }
    }
    return MStatus::kSuccess;
}

void HostWorkspaceCommands::SetFloating(HostWorkspaceControl* control, bool floating) const
{
    control->setFloating(floating);
    if (floating && floatingGeometry.contains(control->Name()))
        control->SetFloatingGeometry(floatingGeometry.value(control->Name()));
}

void HostWorkspaceCommands::ApplyCreateSize(HostWorkspaceControl* control, const HostMelCall& call) const
{
    const int width = ToInt(call.FlagValue(QStringLiteral("initialWidth")), 0);
    const int height = ToInt(call.FlagValue(QStringLiteral("initialHeight")), 0);
    if (width > 0 || height > 0)
        control->resize(width > 0 ? width : control->width(), height > 0 ? height : control->height());
    const int minimumWidth = ToInt(call.FlagValue(QStringLiteral("minimumWidth")), 0);
    const int minimumHeight = ToInt(call.FlagValue(QStringLiteral("minimumHeight")), 0);
    if (minimumWidth > 0)
        control->Content()->setMinimumWidth(minimumWidth);
    if (minimumHeight > 0)
        control->Content()->setMinimumHeight(minimumHeight);
}

QString HostWorkspaceCommands::UniqueName() const
{
    for (int index = 1;; ++index)
    {
        const QString name = QStringLiteral("workspaceControl%1").arg(index);
        if (!mainWindow->findChild<QWidget*>(name))
            return name;
    }
}
