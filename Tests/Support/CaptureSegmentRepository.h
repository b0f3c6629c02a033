#pragma once

#include <algorithm>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "Capture/ActivitySegmentRepository.h"

namespace stintbook {

/// Segments in memory; refuses to save for as long as it is told to, and counts how often it was asked.
class CaptureSegmentRepository final : public ActivitySegmentRepository {
public:
    Stored<void> save(std::span<const ActivitySegment> segments) override
    {
        ++saveCount;
        if (refuses && refuses())
            return std::unexpected(StoreFailure{"disk full"});
        saved.insert(saved.end(), segments.begin(), segments.end());
        return {};
    }
    Stored<std::vector<ActivitySegment>> segments(Interval overlapping) const override
    {
        std::vector<ActivitySegment> found;
        std::ranges::copy_if(saved, std::back_inserter(found), [&](const ActivitySegment& segment) {
            return segment.interval().overlaps(overlapping);
        });
        std::ranges::sort(found, segmentOrder);
        return found;
    }
    Stored<std::vector<ObservedApplication>> observedApplications() const override
    {
        return std::vector<ObservedApplication>{};
    }
    Stored<std::optional<ActivitySegment>> latestSegment() const override
    {
        if (saved.empty())
            return std::nullopt;
        return *std::ranges::max_element(saved, segmentOrder);
    }

    std::function<bool()> refuses;
    int saveCount = 0;
    /// In the order in which they were taken.
    std::vector<ActivitySegment> saved;
};

/// "0-100 work editor 'notes.txt' @docs.example.org", "100-160 gap systemSleep"
inline std::string described(const ActivitySegment& segment)
{
    auto text = fmt::format("{}-{} {}", segment.start.secondsSinceEpoch, segment.end.secondsSinceEpoch,
                            rawValue(segment.kind));
    if (segment.application)
        text += " " + segment.application->bundleIdentifier;
    if (!segment.context.isNone())
        text += segment.context.kind == FocusedContextKind::windowTitle
            ? fmt::format(" '{}'", segment.context.text)
            : fmt::format(" «{}»", segment.context.text);
    if (segment.browserDomain)
        text += " @" + segment.browserDomain->host();
    if (segment.gapReason)
        text += fmt::format(" {}", rawValue(*segment.gapReason));
    return text;
}

inline std::vector<std::string> described(std::span<const ActivitySegment> segments)
{
    std::vector<std::string> texts;
    for (const auto& segment : segments)
        texts.push_back(described(segment));
    return texts;
}

} // namespace stintbook
