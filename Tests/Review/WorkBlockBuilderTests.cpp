#include <random>

#include <gtest/gtest.h>

#include "BlockModel.h"
#include "Review/WorkBlockBuilder.h"
#include "Support/RandomWork.h"

namespace stintbook {
namespace {

CalendarContext berlin()
{
    return CalendarContext::inZone("Europe/Berlin").value();
}

/// Some hours around a midnight, with rules and corrections of their own.
class RandomDay {
public:
    explicit RandomDay(unsigned seed)
        : work(seed)
        , rules(work.rules(work.below(12)))
    {
        if (work.oneIn(2))
            exclusions.push_back({.id = {work.uuid()}, .match = work.match()});
        const std::vector<SegmentReview> corrections{
            {.isIgnored = true},
            {.isConfirmed = true},
            {.assignment = AttributionAssignment{{work.uuid()}, {work.uuid()}, true}}};
        const std::size_t calmness = 1 + work.below(5);
        const bool hasUnknownWork = work.oneIn(4);
        const auto midnight = berlin().nextDayStart({1.8e9});
        Instant at = midnight - Seconds{static_cast<double>(work.below(3000))};
        std::optional<SegmentReview> correction;
        for (std::size_t count = 5 + work.below(60); count > 0; --count) {
            auto segment = work.segment(at, length(calmness));
            if (at < midnight && midnight < segment.end)
                segment.end = midnight;
            // Work tends to stay in one application.
            if (!segments.empty() && !work.oneIn(3))
                segment.application = segments.back().segment.application;
            // No application, and one of the name that stands for none, differ and yet dominate alike.
            if (hasUnknownWork && work.oneIn(3))
                segment.application = work.oneIn(2) ? std::optional(unknownApplication()) : std::nullopt;
            if (work.oneIn(25))
                segment.kind = work.oneIn(2) ? ActivityKind::idle : ActivityKind::gap;
            if (work.oneIn(12))
                correction =
                    work.oneIn(2) ? std::optional<SegmentReview>() : work.anyOf<SegmentReview>(corrections);
            const SegmentID source{work.uuid()};
            if (correction)
                reviews[source] = *correction;
            segments.push_back({segment, source});
            // Mostly they touch; now and then time is missing, or was lived twice.
            at = segment.end + Seconds{work.oneIn(25) ? 1.0 : work.oneIn(60) ? -5.0 : 0.0};
        }
    }

    template <typename Builder> std::vector<WorkBlock> blocksBy() const
    {
        return Builder(berlin(), AttributionEngine(rules, work.directory()), ExclusionEngine(exclusions))
            .blocks(segments, reviews);
    }

    RandomWork work;
    std::vector<AttributionRule> rules;
    std::vector<ExclusionRule> exclusions;
    std::vector<FreeSegment> segments;
    SegmentReviews reviews;

private:
    Seconds length(std::size_t calmness)
    {
        static const std::vector<double> edges{59.75, 60, 119.75, 120, 180};
        if (work.oneIn(4))
            return {work.anyOf<double>(edges)};
        return {0.25 * static_cast<double>(1 + work.below(120 * calmness))};
    }
};

TEST(WorkBlockBuilder, AgreesWithBlocksBuiltByHandHoweverTheInputIsOrdered)
{
    std::size_t joined = 0;
    for (unsigned seed = 1; seed <= 1000; ++seed) {
        RandomDay day(seed);
        const auto expected = day.blocksBy<BlockModel>();
        joined += day.segments.size() - expected.size();
        std::ranges::shuffle(day.segments, std::minstd_rand(seed));
        ASSERT_EQ(day.blocksBy<WorkBlockBuilder>(), expected) << "seed " << seed;
    }
    EXPECT_GT(joined, 1000U);
}

TEST(DominantApplication, IsTheOneSeenFirstOfTwoThatShareTheTimeEvenlyOrUnknown)
{
    std::vector<WorkBlockSegment> lineage(3);
    EXPECT_EQ(dominantApplication(lineage), (ApplicationIdentity{"unknown", "Unknown application"}));
    for (auto& entry : lineage)
        entry.segment.end = entry.segment.start + Seconds{60};
    lineage[1].segment.application = {"mail", "Mail"};
    lineage[2].segment.application = {"browser", "Browser"};
    EXPECT_EQ(dominantApplication(lineage).displayName, "Mail");
}

} // namespace
} // namespace stintbook
