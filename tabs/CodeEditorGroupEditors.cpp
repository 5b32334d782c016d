#include "tabs/CodeEditorGroup.h"

#include "editor/CodeEditor.h"
#include "editor/FindReplaceWidget.h"
#include "plugin/Logger.h"
#include "settings/Settings.h"
#include "tabs/CodeEditorGroupTabBar.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSet>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QStackedWidget>

// ---------------------------------------------------------------------------------------------
// Keeping tabs and stack in step

bool CodeEditorGroup::CountsMatch(const char* failureMessage) const
{
    if (tabBar->Count() == codeEditorStack->count())
        return true;
    Logger::Error(failureMessage);
    return false;
}

int CodeEditorGroup::InsertCodeEditor(int index, CodeEditor* codeEditor)
{
    if (!CountsMatch("Failed to insert code editor. Tab and code editor count mismatch."))
        return -1;
    if (!codeEditor)
        return -1;
    const int stackIndex = codeEditorStack->insertWidget(index, codeEditor);
    const CodeEditorProperties properties = codeEditor->GetProperties();
    const int tabIndex = tabBar->InsertTab(stackIndex, properties.label);
    SetTabType(tabIndex, properties.type);
    SetTabLanguage(tabIndex, properties.language);
    SetTabLabel(tabIndex, properties.label, codeEditor->IsModified(), properties.type);
    SetTabToolTip(tabIndex, properties);
    ConnectCodeEditor(codeEditor);
    return tabIndex;
}

int CodeEditorGroup::InsertCodeEditor(int index, const CodeEditorProperties& properties, const QString& text)
{
    if (!CountsMatch("Failed to insert code editor. Tab and code editor count mismatch."))
        return -1;
    auto* codeEditor = new CodeEditor(properties, keyBindings, codeEditorStack);
    codeEditor->setPlainText(text);
    return InsertCodeEditor(index, codeEditor);
}

CodeEditor* CodeEditorGroup::RemoveCodeEditor(int index)
{
    if (!CountsMatch("Failed to remove code editor. Tab and code editor count mismatch."))
        return nullptr;
    CodeEditor* codeEditor = GetCodeEditor(index);
    if (!codeEditor)
        return nullptr;
    // A moved editor talks only to the group that holds it.
    DisconnectCodeEditor(codeEditor);
    codeEditorStack->removeWidget(codeEditor);
    tabBar->RemoveTab(index);
    return codeEditor;
}

void CodeEditorGroup::DeleteCodeEditor(int index)
{
    if (!CountsMatch("Failed to delete code editor. Tab and code editor count mismatch."))
        return;
    CodeEditor* codeEditor = GetCodeEditor(index);
    if (!codeEditor)
        return;
    DisconnectCodeEditor(codeEditor);
    codeEditorStack->removeWidget(codeEditor);
    codeEditor->deleteLater();
    tabBar->RemoveTab(index);
    emit CurrentTabChanged();
}

void CodeEditorGroup::MoveCodeEditor(int from, int to)
{
    if (from == to)
        return;
    if (CodeEditor* codeEditor = RemoveCodeEditor(from))
        InsertCodeEditor(to, codeEditor);
}

void CodeEditorGroup::MoveCodeEditor(CodeEditorGroup* source, int from, int to)
{
    if (!source)
        return;
    if (CodeEditor* codeEditor = source->RemoveCodeEditor(from))
        InsertCodeEditor(to, codeEditor);
}

void CodeEditorGroup::UpdateFilePath(const QString& oldPath, const QString& newPath,
                                     CodeEditorLanguage language)
{
    for (int i = 0; i < GetCount(); ++i)
    {
        const CodeEditor* codeEditor = GetCodeEditor(i);
        if (!codeEditor || codeEditor->GetFilePath() != oldPath)
            continue;
        CodeEditorProperties properties = codeEditor->GetProperties();
        properties.filePath = newPath;
        properties.label = QFileInfo(newPath).fileName();
        properties.language = language;
        SetProperties(i, properties);
    }
}

