#include "Review/WorkBlock.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

namespace stintbook {

std::vector<WorkBlock::ApplicationShare> applicationShares(std::span<const WorkBlockSegment> segments)
{
    std::vector<WorkBlock::ApplicationShare> shares;
    std::map<std::pair<std::string_view, std::string_view>, std::size_t> places;
    for (const auto& entry : segments) {
        const auto& application = entry.segment.application;
        if (!application)
            continue;
        const auto [place, isNew] =
            places.try_emplace(std::pair(std::string_view(application->bundleIdentifier),
                                         std::string_view(application->displayName)),
                               shares.size());
        if (isNew)
            shares.push_back({*application, {}});
        shares[place->second].duration += entry.segment.length();
    }
    std::ranges::stable_sort(shares, std::ranges::greater(), &WorkBlock::ApplicationShare::duration);
    return shares;
}

ApplicationIdentity dominantApplication(std::span<const WorkBlockSegment> segments)
{
    auto shares = applicationShares(segments);
    if (shares.empty() || shares.front().duration <= Seconds{0})
        return unknownApplication();
    return std::move(shares.front().application);
}

} // namespace stintbook
