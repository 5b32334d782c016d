#pragma once

#include "editor/CodeEditorProperties.h"
#include "editor/FileStamp.h"
#include "editor/TextFileCodec.h"
#include "language/ParserMessage.h"

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QPointer>
#include <QtCore/QRegularExpression>
#include <QtCore/QString>
#include <QtCore/QTimer>
#include <QtGui/QTextCursor>
#include <QtWidgets/QPlainTextEdit>

class CodeEditorBlockData;
class CodeEditorErrorBarOverlay;
class CodeEditorLineNumbers;
class KeyBindings;
enum class KeySequenceType : int;
class OverlayWidget;
class QMenu;
class QSyntaxHighlighter;
class QTextBlock;
class QTextCharFormat;

// The text widget of one buffer: knows its language, its file, its tab rules, and turns the
// stream of edits into one TextChanged per pause in typing.
//
// Block data, the editing commands, the decorations, the highlighters and the completers are
// built on this class. Where they attach, it calls the protected virtual functions at the end of
// this declaration; on their own those keep the behaviour of a plain QPlainTextEdit.
class CodeEditor : public QPlainTextEdit
{
    Q_OBJECT

public:
    static constexpr int TEXT_CHANGED_DELAY_MS = 250;

    CodeEditor(CodeEditorProperties properties, KeyBindings* keyBindings, QWidget* parent = nullptr);
    ~CodeEditor() override;

    // The buffer.
    void GetProperties(CodeEditorProperties& properties) const;
    CodeEditorProperties GetProperties() const { return properties; }
    void SetProperties(CodeEditorProperties properties, bool force = false);
    CodeEditorType GetType() const { return properties.type; }
    CodeEditorLanguage GetLanguage() const { return properties.language; }
    QString GetFilePath() const { return properties.filePath; }
    QString GetLabel() const { return properties.label; }
    QString GetText() const;
    void SetText(const QString& text);
    QString GetSelectedText() const;
    QString GetSelectedTextForExecute() const;
    QString GetCurrentLineText() const;
    QString GetCurrentLineForExecute() const;
    QString GetTextForPythonProcessing() const;
    bool IsModified() const;
    void SetModified(bool modified);

    // Cursor, selection and scrolling.
    int GetSelectedStartPosition() const;
    int GetSelectedEndPosition() const;
    void ClearSelection();
    void ClearSelectionAndInsertText(const QString& text);
    int GetCurrentLine() const;
    int GetLineCount() const;
    void SetCurrentLine(int line);
    int GetCursorPosition() const;
    void SetCursorPosition(int position, bool goHome = false, bool center = false);
    void SetCursorSelection(int start, int end);
    int GetVerticalScrollBarValue() const;
    void SetVerticalScrollBarValue(int value);
    int GetVerticalScrollBarWidth() const;
    QString SelectWordUnderCursor();
    bool HasSelection(int& start, int& end, int& firstBlock, int& lastBlock, bool& endsAtBlockStart) const;
    void GetCursorStatus(int& line, int& column, int& selected) const;
    void GetCursorStatus(const QTextCursor& cursor, int& line, int& column, int& selected) const;
    void OnHomeKeyPressed(bool shift, bool ctrl);
    QChar CharacterAt(int position) const;

    // Settings pushed in from outside.
    void UpdateTextOptions();
    void UpdateFont();
    void UpdateFontsAndColors();
    void UpdateOverwriteMode();
    void ToggleOverwriteMode();
    void SetDropOverlayRect(const QRect& rect);

    // What the language decides.
    bool IsDisplayErrorsEnabled() const;
    bool IsPylintEnabled() const;
    bool IsAutoIndentEnabled() const;
    bool IsSmartIndentEnabled() const;
    bool IsIndentToParenthesesEnabled() const;
    bool IsInsertClosingBraceEnabled() const;
    bool IsInsertClosingQuoteEnabled() const;
    bool IsBackspaceToTabStopEnabled() const;
    bool IsQuoteForLanguage(QChar c) const;
    bool IsCompleteOnLettersEnabled() const;

    // Tabs and indentation.
    int GetTabSize() const { return tabSize; }
    bool IsInsertSpacesEnabled() const { return insertSpaces; }
    int GetTabStopPixels() const { return tabStopPixels; }
    QString SpacesForTab() const;
    static QString SpacesStr(int count);

