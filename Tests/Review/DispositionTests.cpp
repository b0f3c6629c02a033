#include <gmock/gmock.h>

#include "Review/Assignment.h"
#include "Review/Disposition.h"
#include "Review/Freeze.h"
#include "Review/Split.h"
#include "Support/HandMadeDay.h"

namespace stintbook {
namespace {

using testing::SizeIs;
using Selection = std::vector<ReviewSubject>;

TEST(Ignoring, FreezesAnAssignedBlockAndFlagsAnotherOne)
{
    HandMadeDay day;
    const auto assigned = day.addBlock(day.hours(9, 10), day.toSite);
    const auto free = day.addBlock(day.hours(10, 11), std::nullopt, {.isConfirmed = true});
    const auto mutation = ignore(Selection{assigned, free}, day.context());
    ASSERT_TRUE(mutation);
    ASSERT_THAT(mutation->upserts, SizeIs(1));
    EXPECT_FALSE(mutation->upserts[0].isIncluded());
    EXPECT_EQ(mutation->upserts[0].interval(), assigned.interval());
    EXPECT_THAT(mutation->consumedSegmentIDs, SizeIs(2));
    ASSERT_THAT(mutation->reviewUpserts, SizeIs(2));
    EXPECT_EQ(mutation->reviewUpserts.at(free.lineage[1].sourceSegmentID),
              (SegmentReview{.isIgnored = true, .isConfirmed = true}));
}

TEST(IgnoredWork, CanBeRestoredAndNothingElse)
{
    HandMadeDay day;
    const auto flagged = day.addBlock(day.hours(9, 10), std::nullopt, {.isIgnored = true});
    auto item = day.addItem(day.hours(10, 11), day.toSite);
    item.disposition = ReviewedItemDisposition::ignored;
    const auto context = day.context();
    for (const ReviewSubject& subject : Selection{flagged, item}) {
        const ReviewSelection work{&subject, 1};
        for (const auto& edited :
             {ignore(work, context), assign(work, day.toShop, context), confirm(work, context),
              describe(subject, "", context), freeze(work, context), split(subject, day.at(9, 30), context)})
            EXPECT_EQ(
                edited,
                std::unexpected<ReviewedEditProblem>(ReviewedEditRefusal::ignoredItemIsBusinessReadOnly));
    }
}

TEST(Restoring, ClearsTheFlagOfABlockAndLeavesOtherWorkAlone)
{
    HandMadeDay day;
    const auto item = day.addItem(day.hours(9, 10), day.toArchive);
    const auto flagged = day.addBlock(day.hours(10, 11), std::nullopt, {.isIgnored = true});
    EXPECT_EQ(restore(Selection{flagged}).reviewUpserts.at(flagged.lineage[0].sourceSegmentID),
              SegmentReview{});
    EXPECT_EQ(restore(Selection{item}), ReviewedLayerMutation{});
}

} // namespace
} // namespace stintbook
