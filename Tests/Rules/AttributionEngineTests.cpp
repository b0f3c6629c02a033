#include <algorithm>

#include <gtest/gtest.h>

#include "Base/Text.h"
#include "Rules/AttributionEngine.h"
#include "Rules/ExclusionEngine.h"
#include "Support/RandomWork.h"

namespace stintbook {
namespace {

/// The conditions one by one, as a person would check them.
bool holds(const RuleMatch& match, const ActivitySegment& segment)
{
    if (match.applicationBundleIdentifier
        && (!segment.application
            || segment.application->bundleIdentifier != *match.applicationBundleIdentifier))
        return false;
    if (match.browserDomain) {
        if (!segment.browserDomain)
            return false;
        const auto host = "." + segment.browserDomain->host();
        if (!host.ends_with("." + match.browserDomain->host()))
            return false;
    }
    if (match.titleContains) {
        return !segment.context.isNone()
            && foldedForSearch(segment.context.text).contains(foldedForSearch(*match.titleContains));
    }
    return true;
}

AttributionEvaluation evaluatedRuleByRule(std::vector<AttributionRule> rules,
                                          const AssignmentDirectory& directory,
                                          const ActivitySegment& segment)
{
    std::ranges::sort(rules, [](const AttributionRule& a, const AttributionRule& b) {
        return a.priority != b.priority ? a.priority < b.priority : a.id.text() < b.id.text();
    });
    AttributionEvaluation result;
    for (const auto& rule : rules) {
        if (!rule.isEnabled || directory.problem(rule.clientID, rule.projectID)
            || !holds(rule.match, segment))
            continue;
        const bool byDefault = directory.project(rule.projectID)->defaultBillable;
        const AttributionAssignment assignment{rule.clientID, rule.projectID,
                                               rule.billableOverride.value_or(byDefault)};
        if (!result.winningRuleID) {
            result.winningRuleID = rule.id;
            result.assignment = assignment;
        } else {
            (assignment == *result.assignment ? result.supportingRuleIDs : result.conflictingRuleIDs)
                .push_back(rule.id);
        }
    }
    return result;
}

TEST(AttributionEngine, AgreesWithAskingEveryRuleInTurn)
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        RandomWork work(seed);
        const auto rules = work.rules(work.below(60));
        const AttributionEngine engine(rules, work.directory());
        for (int i = 0; i < 100; ++i) {
            const auto segment = work.segment({1.8e9}, {60});
            ASSERT_EQ(engine.evaluate(segment), evaluatedRuleByRule(rules, work.directory(), segment))
                << "seed " << seed;
        }
    }
}

TEST(ExclusionEngine, ExcludesExactlyWhatSomeEnabledRuleMatches)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        RandomWork work(seed);
        std::vector<ExclusionRule> rules;
        for (std::size_t i = work.below(6); i > 0; --i)
            rules.push_back({.id = {work.uuid()}, .isEnabled = !work.oneIn(3), .match = work.match()});
        const ExclusionEngine engine(rules);
        for (int i = 0; i < 100; ++i) {
            const auto segment = work.segment({1.8e9}, {60});
            const bool isMatched = std::ranges::any_of(
                rules, [&](const auto& rule) { return rule.isEnabled && holds(rule.match, segment); });
            ASSERT_EQ(engine.excludes(segment), isMatched) << "seed " << seed;
        }
    }
}

} // namespace
} // namespace stintbook
