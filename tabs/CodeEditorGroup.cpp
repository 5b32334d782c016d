#include "tabs/CodeEditorGroup.h"

#include <QtCore/QEvent>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QVBoxLayout>

CodeEditorGroup::CodeEditorGroup(int groupId, KeyBindings* bindings, QWidget* parent)
    : QWidget(parent), id(groupId), keyBindings(bindings)
{
    setObjectName(QStringLiteral("CodeEditorGroup%1").arg(id));
    CreateWidgets();
    CreateLayout();
    CreateConnections();
}

void CodeEditorGroup::CreateWidgets()
{
    tabs = new QTabWidget(this);
    tabs->setDocumentMode(true);
}

void CodeEditorGroup::CreateLayout()
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tabs);
}

void CodeEditorGroup::CreateConnections()
{
    connect(tabs, SIGNAL(currentChanged(int)), this, SIGNAL(CurrentTabChanged()));
}

int CodeEditorGroup::GetCodeEditorCount() const
{
    return tabs->count();
}

int CodeEditorGroup::GetCurrentIndex() const
{
    return tabs->currentIndex();
}

void CodeEditorGroup::SetCurrentIndex(int index)
{
    tabs->setCurrentIndex(index);
}

QString CodeEditorGroup::GetLabel(int index) const
{
    return tabs->tabText(index);
}

QPlainTextEdit* CodeEditorGroup::GetCodeEditor(int index) const
{
    return qobject_cast<QPlainTextEdit*>(tabs->widget(index));
}

int CodeEditorGroup::AddBuffer(const QString& label)
{
    auto* editor = new QPlainTextEdit(tabs);
    editor->installEventFilter(this);
    const int index = tabs->addTab(editor, label);
    tabs->setCurrentIndex(index);
    return index;
}

bool CodeEditorGroup::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::FocusIn)
        emit ReceivedFocus(this);
    return QWidget::eventFilter(object, event);
}

void CodeEditorGroup::SetMiniToolbarVisible(bool visible)
{
    miniToolbarVisible = visible;
}

void CodeEditorGroup::SetTabDropOtherGroupsEnabled(bool enabled)
{
    tabDropOtherGroupsEnabled = enabled;
}

void CodeEditorGroup::FocusCurrentCodeEditor()
{
    if (QWidget* editor = tabs->currentWidget())
        editor->setFocus();
}

void CodeEditorGroup::UpdatePreferences()
{
    tabs->tabBar()->setVisible(true);
}
