#pragma once

#include "Store/StoreDatabase.h"

namespace stintbook {

/// Finishes the deletion that an earlier owner of the store has committed but not erased wholly, and forgets one
/// that was not committed. For the owner, when it opens the store.
void finishDeletion(StoreDatabase& database);

} // namespace stintbook
