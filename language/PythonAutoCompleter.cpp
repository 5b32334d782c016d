#include "language/PythonAutoCompleter.h"

#include "plugin/MayaUtil.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QSortFilterProxyModel>
#include <QtGui/QStandardItemModel>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>

namespace
{
bool IsBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}
} // namespace

PythonAutoCompleter::PythonAutoCompleter(QWidget* parent) : AutoCompleter(parent) {}

Qt::CaseSensitivity PythonAutoCompleter::GetCaseSensitivity() const
{
    return Qt::CaseInsensitive;
}

void PythonAutoCompleter::UpdateModel()
{
    if (itemModel)
        return;
    // Not sorted: the rows keep the script's order, public names first.
    itemModel = new QStandardItemModel(this);
    auto* proxy = new QSortFilterProxyModel(this);
    proxy->setSourceModel(itemModel);
    proxy->setSortCaseSensitivity(Qt::CaseInsensitive);
    SetModel(proxy);
}

bool PythonAutoCompleter::ValidateAndSetPrefix(QTextCursor cursor)
{
    static const QRegularExpression wordOrDot(QStringLiteral("[a-zA-Z0-9_\\.]"));
    static const QRegularExpression notWordOrSpace(QStringLiteral("[^a-zA-Z0-9_\\s]"));
    static const QRegularExpression blanks(QStringLiteral("[ \\t]"));
    objectPath.clear();
    importStatement.clear();
    isImportContext = false;

    const QTextDocument* document = cursor.document();
    const int entry = cursor.position();
    const QChar previous = document->characterAt(entry - 1);
    const QChar next = document->characterAt(entry);
    const bool previousIsDot = previous == QLatin1Char('.');
    if (wordOrDot.match(QString(previous)).hasMatch() && notWordOrSpace.match(QString(next)).hasMatch())
    {
        if (!previousIsDot)
            cursor.movePosition(QTextCursor::PreviousWord, QTextCursor::KeepAnchor);
    }
    else if (!(previousIsDot && IsBlank(next)))
    {
        cursor.movePosition(QTextCursor::StartOfWord, QTextCursor::KeepAnchor);
    }
    prefix = cursor.selectedText();

    const QString lineText = cursor.block().text().left(entry - cursor.block().position());
    const QStringList parts = lineText.split(blanks, Qt::SkipEmptyParts);
    const bool lastIsBlank = !lineText.isEmpty() && IsBlank(lineText.back());
    const QString head = parts.value(0);
    const int count = static_cast<int>(parts.size());
    if (head == QLatin1String("from") && (count == 3 || count == 4) && !(count == 4 && lastIsBlank))
    {
        if (parts.at(2) == QLatin1String("import"))
        {
            objectPath = parts.at(1);
            importStatement = QStringLiteral("import ") + objectPath;
            isImportContext = true;
        }
    }
    else if (head == QLatin1String("from") && (count != 2 || lastIsBlank))
    {
        // Nothing of the import kind to offer.
    }
    else if ((head == QLatin1String("from") || head == QLatin1String("import")) && count == 2)
    {
        const QString module = parts.at(1);
        if (module.endsWith(QLatin1Char('.')))
        {
            objectPath = module.chopped(1);
        }
        else
        {
            const QStringList pieces = module.split(QLatin1Char('.'));
            if (pieces.size() < 2)
            {
                // A bare top-level module name offers nothing.
                isImportContext = true;
                return false;
            }
            objectPath = pieces.mid(0, pieces.size() - 1).join(QLatin1Char('.'));
        }
        if (!objectPath.isEmpty())
        {
            importStatement = QStringLiteral("import ") + objectPath;
            isImportContext = true;
        }
    }
    else
    {
        SetPlainPath(cursor);
    }
    return !prefix.isEmpty() || !objectPath.isEmpty();
}

void PythonAutoCompleter::SetPlainPath(const QTextCursor& moved)
{
    // The path stops at the first character outside names and dots: "f().x" has none.
    static const QRegularExpression separators(QStringLiteral("[^a-zA-Z0-9_\\.]"));
    const int start = qMin(moved.position(), moved.anchor());
    const QTextDocument* document = moved.document();
    const bool afterDot = start > 0 && document->characterAt(start - 1) == QLatin1Char('.');
    const QString before = moved.block().text().left(start - moved.block().position());
    const QStringList parts = before.split(separators, Qt::SkipEmptyParts);
    if (!parts.isEmpty() && afterDot)
    {
        objectPath = parts.last();
        if (objectPath.endsWith(QLatin1Char('.')))
            objectPath.chop(1);
    }
}

void PythonAutoCompleter::Update(const QTextCursor& cursor, const QRect& rect, bool autoApply)
{
    if (!isVisible())
    {
        const bool valid = ValidateAndSetPrefix(cursor);
        if (!valid && isImportContext)
            return;
        // An invalid prefix outside an import still asks: Ctrl+Space on nothing lists the scope.
        completionPosition = cursor.position() - static_cast<int>(prefix.size());
        UpdatePython(cursor);
        ShowRows(rect, autoApply);
        return;
    }
    if (!ValidateAndSetPrefix(cursor))
    {
        hide();
        return;
    }
    if (prefix.isEmpty())
    {
        const bool afterDot = cursor.document()->characterAt(cursor.position() - 1) == QLatin1Char('.');
        if (isImportContext && cursor.position() != completionPosition && !afterDot)
        {
            hide();
            return;
        }
        // A dot has just been typed: a new path, a new query.
        UpdatePython(cursor);
    }
    // Otherwise the last result is the cache, narrowed by the prefix.
    NarrowVisibleRows();
}

void PythonAutoCompleter::ShowRows(const QRect& rect, bool autoApply)
{
    UpdateProxyModel();
    if (RowCount() == 0)
        return;
    UpdateRect(rect);
    SelectTop();
    if (autoApply && RowCount() == 1)
        ApplySelection();
    else
        show();
}

void PythonAutoCompleter::NarrowVisibleRows()
{
    UpdateProxyModel();
    if (RowCount() == 0)
    {
        hide();
        return;
    }
    UpdateRect();
    SelectTop();
}

void PythonAutoCompleter::UpdatePython(QTextCursor cursor)
{
    itemModel->clear();
    bool namesOnly = false;
    const QString source = EscapeForPython(BuildSource(cursor, namesOnly));
    QStringList results;
    MayaUtil::PythonAttributesFromSource(source, objectPath, results, namesOnly);
    // One insertion for all rows, so that the proxy filters once.
    QList<QStandardItem*> items;
    items.reserve(results.size());
    for (const QString& name : std::as_const(results))
        items.append(new QStandardItem(name));
    if (!items.isEmpty())
        itemModel->appendColumn(items);
}
