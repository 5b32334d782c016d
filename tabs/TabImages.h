#pragma once

#include <QtGui/QImage>
#include <QtGui/QPixmap>

class QPainter;

// The images of the tab bars and of the editor groups' buttons. Each comes from the embedded
// icons; one that is missing or unreadable is drawn here instead, so that no bar is ever left
// without its close buttons, marks and arrows.
class TabImages
{
public:
    TabImages() = delete;

    // The icon at a ":/bq2_icons/<name>.png" path.
    static QImage Load(const QString& resourcePath);
    // The same, scaled into a square of the given side, aspect ratio kept.
    static QPixmap LoadPixmap(const QString& resourcePath, int side);

private:
    static QImage Draw(const QString& name);
    static void DrawClose(QPainter& painter);
    static void DrawModified(QPainter& painter);
    static void DrawLanguage(QPainter& painter, const QColor& color, const QString& letter);
    static void DrawText(QPainter& painter);
    static void DrawChevron(QPainter& painter, bool left);
    static void DrawPlay(QPainter& painter, int count, bool bar);
    static void DrawList(QPainter& painter);
};
