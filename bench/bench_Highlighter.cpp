// Cost of a full highlight: the standard library's Python and generated MEL at 5,000, 20,000 and
// 100,000 lines, beside a highlighter that does nothing but one setFormat per block (the floor
// that QSyntaxHighlighter itself sets). Then bad input: one 1 MB line, 10,000 nested brackets, a
// span left open at the top of 100,000 lines, and binary shown as text; each must highlight in
// well under a second, and a key typed into it must stay inside a frame.
//
// Run a Release build with QT_QPA_PLATFORM=offscreen. The host is loaded, so that the word lists
// are Maya's own.
#include "HostApplication.h"
#include "editor/CodeEditor.h"
#include "language/Highlighter.h"
#include "plugin/PluginMain.h"
#include "settings/Settings.h"

#include <QtCore/QDir>
#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryDir>
#include <QtGui/QSyntaxHighlighter>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

#include <memory>

namespace
{
// The standard library's modules in name order, whole lines, until the count is reached.
QString PythonLines(int count)
{
    static QStringList all;
    if (all.isEmpty())
    {
        const QDir dir(QStringLiteral("/usr/lib/python3.11"));
        for (const QString& name : dir.entryList({QStringLiteral("*.py")}, QDir::Files, QDir::Name))
        {
            QFile file(dir.filePath(name));
            if (file.open(QIODevice::ReadOnly))
                all += QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
            if (all.size() > 100000)
                break;
        }
    }
    return all.mid(0, count).join(QLatin1Char('\n'));
}

// MEL of the usual shapes: procedures, declarations, command calls with flags, strings, loops and
// both kinds of comment.
QString MelLines(int count)
{
    const QStringList commands = {QStringLiteral("setAttr"),     QStringLiteral("getAttr"),
                                  QStringLiteral("polyCube"),    QStringLiteral("xform"),
                                  QStringLiteral("select"),      QStringLiteral("ls"),
                                  QStringLiteral("connectAttr"), QStringLiteral("textField")};
    QStringList lines;
    lines.reserve(count);
    int i = 0;
    while (lines.size() < count)
    {
        const QString command = commands.at(i % commands.size());
        lines << QStringLiteral("// Builds rig part %1 from the selection.").arg(i)
              << QStringLiteral("global proc string[] buildPart%1(string $root, float $scale)").arg(i)
              << QStringLiteral("{") << QStringLiteral("    string $nodes[] = `ls -sl -type \"transform\"`;")
              << QStringLiteral("    int $count = size($nodes); /* how many */")
              << QStringLiteral("    for ($i = 0; $i < $count; $i++)") << QStringLiteral("    {")
              << QStringLiteral("        %1 -e -width 1.5 ($nodes[$i] + \".tx\") ($scale * %2.25);")
                     .arg(command)
                     .arg(i)
              << QStringLiteral(
                     "        if ($scale > 0.001 && $root != \"\") print(\"node \" + $nodes[$i] + \"\\n\");")
              << QStringLiteral("    }") << QStringLiteral("    return $nodes;") << QStringLiteral("}")
              << QString();
        ++i;
    }
    return lines.mid(0, count).join(QLatin1Char('\n'));
}

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

QString BadInput(const QString& kind)
{
    if (kind == QLatin1String("1 MB line, Python"))
    {
        QString text = PythonLines(40000);
        text.replace(QLatin1Char('\n'), QLatin1Char(' '));
        return text.left(1 << 20);
    }
    if (kind == QLatin1String("1 MB line, MEL"))
    {
        QString text = MelLines(40000);
        text.replace(QLatin1Char('\n'), QLatin1Char(' '));
        return text.left(1 << 20);
    }
    if (kind.startsWith(QLatin1String("10,000 nested brackets")))
        return QString(10000, QLatin1Char('(')) + QString(10000, QLatin1Char(')'));
    if (kind == QLatin1String("open triple quote atop 100k lines"))
        return QStringLiteral("\"\"\"\n") + PythonLines(100000);
    if (kind == QLatin1String("open block comment atop 100k lines"))
        return QStringLiteral("/*\n") + MelLines(100000);
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
        for (const int lines : {5000, 20000, 100000})
        {
            QTest::addRow("python %d", lines) << int(CodeEditorLanguage::PYTHON) << lines;
            QTest::addRow("mel %d", lines) << int(CodeEditorLanguage::MEL) << lines;
            QTest::addRow("one setFormat per block, python %d", lines) << -1 << lines;
        }
    }

    void fullHighlight()
    {
        QFETCH(int, language);
        QFETCH(int, lines);
        const bool floor = language < 0;
        const CodeEditorLanguage editorLanguage =
            floor ? CodeEditorLanguage::TEXT : CodeEditorLanguage(language);
        NewEditor(editorLanguage,
                  editorLanguage == CodeEditorLanguage::MEL ? MelLines(lines) : PythonLines(lines));
        QCOMPARE(editor->GetLineCount(), lines);
        std::unique_ptr<OneFormatHighlighter> one;
        QSyntaxHighlighter* highlighter = CurrentHighlighter();
        if (floor)
        {
            delete highlighter;
            one = std::make_unique<OneFormatHighlighter>(editor->document());
            highlighter = one.get();
        }
        QBENCHMARK
        {
            highlighter->rehighlight();
        }
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
        NewEditor(BadInputLanguage(kind), BadInput(kind));
        QBENCHMARK
        {
            CurrentHighlighter()->rehighlight();
        }
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
