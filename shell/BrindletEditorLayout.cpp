// Panel visibility, sizes and positions of BrindletEditor.
#include "shell/BrindletEditor.h"

#include "output/PanelGroup.h"
#include "settings/Settings.h"
#include "shell/StatusBar.h"
#include "sidebar/ActivityBar.h"
#include "sidebar/SideBar.h"

#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QSplitter>

namespace
{
// Swaps the two children of a splitter, keeping each one's size.
void SwapSplitterChildren(QSplitter* splitter, bool keepSizes)
{
    const QList<int> sizes = splitter->sizes();
    // Moving a child within its splitter keeps it shown, unlike taking it out and back.
    splitter->insertWidget(0, splitter->widget(1));
    if (keepSizes)
        splitter->setSizes({sizes.at(1), sizes.at(0)});
}
} // namespace

int BrindletEditor::SideBarSplitterSize() const
{
    return sideBarSplitter->sizes().value(sideBarSplitter->indexOf(sideBar));
}

int BrindletEditor::OutputSplitterSize() const
{
    return outputSplitter->sizes().value(outputSplitter->indexOf(panelGroup));
}

int BrindletEditor::CodeEditorSplitterSize() const
{
    return outputSplitter->sizes().value(outputSplitter->indexOf(editorGroupSplitter));
}

void BrindletEditor::SetSideBarSplitterSizes(int sideBarSize, int otherSize)
{
    sideBarSplitter->setSizes(Settings::sideBarLeft ? QList<int>{sideBarSize, otherSize}
                                                    : QList<int>{otherSize, sideBarSize});
}

void BrindletEditor::SetOutputSplitterSizes(int codeEditorSize, int outputSize)
{
    outputSplitter->setSizes(Settings::outputTopLeft ? QList<int>{outputSize, codeEditorSize}
                                                     : QList<int>{codeEditorSize, outputSize});
}

void BrindletEditor::SaveSideBarSizes()
{
    if (sideBarSplitter->sizes().size() != 2)
        return;
    Settings::sideBarSize = SideBarSplitterSize();
    Settings::mainWindowSize = sideBarSplitter->sizes().value(sideBarSplitter->indexOf(outputSplitter));
}

void BrindletEditor::SaveOutputSplitterSizes()
{
    if (outputSplitter->sizes().size() != 2)
        return;
    Settings::codeEditorSize = CodeEditorSplitterSize();
    Settings::outputSize = OutputSplitterSize();
}

void BrindletEditor::ShowSideBar()
{
    if (Settings::sideBarVisible)
        return;
    if (sideBarSplitter->sizes().size() == 2)
    {
        // A side bar that was dragged to nothing comes back at a quarter of the width.
        const int quarter = width() / 4;
        const bool stored = Settings::sideBarSize > 9;
        SetSideBarSplitterSizes(stored ? Settings::sideBarSize : quarter,
                                stored ? Settings::mainWindowSize : quarter * 3);
    }
    Settings::sideBarVisible = true;
}

void BrindletEditor::HideSideBar()
{
    if (!Settings::sideBarVisible)
        return;
    if (sideBarSplitter->sizes().size() == 2)
    {
        const int total = sideBarSplitter->sizes().value(0) + sideBarSplitter->sizes().value(1);
        SetSideBarSplitterSizes(0, total);
    }
    Settings::sideBarVisible = false;
    if (IsSideBarWidget(QApplication::focusWidget()))
        FocusActiveCodeEditor();
}

void BrindletEditor::SetSideBarVisible(bool visible, bool splitterMove)
{
    if (visible && splitterMove)
        Settings::sideBarVisible = true;
    else if (visible)
        ShowSideBar();
    else
        HideSideBar();
    if (Settings::searchViewActive)
        UpdateCodeEditorExtraSelections();
}

void BrindletEditor::ToggleSideBar()
{
    if (Settings::sideBarVisible)
        SaveSideBarSizes();
    SetSideBarVisible(!Settings::sideBarVisible);
}

