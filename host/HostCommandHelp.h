#pragma once

#include <QtCore/QString>

// The flags of a few of Maya's own commands, as Maya's "help" prints them: the substitute host
// does not run these commands, but the editor's quick help asks for their flags.
namespace HostCommandHelp
{
// The flag lines of the command ("   -ax -axis  Length Length Length\n" each), or a null
// string for a command that the table does not describe.
QString FlagLines(const QString& command);
} // namespace HostCommandHelp
