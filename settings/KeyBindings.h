#pragma once

#include "settings/KeySequence.h"

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QKeySequence>

class QAction;
class QSettings;

// The table of every command that can carry a shortcut. Each row is tied to the one action
// that carries it; Update() pushes the shortcuts onto the actions and keeps them unique across
// the table. One object lives in BrindletEditor and is shared by pointer with every panel.
// Persisted in "brindletEditor2_bindings.ini".
class KeyBindings
{
public:
    KeyBindings();
    ~KeyBindings();
    KeyBindings(const KeyBindings&) = delete;
    KeyBindings& operator=(const KeyBindings&) = delete;

    static const QString CONFIG_FILE_NAME;
    static const QString GROUP_NAME;

    const QList<KeySequence*>& GetKeySequences() const { return keySequences; }
    // The row of a type, or null for 0 and for a value that names no row.
    KeySequence* GetKeySequence(KeySequenceType type) const;

    void SetAction(KeySequenceType type, QAction* action);
    QKeySequence GetShortcut(KeySequenceType type) const;

    static QString GetUserKeyBindingsPath();
    void ReadUserKeyBindings();
    void WriteUserKeyBindings() const;

    void Update();
    void SetBindingsEnabled(bool enabled);
    // Takes the user's shortcuts of the given rows (matched by type), then Update().
    void UpdateUserSequences(const QList<KeySequence>& rows);

private:
    void InitializeBindings();
    void InitializeFileBindings();
    void InitializeEditBindings();
    void InitializeSearchBindings();
    void InitializeLineBindings();
    void InitializeOutputBindings();
    void InitializeViewBindings();
    void InitializeNavigationBindings();
    KeySequence* InitializeBinding(KeySequenceType type, const QString& key, const QString& label,
                                   const QKeySequence& sequence, bool reserved = false);
    static void AppendBinding(KeySequence* keySequence, const QKeySequence& sequence);
    static void ReadKeyBinding(const QSettings& file, KeySequence* keySequence);
    static QStringList ToStoredList(const QList<QKeySequence>& sequences);
    static QList<QKeySequence> RemoveDuplicates(const KeySequence& row, const QList<QKeySequence>& sequences,
                                                QList<QKeySequence>& seen);

    QList<KeySequence*> keySequences; // owned, in table order
};
