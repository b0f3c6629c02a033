#pragma once

#include <optional>
#include <span>

#include "Review/ReviewSubject.h"
#include "Rules/AttributionRule.h"

namespace stintbook {

/// A rule that would have made a correction unnecessary.
struct RuleSuggestion {
    RuleID id;
    RuleMatch match;
    ClientID clientID;
    ProjectID projectID;
    /// Absent: the project's default is what the work has.
    std::optional<bool> billableOverride;
    /// How many blocks of the corrected work's day the rule would attribute from the top of the list.
    int blockCount = 0;

    friend bool operator==(const RuleSuggestion&, const RuleSuggestion&) = default;
};

/// A suggestion that its user edits before it becomes a rule; an edit does not change its count.
using RuleProposal = RuleSuggestion;

/// Enabled, without a place in the list yet.
AttributionRule rule(const RuleProposal& proposal);

/// The condition that tells corrected work apart: its web domain, unless other clients' work of the day is on
/// that domain too; else its application. Both are those of most of its time, the domain within the dominant
/// application. Empty where the work has neither.
///
/// `recorded` are the day's segments, from which items know what they were cut from.
RuleMatch suggestedMatch(const ReviewSubject& corrected, ClientID client, const ReviewDay& day,
                         std::span<const ActivitySegment> recorded);

} // namespace stintbook
