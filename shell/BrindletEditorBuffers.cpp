// Buffers and files of BrindletEditor: create, open, save, rename, reload and close, the
// persistence of the open tabs, and files that change on disk.
#include "shell/BrindletEditor.h"

#include "editor/CodeEditor.h"
#include "plugin/Logger.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"
#include "sidebar/SideBar.h"
#include "tabs/CodeEditorGroup.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QTemporaryFile>
#include <QtCore/QTextStream>
#include <QtGui/QAction>
#include <QtGui/QTextBlock>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

namespace
{
const QString SCRIPTS_FILTER = QStringLiteral("Script Files(*.mel *.py *.pyw *.pyi)");
const QString PYTHON_FILTER = QStringLiteral("Python (*.py *.pyw *.pyi)");
const QString MEL_FILTER = QStringLiteral("MEL (*.mel)");
const QString ALL_FILTER = QStringLiteral("All Files(*.*)");

// Keeps the wait cursor up while a file is read or written.
class WaitCursor
{
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

} // namespace

// ---------------------------------------------------------------------------------------------
// Finding editors

CodeEditor* BrindletEditor::GetActiveCodeEditor() const
{
    CodeEditorGroup* group = GetActiveCodeEditorGroup();
    return group ? group->GetCurrent() : nullptr;
}

CodeEditor* BrindletEditor::GetCodeEditorWithFocus() const
{
    return qobject_cast<CodeEditor*>(QApplication::focusWidget());
}

CodeEditorGroup* BrindletEditor::GetCodeEditorGroupByPath(const QString& path) const
{
    for (CodeEditorGroup* group : codeEditorGroups)
    {
        if (group->GetCodeEditorIndex(path) >= 0)
            return group;
    }
    return nullptr;
}

bool BrindletEditor::CodeEditorExists(const QString& path) const
{
    return GetCodeEditorGroupByPath(path) != nullptr;
}

QStringList BrindletEditor::GetCodeEditorPaths() const
{
    QStringList paths;
    for (int g = 0; g < GetCodeEditorGroupCount(); ++g)
    {
        CodeEditorGroup* group = GetCodeEditorGroupByIndex(g);
        for (int i = 0; group && i < group->GetCount(); ++i)
            paths.append(group->GetFilePath(i));
    }
    return paths;
}

CodeEditor* BrindletEditor::GetCodeEditor(const QString& path, bool open)
{
    for (CodeEditorGroup* group : codeEditorGroups)
    {
        const int index = group->GetCodeEditorIndex(path);
        if (index >= 0)
            return group->GetCodeEditor(index);
    }
    if (!open)
        return nullptr;
    OpenFile(path, false);
    return GetCodeEditor(path, false);
}

int BrindletEditor::GetCodeEditorIndex(CodeEditorGroup* group, const QString& path) const
{
    return group ? group->GetCodeEditorIndex(path) : -1;
}

CodeEditorLanguage BrindletEditor::GetLanguageFromFilename(const QFileInfo& info)
{
    const QString suffix = info.suffix().toLower();
    if (suffix == QLatin1String("py") || suffix == QLatin1String("pyw"))
        return CodeEditorLanguage::PYTHON;
    if (suffix == QLatin1String("mel"))
        return CodeEditorLanguage::MEL;
    return CodeEditorLanguage::TEXT;
}

// ---------------------------------------------------------------------------------------------
// Creating and opening

int BrindletEditor::CreateCodeEditor(CodeEditorType type, CodeEditorLanguage language,
                                     const QString& filePath, const QString& label, const QString& text,
                                     CodeEditorGroup* group, int index)
{
    // A file is open at most once in the whole widget.
    if (CodeEditorGroup* holder = GetCodeEditorGroupByPath(filePath))
    {
        holder->SetCurrentIndex(holder->GetCodeEditorIndex(filePath));
        SetActiveCodeEditorGroup(holder, false);
        FocusActiveCodeEditor();
        return -1;
    }
    CodeEditorProperties properties;
    properties.type = type;
    properties.language = language;
    properties.filePath = filePath;
    properties.label = label;
    if (properties.label.isEmpty())
    {
        properties.label = language == CodeEditorLanguage::MEL      ? Settings::defaultMelBufferLabel
                           : language == CodeEditorLanguage::PYTHON ? Settings::defaultPythonBufferLabel
                                                                    : Settings::defaultTextBufferLabel;
    }
    if (!group)
    {
        Logger::Error("Failed to create code editor. Could not get active widget.");
        return -1;
    }
    const int result = group->InsertCodeEditor(index, properties, text);
    RefreshCodeEditorGroups(false);
    return result;
}

int BrindletEditor::CreateCodeEditor(CodeEditorType type, const QString& filePath, const QString& label,
                                     CodeEditorGroup* group, int index)
{
    const QString text = GetFileText(filePath);
    if (text.isNull())
        return -1;
    const QFileInfo info(filePath);
    const QString tabLabel = type == CodeEditorType::FILE ? info.fileName() : label;
    return CreateCodeEditor(type, GetLanguageFromFilename(info), info.absoluteFilePath(), tabLabel, text,
                            group, index);
}

QString BrindletEditor::GetFileText(const QString& path) const
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
    {
        Logger::Error(QStringLiteral("Failed to open file: %1").arg(path));
        return QString();
    }
    WaitCursor wait;
    QTextStream stream(&file);
    const QString text = stream.readAll();
    // An empty file is an empty text, not a missing one.
    return text.isNull() ? QStringLiteral("") : text;
}

