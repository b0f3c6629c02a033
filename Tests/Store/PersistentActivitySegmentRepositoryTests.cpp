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

TEST_F(SegmentStore, GivesBackEveryFieldAndOddText)
{
    std::vector<ActivitySegment> segments;
    const std::vector<std::string> texts = {"", "it's \"quoted\"; --", "日本語 🗓️ é", std::string("a\0b", 3),
                                            "x\ny"};
    for (std::uint32_t minute = 0; const auto& text : texts) {
        auto segment = sampleSegment(minute++);
        segment.application = ApplicationIdentity{text, text};
        segment.context =
            minute % 2 == 0 ? FocusedContext::windowTitle(text) : FocusedContext::documentTitle(text);
        segment.browserDomain = BrowserDomain::fromText("docs.example.org");
        segments.push_back(segment);
    }
    for (std::uint32_t minute = 10; const auto& [reason, raw] : RawValues<GapReason>::table) {
        auto gap = sampleSegment(minute++);
        gap.kind = ActivityKind::gap;
        gap.application.reset();
        gap.context = FocusedContext::none();
        gap.evidence = ContextEvidence::none;
        gap.gapReason = reason;
        gap.timeZone = {"Asia/Kathmandu", 20700};
        gap.origin = SegmentOrigin::manual;
        gap.end = gap.start + Seconds{1e-6};
        segments.push_back(gap);
    }
    ASSERT_TRUE(repository.save(segments));
    EXPECT_EQ(all(), segments);
}

TEST_F(SegmentStore, LeavesOutWhatOnlyTouchesTheInterval)
{
    ASSERT_TRUE(repository.save(sampleSegments(0, 5)));
    const auto second = sampleSegment(1);
    EXPECT_THAT(*repository.segments({second.start, second.end}), ElementsAre(second));
    EXPECT_THAT(*repository.segments({second.start, second.start}), IsEmpty());
    EXPECT_THAT(*repository.segments({second.end, second.start}), IsEmpty());
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
    }
}

TEST_F(SegmentStore, ReplacesASegmentOfTheSameIdentifier)
{
    auto segment = sampleSegment(0);
    segment.browserDomain = BrowserDomain::fromText("example.org");
    ASSERT_TRUE(repository.save({{segment}}));
    segment.browserDomain.reset();
    segment.end = segment.end + Seconds{30};
    ASSERT_TRUE(repository.save({{segment}}));
    EXPECT_THAT(all(), ElementsAre(segment));
    EXPECT_EQ(number(*database, "SELECT count(*) FROM SegmentBrowserDomain"), 0);
}

TEST_F(SegmentStore, SavesAllSegmentsOfACallOrNone)
{
    auto segments = sampleSegments(0, 3);
    segments[2].end = segments[2].start;
    const auto saved = repository.save(segments);
    ASSERT_FALSE(saved);
    EXPECT_TRUE(message(saved.error()).starts_with("The store reported a problem"));
    EXPECT_THAT(all(), IsEmpty());
}

TEST_F(SegmentStore, NamesTheSegmentThatStartsLast)
{
    EXPECT_EQ(*repository.latestSegment(), std::nullopt);
    ASSERT_TRUE(repository.save(sampleSegments(3, 4)));
    EXPECT_EQ(*repository.latestSegment(), sampleSegment(6));
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

TEST_F(SegmentStore, SavesOnlyWhatIsMissingWhenAskedTo)
{
    ASSERT_TRUE(repository.save(sampleSegments(0, 2)));
    auto changed = sampleSegments(0, 4);
    changed[1].end = changed[1].end + Seconds{1};
    EXPECT_EQ(*repository.saveMissing(changed), 2);
    EXPECT_EQ(all(), sampleSegments(0, 4));
}

} // namespace
} // namespace stintbook
