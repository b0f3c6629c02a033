#pragma once

#include <expected>
#include <filesystem>
#include <string>

#include "Store/StoreConnection.h"
#include "Store/StoreOpenProblem.h"

/// Creating and migrating stores. The caller is the only process that does so.
namespace stintbook {

/// Makes an empty store of the current version. It appears whole under its name or not at all.
std::expected<void, StoreOpenProblem> createStore(const std::filesystem::path& file,
                                                  const std::string& fileSystem);

/// Takes an open store of an earlier version to the current one, in one transaction; nothing happens to one of
/// the current version. First a copy is kept beside it, named after its version.
std::expected<void, StoreOpenProblem> migrateStore(const std::filesystem::path& file,
                                                   StoreConnection& connection,
                                                   const std::string& fileSystem);

} // namespace stintbook
