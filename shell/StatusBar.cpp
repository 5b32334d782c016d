#include "shell/StatusBar.h"

#include "plugin/MayaUtil.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"

#include <QtGui/QAction>
#include <QtGui/QPixmap>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>

StatusBar::StatusBar(KeyBindings* bindings, QWidget* parent) : QWidget(parent), keyBindings(bindings)
{
    setObjectName(QStringLiteral("StatusBar"));
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    SetInterpreter(CodeEditorLanguage::TEXT);
    SetCursorPosition(0, 0, 0);
    SetOverwriteEnabled(Settings::overwriteEnabled);
    UpdateVisibility();
}

QLabel* StatusBar::CreateIconLabel(const QString& path)
{
    auto* label = new QLabel(this);
    const QPixmap pixmap(path);
    if (!pixmap.isNull())
        label->setPixmap(pixmap.scaled(14, 14, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    return label;
}

void StatusBar::CreateWidgets()
{
    interpreterLabel = new QLabel(this);
    infoLabel = new QLabel(this);
    // A long message must never widen the bar.
    infoLabel->setMinimumWidth(1);
    cursorLabel = new QLabel(this);
    overwriteLabel = new QLabel(this);
    errorIcon = CreateIconLabel(QStringLiteral(":/bq2_icons/error.png"));
    errorCountLabel = new QLabel(QStringLiteral("0"), this);
    warningIcon = CreateIconLabel(QStringLiteral(":/bq2_icons/warning.png"));
    warningCountLabel = new QLabel(QStringLiteral("0"), this);
}

void StatusBar::CreateLayout()
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 4, 10, 4);
    layout->setSpacing(0);
    layout->addWidget(interpreterLabel);
    layout->addWidget(errorIcon);
    layout->addSpacing(3);
    layout->addWidget(errorCountLabel);
    layout->addWidget(warningIcon);
    layout->addSpacing(3);
    layout->addWidget(warningCountLabel);
    layout->addWidget(infoLabel);
    layout->addSpacing(12);
    layout->addStretch(1);
    layout->addWidget(cursorLabel);
    layout->addSpacing(30);
    layout->addWidget(overwriteLabel);
}

void StatusBar::CreateConnections()
{
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, SIGNAL(customContextMenuRequested(QPoint)), this, SLOT(ShowContextMenu(QPoint)));
}

void StatusBar::SetInterpreter(CodeEditorLanguage language)
{
    // The trailing blanks keep the distance to the next item.
    QString text;
    if (language == CodeEditorLanguage::MEL)
        text = QStringLiteral("MEL     ");
    else if (language == CodeEditorLanguage::PYTHON)
        text = QStringLiteral("Python %1 (64-bit)     ").arg(MayaUtil::GetPythonVersion());
    interpreterLabel->setText(text);
}

QString StatusBar::GetInterpreterText() const
{
    return interpreterLabel->text();
}

void StatusBar::SetErrorAndWarningCount(int errors, int warnings)
{
    errorCountLabel->setText(QStringLiteral("%1  ").arg(errors));
    warningCountLabel->setText(QStringLiteral("%1    ").arg(warnings));
}

void StatusBar::SetInfo(const QString& text)
{
    infoLabel->setText(text);
    infoLabel->setToolTip(text);
}

void StatusBar::SetCursorPosition(int line, int column, int selected)
{
    cursorLabel->setText(QStringLiteral("Ln %1      Col %2      Sel %3").arg(line).arg(column).arg(selected));
}

void StatusBar::SetOverwriteEnabled(bool enabled)
{
    overwriteLabel->setText(enabled ? QStringLiteral("OVR") : QStringLiteral("INS"));
}

void StatusBar::UpdateVisibility()
{
    interpreterLabel->setVisible(Settings::statusBarInterpreterVisible);
    for (QLabel* label : {errorIcon, errorCountLabel, warningIcon, warningCountLabel})
        label->setVisible(Settings::statusBarErrorCountVisible);
    infoLabel->setVisible(Settings::statusBarLineMessageVisible);
}

void StatusBar::ToggleInterpreter()
{
    Settings::statusBarInterpreterVisible = !Settings::statusBarInterpreterVisible;
    UpdateVisibility();
}

void StatusBar::ToggleErrorWarningCount()
{
    Settings::statusBarErrorCountVisible = !Settings::statusBarErrorCountVisible;
    UpdateVisibility();
}

void StatusBar::ToggleCurrentLineMessage()
{
    Settings::statusBarLineMessageVisible = !Settings::statusBarLineMessageVisible;
    UpdateVisibility();
}

void StatusBar::ShowContextMenu(const QPoint& pos)
{
    const auto verb = [](bool visible) { return visible ? QStringLiteral("Hide") : QStringLiteral("Show"); };
    QMenu menu(this);
    menu.addAction(QStringLiteral("%1 Interpreter").arg(verb(Settings::statusBarInterpreterVisible)), this,
                   SLOT(ToggleInterpreter()));
    menu.addAction(QStringLiteral("%1 Error/Warning Count").arg(verb(Settings::statusBarErrorCountVisible)),
                   this, SLOT(ToggleErrorWarningCount()));
    menu.addAction(QStringLiteral("%1 Current Line Message").arg(verb(Settings::statusBarLineMessageVisible)),
                   this, SLOT(ToggleCurrentLineMessage()));
    menu.addSeparator();
    QAction* hide =
        menu.addAction(QStringLiteral("Hide Status Bar"), this, SLOT(OnHideActivityBarRequested()));
    if (keyBindings)
        hide->setShortcut(keyBindings->GetShortcut(KeySequenceType::ToggleStatusBar));
    menu.exec(mapToGlobal(pos));
}

void StatusBar::OnHideActivityBarRequested()
{
    emit StatusBarVisibilityChangeRequested(false);
}
