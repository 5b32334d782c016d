#pragma once

#include <QtCore/QList>
#include <QtWidgets/QWidget>

// Marks over the vertical scroll bar, one per line with a message, at the line's height in the
// whole document, so that faults out of view can be found at a glance.
class CodeEditorErrorBarOverlay : public QWidget
{
    Q_OBJECT

public:
    static constexpr QRgb ERROR_COLOR = 0xfff44646;
    static constexpr QRgb WARNING_COLOR = 0xffd2d227;
    static constexpr QRgb INFO_COLOR = 0xff569cd6;

    explicit CodeEditorErrorBarOverlay(QWidget* parent);

    void UpdateErrors(const QList<int>& errors, const QList<int>& warnings, const QList<int>& infos);
    void UpdataBlockStartYPositions(const QList<int>& positions);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void PaintLines(QPainter& painter, const QList<int>& lines, const QColor& color, double scale) const;

    int blockCount = 0;
    int totalHeight = 1;
    QList<int> blockStartYPositions;
    QList<int> errorLines;
    QList<int> warningLines;
    QList<int> infoLines;
};
