#include "Review/BriefActivity.h"

#include <algorithm>
#include <optional>
#include <string>

#include "Base/Digest.h"

namespace stintbook {

namespace {

/// Idle time and gaps, without overlap, in time order.
std::vector<Interval> pauses(const std::vector<FreeSegment>& freeSegments)
{
    std::vector<Interval> pauses;
    for (const auto& free : freeSegments) {
        if (free.segment.kind != ActivityKind::work)
            pauses.push_back(free.segment.interval());
    }
    std::ranges::sort(pauses, {}, &Interval::start);
    std::vector<Interval> united;
    for (const auto& pause : pauses) {
        if (!united.empty() && pause.start <= united.back().end)
            united.back().end = std::max(united.back().end, pause.end);
        else
            united.push_back(pause);
    }
    return united;
}

bool isInterrupted(Interval between, const std::vector<Interval>& pauses)
{
    const auto next = std::ranges::upper_bound(pauses, between.start, {}, &Interval::end);
    return !between.isEmpty() && next != pauses.end() && next->overlaps(between);
}

} // namespace

std::vector<BriefActivity> briefActivities(const std::vector<WorkBlock>& blocks,
                                           const std::vector<FreeSegment>& freeSegments)
{
    const auto interruptions = pauses(freeSegments);
    std::vector<BriefActivity> result;
    std::optional<BriefActivity> open;
    std::string identifiers;
    const auto close = [&] {
        if (open) {
            open->id = UUID::fromDigest(sha256(identifiers));
            result.push_back(*open);
        }
        open.reset();
        identifiers.clear();
    };

    for (const auto& block : blocks) {
        const bool isBrief = block.interval().length() < shortestBlock;
        if (!isBrief || (open && isInterrupted({open->end, block.start}, interruptions)))
            close();
        if (!isBrief)
            continue;
        if (!open)
            open = BriefActivity{.start = block.start, .end = block.end};
        open->end = std::max(open->end, block.end);
        for (const auto& work : block.lineage) {
            const auto& bytes = work.segment.id.uuid.bytes;
            identifiers.append(bytes.begin(), bytes.end());
        }
    }
    close();
    return result;
}

} // namespace stintbook
