#include "Store/StoreInstanceLock.h"

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <unistd.h>

#include "Base/Log.h"
#include "Base/NumberText.h"
#include "Base/Text.h"
#include "Store/StoreFileInspection.h"

namespace stintbook {

namespace {

std::optional<pid_t> holder(int descriptor)
{
    std::array<char, 64> contents{};
    const auto length = pread(descriptor, contents.data(), contents.size(), 0);
    if (length <= 0)
        return std::nullopt;
    return numberIn<pid_t>(trimmed({contents.data(), static_cast<std::size_t>(length)}));
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
    FileDescriptor lockFile(
        open(besideStore(storeFile, ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644));
    if (lockFile && lockWithoutWaiting(lockFile.get()) != 0) {
        if (errno == EWOULDBLOCK)
            return std::unexpected(StoreHeldElsewhere{holder(lockFile.get())});
        lockFile.reset();
    }
    if (lockFile)
        writeHolder(lockFile.get());
    else
        log::error("Could not open the store lock; this launch is not guarded against a second copy");
    return StoreInstanceLock(std::move(lockFile));
}

} // namespace stintbook
