#include "editor/CodeEditor.h"

#include "editor/CodeEditorErrorBarOverlay.h"
#include "editor/CodeEditorLineNumbers.h"

#include "plugin/MayaUtil.h"
#include "settings/ColorSettings.h"
#include "settings/Settings.h"
#include "widgets/OverlayWidget.h"

#include <QtCore/QFileInfo>
#include <QtGui/QSyntaxHighlighter>
#include <QtGui/QTextDocument>
#include <QtWidgets/QScrollBar>

QTextCharFormat* CodeEditor::sPlainTextFormat = nullptr;
QTextCharFormat* CodeEditor::sCurrentLineFormat = nullptr;
QTextCharFormat* CodeEditor::sMatchingSelectionFormat = nullptr;
QTextCharFormat* CodeEditor::sMatchingBracesFormat = nullptr;
QTextCharFormat* CodeEditor::sLineNumbersFormat = nullptr;
QTextCharFormat* CodeEditor::sGutterFormat = nullptr;
QTextCharFormat* CodeEditor::sIndentationGuidesFormat = nullptr;

CodeEditor::CodeEditor(CodeEditorProperties properties, KeyBindings* keyBindings, QWidget* parent)
    : QPlainTextEdit(parent), keyBindings(keyBindings)
{
    setFrameStyle(QFrame::NoFrame);
    setMouseTracking(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setCenterOnScroll(false);

    lineNumbers = new CodeEditorLineNumbers(this);
    errorBarOverlay = new CodeEditorErrorBarOverlay(verticalScrollBar());

    dropOverlay = new OverlayWidget(this);
    dropOverlay->setAttribute(Qt::WA_TransparentForMouseEvents);
    dropOverlay->hide();

    SetProperties(std::move(properties), true);
    UpdateFontsAndColors();
    UpdateOverwriteMode();
    UpdateLineNumberWidth();
    CreateConnections();
    FetchSharedFormats();

    textChangedTimer.setSingleShot(true);
    connect(&textChangedTimer, SIGNAL(timeout()), this, SLOT(OnTextChangedDelay()));
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, SIGNAL(customContextMenuRequested(QPoint)), this, SLOT(ShowContextMenu(QPoint)));
}

CodeEditor::~CodeEditor()
{
    // The base class tears down the document after this part of the object is gone; its last
    // signals must not reach the slots here.
    textChangedTimer.stop();
    disconnect(document(), nullptr, this, nullptr);
    disconnect(verticalScrollBar(), nullptr, this, nullptr);
    disconnect(this, nullptr, this, nullptr);
    delete autoCompleter.data();
}

void CodeEditor::CreateConnections()
{
    connect(this, SIGNAL(blockCountChanged(int)), this, SLOT(UpdateLineNumberWidth()));
    connect(this, SIGNAL(updateRequest(QRect, int)), this, SLOT(UpdateLineNumbers(QRect, int)));
    connect(this, SIGNAL(cursorPositionChanged()), this, SLOT(UpdateExtraSelections()));
    connect(this, SIGNAL(selectionChanged()), this, SLOT(UpdateExtraSelections()));
    connect(verticalScrollBar(), SIGNAL(valueChanged(int)), this, SLOT(UpdateExtraSelections()));
    connect(this, SIGNAL(textChanged()), this, SLOT(OnTextChanged()));
    connect(this, SIGNAL(modificationChanged(bool)), this, SLOT(OnModificationChanged(bool)));
    connect(document(), SIGNAL(contentsChange(int, int, int)), this,
            SLOT(OnDocumentContentsChanged(int, int, int)));
    connect(&fileWatcher, SIGNAL(fileChanged(QString)), this, SLOT(OnFileChanged(QString)));
}

void CodeEditor::FetchSharedFormats()
{
    if (sPlainTextFormat)
        return;
    sPlainTextFormat = ColorSettings::GetCodeEditorFormatPtr(ColorSettings::PLAIN_TEXT, false);
    sCurrentLineFormat = ColorSettings::GetCodeEditorFormatPtr(ColorSettings::CURRENT_LINE, false);
    sMatchingSelectionFormat =
        ColorSettings::GetCodeEditorFormatPtr(ColorSettings::MATCHING_SELECTION, false);
    sMatchingBracesFormat = ColorSettings::GetCodeEditorFormatPtr(ColorSettings::MATCHING_BRACES, false);
    sLineNumbersFormat = ColorSettings::GetCodeEditorFormatPtr(ColorSettings::LINE_NUMBERS, false);
    sGutterFormat = ColorSettings::GetCodeEditorFormatPtr(ColorSettings::GUTTER, false);
    sIndentationGuidesFormat =
        ColorSettings::GetCodeEditorFormatPtr(ColorSettings::INDENTATION_GUIDES, false);
}

