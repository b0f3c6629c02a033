#include "Screens/Window/WindowExecutor.h"

#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <utility>

namespace stintbook {

namespace {

std::chrono::milliseconds milliseconds(Seconds length)
{
    return std::chrono::milliseconds(
        static_cast<std::int64_t>(std::ceil(std::max(length.value, 0.0) * 1000)));
}

class ScheduledTimer final : public Timers::Scheduled {
public:
    ScheduledTimer() { m_timer.setTimerType(Qt::CoarseTimer); }

    void once(Seconds delay, const std::function<void()>& work) { start(delay, true, work); }
    void again(Seconds interval, const std::function<void()>& work) { start(interval, false, work); }

private:
    void start(Seconds delay, bool isSingleShot, const std::function<void()>& work)
    {
        m_timer.disconnect();
        m_timer.setSingleShot(isSingleShot);
        // A copy: the work may destroy the timer.
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [work] {
            const auto kept = work;
            kept();
        });
        m_timer.start(milliseconds(delay));
    }

    QTimer m_timer;
};

/// Until the wall clock has got there.
class Deadline final : public Timers::Scheduled {
public:
    Deadline(Instant deadline, std::function<void()> work, const TimeSource& clock)
        : m_deadline(deadline)
        , m_work(std::move(work))
        , m_clock(clock)
    {
        wait();
    }

private:
    void wait()
    {
        constexpr Seconds longest{60};
        m_next.once(std::min(m_deadline - m_clock.now(), longest), [this] {
            if (m_clock.now() < m_deadline)
                wait();
            else
                std::exchange(m_work, {})();
        });
    }

    Instant m_deadline;
    std::function<void()> m_work;
    const TimeSource& m_clock;
    ScheduledTimer m_next;
};

} // namespace

void WindowExecutor::post(Job job)
{
    // Qt copies what it is given.
    auto shared = std::make_shared<Job>(std::move(job));
    QMetaObject::invokeMethod(&m_receiver, [shared] { (*shared)(); }, Qt::QueuedConnection);
}

std::unique_ptr<Timers::Scheduled> WindowExecutor::after(Seconds delay, std::function<void()> work)
{
    auto timer = std::make_unique<ScheduledTimer>();
    timer->once(delay, work);
    return timer;
}

std::unique_ptr<Timers::Scheduled> WindowExecutor::at(Instant deadline, std::function<void()> work)
{
    return std::make_unique<Deadline>(deadline, std::move(work), m_clock);
}

std::unique_ptr<Timers::Scheduled> WindowExecutor::every(Seconds interval, std::function<void()> work)
{
    auto timer = std::make_unique<ScheduledTimer>();
    timer->again(interval, work);
    return timer;
}

} // namespace stintbook
