#pragma once

#include <optional>
#include <string>

#include "Review/EditContext.h"
#include "Review/ReviewedEditProblem.h"
#include "Review/ReviewedLayerMutation.h"

namespace stintbook {

/// Missing work, or idle time that was work, as the user enters it.
struct ManualWorkDraft {
    Instant start;
    Instant end;
    /// Absent until chosen.
    std::optional<ClientID> clientID;
    std::optional<ProjectID> projectID;
    bool billable = true;
    std::optional<std::string> description;

    Interval interval() const { return {start, end}; }
};

/// Adds a manual item. Refused when the draft is empty or leaves the day, overlaps work that counts, names
/// no client and project, or one that cannot receive new work; in this order.
Edited<ReviewedLayerMutation> addMissingWork(const ManualWorkDraft& draft, const EditContext& context);

/// What a stored idle segment covers of the day: the times of a draft that converts it to work. Absent when
/// the day has no idle segment of that identifier.
std::optional<Interval> idleTime(SegmentID segment, const ReviewDay& day);

/// An empty text is no description.
std::optional<std::string> normalisedDescription(std::optional<std::string> text);

} // namespace stintbook
