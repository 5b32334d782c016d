#include "output/OutputTextEdit.h"

#include "editor/FindReplaceWidget.h"
#include "plugin/Logger.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"

#include <QtCore/QFile>
#include <QtCore/QTextStream>
#include <QtGui/QAction>
#include <QtGui/QFontMetricsF>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollBar>

namespace
{
constexpr int REPAINT_INTERVAL_MS = 250;
// Text before the visible stretch that is still searched, so that a match that starts above
// the top edge still paints.
constexpr int HIGHLIGHT_LEAD = 600;
constexpr int MAX_CACHED_USER_REGEXES = 64;

const QRegularExpression& WordCharacterRegEx()
{
    static const QRegularExpression regEx(QStringLiteral("^[a-zA-Z0-9_]+$"));
    return regEx;
}

// Of the capitals only 'A' and 'Z' are in this class: a dollar after most capitals is taken
// into the word. Kept as it stands.
const QRegularExpression& DollarOwnerRegEx()
{
    static const QRegularExpression regEx(QStringLiteral("^[a-zAZ0-9_]"));
    return regEx;
}

const QRegularExpression& NonWordRegEx()
{
    static const QRegularExpression regEx(QStringLiteral("[^a-zA-Z0-9_-]"));
    return regEx;
}

QString ParagraphsToLineFeeds(QString text)
{
    return text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

bool IsInputEvent(QEvent::Type type)
{
    switch (type)
    {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
        return true;
    default:
        return false;
    }
}
} // namespace

OutputTextEdit::OutputTextEdit(KeyBindings* keyBindings, QWidget* parent)
    : QPlainTextEdit(parent), keyBindings(keyBindings)
{
    setFrameStyle(0);
    setReadOnly(true);
    // The output is never edited, so an undo history would only grow with it.
    setUndoRedoEnabled(false);
    setCenterOnScroll(false);
    UpdateFontsAndColors();
    findReplace = new FindReplaceWidget(false, this);
    findReplace->setObjectName(QStringLiteral("findReplace"));
    findReplace->SetReplaceEnabled(false);
    findReplace->hide();
    burstTimer.setSingleShot(true);
    burstTimer.setInterval(0);
    CreateConnections();
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, SIGNAL(customContextMenuRequested(QPoint)), this, SLOT(ShowContextMenu(QPoint)));
    connect(verticalScrollBar(), SIGNAL(actionTriggered(int)), this, SLOT(QueueUpdateExtraSelections(int)));
    repaintTimer.start();
}

OutputTextEdit::~OutputTextEdit()
{
    EndWriteToFile();
}

void OutputTextEdit::CreateConnections()
{
    connect(verticalScrollBar(), SIGNAL(valueChanged(int)), this, SLOT(UpdateExtraSelections()));
    connect(verticalScrollBar(), SIGNAL(rangeChanged(int, int)), this, SLOT(UpdateExtraSelections()));
    connect(this, SIGNAL(selectionChanged()), this, SLOT(UpdateExtraSelections()));
    connect(&burstTimer, SIGNAL(timeout()), this, SLOT(OnBurstEnded()));
    connect(findReplace, SIGNAL(SearchChanged(const QRegularExpression&, bool, bool, bool)), this,
            SLOT(OnSearchChanged(const QRegularExpression&, bool, bool)));
    connect(findReplace, SIGNAL(FindNextRequested()), this, SLOT(FindNext()));
    connect(findReplace, SIGNAL(FindPreviousRequested()), this, SLOT(FindPrevious()));
    connect(findReplace, SIGNAL(ShowRequested(bool)), this, SLOT(ShowFindReplace()));
    connect(findReplace, SIGNAL(Closed()), this, SLOT(OnFindReplaceClosed()));
}

// ---------------------------------------------------------------------------------------------
// Text coming in

void OutputTextEdit::AppendText(const QString& text)
{
    const bool inBurst = burstTimer.isActive();
    // The log comes first, so that it also receives what the pane holds back.
    if (logStream)
        WriteToLog(text, inBurst);
    if (!isVisible())
    {
        pendingText += text;
        return;
    }
    if (inBurst && CursorRestsAtEnd())
    {
        arriving.Append(text, document()->maximumBlockCount());
        if (repaintTimer.elapsed() > REPAINT_INTERVAL_MS)
        {
            FlushArrivingText();
            FlushLog();
            RepaintIfDue();
        }
        return;
    }
    FlushArrivingText();
    InsertAtEnd(text, false);
    ShowInserted();
    burstTimer.start();
    RepaintIfDue();
}

