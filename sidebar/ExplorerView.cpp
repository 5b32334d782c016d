#include "sidebar/ExplorerView.h"

#include "settings/KeyBindings.h"
#include "settings/Settings.h"
#include "sidebar/OpenCodeEditorsView.h"
#include "sidebar/OutlineView.h"
#include "sidebar/WorkspaceView.h"

#include <QtCore/QMimeData>
#include <QtGui/QDrag>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace
{
QString ExplorerMimeType()
{
    return QStringLiteral("tolvanek-bq2/explorer");
}
} // namespace

ExplorerView::ExplorerView(KeyBindings* bindings, QWidget* parent) : QWidget(parent), keyBindings(bindings)
{
    setObjectName(QStringLiteral("ExplorerView"));
    setAcceptDrops(true);
    setAutoFillBackground(true);
    setContextMenuPolicy(Qt::CustomContextMenu);
    CreateWidgets();
    CreateLayout();
    CreateConnections();
    OnSubViewVisibilityChanged();
}

void ExplorerView::CreateWidgets()
{
    titleLabel = new QLabel(QStringLiteral("EXPLORER"), this);
    splitter = new QSplitter(Qt::Vertical, this);
    splitter->setStyleSheet(QStringLiteral("QSplitter::handle:vertical   {height: 1px; image: none;}"
                                           "QSplitter::handle:horizontal {width:  1px; image: none;}"));
    workspaceView = new WorkspaceView(keyBindings, splitter);
    outlineView = new OutlineView(keyBindings, splitter);
    openCodeEditorsView = new OpenCodeEditorsView(keyBindings, splitter);
    splitter->addWidget(workspaceView);
    splitter->addWidget(outlineView);
    splitter->addWidget(openCodeEditorsView);
    outlineView->setVisible(Settings::outlineVisible);
    openCodeEditorsView->setVisible(Settings::openEditorsVisible);
    fillerWidget = new QWidget(this);
    fillerWidget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ExplorerView::CreateLayout()
{
    titleLayout = new QHBoxLayout();
    titleLayout->setContentsMargins(0, 6, 0, 6);
    titleLayout->addSpacing(8);
    titleLayout->addWidget(titleLabel);
    auto* mainLayout = new QVBoxLayout(this);
    mainLayout->setContentsMargins(0, 0, 0, 0);
    mainLayout->setSpacing(0);
    mainLayout->addLayout(titleLayout);
    mainLayout->addWidget(splitter);
    mainLayout->addWidget(fillerWidget);
}

void ExplorerView::CreateConnections()
{
    connect(openCodeEditorsView, SIGNAL(CodeEditorSelected(int, int)), this, SIGNAL(CodeEditorSelected(int, int)));
    connect(openCodeEditorsView, SIGNAL(SaveAllRequested()), this, SIGNAL(SaveAllRequested()));
    connect(openCodeEditorsView, SIGNAL(CloseAllRequested()), this, SIGNAL(CloseAllRequested()));
    connect(workspaceView, SIGNAL(FileOpenRequested(QString, bool)), this, SIGNAL(FileOpenRequested(QString, bool)));
    connect(workspaceView, SIGNAL(FilePathChanged(QString, QString)), this,
            SIGNAL(FilePathChanged(QString, QString)));
    connect(workspaceView, SIGNAL(FindInSelected(QString, QString)), this, SIGNAL(FindInSelected(QString, QString)));
    connect(workspaceView, SIGNAL(ItemDeleted(QString, bool)), this, SIGNAL(WorkspaceItemDeleted(QString, bool)));
    connect(workspaceView, SIGNAL(WorkspaceModified()), this, SIGNAL(WorkspaceModified()));
    connect(outlineView, SIGNAL(SelectionChanged(int, int)), this, SIGNAL(OutlineSelectionChanged(int, int)));
    for (SubView* section : Sections())
        connect(section, SIGNAL(ExpandedStateChanged()), this, SLOT(OnExpandedStateChanged()));
    connect(this, SIGNAL(customContextMenuRequested(QPoint)), this, SLOT(ShowContextMenu(QPoint)));
}

QList<SubView*> ExplorerView::Sections() const
{
    return {workspaceView, outlineView, openCodeEditorsView};
}

int ExplorerView::GetTitleBarHeight() const
{
    return titleLabel->height() + 12;
}

// The splitter's own state holds sizes, not the order of its widgets: the order goes in front,
// one byte per section (0 workspace, 1 outline, 2 open editors). A splitter state starts with
// the bytes 0 0 0 255, which no order can, so a state stored without one still reads.
void ExplorerView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    const QByteArray& state = Settings::explorerState;
    const QList<SubView*> sections = Sections();
    const QByteArray order = state.left(sections.size());
    QByteArray sorted = order;
    std::sort(sorted.begin(), sorted.end());
    if (sorted == QByteArray::fromHex("000102"))
    {
        for (int i = 0; i < order.size(); ++i)
            splitter->insertWidget(i, sections.at(order.at(i)));
        splitter->restoreState(state.mid(order.size()));
    }
    else
    {
        splitter->restoreState(state);
    }
    splitter->setChildrenCollapsible(false);
    OnExpandedStateChanged();
}

