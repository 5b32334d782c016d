#pragma once

#include <QtWidgets/QTreeWidgetItem>

// A match row of the search results. Its path and position are kept as members and handed out
// under their roles, rather than stored as variants in the item: one search can fill the tree
// with a hundred thousand of these.
class SearchMatchItem : public QTreeWidgetItem
{
public:
    SearchMatchItem(const QString& lineText, const QString& path, int position);

    QVariant data(int column, int role) const override;
    void setData(int column, int role, const QVariant& value) override;

private:
    QString path;
    int position = 0;
};
