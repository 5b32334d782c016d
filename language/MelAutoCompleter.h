#pragma once

#include "language/AutoCompleter.h"

class QSortFilterProxyModel;
class QStandardItemModel;

// Completes MEL from the host's vocabulary: keywords, commands, run-time commands and the
// procedures known at the first use. The list is built once per process and shared by every MEL
// editor; only one popup is open at a time, so the shared filter is no conflict.
class MelAutoCompleter : public AutoCompleter
{
    Q_OBJECT

public:
    explicit MelAutoCompleter(QWidget* parent);

    void Update(const QTextCursor& cursor, const QRect& rect, bool autoApply) override;
    void UpdateModel() override;

private:
    static QStandardItemModel* sMelCommandItemModel;
    static QSortFilterProxyModel* sMelCommandProxyModel;
};
