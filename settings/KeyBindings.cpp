#include "settings/KeyBindings.h"

#include "plugin/Logger.h"
#include "settings/IniValue.h"
#include "settings/Settings.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QSettings>
#include <QtGui/QAction>
#include <QtGui/QGuiApplication>

const QString KeyBindings::CONFIG_FILE_NAME = QStringLiteral("brindletEditor2_bindings.ini");
const QString KeyBindings::GROUP_NAME = QStringLiteral("user_bindings");

namespace
{
// The file's marker for a key that is absent: the row keeps its defaults.
const QString UNDEFINED_KEY = QStringLiteral("UndefinedKey");

QKeySequence Keys(const char* text)
{
    return QKeySequence(QString::fromLatin1(text), QKeySequence::PortableText);
}

// The platform's first binding of a standard key; the platform answers only once a
// QGuiApplication runs.
QKeySequence Standard(QKeySequence::StandardKey key)
{
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return QKeySequence();
    return QKeySequence(key);
}

// A name that QKeySequence does not know leaves Key_unknown in the sequence; such a sequence
// could never be pressed, so it counts as no shortcut at all.
QKeySequence ParseUserSequence(const QString& text)
{
    const QKeySequence sequence = QKeySequence::fromString(text, QKeySequence::NativeText);
    for (int i = 0; i < sequence.count(); ++i)
    {
        if (sequence[i].key() == Qt::Key_unknown)
            return QKeySequence();
    }
    return sequence;
}
} // namespace

KeyBindings::KeyBindings()
{
    InitializeBindings();
}

KeyBindings::~KeyBindings()
{
    qDeleteAll(keySequences);
}

void KeyBindings::InitializeBindings()
{
    InitializeFileBindings();
    InitializeEditBindings();
    InitializeSearchBindings();
    InitializeLineBindings();
    InitializeOutputBindings();
    InitializeViewBindings();
    InitializeNavigationBindings();
}

void KeyBindings::InitializeFileBindings()
{
    using T = KeySequenceType;
    InitializeBinding(T::NewBuffer, QStringLiteral("newBuffer"), QStringLiteral("New Buffer"),
                      Standard(QKeySequence::New));
    InitializeBinding(T::NewMelBuffer, QStringLiteral("newMelBuffer"), QStringLiteral("New MEL Buffer"),
                      Keys("Ctrl+Alt+N"));
    InitializeBinding(T::NewPythonBuffer, QStringLiteral("newPythonBuffer"),
                      QStringLiteral("New Python Buffer"), Keys("Ctrl+Shift+N"));
    InitializeBinding(T::OpenFile, QStringLiteral("openFile"), QStringLiteral("Open File"),
                      Standard(QKeySequence::Open), true);
    InitializeBinding(T::ReopenClosedFile, QStringLiteral("reopenClosedFile"),
                      QStringLiteral("Reopen Closed File"), Keys("Ctrl+Shift+T"));
    InitializeBinding(T::Save, QStringLiteral("save"), QStringLiteral("Save"), Standard(QKeySequence::Save),
                      true);
    InitializeBinding(T::SaveAs, QStringLiteral("saveAs"), QStringLiteral("Save As"), QKeySequence());
    InitializeBinding(T::SaveAll, QStringLiteral("saveAll"), QStringLiteral("Save All"),
                      Keys("Ctrl+Shift+S"));
    InitializeBinding(T::Rename, QStringLiteral("rename"), QStringLiteral("Rename"), QKeySequence());
    InitializeBinding(T::SaveScriptToShelf, QStringLiteral("saveScriptToShelf"),
                      QStringLiteral("Save Script to Shelf"), QKeySequence());
    InitializeBinding(T::SourceScript, QStringLiteral("sourceScript"), QStringLiteral("Source Script"),
                      QKeySequence());
    InitializeBinding(T::RevertFile, QStringLiteral("revertFile"), QStringLiteral("Revert File"),
                      QKeySequence());
    InitializeBinding(T::CloseFile, QStringLiteral("closeFile"), QStringLiteral("Close File"),
                      Keys("Ctrl+W"));
    InitializeBinding(T::CloseAllFiles, QStringLiteral("closeAllFiles"), QStringLiteral("Close All Files"),
                      QKeySequence());
    InitializeBinding(T::SaveState, QStringLiteral("saveState"), QStringLiteral("Save State"),
                      QKeySequence());
    InitializeBinding(T::OpenWorkspace, QStringLiteral("openWorkspace"), QStringLiteral("Open Workspace"),
                      QKeySequence());
    InitializeBinding(T::SaveWorkspaceAs, QStringLiteral("saveWorkspaceAs"),
                      QStringLiteral("Save Workspace As"), QKeySequence());
    InitializeBinding(T::AddFolderToWorkspace, QStringLiteral("addFolderToWorkspace"),
                      QStringLiteral("Add Folder to Workspace"), QKeySequence());
}

