#include "tabs/CustomTabBar.h"

#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDrag>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QDragLeaveEvent>
#include <QtGui/QDragMoveEvent>
#include <QtGui/QDropEvent>

namespace
{
// The payload of a tab drag is exactly two unsigned bytes: the source bar's id and the tab's
// index. Anything else is not a tab drag.
bool ReadPayload(const QMimeData* mimeData, const QString& type, int& sourceId, int& sourceIndex)
{
    const QByteArray payload = mimeData->data(type);
    if (payload.size() != 2)
        return false;
    sourceId = static_cast<uchar>(payload.at(0));
    sourceIndex = static_cast<uchar>(payload.at(1));
    return true;
}

// Ids travel as one unsigned byte, so a bar compares its own id the same way.
bool IsSameBar(int sourceId, int tabId)
{
    return sourceId == static_cast<uchar>(tabId);
}
} // namespace

void CustomTabBar::StartDrag()
{
    const int index = pressedIndex;
    pressedIndex = -1;
    if (!IsValidIndex(index))
        return;
    QByteArray payload;
    payload.append(static_cast<char>(static_cast<uchar>(tabId)));
    payload.append(static_cast<char>(static_cast<uchar>(index)));
    auto* mimeData = new QMimeData;
    mimeData->setData(mimeType, payload);

    const QRect tabRect = tabs.at(index).absoluteRect & rect();
    auto* drag = new QDrag(this);
    drag->setMimeData(mimeData);
    if (tabRect.isValid())
    {
        drag->setPixmap(grab(tabRect));
        drag->setHotSpot(pressPos - tabRect.topLeft());
    }
    drag->exec(Qt::MoveAction);
}

void CustomTabBar::UpdateDropZone(const QPoint& pos, const QMimeData* mimeData)
{
    const bool tabDrag = mimeData && mimeData->hasFormat(mimeType);
    if (tabs.isEmpty() || !mimeData || (!tabDrag && !mimeData->hasUrls()))
    {
        ClearDropZone(true);
        return;
    }
    if (pos.x() > LastTabRight())
    {
        // The empty part of the strip: a drop there goes to the end.
        SetDropZoneRect(QRect(QPoint(LastTabRight() + 1, 0), QPoint(width() - 1, height() - 1)));
        return;
    }
    const int index = TabAt(pos);
    if (!tabDrag)
    {
        urlDrag = true;
        if (index >= 0)
            SetDropZoneRect(tabs.at(index).absoluteRect);
        return;
    }
    if (index < 0)
        return;
    if (!ReadPayload(mimeData, mimeType, dragSourceId, dragSourceIndex))
    {
        ClearDropZone(true);
        return;
    }
    if (IsSameBar(dragSourceId, tabId) && dragSourceIndex == index)
    {
        ClearDropZone(true);
        return;
    }
    SetDropZoneRect(tabs.at(index).absoluteRect);
}

void CustomTabBar::SetDropZoneRect(const QRect& rect)
{
    if (dropZoneRect == rect)
        return;
    dropZoneRect = rect;
    update();
}

void CustomTabBar::ClearDropZone(bool forget)
{
    if (dropZoneRect.isValid())
    {
        dropZoneRect = QRect();
        update();
    }
    if (!forget)
        return;
    dragSourceId = -1;
    dragSourceIndex = -1;
    urlDrag = false;
}

void CustomTabBar::RefreshScrollingDropZone(const QPoint& pos)
{
    // The strip moved under a pointer that stands still: the zone follows the tab now under it.
    if (dragSourceId < 0 && dragSourceIndex < 0 && !urlDrag)
        return;
    const int index = TabAt(pos);
    if (index < 0)
        return;
    if (!urlDrag && IsSameBar(dragSourceId, tabId) && index == dragSourceIndex)
        ClearDropZone(false);
    else
        SetDropZoneRect(tabs.at(index).absoluteRect);
}

void CustomTabBar::ScrollForDragPosition(double x)
{
    // A drag that starts inside an edge zone scrolls only once the pointer has gone further
    // toward that edge than the press was.
    const double barWidth = width();
    if (x <= 0.06 * barWidth)
    {
        if (!scrollTimer.isActive() && !(dragStartX >= 0 && dragStartX <= x))
            BeginScrollingLeft();
    }
    else if (x >= 0.94 * barWidth)
    {
        if (!scrollTimer.isActive() && x > dragStartX)
            BeginScrollingRight();
    }
    else
    {
        EndScrolling();
    }
}

void CustomTabBar::dragEnterEvent(QDragEnterEvent* event)
{
    UpdateDropZone(event->position().toPoint(), event->mimeData());
    event->acceptProposedAction();
}

void CustomTabBar::dragMoveEvent(QDragMoveEvent* event)
{
    UpdateDropZone(event->position().toPoint(), event->mimeData());
    ScrollForDragPosition(event->position().x());
    event->acceptProposedAction();
}

void CustomTabBar::dragLeaveEvent(QDragLeaveEvent* event)
{
    QWidget::dragLeaveEvent(event);
    ClearDropZone(true);
    EndScrolling();
    dragStartX = -1;
}

void CustomTabBar::dropEvent(QDropEvent* event)
{
    ClearDropZone(true);
    EndScrolling();
    inDrop = true;
    dragStartX = -1;

    const QMimeData* mimeData = event->mimeData();
    const QPoint pos = event->position().toPoint();
    const bool tabDrag = mimeData && mimeData->hasFormat(mimeType);
    if (!tabDrag && !(mimeData && mimeData->hasUrls()))
    {
        event->ignore();
        inDrop = false;
        ScrollToCurrent();
        return;
    }
    if (tabDrag)
        DropTab(pos, mimeData);
    else
        DropUrls(pos, mimeData);
    event->acceptProposedAction();
    inDrop = false;
    ScrollToCurrent();
}

void CustomTabBar::DropUrls(const QPoint& pos, const QMimeData* mimeData)
{
    const int target = pos.x() > LastTabRight() ? Count() : TabAt(pos);
    if (target < 0)
        return;
    // Each file goes to the same index, so walking from the last keeps the order of the URLs.
    const QList<QUrl> urls = mimeData->urls();
    for (auto it = urls.crbegin(); it != urls.crend(); ++it)
    {
        const QString path = it->toLocalFile();
        if (path.isEmpty())
            continue;
        const QFileInfo info(path);
        if (info.isFile())
            emit OpenFileRequested(target, info.absoluteFilePath());
    }
}

void CustomTabBar::DropTab(const QPoint& pos, const QMimeData* mimeData)
{
    int sourceId = -1;
    int sourceIndex = -1;
    if (tabs.isEmpty() || !ReadPayload(mimeData, mimeType, sourceId, sourceIndex))
        return;
    int target = TabAt(pos);
    if (target < 0 && pos.x() > LastTabRight())
        target = IsSameBar(sourceId, tabId) ? Count() - 1 : Count();
    if (target < 0)
        return;
    emit MoveTabRequested(sourceId, sourceIndex, tabId, target);
}
