// The workspace file as the explorer reads it: whatever bytes lie in a ".bq2-workspace" file. The
// folders it names are looked up in a scratch folder that holds a few real ones.
#include "FuzzInput.h"
#include "HostApplication.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "sidebar/WorkspaceTreeWidget.h"
#include "sidebar/WorkspaceView.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

namespace
{
QTemporaryDir* scratch = nullptr;
WorkspaceView* view = nullptr;
} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    static QTemporaryDir appDir;
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "fuzz_WorkspaceReader";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv);
    new HostApplication(true);
    ColorSettings::Initialize();
    scratch = new QTemporaryDir;
    // Relative names in the file resolve here: "scripts", "rigs/arm", "empty".
    QDir(scratch->path()).mkpath(QStringLiteral("scripts"));
    QDir(scratch->path()).mkpath(QStringLiteral("rigs/arm"));
    QDir(scratch->path()).mkpath(QStringLiteral("empty"));
    QFile script(scratch->filePath(QStringLiteral("scripts/tool.py")));
    if (script.open(QIODevice::WriteOnly))
        script.write("print('tool')\n");
    QDir::setCurrent(scratch->path());
    view = new WorkspaceView(new KeyBindings);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString path = scratch->filePath(QStringLiteral("fuzz.bq2-workspace"));
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    }
    Settings::workspaceFolders.clear();
    view->OpenWorkspace(path);
    // What the tree shows is real folders, each once.
    const auto* tree = view->findChild<WorkspaceTreeWidget*>();
    FUZZ_CHECK(tree);
    const QStringList folders = tree->GetTopLevelFolders();
    FUZZ_CHECK(QSet<QString>(folders.begin(), folders.end()).size() == folders.size());
    for (const QString& folder : folders)
        FUZZ_CHECK(QFileInfo(folder).isDir());
    return 0;
}
