#pragma once
#include <maya/MSyntax.h>
#include <vector>

// The flag table of an MSyntax, which the API keeps to itself, for the host's argument parser and
// its help text.
class HostSyntaxTable
{
public:
    using Flag = MSyntax::Flag;

    static const std::vector<Flag>& Flags(const MSyntax& syntax);
    // The flag named by its short or long name, with or without the dash; null if there is none.
    static const Flag* Find(const MSyntax& syntax, const char* name);
};
