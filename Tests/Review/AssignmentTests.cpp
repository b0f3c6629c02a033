#include <gmock/gmock.h>

#include "Review/Assignment.h"
#include "Support/HandMadeDay.h"

namespace stintbook {
namespace {

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

TEST(Confirming, FixesWhatTheRulesSayNowAndKeepsATargetArchivedSince)
{
    HandMadeDay day;
    const auto block = day.addBlock(day.hours(9, 10), day.toSite);
    const auto item = day.addItem(day.hours(10, 11), day.toShop);
    const auto mutation = confirm(Selection{block, item}, day.context());
    ASSERT_TRUE(mutation);
    EXPECT_THAT(mutation->upserts, IsEmpty());
    EXPECT_EQ(mutation->reviewUpserts.at(block.lineage[0].sourceSegmentID),
              (SegmentReview{.assignment = day.toSite, .isConfirmed = true}));

    const auto kept = day.addBlock(day.hours(11, 12), std::nullopt, {.assignment = day.toArchive});
    EXPECT_TRUE(confirm(Selection{kept}, day.context()));
}

TEST(Describing, KeepsTheTextAsItIsAndClearsItWhenEmpty)
{
    HandMadeDay day;
    const auto item = day.addItem(day.hours(9, 10), day.toSite);
    EXPECT_EQ(describe(item, " Notes | 1 ", day.context())->upserts[0].description, " Notes | 1 ");
    EXPECT_EQ(describe(item, "", day.context())->upserts[0].description, std::nullopt);
}

} // namespace
} // namespace stintbook
