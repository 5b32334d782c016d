#include "sidebar/OutlineView.h"

#include "language/BaseParser.h"
#include "settings/ColorSettings.h"
#include "settings/Settings.h"
#include "sidebar/OutlineTreeWidget.h"
#include "widgets/FlatButton.h"

#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>

OutlineView::OutlineView(KeyBindings* keyBindings, QWidget* parent) : SubView(keyBindings, parent)
{
    setObjectName(QStringLiteral("OutlineView"));
    SetViewName(QStringLiteral("OUTLINE"), true);
    globalProcIcon.addFile(QStringLiteral(":/bq2_icons/mel_global_proc.png"));
    procIcon.addFile(QStringLiteral(":/bq2_icons/mel_proc.png"));
    globalVariableIcon.addFile(QStringLiteral(":/bq2_icons/mel_global_var.png"));
    importIcon.addFile(QStringLiteral(":/bq2_icons/python_import.png"));
    mainIcon.addFile(QStringLiteral(":/bq2_icons/python_main.png"));
    classIcon.addFile(QStringLiteral(":/bq2_icons/python_class.png"));
    methodIcon.addFile(QStringLiteral(":/bq2_icons/python_method.png"));
    classMethodIcon.addFile(QStringLiteral(":/bq2_icons/python_class_method.png"));
    staticMethodIcon.addFile(QStringLiteral(":/bq2_icons/python_static_method.png"));
    variableIcon.addFile(QStringLiteral(":/bq2_icons/python_variable.png"));
    classVariableIcon.addFile(QStringLiteral(":/bq2_icons/python_class_variable.png"));
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    UpdateColors();
    SetExpanded(Settings::outlineExpanded);
    UpdateVisibility();
}

FlatButton* OutlineView::CreateTitleBarButton(const QString& resource, const QString& toolTip)
{
    auto* button = new FlatButton(this);
    button->SetSize(GetTitleBarButtonSize());
    button->SetImage(QImage(resource), 6);
    button->setToolTip(toolTip);
    return button;
}

void OutlineView::CreateWidgets()
{
    treeWidget = new OutlineTreeWidget(this);
    sortButton = CreateTitleBarButton(QStringLiteral(":/bq2_icons/sort-by-alphabet.png"),
                                      QStringLiteral("Sort by Name"));
    collapseButton = CreateTitleBarButton(QStringLiteral(":/bq2_icons/collapse.png"), QStringLiteral("Collapse All"));
    filtersButton =
        CreateTitleBarButton(QStringLiteral(":/bq2_icons/list_code_editors.png"), QStringLiteral("Filters"));
}

void OutlineView::CreateLayout()
{
    AppendTitleBarButton(sortButton);
    AppendTitleBarButton(collapseButton);
    AppendTitleBarButton(filtersButton);
    GetMainLayout()->addWidget(treeWidget);
}

void OutlineView::CreateConnections()
{
    connect(sortButton, SIGNAL(clicked()), this, SLOT(ToggleSort()));
    connect(collapseButton, SIGNAL(clicked()), this, SLOT(CollapseAll()));
    connect(filtersButton, SIGNAL(clicked()), this, SLOT(ShowFiltersMenu()));
    connect(treeWidget, SIGNAL(itemSelectionChanged()), this, SLOT(OnSelectionChanged()));
    connect(treeWidget, SIGNAL(itemClicked(QTreeWidgetItem*, int)), this, SLOT(OnSelectionChanged()));
    connect(treeWidget, SIGNAL(FocusOutClearSelection()), this, SLOT(OnFocusOutClearSelection()));
    connect(treeWidget, SIGNAL(itemExpanded(QTreeWidgetItem*)), this, SLOT(SaveExpanded()));
    connect(treeWidget, SIGNAL(itemCollapsed(QTreeWidgetItem*)), this, SLOT(SaveExpanded()));
}

// ---------------------------------------------------------------------------------------------
// Building the tree

