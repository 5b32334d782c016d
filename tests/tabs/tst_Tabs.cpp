// The tab strip on its own (layout, painting, scrolling, drags), then the editor group that keeps its
// tabs and editors in step.
#include "HostFixture.h"
#include "TestFiles.h"
#include "WheelSimulation.h"
#include "editor/CodeEditor.h"
#include "editor/FindReplaceWidget.h"
#include "settings/ColorSettings.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "tabs/CodeEditorGroup.h"
#include "tabs/CodeEditorGroupTabBar.h"
#include "tabs/CustomTabBar.h"
#include "tabs/TabImages.h"
#include "widgets/FlatButton.h"
#include "widgets/OverlayWidget.h"

#include <maya/MCommandMessage.h>

#include <QtCore/QMimeData>
#include <QtCore/QTemporaryDir>
#include <QtGui/QClipboard>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QDropEvent>
#include <QtTest/QtTest>
#include <QtWidgets/QMenu>
#include <QtWidgets/QStackedWidget>

#include <memory>

#include "DragSimulation.h"

namespace
{
const QString MIME_TYPE = QStringLiteral("tolvanek-bq2/move-code-editor");

// The tab whose right edge meets the bar's right edge, or -1.
int RightAlignedTab(const CustomTabBar& strip)
{
    for (int i = 0; i < strip.Count(); ++i)
    {
        if (strip.GetTabRect(i).right() == strip.width() - 1)
            return i;
    }
    return -1;
}
CodeEditorProperties Properties(const QString& label, CodeEditorLanguage language = CodeEditorLanguage::MEL,
                                CodeEditorType type = CodeEditorType::INTERNAL_BUFFER)
{
    return {type, language, QStringLiteral("/scripts/") + label, label};
}

QStringList Labels(const CodeEditorGroup& group)
{
    QStringList labels;
    for (int i = 0; i < group.GetCount(); ++i)
        labels.append(group.GetLabel(i));
    return labels;
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

class TestTabs : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    std::unique_ptr<KeyBindings> keyBindings;
    std::unique_ptr<CodeEditorGroup> group;
    std::unique_ptr<CustomTabBar> strip; // the CustomTabBar tests' bar

    // A bar of `count` tabs named "tab 0" and up, shown at the given width.
    void ShowBar(int count, int width)
    {
        strip = std::make_unique<CustomTabBar>();
        strip->SetId(3);
        strip->SetDragAndDropMimeType(MIME_TYPE);
        strip->SetTabsMoveable(true);
        for (int i = 0; i < count; ++i)
            strip->InsertTab(-1, QStringLiteral("tab %1").arg(i));
        strip->resize(width, strip->height());
        strip->show();
        QVERIFY(QTest::qWaitForWindowExposed(strip.get()));
    }

    CodeEditorGroupTabBar* TabBar() const { return group->findChild<CodeEditorGroupTabBar*>(); }
    FlatButton* Button(const char* name) const { return group->findChild<FlatButton*>(QLatin1String(name)); }

    // Shows a new group with the owner's preferences applied and one tab per label.
    bool Open(std::unique_ptr<CodeEditorGroup>& made, int id, const QStringList& labels, int width = 600)
    {
        made = std::make_unique<CodeEditorGroup>(id, keyBindings.get());
        made->UpdatePreferences();
        made->UpdateFontsAndColors();
        for (const QString& label : labels)
            made->InsertCodeEditor(-1, Properties(label), QStringLiteral("text of ") + label);
        made->resize(width, 300);
        made->show();
        return QTest::qWaitForWindowExposed(made.get());
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

    void cleanup()
    {
        group.reset();
        strip.reset();
    }

    void tabsAndStackStayInStep()
    {
        QVERIFY(Open(group, 1, {"a.mel", "b.mel"}));
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
        QVERIFY(Open(group, 0, {"a.mel"}));
        group->findChild<QStackedWidget*>(QStringLiteral("codeEditorStack"))->addWidget(new QWidget);
        QCOMPARE(group->InsertCodeEditor(-1, Properties(QStringLiteral("b.mel")), QString()), -1);
        QCOMPARE(group->RemoveCodeEditor(0), nullptr);
        group->DeleteCodeEditor(0);
        QCOMPARE(TabBar()->Count(), 1);
        // Joined by line breaks, which the messages do not hold: a match lies within one message.
        const QString errors = fixture->MessagesOfType(MCommandMessage::kError).join(QLatin1Char('\n'));
        for (const char* verb : {"insert", "remove", "delete"})
            QVERIFY2(errors.contains(
                         QStringLiteral("Failed to %1 code editor. Tab and code editor count mismatch.")
                             .arg(verb)),
                     verb);
    }

    void movedEditorTalksOnlyToItsNewGroup()
    {
        std::unique_ptr<CodeEditorGroup> other;
        QVERIFY(Open(group, 0, {"a.mel", "b.mel"}) && Open(other, 1, {"c.mel"}));
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

        other->MoveCodeEditor(0, 1);
        QCOMPARE(Labels(*other), (QStringList{"c.mel", "b.mel"}));
        QCOMPARE(TabBar()->GetTabText(0), QStringLiteral("a.mel"));
        QCOMPARE(other->findChild<CodeEditorGroupTabBar*>()->GetTabText(1), QStringLiteral("b.mel"));
    }

    void modifiedMarkFollowsFileBuffersOnly()
    {
        QVERIFY(Open(group, 0, {"buffer.mel"}));
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
        std::unique_ptr<CodeEditorGroup> other;
        QVERIFY(Open(group, 0, {"a.mel", "b.mel", "c.mel"}) && Open(other, 1, {"d.mel"}));
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
        QVERIFY(Open(group, 2, {"a.mel"}, 600));
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

        // The edges split the view only while an empty group is left to take the tab.
        DragSimulation::DragTo(viewport, QPoint(3, h / 2), tab.get(), false);
        QCOMPARE(group->GetDropZone(), TabDropZoneCenter);
        group->SetTabDropOtherGroupsEnabled(true);
        DragSimulation::DragTo(viewport, QPoint(3, h / 2), tab.get(), false);
        QCOMPARE(group->GetDropZone(), TabDropZoneBefore);
        DragSimulation::DragTo(viewport, QPoint(w - 3, h / 2), tab.get(), false);
        QCOMPARE(group->GetDropZone(), TabDropZoneAfter);

        Settings::codeEditorOrientVertical = true;
        DragSimulation::DragTo(viewport, QPoint(3, 3), tab.get(), false);
        QCOMPARE(group->GetDropZone(), TabDropZoneBefore);

        QSignalSpy move(group.get(), &CodeEditorGroup::MoveTabToZoneRequested);
        QDropEvent drop(QPoint(3, 3), Qt::MoveAction, tab.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(viewport, &drop);
        QCOMPARE(move.count(), 1);
        QCOMPARE(move.at(0).mid(0, 3), (QList<QVariant>{0, 3, 2}));
        QCOMPARE(move.at(0).at(3).value<TabDropZone>(), TabDropZoneBefore);
        QVERIFY(!overlay->isVisible());
        QCOMPARE(group->GetDropZone(), TabDropZoneNone);

        DragSimulation::DragTo(viewport, QPoint(w / 2, h / 2), tab.get(), false);
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(viewport, &leave);
        QVERIFY(!overlay->isVisible());
        QCOMPARE(group->GetDropZone(), TabDropZoneNone);
    }

    void droppedFilesOpenInTheOrderOfTheirUrls()
    {
        QVERIFY(Open(group, 1, {"a.mel", "b.mel"}));
        group->SetTabDropOtherGroupsEnabled(true);
        QTemporaryDir dir;
        const QStringList paths{dir.filePath(QStringLiteral("one.py")),
                                dir.filePath(QStringLiteral("two.mel"))};
        for (const QString& path : paths)
            QVERIFY(TestFiles::Write(path, QByteArray()));
        std::unique_ptr<QMimeData> files(
            DragSimulation::UrlMimeData({paths.at(0), dir.filePath(QStringLiteral("no.py")), paths.at(1)}));
        QSignalSpy open(group.get(), &CodeEditorGroup::OpenFileRequested);
        QSignalSpy openMany(group.get(), &CodeEditorGroup::OpenFilesRequested);
        QWidget* viewport = group->GetCurrent()->viewport();

        // On the centre each file opens after the current tab; opened in turn at that index,
        // they end up in the order of the URLs.
        DragSimulation::DragTo(viewport, viewport->rect().center(), files.get(), true);
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
        DragSimulation::DragTo(viewport, QPoint(viewport->width() - 2, 10), files.get(), true);
        QCOMPARE(openMany.count(), 1);
        QCOMPARE(openMany.at(0).at(1).value<TabDropZone>(), TabDropZoneAfter);
        QStringList front;
        for (const QString& path : openMany.at(0).at(2).toStringList())
            front.insert(0, path);
        QCOMPARE(front, paths);
    }

    void miniToolbarFollowsSettingsAndRunsItsButtons()
    {
        QVERIFY(Open(group, 0, {"a.mel"}));
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
        for (const auto& [button, signal] : {std::pair{execute, &CodeEditorGroup::ExecutePressed},
                                             {executeAll, &CodeEditorGroup::ExecuteAllPressed},
                                             {executeLine, &CodeEditorGroup::ExecuteLinePressed}})
        {
            QSignalSpy runs(group.get(), signal);
            QTest::mouseClick(button, Qt::LeftButton);
            QCOMPARE(runs.count(), 1);
        }

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
        QVERIFY(Open(group, 0, labels, 300));
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

        std::unique_ptr<QMenu> menu(group->CreateOpenCodeEditorMenu());
        QCOMPARE(menu->actions().size(), 12);
        menu->actions().at(11)->trigger();
        QCOMPARE(group->GetCurrentIndex(), 11);
        QCOMPARE(bar->GetTabRect(11).right(), bar->width() - 1);
    }

    void tabBarRequestsReachTheOwnerWithGroupAndIndex()
    {
        QVERIFY(Open(group, 0, {"a.mel", "b.mel"}));
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
        for (const char* name : {"Close Other Tabs", "Rename", "Reveal in Side Bar", "Copy Path"})
            FindAction(fileMenu.get(), QString::fromLatin1(name))->trigger();
        QCOMPARE(others.at(0).at(1).toInt(), 2);
        QCOMPARE(rename.at(0).at(0).value<CodeEditorGroup*>(), group.get());
        QCOMPARE(rename.at(0).at(1).toInt(), 2);
        QCOMPARE(reveal.at(0).at(0).toString(), QStringLiteral("/scripts/c.py"));
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("/scripts/c.py"));
        QCOMPARE(FindAction(fileMenu.get(), QStringLiteral("Close"))->shortcut(),
                 keyBindings->GetShortcut(KeySequenceType::CloseFile));

        QSignalSpy newTab(group.get(), &CodeEditorGroup::NewTabRequested);
        QTest::mouseDClick(bar, Qt::LeftButton, Qt::NoModifier, bar->GetTabRect(0).center());
        QCOMPARE(newTab.count(), 0);
        QTest::mouseDClick(bar, Qt::LeftButton, Qt::NoModifier, QPoint(bar->width() - 3, 10));
        QCOMPARE(newTab.count(), 1);
    }

    void wheelChangesTabOnlyWhenAskedAndByWholeNotches()
    {
        QVERIFY(Open(group, 0, {"a.mel", "b.mel", "c.mel"}));
        CodeEditorGroupTabBar* bar = TabBar();
        const QPointF pos = bar->GetTabRect(0).center();
        WheelSimulation::Turn(bar, -120, Qt::NoModifier, pos);
        QCOMPARE(group->GetCurrentIndex(), 0);
        Settings::mouseWheelChangesActiveTab = true;
        WheelSimulation::Turn(bar, -120, Qt::NoModifier, pos);
        QCOMPARE(group->GetCurrentIndex(), 1);
        WheelSimulation::Turn(bar, -100, Qt::NoModifier, pos);
        QCOMPARE(group->GetCurrentIndex(), 1);
        WheelSimulation::Turn(bar, 120, Qt::NoModifier, pos);
        QCOMPARE(group->GetCurrentIndex(), 0);
    }

    void textChangesReachSearchOnlyWhileItIsLive()
    {
        QVERIFY(Open(group, 0, {"a.mel"}));
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
        QVERIFY(group->GetParser());
        // The parser's class is not complete here; its pointer is read as what it is, an address.
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
        QVERIFY(Open(group, 0, {"a.mel", "b.mel", "c.mel"}));
        group->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(group.get()));
        QSignalSpy focus(group.get(), &CodeEditorGroup::ReceivedFocus);
        QTest::mouseClick(TabBar(), Qt::LeftButton, Qt::NoModifier, TabBar()->GetTabRect(2).center());
        QTRY_VERIFY(group->GetCodeEditor(2)->hasFocus());
        QVERIFY(focus.count() >= 1);
        QCOMPARE(focus.last().at(0).value<CodeEditorGroup*>(), group.get());

        // The order of last use puts the editor used most recently first, and those never used
        // after them in tab order.
        const auto lastUsed = [&]
        {
            QStringList used;
            for (const CodeEditorProperties& properties : group->GetLastUsedEditors())
                used.append(properties.label);
            return used;
        };
        group->SetCurrentIndex(0);
        QCOMPARE(lastUsed(), (QStringList{"a.mel", "c.mel", "b.mel"}));
        group->DeleteCodeEditor(2);
        QCOMPARE(lastUsed(), (QStringList{"a.mel", "b.mel"}));
    }

    // Escape in the editor closes the find bar first, and only then drops the selection.
    void escapeClosesTheFindBarThenDropsTheSelection()
    {
        QVERIFY(Open(group, 0, {"a.mel"}));
        CodeEditor* editor = group->GetCurrent();
        editor->selectAll();
        group->ShowFindReplace();
        auto* bar = group->findChild<FindReplaceWidget*>();
        QVERIFY(bar->isVisible());
        QTest::keyClick(editor, Qt::Key_Escape);
        QVERIFY(!bar->isVisible());
        QVERIFY(editor->textCursor().hasSelection());
        QTest::keyClick(editor, Qt::Key_Escape);
        QVERIFY(!editor->textCursor().hasSelection());
    }

    // An icon missing from the resources is drawn instead, each its own, none of them blank.
    void missingIconsAreDrawnEachItsOwn()
    {
        QList<QImage> drawn;
        for (const char* name :
             {"close_white", "modified", "python", "mel", "text", "scroll_left", "scroll_right", "execute",
              "execute_all", "execute_line", "list_code_editors"})
        {
            const QImage image = TabImages::Load(QStringLiteral(":/missing/%1.png").arg(QLatin1String(name)));
            QImage blank(image.size(), image.format());
            blank.fill(Qt::transparent);
            QVERIFY2(!image.isNull() && image != blank && !drawn.contains(image), name);
            drawn.append(image);
        }
        QVERIFY(TabImages::Load(QStringLiteral(":/missing/unknown.png")).isNull());
        QCOMPARE(TabImages::LoadPixmap(QStringLiteral(":/missing/mel.png"), 12).size(), QSize(12, 12));
    }

    void preferencesShowAndLockTheTabBar()
    {
        QVERIFY(Open(group, 0, {"a.mel"}));
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

    void tabsAreLaidOutSideBySideAndHitTested()
    {
        ShowBar(3, 600);
        QCOMPARE(strip->GetTabRect(0).left(), 0);
        for (int i = 0; i < 3; ++i)
        {
            const QRect tab = strip->GetTabRect(i);
            QVERIFY(tab.width() > strip->fontMetrics().horizontalAdvance(strip->GetTabText(i)));
            QVERIFY(tab.contains(strip->GetCloseRect(i)));
            QCOMPARE(strip->TabAt(tab.center()), i);
            if (i > 0)
                QCOMPARE(tab.left(), strip->GetTabRect(i - 1).right() + 1);
        }
        QCOMPARE(strip->TabAt(QPoint(strip->GetTabRect(2).right() + 5, 10)), -1);

        strip->SetTabText(7, QStringLiteral("x"));
        QCOMPARE(strip->GetTabText(7), QString());
        QVERIFY(!strip->GetData(-1).isValid());
        QVERIFY(!strip->IsModified(3));

        QSignalSpy current(strip.get(), &CustomTabBar::CurrentChanged);
        QCOMPARE(strip->InsertTab(0, QStringLiteral("front")), 0);
        QCOMPARE(strip->GetCurrentIndex(), 1);
        // Choosing the current tab again, or one that does not exist, changes nothing.
        strip->SetCurrentIndex(1, false);
        strip->SetCurrentIndex(99, false);
        QCOMPARE(strip->GetCurrentIndex(), 1);
        QCOMPARE(current.count(), 1);
        QCOMPARE(strip->InsertTab(42, QStringLiteral("back")), 4);
        QCOMPARE(strip->GetTabText(4), QStringLiteral("back"));

        const int oldWidth = strip->GetTabRect(1).width();
        strip->SetTabText(1, QStringLiteral("a much longer label than before"));
        QTRY_VERIFY(strip->GetTabRect(1).width() > oldWidth);
        QCOMPARE(strip->GetTabRect(2).left(), strip->GetTabRect(1).right() + 1);
    }

    // The bar grows with the interface's scale; a scale that makes no sense leaves it as it is.
    void heightFollowsTheInterfaceScale()
    {
        for (const auto& [scale, height] : {std::pair{2.0, 48}, {0.0, 24}, {-1.5, 24}})
        {
            Settings::customScaleValue = scale;
            CustomTabBar scaled;
            QCOMPARE(scaled.height(), height);
        }
    }

    // The current tab and a drop zone stand out; the underline, when asked for, is as wide as the label.
    void paintingShowsCurrentTabUnderlineAndDropZone()
    {
        const QColor active(200, 40, 40);
        const QColor background(30, 30, 120);
        ShowBar(3, 500);
        strip->SetActiveTabBackgroundColor(active);
        strip->SetBackgroundColor(background);
        QTest::mouseClick(strip.get(), Qt::LeftButton, Qt::NoModifier, strip->GetTabRect(1).center());
        const auto pixel = [this](const QPoint& at) { return strip->grab().toImage().pixelColor(at); };
        // A corner of a tab holds neither icon, text nor close button. The click shows at once.
        const QPoint corner(2, 2);
        const QImage shown = strip->screen()->grabWindow(strip->winId()).toImage();
        QCOMPARE(shown.pixelColor(strip->GetTabRect(1).topLeft() + corner), active);
        QCOMPARE(pixel(strip->GetTabRect(0).topLeft() + corner), background);
        const QPoint underText(strip->GetTabRect(1).center().x(), strip->height() - 1);
        QCOMPARE(pixel(underText), active);
        strip->SetUnderlineEnabled(true);
        QCOMPARE(pixel(underText), QColor(Qt::darkGray));
        QCOMPARE(pixel(strip->GetTabRect(1).bottomLeft() + QPoint(2, 0)), active);

        std::unique_ptr<QMimeData> mimeData(DragSimulation::TabMimeData(3, 0));
        const QPoint over = strip->GetTabRect(2).topLeft() + corner;
        DragSimulation::DragTo(strip.get(), over, mimeData.get(), false);
        const QColor highlighted = pixel(over);
        QVERIFY(highlighted.red() > background.red() && highlighted.green() > background.green());
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(strip.get(), &leave);
        QCOMPARE(pixel(over), background);
    }

    // A modified tab shows its mark where the close button goes, and the button under the pointer.
    void modifiedMarkGivesWayToTheCloseButtonUnderThePointer()
    {
        ShowBar(3, 500);
        strip->SetTabsClosable(true);
        const QRect close = strip->GetCloseRect(2);
        const auto region = [this, close] { return strip->grab(close).toImage(); };
        const QImage blank = region();
        strip->SetModified(2, true);
        const QImage mark = region();
        QVERIFY(mark != blank);

        const auto moveMouse = [this](const QPoint& pos)
        {
            QMouseEvent event(QEvent::MouseMove, QPointF(pos), QPointF(strip->mapToGlobal(pos)), Qt::NoButton,
                              Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(strip.get(), &event);
        };
        moveMouse(strip->GetTabRect(2).topLeft() + QPoint(3, 3));
        QCOMPARE(region(), mark);
        moveMouse(close.center());
        const QImage cross = region();
        QVERIFY(cross != mark && cross != blank);

        // An unmodified tab shows its close button only under the pointer.
        strip->SetModified(2, false);
        QCOMPARE(region(), cross);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(strip.get(), &leave);
        QCOMPARE(region(), blank);
    }

    void closeButtonClickRequestsCloseWithoutActivating()
    {
        ShowBar(3, 500);
        strip->SetTabsClosable(true);
        QSignalSpy close(strip.get(), &CustomTabBar::CloseTabRequested);
        QSignalSpy activated(strip.get(), &CustomTabBar::Activated);
        QSignalSpy current(strip.get(), &CustomTabBar::CurrentChanged);

        QTest::mouseClick(strip.get(), Qt::LeftButton, Qt::NoModifier, strip->GetCloseRect(2).center());
        QCOMPARE(close.count(), 1);
        QCOMPARE(close.at(0).at(0).toInt(), 2);
        QCOMPARE(activated.count(), 0);
        QCOMPARE(strip->GetCurrentIndex(), 0);

        QTest::mouseClick(strip.get(), Qt::RightButton, Qt::NoModifier, strip->GetCloseRect(1).center());
        QCOMPARE(close.count(), 1);

        QTest::mouseClick(strip.get(), Qt::LeftButton, Qt::NoModifier, strip->GetTabRect(1).center());
        QCOMPARE(activated.count(), 1);
        QCOMPARE(strip->GetCurrentIndex(), 1);
        QCOMPARE(current.count(), 1);

        // Without close buttons the same spot selects the tab.
        strip->SetTabsClosable(false);
        QTest::mouseClick(strip.get(), Qt::LeftButton, Qt::NoModifier, strip->GetCloseRect(2).center());
        QCOMPARE(close.count(), 1);
        QCOMPARE(strip->GetCurrentIndex(), 2);
    }

    void scrollingMovesOneTabPerStepAndStopsAtTheEnds()
    {
        ShowBar(10, 220);
        QCOMPARE(strip->GetScrollBarValue(), 0);
        QCOMPARE(RightAlignedTab(*strip), -1);

        strip->BeginScrollingRight();
        QVERIFY(strip->IsScrolling());
        int expected = RightAlignedTab(*strip);
        QVERIFY(expected > 0);
        while (expected < strip->Count() - 1)
        {
            strip->DoScroll();
            QCOMPARE(RightAlignedTab(*strip), ++expected);
        }
        QVERIFY(strip->IsScrolling());
        const int atEnd = strip->GetScrollBarValue();
        strip->DoScroll();
        QVERIFY(!strip->IsScrolling());
        QCOMPARE(strip->GetScrollBarValue(), atEnd);

        strip->BeginScrollingLeft();
        int left = strip->TabAt(QPoint(0, 5));
        QCOMPARE(strip->GetTabRect(left).left(), 0);
        while (true)
        {
            strip->DoScroll();
            if (!strip->IsScrolling())
                break;
            QCOMPARE(strip->TabAt(QPoint(0, 5)), --left);
            QCOMPARE(strip->GetTabRect(left).left(), 0);
        }
        QCOMPARE(left, 0);
        QCOMPARE(strip->GetScrollBarValue(), 0);

        // Held at the start, the button stops the timer at once; held elsewhere, the timer goes on.
        strip->BeginScrollingLeft();
        QVERIFY(!strip->IsScrolling());
        strip->BeginScrollingRight();
        const int afterFirstStep = strip->GetScrollBarValue();
        QTRY_VERIFY_WITH_TIMEOUT(strip->GetScrollBarValue() > afterFirstStep, 5000);
        strip->EndScrolling();
        QVERIFY(!strip->IsScrolling());
    }

    void currentTabIsScrolledIntoView()
    {
        ShowBar(10, 220);
        strip->SetCurrentIndex(9, true);
        QCOMPARE(strip->GetTabRect(9).right(), strip->width() - 1);
        strip->SetCurrentIndex(4, true);
        QVERIFY(strip->rect().contains(strip->GetTabRect(4)));
        strip->SetCurrentIndex(0, true);
        QCOMPARE(strip->GetScrollBarValue(), 0);

        // Removing tabs at the end closes the gap that would open on the right.
        strip->SetCurrentIndex(9, true);
        strip->RemoveTab(9);
        QCOMPARE(strip->GetCurrentIndex(), 8);
        QCOMPARE(strip->GetTabRect(8).right(), strip->width() - 1);
        strip->RemoveTab(3);
        QCOMPARE(strip->GetTabRect(strip->Count() - 1).right(), strip->width() - 1);

        // A single tab wider than the bar starts at 0 or ends at the bar's right edge.
        ShowBar(0, 60);
        strip->InsertTab(0, QStringLiteral("a label far wider than this little bar"));
        strip->ScrollToCurrent();
        QVERIFY(strip->GetScrollBarValue() >= 0);
        QVERIFY(strip->GetTabRect(0).left() == 0 || strip->GetTabRect(0).right() == strip->width() - 1);
    }

    void removingTabsKeepsTheCurrentTab()
    {
        ShowBar(4, 600);
        strip->SetCurrentIndex(2, true);
        QSignalSpy current(strip.get(), &CustomTabBar::CurrentChanged);
        strip->RemoveTab(0);
        QCOMPARE(strip->GetTabText(strip->GetCurrentIndex()), QStringLiteral("tab 2"));
        strip->RemoveTab(strip->GetCurrentIndex());
        QCOMPARE(strip->GetTabText(strip->GetCurrentIndex()), QStringLiteral("tab 3"));
        strip->RemoveTab(strip->GetCurrentIndex());
        QCOMPARE(strip->GetTabText(strip->GetCurrentIndex()), QStringLiteral("tab 1"));
        QCOMPARE(current.count(), 1);
        strip->RemoveTab(5);
        QCOMPARE(strip->Count(), 1);
        strip->RemoveTab(0);
        QCOMPARE(strip->GetCurrentIndex(), -1);
        strip->InsertTab(0, QStringLiteral("again"));
        QCOMPARE(strip->GetCurrentIndex(), 0);
    }

    void scrollValueSetWhileHiddenAppliesAtTheNextResize()
    {
        ShowBar(10, 220);
        strip->SetCurrentIndex(4, true);
        strip->SetScrollBarValue(0);
        const int value = strip->GetTabRect(4).left() - strip->GetTabRect(0).left();
        strip->hide();
        strip->SetScrollBarValue(value);
        QCOMPARE(strip->GetScrollBarValue(), 0);
        strip->show();
        strip->resize(230, strip->height());
        QTRY_COMPARE(strip->GetScrollBarValue(), value);
        QCOMPARE(strip->GetTabRect(4).left(), 0);
    }

    void droppedTabRequestsAMoveToTheTabUnderThePointer()
    {
        ShowBar(4, 600);
        QSignalSpy move(strip.get(), &CustomTabBar::MoveTabRequested);
        std::unique_ptr<QMimeData> own(DragSimulation::TabMimeData(3, 0));
        DragSimulation::DragTo(strip.get(), strip->GetTabRect(2).center(), own.get(), true);
        QCOMPARE(move.count(), 1);
        QCOMPARE(move.at(0), (QList<QVariant>{3, 0, 3, 2}));

        // Past the last tab: the last index for a tab of this bar, one past it for another bar's.
        const QPoint end(strip->GetTabRect(3).right() + 20, 10);
        DragSimulation::DragTo(strip.get(), end, own.get(), false);
        QCOMPARE(strip->GetDropZoneRect().left(), strip->GetTabRect(3).right() + 1);
        QCOMPARE(strip->GetDropZoneRect().right(), strip->width() - 1);
        QDropEvent drop(end, Qt::MoveAction, own.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(strip.get(), &drop);
        QCOMPARE(move.at(1), (QList<QVariant>{3, 0, 3, 3}));
        std::unique_ptr<QMimeData> foreign(DragSimulation::TabMimeData(7, 5));
        DragSimulation::DragTo(strip.get(), end, foreign.get(), true);
        QCOMPARE(move.at(2), (QList<QVariant>{7, 5, 3, 4}));

        std::unique_ptr<QMimeData> second(DragSimulation::TabMimeData(3, 1));
        DragSimulation::DragTo(strip.get(), strip->GetTabRect(1).center(), second.get(), false);
        QVERIFY(!strip->GetDropZoneRect().isValid());
        DragSimulation::DragTo(strip.get(), strip->GetTabRect(0).center(), second.get(), false);
        QCOMPARE(strip->GetDropZoneRect(), strip->GetTabRect(0));
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(strip.get(), &leave);
        QVERIFY(!strip->GetDropZoneRect().isValid());
    }

    void malformedOrForeignDragsAreNotTabDrags()
    {
        ShowBar(3, 600);
        QSignalSpy move(strip.get(), &CustomTabBar::MoveTabRequested);
        QMimeData malformed;
        malformed.setData(MIME_TYPE, QByteArray("abc"));
        DragSimulation::DragTo(strip.get(), strip->GetTabRect(2).center(), &malformed, true);
        QMimeData text;
        text.setText(QStringLiteral("plain"));
        DragSimulation::DragTo(strip.get(), strip->GetTabRect(2).center(), &text, false);
        QVERIFY(!strip->GetDropZoneRect().isValid());
        QDropEvent drop(strip->GetTabRect(2).center(), Qt::MoveAction, &text, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(strip.get(), &drop);
        QVERIFY(!drop.isAccepted());
        QCOMPARE(move.count(), 0);

        strip->SetTabsMoveable(false);
        std::unique_ptr<QMimeData> own(DragSimulation::TabMimeData(3, 0));
        DragSimulation::DragTo(strip.get(), strip->GetTabRect(2).center(), own.get(), true);
        QCOMPARE(move.count(), 0);
    }

    void droppedFilesOpenAtTheTabUnderThePointerInOrder()
    {
        ShowBar(3, 600);
        QTemporaryDir dir;
        const QString a = dir.filePath(QStringLiteral("a.mel"));
        const QString b = dir.filePath(QStringLiteral("b.py"));
        QVERIFY(TestFiles::Write(a, QByteArray()) && TestFiles::Write(b, QByteArray()));
        QSignalSpy open(strip.get(), &CustomTabBar::OpenFileRequested);
        std::unique_ptr<QMimeData> files(
            DragSimulation::UrlMimeData({a, dir.filePath(QStringLiteral("gone.py")), dir.path(), b}));
        DragSimulation::DragTo(strip.get(), strip->GetTabRect(1).center(), files.get(), false);
        QCOMPARE(strip->GetDropZoneRect(), strip->GetTabRect(1));
        QDropEvent drop(strip->GetTabRect(1).center(), Qt::CopyAction, files.get(), Qt::LeftButton,
                        Qt::NoModifier);
        QCoreApplication::sendEvent(strip.get(), &drop);
        // Each file opens at the same index: the last first, so that they end in URL order.
        QCOMPARE(open.count(), 2);
        QCOMPARE(open.at(0), (QList<QVariant>{1, b}));
        QCOMPARE(open.at(1), (QList<QVariant>{1, a}));

        DragSimulation::DragTo(strip.get(), QPoint(strip->width() - 3, 10), files.get(), true);
        QCOMPARE(open.count(), 4);
        QCOMPARE(open.at(3), (QList<QVariant>{3, a}));
    }

    void draggingNearAnEdgeScrolls()
    {
        ShowBar(10, 220);
        std::unique_ptr<QMimeData> foreign(DragSimulation::TabMimeData(7, 0));
        DragSimulation::DragTo(strip.get(), QPoint(strip->width() - 2, 10), foreign.get(), false);
        QVERIFY(strip->IsScrolling());
        QVERIFY(strip->GetScrollBarValue() > 0);
        QDragMoveEvent middle(QPoint(strip->width() / 2, 10), Qt::MoveAction, foreign.get(), Qt::LeftButton,
                              Qt::NoModifier);
        QCoreApplication::sendEvent(strip.get(), &middle);
        QVERIFY(!strip->IsScrolling());
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(strip.get(), &leave);

        // The bar's own last tab, held at the edge: the zone leaves it once the strip brings it there.
        const QPoint edge(strip->width() - 2, 10);
        QCursor::setPos(strip->mapToGlobal(edge));
        std::unique_ptr<QMimeData> own(DragSimulation::TabMimeData(3, 9));
        DragSimulation::DragTo(strip.get(), edge, own.get(), false);
        QVERIFY(strip->GetDropZoneRect().isValid());
        QTRY_VERIFY(!strip->IsScrolling());
        QCOMPARE(strip->TabAt(edge), 9);
        QVERIFY(!strip->GetDropZoneRect().isValid());
        QCoreApplication::sendEvent(strip.get(), &leave);
    }

    void dragStartedInTheLeftEdgeScrollsOnlyFurtherLeft()
    {
        ShowBar(10, 300);
        strip->SetCurrentIndex(9, true);
        QVERIFY(strip->GetScrollBarValue() > 0);
        const QPoint press(12, 10);
        QVERIFY(press.x() <= 0.06 * strip->width());
        QTest::mousePress(strip.get(), Qt::LeftButton, Qt::NoModifier, press);
        const int value = strip->GetScrollBarValue();

        std::unique_ptr<QMimeData> own(DragSimulation::TabMimeData(3, strip->GetCurrentIndex()));
        DragSimulation::DragTo(strip.get(), press, own.get(), false);
        QVERIFY(!strip->IsScrolling());
        QCOMPARE(strip->GetScrollBarValue(), value);
        QDragMoveEvent further(QPoint(4, 10), Qt::MoveAction, own.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(strip.get(), &further);
        QVERIFY(strip->IsScrolling());
        QVERIFY(strip->GetScrollBarValue() < value);
        QDropEvent drop(QPoint(4, 10), Qt::MoveAction, own.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(strip.get(), &drop);
        QVERIFY(!strip->IsScrolling());
        QTest::mouseRelease(strip.get(), Qt::LeftButton, Qt::NoModifier, QPoint(4, 10));
    }
};

QTEST_MAIN(TestTabs)
#include "tst_Tabs.moc"
