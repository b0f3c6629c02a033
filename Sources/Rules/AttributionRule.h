#pragma once

#include <optional>
#include <vector>

#include "Base/Identifier.h"
#include "Domain/Client.h"
#include "Rules/RuleMatch.h"

namespace stintbook {

using RuleID = Identifier<struct RuleKindTag>;

/// Assigns matching work to a client and project.
struct AttributionRule {
    RuleID id;
    bool isEnabled = true;
    /// Smaller numbers come first; ties go by the identifier's text.
    int priority = 0;
    RuleMatch match;
    ClientID clientID;
    ProjectID projectID;
    /// Absent: the project's default applies.
    std::optional<bool> billableOverride;

    friend bool operator==(const AttributionRule&, const AttributionRule&) = default;
};

/// Keeps matching work out of the record that is reviewed.
struct ExclusionRule {
    RuleID id;
    bool isEnabled = true;
    int priority = 0;
    RuleMatch match;

    friend bool operator==(const ExclusionRule&, const ExclusionRule&) = default;
};

/// What work is attributed to. A difference in billability alone makes two assignments different.
struct AttributionAssignment {
    ClientID clientID;
    ProjectID projectID;
    bool isBillable = true;

    friend bool operator==(const AttributionAssignment&, const AttributionAssignment&) = default;
};

class AssignmentDirectory;

/// What the rule assigns: billable by its own word, else by its project's default, else (the project is
/// not in the directory) billable. Does not ask whether the target may receive new work.
AttributionAssignment assignmentOf(const AttributionRule& rule, const AssignmentDirectory& directory);

/// What the rules say about one segment or block.
struct AttributionEvaluation {
    /// Absent when no rule attributes it.
    std::optional<AttributionAssignment> assignment;
    std::optional<RuleID> winningRuleID;
    /// Other matching rules with the winner's assignment, in rule order.
    std::vector<RuleID> supportingRuleIDs;
    /// Other matching rules with another assignment, in rule order.
    std::vector<RuleID> conflictingRuleIDs;

    bool isInConflict() const { return !conflictingRuleIDs.empty(); }

    friend bool operator==(const AttributionEvaluation&, const AttributionEvaluation&) = default;
};

} // namespace stintbook
