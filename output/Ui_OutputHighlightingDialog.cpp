#include "output/Ui_OutputHighlightingDialog.h"

#include "widgets/ColorLabel.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDialog>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

namespace
{
template <typename T> T* Named(T* widget, const char* name)
{
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QHBoxLayout* ColorRow(ColorLabel* color, QCheckBox* enabled)
{
    auto* row = new QHBoxLayout();
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(color);
    row->addWidget(enabled);
    row->addStretch();
    return row;
}
} // namespace

void Ui_OutputHighlightingDialog::setupUi(QDialog* dialog)
{
    dialog->setObjectName(QStringLiteral("OutputHighlightingDialog"));
    nameLabel = Named(new QLabel(QStringLiteral("Name:"), dialog), "nameLabel");
    nameLineEdit = Named(new QLineEdit(dialog), "nameLineEdit");
    matchLabel = Named(new QLabel(QStringLiteral("Text Matching:"), dialog), "matchLabel");
    matchLineEdit = Named(new QLineEdit(dialog), "matchLineEdit");
    regExpCB = Named(new QCheckBox(QStringLiteral("RegExp"), dialog), "regExpCB");
    foregroundLabel = Named(new QLabel(QStringLiteral("Foreground:"), dialog), "foregroundLabel");
    foregroundColor = Named(new ColorLabel(dialog), "foregroundColor");
    foregroundColor->setFixedSize(71, 16);
    foregroundEnabledCB = Named(new QCheckBox(dialog), "foregroundEnabledCB");
    backgroundLabel = Named(new QLabel(QStringLiteral("Background:"), dialog), "backgroundLabel");
    backgroundColor = Named(new ColorLabel(dialog), "backgroundColor");
    backgroundColor->setFixedSize(71, 16);
    backgroundEnabledCB = Named(new QCheckBox(dialog), "backgroundEnabledCB");
    enabledLabel = Named(new QLabel(QStringLiteral("Enabled:"), dialog), "enabledLabel");
    enabledCB = Named(new QCheckBox(dialog), "enabledCB");
    highlightLineLabel = Named(new QLabel(QStringLiteral("Highlight Line"), dialog), "highlightLineLabel");
    highlightLineCB = Named(new QCheckBox(dialog), "highlightLineCB");
    buttonBox =
        Named(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog), "buttonBox");

    auto* grid = new QGridLayout();
    grid->addWidget(nameLabel, 0, 0);
    grid->addWidget(nameLineEdit, 0, 1, 1, 2);
    grid->addWidget(matchLabel, 1, 0);
    grid->addWidget(matchLineEdit, 1, 1);
    grid->addWidget(regExpCB, 1, 2);
    grid->addWidget(foregroundLabel, 2, 0);
    grid->addLayout(ColorRow(foregroundColor, foregroundEnabledCB), 2, 1, 1, 2);
    grid->addWidget(backgroundLabel, 3, 0);
    grid->addLayout(ColorRow(backgroundColor, backgroundEnabledCB), 3, 1, 1, 2);
    grid->addWidget(enabledLabel, 4, 0);
    grid->addWidget(enabledCB, 4, 1, 1, 2);
    grid->addWidget(highlightLineLabel, 5, 0);
    grid->addWidget(highlightLineCB, 5, 1, 1, 2);

    auto* layout = new QVBoxLayout(dialog);
    layout->addLayout(grid);
    layout->addStretch();
    layout->addWidget(buttonBox);

    QObject::connect(buttonBox, SIGNAL(accepted()), dialog, SLOT(accept()));
    QObject::connect(buttonBox, SIGNAL(rejected()), dialog, SLOT(reject()));
}
