#include "ShellFixture.h"
#include "editor/CodeEditor.h"
#include "plugin/MayaUtil.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "shell/StatusBar.h"
#include "tabs/CodeEditorGroup.h"

#include <QtGui/QAction>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>

#include <functional>

namespace
{
// The texts of the bar's labels from left to right, as they stand on screen; hidden ones left out.
QStringList ShownTexts(const StatusBar& bar)
{
    QList<QLabel*> labels = bar.findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
    std::sort(labels.begin(), labels.end(), [](QLabel* a, QLabel* b) { return a->x() < b->x(); });
    QStringList texts;
    for (const QLabel* label : labels)
        if (label->isVisibleTo(&bar))
            texts.append(label->pixmap().isNull() ? label->text() : QStringLiteral("<icon>"));
    return texts;
}

// Runs the bar's context menu and hands it to `use` while it is open.
void WithContextMenu(StatusBar* bar, const std::function<void(QMenu*)>& use)
{
    bool ran = false;
    QTimer::singleShot(0, bar,
                       [&]()
                       {
                           auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                           if (!menu)
                               return;
                           ran = true;
                           use(menu);
                           if (menu->isVisible())
                               menu->close();
                       });
    bar->ShowContextMenu(QPoint(5, 5));
    QVERIFY(ran);
}

QAction* Action(const QMenu* menu, const QString& text)
{
    for (QAction* action : menu->actions())
        if (action->text() == text)
            return action;
    return nullptr;
}
} // namespace

// The status bar alone, and at the foot of the main widget following the active editor and the
// split groups as the user selects and closes them.
class TestStatusBar : public ShellFixture
{
    Q_OBJECT

public:
    TestStatusBar() : ShellFixture(QSize(1200, 800), true) {}

private slots:
    void contextMenuTogglesParts_data()
    {
        QTest::addColumn<QString>("part");
        // The labels the part takes: `count` of them from `first`.
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("count");
        QTest::newRow("interpreter") << "Interpreter" << 0 << 1;
        QTest::newRow("counts and their icons") << "Error/Warning Count" << 1 << 4;
        QTest::newRow("line message") << "Current Line Message" << 5 << 1;
    }

    void contextMenuTogglesParts()
    {
        QFETCH(QString, part);
        QFETCH(int, first);
        QFETCH(int, count);
        KeyBindings bindings;
        StatusBar bar(&bindings);
        bar.resize(900, 30);
        bar.show();
        bar.SetInterpreter(CodeEditorLanguage::MEL);
        bar.SetErrorAndWarningCount(0, 0);
        bar.SetInfo(QStringLiteral("message"));
        bar.SetCursorPosition(1, 1, 0);
        const QStringList all =
            QStringLiteral("MEL     |<icon>|0  |<icon>|0    |message|Ln 1      Col 1      Sel 0|INS")
                .split('|');
        QCOMPARE(ShownTexts(bar), all);

        WithContextMenu(&bar,
                        [&](QMenu* menu)
                        {
                            QCOMPARE(Action(menu, QStringLiteral("Hide Status Bar"))->shortcut(),
                                     bindings.GetShortcut(KeySequenceType::ToggleStatusBar));
                            Action(menu, QStringLiteral("Hide ") + part)->trigger();
                        });
        QStringList shown = all;
        shown.remove(first, count);
        QCOMPARE(ShownTexts(bar), shown);
        WithContextMenu(&bar,
                        [&](QMenu* menu)
                        {
                            QAction* action = Action(menu, QStringLiteral("Show ") + part);
                            QVERIFY(action);
                            action->trigger();
                        });
        QCOMPARE(ShownTexts(bar), all);
        // A long message is cut at the bar's edge; it never asks the window for more room.
        const int minimum = bar.minimumSizeHint().width();
        bar.SetInfo(QString(400, QLatin1Char('x')));
        QCOMPARE(bar.minimumSizeHint().width(), minimum);
    }

    void hideStatusBarFromItsMenu()
    {
        StatusBar* bar = editor->GetStatusBar();
        QVERIFY(bar->isVisible());
        WithContextMenu(bar, [](QMenu* menu) { Action(menu, QStringLiteral("Hide Status Bar"))->trigger(); });
        QVERIFY(!bar->isVisible());
        QVERIFY(!Settings::statusBarVisible);
        QCOMPARE(editor->GetToggleStatusBarAction()->text(), QStringLiteral("Show Status Bar"));
    }

    // Keys typed into the real editor: the bar reads line, column (tabs count to their stop),
    // the selection, the insert mode and the language of the active buffer.
    void followsTheActiveEditor()
    {
        StatusBar* bar = editor->GetStatusBar();
        CodeEditorGroup* group = editor->GetActiveCodeEditorGroup();
        group->SetCurrentIndex(0);
        CodeEditor* mel = editor->GetActiveCodeEditor();
        QCOMPARE(mel->GetLanguage(), CodeEditorLanguage::MEL);
        mel->setFocus();
        QCOMPARE(bar->GetInterpreterText(), QStringLiteral("MEL     "));

        QTest::keyClicks(mel, QStringLiteral("print 1;"));
        QTest::keyClick(mel, Qt::Key_Return);
        QTest::keyClicks(mel, QStringLiteral("\tab"));
        QVERIFY(ShownTexts(*bar).contains(QStringLiteral("Ln 2      Col 7      Sel 0")));
        QTest::keyClick(mel, Qt::Key_Left, Qt::ShiftModifier);
        QTest::keyClick(mel, Qt::Key_Left, Qt::ShiftModifier);
        QVERIFY(ShownTexts(*bar).contains(QStringLiteral("Ln 2      Col 5      Sel 2")));

        QTest::keyClick(mel, Qt::Key_Insert);
        QVERIFY(ShownTexts(*bar).contains(QStringLiteral("OVR")));
        QTest::keyClick(mel, Qt::Key_Insert);
        QVERIFY(ShownTexts(*bar).contains(QStringLiteral("INS")));

        group->SetCurrentIndex(1);
        QCOMPARE(bar->GetInterpreterText(),
                 QStringLiteral("Python %1 (64-bit)     ").arg(MayaUtil::GetPythonVersion()));
        QVERIFY(ShownTexts(*bar).contains(QStringLiteral("Ln 1      Col 1      Sel 0")));

        while (editor->GetCodeEditorCount() > 0)
            QVERIFY(editor->CloseCodeEditor(group, 0, false));
        QCOMPARE(bar->GetInterpreterText(), QString());
        QVERIFY(ShownTexts(*bar).contains(QStringLiteral("Ln 0      Col 0      Sel 0")));
    }

