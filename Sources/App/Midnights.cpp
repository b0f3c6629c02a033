#include "App/Midnights.h"

#include <utility>

namespace stintbook {

Midnights::Midnights(Collaborators collaborators, std::function<void()> dayBegan)
    : m_collaborators(std::move(collaborators))
    , m_dayBegan(std::move(dayBegan))
{
    waitForNext();
}

void Midnights::waitForNext()
{
    const auto midnight = m_collaborators.calendar().nextDayStart(m_collaborators.timeSource.now());
    m_next = m_collaborators.timers.at(midnight, [this] {
        waitForNext();
        m_dayBegan();
    });
}

} // namespace stintbook
