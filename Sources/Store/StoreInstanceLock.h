#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include <sys/types.h>

#include "Base/FileDescriptor.h"

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

    bool isGuarded() const { return bool(m_lockFile); }

private:
    explicit StoreInstanceLock(FileDescriptor lockFile)
        : m_lockFile(std::move(lockFile))
    {
    }

    /// Locked as long as it is open; none when the launch is not guarded.
    FileDescriptor m_lockFile;
};

} // namespace stintbook
