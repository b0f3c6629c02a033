#include "Store/GroupingSegmentRepository.h"

#include "Base/Try.h"

namespace stintbook {

Stored<void> GroupingSegmentRepository::save(std::span<const ActivitySegment> segments)
{
    const auto accepted = m_group.size();
    m_group.insert(m_group.end(), segments.begin(), segments.end());
    if (m_group.size() < m_groupSize)
        return {};
    auto flushed = flush();
    if (!flushed)
        m_group.erase(m_group.begin() + static_cast<std::ptrdiff_t>(accepted), m_group.end());
    return flushed;
}

Stored<void> GroupingSegmentRepository::flush() const
{
    if (m_group.empty())
        return {};
    TRY(m_repository.save(m_group));
    m_group.clear();
    return {};
}

Stored<std::vector<ActivitySegment>> GroupingSegmentRepository::segments(Interval overlapping) const
{
    TRY(flush());
    return m_repository.segments(overlapping);
}

Stored<std::vector<ObservedApplication>> GroupingSegmentRepository::observedApplications() const
{
    TRY(flush());
    return m_repository.observedApplications();
}

Stored<std::optional<ActivitySegment>> GroupingSegmentRepository::latestSegment() const
{
    TRY(flush());
    return m_repository.latestSegment();
}

} // namespace stintbook
