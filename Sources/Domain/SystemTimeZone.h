#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace stintbook {

/// Where a system says which zone it is in.
struct SystemTimeZoneSources {
    /// The environment's `TZ`: a zone's name or file, with or without a ':' before it. Any other content,
    /// as a POSIX rule, is passed over.
    std::optional<std::string> environment;
    /// A link to the zone's file.
    std::filesystem::path localTimeLink = "/etc/localtime";
    /// A file that holds the zone's name, for systems where the former is a copy.
    std::filesystem::path nameFile = "/etc/timezone";

    static SystemTimeZoneSources ofThisProcess();
};

/// The first of them that names a known zone; "UTC" when none does.
std::string systemTimeZoneIdentifier(const SystemTimeZoneSources& sources);

} // namespace stintbook
