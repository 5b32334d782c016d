#pragma once
#include <QtCore/QString>
#include <maya/MString.h>

class QWidget;
class QObject;
class QAction;
class QLayout;

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MQtUtil
{
public:
    static QWidget* mainWindow();
    static QWidget* findControl(MString controlName, const QWidget* ancestor = NULL);
    static QWidget* findLayout(MString layoutName, const QWidget* ancestor = NULL);
    static QWidget* findWindow(MString windowName, const QWidget* ancestor = NULL);
    static QAction* findMenuItem(MString itemName, const QWidget* ancestor = NULL);
    static QWidget* getCurrentParent();
    static MString addWidgetToMayaLayout(QWidget* control, QWidget* layout,
                                         const MString& uiType = MString());
    static MString fullName(const QObject* uiElement);
    static QString toQString(const MString& mayaString);
    static MString toMString(const QString& qtString);
    static int dpiScale(int size);
    static float dpiScale(float size);
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