void OutlineView::SetItems(const QList<ParserItem>& newItems, const QString& newFilePath,
                           CodeEditorLanguage newLanguage)
{
    // Where the user scrolled to since the last expand or collapse survives the rebuild.
    if (hasParser && filePath == newFilePath)
        SaveScrollValues();
    hasParser = newLanguage != CodeEditorLanguage::TEXT;
    items = newItems;
    filePath = newFilePath;
    language = newLanguage;
    Update();
}

void OutlineView::Update(BaseParser* parser)
{
    if (!parser)
    {
        SetItems({}, filePath, CodeEditorLanguage::TEXT);
        return;
    }
    const CodeEditorLanguage parserLanguage = parser->IsMel()      ? CodeEditorLanguage::MEL
                                              : parser->IsPython() ? CodeEditorLanguage::PYTHON
                                                                   : CodeEditorLanguage::TEXT;
    SetItems(parser->GetItems(), parser->GetFilePath(), parserLanguage);
}

void OutlineView::Update()
{
    Clear();
    if (!hasParser)
        return;
    Build(language == CodeEditorLanguage::PYTHON);
    RestoreExpanded(filePath);
}

void OutlineView::Clear()
{
    treeWidget->ClearAll();
}

void OutlineView::Build(bool python)
{
    const bool sorting = treeWidget->isSortingEnabled();
    treeWidget->setSortingEnabled(false);
    // parents[n] is the last item that can hold children at level n.
    QList<QTreeWidgetItem*> parents{nullptr};
    for (const ParserItem& parserItem : std::as_const(items))
    {
        QTreeWidgetItem* parent = nullptr;
        const int level = parserItem.level;
        if (level > 0)
        {
            if (level - 1 < parents.size())
            {
                parent = parents.at(level - 1);
            }
            else
            {
                for (int i = parents.size() - 1; i >= 0 && !parent; --i)
                    parent = parents.at(i);
            }
        }
        QTreeWidgetItem* item = AddItem(parserItem, parent, python);
        if (!item || level < 0)
            continue;
        while (parents.size() <= level)
            parents.append(nullptr);
        parents[level] = item;
        parents.erase(parents.begin() + level + 1, parents.end());
    }
    treeWidget->setSortingEnabled(sorting);
    if (sorting)
        treeWidget->sortByColumn(0, Qt::AscendingOrder);
}

// Adds the row of one symbol; returns it only if it can hold children.
QTreeWidgetItem* OutlineView::AddItem(const ParserItem& parserItem, QTreeWidgetItem* parent, bool python)
{
    const QString& name = parserItem.name;
    const int start = parserItem.position;
    const int end = start + static_cast<int>(name.length());
    if (!python)
    {
        switch (parserItem.type)
        {
        case ParserItemGlobalProc:
            return AddItem(name, start, end, globalProcIcon, parent, Settings::outlineHideGlobalProcs);
        case ParserItemProc:
            return AddItem(name, start, end, procIcon, parent, Settings::outlineHideProcs);
        case ParserItemGlobalVariable:
            AddItem(name, start, end, globalVariableIcon, parent, Settings::outlineHideGlobalVariables);
            return nullptr;
        default:
            return nullptr;
        }
    }
    switch (parserItem.type)
    {
    case ParserItemImport:
        AddItem(name, start, end, importIcon, parent, Settings::outlineHideImports);
        return nullptr;
    case ParserItemImportAs:
    case ParserItemFromImport:
        // The selection covers the alias or the imported name, not the display text.
        AddItem(name, start, start + static_cast<int>(name.section(QLatin1Char(' '), 0, 0).length()), importIcon,
                parent, Settings::outlineHideImports);
        return nullptr;
    case ParserItemMain:
        return AddItem(name, start, end, mainIcon, parent, Settings::outlineHideMain);
    case ParserItemClass:
        return AddItem(name, start, end, classIcon, parent, false);
    case ParserItemMethod:
        return AddItem(name, start, end, methodIcon, parent, false);
    case ParserItemClassMethod:
        return AddItem(name, start, end, classMethodIcon, parent, false);
    case ParserItemStaticMethod:
        return AddItem(name, start, end, staticMethodIcon, parent, false);
    case ParserItemVariable:
        AddItem(name, start, end, variableIcon, parent, false);
        return nullptr;
    case ParserItemClassVariable:
        AddItem(name, start, end, classVariableIcon, parent, false);
        return nullptr;
    default:
        return nullptr;
    }
}

