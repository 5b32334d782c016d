#include "plugin/BrindletEditorCommand.h"

#include "plugin/Logger.h"
#include "plugin/MayaUtil.h"
#include "settings/ColorSettings.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"

#include <maya/MArgDatabase.h>

#include <QtCore/QFileInfo>

namespace
{
const char* const VERSION_FLAG = "-v";
const char* const VERSION_FLAG_LONG = "-version";
const char* const CLEAR_OUTPUT_FLAG = "-co";
const char* const CLEAR_OUTPUT_FLAG_LONG = "-clearOutput";
const char* const OPEN_FILE_FLAG = "-of";
const char* const OPEN_FILE_FLAG_LONG = "-openFile";
const char* const REVERT_MODULE_STATE_FLAG = "-rms";
const char* const REVERT_MODULE_STATE_FLAG_LONG = "-revertModuleState";
} // namespace

BrindletEditor* BrindletEditorCommand::editorWidget = nullptr;
bool BrindletEditorCommand::firstCall = true;

BrindletEditorCommand::~BrindletEditorCommand() = default;

void* BrindletEditorCommand::Creator()
{
    return new BrindletEditorCommand();
}

MSyntax BrindletEditorCommand::CommandSyntax()
{
    MSyntax syntax;
    syntax.addFlag(VERSION_FLAG, VERSION_FLAG_LONG);
    syntax.addFlag(CLEAR_OUTPUT_FLAG, CLEAR_OUTPUT_FLAG_LONG);
    syntax.addFlag(OPEN_FILE_FLAG, OPEN_FILE_FLAG_LONG, MSyntax::kString);
    syntax.addFlag(REVERT_MODULE_STATE_FLAG, REVERT_MODULE_STATE_FLAG_LONG);
    return syntax;
}

MString BrindletEditorCommand::GetCommandName()
{
    return MayaUtil::ToMString(Settings::MEL_COMMAND);
}

MStatus BrindletEditorCommand::doIt(const MArgList& args)
{
    MStatus status;
    const MArgDatabase database(syntax(), args, &status);
    if (status != MStatus::kSuccess)
        return status;

    // Only the first flag set runs, so that several flags on one call do not add up.
    if (database.isFlagSet(VERSION_FLAG))
    {
        setResult(MayaUtil::ToMString(Settings::VERSION_STRING));
        return MStatus::kSuccess;
    }
    if (database.isFlagSet(CLEAR_OUTPUT_FLAG))
        return ClearOutput();
    if (database.isFlagSet(OPEN_FILE_FLAG))
        return OpenFile(database);
    if (database.isFlagSet(REVERT_MODULE_STATE_FLAG))
        return RevertModuleState();
    return OpenEditor();
}

MStatus BrindletEditorCommand::ClearOutput()
{
    if (editorWidget)
        editorWidget->ClearHistory();
    else
        MayaUtil::ClearExistingHistory();
    return MStatus::kSuccess;
}

MStatus BrindletEditorCommand::OpenFile(const MArgDatabase& database)
{
    MString argument;
    database.getFlagArgument(OPEN_FILE_FLAG, 0, argument);
    const QString path = MayaUtil::ToQString(argument);
    if (path.isEmpty())
        return MStatus::kSuccess;
    const QFileInfo info(path);
    if (!info.exists())
    {
        Logger::Error(QStringLiteral("File not found: %1").arg(path));
        return MStatus::kFailure;
    }
    if (!info.isFile())
    {
        Logger::Error(QStringLiteral("Invalid file path: %1").arg(path));
        return MStatus::kFailure;
    }
    if (!editorWidget)
    {
        Logger::Error("Brindlet Editor 2 GUI has not been initialized.");
        return MStatus::kFailure;
    }
    editorWidget->OpenFile(path, false);
    return MStatus::kSuccess;
}

MStatus BrindletEditorCommand::RevertModuleState()
{
    if (editorWidget && editorWidget->IsPythonModuleStateUpdated())
        editorWidget->PythonRevertModuleState();
    return MStatus::kSuccess;
}

void BrindletEditorCommand::CreateEditorWidget()
{
    if (!editorWidget)
        editorWidget = new BrindletEditor();
}

MStatus BrindletEditorCommand::OpenEditor()
{
    const bool first = firstCall;
    firstCall = false;

    if (MayaUtil::WorkspaceControlExists())
    {
        // A panel that Maya restored collapsed stays so on the first call after start.
        if (!(first && MayaUtil::WorkspaceControlCollapsed()))
            MayaUtil::SetWorkspaceControlVisible(true);
        if (!editorWidget)
        {
            CreateEditorWidget();
            MayaUtil::SetWorkspaceChild(editorWidget, nullptr);
        }
        return MStatus::kSuccess;
    }

    QWidget* parent = MayaUtil::CreateWorkspaceControl();
    if (!parent)
    {
        Logger::Error("Failed to create workspace control");
        Logger::Error(QStringLiteral("%1 setup failed. (See script editor for details")
                          .arg(Settings::APPLICATION_NAME));
        return MStatus::kFailure;
    }
    CreateEditorWidget();
    MayaUtil::SetWorkspaceChild(editorWidget, parent);
    return MStatus::kSuccess;
}

void BrindletEditorCommand::Initialize()
{
    Settings::ReadUserConfig();
    ColorSettings::ReadUserConfig();
    if (Settings::outputDisableEchoAllOnStartup)
        MayaUtil::SetEchoAllCommandsEnabled(false);
    else if (MayaUtil::EchoAllCommandsEnabled())
        Settings::outputMinimalTrace = false; // echo-all and minimal trace exclude one another
    MayaUtil::CreateMainMenuItem();
    MayaUtil::RefreshCommandList();
    MayaUtil::SetSuppressStackWindowEnabled(Settings::suppressStackWindow);
    Settings::customScaleValue = MayaUtil::GetCustomScaleValue();
    if (Settings::overrideScriptEditorButton)
        MayaUtil::OverrideScriptEditorButton();
    if (Settings::pythonImportPyMelOnLoad)
        MayaUtil::ImportPyMel();
}

void BrindletEditorCommand::Shutdown()
{
    MayaUtil::RemoveMainMenuItem();
    MayaUtil::RestoreScriptEditorButton();
    MayaUtil::CloseWorkspaceControl();
    if (editorWidget)
    {
        editorWidget->Shutdown();
        editorWidget->setParent(nullptr);
        delete editorWidget;
        editorWidget = nullptr;
    }
}

void BrindletEditorCommand::Cleanup()
{
    Shutdown();
}

bool BrindletEditorCommand::GuiAvailable()
{
    return editorWidget != nullptr;
}

void BrindletEditorCommand::AppendToOutput(const QString& text)
{
    if (editorWidget)
        editorWidget->AppendToOutputThreadSafe(text);
}