void KeyBindings::InitializeEditBindings()
{
    using T = KeySequenceType;
    InitializeBinding(T::Undo, QStringLiteral("undo"), QStringLiteral("Undo"), Standard(QKeySequence::Undo),
                      true);
    InitializeBinding(T::Redo, QStringLiteral("redo"), QStringLiteral("Redo"), Standard(QKeySequence::Redo),
                      true);
    InitializeBinding(T::Cut, QStringLiteral("cut"), QStringLiteral("Cut"), Standard(QKeySequence::Cut),
                      true);
    InitializeBinding(T::Copy, QStringLiteral("copy"), QStringLiteral("Copy"), Standard(QKeySequence::Copy),
                      true);
    InitializeBinding(T::Paste, QStringLiteral("paste"), QStringLiteral("Paste"),
                      Standard(QKeySequence::Paste), true);
    InitializeBinding(T::SelectAll, QStringLiteral("selectAll"), QStringLiteral("Select All"),
                      Standard(QKeySequence::SelectAll), true);
}

void KeyBindings::InitializeSearchBindings()
{
    using T = KeySequenceType;
    InitializeBinding(T::Find, QStringLiteral("find"), QStringLiteral("Find"), Keys("Ctrl+F"));
    InitializeBinding(T::Replace, QStringLiteral("replace"), QStringLiteral("Replace"), Keys("Ctrl+H"));
    InitializeBinding(T::FindInFiles, QStringLiteral("findInFiles"), QStringLiteral("Find in Files"),
                      Keys("Ctrl+Shift+F"));
    InitializeBinding(T::ReplaceInFiles, QStringLiteral("replaceInFiles"), QStringLiteral("Replace In Files"),
                      Keys("Ctrl+Shift+H"));
    InitializeBinding(T::FindNext, QStringLiteral("findNext"), QStringLiteral("Find Next"), Keys("F3"));
    InitializeBinding(T::FindPrevious, QStringLiteral("findPrevious"), QStringLiteral("Find Previous"),
                      Keys("Shift+F3"));
    InitializeBinding(T::SelectAndFindNext, QStringLiteral("selectAndFindNext"),
                      QStringLiteral("Select and Find Next"), Keys("Ctrl+F3"));
    InitializeBinding(T::SelectAndFindPrevious, QStringLiteral("selectAndFindPrevious"),
                      QStringLiteral("Select and Find Previous"), Keys("Ctrl+Shift+F3"));
    InitializeBinding(T::FindInFilesNext, QStringLiteral("findInFilesNext"),
                      QStringLiteral("Find in Files Next"), Keys("F4"));
    InitializeBinding(T::FindInFilesPrevious, QStringLiteral("findInFilesPrevious"),
                      QStringLiteral("Find in Files Previous"), Keys("Shift+F4"));
    InitializeBinding(T::ReplaceNext, QStringLiteral("replaceNext"), QStringLiteral("Replace Next"),
                      QKeySequence());
    InitializeBinding(T::ReplaceAll, QStringLiteral("replaceAll"), QStringLiteral("Replace All"),
                      QKeySequence());
}

