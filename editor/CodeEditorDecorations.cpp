// What CodeEditor draws on and beside the text without changing it: the extra selections, the
// line number gutter, the error bar, the indentation guides and the tooltips of messages.
#include "editor/CodeEditor.h"

#include "editor/CodeEditorBlockData.h"
#include "editor/CodeEditorErrorBarOverlay.h"
#include "editor/CodeEditorLineNumbers.h"
#include "plugin/MayaUtil.h"
#include "settings/ColorSettings.h"
#include "settings/Settings.h"

#include <QtGui/QPainter>
#include <QtGui/QFontMetricsF>
#include <QtGui/QTextBlock>
#include <QtGui/QTextLayout>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QToolTip>

namespace
{
// The width in spaces of a run of tabs and spaces, tabs going to the next tab stop.
int IndentColumns(const QString& indent, int tabSize)
{
    int column = 0;
    for (const QChar c : indent)
    {
        if (c == QLatin1Char('\t'))
            column += tabSize - column % tabSize;
        else if (c == QLatin1Char(' '))
            ++column;
        else
            break;
    }
    return column;
}

QString LastMessageTextAt(const QList<ParserMessage>& messages, int position)
{
    QString text;
    for (const ParserMessage& message : messages)
    {
        if (message.start <= position && position <= message.end)
            text = message.text;
    }
    return text;
}
} // namespace

// ---------------------------------------------------------------------------------------------
// Extra selections

void CodeEditor::UpdateExtraSelections()
{
    extraSelections.clear();
    HighlightFindReplaceSelectedRegion();
    HighlightCurrentLine();
    HighlightMatchedSelection();
    HighlightFoundSelection(false);
    if (Settings::sideBarVisible && Settings::searchViewActive)
        HighlightFoundSelection(true);
    HighlightMatchedBraces();
    HighlightErrorsAndWarnings();
    setExtraSelections(extraSelections);
}

void CodeEditor::AddExtraSelection(const QTextCursor& cursor, const QTextCharFormat& format)
{
    QTextEdit::ExtraSelection selection;
    selection.cursor = cursor;
    selection.format = format;
    extraSelections.append(selection);
}

void CodeEditor::HighlightFindReplaceSelectedRegion()
{
    if (!findInSelection || findInSelectionStart == findInSelectionEnd)
        return;
    QTextCursor cursor(document());
    const int last = document()->characterCount() - 1;
    cursor.setPosition(qBound(0, findInSelectionStart, last));
    cursor.setPosition(qBound(0, findInSelectionEnd, last), QTextCursor::KeepAnchor);
    AddExtraSelection(cursor, ColorSettings::GetCodeEditorFormat(ColorSettings::FIND_REPLACE_SELECTION));
}

void CodeEditor::HighlightCurrentLine()
{
    if (!sCurrentLineFormat)
        return;
    QTextCursor cursor = textCursor();
    cursor.clearSelection();
    AddExtraSelection(cursor, *sCurrentLineFormat);
}

void CodeEditor::HighlightMatchedSelection()
{
    static const QRegularExpression notInWord(QStringLiteral("[^a-zA-Z0-9_-]"));
    const QString selected = GetSelectedTextForExecute();
    if (selected.trimmed().isEmpty() || !sMatchingSelectionFormat)
        return;
    if (findInSelection && !searchRegEx.pattern().isEmpty() && searchRegEx.isValid())
    {
        const QRegularExpressionMatch match = searchRegEx.match(selected);
        // A selection that is a search hit is marked as such, not as a matching selection.
        if (match.hasMatch() && match.capturedStart() == 0 && match.capturedLength() == selected.size())
            return;
    }
    QRegularExpression pattern;
    int step = 1;
    if (Settings::codeEditorMatchedSelectionWordsOnly)
    {
        if (properties.language == CodeEditorLanguage::MEL && Settings::melDoubleClickIncludesDollarSign &&
            selected.startsWith(QLatin1Char('$')))
        {
            const QString name = selected.mid(1);
            if (name.isEmpty() || name.contains(notInWord))
                return;
            pattern.setPattern(QStringLiteral("\\%1\\b").arg(selected));
        }
        else
        {
            if (selected.contains(notInWord))
                return;
            pattern.setPattern(QStringLiteral("\\b%1\\b").arg(selected));
        }
    }
    else
    {
        if (selected.contains(QLatin1Char('\n')))
            return;
        pattern.setPattern(QRegularExpression::escape(selected));
        step = static_cast<int>(selected.size());
    }
    const QString text = document()->toPlainText();
    const int length = static_cast<int>(selected.size());
    for (int index = static_cast<int>(text.indexOf(pattern, 0)); index >= 0;
         index = static_cast<int>(text.indexOf(pattern, index + step)))
    {
        QTextCursor cursor(document());
        cursor.setPosition(index);
        cursor.setPosition(index + length, QTextCursor::KeepAnchor);
        AddExtraSelection(cursor, *sMatchingSelectionFormat);
    }
}

