#pragma once

#include <QtWidgets/QWidget>

class FlatButton;
class KeyBindings;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

// Lists the flags of a MEL command as the host describes them; a double click inserts a flag
// into the active editor.
class QuickHelpView : public QWidget
{
    Q_OBJECT

public:
    QuickHelpView(KeyBindings* keyBindings, QWidget* parent = nullptr);

    void SetSearchText(const QString& text, bool selectAll);
    void UpdateColors();
    QLineEdit* GetSearchEdit() const { return searchEdit; }
    QListWidget* GetFlagList() const { return flagList; }

signals:
    void FlagSelected(const QString& text);
    void HideSideBarRequested();

public slots:
    void UpdateResults();
    void OnFlagSelected(QListWidgetItem* item);
    void Clear();
    void OnHideSideBarRequested();
    void ShowContextMenu(const QPoint& p);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();

    KeyBindings* keyBindings;
    QLabel* titleLabel = nullptr;
    FlatButton* clearBtn = nullptr;
    QLineEdit* searchEdit = nullptr;
    QListWidget* flagList = nullptr;
};
