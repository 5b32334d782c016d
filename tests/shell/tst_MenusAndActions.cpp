// The menu bar of the main widget: its entries in order, what each does, and every default key
// sequence reaching its action.
#include "ShellFixture.h"
#include "editor/CodeEditor.h"
#include "output/OutputTextEdit.h"
#include "output/PanelGroup.h"
#include "plugin/BrindletEditorCommand.h"
#include "plugin/MayaUtil.h"
#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "shell/BrindletEditor.h"
#include "shell/StatusBar.h"
#include "tabs/CodeEditorGroup.h"

#include <QtGui/QAction>
#include <QtGui/QClipboard>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialog>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include <functional>

namespace
{
// Declines every modal dialog that an action opens, so that each returns at once.
struct DialogDecliner : QTimer
{
    DialogDecliner()
    {
        connect(this, &QTimer::timeout,
                []
                {
                    QWidget* modal = QApplication::activeModalWidget();
                    if (auto* dialog = qobject_cast<QDialog*>(modal))
                        dialog->reject();
                    else if (modal)
                        modal->close();
                });
        start(10);
    }
};

void CollectActions(const QMenu* menu, QList<QAction*>& actions)
{
    for (QAction* action : menu->actions())
    {
        if (action->menu())
            CollectActions(action->menu(), actions);
        else if (!action->isSeparator())
            actions.append(action);
    }
}
} // namespace

class TestMenusAndActions : public ShellFixture
{
    Q_OBJECT

public:
    TestMenusAndActions() : ShellFixture(QSize(1200, 800), true) {}

private:
    QMenuBar* MenuBar() const { return editor->findChild<QMenuBar*>(); }

    // An entry by its path, as "Edit/Line/Delete Line", or a menu bar entry, as "Edit".
    QAction* Action(const QString& path) const
    {
        QAction* found = nullptr;
        for (const QString& part : path.split(QLatin1Char('/')))
        {
            if (found && !found->menu())
                return nullptr;
            const QList<QAction*> entries = found ? found->menu()->actions() : MenuBar()->actions();
            const auto at = std::find_if(entries.begin(), entries.end(),
                                         [&part](const QAction* action) { return action->text() == part; });
            if (at == entries.end())
                return nullptr;
            found = *at;
        }
        return found;
    }

    CodeEditor* FocusNewBuffer(CodeEditorLanguage language, const QString& state)
    {
        editor->NewBuffer(language);
        editor->FocusActiveCodeEditor();
        auto* codeEditor = qobject_cast<CodeEditor*>(QApplication::focusWidget());
        if (!codeEditor)
            return nullptr;
        QString text = state;
        int position = text.indexOf(QLatin1Char('|'));
        text.remove(QLatin1Char('|'));
        const int anchor = text.indexOf(QLatin1Char('^'));
        text.remove(QLatin1Char('^'));
        if (anchor >= 0 && anchor < position)
            --position;
        codeEditor->SetText(text);
        QTextCursor cursor = codeEditor->textCursor();
        cursor.setPosition(anchor < 0 ? position : anchor);
        cursor.setPosition(position, QTextCursor::KeepAnchor);
        codeEditor->setTextCursor(cursor);
        return codeEditor;
    }

    static QString State(const CodeEditor* codeEditor)
    {
        QString text = codeEditor->GetText();
        const QTextCursor cursor = codeEditor->textCursor();
        if (cursor.hasSelection() && cursor.anchor() > cursor.position())
            text.insert(cursor.anchor(), QLatin1Char('^'));
        text.insert(cursor.position(), QLatin1Char('|'));
        if (cursor.hasSelection() && cursor.anchor() < cursor.position())
            text.insert(cursor.anchor(), QLatin1Char('^'));
        return text;
    }

private slots:
    void menuBarShape()
    {
        QStringList titles;
        for (const QAction* action : MenuBar()->actions())
        {
            titles.append(action->text());
            QVERIFY(action->menu()->isTearOffEnabled());
        }
        QCOMPARE(titles, QStringList({"File", "Edit", "View", "Go", "Output", "Command", "Help"}));
        QVERIFY(!Action(QStringLiteral("Output/Verbosity"))->menu()->isTearOffEnabled());
        QCOMPARE(Action(QStringLiteral("Edit/Line/Move Line Up"))->statusTip(),
                 QStringLiteral("Move Line Upt"));
    }

    void everyActionRunsWithoutHarm()
    {
        // Every entry and every action for a shortcut alone, once, with the dialogs they open declined.
        QList<QAction*> actions = editor->actions();
        for (QAction* action : MenuBar()->actions())
            CollectActions(action->menu(), actions);
        DialogDecliner decliner;
        for (QAction* action : std::as_const(actions))
        {
            editor->FocusActiveCodeEditor();
            action->trigger();
        }
        QVERIFY(editor->isVisible());
        QVERIFY(BrindletEditorCommand::GuiAvailable());
    }

