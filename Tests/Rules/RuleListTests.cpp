#include <algorithm>

#include <gmock/gmock.h>

#include "Rules/RuleList.h"
#include "Rules/RuleOrder.h"
#include "Support/RandomWork.h"

namespace stintbook {
namespace {

using testing::ElementsAre;

/// The identifiers as the next read of the store will list them; also proves that the list needs no
/// tie-breaking.
template <typename Rule> std::vector<RuleID> storedOrder(const EditedRules<Rule>& edited)
{
    std::vector<RuleID> ids;
    auto rules = edited.value();
    std::ranges::reverse(rules);
    for (const auto& rule : inListOrder(rules)) {
        EXPECT_EQ(rule.priority, static_cast<int>(ids.size()));
        ids.push_back(rule.id);
    }
    return ids;
}

class RuleList : public testing::Test {
protected:
    AttributionRule rule(std::size_t project = 0)
    {
        const auto& target = work.directory().projects()[project];
        return {.id = {work.uuid()},
                .match = {.titleContains = "report"},
                .clientID = target.clientID,
                .projectID = target.id};
    }

    RandomWork work{11};
    AttributionRule a = rule();
    AttributionRule b = rule();
    AttributionRule c = rule();
    /// In the order a, b, c.
    std::vector<AttributionRule> list =
        *moved(*moved(*moved(std::vector{a, b, c}, a.id, 1), b.id, 2), c.id, 3);
};

TEST_F(RuleList, InsertsNewRulesAtTheTopAndCopiesBelowTheirOriginal)
{
    auto fresh = rule();
    fresh.priority = 99;
    EXPECT_THAT(storedOrder(insertedAtTop(list, fresh, work.directory())),
                ElementsAre(fresh.id, a.id, b.id, c.id));

    list[1].isEnabled = false;
    const RuleID copyID{work.uuid()};
    const auto copied = copiedBelow(list, b.id, copyID, work.directory());
    EXPECT_THAT(storedOrder(copied), ElementsAre(a.id, b.id, copyID, c.id));
    auto expected = list[1];
    expected.id = copyID;
    expected.priority = 2;
    EXPECT_EQ(copied->at(2), expected);
}

TEST_F(RuleList, MovesRulesBothWaysToPositionsThatCountFromOne)
{
    EXPECT_THAT(storedOrder(moved(list, a.id, 3)), ElementsAre(b.id, c.id, a.id));
    EXPECT_THAT(storedOrder(moved(list, c.id, 1)), ElementsAre(c.id, a.id, b.id));
    EXPECT_THAT(storedOrder(moved(list, b.id, 2)), ElementsAre(a.id, b.id, c.id));
    for (const std::size_t position : {0U, 4U}) {
        const auto refused = moved(list, b.id, position);
        ASSERT_FALSE(refused);
        EXPECT_EQ(refused.error(), RuleEditProblem(RuleListProblem::positionOutsideList));
    }
}

TEST_F(RuleList, SwitchesAndRemovesRulesWithoutTouchingTheOrder)
{
    const auto off = disabled(list, b.id);
    EXPECT_THAT(storedOrder(off), ElementsAre(a.id, b.id, c.id));
    EXPECT_FALSE(off->at(1).isEnabled);
    EXPECT_EQ(enabled(*off, b.id), EditedRules<AttributionRule>(list));
    EXPECT_THAT(storedOrder(removed(list, a.id)), ElementsAre(b.id, c.id));
    const auto refused = removed(list, RuleID{work.uuid()});
    ASSERT_FALSE(refused);
    EXPECT_EQ(message(refused.error()), "That rule is no longer in the list.");
}

TEST_F(RuleList, RefusesRulesThatHaveNoConditionOrATargetThatTakesNoNewWork)
{
    const auto refusal = [&](const AttributionRule& candidate) {
        const auto edited = insertedAtTop(list, candidate, work.directory());
        return edited ? std::string() : message(edited.error());
    };
    const auto noCondition = "A rule needs at least one condition — give one of them a value";
    auto candidate = rule();
    candidate.match = {};
    EXPECT_EQ(refusal(candidate), noCondition);
    candidate.match = {.applicationBundleIdentifier = "editor", .titleContains = ""};
    EXPECT_EQ(refusal(candidate), noCondition);
    EXPECT_EQ(refusal(rule(4)), "That client or project cannot receive new work: its client is archived.");

    list[0] = rule(3);
    const auto copied = copiedBelow(list, list[0].id, {work.uuid()}, work.directory());
    ASSERT_FALSE(copied);
    EXPECT_EQ(copied.error(), RuleEditProblem(AssignmentTargetProblem::projectArchived));
}

TEST_F(RuleList, EditsExclusionRulesLikewise)
{
    const ExclusionRule first{.id = {work.uuid()}, .match = {.applicationBundleIdentifier = "player"}};
    const ExclusionRule second{.id = {work.uuid()},
                               .match = {.browserDomain = BrowserDomain::fromText("x.org")}};
    const auto both = insertedAtTop(*insertedAtTop(std::vector<ExclusionRule>(), first), second);
    EXPECT_THAT(storedOrder(both), ElementsAre(second.id, first.id));
    const RuleID copyID{work.uuid()};
    EXPECT_THAT(storedOrder(copiedBelow(*both, second.id, copyID)), ElementsAre(second.id, copyID, first.id));
    EXPECT_FALSE(insertedAtTop(*both, ExclusionRule{.id = {work.uuid()}}));
}

} // namespace
} // namespace stintbook
