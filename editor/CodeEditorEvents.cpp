// Mouse, focus, geometry and context menu handling of CodeEditor.
#include "editor/CodeEditor.h"

#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "widgets/OverlayWidget.h"

#include <QtCore/QMimeData>
#include <QtCore/QRegularExpression>
#include <QtGui/QTextDocument>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QToolTip>

namespace
{
// Deliberately without the range A to Z: only 'A', 'Z', lower-case letters, digits and '_' before
// a dollar sign make it part of a longer name.
bool IsNameCharacterBeforeDollar(QChar c)
{
    static const QRegularExpression pattern(QStringLiteral("^[a-zAZ0-9_]"));
    return !c.isNull() && pattern.match(QString(c)).hasMatch();
}
} // namespace

void CodeEditor::mouseDoubleClickEvent(QMouseEvent* event)
{
    QPlainTextEdit::mouseDoubleClickEvent(event);
    if (properties.language == CodeEditorLanguage::MEL && Settings::melDoubleClickIncludesDollarSign &&
        textCursor().hasSelection())
        SelectDollarVariable();
}

void CodeEditor::SelectDollarVariable()
{
    static const QRegularExpression name(QStringLiteral("^[a-zA-Z0-9_]+$"));
    static const QRegularExpression variable(QStringLiteral("^\\$[a-zA-Z0-9_]+$"));
    QTextCursor cursor = textCursor();
    const QString selected = cursor.selectedText();
    if (selected != QLatin1String("$") && name.match(selected).hasMatch())
    {
        const int anchor = cursor.anchor();
        if (CharacterAt(anchor - 1) != QLatin1Char('$') ||
            IsNameCharacterBeforeDollar(CharacterAt(anchor - 2)))
            return;
        const int position = cursor.position();
        cursor.setPosition(anchor - 1);
        cursor.setPosition(position, QTextCursor::KeepAnchor);
        setTextCursor(cursor);
    }
    else if (selected == QLatin1String("$"))
    {
        const int start = cursor.selectionStart();
        if (IsNameCharacterBeforeDollar(CharacterAt(start - 1)))
            return;
        QTextCursor extended(document());
        extended.setPosition(start);
        extended.setPosition(cursor.selectionEnd(), QTextCursor::KeepAnchor);
        extended.movePosition(QTextCursor::EndOfWord, QTextCursor::KeepAnchor);
        if (variable.match(extended.selectedText()).hasMatch())
            setTextCursor(extended);
    }
}

void CodeEditor::mouseMoveEvent(QMouseEvent* event)
{
    if (QToolTip::isVisible())
        QToolTip::hideText();
    QPlainTextEdit::mouseMoveEvent(event);
}

void CodeEditor::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers() != Qt::ControlModifier || !Settings::codeEditorMouseWheelChangesFontSize)
    {
        QPlainTextEdit::wheelEvent(event);
        return;
    }
    const int delta = event->angleDelta().y();
    if (delta > 0)
        emit IncreaseFontSizeRequested();
    else if (delta < 0)
        emit DecreaseFontSizeRequested();
}

void CodeEditor::dragEnterEvent(QDragEnterEvent* event)
{
    // Dropped files are for the group around the editor, which opens them.
    if (event->mimeData()->hasUrls())
    {
        event->ignore();
        return;
    }
    QPlainTextEdit::dragEnterEvent(event);
}

void CodeEditor::focusInEvent(QFocusEvent* event)
{
    QPlainTextEdit::focusInEvent(event);
    emit ReceivedFocus();
}

void CodeEditor::showEvent(QShowEvent* event)
{
    QPlainTextEdit::showEvent(event);
    ResizeErrorBar();
    if (pendingScrollValue >= 0)
    {
        verticalScrollBar()->setValue(pendingScrollValue);
        pendingScrollValue = -1;
    }
}

void CodeEditor::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    ResizeLineNumbers();
    ResizeErrorBar();
    dropOverlay->setGeometry(0, 0, width(), height());
}