bool OutputTextEdit::CursorRestsAtEnd() const
{
    const QTextCursor cursor = textCursor();
    return !cursor.hasSelection() && cursor.position() == document()->characterCount() - 1;
}

void OutputTextEdit::InsertAtEnd(const QString& text, bool replaceDocument)
{
    const qsizetype survivingStart = OutputArrivalBuffer::SurvivingStart(text, text.count(QLatin1Char('\n')),
                                                                         document()->maximumBlockCount());
    if (survivingStart >= 0)
        replaceDocument = true;

    inserting = true;
    QTextCursor cursor = textCursor();
    if (replaceDocument)
        cursor.select(QTextCursor::Document);
    else
        cursor.movePosition(QTextCursor::End);
    cursor.insertText(survivingStart > 0 ? text.mid(survivingStart) : text);
    // The cursor ends at the end: any selection is gone and the view follows the output.
    setTextCursor(cursor);
    inserting = false;
}

void OutputTextEdit::ShowInserted()
{
    if (IsFindReplaceVisible())
        UpdateSearchResults();
    UpdateExtraSelections();
}

void OutputTextEdit::FlushArrivingText()
{
    if (arriving.IsEmpty())
        return;
    const bool replaceDocument = arriving.ReplacesDocument();
    InsertAtEnd(arriving.Take(), replaceDocument);
    ShowInserted();
}

void OutputTextEdit::WriteToLog(const QString& text, bool inBurst)
{
    *logStream << text;
    // Handed to the system at once: the log matters most when the host crashes, and a crash
    // takes along whatever still sits in this process.
    FlushLog();
    if (!inBurst)
        burstTimer.start();
}

void OutputTextEdit::FlushLog()
{
    if (!logStream)
        return;
    logStream->flush();
    logFlushTimer.restart();
}

void OutputTextEdit::RepaintIfDue()
{
    // Scripts hold the main thread while they print, so the event loop does not paint; a
    // forced repaint shows their output about four times a second.
    if (repaintTimer.elapsed() <= REPAINT_INTERVAL_MS)
        return;
    repaint();
    repaintTimer.restart();
}

void OutputTextEdit::OnBurstEnded()
{
    FlushArrivingText();
    FlushLog();
}

void OutputTextEdit::FlushBeforeInput(const QEvent* event)
{
    if (IsInputEvent(event->type()))
        FlushArrivingText();
}

bool OutputTextEdit::event(QEvent* event)
{
    FlushBeforeInput(event);
    return QPlainTextEdit::event(event);
}

bool OutputTextEdit::viewportEvent(QEvent* event)
{
    FlushBeforeInput(event);
    return QPlainTextEdit::viewportEvent(event);
}

void OutputTextEdit::SetMaximumBlockCount(int count)
{
    FlushArrivingText();
    document()->setMaximumBlockCount(count);
}

void OutputTextEdit::ClearAll()
{
    arriving.Clear();
    clear();
    findReplace->SetFindInSelectionEnabled(false, true);
    // This bar offers no range, so the call above reports nothing: the counts are set here.
    if (IsFindReplaceVisible())
        UpdateSearchResults();
    UpdateExtraSelections();
}

QString OutputTextEdit::GetText()
{
    FlushArrivingText();
    const QString text = toPlainText();
    return text.isNull() ? QStringLiteral("") : text;
}

QString OutputTextEdit::GetSelectedText() const
{
    return textCursor().selectedText();
}

QString OutputTextEdit::GetSelectedTextForExecute() const
{
    return ParagraphsToLineFeeds(textCursor().selectedText());
}

int OutputTextEdit::GetSelectedStartPosition() const
{
    return EarliestPosition(textCursor());
}

int OutputTextEdit::GetSelectedEndPosition() const
{
    return LatestPosition(textCursor());
}

int OutputTextEdit::EarliestPosition(const QTextCursor& cursor)
{
    return qMin(cursor.position(), cursor.anchor());
}

int OutputTextEdit::LatestPosition(const QTextCursor& cursor)
{
    return qMax(cursor.position(), cursor.anchor());
}