void ExplorerView::SaveState()
{
    QByteArray order;
    for (int i = 0; i < splitter->count(); ++i)
        order.append(static_cast<char>(Sections().indexOf(qobject_cast<SubView*>(splitter->widget(i)))));
    Settings::explorerState = order + splitter->saveState();
}

void ExplorerView::AddFolderToWorkspace(const QString& dirPath)
{
    workspaceView->AddFolderToWorkspace(dirPath);
}

// ---------------------------------------------------------------------------------------------
// Sections shown, hidden, collapsed

void ExplorerView::OnSubViewVisibilityChanged()
{
    const bool alone = !Settings::outlineVisible && !Settings::openEditorsVisible;
    // Alone, the workspace's title takes the place of the heading.
    titleLabel->setVisible(!alone);
    workspaceView->SetCollapable(!alone);
    workspaceView->ShowTitlePrefix(alone);
    if (alone)
        titleLayout->setContentsMargins(0, 0, 0, 0);
    else
        titleLayout->setContentsMargins(0, 6, 0, 6);
    OnExpandedStateChanged();
}

void ExplorerView::OnExpandedStateChanged()
{
    bool otherExpanded = false;
    if (Settings::outlineVisible && outlineView->IsExpanded())
        otherExpanded = true;
    if (Settings::openEditorsVisible && openCodeEditorsView->IsExpanded())
        otherExpanded = true;
    fillerWidget->setVisible(!workspaceView->IsExpanded() && !otherExpanded);
}

void ExplorerView::ToggleOpenEditorVisibility()
{
    Settings::openEditorsVisible = !Settings::openEditorsVisible;
    openCodeEditorsView->setVisible(Settings::openEditorsVisible);
    if (Settings::openEditorsVisible)
        openCodeEditorsView->SetExpanded(true);
    OnSubViewVisibilityChanged();
}

void ExplorerView::ToggleOutlineVisibility()
{
    Settings::outlineVisible = !Settings::outlineVisible;
    outlineView->setVisible(Settings::outlineVisible);
    if (Settings::outlineVisible)
        outlineView->SetExpanded(true);
    OnSubViewVisibilityChanged();
}

void ExplorerView::OnHideSideBarRequested()
{
    emit HideSideBarRequested();
}

void ExplorerView::ShowContextMenu(const QPoint& p)
{
    const bool onTitle = titleLabel->isVisible()
                             ? titleLabel->geometry().contains(p)
                             : workspaceView->TitleBarGeomentryContains(workspaceView->mapFrom(this, p));
    if (!onTitle)
        return;
    QMenu menu(this);
    QAction* openEditors = menu.addAction(QStringLiteral("Open Editors"), this, SLOT(ToggleOpenEditorVisibility()));
    openEditors->setCheckable(true);
    openEditors->setChecked(Settings::openEditorsVisible);
    QAction* outline = menu.addAction(QStringLiteral("Outline"), this, SLOT(ToggleOutlineVisibility()));
    outline->setCheckable(true);
    outline->setChecked(Settings::outlineVisible);
    menu.addSeparator();
    QAction* hide = menu.addAction(QStringLiteral("Hide Side Bar"), this, SLOT(OnHideSideBarRequested()));
    if (keyBindings)
        hide->setShortcut(keyBindings->GetShortcut(KeySequenceType::ToggleSideBar));
    menu.exec(mapToGlobal(p));
}

