#include "EditorWindow.h"
#include "HostFixture.h"
#include "TestFiles.h"
#include "editor/CodeEditor.h"
#include "plugin/MayaUtil.h"
#include "shell/BrindletEditor.h"
#include "shell/StatusBar.h"
#include "tabs/CodeEditorGroup.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>

// What the status bar, the title and the keyboard follow as the user selects and closes split
// groups, read from the widgets the user sees.
class TestStatusAndGroups : public QObject
{
    Q_OBJECT

private:
    BrindletEditor* Open() { return editor = EditorWindow::Open(*fixture, QSize(1000, 700), true); }

    // The position text as shown, blanks folded: "Ln 1 Col 4 Sel 0".
    QString CursorText() const
    {
        const auto labels = editor->GetStatusBar()->findChildren<QLabel*>();
        for (const QLabel* label : labels)
        {
            if (label->text().startsWith(QLatin1String("Ln ")))
                return label->text().simplified();
        }
        return QString();
    }

    QString Title() const { return editor->window()->windowTitle(); }

    QString NewFile(const QString& name, const QByteArray& content) const
    {
        const QString path = files.filePath(name);
        return TestFiles::Write(path, content) ? path : QString();
    }

private slots:
    void init()
    {
        fixture = std::make_unique<HostFixture>();
        QVERIFY(fixture->LoadPlugin() == MStatus::kSuccess);
        QVERIFY(Open());
    }

    void cleanup() { fixture.reset(); }

    void selectAllCountsTheSelection_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("cursorMovesBack");
        QTest::newRow("cursor at the end") << QStringLiteral("print(22)") << 0;
        QTest::newRow("cursor inside") << QStringLiteral("abc") << 2;
    }

    void selectAllCountsTheSelection()
    {
        QFETCH(QString, text);
        QFETCH(int, cursorMovesBack);
        CodeEditor* codeEditor = editor->GetActiveCodeEditor();
        QVERIFY(codeEditor);
        codeEditor->setFocus();
        QTest::keyClicks(codeEditor, text);
        for (int i = 0; i < cursorMovesBack; ++i)
            QTest::keyClick(codeEditor, Qt::Key_Left);
        QVERIFY(CursorText().endsWith(QLatin1String("Sel 0")));
        QTest::keyClick(codeEditor, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(codeEditor->textCursor().selectedText().size(), text.size());
        QVERIFY2(CursorText().endsWith(QStringLiteral("Sel %1").arg(text.size())), qPrintable(CursorText()));
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
        // Split: the file's tab moves into a group of its own, beside the first.
        editor->OnMoveTabToZoneRequested(first->GetId(), first->GetCurrentIndex(), first->GetId(),
                                         TabDropZoneAfter);
        CodeEditorGroup* second = editor->GetCodeEditorGroupByPath(path);
        QVERIFY(second && second != first);
        QCOMPARE(editor->GetCodeEditorGroupIndex(second), 1);
        // Everything but the split file's tab goes from the group that is closed.
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
        QCOMPARE(Title(), QStringLiteral("%1 - Brindlet Editor 2").arg(shown->GetLabel()));
        QVERIFY2(CursorText().startsWith(QLatin1String("Ln 1 Col ")), qPrintable(CursorText()));
        // The keyboard goes to the editor the user sees.
        QCOMPARE(QApplication::focusWidget(), shown);
        const QString before = shown->GetText();
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("#"));
        QCOMPARE(shown->GetText().size(), before.size() + 1);
    }

private:
    std::unique_ptr<HostFixture> fixture;
    BrindletEditor* editor = nullptr;
    QTemporaryDir files;
};

QTEST_MAIN(TestStatusAndGroups)
#include "tst_StatusAndGroups.moc"
