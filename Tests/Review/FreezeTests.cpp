#include <gmock/gmock.h>

#include "Review/Freeze.h"
#include "Support/HandMadeDay.h"

namespace stintbook {
namespace {

using testing::ElementsAre;

TEST(Freeze, CopiesTheBlocksTimeTargetAndSegmentsAndLeavesAnItemAsItIs)
{
    HandMadeDay day;
    auto block = day.addBlock(day.hours(9, 10), day.toSite, {.assignment = day.toShop});
    // Both are pieces of one stored segment.
    const auto stored = block.lineage[0].sourceSegmentID;
    block.lineage[1].sourceSegmentID = stored;
    const auto frozen = day.addItem(day.hours(10, 11), day.toArchive);
    const auto mutation = freeze(std::vector<ReviewSubject>{block, block, frozen}, day.context());

    ASSERT_TRUE(mutation);
    ASSERT_EQ(mutation->upserts.size(), 1);
    const auto& item = mutation->upserts[0];
    EXPECT_EQ(item.interval(), block.interval());
    EXPECT_EQ(item.assignment, day.toShop) << "the user's assignment counts, not the rules'";
    EXPECT_EQ(item.day, day.content.day);
    EXPECT_THAT(item.slices,
                ElementsAre(ReviewedSourceSlice{stored, day.at(9), day.at(9, 10)},
                            ReviewedSourceSlice{stored, day.at(9, 10), day.at(10)}));
    EXPECT_THAT(mutation->consumedSegmentIDs, ElementsAre(stored));
}

} // namespace
} // namespace stintbook
