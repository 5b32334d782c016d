// The plug-in as Maya loads it: one shared object holding the whole product library, opened with
// dlopen, its entry points found by name. Static initialisation then runs in the library's own
// order, which is where a static built from another file's static goes wrong.
#include "HostApplication.h"
#include "HostPlugins.h"

#include <maya/MCommandResult.h>
#include <maya/MGlobal.h>
#include <maya/MQtUtil.h>

#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>
#include <QtWidgets/QWidget>

#include <dlfcn.h>
#include <memory>

namespace
{
const QString PLUGIN_NAME = QStringLiteral("brindletEditor2");
const QString CONTROL_NAME = QStringLiteral("BrindletEditor2Window");

MStatus Mel(const QString& command)
{
    const MStatus status = MGlobal::executeCommand(MQtUtil::toMString(command));
    QCoreApplication::processEvents();
    return status;
}

int MelInt(const QString& command)
{
    int value = -1;
    return MGlobal::executeCommand(MQtUtil::toMString(command), value) == MStatus::kSuccess ? value : -1;
}

// The editor's main widget inside the control, found by its class as the host sees it.
QWidget* Editor()
{
    QWidget* control = MQtUtil::findControl(MQtUtil::toMString(CONTROL_NAME));
    const auto children = control ? control->findChildren<QWidget*>() : QList<QWidget*>();
    for (QWidget* child : children)
    {
        if (QByteArray(child->metaObject()->className()) == "BrindletEditor")
            return child;
    }
    return nullptr;
}
} // namespace

class tst_SharedObjectLoad : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(appDir.isValid());
        qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
        host = std::make_unique<HostApplication>(false);
        host->ShowMainWindow();
        library = dlopen(BQ2_PLUGIN_FILE, RTLD_NOW | RTLD_LOCAL);
        QVERIFY2(library, dlerror());
    }

    void entryPointsAreFoundByName()
    {
        const auto initialize = reinterpret_cast<HostPluginEntry>(dlsym(library, "initializePlugin"));
        const auto uninitialize = reinterpret_cast<HostPluginEntry>(dlsym(library, "uninitializePlugin"));
        QVERIFY(initialize && uninitialize);
        QCOMPARE(host->LoadPlugin(PLUGIN_NAME, initialize, uninitialize), MStatus::kSuccess);
        QVERIFY(HostPlugins::Commands().contains(PLUGIN_NAME));
    }

    void openingCreatesTheControlByItsName()
    {
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -exists %1").arg(CONTROL_NAME)), 0);
        QCOMPARE(Mel(PLUGIN_NAME), MStatus::kSuccess);
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -exists %1").arg(CONTROL_NAME)), 1);
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -visible %1").arg(CONTROL_NAME)), 1);
        QVERIFY(Editor() && Editor()->isVisible());
        // Maya runs the command through the control's script when it restores the panel.
        MString uiScript;
        QCOMPARE(MGlobal::executeCommand(
                     MQtUtil::toMString(QStringLiteral("workspaceControl -q -uiScript %1").arg(CONTROL_NAME)),
                     uiScript),
                 MStatus::kSuccess);
        QCOMPARE(MQtUtil::toQString(uiScript), PLUGIN_NAME);
    }

    void closingHidesAndOpeningShowsTheSameEditor()
    {
        QWidget* editor = Editor();
        QVERIFY(editor);
        QCOMPARE(Mel(QStringLiteral("workspaceControl -e -close %1").arg(CONTROL_NAME)), MStatus::kSuccess);
        QVERIFY(!editor->isVisible());
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -visible %1").arg(CONTROL_NAME)), 0);
        QCOMPARE(Mel(PLUGIN_NAME), MStatus::kSuccess);
        QCOMPARE(MelInt(QStringLiteral("workspaceControl -q -visible %1").arg(CONTROL_NAME)), 1);
        QCOMPARE(Editor(), editor);
        QVERIFY(editor->isVisible());
    }

    void unloadingTakesTheEditorAway()
    {
        QCOMPARE(host->UnloadPlugin(PLUGIN_NAME), MStatus::kSuccess);
        QCoreApplication::processEvents();
        QVERIFY(!HostPlugins::Commands().contains(PLUGIN_NAME));
        QVERIFY(!Editor());
        QVERIFY(Mel(PLUGIN_NAME) != MStatus::kSuccess);
    }

    void cleanupTestCase()
    {
        host.reset();
        if (library)
            dlclose(library);
    }

private:
    QTemporaryDir appDir;
    std::unique_ptr<HostApplication> host;
    void* library = nullptr;
};

QTEST_MAIN(tst_SharedObjectLoad)
#include "SharedObjectLoad.moc"
