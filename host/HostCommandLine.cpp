#include "HostCommandLine.h"
#include "HostOutput.h"
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QToolButton>
#include <maya/MGlobal.h>
#include <maya/MQtUtil.h>

namespace
{
// The last line of what was reported while a command ran.
QString LastLine(const QString& text)
{
    const QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return lines.isEmpty() ? QString() : lines.last();
}
} // namespace

HostCommandLine::HostCommandLine(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("commandLine1"));
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    SetPython(false);
}

bool HostCommandLine::IsPython() const
{
    return python;
}

void HostCommandLine::SetPython(bool newPython)
{
    python = newPython;
    languageButton->setText(python ? QStringLiteral("Python") : QStringLiteral("MEL"));
}

QLineEdit* HostCommandLine::InputField() const
{
    return inputField;
}

QString HostCommandLine::ResultText() const
{
    return resultField->text();
}

QStringList HostCommandLine::EnteredLines() const
{
    return enteredLines;
}

bool HostCommandLine::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == inputField && event->type() == QEvent::KeyPress)
    {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down)
        {
            StepHistory(key == Qt::Key_Up ? -1 : 1);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void HostCommandLine::CreateWidgets()
{
    languageButton = new QToolButton(this);
    languageButton->setObjectName(QStringLiteral("commandLineLanguageButton"));
    languageButton->setToolTip(QStringLiteral("Switch between MEL and Python"));
    languageButton->setMinimumWidth(56);

    inputField = new QLineEdit(this);
    inputField->setObjectName(QStringLiteral("commandLineField"));
    inputField->installEventFilter(this);

    resultField = new QLineEdit(this);
    resultField->setObjectName(QStringLiteral("commandLineResultField"));
    resultField->setReadOnly(true);
    resultField->setFocusPolicy(Qt::NoFocus);
}

void HostCommandLine::CreateLayout()
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    layout->addWidget(languageButton);
    layout->addWidget(inputField, 3);
    layout->addWidget(resultField, 2);
}

void HostCommandLine::CreateConnections()
{
    connect(languageButton, &QToolButton::clicked, this, &HostCommandLine::ToggleLanguage);
    connect(inputField, &QLineEdit::returnPressed, this, &HostCommandLine::OnReturnPressed);
}

void HostCommandLine::ToggleLanguage()
{
    SetPython(!python);
}

void HostCommandLine::OnReturnPressed()
{
    const QString line = inputField->text();
    if (line.trimmed().isEmpty())
        return;
    if (enteredLines.isEmpty() || enteredLines.last() != line)
        enteredLines.append(line);
    historyIndex = int(enteredLines.size());
    pendingLine.clear();
    inputField->clear();

    const QString historyBefore = HostOutput::History();
    const MString command = MQtUtil::toMString(line);
    if (python)
        MGlobal::executePythonCommand(command, true, true);
    else
        MGlobal::executeCommand(command, true, true);
    UpdateResult(historyBefore);
}

void HostCommandLine::StepHistory(int step)
{
    const int count = int(enteredLines.size());
    const int index = qBound(0, historyIndex + step, count);
    if (index == historyIndex)
        return;
    if (historyIndex == count)
        pendingLine = inputField->text();
    historyIndex = index;
    inputField->setText(index == count ? pendingLine : enteredLines.at(index));
}

void HostCommandLine::UpdateResult(const QString& historyBefore)
{
    const QString historyAfter = HostOutput::History();
    // The history may have been cleared by the command itself: then all of it is new.
    const QString added =
        historyAfter.startsWith(historyBefore) ? historyAfter.mid(historyBefore.size()) : historyAfter;
    resultField->setText(LastLine(added));
}
