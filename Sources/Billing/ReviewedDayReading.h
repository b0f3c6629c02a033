#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Base/Decimal.h"
#include "Billing/BillingBook.h"
#include "Domain/AssignmentDirectory.h"
#include "Review/ReviewSubject.h"
#include "Review/ReviewedDayApproval.h"

namespace stintbook {

/// The work of one client, project and billable state on a day: reviewed items, or blocks not frozen yet.
///
/// Each piece of work is measured in whole seconds and rounded on its own, as an export does, and the line
/// adds up those figures.
struct ReviewedDayLine {
    /// Both absent for blocks that nothing attributes.
    std::optional<ClientID> clientID;
    std::optional<ProjectID> projectID;
    /// Absent when the target is no longer in the client list.
    std::optional<std::string> clientName;
    std::optional<std::string> projectName;
    Decimal billedSeconds;
    Decimal trackedSeconds;
    /// Work that nothing attributes is not billable.
    bool isBillable = false;
    bool isReviewed = false;
    /// Absent without a rate and for non-billable work. Priced also while no currency is set.
    std::optional<Decimal> amount;

    friend bool operator==(const ReviewedDayLine&, const ReviewedDayLine&) = default;
};

/// One reviewed item or block, measured and priced as a line of its own.
struct DayWork {
    /// The item's or the block's.
    UUID id;
    Interval time;
    /// Its reviewer's; blocks have none.
    std::optional<std::string> description;
    ReviewedDayLine line;

    friend bool operator==(const DayWork&, const DayWork&) = default;
};

struct ReviewedWorkTotals {
    Decimal billedSeconds;
    Decimal trackedSeconds;
    /// Only when every billable line is priced.
    std::optional<Decimal> amount;
    /// Of the priced lines; absent when none is.
    std::optional<Decimal> knownAmount;
    /// Billable lines without a rate.
    int unpricedBillableCount = 0;
    /// "Client / Project" of each line that has one, once, in the order of the lines.
    std::vector<std::string> accountNames;
    int lineCount = 0;

    friend bool operator==(const ReviewedWorkTotals&, const ReviewedWorkTotals&) = default;
};

/// What Records and exports need to know about one day.
struct ReviewedDayReading {
    LocalDay day;
    ReviewedDayRevision revision;
    bool isReady = false;
    std::vector<ReviewedWorkItem> items;
    std::vector<DayWork> work;
    std::vector<ReviewedDayLine> lines;
    std::optional<BillingCurrency> currency;
    /// The first blocker's message; absent for a ready day, and for one that only waits to be marked.
    std::optional<std::string> notReadyReason;
};

/// All that is not ignored, by start.
std::vector<DayWork> dayWork(const ReviewDay& day, const AssignmentDirectory& directory,
                             const BillingBook& billing);
/// Lines of one client, project, billable state and review are one, in the order in which each first appears.
std::vector<ReviewedDayLine> gathered(const std::vector<ReviewedDayLine>& lines);

/// Whose work is asked for; everyone's unless said.
struct WorkFilter {
    std::optional<ClientID> clientID;
    std::optional<ProjectID> projectID;

    bool includes(const ReviewedDayLine& line) const;

    friend bool operator==(const WorkFilter&, const WorkFilter&) = default;
};

ReviewedWorkTotals totals(const std::vector<ReviewedDayLine>& lines);
/// `approval` is the day's stored one, if it has one.
ReviewedDayReading reading(const ReviewDay& day, const std::optional<ReviewedDayApproval>& approval,
                           const AssignmentDirectory& directory, const BillingBook& billing);

} // namespace stintbook
