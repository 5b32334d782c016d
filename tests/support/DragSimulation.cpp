#include "DragSimulation.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QDropEvent>
#include <QtWidgets/QWidget>

QMimeData* DragSimulation::TabMimeData(int barId, int index)
{
    auto* mimeData = new QMimeData;
    QByteArray payload;
    payload.append(static_cast<char>(barId));
    payload.append(static_cast<char>(index));
    mimeData->setData(QStringLiteral("tolvanek-bq2/move-code-editor"), payload);
    return mimeData;
}

QMimeData* DragSimulation::UrlMimeData(const QStringList& paths)
{
    auto* mimeData = new QMimeData;
    QList<QUrl> urls;
    for (const QString& path : paths)
        urls.append(QUrl::fromLocalFile(path));
    mimeData->setUrls(urls);
    return mimeData;
}

void DragSimulation::DragTo(QWidget* target, const QPoint& pos, const QMimeData* mimeData, bool drop)
{
    QDragEnterEvent enter(pos, Qt::MoveAction, mimeData, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &enter);
    QDragMoveEvent move(pos, Qt::MoveAction, mimeData, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &move);
    if (!drop)
        return;
    QDropEvent dropEvent(pos, Qt::MoveAction, mimeData, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &dropEvent);
}
