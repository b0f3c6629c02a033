#pragma once

#include <filesystem>
#include <functional>

namespace stintbook {

/// Notices that a file is written to, by whomever. Rests while nobody writes.
class StoreChangeWatching {
public:
    virtual ~StoreChangeWatching() = default;
    /// Calls back on a thread of its own, once or more often after each change, until it is destroyed or asked
    /// to watch another file.
    virtual void watch(const std::filesystem::path& file, std::function<void()> changed) = 0;
};

} // namespace stintbook
