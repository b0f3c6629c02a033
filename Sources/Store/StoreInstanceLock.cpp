#include "Store/StoreInstanceLock.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <unistd.h>

#include "Base/Log.h"
#include "Base/Text.h"
#include "Store/StoreFileInspection.h"

namespace stintbook {

namespace {

StoreInstanceLock unguarded(StoreInstanceLock lock)
{
    log::error("Could not open the store lock; this launch is not guarded against a second copy");
    return lock;
}

std::optional<pid_t> holder(int descriptor)
{
    std::array<char, 64> contents{};
    const auto length = pread(descriptor, contents.data(), contents.size(), 0);
    if (length <= 0)
        return std::nullopt;
    const auto text = trimmed({contents.data(), static_cast<std::size_t>(length)});
    std::int32_t number = 0;
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (problem != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

void writeHolder(int descriptor)
{
    const auto text = fmt::format("{}\n", getpid());
    // What the file says only helps to name the holder, so that a full disk does not matter here.
    if (ftruncate(descriptor, 0) == 0 && lseek(descriptor, 0, SEEK_SET) == 0) [[maybe_unused]]
        const auto written = write(descriptor, text.data(), text.size());
}

int lockWithoutWaiting(int descriptor)
{
    int result = 0;
    do
        result = flock(descriptor, LOCK_EX | LOCK_NB);
    while (result != 0 && errno == EINTR);
    return result;
}

} // namespace

std::string message(const StoreHeldElsewhere& held)
{
    if (held.processIdentifier)
        return fmt::format("Another copy of Velloran (process {}) is using this store.",
                           *held.processIdentifier);
    return "Another copy of Velloran is using this store.";
}

std::expected<StoreInstanceLock, StoreHeldElsewhere> StoreInstanceLock::acquire(
    const std::filesystem::path& storeFile)
{
    const int descriptor = open(besideStore(storeFile, ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (descriptor < 0)
        return unguarded(StoreInstanceLock(-1));

    if (lockWithoutWaiting(descriptor) != 0) {
        const bool isHeld = errno == EWOULDBLOCK;
        const auto who = holder(descriptor);
        close(descriptor);
        if (isHeld)
            return std::unexpected(StoreHeldElsewhere{who});
        return unguarded(StoreInstanceLock(-1));
    }
    writeHolder(descriptor);
    return StoreInstanceLock(descriptor);
}

StoreInstanceLock::~StoreInstanceLock()
{
    if (!isGuarded())
        return;
    flock(m_descriptor, LOCK_UN);
    close(m_descriptor);
}

} // namespace stintbook
