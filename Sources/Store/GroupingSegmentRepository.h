#pragma once

#include <vector>

#include "Capture/ActivitySegmentRepository.h"

namespace stintbook {

/// Gathers what is saved into larger transactions of another repository, in order: for replays, where a kill
/// may cost the last group and leaves everything before it. `flush` ends a replay.
class GroupingSegmentRepository final : public ActivitySegmentRepository {
public:
    explicit GroupingSegmentRepository(ActivitySegmentRepository& repository, std::size_t groupSize = 20'000)
        : m_repository(repository)
        , m_groupSize(groupSize)
    {
    }

    /// When a group is refused, the segments of this call are not kept and those of earlier calls are, for the
    /// next attempt.
    Stored<void> save(std::span<const ActivitySegment> segments) override;
    Stored<void> flush() const;

    /// Reading sees what was saved: it flushes first.
    Stored<std::vector<ActivitySegment>> segments(Interval overlapping) const override;
    Stored<std::vector<ObservedApplication>> observedApplications() const override;
    Stored<std::optional<ActivitySegment>> latestSegment() const override;

private:
    ActivitySegmentRepository& m_repository;
    std::size_t m_groupSize;
    mutable std::vector<ActivitySegment> m_group;
};

} // namespace stintbook
