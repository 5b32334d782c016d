#include "editor/CodeEditorErrorBarOverlay.h"

#include <QtGui/QPainter>

CodeEditorErrorBarOverlay::CodeEditorErrorBarOverlay(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("errorBarOverlay"));
    // The scroll bar underneath keeps working.
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void CodeEditorErrorBarOverlay::UpdateErrors(const QList<int>& errors, const QList<int>& warnings,
                                             const QList<int>& infos)
{
    errorLines = errors;
    warningLines = warnings;
    infoLines = infos;
    update();
}

void CodeEditorErrorBarOverlay::UpdataBlockStartYPositions(const QList<int>& positions)
{
    blockStartYPositions = positions;
    blockCount = static_cast<int>(positions.size());
    if (positions.size() >= 2)
        totalHeight = positions.constLast() + positions.at(1);
    else if (positions.size() == 1)
        totalHeight = positions.constLast();
    else
        totalHeight = 1;
    update();
}

void CodeEditorErrorBarOverlay::paintEvent(QPaintEvent*)
{
    if (blockCount == 0 || totalHeight < 1)
        return;
    QPainter painter(this);
    const double scale = static_cast<double>(height()) / totalHeight;
    // Errors last, on top.
    PaintLines(painter, infoLines, QColor::fromRgb(INFO_COLOR), scale);
    PaintLines(painter, warningLines, QColor::fromRgb(WARNING_COLOR), scale);
    PaintLines(painter, errorLines, QColor::fromRgb(ERROR_COLOR), scale);
}

void CodeEditorErrorBarOverlay::PaintLines(QPainter& painter, const QList<int>& lines, const QColor& color,
                                           double scale) const
{
    for (const int line : lines)
    {
        if (line < 0 || line >= blockCount)
            continue;
        const int y = static_cast<int>(blockStartYPositions.at(line) * scale);
        painter.fillRect(QRect(0, y, width(), 4), color);
    }
}
