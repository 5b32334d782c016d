#include "tabs/CodeEditorGroup.h"

#include "editor/CodeEditor.h"
#include "settings/Settings.h"

#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QDragLeaveEvent>
#include <QtGui/QDragMoveEvent>
#include <QtGui/QDropEvent>
#include <QtWidgets/QStackedWidget>

// A tab or a file dragged over the editors lands on the whole group, or, while an empty group
// is left to take it, on the first or last 15 % along the groups' axis: that splits the view.

void CodeEditorGroup::UpdateDropZone(const QPoint& pos, const QMimeData* mimeData)
{
    const QRect stackGeometry = codeEditorStack->geometry();
    if (!stackGeometry.contains(pos))
    {
        ClearDropZone();
        return;
    }
    if (!mimeData || (!mimeData->hasFormat(MOVE_CODE_EDITOR_MIME_TYPE) && !mimeData->hasUrls()))
    {
        ClearDropZone();
        return;
    }
    const bool vertical = Settings::codeEditorOrientVertical;
    const int length = vertical ? stackGeometry.height() : stackGeometry.width();
    const int p = vertical ? pos.y() - stackGeometry.top() : pos.x() - stackGeometry.left();
    // The highlight is drawn by the current editor over itself, in its own coordinates.
    const CodeEditor* codeEditor = GetCurrent();
    const QRect zone = codeEditor ? codeEditor->rect() : QRect(QPoint(0, 0), stackGeometry.size());
    if (tabDropOtherGroupsEnabled)
    {
        const int half = static_cast<int>((vertical ? zone.height() : zone.width()) * 0.5);
        if (p <= static_cast<int>(length * 0.15))
        {
            SetDropZone(TabDropZoneBefore, vertical ? zone.adjusted(0, 0, 0, half - zone.height())
                                                    : zone.adjusted(0, 0, half - zone.width(), 0));
            return;
        }
        if (p >= static_cast<int>(length * 0.85))
        {
            SetDropZone(TabDropZoneAfter,
                        vertical ? zone.adjusted(0, half, 0, 0) : zone.adjusted(half, 0, 0, 0));
            return;
        }
    }
    SetDropZone(TabDropZoneCenter, zone);
}

void CodeEditorGroup::SetDropZone(TabDropZone zone, const QRect& rect)
{
    if (CodeEditor* codeEditor = GetCurrent())
        codeEditor->SetDropOverlayRect(rect);
    dropZone = zone;
}

void CodeEditorGroup::ClearDropZone()
{
    SetDropZone(TabDropZoneNone, QRect());
}

void CodeEditorGroup::dragEnterEvent(QDragEnterEvent* event)
{
    UpdateDropZone(event->position().toPoint(), event->mimeData());
    event->acceptProposedAction();
}

void CodeEditorGroup::dragMoveEvent(QDragMoveEvent* event)
{
    UpdateDropZone(event->position().toPoint(), event->mimeData());
    event->acceptProposedAction();
}

void CodeEditorGroup::dragLeaveEvent(QDragLeaveEvent* event)
{
    QWidget::dragLeaveEvent(event);
    ClearDropZone();
}

void CodeEditorGroup::dropEvent(QDropEvent* event)
{
    const TabDropZone zone = dropZone;
    ClearDropZone();
    if (zone == TabDropZoneNone)
    {
        event->ignore();
        return;
    }
    const QMimeData* mimeData = event->mimeData();
    if (mimeData->hasFormat(MOVE_CODE_EDITOR_MIME_TYPE))
    {
        // Two unsigned bytes: the source bar's id and the tab's index.
        const QByteArray payload = mimeData->data(MOVE_CODE_EDITOR_MIME_TYPE);
        if (payload.size() == 2)
            emit MoveTabToZoneRequested(static_cast<uchar>(payload.at(0)), static_cast<uchar>(payload.at(1)),
                                        id, zone);
        event->acceptProposedAction();
        return;
    }
    if (mimeData->hasUrls())
        DropUrls(mimeData, zone);
    event->acceptProposedAction();
}

void CodeEditorGroup::DropUrls(const QMimeData* mimeData, TabDropZone zone)
{
    // Every file goes to the same index, so walking the URLs from the last keeps their order.
    const int index = GetCurrentIndex() + 1;
    QStringList filePaths;
    const QList<QUrl> urls = mimeData->urls();
    for (auto it = urls.crbegin(); it != urls.crend(); ++it)
    {
        const QString path = it->toLocalFile();
        if (path.isEmpty())
            continue;
        const QFileInfo info(path);
        if (!info.isFile())
            continue;
        if (zone == TabDropZoneCenter)
            emit OpenFileRequested(id, index, info.absoluteFilePath());
        else
            filePaths.append(info.absoluteFilePath());
    }
    if (zone != TabDropZoneCenter)
        emit OpenFilesRequested(id, zone, filePaths);
}