void BrindletEditor::NewBuffer()
{
    QMessageBox box(this);
    box.setWindowTitle(QStringLiteral("Source Type"));
    box.setText(QStringLiteral("Specify executor source language."));
    QAbstractButton* mel = box.addButton(QStringLiteral("MEL"), QMessageBox::ActionRole);
    QAbstractButton* python = box.addButton(QStringLiteral("Python"), QMessageBox::ActionRole);
    QAbstractButton* none = box.addButton(QStringLiteral("None"), QMessageBox::ActionRole);
    box.addButton(QStringLiteral("Cancel"), QMessageBox::RejectRole);
    box.exec();
    if (box.clickedButton() == mel)
        NewBuffer(CodeEditorLanguage::MEL);
    else if (box.clickedButton() == python)
        NewBuffer(CodeEditorLanguage::PYTHON);
    else if (box.clickedButton() == none)
        NewBuffer(CodeEditorLanguage::TEXT);
}

void BrindletEditor::NewBuffer(CodeEditorLanguage language)
{
    QString name = QStringLiteral("textBuffer_XXXXXX.txt");
    if (language == CodeEditorLanguage::MEL)
        name = QStringLiteral("melBuffer_XXXXXX.mel");
    else if (language == CodeEditorLanguage::PYTHON)
        name = QStringLiteral("pythonBuffer_XXXXXX.py");
    // A buffer is a real file from the start, so nothing typed into it is lost by a quit.
    QTemporaryFile file(QStringLiteral("%1/").arg(Settings::GetInternalBufferDirectoryPath()) + name);
    if (!file.open())
        return;
    file.setAutoRemove(false);
    CodeEditorGroup* group = GetActiveCodeEditorGroup();
    if (!group)
        return;
    const int index = CreateCodeEditor(CodeEditorType::INTERNAL_BUFFER, language,
                                       QFileInfo(file).absoluteFilePath(), QString(), QString(), group, -1);
    if (index < 0)
        return;
    group->SetCurrentIndex(index);
    SaveState();
}

void BrindletEditor::NewMelBuffer()
{
    NewBuffer(CodeEditorLanguage::MEL);
}

void BrindletEditor::NewPythonBuffer()
{
    NewBuffer(CodeEditorLanguage::PYTHON);
}

void BrindletEditor::OpenFile()
{
    static QString directory;
    static QString selectedFilter = SCRIPTS_FILTER;
    const QString filter =
        QStringLiteral("%1;;%2;;%3;;%4").arg(SCRIPTS_FILTER, MEL_FILTER, PYTHON_FILTER, ALL_FILTER);
    const QString path =
        QFileDialog::getOpenFileName(this, QStringLiteral("Open File"), directory, filter, &selectedFilter);
    if (path.isEmpty())
        return;
    directory = QFileInfo(path).absolutePath();
    OpenFile(path, false);
}

