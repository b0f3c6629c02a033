#pragma once

#include <functional>
#include <initializer_list>
#include <memory>

#include "Base/Executor.h"
#include "Base/TimeSource.h"

namespace stintbook {

/// One thread's loop over file descriptors, timers, signals and posted jobs.
///
/// `post` and `stop` may be called from any thread. Everything else, and destroying what was handed out,
/// belongs to the thread that runs the loop (or to its owner while it does not run). Nothing here wakes up
/// on its own: a loop without timers sleeps until a descriptor is ready.
class EventLoop final : public Executor, public Timers {
public:
    /// Destroying it ends the watch. Never outlives the loop.
    using Watch = Timers::Scheduled;

    enum class Readiness { readable, writable };

    EventLoop();
    ~EventLoop() override;
    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;

    /// Runs until `stop`. May be run again afterwards.
    void run();
    /// Runs until `isDone()` holds, which is asked after everything that happens; false when `limit` has
    /// passed before. For callers that wait for something this loop brings about.
    bool runUntil(const std::function<bool()>& isDone, Seconds limit);
    void stop();

    void post(Job job) override;

    std::unique_ptr<Scheduled> after(Seconds delay, std::function<void()> work) override;
    std::unique_ptr<Scheduled> at(Instant deadline, std::function<void()> work) override;
    std::unique_ptr<Scheduled> every(Seconds interval, std::function<void()> work) override;

    /// Calls `work` whenever the descriptor is ready, for as long as the handle lives. The descriptor stays
    /// the caller's and has to outlive the handle; it is made non-blocking.
    [[nodiscard]] std::unique_ptr<Watch> watch(int descriptor, Readiness readiness,
                                               std::function<void()> work);
    /// Calls `work(signal)` on the loop's thread instead of the signals' own effect.
    [[nodiscard]] std::unique_ptr<Watch> onSignals(std::initializer_list<int> signals,
                                                   std::function<void(int)> work);

private:
    struct Loop;
    std::unique_ptr<Loop> m_loop;
};

} // namespace stintbook
