#pragma once

// The host's look: Maya draws all of its interface, plug-in panels included, in a dark Fusion
// style, so a panel is seen here as it will be seen there.
class HostStyle
{
public:
    static void Apply();
};
