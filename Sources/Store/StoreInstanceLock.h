#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include <sys/types.h>

namespace stintbook {

/// Another copy holds the store.
struct StoreHeldElsewhere {
    /// Absent when the lock file does not say.
    std::optional<pid_t> processIdentifier;

    friend bool operator==(const StoreHeldElsewhere&, const StoreHeldElsewhere&) = default;
};
std::string message(const StoreHeldElsewhere& held);

/// Keeps a second copy away from one store, for as long as it lives.
///
/// Only the advisory lock counts: the lock file stays, and what a dead process left in it does no harm.
class StoreInstanceLock {
public:
    /// Never waits. Where the lock file cannot be opened, the launch goes on unguarded, which is logged.
    static std::expected<StoreInstanceLock, StoreHeldElsewhere> acquire(
        const std::filesystem::path& storeFile);

    ~StoreInstanceLock();
    StoreInstanceLock(const StoreInstanceLock&) = delete;
    StoreInstanceLock& operator=(const StoreInstanceLock&) = delete;
    StoreInstanceLock(StoreInstanceLock&& other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    StoreInstanceLock& operator=(StoreInstanceLock&& other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }

    bool isGuarded() const { return m_descriptor >= 0; }

private:
    explicit StoreInstanceLock(int descriptor)
        : m_descriptor(descriptor)
    {
    }

    int m_descriptor;
};

} // namespace stintbook
