#pragma once

#include <cstddef>
#include <list>
#include <span>
#include <vector>

#include "Base/Instant.h"
#include "Review/ApplicationTotals.h"
#include "Review/WorkBlock.h"

namespace stintbook {

/// One piece of work on its way into a block.
struct RunEntry {
    WorkBlockSegment work;
    /// The first instant of the calendar day in which the piece starts.
    Instant day;
    /// Absent when the segment has no application.
    std::optional<ApplicationTotals::Number> application;
    /// Equal for equal evaluations of the day.
    std::size_t evaluationNumber = 0;
};

/// A provisional block: neighbours among the day's entries, which stand in segment order. Runs are only
/// ever put together with their neighbours, so that a run stays one stretch of entries.
struct Run {
    std::size_t firstEntry = 0;
    std::size_t pastEntry = 0;
    /// The entries that decide the block's attribution and review; at least one. Entries that came with a
    /// run that was absorbed are not among them.
    std::list<std::size_t> explanation;
    ApplicationTotals applications;
};

/// Answers about runs over the same entries.
class RunQuestions {
public:
    explicit RunQuestions(std::span<const RunEntry> entries)
        : m_entries(entries)
    {
    }

    /// Too short to stand as a block of its own: under 120 s.
    bool isShort(const Run& run) const;
    /// Whether the later run begins on the same day exactly where the earlier one ends.
    bool follows(const Run& earlier, const Run& later) const;
    bool haveEqualReviews(const Run& a, const Run& b) const;
    /// Whether two neighbours are one stretch of work: one application, one attribution, one review.
    bool areJoinable(const Run& earlier, const Run& later) const;

private:
    const RunEntry& first(const Run& run) const { return m_entries[run.firstEntry]; }
    const RunEntry& last(const Run& run) const { return m_entries[run.pastEntry - 1]; }
    const WorkBlockSegment& explaining(const Run& run) const
    {
        return m_entries[run.explanation.front()].work;
    }

    std::span<const RunEntry> m_entries;
};

/// Stands for no application; what a run is dominated by when none of its segments has one.
inline constexpr ApplicationTotals::Number unknownApplicationNumber = 0;

} // namespace stintbook
