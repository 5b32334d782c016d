// The slots of the Edit, View, Go, Output and Help menus of BrindletEditor.
#include "shell/BrindletEditor.h"

#include "editor/CodeEditor.h"
#include "output/PanelGroup.h"
#include "plugin/Logger.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"
#include "tabs/CodeEditorGroup.h"

#include <QtCore/QFileInfo>
#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>

namespace
{
// The text widget with the focus: an editor or the output view alike.
QPlainTextEdit* FocusedTextEdit()
{
    return qobject_cast<QPlainTextEdit*>(QApplication::focusWidget());
}
} // namespace

void BrindletEditor::Undo()
{
    QPlainTextEdit* edit = FocusedTextEdit();
    if (edit && edit->document()->isUndoRedoEnabled())
        edit->undo();
}

void BrindletEditor::Redo()
{
    QPlainTextEdit* edit = FocusedTextEdit();
    if (edit && edit->document()->isUndoRedoEnabled())
        edit->redo();
}

void BrindletEditor::Cut()
{
    QPlainTextEdit* edit = FocusedTextEdit();
    if (!edit || edit->isReadOnly())
        return;
    if (auto* codeEditor = qobject_cast<CodeEditor*>(edit))
        codeEditor->CustomCut();
    else
        edit->cut();
}

void BrindletEditor::Copy()
{
    QPlainTextEdit* edit = FocusedTextEdit();
    if (!edit)
        return;
    if (auto* codeEditor = qobject_cast<CodeEditor*>(edit))
        codeEditor->CustomCopy();
    else
        edit->copy();
}

void BrindletEditor::Paste()
{
    QPlainTextEdit* edit = FocusedTextEdit();
    if (!edit || edit->isReadOnly())
        return;
    if (auto* codeEditor = qobject_cast<CodeEditor*>(edit))
        codeEditor->CustomPaste();
    else
        edit->paste();
}

void BrindletEditor::SelectAll()
{
    if (QPlainTextEdit* edit = FocusedTextEdit())
        edit->selectAll();
}

void BrindletEditor::IncreaseIndent()
{
    if (CodeEditor* codeEditor = GetCodeEditorWithFocus())
        codeEditor->IncreaseIndent(true);
}

void BrindletEditor::DecreaseIndent()
{
    if (CodeEditor* codeEditor = GetCodeEditorWithFocus())
        codeEditor->DecreaseIndent();
}

void BrindletEditor::CopyLineUp()
{
    if (CodeEditor* codeEditor = GetCodeEditorWithFocus())
        codeEditor->CopyLine(true);
}

void BrindletEditor::CopyLineDown()
{
    if (CodeEditor* codeEditor = GetCodeEditorWithFocus())
        codeEditor->CopyLine(false);
}

void BrindletEditor::MoveLineUp()
{
    if (CodeEditor* codeEditor = GetCodeEditorWithFocus())
        codeEditor->MoveLine(true);
}

void BrindletEditor::MoveLineDown()
{
    if (CodeEditor* codeEditor = GetCodeEditorWithFocus())
        codeEditor->MoveLine(false);
}

void BrindletEditor::DeleteLine()
{
    if (CodeEditor* codeEditor = GetCodeEditorWithFocus())
        codeEditor->DeleteLines();
}

void BrindletEditor::ToggleComment()
{
    if (CodeEditor* codeEditor = GetCodeEditorWithFocus())
        codeEditor->ToggleComment();
}

void BrindletEditor::ToggleBlockComment()
{
    if (CodeEditor* codeEditor = GetCodeEditorWithFocus())
        codeEditor->ToggleBlockComment();
}

void BrindletEditor::ConvertTabsToSpaces()
{
    if (CodeEditor* codeEditor = GetCodeEditorWithFocus())
        codeEditor->ConvertTabsToSpaces();
}

void BrindletEditor::ToggleRenderWhitespace()
{
    Settings::renderWhitespace = !Settings::renderWhitespace;
    UpdateCodeEditorTextOptions();
}

void BrindletEditor::ToggleWordWrap()
{
    Settings::wordWrapEnabled = !Settings::wordWrapEnabled;
    UpdateCodeEditorTextOptions();
}

void BrindletEditor::OnShowEditMenu()
{
    findInFilesAction->setText(QStringLiteral("Find in Files"));
    findInFilesAction->setStatusTip(QStringLiteral("Find in Files"));
}

void BrindletEditor::OnShowViewMenu()
{
    findInFilesAction->setText(QStringLiteral("Search"));
    findInFilesAction->setStatusTip(QStringLiteral("Search"));
}

void BrindletEditor::OnShowOutputVerbosityMenu()
{
    const QList<QAction*> actions = {echoAllAction, normalVerbosityAction, minimalVerbosityAction};
    const int index = panelGroup->GetVebosityIndex();
    if (index >= 0 && index < actions.size())
        actions.at(index)->setChecked(true);
}

