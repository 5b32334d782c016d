#pragma once

#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QTextCharFormat>

// One of the user's highlight rules of the output view.
struct ExtraSelectionProperties
{
    ExtraSelectionProperties(const QString& name = QString(), const QColor& foreground = QColor(),
                             const QColor& background = QColor(), const QString& match = QString(),
                             bool regExp = false, bool highlightLine = false, bool enabled = true);

    QString name;
    QTextCharFormat format;
    QColor foreground;
    QColor background;
    bool foregroundEnabled = false; // the foreground given was a valid colour
    bool backgroundEnabled = false;
    QString match;
    bool regExp = false;
    bool highlightLine = false;
    bool enabled = true;
};
