#include "sidebar/QuickHelpView.h"

#include "plugin/MayaUtil.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "widgets/FlatButton.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>
#include <QtWidgets/QVBoxLayout>

QuickHelpView::QuickHelpView(KeyBindings* bindings, QWidget* parent) : QWidget(parent), keyBindings(bindings)
{
    setObjectName(QStringLiteral("QuickHelpView"));
    setAutoFillBackground(true);
    setContextMenuPolicy(Qt::CustomContextMenu);
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    UpdateColors();
}

void QuickHelpView::CreateWidgets()
{
    titleLabel = new QLabel(QStringLiteral("QUICK HELP"), this);
    clearBtn = new FlatButton(this);
    clearBtn->SetSize(18, 18);
    clearBtn->SetImage(QImage(QStringLiteral(":/bq2_icons/clear_field.png")), 6);
    clearBtn->setToolTip(QStringLiteral("Clear"));
    searchEdit = new QLineEdit(this);
    searchEdit->setPlaceholderText(QStringLiteral("Command"));
    flagList = new QListWidget(this);
    flagList->setFrameStyle(0);
}

void QuickHelpView::CreateLayout()
{
    auto* titleLayout = new QHBoxLayout();
    titleLayout->setContentsMargins(0, 6, 0, 6);
    titleLayout->setSpacing(2);
    titleLayout->addWidget(titleLabel);
    titleLayout->addStretch(1);
    titleLayout->addWidget(clearBtn);
    auto* mainLayout = new QVBoxLayout(this);
    mainLayout->setContentsMargins(0, 0, 0, 0);
    mainLayout->setSpacing(0);
    mainLayout->addLayout(titleLayout);
    mainLayout->addWidget(searchEdit);
    mainLayout->addWidget(flagList);
}

void QuickHelpView::CreateConnections()
{
    connect(clearBtn, SIGNAL(clicked()), this, SLOT(Clear()));
    connect(searchEdit, SIGNAL(editingFinished()), this, SLOT(UpdateResults()));
    connect(flagList, SIGNAL(itemDoubleClicked(QListWidgetItem*)), this, SLOT(OnFlagSelected(QListWidgetItem*)));
    connect(this, SIGNAL(customContextMenuRequested(QPoint)), this, SLOT(ShowContextMenu(QPoint)));
}

void QuickHelpView::UpdateResults()
{
    flagList->clear();
    const QStringList flags = MayaUtil::CommandFlags(searchEdit->text().trimmed());
    for (int i = 0; i + 2 < flags.size(); i += 3)
    {
        const QString& shortName = flags.at(i);
        const QString& longName = flags.at(i + 1);
        const QString& type = flags.at(i + 2);
        QString text = QStringLiteral("%1/%2").arg(shortName, longName);
        if (!type.isEmpty())
            text += QStringLiteral("    %1").arg(type);
        auto* item = new QListWidgetItem(text, flagList);
        item->setData(Qt::UserRole, longName);
    }
}

void QuickHelpView::SetSearchText(const QString& text, bool selectAll)
{
    if (!text.isEmpty())
    {
        searchEdit->setText(text);
        UpdateResults();
    }
    if (selectAll)
        searchEdit->selectAll();
}

void QuickHelpView::OnFlagSelected(QListWidgetItem* item)
{
    if (item)
        emit FlagSelected(item->data(Qt::UserRole).toString());
}

void QuickHelpView::Clear()
{
    searchEdit->clear();
    flagList->clear();
}

void QuickHelpView::OnHideSideBarRequested()
{
    emit HideSideBarRequested();
}

void QuickHelpView::keyPressEvent(QKeyEvent* event)
{
    // Keys typed here must not reach the main widget's shortcuts.
    event->accept();
}

void QuickHelpView::ShowContextMenu(const QPoint& p)
{
    if (p.y() > searchEdit->geometry().top())
        return;
    QMenu menu(this);
    QAction* hide = menu.addAction(QStringLiteral("Hide Side Bar"), this, SLOT(OnHideSideBarRequested()));
    if (keyBindings)
        hide->setShortcut(keyBindings->GetShortcut(KeySequenceType::ToggleSideBar));
    menu.exec(mapToGlobal(p));
}

void QuickHelpView::UpdateColors()
{
    QPalette palette = flagList->palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
    {
        palette.setColor(group, QPalette::Base, ColorSettings::sideBarBaseColor);
        palette.setColor(group, QPalette::Highlight, ColorSettings::sideBarHighlightColor);
    }
    flagList->setPalette(palette);
}
