#pragma once
// Highlights Python files with PythonHighlighter and writes what the pass recorded for each line
// (string and comment stretches, line comment stretches) as JSON, for the comparison with
// Python's own tokenize in highlighter_tokenize_compare.py. Shared by the corpus test and the
// corpus benchmark.
#include "editor/CodeEditor.h"
#include "editor/CodeEditorBlockData.h"
#include "language/PythonHighlighter.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtWidgets/QPlainTextDocumentLayout>

namespace PythonCorpusDump
{
inline QJsonArray RangesJson(const QList<CodeEditorBlockData::Range>& ranges)
{
    QJsonArray array;
    for (const CodeEditorBlockData::Range& range : ranges)
        array.append(QJsonArray{range.start, range.end});
    return array;
}

// The text as Python reads a source file: UTF-8, any line end taken for "\n".
inline QString ReadSource(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    QString text = QString::fromUtf8(file.readAll());
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

inline QJsonObject FileRecord(const QString& path)
{
    QTextDocument document;
    document.setDocumentLayout(new QPlainTextDocumentLayout(&document));
    document.setPlainText(ReadSource(path));
    PythonHighlighter highlighter(&document);
    highlighter.rehighlight();
    QJsonArray lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
    {
        const CodeEditorBlockData* data = CodeEditor::GetBlockData(block);
        if (!data)
            lines.append(QJsonArray{QJsonArray(), QJsonArray()});
        else
            lines.append(QJsonArray{RangesJson(data->GetIgnorePositions()),
                                    RangesJson(data->GetSingleLineCommentPositions())});
    }
    return QJsonObject{{QStringLiteral("path"), path}, {QStringLiteral("lines"), lines}};
}

inline bool WriteRecords(const QStringList& paths, const QString& jsonPath)
{
    QJsonArray files;
    for (const QString& path : paths)
        files.append(FileRecord(path));
    QFile file(jsonPath);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const QByteArray json =
        QJsonDocument(QJsonObject{{QStringLiteral("files"), files}}).toJson(QJsonDocument::Compact);
    return file.write(json) == json.size();
}

// Runs the comparison script; its report is returned, and the figures land in summaryPath.
inline bool Compare(const QString& script, const QString& jsonPath, const QString& summaryPath,
                    QString& report)
{
    QProcess python;
    python.start(QStringLiteral("python3"), {script, jsonPath, QStringLiteral("--summary"), summaryPath});
    if (!python.waitForFinished(600000))
        return false;
    report = QString::fromUtf8(python.readAllStandardOutput() + python.readAllStandardError());
    return python.exitStatus() == QProcess::NormalExit && python.exitCode() == 0;
}
} // namespace PythonCorpusDump
