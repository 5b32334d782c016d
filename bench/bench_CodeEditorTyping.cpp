// Cost of typing in a large buffer: one key press handled by a shown editor, and the work that
// runs when the pause after typing is over. Both have to stay well inside one frame (16 ms). The
// host is loaded, so that the highlighters colour with Maya's own word lists.
//
// Run a Release build with QT_QPA_PLATFORM=offscreen.
#include "BenchClock.h"
#include "BenchTexts.h"
#include "HostApplication.h"
#include "editor/CodeEditor.h"
#include "language/Highlighter.h"
#include "plugin/PluginMain.h"
#include "settings/Settings.h"

#include <QtCore/QTemporaryDir>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

#include <cstdio>
#include <memory>

namespace
{
constexpr int LINE_COUNT = 100000;

QString LargeMelBuffer()
{
    QStringList lines;
    lines.reserve(LINE_COUNT);
    for (int i = 0; i < LINE_COUNT; ++i)
    {
        switch (i % 4)
        {
        case 0:
            lines.append(QStringLiteral("global proc int helper%1(string $name, float $value)").arg(i));
            break;
        case 1:
            lines.append(QStringLiteral("{"));
            break;
        case 2:
            lines.append(
                QStringLiteral("    setAttr ($name + \".translateX\") ($value * %1); // step").arg(i));
            break;
        default:
            lines.append(QStringLiteral("}"));
            break;
        }
    }
    return lines.join(QLatin1Char('\n'));
}
} // namespace

class BenchCodeEditorTyping : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostApplication> host;
    std::unique_ptr<CodeEditor> editor;
    std::unique_ptr<CodeEditor> pythonEditor;
    qsizetype received = 0;

    void MoveToMiddle()
    {
        QTextCursor cursor = editor->textCursor();
        cursor.setPosition(editor->document()->findBlockByNumber(LINE_COUNT / 2 + 2).position() + 4);
        editor->setTextCursor(cursor);
    }

