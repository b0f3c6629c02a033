#include "Review/WorkTitles.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_map>

namespace stintbook {

std::vector<WorkTitle> workTitles(std::span<const WorkBlockSegment> segments)
{
    std::vector<WorkTitle> titles;
    std::unordered_map<std::string_view, std::size_t> places;
    for (const auto& entry : segments) {
        const auto& context = entry.segment.context;
        if (context.text.empty())
            continue;
        const auto [place, isNew] = places.emplace(context.text, titles.size());
        if (isNew)
            titles.push_back({context.text, {}});
        titles[place->second].duration += entry.segment.length();
    }
    std::ranges::stable_sort(titles, std::ranges::greater{}, &WorkTitle::duration);
    return titles;
}

} // namespace stintbook
