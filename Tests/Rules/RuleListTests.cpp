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
    RandomWork work{11};
    AttributionRule a{.id = {work.uuid()}, .match = {.titleContains = "a"}};
    AttributionRule b{.id = {work.uuid()}, .match = {.titleContains = "b"}};
    AttributionRule c{.id = {work.uuid()}, .match = {.titleContains = "c"}};
    /// In the order a, b, c.
    std::vector<AttributionRule> list =
        *moved(*moved(*moved(std::vector{a, b, c}, a.id, 1), b.id, 2), c.id, 3);
};

TEST_F(RuleList, MovesRulesBothWaysToPositionsThatCountFromOne)
{
    EXPECT_THAT(storedOrder(moved(list, a.id, 3)), ElementsAre(b.id, c.id, a.id));
    EXPECT_THAT(storedOrder(moved(list, c.id, 1)), ElementsAre(c.id, a.id, b.id));
    EXPECT_THAT(storedOrder(moved(list, b.id, 2)), ElementsAre(a.id, b.id, c.id));
    EXPECT_FALSE(moved(list, b.id, 0));
}

TEST_F(RuleList, SwitchesAndRemovesRulesWithoutTouchingTheOrder)
{
    const auto off = disabled(list, b.id);
    EXPECT_THAT(storedOrder(off), ElementsAre(a.id, b.id, c.id));
    EXPECT_FALSE(off->at(1).isEnabled);
    EXPECT_EQ(enabled(*off, b.id), EditedRules<AttributionRule>(list));
    EXPECT_THAT(storedOrder(removed(list, a.id)), ElementsAre(b.id, c.id));
}

TEST_F(RuleList, InsertsAtTheTopAndCopiesBelowWhatHasACondition)
{
    const ExclusionRule first{.id = {work.uuid()}, .match = {.applicationBundleIdentifier = "player"}};
    const ExclusionRule second{.id = {work.uuid()},
                               .match = {.browserDomain = BrowserDomain::fromText("x.org")}};
    const auto both = insertedAtTop(*insertedAtTop(std::vector<ExclusionRule>(), first), second);
    EXPECT_THAT(storedOrder(both), ElementsAre(second.id, first.id));
    const RuleID copyID{work.uuid()};
    EXPECT_THAT(storedOrder(copiedBelow(*both, second.id, copyID)), ElementsAre(second.id, copyID, first.id));
    for (const auto& empty : {RuleMatch{}, {.applicationBundleIdentifier = "player", .titleContains = ""}})
        EXPECT_FALSE(insertedAtTop(*both, ExclusionRule{.id = {work.uuid()}, .match = empty}));
}

} // namespace
} // namespace stintbook