void CodeEditor::HighlightFoundSelection(bool global)
{
    const QRegularExpression& regEx = global ? Settings::globalSearchRegEx : searchRegEx;
    if (regEx.pattern().isEmpty() || !regEx.isValid())
        return;
    const QString text = document()->toPlainText();
    int rangeStart = 0;
    int rangeEnd = static_cast<int>(text.size());
    if (findInSelection)
    {
        rangeStart = qMax(0, findInSelectionStart);
        rangeEnd = findInSelectionEnd;
    }
    const QTextCharFormat format = ColorSettings::GetCodeEditorFormat(ColorSettings::FIND_REPLACE_MATCHING);
    const QTextCursor current = textCursor();
    bool currentIsHit = false;
    QRegularExpressionMatchIterator it = regEx.globalMatch(text, rangeStart);
    while (it.hasNext())
    {
        const QRegularExpressionMatch match = it.next();
        const int start = static_cast<int>(match.capturedStart());
        const int end = static_cast<int>(match.capturedEnd());
        if (end > rangeEnd)
            break;
        QTextCursor cursor(document());
        cursor.setPosition(start);
        cursor.setPosition(end, QTextCursor::KeepAnchor);
        AddExtraSelection(cursor, format);
        if (start == current.selectionStart() && end == current.selectionEnd())
            currentIsHit = true;
    }
    // The current hit stands out through the ordinary selection colours.
    QPalette editorPalette = palette();
    if (currentIsHit)
    {
        editorPalette.setColor(QPalette::HighlightedText, Qt::white);
        editorPalette.setBrush(QPalette::Highlight,
                               ColorSettings::GetCodeEditorFormat(ColorSettings::FIND_REPLACE_SELECTED).background());
    }
    else
    {
        const QTextCharFormat selectedText = ColorSettings::GetCodeEditorFormat(ColorSettings::SELECTED_TEXT);
        editorPalette.setBrush(QPalette::HighlightedText, selectedText.foreground());
        editorPalette.setBrush(QPalette::Highlight, selectedText.background());
    }
    setPalette(editorPalette);
}

void CodeEditor::HighlightMatchedBraces()
{
    const QTextCursor cursor = textCursor();
    if (cursor.hasSelection())
        return;
    QTextBlock block = cursor.block();
    const CodeEditorBlockData* data = GetBlockData(block);
    if (!data)
        return;
    int offset = 0;
    QChar c = document()->characterAt(cursor.position());
    QList<CodeEditorBlockData::Entry> braces = data->GetBraces(c);
    if (braces.isEmpty())
    {
        offset = -1;
        c = document()->characterAt(cursor.position() - 1);
        braces = data->GetBraces(c);
        if (braces.isEmpty())
            return;
    }
    const int column = cursor.positionInBlock() + offset;
    int index = -1;
    for (int i = 0; i < braces.size(); ++i)
    {
        if (braces.at(i).position == column)
            index = i;
    }
    // No entry: the character stands in a string or a comment.
    if (index < 0)
        return;
    const int delta = braces.at(index).delta;
    const int first = block.position() + column;
    int counter = delta;
    for (;;)
    {
        for (int i = index + delta; i >= 0 && i < braces.size(); i += delta)
        {
            counter += braces.at(i).delta;
            if (counter == 0)
            {
                HighlightMatchedBraces(first, block.position() + braces.at(i).position);
                return;
            }
        }
        do
            block = delta > 0 ? block.next() : block.previous();
        while (block.isValid() && !GetBlockData(block));
        if (!block.isValid())
            return;
        braces = GetBlockData(block)->GetBraces(c);
        index = delta > 0 ? -1 : static_cast<int>(braces.size());
    }
}

