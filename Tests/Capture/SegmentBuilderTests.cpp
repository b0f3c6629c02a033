#include <string>

#include <gmock/gmock.h>

#include "Capture/SegmentBuilder.h"
#include "Support/AllocationCount.h"
#include "Support/CaptureSegmentRepository.h"

namespace stintbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

CalendarContext zone(const char* identifier)
{
    return *CalendarContext::inZone(identifier);
}

ContextObservation observation(const std::string& application, Instant at)
{
    return {.application = {application, application}, .observedAt = at};
}

TEST(SegmentBuilder, AllocatesNothingForAnObservationThatContinuesTheStretch)
{
    SegmentBuilder builder(zone("Europe/Berlin"));
    auto seen = observation("an.application.with.a.rather.long.identifier", {100});
    seen.context = FocusedContext::documentTitle("A title that no small string holds inside itself");
    seen.browserDomain = BrowserDomain::fromText("a-rather-long-host-name.example.org");
    builder.ingest(seen);

    const AllocationCount allocations;
    for (int second = 101; second < 200; ++second) {
        seen.observedAt = {static_cast<double>(second)};
        EXPECT_TRUE(builder.ingest(seen).empty());
    }
    EXPECT_EQ(allocations.soFar(), 0U);
    EXPECT_EQ(builder.open->start, Instant{100});
    seen.evidence = ContextEvidence::none;
    EXPECT_EQ(builder.ingest(seen).size(), 1U);
}

TEST(SegmentBuilder, KeepsAGapThroughIdleChangesAndItsFirstStartForTheSameReason)
{
    SegmentBuilder builder(zone("UTC"));
    builder.ingest(GapBegan{GapReason::systemSleep, {10}});
    EXPECT_THAT(builder.ingest(GapBegan{GapReason::systemSleep, {20}}), IsEmpty());
    EXPECT_THAT(builder.ingest(IdleChanged{true, {30}}), IsEmpty());
    EXPECT_TRUE(builder.isIdle);
    EXPECT_THAT(builder.ingest(IdleChanged{false, {40}}), IsEmpty());
    EXPECT_THAT(described(builder.ingest(GapBegan{GapReason::sessionInactive, {50}})),
                ElementsAre("10-50 gap systemSleep"));
    EXPECT_THAT(described(builder.ingest(observation("editor", {60}))),
                ElementsAre("50-60 gap sessionInactive"));
}

TEST(SegmentBuilder, CutsAtTheFirstInstantOfEachDayAndStampsEachPieceAtItsOwnStart)
{
    // Berlin: Saturday 2026-03-28 23:50 to Monday 2026-03-30 00:10, over the night of 23 hours.
    SegmentBuilder builder(zone("Europe/Berlin"));
    builder.ingest(observation("editor", {1774738200}));
    const auto pieces = builder.close({1774822200});
    EXPECT_THAT(described(pieces),
                ElementsAre("1774738200-1774738800 work editor", "1774738800-1774821600 work editor",
                            "1774821600-1774822200 work editor"));
    EXPECT_EQ(pieces[1].length(), Seconds{23 * 3600.0});
    EXPECT_EQ(pieces[1].timeZone, (SegmentTimeZone{"Europe/Berlin", 3600}));
    EXPECT_EQ(pieces[2].timeZone, (SegmentTimeZone{"Europe/Berlin", 7200}));
}

TEST(SegmentBuilder, GivesAnExtentTheIdentifiersThatItsPiecesWillHave)
{
    SegmentBuilder builder(zone("UTC"));
    builder.ingest(observation("editor", {86'000}));
    const auto before = builder.extent({86'100});
    const auto after = builder.extent({90'000});
    const auto closed = builder.close({200'000});
    ASSERT_EQ(before.size(), 1U);
    ASSERT_EQ(after.size(), 2U);
    ASSERT_EQ(closed.size(), 3U);
    EXPECT_EQ(before[0].id, closed[0].id);
    EXPECT_EQ(after[0].id, closed[0].id);
    EXPECT_EQ(after[1].id, closed[1].id);
    EXPECT_NE(closed[1].id, closed[2].id);
}

} // namespace
} // namespace stintbook
