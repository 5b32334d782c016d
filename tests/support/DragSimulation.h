#pragma once

#include <QtCore/QPoint>
#include <QtCore/QStringList>

class QMimeData;
class QWidget;

// Drags as the window system delivers them, for widgets that take tabs and files.
class DragSimulation
{
public:
    // The payload of a dragged tab: bar id and tab index, one byte each. The caller owns it.
    static QMimeData* TabMimeData(int barId, int index);
    // Dropped files as URLs. The caller owns it.
    static QMimeData* UrlMimeData(const QStringList& paths);
    // Enter, then a move, then the drop if asked for; unhandled events travel up to the first
    // parent that takes drops.
    static void DragTo(QWidget* target, const QPoint& pos, const QMimeData* mimeData, bool drop);
};
