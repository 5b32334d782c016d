#include "plugin/PluginMain.h"

#include "plugin/BrindletEditorCommand.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"

#include <maya/MEventMessage.h>
#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

namespace
{
QByteArray Utf8(const QString& text)
{
    return text.toUtf8();
}

// Wraps a message of the given pattern in the comment token of the last echo.
QString Wrap(const QString& pattern, const QString& commentPrefix, const QString& text)
{
    return pattern.arg(commentPrefix, text);
}
} // namespace

MStatus initializePlugin(MObject object)
{
    MStatus status;
    MFnPlugin plugin(object, Utf8(Settings::AUTHOR).constData(), Utf8(Settings::VERSION_STRING).constData(),
                     "Any", &status);
    if (status != MStatus::kSuccess)
    {
        MGlobal::displayError(MString("Failed to initialize plugin: ") + status.errorString());
        return status;
    }
    // In batch mode the plug-in loads and stays empty.
    if (MayaUtil::IsBatchMode())
        return MStatus::kSuccess;

    MayaUtil::SourceApplicationScripts();

    const MString name = BrindletEditorCommand::GetCommandName();
    status =
        plugin.registerCommand(name, BrindletEditorCommand::Creator, BrindletEditorCommand::CommandSyntax);
    if (status != MStatus::kSuccess)
    {
        MGlobal::displayError(MString("Failed to register '") + name + "' command: " + status.errorString());
        return status;
    }

    BrindletEditorCommand::Initialize();

    status = AddCallbacks();
    if (status != MStatus::kSuccess)
        MGlobal::displayError("Failed to add callbacks");
    return status;
}

MStatus uninitializePlugin(MObject object)
{
    // No clipboard data may outlive the plug-in's code, in any mode.
    if (QClipboard* clipboard = QGuiApplication::clipboard())
        clipboard->clear();

    MStatus status;
    MFnPlugin plugin(object, Utf8(Settings::AUTHOR).constData(), Utf8(Settings::VERSION_STRING).constData(),
                     "Any", &status);
    if (status != MStatus::kSuccess)
    {
        MGlobal::displayError(MString("Failed to uninitialize plugin: ") + status.errorString());
        return status;
    }
    if (MayaUtil::IsBatchMode())
        return MStatus::kSuccess;

    status = MayaUtil::RemoveCallbacks();
    if (status != MStatus::kSuccess)
    {
        MGlobal::displayError("Failed to remove callbacks");
        return status;
    }

    BrindletEditorCommand::Cleanup();

    const MString name = BrindletEditorCommand::GetCommandName();
    status = plugin.deregisterCommand(name);
    if (status != MStatus::kSuccess)
    {
        MGlobal::displayError(MString("Failed to deregister '") + name +
                              "' command: " + status.errorString());
        return status;
    }
    return MStatus::kSuccess;
}

MStatus AddCallbacks()
{
    MayaUtil::callbackIds.clear();
    MayaUtil::callbackIds.append(
        MEventMessage::addEventCallback("quitApplication", OnApplicationExit, nullptr, nullptr));
    MayaUtil::callbackIds.append(
        MCommandMessage::addCommandOutputCallback(OnCommandOutputReceived, nullptr, nullptr));
    return MStatus::kSuccess;
}

void OnApplicationExit(void* /*clientData*/)
{
    BrindletEditorCommand::Shutdown();
}

void OnCommandOutputReceived(const MString& message, MCommandMessage::MessageType type, void* /*clientData*/)
{
    // Survives from one message to the next: what follows a MEL echo is wrapped in "//",
    // what follows a Python echo in "#".
    static QString commentPrefix = QStringLiteral("//");

    if (Settings::traceHideAll || !BrindletEditorCommand::GuiAvailable())
        return;

    QString text = MayaUtil::ToQString(message);
    switch (type)
    {
    case MCommandMessage::kHistory:
        commentPrefix = text.endsWith(QLatin1String(";\n")) ? QStringLiteral("//") : QStringLiteral("#");
        if (Settings::outputMinimalTrace)
            return;
        break;
    case MCommandMessage::kDisplay:
        commentPrefix = text.endsWith(QLatin1String(";\n")) ? QStringLiteral("//") : QStringLiteral("#");
        break;
    case MCommandMessage::kInfo:
        text = Wrap(QStringLiteral("%1 %2 %1\n"), commentPrefix, text);
        break;
    case MCommandMessage::kWarning:
        text = Wrap(QStringLiteral("%1 Warning: %2 %1\n"), commentPrefix, text);
        break;
    case MCommandMessage::kError:
        text = Wrap(QStringLiteral("%1 Error: %2 %1\n"), commentPrefix, text);
        break;
    case MCommandMessage::kResult:
        text = Wrap(QStringLiteral("%1 Result: %2 %1\n"), commentPrefix, text);
        break;
    case MCommandMessage::kStackTrace:
        return;
    default:
        break;
    }
    BrindletEditorCommand::AppendToOutput(text);
}