bool BrindletEditor::OpenFile(const QString& filePath, bool temp)
{
    if (filePath.isEmpty() || temp)
        return false;
    CodeEditorGroup* group = GetActiveCodeEditorGroup();
    if (!group)
        return false;
    const int index = CreateCodeEditor(CodeEditorType::FILE, filePath, QString(), group, -1);
    if (index < 0)
        return false;
    group->SetCurrentIndex(index);
    SaveState();
    return true;
}

void BrindletEditor::OpenRecentFile()
{
    auto* action = qobject_cast<QAction*>(sender());
    const QString path = action ? action->data().toString() : QString();
    if (!path.isEmpty())
        OpenFile(path, false);
}

void BrindletEditor::ReopenClosedFile()
{
    for (const QString& path : Settings::recentFiles)
    {
        if (!CodeEditorExists(path))
        {
            OpenFile(path, false);
            return;
        }
    }
}

void BrindletEditor::ClearRecentFiles()
{
    Settings::ClearRecentFiles();
    UpdateRecentFilesMenu();
}

void BrindletEditor::AddRecentFile(const QString& path)
{
    Settings::AddRecentFile(path);
    UpdateRecentFilesMenu();
}

// ---------------------------------------------------------------------------------------------
// Saving

bool BrindletEditor::SaveCodeEditor(const QString& filePath, const QString& text)
{
    if (filePath.isEmpty())
        return false;
    // Written beside the target and renamed over it only when complete: a failed or cut-off
    // write never leaves a truncated file.
    QSaveFile file(filePath);
    bool written = false;
    if (file.open(QIODevice::WriteOnly | QIODevice::Text))
    {
        WaitCursor wait;
        QTextStream stream(&file);
        stream << text;
        stream.flush();
        written = stream.status() == QTextStream::Ok && file.commit();
    }
    if (!written)
    {
        file.cancelWriting();
        Logger::Error(QStringLiteral("Failed to open file for save: %1").arg(filePath));
        return false;
    }
    // The editor's own write must not come back as an outside change.
    if (!ownSaves.contains(filePath))
        ownSaves.append(filePath);
    return true;
}

void BrindletEditor::PreSave(CodeEditor* codeEditor)
{
    bool trim = false;
    bool ensureNewLine = false;
    if (codeEditor->GetLanguage() == CodeEditorLanguage::MEL)
    {
        trim = Settings::melTrimTrailingWhiteSpacesOnSave;
        ensureNewLine = Settings::melEnsureNewLineAtEofOnSave;
    }
    else if (codeEditor->GetLanguage() == CodeEditorLanguage::PYTHON)
    {
        trim = Settings::pythonTrimTrailingWhiteSpacesOnSave;
        ensureNewLine = Settings::pythonEnsureNewLineAtEofOnSave;
    }
    if (trim)
        codeEditor->TrimTrailingWhiteSpaces(ensureNewLine);
    else if (ensureNewLine)
        codeEditor->EnsureNewLineAtEof();
}

void BrindletEditor::Save()
{
    CodeEditor* codeEditor = GetActiveCodeEditor();
    if (!codeEditor || codeEditor->GetText().isEmpty())
        return;
    if (codeEditor->GetType() == CodeEditorType::INTERNAL_BUFFER)
    {
        SaveAs();
        return;
    }
    PreSave(codeEditor);
    if (SaveCodeEditor(codeEditor->GetFilePath(), codeEditor->GetText()))
        codeEditor->SetModified(false);
}

bool BrindletEditor::SaveCodeEditor(int groupIndex, int index)
{
    CodeEditorGroup* group = GetCodeEditorGroupByIndex(groupIndex);
    CodeEditor* codeEditor = group ? group->GetCodeEditor(index) : nullptr;
    // An empty buffer is never written.
    if (!codeEditor || codeEditor->GetText().isEmpty())
        return false;
    PreSave(codeEditor);
    if (!SaveCodeEditor(codeEditor->GetFilePath(), codeEditor->GetText()))
        return false;
    codeEditor->SetModified(false);
    return true;
}

void BrindletEditor::SaveAll(bool internalBuffers, bool fileBuffers)
{
    for (int g = 0; g < GetCodeEditorGroupCount(); ++g)
    {
        CodeEditorGroup* group = GetCodeEditorGroupByIndex(g);
        for (int i = 0; group && i < group->GetCount(); ++i)
        {
            if (!group->IsModified(i))
                continue;
            const bool internal = group->GetType(i) == CodeEditorType::INTERNAL_BUFFER;
            if ((internal && internalBuffers) || (!internal && fileBuffers))
                SaveCodeEditor(g, i);
        }
    }
}

