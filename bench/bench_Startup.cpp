// Start-up with 30 restored tabs of 2,000 lines each: the time from the plug-in's load to the
// editor shown, as a user waits for it after starting the host.
#include "HostApplication.h"
#include "plugin/BrindletEditorCommand.h"
#include "plugin/PluginMain.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"

#include <maya/MGlobal.h>

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cstdio>

namespace
{
constexpr int TAB_COUNT = 30;
constexpr int LINE_COUNT = 2000;
constexpr int RUNS = 7;

void WriteTabs(const QString& folder)
{
    QStringList details;
    for (int tab = 0; tab < TAB_COUNT; ++tab)
    {
        const bool python = tab % 2 == 0;
        const QString path =
            QDir(folder).filePath(QStringLiteral("file%1.%2").arg(tab).arg(python ? "py" : "mel"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return;
        for (int line = 0; line < LINE_COUNT; ++line)
        {
            file.write(python ? "def function_%1(value):  # a comment\n    return value * 2\n"
                              : "global proc proc_%1(string $value) { print($value + \"\\n\"); }\n");
        }
        details.append(QStringLiteral("%1;1;%2;%3;0;0").arg(tab % 3).arg(path).arg(tab < 3 ? 1 : 0));
    }
    QSettings ini(Settings::GetUserConfigPath(), QSettings::IniFormat);
    ini.setValue(QStringLiteral("tabs/tabDetails"), details);
}

double StartOnce()
{
    Settings::ResetToDefaults();
    BrindletEditorCommand::firstCall = true;
    HostApplication host(false);
    host.ShowMainWindow();
    QElapsedTimer timer;
    timer.start();
    host.LoadPlugin(QStringLiteral("brindletEditor2"), initializePlugin, uninitializePlugin);
    MGlobal::executeCommand(MString("brindletEditor2"));
    BrindletEditor* editor = BrindletEditorCommand::editorWidget;
    while (editor && !editor->isVisible())
        QCoreApplication::processEvents();
    if (editor && !QTest::qWaitForWindowExposed(editor->window()))
        return -1.0;
    const double milliseconds = static_cast<double>(timer.nsecsElapsed()) / 1.0e6;
    host.UnloadPlugin(QStringLiteral("brindletEditor2"));
    return editor ? milliseconds : -1.0;
}
} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QTemporaryDir appDir;
    QTemporaryDir files;
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    QApplication app(argc, argv);

    QList<double> times;
    for (int run = 0; run < RUNS; ++run)
    {
        {
            HostApplication host(false); // the prefs folder is the host's to answer
            WriteTabs(files.path());
        }
        times.append(StartOnce());
    }
    std::sort(times.begin(), times.end());
    std::printf("start-up with %d tabs of %d lines: median %.1f ms, best %.1f ms, worst %.1f ms (%d runs)\n",
                TAB_COUNT, LINE_COUNT, times.at(RUNS / 2), times.first(), times.last(), RUNS);
    return times.first() < 0 ? 1 : 0;
}
