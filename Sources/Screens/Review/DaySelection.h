#pragma once

#include <algorithm>
#include <optional>
#include <vector>

#include "Base/Identifier.h"

namespace stintbook {

/// What is chosen of a list whose entries have identifiers, as people choose with clicks and keys.
class DaySelection {
public:
    /// In the order in which they were chosen.
    const std::vector<UUID>& ids() const { return m_ids; }
    bool isEmpty() const { return m_ids.empty(); }
    bool contains(const UUID& id) const { return std::ranges::find(m_ids, id) != m_ids.end(); }
    /// The one that was chosen last, from where arrows go.
    std::optional<UUID> current() const { return m_ids.empty() ? std::nullopt : std::optional(m_ids.back()); }

    void set(std::vector<UUID> ids)
    {
        m_ids = std::move(ids);
        m_anchor = m_ids.empty() ? std::nullopt : std::optional(m_ids.front());
    }
    void toggle(const UUID& id)
    {
        if (std::erase(m_ids, id) == 0)
            m_ids.push_back(id);
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
            m_ids.assign(anchor, end + 1);
        else
            m_ids.assign(std::make_reverse_iterator(anchor + 1), std::make_reverse_iterator(end));
    }

private:
    std::vector<UUID> m_ids;
    std::optional<UUID> m_anchor;
};

} // namespace stintbook
