#pragma once

class ColorLabel;
class QCheckBox;
class QDialog;
class QDialogButtonBox;
class QLabel;
class QLineEdit;

// The form of the rule dialog: its widgets, each with its name as object name.
class Ui_OutputHighlightingDialog
{
public:
    void setupUi(QDialog* dialog);

    QLabel* nameLabel = nullptr;
    QLineEdit* nameLineEdit = nullptr;
    QLabel* matchLabel = nullptr;
    QLineEdit* matchLineEdit = nullptr;
    QCheckBox* regExpCB = nullptr;
    QLabel* foregroundLabel = nullptr;
    ColorLabel* foregroundColor = nullptr;
    QCheckBox* foregroundEnabledCB = nullptr;
    QLabel* backgroundLabel = nullptr;
    ColorLabel* backgroundColor = nullptr;
    QCheckBox* backgroundEnabledCB = nullptr;
    QLabel* enabledLabel = nullptr;
    QCheckBox* enabledCB = nullptr;
    QLabel* highlightLineLabel = nullptr;
    QCheckBox* highlightLineCB = nullptr;
    QDialogButtonBox* buttonBox = nullptr;
};
