#pragma once

// Which text of the focused editor runs.
enum class ExecuteType : int
{
    All = 0,       // the whole buffer, selection or not
    Selection = 1, // the selection if there is one, else the whole buffer
    Line = 2       // the cursor's line, trimmed
};
