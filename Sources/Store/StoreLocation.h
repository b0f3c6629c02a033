#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>

#include "Base/BuildInformation.h"
#include "Base/Environment.h"

namespace stintbook {

/// A development build was pointed at the installed copy's data.
struct RealStoreRefusal {
    std::filesystem::path realDirectory;

    friend bool operator==(const RealStoreRefusal&, const RealStoreRefusal&) = default;
};

/// A directory or file could not be made or copied.
struct StoreFileSystemFailure {
    std::filesystem::path path;
    /// The system's own words.
    std::string reason;
};

using StoreLocationProblem = std::variant<RealStoreRefusal, StoreFileSystemFailure>;

/// The home directory, absent when unknown, is shown as "~".
std::string message(const StoreLocationProblem& problem,
                    const std::optional<std::filesystem::path>& home = std::nullopt);

struct StoreLocationRequest {
    /// Absent: the user's data directory, $XDG_DATA_HOME or ~/.local/share.
    std::optional<std::filesystem::path> baseDirectory;
    Environment environment = processEnvironment();
    BuildKind kind = buildKind();
};

/// The store's file; its directory exists afterwards. An installed build first carries over a store of the
/// earlier layout ("Stintbook/Stintbook.store").
std::expected<std::filesystem::path, StoreLocationProblem> storeLocation(
    const StoreLocationRequest& request = {});

} // namespace stintbook
