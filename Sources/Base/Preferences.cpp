#include "Base/Preferences.h"

#include <utility>

namespace stintbook {

std::optional<PreferenceValue> InMemoryPreferences::value(std::string_view key) const
{
    const auto found = m_values.find(key);
    return found == m_values.end() ? std::nullopt : std::optional(found->second);
}

bool InMemoryPreferences::store(std::string_view key, std::optional<PreferenceValue> value)
{
    if (value)
        m_values.insert_or_assign(std::string(key), *std::move(value));
    else if (const auto found = m_values.find(key); found != m_values.end())
        m_values.erase(found);
    return true;
}

} // namespace stintbook
