#pragma once

#include <QtCore/QDir>
#include <QtWidgets/QDialog>

class QCheckBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

// Puts a file's path into the code at the cursor, absolute or relative to the buffer's own
// folder. It opens the file chooser by itself, so that picking a file takes one step.
class InsertPathDialog : public QDialog
{
    Q_OBJECT

public:
    InsertPathDialog(const QString& filePath, QWidget* parent = nullptr);

    QString GetPath() const;

    // The dialog's parts, for its owner's checks.
    QLineEdit* GetPathEdit() const { return pathEdit; }
    QLineEdit* GetPreviewEdit() const { return previewEdit; }
    QRadioButton* GetAbsoluteRadio() const { return absoluteRadio; }
    QRadioButton* GetRelativeRadio() const { return relativeRadio; }
    QPushButton* GetBrowseButton() const { return browseButton; }
    QPushButton* GetOkButton() const { return okButton; }
    QPushButton* GetCancelButton() const { return cancelButton; }

public slots:
    void UpdatePreview();
    void ShowOpenFileDialog();
    void accept() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    static QString& StartPath();

    QLineEdit* pathEdit = nullptr;
    QPushButton* browseButton = nullptr;
    QRadioButton* absoluteRadio = nullptr;
    QRadioButton* relativeRadio = nullptr;
    QCheckBox* forwardSlashesCheck = nullptr;
    QCheckBox* escapeCheck = nullptr;
    QLineEdit* previewEdit = nullptr;
    QPushButton* okButton = nullptr;
    QPushButton* cancelButton = nullptr;
    QDir baseDir;
};
