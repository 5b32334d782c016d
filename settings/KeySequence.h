#pragma once

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtGui/QAction>
#include <QtGui/QKeySequence>

// Every command that can carry a keyboard shortcut. The values are fixed: they are the numbers by
// which the menus name their binding, and 0 stands for "no binding".
enum class KeySequenceType : int
{
    NoBinding = 0,
    NewBuffer = 1,
    NewMelBuffer = 2,
    NewPythonBuffer = 3,
    OpenFile = 4,
    ReopenClosedFile = 5,
    Save = 6,
    SaveAs = 7,
    SaveAll = 8,
    Rename = 9,
    SaveScriptToShelf = 10,
    SourceScript = 11,
    RevertFile = 12,
    CloseFile = 13,
    CloseAllFiles = 14,
    SaveState = 15,
    OpenWorkspace = 16,
    SaveWorkspaceAs = 17,
    AddFolderToWorkspace = 18,
    Undo = 19,
    Redo = 20,
    Cut = 21,
    Copy = 22,
    Paste = 23,
    SelectAll = 24,
    Find = 25,
    Replace = 26,
    FindInFiles = 27,
    ReplaceInFiles = 28,
    FindNext = 29,
    FindPrevious = 30,
    SelectAndFindNext = 31,
    SelectAndFindPrevious = 32,
    FindInFilesNext = 33,
    FindInFilesPrevious = 34,
    ReplaceNext = 35,
    ReplaceAll = 36,
    IncreaseIndent = 37,
    DecreaseIndent = 38,
    CopyLineUp = 39,
    CopyLineDown = 40,
    MoveLineUp = 41,
    MoveLineDown = 42,
    DeleteLine = 43,
    ToggleComment = 44,
    ToggleBlockComment = 45,
    ConvertTabsToSpaces = 46,
    InsertPath = 47,
    ClearOutput = 48,
    Preferences = 49,
    IncreaseFontSize = 50,
    DecreaseFontSize = 51,
    ResetFontSize = 52,
    ToggleEchoAllCommands = 53,
    ToggleLineNumbersInErrors = 54,
    ToggleShowStackTrace = 55,
    ToggleSuppressStackWindow = 56,
    ToggleWriteOutputToFile = 57,
    Execute = 58,
    ExecuteAlt = 59,
    ExecuteLine = 60,
    ExecuteAll = 61,
    ToggleRenderWhitespace = 62,
    ToggleWordWrap = 63,
    ToggleCodeEditor = 64,
    ToggleOutput = 65,
    ToggleSideBar = 66,
    ToggleActivityBar = 67,
    ToggleStatusBar = 68,
    ToggleCodeEditorLayout = 69,
    ToggleSidebarPosition = 70,
    Explorer = 71,
    QuickHelp = 72,
    NextEditor = 73,
    PreviousEditor = 74,
    NextUsedEditor = 75,
    PreviousUsedEditor = 76,
    NextEditorGroup = 77,
    PreviousEditorGroup = 78,
    GotoFile = 79,
    GotoSymbolInFile = 80,
    GotoLine = 81,
    CommandReference = 82,
    PythonSelectionDir = 83,
    PythonSelectionHelp = 84,
    PythonUpdateModuleState = 85,
    PythonRevertModuleState = 86,
    PythonRevertModuleStateOnExecute = 87,
    Escape = 88,
};

// One bindable command: its shortcuts as shipped and as the user set them, and the action that
// carries them. A plain value, so that the preferences can edit a copy of the rows.
struct KeySequence
{
    KeySequenceType type = KeySequenceType::NoBinding;
    QList<QKeySequence> defaultSequences;
    QList<QKeySequence> userSequences; // starts as a copy of the defaults
    QString key;                       // the key in the bindings file
    QString label;                     // the text in the preferences and in messages
    QPointer<QAction> action;          // not owned; null until KeyBindings::SetAction
    bool reserved = false;             // fixed: never stored, never shown, always the defaults
};
