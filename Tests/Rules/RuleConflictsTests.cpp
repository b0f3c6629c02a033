#include <gmock/gmock.h>

#include "Rules/RuleConflicts.h"
#include "Support/RandomWork.h"

namespace stintbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RuleConflicts : public testing::Test {
protected:
    /// Rules in the order of their making; each project stands for another assignment.
    AttributionRule rule(RuleMatch match, std::size_t project)
    {
        const auto& target = work.directory().projects()[project];
        return {.id = {work.uuid()},
                .priority = next++,
                .match = std::move(match),
                .clientID = target.clientID,
                .projectID = target.id};
    }

    bool areInConflict(RuleMatch a, RuleMatch b)
    {
        const auto first = rule(std::move(a), 0);
        const auto second = rule(std::move(b), 1);
        const auto found = conflicts({second, first}, work.directory());
        EXPECT_EQ(losingRuleIDs({second, first}, work.directory()).contains(second.id), !found.empty());
        return !found.empty();
    }

    static std::optional<BrowserDomain> host(const char* text) { return BrowserDomain::fromText(text); }

    RandomWork work{3};
    int next = 0;
};

TEST_F(RuleConflicts, KeepsRulesApartOnlyByAConditionThatBothHave)
{
    EXPECT_TRUE(areInConflict({.applicationBundleIdentifier = "a"}, {.titleContains = "x"}));
    EXPECT_FALSE(areInConflict({.applicationBundleIdentifier = "a"}, {.applicationBundleIdentifier = "A"}));
    EXPECT_FALSE(areInConflict({.applicationBundleIdentifier = "a", .titleContains = "x"},
                               {.applicationBundleIdentifier = "b", .titleContains = "x"}));
    EXPECT_TRUE(
        areInConflict({.browserDomain = host("example.org")}, {.browserDomain = host("a.example.org")}));
    EXPECT_FALSE(
        areInConflict({.browserDomain = host("example.org")}, {.browserDomain = host("anexample.org")}));
    EXPECT_TRUE(areInConflict({.titleContains = "RÉSUMÉ"}, {.titleContains = "sum"}));
    EXPECT_FALSE(areInConflict({.titleContains = "resume"}, {.titleContains = "summary"}));
}

TEST_F(RuleConflicts, NamesEveryOpponentEachWayRoundAndWhoLoses)
{
    const auto top = rule({.titleContains = "report"}, 0);
    auto off = rule({.titleContains = "report"}, 1);
    off.isEnabled = false;
    const auto archived = rule({.titleContains = "port"}, 4);
    auto unpaid = top;
    unpaid.id = {work.uuid()};
    unpaid.priority = next++;
    unpaid.billableOverride = false;

    const std::vector rules{unpaid, archived, off, top};
    const auto found = conflicts(rules, work.directory());
    EXPECT_EQ(found.size(), 3U);
    EXPECT_THAT(found.at(top.id), testing::UnorderedElementsAre(archived.id, unpaid.id));
    EXPECT_THAT(found.at(archived.id), testing::UnorderedElementsAre(top.id, unpaid.id));
    EXPECT_THAT(losingRuleIDs(rules, work.directory()),
                testing::UnorderedElementsAre(archived.id, unpaid.id));
}

TEST_F(RuleConflicts, TakesWorkForAVanishedProjectAsBillable)
{
    auto silent = rule({.titleContains = "x"}, 0);
    auto paid = rule({.titleContains = "x"}, 0);
    silent.projectID = paid.projectID = {work.uuid()};
    paid.billableOverride = true;
    EXPECT_THAT(conflicts({silent, paid}, work.directory()), IsEmpty());
    paid.billableOverride = false;
    EXPECT_THAT(losingRuleIDs({silent, paid}, work.directory()), ElementsAre(paid.id));
}

} // namespace
} // namespace stintbook
