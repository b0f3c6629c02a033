#pragma once

#include <array>
#include <expected>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Base/RawValue.h"
#include "Domain/AssignmentDirectory.h"
#include "Rules/AttributionRule.h"
#include "Rules/RuleList.h"
#include "Rules/TypedMatch.h"

namespace stintbook {

/// What a condition looks at.
enum class RuleDimension { application, windowTitle, domain };

template <> struct RawValues<RuleDimension> {
    static constexpr std::array table{
        std::pair{RuleDimension::application, std::string_view("application")},
        std::pair{RuleDimension::windowTitle, std::string_view("windowTitle")},
        std::pair{RuleDimension::domain, std::string_view("domain")},
    };
};

/// A row of the rule editor.
struct RuleCondition {
    RuleDimension dimension = RuleDimension::application;
    /// As typed; a row without a value is no condition yet.
    std::string value;

    friend bool operator==(const RuleCondition&, const RuleCondition&) = default;
};

/// The editor's working copy of a rule, finished or not.
struct RuleDraft {
    /// Goes to the top of the list.
    struct NewRule {
        friend bool operator==(const NewRule&, const NewRule&) = default;
    };
    /// Goes directly below the rule that it was copied from.
    struct CopiedRule {
        RuleID original;

        friend bool operator==(const CopiedRule&, const CopiedRule&) = default;
    };
    /// Takes the place of the stored rule with its identifier.
    struct ExistingRule {
        friend bool operator==(const ExistingRule&, const ExistingRule&) = default;
    };

    RuleID id;
    /// In the order in which they are shown.
    std::vector<RuleCondition> conditions;
    /// Absent until chosen.
    std::optional<ClientID> clientID;
    std::optional<ProjectID> projectID;
    std::optional<bool> billableOverride;
    bool isEnabled = true;
    int priority = 0;
    std::variant<NewRule, CopiedRule, ExistingRule> origin;

    /// One empty row, no target.
    static RuleDraft ofNewRule(RuleID id);
    static RuleDraft ofCopy(const AttributionRule& original, RuleID id);
    static RuleDraft ofExisting(const AttributionRule& rule);

    friend bool operator==(const RuleDraft&, const RuleDraft&) = default;
};

enum class RuleDraftRefusal { everyDimensionUsed, dimensionUsedTwice, targetNotChosen };

/// Why a draft is no rule yet. The list stays as it is.
using RuleDraftProblem = std::variant<RuleEditProblem, DomainRefused, RuleDraftRefusal>;
std::string message(const RuleDraftProblem& problem);

template <typename T> using Drafted = std::expected<T, RuleDraftProblem>;

/// Adds an empty row for the first dimension that has none.
[[nodiscard]] Drafted<RuleDraft> withAnotherCondition(RuleDraft draft);

/// The rule that the draft describes. Rows without a value are left out; whether the target can receive new
/// work is for `saved` to tell.
[[nodiscard]] Drafted<AttributionRule> rule(const RuleDraft& draft);

/// The list with the draft in its place, as it is to be stored. The target must be able to receive new work,
/// unless an existing rule keeps the one it has.
[[nodiscard]] Drafted<std::vector<AttributionRule>> saved(std::vector<AttributionRule> rules,
                                                          const RuleDraft& draft,
                                                          const AssignmentDirectory& directory);

} // namespace stintbook
