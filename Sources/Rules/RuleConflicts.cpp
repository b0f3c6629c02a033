#include "Rules/RuleConflicts.h"

#include <algorithm>
#include <string>
#include <utility>

#include "Base/Text.h"
#include "Rules/RuleOrder.h"

namespace stintbook {

namespace {

/// A rule with what every pair asks of it.
struct Prepared {
    RuleID id;
    RuleMatch match;
    AttributionAssignment assignment;
    /// Empty where there is no title condition.
    std::string foldedTitle;
};

std::vector<Prepared> prepared(const std::vector<AttributionRule>& rules,
                               const AssignmentDirectory& directory)
{
    std::vector<Prepared> result;
    for (auto& rule : enabledInListOrder(rules)) {
        const auto assignment = assignmentOf(rule, directory);
        auto title = foldedForSearch(rule.match.titleContains.value_or(std::string()));
        result.push_back({rule.id, std::move(rule.match), assignment, std::move(title)});
    }
    return result;
}

/// Whether some work could match both; a condition that one of them lacks keeps nothing apart.
bool overlap(const Prepared& a, const Prepared& b)
{
    const auto& application = a.match.applicationBundleIdentifier;
    const auto& otherApplication = b.match.applicationBundleIdentifier;
    if (application && otherApplication && *application != *otherApplication)
        return false;

    const auto& domain = a.match.browserDomain;
    const auto& otherDomain = b.match.browserDomain;
    if (domain && otherDomain && !domain->isWithin(*otherDomain) && !otherDomain->isWithin(*domain))
        return false;

    return a.foldedTitle.contains(b.foldedTitle) || b.foldedTitle.contains(a.foldedTitle);
}

/// Calls `visit(winner, loser)`, indices in rule order, for every pair in conflict.
template <typename Visit> void forEachConflict(const std::vector<Prepared>& rules, Visit visit)
{
    for (std::size_t winner = 0; winner < rules.size(); ++winner) {
        for (std::size_t loser = winner + 1; loser < rules.size(); ++loser) {
            if (rules[winner].assignment != rules[loser].assignment && overlap(rules[winner], rules[loser]))
                visit(winner, loser);
        }
    }
}

} // namespace

std::vector<RuleConflict> conflictingPairs(const std::vector<AttributionRule>& rules,
                                           const AssignmentDirectory& directory)
{
    const auto ordered = prepared(rules, directory);
    std::vector<RuleConflict> pairs;
    forEachConflict(ordered, [&](std::size_t winner, std::size_t loser) {
        pairs.push_back({ordered[winner].id, ordered[loser].id});
    });
    return pairs;
}

std::map<RuleID, std::set<RuleID>> conflicts(const std::vector<AttributionRule>& rules,
                                             const AssignmentDirectory& directory)
{
    const auto ordered = prepared(rules, directory);
    std::vector<std::vector<RuleID>> opponents(ordered.size());
    forEachConflict(ordered, [&](std::size_t winner, std::size_t loser) {
        opponents[winner].push_back(ordered[loser].id);
        opponents[loser].push_back(ordered[winner].id);
    });

    std::map<RuleID, std::set<RuleID>> result;
    for (std::size_t i = 0; i < ordered.size(); ++i) {
        if (opponents[i].empty())
            continue;
        // A set takes a sorted range in linear time.
        std::ranges::sort(opponents[i]);
        result.try_emplace(ordered[i].id, opponents[i].begin(), opponents[i].end());
    }
    return result;
}

std::set<RuleID> losingRuleIDs(const std::vector<AttributionRule>& rules,
                               const AssignmentDirectory& directory)
{
    const auto ordered = prepared(rules, directory);
    std::set<RuleID> losers;
    forEachConflict(ordered, [&](std::size_t, std::size_t loser) { losers.insert(ordered[loser].id); });
    return losers;
}

} // namespace stintbook