QString OutputTextEdit::SelectWordUnderCursor()
{
    FlushArrivingText();
    QTextCursor cursor = textCursor();
    cursor.select(QTextCursor::WordUnderCursor);
    const QString word = cursor.selectedText();
    if (!word.isEmpty())
        setTextCursor(cursor);
    return ParagraphsToLineFeeds(word);
}

void OutputTextEdit::ScrollToEnd()
{
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    horizontalScrollBar()->setValue(horizontalScrollBar()->minimum());
}

// ---------------------------------------------------------------------------------------------
// Log file

bool OutputTextEdit::BeginWriteToFile(const QString& path)
{
    EndWriteToFile();
    logFile = new QFile(path);
    if (!logFile->open(QIODevice::WriteOnly | QIODevice::Text))
    {
        Logger::Error(QStringLiteral("Failed to open log file for write: %1").arg(path));
        delete logFile;
        logFile = nullptr;
        return false;
    }
    logStream = new QTextStream(logFile);
    logFlushTimer.start();
    return true;
}

void OutputTextEdit::EndWriteToFile()
{
    // The stream goes first: it hands its buffer to the file while the file is still open.
    delete logStream;
    logStream = nullptr;
    if (logFile)
    {
        logFile->close();
        delete logFile;
        logFile = nullptr;
    }
}

bool OutputTextEdit::IsWriteToFileActive() const
{
    return logFile != nullptr;
}

// ---------------------------------------------------------------------------------------------
// Highlighting

void OutputTextEdit::UpdateExtraSelections()
{
    if (inserting || document()->isEmpty())
        return;
    extraSelections.clear();
    if (!Settings::outputSyntaxHighlightingEnabled)
    {
        setExtraSelections(extraSelections);
        return;
    }
    const int firstVisible = cursorForPosition(QPoint(0, 0)).position();
    // 50 pixels below the bottom edge: the widget maps it to the last position on screen or
    // the end of the text.
    const int lastVisible = cursorForPosition(QPoint(0, height() + 50)).position();
    const int start = qMax(0, firstVisible - HIGHLIGHT_LEAD);

    // Later selections paint over earlier ones.
    HighlightUserDefinedSelections(start, lastVisible);
    HighlightMatchedSelection(start, lastVisible);
    HighlightFoundSelection(start, lastVisible);
    setExtraSelections(extraSelections);
}

void OutputTextEdit::QueueUpdateExtraSelections(int action)
{
    // Page steps fire before the bar's value changes, so the update has to follow them.
    if (action == QAbstractSlider::SliderPageStepAdd || action == QAbstractSlider::SliderPageStepSub)
        QTimer::singleShot(1, this, SLOT(UpdateExtraSelections()));
}

QString OutputTextEdit::PlainTextRange(int start, int end) const
{
    // Built from the blocks in range: the document's whole plain text is never copied.
    QString text;
    for (QTextBlock block = document()->findBlock(start); block.isValid() && block.position() <= end;
         block = block.next())
    {
        const int blockStart = block.position();
        const QString blockText = block.text();
        const int separator = blockStart + static_cast<int>(blockText.size());
        const int from = qMax(start, blockStart) - blockStart;
        const int to = qMin(end, separator) - blockStart;
        if (to > from)
            text += QStringView(blockText).mid(from, to - from);
        if (separator >= start && separator < end && block.next().isValid())
            text += QLatin1Char('\n');
    }
    return text.replace(QChar::Nbsp, QLatin1Char(' '));
}

void OutputTextEdit::AddSelection(int start, int end, const QTextCharFormat& format)
{
    QTextEdit::ExtraSelection selection;
    selection.cursor = QTextCursor(document());
    selection.cursor.setPosition(start);
    selection.cursor.setPosition(end, QTextCursor::KeepAnchor);
    selection.format = format;
    extraSelections.append(selection);
}

const QRegularExpression& OutputTextEdit::UserRegEx(const QString& pattern)
{
    auto found = userRegExCache.constFind(pattern);
    if (found != userRegExCache.constEnd())
        return *found;
    if (userRegExCache.size() >= MAX_CACHED_USER_REGEXES)
        userRegExCache.clear();
    return *userRegExCache.insert(pattern, QRegularExpression(pattern));
}

