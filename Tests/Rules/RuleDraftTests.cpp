#include <algorithm>

#include <gmock/gmock.h>

#include "Rules/RuleDraft.h"
#include "Rules/RuleExplanation.h"
#include "Support/RandomWork.h"

namespace stintbook {
namespace {

using testing::ElementsAre;

std::vector<RuleID> ids(const Drafted<std::vector<AttributionRule>>& rules)
{
    std::vector<RuleID> ids;
    std::ranges::transform(rules.value(), std::back_inserter(ids), &AttributionRule::id);
    return ids;
}

class RuleDrafts : public testing::Test {
protected:
    AttributionRule rule(int priority, const Project& target)
    {
        return {.id = {work.uuid()},
                .priority = priority,
                .match = work.match(),
                .clientID = target.clientID,
                .projectID = target.id,
                .billableOverride = false};
    }

    RandomWork work{3};
    const AssignmentDirectory& directory = work.directory();
    const Project& usable = directory.projects()[0];
    /// Its client is archived.
    const Project& unusable = directory.projects()[4];
    AttributionRule a = rule(0, usable);
    AttributionRule b = rule(1, unusable);
    AttributionRule c = rule(2, usable);
    std::vector<AttributionRule> list{c, a, b};
};

TEST_F(RuleDrafts, BecomeTheRuleThatTheyCameFrom)
{
    for (const auto& original : work.rules(100))
        EXPECT_EQ(stintbook::rule(RuleDraft::ofExisting(original)), original);
}

TEST_F(RuleDrafts, AreSavedWhereTheyBelong)
{
    auto fresh = RuleDraft::ofNewRule({work.uuid()});
    fresh.conditions[0].value = "editor";
    fresh.clientID = usable.clientID;
    fresh.projectID = usable.id;
    EXPECT_THAT(ids(saved(list, fresh, directory)), ElementsAre(fresh.id, a.id, b.id, c.id));

    const auto copy = RuleDraft::ofCopy(a, {work.uuid()});
    EXPECT_THAT(ids(saved(list, copy, directory)), ElementsAre(a.id, copy.id, b.id, c.id));

    auto edited = RuleDraft::ofExisting(c);
    edited.conditions = {{RuleDimension::domain, ".Example.ORG"}, {RuleDimension::windowTitle, ""}};
    const auto replaced = saved(list, edited, directory).value();
    EXPECT_THAT(replaced, ElementsAre(a, b, testing::_));
    EXPECT_EQ(replaced[2].match, (RuleMatch{.browserDomain = BrowserDomain::fromText("example.org")}));
}

TEST_F(RuleDrafts, KeepAnUnusableTargetButAreGivenNone)
{
    auto edited = RuleDraft::ofExisting(b);
    edited.conditions = {{RuleDimension::windowTitle, "plan"}};
    EXPECT_TRUE(saved(list, edited, directory));

    const RuleDraftProblem archived = RuleEditProblem(AssignmentTargetProblem::clientArchived);
    auto moved = RuleDraft::ofExisting(a);
    moved.clientID = unusable.clientID;
    moved.projectID = unusable.id;
    EXPECT_EQ(saved(list, moved, directory).error(), archived);
    EXPECT_EQ(saved(list, RuleDraft::ofCopy(b, {work.uuid()}), directory).error(), archived);
}

TEST_F(RuleDrafts, TakeEveryDimensionOnceAndNeedATarget)
{
    auto draft = RuleDraft::ofNewRule({work.uuid()});
    draft = withAnotherCondition(*withAnotherCondition(draft)).value();
    EXPECT_EQ(message(withAnotherCondition(draft).error()), "Every dimension is already used");
    EXPECT_EQ(message(stintbook::rule(draft).error()),
              "A rule needs a client and a project to attribute work to.");
    draft.clientID = usable.clientID;
    draft.projectID = usable.id;
    draft.conditions = {{RuleDimension::windowTitle, "a"}, {RuleDimension::windowTitle, "b"}};
    EXPECT_EQ(stintbook::rule(draft).error(), RuleDraftProblem(RuleDraftRefusal::dimensionUsedTwice));
}

TEST(RuleExplanation, TakesTheSideOfTheRuleThatIsViewed)
{
    RandomWork work(1);
    const RuleConflict conflict{{work.uuid()}, {work.uuid()}};
    EXPECT_EQ(
        conflictExplanation(conflict, conflict.winner),
        "This rule wins — it is higher in the list, so that rule never applies to the work they both match.");
    EXPECT_EQ(
        conflictExplanation(conflict, conflict.loser),
        "That rule wins — it is higher in the list, so this rule never applies to the work they both match.");
    EXPECT_EQ(shadowedText(3), "3 more match but a rule above wins.");
    const std::vector<RuleMatch> others{{.titleContains = "plan"},
                                        {.applicationBundleIdentifier = "kate", .titleContains = "a"}};
    EXPECT_EQ(alsoMatchedText(others), "Also matched by: title “plan”, application kate and title “a”");
    EXPECT_EQ(alsoMatchedText({}), "");
    EXPECT_EQ(unusableTargetBadge(AssignmentTargetProblem::projectArchived),
              "Archived target — attributes nothing");
    EXPECT_EQ(unusableTargetExplanation(AssignmentTargetProblem::projectBelongsToAnotherClient),
              "Its project belongs to a different client. The rule is kept and explained; it attributes "
              "nothing until the target is replaced.");
}

} // namespace
} // namespace stintbook
