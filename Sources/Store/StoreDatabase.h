#pragma once

#include <cstdint>
#include <expected>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <type_traits>

#include "Domain/PersistenceError.h"
#include "Store/StoreConnection.h"
#include "Store/StoreFailures.h"
#include "Store/StoreOpenProblem.h"

namespace stintbook {

enum class StoreRole {
    /// The process that holds the instance lock. Its connection alone folds the log into the database.
    owner,
    /// Any other, beside a running copy or without one. Where the store's directory cannot be written to, a
    /// guest may still read.
    guest,
    /// A guest that changes nothing: it neither creates a store nor migrates it, and leaves the log as it is.
    reader,
};

struct StoreOpening {
    std::filesystem::path file;
    StoreRole role = StoreRole::owner;
    /// A registered SQLite VFS; empty for the system's.
    std::string fileSystem;
};

/// An open store of the current version. Any thread may call it: every call is one transaction, and calls of
/// several threads wait for each other. A call from within another's work is part of that transaction: what
/// it wrote goes when it fails, and stays only when the outer one is kept.
class StoreDatabase {
public:
    /// Creates a store that is missing and migrates one of an earlier version, after a copy was made beside it
    /// ("Velloran.store.v3-backup"). Its directory exists already. A guest takes the instance lock for the
    /// moment in which it creates or migrates.
    static std::expected<std::shared_ptr<StoreDatabase>, StoreOpenProblem> open(const StoreOpening& opening);
    /// A store without a file, for previews.
    static std::shared_ptr<StoreDatabase> inMemory();

    ~StoreDatabase();
    StoreDatabase(const StoreDatabase&) = delete;
    StoreDatabase& operator=(const StoreDatabase&) = delete;

    /// Runs `work(StoreConnection&)`, which answers an expected, over one unchanging state of the store.
    template <typename Work> auto read(Work work) -> std::invoke_result_t<Work, StoreConnection&>
    {
        return transact("BEGIN", work);
    }
    /// The same, alone in writing. Kept as a whole when the work has a value; otherwise nothing is changed.
    template <typename Work> auto write(Work work) -> std::invoke_result_t<Work, StoreConnection&>
    {
        return transact("BEGIN IMMEDIATE", work);
    }

    /// Folds the log into the database and leaves it empty; false while another connection reads an older
    /// state, which is not waited for. For the owner.
    Stored<bool> foldLog();
    /// Writes the whole database anew, in memory first: no page keeps a byte of what is not stored any more. For
    /// the owner of a small store.
    Stored<void> rewrite();

    /// Changes whenever something was committed, through this connection or another.
    Stored<std::int64_t> dataVersion();

    /// Empty for a store in memory.
    const std::filesystem::path& file() const { return m_file; }
    bool isReadOnly() const { return m_connection->isReadOnly(); }

private:
    /// Rolls back what was not committed; inside another one, what was written since it began.
    class Transaction {
    public:
        Transaction(StoreConnection& connection, const char* begin);
        ~Transaction();
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;
        void commit();

    private:
        void overwriteRefused();

        StoreConnection& m_connection;
        bool m_isNested;
        bool m_isKept = false;
        bool m_isRefused = false;
    };

    StoreDatabase(const StoreOpening& opening, std::unique_ptr<StoreConnection> connection);

    template <typename Work>
    auto transact(const char* begin, Work& work) -> std::invoke_result_t<Work, StoreConnection&>
    {
        const std::scoped_lock lock(m_mutex);
        try {
            Transaction transaction(*m_connection, begin);
            try {
                auto result = work(*m_connection);
                if (result)
                    transaction.commit();
                return result;
            } catch (const SQLite::Exception& exception) {
                // Before the rollback, which forgets what the system said.
                return std::unexpected(storeFailure(exception, m_connection->handle()));
            }
        } catch (const SQLite::Exception& exception) {
            return std::unexpected(storeFailure(exception, m_connection->handle()));
        }
    }

    std::recursive_mutex m_mutex;
    std::filesystem::path m_file;
    StoreRole m_role;
    std::unique_ptr<StoreConnection> m_connection;
};

} // namespace stintbook