void OutputTextEdit::HighlightUserDefinedSelections(int from, int to)
{
    // Matching is by line: a rule never spans two lines.
    const QStringList lines = PlainTextRange(from, to).split(QLatin1Char('\n'));
    for (const ExtraSelectionProperties& rule : std::as_const(ColorSettings::outputUserDefinedSelections))
    {
        if (!rule.enabled || (!rule.foregroundEnabled && !rule.backgroundEnabled))
            continue;
        const QRegularExpression& regEx =
            UserRegEx(rule.regExp ? rule.match : QRegularExpression::escape(rule.match));
        if (!regEx.isValid())
            continue;
        int position = from;
        for (const QString& line : lines)
        {
            QRegularExpressionMatchIterator matches = regEx.globalMatch(line);
            if (rule.highlightLine)
            {
                if (matches.hasNext())
                    AddSelection(position, position + static_cast<int>(line.size()), rule.format);
            }
            else
            {
                while (matches.hasNext())
                {
                    const QRegularExpressionMatch match = matches.next();
                    if (match.capturedLength() > 0)
                    {
                        const int start = position + static_cast<int>(match.capturedStart());
                        AddSelection(start, start + static_cast<int>(match.capturedLength()), rule.format);
                    }
                }
            }
            position += static_cast<int>(line.size()) + 1;
        }
    }
}

QRegularExpression OutputTextEdit::MatchedSelectionRegEx(const QString& selected) const
{
    if (!Settings::outputMatchedSelectionWordsOnly)
    {
        if (selected.contains(QLatin1Char('\n')))
            return QRegularExpression();
        return QRegularExpression(QRegularExpression::escape(selected));
    }
    if (Settings::outputDoubleClickIncludesDollarSign && selected.startsWith(QLatin1Char('$')))
    {
        const QString rest = selected.mid(1);
        if (rest.isEmpty() || rest.contains(NonWordRegEx()))
            return QRegularExpression();
        return QRegularExpression(QStringLiteral("\\") + selected + QStringLiteral("\\b"));
    }
    if (selected.contains(NonWordRegEx()))
        return QRegularExpression();
    return QRegularExpression(QStringLiteral("\\b") + selected + QStringLiteral("\\b"));
}

void OutputTextEdit::HighlightMatchedSelection(int from, int to)
{
    const QString selected = textCursor().selectedText().trimmed();
    if (selected.isEmpty())
        return;
    const QRegularExpression regEx = MatchedSelectionRegEx(selected);
    if (regEx.pattern().isEmpty() || !regEx.isValid())
        return;

    // One character on either side, so that word boundaries see their neighbours.
    const int textStart = qMax(0, from - 1);
    const int textEnd = qMin(document()->characterCount() - 1, to + static_cast<int>(selected.size()) + 1);
    const QString text = PlainTextRange(textStart, textEnd);
    const QTextCharFormat format = ColorSettings::GetOutputFormat(ColorSettings::MATCHING_SELECTION, false);
    qsizetype index = text.indexOf(regEx, from - textStart);
    while (index >= 0 && textStart + index <= to)
    {
        const int start = textStart + static_cast<int>(index);
        AddSelection(start, start + static_cast<int>(selected.size()), format);
        // From the next character, not the end of the match: overlapping occurrences count.
        index = text.indexOf(regEx, index + 1);
    }
}

void OutputTextEdit::HighlightFoundSelection(int from, int to)
{
    const QTextCharFormat selectedText = ColorSettings::GetOutputFormat(ColorSettings::SELECTED_TEXT, false);
    const QColor normalText = selectedText.foreground().color();
    const QColor normalBackground = selectedText.background().color();
    if (!IsFindReplaceVisible() || searchRegEx.pattern().isEmpty() || !searchRegEx.isValid())
    {
        SetSelectionPalette(normalText, normalBackground);
        return;
    }

    // Whole lines around the range, with the line feed before and up to two characters after,
    // so that anchors and look-arounds see what they would see in the whole text.
    const QTextDocument* doc = document();
    const int textStart = qMax(0, doc->findBlock(from).position() - 1);
    const QTextBlock last = doc->findBlock(to);
    const int textEnd =
        qMin(doc->characterCount() - 1, last.position() + static_cast<int>(last.length()) + 1);
    const QString text = PlainTextRange(textStart, textEnd);

    const QTextCharFormat format =
        ColorSettings::GetOutputFormat(ColorSettings::FIND_REPLACE_MATCHING, false);
    const int selectionStart = GetSelectedStartPosition();
    const int selectionEnd = GetSelectedEndPosition();
    bool selectionOnMatch = false;
    QRegularExpressionMatchIterator matches = searchRegEx.globalMatch(text, from - textStart);
    while (matches.hasNext())
    {
        const QRegularExpressionMatch match = matches.next();
        const int start = textStart + static_cast<int>(match.capturedStart());
        const int end = textStart + static_cast<int>(match.capturedEnd());
        if (end > to)
            break;
        AddSelection(start, end, format);
        if (start == selectionStart && end == selectionEnd)
            selectionOnMatch = true;
    }
    if (selectionOnMatch)
    {
        const QTextCharFormat found =
            ColorSettings::GetOutputFormat(ColorSettings::FIND_REPLACE_SELECTED, false);
        SetSelectionPalette(Qt::white, found.background().color());
    }
    else
    {
        SetSelectionPalette(normalText, normalBackground);
    }
}

