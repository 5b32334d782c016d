#include "HostScriptEditorWindow.h"
#include "HostOutput.h"
#include <QtGui/QTextCursor>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QVBoxLayout>

HostScriptEditorWindow::HostScriptEditorWindow(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("scriptEditorPanel1Window"));
    setWindowTitle(QStringLiteral("Script Editor"));
    resize(640, 480);
    CreateWidgets();
    CreateLayout();
}

QString HostScriptEditorWindow::Text() const
{
    return historyView->toPlainText();
}

void HostScriptEditorWindow::Refresh()
{
    historyView->setPlainText(HostOutput::History());
    historyView->moveCursor(QTextCursor::End);
}

void HostScriptEditorWindow::CreateWidgets()
{
    historyView = new QPlainTextEdit(this);
    historyView->setObjectName(QStringLiteral("cmdScrollFieldReporter1"));
    historyView->setReadOnly(true);
    historyView->setLineWrapMode(QPlainTextEdit::NoWrap);
}

void HostScriptEditorWindow::CreateLayout()
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(historyView);
}
