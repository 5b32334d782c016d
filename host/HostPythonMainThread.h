#pragma once
#include <functional>

// The host's MEL, output and idle queue belong to the main thread, but Python code may start
// threads of its own. What such a thread asks of the host is carried over to the main thread.
class HostPythonMainThread
{
public:
    // Called once from the thread that starts the interpreter: the main thread.
    static void Remember();
    static bool IsCurrent();

    // Queues the work for the main thread's event loop; on the main thread it runs at once.
    // Without an application object (none yet, or gone at exit) another thread's work is
    // dropped: there is no safe way to run it.
    static void Post(std::function<void()> work);

    // Runs the work on the main thread and waits for it; on the main thread it runs at once.
    // From another thread call it without the GIL held, or the main thread may wait for the GIL
    // while this thread waits for the main thread. Without an application object the work
    // does not run.
    static void RunAndWait(const std::function<void()>& work);
};
