// The text that PythonAutoCompleter sends: the buffer with the statement at the cursor rewritten
// into a locator, empty blocks repaired and exception blocks neutralised.
#include "language/PythonAutoCompleter.h"

#include "settings/Settings.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>

namespace
{
const char* const LOCATOR = "__brindlet_lctr_mvkt__";

bool IsBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

QString Indent(const QString& line)
{
    static const QRegularExpression nonBlank(QStringLiteral("[^ \\t]"));
    const int index = static_cast<int>(line.indexOf(nonBlank));
    return index < 0 ? line : line.left(index);
}

QString CodeOf(const QString& line)
{
    const int hash = static_cast<int>(line.indexOf(QLatin1Char('#')));
    return (hash < 0 ? line : line.left(hash)).trimmed();
}

bool StartsWithAny(const QString& text, const QStringList& heads)
{
    for (const QString& head : heads)
    {
        if (text.startsWith(head))
            return true;
    }
    return false;
}

// Statement heads that end a walk over the lines of a statement.
const QStringList& StatementHeads()
{
    static const QStringList heads = {
        QStringLiteral("def "), QStringLiteral("class "), QStringLiteral("return "), QStringLiteral("while "),
        QStringLiteral("for "), QStringLiteral("if "),    QStringLiteral("elif ")};
    return heads;
}

const QStringList& BlockHeadsBelow()
{
    static const QStringList heads =
        StatementHeads() + QStringList{QStringLiteral("try:"),    QStringLiteral("try "),
                                       QStringLiteral("except:"), QStringLiteral("except "),
                                       QStringLiteral("\"\"\""),  QStringLiteral("'''")};
    return heads;
}

// Whether two indents can be compared: neither may hold both tabs and spaces.
bool IsMixedIndent(const QString& indent)
{
    return indent.contains(QLatin1Char(' ')) && indent.contains(QLatin1Char('\t'));
}
} // namespace

QString PythonAutoCompleter::BuildSource(const QTextCursor& cursor, bool& namesOnly) const
{
    const QTextBlock block = cursor.block();
    int statementStart = block.position();
    int statementEnd = block.position() + block.length() - 1;
    const QString line = block.text();
    QString indent = Indent(line);
    if (indent == line)
        indent = line.left(cursor.positionInBlock());

    int joinedLines = 0;
    for (QTextBlock previous = block.previous(); previous.isValid(); previous = previous.previous())
    {
        const QString code = CodeOf(previous.text());
        if (!code.endsWith(QLatin1Char(',')))
            break;
        indent = Indent(previous.text());
        ++joinedLines;
        statementStart = previous.position();
        if (StartsWithAny(code, StatementHeads()))
            break;
    }
    static const QString closers = QStringLiteral(")]},");
    for (QTextBlock next = block.next(); next.isValid(); next = next.next())
    {
        const QString code = CodeOf(next.text());
        if (StartsWithAny(code, BlockHeadsBelow()))
            break;
        if (!code.isEmpty() && !closers.contains(code.back()))
            break;
        statementEnd = next.position() + next.length() - 1;
        ++joinedLines;
    }

    static const QRegularExpression trailingSpace(QStringLiteral("\\s*$"));
    QString text = cursor.document()->toPlainText();
    text.remove(trailingSpace);
    statementEnd = qMin(statementEnd, static_cast<int>(text.size()));
    statementStart = qMin(statementStart, statementEnd);
    const QString statement = text.mid(statementStart, statementEnd - statementStart).trimmed();
    text = ReplaceStatement(text, statement, indent, statementStart, statementEnd, joinedLines, namesOnly);

    text = RepairEmptyBlocks(text);
    // Behind the source on purpose: imports count wherever they stand, and offsets do not move.
    for (const QString& forcedImport : std::as_const(Settings::pythonParsedForcedImports))
        text += forcedImport + QLatin1Char('\n');
    text += importStatement + QLatin1Char('\n');
    return NeutraliseExceptionBlocks(text);
}

