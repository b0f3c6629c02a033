#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Store/StoreConnection.h"

namespace stintbook {

/// Which layout a store has: `PRAGMA user_version`, from 1 on.
inline constexpr int currentSchemaVersion = 9;
/// `PRAGMA application_id`: "Vell".
inline constexpr std::int32_t storeApplicationID = 0x56656C6C;

/// What leads from the version before to this one, from 1 to the current one. Never changed once shipped: new
/// information comes as a new table keyed by its owner's identifier.
std::string_view schemaStep(int version);

/// Runs the steps after `from` up to `to` and stores the version; the caller holds the transaction.
void applySchemaSteps(StoreConnection& connection, int from, int to);

/// In the order of their names.
std::vector<std::string> tableNames(StoreConnection& connection);
/// A digest over tables with their columns, indices and whatever else a database declares. It does not depend
/// on the wording of the declarations, which other releases of SQLite may keep in another form.
std::string layoutDigest(StoreConnection& connection);
/// What it is after the steps up to `version`.
std::string_view expectedLayoutDigest(int version);

} // namespace stintbook
