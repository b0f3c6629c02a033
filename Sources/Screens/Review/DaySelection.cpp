#include "Screens/Review/DaySelection.h"

#include <unordered_map>

namespace stintbook {

namespace {

/// Of rows that lie there the one that began last. They are in order.
const SubjectRow* rowAt(const std::vector<SubjectRow>& rows, double second)
{
    for (auto row = std::ranges::upper_bound(rows, second, {}, &SubjectRow::start); row != rows.begin();) {
        --row;
        if (row->end > second)
            return &*row;
    }
    return nullptr;
}

} // namespace

std::optional<UUID> neighbour(const std::vector<UUID>& all, const std::optional<UUID>& current, int distance)
{
    if (all.empty())
        return std::nullopt;
    const auto last = static_cast<std::ptrdiff_t>(all.size()) - 1;
    const auto from = std::ranges::find(all, current.value_or(UUID{}));
    const auto next = from == all.end() ? (distance > 0 ? 0 : last)
                                        : std::clamp<std::ptrdiff_t>(from - all.begin() + distance, 0, last);
    return all[static_cast<std::size_t>(next)];
}

std::vector<UUID> rowsOf(const std::vector<UUID>& work, const std::vector<SubjectRow>& rows)
{
    const std::unordered_set<UUID> wanted(work.begin(), work.end());
    std::vector<UUID> found;
    for (const auto& row : rows) {
        if (std::ranges::any_of(row.subjects, [&](const UUID& id) { return wanted.contains(id); }))
            found.push_back(row.id);
    }
    return found;
}

std::vector<UUID> keptRows(const std::vector<UUID>& chosen, const std::vector<SubjectRow>& before,
                           const DayView& now)
{
    std::unordered_map<UUID, double> middles;
    for (const auto& row : before)
        middles.emplace(row.id, (row.start + row.end) / 2);
    std::unordered_set<UUID> there;
    for (const auto& row : now.subjects)
        there.insert(row.id);
    for (const auto& span : now.spans)
        there.insert(span.id);

    std::vector<UUID> rows;
    std::unordered_set<UUID> kept;
    for (auto id : chosen) {
        if (!there.contains(id)) {
            const auto middle = middles.find(id);
            const auto* row = middle == middles.end() ? nullptr : rowAt(now.subjects, middle->second);
            if (row == nullptr)
                continue;
            id = row->id;
        }
        if (kept.insert(id).second)
            rows.push_back(id);
    }
    return rows;
}

} // namespace stintbook
