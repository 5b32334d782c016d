#include "output/OutputHighlightingWidget.h"

#include "output/OutputHighlightingDialog.h"
#include "settings/ColorSettings.h"
#include "widgets/FlatButton.h"

#include <QtWidgets/QFrame>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QVBoxLayout>

OutputHighlightingWidget::OutputHighlightingWidget(QWidget* parent) : QWidget(parent)
{
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    Reset();
}

void OutputHighlightingWidget::CreateWidgets()
{
    listWidget = new QListWidget(this);
    listWidget->setObjectName(QStringLiteral("listWidget"));
    moveItemUpBtn = CreateButton(QStringLiteral(":/moveLayerUp.png"), QStringLiteral("Move Up"));
    moveItemDownBtn = CreateButton(QStringLiteral(":/moveLayerDown.png"), QStringLiteral("Move Down"));
    newItemBtn = CreateButton(QStringLiteral(":/newLayerEmpty.png"), QStringLiteral("New Highlight"));
    deleteItemBtn =
        CreateButton(QStringLiteral(":/bq2_icons/delete_highlight.png"), QStringLiteral("Delete Highlight"));
    moveItemUpBtn->setObjectName(QStringLiteral("moveItemUpBtn"));
    moveItemDownBtn->setObjectName(QStringLiteral("moveItemDownBtn"));
    newItemBtn->setObjectName(QStringLiteral("newItemBtn"));
    deleteItemBtn->setObjectName(QStringLiteral("deleteItemBtn"));
}

FlatButton* OutputHighlightingWidget::CreateButton(const QString& image, const QString& toolTip)
{
    auto* button = new FlatButton(this);
    button->SetSize(24, 24);
    button->SetImage(QImage(image), 0);
    button->SetMouseOverEnabled(false);
    button->SetButtonDownEnabled(false);
    button->setToolTip(toolTip);
    return button;
}

void OutputHighlightingWidget::CreateLayout()
{
    auto* buttonLayout = new QHBoxLayout();
    buttonLayout->setContentsMargins(0, 0, 0, 0);
    buttonLayout->setSpacing(0);
    buttonLayout->addWidget(moveItemUpBtn);
    buttonLayout->addWidget(moveItemDownBtn);
    buttonLayout->addStretch();
    buttonLayout->addWidget(newItemBtn);
    buttonLayout->addWidget(deleteItemBtn);

    auto* frame = new QFrame(this);
    auto* frameLayout = new QVBoxLayout(frame);
    frameLayout->setContentsMargins(2, 2, 2, 2);
    frameLayout->addWidget(listWidget);

    auto* mainLayout = new QVBoxLayout(this);
    mainLayout->setContentsMargins(0, 0, 0, 0);
    mainLayout->addLayout(buttonLayout);
    mainLayout->addWidget(frame);
}

void OutputHighlightingWidget::CreateConnections()
{
    connect(newItemBtn, SIGNAL(clicked()), this, SLOT(NewItem()));
    connect(deleteItemBtn, SIGNAL(clicked()), this, SLOT(DeleteItem()));
    connect(moveItemUpBtn, SIGNAL(clicked()), this, SLOT(MoveItemUp()));
    connect(moveItemDownBtn, SIGNAL(clicked()), this, SLOT(MoveItemDown()));
    connect(listWidget, SIGNAL(itemDoubleClicked(QListWidgetItem*)), this, SLOT(EditItem(QListWidgetItem*)));
    connect(listWidget, SIGNAL(itemChanged(QListWidgetItem*)), this, SLOT(OnItemChanged(QListWidgetItem*)));
}

QListWidgetItem* OutputHighlightingWidget::CreateItem(const ExtraSelectionProperties& properties) const
{
    auto* item = new QListWidgetItem(properties.name);
    item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
    item->setCheckState(properties.enabled ? Qt::Checked : Qt::Unchecked);
    return item;
}

void OutputHighlightingWidget::Reset()
{
    selections = ColorSettings::outputUserDefinedSelections;
    const QSignalBlocker blocker(listWidget);
    listWidget->clear();
    for (const ExtraSelectionProperties& properties : std::as_const(selections))
        listWidget->addItem(CreateItem(properties));
    if (listWidget->count() > 0)
        listWidget->setCurrentRow(0);
}

void OutputHighlightingWidget::Apply()
{
    ColorSettings::outputUserDefinedSelections = selections;
}

void OutputHighlightingWidget::NewItem()
{
    OutputHighlightingDialog dialog(this);
    dialog.SetDefaults();
    if (dialog.exec() != QDialog::Accepted)
        return;
    selections.append(dialog.GetSelectionProperties());
    const QSignalBlocker blocker(listWidget);
    listWidget->addItem(CreateItem(selections.last()));
    listWidget->setCurrentRow(listWidget->count() - 1);
}

void OutputHighlightingWidget::EditItem(QListWidgetItem* item)
{
    const int row = listWidget->row(item);
    if (row < 0 || row >= selections.size())
        return;
    OutputHighlightingDialog dialog(this);
    dialog.SetSelectionProperties(selections.at(row));
    if (dialog.exec() != QDialog::Accepted)
        return;
    selections[row] = dialog.GetSelectionProperties();
    const QSignalBlocker blocker(listWidget);
    item->setText(selections.at(row).name);
    item->setCheckState(selections.at(row).enabled ? Qt::Checked : Qt::Unchecked);
    listWidget->setCurrentRow(row);
}

void OutputHighlightingWidget::DeleteItem()
{
    const int row = listWidget->currentRow();
    if (row < 0 || row >= selections.size())
        return;
    delete listWidget->takeItem(row);
    selections.removeAt(row);
}

void OutputHighlightingWidget::OnItemChanged(QListWidgetItem* item)
{
    const int row = listWidget->row(item);
    if (row >= 0 && row < selections.size())
        selections[row].enabled = item->checkState() == Qt::Checked;
}

void OutputHighlightingWidget::MoveItemUp()
{
    const int row = listWidget->currentRow();
    SwapWithRow(row, row - 1);
}

void OutputHighlightingWidget::MoveItemDown()
{
    const int row = listWidget->currentRow();
    SwapWithRow(row, row + 1);
}

void OutputHighlightingWidget::SwapWithRow(int row, int otherRow)
{
    if (row < 0 || otherRow < 0 || row >= selections.size() || otherRow >= selections.size())
        return;
    selections.swapItemsAt(row, otherRow);
    const QSignalBlocker blocker(listWidget);
    QListWidgetItem* item = listWidget->takeItem(row);
    listWidget->insertItem(otherRow, item);
    listWidget->setCurrentRow(otherRow);
}
