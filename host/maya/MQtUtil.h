#pragma once
#include <QtCore/QString>
#include <maya/MString.h>

class QWidget;
class QObject;
class QAction;
class QLayout;

class MQtUtil
{
public:
    static QWidget* mainWindow();
    static QWidget* findControl(const MString& controlName, const QWidget* parent = nullptr);
    static QWidget* findLayout(const MString& layoutName, const QWidget* parent = nullptr);
    static QWidget* findWindow(const MString& windowName);
    static QAction* findMenuItem(const MString& itemName);
    static QWidget* getCurrentParent();
    static bool addWidgetToMayaLayout(QWidget* control, QWidget* layout, const MString& uiName = MString());
    static MString fullName(const QObject* uiElement);
    static QString toQString(const MString& mayaString);
    static MString toMString(const QString& qtString);
    static int dpiScale(int size);
    static float dpiScale(float size);
};
