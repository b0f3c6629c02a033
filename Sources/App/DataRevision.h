#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "App/OpenedStore.h"
#include "App/Ports/StoreChangeWatching.h"
#include "Base/Executor.h"
#include "Base/TimeSource.h"

namespace stintbook {

/// Counts the times that stored data changed under whoever shows it: recorded or deleted here, or changed by
/// another process.
///
/// Confined to the main executor. While nobody writes to the store, nothing of this wakes up.
class DataRevision {
public:
    /// Writes that follow each other so closely are one change.
    static constexpr Seconds settlingTime{0.2};

    /// The executor and its timers outlive this. `raised` is told on the main executor.
    DataRevision(Executor& main, Timers& timers, std::function<void()> raised);

    std::int64_t value() const { return m_value; }
    void raise();
    /// From now on also when anything was committed to the store, by whomever.
    void follow(const OpenedStore& store, std::shared_ptr<Executor> elsewhere, StoreChangeWatching& changes);

private:
    void written();
    void ask();

    Executor& m_main;
    Timers& m_timers;
    std::function<void()> m_raised;
    std::int64_t m_value = 0;
    std::optional<Confined<StoreDatabase>> m_store;
    /// Of the store, as it was asked last.
    std::optional<std::int64_t> m_version;
    std::unique_ptr<Timers::Scheduled> m_settling;
    /// What comes back after this one's end finds this gone.
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace stintbook