QTreeWidgetItem* OutlineView::AddItem(const QString& name, int start, int end, const QIcon& icon,
                                      QTreeWidgetItem* parent, bool hidden)
{
    auto* item = new QTreeWidgetItem();
    item->setText(0, name);
    item->setData(0, Qt::DecorationRole, icon);
    item->setData(0, Qt::UserRole, start);
    item->setData(0, Qt::UserRole + 1, end);
    if (parent)
        parent->addChild(item);
    else
        treeWidget->addTopLevelItem(item);
    item->setHidden(hidden);
    return item;
}

// ---------------------------------------------------------------------------------------------
// Selection

void OutlineView::OnSelectionChanged()
{
    if (clearingSelection)
        return;
    const QTreeWidgetItem* item = treeWidget->currentItem();
    if (!item || !item->isSelected())
        return;
    emit SelectionChanged(item->data(0, Qt::UserRole).toInt(), item->data(0, Qt::UserRole + 1).toInt());
}

void OutlineView::OnFocusOutClearSelection()
{
    clearingSelection = true;
    treeWidget->selectionModel()->clear();
    clearingSelection = false;
}

// ---------------------------------------------------------------------------------------------
// Sort and filters

void OutlineView::ToggleSort()
{
    SaveExpanded();
    const bool sort = !sortButton->IsChecked();
    sortButton->SetChecked(sort);
    treeWidget->setSortingEnabled(sort);
    if (sort)
        treeWidget->sortByColumn(0, Qt::AscendingOrder);
    else if (treeWidget->topLevelItemCount() > 0)
        Update(); // only a rebuild gives back the source order
}

void OutlineView::CollapseAll()
{
    treeWidget->collapseAll();
    SaveExpanded();
}

void OutlineView::ShowFiltersMenu()
{
    QMenu menu(this);
    const auto addToggle = [&menu, this](const QString& text, bool checked, const char* slot)
    {
        QAction* action = menu.addAction(text, this, slot);
        action->setCheckable(true);
        action->setChecked(checked);
    };
    addToggle(QStringLiteral("Hide Imports"), Settings::outlineHideImports, SLOT(ToggleImportVisibility()));
    addToggle(QStringLiteral("Hide __main__"), Settings::outlineHideMain, SLOT(ToggleMainVisibility()));
    menu.addSeparator();
    addToggle(QStringLiteral("Hide Global Variables (MEL)"), Settings::outlineHideGlobalVariables,
              SLOT(ToggleGlobalVariableVisibility()));
    addToggle(QStringLiteral("Hide Global Procs (MEL)"), Settings::outlineHideGlobalProcs,
              SLOT(ToggleGlobalProcVisibility()));
    addToggle(QStringLiteral("Hide Procs (MEL)"), Settings::outlineHideProcs, SLOT(ToggleProcVisibility()));
    menu.addSeparator();
    menu.addAction(QStringLiteral("Show All"), this, SLOT(ShowAllTypes()));
    menu.exec(filtersButton->mapToGlobal(QPoint(0, filtersButton->height())));
}

void OutlineView::ToggleImportVisibility()
{
    Settings::outlineHideImports = !Settings::outlineHideImports;
    Update();
}

void OutlineView::ToggleMainVisibility()
{
    Settings::outlineHideMain = !Settings::outlineHideMain;
    Update();
}

void OutlineView::ToggleGlobalProcVisibility()
{
    Settings::outlineHideGlobalProcs = !Settings::outlineHideGlobalProcs;
    Update();
}

void OutlineView::ToggleGlobalVariableVisibility()
{
    Settings::outlineHideGlobalVariables = !Settings::outlineHideGlobalVariables;
    Update();
}