void KeyBindings::InitializeLineBindings()
{
    using T = KeySequenceType;
    InitializeBinding(T::IncreaseIndent, QStringLiteral("increaseIndent"), QStringLiteral("Increase Indent"),
                      Keys("Ctrl+]"));
    InitializeBinding(T::DecreaseIndent, QStringLiteral("decreaseIndent"), QStringLiteral("Decrease Indent"),
                      Keys("Ctrl+["));
    InitializeBinding(T::CopyLineUp, QStringLiteral("copyLineUp"), QStringLiteral("Copy Line Up"),
                      Keys("Alt+Shift+Up"));
    InitializeBinding(T::CopyLineDown, QStringLiteral("copyLineDown"), QStringLiteral("Copy Line Down"),
                      Keys("Alt+Shift+Down"));
    InitializeBinding(T::MoveLineUp, QStringLiteral("moveLineUp"), QStringLiteral("Move Line Up"),
                      Keys("Alt+Up"));
    InitializeBinding(T::MoveLineDown, QStringLiteral("moveLineDown"), QStringLiteral("Move Line Down"),
                      Keys("Alt+Down"));
    InitializeBinding(T::DeleteLine, QStringLiteral("deleteLine"), QStringLiteral("Delete Line"),
                      Keys("Ctrl+Shift+K"));
    InitializeBinding(T::ToggleComment, QStringLiteral("toggleComment"), QStringLiteral("Toggle Comment"),
                      Keys("Ctrl+/"));
    InitializeBinding(T::ToggleBlockComment, QStringLiteral("toggleBlockComment"),
                      QStringLiteral("Toggle Block Comment"), Keys("Ctrl+Shift+/"));
    InitializeBinding(T::ConvertTabsToSpaces, QStringLiteral("convertTabsToSpaces"),
                      QStringLiteral("Convert Tabs to Spaces"), QKeySequence());
    InitializeBinding(T::InsertPath, QStringLiteral("insertPath"), QStringLiteral("Insert Path"),
                      QKeySequence());
}

void KeyBindings::InitializeOutputBindings()
{
    using T = KeySequenceType;
    InitializeBinding(T::ClearOutput, QStringLiteral("clearOutput"), QStringLiteral("Clear Output"),
                      Keys("Ctrl+Shift+1"));
    InitializeBinding(T::Preferences, QStringLiteral("preferences"), QStringLiteral("Preferences"),
                      Keys("Ctrl+Shift+P"));
    InitializeBinding(T::IncreaseFontSize, QStringLiteral("increaseFontSize"),
                      QStringLiteral("Increase Font Size"), Keys("Ctrl+="));
    InitializeBinding(T::DecreaseFontSize, QStringLiteral("decreaseFontSize"),
                      QStringLiteral("Decrease Font Size"), Keys("Ctrl+-"));
    InitializeBinding(T::ResetFontSize, QStringLiteral("resetFontSize"), QStringLiteral("Reset Font Size"),
                      Keys("Ctrl+0"));
    InitializeBinding(T::ToggleEchoAllCommands, QStringLiteral("toggleEchoAllCommands"),
                      QStringLiteral("Toggle Echo All Commands"), QKeySequence());
    InitializeBinding(T::ToggleLineNumbersInErrors, QStringLiteral("toggleLineNumbersInErrors"),
                      QStringLiteral("Toggle Line Numbers in Errors"), QKeySequence());
    InitializeBinding(T::ToggleShowStackTrace, QStringLiteral("toggleShowStackTrace"),
                      QStringLiteral("Toggle Show Stack Trace"), QKeySequence());
    InitializeBinding(T::ToggleSuppressStackWindow, QStringLiteral("toggleSuppressStackWindow"),
                      QStringLiteral("Toggle Suppress Stack Window"), QKeySequence());
    InitializeBinding(T::ToggleWriteOutputToFile, QStringLiteral("toggleWriteOutputToFile"),
                      QStringLiteral("Toggle Write Output to File"), QKeySequence());
    KeySequence* execute = InitializeBinding(T::Execute, QStringLiteral("execute"), QStringLiteral("Execute"),
                                             Keys("Ctrl+Return"), true);
    AppendBinding(execute, Keys("Ctrl+Enter"));
    AppendBinding(execute, QKeySequence(Qt::Key_Enter));
    InitializeBinding(T::ExecuteAlt, QStringLiteral("executeAlt"), QStringLiteral("Execute"), QKeySequence());
    KeySequence* executeLine = InitializeBinding(T::ExecuteLine, QStringLiteral("executeLine"),
                                                 QStringLiteral("Execute Line"), Keys("Ctrl+Alt+Return"));
    AppendBinding(executeLine, Keys("Ctrl+Alt+Enter"));
    KeySequence* executeAll = InitializeBinding(T::ExecuteAll, QStringLiteral("executeAll"),
                                                QStringLiteral("Execute All"), Keys("Ctrl+Shift+Return"));
    AppendBinding(executeAll, Keys("Ctrl+Shift+Enter"));
}

