#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "App/DayEditProblem.h"
#include "Review/EditContext.h"
#include "Review/ReviewSubject.h"
#include "Review/ReviewedLayerMutation.h"

namespace stintbook {

/// A client and project for work; without `isBillable` the project's default counts.
struct WorkTarget {
    ClientID clientID;
    ProjectID projectID;
    std::optional<bool> isBillable;
};
AttributionAssignment assignmentTo(const WorkTarget& target, const AssignmentDirectory& directory);

/// The work that an edit was about, as it is afterwards.
struct EditedWork {
    std::vector<WorkBlock> blocks;
    std::vector<ReviewedWorkItem> items;
};

/// The selected subjects, in the order of the identifiers.
DayEdited<std::vector<ReviewSubject>> selectedWork(const ReviewDay& day, std::span<const UUID> ids);
/// The selected work as an edit has left it: the blocks over the selected blocks' segments, the items that were
/// selected or written.
EditedWork workAfterwards(const ReviewDay& day, const std::vector<ReviewSubject>& selected,
                          const ReviewedLayerMutation& done);

} // namespace stintbook
