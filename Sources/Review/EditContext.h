#pragma once

#include <functional>

#include "Base/Identifier.h"
#include "Domain/AssignmentDirectory.h"
#include "Domain/CalendarContext.h"
#include "Review/ReviewSubject.h"
#include "Review/ReviewedEditProblem.h"

namespace stintbook {

/// What an edit is computed from: the day as it stands, who may receive new work, and what cuts time into
/// days. Refers to its parts; lives as long as the call.
struct EditContext {
    const ReviewDay& day;
    const AssignmentDirectory& directory;
    const CalendarContext& calendar;
    /// Names the items that an edit makes.
    std::function<UUID()> freshIdentifier = UUID::random;
};

Edited<void> mustReceiveNewWork(const AttributionAssignment& target, const EditContext& context);

} // namespace stintbook
