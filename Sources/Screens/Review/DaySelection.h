#pragma once

#include <algorithm>
#include <iterator>
#include <optional>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Base/Identifier.h"
#include "Screens/Review/DayView.h"

namespace stintbook {

/// What is chosen of a list whose entries have identifiers, as people choose with clicks and keys.
class DaySelection {
public:
    /// In the order in which they were chosen.
    const std::vector<UUID>& ids() const { return m_ids; }
    bool contains(const UUID& id) const { return m_known.contains(id); }
    /// The one that was chosen last, from where arrows go.
    std::optional<UUID> current() const { return m_ids.empty() ? std::nullopt : std::optional(m_ids.back()); }

    void set(std::vector<UUID> ids)
    {
        m_anchor = ids.empty() ? std::nullopt : std::optional(ids.front());
        replace(std::move(ids));
    }
    void toggle(const UUID& id)
    {
        if (m_known.insert(id).second) {
            m_ids.push_back(id);
        } else {
            m_known.erase(id);
            std::erase(m_ids, id);
        }
        m_anchor = id;
    }
    /// From where the selection began to `id`, in the order of `all`.
    void extend(const UUID& id, const std::vector<UUID>& all)
    {
        const auto anchor = std::ranges::find(all, m_anchor.value_or(id));
        const auto end = std::ranges::find(all, id);
        if (anchor == all.end() || end == all.end())
            return set({id});
        if (anchor <= end)
            replace({anchor, end + 1});
        else
            replace({std::make_reverse_iterator(anchor + 1), std::make_reverse_iterator(end)});
    }

private:
    void replace(std::vector<UUID> ids)
    {
        m_ids = std::move(ids);
        m_known = {m_ids.begin(), m_ids.end()};
    }

    std::vector<UUID> m_ids;
    std::unordered_set<UUID> m_known;
    std::optional<UUID> m_anchor;
};

/// The one of `all` that lies so far from the current one, or else the first, the last; absent where there is none.
std::optional<UUID> neighbour(const std::vector<UUID>& all, const std::optional<UUID>& current, int distance);

/// The rows in which any of the work is shown.
std::vector<UUID> rowsOf(const std::vector<UUID>& work, const std::vector<SubjectRow>& rows);

/// What is still chosen of a day that was read again: what is gone gives way to what lies where it lay.
std::vector<UUID> keptRows(const std::vector<UUID>& chosen, const std::vector<SubjectRow>& before,
                           const DayView& now);

} // namespace stintbook
