#pragma once

#include <expected>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include <sys/types.h>

#include "Base/FileDescriptor.h"

namespace stintbook {

/// The error is the system's own words.
using FileWritten = std::expected<void, std::string>;

/// A file that takes another's place in one step: a reader, a crash or a full disk meets what was there before,
/// or all of the new bytes. What is not committed is gone with its object.
///
/// Where the file system can, it has no name until it is whole, so that a killed process leaves nothing behind.
/// A link stays a link to what is replaced. A terminal, a pipe or a device is no file that could be replaced:
/// it is written to when all bytes are there.
class FileReplacement {
public:
    /// The mode is that of a new file, less the process's mask.
    static std::expected<FileReplacement, std::string> begin(const std::filesystem::path& path, mode_t mode);
    ~FileReplacement();
    FileReplacement(FileReplacement&& other) noexcept
        : m_file(std::move(other.m_file))
        , m_draft(std::move(other.m_draft))
        , m_draftName(std::exchange(other.m_draftName, {}))
        , m_device(std::move(other.m_device))
    {
    }
    FileReplacement& operator=(FileReplacement&&) = delete;
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    FileWritten append(std::string_view bytes);
    /// To be called once, after which nothing is appended. When it succeeds, the file is on the disk.
    FileWritten commit();

private:
    FileReplacement(std::filesystem::path file, FileDescriptor draft)
        : m_file(std::move(file))
        , m_draft(std::move(draft))
    {
    }

    std::filesystem::path m_file;
    FileDescriptor m_draft;
    /// Empty as long as the draft has no name.
    std::string m_draftName;
    /// What takes the bytes of the draft in the end, where that is no file.
    FileDescriptor m_device;
};

/// Replaces a file whose bytes are all at hand.
FileWritten replaceFile(const std::filesystem::path& path, std::string_view bytes, mode_t mode);
/// Where the file lies.
std::filesystem::path directoryOf(const std::filesystem::path& file);
/// Has the names of a directory's files outlive a loss of power, as far as the system can.
void syncDirectory(const std::filesystem::path& directory);
/// Removes the drafts of a file that killed processes have left beside it. Nobody replaces the file meanwhile.
void removeLeftDrafts(const std::filesystem::path& path);

/// Bytes that are passed on when all of them are there: an unnamed file among the temporary ones ($TMPDIR, else
/// /var/tmp, as they may be more than memory holds), gone with its object or its process.
class Spool {
public:
    static std::expected<Spool, std::string> begin();

    FileWritten append(std::string_view bytes);
    /// Hands all bytes over, piece by piece.
    FileWritten passTo(const std::function<FileWritten(std::string_view)>& sink);

private:
    explicit Spool(FileDescriptor file)
        : m_file(std::move(file))
    {
    }

    FileDescriptor m_file;
};

} // namespace stintbook