void CodeEditor::GetProperties(CodeEditorProperties& result) const
{
    result = properties;
}

void CodeEditor::SetProperties(CodeEditorProperties newProperties, bool force)
{
    if (!properties.filePath.isEmpty() && fileWatcher.files().contains(properties.filePath))
        fileWatcher.removePath(properties.filePath);
    if (newProperties.type == CodeEditorType::FILE && !newProperties.filePath.isEmpty())
        fileWatcher.addPath(newProperties.filePath);

    const bool languageChanged = newProperties.language != properties.language;
    properties = std::move(newProperties);
    if (languageChanged || force)
    {
        SetHighlighterFromLanguage();
        SetAutoCompleterFromLanguage();
    }
    // Tab size and indent rules are per language.
    if (languageChanged)
        UpdateTextOptions();
}

void CodeEditor::SetHighlighterFromLanguage()
{
    delete highlighter.data();
    highlighter = CreateHighlighter();
}

void CodeEditor::SetAutoCompleterFromLanguage()
{
    delete autoCompleter.data();
    autoCompleter = nullptr;
    if (properties.language == CodeEditorLanguage::TEXT)
        return;
    autoCompleter = CreateAutoCompleter();
    if (autoCompleter)
        connect(autoCompleter, SIGNAL(Accepted(QString, int)), this, SLOT(CompleteCode(QString, int)));
}

bool CodeEditor::IsModified() const
{
    return document()->isModified();
}

void CodeEditor::SetModified(bool modified)
{
    document()->setModified(modified);
}

void CodeEditor::OnTextChanged()
{
    textChangedTimer.start(TEXT_CHANGED_DELAY_MS);
}

void CodeEditor::OnTextChangedDelay()
{
    emit TextChanged(properties.filePath, GetText());
}

void CodeEditor::OnModificationChanged(bool modified)
{
    emit ModificationChanged(modified, this);
}

void CodeEditor::OnFileChanged(const QString& path)
{
    // Saving through a temporary file and a rename replaces the watched file, and the watcher
    // drops it; the new file is the one to follow.
    if (QFileInfo::exists(path) && !fileWatcher.files().contains(path))
        fileWatcher.addPath(path);
    emit FileChanged(path);
}

void CodeEditor::OnDocumentContentsChanged(int position, int charsRemoved, int charsAdded)
{
    if (ignoreContentsChange)
        return;
    OffsetFindInSelection(position, charsRemoved, charsAdded);
    OffsetMessages(position, charsRemoved, charsAdded);
}

void CodeEditor::OffsetFindInSelection(int position, int removed, int added)
{
    if (!findInSelection)
        return;
    const int end = position + removed;
    const int delta = added - removed;
    if (end <= findInSelectionStart)
        findInSelectionStart += delta;
    if (end < findInSelectionEnd)
        findInSelectionEnd += delta;
}

void CodeEditor::Execute()
{
    emit ExecuteRequested();
}

void CodeEditor::ExecuteAll()
{
    emit ExecuteAllRequested();
}

void CodeEditor::ExecuteLine()
{
    emit ExecuteLineRequested();
}

void CodeEditor::SaveScriptToShelf()
{
    emit SaveScriptToShelfRequested();
}

void CodeEditor::InsertPath()
{
    emit InsertPathRequested();
}

void CodeEditor::PythonDirSelection()
{
    emit PythonDirRequested();
}

void CodeEditor::PythonHelpSelection()
{
    emit PythonHelpRequested();
}

void CodeEditor::PythonUpdateModuleState()
{
    emit PythonUpdateModuleStateRequested();
}

void CodeEditor::PythonRevertModuleState()
{
    emit PythonRevertModuleStateRequested();
}

void CodeEditor::TogglePythonRevertModuleStateOnExecute()
{
    emit TogglePythonRevertModuleStateOnExecuteRequested();
}

