#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "Base/Try.h"
#include "Domain/PersistenceError.h"
#include "Store/StoreConnection.h"

namespace stintbook {

/// Stored records one after the other, of any number, within the transaction that the caller holds. A record that
/// is unreadable does not end them; errors of the database are thrown.
///
/// An entry is what a row yields: the record or why it could not be read, and where needed what it is stored under.
template <typename Record, typename Entry = Stored<Record>> class StoredRecords {
public:
    using Read = Entry (*)(StoreConnection&, Query& row);

    /// `sql` is a literal.
    template <typename... Values>
    StoredRecords(StoreConnection& connection, std::string_view sql, Read read, const Values&... bound)
        : m_connection(connection)
        , m_rows(connection.query(sql))
        , m_read(read)
    {
        m_rows.bind(bound...);
    }

    /// Absent behind the last one.
    std::optional<Entry> next()
    {
        if (!m_rows.next())
            return std::nullopt;
        return m_read(m_connection, m_rows);
    }

    /// All of them, unless one is unreadable.
    Stored<std::vector<Record>> collect()
    {
        std::vector<Record> records;
        while (auto record = next())
            records.push_back(TRY(*std::move(record)));
        return records;
    }

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
