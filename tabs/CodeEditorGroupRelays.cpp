#include "tabs/CodeEditorGroup.h"

#include "editor/CodeEditor.h"
#include "editor/FindReplaceWidget.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"
#include "tabs/CodeEditorGroupTabBar.h"

#include <QtWidgets/QStackedWidget>

// ---------------------------------------------------------------------------------------------
// From the tab bar

void CodeEditorGroup::OnCurrentTabChanged(int index)
{
    if (IsFindReplaceVisible())
        ClearSearch();
    codeEditorStack->setCurrentIndex(index);
    UpdateLastUsedEditorOrder();
    if (IsFindReplaceVisible())
        findReplace->SetFindInSelectionEnabled(false, false);
    emit CurrentTabChanged();
}

void CodeEditorGroup::OnNewTabRequested()
{
    emit NewTabRequested();
}

void CodeEditorGroup::OnCloseTabRequested(int index)
{
    emit CloseTabRequested(this, index);
}

void CodeEditorGroup::OnCloseOtherTabsRequested(int index)
{
    emit CloseOtherTabsRequested(this, index);
}

void CodeEditorGroup::OnCloseTabsToRightRequested(int index)
{
    emit CloseTabsToRightRequested(this, index);
}

void CodeEditorGroup::OnMoveTabRequested(int oldId, int oldIndex, int newId, int newIndex)
{
    emit MoveTabRequested(oldId, oldIndex, newId, newIndex);
}

void CodeEditorGroup::OnOpenFileRequested(int index, const QString& filePath)
{
    emit OpenFileRequested(id, index, filePath);
}

void CodeEditorGroup::OnRenameRequested(int index)
{
    emit RenameRequested(this, index);
}

void CodeEditorGroup::OnShowInFolder(int index)
{
    const QString path = GetFilePath(index);
    if (!path.isEmpty())
        MayaUtil::RevealInFolder(path);
}

void CodeEditorGroup::OnShowInSideBar(int index)
{
    const QString path = GetFilePath(index);
    if (!path.isEmpty())
        emit ShowInSideBarRequested(path);
}

void CodeEditorGroup::OnExecuteBtnClicked()
{
    FocusCurrentCodeEditor();
    OnExecute();
}

void CodeEditorGroup::OnExecuteAllBtnClicked()
{
    FocusCurrentCodeEditor();
    OnExecuteAll();
}

void CodeEditorGroup::OnExecuteLineBtnClicked()
{
    FocusCurrentCodeEditor();
    OnExecuteLine();
}

// ---------------------------------------------------------------------------------------------
// From the editors

void CodeEditorGroup::OnCodeEditorReceivedFocus()
{
    emit ReceivedFocus(this);
    tabBar->ScrollToCurrent();
}

void CodeEditorGroup::OnTextChanged(const QString& path, const QString& text)
{
    CodeEditor* current = GetCurrent();
    if (current && IsFindReplaceVisible() && !searchRegEx.pattern().isEmpty())
        UpdateSearchResults(current);
    UpdateParser(GetCurrent());
    // Only a live search in files wants every change; while it is closed this costs nothing.
    if (Settings::sideBarVisible && Settings::searchViewActive &&
        !Settings::globalSearchRegEx.pattern().isEmpty())
        emit TextChanged(path, text);
}

void CodeEditorGroup::OnModificationChanged(bool modified, CodeEditor* codeEditor)
{
    if (!codeEditor || codeEditor->GetType() != CodeEditorType::FILE)
        return;
    const int index = codeEditorStack->indexOf(codeEditor);
    if (index >= 0)
        SetTabLabel(index, codeEditor->GetLabel(), modified, CodeEditorType::FILE);
}

void CodeEditorGroup::OnFileChanged(const QString& path)
{
    emit FileChanged(path);
}

void CodeEditorGroup::OnCursorPositionChanged()
{
    emit CursorPositionChanged();
}

void CodeEditorGroup::OnOverwriteModeChanged()
{
    emit OverwriteModeChanged();
}

void CodeEditorGroup::OnErrorAndWarningTextChanged()
{
    emit ErrorAndWarningTextChanged();
}

void CodeEditorGroup::OnQuickHelpChanged(const QString& text, bool showWhenHidden)
{
    emit QuickHelpChanged(text, showWhenHidden);
}

void CodeEditorGroup::OnIncreaseFontSizeRequested()
{
    emit IncreaseFontSizeRequested();
}

void CodeEditorGroup::OnDecreaseFontSizeRequested()
{
    emit DecreaseFontSizeRequested();
}

void CodeEditorGroup::OnExecute()
{
    emit ExecutePressed();
}

void CodeEditorGroup::OnExecuteAll()
{
    emit ExecuteAllPressed();
}

void CodeEditorGroup::OnExecuteLine()
{
    emit ExecuteLinePressed();
}

void CodeEditorGroup::OnSaveScriptToShelf()
{
    emit SaveScriptToShelfPressed();
}

void CodeEditorGroup::OnInsertPathRequested()
{
    emit InsertPathRequested();
}

void CodeEditorGroup::OnPythonDirRequested()
{
    emit PythonDirRequested();
}

void CodeEditorGroup::OnPythonHelpRequested()
{
    emit PythonHelpRequested();
}

void CodeEditorGroup::OnPythonUpdateModuleStateRequested()
{
    emit PythonUpdateModuleStateRequested();
}

void CodeEditorGroup::OnPythonRevertModuleStateRequested()
{
    emit PythonRevertModuleStateRequested();
}

void CodeEditorGroup::OnTogglePythonRevertModuleStateOnExecuteRequested()
{
    emit TogglePythonRevertModuleStateOnExecuteRequested();
}
