// Show, hide, close and key handling of BrindletEditor, and the saving of its state.
#include "shell/BrindletEditor.h"

#include "editor/CodeEditor.h"
#include "output/PanelGroup.h"
#include "plugin/Logger.h"
#include "plugin/MayaUtil.h"
#include "settings/ColorSettings.h"
#include "settings/Settings.h"
#include "shell/StatusBar.h"
#include "sidebar/ActivityBar.h"
#include "sidebar/SideBar.h"
#include "tabs/CodeEditorGroup.h"

#include <QtCore/QFileInfo>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QSplitter>

void BrindletEditor::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    RestoreSplitterState();
    SyncActions();
    if (Settings::codeEditorVisible)
        FocusActiveCodeEditor();
    UpdateTitleBar();
    MayaUtil::UpdatePylintPythonPath();
    if (!moduleStateUpdated)
    {
        MayaUtil::PythonUpdateModuleState();
        moduleStateUpdated = true;
        // Sends the echo state once more, so the host is in step with what the user set.
        if (MayaUtil::EchoAllCommandsEnabled())
            MayaUtil::SetEchoAllCommandsEnabled(true);
    }
}

void BrindletEditor::hideEvent(QHideEvent* event)
{
    SaveWindowGeometry(true);
    SaveSplitterState();
    QWidget::hideEvent(event);
}

void BrindletEditor::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Enter)
        Execute();
    // No key press goes on from the editor to the host.
    event->accept();
}

void BrindletEditor::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
}

bool BrindletEditor::eventFilter(QObject* object, QEvent* event)
{
    if (object == mainWindow && event->type() == QEvent::Close)
        return HandleMainWindowClose(event);
    if (event->type() == QEvent::MouseButtonPress)
    {
        if (object == outputSplitter->handle(1))
            StoreOutputSplitterSizesOnPress();
        else if (object == sideBarSplitter->handle(1))
            StoreSideBarSplitterSizesOnPress();
    }
    return false;
}

bool BrindletEditor::HandleMainWindowClose(QEvent* event)
{
    if (Settings::saveAllOnExit || !Settings::showUnsavedFileDialogOnMayaExit)
        return false;
    if (!ModifiedFilesExist())
        return false;
    const int answer = ShowUnsavedFileDialog(QString());
    if (answer == QMessageBox::Yes)
    {
        SaveAll(false, true);
    }
    else if (answer == QMessageBox::Cancel)
    {
        // Stops the host from quitting.
        event->ignore();
        return true;
    }
    return false;
}

void BrindletEditor::StoreOutputSplitterSizesOnPress()
{
    const QList<int> sizes = outputSplitter->sizes();
    if (sizes.size() != 2 || sizes.at(0) <= 0 || sizes.at(1) <= 0)
        return;
    Settings::outputSize = Settings::outputTopLeft ? sizes.at(0) : sizes.at(1);
    Settings::codeEditorSize = Settings::outputTopLeft ? sizes.at(1) : sizes.at(0);
}

void BrindletEditor::StoreSideBarSplitterSizesOnPress()
{
    // Read from the output splitter, as the stored side bar sizes always have been.
    const QList<int> sizes = outputSplitter->sizes();
    if (sizes.size() != 2 || sizes.at(0) <= 0 || sizes.at(1) <= 0)
        return;
    Settings::sideBarSize = Settings::sideBarLeft ? sizes.at(0) : sizes.at(1);
    Settings::mainWindowSize = Settings::sideBarLeft ? sizes.at(1) : sizes.at(0);
}

void BrindletEditor::OnApplicationFocusChanged(QWidget* /*old*/, QWidget* now)
{
    // Key bindings must not fire while the user works in the host proper.
    const bool enabled = MayaUtil::WorkspaceControlFloating() || IsBrindletEditorWidget(now);
    if (enabled == keyBindingsEnabled)
        return;
    keyBindingsEnabled = enabled;
    keyBindings.SetBindingsEnabled(enabled);
}