void OutputTextEdit::SetSelectionPalette(const QColor& text, const QColor& background)
{
    QPalette p = palette();
    p.setColor(QPalette::All, QPalette::HighlightedText, text);
    p.setColor(QPalette::All, QPalette::Highlight, background);
    if (p != palette())
        setPalette(p);
}

// ---------------------------------------------------------------------------------------------
// Find

void OutputTextEdit::GetSearchResults(const QRegularExpression& regEx, int& currentIndex, int& totalCount)
{
    totalCount = 0;
    currentIndex = -1;
    if (regEx.pattern().isEmpty() || !regEx.isValid())
        return;
    FlushArrivingText();
    const bool selectionIsMatch = SelectionIsFullMatch(regEx);
    const int selectionStart = GetSelectedStartPosition();
    const QString text = toPlainText();
    QRegularExpressionMatchIterator matches = regEx.globalMatch(text);
    while (matches.hasNext())
    {
        const QRegularExpressionMatch match = matches.next();
        ++totalCount;
        if (selectionIsMatch && match.capturedStart() == selectionStart)
            currentIndex = totalCount;
    }
}

void OutputTextEdit::UpdateSearchResults()
{
    int current = -1;
    int total = 0;
    GetSearchResults(searchRegEx, current, total);
    findReplace->SetResults(current, total);
}

bool OutputTextEdit::SelectionIsFullMatch(const QRegularExpression& regEx) const
{
    const QString selected = textCursor().selectedText();
    if (selected.isEmpty() || regEx.pattern().isEmpty() || !regEx.isValid())
        return false;
    const QRegularExpressionMatch match = regEx.match(selected);
    return match.hasMatch() && match.capturedStart() == 0 && match.capturedLength() == selected.size();
}

bool OutputTextEdit::Find(int position, bool backwards)
{
    FlushArrivingText();
    if (searchRegEx.pattern().isEmpty() || !searchRegEx.isValid())
    {
        UpdateSearchResults();
        return false;
    }
    // The document's find folds case unless told otherwise; the expression decides.
    QTextDocument::FindFlags flags;
    if (backwards)
        flags |= QTextDocument::FindBackward;
    if (!(searchRegEx.patternOptions() & QRegularExpression::CaseInsensitiveOption))
        flags |= QTextDocument::FindCaseSensitively;

    QTextCursor found = document()->find(searchRegEx, position, flags);
    if (found.isNull())
        found = document()->find(searchRegEx, backwards ? document()->characterCount() - 1 : 0, flags);
    if (found.isNull())
    {
        UpdateSearchResults();
        return false;
    }
    setCenterOnScroll(true);
    setTextCursor(found);
    ensureCursorVisible();
    setCenterOnScroll(false);
    UpdateExtraSelections();
    UpdateSearchResults();
    return true;
}

bool OutputTextEdit::FindNext()
{
    FlushArrivingText();
    const QTextCursor cursor = textCursor();
    int position = cursor.position();
    if (cursor.hasSelection())
        position = SelectionIsFullMatch(searchRegEx) ? LatestPosition(cursor) : EarliestPosition(cursor);
    return Find(position, false);
}

bool OutputTextEdit::FindPrevious()
{
    FlushArrivingText();
    const QTextCursor cursor = textCursor();
    int position = cursor.position();
    if (cursor.hasSelection())
        position = SelectionIsFullMatch(searchRegEx) ? EarliestPosition(cursor) : LatestPosition(cursor);
    return Find(position, true);
}

