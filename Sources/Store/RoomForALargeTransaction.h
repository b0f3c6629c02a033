#pragma once

#include "Store/StoreConnection.h"

namespace stintbook {

/// Keeps the pages of a large transaction in memory for its duration, instead of writing them again and again;
/// otherwise the little that the library takes by itself will do.
class RoomForALargeTransaction {
public:
    explicit RoomForALargeTransaction(StoreConnection& connection)
        : m_connection(connection)
    {
        m_connection.execute("PRAGMA cache_size = -32000");
    }
    ~RoomForALargeTransaction() { m_connection.database().tryExec("PRAGMA cache_size = -2000"); }
    RoomForALargeTransaction(const RoomForALargeTransaction&) = delete;
    RoomForALargeTransaction& operator=(const RoomForALargeTransaction&) = delete;

private:
    StoreConnection& m_connection;
};

} // namespace stintbook
