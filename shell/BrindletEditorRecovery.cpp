// What BrindletEditor does so that no line is lost: buffers whose tab record went missing,
// copies of unsaved text offered back after a crash, and saves that fail at quit.
#include "shell/BrindletEditor.h"

#include "editor/CodeEditor.h"
#include "plugin/Logger.h"
#include "settings/Settings.h"
#include "shell/RecoveryStore.h"
#include "tabs/CodeEditorGroup.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QMessageBox>

void BrindletEditor::RestoreOrphanedBuffers()
{
    // A buffer file that no tab record names is still the user's text: the settings file was
    // lost or could not be read. It comes back as a tab rather than lying forgotten.
    const QDir directory(Settings::GetInternalBufferDirectoryPath());
    const QStringList names = directory.entryList({QStringLiteral("melBuffer_*.mel"),
                                                   QStringLiteral("pythonBuffer_*.py"),
                                                   QStringLiteral("textBuffer_*.txt")},
                                                  QDir::Files, QDir::Name);
    CodeEditorGroup* group = GetCodeEditorGroupByIndex(0);
    for (const QString& name : names)
    {
        const QString path = directory.absoluteFilePath(name);
        if (!group || CodeEditorExists(path))
            continue;
        if (CreateCodeEditor(CodeEditorType::INTERNAL_BUFFER, path, QString(), group, -1) >= 0)
            Logger::Warning(QStringLiteral("Reopened a buffer that no saved tab named: %1").arg(path));
    }
}

void BrindletEditor::OfferRecoveredBuffers()
{
    if (!recoveryStore)
        return;
    QList<RecoveryStore::Entry> entries = recoveryStore->ReadAll();
    // A copy that says what its buffer already holds was left by a crash just after a save.
    for (int i = entries.size() - 1; i >= 0; --i)
    {
        const RecoveryStore::Entry& entry = entries.at(i);
        CodeEditor* codeEditor = GetCodeEditor(entry.properties.filePath, false);
        if (codeEditor && !codeEditor->IsModified() && codeEditor->GetTextForSave() == entry.text)
        {
            QFile::remove(entry.copyPath);
            entries.removeAt(i);
        }
    }
    if (entries.isEmpty())
        return;
    QStringList lines;
    for (const RecoveryStore::Entry& entry : entries)
    {
        lines.append(QStringLiteral("%1 - %2 (%3)")
                         .arg(entry.properties.label, entry.properties.filePath,
                              QLocale().toString(entry.time, QLocale::ShortFormat)));
    }
    QMessageBox box(this);
    box.setIcon(QMessageBox::Warning);
    box.setWindowTitle(QStringLiteral("Recover Unsaved Text"));
    box.setText(QStringLiteral("Brindlet Editor 2 kept unsaved text of these buffers:\n\n%1\n\n"
                               "Restore opens the text as unsaved changes; no file on disk is changed.")
                    .arg(lines.join(QLatin1Char('\n'))));
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::Discard);
    box.button(QMessageBox::Yes)->setText(QStringLiteral("Restore"));
    box.setDefaultButton(QMessageBox::Yes);
    const int answer = box.exec();
    for (const RecoveryStore::Entry& entry : entries)
    {
        if (answer == QMessageBox::Yes)
            RestoreRecoveredBuffer(entry.properties.filePath, entry.properties, entry.text);
        else if (answer == QMessageBox::Discard)
            QFile::remove(entry.copyPath);
    }
}