void CodeEditorGroup::ConnectCodeEditor(CodeEditor* codeEditor)
{
    connect(codeEditor, SIGNAL(ReceivedFocus()), this, SLOT(OnCodeEditorReceivedFocus()));
    connect(codeEditor, SIGNAL(TextChanged(const QString&, const QString&)), this,
            SLOT(OnTextChanged(const QString&, const QString&)));
    connect(codeEditor, SIGNAL(ModificationChanged(bool, CodeEditor*)), this,
            SLOT(OnModificationChanged(bool, CodeEditor*)));
    connect(codeEditor, SIGNAL(FileChanged(const QString&)), this, SLOT(OnFileChanged(const QString&)));
    connect(codeEditor, SIGNAL(cursorPositionChanged()), this, SLOT(OnCursorPositionChanged()));
    // Select All with the cursor already at the end moves no cursor, yet changes the selection count.
    connect(codeEditor, SIGNAL(selectionChanged()), this, SLOT(OnCursorPositionChanged()));
    connect(codeEditor, SIGNAL(OverwriteModeChanged()), this, SLOT(OnOverwriteModeChanged()));
    connect(codeEditor, SIGNAL(ErrorAndWarningTextChanged()), this, SLOT(OnErrorAndWarningTextChanged()));
    connect(codeEditor, SIGNAL(QuickHelpChanged(const QString&, bool)), this,
            SLOT(OnQuickHelpChanged(const QString&, bool)));
    connect(codeEditor, SIGNAL(EscapeKeyPressed()), this, SLOT(CloseFindReplace()));
    connect(codeEditor, SIGNAL(IncreaseFontSizeRequested()), this, SLOT(OnIncreaseFontSizeRequested()));
    connect(codeEditor, SIGNAL(DecreaseFontSizeRequested()), this, SLOT(OnDecreaseFontSizeRequested()));
    connect(codeEditor, SIGNAL(ExecuteRequested()), this, SLOT(OnExecute()));
    connect(codeEditor, SIGNAL(ExecuteAllRequested()), this, SLOT(OnExecuteAll()));
    connect(codeEditor, SIGNAL(ExecuteLineRequested()), this, SLOT(OnExecuteLine()));
    connect(codeEditor, SIGNAL(SaveScriptToShelfRequested()), this, SLOT(OnSaveScriptToShelf()));
    connect(codeEditor, SIGNAL(InsertPathRequested()), this, SLOT(OnInsertPathRequested()));
    connect(codeEditor, SIGNAL(PythonDirRequested()), this, SLOT(OnPythonDirRequested()));
    connect(codeEditor, SIGNAL(PythonHelpRequested()), this, SLOT(OnPythonHelpRequested()));
    connect(codeEditor, SIGNAL(PythonUpdateModuleStateRequested()), this,
            SLOT(OnPythonUpdateModuleStateRequested()));
    connect(codeEditor, SIGNAL(PythonRevertModuleStateRequested()), this,
            SLOT(OnPythonRevertModuleStateRequested()));
    connect(codeEditor, SIGNAL(TogglePythonRevertModuleStateOnExecuteRequested()), this,
            SLOT(OnTogglePythonRevertModuleStateOnExecuteRequested()));
}

void CodeEditorGroup::DisconnectCodeEditor(CodeEditor* codeEditor)
{
    disconnect(codeEditor, nullptr, this, nullptr);
}

// ---------------------------------------------------------------------------------------------
// Lookup

int CodeEditorGroup::GetCodeEditorIndex(const QString& path) const
{
    for (int i = 0; i < GetCount(); ++i)
    {
        const CodeEditor* codeEditor = GetCodeEditor(i);
        if (codeEditor && codeEditor->GetFilePath() == path)
            return i;
    }
    return -1;
}

CodeEditor* CodeEditorGroup::GetCodeEditor(int index) const
{
    return qobject_cast<CodeEditor*>(codeEditorStack->widget(index));
}

QList<CodeEditor*> CodeEditorGroup::GetCodeEditors() const
{
    QList<CodeEditor*> codeEditors;
    for (int i = 0; i < codeEditorStack->count(); ++i)
    {
        if (CodeEditor* codeEditor = GetCodeEditor(i))
            codeEditors.append(codeEditor);
    }
    return codeEditors;
}

