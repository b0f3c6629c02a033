#include "Base/FileReplacement.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Base/Identifier.h"
#include "Base/Try.h"

namespace stintbook {

namespace {

std::unexpected<std::string> lastError()
{
    return std::unexpected(std::generic_category().message(errno));
}

FileWritten writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return lastError();
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

/// Hands over everything that a file holds.
FileWritten readAll(int descriptor, const std::function<FileWritten(std::string_view)>& sink)
{
    std::array<char, 65'536> piece{};
    for (off_t offset = 0;;) {
        const auto count = ::pread(descriptor, piece.data(), piece.size(), offset);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return lastError();
        if (count == 0)
            return {};
        TRY(sink({piece.data(), static_cast<std::size_t>(count)}));
        offset += count;
    }
}

/// By which name the kernel knows an open file.
std::string nameOfDescriptor(int descriptor)
{
    return fmt::format("/proc/self/fd/{}", descriptor);
}

/// None where the file system or the kernel's own one cannot do without a name.
FileDescriptor unnamedFile(const std::filesystem::path& directory, mode_t mode)
{
    FileDescriptor file(::open(directory.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, mode));
    if (file && ::access(nameOfDescriptor(file.get()).c_str(), F_OK) != 0)
        file.reset();
    return file;
}

/// What is to be replaced, where a link leads there.
std::filesystem::path replacedFile(const std::filesystem::path& path)
{
    std::error_code ignored;
    auto canonical = std::filesystem::weakly_canonical(path, ignored);
    return canonical.empty() ? path : canonical;
}

constexpr std::size_t draftDigits = 8;

/// A name of its own beside the file: nothing else that lies there is touched.
std::string draftName(const std::filesystem::path& file)
{
    return fmt::format("{}.{:.{}}", file.string(), UUID::random().lowerCaseText(), draftDigits);
}

bool isDraftName(std::string_view name, std::string_view file)
{
    return name.size() == file.size() + 1 + draftDigits && name.starts_with(file) && name[file.size()] == '.'
        && name.find_first_not_of("0123456789abcdef", file.size() + 1) == std::string_view::npos;
}

std::filesystem::path temporaryDirectory()
{
    const char* const chosen = std::getenv("TMPDIR");
    return chosen != nullptr && *chosen != '\0' ? chosen : "/var/tmp";
}

/// A file without a name from the beginning, or from right after it.
std::expected<FileDescriptor, std::string> temporaryFile()
{
    const auto directory = temporaryDirectory();
    if (auto file = unnamedFile(directory, 0600))
        return file;
    auto name = (directory / "velloran-XXXXXX").string();
    FileDescriptor file(::mkostemp(name.data(), O_CLOEXEC));
    if (!file)
        return lastError();
    ::unlink(name.c_str());
    return file;
}

} // namespace

std::expected<FileReplacement, std::string> FileReplacement::begin(const std::filesystem::path& path,
                                                                   mode_t mode)
{
    const auto file = replacedFile(path);
    std::error_code ignored;
    if (std::filesystem::exists(file, ignored) && std::filesystem::is_other(file, ignored)) {
        FileDescriptor device(::open(file.c_str(), O_WRONLY | O_CLOEXEC));
        if (!device)
            return lastError();
        FileReplacement replacement(file, TRY(temporaryFile()));
        replacement.m_device = std::move(device);
        return replacement;
    }

    if (auto draft = unnamedFile(directoryOf(file), mode))
        return FileReplacement(file, std::move(draft));
    auto name = draftName(file);
    FileDescriptor draft(::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (!draft)
        return lastError();
    FileReplacement replacement(file, std::move(draft));
    replacement.m_draftName = std::move(name);
    return replacement;
}

FileReplacement::~FileReplacement()
{
    if (!m_draftName.empty())
        ::unlink(m_draftName.c_str());
}

FileWritten FileReplacement::append(std::string_view bytes)
{
    return writeAll(m_draft.get(), bytes);
}

FileWritten FileReplacement::commit()
{
    if (m_device) {
        return readAll(m_draft.get(),
                       [&](std::string_view bytes) { return writeAll(m_device.get(), bytes); });
    }
    if (::fsync(m_draft.get()) != 0)
        return lastError();
    if (m_draftName.empty()) {
        const auto link = [&](const std::string& name) {
            return ::linkat(AT_FDCWD, nameOfDescriptor(m_draft.get()).c_str(), AT_FDCWD, name.c_str(),
                            AT_SYMLINK_FOLLOW)
                == 0;
        };
        if (link(m_file)) {
            syncDirectory(directoryOf(m_file));
            return {};
        }
        // Only a file with a name can take the name of another.
        if (errno != EEXIST)
            return lastError();
        auto name = draftName(m_file);
        if (!link(name))
            return lastError();
        m_draftName = std::move(name);
    }
    if (::rename(m_draftName.c_str(), m_file.c_str()) != 0)
        return lastError();
    m_draftName.clear();
    syncDirectory(directoryOf(m_file));
    return {};
}

std::filesystem::path directoryOf(const std::filesystem::path& file)
{
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

void syncDirectory(const std::filesystem::path& directory)
{
    const FileDescriptor descriptor(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor)
        ::fsync(descriptor.get());
}

FileWritten replaceFile(const std::filesystem::path& path, std::string_view bytes, mode_t mode)
{
    auto replacement = TRY(FileReplacement::begin(path, mode));
    TRY(replacement.append(bytes));
    return replacement.commit();
}

void removeLeftDrafts(const std::filesystem::path& path)
{
    const auto file = replacedFile(path);
    std::vector<std::filesystem::path> drafts;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(directoryOf(file), error), end; !error && entry != end;
         entry.increment(error)) {
        if (isDraftName(entry->path().filename().native(), file.filename().native()))
            drafts.push_back(entry->path());
    }
    for (const auto& draft : drafts)
        std::filesystem::remove(draft, error);
}

std::expected<Spool, std::string> Spool::begin()
{
    return Spool(TRY(temporaryFile()));
}

FileWritten Spool::append(std::string_view bytes)
{
    return writeAll(m_file.get(), bytes);
}

FileWritten Spool::passTo(const std::function<FileWritten(std::string_view)>& sink)
{
    return readAll(m_file.get(), sink);
}

} // namespace stintbook
