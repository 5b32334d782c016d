#pragma once

#include <QtCore/QStringList>

class QTreeWidgetItem;

// A tree widget as the user reads it.
namespace TreeRows
{
// The visible rows below an item (a tree's invisibleRootItem() for all), depth first, indented by
// two blanks per level; with `deep` false, only its own children, unindented.
QStringList Below(const QTreeWidgetItem* item, bool deep = true, int depth = 0);
// The item's child with the text, or null.
QTreeWidgetItem* Child(const QTreeWidgetItem* item, const QString& text);
} // namespace TreeRows