QString BrindletEditor::ShowSaveFileNameDialog(const CodeEditorProperties& properties)
{
    static QString lastSaveDirectory;
    if (properties.type == CodeEditorType::FILE && QFileInfo::exists(properties.filePath))
        lastSaveDirectory = QFileInfo(properties.filePath).absoluteFilePath();
    QString selectedFilter = properties.language == CodeEditorLanguage::MEL      ? MEL_FILTER
                             : properties.language == CodeEditorLanguage::PYTHON ? PYTHON_FILTER
                                                                                 : ALL_FILTER;
    QString path = QFileDialog::getSaveFileName(
        this, QStringLiteral("Save File"), lastSaveDirectory,
        QStringLiteral("%1;;%2;;%3").arg(MEL_FILTER, PYTHON_FILTER, ALL_FILTER), &selectedFilter);
    if (path.isEmpty())
        return QString();
    const QString lower = path.toLower();
    if (selectedFilter.startsWith(QLatin1String("MEL")) && !lower.endsWith(QLatin1String(".mel")))
        path += QStringLiteral(".mel");
    else if (selectedFilter.startsWith(QLatin1String("Python")) && !lower.endsWith(QLatin1String(".py")) &&
             !lower.endsWith(QLatin1String(".pyw")) && !lower.endsWith(QLatin1String(".pyi")))
        path += QStringLiteral(".py");
    return path;
}

void BrindletEditor::SaveAs()
{
    CodeEditorGroup* group = GetActiveCodeEditorGroup();
    CodeEditor* codeEditor = group ? group->GetCurrent() : nullptr;
    if (!codeEditor || codeEditor->GetText().isEmpty())
        return;
    CodeEditorProperties properties = codeEditor->GetProperties();
    const QString oldPath = properties.filePath;
    const QString newPath = ShowSaveFileNameDialog(properties);
    if (newPath.isEmpty())
        return;
    if (CodeEditorExists(newPath))
    {
        Logger::Error(QStringLiteral("An open editor already exists with that path: %1").arg(newPath));
        return;
    }
    PreSave(codeEditor);
    if (!SaveCodeEditor(newPath, codeEditor->GetText()))
        return;
    // The buffer's file goes once the text is safe elsewhere.
    if (properties.type == CodeEditorType::INTERNAL_BUFFER)
        DeleteFileByPath(oldPath);
    codeEditor->SetModified(false);
    const QFileInfo info(newPath);
    properties.type = CodeEditorType::FILE;
    properties.language = GetLanguageFromFilename(info);
    properties.filePath = info.absoluteFilePath();
    properties.label = info.fileName();
    group->SetProperties(group->GetCurrentIndex(), properties);
    ReplaceOutlineExpandedHashPath(oldPath, properties.filePath);
    RefreshOpenCodeEditorsView();
    UpdateTitleBar();
}

void BrindletEditor::DeleteFileByPath(const QString& path)
{
    if (path.isEmpty() || !QFile::exists(path))
        return;
    if (!QFile::remove(path))
        Logger::Error(QStringLiteral("Failed to delete file: %1").arg(path));
}

// ---------------------------------------------------------------------------------------------
// Rename and revert

void BrindletEditor::Rename()
{
    CodeEditorGroup* group = GetActiveCodeEditorGroup();
    if (group)
        Rename(group, group->GetCurrentIndex());
}

