#include "Rules/AttributionEngine.h"

#include <utility>

#include "Rules/RuleMatcher.h"
#include "Rules/RuleOrder.h"

namespace stintbook {

namespace {

struct Effect {
    RuleID rule;
    AttributionAssignment assignment;
};

} // namespace

struct AttributionEngine::Prepared {
    std::vector<AttributionRule> orderedRules;
    /// Of the rules whose target may receive new work; the matcher's positions are those of this list.
    std::vector<Effect> effects;
    RuleMatcher matcher;
};

AttributionEngine::AttributionEngine(std::vector<AttributionRule> rules, const AssignmentDirectory& directory)
{
    auto ordered = enabledInListOrder(std::move(rules));
    std::vector<Effect> effects;
    std::vector<RuleMatch> matches;
    for (const auto& rule : ordered) {
        if (directory.problem(rule.clientID, rule.projectID))
            continue;
        effects.push_back({rule.id, assignmentOf(rule, directory)});
        matches.push_back(rule.match);
    }
    m_prepared = std::make_shared<const Prepared>(
        Prepared{std::move(ordered), std::move(effects), RuleMatcher(std::move(matches))});
}

const std::vector<AttributionRule>& AttributionEngine::orderedRules() const
{
    return m_prepared->orderedRules;
}

AttributionEvaluation AttributionEngine::evaluate(const ActivitySegment& segment) const
{
    return evaluate(RuleSubject(segment, foldedTitle(segment)));
}

AttributionEvaluation AttributionEngine::evaluate(const RuleSubject& subject) const
{
    AttributionEvaluation evaluation;
    for (const auto position : m_prepared->matcher.matching(subject)) {
        const auto& [rule, assignment] = m_prepared->effects[position];
        if (!evaluation.assignment) {
            evaluation.assignment = assignment;
            evaluation.winningRuleID = rule;
        } else if (assignment == *evaluation.assignment) {
            evaluation.supportingRuleIDs.push_back(rule);
        } else {
            evaluation.conflictingRuleIDs.push_back(rule);
        }
    }
    return evaluation;
}

} // namespace stintbook
