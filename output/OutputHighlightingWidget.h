#pragma once

#include "settings/ExtraSelectionProperties.h"

#include <QtCore/QList>
#include <QtWidgets/QWidget>

class FlatButton;
class QListWidget;
class QListWidgetItem;

// The list of the user's highlight rules of the output, as a page of the preferences. It edits a
// working copy; Apply() writes it back. Order matters: later rules paint over earlier ones.
class OutputHighlightingWidget : public QWidget
{
    Q_OBJECT

public:
    explicit OutputHighlightingWidget(QWidget* parent = nullptr);

    void Apply();
    void Reset();
    const QList<ExtraSelectionProperties>& GetSelections() const { return selections; }

public slots:
    void NewItem();
    void DeleteItem();
    void EditItem(QListWidgetItem* item);
    void OnItemChanged(QListWidgetItem* item);
    void MoveItemUp();
    void MoveItemDown();

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    FlatButton* CreateButton(const QString& image, const QString& toolTip);
    QListWidgetItem* CreateItem(const ExtraSelectionProperties& properties) const;
    void SwapWithRow(int row, int otherRow);

    QListWidget* listWidget = nullptr;
    FlatButton* newItemBtn = nullptr;
    FlatButton* deleteItemBtn = nullptr;
    FlatButton* moveItemUpBtn = nullptr;
    FlatButton* moveItemDownBtn = nullptr;
    QList<ExtraSelectionProperties> selections;
};
