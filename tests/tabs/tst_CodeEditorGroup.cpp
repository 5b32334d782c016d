#include "HostFixture.h"
#include "TestFiles.h"
#include "editor/CodeEditor.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "tabs/CodeEditorGroup.h"
#include "tabs/CodeEditorGroupTabBar.h"
#include "widgets/FlatButton.h"
#include "widgets/OverlayWidget.h"

#include <maya/MCommandMessage.h>

#include <QtCore/QMimeData>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtGui/QClipboard>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QDropEvent>
#include <QtTest/QtTest>
#include <QtWidgets/QMenu>
#include <QtWidgets/QStackedWidget>

#include <algorithm>
#include <memory>

#include "DragSimulation.h"

namespace
{

CodeEditorProperties Properties(const QString& label, CodeEditorLanguage language = CodeEditorLanguage::MEL,
                                CodeEditorType type = CodeEditorType::INTERNAL_BUFFER)
{
    CodeEditorProperties properties;
    properties.type = type;
    properties.language = language;
    properties.filePath = QStringLiteral("/scripts/") + label;
    properties.label = label;
    return properties;
}

QStringList Labels(const CodeEditorGroup& group)
{
    QStringList labels;
    for (int i = 0; i < group.GetCount(); ++i)
        labels.append(group.GetLabel(i));
    return labels;
}

// The parser's class is not complete here; its pointer is read as what it is, an address.
bool IsNullPointer(const QVariant& pointer)
{
    return *static_cast<void* const*>(pointer.constData()) == nullptr;
}

QAction* FindAction(const QMenu* menu, const QString& text)
{
    for (QAction* action : menu->actions())
    {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}
} // namespace

class TestCodeEditorGroup : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<KeyBindings> keyBindings;
    std::unique_ptr<CodeEditorGroup> group;

    CodeEditorGroupTabBar* TabBar() const { return group->findChild<CodeEditorGroupTabBar*>(); }
    FlatButton* Button(const char* name) const { return group->findChild<FlatButton*>(QLatin1String(name)); }

    // A shown group with the owner's preferences applied and one tab per label.
    std::unique_ptr<CodeEditorGroup> MakeGroup(int id, const QStringList& labels, int width = 600)
    {
        auto made = std::make_unique<CodeEditorGroup>(id, keyBindings.get());
        made->UpdatePreferences();
        made->UpdateFontsAndColors();
        for (const QString& label : labels)
            made->InsertCodeEditor(-1, Properties(label), QStringLiteral("text of ") + label);
        made->resize(width, 300);
        made->show();
        if (!QTest::qWaitForWindowExposed(made.get()))
            return nullptr;
        return made;
    }

private slots:
    void initTestCase()
    {
        fixture = std::make_unique<HostFixture>();
        ColorSettings::Initialize();
        keyBindings = std::make_unique<KeyBindings>();
    }

    void cleanupTestCase()
    {
        keyBindings.reset();
        fixture.reset();
    }

    void init()
    {
        Settings::ResetToDefaults();
        fixture->ClearMessages();
    }

    void cleanup() { group.reset(); }

    void tabsAndStackStayInStep()
    {
        group = MakeGroup(1, {QStringLiteral("a.mel"), QStringLiteral("b.mel")});
        QVERIFY(group);
        CodeEditorProperties file =
            Properties(QStringLiteral("c.py"), CodeEditorLanguage::PYTHON, CodeEditorType::FILE);
        auto* editor = new CodeEditor(file, keyBindings.get());
        QCOMPARE(group->InsertCodeEditor(0, editor), 0);
        QCOMPARE(group->GetCodeEditor(0), editor);
        QCOMPARE(Labels(*group), (QStringList{"c.py", "a.mel", "b.mel"}));
        CodeEditorGroupTabBar* bar = TabBar();
        QCOMPARE(bar->Count(), 3);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(bar->GetTabText(i), group->GetLabel(i));
        QCOMPARE(bar->GetLanguage(0), CodeEditorLanguage::PYTHON);
        QCOMPARE(bar->GetData(0).toInt(), 1);
        QCOMPARE(bar->GetTabToolTip(0).section(QLatin1Char('\n'), 0, 0), file.filePath);
        QCOMPARE(bar->GetTabToolTip(1), QStringLiteral("a.mel"));
        QCOMPARE(group->GetCodeEditorIndex(file.filePath), 0);

        // The current editor is the one of the current tab, whichever way the tab changes.
        QCOMPARE(group->GetCurrent(), group->GetCodeEditor(group->GetCurrentIndex()));
        QSignalSpy changed(group.get(), &CodeEditorGroup::CurrentTabChanged);
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->GetTabRect(2).center());
        QCOMPARE(group->GetCurrentIndex(), 2);
        QCOMPARE(group->GetCurrent(), group->GetCodeEditor(2));
        QVERIFY(group->GetCurrent()->isVisible());
        QCOMPARE(changed.count(), 1);

