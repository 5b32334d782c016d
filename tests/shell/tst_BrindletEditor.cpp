#include "HostApplication.h"
#include "ShellFixture.h"
#include "output/PanelGroup.h"
#include "plugin/BrindletEditorCommand.h"
#include "plugin/MayaUtil.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "shell/StatusBar.h"
#include "sidebar/ActivityBar.h"
#include "sidebar/SideBar.h"
#include "tabs/CodeEditorGroup.h"
#include "widgets/FlatButton.h"

#include <QtGui/QAction>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QSplitter>

// The main widget opened as a user opens it, through the command in the substitute host.
class TestBrindletEditor : public ShellFixture
{
    Q_OBJECT

public:
    TestBrindletEditor() : ShellFixture(QSize(1200, 800)) {}

private:
    static int SideBarWidth(BrindletEditor* editor)
    {
        QSplitter* splitter = editor->GetSideBarSplitter();
        return splitter->sizes().value(splitter->indexOf(editor->GetSideBar()));
    }

    static QList<int> OutputSizes(BrindletEditor* editor) { return editor->GetOutputSplitter()->sizes(); }

    static void DragHandle(QSplitter* splitter, int distance)
    {
        QSplitterHandle* handle = splitter->handle(1);
        const QPoint end =
            splitter->orientation() == Qt::Horizontal ? QPoint(distance, 0) : QPoint(0, distance);
        QTest::mousePress(handle, Qt::LeftButton, Qt::NoModifier, QPoint(0, 0));
        QMouseEvent move(QEvent::MouseMove, QPointF(end), handle->mapToGlobal(QPointF(end)), Qt::LeftButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(handle, &move);
        QTest::mouseRelease(handle, Qt::LeftButton, Qt::NoModifier, end);
    }

private slots:
    void firstStartGivesOneMelAndOnePythonBuffer()
    {
        QCOMPARE(editor->GetCodeEditorGroupCount(), 3);
        QVERIFY(Group(0)->isVisible() && !Group(1)->isVisible() && !Group(2)->isVisible());
        QCOMPARE(editor->GetSideBarSplitter()->widget(0), editor->GetSideBar());
        QCOMPARE(editor->GetOutputSplitter()->widget(0), static_cast<QWidget*>(editor->GetPanelGroup()));
        QCOMPARE(editor->GetOutputSplitter()->orientation(), Qt::Vertical);
        QCOMPARE(editor->GetEditorGroupSplitter()->orientation(), Qt::Horizontal);
        QVERIFY(editor->windowTitle() == QStringLiteral("Brindlet Editor 2"));
        // The two buffers are files of their own in the preferences folder.
        const QStringList names = QDir(Settings::GetInternalBufferDirectoryPath()).entryList(QDir::Files);
        QCOMPARE(names.size(), 2);
        QCOMPARE(names.filter(QRegularExpression(QStringLiteral("^melBuffer_.{6}\\.mel$"))).size(), 1);
        QCOMPARE(names.filter(QRegularExpression(QStringLiteral("^pythonBuffer_.{6}\\.py$"))).size(), 1);
    }

    void sideBarTogglesAndComesBackAtAQuarter()
    {
        // The toggle remembers the size the side bar had.
        editor->GetSideBarSplitter()->setSizes({400, editor->width() - 400});
        const int width = SideBarWidth(editor);
        editor->ToggleSideBar();
        QVERIFY(!Settings::sideBarVisible);
        QCOMPARE(SideBarWidth(editor), 0);
        editor->ToggleSideBar();
        QVERIFY(Settings::sideBarVisible);
        QCOMPARE(SideBarWidth(editor), width);

        // Hidden at the end of a session, it starts hidden; with no size known in the new
        // session, the activity bar brings it back at a quarter of the width.
        editor->ToggleSideBar();
        editor->SaveState();
        fixture->Restart();
        QVERIFY(Open());
        QVERIFY(!Settings::sideBarVisible);
        QCOMPARE(SideBarWidth(editor), 0);
        QTest::mouseClick(editor->GetActivityBar()->GetViewButton(SideBarViewExplorer), Qt::LeftButton);
        QVERIFY(Settings::sideBarVisible);
        QCOMPARE(SideBarWidth(editor), editor->width() / 4);
        // The same button again closes it: the view is already shown.
        QTest::mouseClick(editor->GetActivityBar()->GetViewButton(SideBarViewExplorer), Qt::LeftButton);
        QVERIFY(!Settings::sideBarVisible);
    }

    void draggingAPanelToNothingClearsItsFlag()
    {
        // A press on the side bar's handle stores the sizes, read from the output splitter as they
        // always have been.
        QTest::mouseClick(editor->GetSideBarSplitter()->handle(1), Qt::LeftButton);
        QCOMPARE((QList<int>{Settings::sideBarSize, Settings::mainWindowSize}), OutputSizes(editor));
        QVERIFY(Settings::sideBarVisible);
        DragHandle(editor->GetSideBarSplitter(), -2000);
        QCOMPARE(SideBarWidth(editor), 0);
        QVERIFY(!Settings::sideBarVisible);
        DragHandle(editor->GetSideBarSplitter(), 300);
        QVERIFY(SideBarWidth(editor) > 0);
        QVERIFY(Settings::sideBarVisible);

        // The output panel sits first (top): dragging its handle up hides it.
        DragHandle(editor->GetOutputSplitter(), -2000);
        QVERIFY(!Settings::outputVisible);
        QVERIFY(Settings::codeEditorVisible);
    }

    void editorsAndOutputAreNeverBothHidden()
    {
        editor->ToggleOutput();
        QVERIFY(!Settings::outputVisible);
        QVERIFY(Settings::codeEditorVisible);
        editor->ToggleCodeEditor();
        QVERIFY(!Settings::codeEditorVisible);
        QVERIFY(Settings::outputVisible);
        QVERIFY(OutputSizes(editor).at(0) > 0 && OutputSizes(editor).at(1) == 0);
        editor->ToggleCodeEditor();
        QVERIFY(Settings::codeEditorVisible && Settings::outputVisible);
        QVERIFY(OutputSizes(editor).at(0) > 0 && OutputSizes(editor).at(1) > 0);
    }

    void barsGoWithTheirActions()
    {
        editor->GetToggleActivityBarAction()->trigger();
        QVERIFY(!editor->GetActivityBar()->isVisible());
        QCOMPARE(editor->GetToggleActivityBarAction()->text(), QStringLiteral("Show Activity Bar"));
        editor->GetToggleStatusBarAction()->trigger();
        QVERIFY(!editor->GetStatusBar()->isVisible());
        QCOMPARE(editor->GetToggleStatusBarAction()->text(), QStringLiteral("Show Status Bar"));
        editor->ToggleStatusBar();
        QVERIFY(editor->GetStatusBar()->isVisible());
        QCOMPARE(editor->GetToggleStatusBarAction()->text(), QStringLiteral("Hide Status Bar"));
    }

    void sideBarAndOutputMoveAndSurviveARestart()
    {
        editor->GetSideBarSplitter()->setSizes({300, 900});
        editor->ToggleSideBarPosition();
        QCOMPARE(editor->GetSideBarSplitter()->widget(1), editor->GetSideBar());
        QCOMPARE(SideBarWidth(editor), 300);
        QCOMPARE(editor->GetToggleSideBarPositionAction()->text(), QStringLiteral("Move Side Bar Left"));
        auto* central = qobject_cast<QHBoxLayout*>(
            editor->GetSideBarSplitter()->parentWidget()->layout()->itemAt(1)->layout());
        QVERIFY(central);
        QCOMPARE(central->itemAt(1)->widget(), editor->GetActivityBar());
        editor->ToggleSideBarPosition();
        QCOMPARE(central->itemAt(0)->widget(), editor->GetActivityBar());
        QCOMPARE(editor->GetToggleSideBarPositionAction()->text(), QStringLiteral("Move Side Bar Right"));

        editor->GetOutputSplitter()->setSizes({200, 500});
        const QList<int> before = OutputSizes(editor);
        editor->OutputPositionBottom();
        QCOMPARE(editor->GetOutputSplitter()->widget(1), static_cast<QWidget*>(editor->GetPanelGroup()));
        QCOMPARE(OutputSizes(editor), QList<int>({before.at(1), before.at(0)}));
        // The kept quirk: the side bar's action text follows the output's move.
        QCOMPARE(editor->GetToggleSideBarPositionAction()->text(), QStringLiteral("Move Side Bar Left"));
        editor->OutputPositionLeft();
        QCOMPARE(editor->GetOutputSplitter()->orientation(), Qt::Horizontal);
        QCOMPARE(editor->GetOutputSplitter()->widget(0), static_cast<QWidget*>(editor->GetPanelGroup()));
        editor->ToggleCodeEditorLayout();
        QCOMPARE(editor->GetEditorGroupSplitter()->orientation(), Qt::Vertical);

        editor->ToggleSideBarPosition();
        editor->OutputPositionRight();
        editor->ToggleStatusBar();
        editor->ToggleSideBar();
        editor->SaveState();
        const QString dir = Settings::GetUserConfigDirectory();
        for (const char* name :
             {"brindletEditor2.ini", "brindletEditor2_colors.ini", "brindletEditor2_bindings.ini"})
            QVERIFY2(QFile::exists(dir + QLatin1Char('/') + QLatin1String(name)), name);

        fixture->Restart();
        QVERIFY(Open());
        QCOMPARE(editor->GetSideBarSplitter()->widget(1), editor->GetSideBar());
        QCOMPARE(editor->GetOutputSplitter()->orientation(), Qt::Horizontal);
        QCOMPARE(editor->GetOutputSplitter()->widget(1), static_cast<QWidget*>(editor->GetPanelGroup()));
        QCOMPARE(editor->GetEditorGroupSplitter()->orientation(), Qt::Vertical);
        QVERIFY(!editor->GetStatusBar()->isVisible());
        QVERIFY(!Settings::sideBarVisible);
        QCOMPARE(SideBarWidth(editor), 0);
    }

    void stateIsWrittenAtQuit()
    {
        editor->ToggleCodeEditorLayout();
        const QString ini = Settings::GetUserConfigPath();
        QFile::remove(ini);
        // Nothing is modified: nothing is asked, and the editor goes.
        Settings::saveAllOnExit = false;
        QVERIFY(fixture->Host().Quit());
        QVERIFY(!BrindletEditorCommand::GuiAvailable());
        QSettings raw(ini, QSettings::IniFormat);
        QCOMPARE(raw.value(QStringLiteral("main/codeEditorOrientVertical")).toBool(), true);
    }

    void bindingsRoundTripAndDuplicatesAreDropped()
    {
        QVERIFY(fixture->UnloadPlugin() == MStatus::kSuccess);
        // Toggle Output comes first in the table, so it keeps Ctrl+B.
        WriteSetting(QStringLiteral("user_bindings/toggleOutput"), QStringList{QStringLiteral("Ctrl+B")},
                     QStringLiteral("brindletEditor2_bindings.ini"));
        fixture->Restart();
        QVERIFY(Open());
        KeyBindings* bindings = editor->GetKeyBindings();
        QCOMPARE(bindings->GetShortcut(KeySequenceType::ToggleOutput),
                 QKeySequence(QStringLiteral("Ctrl+B")));
        QCOMPARE(bindings->GetShortcut(KeySequenceType::ToggleSideBar), QKeySequence());
        QVERIFY(fixture->HasMessageContaining(
            QStringLiteral("Duplicate hotkey detected: Toggle Side Bar (Ctrl+B)")));

        const bool outputVisible = Settings::outputVisible;
        editor->activateWindow();
        QApplication::setActiveWindow(editor->window());
        editor->GetActiveCodeEditorGroup()->FocusCurrentCodeEditor();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_B, Qt::ControlModifier);
        QCOMPARE(Settings::outputVisible, !outputVisible);
    }

