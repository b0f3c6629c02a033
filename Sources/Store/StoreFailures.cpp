#include "Store/StoreFailures.h"

#include <cerrno>
#include <string>
#include <system_error>

#include <fmt/format.h>
#include <sqlite3.h>

namespace stintbook {

namespace {

int systemError(sqlite3* connection)
{
    return connection == nullptr ? 0 : sqlite3_system_errno(connection);
}

} // namespace

StoreFault faultOf(const SQLite::Exception& exception, sqlite3* connection)
{
    // Memory shared between connections is extended in ways that report no more than an input/output error.
    if (const int error = systemError(connection); error == ENOSPC || error == EDQUOT) {
        if (exception.getErrorCode() != SQLITE_CONSTRAINT)
            return StoreFault::diskFull;
    }
    switch (exception.getErrorCode()) {
    case SQLITE_FULL:
        return StoreFault::diskFull;
    case SQLITE_CORRUPT:
        return StoreFault::damaged;
    case SQLITE_NOTADB:
        return StoreFault::notAStore;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return StoreFault::busy;
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return StoreFault::readOnly;
    case SQLITE_CANTOPEN:
        return StoreFault::cannotOpen;
    case SQLITE_IOERR:
        return StoreFault::inputOutput;
    default:
        return StoreFault::other;
    }
}

std::string causeOf(const SQLite::Exception& exception, sqlite3* connection)
{
    const int error = systemError(connection);
    const bool isOfTheSystem = faultOf(exception, connection) == StoreFault::inputOutput && error != 0;
    return isOfTheSystem ? std::generic_category().message(error) : exception.what();
}

StoreFailure storeFailure(const SQLite::Exception& exception, sqlite3* connection)
{
    switch (faultOf(exception, connection)) {
    case StoreFault::diskFull:
        return {"The disk that holds the store is full."};
    case StoreFault::damaged:
    case StoreFault::notAStore:
        return {"The store's file is damaged."};
    case StoreFault::busy:
        return {"Another program is using the store. Try again in a moment."};
    case StoreFault::readOnly:
        return {"The store cannot be written to."};
    case StoreFault::cannotOpen:
        return {"The store's file could not be opened."};
    case StoreFault::inputOutput:
        return {fmt::format("The store's file could not be read or written ({}).",
                            causeOf(exception, connection))};
    case StoreFault::other:
        break;
    }
    return {fmt::format("The store reported a problem ({}).", exception.what())};
}

} // namespace stintbook
