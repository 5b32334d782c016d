// Fonts, colours, text options and font sizes of BrindletEditor, fanned out to the panels.
#include "shell/BrindletEditor.h"

#include "editor/CodeEditor.h"
#include "output/OutputTextEdit.h"
#include "output/PanelGroup.h"
#include "settings/Settings.h"
#include "sidebar/SideBar.h"
#include "tabs/CodeEditorGroup.h"

#include <QtWidgets/QApplication>

void BrindletEditor::UpdateFontsAndColors()
{
    for (CodeEditorGroup* group : codeEditorGroups)
        group->UpdateFontsAndColors();
    panelGroup->UpdateFontsAndColors();
    sideBar->UpdateColors();
}

void BrindletEditor::UpdateCodeEditorFont()
{
    for (CodeEditorGroup* group : codeEditorGroups)
        group->UpdateFont();
}

void BrindletEditor::UpdateCodeEditorTextOptions()
{
    for (CodeEditorGroup* group : codeEditorGroups)
        group->UpdateTextOptions();
}

void BrindletEditor::UpdateTabsAndSpaces()
{
    // Tab width and spaces follow each editor's language: its text options carry them.
    UpdateCodeEditorTextOptions();
    panelGroup->UpdateTabsAndSpaces();
}

void BrindletEditor::UpdateOutputFont()
{
    panelGroup->UpdateFont();
}

void BrindletEditor::IncreaseCodeEditorFontSize()
{
    ++Settings::codeEditorZoom;
    UpdateCodeEditorFont();
}

void BrindletEditor::DecreaseCodeEditorFontSize()
{
    --Settings::codeEditorZoom;
    UpdateCodeEditorFont();
}

void BrindletEditor::IncreaseOutputFontSize()
{
    ++Settings::outputZoom;
    UpdateOutputFont();
}

void BrindletEditor::DecreaseOutputFontSize()
{
    --Settings::outputZoom;
    UpdateOutputFont();
}

void BrindletEditor::ChangeFocusedFontSize(int step)
{
    // The widget with the focus decides which zoom changes; step 0 resets it.
    QWidget* focus = QApplication::focusWidget();
    if (qobject_cast<CodeEditor*>(focus))
    {
        Settings::codeEditorZoom = step == 0 ? 0 : Settings::codeEditorZoom + step;
        UpdateCodeEditorFont();
    }
    else if (qobject_cast<OutputTextEdit*>(focus))
    {
        Settings::outputZoom = step == 0 ? 0 : Settings::outputZoom + step;
        UpdateOutputFont();
    }
}

void BrindletEditor::IncreaseFontSize()
{
    ChangeFocusedFontSize(1);
}

void BrindletEditor::DecreaseFontSize()
{
    ChangeFocusedFontSize(-1);
}

void BrindletEditor::ResetFontSize()
{
    ChangeFocusedFontSize(0);
}