    // Characters and brackets.
    static QChar GetMatchingBrace(QChar c);
    static bool IsOpeningBrace(QChar c);
    static bool IsClosingBrace(QChar c);
    static bool IsMatchingBraces(QChar open, QChar close);
    static QChar PrevNonWhitespace(const QString& text, int index);
    static QChar NextNonWhitespace(const QString& text, int index);
    static int EarliestPosition(const QTextCursor& cursor);
    static int LatestPosition(const QTextCursor& cursor);

    // Completion.
    bool AutoCompleterVisible() const;
    void UpdateAutoCompleter(bool force);
    QRect GetAutoCompleterRect() const;

    // The context menu as ShowContextMenu runs it; the caller owns the menu.
    QMenu* CreateContextMenu();

    // Smart indent: where block comments open and close, and the indent of the line that opens
    // a bracket.
    int GetBlockCommentOpenPosition(const QTextCursor& cursor) const;
    int GetBlockCommentClosePosition(const QTextCursor& cursor, int offset) const;
    int GetIndentCountAtPreviousBlock(const QTextCursor& cursor) const;
    bool GetOpeningBraceIndent(QChar c, int position, QString& indent) const;
    bool GetOpeningBraceIndent(QChar c, int position, QString& indent, const QTextBlock& block) const;
    void SmartIndentOpenCurlyBrace(QTextCursor& cursor);
    void UpdateIndentationOnNewLine(QTextCursor& cursor, const QTextBlock& block,
                                    const CodeEditorBlockData* data, int column, QChar previous, QChar next);

    // The indent operations the editing commands are made of; each works on the given cursor.
    bool IsCursorInBlockIndent(bool useAnchor) const;
    bool IsCursorInBlockIndent(const QTextCursor& cursor, bool useAnchor) const;
    void IncreaseSpacesIndent(QTextCursor& cursor);
    void IncreaseTabIndent(QTextCursor& cursor);
    void DecreaseSpacesIndent(QTextCursor& cursor, bool fullStep);
    void DecreaseTabIndent(QTextCursor& cursor);
    void ConvertLeadingTabsToSpaces(QTextCursor& cursor);
    QString ConvertLeadingTabsToSpaces(const QString& text) const;
    void ConvertLeadingSpacesToTabs(QTextCursor& cursor, bool keepRemainder);
    QString ConvertLeadingSpacesToTabs(const QString& text) const;
    static void WrapSelection(QTextCursor& cursor, const QString& open, const QString& close);

    // The clipboard format of a whole line copied without a selection.
    static const char* const LINE_MIME_TYPE;

    // Messages of the parsers, the syntax check and Pylint, and what shows them.
    void UpdateErrorsAndWarnings(const QList<ParserMessage>& newErrors,
                                 const QList<ParserMessage>& newWarnings,
                                 const QList<ParserMessage>& newInfos);
    void UpdateErrorsAndWarnings();
    static void OffsetParserMessages(QList<ParserMessage>& messages, int position, int removed, int added);
    QString GetErrorAndWarningsText() const;
    int GetNumberOfErrors() const { return static_cast<int>(errors.size()); }
    int GetNumberOfWarnings() const { return static_cast<int>(warnings.size()); }
    int GetLineNumberWidth() const;
    int GetGutterWidth() const;
    void LineNumberPaintEvent(QPaintEvent* event);
    int GetIndentGuideCount(const QTextBlock& block) const;
    void PythonSyntaxCheck();
    // Find and replace. `searchRegEx` is the find bar's expression; the global one, of the search
    // in files, is read from the settings.
    void SetSearchRegEx(const QRegularExpression& regEx);
    void GetSearchResults(const QRegularExpression& regEx, int& current, int& total) const;
    bool Find(int position, bool backward);
    bool FindNext();
    bool FindPrevious();
    bool FindGlobal(int position);
    bool FindAndReplaceGlobal(int position);
    void FindAndReplaceAllGlobal();
    void Replace(const QString& text);
    void ReplaceAll(const QRegularExpression& regEx, const QString& text, bool inSelection);
    void SetSelectedSearchRegion(bool enabled, int start, int end);
    void ClearFindInSelection();
    bool IsFindInSelectionEnabled() const { return findInSelection; }
    int GetFindInSelectionStart() const { return findInSelectionStart; }
    int GetFindInSelectionEnd() const { return findInSelectionEnd; }

    // Formats of the colour table shared by all editors; an edit of a colour reaches every editor.
    static QTextCharFormat* sPlainTextFormat;
    static QTextCharFormat* sCurrentLineFormat;
    static QTextCharFormat* sMatchingSelectionFormat;
    static QTextCharFormat* sMatchingBracesFormat;
    static QTextCharFormat* sLineNumbersFormat;
    static QTextCharFormat* sGutterFormat;
    static QTextCharFormat* sIndentationGuidesFormat;

