#pragma once

#include "editor/CodeEditorProperties.h"
#include "sidebar/SubView.h"

#include <QtGui/QIcon>

class FlatButton;
class QLabel;
class QListWidget;
class QListWidgetItem;

// The explorer section that lists the open tabs, one list per editor group, with a heading
// naming the group's place when more than one group is in use.
class OpenCodeEditorsView : public SubView
{
    Q_OBJECT

public:
    OpenCodeEditorsView(KeyBindings* keyBindings, QWidget* parent = nullptr);

    void SetCodeEditors(int groupIndex, const QList<CodeEditorProperties>& propertiesList);
    void SetCurrentCodeEditor(int groupIndex, int codeEditorIndex);
    void UpdateColors();
    void UpdateVisibility() override;
    QLabel* GetGroupLabel(int groupIndex) const { return groupLabels.value(groupIndex); }
    QListWidget* GetGroupList(int groupIndex) const { return groupLists.value(groupIndex); }

signals:
    void CodeEditorSelected(int groupIndex, int codeEditorIndex);
    void SaveAllRequested();
    void CloseAllRequested();

public slots:
    void OnCodeEditorSelected(QListWidgetItem* item);
    void SaveAll();
    void CloseAll();

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    void UpdateGroupLabels();

    FlatButton* saveAllBtn = nullptr;
    FlatButton* closeAllBtn = nullptr;
    QList<QLabel*> groupLabels;
    QList<QListWidget*> groupLists;
    QIcon melIcon;
    QIcon pythonIcon;
    QIcon textIcon;
};
