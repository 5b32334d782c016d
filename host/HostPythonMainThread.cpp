#include "HostPythonMainThread.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaObject>
#include <QtCore/QThread>

#include <thread>

namespace
{

std::thread::id& MainThreadId()
{
    static std::thread::id id;
    return id;
}

// The work must not let an exception into the event loop.
std::function<void()> Shielded(std::function<void()> work)
{
    return [work = std::move(work)]()
    {
        try
        {
            work();
        }
        catch (...)
        {
        }
    };
}

} // namespace

void HostPythonMainThread::Remember()
{
    MainThreadId() = std::this_thread::get_id();
}

bool HostPythonMainThread::IsCurrent()
{
    if (QCoreApplication* application = QCoreApplication::instance())
    {
        return QThread::currentThread() == application->thread();
    }
    return std::this_thread::get_id() == MainThreadId();
}

void HostPythonMainThread::Post(std::function<void()> work)
{
    if (IsCurrent())
    {
        Shielded(std::move(work))();
    }
    else if (QCoreApplication* application = QCoreApplication::instance())
    {
        QMetaObject::invokeMethod(application, Shielded(std::move(work)), Qt::QueuedConnection);
    }
}

void HostPythonMainThread::RunAndWait(const std::function<void()>& work)
{
    if (IsCurrent())
    {
        Shielded(work)();
    }
    else if (QCoreApplication* application = QCoreApplication::instance())
    {
        QMetaObject::invokeMethod(application, Shielded(work), Qt::BlockingQueuedConnection);
    }
}
