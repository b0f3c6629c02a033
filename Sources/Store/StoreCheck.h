#pragma once

#include <functional>

#include "Store/StoreDatabase.h"
#include "Store/StoreFinding.h"

namespace stintbook {

/// Reads everything that a store holds and reports what is wrong with it, one finding after the other: damage of
/// the database, records that cannot be read, and records that contradict themselves or each other. Damage
/// ends the reading of the table in which it is met, not the check.
///
/// Writes nothing. The time that it takes grows with what is stored, the memory does not.
Stored<void> checkStore(StoreDatabase& database, const std::function<void(const StoreFinding&)>& report);

} // namespace stintbook
