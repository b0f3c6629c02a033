#include <gmock/gmock.h>

#include "Billing/RecordsDayState.h"
#include "Billing/ReviewedDayReading.h"
#include "Review/ReadyToBill.h"
#include "Support/HandMadeDay.h"

namespace stintbook {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

Decimal decimal(std::string_view text)
{
    return *Decimal::parse(text);
}

struct PricedDay : HandMadeDay {
    PricedDay()
    {
        billing.clients[acme.id] = {.hourlyRate = decimal("60"),
                                    .rounding = RoundingPolicy::nearestSixMinutes};
        billing.projects[shop.id] = {.hourlyRate = decimal("87.5"), .rounding = RoundingPolicy::exact};
    }
    std::vector<ReviewedDayLine> lines() const
    {
        return reading(content, std::nullopt, directory, billing).lines;
    }

    BillingBook billing;
};

TEST(ReviewedDayLines, RoundEachItemOnItsOwnAndAddUp)
{
    PricedDay day;
    day.addItem({day.at(9), day.at(9, 9)}, day.toSite);
    day.addItem({day.at(11), day.at(11, 9) - Seconds{0.5}}, day.toSite);
    const auto lines = day.lines();
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_EQ(lines[0].trackedSeconds, decimal("1080"));
    EXPECT_EQ(lines[0].billedSeconds, decimal("1440")) << "the sum, rounded, would be 1080";
    EXPECT_EQ(lines[0].amount, decimal("24"));
}

TEST(ReviewedDayLines, StandApartByTargetBillableStateAndLayerInOrderOfTime)
{
    PricedDay day;
    day.addItem(day.hours(12, 13), day.toSite);
    day.addItem(day.hours(13, 14), {day.acme.id, day.site.id, false});
    day.addItem(day.hours(14, 15), {day.acme.id, {HandMadeDay::numbered(9)}, true});
    day.addItem(day.hours(15, 16), day.toSite);
    day.content.items.back().disposition = ReviewedItemDisposition::ignored;
    day.addBlock(day.hours(9, 10), day.toSite);
    day.addBlock(day.hours(10, 11), std::nullopt);
    day.addBlock(day.hours(11, 12), std::nullopt, {.isIgnored = true});
    day.addBlock(day.hours(17, 18), day.toSite);

    const auto lines = day.lines();
    ASSERT_THAT(lines, SizeIs(5));
    const auto hour = decimal("3600");
    EXPECT_EQ(lines[0],
              (ReviewedDayLine{.clientID = day.acme.id,
                               .projectID = day.site.id,
                               .clientName = "Acme",
                               .projectName = "Site",
                               .billedSeconds = hour + hour,
                               .trackedSeconds = hour + hour,
                               .isBillable = true,
                               .isReviewed = false,
                               .amount = decimal("120")}));
    EXPECT_EQ(lines[1], (ReviewedDayLine{.billedSeconds = hour, .trackedSeconds = hour}));
    EXPECT_TRUE(lines[2].isReviewed);
    EXPECT_EQ(lines[3].amount, std::nullopt) << "not billable";
    EXPECT_EQ(lines[4].amount, decimal("60")) << "the client's rate, though the project is gone";
    EXPECT_EQ(lines[4].projectName, std::nullopt);
    EXPECT_THAT(totals(lines).accountNames, ElementsAre("Acme / Site", "Acme / Unavailable project"));
}

TEST(ReviewedWorkTotals, KnowTheWholeAmountOnlyWhenEveryBillableLineIsPriced)
{
    PricedDay day;
    day.addItem(day.hours(9, 10), day.toShop);
    EXPECT_EQ(totals(day.lines()).amount, decimal("87.5"));
    day.addItem(day.hours(10, 11), day.toArchive);
    const auto sums = totals(day.lines());
    EXPECT_EQ(sums.amount, std::nullopt);
    EXPECT_EQ(sums.knownAmount, decimal("87.5"));
    EXPECT_EQ(sums.unpricedBillableCount, 1);
    EXPECT_EQ(sums.billedSeconds, decimal("7200"));
    EXPECT_EQ(totals({}).amount, std::nullopt);
}

TEST(ReviewedDayReading, GivesTheFirstBlockerUntilTheDayIsReady)
{
    PricedDay day;
    day.addBlock(day.hours(9, 10), std::nullopt);
    const auto blocked = reading(day.content, std::nullopt, day.directory, day.billing);
    EXPECT_FALSE(blocked.isReady);
    EXPECT_EQ(blocked.notReadyReason, "Some work has no client and project yet.");

    day.content.blocks.clear();
    day.addItem(day.hours(10, 11), day.toSite);
    const auto mutation = markReady(day.context(), day.at(18));
    ASSERT_TRUE(mutation);
    const auto unapproved = reading(day.content, std::nullopt, day.directory, day.billing);
    EXPECT_FALSE(unapproved.isReady);
    EXPECT_EQ(unapproved.notReadyReason, std::nullopt);
    // Work recorded later leaves the day ready, whatever it lacks.
    day.addBlock(day.hours(11, 12), std::nullopt);
    const auto later = reading(day.content, mutation->approval, day.directory, day.billing);
    EXPECT_TRUE(later.isReady);
    EXPECT_EQ(later.notReadyReason, std::nullopt);
    EXPECT_THAT(later.lines, SizeIs(2));
    day.content.items.back().description = "Changed since";
    EXPECT_FALSE(reading(day.content, mutation->approval, day.directory, day.billing).isReady);
}

TEST(RecordsDayState, FollowsTheLatestExportBeforeReadiness)
{
    using enum RecordsDayState;
    const ReviewedDayRevision current{"a"};
    const ReviewedDayRevision former{"b"};
    for (const auto status : {ReviewedDayStatus::ready, ReviewedDayStatus::notReady}) {
        EXPECT_EQ(recordsState(current, current, status), exported);
        EXPECT_EQ(label(recordsState(former, current, status)), "Changed since export");
    }
    EXPECT_EQ(recordsState(std::nullopt, current, ReviewedDayStatus::ready), readyToBill);
    EXPECT_EQ(recordsState(std::nullopt, current, ReviewedDayStatus::notReady), needsReview);
}

} // namespace
} // namespace stintbook
