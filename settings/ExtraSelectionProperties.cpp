#include "settings/ExtraSelectionProperties.h"

#include <QtGui/QBrush>

ExtraSelectionProperties::ExtraSelectionProperties(const QString& name, const QColor& foreground,
                                                   const QColor& background, const QString& match,
                                                   bool regExp, bool highlightLine, bool enabled)
    : name(name), foreground(foreground), background(background), foregroundEnabled(foreground.isValid()),
      backgroundEnabled(background.isValid()), match(match), regExp(regExp), highlightLine(highlightLine),
      enabled(enabled)
{
    if (foregroundEnabled)
        format.setForeground(QBrush(foreground));
    else
        format.clearForeground();
    if (backgroundEnabled)
        format.setBackground(QBrush(background));
    else
        format.clearBackground();
}
