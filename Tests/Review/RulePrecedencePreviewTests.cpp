#include <algorithm>
#include <map>

#include <gmock/gmock.h>

#include "Review/RulePrecedencePreview.h"
#include "Review/WorkBlockBuilder.h"
#include "Rules/RuleOrder.h"
#include "Support/RandomWork.h"

namespace stintbook {
namespace {

using testing::ElementsAre;

using Matches = RulePrecedencePreview::Matches;

std::vector<WorkBlock> blocks(RandomWork& work, const std::vector<AttributionRule>& rules)
{
    std::vector<FreeSegment> segments;
    Instant at{1.8e9};
    for (std::size_t count = work.below(80); count > 0; --count) {
        const auto segment = work.segment(at, Seconds{static_cast<double>(10 + work.below(200))});
        segments.push_back({segment, segment.id});
        at = segment.end + Seconds{work.oneIn(5) ? 1.0 : 0.0};
    }
    return WorkBlockBuilder(CalendarContext::inZone("Europe/Berlin").value(),
                            AttributionEngine(rules, work.directory()), ExclusionEngine({}))
        .blocks(segments, {});
}

/// Asks every rule about every segment of every block.
std::map<RuleID, Matches> byHand(const std::vector<AttributionRule>& rules,
                                 const std::vector<WorkBlock>& blocks, const AssignmentDirectory& directory)
{
    const auto& target = directory.projects().front();
    std::map<RuleID, Matches> result;
    const auto ordered = enabledInListOrder(rules);
    for (std::size_t position = 0; position < ordered.size(); ++position) {
        auto alone = ordered[position];
        // Whether it matches has nothing to do with its target.
        alone.clientID = target.clientID;
        alone.projectID = target.id;
        const AttributionEngine engine({alone}, directory);
        auto& matches = result[alone.id];
        for (std::size_t number = 0; number < blocks.size(); ++number) {
            const auto& block = blocks[number];
            const auto winner = std::ranges::find_if(ordered, [&](const AttributionRule& rule) {
                return rule.id == block.attribution.winningRuleID;
            });
            const bool isMatched = std::ranges::any_of(block.lineage, [&](const WorkBlockSegment& entry) {
                return engine.evaluate(entry.segment).winningRuleID.has_value();
            });
            if (!isMatched || winner == ordered.end())
                continue;
            const auto above = static_cast<std::size_t>(winner - ordered.begin());
            if (above == position)
                matches.applied.push_back(number);
            else if (above < position)
                matches.shadowed.push_back(number);
        }
    }
    return result;
}

TEST(RulePrecedencePreview, AgreesWithAskingEveryRuleAboutEverySegment)
{
    std::size_t applied = 0;
    std::size_t shadowed = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        RandomWork work(seed);
        const auto rules = work.rules(work.below(15));
        const auto built = blocks(work, rules);
        const auto preview = rulePrecedencePreview(rules, built);
        ASSERT_EQ(preview.matchesByRule, byHand(rules, built, work.directory())) << "seed " << seed;
        ASSERT_EQ(preview.blocks, built);
        for (const auto& [rule, matches] : preview.matchesByRule) {
            ASSERT_EQ(preview.countsByRule.at(rule),
                      (RulePrecedencePreview::Counts{static_cast<int>(matches.applied.size()),
                                                     static_cast<int>(matches.shadowed.size())}));
            applied += matches.applied.size();
            shadowed += matches.shadowed.size();
        }
    }
    EXPECT_GT(applied, 1000U);
    EXPECT_GT(shadowed, 1000U);
}

TEST(RulePrecedencePreview, TellsARuleWithoutMatchFromOneThatLoses)
{
    RandomWork work(1);
    const auto rule = [&](const char* title, int priority) {
        auto made = work.rule();
        made.isEnabled = true;
        made.priority = priority;
        made.match = {.titleContains = title};
        return made;
    };
    const std::vector<AttributionRule> rules{rule("a", 0), rule("ab", 1), rule("c", 2)};
    WorkBlock block;
    block.lineage.emplace_back().segment.context = FocusedContext::windowTitle("ab");
    const auto remarks = [&] {
        const auto preview = rulePrecedencePreview(rules, {block});
        std::vector<std::string> result;
        for (const auto& each : rules)
            result.push_back(remark(previewSummary(preview, each.id, 1)));
        return result;
    };
    const auto* noMatch = "No block on this day matches this rule.";
    EXPECT_THAT(remarks(), ElementsAre("", "", noMatch));
    block.attribution.winningRuleID = rules[0].id;
    EXPECT_THAT(remarks(), ElementsAre("", "1 more match but a rule above wins.", noMatch));
}

} // namespace
} // namespace stintbook
