// Cost of a full highlight: the standard library's Python and generated MEL at 5,000, 20,000 and
// 100,000 lines, beside a highlighter that does nothing but one setFormat per block (the floor
// that QSyntaxHighlighter itself sets). Then bad input: one 1 MB line, 10,000 nested brackets, a
// span left open at the top of 100,000 lines, and binary shown as text; each must highlight in
// well under a second, and a key typed into it must stay inside a frame; beside the 1 MB line, a
// bare QPlainTextEdit with the same line.
//
// Run a Release build with QT_QPA_PLATFORM=offscreen. The host is loaded, so that the word lists
// are Maya's own.
#include "BenchClock.h"
#include "BenchTexts.h"
#include "HostApplication.h"
#include "editor/CodeEditor.h"
#include "language/MelHighlighter.h"
#include "language/PythonHighlighter.h"
#include "plugin/PluginMain.h"
#include "settings/Settings.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryDir>
#include <QtGui/QSyntaxHighlighter>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPlainTextEdit>

#include <cstdio>
#include <functional>
#include <memory>

namespace
{
// The floor: what QSyntaxHighlighter costs with one format per block and nothing else.
class OneFormatHighlighter : public QSyntaxHighlighter
{
public:
    explicit OneFormatHighlighter(QTextDocument* document) : QSyntaxHighlighter(document)
    {
        format.setForeground(Qt::red);
    }

protected:
    void highlightBlock(const QString& text) override { setFormat(0, int(text.size()), format); }

private:
    QTextCharFormat format;
};

// The best of three runs, by the wall clock and by this thread's processor time: the machine is
// shared, and the processor time is what the highlighter itself costs. Each run gets a fresh
// subject from prepare, untimed: a highlighter that skips unchanged blocks must be timed on its
// first pass.
void Measure(const QString& label, const std::function<std::function<void()>()>& prepare)
{
    double wall = 1e12;
    double cpu = 1e12;
    for (int i = 0; i < 3; ++i)
    {
        const std::function<void()> run = prepare();
        QElapsedTimer timer;
        const double cpuStart = ThreadCpuMs();
        timer.start();
        run();
        wall = qMin(wall, double(timer.nsecsElapsed()) / 1e6);
        cpu = qMin(cpu, ThreadCpuMs() - cpuStart);
    }
    std::printf("MEASURE %-55s wall %9.1f ms   cpu %9.1f ms\n", qPrintable(label), wall, cpu);
    std::fflush(stdout);
}

QString BadInput(const QString& kind)
{
    if (kind == QLatin1String("1 MB line, Python"))
    {
        QString text = BenchTexts::PythonLines(40000);
        text.replace(QLatin1Char('\n'), QLatin1Char(' '));
        return text.left(1 << 20);
    }
    if (kind == QLatin1String("1 MB line, MEL"))
    {
        QString text = BenchTexts::MelLines(40000);
        text.replace(QLatin1Char('\n'), QLatin1Char(' '));
        return text.left(1 << 20);
    }
    if (kind.startsWith(QLatin1String("10,000 nested brackets")))
        return QString(10000, QLatin1Char('(')) + QString(10000, QLatin1Char(')'));
    if (kind == QLatin1String("open triple quote atop 100k lines"))
        return QStringLiteral("\"\"\"\n") + BenchTexts::PythonLines(100000);
    if (kind == QLatin1String("open block comment atop 100k lines"))
        return QStringLiteral("/*\n") + BenchTexts::MelLines(100000);
    // Binary shown as text: every byte value, newlines included, as the editor shows a file it
    // cannot decode.
    QByteArray bytes(1 << 20, Qt::Uninitialized);
    QRandomGenerator generator(13);
    for (char& byte : bytes)
        byte = char(generator.bounded(256));
    return QString::fromLatin1(bytes);
}

CodeEditorLanguage BadInputLanguage(const QString& kind)
{
    return kind.contains(QLatin1String("MEL")) || kind.contains(QLatin1String("comment"))
               ? CodeEditorLanguage::MEL
               : CodeEditorLanguage::PYTHON;
}
} // namespace

class BenchHighlighter : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<HostApplication> host;
    std::unique_ptr<CodeEditor> editor;

    CodeEditor* NewEditor(CodeEditorLanguage language, const QString& text)
    {
        CodeEditorProperties properties;
        properties.language = language;
        properties.filePath = QStringLiteral("/tmp/bench");
        editor = std::make_unique<CodeEditor>(properties, nullptr);
        editor->SetText(text);
        return editor.get();
    }

    Highlighter* CurrentHighlighter() const { return editor->document()->findChild<Highlighter*>(); }

