#pragma once

#include <expected>
#include <filesystem>
#include <optional>

#include "Store/StoreOpenProblem.h"

namespace stintbook {

/// What a store's file says of itself.
struct StoreFileState {
    /// From 1 to the current one. The log may hold a later one.
    int schemaVersion = 0;
    /// Whether committed changes wait in the log beside it.
    bool hasLog = false;
};

std::filesystem::path besideStore(const std::filesystem::path& storeFile, std::string_view suffix);

/// Looks at the file with plain reads, so that what is no store, or not ours, is refused before the database
/// library could leave anything beside it. Absent when there is no file.
std::expected<std::optional<StoreFileState>, StoreOpenProblem> inspectStoreFile(
    const std::filesystem::path& file);

} // namespace stintbook
