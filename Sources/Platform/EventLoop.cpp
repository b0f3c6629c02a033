#include "Platform/EventLoop.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>
#include <system_error>
#include <utility>

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <asio/posix/stream_descriptor.hpp>
#include <asio/post.hpp>
#include <asio/signal_set.hpp>
#include <asio/steady_timer.hpp>
#include <sys/timerfd.h>
#include <unistd.h>

#include "Base/FileDescriptor.h"
#include "Base/Log.h"

namespace stintbook {

namespace {

using SteadyDuration = asio::steady_timer::duration;

SteadyDuration steady(Seconds seconds)
{
    // Far beyond any use, and far from the clock's overflow.
    constexpr double longest = 100.0 * 366 * 86'400;
    auto bounded = std::chrono::duration<double>(std::min(std::max(seconds.value, 0.0), longest));
    return std::chrono::duration_cast<SteadyDuration>(bounded);
}

/// Hands out the state that the loop's handlers share; going away ends it.
template <typename State> class Handle final : public EventLoop::Watch {
public:
    explicit Handle(std::shared_ptr<State> state)
        : m_state(std::move(state))
    {
    }
    ~Handle() override { m_state->end(); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

private:
    std::shared_ptr<State> m_state;
};

struct Timer : std::enable_shared_from_this<Timer> {
    Timer(asio::io_context& context, std::optional<SteadyDuration> repeat, std::function<void()> job)
        : timer(context)
        , interval(repeat)
        , work(std::move(job))
    {
    }

    void start(SteadyDuration delay)
    {
        timer.expires_after(delay);
        wait();
    }

    void wait()
    {
        timer.async_wait([self = shared_from_this()](std::error_code) {
            if (self->isEnded)
                return;
            if (self->interval) {
                // From now on, not from the former expiry: no burst after the machine was busy.
                self->timer.expires_after(*self->interval);
                self->wait();
            }
            self->work();
        });
    }

    void end()
    {
        isEnded = true;
        timer.cancel();
    }

    asio::steady_timer timer;
    std::optional<SteadyDuration> interval;
    std::function<void()> work;
    bool isEnded = false;
};

struct DescriptorWatch : std::enable_shared_from_this<DescriptorWatch> {
    using Wait = asio::posix::descriptor_base::wait_type;

    DescriptorWatch(asio::io_context& context, int descriptor, Wait kind, std::function<void()> job)
        : stream(context)
        , wait(kind)
        , work(std::move(job))
    {
        std::error_code error;
        stream.assign(descriptor, error);
        if (error)
            log::error("A descriptor cannot be watched: {}", error.message());
    }

    void start()
    {
        stream.async_wait(wait, [self = shared_from_this()](std::error_code error) {
            if (self->isEnded)
                return;
            if (error) {
                log::error("A watched descriptor failed: {}", error.message());
                return;
            }
            self->work();
            if (!self->isEnded)
                self->start();
        });
    }

    void end()
    {
        isEnded = true;
        if (stream.is_open())
            stream.release();
    }

    asio::posix::stream_descriptor stream;
    Wait wait;
    std::function<void()> work;
    bool isEnded = false;
};

struct SignalWatch : std::enable_shared_from_this<SignalWatch> {
    SignalWatch(asio::io_context& context, std::function<void(int)> job)
        : signals(context)
        , work(std::move(job))
    {
    }

    void start()
    {
        signals.async_wait([self = shared_from_this()](std::error_code, int signal) {
            if (self->isEnded)
                return;
            self->start();
            self->work(signal);
        });
    }

    void end()
    {
        isEnded = true;
        signals.cancel();
    }

    asio::signal_set signals;
    std::function<void(int)> work;
    bool isEnded = false;
};

/// A wall-clock deadline: the kernel keeps it through sleep and through a clock that is set.
class Deadline final : public EventLoop::Watch {
public:
    Deadline(EventLoop& loop, Instant deadline, std::function<void()> work)
        : m_timer(timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC))
    {
        // A value of zero would disarm it; the microsecond covers what the double cannot express, so
        // that the deadline has been reached when the work asks for the time.
        auto nanoseconds = std::max(1.0, std::min(deadline.secondsSinceEpoch, 9e9) * 1e9 + 1000);
        auto whole = static_cast<long long>(nanoseconds);
        itimerspec at{};
        at.it_value.tv_sec = static_cast<time_t>(whole / 1'000'000'000);
        at.it_value.tv_nsec = static_cast<long>(whole % 1'000'000'000);
        timerfd_settime(m_timer.get(), TFD_TIMER_ABSTIME, &at, nullptr);
        m_watch = loop.watch(m_timer.get(), EventLoop::Readiness::readable,
                             [this, job = std::move(work)] { fire(job); });
    }

private:
    void fire(const std::function<void()>& work)
    {
        std::uint64_t expirations = 0;
        if (read(m_timer.get(), &expirations, sizeof expirations) != sizeof expirations)
            return;
        // The work may destroy this.
        auto job = work;
        job();
    }

    FileDescriptor m_timer;
    std::unique_ptr<EventLoop::Watch> m_watch;
};

} // namespace

struct EventLoop::Loop {
    /// One thread runs it, but others post to it.
    asio::io_context context{1};
};

EventLoop::EventLoop()
    : m_loop(std::make_unique<Loop>())
{
}

EventLoop::~EventLoop() = default;

void EventLoop::run()
{
    auto guard = asio::make_work_guard(m_loop->context);
    m_loop->context.restart();
    m_loop->context.run();
}

bool EventLoop::runUntil(const std::function<bool()>& isDone, Seconds limit)
{
    auto guard = asio::make_work_guard(m_loop->context);
    auto end = std::chrono::steady_clock::now() + steady(limit);
    m_loop->context.restart();
    while (!isDone()) {
        if (m_loop->context.run_one_until(end) == 0)
            return isDone();
    }
    return true;
}

void EventLoop::stop()
{
    m_loop->context.stop();
}

void EventLoop::post(Job job)
{
    asio::post(m_loop->context, std::move(job));
}

std::unique_ptr<Timers::Scheduled> EventLoop::after(Seconds delay, std::function<void()> work)
{
    auto timer = std::make_shared<Timer>(m_loop->context, std::nullopt, std::move(work));
    timer->start(steady(delay));
    return std::make_unique<Handle<Timer>>(std::move(timer));
}

std::unique_ptr<Timers::Scheduled> EventLoop::at(Instant deadline, std::function<void()> work)
{
    return std::make_unique<Deadline>(*this, deadline, std::move(work));
}

std::unique_ptr<Timers::Scheduled> EventLoop::every(Seconds interval, std::function<void()> work)
{
    auto timer = std::make_shared<Timer>(m_loop->context, steady(interval), std::move(work));
    timer->start(steady(interval));
    return std::make_unique<Handle<Timer>>(std::move(timer));
}

std::unique_ptr<EventLoop::Watch> EventLoop::watch(int descriptor, Readiness readiness,
                                                   std::function<void()> work)
{
    using Base = asio::posix::descriptor_base;
    auto wait = readiness == Readiness::readable ? Base::wait_read : Base::wait_write;
    auto watch = std::make_shared<DescriptorWatch>(m_loop->context, descriptor, wait, std::move(work));
    watch->start();
    return std::make_unique<Handle<DescriptorWatch>>(std::move(watch));
}

std::unique_ptr<EventLoop::Watch> EventLoop::onSignals(std::initializer_list<int> signals,
                                                       std::function<void(int)> work)
{
    auto watch = std::make_shared<SignalWatch>(m_loop->context, std::move(work));
    for (int signal : signals)
        watch->signals.add(signal);
    watch->start();
    return std::make_unique<Handle<SignalWatch>>(std::move(watch));
}

} // namespace stintbook
