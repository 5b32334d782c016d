#include "language/MelAutoCompleter.h"

#include "plugin/MayaUtil.h"

#include <QtCore/QSortFilterProxyModel>
#include <QtGui/QStandardItemModel>

// Built on first use and never freed: the list outlives every editor.
QStandardItemModel* MelAutoCompleter::sMelCommandItemModel = nullptr;
QSortFilterProxyModel* MelAutoCompleter::sMelCommandProxyModel = nullptr;

MelAutoCompleter::MelAutoCompleter(QWidget* parent) : AutoCompleter(parent) {}

void MelAutoCompleter::UpdateModel()
{
    if (!sMelCommandItemModel)
    {
        sMelCommandItemModel = new QStandardItemModel();
        const QList<QStringList> lists = {MayaUtil::MelKeywords(), MayaUtil::MelCommands(),
                                          MayaUtil::MelRunTimeCommands(), MayaUtil::MelProcedures()};
        for (const QStringList& words : lists)
        {
            for (const QString& word : words)
                sMelCommandItemModel->appendRow(new QStandardItem(word));
        }
        sMelCommandProxyModel = new QSortFilterProxyModel();
        sMelCommandProxyModel->setSourceModel(sMelCommandItemModel);
        sMelCommandProxyModel->setSortCaseSensitivity(Qt::CaseSensitive);
        sMelCommandProxyModel->setFilterCaseSensitivity(Qt::CaseSensitive);
        sMelCommandProxyModel->sort(0, Qt::AscendingOrder);
    }
    SetModel(sMelCommandProxyModel);
}

void MelAutoCompleter::Update(const QTextCursor& cursor, const QRect& rect, bool autoApply)
{
    const bool valid = ValidateAndSetPrefix(cursor);
    if (!valid)
    {
        hide();
        return;
    }
    UpdateProxyModel();
    if (isVisible())
    {
        if (RowCount() == 0)
        {
            hide();
            return;
        }
        UpdateRect();
        SelectTop();
        return;
    }
    if (RowCount() == 0)
        return;
    UpdateRect(rect);
    SelectTop();
    if (autoApply && RowCount() == 1)
        ApplySelection();
    else
        show();
}
