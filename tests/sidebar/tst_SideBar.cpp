#include "DragSimulation.h"
#include "EditorWindow.h"
#include "HostFixture.h"
#include "PanelPopupMenu.h"
#include "TreeRows.h"
#include "editor/CodeEditor.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "sidebar/ActivityBar.h"
#include "sidebar/ExplorerView.h"
#include "sidebar/OpenCodeEditorsView.h"
#include "sidebar/OutlineTreeWidget.h"
#include "sidebar/OutlineView.h"
#include "sidebar/QuickHelpView.h"
#include "sidebar/SideBar.h"
#include "sidebar/SubView.h"
#include "sidebar/WorkspaceView.h"
#include "tabs/CodeEditorGroup.h"
#include "widgets/FlatButton.h"

#include <QtCore/QMimeData>
#include <QtTest/QtTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSplitter>

#include <memory>

namespace
{
QStringList Rows(const QListWidget* list)
{
    QStringList rows;
    for (int i = 0; i < list->count(); ++i)
        rows.append(list->item(i)->text());
    return rows;
}

QTreeWidgetItem* Find(QTreeWidget* tree, const QString& text)
{
    const QList<QTreeWidgetItem*> found = tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    return found.value(0);
}

// As the window system sends it: a click, then the second press as a double click.
void DoubleClick(QListWidget* list, int row)
{
    const QPoint p = list->visualItemRect(list->item(row)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, p);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, p);
}

QMimeData* SectionMimeData(const QByteArray& payload)
{
    auto* mimeData = new QMimeData;
    mimeData->setData(QStringLiteral("tolvanek-bq2/explorer"), payload);
    return mimeData;
}

const char* const MEL_TEXT = "global proc gamma() {}\nproc alpha() {}\nglobal string $gBeta;\n";

const char* const PYTHON_TEXT =
    "import os\nfrom sys import path as p\nclass Rig:\n    def build(self):\n        pass\n"
    "    @staticmethod\n    def apply():\n        pass\n"
    "def zeta():\n    pass\ndef alpha():\n    pass\n";
} // namespace

// The side bar inside the main widget: activity bar, explorer sections, open editors, outline
// and quick help, through the seams of the main widget.
class TestSideBar : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostFixture> fixture;
    BrindletEditor* editor = nullptr;

    ExplorerView* Explorer() const { return editor->GetSideBar()->GetExplorerView(); }
    OutlineView* Outline() const { return Explorer()->GetOutlineView(); }
    OutlineTreeWidget* OutlineTree() const { return Outline()->GetTreeWidget(); }
    OpenCodeEditorsView* OpenEditors() const { return Explorer()->GetOpenCodeEditorsView(); }
    QStringList OutlineRows() const { return TreeRows::Below(OutlineTree()->invisibleRootItem()); }

    BrindletEditor* Open()
    {
        BrindletEditor* opened = EditorWindow::Open(*fixture, QSize(1400, 900));
        if (opened)
            opened->ShowExplorer();
        return opened;
    }

    // A new buffer of the language with the text, made active, the cursor at its end.
    CodeEditor* Buffer(CodeEditorLanguage language, const QString& text)
    {
        editor->NewBuffer(language);
        CodeEditor* codeEditor = editor->GetActiveCodeEditor();
        codeEditor->SetText(text);
        codeEditor->moveCursor(QTextCursor::End);
        return codeEditor;
    }

    // Keys typed at the end of the buffer; the parse follows through the editor's timer.
    static void TypeAtEnd(CodeEditor* codeEditor, const QString& keys)
    {
        codeEditor->moveCursor(QTextCursor::End);
        codeEditor->setFocus();
        QTest::keyClicks(codeEditor, keys);
    }

    QStringList SectionOrder() const
    {
        QStringList order;
        for (int i = 0; i < Explorer()->GetSplitter()->count(); ++i)
            order.append(Explorer()->GetSplitter()->widget(i)->objectName());
        return order;
    }

