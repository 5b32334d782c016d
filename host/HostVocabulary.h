#pragma once
#include <QtCore/QString>
#include <QtCore/QStringList>

// The names of Maya's own commands, as a real Maya session holds them. The host knows every one
// by name, whether or not it can run it, so that melInfo, whatIs, exists and maya.cmds answer
// with Maya's vocabulary and the editor colours and completes real command names.
class HostVocabulary
{
public:
    // Sorted, without duplicates; empty when the resource is missing.
    static const QStringList& MayaCommands();
    static bool IsMayaCommand(const QString& name);
};
