#include "Review/FreeSegments.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>
#include <unordered_map>

#include "Base/Digest.h"
#include "Domain/SegmentOrder.h"

namespace stintbook {

namespace {

/// What slices cover, by the segment they were cut from; each list by start.
using Coverage = std::unordered_map<SegmentID, std::vector<Interval>>;

Coverage coverage(std::span<const ReviewedWorkItem> items)
{
    Coverage covered;
    for (const auto& item : items) {
        for (const auto& slice : item.slices)
            covered[slice.segmentID].push_back(slice.interval());
    }
    for (auto& [segment, intervals] : covered)
        std::ranges::sort(intervals, {}, &Interval::start);
    return covered;
}

std::vector<Interval> remainder(Interval whole, const std::vector<Interval>& covered)
{
    std::vector<Interval> left;
    for (const auto& [start, end] : covered) {
        if (const Interval before{whole.start, std::min(start, whole.end)}; !before.isEmpty())
            left.push_back(before);
        whole.start = std::max(whole.start, end);
    }
    if (!whole.isEmpty())
        left.push_back(whole);
    return left;
}

SegmentID pieceID(SegmentID source, Instant start)
{
    std::string bytes(source.uuid.bytes.begin(), source.uuid.bytes.end());
    const auto bits = std::bit_cast<std::uint64_t>(start.secondsSinceEpoch);
    for (int shift = 56; shift >= 0; shift -= 8)
        bytes += static_cast<char>(bits >> shift);
    return {UUID::fromDigest(sha256(bytes))};
}

FreeSegment piece(const ActivitySegment& source, Interval interval)
{
    FreeSegment free{source, source.id};
    if (interval != source.interval())
        free.segment.id = pieceID(source.id, interval.start);
    free.segment.start = interval.start;
    free.segment.end = interval.end;
    return free;
}

} // namespace

std::vector<FreeSegment> freeSegments(std::span<const ActivitySegment> segments, Interval bounds,
                                      std::span<const ReviewedWorkItem> items)
{
    static const std::vector<Interval> nothing;
    const auto covered = coverage(items);
    std::vector<FreeSegment> free;
    free.reserve(segments.size());
    for (const auto& segment : segments) {
        const Interval clipped{std::max(segment.start, bounds.start), std::min(segment.end, bounds.end)};
        const auto slices = covered.find(segment.id);
        for (const auto& interval : remainder(clipped, slices == covered.end() ? nothing : slices->second))
            free.push_back(piece(segment, interval));
    }
    sortBySegments(free, &FreeSegment::segment);
    return free;
}

} // namespace stintbook
