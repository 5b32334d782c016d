// The editor command's flags and its panel while an editor is open.
#include "EditorWindow.h"
#include "HostApplication.h"
#include "HostFixture.h"
#include "TestFiles.h"
#include "plugin/BrindletEditorCommand.h"
#include "plugin/MayaUtil.h"
#include "shell/BrindletEditor.h"
#include "tabs/CodeEditorGroup.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

class TestEditorCommand : public QObject
{
    Q_OBJECT

private:
    static int Collapsed()
    {
        int collapsed = -1;
        MayaUtil::ExecuteMelIntResult(
            QStringLiteral("workspaceControl -q -collapse %1").arg(MayaUtil::workspaceControlName),
            collapsed);
        return collapsed;
    }

    static bool PythonHas(const QString& module)
    {
        int loaded = -1;
        MayaUtil::ExecutePythonIntResult(QStringLiteral("int('%1' in sys.modules)").arg(module), loaded);
        return loaded == 1;
    }

private slots:
    void firstCallLeavesARestoredCollapsedPanelCollapsed()
    {
        // Runs first: the first call is once per session of the host.
        HostFixture fixture;
        QVERIFY(fixture.LoadPlugin() == MStatus::kSuccess);
        // As Maya restores the panel from its layout before anybody runs the command.
        QVERIFY(fixture.Mel(QStringLiteral("workspaceControl -collapse true %1")
                                .arg(MayaUtil::workspaceControlName)) == MStatus::kSuccess);
        QCOMPARE(Collapsed(), 1);
        QVERIFY(fixture.OpenEditor());
        QCOMPARE(Collapsed(), 1);
        QVERIFY(BrindletEditorCommand::GuiAvailable());
        // Every later call brings it back.
        QVERIFY(fixture.OpenEditor());
        QCOMPARE(Collapsed(), 0);
        fixture.Mel(
            QStringLiteral("workspaceControl -e -collapse true %1").arg(MayaUtil::workspaceControlName));
        QVERIFY(fixture.OpenEditor());
        QCOMPARE(Collapsed(), 0);
    }

    void openFileWithAnEditorOpen()
    {
        HostFixture fixture;
        QVERIFY(fixture.LoadPlugin() == MStatus::kSuccess);
        QVERIFY(EditorWindow::Open(fixture));
        QTemporaryDir dir;
        const QString path = QDir(dir.path()).filePath(QStringLiteral("opened by command.py"));
        QVERIFY(TestFiles::Write(path, "x = 1\n"));
        QVERIFY(fixture.Mel(QStringLiteral("brindletEditor2 -openFile \"%1\"").arg(path)) ==
                MStatus::kSuccess);
        CodeEditorGroup* group = EditorWindow::Active(fixture);
        QCOMPARE(group->GetCount(), 3);
        QCOMPARE(group->GetFilePath(group->GetCurrentIndex()), path);
        QCOMPARE(group->GetText(group->GetCurrentIndex()), QStringLiteral("x = 1\n"));
        // A second call shows the same tab rather than a copy.
        QVERIFY(fixture.Mel(QStringLiteral("brindletEditor2 -of \"%1\"").arg(path)) == MStatus::kSuccess);
        QCOMPARE(fixture.Editor()->GetCodeEditorCount(), 3);
    }

    void revertModuleStateWithAnEditorOpen()
    {
        HostFixture fixture;
        QVERIFY(fixture.LoadPlugin() == MStatus::kSuccess);
        QVERIFY(EditorWindow::Open(fixture));
        // The first show took the snapshot of the loaded modules.
        fixture.Host().ProcessIdleQueue();
        QVERIFY(fixture.Editor()->IsPythonModuleStateUpdated());
        MayaUtil::ExecutePython(QStringLiteral("import sys\nsys.modules.pop('fractions', None)"));
        MayaUtil::ExecutePython(QStringLiteral("import fractions"));
        QVERIFY(PythonHas(QStringLiteral("fractions")));
        fixture.ClearMessages();
        QVERIFY(fixture.Mel(QStringLiteral("brindletEditor2 -revertModuleState")) == MStatus::kSuccess);
        fixture.Host().ProcessIdleQueue();
        QVERIFY(!PythonHas(QStringLiteral("fractions")));
        QVERIFY(PythonHas(QStringLiteral("sys")));
        QVERIFY(fixture.HasMessageContaining(QStringLiteral("Python module state reverted.")));
    }
};

QTEST_MAIN(TestEditorCommand)
#include "tst_EditorCommand.moc"
