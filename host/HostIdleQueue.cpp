#include "HostIdleQueue.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMutex>
#include <QtCore/QPointer>
#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <deque>

namespace
{
struct Queue
{
    QMutex mutex;
    std::deque<std::function<void()>> work;
    // The application whose event loop holds the pending flush, if any.
    QPointer<QCoreApplication> flushScheduledOn;
};

// Never destroyed: work may be posted from other static destructors at exit.
Queue& TheQueue()
{
    static Queue* queue = new Queue;
    return *queue;
}

void ScheduleFlush()
{
    QCoreApplication* application = QCoreApplication::instance();
    if (!application)
        return;
    Queue& queue = TheQueue();
    {
        QMutexLocker locker(&queue.mutex);
        if (queue.flushScheduledOn == application)
            return;
        queue.flushScheduledOn = application;
    }
    if (QThread::currentThread() == application->thread())
        QTimer::singleShot(0, application, &HostIdleQueue::Flush);
    else
        QMetaObject::invokeMethod(application, &HostIdleQueue::Flush, Qt::QueuedConnection);
}
} // namespace

void HostIdleQueue::Post(std::function<void()> work)
{
    if (!work)
        return;
    {
        QMutexLocker locker(&TheQueue().mutex);
        TheQueue().work.push_back(std::move(work));
    }
    ScheduleFlush();
}

void HostIdleQueue::Flush()
{
    Queue& queue = TheQueue();
    std::deque<std::function<void()>> batch;
    {
        QMutexLocker locker(&queue.mutex);
        queue.flushScheduledOn.clear();
        batch.swap(queue.work);
    }
    for (const std::function<void()>& work : batch)
    {
        try
        {
            work();
        }
        catch (...)
        {
            // Idle work must not unwind into the event loop.
        }
    }
    // Work posted during this flush was queued behind a new timer by Post itself.
}

int HostIdleQueue::Pending()
{
    QMutexLocker locker(&TheQueue().mutex);
    return static_cast<int>(TheQueue().work.size());
}