void OutputTextEdit::OnSearchChanged(const QRegularExpression& regEx, bool findInSelection, bool findNext)
{
    Q_UNUSED(findInSelection)
    FlushArrivingText();
    searchRegEx = regEx;
    if (findNext && !searchRegEx.pattern().isEmpty() && !SelectionIsFullMatch(searchRegEx))
        FindNext();
    UpdateExtraSelections();
    UpdateSearchResults();
}

void OutputTextEdit::ShowFindReplace(bool updateFindText, bool hasFocus)
{
    if (updateFindText)
    {
        QString text = GetSelectedText();
        if (text.isEmpty())
            text = SelectWordUnderCursor();
        if (!text.isEmpty() && !text.contains(QLatin1Char('\n')))
            findReplace->SetSearchText(text);
    }
    findReplace->SetReplaceVisible(false);
    findReplace->SetParentWidth(width());
    UpdateFindReplacePosition();
    findReplace->show();
    findReplace->raise();
    if (hasFocus)
        findReplace->FocusSearchText();
    UpdateExtraSelections();
}

void OutputTextEdit::CloseFindReplace()
{
    if (IsFindReplaceVisible())
        findReplace->Close();
}

void OutputTextEdit::OnFindReplaceClosed()
{
    UpdateExtraSelections();
    setFocus(Qt::OtherFocusReason);
}

bool OutputTextEdit::IsFindReplaceVisible() const
{
    return findReplace && !findReplace->isHidden();
}

bool OutputTextEdit::HasSearchText() const
{
    return findReplace->HasSearchText();
}

void OutputTextEdit::UpdateFindReplacePosition()
{
    // Top right, 20 pixels left of the scroll bar.
    const int scrollBarWidth = verticalScrollBar()->isVisible() ? verticalScrollBar()->width() : 0;
    QRect geometry = findReplace->geometry();
    geometry.moveTop(0);
    geometry.moveRight(width() - scrollBarWidth - 20);
    findReplace->setGeometry(geometry);
}

// ---------------------------------------------------------------------------------------------
// Events

void OutputTextEdit::focusInEvent(QFocusEvent* event)
{
    QPlainTextEdit::focusInEvent(event);
    emit ReceivedFocus();
}

void OutputTextEdit::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape)
    {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    CloseFindReplace();
    QTextCursor cursor = textCursor();
    cursor.clearSelection();
    setTextCursor(cursor);
    event->accept();
}

void OutputTextEdit::mouseDoubleClickEvent(QMouseEvent* event)
{
    QPlainTextEdit::mouseDoubleClickEvent(event);
    if (Settings::outputDoubleClickIncludesDollarSign && textCursor().hasSelection())
        IncludeDollarSign();
}

void OutputTextEdit::IncludeDollarSign()
{
    QTextCursor cursor = textCursor();
    const QString selected = cursor.selectedText();
    if (selected != QLatin1String("$"))
    {
        if (!WordCharacterRegEx().match(selected).hasMatch())
            return;
        const int wordEnd = LatestPosition(cursor);
        cursor.setPosition(EarliestPosition(cursor));
        cursor.movePosition(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor);
        if (cursor.selectedText() != QLatin1String("$"))
            return;
        const int dollar = cursor.position();
        cursor.movePosition(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor);
        if (cursor.selectedText().contains(DollarOwnerRegEx()))
            return;
        cursor.setPosition(dollar);
        cursor.setPosition(wordEnd, QTextCursor::KeepAnchor);
        setTextCursor(cursor);
        return;
    }

    cursor.setPosition(EarliestPosition(cursor));
    cursor.movePosition(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor);
    if (cursor.selectedText().contains(DollarOwnerRegEx()))
        return;
    QTextCursor word = textCursor();
    word.setPosition(EarliestPosition(word));
    word.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    word.movePosition(QTextCursor::EndOfWord, QTextCursor::KeepAnchor);
    static const QRegularExpression variable(QStringLiteral("^\\$[a-zA-Z0-9_]+$"));
    if (variable.match(word.selectedText()).hasMatch())
        setTextCursor(word);
}

void OutputTextEdit::wheelEvent(QWheelEvent* event)
{
    const Qt::KeyboardModifiers modifiers =
        event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (modifiers == Qt::NoModifier)
    {
        QPlainTextEdit::wheelEvent(event);
        return;
    }
    // Every other combination is swallowed: Shift and wheel does not scroll here.
    event->accept();
    if (modifiers != Qt::ControlModifier || !Settings::outputMouseWheelChangesFontSize)
        return;
    const int delta = event->angleDelta().y();
    if (delta > 0)
        emit IncreaseFontSizeRequested();
    else if (delta < 0)
        emit DecreaseFontSizeRequested();
}

