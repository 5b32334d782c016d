// Key handling of CodeEditor and what it asks of the completer.
#include "editor/CodeEditor.h"

#include "settings/Settings.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QRegularExpression>
#include <QtGui/QKeyEvent>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtWidgets/QToolTip>

namespace
{
bool HasAltOrMeta(Qt::KeyboardModifiers modifiers)
{
    return modifiers & (Qt::AltModifier | Qt::MetaModifier);
}

bool HasCtrlAltOrMeta(Qt::KeyboardModifiers modifiers)
{
    return modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

bool IsCtrlSpace(const QKeyEvent* event, Qt::KeyboardModifiers modifiers)
{
    return event->key() == Qt::Key_Space && (modifiers & Qt::ControlModifier);
}
} // namespace

void CodeEditor::keyPressEvent(QKeyEvent* event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    if (QToolTip::isVisible())
        QToolTip::hideText();

    KeyResult result = HandleEnterKeys(event, modifiers);
    if (result == KeyResult::NotHandled)
        result = HandleCommandKeys(event, modifiers);
    if (result == KeyResult::NotHandled)
        result = HandleCharacterKeys(event, modifiers);
    if (result == KeyResult::NotHandled)
        result = HandleLanguageKeys(event, modifiers);
    if (result == KeyResult::NotHandled)
        result = HandleTypedKey(event, modifiers);
    if (result == KeyResult::UpdateCompleter && AutoCompleterVisible())
        UpdateAutoCompleter(false);
}

CodeEditor::KeyResult CodeEditor::HandleEnterKeys(QKeyEvent* event, Qt::KeyboardModifiers modifiers)
{
    const int key = event->key();
    if (key == Qt::Key_Enter && (modifiers & Qt::KeypadModifier) && !(modifiers & Qt::ControlModifier))
        return HandleKeypadEnter(event, modifiers);
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return KeyResult::NotHandled;

    if ((modifiers & Qt::ShiftModifier) && !(modifiers & Qt::ControlModifier))
    {
        // Shift+Return is plain Return here, not the line separator of the base class.
        if (modifiers & Qt::MetaModifier)
            event->ignore();
        else
            SendKeyWithModifiers(event, Qt::NoModifier);
        return KeyResult::Done;
    }
    if (modifiers & (Qt::AltModifier | Qt::ControlModifier | Qt::MetaModifier))
    {
        event->ignore();
        return KeyResult::Done;
    }
    if (!textCursor().hasSelection())
    {
        InsertNewLine();
        return KeyResult::Done;
    }
    // With a selection the base class replaces it by a bare new line, without indent.
    return KeyResult::NotHandled;
}

CodeEditor::KeyResult CodeEditor::HandleKeypadEnter(QKeyEvent* event, Qt::KeyboardModifiers modifiers)
{
    const bool shift = modifiers & Qt::ShiftModifier;
    if (HasAltOrMeta(modifiers))
    {
        if (!shift || (modifiers & Qt::MetaModifier))
            event->ignore();
        else
            SendKeyWithModifiers(event, Qt::NoModifier);
    }
    else if (shift)
    {
        SendKeyWithModifiers(event, Qt::NoModifier);
    }
    else
    {
        // Enter of the number pad runs code as Ctrl+Enter does.
        SendKeyWithModifiers(event, Qt::ControlModifier);
    }
    return KeyResult::Done;
}

void CodeEditor::SendKeyWithModifiers(const QKeyEvent* event, Qt::KeyboardModifiers modifiers)
{
    // Sent, not posted: a shortcut bound to the new combination gets the first look at it.
    QKeyEvent newEvent(QEvent::KeyPress, event->key(), modifiers, event->text(), event->isAutoRepeat(),
                       event->count());
    QCoreApplication::sendEvent(this, &newEvent);
}

CodeEditor::KeyResult CodeEditor::HandleCommandKeys(QKeyEvent* event, Qt::KeyboardModifiers modifiers)
{
    switch (event->key())
    {
    case Qt::Key_Escape:
        emit EscapeKeyPressed();
        return KeyResult::Done;
    case Qt::Key_Tab:
        IncreaseIndent(false);
        return KeyResult::UpdateCompleter;
    case Qt::Key_Backtab:
        DecreaseIndent();
        return KeyResult::UpdateCompleter;
    case Qt::Key_Insert:
        if (modifiers & (Qt::ShiftModifier | Qt::ControlModifier))
            return KeyResult::NotHandled;
        ToggleOverwriteMode();
        return KeyResult::UpdateCompleter;
    case Qt::Key_Home:
        OnHomeKeyPressed(modifiers & Qt::ShiftModifier, modifiers & Qt::ControlModifier);
        return KeyResult::UpdateCompleter;
    default:
        return KeyResult::NotHandled;
    }
}

CodeEditor::KeyResult CodeEditor::HandleCharacterKeys(QKeyEvent* event, Qt::KeyboardModifiers)
{
    switch (event->key())
    {
    case Qt::Key_ParenLeft:
        InsertOpeningBrace(QLatin1Char('('));
        return KeyResult::UpdateCompleter;
    case Qt::Key_BracketLeft:
        InsertOpeningBrace(QLatin1Char('['));
        return KeyResult::UpdateCompleter;
    case Qt::Key_BraceLeft:
        InsertOpeningBrace(QLatin1Char('{'));
        return KeyResult::UpdateCompleter;
    case Qt::Key_ParenRight:
        InsertClosingBrace(QLatin1Char(')'));
        return KeyResult::UpdateCompleter;
    case Qt::Key_BracketRight:
        InsertClosingBrace(QLatin1Char(']'));
        return KeyResult::UpdateCompleter;
    case Qt::Key_BraceRight:
        InsertClosingBrace(QLatin1Char('}'));
        return KeyResult::UpdateCompleter;
    case Qt::Key_QuoteDbl:
        InsertQuote(QLatin1Char('"'));
        return KeyResult::UpdateCompleter;
    default:
        return KeyResult::NotHandled;
    }
}

CodeEditor::KeyResult CodeEditor::HandleLanguageKeys(QKeyEvent* event, Qt::KeyboardModifiers modifiers)
{
    const CodeEditorLanguage language = properties.language;
    if (language == CodeEditorLanguage::PYTHON && event->key() == Qt::Key_Apostrophe)
    {
        InsertQuote(QLatin1Char('\''));
        return KeyResult::UpdateCompleter;
    }
    if (language == CodeEditorLanguage::MEL && event->key() == Qt::Key_QuoteLeft)
    {
        InsertQuote(QLatin1Char('`'));
        return KeyResult::UpdateCompleter;
    }
    if (IsCtrlSpace(event, modifiers))
    {
        // The "complete on user" settings are not consulted: Ctrl+Space follows the letters switch.
        if (IsCompleteOnLettersEnabled())
            UpdateAutoCompleter(true);
        return KeyResult::Done;
    }
    if (event->matches(QKeySequence::Cut))
        CustomCut();
    else if (event->matches(QKeySequence::Copy))
        CustomCopy();
    else if (event->matches(QKeySequence::Paste))
        CustomPaste();
    else
        return KeyResult::NotHandled;
    return KeyResult::UpdateCompleter;
}

CodeEditor::KeyResult CodeEditor::HandleTypedKey(QKeyEvent* event, Qt::KeyboardModifiers modifiers)
{
    const int key = event->key();
    if (textCursor().position() > 0 && AutoCompleterVisible())
        HideAutoCompleterForKey(event);

    if (key == Qt::Key_Backspace && !(modifiers & Qt::ControlModifier))
    {
        if (modifiers == Qt::NoModifier && InsertBackspace())
            return KeyResult::Done;
        QPlainTextEdit::keyPressEvent(event);
        return AutoCompleterVisible() ? KeyResult::UpdateCompleter : KeyResult::Done;
    }

    QPlainTextEdit::keyPressEvent(event);
    if (AutoCompleterVisible())
        return KeyResult::UpdateCompleter;
    return HandleCompletionAfterKey(event, modifiers);
}

void CodeEditor::HideAutoCompleterForKey(const QKeyEvent* event)
{
    const int key = event->key();
    bool hide = key == Qt::Key_Left || key == Qt::Key_Right;
    if (key == Qt::Key_Backspace)
    {
        const QChar previous = document()->characterAt(textCursor().position() - 1);
        hide = previous == QLatin1Char('.') || previous == QLatin1Char(' ') ||
               previous == QLatin1Char('\t') || previous == QChar::ParagraphSeparator;
    }
    if (hide)
        autoCompleter->hide();
}

CodeEditor::KeyResult CodeEditor::HandleCompletionAfterKey(QKeyEvent* event, Qt::KeyboardModifiers modifiers)
{
    if (event->key() == Qt::Key_Period)
    {
        if (properties.language != CodeEditorLanguage::PYTHON || !Settings::pythonCompleteOnDot)
            return KeyResult::Done;
        // The popup has just asked the interpreter for the new path; asking again is waste.
        UpdateAutoCompleter(false);
        return KeyResult::Done;
    }
    if (HasCtrlAltOrMeta(modifiers))
        return KeyResult::Done;

    static const QRegularExpression letter(QStringLiteral("[a-zA-Z_]"));
    const QString text = event->text();
    if (text.size() == 1 && letter.match(text).hasMatch() && IsCompleteOnLettersEnabled())
        UpdateAutoCompleter(false);
    if (properties.language == CodeEditorLanguage::TEXT)
        return KeyResult::Done;
    return KeyResult::UpdateCompleter;
}

void CodeEditor::OnHomeKeyPressed(bool shift, bool ctrl)
{
    const QTextCursor::MoveMode mode = shift ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor;
    QTextCursor cursor = textCursor();
    if (ctrl)
    {
        cursor.movePosition(QTextCursor::Start, mode);
        setTextCursor(cursor);
        return;
    }
    const int before = cursor.position();
    const QTextBlock block = cursor.block();
    cursor.movePosition(QTextCursor::StartOfLine, mode);
    const QChar c = document()->characterAt(cursor.position());
    if (c == QLatin1Char(' ') || c == QLatin1Char('\t'))
    {
        // On to the indent's end; a line of blanks only ends at its own end, not in the next line.
        cursor.movePosition(QTextCursor::NextWord, mode);
        if (cursor.block() != block)
            cursor.setPosition(block.position() + block.length() - 1, mode);
        if (cursor.position() == before)
            cursor.movePosition(QTextCursor::StartOfLine, mode);
    }
    setTextCursor(cursor);
}

bool CodeEditor::AutoCompleterVisible() const
{
    return autoCompleter && autoCompleter->isVisible();
}

void CodeEditor::UpdateAutoCompleter(bool force)
{
    if (!autoCompleter || isReadOnly() || IsIgnoredBlockDataPosition(textCursor()))
        return;
    UpdateAutoCompleterPopup(textCursor(), GetAutoCompleterRect(), force);
}

QRect CodeEditor::GetAutoCompleterRect() const
{
    if (AutoCompleterVisible())
        return cursorRect();
    // Under the start of the word being typed, just below its line, on the screen.
    QTextCursor cursor = textCursor();
    cursor.movePosition(QTextCursor::StartOfWord);
    QRect rect = cursorRect(cursor);
    const QPoint global = mapToGlobal(rect.topLeft());
    const QSize size = rect.size();
    rect.moveTopLeft(QPoint(global.x() + viewportMargins().left(), global.y() + size.height() + 3));
    return rect;
}
