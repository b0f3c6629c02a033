#include "Platform/StoreFileWatch.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <tuple>
#include <utility>

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "Base/Log.h"

namespace stintbook {

namespace {

void waitForChanges(int changes, int end, const std::function<void()>& changed)
{
    alignas(inotify_event) std::array<char, 4096> buffer{};
    while (true) {
        std::array<pollfd, 2> descriptors{pollfd{changes, POLLIN, 0}, pollfd{end, POLLIN, 0}};
        if (poll(descriptors.data(), descriptors.size(), -1) < 0 && errno != EINTR)
            return;
        if (descriptors[1].revents != 0)
            return;
        if (descriptors[0].revents == 0)
            continue;
        while (read(changes, buffer.data(), buffer.size()) > 0) { }
        changed();
    }
}

} // namespace

StoreFileWatch::~StoreFileWatch()
{
    stop();
}

void StoreFileWatch::stop()
{
    if (!m_thread.joinable())
        return;
    const std::uint64_t one = 1;
    std::ignore = write(m_end.get(), &one, sizeof one);
    m_thread.join();
}

void StoreFileWatch::watch(const std::filesystem::path& file, std::function<void()> changed)
{
    stop();
    m_changes = FileDescriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    m_end = FileDescriptor(eventfd(0, EFD_CLOEXEC));
    if (!m_changes || !m_end || inotify_add_watch(m_changes.get(), file.c_str(), IN_MODIFY) < 0) {
        log::error("What other programs write to {} will not be noticed: {}", file.string(),
                   std::strerror(errno));
        return;
    }
    m_thread = std::thread([changes = m_changes.get(), end = m_end.get(), changed = std::move(changed)] {
        waitForChanges(changes, end, changed);
    });
    pthread_setname_np(m_thread.native_handle(), "store-watch");
}

} // namespace stintbook
