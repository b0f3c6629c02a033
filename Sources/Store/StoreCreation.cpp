#include "Store/StoreCreation.h"

#include <cerrno>
#include <system_error>

#include <SQLiteCpp/Backup.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <sqlite3.h>

#include "Base/FileReplacement.h"
#include "Base/Log.h"
#include "Base/Try.h"
#include "Store/StoreFileInspection.h"
#include "Store/StoreSchema.h"

namespace stintbook {

namespace {

using Kind = StoreOpenProblem::Kind;
using Done = std::expected<void, StoreOpenProblem>;

void removeCompanions(const std::filesystem::path& file)
{
    std::error_code ignored;
    for (const auto* suffix : {"-wal", "-shm", "-journal"})
        std::filesystem::remove(besideStore(file, suffix), ignored);
}

/// A database is put together under this name and then renamed.
struct Draft {
    std::filesystem::path file;

    explicit Draft(const std::filesystem::path& target)
        : file(besideStore(target, ".new"))
    {
        discard();
    }
    ~Draft() { discard(); }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    void discard() const
    {
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
        removeCompanions(file);
    }
};

StoreOpenProblem systemProblem(const std::filesystem::path& file, int error)
{
    const auto kind = error == ENOSPC || error == EDQUOT      ? Kind::diskFull
        : error == EACCES || error == EPERM || error == EROFS ? Kind::readOnly
                                                              : Kind::other;
    return {kind, file, std::generic_category().message(error)};
}

/// An empty file that only its owner may read; companions take its permissions over.
Done createPrivateFile(const std::filesystem::path& file)
{
    const FileDescriptor descriptor(open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!descriptor)
        return std::unexpected(systemProblem(file, errno));
    return {};
}

Done publish(const Draft& draft, const std::filesystem::path& target)
{
    // A log that outlived its store would be taken for the new one's.
    removeCompanions(target);
    if (std::rename(draft.file.c_str(), target.c_str()) != 0)
        return std::unexpected(systemProblem(target, errno));
    syncDirectory(directoryOf(target));
    return {};
}

/// Runs `work(StoreConnection&)` on an empty database and gives it its name when that has succeeded.
template <typename Work>
Done makeDatabase(const std::filesystem::path& target, const std::string& fileSystem, Work work)
{
    const Draft draft(target);
    TRY(createPrivateFile(draft.file));
    std::unique_ptr<StoreConnection> connection;
    try {
        connection =
            std::make_unique<StoreConnection>(draft.file, StoreConnection::Access::readWrite, fileSystem);
        connection->set(StoreConnection::Checkpoints::own);
        work(*connection);
        connection.reset();
    } catch (const SQLite::Exception& exception) {
        return std::unexpected(
            storeOpenProblem(target, exception, connection ? connection->handle() : nullptr));
    }
    return publish(draft, target);
}

Done keepCopy(const std::filesystem::path& file, StoreConnection& connection, std::int64_t version,
              const std::string& fileSystem)
{
    return makeDatabase(besideStore(file, fmt::format(".v{}-backup", version)), fileSystem,
                        [&](StoreConnection& copy) {
                            SQLite::Backup backup(copy.database(), connection.database());
                            if (backup.executeStep(-1) != SQLITE_DONE)
                                throw SQLite::Exception("The store is in use", SQLITE_BUSY);
                        });
}

} // namespace

Done createStore(const std::filesystem::path& file, const std::string& fileSystem)
{
    return makeDatabase(file, fileSystem, [](StoreConnection& connection) {
        connection.execute("PRAGMA auto_vacuum = INCREMENTAL");
        connection.execute(fmt::format("PRAGMA application_id = {}", storeApplicationID));
        connection.execute("BEGIN");
        applySchemaSteps(connection, 0, currentSchemaVersion);
        connection.execute("COMMIT");
        connection.execute("PRAGMA journal_mode = WAL");
    });
}

Done migrateStore(const std::filesystem::path& file, StoreConnection& connection,
                  const std::string& fileSystem)
{
    try {
        const auto version = connection.number("PRAGMA user_version");
        if (version >= currentSchemaVersion)
            return {};
        TRY(keepCopy(file, connection, version, fileSystem));
        connection.execute("BEGIN IMMEDIATE");
        applySchemaSteps(connection, static_cast<int>(version), currentSchemaVersion);
        connection.execute("COMMIT");
        connection.execute("PRAGMA wal_checkpoint(TRUNCATE)");
        log::event("The store was taken from version {} to version {}; a copy of it is kept beside it",
                   version, currentSchemaVersion);
        return {};
    } catch (const SQLite::Exception& exception) {
        auto problem = storeOpenProblem(file, exception, connection.handle());
        if (sqlite3_get_autocommit(connection.handle()) == 0)
            connection.database().tryExec("ROLLBACK");
        return std::unexpected(std::move(problem));
    }
}

} // namespace stintbook