void KeyBindings::InitializeViewBindings()
{
    using T = KeySequenceType;
    InitializeBinding(T::ToggleRenderWhitespace, QStringLiteral("toggleRenderWhitespace"),
                      QStringLiteral("Toggle Render Whitespace"), QKeySequence());
    InitializeBinding(T::ToggleWordWrap, QStringLiteral("toggleWordWrap"), QStringLiteral("Toggle Word Wrap"),
                      QKeySequence());
    InitializeBinding(T::ToggleCodeEditor, QStringLiteral("toggleCodeEditor"),
                      QStringLiteral("Toggle Code Editor"), Keys("Ctrl+K"));
    InitializeBinding(T::ToggleOutput, QStringLiteral("toggleOutput"), QStringLiteral("Toggle Output"),
                      Keys("Ctrl+J"));
    InitializeBinding(T::ToggleSideBar, QStringLiteral("toggleSideBar"), QStringLiteral("Toggle Side Bar"),
                      Keys("Ctrl+B"));
    InitializeBinding(T::ToggleActivityBar, QStringLiteral("toggleActivityBar"),
                      QStringLiteral("Toggle Activity Bar"), QKeySequence());
    InitializeBinding(T::ToggleStatusBar, QStringLiteral("toggleStatusBar"),
                      QStringLiteral("Toggle Status Bar"), QKeySequence());
    InitializeBinding(T::ToggleCodeEditorLayout, QStringLiteral("toggleCodeEditorLayout"),
                      QStringLiteral("Toggle Code Editor Layout"), Keys("Alt+Shift+1"));
    InitializeBinding(T::ToggleSidebarPosition, QStringLiteral("toggleSidebarPosition"),
                      QStringLiteral("Toggle Sidebar Position"), QKeySequence());
    InitializeBinding(T::Explorer, QStringLiteral("explorer"), QStringLiteral("Explorer"),
                      Keys("Ctrl+Shift+E"));
    InitializeBinding(T::QuickHelp, QStringLiteral("quickHelp"), QStringLiteral("Quick Help"),
                      Keys("Ctrl+Shift+Q"));
}

