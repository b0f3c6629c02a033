#pragma once

#include <cstddef>
#include <list>
#include <optional>
#include <span>
#include <vector>

#include "Base/Instant.h"
#include "Review/ApplicationTotals.h"
#include "Review/FreeSegments.h"
#include "Review/SegmentReview.h"
#include "Rules/AttributionRule.h"

namespace stintbook {

/// One piece of work on its way into a block. Refers to what its day was given, and copies none of it: most
/// of building a crowded day is waiting for memory.
struct RunEntry {
    const FreeSegment* piece = nullptr;
    /// The same one for segments that look alike to rules.
    const AttributionEvaluation* evaluation = nullptr;
    const SegmentReview* review = nullptr;
    /// The piece's own.
    Interval interval;
    /// The first instant of the calendar day in which the piece starts.
    Instant day;
    /// Absent when the segment has no application.
    std::optional<ApplicationTotals::Number> application;

    const std::optional<AttributionAssignment>& effectiveAssignment() const
    {
        return review->assignment ? review->assignment : evaluation->assignment;
    }
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
    const RunEntry& explaining(const Run& run) const { return m_entries[run.explanation.front()]; }

    std::span<const RunEntry> m_entries;
};

/// Stands for no application; what a run is dominated by when none of its segments has one.
inline constexpr ApplicationTotals::Number unknownApplicationNumber = 0;

} // namespace stintbook
