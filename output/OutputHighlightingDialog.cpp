#include "output/OutputHighlightingDialog.h"

#include "settings/ColorSettings.h"
#include "widgets/ColorLabel.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QColorDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>

OutputHighlightingDialog::OutputHighlightingDialog(QWidget* parent)
    : QDialog(parent), defaultForeground(Qt::green),
      defaultBackground(ColorSettings::GetOutputFormat(ColorSettings::PLAIN_TEXT, false).background().color())
{
    ui.setupUi(this);
    CreateConnections();
    SetDefaults();
}

void OutputHighlightingDialog::CreateConnections()
{
    connect(ui.foregroundEnabledCB, SIGNAL(toggled(bool)), this, SLOT(UpdateDisplay()));
    connect(ui.backgroundEnabledCB, SIGNAL(toggled(bool)), this, SLOT(UpdateDisplay()));
    connect(ui.foregroundColor, SIGNAL(Clicked()), this, SLOT(SelectForegroundColor()));
    connect(ui.backgroundColor, SIGNAL(Clicked()), this, SLOT(SelectBackgroundColor()));
}

void OutputHighlightingDialog::SetDefaults()
{
    setWindowTitle(QStringLiteral("New Highlight"));
    ui.nameLineEdit->setText(QStringLiteral("Unnamed"));
    ui.matchLineEdit->clear();
    ui.regExpCB->setChecked(false);
    ui.foregroundColor->SetColor(defaultForeground);
    ui.foregroundEnabledCB->setChecked(true);
    ui.backgroundColor->SetColor(defaultBackground);
    ui.backgroundEnabledCB->setChecked(false);
    ui.enabledCB->setChecked(true);
    ui.highlightLineCB->setChecked(false);
    UpdateDisplay();
}

void OutputHighlightingDialog::SetSelectionProperties(const ExtraSelectionProperties& properties)
{
    setWindowTitle(QStringLiteral("Edit Highlight"));
    ui.nameLineEdit->setText(properties.name);
    ui.matchLineEdit->setText(properties.match);
    ui.regExpCB->setChecked(properties.regExp);
    // A colour that is switched off shows what the rule stored, or the default.
    const auto shown = [](bool enabled, const QColor& stored, const QColor& fallback)
    { return enabled || stored.isValid() ? stored : fallback; };
    ui.foregroundColor->SetColor(
        shown(properties.foregroundEnabled, properties.foreground, defaultForeground));
    ui.foregroundEnabledCB->setChecked(properties.foregroundEnabled);
    ui.backgroundColor->SetColor(
        shown(properties.backgroundEnabled, properties.background, defaultBackground));
    ui.backgroundEnabledCB->setChecked(properties.backgroundEnabled);
    ui.enabledCB->setChecked(properties.enabled);
    ui.highlightLineCB->setChecked(properties.highlightLine);
    UpdateDisplay();
}

ExtraSelectionProperties OutputHighlightingDialog::GetSelectionProperties() const
{
    const QColor foreground = ui.foregroundEnabledCB->isChecked() ? ui.foregroundColor->GetColor() : QColor();
    const QColor background = ui.backgroundEnabledCB->isChecked() ? ui.backgroundColor->GetColor() : QColor();
    return ExtraSelectionProperties(ui.nameLineEdit->text(), foreground, background, ui.matchLineEdit->text(),
                                    ui.regExpCB->isChecked(), ui.highlightLineCB->isChecked(),
                                    ui.enabledCB->isChecked());
}

void OutputHighlightingDialog::accept()
{
    QString problem;
    if (ui.nameLineEdit->text().isEmpty())
        problem = QStringLiteral("Name field is empty");
    else if (ui.matchLineEdit->text().isEmpty())
        problem = QStringLiteral("Text matching field is empty");
    if (!problem.isEmpty())
    {
        QMessageBox::warning(this, QStringLiteral("Warning"), problem, QMessageBox::Ok);
        return;
    }
    QDialog::accept();
}

void OutputHighlightingDialog::UpdateDisplay()
{
    ui.foregroundColor->setEnabled(ui.foregroundEnabledCB->isChecked());
    ui.backgroundColor->setEnabled(ui.backgroundEnabledCB->isChecked());
}

void OutputHighlightingDialog::SelectForegroundColor()
{
    SelectColor(ui.foregroundColor);
}

void OutputHighlightingDialog::SelectBackgroundColor()
{
    SelectColor(ui.backgroundColor);
}

void OutputHighlightingDialog::SelectColor(ColorLabel* label)
{
    const QColor color = QColorDialog::getColor(label->GetColor(), this);
    if (color.isValid())
        label->SetColor(color);
}
