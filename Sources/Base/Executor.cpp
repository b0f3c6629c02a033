#include "Base/Executor.h"

#include <condition_variable>
#include <deque>
#include <mutex>

#include <pthread.h>

namespace stintbook {

/// Shared with the thread, so that it outlives an executor destroyed by a job of its own.
struct SerialExecutor::Queue {
    std::mutex lock;
    std::condition_variable wake;
    std::deque<Job> jobs;
    bool isEnding = false;

    void run()
    {
        while (Job job = next())
            job();
    }

    /// Waits for a job; an empty one when the queue has ended and is drained.
    Job next()
    {
        std::unique_lock guard(lock);
        wake.wait(guard, [this] { return isEnding || !jobs.empty(); });
        if (jobs.empty())
            return {};
        Job job = std::move(jobs.front());
        jobs.pop_front();
        return job;
    }
};

SerialExecutor::SerialExecutor(const std::string& name)
    : m_queue(std::make_shared<Queue>())
    , m_thread([queue = m_queue] { queue->run(); })
{
    pthread_setname_np(m_thread.native_handle(), name.substr(0, 15).c_str());
}

SerialExecutor::~SerialExecutor()
{
    {
        const std::scoped_lock guard(m_queue->lock);
        m_queue->isEnding = true;
    }
    m_queue->wake.notify_one();
    if (m_thread.get_id() == std::this_thread::get_id())
        m_thread.detach();
    else
        m_thread.join();
}

void SerialExecutor::post(Job job)
{
    {
        const std::scoped_lock guard(m_queue->lock);
        m_queue->jobs.push_back(std::move(job));
    }
    m_queue->wake.notify_one();
}

} // namespace stintbook