private slots:
    void initTestCase()
    {
        host = std::make_unique<HostApplication>(false);
        QVERIFY(host->LoadPlugin(QStringLiteral("brindletEditor2"), initializePlugin, uninitializePlugin));
        Settings::melCompleteOnLetters = Settings::pythonCompleteOnLetters = Settings::pythonCompleteOnDot =
            false;
        CodeEditorProperties properties;
        properties.type = CodeEditorType::INTERNAL_BUFFER;
        properties.language = CodeEditorLanguage::MEL;
        properties.filePath = QStringLiteral("/tmp/bench.mel");
        editor = std::make_unique<CodeEditor>(properties, nullptr);
        editor->SetText(LargeMelBuffer());
        QCOMPARE(editor->GetLineCount(), LINE_COUNT);
        connect(editor.get(), &CodeEditor::TextChanged, this,
                [this](const QString&, const QString& text) { received += text.size(); });
        editor->resize(1000, 700);
        editor->show();
        QVERIFY(QTest::qWaitForWindowExposed(editor.get()));
        editor->setFocus();
        MoveToMiddle();
        QCoreApplication::processEvents();
    }

    void cleanupTestCase()
    {
        editor.reset();
        pythonEditor.reset();
        host.reset();
    }

    // The key press alone, as the widget handles it.
    void typeCharacter()
    {
        const int before = editor->document()->characterCount();
        QBENCHMARK
        {
            QTest::keyClick(editor.get(), Qt::Key_A);
        }
        QVERIFY(editor->document()->characterCount() > before);
    }

    // The key press and what the event loop then does for it: layout and painting of the line.
    void typeCharacterAndRepaint()
    {
        QBENCHMARK
        {
            QTest::keyClick(editor.get(), Qt::Key_B);
            editor->viewport()->repaint();
            QCoreApplication::processEvents();
        }
    }

    void typeReturn()
    {
        QBENCHMARK
        {
            QTest::keyClick(editor.get(), Qt::Key_Return);
        }
    }

    // Deletes what typeCharacter typed, within the line.
    void typeBackspace()
    {
        QBENCHMARK
        {
            QTest::keyClick(editor.get(), Qt::Key_A);
            QTest::keyClick(editor.get(), Qt::Key_Backspace);
        }
    }

    // Backspace at the start of a line: two lines become one.
    void backspaceJoiningLines()
    {
        QBENCHMARK
        {
            editor->moveCursor(QTextCursor::StartOfBlock);
            QTest::keyClick(editor.get(), Qt::Key_Backspace);
        }
    }

    // The same in 100,000 lines of the standard library's Python.
    void typeCharacterInPython()
    {
        CodeEditorProperties properties;
        properties.language = CodeEditorLanguage::PYTHON;
        properties.filePath = QStringLiteral("/tmp/bench.py");
        pythonEditor = std::make_unique<CodeEditor>(properties, nullptr);
        pythonEditor->SetText(BenchTexts::PythonLines(LINE_COUNT));
        pythonEditor->resize(1000, 700);
        pythonEditor->show();
        QVERIFY(QTest::qWaitForWindowExposed(pythonEditor.get()));
        QTextCursor cursor(pythonEditor->document()->findBlockByNumber(LINE_COUNT / 2));
        cursor.movePosition(QTextCursor::EndOfBlock);
        pythonEditor->setTextCursor(cursor);
        pythonEditor->centerCursor();
        // The buffer's first highlight goes on in later turns; they are not the key's cost.
        const auto* highlighter = pythonEditor->document()->findChild<Highlighter*>();
        QVERIFY(highlighter);
        while (highlighter->IsHighlightPending())
            QCoreApplication::processEvents();
        QBENCHMARK
        {
            QTest::keyClick(pythonEditor.get(), Qt::Key_A);
            pythonEditor->viewport()->repaint();
            QCoreApplication::processEvents();
        }
    }

    // The worst single key: a block comment opened at the top recolours all the lines below, and
    // Backspace recolours them back. Each iteration is both keys.
    void openAndCloseBlockCommentAtTop()
    {
        editor->moveCursor(QTextCursor::Start);
        QTest::keyClick(editor.get(), Qt::Key_Slash);
        QBENCHMARK
        {
            QTest::keyClick(editor.get(), Qt::Key_Asterisk);
            QTest::keyClick(editor.get(), Qt::Key_Backspace);
        }
        QTest::keyClick(editor.get(), Qt::Key_Backspace);
        MoveToMiddle();
    }

    // The same keys with the event loop running, as a user types them: each key returns within its
    // bounded pass, and the rest of the buffer is recoloured in later turns. Prints the slowest
    // key and the time until every block has its final colours.
    void spanOpenedAtTopFinishes_data()
    {
        QTest::addColumn<bool>("python");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<bool>("errorBar");
        // The error bar measures every block after each change, which lays out again each block
        // that was recoloured: the rows without it show the highlighter's own share.
        for (const bool errorBar : {false, true})
        {
            QTest::addRow("mel /*%s", errorBar ? ", error bar" : "")
                << false << QStringLiteral("/*") << errorBar;
            QTest::addRow("python \"\"\"%s", errorBar ? ", error bar" : "")
                << true << QStringLiteral("\"\"\"") << errorBar;
        }
    }

    void spanOpenedAtTopFinishes()
    {
        QFETCH(bool, python);
        QFETCH(QString, keys);
        QFETCH(bool, errorBar);
        Settings::melDisplayErrors = Settings::pythonDisplayErrors = errorBar;
        CodeEditor* target = python ? pythonEditor.get() : editor.get();
        QVERIFY2(target, "typeCharacterInPython makes the Python buffer");
        const auto* highlighter = target->document()->findChild<Highlighter*>();
        QVERIFY(highlighter);
        Settings::melInsertClosingQuotes = Settings::pythonInsertClosingQuotes = false;
        target->moveCursor(QTextCursor::Start);
        while (highlighter->IsHighlightPending())
            QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        QElapsedTimer total;
        // Wall clock and the thread's processor time: on a loaded machine the first also holds
        // the time the thread waited for a core.
        double slowestKey = 0;
        double slowestKeyCpu = 0;
        total.start();
        const auto typeKey = [&](QChar key)
        {
            QElapsedTimer timer;
            timer.start();
            const double cpu = ThreadCpuMs();
            QTest::keyClick(target, key.toLatin1());
            target->viewport()->repaint();
            slowestKey = qMax(slowestKey, timer.nsecsElapsed() / 1e6);
            slowestKeyCpu = qMax(slowestKeyCpu, ThreadCpuMs() - cpu);
        };
        for (const QChar key : keys)
            typeKey(key);
        int turns = 0;
        double longestTurnCpu = 0;
        while (highlighter->IsHighlightPending())
        {
            const double cpu = ThreadCpuMs();
            QCoreApplication::processEvents();
            longestTurnCpu = qMax(longestTurnCpu, ThreadCpuMs() - cpu);
            ++turns;
        }
        const double allDone = total.nsecsElapsed() / 1e6;
        std::printf("MEASURE %-24s slowest key %6.1f ms (CPU %5.1f), longest later turn CPU %5.1f ms, every "
                    "block coloured after %7.1f ms (%d turns)\n",
                    QTest::currentDataTag(), slowestKey, slowestKeyCpu, longestTurnCpu, allDone, turns);
        std::fflush(stdout);
        // The states that the bounded passes left are those of one full pass.
        QList<int> states;
        for (QTextBlock block = target->document()->begin(); block.isValid(); block = block.next())
            states.append(block.userState());
        target->document()->findChild<Highlighter*>()->rehighlight();
        for (QTextBlock block = target->document()->begin(); block.isValid(); block = block.next())
            QCOMPARE(block.userState(), states.at(block.blockNumber()));
        for (int i = 0; i < keys.size(); ++i)
            QTest::keyClick(target, Qt::Key_Backspace);
        while (highlighter->IsHighlightPending())
            QCoreApplication::processEvents();
    }

    // What runs when the pause timer runs out: the whole text handed on.
    void textChangedTimerFires()
    {
        const qsizetype before = received;
        QBENCHMARK
        {
            editor->OnTextChangedDelay();
        }
        QVERIFY(received > before);
    }
};

int main(int argc, char** argv)
{
    // Nothing here may read or write the real preferences folder.
    QTemporaryDir appDir;
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    QApplication app(argc, argv);
    BenchCodeEditorTyping bench;
    return QTest::qExec(&bench, argc, argv);
}

#include "bench_CodeEditorTyping.moc"
