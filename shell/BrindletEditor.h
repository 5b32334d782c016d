#pragma once

#include "settings/KeyBindings.h"
#include "sidebar/SideBarView.h"

#include <QtCore/QList>
#include <QtCore/QStringList>
#include <QtWidgets/QWidget>

class ActivityBar;
class CodeEditorGroup;
class PanelGroup;
class QAction;
class QHBoxLayout;
class QMenu;
class QMenuBar;
class QSplitter;
class QVBoxLayout;
class SideBar;
class StatusBar;

// The one top widget of the editor. It owns every panel, holds their layout and its
// persistence, and is the place through which the panels talk: each panel emits signals that
// are connected here, and this class forwards.
class BrindletEditor : public QWidget
{
    Q_OBJECT

public:
    explicit BrindletEditor(QWidget* parent = nullptr);
    ~BrindletEditor() override;

    void AppendToOutputThreadSafe(const QString& text);
    void Shutdown();
    void WriteUserConfigs();
    void ApplyPreferences();
    void UpdateTitleBar();

    void SaveWindowGeometry(bool force);
    void SaveSplitterState();
    void RestoreSplitterState();
    void SaveSideBarSizes();
    void SaveOutputSplitterSizes();

    int GetCodeEditorGroupCount() const;
    int GetCodeEditorGroupIndex(CodeEditorGroup* group) const;
    CodeEditorGroup* GetCodeEditorGroupByIndex(int index) const;
    CodeEditorGroup* GetCodeEditorGroupById(int id) const;
    int GetActiveCodeEditorGroupIndex() const;
    CodeEditorGroup* GetActiveCodeEditorGroup() const;
    void SetActiveCodeEditorGroup(CodeEditorGroup* group, bool force);
    int GetCodeEditorCount() const;
    void RefreshCodeEditorGroups(bool equalizeSizes);
    void RefreshCodeEditorGroupMiniToolbar();

    bool IsBrindletEditorWidget(QWidget* widget) const;
    bool IsSideBarWidget(QWidget* widget) const;

    // Buffers and files.
    bool OpenFile(const QString& path, bool fromWorkspace);
    bool ModifiedFilesExist() const;
    int ShowUnsavedFileDialog(const QString& path);
    void SaveAll(bool internalBuffers, bool files);

    // Script execution.
    bool IsPythonModuleStateUpdated() const;

    // Access for the panels' owner and its checks.
    QSplitter* GetEditorGroupSplitter() const { return editorGroupSplitter; }
    QSplitter* GetOutputSplitter() const { return outputSplitter; }
    QSplitter* GetSideBarSplitter() const { return sideBarSplitter; }
    PanelGroup* GetPanelGroup() const { return panelGroup; }
    SideBar* GetSideBar() const { return sideBar; }
    ActivityBar* GetActivityBar() const { return activityBar; }
    StatusBar* GetStatusBar() const { return statusBar; }
    KeyBindings* GetKeyBindings() { return &keyBindings; }
    QAction* GetToggleActivityBarAction() const { return toggleActivityBarAction; }
    QAction* GetToggleStatusBarAction() const { return toggleStatusBarAction; }
    QAction* GetToggleSideBarPositionAction() const { return toggleSideBarPositionAction; }

signals:
    void AppendToOutputRequested(const QString& text);

public slots:
    void AppendToOutput(const QString& text);
    void ClearHistory();
    void SaveState();
    void OnPreferencesModified();

    void ShowSideBar();
    void HideSideBar();
    void SetSideBarVisible(bool visible, bool splitterMove = false);
    void ToggleSideBar();
    void ShowCodeEditorAndOutput();
    void HideCodeEditor();
    void HideOutput();
    void SetCodeEditorVisible(bool visible, bool splitterMove = false);
    void SetOutputVisible(bool visible, bool splitterMove = false);
    void ToggleCodeEditor();
    void ToggleOutput();
    void SetSideBarView(SideBarView view);
    void OnActivityBarViewSelected(SideBarView view);
    void ShowExplorer();
    void ShowQuickHelpView();
    void SetActivityBarVisible(bool visible);
    void ToggleActivityBar();
    void SetStatusBarVisible(bool visible);
    void ToggleStatusBar();
    void SetSideBarPosition(bool left);
    void ToggleSideBarPosition();
    void SetOutputPosition(bool vertical, bool topLeft);
    void OutputPositionTop();
    void OutputPositionBottom();
    void OutputPositionLeft();
    void OutputPositionRight();
    void ToggleCodeEditorLayout();
    void OnSplitterMoved();
    void OnApplicationFocusChanged(QWidget* old, QWidget* now);
    void FocusActiveCodeEditor();
    void OnActiveCodeEditorChanged();
    void OnCodeEditorGroupFocusReceived(CodeEditorGroup* group);
    void UpdateOverrideScriptEditorButton();
    void UpdateKeyBindings();
    void UpdateCodeEditorExtraSelections();

    // Buffers and files.
    void NewMelBuffer();
    void NewPythonBuffer();

    // Script execution.
    void Execute();
    void PythonRevertModuleState();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void InitializeForMaya();
    void CreateActions();
    void CreateAction(QAction** action, const QString& text, const QString& statusTip, KeySequenceType type,
                      bool checkable = false);
    void CreateMenus();
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    void ConnectCodeEditorGroup(CodeEditorGroup* group);
    void SyncActions();
    void InstallSplitterHandleFilters();
    void StoreOutputSplitterSizesOnPress();
    void StoreSideBarSplitterSizesOnPress();
    bool HandleMainWindowClose(QEvent* event);
    void SetOutputSplitterSizes(int codeEditorSize, int outputSize);
    void SetSideBarSplitterSizes(int sideBarSize, int otherSize);
    int SideBarSplitterSize() const;
    int OutputSplitterSize() const;
    int CodeEditorSplitterSize() const;
    void AddBuffer(const QString& label);

    QWidget* mainWindow = nullptr;

    QAction* saveStateAction = nullptr;
    QAction* clearOutputAction = nullptr;
    QAction* explorerAction = nullptr;
    QAction* quickHelpAction = nullptr;
    QAction* toggleCodeEditorAction = nullptr;
    QAction* toggleOutputAction = nullptr;
    QAction* toggleSideBarAction = nullptr;
    QAction* toggleActivityBarAction = nullptr;
    QAction* toggleStatusBarAction = nullptr;
    QAction* toggleCodeEditorLayoutAction = nullptr;
    QAction* toggleSideBarPositionAction = nullptr;
    QAction* outputPositionTopAction = nullptr;
    QAction* outputPositionBottomAction = nullptr;
    QAction* outputPositionLeftAction = nullptr;
    QAction* outputPositionRightAction = nullptr;
    QAction* executeAction = nullptr;

    QMenuBar* menuBar = nullptr;
    QMenu* recentFilesMenu = nullptr;
    PanelGroup* panelGroup = nullptr;
    SideBar* sideBar = nullptr;
    ActivityBar* activityBar = nullptr;
    StatusBar* statusBar = nullptr;
    QSplitter* editorGroupSplitter = nullptr;
    QSplitter* outputSplitter = nullptr;
    QSplitter* sideBarSplitter = nullptr;
    QVBoxLayout* mainLayout = nullptr;
    QHBoxLayout* centralLayout = nullptr;
    QList<CodeEditorGroup*> codeEditorGroups;
    KeyBindings keyBindings;
    QStringList watchedChanges;
    QStringList ownSaves;
    bool keyBindingsEnabled = true;
    bool moduleStateUpdated = false;
};
