#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <variant>

#include "Base/Instant.h"

namespace stintbook {

/// Keeps the first of several outcomes and wakes the one who waits for it. Any thread may offer one.
template <typename Outcome> class FirstOutcome {
public:
    /// A later outcome is discarded.
    void offer(Outcome outcome)
    {
        {
            const std::scoped_lock lock(m_lock);
            if (m_outcome)
                return;
            m_outcome = std::move(outcome);
        }
        m_decided.notify_one();
    }

    /// Waits for an outcome, so long at most, and offers `late` where none has come.
    Outcome waitFor(Seconds limit, Outcome late)
    {
        std::unique_lock lock(m_lock);
        m_decided.wait_for(lock, std::chrono::duration<double>(limit.value),
                           [this] { return m_outcome.has_value(); });
        if (!m_outcome)
            m_outcome = std::move(late);
        return *m_outcome;
    }

private:
    std::mutex m_lock;
    std::condition_variable m_decided;
    std::optional<Outcome> m_outcome;
};

/// Waits for an operation on another thread, but not beyond a deadline.
struct BoundedShutdown {
    struct DeadlineExpired {
        friend bool operator==(const DeadlineExpired&, const DeadlineExpired&) = default;
    };

    /// The operation's value (`completed`), or that it came too late.
    template <typename T> using Outcome = std::variant<T, DeadlineExpired>;

    static constexpr Seconds deadline{3};

    /// `operation(complete)` starts it and returns; `complete(value)` is called from wherever it ends.
    template <typename T, typename Operation>
    static Outcome<T> run(const Operation& operation, Seconds limit = deadline)
    {
        const auto first = std::make_shared<FirstOutcome<Outcome<T>>>();
        operation([first](T value) { first->offer(std::move(value)); });
        return first->waitFor(limit, DeadlineExpired{});
    }
};

} // namespace stintbook