void KeyBindings::InitializeNavigationBindings()
{
    using T = KeySequenceType;
    InitializeBinding(T::NextEditor, QStringLiteral("nextEditor"), QStringLiteral("Next Editor"),
                      Keys("Ctrl+PgDown"));
    InitializeBinding(T::PreviousEditor, QStringLiteral("previousEditor"), QStringLiteral("Previous Editor"),
                      Keys("Ctrl+PgUp"));
    InitializeBinding(T::NextUsedEditor, QStringLiteral("nextUsedEditor"), QStringLiteral("Next Used Editor"),
                      Keys("Ctrl+Tab"));
    InitializeBinding(T::PreviousUsedEditor, QStringLiteral("previousUsedEditor"),
                      QStringLiteral("Previous Used Editor"), Keys("Ctrl+Shift+Tab"));
    InitializeBinding(T::NextEditorGroup, QStringLiteral("nextEditorGroup"),
                      QStringLiteral("Next Editor Group"), Keys("Ctrl+Shift+PgDown"));
    InitializeBinding(T::PreviousEditorGroup, QStringLiteral("previousEditorGroup"),
                      QStringLiteral("Previous Editor Group"), Keys("Ctrl+Shift+PgUp"));
    InitializeBinding(T::GotoFile, QStringLiteral("gotoFile"), QStringLiteral("Go to File"), Keys("Ctrl+P"));
    InitializeBinding(T::GotoSymbolInFile, QStringLiteral("gotoSymbolInFile"),
                      QStringLiteral("Go to Symbol in File"), Keys("Ctrl+Shift+O"));
    InitializeBinding(T::GotoLine, QStringLiteral("gotoLine"), QStringLiteral("Go to Line"), Keys("Ctrl+G"));
    InitializeBinding(T::CommandReference, QStringLiteral("commandReference"),
                      QStringLiteral("Command Reference"), QKeySequence());
    InitializeBinding(T::PythonSelectionDir, QStringLiteral("pythonSelectionDir"),
                      QStringLiteral("Python Selection dir( )"), QKeySequence());
    InitializeBinding(T::PythonSelectionHelp, QStringLiteral("pythonSelectionHelp"),
                      QStringLiteral("Python Selection help( )"), QKeySequence());
    InitializeBinding(T::PythonUpdateModuleState, QStringLiteral("pythonUpdateModuleState"),
                      QStringLiteral("Python Update Module State"), QKeySequence());
    InitializeBinding(T::PythonRevertModuleState, QStringLiteral("pythonRevertModuleState"),
                      QStringLiteral("Python Revert Module State"), QKeySequence());
    InitializeBinding(T::PythonRevertModuleStateOnExecute, QStringLiteral("pythonRevertModuleStateOnExecute"),
                      QStringLiteral("Python Revert Module State on Execute"), QKeySequence());
    InitializeBinding(T::Escape, QStringLiteral("escape"), QStringLiteral("Reserved"),
                      QKeySequence(Qt::Key_Escape), true);
}

KeySequence* KeyBindings::InitializeBinding(KeySequenceType type, const QString& key, const QString& label,
                                            const QKeySequence& sequence, bool reserved)
{
    auto* row = new KeySequence;
    row->type = type;
    row->key = key;
    row->label = label;
    row->reserved = reserved;
    if (!sequence.isEmpty())
        AppendBinding(row, sequence);
    keySequences.append(row);
    return row;
}

void KeyBindings::AppendBinding(KeySequence* keySequence, const QKeySequence& sequence)
{
    if (!keySequence)
        return;
    keySequence->defaultSequences.append(sequence);
    keySequence->userSequences.append(sequence);
}

KeySequence* KeyBindings::GetKeySequence(KeySequenceType type) const
{
    if (type == KeySequenceType::NoBinding)
        return nullptr;
    for (KeySequence* row : keySequences)
    {
        if (row->type == type)
            return row;
    }
    return nullptr;
}

void KeyBindings::SetAction(KeySequenceType type, QAction* action)
{
    if (KeySequence* row = GetKeySequence(type))
        row->action = action;
}

QKeySequence KeyBindings::GetShortcut(KeySequenceType type) const
{
    const KeySequence* row = GetKeySequence(type);
    if (!row || row->userSequences.isEmpty())
        return QKeySequence();
    return row->userSequences.first();
}

QString KeyBindings::GetUserKeyBindingsPath()
{
    const QString directory = Settings::GetUserConfigDirectory();
    if (directory.isEmpty())
        return QString();
    return QFileInfo(directory + QLatin1Char('/') + CONFIG_FILE_NAME).absoluteFilePath();
}

