// The MEL and Python highlighters over a QTextDocument, as a buffer is coloured while typed: the
// whole text set at once, then one edit in the middle. The first byte picks the language.
#include "FuzzInput.h"
#include "HostApplication.h"
#include "editor/CodeEditorBlockData.h"
#include "language/MelHighlighter.h"
#include "language/PythonHighlighter.h"
#include "settings/ColorSettings.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QTextBlock>
#include <QtGui/QTextCursor>
#include <QtGui/QTextDocument>
#include <QtGui/QTextLayout>
#include <QtWidgets/QApplication>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    static QTemporaryDir appDir;
    qputenv("MAYA_APP_DIR", QFile::encodeName(appDir.path()));
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "fuzz_Highlighters";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv);
    new HostApplication(true); // the MEL highlighter asks the host for its command names
    ColorSettings::Initialize();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    const bool mel = data[0] % 2 == 0;
    const QString text = FuzzText(data + 1, size - 1);
    QTextDocument document;
    QSyntaxHighlighter* highlighter =
        mel ? static_cast<QSyntaxHighlighter*>(new MelHighlighter(&document))
            : static_cast<QSyntaxHighlighter*>(new PythonHighlighter(&document));
    // A new highlighter colours its document from the event loop; with none running here, the
    // first full pass is asked for directly.
    document.setPlainText(text);
    highlighter->rehighlight();
    // The editor's own whole pass must agree with the base's, block by block.
    QList<int> states;
    QList<QList<QTextLayout::FormatRange>> formats;
    for (QTextBlock block = document.firstBlock(); block.isValid(); block = block.next())
    {
        states.append(block.userState());
        formats.append(block.layout()->formats());
    }
    static_cast<Highlighter*>(highlighter)->HighlightDocument();
    for (QTextBlock block = document.firstBlock(); block.isValid(); block = block.next())
    {
        FUZZ_CHECK(block.userState() == states.at(block.blockNumber()));
        FUZZ_CHECK(block.layout()->formats() == formats.at(block.blockNumber()));
    }
    QTextCursor cursor(&document);
    cursor.setPosition(document.characterCount() / 2);
    cursor.insertText(mel ? QStringLiteral("\"/*{") : QStringLiteral("'''(#"));
    for (QTextBlock block = document.firstBlock(); block.isValid(); block = block.next())
    {
        const auto* blockData = dynamic_cast<const CodeEditorBlockData*>(block.userData());
        FUZZ_CHECK(blockData);
        for (const QChar c : {QLatin1Char('('), QLatin1Char('['), QLatin1Char('{')})
        {
            for (const CodeEditorBlockData::Entry& entry : blockData->GetBraces(c))
                FUZZ_CHECK(entry.position >= 0 && entry.position < block.length());
        }
    }
    delete highlighter;
    return 0;
}
