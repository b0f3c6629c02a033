#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <string>

#include "Base/Executor.h"
#include "Base/Preferences.h"

namespace stintbook {

/// Choices that hold at once and are written on a thread of their own, so that nobody waits for a disk. Any thread
/// may call it.
class DeferredPreferences final : public PreferenceStoring {
public:
    /// The store outlives this.
    explicit DeferredPreferences(PreferenceStoring& store)
        : m_store(store)
    {
    }
    /// Writes what is left.
    ~DeferredPreferences() override = default;

    /// Told, on the writing thread, whether the last choice could be kept. Before the first one.
    void follow(std::function<void(bool isKept)> follower) { m_follower = std::move(follower); }

    std::optional<PreferenceValue> value(std::string_view key) const override;
    /// True: it is not known yet whether the value can be kept for the next start.
    bool store(std::string_view key, std::optional<PreferenceValue> value) override;
    void refresh() override { m_store.refresh(); }

private:
    void write(const std::string& key);

    PreferenceStoring& m_store;
    std::function<void(bool isKept)> m_follower;
    mutable std::mutex m_lock;
    std::map<std::string, std::optional<PreferenceValue>, std::less<>> m_unwritten;
    // Ends before what its jobs work with.
    SerialExecutor m_executor{"preferences"};
};

} // namespace stintbook
