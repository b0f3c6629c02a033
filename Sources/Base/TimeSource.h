#pragma once

#include <functional>
#include <memory>

#include "Base/Instant.h"

namespace stintbook {

/// Gives the current instant.
class TimeSource {
public:
    virtual ~TimeSource() = default;
    virtual Instant now() const = 0;
};

/// The machine's uptime without the time it slept, in seconds from an arbitrary origin.
class AwakeClock {
public:
    virtual ~AwakeClock() = default;
    virtual Seconds awake() const = 0;
};

class SystemTimeSource final : public TimeSource {
public:
    Instant now() const override;
};

/// CLOCK_MONOTONIC, which stands still while the machine sleeps.
class SystemAwakeClock final : public AwakeClock {
public:
    Seconds awake() const override;
};

/// Runs work later, on the thread of whoever owns it.
class Timers {
public:
    /// Destroying the handle cancels what it stands for.
    class Scheduled {
    public:
        virtual ~Scheduled() = default;
    };

    virtual ~Timers() = default;
    /// Once, after `delay` of waking time.
    [[nodiscard]] virtual std::unique_ptr<Scheduled> after(Seconds delay, std::function<void()> work) = 0;
    /// Once, when the wall clock has reached `deadline`, also when the machine slept past it or the
    /// clock was set.
    [[nodiscard]] virtual std::unique_ptr<Scheduled> at(Instant deadline, std::function<void()> work) = 0;
    /// Again and again, first after one `interval`.
    [[nodiscard]] virtual std::unique_ptr<Scheduled> every(Seconds interval, std::function<void()> work) = 0;
};

} // namespace stintbook
