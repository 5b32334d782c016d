#pragma once
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <functional>
#include "HostCommandResult.h"
#include <maya/MStatus.h>

// A flag of a host-side MEL command: its names and how many values follow it in create and
// edit mode (in query mode, as in Maya, flags take no value).
struct HostMelFlagSpec
{
    QString shortName; // without the dash, e.g. "q"
    QString longName;  // without the dash, e.g. "query"
    int argCount = 0;
};

// One parsed call of a MEL command or procedure.
struct HostMelCall
{
    QString name;
    bool query = false;
    bool edit = false;
    // Flags in the order given, by their long name, each with its values.
    QList<QPair<QString, QStringList>> flags;
    // Arguments that are not values of a flag (object names; procedure arguments).
    QStringList positionals;

    bool HasFlag(const QString& longName) const;
    QString FlagValue(const QString& longName, int index = 0) const;
    QString LastPositional() const;
};

using HostMelHandler = std::function<MStatus(const HostMelCall& call, HostCommandResult& result)>;

// The substitute's MEL layer.
class HostMel
{
public:
    // Runs MEL text (one or more statements). The result is that of the last statement.
    // Errors are reported through HostOutput as Maya does, and give a failure status.
    static MStatus Execute(const QString& text, HostCommandResult* result, bool displayEnabled);

    // A built-in command, available at once.
    static void RegisterCommand(const QString& name, const QList<HostMelFlagSpec>& flags,
                                const HostMelHandler& handler);
    static void UnregisterCommand(const QString& name);
    static bool CommandExists(const QString& name);

    // The native body of a global procedure that a sourced script defines: callable only after
    // a "global proc ... name(...)" with that name has been sourced.
    static void RegisterProcedureSubstitute(const QString& name, const HostMelHandler& handler);
    static bool ProcedureDefined(const QString& name);

    // What "melInfo" and "whatIs" answer: every command, run-time command and procedure.
    // MelInfo lists commands, then run-time commands, then procedures, each group sorted.
    static QStringList MelInfo();
    static QString WhatIs(const QString& name);

    // A named piece of MEL that runs as a command, as Maya's run-time commands do.
    static void RegisterRunTimeCommand(const QString& name, const QString& mel);

    // Runs a MEL file as "source" does; a missing or unreadable file is an error.
    static MStatus SourceFile(const QString& path);

    // Reports an error as Maya does, "line N: " before it while a MEL statement runs.
    static void ReportError(const QString& message);
};