void KeyBindings::ReadUserKeyBindings()
{
    const QString path = GetUserKeyBindingsPath();
    if (!path.isEmpty() && QFileInfo::exists(path))
    {
        QSettings file(path, QSettings::IniFormat);
        file.beginGroup(GROUP_NAME);
        for (KeySequence* row : std::as_const(keySequences))
        {
            if (!row->reserved)
                ReadKeyBinding(file, row);
        }
    }
    Update();
}

void KeyBindings::ReadKeyBinding(const QSettings& file, KeySequence* keySequence)
{
    keySequence->userSequences.clear();
    const QStringList values = IniValue::ReadStringList(file, keySequence->key, {UNDEFINED_KEY});
    for (const QString& value : values)
    {
        if (value == UNDEFINED_KEY)
            keySequence->userSequences.append(keySequence->defaultSequences);
        else
            keySequence->userSequences.append(ParseUserSequence(value));
    }
}

QStringList KeyBindings::ToStoredList(const QList<QKeySequence>& sequences)
{
    QStringList stored;
    for (const QKeySequence& sequence : sequences)
    {
        if (!sequence.isEmpty())
            stored.append(sequence.toString(QKeySequence::PortableText));
    }
    // One empty string, not an absent key: a shortcut that the user removed stays removed.
    if (stored.isEmpty())
        stored.append(QString());
    return stored;
}

void KeyBindings::WriteUserKeyBindings() const
{
    const QString path = GetUserKeyBindingsPath();
    if (path.isEmpty())
        return;
    QSettings file(path, QSettings::IniFormat);
    file.beginGroup(GROUP_NAME);
    for (const KeySequence* row : keySequences)
    {
        if (row->reserved)
            file.remove(row->key);
        else
            file.setValue(row->key, ToStoredList(row->userSequences));
    }
    file.endGroup();
    file.sync();
    // A damaged old file leaves FormatError behind although the write went through.
    if (file.status() == QSettings::AccessError)
        Logger::Error(QStringLiteral("Failed to write %1").arg(path));
}

QList<QKeySequence> KeyBindings::RemoveDuplicates(const KeySequence& row,
                                                  const QList<QKeySequence>& sequences,
                                                  QList<QKeySequence>& seen)
{
    QList<QKeySequence> unique = sequences;
    for (qsizetype i = unique.size() - 1; i >= 0; --i)
    {
        const QKeySequence& sequence = unique.at(i);
        if (sequence.isEmpty() || !seen.contains(sequence))
            continue;
        Logger::Warning(QStringLiteral("Duplicate hotkey detected: %1 (%2)")
                            .arg(row.label, sequence.toString(QKeySequence::PortableText)));
        unique.removeAt(i);
    }
    return unique;
}

void KeyBindings::Update()
{
    QList<QKeySequence> seen;
    for (KeySequence* row : std::as_const(keySequences))
    {
        if (!row->action)
            continue;
        const QList<QKeySequence>& wanted = row->reserved ? row->defaultSequences : row->userSequences;
        QList<QKeySequence> sequences = RemoveDuplicates(*row, wanted, seen);
        if (!row->reserved && sequences.size() != wanted.size())
        {
            if (sequences.isEmpty())
                sequences.append(QKeySequence());
            row->userSequences = sequences;
        }
        seen.append(sequences);
        row->action->setShortcuts(sequences);
    }
}

void KeyBindings::SetBindingsEnabled(bool enabled)
{
    if (enabled)
    {
        Update();
        return;
    }
    for (const KeySequence* row : std::as_const(keySequences))
    {
        if (row->action)
            row->action->setShortcuts(QList<QKeySequence>());
    }
}

void KeyBindings::UpdateUserSequences(const QList<KeySequence>& rows)
{
    for (const KeySequence& given : rows)
    {
        if (KeySequence* row = GetKeySequence(given.type))
            row->userSequences = given.userSequences;
    }
    Update();
}
