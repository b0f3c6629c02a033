#include "Platform/Reconnection.h"

#include <algorithm>
#include <utility>

#include "Base/Log.h"

namespace stintbook {

namespace {

constexpr Seconds firstDelay{1};
constexpr Seconds longestDelay{60};

} // namespace

Reconnection::Reconnection(Timers& timers, std::string toWhat, std::function<bool()> attempt)
    : m_timers(timers)
    , m_toWhat(std::move(toWhat))
    , m_attempt(std::move(attempt))
    , m_delay(firstDelay)
{
}

void Reconnection::start()
{
    log::error("The {} is gone; connecting again when there is one", m_toWhat);
    m_delay = firstDelay;
    wait();
}

void Reconnection::wait()
{
    m_retry = m_timers.after(m_delay, [this] {
        if (m_attempt()) {
            log::event("Connected to the {} again", m_toWhat);
            m_retry.reset();
            return;
        }
        m_delay = std::min(m_delay * 2, longestDelay);
        wait();
    });
}

} // namespace stintbook
