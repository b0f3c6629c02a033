#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Base/TimeSource.h"

namespace stintbook {

/// Tries to connect again to a window system that went away: after a second, then ever more seldom, at
/// least once a minute.
class Reconnection {
public:
    /// `attempt` says whether it succeeded.
    Reconnection(Timers& timers, std::string toWhat, std::function<bool()> attempt);

    void start();
    void stop() { m_retry.reset(); }

private:
    void wait();

    Timers& m_timers;
    std::string m_toWhat;
    std::function<bool()> m_attempt;
    Seconds m_delay;
    std::unique_ptr<Timers::Scheduled> m_retry;
};

} // namespace stintbook
