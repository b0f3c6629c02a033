#include "Store/StoreDatabase.h"

#include <system_error>

#include <fmt/format.h>
#include <sqlite3.h>

#include "Store/StoreFileInspection.h"
#include "Store/StoreInstanceLock.h"
#include "Store/StoreSchema.h"

namespace stintbook {

namespace {

/// From here on a guest that leaves no running copy behind folds the log in itself.
constexpr std::uintmax_t longLog = 4 << 20;

/// A log that only guests have written to would grow until the next recording.
void foldLongLog(const std::filesystem::path& file, StoreConnection& connection)
{
    std::error_code missing;
    const auto size = std::filesystem::file_size(besideStore(file, "-wal"), missing);
    if (missing || size < longLog || connection.isReadOnly())
        return;
    if (const auto lock = StoreInstanceLock::acquire(file); lock && lock->isGuarded())
        connection.database().tryExec("PRAGMA wal_checkpoint(TRUNCATE)");
}

} // namespace

StoreDatabase::Transaction::Transaction(StoreConnection& connection, const char* begin)
    : m_connection(connection)
    , m_isNested(sqlite3_get_autocommit(connection.handle()) == 0)
{
    m_connection.query(m_isNested ? "SAVEPOINT nested" : begin).run();
}

StoreDatabase::Transaction::~Transaction()
{
    // A failure as grave as a full disk has ended the transaction already.
    if (!m_isKept && sqlite3_get_autocommit(m_connection.handle()) == 0)
        m_connection.database().tryExec(m_isNested ? "ROLLBACK TO nested; RELEASE nested" : "ROLLBACK");
    if (m_isRefused)
        overwriteRefused();
}

void StoreDatabase::Transaction::commit()
{
    m_isRefused = !m_isNested && sqlite3_txn_state(m_connection.handle(), "main") == SQLITE_TXN_WRITE;
    m_connection.query(m_isNested ? "RELEASE nested" : "COMMIT").run();
    m_isRefused = false;
    m_isKept = true;
}

/// What could not be synced may stand in the log all the same, complete, and a later process would take it for
/// committed. This connection knows better: its next write begins in the same place.
void StoreDatabase::Transaction::overwriteRefused()
{
    m_connection.database().tryExec(fmt::format("PRAGMA user_version = {}", currentSchemaVersion));
}

StoreDatabase::StoreDatabase(const StoreOpening& opening, std::unique_ptr<StoreConnection> connection)
    : m_file(opening.file)
    , m_role(opening.role)
    , m_connection(std::move(connection))
{
}

StoreDatabase::~StoreDatabase()
{
    if (m_role == StoreRole::guest)
        foldLongLog(m_file, *m_connection);
}

std::shared_ptr<StoreDatabase> StoreDatabase::inMemory()
{
    auto connection = StoreConnection::inMemory();
    applySchemaSteps(*connection, 0, currentSchemaVersion);
    return std::shared_ptr<StoreDatabase>(new StoreDatabase({}, std::move(connection)));
}

Stored<bool> StoreDatabase::foldLog()
{
    const std::scoped_lock lock(m_mutex);
    try {
        // Waiting would keep everybody else from writing.
        const StoreConnection::Impatience impatience(*m_connection);
        auto checkpoint = m_connection->query("PRAGMA wal_checkpoint(TRUNCATE)");
        checkpoint.next();
        return !checkpoint.take<bool>();
    } catch (const SQLite::Exception& exception) {
        if (faultOf(exception, m_connection->handle()) == StoreFault::busy)
            return false;
        return std::unexpected(storeFailure(exception, m_connection->handle()));
    }
}

Stored<void> StoreDatabase::rewrite()
{
    const std::scoped_lock lock(m_mutex);
    try {
        m_connection->execute("VACUUM");
        return {};
    } catch (const SQLite::Exception& exception) {
        return std::unexpected(storeFailure(exception, m_connection->handle()));
    }
}

Stored<std::int64_t> StoreDatabase::dataVersion()
{
    const std::scoped_lock lock(m_mutex);
    try {
        auto version = m_connection->query("PRAGMA data_version");
        version.next();
        // It counts what others commit.
        return version.take<std::int64_t>() + sqlite3_total_changes64(m_connection->handle());
    } catch (const SQLite::Exception& exception) {
        return std::unexpected(storeFailure(exception, m_connection->handle()));
    }
}

} // namespace stintbook
