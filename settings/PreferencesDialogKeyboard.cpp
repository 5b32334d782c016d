#include "settings/PreferencesDialog.h"

#include "settings/KeyBindings.h"
#include "settings/KeySequenceLineEdit.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMessageBox>

void PreferencesDialog::ResetKeyBindings()
{
    keySequenceRows.clear();
    if (keyBindings)
    {
        for (const KeySequence* row : keyBindings->GetKeySequences())
            keySequenceRows.append(*row);
    }
    pressShortcutKeysLE->clear();
    shortcutCurrentlyUsedByLE->clear();
    RefreshCurrentKeyBindings();
}

void PreferencesDialog::ApplyKeyBindings()
{
    if (keyBindings)
        keyBindings->UpdateUserSequences(keySequenceRows);
}

void PreferencesDialog::RefreshCurrentKeyBindings()
{
    keyboardCommandListWdg->clear();
    for (int i = 0; i < keySequenceRows.size(); ++i)
    {
        const KeySequence& row = keySequenceRows.at(i);
        if (row.reserved)
            continue;
        auto* item = new QListWidgetItem(row.label, keyboardCommandListWdg);
        item->setData(Qt::UserRole, i);
    }
    keyboardCommandListWdg->setCurrentRow(0);
    OnSelectedKeyBindingItemChanged();
}

KeySequence* PreferencesDialog::SelectedKeySequence()
{
    const QListWidgetItem* item = keyboardCommandListWdg->currentItem();
    if (!item)
        return nullptr;
    const int index = item->data(Qt::UserRole).toInt();
    return index >= 0 && index < keySequenceRows.size() ? &keySequenceRows[index] : nullptr;
}

void PreferencesDialog::OnSelectedKeyBindingItemChanged()
{
    assignedShortcutCmb->clear();
    const KeySequence* row = SelectedKeySequence();
    if (!row)
        return;
    for (const QKeySequence& sequence : row->userSequences)
        assignedShortcutCmb->addItem(sequence.toString(QKeySequence::PortableText));
}

void PreferencesDialog::UpdateExistingKeyBindingDisplay(const QString& text)
{
    const QKeySequence sequence = QKeySequence::fromString(text, QKeySequence::PortableText);
    shortcutCurrentlyUsedByLE->clear();
    if (sequence.isEmpty())
        return;
    for (const KeySequence& row : keySequenceRows)
    {
        if (row.userSequences.contains(sequence))
        {
            shortcutCurrentlyUsedByLE->setText(row.reserved ? row.label + QStringLiteral(" (Permanent)") : row.label);
            return;
        }
    }
}

void PreferencesDialog::RemoveKeyBinding(const QString& text)
{
    const QKeySequence sequence = QKeySequence::fromString(text, QKeySequence::PortableText);
    for (KeySequence& row : keySequenceRows)
        row.userSequences.removeAll(sequence);
}

void PreferencesDialog::AssignKeyBinding()
{
    const QString text = pressShortcutKeysLE->text();
    if (text.isEmpty())
        return;
    KeySequence* row = SelectedKeySequence();
    if (!row)
        return;
    const int type = static_cast<int>(row->type);
    // A shortcut belongs to one command: it leaves every other row first.
    RemoveKeyBinding(text);
    for (KeySequence& candidate : keySequenceRows)
    {
        if (static_cast<int>(candidate.type) == type)
            candidate.userSequences.append(QKeySequence::fromString(text, QKeySequence::PortableText));
    }
    RefreshCurrentKeyBindings();
}

void PreferencesDialog::RemoveKeyBinding()
{
    KeySequence* row = SelectedKeySequence();
    const int index = assignedShortcutCmb->currentIndex();
    if (!row || index < 0 || index >= row->userSequences.size())
        return;
    row->userSequences.removeAt(index);
    OnSelectedKeyBindingItemChanged();
}

void PreferencesDialog::RestoreDefaultKeyBindings()
{
    const QMessageBox::StandardButton answer =
        QMessageBox::question(this, QStringLiteral("Restore Defaults"),
                              QStringLiteral("Keyboard mappings will reset to their default values. Continue?"),
                              QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    if (answer != QMessageBox::Yes)
        return;
    for (KeySequence& row : keySequenceRows)
        row.userSequences = row.defaultSequences;
    RefreshCurrentKeyBindings();
}