QString PythonAutoCompleter::ReplaceStatement(const QString& text, const QString& statement,
                                              const QString& indent, int start, int end, int joinedLines,
                                              bool& namesOnly) const
{
    static const QRegularExpression defHead(QStringLiteral("^def"));
    static const QRegularExpression classHead(QStringLiteral("^class[ \\t]"));
    static const QRegularExpression loopHead(QStringLiteral("^(for|while)[ \\t]"));
    static const QRegularExpression ifHead(QStringLiteral("^(if)[ \\t]"));
    static const QRegularExpression elifHead(QStringLiteral("^(elif)[ \\t]"));
    const QString locator = QString::fromLatin1(LOCATOR);
    const QString before = text.left(start) + indent;
    namesOnly = false;
    if (defHead.match(statement).hasMatch() || classHead.match(statement).hasMatch())
    {
        // A new name is being typed: the text ends here, and keywords and builtins stay out.
        namesOnly = true;
        const bool isDef = defHead.match(statement).hasMatch();
        return before + (isDef ? QStringLiteral("def __bqdefloc__(%1): pass").arg(locator)
                               : QStringLiteral("class __bqclsloc__(%1): pass").arg(locator));
    }
    QString replacement;
    const bool opensBlock = statement.endsWith(QLatin1Char(':'));
    if (opensBlock && loopHead.match(statement).hasMatch())
        replacement = QStringLiteral("while %1:").arg(locator);
    else if (opensBlock && ifHead.match(statement).hasMatch())
        replacement = QStringLiteral("if %1:").arg(locator);
    else if (opensBlock && elifHead.match(statement).hasMatch())
        replacement = QStringLiteral("elif %1:").arg(locator);
    else if (opensBlock)
        replacement = statement;
    else if (statement.contains(QLatin1Char(';')))
        replacement = statement.left(statement.lastIndexOf(QLatin1Char(';')) + 1) +
                      QStringLiteral("%1 = None;").arg(locator);
    else
        replacement = QStringLiteral("%1 = None").arg(locator);
    // At the top level what follows the cursor does not exist yet; inside a block it stays, so
    // that the block keeps its shape.
    if (indent.isEmpty())
        return before + replacement;
    return before + replacement + QString(joinedLines, QLatin1Char('\n')) + text.mid(end);
}

QString PythonAutoCompleter::RepairEmptyBlocks(const QString& text)
{
    static const QStringList heads = {QStringLiteral("def"),  QStringLiteral("if"),    QStringLiteral("elif"),
                                      QStringLiteral("for"),  QStringLiteral("while"), QStringLiteral("with"),
                                      QStringLiteral("class")};
    QStringList lines = text.split(QLatin1Char('\n'));
    for (int i = 0; i + 1 < lines.size(); ++i)
    {
        const QString trimmed = lines.at(i).trimmed();
        if (!trimmed.endsWith(QLatin1Char(':')) || !StartsWithAny(trimmed, heads))
            continue;
        int next = i + 1;
        while (next < lines.size() &&
               (lines.at(next).trimmed().isEmpty() || lines.at(next).trimmed().startsWith(QLatin1Char('#'))))
            ++next;
        if (next == lines.size())
            continue;
        const QString indent = Indent(lines.at(i));
        const QString& body = lines.at(next);
        if (body.startsWith(indent) && body.size() > indent.size() && IsBlank(body.at(indent.size())))
            continue;
        if (IsMixedIndent(indent) || IsMixedIndent(Indent(body)))
            continue;
        lines[i] += QStringLiteral(" pass");
    }
    if (!lines.isEmpty() && lines.last().trimmed().endsWith(QLatin1Char(':')))
        lines.last() += QStringLiteral(" pass");
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

QString PythonAutoCompleter::NeutraliseExceptionBlocks(const QString& text)
{
    // Half-typed exception blocks often do not parse; plain blocks keep the names inside them.
    static const QRegularExpression tryHead(QStringLiteral("\\btry\\b[ \\t]*:"));
    static const QRegularExpression exceptHead(QStringLiteral("\\bexcept\\b[a-zA-Z0-9_()., \\t]*:"));
    static const QRegularExpression finallyHead(QStringLiteral("\\bfinally\\b[ \\t]*:"));
    QString result = text;
    result.replace(tryHead, QStringLiteral("if True:"));
    result.replace(exceptHead, QStringLiteral("if False:"));
    result.replace(finallyHead, QStringLiteral("if True:"));
    return result;
}

QString PythonAutoCompleter::EscapeForPython(const QString& text)
{
    // For a double-quoted literal; backslashes first, before the escapes add their own. Carriage
    // returns and NUL characters would end or break the literal, so they are escaped too.
    QString result = text;
    result.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    result.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
    result.replace(QLatin1Char('"'), QStringLiteral("\\\""));
    result.replace(QLatin1Char('\r'), QStringLiteral("\\r"));
    result.replace(QChar(0), QStringLiteral("\\x00"));
    return result;
}