        group->RemoveCodeEditor(0);
        QCOMPARE(group->GetCurrent(), group->GetCodeEditor(group->GetCurrentIndex()));
        QCOMPARE(group->GetCurrent()->GetLabel(), QStringLiteral("b.mel"));
        const int changesBefore = changed.count();
        group->DeleteCodeEditor(group->GetCurrentIndex());
        QVERIFY(changed.count() > changesBefore);
        QCOMPARE(Labels(*group), QStringList{"a.mel"});
        QCOMPARE(group->GetCurrent(), group->GetCodeEditor(0));
        QCOMPARE(bar->Count(), 1);
        delete editor;
    }

    void countMismatchIsReportedAndChangesNothing()
    {
        group = MakeGroup(0, {QStringLiteral("a.mel")});
        QVERIFY(group);
        group->findChild<QStackedWidget*>(QStringLiteral("codeEditorStack"))->addWidget(new QWidget);
        QCOMPARE(group->InsertCodeEditor(-1, Properties(QStringLiteral("b.mel")), QString()), -1);
        QCOMPARE(group->RemoveCodeEditor(0), nullptr);
        group->DeleteCodeEditor(0);
        QCOMPARE(TabBar()->Count(), 1);
        const QStringList errors = fixture->MessagesOfType(MCommandMessage::kError);
        for (const char* text : {"Failed to insert code editor. Tab and code editor count mismatch.",
                                 "Failed to remove code editor. Tab and code editor count mismatch.",
                                 "Failed to delete code editor. Tab and code editor count mismatch."})
        {
            const QString expected = QString::fromLatin1(text);
            QVERIFY2(std::any_of(errors.cbegin(), errors.cend(),
                                 [&](const QString& error) { return error.contains(expected); }),
                     text);
        }
    }

    void movedEditorTalksOnlyToItsNewGroup()
    {
        group = MakeGroup(0, {QStringLiteral("a.mel"), QStringLiteral("b.mel")});
        std::unique_ptr<CodeEditorGroup> other = MakeGroup(1, {QStringLiteral("c.mel")});
        QVERIFY(group && other);
        CodeEditor* moved = group->GetCodeEditor(1);
        other->MoveCodeEditor(group.get(), 1, 0);
        QCOMPARE(Labels(*group), QStringList{"a.mel"});
        QCOMPARE(Labels(*other), (QStringList{"b.mel", "c.mel"}));
        QCOMPARE(other->GetCodeEditor(0), moved);

        QSignalSpy oldExecute(group.get(), &CodeEditorGroup::ExecutePressed);
        QSignalSpy newExecute(other.get(), &CodeEditorGroup::ExecutePressed);
        moved->Execute();
        QCOMPARE(oldExecute.count(), 0);
        QCOMPARE(newExecute.count(), 1);

        // Within a group, a move reorders tabs and editors together.
        other->MoveCodeEditor(0, 1);
        QCOMPARE(Labels(*other), (QStringList{"c.mel", "b.mel"}));
        QCOMPARE(TabBar()->GetTabText(0), QStringLiteral("a.mel"));
        QCOMPARE(other->findChild<CodeEditorGroupTabBar*>()->GetTabText(1), QStringLiteral("b.mel"));
    }

    void modifiedMarkFollowsFileBuffersOnly()
    {
        group = MakeGroup(0, {QStringLiteral("buffer.mel")});
        QVERIFY(group);
        const int file = group->InsertCodeEditor(
            -1, Properties(QStringLiteral("tool.py"), CodeEditorLanguage::PYTHON, CodeEditorType::FILE),
            QStringLiteral("x = 1\n"));
        CodeEditorGroupTabBar* bar = TabBar();
        QVERIFY(!bar->IsModified(file));

        group->GetCodeEditor(file)->textCursor().insertText(QStringLiteral("y = 2\n"));
        QVERIFY(bar->IsModified(file));
        group->SetModified(file, false);
        QVERIFY(!bar->IsModified(file));

        group->GetCodeEditor(0)->textCursor().insertText(QStringLiteral("print 1;\n"));
        QVERIFY(group->IsModified(0));
        QVERIFY(!bar->IsModified(0));

        // Renamed on disk: label, tool tip and language follow the new path.
        group->UpdateFilePath(QStringLiteral("/scripts/tool.py"), QStringLiteral("/other/renamed.mel"),
                              CodeEditorLanguage::MEL);
        QCOMPARE(bar->GetTabText(file), QStringLiteral("renamed.mel"));
        QCOMPARE(bar->GetTabToolTip(file).section(QLatin1Char('\n'), 0, 0),
                 QStringLiteral("/other/renamed.mel"));
        QCOMPARE(bar->GetLanguage(file), CodeEditorLanguage::MEL);
        QCOMPARE(group->GetLanguage(file), CodeEditorLanguage::MEL);
    }

    void droppedTabsRequestMovesBetweenAndWithinGroups()
    {
        // The group only asks; the owner carries the move out (checked with the main widget).
        group = MakeGroup(0, {QStringLiteral("a.mel"), QStringLiteral("b.mel"), QStringLiteral("c.mel")});
        std::unique_ptr<CodeEditorGroup> other = MakeGroup(1, {QStringLiteral("d.mel")});
        QVERIFY(group && other);
        QSignalSpy toOther(other.get(), &CodeEditorGroup::MoveTabRequested);
        QSignalSpy within(group.get(), &CodeEditorGroup::MoveTabRequested);
        CodeEditorGroupTabBar* otherBar = other->findChild<CodeEditorGroupTabBar*>();
        std::unique_ptr<QMimeData> fromFirst(DragSimulation::TabMimeData(0, 1));
        DragSimulation::DragTo(otherBar, otherBar->GetTabRect(0).center(), fromFirst.get(), true);
        QCOMPARE(toOther.count(), 1);
        QCOMPARE(toOther.at(0), (QList<QVariant>{0, 1, 1, 0}));
        std::unique_ptr<QMimeData> first(DragSimulation::TabMimeData(0, 0));
        DragSimulation::DragTo(TabBar(), TabBar()->GetTabRect(2).center(), first.get(), true);
        QCOMPARE(within.count(), 1);
        QCOMPARE(within.at(0), (QList<QVariant>{0, 0, 0, 2}));
        QCOMPARE(Labels(*group), (QStringList{"a.mel", "b.mel", "c.mel"}));
    }

    void dropZoneIsChosenByPosition()
    {
        group = MakeGroup(2, {QStringLiteral("a.mel")}, 600);
        QVERIFY(group);
        CodeEditor* editor = group->GetCurrent();
        QWidget* viewport = editor->viewport();
        auto* overlay = editor->findChild<OverlayWidget*>();
        QVERIFY(overlay);
        std::unique_ptr<QMimeData> tab(DragSimulation::TabMimeData(0, 3));
        const int w = viewport->width();
        const int h = viewport->height();

        DragSimulation::DragTo(viewport, QPoint(w / 2, h / 2), tab.get(), false);
        QCOMPARE(group->GetDropZone(), TabDropZoneCenter);
        QVERIFY(overlay->isVisible());
        QCOMPARE(overlay->geometry(), editor->rect());

        // The edges split the view only while an empty group is left to take the tab.
        DragSimulation::DragTo(viewport, QPoint(3, h / 2), tab.get(), false);
        QCOMPARE(group->GetDropZone(), TabDropZoneCenter);
        group->SetTabDropOtherGroupsEnabled(true);
        DragSimulation::DragTo(viewport, QPoint(3, h / 2), tab.get(), false);
        QCOMPARE(group->GetDropZone(), TabDropZoneBefore);
        QCOMPARE(overlay->geometry(), QRect(0, 0, editor->width() / 2, editor->height()));
        DragSimulation::DragTo(viewport, QPoint(w - 3, h / 2), tab.get(), false);
        QCOMPARE(group->GetDropZone(), TabDropZoneAfter);
        QCOMPARE(overlay->geometry().right(), editor->rect().right());
        QCOMPARE(overlay->geometry().width(), editor->width() - editor->width() / 2);

        Settings::codeEditorOrientVertical = true;
        DragSimulation::DragTo(viewport, QPoint(3, 3), tab.get(), false);
        QCOMPARE(group->GetDropZone(), TabDropZoneBefore);
        QCOMPARE(overlay->geometry(), QRect(0, 0, editor->width(), editor->height() / 2));

        QSignalSpy move(group.get(), &CodeEditorGroup::MoveTabToZoneRequested);
        QDropEvent drop(QPoint(3, 3), Qt::MoveAction, tab.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(viewport, &drop);
        QCOMPARE(move.count(), 1);
        QCOMPARE(move.at(0).at(0).toInt(), 0);
        QCOMPARE(move.at(0).at(1).toInt(), 3);
        QCOMPARE(move.at(0).at(2).toInt(), 2);
        QCOMPARE(move.at(0).at(3).value<TabDropZone>(), TabDropZoneBefore);
        QVERIFY(!overlay->isVisible());
        QCOMPARE(group->GetDropZone(), TabDropZoneNone);

        // A drag that leaves takes its highlight with it.
        DragSimulation::DragTo(viewport, QPoint(w / 2, h / 2), tab.get(), false);
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(viewport, &leave);
        QVERIFY(!overlay->isVisible());
        QCOMPARE(group->GetDropZone(), TabDropZoneNone);
    }

    void droppedFilesOpenInTheOrderOfTheirUrls()
    {
        group = MakeGroup(1, {QStringLiteral("a.mel"), QStringLiteral("b.mel")});
        QVERIFY(group);
        group->SetTabDropOtherGroupsEnabled(true);
        QTemporaryDir dir;
        QStringList paths;
        for (const QString& name : {QStringLiteral("one.py"), QStringLiteral("two.mel")})
        {
            paths.append(dir.filePath(name));
            QVERIFY(TestFiles::Write(paths.last(), QByteArray()));
        }
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(paths.at(0)),
                       QUrl::fromLocalFile(dir.filePath(QStringLiteral("no.py"))),
                       QUrl::fromLocalFile(paths.at(1))});
        QSignalSpy open(group.get(), &CodeEditorGroup::OpenFileRequested);
        QSignalSpy openMany(group.get(), &CodeEditorGroup::OpenFilesRequested);
        QWidget* viewport = group->GetCurrent()->viewport();

        // On the centre each file opens after the current tab; opened in turn at that index,
        // they end up in the order of the URLs.
        DragSimulation::DragTo(viewport, viewport->rect().center(), &files, true);
        QCOMPARE(open.count(), 2);
        QStringList tabs;
        for (const QList<QVariant>& arguments : open)
        {
            QCOMPARE(arguments.at(0).toInt(), 1);
            QCOMPARE(arguments.at(1).toInt(), group->GetCurrentIndex() + 1);
            tabs.insert(0, arguments.at(2).toString());
        }
        QCOMPARE(tabs, paths);

        // On an edge they go together, to be opened at the front of a new group.
        DragSimulation::DragTo(viewport, QPoint(viewport->width() - 2, 10), &files, true);
        QCOMPARE(openMany.count(), 1);
        QCOMPARE(openMany.at(0).at(1).value<TabDropZone>(), TabDropZoneAfter);
        QStringList front;
        for (const QString& path : openMany.at(0).at(2).toStringList())
            front.insert(0, path);
        QCOMPARE(front, paths);
    }

    void miniToolbarFollowsSettingsAndRunsItsButtons()
    {
        group = MakeGroup(0, {QStringLiteral("a.mel")});
        QVERIFY(group);
        FlatButton* execute = Button("executeBtn");
        FlatButton* executeAll = Button("executeAllBtn");
        FlatButton* executeLine = Button("executeLineBtn");
        FlatButton* separator = Button("miniToolbarSeparator");
        group->SetMiniToolbarVisible(true);
        QVERIFY(!execute->isVisible());
        Settings::showTabBarMiniToolbar = true;
        Settings::showCodeEditorExecuteLineBtn = false;
        group->SetMiniToolbarVisible(true);
        QVERIFY(execute->isVisible() && executeAll->isVisible() && separator->isVisible());
        QVERIFY(!executeLine->isVisible());
        group->SetMiniToolbarVisible(false);
        QVERIFY(!execute->isVisible() && !executeAll->isVisible() && !separator->isVisible());

        Settings::showCodeEditorExecuteLineBtn = true;
        group->SetMiniToolbarVisible(true);
        QSignalSpy runs(group.get(), &CodeEditorGroup::ExecutePressed);
        QSignalSpy runsAll(group.get(), &CodeEditorGroup::ExecuteAllPressed);
        QSignalSpy runsLine(group.get(), &CodeEditorGroup::ExecuteLinePressed);
        QTest::mouseClick(execute, Qt::LeftButton);
        QTest::mouseClick(executeAll, Qt::LeftButton);
        QTest::mouseClick(executeLine, Qt::LeftButton);
        QCOMPARE(runs.count(), 1);
        QCOMPARE(runsAll.count(), 1);
        QCOMPARE(runsLine.count(), 1);

        group->UpdateKeyBindings();
        const QString shortcut =
            keyBindings->GetShortcut(KeySequenceType::ExecuteAll).toString(QKeySequence::NativeText);
        QCOMPARE(executeAll->toolTip(), QStringLiteral("Execute All (%1)").arg(shortcut));

        // The menu of the empty part of the bar switches the buttons one by one.
        std::unique_ptr<QMenu> menu(group->CreateMiniToolbarContextMenu());
        QAction* all = FindAction(menu.get(), QStringLiteral("Execute All"));
        QVERIFY(all && all->isChecked());
        QSignalSpy modified(group.get(), &CodeEditorGroup::MiniToolbarDisplayModified);
        all->trigger();
        QVERIFY(!Settings::showCodeEditorExecuteAllBtn);
        QVERIFY(Settings::showCodeEditorExecuteBtn);
        QCOMPARE(modified.count(), 1);
    }

    void scrollButtonsScrollTheTabBar()
    {
        QStringList labels;
        for (int i = 0; i < 12; ++i)
            labels.append(QStringLiteral("buffer_%1.mel").arg(i));
        group = MakeGroup(0, labels, 300);
        QVERIFY(group);
        CodeEditorGroupTabBar* bar = TabBar();
        QCOMPARE(bar->GetScrollBarValue(), 0);
        QTest::mousePress(Button("scrollRightBtn"), Qt::LeftButton);
        QVERIFY(bar->IsScrolling());
        QVERIFY(group->GetTabBarScrollValue() > 0);
        QTest::mouseRelease(Button("scrollRightBtn"), Qt::LeftButton);
        QVERIFY(!bar->IsScrolling());
        const int value = group->GetTabBarScrollValue();
        QTest::mousePress(Button("scrollLeftBtn"), Qt::LeftButton);
        QVERIFY(group->GetTabBarScrollValue() < value);
        QTest::mouseRelease(Button("scrollLeftBtn"), Qt::LeftButton);

        // The list of open editors jumps to any of them.
        std::unique_ptr<QMenu> menu(group->CreateOpenCodeEditorMenu());
        QCOMPARE(menu->actions().size(), 12);
        menu->actions().at(11)->trigger();
        QCOMPARE(group->GetCurrentIndex(), 11);
        QCOMPARE(bar->GetTabRect(11).right(), bar->width() - 1);
    }

    void tabBarRequestsReachTheOwnerWithGroupAndIndex()
    {
        group = MakeGroup(0, {QStringLiteral("a.mel"), QStringLiteral("b.mel")});
        QVERIFY(group);
        group->InsertCodeEditor(
            -1, Properties(QStringLiteral("c.py"), CodeEditorLanguage::PYTHON, CodeEditorType::FILE),
            QString());
        CodeEditorGroupTabBar* bar = TabBar();
        QSignalSpy close(group.get(), &CodeEditorGroup::CloseTabRequested);
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->GetCloseRect(1).center());
        QCOMPARE(close.count(), 1);
        QCOMPARE(close.at(0).at(0).value<CodeEditorGroup*>(), group.get());
        QCOMPARE(close.at(0).at(1).toInt(), 1);

        std::unique_ptr<QMenu> bufferMenu(bar->CreateContextMenu(0));
        QVERIFY(!FindAction(bufferMenu.get(), QStringLiteral("Reveal in Side Bar")));
        std::unique_ptr<QMenu> fileMenu(bar->CreateContextMenu(2));
        QSignalSpy others(group.get(), &CodeEditorGroup::CloseOtherTabsRequested);
        QSignalSpy rename(group.get(), &CodeEditorGroup::RenameRequested);
        QSignalSpy reveal(group.get(), &CodeEditorGroup::ShowInSideBarRequested);
        FindAction(fileMenu.get(), QStringLiteral("Close Other Tabs"))->trigger();
        FindAction(fileMenu.get(), QStringLiteral("Rename"))->trigger();
        FindAction(fileMenu.get(), QStringLiteral("Reveal in Side Bar"))->trigger();
        FindAction(fileMenu.get(), QStringLiteral("Copy Path"))->trigger();
        QCOMPARE(others.at(0).at(1).toInt(), 2);
        QCOMPARE(rename.at(0).at(0).value<CodeEditorGroup*>(), group.get());
        QCOMPARE(rename.at(0).at(1).toInt(), 2);
        QCOMPARE(reveal.at(0).at(0).toString(), QStringLiteral("/scripts/c.py"));
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("/scripts/c.py"));
        QCOMPARE(FindAction(fileMenu.get(), QStringLiteral("Close"))->shortcut(),
                 keyBindings->GetShortcut(KeySequenceType::CloseFile));

        // A double click on the empty part asks for a new tab; on a tab it does not.
        QSignalSpy newTab(group.get(), &CodeEditorGroup::NewTabRequested);
        QTest::mouseDClick(bar, Qt::LeftButton, Qt::NoModifier, bar->GetTabRect(0).center());
        QCOMPARE(newTab.count(), 0);
        QTest::mouseDClick(bar, Qt::LeftButton, Qt::NoModifier, QPoint(bar->width() - 3, 10));
        QCOMPARE(newTab.count(), 1);
    }

    void wheelChangesTabOnlyWhenAskedAndByWholeNotches()
    {
        group = MakeGroup(0, {QStringLiteral("a.mel"), QStringLiteral("b.mel"), QStringLiteral("c.mel")});
        QVERIFY(group);
        CodeEditorGroupTabBar* bar = TabBar();
        const auto wheel = [bar](int delta)
        {
            const QPointF pos = bar->GetTabRect(0).center();
            QWheelEvent event(pos, bar->mapToGlobal(pos), QPoint(), QPoint(0, delta), Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(bar, &event);
        };
        wheel(-120);
        QCOMPARE(group->GetCurrentIndex(), 0);
        Settings::mouseWheelChangesActiveTab = true;
        wheel(-120);
        QCOMPARE(group->GetCurrentIndex(), 1);
        wheel(-100);
        QCOMPARE(group->GetCurrentIndex(), 1);
        wheel(120);
        QCOMPARE(group->GetCurrentIndex(), 0);
    }

    void textChangesReachSearchOnlyWhileItIsLive()
    {
        group = MakeGroup(0, {QStringLiteral("a.mel")});
        QVERIFY(group);
        QSignalSpy text(group.get(), &CodeEditorGroup::TextChanged);
        QSignalSpy parsed(group.get(), &CodeEditorGroup::ParserUpdated);
        CodeEditor* editor = group->GetCurrent();
        QSignalSpy editorText(editor, &CodeEditor::TextChanged);
        const auto type = [&](const QString& typed)
        {
            editor->textCursor().insertText(typed);
            return editorText.wait(3000);
        };

        // A search in files is live with the side bar open on the search view and a pattern.
        Settings::sideBarVisible = true;
        Settings::searchViewActive = false;
        Settings::globalSearchRegEx = QRegularExpression(QStringLiteral("x"));
        QVERIFY(type(QStringLiteral("x")));
        QCOMPARE(text.count(), 0);
        // Each change is parsed, whatever the search does: a MEL buffer reports the group's parser.
        QVERIFY(!parsed.isEmpty());
        QVERIFY(!IsNullPointer(parsed.last().at(0)));
        QCOMPARE(*static_cast<void* const*>(parsed.last().at(0).constData()),
                 static_cast<void*>(group->GetParser()));

        Settings::searchViewActive = true;
        Settings::globalSearchRegEx = QRegularExpression();
        QVERIFY(type(QStringLiteral("y")));
        QCOMPARE(text.count(), 0);

        Settings::globalSearchRegEx = QRegularExpression(QStringLiteral("x"));
        QVERIFY(type(QStringLiteral("z")));
        QCOMPARE(text.count(), 1);
        QCOMPARE(text.at(0).at(0).toString(), editor->GetFilePath());
        QCOMPARE(text.at(0).at(1).toString(), editor->GetText());

        Settings::sideBarVisible = false;
        QVERIFY(type(QStringLiteral("w")));
        QCOMPARE(text.count(), 1);
    }

    void focusAndActivationReportTheGroup()
    {
        group = MakeGroup(0, {QStringLiteral("a.mel"), QStringLiteral("b.mel"), QStringLiteral("c.mel")});
        QVERIFY(group);
        group->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(group.get()));
        QSignalSpy focus(group.get(), &CodeEditorGroup::ReceivedFocus);
        QTest::mouseClick(TabBar(), Qt::LeftButton, Qt::NoModifier, TabBar()->GetTabRect(2).center());
        QTRY_VERIFY(group->GetCodeEditor(2)->hasFocus());
        QVERIFY(focus.count() >= 1);
        QCOMPARE(focus.last().at(0).value<CodeEditorGroup*>(), group.get());

        // The order of last use puts the editor used most recently first, and those never used
        // after them in tab order.
        group->SetCurrentIndex(0);
        QStringList used;
        for (const CodeEditorProperties& properties : group->GetLastUsedEditors())
            used.append(properties.label);
        QCOMPARE(used, (QStringList{"a.mel", "c.mel", "b.mel"}));
        group->DeleteCodeEditor(2);
        used.clear();
        for (const CodeEditorProperties& properties : group->GetLastUsedEditors())
            used.append(properties.label);
        QCOMPARE(used, (QStringList{"a.mel", "b.mel"}));
    }

    void preferencesShowAndLockTheTabBar()
    {
        group = MakeGroup(0, {QStringLiteral("a.mel")});
        QVERIFY(group);
        QVERIFY(TabBar()->isVisible() && TabBar()->acceptDrops() && TabBar()->AreTabsClosable());
        Settings::showTabBar = false;
        Settings::lockTabPositions = true;
        Settings::showCloseButtonOnTabs = false;
        group->UpdatePreferences();
        QVERIFY(!TabBar()->isVisible());
        QVERIFY(!Button("scrollLeftBtn")->isVisible() && !Button("listCodeEditorsBtn")->isVisible());
        QVERIFY(!TabBar()->acceptDrops());
        QVERIFY(!TabBar()->AreTabsClosable());
    }
};

QTEST_MAIN(TestCodeEditorGroup)
#include "tst_CodeEditorGroup.moc"
