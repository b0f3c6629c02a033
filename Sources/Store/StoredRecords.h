#pragma once

#include <optional>

#include "Domain/PersistenceError.h"
#include "Store/StoreConnection.h"

namespace stintbook {

/// Stored records one after the other, of any number, within the transaction that the caller holds. Errors of
/// the database are thrown.
template <typename Record> class StoredRecords {
public:
    using Read = Stored<Record> (*)(StoreConnection&, Query& row);

    /// `sql` is a literal.
    StoredRecords(StoreConnection& connection, std::string_view sql, Read read)
        : m_connection(connection)
        , m_rows(connection.query(sql))
        , m_read(read)
    {
    }

    /// Absent behind the last one.
    std::optional<Stored<Record>> next()
    {
        if (!m_rows.next())
            return std::nullopt;
        return m_read(m_connection, m_rows);
    }

    /// All of them, each as it was read or why it could not be.
    template <typename Visit> void walk(Visit visit)
    {
        while (auto record = next())
            visit(*std::move(record));
    }

private:
    StoreConnection& m_connection;
    Query m_rows;
    Read m_read;
};

} // namespace stintbook
