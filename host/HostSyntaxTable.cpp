#include "HostSyntaxTable.h"

const std::vector<HostSyntaxTable::Flag>& HostSyntaxTable::Flags(const MSyntax& syntax)
{
    return syntax.flags_;
}

const HostSyntaxTable::Flag* HostSyntaxTable::Find(const MSyntax& syntax, const char* name)
{
    const char* bare = (name && name[0] == '-') ? name + 1 : name;
    if (!bare || !*bare)
        return nullptr;
    for (const Flag& flag : syntax.flags_)
    {
        if (flag.shortName == bare || (!flag.longName.empty() && flag.longName == bare))
            return &flag;
    }
    return nullptr;
}
