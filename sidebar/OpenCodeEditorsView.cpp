#include "sidebar/OpenCodeEditorsView.h"

#include "settings/ColorSettings.h"
#include "settings/Settings.h"
#include "widgets/FlatButton.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QVBoxLayout>

OpenCodeEditorsView::OpenCodeEditorsView(KeyBindings* keyBindings, QWidget* parent)
    : SubView(keyBindings, parent)
{
    setObjectName(QStringLiteral("OpenCodeEditorsView"));
    SetViewName(QStringLiteral("OPEN EDITORS"), true);
    melIcon.addFile(QStringLiteral(":/bq2_icons/mel_icon.png"));
    pythonIcon.addFile(QStringLiteral(":/bq2_icons/python_icon.png"));
    textIcon.addFile(QStringLiteral(":/bq2_icons/text_icon.png"));
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    UpdateColors();
    SetExpanded(Settings::openEditorsExpanded);
    UpdateVisibility();
}

void OpenCodeEditorsView::CreateWidgets()
{
    saveAllBtn = new FlatButton(this);
    saveAllBtn->SetSize(GetTitleBarButtonSize());
    saveAllBtn->SetImage(QImage(QStringLiteral(":/bq2_icons/save_all.png")), 6);
    saveAllBtn->setToolTip(QStringLiteral("Save All"));
    closeAllBtn = new FlatButton(this);
    closeAllBtn->SetSize(GetTitleBarButtonSize());
    closeAllBtn->SetImage(QImage(QStringLiteral(":/bq2_icons/close_all.png")), 6);
    closeAllBtn->setToolTip(QStringLiteral("Close All"));
    for (int i = 0; i < Settings::NUM_CODE_EDITOR_GROUPS; ++i)
    {
        groupLabels.append(new QLabel(QStringLiteral("UNKNOWN"), this));
        auto* list = new QListWidget(this);
        list->setFrameStyle(0);
        groupLists.append(list);
    }
}

void OpenCodeEditorsView::CreateLayout()
{
    AppendTitleBarButton(saveAllBtn);
    AppendTitleBarButton(closeAllBtn);
    for (int i = 0; i < groupLists.size(); ++i)
    {
        groupLabels.at(i)->setContentsMargins(6, 2, 0, 2);
        GetMainLayout()->addWidget(groupLabels.at(i));
        GetMainLayout()->addWidget(groupLists.at(i));
    }
}

void OpenCodeEditorsView::CreateConnections()
{
    connect(saveAllBtn, SIGNAL(clicked()), this, SLOT(SaveAll()));
    connect(closeAllBtn, SIGNAL(clicked()), this, SLOT(CloseAll()));
    for (QListWidget* list : std::as_const(groupLists))
        connect(list, SIGNAL(itemClicked(QListWidgetItem*)), this, SLOT(OnCodeEditorSelected(QListWidgetItem*)));
}

void OpenCodeEditorsView::SetCodeEditors(int groupIndex, const QList<CodeEditorProperties>& propertiesList)
{
    QListWidget* list = groupLists.value(groupIndex);
    if (!list)
        return;
    list->clear();
    for (const CodeEditorProperties& properties : propertiesList)
    {
        const QIcon& icon = properties.language == CodeEditorLanguage::MEL      ? melIcon
                            : properties.language == CodeEditorLanguage::PYTHON ? pythonIcon
                                                                                : textIcon;
        list->addItem(new QListWidgetItem(icon, properties.label));
    }
    UpdateVisibility();
}

void OpenCodeEditorsView::SetCurrentCodeEditor(int groupIndex, int codeEditorIndex)
{
    for (QListWidget* list : std::as_const(groupLists))
        list->clearSelection();
    QListWidget* list = groupLists.value(groupIndex);
    if (list && codeEditorIndex >= 0 && codeEditorIndex < list->count())
        list->setCurrentRow(codeEditorIndex);
}

void OpenCodeEditorsView::OnCodeEditorSelected(QListWidgetItem* item)
{
    auto* list = qobject_cast<QListWidget*>(sender());
    const int groupIndex = groupLists.indexOf(list);
    if (groupIndex < 0 || !item)
        return;
    emit CodeEditorSelected(groupIndex, list->row(item));
}

void OpenCodeEditorsView::SaveAll()
{
    emit SaveAllRequested();
}

void OpenCodeEditorsView::CloseAll()
{
    emit CloseAllRequested();
}

void OpenCodeEditorsView::UpdateVisibility()
{
    SubView::UpdateVisibility();
    if (groupLists.isEmpty())
        return;
    Settings::openEditorsExpanded = IsExpanded();
    if (!IsExpanded())
    {
        for (int i = 0; i < groupLists.size(); ++i)
        {
            groupLabels.at(i)->hide();
            groupLists.at(i)->hide();
        }
        return;
    }
    int groupsWithRows = 0;
    for (int i = 0; i < groupLists.size(); ++i)
    {
        const bool rows = groupLists.at(i)->count() > 0;
        groupLists.at(i)->setVisible(rows);
        groupLabels.at(i)->setVisible(rows);
        groupsWithRows += rows ? 1 : 0;
    }
    if (groupsWithRows == 1)
    {
        for (QLabel* label : std::as_const(groupLabels))
            label->hide();
    }
    else if (groupsWithRows == 0)
    {
        // An empty list rather than a blank section.
        groupLists.first()->show();
    }
    UpdateGroupLabels();
}

void OpenCodeEditorsView::UpdateGroupLabels()
{
    const bool vertical = Settings::codeEditorOrientVertical;
    const QString last = vertical ? QStringLiteral("BOTTOM") : QStringLiteral("RIGHT");
    groupLabels.at(0)->setText(vertical ? QStringLiteral("TOP") : QStringLiteral("LEFT"));
    if (groupLabels.size() < 3)
        return;
    if (groupLabels.at(1)->isVisibleTo(this))
    {
        groupLabels.at(1)->setText(QStringLiteral("CENTER"));
        groupLabels.at(2)->setText(last);
    }
    else
    {
        groupLabels.at(1)->setText(last);
        groupLabels.at(2)->setText(last);
    }
}

void OpenCodeEditorsView::UpdateColors()
{
    for (QListWidget* list : std::as_const(groupLists))
    {
        QPalette palette = list->palette();
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
        {
            palette.setColor(group, QPalette::Base, ColorSettings::sideBarBaseColor);
            palette.setColor(group, QPalette::Highlight, ColorSettings::sideBarHighlightColor);
        }
        list->setPalette(palette);
    }
}
