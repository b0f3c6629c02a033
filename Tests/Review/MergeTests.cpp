#include <gmock/gmock.h>

#include "Review/Merge.h"
#include "Support/HandMadeDay.h"

namespace stintbook {
namespace {

using enum ReviewedEditRefusal;
using testing::ElementsAre;
using Selection = std::vector<ReviewSubject>;

std::optional<ReviewedEditRefusal> refusal(HandMadeDay& day, const Selection& selection)
{
    const auto result = merge(selection, day.context());
    if (result)
        return std::nullopt;
    return std::get<ReviewedEditRefusal>(result.error());
}

ReviewedWorkItem ignored(ReviewedWorkItem item)
{
    item.disposition = ReviewedItemDisposition::ignored;
    return item;
}

ReviewedWorkItem described(ReviewedWorkItem item, std::string text)
{
    item.description = std::move(text);
    return item;
}

TEST(Merge, MakesOneItemOfBlocksAndItemsInOrderOfTime)
{
    HandMadeDay day;
    const auto block = day.addBlock(day.hours(9, 10), day.toSite);
    const auto middle = described(day.addItem(day.hours(10, 11), day.toSite), "");
    const auto last = described(day.addItem(day.hours(11, 12), day.toSite), "Review");
    const auto mutation = merge(Selection{last, block, middle, last}, day.context());

    ASSERT_TRUE(mutation);
    ASSERT_EQ(mutation->upserts.size(), 1);
    const auto& merged = mutation->upserts[0];
    EXPECT_EQ(merged.interval(), day.hours(9, 12));
    EXPECT_EQ(merged.description, "Review");
    EXPECT_EQ(merged.slices.size(), 4);
    EXPECT_EQ(problem(merged), std::nullopt);
    EXPECT_THAT(mutation->deletions, ElementsAre(middle.id, last.id));
    EXPECT_EQ(mutation->consumedSegmentIDs.size(), 2);
}

TEST(Merge, KeepsTheFirstItemAndATargetThatWasArchivedSince)
{
    HandMadeDay day;
    const auto first = day.addItem(day.hours(9, 10), day.toArchive, ReviewedItemOrigin::manual);
    const auto second = day.addItem(day.hours(10, 11), day.toArchive, ReviewedItemOrigin::manual);
    const auto mutation = merge(Selection{first, second}, day.context());
    ASSERT_TRUE(mutation);
    auto merged = first;
    merged.end = second.end;
    EXPECT_THAT(mutation->upserts, ElementsAre(merged));
    EXPECT_THAT(mutation->deletions, ElementsAre(second.id));
}

TEST(Merge, ReportsTheFirstTestThatFails)
{
    HandMadeDay day;
    const auto first = described(day.addItem(day.hours(9, 10), day.toSite), "First");
    const auto manual =
        described(day.addItem(day.hours(10, 11), day.toShop, ReviewedItemOrigin::manual), "Second");
    const auto observed = described(day.addItem(day.hours(10, 11), day.toShop), "Second");
    const auto equal = described(day.addItem(day.hours(10, 11), day.toSite), "Second");
    auto otherDay = equal;
    otherDay.start = otherDay.start + Seconds{86400};
    otherDay.end = otherDay.end + Seconds{86400};
    const auto unbillable = day.addItem(day.hours(10, 11), {day.acme.id, day.site.id, false});

    EXPECT_EQ(refusal(day, {}), mergeRequiresAtLeastTwoItems);
    EXPECT_EQ(refusal(day, {first, first}), mergeRequiresAtLeastTwoItems);
    EXPECT_EQ(refusal(day, {otherDay, first}), mergeRequiresOneDay);
    EXPECT_EQ(refusal(day, {ignored(first), ignored(observed)}), mergeRejectsIgnoredWork);
    EXPECT_EQ(refusal(day, {first, manual}), mergeRequiresSameProvenance);
    EXPECT_EQ(refusal(day, {first, observed}), mergeRequiresSameAssignment);
    EXPECT_EQ(refusal(day, {first, unbillable}), mergeRequiresSameAssignment);
    EXPECT_EQ(refusal(day, {first, equal}), mergeWouldDiscardDescription);
    // Blocks are frozen only once everything else fits.
    const auto free = day.addBlock(day.hours(12, 13), std::nullopt);
    const auto alsoFree = day.addBlock(day.hours(13, 14), std::nullopt);
    const auto assigned = day.addBlock(day.hours(14, 15), day.toSite);
    EXPECT_EQ(refusal(day, {free, alsoFree}), workHasNoAssignment);
    EXPECT_EQ(refusal(day, {alsoFree, assigned}), mergeRequiresSameAssignment);
}

TEST(Merge, TellsIdleTimeAndGapsFromOtherDistance)
{
    HandMadeDay day;
    const auto first = day.addItem(day.hours(9, 10), day.toSite);
    const auto second = day.addItem(day.hours(11, 12), day.toSite);
    day.addSegment(day.hours(10, 11), ActivityKind::work);
    day.addSegment(day.hours(8, 10), ActivityKind::gap);
    EXPECT_EQ(refusal(day, {first, second}), mergeRequiresAdjacentIntervals);
    day.addSegment({day.at(10, 59), day.at(11)}, ActivityKind::idle);
    EXPECT_EQ(refusal(day, {first, second}), mergeRejectsStructuralGap);
    const auto overlapping = day.addItem({day.at(9, 30), day.at(10, 30)}, day.toSite);
    EXPECT_EQ(refusal(day, {first, overlapping}), mergeRequiresAdjacentIntervals);
}

} // namespace
} // namespace stintbook
