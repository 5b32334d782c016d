#pragma once
#include <functional>

// Maya's idle queue: work posted here runs on a later turn of the event loop. Posting schedules
// a flush with a zero-time single-shot timer (when an application object exists); a flush runs
// what was queued when it started, in order, and anything posted meanwhile waits for the next.
class HostIdleQueue
{
public:
    static void Post(std::function<void()> work);
    static void Flush();
    static int Pending();
};
