#include <gmock/gmock.h>

#include "Review/DaySummary.h"
#include "Review/ReviewSubject.h"
#include "Support/RandomWork.h"

namespace stintbook {
namespace {

Instant at(double seconds)
{
    return Instant{1.8e9} + Seconds{seconds};
}

ActivitySegment segment(double from, double to, ActivityKind kind,
                        ContextEvidence evidence = ContextEvidence::none)
{
    return {.start = at(from), .end = at(to), .kind = kind, .evidence = evidence};
}

TEST(DaySummary, CountsWhatOfEachSegmentLiesInTheDay)
{
    const std::vector segments{
        segment(-10, 20, ActivityKind::work, ContextEvidence::applicationAndWindow),
        segment(20, 50, ActivityKind::work, ContextEvidence::applicationOnly),
        segment(50, 90, ActivityKind::idle, ContextEvidence::applicationOnly),
        segment(90, 130, ActivityKind::gap),
        segment(130, 140, ActivityKind::work),
    };
    const LocalDay day{at(0), "Europe/Berlin"};
    const DaySummary expected{.day = day,
                              .workDuration = {50},
                              .idleDuration = {40},
                              .gapDuration = {10},
                              .workSegmentCount = 2,
                              .reducedContextSegmentCount = 1,
                              .state = DayReviewState::needsReview};
    EXPECT_EQ(daySummary(day, {at(0), at(100)}, segments), expected);
    EXPECT_EQ(daySummary(day, {at(60), at(120)}, segments).state, DayReviewState::noActivity);
}

TEST(WorkReviewSummary, TellsAssignedUnassignedAndUnresolvedWorkApart)
{
    RandomWork work(19);
    const AttributionAssignment assignment{{work.uuid()}, {work.uuid()}, true};
    const RuleID winner{work.uuid()};
    const AttributionEvaluation clear{.assignment = assignment, .winningRuleID = winner};
    auto disputed = clear;
    disputed.conflictingRuleIDs = {RuleID{work.uuid()}};

    ReviewDay day;
    const auto block = [&](double length, const AttributionEvaluation& attribution, SegmentReview review) {
        day.blocks.push_back(
            {.start = at(0), .end = at(length), .attribution = attribution, .review = review});
    };
    block(1000, clear, {});
    block(200, {}, {});
    block(300, {}, {.assignment = assignment});
    block(400, disputed, {});
    block(500, disputed, {.assignment = assignment, .isConfirmed = true});
    block(600, {}, {.isIgnored = true});
    const auto item = [&](double length, ReviewedItemOrigin origin, ReviewedItemDisposition disposition) {
        day.items.push_back(
            {.start = at(0), .end = at(length), .origin = origin, .disposition = disposition});
    };
    item(10000, ReviewedItemOrigin::observedReviewed, ReviewedItemDisposition::included);
    item(20000, ReviewedItemOrigin::observedReviewed, ReviewedItemDisposition::ignored);
    item(40000, ReviewedItemOrigin::manual, ReviewedItemDisposition::included);

    const WorkReviewSummary expected{.observedDuration = {1000 + 200 + 300 + 400 + 500 + 10000},
                                     .assignedDuration = {1000 + 300 + 400 + 500 + 10000 + 40000},
                                     .unassignedDuration = {200},
                                     .unresolvedDuration = {200 + 400},
                                     .blockCount = 6,
                                     .unresolvedBlockCount = 2,
                                     .conflictBlockCount = 2};
    EXPECT_EQ(workReviewSummary({}, day), expected);
}

} // namespace
} // namespace stintbook
