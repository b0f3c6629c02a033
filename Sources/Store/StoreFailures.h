#pragma once

#include <string>

#include <SQLiteCpp/Exception.h>

#include "Domain/PersistenceError.h"

struct sqlite3;

namespace stintbook {

/// What kept the database from doing something, as far as the reaction to it differs.
enum class StoreFault { diskFull, damaged, notAStore, busy, readOnly, cannotOpen, inputOutput, other };

StoreFault faultOf(const SQLite::Exception& exception, sqlite3* connection);

/// The system's words for a failed read or write, else the database's.
std::string causeOf(const SQLite::Exception& exception, sqlite3* connection);

/// A sentence in plain words; the database's own where it has none.
StoreFailure storeFailure(const SQLite::Exception& exception, sqlite3* connection);

} // namespace stintbook
