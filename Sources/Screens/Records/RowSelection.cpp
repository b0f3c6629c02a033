#include "Screens/Records/RowSelection.h"

#include <algorithm>

namespace stintbook {

void RowSelection::selectOnly(const QString& id)
{
    m_ids = {id};
    m_current = m_anchor = id;
}

void RowSelection::toggle(const QString& id)
{
    if (m_ids.erase(id) == 0)
        m_ids.insert(id);
    m_current = m_anchor = id;
}

void RowSelection::extendTo(const QString& id, const QStringList& list)
{
    const auto anchor = list.indexOf(m_anchor);
    const auto end = list.indexOf(id);
    if (anchor < 0 || end < 0) {
        selectOnly(id);
        return;
    }
    const auto first = list.begin() + std::min(anchor, end);
    const auto last = list.begin() + std::max(anchor, end);
    m_ids = std::set(first, last + 1);
    m_current = id;
}

void RowSelection::select(const QStringList& ids)
{
    if (ids.isEmpty())
        return;
    m_ids = std::set(ids.begin(), ids.end());
    m_current = m_anchor = ids.front();
}

void RowSelection::keepOnly(const QStringList& list)
{
    const std::set<QString> known(list.begin(), list.end());
    std::erase_if(m_ids, [&](const QString& id) { return !known.contains(id); });
    if (!known.contains(m_current))
        m_current.clear();
    if (!known.contains(m_anchor))
        m_anchor.clear();
}

} // namespace stintbook