    void editActions_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("after");
        // Name, action, text with cursor (|) and anchor (^), typed keys, text afterwards.
        const char* const rows[][5] = {
            {"undo", "Edit/Undo", "a|", "b", "a|"},
            {"select all", "Edit/Select All", "a|b", "", "^ab|"},
            {"cut", "Edit/Cut", "^ab|c", "", "|c"},
            {"cut line", "Edit/Cut", "a|b\nc", "", "|c"},
            {"increase indent", "Edit/Line/Increase Indent", "a|b", "", "    a|b"},
            {"decrease indent", "Edit/Line/Decrease Indent", "    a|b", "", "a|b"},
            {"copy line up", "Edit/Line/Copy Line Up", "a|b", "", "a|b\nab"},
            {"copy line down", "Edit/Line/Copy Line Down", "a|b", "", "ab\na|b"},
            {"move line up", "Edit/Line/Move Line Up", "x\na|b", "", "a|b\nx"},
            {"move line down", "Edit/Line/Move Line Down", "a|b\nx", "", "x\na|b"},
            {"delete line", "Edit/Line/Delete Line", "a\nb|", "", "a\n|"},
            {"toggle comment", "Edit/Comment/Toggle Comment", "a|", "", "# a|"},
            {"toggle block comment", "Edit/Comment/Toggle Block Comment", "a|", "", "# a|"},
            {"convert tabs", "Edit/Convert Tabs to Spaces", "\ta|", "", "    a|"},
        };
        for (const auto& row : rows)
            QTest::newRow(row[0]) << row[1] << row[2] << row[3] << row[4];
    }

    void editActions()
    {
        QFETCH(QString, path);
        QFETCH(QString, before);
        QFETCH(QString, typed);
        CodeEditor* codeEditor = FocusNewBuffer(CodeEditorLanguage::PYTHON, before);
        QVERIFY(codeEditor);
        QTest::keyClicks(codeEditor, typed);
        QAction* action = Action(path);
        QVERIFY(action);
        action->trigger();
        QTEST(State(codeEditor), "after");
    }

    void clipboardActions()
    {
        CodeEditor* codeEditor = FocusNewBuffer(CodeEditorLanguage::MEL, QStringLiteral("^ab|c"));
        QVERIFY(codeEditor);
        Action(QStringLiteral("Edit/Copy"))->trigger();
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("ab"));
        codeEditor->moveCursor(QTextCursor::End);
        Action(QStringLiteral("Edit/Paste"))->trigger();
        QCOMPARE(State(codeEditor), QStringLiteral("abcab|"));
        codeEditor->undo();
        Action(QStringLiteral("Edit/Redo"))->trigger();
        QCOMPARE(codeEditor->GetText(), QStringLiteral("abcab"));

        // In the output view, which is read-only, copy works and cut and paste do nothing.
        OutputTextEdit* output = editor->GetPanelGroup()->GetOutputTextEdit();
        output->setFocus();
        QCOMPARE(QApplication::focusWidget(), output);
        output->selectAll();
        const QString shown = output->toPlainText();
        QVERIFY(!shown.isEmpty());
        Action(QStringLiteral("Edit/Cut"))->trigger();
        Action(QStringLiteral("Edit/Paste"))->trigger();
        QCOMPARE(output->toPlainText(), shown);
        Action(QStringLiteral("Edit/Copy"))->trigger();
        QCOMPARE(QGuiApplication::clipboard()->text(),
                 output->textCursor().selectedText().replace(QChar::ParagraphSeparator, QLatin1Char('\n')));
    }

    void toggles_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("which");
        QTest::newRow("word wrap") << "View/Toggle Word Wrap" << 0;
        QTest::newRow("render whitespace") << "View/Toggle Render Whitespaces" << 1;
        QTest::newRow("line numbers in errors") << "Output/Line Numbers in Errors" << 2;
        QTest::newRow("stack trace") << "Output/Show Stack Trace" << 3;
        QTest::newRow("suppress stack window") << "Output/Suppress Stack Window" << 4;
    }

    void toggles()
    {
        QFETCH(QString, path);
        QFETCH(int, which);
        CodeEditor* codeEditor = FocusNewBuffer(CodeEditorLanguage::PYTHON, QStringLiteral("a|"));
        QVERIFY(codeEditor);
        const std::function<bool()> states[] = {
            [codeEditor]
            { return codeEditor->document()->defaultTextOption().wrapMode() != QTextOption::NoWrap; },
            [codeEditor] {
                return bool(codeEditor->document()->defaultTextOption().flags() &
                            QTextOption::ShowTabsAndSpaces);
            },
            [] { return MayaUtil::LineNumbersInErrorsEnabled(); },
            [] { return MayaUtil::ShowStackTraceEnabled(); },
            [] { return Settings::suppressStackWindow; },
        };
        QAction* action = Action(path);
        QVERIFY(action);
        const bool before = states[which]();
        QCOMPARE(action->isCheckable(), which >= 2);
        if (action->isCheckable())
            QCOMPARE(action->isChecked(), before);
        action->trigger();
        QTRY_COMPARE(states[which](), !before);
        action->trigger();
        QTRY_COMPARE(states[which](), before);
    }

    void verbosity_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<int>("index");
        QTest::newRow("minimal") << "Minimal" << 2;
        QTest::newRow("normal") << "Normal" << 1;
        QTest::newRow("echo all") << "Echo All" << 0;
    }

    void verbosity()
    {
        QFETCH(QString, entry);
        QFETCH(int, index);
        PanelGroup* panelGroup = editor->GetPanelGroup();
        QAction* action = Action(QStringLiteral("Output/Verbosity/") + entry);
        QVERIFY(action);
        action->trigger();
        QCOMPARE(panelGroup->GetVebosityIndex(), index);
        QCOMPARE(MayaUtil::EchoAllCommandsEnabled(), index == 0);

        // The menu shows the choice of the combo box, whichever way it was made.
        auto* combo = panelGroup->findChild<QComboBox*>(QStringLiteral("outputTypeCmb"));
        QVERIFY(combo);
        combo->setCurrentIndex((index + 1) % 3);
        QMenu* menu = Action(QStringLiteral("Output/Verbosity"))->menu();
        emit menu->aboutToShow();
        QCOMPARE(menu->actions().at((index + 1) % 3)->isChecked(), true);

        // The shortcut-only echo action follows the combo box, and sets it.
        QAction* echo = nullptr;
        for (QAction* candidate : editor->actions())
            echo = candidate->text() == QLatin1String("Echo All Commands") ? candidate : echo;
        QVERIFY(echo);
        QCOMPARE(echo->isChecked(), (index + 1) % 3 == 0);
        echo->trigger();
        QCOMPARE(panelGroup->GetVebosityIndex() == 0, echo->isChecked());
    }

    void outputAndNavigation()
    {
        editor->AppendToOutput(QStringLiteral("some output\n"));
        Action(QStringLiteral("Edit/Clear Output"))->trigger();
        QCOMPARE(editor->GetPanelGroup()->GetOutputTextEdit()->toPlainText(), QString());

        CodeEditorGroup* group = editor->GetActiveCodeEditorGroup();
        QCOMPARE(group->GetCount(), 2);
        group->SetCurrentIndex(0);
        Action(QStringLiteral("Go/Switch Editor/Next Editor"))->trigger();
        QCOMPARE(group->GetCurrentIndex(), 1);
        QCOMPARE(QApplication::focusWidget(), group->GetCurrent());
        // Past the last tab, with no other group holding tabs, back to this group's first.
        Action(QStringLiteral("Go/Switch Editor/Next Editor"))->trigger();
        QCOMPARE(group->GetCurrentIndex(), 0);
        Action(QStringLiteral("Go/Switch Editor/Previous Editor"))->trigger();
        QCOMPARE(group->GetCurrentIndex(), 1);
        Action(QStringLiteral("Go/Switch Group/Next Editor Group"))->trigger();
        QCOMPARE(editor->GetActiveCodeEditorGroup(), group);

        // One action, named by the menu that shows it, opens the search view.
        QAction* search = Action(QStringLiteral("Edit/Find in Files"));
        QVERIFY(search);
        emit Action(QStringLiteral("View"))->menu()->aboutToShow();
        QCOMPARE(search->text(), QStringLiteral("Search"));
        QCOMPARE(search->statusTip(), QStringLiteral("Search"));
        QCOMPARE(Action(QStringLiteral("View/Search")), search);
        Settings::sideBarVisible = false;
        search->trigger();
        QVERIFY(Settings::sideBarVisible);
        QVERIFY(Settings::searchViewActive);
        emit Action(QStringLiteral("Edit"))->menu()->aboutToShow();
        QCOMPARE(search->text(), QStringLiteral("Find in Files"));
    }

    void shortcutsReachTheirActions()
    {
        DialogDecliner decliner;
        QStringList missed;
        int checked = 0;
        for (const KeySequence* row : editor->GetKeyBindings()->GetKeySequences())
        {
            if (!row->action)
                continue;
            for (const QKeySequence& sequence : row->defaultSequences)
            {
                if (sequence.isEmpty())
                    continue;
                // From a widget of the editor that takes no keys itself, as the tab bar or a button.
                editor->window()->activateWindow();
                QVERIFY(QTest::qWaitForWindowActive(editor->window()));
                editor->GetStatusBar()->setFocus();
                QSignalSpy triggered(row->action.data(), &QAction::triggered);
                QTest::keySequence(editor->GetStatusBar(), sequence);
                if (triggered.count() != 1)
                    missed.append(row->label + QStringLiteral(": ") + sequence.toString());
                ++checked;
            }
        }
        QVERIFY2(missed.isEmpty(), qPrintable(missed.join(QStringLiteral(", "))));
        QVERIFY(checked > 50);
    }
};

QTEST_MAIN(TestMenusAndActions)
#include "tst_MenusAndActions.moc"
