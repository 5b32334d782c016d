#include "widgets/InsertPathDialog.h"

#include "plugin/MayaUtil.h"
#include "settings/Settings.h"

#include <QtCore/QFileInfo>
#include <QtCore/QTimer>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <QtWidgets/QVBoxLayout>

InsertPathDialog::InsertPathDialog(const QString& filePath, QWidget* parent)
    : QDialog(parent), baseDir(QFileInfo(filePath).absoluteDir())
{
    // A buffer without any path has no folder of its own; the working directory would be an
    // accident of how Maya was started, so relative paths start where the chooser does.
    if (filePath.isEmpty())
        baseDir = QDir(StartPath());
    setWindowTitle(QStringLiteral("Insert Path"));
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    setMinimumSize(500, 180);
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    UpdatePreview();
}

QString& InsertPathDialog::StartPath()
{
    // Survives the dialog, so that the chooser opens where the last file was taken.
    static QString startPath = MayaUtil::GetUserScriptsDirectory();
    return startPath;
}

void InsertPathDialog::CreateWidgets()
{
    pathEdit = new QLineEdit(this);
    browseButton = new QPushButton(QStringLiteral("..."), this);
    browseButton->setFixedSize(36, 20);
    absoluteRadio = new QRadioButton(QStringLiteral("Absolute"), this);
    relativeRadio = new QRadioButton(QStringLiteral("Relative"), this);
    (Settings::insertPathAbsolute ? absoluteRadio : relativeRadio)->setChecked(true);

    // The separator choices stay in force from the settings, but nobody changes them here.
    forwardSlashesCheck = new QCheckBox(QStringLiteral("Use forward slashes"), this);
    forwardSlashesCheck->setChecked(Settings::insertPathForwardSlashes);
    forwardSlashesCheck->setEnabled(false);
    forwardSlashesCheck->hide();
    escapeCheck = new QCheckBox(QStringLiteral("Escape backslashes"), this);
    escapeCheck->setChecked(Settings::insertPathEscapeBackslashes);
    escapeCheck->setEnabled(false);
    escapeCheck->hide();

    previewEdit = new QLineEdit(this);
    previewEdit->setReadOnly(true);
    okButton = new QPushButton(QStringLiteral("OK"), this);
    okButton->setDefault(true);
    cancelButton = new QPushButton(QStringLiteral("Cancel"), this);
}

void InsertPathDialog::CreateLayout()
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->setSpacing(2);
    layout->addWidget(new QLabel(QStringLiteral("Path:"), this));

    auto* pathLayout = new QHBoxLayout();
    pathLayout->setSpacing(4);
    pathLayout->addWidget(pathEdit);
    pathLayout->addWidget(browseButton);
    layout->addLayout(pathLayout);
    layout->addSpacing(8);

    auto* radioLayout = new QHBoxLayout();
    radioLayout->addWidget(absoluteRadio);
    radioLayout->addWidget(relativeRadio);
    radioLayout->addStretch();
    layout->addLayout(radioLayout);

    auto* checkLayout = new QHBoxLayout();
    checkLayout->addWidget(forwardSlashesCheck);
    checkLayout->addWidget(escapeCheck);
    checkLayout->addStretch();
    layout->addLayout(checkLayout);
    layout->addSpacing(8);

    layout->addWidget(new QLabel(QStringLiteral("Preview:"), this));
    layout->addWidget(previewEdit);
    layout->addSpacing(8);

    auto* buttonLayout = new QHBoxLayout();
    buttonLayout->setSpacing(4);
    buttonLayout->addStretch();
    buttonLayout->addWidget(okButton);
    buttonLayout->addWidget(cancelButton);
    layout->addLayout(buttonLayout);
    layout->addStretch();
}

void InsertPathDialog::CreateConnections()
{
    connect(pathEdit, SIGNAL(textChanged(QString)), this, SLOT(UpdatePreview()));
    connect(absoluteRadio, SIGNAL(clicked()), this, SLOT(UpdatePreview()));
    connect(relativeRadio, SIGNAL(clicked()), this, SLOT(UpdatePreview()));
    connect(forwardSlashesCheck, SIGNAL(clicked()), this, SLOT(UpdatePreview()));
    connect(escapeCheck, SIGNAL(clicked()), this, SLOT(UpdatePreview()));
    connect(browseButton, SIGNAL(clicked()), this, SLOT(ShowOpenFileDialog()));
    connect(okButton, SIGNAL(clicked()), this, SLOT(accept()));
    connect(cancelButton, SIGNAL(clicked()), this, SLOT(close()));
}

QString InsertPathDialog::GetPath() const
{
    return previewEdit->text();
}

void InsertPathDialog::UpdatePreview()
{
    const QString text = pathEdit->text();
    if (text.isEmpty())
    {
        previewEdit->clear();
        return;
    }
    // A relative text is read against the buffer's folder, not the working directory.
    QFileInfo info(text);
    if (info.isRelative())
        info = QFileInfo(QStringLiteral("%1/%2").arg(baseDir.absolutePath(), text));
    QString result = info.absoluteFilePath();
    if (relativeRadio->isChecked())
        result = baseDir.relativeFilePath(result);
    if (!forwardSlashesCheck->isChecked())
        result.replace(QLatin1Char('/'),
                       escapeCheck->isChecked() ? QStringLiteral("\\\\") : QStringLiteral("\\"));
    previewEdit->setText(result);
}

void InsertPathDialog::ShowOpenFileDialog()
{
    QString& startPath = StartPath();
    const QString text = pathEdit->text();
    QFileInfo current(text);
    if (current.isRelative())
        current = QFileInfo(QStringLiteral("%1/%2").arg(baseDir.absolutePath(), text));
    if (!text.isEmpty() && current.exists())
        startPath = current.isDir() ? current.absoluteFilePath() : current.absolutePath();

    const QString path = QFileDialog::getOpenFileName(this, QStringLiteral("Open File"), startPath);
    if (path.isEmpty())
        return;
    pathEdit->setText(path);
    startPath = QFileInfo(path).absolutePath();
}

void InsertPathDialog::accept()
{
    Settings::insertPathAbsolute = absoluteRadio->isChecked();
    Settings::insertPathForwardSlashes = forwardSlashesCheck->isChecked();
    Settings::insertPathEscapeBackslashes = escapeCheck->isChecked();
    QDialog::accept();
}

void InsertPathDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    QTimer::singleShot(200, this, SLOT(ShowOpenFileDialog()));
}
