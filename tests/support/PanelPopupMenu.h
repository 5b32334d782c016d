#pragma once

#include <QtCore/QStringList>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>

// Reads the popup menu that opens next into texts ("-" for a separator), then triggers its
// action at index trigger and closes it.
inline void WhenPopupMenu(QObject* context, QStringList* texts, int trigger, int delay = 0)
{
    QTimer::singleShot(delay, context,
                       [=]
                       {
                           auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                           if (!menu)
                               return;
                           for (QAction* action : menu->actions())
                               texts->append(action->isSeparator() ? QStringLiteral("-") : action->text());
                           menu->actions().at(trigger)->trigger();
                           menu->close();
                       });
}
