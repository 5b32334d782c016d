// Running code, and the Python environment services of BrindletEditor.
#include "shell/BrindletEditor.h"

#include "editor/CodeEditor.h"
#include "plugin/Logger.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"
#include "tabs/CodeEditorGroup.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QMessageBox>

void BrindletEditor::Execute(ExecuteType type)
{
    // Running is tied to the editor that holds the keyboard focus, not to the active tab.
    auto* codeEditor = qobject_cast<CodeEditor*>(QApplication::focusWidget());
    if (!codeEditor)
        return;
    // Queued on the host's idle: it takes effect before code that is queued too, else after it.
    if (Settings::pythonRevertModuleStateOnExecute)
        MayaUtil::PythonRevertModuleState();

    QString text;
    switch (type)
    {
    case ExecuteType::All:
        text = codeEditor->GetText();
        break;
    case ExecuteType::Selection:
        text = codeEditor->GetSelectedTextForExecute();
        if (text.isEmpty())
            text = codeEditor->GetText();
        break;
    case ExecuteType::Line:
        text = codeEditor->GetCurrentLineForExecute();
        break;
    }
    if (text.isEmpty())
        return;
    if (Settings::saveAllOnExecute)
        SaveAll(true, true);

    if (codeEditor->GetLanguage() == CodeEditorLanguage::MEL)
        MayaUtil::ExecuteMelScript(text);
    else if (codeEditor->GetLanguage() == CodeEditorLanguage::PYTHON)
        MayaUtil::ExecutePythonScript(text);
}

void BrindletEditor::Execute()
{
    Execute(ExecuteType::Selection);
}

void BrindletEditor::ExecuteLine()
{
    Execute(ExecuteType::Line);
}

void BrindletEditor::ExecuteAll()
{
    Execute(ExecuteType::All);
}

bool BrindletEditor::IsPythonModuleStateUpdated() const
{
    return moduleStateUpdated;
}

void BrindletEditor::PythonUpdateModuleState()
{
    if (Settings::pythonConfirmOverwriteModuleState &&
        QMessageBox::question(this, QStringLiteral("Python Module State"),
                              QStringLiteral("Overwrite existing Python module state?"),
                              QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    MayaUtil::PythonUpdateModuleState();
    Logger::Info("Python module state updated.");
}

void BrindletEditor::PythonRevertModuleState()
{
    MayaUtil::PythonRevertModuleState();
    Logger::Info("Python module state reverted.");
}

void BrindletEditor::UpdatePythonRevertModuleStateOnExecute()
{
    Settings::pythonRevertModuleStateOnExecute = pythonRevertModuleStateOnExecuteAction->isChecked();
}

void BrindletEditor::OnTogglePythonRevertModuleStateOnExecuteRequested()
{
    pythonRevertModuleStateOnExecuteAction->toggle();
    UpdatePythonRevertModuleStateOnExecute();
}

void BrindletEditor::SourceScript()
{
    static QString selectedFilter = QStringLiteral("MEL (*.mel)");
    const QString path =
        QFileDialog::getOpenFileName(this, QStringLiteral("Source Script"), QString(),
                                     QStringLiteral("MEL (*.mel);;All Files(*.*)"), &selectedFilter);
    if (!path.isEmpty())
        MayaUtil::SourceScript(path);
}

void BrindletEditor::SaveScriptToShelf()
{
    CodeEditor* codeEditor = GetActiveCodeEditor();
    if (!codeEditor)
        return;
    QString text = codeEditor->GetSelectedTextForExecute();
    if (text.isEmpty())
        text = codeEditor->GetText();
    if (text.isEmpty())
        return;
    const QString name = QInputDialog::getText(
        this, QStringLiteral("New Shelf Item"), QStringLiteral("Enter name of new shelf item:"),
        QLineEdit::Normal, QString(), nullptr, Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    if (name.isEmpty())
        return;
    MayaUtil::SaveScriptToShelf(name, text, codeEditor->GetLanguage() == CodeEditorLanguage::MEL);
}

void BrindletEditor::PythonDirSelection()
{
    CodeEditor* codeEditor = GetActiveCodeEditor();
    if (!codeEditor || codeEditor->GetLanguage() != CodeEditorLanguage::PYTHON)
        return;
    // Unlike help(), dir() of nothing still answers: the names in scope.
    MayaUtil::ExecutePython(QStringLiteral("dir(%1)").arg(codeEditor->GetSelectedText()), true, false);
}

void BrindletEditor::PythonHelpSelection()
{
    CodeEditor* codeEditor = GetActiveCodeEditor();
    if (!codeEditor || codeEditor->GetLanguage() != CodeEditorLanguage::PYTHON)
        return;
    const QString selection = codeEditor->GetSelectedText();
    if (selection.isEmpty())
        return;
    MayaUtil::ExecutePython(QStringLiteral("help(%1)").arg(selection), true, false);
}

void BrindletEditor::PrintPythonPath()
{
    MayaUtil::PrintPythonPath();
}

void BrindletEditor::PrintPythonEnviron()
{
    MayaUtil::PrintPythonEnviron();
}

void BrindletEditor::PrintMayaEnvVarPaths()
{
    // The actions named after environment variables share this slot.
    if (auto* action = qobject_cast<QAction*>(sender()))
        MayaUtil::PrintMayaEnvVarPaths(action->text());
}

void BrindletEditor::ParseForcedImports()
{
    static const QRegularExpression forbidden(QStringLiteral("[:\\\\]"));
    Settings::pythonParsedForcedImports.clear();
    for (const QString& part : Settings::pythonForcedImports.split(QLatin1Char(';'), Qt::SkipEmptyParts))
    {
        const QString statement = part.trimmed();
        if (statement.isEmpty())
            continue;
        const bool wellFormed =
            (statement.startsWith(QLatin1String("import")) || statement.startsWith(QLatin1String("from"))) &&
            !forbidden.match(statement).hasMatch();
        if (!wellFormed || !MayaUtil::PythonExecStatement(statement))
        {
            Logger::Warning(QStringLiteral("Skipping invalid forced import: ") + statement);
            continue;
        }
        MayaUtil::ExecutePythonHidden(statement);
        Settings::pythonParsedForcedImports.append(statement);
    }
}