void OutputTextEdit::showEvent(QShowEvent* event)
{
    if (!pendingText.isEmpty())
    {
        // Visible by now, so the held text goes in whole.
        AppendText(pendingText);
        pendingText.clear();
        FlushArrivingText();
    }
    QPlainTextEdit::showEvent(event);
}

void OutputTextEdit::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    if (textCursor().atEnd())
        ScrollToEnd();
    findReplace->SetParentWidth(width());
    UpdateFindReplacePosition();
    findReplace->raise();
}

// ---------------------------------------------------------------------------------------------
// Fonts, colours, menu

void OutputTextEdit::UpdateFont()
{
    QFont font = Settings::outputFont;
    const int baseSize = font.pointSize() > 0 ? font.pointSize() : Settings::GetDefaultFont().pointSize();
    int size = baseSize;
    if (Settings::outputZoom != 0)
    {
        size += Settings::outputZoom;
        if (size < Settings::MINIMUM_FONT_SIZE)
        {
            size = Settings::MINIMUM_FONT_SIZE;
            Settings::outputZoom = Settings::MINIMUM_FONT_SIZE - baseSize;
        }
        else if (size > Settings::MAXIMUM_FONT_SIZE)
        {
            size = Settings::MAXIMUM_FONT_SIZE;
            Settings::outputZoom = Settings::MAXIMUM_FONT_SIZE - baseSize;
        }
    }
    const double scale = Settings::customScaleValue;
    if (scale != 1.0 && scale > 0.0)
        size = static_cast<int>(size * scale);
    font.setPointSize(qMax(1, size));
    setFont(font);
    UpdateTextOptions();
}

void OutputTextEdit::UpdateTextOptions()
{
    QTextOption option;
    option.setWrapMode(Settings::outputWordWrapEnabled ? QTextOption::WordWrap : QTextOption::NoWrap);
    option.setTabStopDistance(QFontMetricsF(font()).horizontalAdvance(QLatin1Char(' ')) *
                              Settings::tabsSizeDefault);
    document()->setDefaultTextOption(option);
}

void OutputTextEdit::UpdateFontsAndColors()
{
    UpdateFont();
    const QTextCharFormat plain = ColorSettings::GetOutputFormat(ColorSettings::PLAIN_TEXT, false);
    const QTextCharFormat selected = ColorSettings::GetOutputFormat(ColorSettings::SELECTED_TEXT, false);
    const auto apply = [&](QPalette p)
    {
        p.setColor(QPalette::All, QPalette::Text, plain.foreground().color());
        p.setColor(QPalette::All, QPalette::Base, plain.background().color());
        p.setColor(QPalette::All, QPalette::HighlightedText, selected.foreground().color());
        p.setColor(QPalette::All, QPalette::Highlight, selected.background().color());
        return p;
    };
    setPalette(apply(palette()));
    viewport()->setPalette(apply(viewport()->palette()));
    UpdateExtraSelections();
}

void OutputTextEdit::ShowContextMenu(const QPoint& p)
{
    const auto shortcut = [this](KeySequenceType type)
    { return keyBindings ? keyBindings->GetShortcut(type) : QKeySequence(); };

    QMenu menu(this);
    QAction* copyAction = menu.addAction(QStringLiteral("Copy"));
    copyAction->setShortcut(shortcut(KeySequenceType::Copy));
    connect(copyAction, SIGNAL(triggered()), this, SLOT(copy()));
    menu.addSeparator();
    QAction* selectAllAction = menu.addAction(QStringLiteral("Select All"));
    selectAllAction->setShortcut(shortcut(KeySequenceType::SelectAll));
    connect(selectAllAction, SIGNAL(triggered()), this, SLOT(selectAll()));
    menu.addSeparator();
    QAction* clearAction = menu.addAction(QStringLiteral("Clear Output"));
    clearAction->setShortcut(shortcut(KeySequenceType::ClearOutput));
    connect(clearAction, SIGNAL(triggered()), this, SLOT(ClearAll()));
    // The keys are shown for information; the bindings themselves live in the main widget.
    for (QAction* action : menu.actions())
        action->setShortcutContext(Qt::WidgetShortcut);
    menu.exec(viewport()->mapToGlobal(p));
}
