#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <functional>

// Hands the next modal widget of type T to `use` once it is up, for the dialogs that the code
// under test opens and runs itself. Gives up after `tries` looks, 20 ms apart.
template <typename T> void WhenModal(QObject* context, const std::function<void(T*)>& use, int tries = 1500)
{
    QTimer::singleShot(20, context,
                       [context, use, tries]()
                       {
                           auto* widget = qobject_cast<T*>(QApplication::activeModalWidget());
                           if (widget && widget->isVisible())
                               use(widget);
                           else if (tries > 0)
                               WhenModal<T>(context, use, tries - 1);
                       });
}
