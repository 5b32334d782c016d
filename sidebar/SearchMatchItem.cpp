#include "sidebar/SearchMatchItem.h"

#include "sidebar/SearchResultsTreeWidget.h"

#include <QtCore/QDir>

SearchMatchItem::SearchMatchItem(const QString& lineText, const QString& path, int position)
    : path(path), position(position)
{
    setText(0, lineText);
}

QVariant SearchMatchItem::data(int column, int role) const
{
    if (column == 0)
    {
        if (role == SearchResultsTreeWidget::PathRole)
            return path;
        if (role == SearchResultsTreeWidget::PositionRole)
            return position;
        if (role == Qt::ToolTipRole)
            return QDir::toNativeSeparators(path);
    }
    return QTreeWidgetItem::data(column, role);
}

void SearchMatchItem::setData(int column, int role, const QVariant& value)
{
    if (column == 0 && role == SearchResultsTreeWidget::PathRole)
        path = value.toString();
    else if (column == 0 && role == SearchResultsTreeWidget::PositionRole)
        position = value.toInt();
    else
    {
        QTreeWidgetItem::setData(column, role, value);
        return;
    }
    emitDataChanged();
}