// ---------------------------------------------------------------------------------------------
// Reordering the sections by drag

void ExplorerView::mousePressEvent(QMouseEvent* event)
{
    QWidget::mousePressEvent(event);
    dragIndex = -1;
    if (event->button() != Qt::LeftButton || (!Settings::outlineVisible && !Settings::openEditorsVisible))
        return;
    dragStartPosition = event->position().toPoint();
    const QPoint p = dragStartPosition - QPoint(0, GetTitleBarHeight());
    for (SubView* section : Sections())
    {
        if (section->isVisible() && section->TitleBarGeometry().contains(p))
        {
            dragIndex = splitter->indexOf(section);
            return;
        }
    }
}

void ExplorerView::mouseMoveEvent(QMouseEvent* event)
{
    QWidget::mouseMoveEvent(event);
    if (!(event->buttons() & Qt::LeftButton) || dragIndex < 0)
        return;
    if ((event->position().toPoint() - dragStartPosition).manhattanLength() < QApplication::startDragDistance())
        return;
    auto* mimeData = new QMimeData();
    mimeData->setData(ExplorerMimeType(), QByteArray(1, static_cast<char>(dragIndex)));
    auto* drag = new QDrag(this);
    drag->setMimeData(mimeData);
    dragIndex = -1;
    drag->exec(Qt::MoveAction);
}

void ExplorerView::dragEnterEvent(QDragEnterEvent* event)
{
    if (!event->mimeData()->hasFormat(ExplorerMimeType()))
        return;
    UpdateDropZone(event->position().toPoint() - QPoint(0, GetTitleBarHeight()), event->mimeData());
    event->accept();
}

void ExplorerView::dragMoveEvent(QDragMoveEvent* event)
{
    if (!event->mimeData()->hasFormat(ExplorerMimeType()))
        return;
    UpdateDropZone(event->position().toPoint() - QPoint(0, GetTitleBarHeight()), event->mimeData());
    event->accept();
}

void ExplorerView::dragLeaveEvent(QDragLeaveEvent* event)
{
    QWidget::dragLeaveEvent(event);
    ClearDropZone();
}

void ExplorerView::UpdateDropZone(const QPoint& pos, const QMimeData* mimeData)
{
    ClearDropZone();
    const QByteArray payload = mimeData->data(ExplorerMimeType());
    if (payload.size() != 1 || !splitter->widget(static_cast<unsigned char>(payload.at(0))))
        return;
    for (SubView* section : Sections())
    {
        if (section->isVisible() && section->geometry().contains(pos))
        {
            dropIndex = splitter->indexOf(section);
            break;
        }
    }
    if (dropIndex >= 0 && dropIndex != static_cast<unsigned char>(payload.at(0)))
    {
        if (auto* section = qobject_cast<SubView*>(splitter->widget(dropIndex)))
            section->SetOverlayVisible(true);
    }
}

void ExplorerView::dropEvent(QDropEvent* event)
{
    const QByteArray payload = event->mimeData()->data(ExplorerMimeType());
    if (event->mimeData()->hasFormat(ExplorerMimeType()) && dropIndex >= 0 && payload.size() == 1)
    {
        const int index = static_cast<unsigned char>(payload.at(0));
        if (index != dropIndex && splitter->widget(index))
            splitter->insertWidget(dropIndex, splitter->widget(index));
        event->accept();
    }
    ClearDropZone();
}

void ExplorerView::ClearDropZone()
{
    for (SubView* section : Sections())
        section->SetOverlayVisible(false);
    dropIndex = -1;
}