    // The parser's messages reach the editor's decorations after the pause in typing; the
    // counts follow them, and the message is the one of the line under the cursor.
    void countsAndLineMessageFollowTheDecorations()
    {
        StatusBar* bar = editor->GetStatusBar();
        CodeEditorGroup* group = editor->GetActiveCodeEditorGroup();
        group->SetCurrentIndex(1);
        CodeEditor* python = editor->GetActiveCodeEditor();
        QCOMPARE(python->GetLanguage(), CodeEditorLanguage::PYTHON);
        python->setFocus();
        // Put in as a paste would, so that neither a closing quote nor an indent rule changes it.
        python->textCursor().insertText(QStringLiteral("x = 'abc\nif a:\n\t x = 1\n\t y = 2\n"));
        // Labels left to right: interpreter, error icon and count, warning icon and count, message.
        // Two errors on the first line, the parser's and the interpreter's syntax check, and one
        // warning for the mixed indent.
        QTRY_COMPARE_WITH_TIMEOUT(ShownTexts(*bar).at(2), QStringLiteral("2  "), 20000);
        QCOMPARE(ShownTexts(*bar).at(4), QStringLiteral("1    "));

        // The line's later message is the one shown.
        python->SetCursorPosition(2);
        QCOMPARE(ShownTexts(*bar).at(5), QStringLiteral("Unterminated string literal"));
        python->SetCurrentLine(3);
        QVERIFY(ShownTexts(*bar).at(5).contains(QStringLiteral("tabs and spaces")));
        python->SetCurrentLine(2);
        QCOMPARE(ShownTexts(*bar).at(5), QString());

        python->SetText(QStringLiteral("x = 'abc'\n"));
        QTRY_COMPARE_WITH_TIMEOUT(ShownTexts(*bar).at(2), QStringLiteral("0  "), 20000);
        QCOMPARE(ShownTexts(*bar).at(4), QStringLiteral("0    "));
        QCOMPARE(ShownTexts(*bar).at(5), QString());
    }

    void closingTheLastTabOfASplitGroupHandsOver_data()
    {
        QTest::addColumn<bool>("closeTheNewGroup");
        QTest::newRow("the group split off") << true;
        QTest::newRow("the group it came from") << false;
    }

    void closingTheLastTabOfASplitGroupHandsOver()
    {
        QFETCH(bool, closeTheNewGroup);
        const QString path = NewFile(QStringLiteral("split.py"), "x = 1\n");
        QVERIFY(editor->OpenFile(path));
        CodeEditorGroup* first = editor->GetActiveCodeEditorGroup();
        editor->OnMoveTabToZoneRequested(first->GetId(), first->GetCurrentIndex(), first->GetId(),
                                         TabDropZoneAfter);
        CodeEditorGroup* second = editor->GetCodeEditorGroupByPath(path);
        QVERIFY(second && second != first);
        QCOMPARE(editor->GetCodeEditorGroupIndex(second), 1);
        CodeEditorGroup* closed = closeTheNewGroup ? second : first;
        CodeEditorGroup* kept = closeTheNewGroup ? first : second;
        // As the user closes them: the tabs' close requests (nothing is modified, so nothing asks).
        while (closed->GetCount() > 0)
            editor->OnCloseTabRequested(closed, 0);
        QCoreApplication::processEvents();
        QVERIFY(closed->isHidden());

        CodeEditor* shown = kept->GetCodeEditor(kept->GetCurrentIndex());
        QVERIFY(shown && shown->isVisible());
        QCOMPARE(editor->GetActiveCodeEditorGroup(), kept);
        QCOMPARE(editor->GetActiveCodeEditor(), shown);
        QCOMPARE(editor->window()->windowTitle(),
                 QStringLiteral("%1 - Brindlet Editor 2").arg(shown->GetLabel()));
        QCOMPARE(editor->GetStatusBar()->GetInterpreterText().isEmpty(),
                 shown->GetLanguage() == CodeEditorLanguage::TEXT);
        // The keyboard goes to the editor the user sees.
        QCOMPARE(QApplication::focusWidget(), shown);
        const QString before = shown->GetText();
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("#"));
        QCOMPARE(shown->GetText().size(), before.size() + 1);
        const QTextCursor cursor = shown->textCursor();
        QVERIFY(ShownTexts(*editor->GetStatusBar())
                    .contains(QStringLiteral("Ln %1      Col %2      Sel 0")
                                  .arg(cursor.blockNumber() + 1)
                                  .arg(cursor.positionInBlock() + 1)));
    }
};

QTEST_MAIN(TestStatusBar)
#include "tst_StatusBar.moc"