void BrindletEditor::RestoreRecoveredBuffer(const QString& filePath, const CodeEditorProperties& properties,
                                            const QString& text)
{
    CodeEditor* codeEditor = GetCodeEditor(filePath, false);
    if (!codeEditor && properties.type == CodeEditorType::FILE && QFileInfo::exists(filePath))
        codeEditor = GetCodeEditor(filePath, true);
    if (!codeEditor)
    {
        // The file or the buffer's file is gone: the tab comes back with its old path, unsaved.
        CodeEditorGroup* group = GetActiveCodeEditorGroup();
        const int index =
            CreateCodeEditor(properties.type, properties.language, filePath,
                             properties.type == CodeEditorType::FILE ? QFileInfo(filePath).fileName()
                                                                     : properties.label,
                             QString(), group, -1);
        codeEditor = group && index >= 0 ? group->GetCodeEditor(index) : nullptr;
    }
    if (!codeEditor)
        return;
    codeEditor->setReadOnly(false);
    // One undo step away from what is on disk, and modified: nothing is written until a save.
    codeEditor->ReplaceTextUndoable(text);
    codeEditor->SetModified(true);
}

int BrindletEditor::ShowFailedSaveDialog(const QString& label, const QString& reason)
{
    QMessageBox box(this);
    box.setIcon(QMessageBox::Warning);
    box.setWindowTitle(Settings::APPLICATION_TITLE);
    box.setText(QStringLiteral("'%1' could not be saved: %2.\n\n"
                               "Save it under another name, discard the changes, or cancel the quit? "
                               "Discarded text is kept as a recovery copy and offered at the next start.")
                    .arg(label, reason));
    box.setStandardButtons(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    box.button(QMessageBox::Save)->setText(QStringLiteral("Save As..."));
    box.setDefaultButton(QMessageBox::Save);
    return box.exec();
}

bool BrindletEditor::SaveFilesBeforeQuit(bool saveAll)
{
    for (int g = 0; g < GetCodeEditorGroupCount(); ++g)
    {
        CodeEditorGroup* group = GetCodeEditorGroupByIndex(g);
        for (int i = 0; group && i < group->GetCount(); ++i)
        {
            CodeEditor* codeEditor = group->GetCodeEditor(i);
            // A binary file is never written, so there is nothing to ask.
            if (!codeEditor || codeEditor->GetType() != CodeEditorType::FILE || !codeEditor->IsModified() ||
                codeEditor->GetFileFormat().binary || keptInRecovery.contains(codeEditor->GetFilePath()))
                continue;
            if (!saveAll)
            {
                // The user said not to save: nothing is kept.
                if (recoveryStore)
                    recoveryStore->Remove(codeEditor->GetFilePath());
                codeEditor->SetModified(false);
                continue;
            }
            // A failed save never lets the quit go on without a word.
            while (!SaveCodeEditor(g, i) && codeEditor->IsModified())
            {
                const int answer = ShowFailedSaveDialog(codeEditor->GetLabel(), lastSaveFailure);
                if (answer == QMessageBox::Cancel)
                    return false;
                if (answer == QMessageBox::Discard)
                {
                    keptInRecovery.append(codeEditor->GetFilePath());
                    if (recoveryStore)
                        recoveryStore->Write(codeEditor);
                    break;
                }
                SetActiveCodeEditor(g, i, false);
                SaveAs();
                if (!codeEditor->IsModified())
                    break;
            }
        }
    }
    return true;
}

void BrindletEditor::KeepChangedFilesInRecovery()
{
    // At shutdown nobody can be asked and the quit can't be stopped: a file that another
    // program changed is left as it is, and the editor's text goes to a recovery copy.
    for (CodeEditorGroup* group : codeEditorGroups)
    {
        for (int i = 0; i < group->GetCount(); ++i)
        {
            CodeEditor* codeEditor = group->GetCodeEditor(i);
            if (!codeEditor || codeEditor->GetType() != CodeEditorType::FILE || !codeEditor->IsModified())
                continue;
            const QString path = codeEditor->GetFilePath();
            if (keptInRecovery.contains(path) || !codeEditor->GetFileStamp().ChangedOnDisk(path))
                continue;
            keptInRecovery.append(path);
            Logger::Warning(
                QStringLiteral("%1 was changed by another program: it is left as it is, and the unsaved text "
                               "is kept as a recovery copy.")
                    .arg(path));
        }
    }
}
