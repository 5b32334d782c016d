#pragma once

#include "output/Ui_OutputHighlightingDialog.h"
#include "settings/ExtraSelectionProperties.h"

#include <QtGui/QColor>
#include <QtWidgets/QDialog>

// Edits one of the user's highlight rules of the output.
class OutputHighlightingDialog : public QDialog
{
    Q_OBJECT

public:
    explicit OutputHighlightingDialog(QWidget* parent = nullptr);

    ExtraSelectionProperties GetSelectionProperties() const;
    void SetSelectionProperties(const ExtraSelectionProperties& properties);
    void SetDefaults();

public slots:
    void accept() override;
    void UpdateDisplay();
    void SelectForegroundColor();
    void SelectBackgroundColor();

private:
    void CreateConnections();
    void SelectColor(ColorLabel* label);

    Ui_OutputHighlightingDialog ui;
    QColor defaultForeground;
    QColor defaultBackground;
};