    // The file on disk: how its bytes are stored and what they were when last read or written.
    const TextFileFormat& GetFileFormat() const { return fileFormat; }
    void SetFileFormat(const TextFileFormat& format) { fileFormat = format; }
    const FileStamp& GetFileStamp() const { return fileStamp; }
    void SetFileStamp(const FileStamp& stamp) { fileStamp = stamp; }
    // The text as it belongs in the file: unlike GetText(), line separators and no-break spaces
    // inside a line stay what they are.
    QString GetTextForSave() const;
    // Replaces the whole text as one undo step, so that the text before can be had back.
    void ReplaceTextUndoable(const QString& text);
    bool IsWatchingFile() const;
    void WatchFile();
    // What the highlighter recorded for a block; null before its first pass over the block.
    static CodeEditorBlockData* GetBlockData(const QTextBlock& block);
    static CodeEditorBlockData* GetBlockData(const QTextCursor& cursor);
    static CodeEditorBlockData* GetPreviousBlockData(const QTextCursor& cursor);

signals:
    void ReceivedFocus();
    void TextChanged(const QString& path, const QString& text);
    void ModificationChanged(bool modified, CodeEditor* codeEditor);
    void FileChanged(const QString& path);
    void ErrorAndWarningTextChanged();
    void OverwriteModeChanged();
    void QuickHelpChanged(const QString& text, bool showWhenHidden);
    void EscapeKeyPressed();
    void IncreaseFontSizeRequested();
    void DecreaseFontSizeRequested();
    void ExecuteRequested();
    void ExecuteAllRequested();
    void ExecuteLineRequested();
    void SaveScriptToShelfRequested();
    void InsertPathRequested();
    void PythonDirRequested();
    void PythonHelpRequested();
    void PythonUpdateModuleStateRequested();
    void PythonRevertModuleStateRequested();
    void TogglePythonRevertModuleStateOnExecuteRequested();

public slots:
    void Execute();
    void ExecuteAll();
    void ExecuteLine();
    void SaveScriptToShelf();
    void InsertPath();
    void PythonDirSelection();
    void PythonHelpSelection();
    void PythonUpdateModuleState();
    void PythonRevertModuleState();
    void TogglePythonRevertModuleStateOnExecute();
    void QuickHelp();
    void CommandDocumentation();
    void CompleteCode(const QString& text, int prefixLength);
    void OnTextChanged();
    void OnTextChangedDelay();
    void OnModificationChanged(bool modified);
    void OnFileChanged(const QString& path);
    void ShowContextMenu(const QPoint& pos);
    void OnDocumentContentsChanged(int position, int charsRemoved, int charsAdded);

    // Editing commands; see the attachment points below.
    virtual void CustomCut();
    virtual void CustomCopy();
    virtual void CustomPaste();
    virtual void IncreaseIndent(bool fullLine);
    virtual void DecreaseIndent();

    void MoveLine(bool up);
    void CopyLine(bool up);
    void DeleteLines();
    void ToggleComment();
    void ToggleBlockComment();
    void ConvertTabsToSpaces();
    void TrimTrailingWhiteSpaces(bool ensureNewLineAtEof);
    void EnsureNewLineAtEof();

    // Decorations; see the attachment points below.
    virtual void UpdateLineNumberWidth();
    virtual void UpdateLineNumbers(const QRect& rect, int dy);
    virtual void UpdateExtraSelections();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    // Attachment points. Each default is what a plain QPlainTextEdit does, so the editor works on
    // its own; block data, editing commands, decorations, highlighters and completers fill them in.
    //
    // Return without a selection: the new line and its indent.
    virtual void InsertNewLine();
    virtual void InsertOpeningBrace(QChar c);
    virtual void InsertClosingBrace(QChar c);
    virtual void InsertQuote(QChar c);
    // Backspace without modifiers; true when it took the key.
    virtual bool InsertBackspace();
    // Whether the cursor stands in a string or a comment, as the block's data knows it; a block
    // without data counts as ignored.
    virtual bool IsIgnoredBlockDataPosition(const QTextCursor& cursor) const;
    // The highlighter and the completer of the present language; null for none.
    virtual QSyntaxHighlighter* CreateHighlighter();
    virtual QWidget* CreateAutoCompleter();
    // Gives the completer the editor's font and asks it to follow the cursor.
    virtual void UpdateAutoCompleterPopup(const QTextCursor& cursor, const QRect& rect, bool force);
    // Message marks follow an edit at once, before the next parse.
    virtual void OffsetMessages(int position, int charsRemoved, int charsAdded);
    virtual void UpdateErrorBarBlockHeights();
    virtual void ResizeErrorBar();
    virtual void ResizeLineNumbers();

