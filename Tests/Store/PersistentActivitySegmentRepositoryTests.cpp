#include <random>

#include <gmock/gmock.h>

#include "StoreSamples.h"

namespace stintbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct SegmentStore : testing::Test {
    std::shared_ptr<StoreDatabase> database = StoreDatabase::inMemory();
    PersistentActivitySegmentRepository repository{database};

    std::vector<ActivitySegment> all() const { return *repository.segments(allTime); }
};

TEST_F(SegmentStore, GivesBackEveryField)
{
    auto titled = sampleSegment(0);
    titled.application = ApplicationIdentity{"", "it's \"quoted\"; --"};
    titled.context = FocusedContext::documentTitle("日本語 🗓️" + std::string("\0b", 2));
    titled.browserDomain = BrowserDomain::fromText("docs.example.org");
    std::vector<ActivitySegment> segments{titled, sampleSegment(1)};
    for (std::uint32_t minute = 10; const auto& [reason, raw] : RawValues<GapReason>::table)
        segments.push_back({.id = numbered<SegmentID>(minute),
                            .start = sampleSegment(minute).start,
                            .end = sampleSegment(minute++).start + Seconds{1e-6},
                            .kind = ActivityKind::gap,
                            .origin = SegmentOrigin::manual,
                            .timeZone = {"Asia/Kathmandu", 20700},
                            .gapReason = reason});
    ASSERT_TRUE(repository.save(segments));
    EXPECT_EQ(all(), segments);
}

TEST_F(SegmentStore, FindsWhatOverlapsWhereverLongSegmentsStart)
{
    std::mt19937 random(7);
    const auto anywhere = [&] {
        return sampleDay.start + Seconds{static_cast<double>(random() % 1'000'000)};
    };
    std::vector<ActivitySegment> segments;
    for (std::uint32_t index = 0; index < 400; ++index) {
        auto segment = sampleSegment(index);
        segment.start = anywhere();
        segment.end = segment.start + Seconds{index % 50 == 0 ? 90'000.0 : 1.0 + random() % 2000};
        segments.push_back(segment);
    }
    ASSERT_TRUE(repository.save(segments));
    std::ranges::sort(segments, segmentOrder);
    for (int round = 0; round < 50; ++round) {
        const auto from = anywhere();
        const Interval interval{from, from + Seconds{86'400}};
        std::vector<ActivitySegment> expected;
        std::ranges::copy_if(segments, std::back_inserter(expected), [&](const ActivitySegment& segment) {
            return segment.interval().overlaps(interval);
        });
        EXPECT_EQ(*repository.segments(interval), expected);
        EXPECT_THAT(*repository.segments({from, from}), IsEmpty());
        EXPECT_THAT(*repository.segments({interval.end, from}), IsEmpty());
    }
}

TEST_F(SegmentStore, LeavesOutWhatOnlyTouchesTheIntervalAndNamesWhatStartsLast)
{
    EXPECT_EQ(*repository.latestSegment(), std::nullopt);
    ASSERT_TRUE(repository.save(sampleSegments(0, 5)));
    EXPECT_THAT(*repository.segments(sampleSegment(1).interval()), ElementsAre(sampleSegment(1)));
    EXPECT_EQ(*repository.latestSegment(), sampleSegment(4));
}

TEST_F(SegmentStore, ReplacesASegmentOfTheSameIdentifierAndSavesAllOfACallOrNone)
{
    auto segment = sampleSegment(0);
    segment.browserDomain = BrowserDomain::fromText("example.org");
    ASSERT_TRUE(repository.save({{segment}}));
    segment.browserDomain.reset();
    segment.end = segment.end + Seconds{30};
    ASSERT_TRUE(repository.save({{segment}}));
    EXPECT_THAT(all(), ElementsAre(segment));
    EXPECT_EQ(number(*database, "SELECT count(*) FROM SegmentBrowserDomain"), 0);

    auto empty = sampleSegment(2);
    empty.end = empty.start;
    EXPECT_FALSE(repository.save({{sampleSegment(1), empty}}));
    EXPECT_THAT(all(), ElementsAre(segment));
}

TEST_F(SegmentStore, ListsEachApplicationOnceByItsLatestName)
{
    auto segments = sampleSegments(0, 6);
    segments[0].application = {"b", "Old name"};
    segments[1].application = {"a", "A"};
    segments[2].application = {"b", "New name"};
    segments[3].application.reset();
    segments[4].application = {"", ""};
    segments[5].application.reset();
    ASSERT_TRUE(repository.save(segments));
    EXPECT_THAT(*repository.observedApplications(),
                ElementsAre(ObservedApplication{"", "", segments[4].end},
                            ObservedApplication{"a", "A", segments[1].end},
                            ObservedApplication{"b", "New name", segments[2].end}));
}

} // namespace
} // namespace stintbook
