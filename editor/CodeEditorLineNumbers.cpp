#include "editor/CodeEditorLineNumbers.h"

#include "editor/CodeEditor.h"

#include <QtWidgets/QToolTip>

CodeEditorLineNumbers::CodeEditorLineNumbers(CodeEditor* editor) : QWidget(editor), codeEditor(editor)
{
    setObjectName(QStringLiteral("lineNumbers"));
    setMouseTracking(true);
}

QSize CodeEditorLineNumbers::sizeHint() const
{
    return QSize(codeEditor->GetLineNumberWidth(), 0);
}

void CodeEditorLineNumbers::paintEvent(QPaintEvent* event)
{
    codeEditor->LineNumberPaintEvent(event);
}

void CodeEditorLineNumbers::mouseMoveEvent(QMouseEvent* event)
{
    // The tooltip belongs to the line under the pointer; a new one comes when the pointer rests.
    if (QToolTip::isVisible())
        QToolTip::hideText();
    QWidget::mouseMoveEvent(event);
}
