#include <random>

#include <gmock/gmock.h>

#include "BlockModel.h"
#include "Review/WorkBlockBuilder.h"
#include "Support/RandomWork.h"

namespace stintbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

TEST(WorkBlockBuilder, CoversEveryFreeStretchOfWorkThatIsNotExcludedExactlyOnce)
{
    for (unsigned seed = 1; seed <= 300; ++seed) {
        const RandomDay day(seed);
        const ExclusionEngine exclusion(day.exclusions);
        std::vector<FreeSegment> expected;
        for (const auto& free : day.segments) {
            if (free.segment.kind == ActivityKind::work && !exclusion.excludes(free.segment))
                expected.push_back(free);
        }
        std::ranges::sort(expected, segmentOrder, &FreeSegment::segment);

        std::vector<FreeSegment> covered;
        for (const auto& block : day.blocksBy<WorkBlockBuilder>()) {
            Instant reached = block.start;
            for (const auto& work : block.lineage) {
                ASSERT_EQ(work.segment.start, reached) << "a hole inside a block, seed " << seed;
                ASSERT_EQ(work.review, block.review);
                reached = work.segment.end;
                covered.push_back({work.segment, work.sourceSegmentID});
            }
            ASSERT_EQ(reached, block.end);
            ASSERT_EQ(block.id, block.lineage.front().segment.id.uuid);
        }
        ASSERT_EQ(covered, expected) << "seed " << seed;
    }
}

/// Days written down as stretches that touch; each project is a rule about the application's name.
class WorkBlockBuilderExamples : public testing::Test {
protected:
    WorkBlockBuilderExamples()
    {
        for (const auto* application : {"editor", "mail"}) {
            const auto& project = work.directory().projects()[rules.size()];
            rules.push_back({.id = {work.uuid()},
                             .match = {.applicationBundleIdentifier = application},
                             .clientID = project.clientID,
                             .projectID = project.id});
        }
    }

    SegmentID then(double seconds, const std::string& application, const SegmentReview& review = {})
    {
        ActivitySegment segment{.id = {work.uuid()}, .start = now, .end = now + Seconds{seconds}};
        segment.evidence = ContextEvidence::applicationOnly;
        if (!application.empty())
            segment.application = ApplicationIdentity{application, application};
        now = segment.end;
        segments.push_back({segment, segment.id});
        if (review != SegmentReview())
            reviews[segment.id] = review;
        return segment.id;
    }
    void missing(double seconds) { now = now + Seconds{seconds}; }

    std::vector<WorkBlock> blocks() const
    {
        return WorkBlockBuilder(berlin(), AttributionEngine(rules, work.directory()), ExclusionEngine({}))
            .blocks(segments, reviews);
    }
    /// How many segments each block has.
    std::vector<std::size_t> sizes() const
    {
        std::vector<std::size_t> result;
        for (const auto& block : blocks())
            result.push_back(block.lineage.size());
        return result;
    }

    RandomWork work{5};
    std::vector<AttributionRule> rules;
    Instant now{1.8e9};
    std::vector<FreeSegment> segments;
    SegmentReviews reviews;
    const SegmentReview confirmed{.isConfirmed = true};
};

TEST_F(WorkBlockBuilderExamples, KeepsApartWhatASecondOfMissingTimeSeparates)
{
    then(600, "editor");
    then(600, "editor");
    missing(1);
    then(600, "editor");
    EXPECT_THAT(sizes(), ElementsAre(2, 1));
}

TEST_F(WorkBlockBuilderExamples, FoldsAShortInterruptionIntoTheEarlierNeighbourWithTheSameReview)
{
    then(600, "editor");
    then(90, "mail");
    then(600, "browser");
    EXPECT_THAT(sizes(), ElementsAre(2, 1));
    EXPECT_EQ(blocks()[0].attribution.winningRuleID, rules[0].id);
    EXPECT_THAT(blocks()[0].attribution.conflictingRuleIDs, IsEmpty());
    EXPECT_EQ(blocks()[0].reducedContextSegmentCount, 2);
}