private slots:
    void init()
    {
        fixture = std::make_unique<HostFixture>();
        QVERIFY(fixture->LoadPlugin());
        editor = Open();
        QVERIFY(editor);
    }

    void cleanup()
    {
        editor = nullptr;
        fixture.reset();
    }

    void sectionsCollapseAndReorderByDrag()
    {
        QCOMPARE(SectionOrder(), (QStringList{"WorkspaceView", "OutlineView", "OpenCodeEditorsView"}));
        // All collapsed, the sections keep their title height and the filler takes the rest.
        for (int i = 0; i < 3; ++i)
        {
            auto* section = qobject_cast<SubView*>(Explorer()->GetSplitter()->widget(i));
            QTest::mouseClick(section, Qt::LeftButton, Qt::NoModifier, QPoint(40, 5));
            QVERIFY(!section->IsExpanded());
        }
        QTRY_VERIFY(Explorer()->GetFillerWidget()->isVisible());
        QCOMPARE(Outline()->height(), Outline()->TitleBarHeight());
        for (int i = 0; i < 3; ++i)
            qobject_cast<SubView*>(Explorer()->GetSplitter()->widget(i))->SetExpanded(true);
        QVERIFY(!Explorer()->GetFillerWidget()->isVisible());
        QTest::qWait(50);

        // Dragging the first section, the workspace, onto the open editors moves it there.
        const QPoint onOpenEditors =
            OpenEditors()->geometry().center() + QPoint(0, Explorer()->GetTitleBarHeight());
        std::unique_ptr<QMimeData> first(SectionMimeData(QByteArray(1, 0)));
        DragSimulation::DragTo(Explorer(), onOpenEditors, first.get(), false);
        QVERIFY(OpenEditors()->IsOverlayVisible());
        DragSimulation::DragTo(Explorer(), onOpenEditors, first.get(), true);
        QVERIFY(!OpenEditors()->IsOverlayVisible());
        QCOMPARE(SectionOrder(), (QStringList{"OutlineView", "OpenCodeEditorsView", "WorkspaceView"}));

        // A section over itself, or a payload of the wrong size, draws nothing and moves nothing.
        const QPoint onOutline = Outline()->geometry().center() + QPoint(0, Explorer()->GetTitleBarHeight());
        DragSimulation::DragTo(Explorer(), onOutline, first.get(), false);
        QVERIFY(!Outline()->IsOverlayVisible());
        std::unique_ptr<QMimeData> malformed(SectionMimeData(QByteArray(2, 2)));
        DragSimulation::DragTo(Explorer(), onOutline, malformed.get(), true);
        QVERIFY(!Outline()->IsOverlayVisible());
        QCOMPARE(SectionOrder(), (QStringList{"OutlineView", "OpenCodeEditorsView", "WorkspaceView"}));

        editor->SaveState();
        fixture->Restart();
        editor = Open();
        QVERIFY(editor);
        QCOMPARE(SectionOrder(), (QStringList{"OutlineView", "OpenCodeEditorsView", "WorkspaceView"}));

        // With the workspace alone, its title replaces the heading and it cannot collapse.
        Explorer()->ToggleOutlineVisibility();
        Explorer()->ToggleOpenEditorVisibility();
        WorkspaceView* workspaceView = Explorer()->GetWorkspaceView();
        QVERIFY(!Explorer()->GetTitleLabel()->isVisible());
        QCOMPARE(workspaceView->GetTitleText(), QStringLiteral("EXPLORER: WORKSPACE"));
        workspaceView->SetExpanded(false);
        QVERIFY(workspaceView->IsExpanded());

        // The activity bar switches the view.
        ActivityBar* bar = editor->GetActivityBar();
        QTest::mouseClick(bar->GetViewButton(SideBarViewQuickHelp), Qt::LeftButton);
        QCOMPARE(editor->GetSideBar()->GetView(), SideBarViewQuickHelp);
        QVERIFY(bar->GetViewButton(SideBarViewQuickHelp)->IsChecked());
        QVERIFY(!bar->GetViewButton(SideBarViewExplorer)->IsChecked());

        // The settings menu offers the preferences at three pages.
        QSignalSpy pages(bar, &ActivityBar::EditPreferencesSelected);
        QStringList texts;
        WhenPopupMenu(this, &texts, 2, 100);
        QTest::mouseClick(bar->GetSettingsButton(), Qt::LeftButton);
        QCOMPARE(texts, (QStringList{"Preferences", "-", "Fonts and Colors", "Keyboard Shortcuts"}));
        QCOMPARE(pages.size(), 1);
        QCOMPARE(pages.first().first().value<PreferencePage>(), FONTS_AND_COLORS_PAGE);
        QVERIFY(!bar->GetSettingsButton()->IsChecked());
    }

    void openEditorsFollowTheTabs()
    {
        const QStringList labels = Rows(OpenEditors()->GetGroupList(0));
        QCOMPARE(labels.size(), 2);
        // One group in use: no heading.
        QVERIFY(!OpenEditors()->GetGroupLabel(0)->isVisible());

        // A tab moved into a group of its own: two lists with the names of their places.
        CodeEditorGroup* group = editor->GetCodeEditorGroupByIndex(0);
        editor->OnMoveTabToZoneRequested(group->GetId(), 1, group->GetId(), TabDropZoneAfter);
        QCOMPARE(Rows(OpenEditors()->GetGroupList(0)), QStringList{labels.at(0)});
        QCOMPARE(Rows(OpenEditors()->GetGroupList(1)), QStringList{labels.at(1)});
        QVERIFY(OpenEditors()->GetGroupLabel(0)->isVisible());
        QCOMPARE(OpenEditors()->GetGroupLabel(0)->text(), QStringLiteral("LEFT"));
        QCOMPARE(OpenEditors()->GetGroupLabel(1)->text(), QStringLiteral("CENTER"));
        QVERIFY(!OpenEditors()->GetGroupLabel(2)->isVisible());
        // Tabs in the first and third lists only: the third heading names the far side.
        OpenEditors()->SetCodeEditors(2, {CodeEditorProperties()});
        OpenEditors()->SetCodeEditors(1, {});
        QVERIFY(!OpenEditors()->GetGroupList(1)->isVisible());
        QCOMPARE(OpenEditors()->GetGroupLabel(2)->text(), QStringLiteral("RIGHT"));
        editor->RefreshOpenCodeEditorsView();

        // A click on a row activates its tab; the active row follows the active editor.
        QListWidget* list = OpenEditors()->GetGroupList(0);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list->visualItemRect(list->item(0)).center());
        QCOMPARE(editor->GetActiveCodeEditorGroupIndex(), 0);
        QCOMPARE(editor->GetActiveCodeEditor()->GetLabel(), labels.at(0));
        QCOMPARE(list->currentRow(), 0);

        editor->NewBuffer(CodeEditorLanguage::TEXT);
        QCOMPARE(Rows(OpenEditors()->GetGroupList(0)).size(), 2);
        QCOMPARE(list->currentRow(), 1);
        group->SetCurrentIndex(0);
        QCOMPARE(list->currentRow(), 0);
        QVERIFY(editor->CloseCodeEditor(0, 1, false));
        QCOMPARE(Rows(OpenEditors()->GetGroupList(0)), QStringList{labels.at(0)});

        // Under the pointer the title offers Save All and Close All, sized like every title button.
        QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
        QCoreApplication::sendEvent(OpenEditors(), &enter);
        QSignalSpy saveAll(editor->GetSideBar(), &SideBar::SaveAllRequested);
        QSignalSpy closeAll(editor->GetSideBar(), &SideBar::CloseAllRequested);
        QStringList tips;
        for (FlatButton* button : OpenEditors()->findChildren<FlatButton*>())
        {
            QVERIFY(button->isVisible());
            QCOMPARE(button->size(), Outline()->GetTitleBarButtonSize());
            tips.append(button->toolTip());
            QTest::mouseClick(button, Qt::LeftButton);
        }
        QCOMPARE(tips, (QStringList{"Save All", "Close All"}));
        QCOMPARE(saveAll.count() + closeAll.count(), 2);
    }

    // Section titles grow with the interface's scale; a scale that makes no sense leaves them as they are.
    void titleHeightFollowsTheInterfaceScale()
    {
        for (const auto& [scale, height] : {std::pair{2.0, 40}, {0.0, 20}})
        {
            Settings::customScaleValue = scale;
            QCOMPARE(SubView(nullptr).TitleBarHeight(), height);
        }
    }

    void quickHelpListsFlagsAndInserts()
    {
        CodeEditor* mel = Buffer(CodeEditorLanguage::MEL, QStringLiteral("stackTrace "));
        editor->SetQuickHelpSearchText(QString(), true);
        QuickHelpView* view = editor->GetSideBar()->GetQuickHelpView();
        QCOMPARE(editor->GetSideBar()->GetView(), SideBarViewQuickHelp);
        QListWidget* flags = view->GetFlagList();

        // The list changes when editing finishes, not at each key.
        QTest::keyClicks(view->GetSearchEdit(), QStringLiteral("stackTrace"));
        QCOMPARE(flags->count(), 0);
        QTest::keyClick(view->GetSearchEdit(), Qt::Key_Return);
        QCOMPARE(Rows(flags), (QStringList{"-st/-state    String", "-d/-dump"}));
        QCOMPARE(flags->item(0)->data(Qt::UserRole).toString(), QStringLiteral("-state"));

        // A double click inserts the long name into the active editor; Python drops the dash.
        DoubleClick(flags, 1);
        QCOMPARE(mel->GetText(), QStringLiteral("stackTrace -dump"));
        CodeEditor* python = Buffer(CodeEditorLanguage::PYTHON, QStringLiteral("cmds.stackTrace("));
        DoubleClick(flags, 0);
        QCOMPARE(python->GetText(), QStringLiteral("cmds.stackTrace(state"));

        // Not a command: an empty list and no message.
        fixture->ClearMessages();
        view->SetSearchText(QStringLiteral("noSuchCommand"), false);
        QCOMPARE(flags->count(), 0);
        QVERIFY(fixture->MessagesOfType(MCommandMessage::kError).isEmpty());
        view->Clear();
        QVERIFY(view->GetSearchEdit()->text().isEmpty());
    }

    void outlineFollowsTypingAndSelects()
    {
        CodeEditor* mel = Buffer(CodeEditorLanguage::MEL, QString::fromLatin1(MEL_TEXT));
        QTRY_COMPARE(OutlineRows(), (QStringList{"gamma", "alpha", "$gBeta"}));

        // Typing reaches the outline through the editor's timer and the parser.
        TypeAtEnd(mel, QStringLiteral("proc delta() {}"));
        QTRY_COMPARE(OutlineRows(), (QStringList{"gamma", "alpha", "$gBeta", "delta"}));

        // A click on a symbol selects its name in the editor.
        QTreeWidgetItem* alpha = Find(OutlineTree(), QStringLiteral("alpha"));
        QTest::mouseClick(OutlineTree()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          OutlineTree()->visualItemRect(alpha).center());
        QCOMPARE(mel->GetSelectedText(), QStringLiteral("alpha"));

        // Sorted by name, also through the rebuild of a filter; filters hide kinds without a new
        // parse, Show All brings them back; unsorted, the order of the source is back.
        QTest::mouseClick(Outline()->GetSortButton(), Qt::LeftButton);
        QCOMPARE(OutlineRows(), (QStringList{"$gBeta", "alpha", "delta", "gamma"}));
        Outline()->ToggleGlobalVariableVisibility();
        QCOMPARE(OutlineRows(), (QStringList{"alpha", "delta", "gamma"}));
        Outline()->ShowAllTypes();
        QCOMPARE(OutlineRows(), (QStringList{"$gBeta", "alpha", "delta", "gamma"}));
        QTest::mouseClick(Outline()->GetSortButton(), Qt::LeftButton);
        QCOMPARE(OutlineRows(), (QStringList{"gamma", "alpha", "$gBeta", "delta"}));

        // A long outline: the next parse, after a key, rebuilds the tree at the same place.
        QString text;
        for (int i = 0; i < 200; ++i)
            text += QStringLiteral("proc p%1() {}\n").arg(i, 3, 10, QLatin1Char('0'));
        mel = Buffer(CodeEditorLanguage::MEL, text);
        QTRY_COMPARE(OutlineTree()->topLevelItemCount(), 200);
        QScrollBar* bar = OutlineTree()->verticalScrollBar();
        QVERIFY(bar->maximum() > 50);
        bar->setValue(40);
        TypeAtEnd(mel, QStringLiteral("proc q() {}"));
        QTRY_COMPARE(OutlineTree()->topLevelItemCount(), 201);
        QCOMPARE(bar->value(), 40);
    }

    void outlineKeepsExpandedNodesPerFile()
    {
        CodeEditor* python = Buffer(CodeEditorLanguage::PYTHON, QString::fromLatin1(PYTHON_TEXT));
        QTRY_VERIFY(Find(OutlineTree(), QStringLiteral("Rig")));
        QCOMPARE(OutlineRows(), (QStringList{"Rig", "  build", "  apply", "zeta", "alpha"}));
        Outline()->ToggleImportVisibility();
        QCOMPARE(OutlineRows(),
                 (QStringList{"os", "p = path (sys)", "Rig", "  build", "  apply", "zeta", "alpha"}));
        QTreeWidgetItem* rig = Find(OutlineTree(), QStringLiteral("Rig"));
        QVERIFY(!rig->isExpanded());
        rig->setExpanded(true);

        // The import's selection covers the imported name only.
        QTreeWidgetItem* p = Find(OutlineTree(), QStringLiteral("p = path (sys)"));
        QCOMPARE(p->data(0, Qt::UserRole + 1).toInt() - p->data(0, Qt::UserRole).toInt(), 1);

        // A rebuild after typing keeps the node open.
        TypeAtEnd(python, QStringLiteral("def omega(): pass"));
        QTRY_VERIFY(Find(OutlineTree(), QStringLiteral("omega")));
        QVERIFY(Find(OutlineTree(), QStringLiteral("Rig"))->isExpanded());

        // Another buffer with the same symbols has its own state; coming back restores this one.
        const QString firstPath = python->GetFilePath();
        Buffer(CodeEditorLanguage::PYTHON, QString::fromLatin1(PYTHON_TEXT));
        QTRY_VERIFY(Find(OutlineTree(), QStringLiteral("Rig")));
        QTest::qWait(300);
        QVERIFY(!Find(OutlineTree(), QStringLiteral("Rig"))->isExpanded());
        editor->SetActiveCodeEditor(firstPath);
        QTRY_VERIFY(Find(OutlineTree(), QStringLiteral("omega")));
        QVERIFY(Find(OutlineTree(), QStringLiteral("Rig"))->isExpanded());
        QVERIFY(Settings::outlineExpandedHash.values(firstPath).contains(QStringLiteral("Rig")));

        editor->CloseCodeEditor(0, editor->GetActiveCodeEditorGroup()->GetCurrentIndex(), false);
        QVERIFY(!Settings::outlineExpandedHash.contains(firstPath));
    }

    // Each file keeps where its outline was scrolled to.
    void outlineKeepsItsScrollPerFile()
    {
        QString text;
        for (int i = 0; i < 80; ++i)
            text += QStringLiteral("def f%1():\n    pass\n").arg(i);
        const QString first = Buffer(CodeEditorLanguage::PYTHON, text)->GetFilePath();
        QTRY_VERIFY(Find(OutlineTree(), QStringLiteral("f79")));
        QScrollBar* bar = OutlineTree()->verticalScrollBar();
        QVERIFY(bar->maximum() > 10);
        bar->setValue(10);
        Buffer(CodeEditorLanguage::PYTHON, QStringLiteral("def g():\n    pass\n"));
        QTRY_VERIFY(Find(OutlineTree(), QStringLiteral("g")));
        editor->SetActiveCodeEditor(first);
        QTRY_VERIFY(Find(OutlineTree(), QStringLiteral("f79")));
        QTRY_COMPARE(bar->value(), 10);
    }
};

QTEST_MAIN(TestSideBar)
#include "tst_SideBar.moc"
