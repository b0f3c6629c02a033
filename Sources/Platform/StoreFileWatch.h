#pragma once

#include <thread>

#include "App/Ports/StoreChangeWatching.h"
#include "Base/FileDescriptor.h"

namespace stintbook {

/// The kernel tells of writes to the file; a thread waits for them.
class StoreFileWatch final : public StoreChangeWatching {
public:
    StoreFileWatch() = default;
    ~StoreFileWatch() override;
    StoreFileWatch(const StoreFileWatch&) = delete;
    StoreFileWatch& operator=(const StoreFileWatch&) = delete;

    void watch(const std::filesystem::path& file, std::function<void()> changed) override;

private:
    void stop();

    FileDescriptor m_changes;
    FileDescriptor m_end;
    std::thread m_thread;
};

} // namespace stintbook