    void keysStopAtTheEditor()
    {
        QWidget* parent = editor->parentWidget();
        QVERIFY(parent);
        struct KeyCounter : QObject
        {
            int presses = 0;
            bool eventFilter(QObject*, QEvent* event) override
            {
                presses += event->type() == QEvent::KeyPress ? 1 : 0;
                return false;
            }
        } counter;
        parent->installEventFilter(&counter);
        QTest::keyClick(editor, Qt::Key_F7);
        QCOMPARE(counter.presses, 0);
        parent->removeEventFilter(&counter);
    }

    void bindingsFollowTheFocusWhenDocked()
    {
        QAction* toggleSideBar =
            editor->GetKeyBindings()->GetKeySequence(KeySequenceType::ToggleSideBar)->action;
        QVERIFY(toggleSideBar && !toggleSideBar->shortcuts().isEmpty());
        QVERIFY(fixture->Mel(QStringLiteral("workspaceControl -e -floating 0 %1")
                                 .arg(MayaUtil::workspaceControlName)) == MStatus::kSuccess);
        QVERIFY(!MayaUtil::WorkspaceControlFloating());

        QLineEdit outside(fixture->Host().MainWindow());
        outside.show();
        editor->OnApplicationFocusChanged(nullptr, &outside);
        QVERIFY(toggleSideBar->shortcuts().isEmpty());
        editor->OnApplicationFocusChanged(&outside, editor->GetActiveCodeEditorGroup());
        QVERIFY(!toggleSideBar->shortcuts().isEmpty());
    }
};

QTEST_MAIN(TestBrindletEditor)
#include "tst_BrindletEditor.moc"