    QList<QTextEdit::ExtraSelection> extraSelections;
    QRegularExpression searchRegEx;
    bool findInSelection = false;
    int findInSelectionStart = -1;
    int findInSelectionEnd = -1;
    // Set during bulk edits that rebuild the text, so that marks are not moved for each piece.
    bool ignoreContentsChange = false;

    // The extra selections, in drawing order.
    void HighlightFindReplaceSelectedRegion();
    void HighlightCurrentLine();
    void HighlightMatchedSelection();
    void HighlightFoundSelection(bool global);
    void HighlightMatchedBraces();
    void HighlightMatchedBraces(int first, int second);
    void HighlightErrorsAndWarnings();
    void AddExtraSelection(const QTextCursor& cursor, const QTextCharFormat& format);
    QString ToolTipTextAt(const QPoint& pos) const;
    void PaintIndentationGuides();

    CodeEditorLineNumbers* lineNumbers = nullptr;         // child
    CodeEditorErrorBarOverlay* errorBarOverlay = nullptr; // child of the vertical scroll bar
    // The block count of the last walk that measured the error bar's blocks; -1 when the next
    // one must walk, whatever the count.
    int errorBarMeasuredBlockCount = -1;
    QList<ParserMessage> errors;
    QList<ParserMessage> warnings;
    QList<ParserMessage> infos;
    // Block number to the text of its message, for the gutter's tooltips and the status bar.
    QMap<int, QString> errorLines;
    QMap<int, QString> warningLines;
    QMap<int, QString> infoLines;

private:
    enum class KeyResult
    {
        NotHandled,
        Done,
        UpdateCompleter,
    };

    void CreateConnections();
    void FetchSharedFormats();
    void SetHighlighterFromLanguage();
    void SetAutoCompleterFromLanguage();
    void OffsetFindInSelection(int position, int removed, int added);
    bool SelectionIsFullMatch(const QRegularExpression& regEx) const;
    void ShowFoundCursor(const QTextCursor& cursor);
    KeyResult HandleEnterKeys(QKeyEvent* event, Qt::KeyboardModifiers modifiers);
    KeyResult HandleKeypadEnter(QKeyEvent* event, Qt::KeyboardModifiers modifiers);
    KeyResult HandleCommandKeys(QKeyEvent* event, Qt::KeyboardModifiers modifiers);
    KeyResult HandleCharacterKeys(QKeyEvent* event, Qt::KeyboardModifiers modifiers);
    KeyResult HandleLanguageKeys(QKeyEvent* event, Qt::KeyboardModifiers modifiers);
    KeyResult HandleTypedKey(QKeyEvent* event, Qt::KeyboardModifiers modifiers);
    KeyResult HandleCompletionAfterKey(QKeyEvent* event, Qt::KeyboardModifiers modifiers);
    void HideAutoCompleterForKey(const QKeyEvent* event);
    void SendKeyWithModifiers(const QKeyEvent* event, Qt::KeyboardModifiers modifiers);
    void SelectDollarVariable();
    void AddContextMenuAction(QMenu* menu, const QString& text, const char* slot, KeySequenceType type);
    void AddPythonContextMenu(QMenu* menu);
    int LeadingWidth(const QString& text) const;
    int ColumnWidth(const QTextCursor& cursor) const;
    void IndentLines(bool increase);
    void PrepareIndentIncrease(QTextCursor& cursor, bool spaces);
    void ToggleCommentLines(const QString& mark, int firstBlock, int lastBlock);
    void ToggleCommentLine(const QString& mark);
    void RemoveCommentMark(QTextCursor& cursor, const QString& mark);
    void RemoveBlockComment(QTextCursor& cursor, int closeOffset);
    void GetLineRange(int& firstBlock, int& lastBlock) const;

    CodeEditorProperties properties;
    int tabSize = 4;
    bool insertSpaces = true;
    bool autoIndent = true;
    QPointer<QSyntaxHighlighter> highlighter; // owned; replaced when the language changes
    QPointer<QWidget> autoCompleter;          // owned; none for plain text
    KeyBindings* keyBindings = nullptr;       // not owned
    OverlayWidget* dropOverlay = nullptr;     // child
    QFileSystemWatcher fileWatcher;
    QTimer textChangedTimer;
    int tabStopPixels = 24;
    int pendingScrollValue = -1;
    TextFileFormat fileFormat;
    FileStamp fileStamp;
};
