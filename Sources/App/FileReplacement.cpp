#include "App/FileReplacement.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace stintbook {

namespace {

bool writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

void syncDirectory(const std::filesystem::path& directory)
{
    const int descriptor =
        ::open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

std::expected<void, std::string> writeInPlace(const std::filesystem::path& device, std::string_view bytes)
{
    const int descriptor = ::open(device.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0)
        return std::unexpected(std::strerror(errno));
    const bool isWhole = writeAll(descriptor, bytes);
    const int reason = errno;
    ::close(descriptor);
    if (!isWhole)
        return std::unexpected(std::strerror(reason));
    return {};
}

} // namespace

std::expected<void, std::string> replaceFile(const std::filesystem::path& path, std::string_view bytes,
                                             mode_t mode)
{
    // A link stays a link to what is replaced; a terminal or a pipe is no file that could be replaced.
    std::error_code ignored;
    const auto canonical = std::filesystem::weakly_canonical(path, ignored);
    const auto& file = canonical.empty() ? path : canonical;
    if (std::filesystem::exists(file, ignored) && std::filesystem::is_other(file, ignored))
        return writeInPlace(file, bytes);

    // A name of its own beside the file: nothing else that lies there is touched.
    auto fresh = file.string() + ".XXXXXX";
    const int descriptor = ::mkostemp(fresh.data(), O_CLOEXEC);
    if (descriptor < 0)
        return std::unexpected(std::strerror(errno));
    const mode_t mask = ::umask(0);
    ::umask(mask);
    const bool isWhole =
        ::fchmod(descriptor, mode & ~mask) == 0 && writeAll(descriptor, bytes) && ::fsync(descriptor) == 0;
    const int reason = errno;
    ::close(descriptor);
    if (isWhole && ::rename(fresh.c_str(), file.c_str()) == 0) {
        syncDirectory(file.parent_path());
        return {};
    }
    const std::string words = std::strerror(isWhole ? errno : reason);
    ::unlink(fresh.c_str());
    return std::unexpected(words);
}

} // namespace stintbook