void CodeEditor::HighlightMatchedBraces(int first, int second)
{
    if (!sMatchingBracesFormat)
        return;
    for (const int position : {first, second})
    {
        QTextCursor cursor(document());
        cursor.setPosition(position);
        cursor.setPosition(position + 1, QTextCursor::KeepAnchor);
        AddExtraSelection(cursor, *sMatchingBracesFormat);
    }
}

void CodeEditor::HighlightErrorsAndWarnings()
{
    if (!IsDisplayErrorsEnabled())
        return;
    const int last = document()->characterCount() - 1;
    if (IsPylintEnabled())
    {
        // Pylint knows lines and columns only; the mark covers the word there, and the message
        // learns its offsets from it.
        const std::pair<QList<ParserMessage>*, const QTextCharFormat*> lists[] = {
            {&infos, &ColorSettings::infoFormat},
            {&warnings, &ColorSettings::warningFormat},
            {&errors, &ColorSettings::errorFormat}};
        for (const auto& [messages, format] : lists)
        {
            for (ParserMessage& message : *messages)
            {
                const QTextBlock block = document()->findBlockByNumber(message.line);
                if (!block.isValid())
                    continue;
                const int position = qBound(0, block.position() + qMax(0, message.column), last);
                QTextCursor cursor(document());
                cursor.setPosition(position);
                if (document()->characterAt(position).isLetterOrNumber())
                    cursor.movePosition(QTextCursor::EndOfWord, QTextCursor::KeepAnchor);
                else
                    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
                AddExtraSelection(cursor, *format);
                message.start = cursor.selectionStart();
                message.end = cursor.selectionEnd();
            }
        }
        return;
    }
    // The parsers' infos, the TODO notes, get no mark in the text.
    const std::pair<const QList<ParserMessage>*, const QTextCharFormat*> lists[] = {
        {&warnings, &ColorSettings::warningFormat}, {&errors, &ColorSettings::errorFormat}};
    for (const auto& [messages, format] : lists)
    {
        for (const ParserMessage& message : *messages)
        {
            if (message.end < 0 || message.start < 0)
                continue;
            const int start = qMin(message.start, last);
            const int end = qMin(message.start == message.end ? message.start + 1 : message.end, last);
            QTextCursor cursor(document());
            cursor.setPosition(start);
            cursor.setPosition(end, QTextCursor::KeepAnchor);
            AddExtraSelection(cursor, *format);
        }
    }
}

// ---------------------------------------------------------------------------------------------
// Messages

void CodeEditor::UpdateErrorsAndWarnings(const QList<ParserMessage>& newErrors,
                                         const QList<ParserMessage>& newWarnings,
                                         const QList<ParserMessage>& newInfos)
{
    if (IsDisplayErrorsEnabled())
    {
        errors = newErrors;
        warnings = newWarnings;
        infos = newInfos;
    }
    else
    {
        errors.clear();
        warnings.clear();
        infos.clear();
    }
    if (properties.language == CodeEditorLanguage::PYTHON && !Settings::pylintEnabled)
        PythonSyntaxCheck();
    UpdateErrorsAndWarnings();
    UpdateExtraSelections();
}

