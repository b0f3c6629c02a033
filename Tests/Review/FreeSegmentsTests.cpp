#include <algorithm>
#include <map>

#include <gmock/gmock.h>

#include "Review/FreeSegments.h"
#include "Support/RandomWork.h"

namespace stintbook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr Instant noon{1.8e9};

Interval between(double from, double to)
{
    return {noon + Seconds{from}, noon + Seconds{to}};
}

class FreeSegments : public testing::Test {
protected:
    void recorded(double from, double to)
    {
        segments.push_back(work.segment(noon + Seconds{from}, Seconds{to - from}));
    }
    void reviewed(std::size_t segment, double from, double to)
    {
        const auto [start, end] = between(from, to);
        items.push_back({.id = {work.uuid()},
                         .start = start,
                         .end = end,
                         .slices = {{segments[segment].id, start, end}}});
        if (work.oneIn(3))
            items.back().disposition = ReviewedItemDisposition::ignored;
    }
    std::vector<FreeSegment> free(double from, double to) const
    {
        return freeSegments(segments, between(from, to), items);
    }

    RandomWork work{13};
    std::vector<ActivitySegment> segments;
    std::vector<ReviewedWorkItem> items;
};

TEST_F(FreeSegments, NamePiecesByTheirSourceAndTheirStart)
{
    recorded(0, 100);
    const auto whole = free(0, 100);
    EXPECT_THAT(whole, ElementsAre(FreeSegment{segments[0], segments[0].id}));
    reviewed(0, 40, 60);
    const auto pieces = free(0, 100);
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_NE(pieces[0].segment.id, whole[0].segment.id);
    EXPECT_NE(pieces[0].segment.id, pieces[1].segment.id);
    EXPECT_EQ(pieces[1].sourceSegmentID, segments[0].id);
    // A piece keeps its name while what follows it changes.
    reviewed(0, 90, 100);
    EXPECT_EQ(free(0, 100)[1].segment.id, pieces[1].segment.id);
    EXPECT_EQ(free(0, 70)[1].segment.id, pieces[1].segment.id);
    EXPECT_EQ(pieces[0].segment.id.uuid.bytes[6] >> 4, 8);

    segments[0].id = *SegmentID::parse("00112233-4455-4677-8899-AABBCCDDEEFF");
    EXPECT_EQ(free(0, 10)[0].segment.id.text(), "4502E8CB-4612-825F-8BE6-2FB52B420001");
}

TEST_F(FreeSegments, OfDaysThatTouchHoldEverySecondOnce)
{
    for (int round = 0; round < 200; ++round) {
        segments.clear();
        items.clear();
        for (std::size_t i = 1 + work.below(5); i > 0; --i) {
            const auto from = static_cast<double>(work.below(50));
            recorded(from, from + 1 + static_cast<double>(work.below(50)));
        }
        // Counts, for each second of each segment, the slices that cover it.
        std::map<std::pair<SegmentID, double>, int> slices;
        for (std::size_t i = work.below(6); i > 0; --i) {
            const auto segment = work.below(segments.size());
            const auto from = static_cast<double>(work.below(90));
            const auto to = from + 1 + static_cast<double>(work.below(20));
            reviewed(segment, from, to);
            for (double second = from; second < to; ++second)
                ++slices[{segments[segment].id, second}];
        }
        std::map<std::pair<SegmentID, double>, int> pieces;
        const auto cut = static_cast<double>(work.below(100));
        for (const auto& half : {free(0, cut), free(cut, 100)}) {
            for (const auto& piece : half) {
                for (Instant at = piece.segment.start; at < piece.segment.end; at = at + Seconds{1})
                    ++pieces[{piece.sourceSegmentID, (at - noon).value}];
            }
        }
        for (const auto& segment : segments) {
            for (Instant at = segment.start; at < segment.end; at = at + Seconds{1}) {
                const std::pair second(segment.id, (at - noon).value);
                ASSERT_EQ(pieces[second], slices.contains(second) ? 0 : 1) << "round " << round;
                pieces.erase(second);
            }
        }
        ASSERT_THAT(pieces, IsEmpty());
    }
}

} // namespace
} // namespace stintbook
