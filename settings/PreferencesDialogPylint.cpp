#include "settings/PreferencesDialog.h"

#include "plugin/Logger.h"
#include "settings/Settings.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>

namespace
{
constexpr int GENERATE_WAIT_MS = 5000;
const QString PYLINT_TITLE = QStringLiteral("Pylint");
} // namespace

void PreferencesDialog::ResetPylint()
{
    pylintExecutablePathLE->setText(Settings::pylintPath);
    pylintPythonHomePathLE->setText(Settings::pylintPythonHomePath);
    pylintConfigPathLE->setText(Settings::pylintConfigPath);
    pylintAdditionalPythonPathsLE->setText(Settings::pylintAdditionalPythonPaths);
}

void PreferencesDialog::ApplyPylint()
{
    Settings::pylintPath = pylintExecutablePathLE->text().trimmed();
    Settings::pylintPythonHomePath = pylintPythonHomePathLE->text().trimmed();
    Settings::pylintConfigPath = pylintConfigPathLE->text().trimmed();
    QString additional = pylintAdditionalPythonPathsLE->text();
    while (additional.endsWith(Settings::PATH_SEP))
        additional.chop(1);
    Settings::pylintAdditionalPythonPaths = additional;
    pylintAdditionalPythonPathsLE->setText(additional);
}

void PreferencesDialog::GeneratePylintConfig()
{
    const QString pylintPath = pylintExecutablePathLE->text().trimmed();
    if (pylintPath.isEmpty())
    {
        QMessageBox::warning(this, PYLINT_TITLE, QStringLiteral("The path to the Pylint executable is not set."));
        return;
    }
    const QString target = QStringLiteral("%1/pylintrc").arg(Settings::GetUserConfigDirectory());
    if (QFileInfo::exists(target) &&
        QMessageBox::question(this, QStringLiteral("Overwrite config"), QStringLiteral("Overwrite existing pylintrc file?"),
                              QMessageBox::Yes | QMessageBox::No, QMessageBox::No) != QMessageBox::Yes)
        return;

    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PYTHONPATH"), Settings::pylintPythonPath);
    const QString pythonHome = pylintPythonHomePathLE->text().trimmed();
    if (!pythonHome.isEmpty())
        environment.insert(QStringLiteral("PYTHONHOME"), pythonHome);
    process.setProcessEnvironment(environment);
    process.start(pylintPath, {QStringLiteral("--generate-rcfile")});
    const bool finished = process.waitForFinished(GENERATE_WAIT_MS);
    if (finished && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
    {
        QFile file(target);
        if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            file.write(process.readAllStandardOutput());
        else
            Logger::Error("Failed to write pylintrc");
        pylintConfigPathLE->setText(target);
        return;
    }
    if (!finished)
        process.kill();
    const QString errors = QString::fromUtf8(process.readAllStandardError()).trimmed();
    Logger::Error(errors.isEmpty() ? process.errorString() : errors);
    QMessageBox::warning(this, PYLINT_TITLE, QStringLiteral("Failed to generate pylintrc"));
}

void PreferencesDialog::SelectPylintPath()
{
    const QString path = QFileDialog::getOpenFileName(this, QStringLiteral("Select pylint executable"),
                                                      pylintExecutablePathLE->text());
    if (!path.isEmpty())
        pylintExecutablePathLE->setText(path);
}

void PreferencesDialog::SelectPylintConfigPath()
{
    const QString path = QFileDialog::getOpenFileName(this, QStringLiteral("Select pylintrc"), pylintConfigPathLE->text());
    if (!path.isEmpty())
        pylintConfigPathLE->setText(path);
}