void CodeEditor::PythonSyntaxCheck()
{
    QStringList result;
    MayaUtil::PythonSyntaxCheck(GetTextForPythonProcessing(), result);
    if (result.size() != 2)
        return;
    bool ok = false;
    const int line = result.at(1).toInt(&ok);
    const QTextBlock block = document()->findBlockByNumber(line - 1);
    if (!ok || line < 1 || !block.isValid())
        return;
    ParserMessage message;
    message.text = result.at(0);
    if (!message.text.isEmpty())
        message.text[0] = message.text.at(0).toUpper();
    message.start = block.position();
    message.end = block.position();
    errors.append(message);
}

void CodeEditor::UpdateErrorsAndWarnings()
{
    errorLines.clear();
    warningLines.clear();
    infoLines.clear();
    QList<int> errorBlocks;
    QList<int> warningBlocks;
    QList<int> infoBlocks;
    if (IsDisplayErrorsEnabled())
    {
        const bool pylint = IsPylintEnabled();
        const auto collect = [this, pylint](const QList<ParserMessage>& messages, QMap<int, QString>& lines,
                                            QList<int>& blocks) {
            for (const ParserMessage& message : messages)
            {
                QTextBlock block;
                if (pylint)
                    block = document()->findBlockByNumber(message.line);
                else if (message.start >= 0)
                    block = document()->findBlock(message.start);
                if (!block.isValid())
                    continue;
                lines.insert(block.blockNumber(), message.text);
                blocks.append(block.blockNumber());
            }
        };
        collect(errors, errorLines, errorBlocks);
        collect(warnings, warningLines, warningBlocks);
        collect(infos, infoLines, infoBlocks);
    }
    UpdateErrorBarBlockHeights();
    errorBarOverlay->UpdateErrors(errorBlocks, warningBlocks, infoBlocks);
    lineNumbers->update();
    emit ErrorAndWarningTextChanged();
}

void CodeEditor::OffsetParserMessages(QList<ParserMessage>& messages, int position, int removed, int added)
{
    const int end = position + removed;
    const int delta = added - removed;
    for (auto it = messages.begin(); it != messages.end();)
    {
        if (it->start >= end)
            it->start += delta;
        if (it->end > end)
        {
            it->end += delta;
            ++it;
            continue;
        }
        // A message whose text the edit deleted goes at once, before the next parse.
        if (it->end <= position || removed == 0 || it->start < position)
            ++it;
        else
            it = messages.erase(it);
    }
}

void CodeEditor::OffsetMessages(int position, int charsRemoved, int charsAdded)
{
    OffsetParserMessages(errors, position, charsRemoved, charsAdded);
    OffsetParserMessages(warnings, position, charsRemoved, charsAdded);
    OffsetParserMessages(infos, position, charsRemoved, charsAdded);
    UpdateErrorsAndWarnings();
}

QString CodeEditor::GetErrorAndWarningsText() const
{
    const int block = textCursor().blockNumber();
    return errorLines.value(block) + warningLines.value(block) + infoLines.value(block);
}

// ---------------------------------------------------------------------------------------------
// Error bar

void CodeEditor::UpdateErrorBarBlockHeights()
{
    if (!errorBarOverlay || !IsDisplayErrorsEnabled())
        return;
    // Unwrapped, every block is one line high: once a line has been measured, only a new number
    // of blocks moves the marks (the font and the wrap mode force a new measure).
    const int blockCount = document()->blockCount();
    const bool unwrapped = lineWrapMode() == QPlainTextEdit::NoWrap;
    if (unwrapped && blockCount == errorBarMeasuredBlockCount)
        return;
    // A block not laid out yet counts as high as the first shown line. Measuring it instead would
    // lay it out, and in a long buffer that is every block below the viewport, or every block the
    // highlighter just recoloured: seconds per key.
    double lineHeight = QFontMetricsF(font()).height();
    bool measured = false;
    const QTextBlock shown = firstVisibleBlock();
    if (shown.isValid() && shown.layout() && shown.layout()->lineCount() == 1 && shown.next().isValid())
    {
        lineHeight = blockBoundingRect(shown).height();
        measured = true;
    }
    QList<int> positions;
    positions.reserve(blockCount);
    if (unwrapped)
    {
        // No block needs looking at: a walk over a hundred thousand of them took ten
        // milliseconds on every Return.
        for (int i = 0; i < blockCount; ++i)
            positions.append(static_cast<int>(i * lineHeight));
    }
    else
    {
        double top = 0.0;
        for (QTextBlock block = document()->firstBlock(); block.isValid(); block = block.next())
        {
            positions.append(static_cast<int>(top));
            if (!block.isVisible())
                continue;
            const QTextLayout* layout = block.layout();
            top += layout && layout->lineCount() > 0 ? blockBoundingRect(block).height() : lineHeight;
        }
    }
    errorBarMeasuredBlockCount = measured ? blockCount : -1;
    errorBarOverlay->UpdataBlockStartYPositions(positions);
}

