#include "Review/ReviewedDayApproval.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <iterator>
#include <tuple>

#include <fmt/format.h>

#include "Base/Digest.h"

namespace stintbook {

namespace {

/// The bits of the double, so that the text is exact.
std::uint64_t bits(Instant at)
{
    return std::bit_cast<std::uint64_t>(at.secondsSinceEpoch);
}

std::string text(const ReviewedSourceSlice& slice)
{
    return fmt::format("{}@{:x}-{:x}", slice.segmentID.uuid.lowerCaseText(), bits(slice.start),
                       bits(slice.end));
}

std::string line(const ReviewedWorkItem& item)
{
    std::vector<std::string> slices;
    std::ranges::transform(item.slices, std::back_inserter(slices), text);
    // The length keeps a "|" inside a description from being taken for a separator.
    const auto description = item.description.value_or("");
    return fmt::format("id={}|start={:x}|end={:x}|origin={}|client={}|project={}|billable={}|description="
                       "{}:{}|slices={}",
                       item.id.uuid.lowerCaseText(), bits(item.start), bits(item.end), rawValue(item.origin),
                       item.assignment.clientID.uuid.lowerCaseText(),
                       item.assignment.projectID.uuid.lowerCaseText(), item.assignment.isBillable ? 1 : 0,
                       description.size(), description, fmt::join(slices, ","));
}

} // namespace

ReviewedDayStatus status(const std::optional<ReviewedDayApproval>& approval,
                         const ReviewedDayRevision& current)
{
    return approval && approval->revision == current ? ReviewedDayStatus::ready : ReviewedDayStatus::notReady;
}

std::string canonicalText(const std::vector<ReviewedWorkItem>& items)
{
    std::vector<const ReviewedWorkItem*> included;
    for (const auto& item : items) {
        if (item.isIncluded())
            included.push_back(&item);
    }
    std::ranges::sort(included, {}, [](const auto* item) { return std::tuple(item->start, item->id); });

    std::vector<std::string> lines;
    std::ranges::transform(included, std::back_inserter(lines), [](const auto* item) { return line(*item); });
    return fmt::format("{}", fmt::join(lines, "\n"));
}

ReviewedDayRevision revision(const std::vector<ReviewedWorkItem>& items)
{
    return {hexadecimal(sha256(canonicalText(items)))};
}

} // namespace stintbook