private slots:
    void initTestCase()
    {
        host = std::make_unique<HostApplication>(false);
        QVERIFY(host->LoadPlugin(QStringLiteral("brindletEditor2"), initializePlugin, uninitializePlugin));
        // Typing must give the characters typed, nothing more.
        Settings::melCompleteOnLetters = Settings::pythonCompleteOnLetters = Settings::pythonCompleteOnDot =
            false;
    }

    void cleanupTestCase()
    {
        editor.reset();
        host.reset();
    }

    void fullHighlight_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<int>("lines");
        QTest::addColumn<bool>("inEditor");
        for (const bool inEditor : {false, true})
        {
            for (const int lines : {5000, 20000, 100000})
            {
                const char* where = inEditor ? "editor" : "document";
                QTest::addRow("%s, python %d", where, lines)
                    << int(CodeEditorLanguage::PYTHON) << lines << inEditor;
                QTest::addRow("%s, mel %d", where, lines)
                    << int(CodeEditorLanguage::MEL) << lines << inEditor;
                QTest::addRow("%s, one setFormat per block, python %d", where, lines)
                    << -1 << lines << inEditor;
            }
        }
    }

    // In a bare document (no layout of the lines: the highlighter's own cost) and in an editor,
    // whose plain text layout lays out each line the highlighter changes. Ours is timed through
    // its own whole-document pass, the floor through QSyntaxHighlighter's.
    void fullHighlight()
    {
        QFETCH(int, language);
        QFETCH(int, lines);
        QFETCH(bool, inEditor);
        const bool floor = language < 0;
        const CodeEditorLanguage editorLanguage =
            floor ? CodeEditorLanguage::TEXT : CodeEditorLanguage(language);
        const QString text = editorLanguage == CodeEditorLanguage::MEL ? BenchTexts::MelLines(lines)
                                                                       : BenchTexts::PythonLines(lines);
        std::unique_ptr<QTextDocument> bare;
        std::unique_ptr<QSyntaxHighlighter> highlighter;
        const auto prepare = [&]() -> std::function<void()>
        {
            highlighter.reset();
            QTextDocument* document = nullptr;
            if (inEditor)
            {
                NewEditor(editorLanguage, text);
                document = editor->document();
                delete CurrentHighlighter(); // takes its colours with it
            }
            else
            {
                bare = std::make_unique<QTextDocument>();
                bare->setPlainText(text);
                document = bare.get();
            }
            if (floor)
            {
                highlighter = std::make_unique<OneFormatHighlighter>(document);
                return [&highlighter] { highlighter->rehighlight(); };
            }
            if (editorLanguage == CodeEditorLanguage::MEL)
                highlighter = std::make_unique<MelHighlighter>(document);
            else
                highlighter = std::make_unique<PythonHighlighter>(document);
            return [&highlighter] { static_cast<Highlighter*>(highlighter.get())->HighlightDocument(); };
        };
        Measure(QString::fromLatin1(QTest::currentDataTag()), prepare);
        QCOMPARE(highlighter->document()->blockCount(), lines);
        highlighter.reset();
    }

    void badInput_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char* kind : {"1 MB line, Python", "1 MB line, MEL", "10,000 nested brackets, Python",
                                 "10,000 nested brackets, MEL", "open triple quote atop 100k lines",
                                 "open block comment atop 100k lines", "binary as text, Python"})
            QTest::newRow(kind) << QString::fromLatin1(kind);
    }

    // The highlight of the whole buffer.
    void badInput()
    {
        QFETCH(QString, kind);
        const QString text = BadInput(kind);
        const auto prepare = [&]() -> std::function<void()>
        {
            const CodeEditorLanguage language = BadInputLanguage(kind);
            NewEditor(language, text);
            delete CurrentHighlighter(); // takes its colours with it
            if (language == CodeEditorLanguage::MEL)
                new MelHighlighter(editor->document());
            else
                new PythonHighlighter(editor->document());
            return [this] { CurrentHighlighter()->HighlightDocument(); };
        };
        Measure(QStringLiteral("highlight: ") + kind, prepare);
    }

    void typingInBadInput_data() { badInput_data(); }

    // One key typed into the shown buffer, in its longest line's middle (for a span left open,
    // inside the span), with the repaint it causes.
    void typingInBadInput()
    {
        QFETCH(QString, kind);
        NewEditor(BadInputLanguage(kind), BadInput(kind));
        editor->resize(1000, 700);
        editor->show();
        QVERIFY(QTest::qWaitForWindowExposed(editor.get()));
        QTextBlock longest = editor->document()->begin();
        for (QTextBlock block = longest; block.isValid() && block.blockNumber() < 1000; block = block.next())
        {
            if (block.length() > longest.length())
                longest = block;
        }
        if (editor->GetLineCount() > 1000)
            longest = editor->document()->findBlockByNumber(editor->GetLineCount() / 2);
        QTextCursor cursor(longest);
        cursor.setPosition(longest.position() + longest.length() / 2);
        editor->setTextCursor(cursor);
        editor->centerCursor();
        QCoreApplication::processEvents();
        QBENCHMARK
        {
            QTest::keyClick(editor.get(), Qt::Key_A);
            editor->viewport()->repaint();
        }
    }

    // The peer for the 1 MB line: a bare QPlainTextEdit with the editor's font, no highlighter,
    // no wrapping. Qt lays out and draws the whole paragraph on every key, whoever colours it.
    void typingInLongLinePlain()
    {
        NewEditor(CodeEditorLanguage::PYTHON, QString());
        QPlainTextEdit plain;
        plain.setFont(editor->font());
        plain.setLineWrapMode(QPlainTextEdit::NoWrap);
        plain.setPlainText(BadInput(QStringLiteral("1 MB line, Python")));
        plain.resize(1000, 700);
        plain.show();
        QVERIFY(QTest::qWaitForWindowExposed(&plain));
        QTextCursor cursor(plain.document());
        cursor.setPosition(plain.document()->characterCount() / 2);
        plain.setTextCursor(cursor);
        plain.centerCursor();
        QCoreApplication::processEvents();
        QBENCHMARK
        {
            QTest::keyClick(&plain, Qt::Key_A);
            plain.viewport()->repaint();
        }
    }
};

int main(int argc, char** argv)
{
    // Nothing here may read or write the real preferences folder.
    QTemporaryDir appDir;
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    QApplication app(argc, argv);
    BenchHighlighter bench;
    return QTest::qExec(&bench, argc, argv);
}

#include "bench_Highlighter.moc"
