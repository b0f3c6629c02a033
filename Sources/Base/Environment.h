#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace stintbook {

/// The variables of a process.
using Environment = std::map<std::string, std::string>;

/// That of this process.
Environment processEnvironment();

/// $HOME, else what the system knows of this process's user.
std::filesystem::path homeDirectory(const Environment& environment);
/// Where the user's programs keep what was chosen: $XDG_CONFIG_HOME, or ~/.config where that is no absolute path.
std::filesystem::path configurationDirectory(const Environment& environment);
/// Where they keep their data: $XDG_DATA_HOME, or ~/.local/share.
std::filesystem::path dataDirectory(const Environment& environment);

} // namespace stintbook