void CodeEditor::ResizeErrorBar()
{
    if (!errorBarOverlay)
        return;
    const QScrollBar* bar = verticalScrollBar();
    const int x = static_cast<int>(0.7 * (bar->width() + 1));
    errorBarOverlay->setGeometry(x, 12, bar->width() - x, bar->height() - 11 - 12);
    errorBarOverlay->raise();
}

// ---------------------------------------------------------------------------------------------
// Gutter

int CodeEditor::GetGutterWidth() const
{
    return qBound(10, 2 * fontMetrics().horizontalAdvance(QLatin1Char('9')), 18);
}

int CodeEditor::GetLineNumberWidth() const
{
    int digits = 1;
    for (int count = qMax(1, blockCount()); count >= 10; count /= 10)
        ++digits;
    return qMax(2, digits) * fontMetrics().horizontalAdvance(QLatin1Char('9')) + GetGutterWidth() + 7;
}

void CodeEditor::UpdateLineNumberWidth()
{
    setViewportMargins(GetLineNumberWidth(), 0, 0, 0);
    ResizeLineNumbers();
}

void CodeEditor::UpdateLineNumbers(const QRect& rect, int dy)
{
    if (!lineNumbers)
        return;
    if (dy)
        lineNumbers->scroll(0, dy);
    else
        lineNumbers->update(0, rect.y(), lineNumbers->width(), rect.height());
}

void CodeEditor::ResizeLineNumbers()
{
    if (!lineNumbers)
        return;
    const QRect rect = contentsRect();
    lineNumbers->setGeometry(QRect(rect.left(), rect.top(), GetLineNumberWidth(), rect.height()));
}

void CodeEditor::LineNumberPaintEvent(QPaintEvent* event)
{
    QPainter painter(lineNumbers);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font());
    const int gutterWidth = GetGutterWidth();
    const QRect area = event->rect();
    if (sGutterFormat)
        painter.fillRect(QRect(0, area.top(), gutterWidth, area.height()), sGutterFormat->background());
    if (sLineNumbersFormat)
        painter.fillRect(QRect(gutterWidth, area.top(), lineNumbers->width() - gutterWidth, area.height()),
                         sLineNumbersFormat->background());
    const QColor numberColor =
        sLineNumbersFormat ? sLineNumbersFormat->foreground().color() : palette().color(QPalette::Text);
    const bool showMessages = IsDisplayErrorsEnabled();
    const int lineHeight = fontMetrics().height();
    const int dot = gutterWidth / 2;

    QTextBlock block = firstVisibleBlock();
    int top = qRound(blockBoundingGeometry(block).translated(contentOffset()).top());
    while (block.isValid() && top <= area.bottom())
    {
        const int bottom = top + qRound(blockBoundingRect(block).height());
        if (block.isVisible() && bottom >= area.top())
        {
            const int number = block.blockNumber();
            painter.setPen(numberColor);
            painter.drawText(QRect(0, top, lineNumbers->width() - 4, lineHeight), Qt::AlignRight | Qt::AlignVCenter,
                             QString::number(number + 1));
            if (showMessages)
            {
                // Warnings, then infos, then errors: an error lies on top.
                const std::pair<const QMap<int, QString>*, QColor> kinds[] = {
                    {&warningLines, QColor::fromRgb(CodeEditorErrorBarOverlay::WARNING_COLOR)},
                    {&infoLines, QColor::fromRgb(CodeEditorErrorBarOverlay::INFO_COLOR)},
                    {&errorLines, QColor::fromRgb(CodeEditorErrorBarOverlay::ERROR_COLOR)}};
                const QRectF circle((gutterWidth - dot) / 2.0, top + (lineHeight - dot) / 2.0, dot, dot);
                for (const auto& [lines, color] : kinds)
                {
                    if (!lines->contains(number))
                        continue;
                    painter.setPen(Qt::NoPen);
                    painter.setBrush(color);
                    painter.drawEllipse(circle);
                }
            }
        }
        block = block.next();
        top = bottom;
    }
}

