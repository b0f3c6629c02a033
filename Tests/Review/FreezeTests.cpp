#include <gmock/gmock.h>

#include "Review/Freeze.h"
#include "Support/HandMadeDay.h"

namespace stintbook {
namespace {

using testing::ElementsAre;

TEST(Freeze, CopiesTheBlocksTimeTargetAndSegments)
{
    HandMadeDay day;
    const auto block = day.addBlock(day.hours(9, 10), day.toSite, {.assignment = day.toShop});
    const auto mutation = freeze(std::vector<ReviewSubject>{block, block}, day.context());

    ASSERT_TRUE(mutation);
    ASSERT_EQ(mutation->upserts.size(), 1);
    const auto& item = mutation->upserts[0];
    EXPECT_EQ(item.interval(), block.interval());
    EXPECT_EQ(item.assignment, day.toShop) << "the user's assignment counts, not the rules'";
    EXPECT_EQ(item.day, day.content.day);
    const auto first = block.lineage[0].sourceSegmentID;
    const auto second = block.lineage[1].sourceSegmentID;
    EXPECT_THAT(item.slices,
                ElementsAre(ReviewedSourceSlice{first, day.at(9), day.at(9, 10)},
                            ReviewedSourceSlice{second, day.at(9, 10), day.at(10)}));
    EXPECT_THAT(mutation->consumedSegmentIDs, ElementsAre(first, second));
}

TEST(Freeze, NamesTheStoredSegmentOfAPiece)
{
    HandMadeDay day;
    auto block = day.addBlock(day.hours(9, 10), day.toSite);
    const SegmentID stored{day.next()};
    for (auto& entry : block.lineage)
        entry.sourceSegmentID = stored;
    const auto work = makeStructural(block, day.context());
    ASSERT_TRUE(work);
    EXPECT_EQ(work->item.slices.size(), 2);
    EXPECT_THAT(work->consumedSegmentIDs, ElementsAre(stored));
}

TEST(Freeze, RefusesBlocksThatCannotBeBilled)
{
    HandMadeDay day;
    const auto refusal = [&](const WorkBlock& block) { return makeStructural(block, day.context()).error(); };
    using enum ReviewedEditRefusal;
    EXPECT_EQ(refusal(day.addBlock(day.hours(9, 10), std::nullopt)),
              ReviewedEditProblem(workHasNoAssignment));
    EXPECT_EQ(refusal(day.addBlock(day.hours(10, 11), std::nullopt, {.isIgnored = true})),
              ReviewedEditProblem(ignoredItemIsBusinessReadOnly));
    EXPECT_EQ(message(refusal(day.addBlock(day.hours(11, 12), std::nullopt, {.assignment = day.toArchive}))),
              "That client or project cannot receive new work: its client is archived.");

    auto holed = day.addBlock(day.hours(12, 13), day.toSite);
    holed.lineage.pop_back();
    EXPECT_EQ(refusal(holed), ReviewedEditProblem(ReviewedItemProblem::slicesNotContiguous));
}

TEST(Freeze, LeavesAnItemAsItIsAndRefusesTheWholeSelectionForOneIgnoredItem)
{
    HandMadeDay day;
    const auto block = day.addBlock(day.hours(9, 10), day.toSite);
    auto item = day.addItem(day.hours(10, 11), day.toArchive);
    EXPECT_EQ(freeze(std::vector<ReviewSubject>{item}, day.context()), ReviewedLayerMutation{});
    item.disposition = ReviewedItemDisposition::ignored;
    EXPECT_EQ(freeze(std::vector<ReviewSubject>{block, item}, day.context()).error(),
              ReviewedEditProblem(ReviewedEditRefusal::ignoredItemIsBusinessReadOnly));
}

} // namespace
} // namespace stintbook
