#include "HostApplication.h"
#include "HostMainWindow.h"
#include "HostWorkspaceControl.h"
#include <QtCore/QByteArray>
#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLayout>
#include <QtWidgets/QVBoxLayout>
#include <maya/MQtUtil.h>

namespace
{
HostMainWindow* MainWindow()
{
    HostApplication* application = HostApplication::Instance();
    return application ? application->HostWindow() : nullptr;
}

// Maya accepts full paths ("MayaWindow|layout|control"); the last part names the element.
QString ElementName(const MString& name)
{
    return MQtUtil::toQString(name).section(QLatin1Char('|'), -1);
}

QWidget* FindNamedWidget(const QString& name, const QWidget* parent)
{
    if (name.isEmpty())
        return nullptr;
    HostMainWindow* mainWindow = MainWindow();
    if (!parent && mainWindow)
    {
        if (HostWorkspaceControl* control = mainWindow->FindWorkspaceControl(name))
            return control->Content();
    }
    const QWidget* root = parent ? parent : mainWindow;
    QWidget* widget = root ? root->findChild<QWidget*>(name) : nullptr;
    // A workspace control answers with its content, where scripts put their widgets.
    if (auto* control = qobject_cast<HostWorkspaceControl*>(widget))
        return control->Content();
    return widget;
}
} // namespace

QWidget* MQtUtil::mainWindow()
{
    return MainWindow();
}

QWidget* MQtUtil::findControl(MString controlName, const QWidget* parent)
{
    return FindNamedWidget(ElementName(controlName), parent);
}

QWidget* MQtUtil::findLayout(MString layoutName, const QWidget* parent)
{
    return FindNamedWidget(ElementName(layoutName), parent);
}

QWidget* MQtUtil::findWindow(MString windowName, const QWidget* ancestor)
{
    const QString name = ElementName(windowName);
    HostMainWindow* mainWindow = MainWindow();
    if (name.isEmpty() || !mainWindow)
        return nullptr;
    if (!ancestor && mainWindow->objectName() == name)
        return mainWindow;
    const QWidget* root = ancestor ? ancestor : mainWindow;
    const auto widgets = root->findChildren<QWidget*>(name);
    for (QWidget* widget : widgets)
    {
        if (widget->isWindow())
            return widget;
    }
    if (ancestor)
        return nullptr;
    const auto topLevels = QApplication::topLevelWidgets();
    for (QWidget* widget : topLevels)
    {
        if (widget->objectName() == name)
            return widget;
    }
    return nullptr;
}

QAction* MQtUtil::findMenuItem(MString itemName, const QWidget* ancestor)
{
    const QString name = ElementName(itemName);
    HostMainWindow* mainWindow = MainWindow();
    const QWidget* root = ancestor ? ancestor : mainWindow;
    if (name.isEmpty() || !root)
        return nullptr;
    return root->findChild<QAction*>(name);
}

QWidget* MQtUtil::getCurrentParent()
{
    HostApplication* application = HostApplication::Instance();
    return application ? application->CurrentParent() : nullptr;
}

// Returns the child's full path name, or an empty string when it could not be added.
MString MQtUtil::addWidgetToMayaLayout(QWidget* control, QWidget* layout, const MString&)
{
    if (!control || !layout)
        return MString();
    QLayout* target = layout->layout();
    if (!target)
    {
        auto* created = new QVBoxLayout(layout);
        created->setContentsMargins(0, 0, 0, 0);
        target = created;
    }
    target->addWidget(control);
    return fullName(control);
}

MString MQtUtil::fullName(const QObject* uiElement)
{
    QStringList names;
    for (const QObject* object = uiElement; object; object = object->parent())
    {
        if (!object->objectName().isEmpty())
            names.prepend(object->objectName());
    }
    return toMString(names.join(QLatin1Char('|')));
}

QString MQtUtil::toQString(const MString& mayaString)
{
    int length = 0;
    const char* text = mayaString.asUTF8(length);
    return QString::fromUtf8(text, length);
}

MString MQtUtil::toMString(const QString& qtString)
{
    const QByteArray bytes = qtString.toUtf8();
    return MString(bytes.constData(), int(bytes.size()));
}

int MQtUtil::dpiScale(int size)
{
    return size;
}

float MQtUtil::dpiScale(float size)
{
    return size;
}
