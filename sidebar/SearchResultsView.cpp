#include "sidebar/SearchResultsView.h"

#include "settings/ColorSettings.h"
#include "sidebar/SearchResultsTreeWidget.h"
#include "tabs/TabImages.h"
#include "widgets/FlatButton.h"

#include <QtWidgets/QScrollBar>
#include <QtWidgets/QVBoxLayout>

namespace
{
constexpr int REPAINT_INTERVAL_MS = 250;
constexpr int STRIP_WIDTH = 8;
} // namespace

SearchResultsView::SearchResultsView(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("SearchResultsView"));
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    repaintTimer.start();
}

void SearchResultsView::CreateWidgets()
{
    treeWidget = new SearchResultsTreeWidget(this);
    replaceImage = TabImages::Load(QStringLiteral(":/bq2_icons/replace.png"));
    replaceAllImage = TabImages::Load(QStringLiteral(":/bq2_icons/replace_all.png"));
    // Children of the viewport, so that they stand over the rows.
    replaceBtn = new FlatButton(treeWidget->viewport());
    replaceBtn->setObjectName(QStringLiteral("replaceBtn"));
    replaceBtn->SetColor(ColorSettings::sideBarHighlightColor, Qt::white);
    replaceBtn->hide();
    replaceBtnStrip = new FlatButton(treeWidget->viewport());
    replaceBtnStrip->setObjectName(QStringLiteral("replaceBtnStrip"));
    replaceBtnStrip->SetColor(ColorSettings::sideBarHighlightColor, Qt::white);
    replaceBtnStrip->SetMouseOverEnabled(false);
    replaceBtnStrip->hide();
}

void SearchResultsView::CreateLayout()
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(treeWidget);
}

void SearchResultsView::CreateConnections()
{
    connect(treeWidget, SIGNAL(currentItemChanged(QTreeWidgetItem*, QTreeWidgetItem*)), this,
            SLOT(OnCurrentItemChanged(QTreeWidgetItem*)));
    connect(treeWidget, SIGNAL(Resized()), this, SLOT(UpdateOverlayItems()));
    connect(treeWidget, SIGNAL(itemExpanded(QTreeWidgetItem*)), this, SLOT(UpdateOverlayItems()));
    connect(treeWidget, SIGNAL(itemCollapsed(QTreeWidgetItem*)), this, SLOT(UpdateOverlayItems()));
    connect(treeWidget, SIGNAL(SearchFocusChanged(const QString&, int)), this,
            SLOT(OnSearchFocusChanged(const QString&, int)));
    connect(treeWidget, SIGNAL(FindAndReplace(const QString&, int)), this,
            SLOT(OnFindAndReplace(const QString&, int)));
    connect(treeWidget->verticalScrollBar(), SIGNAL(valueChanged(int)), this, SLOT(UpdateOverlayItems()));
    connect(replaceBtn, SIGNAL(clicked()), this, SLOT(Replace()));
}

void SearchResultsView::Next()
{
    treeWidget->Next();
}

void SearchResultsView::Previous()
{
    treeWidget->Previous();
}

void SearchResultsView::ReplaceAll()
{
    treeWidget->ReplaceAll();
}

void SearchResultsView::CollapseAll()
{
    treeWidget->collapseAll();
    UpdateOverlayItems();
}

int SearchResultsView::GetFileCount() const
{
    return treeWidget->GetFileCount();
}

int SearchResultsView::GetReplaceCount() const
{
    return treeWidget->GetReplaceCount();
}

void SearchResultsView::Clear()
{
    currentResultItem = nullptr;
    treeWidget->Clear();
    UpdateOverlayItems();
}

void SearchResultsView::SetReplaceVisible(bool visible)
{
    replaceVisible = visible;
    UpdateOverlayItems();
}

void SearchResultsView::Append(const QString& folder, const QString& relativeDir, QList<SearchResult> results)
{
    treeWidget->Append(folder, relativeDir, results);
    RepaintIfDue();
}

void SearchResultsView::Update(const QString& path, QList<SearchResult> results)
{
    treeWidget->Update(path, results);
    currentResultItem = treeWidget->currentItem();
    UpdateOverlayItems();
}

void SearchResultsView::RepaintIfDue()
{
    if (repaintTimer.elapsed() < REPAINT_INTERVAL_MS || !treeWidget->isVisible())
        return;
    treeWidget->viewport()->repaint();
    repaintTimer.restart();
}

void SearchResultsView::OnCurrentItemChanged(QTreeWidgetItem* currentItem)
{
    currentResultItem = currentItem;
    UpdateOverlayItems();
}

void SearchResultsView::UpdateOverlayItems()
{
    QTreeWidgetItem* item = treeWidget->currentItem();
    const QRect row = item ? treeWidget->visualItemRect(item) : QRect();
    if (!item || !replaceVisible || !row.isValid())
    {
        replaceBtn->hide();
        replaceBtnStrip->hide();
        return;
    }
    const int side = row.height();
    const bool match = SearchResultsTreeWidget::IsMatchItem(item);
    replaceBtn->setFixedSize(side, side);
    replaceBtn->SetImage(match ? replaceImage : replaceAllImage, qMax(1, side / 6));
    replaceBtn->setToolTip(match ? QStringLiteral("Replace") : QStringLiteral("Replace All"));
    const int right = treeWidget->viewport()->width();
    replaceBtn->move(right - side, row.top());
    replaceBtnStrip->setFixedSize(STRIP_WIDTH, side);
    replaceBtnStrip->move(right - side - STRIP_WIDTH, row.top());
    replaceBtn->show();
    replaceBtnStrip->show();
    replaceBtn->raise();
}

void SearchResultsView::OnSearchFocusChanged(const QString& fileName, int position)
{
    emit SearchFocusChanged(fileName, position);
}

void SearchResultsView::OnFindAndReplace(const QString& filePath, int position)
{
    emit FindAndReplace(filePath, position);
}

void SearchResultsView::Dismiss() {}

void SearchResultsView::Replace()
{
    // The row under the button is the current one; the remembered item may have been rebuilt.
    QTreeWidgetItem* item = treeWidget->currentItem();
    currentResultItem = nullptr;
    treeWidget->Replace(item);
}