// ---------------------------------------------------------------------------------------------
// Indentation guides

void CodeEditor::paintEvent(QPaintEvent* event)
{
    QPlainTextEdit::paintEvent(event);
    if (Settings::codeEditorDisplayIndentationGuides)
        PaintIndentationGuides();
}

void CodeEditor::PaintIndentationGuides()
{
    QPainter painter(viewport());
    painter.setPen(sIndentationGuidesFormat ? sIndentationGuidesFormat->foreground().color()
                                            : palette().color(QPalette::Mid));
    const QPointF offset = contentOffset();
    const double left = offset.x() + document()->documentMargin();
    const int viewportBottom = viewport()->rect().bottom();
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next())
    {
        const QRectF rect = blockBoundingGeometry(block).translated(offset);
        if (rect.top() > viewportBottom)
            break;
        if (!block.isVisible())
            continue;
        const int count = GetIndentGuideCount(block);
        for (int level = 0; level < count; ++level)
        {
            const double x = left + level * tabStopPixels;
            painter.drawLine(QLineF(x, rect.top(), x, rect.bottom()));
        }
    }
}

int CodeEditor::GetIndentGuideCount(const QTextBlock& block) const
{
    const CodeEditorBlockData* data = GetBlockData(block);
    if (!data)
        return 0;
    if (data->IsEmpty())
    {
        // Guides run on through blank lines: a blank line takes those of the line below.
        const QTextBlock next = block.next();
        if (next.isValid() && next.isVisible())
            return GetIndentGuideCount(next);
        return 0;
    }
    const int columns = IndentColumns(data->GetIndent(), tabSize);
    return columns == 0 ? 0 : (columns - 1) / tabSize + 1;
}

// ---------------------------------------------------------------------------------------------
// Tooltips

bool CodeEditor::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && IsDisplayErrorsEnabled())
    {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QString text = ToolTipTextAt(help->pos());
        if (!text.isEmpty())
        {
            QToolTip::showText(help->globalPos(), text, this);
            return true;
        }
    }
    return QPlainTextEdit::event(event);
}

bool CodeEditor::viewportEvent(QEvent* event)
{
    // The text area's tooltips are the editor's: the same rules, in the editor's coordinates.
    if (event->type() == QEvent::ToolTip)
    {
        const auto* help = static_cast<QHelpEvent*>(event);
        QHelpEvent mapped(QEvent::ToolTip, viewport()->mapTo(this, help->pos()), help->globalPos());
        if (CodeEditor::event(&mapped))
            return true;
    }
    return QPlainTextEdit::viewportEvent(event);
}

QString CodeEditor::ToolTipTextAt(const QPoint& pos) const
{
    if (pos.x() > GetGutterWidth())
    {
        const int position = cursorForPosition(pos - QPoint(GetLineNumberWidth(), 0)).position();
        QString text = LastMessageTextAt(errors, position);
        if (text.isEmpty())
            text = LastMessageTextAt(warnings, position);
        if (text.isEmpty())
            text = LastMessageTextAt(infos, position);
        return text;
    }
    const int block = cursorForPosition(QPoint(0, pos.y())).blockNumber();
    if (errorLines.contains(block))
        return errorLines.value(block);
    if (warningLines.contains(block))
        return warningLines.value(block);
    return infoLines.value(block);
}
