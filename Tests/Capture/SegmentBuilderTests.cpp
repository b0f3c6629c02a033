#include <random>
#include <set>
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
}

TEST(SegmentBuilder, DropsAStretchWithoutLength)
{
    SegmentBuilder builder(zone("UTC"));
    builder.ingest(observation("editor", {100}));
    EXPECT_THAT(builder.ingest(observation("browser", {100})), IsEmpty());
    EXPECT_THAT(described(builder.close({130})), ElementsAre("100-130 work browser"));
    EXPECT_THAT(builder.close({140}), IsEmpty());
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

TEST(SegmentBuilder, LeavesNothingOpenBetweenTheEndOfIdlenessAndTheNextObservation)
{
    SegmentBuilder builder(zone("UTC"));
    builder.ingest(observation("editor", {0}));
    EXPECT_THAT(described(builder.ingest(IdleChanged{true, {10}})), ElementsAre("0-10 work editor"));
    EXPECT_THAT(described(builder.ingest(IdleChanged{false, {90}})), ElementsAre("10-90 idle editor"));
    EXPECT_FALSE(builder.open);
    EXPECT_THAT(builder.ingest(observation("editor", {95})), IsEmpty());
    EXPECT_EQ(builder.open->start, Instant{95});
}

TEST(SegmentBuilder, KnowsNoApplicationWhenIdlenessIsTheFirstThingItHears)
{
    SegmentBuilder builder(zone("UTC"));
    builder.ingest(IdleChanged{true, {10}});
    const auto closed = builder.close({20});
    ASSERT_THAT(described(closed), ElementsAre("10-20 idle"));
    EXPECT_EQ(closed.front().evidence, ContextEvidence::applicationOnly);
}

TEST(SegmentBuilder, TellsStretchesApartByEverythingButTheirStart)
{
    const auto first = [] {
        auto seen = observation("browser", {0});
        seen.context = FocusedContext::windowTitle("a");
        seen.browserDomain = BrowserDomain::fromText("example.org");
        seen.evidence = ContextEvidence::applicationAndWindow;
        return seen;
    };
    const std::vector<void (*)(ContextObservation&)> changes{
        [](ContextObservation& seen) { seen.application.bundleIdentifier = "other"; },
        [](ContextObservation& seen) { seen.application.displayName = "Other"; },
        [](ContextObservation& seen) { seen.context.text = "b"; },
        [](ContextObservation& seen) { seen.context.kind = FocusedContextKind::documentTitle; },
        [](ContextObservation& seen) { seen.browserDomain.reset(); },
        [](ContextObservation& seen) { seen.browserDomain = BrowserDomain::fromText("example.com"); },
        [](ContextObservation& seen) { seen.evidence = ContextEvidence::applicationOnly; },
    };
    for (const auto change : changes) {
        SegmentBuilder builder(zone("UTC"));
        builder.ingest(first());
        auto second = first();
        second.observedAt = {10};
        change(second);
        EXPECT_EQ(builder.ingest(second).size(), 1U);
    }
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

TEST(SegmentBuilder, NeitherLosesNorInventsTimeWhateverItIsFed)
{
    const std::vector<const char*> zones{"Europe/Berlin",
                                         "America/New_York",
                                         "Asia/Kathmandu",
                                         "Africa/Cairo",
                                         "America/Santiago",
                                         "Pacific/Apia",
                                         "UTC"};
    std::mt19937 random(20261121);
    const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
    for (const char* const identifier : zones) {
        const auto calendar = zone(identifier);
        for (int round = 0; round < 50; ++round) {
            SegmentBuilder builder(calendar);
            Instant now{1'288'000'000.0 + below(600'000'000)};
            const auto start = now;
            std::vector<ActivitySegment> all;
            builder.ingest(GapBegan{GapReason::noObservation, now});
            const auto take = [&](std::vector<ActivitySegment> closed) {
                all.insert(all.end(), closed.begin(), closed.end());
            };
            for (int step = 0; step < 60; ++step) {
                now = now + Seconds{below(5) == 0 ? below(200'000) * 1.0 : below(4000) / 7.0};
                switch (below(4)) {
                case 0:
                    take(builder.ingest(IdleChanged{true, now}));
                    break;
                case 1:
                    take(builder.ingest(GapBegan{static_cast<GapReason>(below(5)), now}));
                    break;
                default:
                    take(builder.ingest(observation(std::string(1, static_cast<char>('a' + below(3))), now)));
                }
            }
            take(builder.close(now));

            std::set<SegmentID> identifiers;
            auto covered = start;
            for (const auto& segment : all) {
                ASSERT_EQ(segment.start, covered) << identifier;
                ASSERT_LT(segment.start, segment.end);
                ASSERT_LE(segment.end, calendar.nextDayStart(segment.start));
                ASSERT_EQ(segment.timeZone, calendar.stamp(segment.start));
                ASSERT_EQ(segment.gapReason.has_value(), segment.kind == ActivityKind::gap);
                identifiers.insert(segment.id);
                covered = segment.end;
            }
            EXPECT_EQ(covered, now);
            EXPECT_EQ(identifiers.size(), all.size());
        }
    }
}

} // namespace
} // namespace stintbook
