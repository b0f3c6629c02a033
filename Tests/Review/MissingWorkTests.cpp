#include <gmock/gmock.h>

#include "Review/MissingWork.h"
#include "Support/HandMadeDay.h"

namespace stintbook {
namespace {

using enum ReviewedEditRefusal;

ManualWorkDraft draft(const HandMadeDay& day, Interval time)
{
    return {.start = time.start, .end = time.end, .clientID = day.acme.id, .projectID = day.site.id};
}

TEST(MissingWork, BecomesAManualItemThatMayEndWithTheDay)
{
    HandMadeDay day;
    auto evening = draft(day, day.hours(22, 24));
    evening.billable = false;
    evening.description = "Phone";
    const auto mutation = addMissingWork(evening, day.context());
    ASSERT_TRUE(mutation);
    ASSERT_EQ(mutation->upserts.size(), 1);
    const auto& item = mutation->upserts[0];
    EXPECT_EQ(item.interval(), day.hours(22, 24));
    EXPECT_EQ(item.origin, ReviewedItemOrigin::manual);
    EXPECT_EQ(item.assignment, (AttributionAssignment{day.acme.id, day.site.id, false}));
    EXPECT_EQ(item.description, "Phone");
}

TEST(MissingWork, LiesInTheDayForATargetAndOverlapsNeitherItemsNorBlocksThatCount)
{
    HandMadeDay day;
    day.addItem(day.hours(9, 10), day.toSite);
    day.addBlock(day.hours(11, 12), std::nullopt);
    day.addBlock(day.hours(13, 14), std::nullopt, {.isIgnored = true});
    day.addItem(day.hours(15, 16), day.toSite);
    day.content.items.back().disposition = ReviewedItemDisposition::ignored;
    const auto add = [&](int from, int to) {
        return addMissingWork(draft(day, day.hours(from, to)), day.context());
    };
    const std::unexpected<ReviewedEditProblem> taken(manualWorkOverlapsIncludedWork);
    EXPECT_EQ(add(8, 11), taken);
    EXPECT_EQ(add(11, 12), taken);
    EXPECT_TRUE(add(10, 11));
    EXPECT_TRUE(add(12, 17)) << "ignored work leaves its time free";
    EXPECT_EQ(add(23, 25), std::unexpected<ReviewedEditProblem>(manualIntervalInvalid));
    auto nobodys = draft(day, day.hours(10, 11));
    nobodys.projectID.reset();
    EXPECT_EQ(addMissingWork(nobodys, day.context()),
              std::unexpected<ReviewedEditProblem>(workHasNoAssignment));
}

} // namespace
} // namespace stintbook
