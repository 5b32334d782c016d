// The file behind a CodeEditor: the text as it is written, and the watch on the file.
#include "editor/CodeEditor.h"

#include <QtCore/QFileInfo>
#include <QtGui/QTextDocument>

QString CodeEditor::GetTextForSave() const
{
    // Blocks are separated by U+2029 in the raw text; U+2028 inside a block is the user's.
    QString text = document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    return text.isNull() ? QStringLiteral("") : text;
}

void CodeEditor::ReplaceTextUndoable(const QString& text)
{
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.insertText(text);
    cursor.endEditBlock();
}

bool CodeEditor::IsWatchingFile() const
{
    return fileWatcher.files().contains(properties.filePath);
}

void CodeEditor::WatchFile()
{
    if (properties.type == CodeEditorType::FILE && QFileInfo::exists(properties.filePath) &&
        !IsWatchingFile())
        fileWatcher.addPath(properties.filePath);
}
