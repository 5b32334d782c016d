#include <maya/MEventMessage.h>
#include <maya/MStringArray.h>

#include "HostCallbacks.h"

#include <QtCore/QStringList>

namespace
{
// The events this host knows; others are refused as Maya refuses unknown names.
const QStringList& EventNames()
{
    static const QStringList names = {
        QStringLiteral("quitApplication"),  QStringLiteral("idle"),
        QStringLiteral("idleHigh"),         QStringLiteral("SelectionChanged"),
        QStringLiteral("timeChanged"),      QStringLiteral("NewSceneOpened"),
        QStringLiteral("SceneOpened"),      QStringLiteral("SceneSaved"),
        QStringLiteral("PostSceneRead"),    QStringLiteral("deleteAll"),
        QStringLiteral("workspaceChanged"), QStringLiteral("modelEditorChanged"),
    };
    return names;
}
} // namespace

MCallbackId MEventMessage::addEventCallback(const MString& event, MMessage::MBasicFunction func,
                                            void* clientData, MStatus* returnStatus)
{
    const QString name = QString::fromUtf8(event.asChar());
    MCallbackId id = 0;
    if (EventNames().contains(name))
        id = HostCallbacks::AddEventCallback(name, func, clientData);
    if (returnStatus)
        *returnStatus = id != 0 ? MStatus::kSuccess : MStatus::kInvalidParameter;
    return id;
}

void MEventMessage::getEventNames(MStringArray& names)
{
    names.clear();
    for (const QString& name : EventNames())
        names.append(MString(name.toUtf8().constData()));
}
