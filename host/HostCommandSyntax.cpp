#include "HostCommandSyntax.h"

#include <map>

namespace
{
std::map<const MPxCommand*, MSyntax>& Syntaxes()
{
    static std::map<const MPxCommand*, MSyntax> syntaxes;
    return syntaxes;
}
} // namespace

void HostCommandSyntax::Set(const MPxCommand* command, const MSyntax& syntax)
{
    if (command)
        Syntaxes()[command] = syntax;
}

MSyntax HostCommandSyntax::Of(const MPxCommand* command)
{
    const auto found = Syntaxes().find(command);
    return found == Syntaxes().end() ? MSyntax() : found->second;
}

void HostCommandSyntax::Forget(const MPxCommand* command)
{
    Syntaxes().erase(command);
}