void BrindletEditor::UpdateTitleBar()
{
    QString title;
    if (CodeEditor* codeEditor = GetActiveCodeEditor())
        title = codeEditor->GetLabel() + QStringLiteral(" - ");
    title += Settings::APPLICATION_TITLE;
    MayaUtil::SetWorkspaceLabel(title);
}

void BrindletEditor::SaveWindowGeometry(bool force)
{
    if (!isVisible() && !force)
        return;
    const QPoint topLeft = mapToGlobal(QPoint(0, 0));
    Settings::windowGeometry = QRect(topLeft, geometry().size());
}

void BrindletEditor::SaveSplitterState()
{
    Settings::sideBarState = sideBarSplitter->saveState();
    Settings::outputState = outputSplitter->saveState();
    sideBar->SaveState();
}

void BrindletEditor::RestoreSplitterState()
{
    sideBarSplitter->restoreState(Settings::sideBarState);
    outputSplitter->restoreState(Settings::outputState);
    if (Settings::sideBarVisible)
        SaveSideBarSizes();
    if (Settings::codeEditorVisible && Settings::outputVisible)
        SaveOutputSplitterSizes();
}

void BrindletEditor::WriteUserConfigs()
{
    UpdateCodeEditorGroupDetails();
    sideBar->SaveOutline();
    sideBar->ClearInvalidDetailsFromOutline(GetCodeEditorPaths());
    SaveWindowGeometry(false);
    SaveSplitterState();
    Settings::WriteUserConfig();
    ColorSettings::WriteUserConfig();
    if (keyBindingsRead)
        keyBindings.WriteUserKeyBindings();
    sideBar->SaveWorkspace();
}

void BrindletEditor::SaveState()
{
    WriteUserConfigs();
}

void BrindletEditor::Shutdown()
{
    disconnect(qApp, SIGNAL(focusChanged(QWidget*, QWidget*)), this,
               SLOT(OnApplicationFocusChanged(QWidget*, QWidget*)));
    // Modified internal buffers are always saved; files only where the user wants it.
    SaveAll(true, Settings::saveAllOnExit);
    WriteUserConfigs();
}

void BrindletEditor::ApplyPreferences()
{
    if (Settings::pylintPath.isEmpty())
    {
        Settings::pylintEnabled = false;
    }
    else if (Settings::pylintEnabled && !QFileInfo::exists(Settings::pylintPath))
    {
        Logger::Error(QStringLiteral("Pylint path not found: %1").arg(Settings::pylintPath));
        Settings::pylintEnabled = false;
    }
    panelGroup->ApplyPreferences();
    UpdateOverrideScriptEditorButton();
    UpdateKeyBindings();
    UpdateTabsAndSpaces();
    UpdateFontsAndColors();
    ParseForcedImports();
    MayaUtil::UpdatePylintPythonPath();
    for (CodeEditorGroup* group : codeEditorGroups)
        group->UpdatePreferences();
}

void BrindletEditor::OnPreferencesModified()
{
    ApplyPreferences();
    WriteUserConfigs();
}

void BrindletEditor::UpdateOverrideScriptEditorButton()
{
    if (Settings::overrideScriptEditorButton)
        MayaUtil::OverrideScriptEditorButton();
    else
        MayaUtil::RestoreScriptEditorButton();
}

void BrindletEditor::UpdateKeyBindings()
{
    panelGroup->UpdateKeyBindings();
    for (CodeEditorGroup* group : codeEditorGroups)
        group->UpdateKeyBindings();
    sideBar->UpdateKeyBindings();
    activityBar->UpdateKeyBindings();
}

void BrindletEditor::UpdateCodeEditorExtraSelections()
{
    // Marks of the search in files depend on the side bar's state; every open editor shows them.
    for (CodeEditorGroup* group : codeEditorGroups)
    {
        for (CodeEditor* codeEditor : group->GetCodeEditors())
            codeEditor->UpdateExtraSelections();
    }
}
