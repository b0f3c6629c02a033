#include <gmock/gmock.h>

#include "Review/Assignment.h"
#include "Support/HandMadeDay.h"

namespace stintbook {
namespace {

using enum ReviewedEditRefusal;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Selection = std::vector<ReviewSubject>;

TEST(Assigning, ChangesItemsAndTheReviewsOfABlocksSegments)
{
    HandMadeDay day;
    auto item = day.addItem(day.hours(9, 10), day.toArchive);
    const auto block = day.addBlock(day.hours(10, 11), day.toSite, {.isConfirmed = true});
    const auto mutation = assign(Selection{item, block}, day.toShop, day.context());
    ASSERT_TRUE(mutation);
    item.assignment = day.toShop;
    EXPECT_THAT(mutation->upserts, ElementsAre(item));
    ASSERT_THAT(mutation->reviewUpserts, SizeIs(2));
    EXPECT_EQ(mutation->reviewUpserts.at(block.lineage[1].sourceSegmentID),
              (SegmentReview{.assignment = day.toShop, .isConfirmed = true}));
    EXPECT_THAT(mutation->consumedSegmentIDs, IsEmpty());
}

TEST(Assigning, IsRefusedForIgnoredWorkAndForTargetsThatCannotReceiveIt)
{
    HandMadeDay day;
    const auto item = day.addItem(day.hours(9, 10), day.toSite);
    const auto flagged = day.addBlock(day.hours(10, 11), std::nullopt, {.isIgnored = true});
    EXPECT_EQ(assign(Selection{item}, day.toArchive, day.context()).error(),
              ReviewedEditProblem(TargetCannotReceiveNewWork{AssignmentTargetProblem::clientArchived}));
    EXPECT_EQ(assign(Selection{item, flagged}, day.toShop, day.context()).error(),
              ReviewedEditProblem(ignoredItemIsBusinessReadOnly));
}

TEST(Confirming, FixesWhatTheRulesSayNow)
{
    HandMadeDay day;
    const auto block = day.addBlock(day.hours(9, 10), day.toSite);
    const auto item = day.addItem(day.hours(10, 11), day.toShop);
    const auto mutation = confirm(Selection{block, item}, day.context());
    ASSERT_TRUE(mutation);
    EXPECT_THAT(mutation->upserts, IsEmpty());
    EXPECT_EQ(mutation->reviewUpserts.at(block.lineage[0].sourceSegmentID),
              (SegmentReview{.assignment = day.toSite, .isConfirmed = true}));
}

TEST(Confirming, NeedsAnAssignmentAndKeepsOneWhoseTargetWasArchivedSince)
{
    HandMadeDay day;
    const auto free = day.addBlock(day.hours(9, 10), std::nullopt);
    const auto kept = day.addBlock(day.hours(10, 11), std::nullopt, {.assignment = day.toArchive});
    const auto flagged = day.addBlock(day.hours(11, 12), std::nullopt, {.isIgnored = true});
    EXPECT_EQ(confirm(Selection{free}, day.context()).error(), ReviewedEditProblem(workHasNoAssignment));
    EXPECT_EQ(confirm(Selection{flagged}, day.context()).error(),
              ReviewedEditProblem(ignoredItemIsBusinessReadOnly));
    EXPECT_TRUE(confirm(Selection{kept}, day.context()));
}

TEST(Describing, FreezesABlockKeepsTheTextAndClearsItWhenEmpty)
{
    HandMadeDay day;
    auto written = describe(day.addBlock(day.hours(9, 10), day.toSite), " Notes | 1 ", day.context());
    ASSERT_TRUE(written);
    EXPECT_EQ(written->upserts[0].description, " Notes | 1 ");
    EXPECT_THAT(written->consumedSegmentIDs, SizeIs(2));

    auto item = written->upserts[0];
    EXPECT_EQ(describe(item, "", day.context())->upserts[0].description, std::nullopt);
    item.disposition = ReviewedItemDisposition::ignored;
    EXPECT_EQ(describe(item, "", day.context()).error(), ReviewedEditProblem(ignoredItemIsBusinessReadOnly));
}

} // namespace
} // namespace stintbook
