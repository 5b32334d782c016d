#include "PythonAstComparison.h"

#include "language/PythonParser.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>

namespace
{
struct Symbol
{
    int kind = 0;
    QString name;
    int line = 0;
    int level = 0;
    bool isAsync = false;
};

QString Key(const Symbol& s)
{
    const int family = s.kind >= 8 && s.kind <= 10 ? 8 : s.kind;
    return QStringLiteral("%1|%2|%3").arg(s.line).arg(family).arg(s.name);
}

// The text of the statement that starts on a line: that line plus any that a backslash or an open
// bracket carries on.
bool StatementContinues(const QString& line)
{
    const QString code = line.section(QLatin1Char('#'), 0, 0).trimmed();
    return code.endsWith(QLatin1Char('\\')) || code.count(QLatin1Char('(')) > code.count(QLatin1Char(')')) ||
           code.count(QLatin1Char('[')) > code.count(QLatin1Char(']'));
}

QString ClassOfMissing(const Symbol& fact, const QStringList& lines)
{
    const QString line = lines.value(fact.line - 1);
    const QString trimmed = line.trimmed();
    if (fact.isAsync)
        return QStringLiteral("async def: only a line that begins with 'def' names a function");
    static const QRegularExpression keywordFirst(QStringLiteral("^(class|def|import|from)[\\s]"));
    if (!keywordFirst.match(trimmed).hasMatch())
        return QStringLiteral("statement not at the start of its line (after ';' or ':')");
    if ((fact.kind == 6 || fact.kind == 4 || fact.kind == 5) && StatementContinues(line))
        return QStringLiteral("import continued over lines: only its first line counts");
    if (fact.kind == 4 || fact.kind == 5)
        return QStringLiteral("import list with an alias: the alias test rejects the statement");
    if (fact.kind == 6 && trimmed.contains(QLatin1Char('(')))
        return QStringLiteral("from-import in brackets on one line: listed as it stands");
    return QStringLiteral("unexplained");
}

QString ClassOfExtra(const Symbol& item, const QStringList& lines)
{
    const QString line = lines.value(item.line - 1);
    if (item.kind == 6 && (item.name.contains(QLatin1Char('(')) || StatementContinues(line)))
        return QStringLiteral("import continued over lines: only its first line counts");
    return QStringLiteral("unexplained");
}

int LineOf(const QString& text, int position)
{
    return static_cast<int>(QStringView(text).left(position).count(QLatin1Char('\n'))) + 1;
}

// Inside brackets, the parser takes a line for a new statement when the next word, cut to the
// length of the file's first word, spells class, def, import or from ("default" cut to 3 is "def").
bool KeywordCutToFirstWordLength(const QString& text, int position)
{
    static const QRegularExpression word(QStringLiteral("[\\S]+"));
    const int length = static_cast<int>(word.match(text).capturedLength());
    const QRegularExpressionMatch next = word.match(text, position);
    if (!next.hasMatch())
        return false;
    const QString cut = text.mid(next.capturedStart(), length);
    return cut == QLatin1String("class") || cut == QLatin1String("def") || cut == QLatin1String("import") ||
           cut == QLatin1String("from");
}

// A fault on a file that ast accepts is explained when the line before it (or the statement it
// belongs to) is one the parser follows only on its first line.
QString ClassOfFault(const QString& message, int line, const QStringList& lines, const QList<int>& closedLines)
{
    if (closedLines.contains(line - 1))
        return QStringLiteral("%1 on the line after a bracket closed by the first-word-length rule").arg(message);
    for (int i = line - 2; i >= 0 && i >= line - 40; --i)
    {
        const QString previous = lines.at(i);
        if (previous.trimmed().isEmpty() || previous.trimmed().startsWith(QLatin1Char('#')))
            continue;
        if (previous.trimmed().endsWith(QLatin1Char('\\')) ||
            previous.trimmed().section(QLatin1Char('#'), 0, 0).trimmed().endsWith(QLatin1Char('\\')))
            return QStringLiteral("%1 after a backslash continuation: the parser knows only brackets").arg(message);
        static const QRegularExpression firstLineOnly(QStringLiteral("^\\s*(from|import|@)"));
        if (firstLineOnly.match(previous).hasMatch() && StatementContinues(previous))
            return QStringLiteral("%1 after an import or decorator continued over lines").arg(message);
        if (!previous.startsWith(QLatin1Char(' ')) && !previous.startsWith(QLatin1Char('\t')) && i < line - 2)
            break;
    }
    return QStringLiteral("%1: unexplained").arg(message);
}

void Note(PythonAstComparison::Totals& totals, const QString& cls, const QString& sample)
{
    ++totals.classes[cls];
    QStringList& samples = totals.samples[cls];
    if (samples.size() < 6)
        samples.append(sample);
}
} // namespace

