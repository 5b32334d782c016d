#include "tabs/TabImages.h"

#include <QtCore/QFileInfo>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

namespace
{
// The fallback images are drawn on this grid and scaled down like the real icons.
constexpr int SIDE = 48;
const QColor ICON_GREY(200, 200, 200);
} // namespace

QImage TabImages::Load(const QString& resourcePath)
{
    QImage image(resourcePath);
    if (!image.isNull())
        return image;
    return Draw(QFileInfo(resourcePath).completeBaseName());
}

QPixmap TabImages::LoadPixmap(const QString& resourcePath, int side)
{
    const QImage image = Load(resourcePath);
    if (image.isNull() || side <= 0)
        return QPixmap();
    return QPixmap::fromImage(image.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

QImage TabImages::Draw(const QString& name)
{
    QImage image(SIDE, SIDE, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    if (name == QLatin1String("close_white"))
        DrawClose(painter);
    else if (name == QLatin1String("modified"))
        DrawModified(painter);
    else if (name == QLatin1String("python"))
        DrawLanguage(painter, QColor(55, 118, 171), QStringLiteral("P"));
    else if (name == QLatin1String("mel"))
        DrawLanguage(painter, QColor(0, 150, 136), QStringLiteral("M"));
    else if (name == QLatin1String("text"))
        DrawText(painter);
    else if (name == QLatin1String("scroll_left") || name == QLatin1String("scroll_right"))
        DrawChevron(painter, name == QLatin1String("scroll_left"));
    else if (name == QLatin1String("execute"))
        DrawPlay(painter, 1, false);
    else if (name == QLatin1String("execute_all"))
        DrawPlay(painter, 2, false);
    else if (name == QLatin1String("execute_line"))
        DrawPlay(painter, 1, true);
    else if (name == QLatin1String("list_code_editors"))
        DrawList(painter);
    else
        return QImage();
    return image;
}

void TabImages::DrawClose(QPainter& painter)
{
    painter.setPen(QPen(QColor(220, 220, 220), 7, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(6, 6), QPointF(SIDE - 6, SIDE - 6));
    painter.drawLine(QPointF(SIDE - 6, 6), QPointF(6, SIDE - 6));
}

void TabImages::DrawModified(QPainter& painter)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(220, 220, 220));
    painter.drawEllipse(QRectF(6, 6, SIDE - 12, SIDE - 12));
}

void TabImages::DrawLanguage(QPainter& painter, const QColor& color, const QString& letter)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(2, 2, SIDE - 4, SIDE - 4), 8, 8);
    QFont font = painter.font();
    font.setBold(true);
    font.setPixelSize(34);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRectF(0, 0, SIDE, SIDE), Qt::AlignCenter, letter);
}

void TabImages::DrawText(QPainter& painter)
{
    painter.setPen(QPen(QColor(180, 180, 180), 4));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(8, 3, SIDE - 16, SIDE - 6));
    for (int y = 14; y <= 34; y += 10)
        painter.drawLine(QPointF(15, y), QPointF(SIDE - 15, y));
}

void TabImages::DrawChevron(QPainter& painter, bool left)
{
    painter.setPen(QPen(ICON_GREY, 6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const qreal tip = left ? 14 : SIDE - 14;
    const qreal back = left ? SIDE - 18 : 18;
    painter.drawPolyline(QPolygonF({QPointF(back, 6), QPointF(tip, SIDE / 2.0), QPointF(back, SIDE - 6)}));
}

void TabImages::DrawPlay(QPainter& painter, int count, bool bar)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(110, 190, 110));
    const qreal width = count == 1 ? 32 : 22;
    qreal x = count == 1 ? 10 : 3;
    for (int i = 0; i < count; ++i, x += width)
        painter.drawPolygon(QPolygonF({QPointF(x, 4), QPointF(x + width, SIDE / 2.0), QPointF(x, SIDE - 4)}));
    if (bar)
        painter.drawRect(QRectF(SIDE - 8, 4, 6, SIDE - 8));
}

void TabImages::DrawList(QPainter& painter)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(ICON_GREY);
    for (int i = 0; i < 3; ++i)
        painter.drawEllipse(QPointF(8 + i * 16, SIDE / 2.0), 5, 5);
}