TEST_F(WorkBlockBuilderExamples, FoldsAShortInterruptionIntoTheLaterNeighbourWhenOnlyThatHasItsReview)
{
    then(600, "editor");
    then(90, "mail", confirmed);
    then(600, "editor", confirmed);
    EXPECT_THAT(sizes(), ElementsAre(1, 2));
}

TEST_F(WorkBlockBuilderExamples, JoinsWhatAnInterruptionHadKeptApart)
{
    then(600, "editor");
    then(119, "mail");
    then(600, "editor");
    EXPECT_THAT(sizes(), ElementsAre(3));
    segments.clear();
    then(600, "editor");
    then(120, "mail");
    then(600, "editor");
    EXPECT_THAT(sizes(), ElementsAre(1, 1, 1));
}

TEST_F(WorkBlockBuilderExamples, ChainsShortStretchesOfAnyApplicationWithOneReview)
{
    then(90, "editor");
    then(40, "browser");
    then(100, "mail");
    then(30, "editor", confirmed);
    EXPECT_THAT(sizes(), ElementsAre(3, 1));
    const auto block = blocks()[0];
    EXPECT_EQ(block.application.bundleIdentifier, "mail");
    EXPECT_EQ(block.attribution.winningRuleID, rules[0].id);
    EXPECT_THAT(block.attribution.conflictingRuleIDs, ElementsAre(rules[1].id));
    EXPECT_TRUE(block.isInUnsettledConflict());
}

TEST_F(WorkBlockBuilderExamples, NeverJoinsWorkAcrossMidnight)
{
    now = berlin().nextDayStart(now) - Seconds{600};
    then(600, "editor");
    then(600, "editor");
    EXPECT_THAT(sizes(), ElementsAre(1, 1));
}

TEST_F(WorkBlockBuilderExamples, ExplainsABlockByItsSegmentsOfAMinuteOrMore)
{
    // A rule about the title tells segments of one application and one assignment apart.
    auto second = rules[0];
    second.id = {work.uuid()};
    second.match.titleContains = "report";
    second.priority = -1;
    rules.push_back(second);

    then(59, "editor");
    segments.back().segment.context = FocusedContext::windowTitle("Report");
    then(60, "editor");
    EXPECT_EQ(blocks()[0].attribution.winningRuleID, rules[0].id);
    EXPECT_THAT(blocks()[0].attribution.supportingRuleIDs, IsEmpty());
    segments.back().segment.end = segments.back().segment.end - Seconds{1};
    EXPECT_EQ(blocks()[0].attribution.winningRuleID, second.id);
    EXPECT_THAT(blocks()[0].attribution.supportingRuleIDs, ElementsAre(rules[0].id));
}

TEST_F(WorkBlockBuilderExamples, NamesTheApplicationSeenFirstOfTwoThatShareABlockEvenly)
{
    then(50, "mail");
    then(50, "browser");
    EXPECT_EQ(blocks()[0].application.bundleIdentifier, "mail");
    const auto shares = applicationShares(blocks()[0].lineage);
    ASSERT_EQ(shares.size(), 2U);
    EXPECT_EQ(shares[1].duration, Seconds{50});
    segments.clear();
    then(50, "");
    EXPECT_EQ(blocks()[0].application, (ApplicationIdentity{"unknown", "Unknown application"}));
}

TEST_F(WorkBlockBuilderExamples, LetsReviewsOfTheSourceDecideAboutItsPieces)
{
    then(600, "editor");
    const auto source = segments.back().segment.id;
    segments.back().segment.id = {work.uuid()};
    reviews[source] = {.assignment = AttributionAssignment{{work.uuid()}, {work.uuid()}, false}};
    EXPECT_EQ(blocks()[0].effectiveAssignment(), reviews[source].assignment);
    EXPECT_EQ(blocks()[0].lineage[0].sourceSegmentID, source);
}

} // namespace
} // namespace stintbook