void BrindletEditor::UpdateOutputVerbosity()
{
    const QObject* action = sender();
    if (action == echoAllAction)
        panelGroup->SetEchoAllCommandsEnabled(true);
    else if (action == normalVerbosityAction)
        panelGroup->SetNormalVerbosity();
    else if (action == minimalVerbosityAction)
        panelGroup->SetMinimalVerbosity();
}

void BrindletEditor::ToggleEchoAllCommands()
{
    panelGroup->SetEchoAllCommandsEnabled(echoAllCommandsAction->isChecked());
}

void BrindletEditor::OnEchoAllCommandsChanged()
{
    echoAllCommandsAction->setChecked(MayaUtil::EchoAllCommandsEnabled());
}

void BrindletEditor::ToggleLineNumbersInErrors()
{
    MayaUtil::SetLineNumbersInErrorsEnabled(lineNumbersInErrorsAction->isChecked());
}

void BrindletEditor::ToggleShowStackTrace()
{
    MayaUtil::SetShowStackTraceEnabled(showStackTraceAction->isChecked());
}

void BrindletEditor::ToggleSuppressStackWindow()
{
    MayaUtil::SetSuppressStackWindowEnabled(suppressStackWindowAction->isChecked());
}

void BrindletEditor::ToggleWriteOutputToFile()
{
    panelGroup->ToggleWriteToFile();
}

void BrindletEditor::OnWriteOutputToFileUpdated(bool enabled)
{
    writeOutputToFileAction->setChecked(enabled);
}

void BrindletEditor::GoToEditor()
{
    const QObject* action = sender();
    if (action == nextEditorAction)
        NextEditor(false);
    else if (action == previousEditorAction)
        NextEditor(true);
    else if (action == nextUsedEditorAction)
        NextUsedEditor(false);
    else if (action == previousUsedEditorAction)
        NextUsedEditor(true);
}

void BrindletEditor::GoToEditorGroup()
{
    NextEditorGroup(sender() == previousEditorGroupAction);
}

void BrindletEditor::NextEditor(bool backwards)
{
    CodeEditorGroup* group = GetActiveCodeEditorGroup();
    if (!Settings::codeEditorVisible || GetCodeEditorCount() == 0 || !group)
        return;
    const int step = backwards ? -1 : 1;
    const int next = group->GetCurrentIndex() + step;
    if (next >= 0 && next < group->GetCount())
    {
        group->SetCurrentIndex(next);
    }
    else
    {
        // On to the neighbour group, or the one beyond it; back round this group if both are empty.
        const int count = Settings::NUM_CODE_EDITOR_GROUPS;
        const int index = GetCodeEditorGroupIndex(group);
        CodeEditorGroup* target = group;
        for (int distance = 1; distance < count; ++distance)
        {
            CodeEditorGroup* candidate =
                GetCodeEditorGroupByIndex(((index + step * distance) % count + count) % count);
            if (candidate && candidate->GetCount() > 0)
            {
                target = candidate;
                break;
            }
        }
        target->SetCurrentIndex(backwards ? target->GetCount() - 1 : 0);
        if (target != group)
            SetActiveCodeEditorGroup(target, false);
    }
    FocusActiveCodeEditor();
}

void BrindletEditor::NextEditorGroup(bool backwards)
{
    CodeEditorGroup* group = GetActiveCodeEditorGroup();
    if (!Settings::codeEditorVisible || !group)
        return;
    const int count = Settings::NUM_CODE_EDITOR_GROUPS;
    const int step = backwards ? -1 : 1;
    const int index = GetCodeEditorGroupIndex(group);
    for (int distance = 1; distance < count; ++distance)
    {
        CodeEditorGroup* candidate =
            GetCodeEditorGroupByIndex(((index + step * distance) % count + count) % count);
        if (candidate && candidate->GetCount() > 0)
        {
            SetActiveCodeEditorGroup(candidate, false);
            FocusActiveCodeEditor();
            return;
        }
    }
}

void BrindletEditor::MelCommandReference()
{
    MayaUtil::ShowHelp(QStringLiteral("DocsMelCommands"));
}

void BrindletEditor::PythonCommandReference()
{
    MayaUtil::ShowHelp(QStringLiteral("DocsPythonCommands"));
}

void BrindletEditor::NodeAndAttributeReference()
{
    MayaUtil::ShowHelp(QStringLiteral("DocsNodes"));
}

void BrindletEditor::ShowAboutDialog()
{
    QMessageBox box(
        QMessageBox::Information, QStringLiteral("About"),
        QStringLiteral("%1\nVersion %2").arg(Settings::APPLICATION_TITLE, Settings::VERSION_STRING),
        QMessageBox::Ok, this);
    box.exec();
}