void CodeEditor::SetDropOverlayRect(const QRect& rect)
{
    if (rect.isNull())
    {
        dropOverlay->hide();
        return;
    }
    dropOverlay->setGeometry(rect);
    dropOverlay->show();
    dropOverlay->raise();
}

void CodeEditor::ShowContextMenu(const QPoint& pos)
{
    // The menu's actions may close this editor; the pointer tells whether it is still there.
    QPointer<QMenu> menu = CreateContextMenu();
    menu->exec(viewport()->mapToGlobal(pos));
    delete menu.data();
}

QMenu* CodeEditor::CreateContextMenu()
{
    using T = KeySequenceType;
    QMenu* menu = new QMenu(this);
    AddContextMenuAction(menu, QStringLiteral("Cut"), SLOT(CustomCut()), T::Cut);
    AddContextMenuAction(menu, QStringLiteral("Copy"), SLOT(CustomCopy()), T::Copy);
    AddContextMenuAction(menu, QStringLiteral("Paste"), SLOT(CustomPaste()), T::Paste);
    menu->addSeparator();
    AddContextMenuAction(menu, QStringLiteral("Select All"), SLOT(selectAll()), T::SelectAll);
    menu->addSeparator();
    AddContextMenuAction(menu, QStringLiteral("Execute"), SLOT(Execute()), T::Execute);
    AddContextMenuAction(menu, QStringLiteral("Execute Line"), SLOT(ExecuteLine()), T::ExecuteLine);
    AddContextMenuAction(menu, QStringLiteral("Execute All"), SLOT(ExecuteAll()), T::ExecuteAll);
    menu->addSeparator();
    AddContextMenuAction(menu, QStringLiteral("Save Script to Shelf"), SLOT(SaveScriptToShelf()),
                         T::SaveScriptToShelf);
    menu->addSeparator();
    AddContextMenuAction(menu, QStringLiteral("Insert Path..."), SLOT(InsertPath()), T::InsertPath);
    menu->addSeparator();
    if (properties.language == CodeEditorLanguage::PYTHON)
    {
        AddPythonContextMenu(menu);
        menu->addSeparator();
    }
    AddContextMenuAction(menu, QStringLiteral("Quick Help"), SLOT(QuickHelp()), T::QuickHelp);
    AddContextMenuAction(menu, QStringLiteral("Command Reference"), SLOT(CommandDocumentation()),
                         T::CommandReference);
    return menu;
}

void CodeEditor::AddPythonContextMenu(QMenu* menu)
{
    using T = KeySequenceType;
    QMenu* python = menu->addMenu(QStringLiteral("Python"));
    AddContextMenuAction(python, QStringLiteral("dir( )"), SLOT(PythonDirSelection()), T::PythonSelectionDir);
    AddContextMenuAction(python, QStringLiteral("help( )"), SLOT(PythonHelpSelection()),
                         T::PythonSelectionHelp);
    python->addSeparator();
    AddContextMenuAction(python, QStringLiteral("Update Module State"), SLOT(PythonUpdateModuleState()),
                         T::PythonUpdateModuleState);
    AddContextMenuAction(python, QStringLiteral("Revert Module State"), SLOT(PythonRevertModuleState()),
                         T::PythonRevertModuleState);
    python->addSeparator();
    AddContextMenuAction(python, QStringLiteral("Revert Module State on Execute"),
                         SLOT(TogglePythonRevertModuleStateOnExecute()), T::PythonRevertModuleStateOnExecute);
    QAction* toggle = python->actions().constLast();
    toggle->setCheckable(true);
    toggle->setChecked(Settings::pythonRevertModuleStateOnExecute);
}

void CodeEditor::AddContextMenuAction(QMenu* menu, const QString& text, const char* slot,
                                      KeySequenceType type)
{
    QAction* action = menu->addAction(text);
    if (keyBindings)
        action->setShortcut(keyBindings->GetShortcut(type));
    connect(action, SIGNAL(triggered()), this, slot);
}
