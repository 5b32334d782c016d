#include "ShellFixture.h"

#include "EditorWindow.h"
#include "TestFiles.h"
#include "editor/CodeEditor.h"
#include "plugin/MayaUtil.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "tabs/CodeEditorGroup.h"

#include <QtCore/QDir>
#include <QtCore/QSettings>

ShellFixture::ShellFixture(const QSize& size, bool active) : size(size), active(active) {}

BrindletEditor* ShellFixture::Open()
{
    return editor = EditorWindow::Open(*fixture, size, active);
}

CodeEditorGroup* ShellFixture::Active() const
{
    return EditorWindow::Active(*fixture);
}

CodeEditorGroup* ShellFixture::Group(int index) const
{
    return editor->GetCodeEditorGroupByIndex(index);
}

QString ShellFixture::NewFile(const QString& name, const QByteArray& bytes) const
{
    const QString path = QDir(files->path()).filePath(name);
    TestFiles::Write(path, bytes);
    return path;
}

void ShellFixture::Type(CodeEditor* codeEditor, const QString& text)
{
    QTextCursor cursor = codeEditor->textCursor();
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(text);
}

int ShellFixture::MelInt(const QString& command)
{
    int result = -1;
    return MayaUtil::ExecuteMelIntResult(command, result) ? result : -1;
}

int ShellFixture::PythonInt(const QString& expression)
{
    int result = -1;
    return MayaUtil::ExecutePythonIntResult(expression, result) ? result : -1;
}

void ShellFixture::WriteSetting(const QString& key, const QVariant& value, const QString& file)
{
    QSettings(Settings::GetUserConfigDirectory() + QLatin1Char('/') + file, QSettings::IniFormat)
        .setValue(key, value);
}

bool ShellFixture::Start()
{
    files = std::make_unique<QTemporaryDir>();
    fixture = std::make_unique<HostFixture>();
    return files->isValid() && fixture->LoadPlugin() == MStatus::kSuccess && (!openEditor || Open());
}

void ShellFixture::Stop()
{
    editor = nullptr;
    fixture.reset();
}