void BrindletEditor::Rename(CodeEditorGroup* codeEditorGroup, int codeEditorIndex)
{
    CodeEditorProperties properties;
    if (!codeEditorGroup || codeEditorIndex < 0 ||
        !codeEditorGroup->GetProperties(codeEditorIndex, properties))
        return;
    QString name =
        QInputDialog::getText(this, QStringLiteral("Rename"), QStringLiteral("New Name:"), QLineEdit::Normal,
                              properties.label, nullptr, Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    // The label is stored in a ';'-separated record.
    if (properties.type == CodeEditorType::INTERNAL_BUFFER && name.contains(QLatin1Char(';')))
    {
        name.remove(QLatin1Char(';'));
        Logger::Warning("Rename: ';' is an invalid character.");
    }
    if (name.isEmpty())
        return;
    if (properties.type == CodeEditorType::FILE)
    {
        const QFileInfo info(properties.filePath);
        const QString newPath = QStringLiteral("%1/%2").arg(info.absolutePath(), name);
        if (QFileInfo::exists(newPath))
        {
            Logger::Error(QStringLiteral("Raname failed. File already exists: %1").arg(newPath));
            return;
        }
        if (!QFile::rename(properties.filePath, newPath))
        {
            Logger::Error(
                QStringLiteral("Rename file failed. Please verify file path and permissions: %1 -> %2")
                    .arg(info.absoluteFilePath(), QFileInfo(newPath).absoluteFilePath()));
            return;
        }
        OnFilePathChanged(properties.filePath, QFileInfo(newPath).absoluteFilePath());
    }
    else
    {
        // Only the label changes; the buffer's file keeps its name.
        properties.label = name;
        codeEditorGroup->SetProperties(codeEditorIndex, properties);
        RefreshOpenCodeEditorsView();
    }
    UpdateTitleBar();
}

void BrindletEditor::RevertFile()
{
    CodeEditor* codeEditor = GetActiveCodeEditor();
    if (!codeEditor || codeEditor->GetType() != CodeEditorType::FILE || !codeEditor->IsModified())
        return;
    if (QMessageBox::question(
            this, QStringLiteral("Reload"),
            QStringLiteral("Reloading this file will result in unsaved changes being lost.\n\n"
                           "Continue?"),
            QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    const QString text = GetFileText(codeEditor->GetFilePath());
    if (text.isNull())
        return;
    codeEditor->SetText(text);
    codeEditor->SetModified(false);
}

void BrindletEditor::ReplaceOutlineExpandedHashPath(const QString& oldPath, const QString& newPath)
{
    const QList<QString> items = Settings::outlineExpandedHash.values(oldPath);
    Settings::outlineExpandedHash.remove(oldPath);
    for (const QString& item : items)
        Settings::outlineExpandedHash.insert(newPath, item);
}

void BrindletEditor::OnFilePathChanged(const QString& oldFilePath, const QString& newFilePath)
{
    const CodeEditorLanguage language = GetLanguageFromFilename(QFileInfo(newFilePath));
    for (CodeEditorGroup* group : codeEditorGroups)
        group->UpdateFilePath(oldFilePath, newFilePath, language);
    ReplaceOutlineExpandedHashPath(oldFilePath, newFilePath);
    RefreshOpenCodeEditorsView();
}

// ---------------------------------------------------------------------------------------------
// Closing

int BrindletEditor::ShowUnsavedFileDialog(const QString& name)
{
    QMessageBox box(this);
    box.setIcon(QMessageBox::Question);
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (!name.isEmpty())
    {
        box.setWindowTitle(QStringLiteral("Save"));
        box.setText(QStringLiteral("'%1' has been modified. Save changes?").arg(name));
    }
    else
    {
        box.setWindowTitle(Settings::APPLICATION_TITLE);
        box.setText(QStringLiteral("Brindlet Editor 2 files have been modified. Save all changes?"));
        // The dialog needs its context on screen.
        if (MayaUtil::WorkspaceControlExists() && !MayaUtil::WorkspaceControlVisible())
            MayaUtil::SetWorkspaceControlVisible(true);
    }
    return box.exec();
}

bool BrindletEditor::ShowConfirmCloseInternalBufferDialog(const QString& label)
{
    return QMessageBox::question(
               this, QStringLiteral("Delete"),
               QStringLiteral("Delete buffer '%1'?\n\nUnsaved contents will be lost.").arg(label),
               QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

bool BrindletEditor::ModifiedFilesExist() const
{
    for (CodeEditorGroup* group : codeEditorGroups)
    {
        for (int i = 0; i < group->GetCount(); ++i)
        {
            if (group->GetType(i) == CodeEditorType::FILE && group->IsModified(i))
                return true;
        }
    }
    return false;
}

bool BrindletEditor::CloseCodeEditor(CodeEditorGroup* group, int index, bool prompt)
{
    CodeEditor* codeEditor = group ? group->GetCodeEditor(index) : nullptr;
    if (!codeEditor)
        return false;
    if (prompt && codeEditor->GetType() == CodeEditorType::INTERNAL_BUFFER)
    {
        // Closing a buffer destroys it: always asked, whatever the preference says.
        if (!codeEditor->GetText().isEmpty() && !ShowConfirmCloseInternalBufferDialog(codeEditor->GetLabel()))
            return false;
        DeleteFileByPath(codeEditor->GetFilePath());
    }
    else if (prompt)
    {
        if (codeEditor->IsModified())
        {
            const int answer = ShowUnsavedFileDialog(codeEditor->GetLabel());
            if (answer == QMessageBox::Cancel)
                return false;
            if (answer == QMessageBox::Yes)
            {
                PreSave(codeEditor);
                if (!SaveCodeEditor(codeEditor->GetFilePath(), codeEditor->GetText()))
                    return false;
            }
        }
        AddRecentFile(codeEditor->GetFilePath());
    }
    sideBar->ClearStoredDetailsFromOutline(codeEditor->GetFilePath());
    group->DeleteCodeEditor(index);
    RefreshCodeEditorGroups(false);
    if (GetCodeEditorCount() == 0)
        OnParserUpdated(nullptr);
    return true;
}

bool BrindletEditor::CloseCodeEditor(int groupIndex, int index, bool prompt)
{
    return CloseCodeEditor(GetCodeEditorGroupByIndex(groupIndex), index, prompt);
}

void BrindletEditor::CloseFile()
{
    CodeEditorGroup* group = GetActiveCodeEditorGroup();
    if (group && group->GetCount() > 0)
        CloseCodeEditor(group, group->GetCurrentIndex(), true);
    SaveState();
}

void BrindletEditor::CloseAllFiles()
{
    // A tab that the user keeps stays; the walk goes on.
    for (int g = GetCodeEditorGroupCount() - 1; g >= 0; --g)
    {
        CodeEditorGroup* group = GetCodeEditorGroupByIndex(g);
        for (int i = group ? group->GetCount() - 1 : -1; i >= 0; --i)
            CloseCodeEditor(group, i, true);
    }
    SaveState();
}

void BrindletEditor::OnCloseTabRequested(CodeEditorGroup* group, int index)
{
    CloseCodeEditor(group, index, true);
    SaveState();
}

void BrindletEditor::OnCloseOtherTabsRequested(CodeEditorGroup* group, int index)
{
    for (int i = group ? group->GetCount() - 1 : -1; i >= 0; --i)
    {
        if (i != index)
            CloseCodeEditor(group, i, true);
    }
    SaveState();
}

void BrindletEditor::OnCloseTabsToRightRequested(CodeEditorGroup* group, int index)
{
    for (int i = group ? group->GetCount() - 1 : -1; i > index; --i)
        CloseCodeEditor(group, i, true);
    SaveState();
}

// ---------------------------------------------------------------------------------------------
// The open tabs across restarts

void BrindletEditor::UpdateCodeEditorGroupDetails()
{
    Settings::tabDetails.clear();
    Settings::tabBarScrolling.clear();
    for (int g = 0; g < GetCodeEditorGroupCount(); ++g)
    {
        CodeEditorGroup* group = GetCodeEditorGroupByIndex(g);
        if (!group)
            continue;
        for (int i = 0; i < group->GetCount(); ++i)
        {
            CodeEditorProperties properties;
            if (!group->GetProperties(i, properties))
                continue;
            const bool internal = properties.type == CodeEditorType::INTERNAL_BUFFER;
            // A buffer is stored by its file name, so the record survives a moved prefs folder.
            const QString path = internal ? QFileInfo(properties.filePath).fileName() : properties.filePath;
            QString detail =
                QStringLiteral("%1;%2;%3;%4;%5;%6")
                    .arg(QString::number(g), internal ? QStringLiteral("0") : QStringLiteral("1"), path,
                         i == group->GetCurrentIndex() ? QStringLiteral("1") : QStringLiteral("0"),
                         QString::number(group->GetCursorPosition(i)),
                         QString::number(group->GetVerticalScrollBarValue(i)));
            if (internal)
                detail += QStringLiteral(";%1").arg(properties.label);
            Settings::tabDetails.append(detail);
        }
        Settings::tabBarScrolling.append(QString::number(group->GetTabBarScrollValue()));
    }
}

void BrindletEditor::RestoreCodeEditors()
{
    SetParsingEnabled(false);
    for (const QString& detail : Settings::tabDetails)
    {
        const QStringList fields = detail.split(QLatin1Char(';'));
        if (fields.size() < 6)
            continue;
        bool ok = false;
        int groupIndex = fields.at(0).toInt(&ok);
        if (!ok || groupIndex < 0 || groupIndex >= Settings::NUM_CODE_EDITOR_GROUPS)
            groupIndex = 0;
        const int type = fields.at(1).toInt(&ok);
        if (!ok || type < 0 || type > 1)
            continue;
        QString path = fields.at(2);
        const bool current = fields.at(3).toInt() != 0;
        const int cursor = fields.at(4).toInt();
        const int scroll = fields.at(5).toInt();
        QString label;
        if (type == 0)
        {
            if (QFileInfo(path).isRelative())
                path = QStringLiteral("%1/%2").arg(Settings::GetInternalBufferDirectoryPath(), path);
            label = fields.value(6);
        }
        CodeEditorGroup* group = GetCodeEditorGroupByIndex(groupIndex);
        if (!group)
            continue;
        const int index = CreateCodeEditor(static_cast<CodeEditorType>(type), path, label, group, -1);
        if (index < 0)
            continue;
        group->SetCursorPosition(index, cursor, true);
        group->SetVerticalScrollBarValue(index, scroll);
        if (current)
            group->SetCurrentIndex(index);
    }
    for (int g = 0; g < Settings::tabBarScrolling.size(); ++g)
    {
        bool ok = false;
        const int value = Settings::tabBarScrolling.at(g).toInt(&ok);
        if (CodeEditorGroup* group = GetCodeEditorGroupByIndex(g); group && ok)
            group->SetTabBarScrollValue(value);
    }
    RefreshCodeEditorGroups(false);
    SetParsingEnabled(true);
}

// ---------------------------------------------------------------------------------------------
// Files changed by other programs

void BrindletEditor::OnFileChanged(const QString& path)
{
    // Nothing happens at once: a dialog in the middle of the host's work would be unwelcome.
    if (QFileInfo::exists(path))
    {
        if (!watchedChanges.contains(path))
            watchedChanges.append(path);
        return;
    }
    // Deleted or moved away: what the editor holds is now the only copy.
    if (CodeEditor* codeEditor = GetCodeEditor(path, false))
        codeEditor->SetModified(true);
}

void BrindletEditor::ReloadChangedFile(const QString& path)
{
    CodeEditor* codeEditor = GetCodeEditor(path, false);
    if (!codeEditor)
        return;
    if (codeEditor->IsModified() &&
        QMessageBox::question(this, QStringLiteral("Reload"),
                              QStringLiteral("%1\n\nThis file has been modified by another program.\n"
                                             "Do you want to reload it?")
                                  .arg(path),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    const int position = codeEditor->GetCursorPosition();
    const int scroll = codeEditor->GetVerticalScrollBarValue();
    const QString text = GetFileText(path);
    if (text.isNull())
        return;
    codeEditor->SetText(text);
    codeEditor->SetModified(false);
    codeEditor->SetCursorPosition(position);
    codeEditor->SetVerticalScrollBarValue(scroll);
}

void BrindletEditor::CheckForFileChanges()
{
    static bool checkingForFileChanges = false;
    if (checkingForFileChanges)
        return;
    if (!Settings::checkForModifiedFiles)
    {
        watchedChanges.clear();
        ownSaves.clear();
        return;
    }
    checkingForFileChanges = true;
    const QStringList changes = watchedChanges;
    for (const QString& path : changes)
    {
        if (!ownSaves.contains(path))
            ReloadChangedFile(path);
    }
    watchedChanges.clear();
    ownSaves.clear();
    checkingForFileChanges = false;
}

// ---------------------------------------------------------------------------------------------
// Moving tabs and dropping files

void BrindletEditor::SetActiveCodeEditor(int codeEditorGroupIndex, int codeEditorIndex, bool applyFocus)
{
    CodeEditorGroup* group = GetCodeEditorGroupByIndex(codeEditorGroupIndex);
    if (!group)
        return;
    group->SetCurrentIndex(codeEditorIndex);
    SetActiveCodeEditorGroup(group, false);
    if (applyFocus)
        FocusActiveCodeEditor();
}

void BrindletEditor::SetActiveCodeEditor(const QString& filePath)
{
    CodeEditorGroup* group = GetCodeEditorGroupByPath(filePath);
    const int index = GetCodeEditorIndex(group, filePath);
    if (index < 0)
        return;
    SetActiveCodeEditorGroup(group, false);
    group->SetCurrentIndex(index);
    FocusActiveCodeEditor();
}

CodeEditorGroup* BrindletEditor::FirstHiddenCodeEditorGroup() const
{
    for (CodeEditorGroup* group : codeEditorGroups)
    {
        if (group->isHidden())
            return group;
    }
    return nullptr;
}

void BrindletEditor::PlaceCodeEditorGroupBeside(CodeEditorGroup* group, CodeEditorGroup* target,
                                                TabDropZone dropZone)
{
    codeEditorGroups.removeAll(group);
    const int targetIndex = codeEditorGroups.indexOf(target);
    codeEditorGroups.insert(dropZone == TabDropZoneBefore ? targetIndex : targetIndex + 1, group);
}

void BrindletEditor::OnMoveTabRequested(int oldId, int oldIndex, int newId, int newIndex)
{
    CodeEditorGroup* source = GetCodeEditorGroupById(oldId);
    CodeEditorGroup* target = GetCodeEditorGroupById(newId);
    if (!source || !target)
        return;
    if (source == target)
    {
        if (oldIndex == newIndex)
            return;
        target->MoveCodeEditor(oldIndex, newIndex);
    }
    else
    {
        target->MoveCodeEditor(source, oldIndex, newIndex);
    }
    target->SetCurrentIndex(newIndex);
    RefreshCodeEditorGroups(false);
    SetActiveCodeEditorGroup(target, false);
    FocusActiveCodeEditor();
}

void BrindletEditor::OnMoveTabToZoneRequested(int oldId, int oldIndex, int newId, TabDropZone dropZone)
{
    if (dropZone == TabDropZoneCenter && oldId == newId)
        return;
    CodeEditorGroup* source = GetCodeEditorGroupById(oldId);
    CodeEditorGroup* target = GetCodeEditorGroupById(newId);
    if (!source || !target)
        return;
    bool usedHiddenGroup = false;
    if (dropZone == TabDropZoneCenter)
    {
        const int index = target->GetCurrentIndex() + 1;
        target->MoveCodeEditor(source, oldIndex, index);
        target->SetCurrentIndex(index);
    }
    else
    {
        CodeEditorGroup* hidden = FirstHiddenCodeEditorGroup();
        if (!hidden)
            return;
        hidden->MoveCodeEditor(source, oldIndex, 0);
        hidden->SetCurrentIndex(0);
        PlaceCodeEditorGroupBeside(hidden, target, dropZone);
        target = hidden;
        usedHiddenGroup = true;
    }
    RefreshCodeEditorGroups(usedHiddenGroup);
    SetActiveCodeEditorGroup(target, false);
    FocusActiveCodeEditor();
}

void BrindletEditor::OnOpenFileRequested(int groupId, int index, const QString& filePath)
{
    CodeEditorGroup* group = GetCodeEditorGroupById(groupId);
    const int result = CreateCodeEditor(CodeEditorType::FILE, filePath, QString(), group, index);
    if (result < 0)
        return;
    group->SetCurrentIndex(result);
    SetActiveCodeEditorGroup(group, false);
    FocusActiveCodeEditor();
}

void BrindletEditor::OnOpenFilesRequested(int groupId, TabDropZone dropZone, const QStringList& filePaths)
{
    if (dropZone != TabDropZoneBefore && dropZone != TabDropZoneAfter)
        return;
    CodeEditorGroup* target = GetCodeEditorGroupById(groupId);
    CodeEditorGroup* hidden = FirstHiddenCodeEditorGroup();
    if (!target || !hidden)
        return;
    PlaceCodeEditorGroupBeside(hidden, target, dropZone);
    for (const QString& path : filePaths)
    {
        const int index = CreateCodeEditor(CodeEditorType::FILE, path, QString(), hidden, 0);
        if (index >= 0)
            hidden->SetCurrentIndex(index);
    }
    RefreshCodeEditorGroups(true);
    SetActiveCodeEditorGroup(hidden, false);
    FocusActiveCodeEditor();
}
