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

TEST(MissingWork, OverlapsNeitherItemsNorBlocksThatCount)
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
    const auto taken = std::unexpected<ReviewedEditProblem>(manualWorkOverlapsIncludedWork);
    EXPECT_EQ(add(8, 11), taken);
    EXPECT_EQ(add(11, 12), taken);
    EXPECT_TRUE(add(10, 11));
    EXPECT_TRUE(add(12, 17)) << "ignored work leaves its time free";
}

TEST(MissingWork, RefusesInOrderAnIntervalTakenTimeAndATarget)
{
    HandMadeDay day;
    day.addItem(day.hours(9, 10), day.toSite);
    const auto refusal = [&](const ManualWorkDraft& work) {
        return addMissingWork(work, day.context()).error();
    };
    auto work = draft(day, day.hours(9, 9));
    work.clientID = day.former.id;
    EXPECT_EQ(refusal(work), ReviewedEditProblem(manualIntervalInvalid));
    work.end = day.at(24, 1);
    EXPECT_EQ(refusal(work), ReviewedEditProblem(manualIntervalInvalid));
    work.end = day.at(10);
    EXPECT_EQ(refusal(work), ReviewedEditProblem(manualWorkOverlapsIncludedWork));
    work.start = day.at(10);
    work.end = day.at(11);
    EXPECT_EQ(refusal(work),
              ReviewedEditProblem(TargetCannotReceiveNewWork{AssignmentTargetProblem::clientArchived}));
    work.projectID.reset();
    EXPECT_EQ(refusal(work), ReviewedEditProblem(workHasNoAssignment));
}

TEST(MissingWork, TakesTheTimesOfAnIdleSegmentAlone)
{
    HandMadeDay day;
    const auto idle = day.addSegment(day.hours(9, 10), ActivityKind::idle);
    const auto gap = day.addSegment(day.hours(10, 11), ActivityKind::gap);
    EXPECT_EQ(idleTime(idle.sourceSegmentID, day.content), day.hours(9, 10));
    EXPECT_EQ(idleTime(gap.sourceSegmentID, day.content), std::nullopt);
    EXPECT_TRUE(addMissingWork(draft(day, *idleTime(idle.sourceSegmentID, day.content)), day.context()));
}

} // namespace
} // namespace stintbook
