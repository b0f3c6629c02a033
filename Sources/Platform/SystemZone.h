#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "Base/FileDescriptor.h"
#include "Capture/CalendarContextProviding.h"
#include "Platform/EventLoop.h"

namespace stintbook {

/// The calendar in the system's zone, and its changes: /etc/localtime is replaced, so its directory is
/// watched.
class SystemZone final : public CalendarContextProviding {
public:
    using Read = std::function<CalendarContext()>;

    explicit SystemZone(EventLoop& loop, Read read = CalendarContext::system,
                        std::filesystem::path directory = "/etc");

    CalendarContext current() override { return m_read(); }
    void follow(Follower follower) override;
    void stop() override;

private:
    void handleChanges();

    EventLoop& m_loop;
    Read m_read;
    std::filesystem::path m_directory;
    CalendarContext m_known;
    Follower m_follower;
    FileDescriptor m_changes;
    std::unique_ptr<EventLoop::Watch> m_watch;
};

} // namespace stintbook