void CodeEditor::QuickHelp()
{
    emit QuickHelpChanged(GetSelectedTextForExecute(), true);
}

void CodeEditor::CommandDocumentation()
{
    if (properties.language == CodeEditorLanguage::TEXT)
        return;
    MayaUtil::CommandDocumentation(GetSelectedText(), properties.language == CodeEditorLanguage::PYTHON);
}

void CodeEditor::CompleteCode(const QString& text, int prefixLength)
{
    QTextCursor cursor = textCursor();
    if (prefixLength >= 0 && cursor.position() >= prefixLength)
    {
        cursor.clearSelection();
        cursor.setPosition(cursor.position() - prefixLength, QTextCursor::KeepAnchor);
        cursor.insertText(text);
        setTextCursor(cursor);
    }
    const bool toQuickHelp =
        (properties.language == CodeEditorLanguage::MEL && Settings::melAutoCompleteToQuickHelp) ||
        (properties.language == CodeEditorLanguage::PYTHON && Settings::pythonAutoCompleteToQuickHelp);
    if (toQuickHelp && MayaUtil::MelCommands().contains(text))
        emit QuickHelpChanged(text, false);
}

bool CodeEditor::IsDisplayErrorsEnabled() const
{
    switch (properties.language)
    {
    case CodeEditorLanguage::MEL:
        return Settings::melDisplayErrors;
    case CodeEditorLanguage::PYTHON:
        return Settings::pythonDisplayErrors;
    default:
        return false;
    }
}

bool CodeEditor::IsPylintEnabled() const
{
    return properties.language == CodeEditorLanguage::PYTHON && Settings::pylintEnabled;
}

bool CodeEditor::IsAutoIndentEnabled() const
{
    switch (properties.language)
    {
    case CodeEditorLanguage::MEL:
        return Settings::tabsUseDefaultsMel ? Settings::tabsAutoIndentDefault : Settings::tabsAutoIndentMel;
    case CodeEditorLanguage::PYTHON:
        return Settings::tabsUseDefaultsPython ? Settings::tabsAutoIndentDefault
                                               : Settings::tabsAutoIndentPython;
    default:
        return Settings::tabsAutoIndentDefault;
    }
}

bool CodeEditor::IsSmartIndentEnabled() const
{
    switch (properties.language)
    {
    case CodeEditorLanguage::MEL:
        return Settings::melSmartIndent;
    case CodeEditorLanguage::PYTHON:
        return Settings::pythonSmartIndent;
    default:
        return false;
    }
}

bool CodeEditor::IsIndentToParenthesesEnabled() const
{
    switch (properties.language)
    {
    case CodeEditorLanguage::MEL:
        return Settings::melIndentToParentheses;
    case CodeEditorLanguage::PYTHON:
        return Settings::pythonIndentToParentheses;
    default:
        return false;
    }
}

bool CodeEditor::IsInsertClosingBraceEnabled() const
{
    switch (properties.language)
    {
    case CodeEditorLanguage::MEL:
        return Settings::melInsertClosingParentheses;
    case CodeEditorLanguage::PYTHON:
        return Settings::pythonInsertClosingParentheses;
    default:
        return false;
    }
}

bool CodeEditor::IsInsertClosingQuoteEnabled() const
{
    switch (properties.language)
    {
    case CodeEditorLanguage::MEL:
        return Settings::melInsertClosingQuotes;
    case CodeEditorLanguage::PYTHON:
        return Settings::pythonInsertClosingQuotes;
    default:
        return false;
    }
}

bool CodeEditor::IsBackspaceToTabStopEnabled() const
{
    return properties.language != CodeEditorLanguage::TEXT && Settings::codeEditorBackspaceToTabStop;
}

bool CodeEditor::IsQuoteForLanguage(QChar c) const
{
    if (c == QLatin1Char('"'))
        return true;
    switch (properties.language)
    {
    case CodeEditorLanguage::MEL:
        return c == QLatin1Char('`');
    case CodeEditorLanguage::PYTHON:
        return c == QLatin1Char('\'');
    default:
        return false;
    }
}

bool CodeEditor::IsCompleteOnLettersEnabled() const
{
    switch (properties.language)
    {
    case CodeEditorLanguage::MEL:
        return Settings::melCompleteOnLetters;
    case CodeEditorLanguage::PYTHON:
        return Settings::pythonCompleteOnLetters;
    default:
        return false;
    }
}
