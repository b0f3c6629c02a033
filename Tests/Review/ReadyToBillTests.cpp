#include <gmock/gmock.h>

#include "Review/ReadyToBill.h"
#include "Support/HandMadeDay.h"

namespace stintbook {
namespace {

using enum ReadyToBillBlocker;
using testing::ElementsAre;

TEST(ReadyToBill, ReportsOnlyMissingWorkForADayWithoutWorkThatCounts)
{
    HandMadeDay day;
    EXPECT_THAT(eligibility(day.content).blockers, ElementsAre(noIncludedWork));
    day.addBlock(day.hours(9, 10), std::nullopt, {.isIgnored = true});
    day.addItem(day.hours(9, 10), day.toSite);
    day.content.items.back().disposition = ReviewedItemDisposition::ignored;
    EXPECT_THAT(eligibility(day.content).blockers, ElementsAre(noIncludedWork));
}

TEST(ReadyToBill, ListsBlockersInTheirOrderUntilTheUserSettlesThem)
{
    HandMadeDay day;
    day.addItem({day.at(9), day.at(10, 30)}, day.toSite);
    day.addItem(day.hours(10, 11), day.toSite);
    day.addBlock(day.hours(11, 12), day.toSite);
    day.content.blocks.back().attribution.conflictingRuleIDs = {RuleID{day.next()}};
    day.addBlock(day.hours(12, 13), std::nullopt);
    EXPECT_THAT(eligibility(day.content).blockers,
                ElementsAre(unassignedWork, conflictedWork, overlappingReviewedWork));

    day.content.items.pop_back();
    day.content.blocks[0].review.isConfirmed = true;
    day.content.blocks[1].review.isIgnored = true;
    EXPECT_TRUE(eligibility(day.content).isEligible());
    // A block and an item may both claim some time, too.
    day.addBlock(day.hours(10, 11), day.toSite);
    EXPECT_THAT(eligibility(day.content).blockers, ElementsAre(overlappingReviewedWork));
}

TEST(ReadyToBill, FreezesWhatIsLeftAndApprovesTheResultingLayer)
{
    HandMadeDay day;
    const auto item = day.addItem(day.hours(9, 10), day.toArchive);
    const auto block = day.addBlock(day.hours(10, 11), day.toSite);
    day.addBlock(day.hours(11, 12), day.toSite, {.isIgnored = true});
    const auto mutation = markReady(day.context(), day.at(18));
    ASSERT_TRUE(mutation);
    ASSERT_EQ(mutation->upserts.size(), 1);
    EXPECT_EQ(mutation->upserts[0].interval(), block.interval());
    EXPECT_EQ(mutation->consumedSegmentIDs.size(), 2);
    EXPECT_EQ(mutation->approval,
              (ReviewedDayApproval{day.content.day, revision({item, mutation->upserts[0]}), day.at(18)}));
}

TEST(ReadyToBill, FreezesNoBlockForATargetThatCannotReceiveNewWork)
{
    HandMadeDay day;
    day.addBlock(day.hours(9, 10), std::nullopt, {.assignment = day.toArchive});
    EXPECT_TRUE(eligibility(day.content).isEligible());
    EXPECT_EQ(message(markReady(day.context(), day.at(18)).error()),
              "That client or project cannot receive new work: its client is archived.");
}

} // namespace
} // namespace stintbook
