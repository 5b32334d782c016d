#pragma once

#include <ctime>

// Processor time in milliseconds. On a loaded machine the wall clock also counts the time other
// programs ran; these count the work of this thread or process alone.
inline double ThreadCpuMs()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1.0e3 + static_cast<double>(now.tv_nsec) / 1.0e6;
}

inline double ProcessCpuMs()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1.0e3 + static_cast<double>(now.tv_nsec) / 1.0e6;
}
