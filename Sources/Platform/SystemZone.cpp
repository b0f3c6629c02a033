#include "Platform/SystemZone.h"

#include <array>
#include <cstring>
#include <string_view>
#include <utility>

#include <sys/inotify.h>
#include <unistd.h>

namespace stintbook {

SystemZone::SystemZone(EventLoop& loop, Read read, std::filesystem::path directory)
    : m_loop(loop)
    , m_read(std::move(read))
    , m_directory(std::move(directory))
    , m_known(m_read())
{
}

void SystemZone::follow(Follower follower)
{
    m_follower = std::move(follower);
    m_known = m_read();
    m_changes = FileDescriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (!m_changes
        || inotify_add_watch(m_changes.get(), m_directory.c_str(), IN_CREATE | IN_MOVED_TO | IN_DELETE) < 0)
        return;
    m_watch = m_loop.watch(m_changes.get(), EventLoop::Readiness::readable, [this] { handleChanges(); });
}

void SystemZone::stop()
{
    m_follower = {};
    m_watch.reset();
    m_changes.reset();
}

void SystemZone::handleChanges()
{
    bool isZone = false;
    alignas(inotify_event) std::array<char, 4096> buffer{};
    while (true) {
        auto length = read(m_changes.get(), buffer.data(), buffer.size());
        if (length <= 0)
            break;
        for (std::size_t at = 0; at + sizeof(inotify_event) <= static_cast<std::size_t>(length);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            const char* name = buffer.data() + at + sizeof event;
            isZone = isZone || (event.len > 0 && std::string_view(name) == "localtime");
            at += sizeof event + event.len;
        }
    }
    if (!isZone)
        return;
    auto calendar = m_read();
    if (calendar == m_known)
        return;
    m_known = calendar;
    // A copy: the follower may stop this.
    if (auto follower = m_follower)
        follower(calendar);
}

} // namespace stintbook
