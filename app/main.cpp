// brindlet-editor2: the editor in a substitute Maya session of its own, with Maya's start-up
// flags -batch and -command.
#include "HostApplication.h"
#include "editor/CodeEditor.h"
#include "plugin/PluginMain.h"
#include <QtCore/QStringList>
#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <cstdio>
#include <cstring>
#include <maya/MGlobal.h>
#include <maya/MQtUtil.h>

namespace
{
const char* const PLUGIN_NAME = "brindletEditor2";

struct Options
{
    bool batch = false;
    bool hasCommand = false;
    bool help = false;
    QString command;
};

// Batch mode needs no display, as in Maya: decided before the application object exists.
bool HasBatchFlag(int argc, char** argv)
{
    for (int index = 1; index < argc; ++index)
    {
        if (std::strcmp(argv[index], "-command") == 0)
            ++index; // its MEL may say anything
        else if (std::strcmp(argv[index], "-batch") == 0)
            return true;
    }
    return false;
}

void PrintUsage()
{
    std::printf("Usage: brindlet-editor2 [-batch] [-command \"<MEL>\"] [-help]\n"
                "\n"
                "  -batch            Run without a window: the plug-in loads, the command runs, the\n"
                "                    session quits. The exit code is 1 if the command failed.\n"
                "  -command <MEL>    MEL to run once the plug-in is loaded (and, with a window, once\n"
                "                    the editor is open).\n"
                "  -help             Show this text.\n");
}

// Maya's flags: one dash, whole words. Returns false on a flag it does not know.
bool ParseOptions(const QStringList& arguments, Options& options)
{
    for (int index = 1; index < arguments.size(); ++index)
    {
        const QString& argument = arguments.at(index);
        if (argument == QLatin1String("-batch"))
            options.batch = true;
        else if (argument == QLatin1String("-command") && index + 1 < arguments.size())
        {
            options.hasCommand = true;
            options.command = arguments.at(++index);
        }
        else if (argument == QLatin1String("-help") || argument == QLatin1String("--help"))
            options.help = true;
        else
        {
            std::fprintf(stderr, "brindlet-editor2: unknown or incomplete flag '%s'; try -help.\n",
                         qPrintable(argument));
            return false;
        }
    }
    return true;
}

bool RunStartupCommand(const Options& options)
{
    if (!options.hasCommand)
        return true;
    return MGlobal::executeCommand(MQtUtil::toMString(options.command), false, false) == MStatus::kSuccess;
}

int RunBatch(HostApplication& host, const Options& options)
{
    const bool succeeded = RunStartupCommand(options);
    // A "quit -f" of the command is queued: it runs here, or the session quits by itself.
    host.ProcessIdleQueue();
    if (!host.HasQuit())
        host.Quit();
    return succeeded ? 0 : 1;
}

// Hooks for tests of the program as a whole, which cannot reach into its widgets: text typed
// key by key into the editor that has the focus, and an answer to every message box.
const char* const TYPE_VARIABLE = "BRINDLET_EDITOR2_TEST_TYPE";
const char* const ANSWER_VARIABLE = "BRINDLET_EDITOR2_TEST_ANSWER";

CodeEditor* FocusedCodeEditor()
{
    if (auto* codeEditor = qobject_cast<CodeEditor*>(QApplication::focusWidget()))
        return codeEditor;
    for (QWidget* widget : QApplication::allWidgets())
    {
        auto* codeEditor = qobject_cast<CodeEditor*>(widget);
        if (codeEditor && codeEditor->isVisible())
            return codeEditor;
    }
    return nullptr;
}

void TypeTestText()
{
    const QString text = qEnvironmentVariable(TYPE_VARIABLE);
    if (text.isEmpty())
        return;
    CodeEditor* codeEditor = FocusedCodeEditor();
    // The editor shows once the event loop runs.
    if (!codeEditor)
    {
        QTimer::singleShot(100, TypeTestText);
        return;
    }
    for (const QChar c : text)
    {
        const bool newLine = c == QLatin1Char('\n');
        // Printable ASCII keys carry their upper-case code, as a keyboard gives them.
        const int key = newLine ? int(Qt::Key_Return) : c.unicode() < 128 ? int(c.toUpper().unicode()) : 0;
        const QString keyText = newLine ? QStringLiteral("\r") : QString(c);
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, keyText);
        QCoreApplication::sendEvent(codeEditor, &press);
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, keyText);
        QCoreApplication::sendEvent(codeEditor, &release);
    }
    std::printf("typed into %s:\n%s\n", qPrintable(codeEditor->GetFilePath()),
                codeEditor->GetText().toUtf8().toBase64().constData());
    std::fflush(stdout);
}

void AnswerMessageBoxes(QApplication& application)
{
    const QString answer = qEnvironmentVariable(ANSWER_VARIABLE);
    if (answer.isEmpty())
        return;
    auto* timer = new QTimer(&application);
    QObject::connect(timer, &QTimer::timeout, timer,
                     [answer]
                     {
                         auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                         if (!box)
                             return;
                         for (QAbstractButton* button : box->buttons())
                         {
                             if (button->text() != answer)
                                 continue;
                             std::printf("message box: %s\nanswered: %s\n", qPrintable(box->text()),
                                         qPrintable(answer));
                             std::fflush(stdout);
                             button->click();
                             return;
                         }
                     });
    timer->start(50);
}

int RunInteractive(QApplication& application, HostApplication& host, const Options& options)
{
    AnswerMessageBoxes(application);
    QObject::connect(&host, &HostApplication::QuitFinished, &application, &QCoreApplication::quit,
                     Qt::QueuedConnection);
    host.ShowMainWindow();
    MGlobal::executeCommand(MString(PLUGIN_NAME), false, false);
    TypeTestText();
    RunStartupCommand(options);
    if (host.HasQuit())
        return 0;
    application.exec();
    if (!host.HasQuit())
        host.Quit();
    return 0;
}
} // namespace

int main(int argc, char** argv)
{
    const bool batch = HasBatchFlag(argc, argv);
    if (batch && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("brindlet-editor2"));
    // The session ends by its own quit path, not because a window went away.
    QApplication::setQuitOnLastWindowClosed(false);

    Options options;
    if (!ParseOptions(QApplication::arguments(), options))
        return 1;
    if (options.help)
    {
        PrintUsage();
        return 0;
    }

    HostApplication host(options.batch);
    if (host.LoadPlugin(QString::fromLatin1(PLUGIN_NAME), initializePlugin, uninitializePlugin) !=
        MStatus::kSuccess)
    {
        std::fprintf(stderr, "brindlet-editor2: the plug-in failed to load.\n");
        host.Quit();
        return 1;
    }
    if (options.batch)
        return RunBatch(host, options);
    return RunInteractive(application, host, options);
}