void BrindletEditor::ShowCodeEditorAndOutput()
{
    if (Settings::codeEditorVisible && Settings::outputVisible)
        return;
    if (outputSplitter->sizes().size() == 2)
    {
        const int quarter = width() / 4;
        SetOutputSplitterSizes(Settings::codeEditorSize >= 10 ? Settings::codeEditorSize : quarter * 3,
                               Settings::outputSize >= 10 ? Settings::outputSize : quarter);
    }
    Settings::codeEditorVisible = true;
    Settings::outputVisible = true;
}

void BrindletEditor::HideCodeEditor()
{
    if (!Settings::codeEditorVisible)
        return;
    if (outputSplitter->sizes().size() == 2)
        SetOutputSplitterSizes(0, 100);
    Settings::codeEditorVisible = false;
    Settings::outputVisible = true;
}

void BrindletEditor::HideOutput()
{
    if (!Settings::outputVisible)
        return;
    if (outputSplitter->sizes().size() == 2)
        SetOutputSplitterSizes(100, 0);
    Settings::outputVisible = false;
    Settings::codeEditorVisible = true;
}

void BrindletEditor::SetCodeEditorVisible(bool visible, bool splitterMove)
{
    if (visible && splitterMove)
        Settings::codeEditorVisible = true;
    else if (visible)
        ShowCodeEditorAndOutput();
    else
        HideCodeEditor();
}

void BrindletEditor::SetOutputVisible(bool visible, bool splitterMove)
{
    if (visible && splitterMove)
        Settings::outputVisible = true;
    else if (visible)
        ShowCodeEditorAndOutput();
    else
        HideOutput();
}

void BrindletEditor::ToggleCodeEditor()
{
    if (Settings::codeEditorVisible && Settings::outputVisible)
        SaveOutputSplitterSizes();
    SetCodeEditorVisible(!Settings::codeEditorVisible);
}

void BrindletEditor::ToggleOutput()
{
    if (Settings::codeEditorVisible && Settings::outputVisible)
        SaveOutputSplitterSizes();
    SetOutputVisible(!Settings::outputVisible);
}

void BrindletEditor::OnSplitterMoved()
{
    // The user can drag a panel to nothing; the flags must follow.
    if (sender() == sideBarSplitter && sideBarSplitter->sizes().size() == 2)
    {
        const int size = SideBarSplitterSize();
        if (size != 0 && !Settings::sideBarVisible)
            SetSideBarVisible(true, true);
        else if (size == 0 && Settings::sideBarVisible)
            SetSideBarVisible(false, true);
    }
    else if (sender() == outputSplitter && outputSplitter->sizes().size() == 2)
    {
        if (OutputSplitterSize() == 0)
            SetOutputVisible(false, true);
        else if (CodeEditorSplitterSize() == 0)
            SetCodeEditorVisible(false, true);
        else if (!Settings::codeEditorVisible)
            SetCodeEditorVisible(true, true);
        else if (!Settings::outputVisible)
            SetOutputVisible(true, true);
    }
}

void BrindletEditor::SetSideBarView(SideBarView view)
{
    const bool searchWasActive = Settings::searchViewActive;
    sideBar->SetView(view);
    activityBar->SetView(view);
    Settings::searchViewActive = view == SideBarViewSearch;
    if (Settings::sideBarVisible && searchWasActive != Settings::searchViewActive)
        UpdateCodeEditorExtraSelections();
}

void BrindletEditor::OnActivityBarViewSelected(SideBarView view)
{
    if (!Settings::sideBarVisible)
    {
        ToggleSideBar();
        SetSideBarView(view);
    }
    else if (sideBar->GetView() == view)
    {
        ToggleSideBar();
    }
    else
    {
        SetSideBarView(view);
    }
}

void BrindletEditor::ShowExplorer()
{
    SetSideBarView(SideBarViewExplorer);
    SetSideBarVisible(true);
}

void BrindletEditor::ShowQuickHelpView()
{
    SetSideBarView(SideBarViewQuickHelp);
    SetSideBarVisible(true);
}

