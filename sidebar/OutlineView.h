#pragma once

#include "editor/CodeEditorLanguage.h"
#include "language/ParserItem.h"
#include "sidebar/SubView.h"

#include <QtCore/QHash>
#include <QtGui/QIcon>

class BaseParser;
class FlatButton;
class OutlineTreeWidget;
class QTreeWidgetItem;

// The outline section: the symbols of the current buffer as a tree, rebuilt after every parse,
// which gets its expanded nodes and scroll position back from what was stored for its file.
class OutlineView : public SubView
{
    Q_OBJECT

public:
    OutlineView(KeyBindings* keyBindings, QWidget* parent = nullptr);

    // The symbols of one parse of the buffer at filePath; a TEXT language empties the tree.
    void SetItems(const QList<ParserItem>& items, const QString& filePath, CodeEditorLanguage language);
    void Save();
    void ClearStoredDetails(const QString& filePath, bool clearTree);
    void ClearInvalidDetails(const QStringList& validPaths);
    void UpdateVisibility() override;
    void UpdateColors();
    OutlineTreeWidget* GetTreeWidget() const { return treeWidget; }
    QString GetFilePath() const { return filePath; }
    FlatButton* GetSortButton() const { return sortButton; }

signals:
    void SelectionChanged(int start, int end);

public slots:
    void Update();
    void Update(BaseParser* parser);
    void Clear();
    void ToggleSort();
    void CollapseAll();
    void ShowFiltersMenu();
    void ToggleImportVisibility();
    void ToggleMainVisibility();
    void ToggleGlobalProcVisibility();
    void ToggleGlobalVariableVisibility();
    void ToggleProcVisibility();
    void ShowAllTypes();
    void OnSelectionChanged();
    void OnFocusOutClearSelection();
    void SaveExpanded();

private:
    void CreateWidgets();
    void CreateLayout();
    void CreateConnections();
    FlatButton* CreateTitleBarButton(const QString& resource, const QString& toolTip);
    void Build(bool python);
    QTreeWidgetItem* AddItem(const ParserItem& parserItem, QTreeWidgetItem* parent, bool python);
    QTreeWidgetItem* AddItem(const QString& name, int start, int end, const QIcon& icon, QTreeWidgetItem* parent,
                             bool hidden);
    void RestoreExpanded(const QString& filePath);
    void SaveExpanded(QTreeWidgetItem* item, const QString& key, const QString& text);
    void RestoreExpanded(QTreeWidgetItem* item, const QStringList& values, const QString& text);
    void SaveScrollValues();

    // The last parse handed in; the tree is rebuilt from it.
    bool hasParser = false;
    QList<ParserItem> items;
    QString filePath;
    CodeEditorLanguage language = CodeEditorLanguage::TEXT;
    OutlineTreeWidget* treeWidget = nullptr;
    QHash<QString, int> verticalScrollValues;
    QHash<QString, int> horizontalScrollValues;
    FlatButton* sortButton = nullptr;
    FlatButton* collapseButton = nullptr;
    FlatButton* filtersButton = nullptr;
    QIcon globalProcIcon;
    QIcon procIcon;
    QIcon globalVariableIcon;
    QIcon importIcon;
    QIcon mainIcon;
    QIcon classIcon;
    QIcon methodIcon;
    QIcon classMethodIcon;
    QIcon staticMethodIcon;
    QIcon variableIcon;
    QIcon classVariableIcon;
    bool clearingSelection = false;
    // Set while a rebuild opens the stored nodes, whose expansion must not be stored again.
    bool restoring = false;
};
