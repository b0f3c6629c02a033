#include <algorithm>

#include <gmock/gmock.h>

#include "Base/Text.h"
#include "Rules/AttributionEngine.h"
#include "Rules/ExclusionEngine.h"
#include "Support/RandomWork.h"

namespace stintbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

class AttributionEngineExamples : public testing::Test {
protected:
    /// One rule about `match` at a priority, for the first project unless said otherwise.
    AttributionRule rule(RuleMatch match, int priority = 0, std::size_t project = 0)
    {
        const auto& target = work.directory().projects()[project];
        return {.id = {work.uuid()},
                .priority = priority,
                .match = std::move(match),
                .clientID = target.clientID,
                .projectID = target.id};
    }

    static ActivitySegment segment()
    {
        return {.start = {1.8e9},
                .end = {1.8e9 + 60},
                .application = ApplicationIdentity{"browser", "Browser"},
                .context = FocusedContext::documentTitle("Le RÉSUMÉ d’été"),
                .browserDomain = BrowserDomain::fromText("a.b.example.org"),
                .evidence = ContextEvidence::applicationAndWindow};
    }

    std::optional<RuleID> winner(const std::vector<AttributionRule>& rules)
    {
        return AttributionEngine(rules, work.directory()).evaluate(segment()).winningRuleID;
    }

    RandomWork work{7};
};

TEST_F(AttributionEngineExamples, BreaksTiesOfPriorityByTheIdentifiersText)
{
    auto first = rule({.applicationBundleIdentifier = "browser"});
    auto second = rule({.applicationBundleIdentifier = "browser"});
    first.id = *RuleID::parse("0A000000-0000-4000-8000-000000000000");
    second.id = *RuleID::parse("A0000000-0000-4000-8000-000000000000");
    EXPECT_EQ(winner({second, first}), first.id);
    EXPECT_EQ(winner({first, second}), first.id);
}

TEST_F(AttributionEngineExamples, CallsADifferenceInBillabilityAloneAConflict)
{
    const auto plain = rule({.applicationBundleIdentifier = "browser"}, 0);
    auto unpaid = rule({.titleContains = "resume"}, 1);
    unpaid.billableOverride = false;
    const auto alike = rule({.titleContains = "ETE"}, 2);
    const auto evaluation = AttributionEngine({alike, unpaid, plain}, work.directory()).evaluate(segment());
    EXPECT_EQ(evaluation.winningRuleID, plain.id);
    EXPECT_THAT(evaluation.supportingRuleIDs, ElementsAre(alike.id));
    EXPECT_THAT(evaluation.conflictingRuleIDs, ElementsAre(unpaid.id));
    EXPECT_TRUE(evaluation.isInConflict());
}

TEST_F(AttributionEngineExamples, SkipsRulesWhoseTargetMayNotReceiveNewWork)
{
    const auto& projects = work.directory().projects();
    const auto archivedClient = rule({.applicationBundleIdentifier = "browser"}, 0, 4);
    const auto archivedProject = rule({.applicationBundleIdentifier = "browser"}, 1, 3);
    auto foreignProject = rule({.applicationBundleIdentifier = "browser"}, 2);
    foreignProject.clientID = projects[2].clientID;
    const auto usable = rule({.applicationBundleIdentifier = "browser"}, 3, 1);

    const AttributionEngine engine({archivedClient, archivedProject, foreignProject, usable},
                                   work.directory());
    const auto evaluation = engine.evaluate(segment());
    EXPECT_EQ(evaluation.winningRuleID, usable.id);
    EXPECT_THAT(evaluation.supportingRuleIDs, IsEmpty());
    EXPECT_THAT(evaluation.conflictingRuleIDs, IsEmpty());
    EXPECT_EQ(engine.orderedRules().size(), 4U);
}

TEST_F(AttributionEngineExamples, MatchesAHostAndItsSubdomainsButNotMereEndings)
{
    const auto matches = [&](const char* host) {
        return winner({rule({.browserDomain = BrowserDomain::fromText(host)})}).has_value();
    };
    EXPECT_TRUE(matches("a.b.example.org"));
    EXPECT_TRUE(matches("b.example.org"));
    EXPECT_TRUE(matches("example.org"));
    EXPECT_FALSE(matches("ample.org"));
    EXPECT_FALSE(matches("x.a.b.example.org"));
    EXPECT_FALSE(matches("a.b.example"));
}

} // namespace
} // namespace stintbook
