#pragma once

#include <expected>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "App/OpenedStore.h"
#include "Domain/AssignmentDirectory.h"
#include "Review/RuleSuggestion.h"
#include "Rules/AttributionRule.h"
#include "Rules/RuleConflicts.h"
#include "Rules/RuleDraft.h"

namespace stintbook {

/// Why the rules stayed as they are.
using RuleBookProblem = std::variant<PersistenceError, RuleDraftProblem>;
std::string message(const RuleBookProblem& problem);

template <typename T> using RuleEdited = std::expected<T, RuleBookProblem>;

struct ListedRules {
    /// Enabled and disabled, by priority, then identifier.
    std::vector<AttributionRule> attributionRules;
    std::vector<ExclusionRule> exclusionRules;
    /// Rules that lose a conflict to a rule above them.
    std::set<RuleID> losing;
};

/// The ordered rules. Each edit is one transaction.
class RuleBook {
public:
    explicit RuleBook(OpenedStore& store)
        : m_store(store)
    {
    }

    Stored<ListedRules> list() const;
    /// In rule order.
    Stored<std::vector<RuleConflict>> conflicts() const;

    struct NewRule {
        TypedMatch match;
        ClientID clientID;
        ProjectID projectID;
        std::optional<bool> billableOverride;
    };
    /// At the top of the list.
    RuleEdited<RuleID> add(const NewRule& rule);
    /// A suggestion that was accepted; at the top of the list.
    RuleEdited<void> accept(const RuleProposal& proposal);
    /// What an editor worked on, in its place in the list.
    RuleEdited<void> save(const RuleDraft& draft);
    /// Directly below the rule that it copies.
    RuleEdited<RuleID> copy(RuleID id);
    /// To a place counted from 1.
    RuleEdited<void> move(RuleID id, int position);
    RuleEdited<void> setEnabled(RuleID id, bool isEnabled);
    RuleEdited<void> remove(RuleID id);

    RuleEdited<RuleID> addExclusion(const TypedMatch& match);
    RuleEdited<void> setExclusionEnabled(RuleID id, bool isEnabled);
    RuleEdited<void> removeExclusion(RuleID id);

private:
    OpenedStore& m_store;
};

} // namespace stintbook
