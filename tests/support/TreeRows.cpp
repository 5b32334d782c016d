#include "TreeRows.h"

#include <QtWidgets/QTreeWidgetItem>

QStringList TreeRows::Below(const QTreeWidgetItem* item, bool deep, int depth)
{
    QStringList rows;
    for (int i = 0; i < item->childCount(); ++i)
    {
        const QTreeWidgetItem* child = item->child(i);
        if (child->isHidden())
            continue;
        rows.append(QString(depth * 2, QLatin1Char(' ')) + child->text(0));
        if (deep)
            rows += Below(child, true, depth + 1);
    }
    return rows;
}

QTreeWidgetItem* TreeRows::Child(const QTreeWidgetItem* item, const QString& text)
{
    for (int i = 0; item && i < item->childCount(); ++i)
    {
        if (item->child(i)->text(0) == text)
            return item->child(i);
    }
    return nullptr;
}
