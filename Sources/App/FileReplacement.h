#pragma once

#include <expected>
#include <filesystem>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace stintbook {

/// Writes a file in one step: a reader, a crash or a full disk meets what was there before, or all of the
/// new bytes. The mode is that of a new file, less the process's mask. The error is the system's own words.
std::expected<void, std::string> replaceFile(const std::filesystem::path& path, std::string_view bytes,
                                             mode_t mode);

} // namespace stintbook
