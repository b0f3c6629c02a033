#include <chrono>
#include <optional>
#include <system_error>
#include <thread>

#include <unistd.h>

#include "Base/FileReplacement.h"
#include "Base/Try.h"
#include "Store/DeletedRemains.h"
#include "Store/StoreCreation.h"
#include "Store/StoreDatabase.h"
#include "Store/StoreFileInspection.h"
#include "Store/StoreInstanceLock.h"
#include "Store/StoreSchema.h"

namespace stintbook {

namespace {

using Kind = StoreOpenProblem::Kind;
using Access = StoreConnection::Access;
using Opened = std::expected<std::unique_ptr<StoreConnection>, StoreOpenProblem>;

std::unexpected<StoreOpenProblem> refused(const StoreOpening& opening, Kind kind, std::string detail = {})
{
    return std::unexpected(StoreOpenProblem{kind, opening.file, std::move(detail)});
}

/// What the database itself says: its file's header is not all, as the log may hold a later one.
std::optional<Kind> contentProblem(StoreConnection& connection)
{
    if (connection.number("PRAGMA application_id") != storeApplicationID)
        return Kind::notAStore;
    const auto version = connection.number("PRAGMA user_version");
    if (version > currentSchemaVersion)
        return Kind::writtenByNewerVersion;
    if (version < 1 || layoutDigest(connection) != expectedLayoutDigest(static_cast<int>(version)))
        return Kind::unexpectedLayout;
    return std::nullopt;
}

Opened connect(const StoreOpening& opening, Access access)
{
    std::unique_ptr<StoreConnection> connection;
    try {
        connection = std::make_unique<StoreConnection>(opening.file, access, opening.fileSystem);
        if (const auto kind = contentProblem(*connection))
            return refused(opening, *kind);
        if (access == Access::readWrite)
            connection->execute("PRAGMA journal_mode = WAL");
        return connection;
    } catch (const SQLite::Exception& exception) {
        return std::unexpected(
            storeOpenProblem(opening.file, exception, connection ? connection->handle() : nullptr));
    }
}

/// Some damage shows only on a connection that may write, which by then has made its companions: they go
/// again where there were none and nothing was written to them.
Opened connectWritably(const StoreOpening& opening)
{
    const auto log = besideStore(opening.file, "-wal");
    const auto memory = besideStore(opening.file, "-shm");
    std::error_code ignored;
    const bool hadCompanions =
        std::filesystem::exists(log, ignored) || std::filesystem::exists(memory, ignored);
    auto connection = connect(opening, Access::readWrite);
    const bool leavesNothing = !connection && connection.error().kind != Kind::busy && !hadCompanions;
    if (leavesNothing && std::filesystem::exists(log, ignored) && std::filesystem::is_empty(log, ignored)) {
        std::filesystem::remove(log, ignored);
        std::filesystem::remove(memory, ignored);
    }
    return connection;
}

/// The system's words when the store's file or directory cannot be written to.
std::optional<std::string> writingProblem(const std::filesystem::path& file)
{
    const auto directory = directoryOf(file);
    if (access(directory.c_str(), W_OK | X_OK) != 0 || (access(file.c_str(), W_OK) != 0 && errno != ENOENT))
        return std::generic_category().message(errno);
    return std::nullopt;
}

/// Without a log beside it, the content can be judged on a connection that leaves nothing behind.
std::expected<void, StoreOpenProblem> mustHaveReadableContent(const StoreOpening& opening)
{
    auto judged = connect(opening, Access::immutable);
    // Somebody may just have begun to write: what was read then says nothing.
    const auto state = inspectStoreFile(opening.file);
    if (judged || (state && *state && (*state)->hasLog))
        return {};
    return std::unexpected(std::move(judged).error());
}

/// Creates the store or migrates it; nothing happens where another process has just done so.
std::expected<void, StoreOpenProblem> bringUpToDate(const StoreOpening& opening)
{
    if (!TRY(inspectStoreFile(opening.file)))
        return createStore(opening.file, opening.fileSystem);
    auto connection = TRY(connectWritably(opening));
    return migrateStore(opening.file, *connection, opening.fileSystem);
}

/// A guest that has to create or migrate the store does so as the holder of the instance lock, and waits a
/// little for another process that is at it already.
std::expected<StoreFileState, StoreOpenProblem> fileOfCurrentVersion(const StoreOpening& opening)
{
    constexpr int attempts = 200;
    for (int attempt = 0;; ++attempt) {
        const auto state = TRY(inspectStoreFile(opening.file));
        if (state && !state->hasLog)
            TRY(mustHaveReadableContent(opening));
        if (state && state->schemaVersion == currentSchemaVersion)
            return *state;
        if (const auto problem = writingProblem(opening.file))
            return refused(opening, Kind::readOnly, *problem);

        std::optional<StoreInstanceLock> lock;
        if (opening.role == StoreRole::guest) {
            if (auto acquired = StoreInstanceLock::acquire(opening.file))
                lock = *std::move(acquired);
        }
        if (lock || opening.role == StoreRole::owner) {
            TRY(bringUpToDate(opening));
            return StoreFileState{currentSchemaVersion, true};
        }
        if (attempt == attempts)
            return refused(opening, state ? Kind::earlierVersionInUse : Kind::busy);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

/// What is there, as it is.
std::expected<StoreFileState, StoreOpenProblem> fileToRead(const StoreOpening& opening)
{
    const auto state = TRY(inspectStoreFile(opening.file));
    if (!state)
        return refused(opening, Kind::missing);
    if (!state->hasLog)
        TRY(mustHaveReadableContent(opening));
    if (state->schemaVersion != currentSchemaVersion)
        return refused(opening, Kind::earlierVersion);
    return *state;
}

} // namespace

std::expected<std::shared_ptr<StoreDatabase>, StoreOpenProblem> StoreDatabase::open(
    const StoreOpening& opening)
{
    const auto state =
        TRY(opening.role == StoreRole::reader ? fileToRead(opening) : fileOfCurrentVersion(opening));
    std::unique_ptr<StoreConnection> connection;
    if (const auto problem = writingProblem(opening.file)) {
        // A guest reads without writing where it must.
        if (opening.role == StoreRole::owner)
            return refused(opening, Kind::readOnly, *problem);
        connection = TRY(connect(opening, state.hasLog ? Access::readOnly : Access::immutable));
    } else {
        connection = TRY(connectWritably(opening));
    }
    if (opening.role == StoreRole::owner)
        connection->set(StoreConnection::Checkpoints::own);
    const std::shared_ptr<StoreDatabase> database(new StoreDatabase(opening, std::move(connection)));
    if (opening.role == StoreRole::owner)
        finishDeletion(*database);
    return database;
}

} // namespace stintbook
