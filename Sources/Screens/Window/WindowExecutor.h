#pragma once

#include <QObject>

#include "Base/Executor.h"
#include "Base/TimeSource.h"

namespace stintbook {

/// The window thread's event loop, as the core knows executors and timers. Made, used and destroyed on that thread;
/// `post` may come from any. What is posted before its end and did not run by then never runs.
class WindowExecutor final : public Executor, public Timers {
public:
    void post(Job job) override;

    std::unique_ptr<Scheduled> after(Seconds delay, std::function<void()> work) override;
    /// Looks at the clock again at least once a minute, for the clock may be set and the machine may sleep.
    std::unique_ptr<Scheduled> at(Instant deadline, std::function<void()> work) override;
    std::unique_ptr<Scheduled> every(Seconds interval, std::function<void()> work) override;

private:
    QObject m_receiver;
    SystemTimeSource m_clock;
};

} // namespace stintbook