void BrindletEditor::SetActivityBarVisible(bool visible)
{
    Settings::activityBarVisible = visible;
    activityBar->setVisible(visible);
    const QString text = visible ? QStringLiteral("Hide Activity Bar") : QStringLiteral("Show Activity Bar");
    toggleActivityBarAction->setText(text);
    toggleActivityBarAction->setToolTip(text);
}

void BrindletEditor::ToggleActivityBar()
{
    SetActivityBarVisible(!Settings::activityBarVisible);
}

void BrindletEditor::SetStatusBarVisible(bool visible)
{
    Settings::statusBarVisible = visible;
    statusBar->setVisible(visible);
    const QString text = visible ? QStringLiteral("Hide Status Bar") : QStringLiteral("Show Status Bar");
    toggleStatusBarAction->setText(text);
    toggleStatusBarAction->setToolTip(text);
}

void BrindletEditor::ToggleStatusBar()
{
    SetStatusBarVisible(!Settings::statusBarVisible);
}

void BrindletEditor::SetSideBarPosition(bool left)
{
    if (Settings::sideBarLeft == left)
        return;
    Settings::sideBarLeft = left;
    if (sideBarSplitter->sizes().size() != 2)
        return;
    SwapSplitterChildren(sideBarSplitter, true);
    const int sideBarIndex = sideBarSplitter->indexOf(sideBar);
    const int otherIndex = sideBarSplitter->indexOf(outputSplitter);
    sideBarSplitter->setCollapsible(sideBarIndex, true);
    sideBarSplitter->setStretchFactor(sideBarIndex, 0);
    sideBarSplitter->setCollapsible(otherIndex, false);
    sideBarSplitter->setStretchFactor(otherIndex, 1);
    if (left)
    {
        centralLayout->removeWidget(sideBarSplitter);
        centralLayout->addWidget(sideBarSplitter);
        toggleSideBarPositionAction->setText(QStringLiteral("Move Side Bar Right"));
    }
    else
    {
        centralLayout->removeWidget(activityBar);
        centralLayout->addWidget(activityBar);
        toggleSideBarPositionAction->setText(QStringLiteral("Move Side Bar Left"));
    }
    // The handle is new.
    if (QSplitterHandle* handle = sideBarSplitter->handle(1))
        handle->installEventFilter(this);
}

void BrindletEditor::ToggleSideBarPosition()
{
    SetSideBarPosition(!Settings::sideBarLeft);
}

void BrindletEditor::SetOutputPosition(bool vertical, bool topLeft)
{
    const bool orientationChanged = Settings::outputOrientVertical != vertical;
    const bool sideChanged = Settings::outputTopLeft != topLeft;
    Settings::outputOrientVertical = vertical;
    Settings::outputTopLeft = topLeft;
    if (orientationChanged)
        outputSplitter->setOrientation(vertical ? Qt::Vertical : Qt::Horizontal);
    if (sideChanged && outputSplitter->sizes().size() == 2)
    {
        // With a new orientation the old sizes mean nothing: Qt settles them.
        SwapSplitterChildren(outputSplitter, !orientationChanged);
        if (QSplitterHandle* handle = outputSplitter->handle(1))
            handle->installEventFilter(this);
        if (!topLeft)
            toggleSideBarPositionAction->setText(QStringLiteral("Move Side Bar Left"));
    }
    panelGroup->UpdateBackgroundColor();
}

void BrindletEditor::OutputPositionTop()
{
    SetOutputPosition(true, true);
}

void BrindletEditor::OutputPositionBottom()
{
    SetOutputPosition(true, false);
}

void BrindletEditor::OutputPositionLeft()
{
    SetOutputPosition(false, true);
}

void BrindletEditor::OutputPositionRight()
{
    SetOutputPosition(false, false);
}

void BrindletEditor::ToggleCodeEditorLayout()
{
    Settings::codeEditorOrientVertical = !Settings::codeEditorOrientVertical;
    editorGroupSplitter->setOrientation(Settings::codeEditorOrientVertical ? Qt::Vertical : Qt::Horizontal);
}