void OutlineView::ToggleProcVisibility()
{
    Settings::outlineHideProcs = !Settings::outlineHideProcs;
    Update();
}

void OutlineView::ShowAllTypes()
{
    Settings::outlineHideImports = Settings::outlineHideMain = Settings::outlineHideGlobalProcs =
        Settings::outlineHideGlobalVariables = Settings::outlineHideProcs = false;
    Update();
}

// ---------------------------------------------------------------------------------------------
// Expanded nodes and scroll positions, by file

void OutlineView::SaveScrollValues()
{
    verticalScrollValues.insert(filePath, treeWidget->verticalScrollBar()->value());
    horizontalScrollValues.insert(filePath, treeWidget->horizontalScrollBar()->value());
}

void OutlineView::Save()
{
    SaveExpanded();
}

void OutlineView::SaveExpanded()
{
    if (!hasParser || restoring)
        return;
    SaveScrollValues();
    Settings::outlineExpandedHash.remove(filePath);
    for (int i = 0; i < treeWidget->topLevelItemCount(); ++i)
    {
        QTreeWidgetItem* item = treeWidget->topLevelItem(i);
        if (item->isExpanded())
            SaveExpanded(item, filePath, item->text(0));
    }
}

// Stores the node under its text joined to its ancestors' texts, then its open children.
void OutlineView::SaveExpanded(QTreeWidgetItem* item, const QString& key, const QString& text)
{
    Settings::outlineExpandedHash.insert(key, text);
    for (int i = 0; i < item->childCount(); ++i)
    {
        QTreeWidgetItem* child = item->child(i);
        if (child->isExpanded())
            SaveExpanded(child, key, text + child->text(0));
    }
}

void OutlineView::RestoreExpanded(const QString& path)
{
    restoring = true;
    const QStringList values = Settings::outlineExpandedHash.values(path);
    for (int i = 0; i < treeWidget->topLevelItemCount(); ++i)
        RestoreExpanded(treeWidget->topLevelItem(i), values, treeWidget->topLevelItem(i)->text(0));
    // The scroll bars get their range only from a layout of the new rows.
    treeWidget->doItemsLayout();
    treeWidget->verticalScrollBar()->setValue(verticalScrollValues.value(path, 0));
    treeWidget->horizontalScrollBar()->setValue(horizontalScrollValues.value(path, 0));
    restoring = false;
}

void OutlineView::RestoreExpanded(QTreeWidgetItem* item, const QStringList& values, const QString& text)
{
    if (!values.contains(text))
        return;
    item->setExpanded(true);
    for (int i = 0; i < item->childCount(); ++i)
        RestoreExpanded(item->child(i), values, text + item->child(i)->text(0));
}

void OutlineView::ClearStoredDetails(const QString& path, bool clearTree)
{
    if (clearTree)
    {
        Clear();
        // The file shown is gone: nothing of it is to be stored again when the view moves on.
        if (path == filePath)
            hasParser = false;
    }
    Settings::outlineExpandedHash.remove(path);
    verticalScrollValues.remove(path);
    horizontalScrollValues.remove(path);
}

void OutlineView::ClearInvalidDetails(const QStringList& validPaths)
{
    const QStringList keys = Settings::outlineExpandedHash.uniqueKeys();
    for (const QString& key : keys)
    {
        if (!validPaths.contains(key))
            ClearStoredDetails(key, false);
    }
}

void OutlineView::UpdateVisibility()
{
    SubView::UpdateVisibility();
    if (!treeWidget)
        return;
    treeWidget->setVisible(IsExpanded());
    Settings::outlineExpanded = IsExpanded();
}

void OutlineView::UpdateColors()
{
    QPalette palette = treeWidget->palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
    {
        palette.setColor(group, QPalette::Base, ColorSettings::sideBarBaseColor);
        palette.setColor(group, QPalette::Highlight, ColorSettings::sideBarHighlightColor);
    }
    treeWidget->setPalette(palette);
}
