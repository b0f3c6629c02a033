#include "Review/ApplicationTotals.h"

#include <algorithm>
#include <utility>

namespace stintbook {

void ApplicationTotals::add(Number application, Seconds length, std::size_t firstSeen)
{
    auto& total = m_totals.try_emplace(application, Total{{}, firstSeen}).first->second;
    total.time += length;
    total.firstSeen = std::min(total.firstSeen, firstSeen);
    // Totals only grow, so only the one that grew can have become the dominant one.
    if (!m_dominant) {
        m_dominant = application;
    } else if (const auto& best = m_totals.at(*m_dominant);
               total.time > best.time || (total.time == best.time && total.firstSeen < best.firstSeen)) {
        m_dominant = application;
    }
}

void ApplicationTotals::add(ApplicationTotals other)
{
    if (m_totals.size() < other.m_totals.size())
        std::swap(*this, other);
    for (const auto& [application, total] : other.m_totals)
        add(application, total.time, total.firstSeen);
}

} // namespace stintbook
