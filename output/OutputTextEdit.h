#pragma once

#include "output/OutputArrivalBuffer.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QRegularExpression>
#include <QtCore/QString>
#include <QtCore/QTimer>
#include <QtGui/QTextCharFormat>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QTextEdit>

class FindReplaceWidget;
class KeyBindings;
class QFile;
class QTextStream;

// The read-only pane that shows what the host prints. Built to take a long stream of small
// appends without touching the text that is off screen:
// - text that arrives while the pane is hidden is held back and inserted in one piece on show;
// - the document is capped by line count (set by the owner on the document);
// - highlighting is done with extra selections over the visible stretch only, rebuilt on every
//   append, scroll and selection change;
// - a double click can take a leading '$' into the word, so that a MEL variable is picked whole.
//
// Appends that follow one another within one turn of the event loop are gathered and inserted
// together when the turn ends, at the forced repaint (at most every 250 ms) or before anything
// reads the text; the first append of a turn is inserted at once.
class OutputTextEdit : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit OutputTextEdit(KeyBindings* keyBindings, QWidget* parent = nullptr);
    ~OutputTextEdit() override;

    void AppendText(const QString& text);
    QString GetText();
    QString GetSelectedText() const;
    QString GetSelectedTextForExecute() const;
    int GetSelectedStartPosition() const;
    int GetSelectedEndPosition() const;
    QString SelectWordUnderCursor();
    bool IsFindReplaceVisible() const;
    bool HasSearchText() const;
    void ScrollToEnd();
    void UpdateFont();
    void UpdateTextOptions();
    void UpdateFontsAndColors();
    // Sets the cap on the document's lines; output still held is inserted first.
    void SetMaximumBlockCount(int count);
    void GetSearchResults(const QRegularExpression& regEx, int& currentIndex, int& totalCount);
    FindReplaceWidget* GetFindReplace() const { return findReplace; }

    bool BeginWriteToFile(const QString& path);
    void EndWriteToFile();
    bool IsWriteToFileActive() const;

    static int EarliestPosition(const QTextCursor& cursor);
    static int LatestPosition(const QTextCursor& cursor);

signals:
    void ReceivedFocus();
    void IncreaseFontSizeRequested();
    void DecreaseFontSizeRequested();

public slots:
    void ClearAll();
    void UpdateExtraSelections();
    void QueueUpdateExtraSelections(int action);
    void OnSearchChanged(const QRegularExpression& regEx, bool findInSelection, bool findNext);
    bool Find(int position, bool backwards);
    bool FindNext();
    bool FindPrevious();
    void OnFindReplaceClosed();
    void ShowFindReplace(bool updateFindText = true, bool hasFocus = true);
    void CloseFindReplace();
    void ShowContextMenu(const QPoint& p);

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private slots:
    void OnBurstEnded();

private:
    void CreateConnections();
    void InsertAtEnd(const QString& text, bool replaceDocument);
    void ShowInserted();
    void FlushArrivingText();
    void WriteToLog(const QString& text, bool inBurst);
    void FlushLog();
    void RepaintIfDue();
    bool CursorRestsAtEnd() const;
    void FlushBeforeInput(const QEvent* event);
    void UpdateSearchResults();
    void UpdateFindReplacePosition();
    bool SelectionIsFullMatch(const QRegularExpression& regEx) const;
    void IncludeDollarSign();
    QString PlainTextRange(int start, int end) const;
    void AddSelection(int start, int end, const QTextCharFormat& format);
    void HighlightUserDefinedSelections(int from, int to);
    void HighlightMatchedSelection(int from, int to);
    QRegularExpression MatchedSelectionRegEx(const QString& selected) const;
    void HighlightFoundSelection(int from, int to);
    void SetSelectionPalette(const QColor& text, const QColor& background);
    const QRegularExpression& UserRegEx(const QString& pattern);

    KeyBindings* keyBindings;
    QList<QTextEdit::ExtraSelection> extraSelections;
    QString pendingText;
    QFile* logFile = nullptr;
    QTextStream* logStream = nullptr;
    QRegularExpression searchRegEx;
    QElapsedTimer repaintTimer;

    FindReplaceWidget* findReplace = nullptr; // child; the bar without replacing
    // Output of the running burst, and the zero-time timer that ends the burst.
    OutputArrivalBuffer arriving;
    QTimer burstTimer;
    QElapsedTimer logFlushTimer;
    // Set while this pane inserts text: the scroll and selection signals that the insertion
    // raises are answered once, after it.
    bool inserting = false;
    QHash<QString, QRegularExpression> userRegExCache;
};
