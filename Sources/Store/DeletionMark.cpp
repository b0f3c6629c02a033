#include "Store/DeletionMark.h"

#include <cerrno>
#include <charconv>
#include <fstream>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include "Store/StoreFileInspection.h"

namespace stintbook {

namespace {

std::filesystem::path markFile(const std::filesystem::path& storeFile)
{
    return besideStore(storeFile, ".deletion");
}

std::string encoded(const DeletionMark& mark)
{
    return fmt::format("{} {} {}\n", mark.extent.start.secondsSinceEpoch, mark.extent.end.secondsSinceEpoch,
                       mark.takesReviewedWork ? "reviewed" : "observed");
}

std::optional<double> number(const std::string& text)
{
    double value = 0;
    const auto* end = text.data() + text.size();
    const auto [stop, problem] = std::from_chars(text.data(), end, value);
    return problem == std::errc{} && stop == end ? std::optional(value) : std::nullopt;
}

/// Written bytes, or a name, that stay when the power fails.
bool isOnDisk(const std::filesystem::path& path, int flags, std::string_view bytes)
{
    const int descriptor = ::open(path.c_str(), flags | O_CLOEXEC, 0600);
    if (descriptor < 0)
        return false;
    const auto size = static_cast<ssize_t>(bytes.size());
    const bool isWritten =
        (size == 0 || ::write(descriptor, bytes.data(), bytes.size()) == size) && ::fsync(descriptor) == 0;
    const int reason = errno;
    ::close(descriptor);
    errno = reason;
    return isWritten;
}

} // namespace

std::optional<DeletionMark> readDeletionMark(const std::filesystem::path& storeFile)
{
    std::ifstream stream(markFile(storeFile));
    std::string from;
    std::string to;
    std::string what;
    stream >> from >> to >> what;
    const auto start = number(from);
    const auto end = number(to);
    if (!start || !end || (what != "reviewed" && what != "observed"))
        return std::nullopt;
    return DeletionMark{.extent = {{*start}, {*end}}, .takesReviewedWork = what == "reviewed"};
}

std::expected<void, std::error_code> writeDeletionMark(const std::filesystem::path& storeFile,
                                                       const DeletionMark& mark)
{
    const auto file = markFile(storeFile);
    const auto directory = file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
    if (isOnDisk(file, O_WRONLY | O_CREAT | O_TRUNC, encoded(mark))
        && isOnDisk(directory, O_RDONLY | O_DIRECTORY, {}))
        return {};
    return std::unexpected(std::error_code(errno, std::generic_category()));
}

void removeDeletionMark(const std::filesystem::path& storeFile)
{
    std::error_code ignored;
    std::filesystem::remove(markFile(storeFile), ignored);
}

} // namespace stintbook