CodeEditor* CodeEditorGroup::GetCurrent() const
{
    return qobject_cast<CodeEditor*>(codeEditorStack->currentWidget());
}

bool CodeEditorGroup::CodeEditorExists(int index) const
{
    return GetCodeEditor(index) != nullptr;
}

int CodeEditorGroup::GetCount() const
{
    return codeEditorStack->count();
}

int CodeEditorGroup::GetCurrentIndex() const
{
    return tabBar->GetCurrentIndex();
}

void CodeEditorGroup::SetCurrentIndex(int index)
{
    tabBar->SetCurrentIndex(index, true);
}

int CodeEditorGroup::GetTabBarScrollValue() const
{
    return tabBar->GetScrollBarValue();
}

void CodeEditorGroup::SetTabBarScrollValue(int value)
{
    tabBar->SetScrollBarValue(value);
}

void CodeEditorGroup::FocusCurrentCodeEditor()
{
    if (CodeEditor* codeEditor = GetCurrent())
        codeEditor->setFocus();
}

// ---------------------------------------------------------------------------------------------
// Forwarders

bool CodeEditorGroup::GetProperties(int index, CodeEditorProperties& properties) const
{
    const CodeEditor* codeEditor = GetCodeEditor(index);
    if (codeEditor)
        codeEditor->GetProperties(properties);
    return codeEditor != nullptr;
}

void CodeEditorGroup::SetProperties(int index, const CodeEditorProperties& properties)
{
    CodeEditor* codeEditor = GetCodeEditor(index);
    if (!codeEditor)
        return;
    SetTabLabel(index, properties.label, codeEditor->IsModified(), properties.type);
    SetTabToolTip(index, properties);
    SetTabLanguage(index, properties.language);
    codeEditor->SetProperties(properties);
}

CodeEditorType CodeEditorGroup::GetType(int index) const
{
    const CodeEditor* codeEditor = GetCodeEditor(index);
    return codeEditor ? codeEditor->GetType() : CodeEditorType::INTERNAL_BUFFER;
}

CodeEditorLanguage CodeEditorGroup::GetLanguage(int index) const
{
    const CodeEditor* codeEditor = GetCodeEditor(index);
    return codeEditor ? codeEditor->GetLanguage() : CodeEditorLanguage::TEXT;
}

QString CodeEditorGroup::GetFilePath(int index) const
{
    const CodeEditor* codeEditor = GetCodeEditor(index);
    return codeEditor ? codeEditor->GetFilePath() : QString();
}

QString CodeEditorGroup::GetLabel(int index) const
{
    const CodeEditor* codeEditor = GetCodeEditor(index);
    return codeEditor ? codeEditor->GetLabel() : QString();
}

QString CodeEditorGroup::GetText(int index) const
{
    const CodeEditor* codeEditor = GetCodeEditor(index);
    return codeEditor ? codeEditor->GetText() : QString();
}

void CodeEditorGroup::SetText(int index, const QString& text)
{
    if (CodeEditor* codeEditor = GetCodeEditor(index))
        codeEditor->SetText(text);
}

QString CodeEditorGroup::GetSelectedTextForExecute(int index) const
{
    const CodeEditor* codeEditor = GetCodeEditor(index);
    return codeEditor ? codeEditor->GetSelectedTextForExecute() : QString();
}

QString CodeEditorGroup::GetCurrentLineForExecute(int index) const
{
    const CodeEditor* codeEditor = GetCodeEditor(index);
    return codeEditor ? codeEditor->GetCurrentLineForExecute() : QString();
}

bool CodeEditorGroup::IsModified(int index) const
{
    const CodeEditor* codeEditor = GetCodeEditor(index);
    return codeEditor && codeEditor->IsModified();
}

void CodeEditorGroup::SetModified(int index, bool modified)
{
    if (CodeEditor* codeEditor = GetCodeEditor(index))
        codeEditor->SetModified(modified);
}

int CodeEditorGroup::GetCursorPosition(int index) const
{
    const CodeEditor* codeEditor = GetCodeEditor(index);
    return codeEditor ? codeEditor->GetCursorPosition() : 0;
}

