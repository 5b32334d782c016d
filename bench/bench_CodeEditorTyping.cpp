// Cost of typing in a large buffer: one key press handled by a shown editor, and the work that
// runs when the pause after typing is over. Both have to stay well inside one frame (16 ms).
//
// Run a Release build with QT_QPA_PLATFORM=offscreen.
#include "editor/CodeEditor.h"
#include "settings/ColorSettings.h"
#include "settings/Settings.h"

#include <QtCore/QTemporaryDir>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

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
    std::unique_ptr<CodeEditor> editor;
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
        ColorSettings::Initialize();
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

    void cleanupTestCase() { editor.reset(); }

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