bool PythonAstComparison::Run(const QStringList& files, const QString& factsScript, Totals& totals)
{
    QProcess python;
    python.start(QStringLiteral("python3"), {factsScript});
    if (!python.waitForStarted(10000))
        return false;
    python.write(files.join(QLatin1Char('\n')).toUtf8());
    python.closeWriteChannel();
    if (!python.waitForFinished(600000) || python.exitCode() != 0)
        return false;
    const QList<QByteArray> records = python.readAllStandardOutput().split('\n');

    PythonParser parser;
    for (const QByteArray& record : records)
    {
        if (record.trimmed().isEmpty())
            continue;
        const QJsonObject object = QJsonDocument::fromJson(record).object();
        const QString path = object.value(QStringLiteral("file")).toString();
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        ++totals.files;
        const QString text = QString::fromUtf8(file.readAll());
        const QStringList lines = text.split(QLatin1Char('\n'));
        parser.Parse(text, path);
        const QString name = path.section(QLatin1Char('/'), -1);

        QMap<QString, Symbol> parsed;
        for (const ParserItem& item : parser.GetItems())
        {
            if (item.type == ParserItemMain)
                continue;
            Symbol s{item.type, item.name, LineOf(text, item.position), item.level, false};
            parsed.insert(Key(s), s);
        }
        totals.parserItems += static_cast<int>(parsed.size());
        if (!object.value(QStringLiteral("ok")).toBool())
            continue;
        ++totals.astFiles;

        for (const QJsonValue& value : object.value(QStringLiteral("items")).toArray())
        {
            const QJsonObject o = value.toObject();
            Symbol fact{o.value(QStringLiteral("kind")).toInt(), o.value(QStringLiteral("name")).toString(),
                        o.value(QStringLiteral("line")).toInt(), o.value(QStringLiteral("level")).toInt(),
                        o.value(QStringLiteral("async")).toBool()};
            ++totals.astItems;
            const QString where = QStringLiteral("%1:%2: %3").arg(name).arg(fact.line).arg(fact.name);
            const auto it = parsed.find(Key(fact));
            if (it == parsed.end())
            {
                Note(totals, QStringLiteral("missing: ") + ClassOfMissing(fact, lines), where);
                continue;
            }
            const Symbol found = it.value();
            parsed.erase(it);
            if (found.level != fact.level)
                Note(totals, QStringLiteral("level differs: the indent stack after a fault or a continued statement"),
                     where + QStringLiteral(" %1 vs %2").arg(found.level).arg(fact.level));
            else if (found.kind != fact.kind)
                Note(totals, QStringLiteral("method type: decorators are compared as whole lines"), where);
            else
                ++totals.agreed;
        }
        for (const Symbol& extra : parsed)
            Note(totals, QStringLiteral("extra: ") + ClassOfExtra(extra, lines),
                 QStringLiteral("%1:%2: %3").arg(name).arg(extra.line).arg(extra.name));

        QList<int> closedLines;
        for (const ParserMessage& error : parser.GetErrors())
        {
            const int line = LineOf(text, error.start);
            QString cls;
            if (error.text.startsWith(QLatin1String("Expected a '")) && error.start == error.end &&
                KeywordCutToFirstWordLength(text, error.start))
            {
                closedLines.append(line);
                cls = QStringLiteral("%1 where a continued line's word, cut to the first word's length, spells a keyword")
                          .arg(error.text);
            }
            else
            {
                cls = ClassOfFault(error.text, line, lines, closedLines);
            }
            ++totals.faultClasses[cls];
            QStringList& samples = totals.samples[QStringLiteral("fault: ") + cls];
            if (samples.size() < 6)
                samples.append(QStringLiteral("%1:%2").arg(name).arg(line));
        }
    }
    return true;
}

QString PythonAstComparison::Report(const Totals& totals)
{
    QString report;
    const int all = totals.astItems + totals.parserItems - totals.agreed;
    report += QStringLiteral("files %1 (ast accepts %2), ast items %3, parser items %4, agreeing %5\n")
                  .arg(totals.files)
                  .arg(totals.astFiles)
                  .arg(totals.astItems)
                  .arg(totals.parserItems)
                  .arg(totals.agreed);
    report += QStringLiteral("agreement: %1% of ast's items, %2% of all items seen by either\n")
                  .arg(100.0 * totals.agreed / qMax(1, totals.astItems), 0, 'f', 2)
                  .arg(100.0 * totals.agreed / qMax(1, all), 0, 'f', 2);
    for (auto it = totals.classes.cbegin(); it != totals.classes.cend(); ++it)
        report += QStringLiteral("  %1  %2   e.g. %3\n")
                      .arg(it.value(), 6)
                      .arg(it.key(), totals.samples.value(it.key()).mid(0, 3).join(QStringLiteral("; ")));
    report += QStringLiteral("faults on files that ast accepts:\n");
    for (auto it = totals.faultClasses.cbegin(); it != totals.faultClasses.cend(); ++it)
        report += QStringLiteral("  %1  %2   e.g. %3\n")
                      .arg(it.value(), 6)
                      .arg(it.key(), totals.samples.value(QStringLiteral("fault: ") + it.key()).mid(0, 3).join(QStringLiteral("; ")));
    return report;
}
