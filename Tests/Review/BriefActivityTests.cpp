#include <gmock/gmock.h>

#include "Review/BriefActivity.h"
#include "Support/RandomWork.h"

namespace stintbook {
namespace {

using testing::ElementsAre;

class BriefActivities : public testing::Test {
protected:
    void block(double from, double to)
    {
        WorkBlock block{.start = at(from), .end = at(to)};
        block.lineage = {{.segment = {.id = {work.uuid()}, .start = block.start, .end = block.end}}};
        block.id = block.lineage.front().segment.id.uuid;
        blocks.push_back(block);
    }
    void recorded(double from, double to, ActivityKind kind)
    {
        free.push_back({.segment = {.start = at(from), .end = at(to), .kind = kind}});
    }
    static Instant at(double seconds) { return Instant{1.8e9} + Seconds{seconds}; }
    static Interval between(double from, double to) { return {at(from), at(to)}; }

    std::vector<Interval> times() const
    {
        std::vector<Interval> times;
        for (const auto& activity : briefActivities(blocks, free))
            times.push_back(activity.interval());
        return times;
    }

    RandomWork work{17};
    std::vector<WorkBlock> blocks;
    std::vector<FreeSegment> free;
};

TEST_F(BriefActivities, GatherShortBlocksUpToTheNextLongOne)
{
    block(0, 100);
    block(110, 229.75);
    block(300, 420);
    block(420, 430);
    EXPECT_THAT(times(), ElementsAre(between(0, 229.75), between(420, 430)));
}

TEST_F(BriefActivities, EndWhereIdleTimeOrAGapLiesBetweenTwoBlocks)
{
    block(0, 50);
    block(60, 70);
    block(80, 90);
    block(100, 110);
    recorded(72, 73, ActivityKind::gap);
    recorded(95, 98, ActivityKind::idle);
    recorded(50, 60, ActivityKind::work);
    // Idle time beside blocks, not between two.
    recorded(110, 500, ActivityKind::idle);
    EXPECT_THAT(times(), ElementsAre(between(0, 70), between(80, 90), between(100, 110)));
    recorded(-500, 51, ActivityKind::idle);
    EXPECT_EQ(times().size(), 4U);
}

TEST_F(BriefActivities, AreNamedByTheirSegments)
{
    block(0, 50);
    block(50, 60);
    blocks[0].lineage[0].segment.id = *SegmentID::parse("00112233-4455-4677-8899-AABBCCDDEEFF");
    blocks[1].lineage[0].segment.id = *SegmentID::parse("F0112233-4455-4677-8899-AABBCCDDEEFF");
    EXPECT_EQ(briefActivities(blocks, free)[0].id.upperCaseText(), "B37AE057-C93D-897F-BA71-320B34F9B384");
}

} // namespace
} // namespace stintbook
