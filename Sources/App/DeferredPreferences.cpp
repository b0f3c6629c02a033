#include "App/DeferredPreferences.h"

#include <utility>

namespace stintbook {

std::optional<PreferenceValue> DeferredPreferences::value(std::string_view key) const
{
    {
        const std::scoped_lock guard(m_lock);
        if (const auto unwritten = m_unwritten.find(key); unwritten != m_unwritten.end())
            return unwritten->second;
    }
    return m_store.value(key);
}

bool DeferredPreferences::store(std::string_view key, std::optional<PreferenceValue> value)
{
    const std::scoped_lock guard(m_lock);
    m_unwritten.insert_or_assign(std::string(key), std::move(value));
    m_executor.post([this, key = std::string(key)] { write(key); });
    return true;
}

/// The value stays until it is written, or until a later one has come instead.
void DeferredPreferences::write(const std::string& key)
{
    std::optional<PreferenceValue> value;
    {
        const std::scoped_lock guard(m_lock);
        const auto unwritten = m_unwritten.find(key);
        if (unwritten == m_unwritten.end())
            return;
        value = unwritten->second;
    }
    const bool isKept = m_store.store(key, value);
    {
        const std::scoped_lock guard(m_lock);
        const auto unwritten = m_unwritten.find(key);
        if (unwritten != m_unwritten.end() && unwritten->second == value)
            m_unwritten.erase(unwritten);
    }
    if (m_follower)
        m_follower(isKept);
}

} // namespace stintbook