void CodeEditorGroup::SetCursorPosition(int index, int position, bool center)
{
    if (CodeEditor* codeEditor = GetCodeEditor(index))
        codeEditor->SetCursorPosition(position, false, center);
}

void CodeEditorGroup::SetCursorSelection(int index, int start, int end)
{
    if (CodeEditor* codeEditor = GetCodeEditor(index))
        codeEditor->SetCursorSelection(start, end);
}

int CodeEditorGroup::GetVerticalScrollBarValue(int index) const
{
    const CodeEditor* codeEditor = GetCodeEditor(index);
    return codeEditor ? codeEditor->GetVerticalScrollBarValue() : 0;
}

void CodeEditorGroup::SetVerticalScrollBarValue(int index, int value)
{
    if (CodeEditor* codeEditor = GetCodeEditor(index))
        codeEditor->SetVerticalScrollBarValue(value);
}

// ---------------------------------------------------------------------------------------------
// Tabs

void CodeEditorGroup::SetTabLabel(int index, const QString& label, bool modified, CodeEditorType type)
{
    if (index < 0)
        return;
    tabBar->SetTabText(index, label);
    SetTabType(index, type);
    // Only a file has a version on disk to differ from; a buffer never shows the mark.
    if (type == CodeEditorType::FILE)
        tabBar->SetModified(index, modified);
}

void CodeEditorGroup::SetTabToolTip(int index, const CodeEditorProperties& properties)
{
    if (properties.type == CodeEditorType::INTERNAL_BUFFER)
    {
        tabBar->SetTabToolTip(index, properties.label);
        return;
    }
    // How the file is stored, so that a save that keeps it so is no surprise.
    const CodeEditor* codeEditor = GetCodeEditor(index);
    tabBar->SetTabToolTip(index, codeEditor ? QStringLiteral("%1\n%2").arg(properties.filePath,
                                                                            TextFileCodec::Describe(
                                                                                codeEditor->GetFileFormat()))
                                            : properties.filePath);
}

void CodeEditorGroup::SetTabLanguage(int index, CodeEditorLanguage language)
{
    tabBar->SetLanguage(index, language);
}

void CodeEditorGroup::SetTabType(int index, CodeEditorType type)
{
    tabBar->SetData(index, static_cast<int>(type));
}

// ---------------------------------------------------------------------------------------------
// Whole group

QList<CodeEditorProperties> CodeEditorGroup::GetAllProperties() const
{
    QList<CodeEditorProperties> all;
    for (const CodeEditor* codeEditor : GetCodeEditors())
        all.append(codeEditor->GetProperties());
    return all;
}

void CodeEditorGroup::UpdateLastUsedEditorOrder()
{
    const CodeEditor* codeEditor = GetCurrent();
    if (!codeEditor)
        return;
    const QString path = codeEditor->GetFilePath();
    lastUsedEditors.removeAll(path);
    lastUsedEditors.prepend(path);
}

QList<CodeEditorProperties> CodeEditorGroup::GetLastUsedEditors()
{
    UpdateLastUsedEditorOrder();
    QList<CodeEditorProperties> result;
    QStringList stillOpen;
    QSet<QString> met;
    for (auto it = lastUsedEditors.crbegin(); it != lastUsedEditors.crend(); ++it)
    {
        const int index = GetCodeEditorIndex(*it);
        if (index < 0)
            continue;
        stillOpen.prepend(*it);
        met.insert(*it);
        result.prepend(GetCodeEditor(index)->GetProperties());
    }
    lastUsedEditors = stillOpen;
    for (const CodeEditor* codeEditor : GetCodeEditors())
    {
        if (!met.contains(codeEditor->GetFilePath()))
            result.append(codeEditor->GetProperties());
    }
    return result;
}

void CodeEditorGroup::CopyPath(int index)
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    const QString path = GetFilePath(index);
    if (!path.isEmpty())
        clipboard->setText(path);
}

void CodeEditorGroup::CloseFindReplace()
{
    // With the find bar open, Escape closes it first; otherwise it drops the selection.
    if (IsFindReplaceVisible())
        findReplace->Close();
    else if (CodeEditor* codeEditor = GetCurrent())
        codeEditor->ClearSelection();
}
