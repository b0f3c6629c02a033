#include <chrono>
#include <system_error>
#include <thread>

#include <unistd.h>

#include "Base/Try.h"
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
    const auto directory = file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
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

std::expected<void, StoreOpenProblem> migrateIfNeeded(const StoreOpening& opening)
{
    auto connection = TRY(connectWritably(opening));
    return migrateStore(opening.file, *connection, opening.fileSystem);
}

/// Runs `work` as the one process that may create or migrate the store.
template <typename Work>
std::expected<void, StoreOpenProblem> alone(const StoreOpening& opening, Kind otherwise, Work work)
{
    if (opening.role == StoreRole::owner)
        return work();
    const auto lock = StoreInstanceLock::acquire(opening.file);
    if (!lock)
        return refused(opening, otherwise);
    return work();
}

/// There is a file in the end. A guest that finds another process at it waits for that one.
std::expected<StoreFileState, StoreOpenProblem> existingFile(const StoreOpening& opening)
{
    constexpr int attempts = 200;
    for (int attempt = 0;; ++attempt) {
        if (const auto state = TRY(inspectStoreFile(opening.file)))
            return *state;
        if (const auto problem = writingProblem(opening.file))
            return refused(opening, Kind::readOnly, *problem);
        const auto created = alone(opening, Kind::busy, [&]() -> std::expected<void, StoreOpenProblem> {
            if (TRY(inspectStoreFile(opening.file)))
                return {};
            return createStore(opening.file, opening.fileSystem);
        });
        if (!created && (created.error().kind != Kind::busy || attempt == attempts))
            return std::unexpected(created.error());
        if (!created)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

/// A guest reads without writing where it must.
Opened connectWithoutWriting(const StoreOpening& opening, const StoreFileState& state,
                             const std::string& problem)
{
    if (opening.role == StoreRole::owner || state.schemaVersion < currentSchemaVersion)
        return refused(opening, Kind::readOnly, problem);
    if (!state.hasLog)
        return connect(opening, Access::immutable);
    return connect(opening, Access::readOnly);
}

} // namespace

std::expected<std::shared_ptr<StoreDatabase>, StoreOpenProblem> StoreDatabase::open(
    const StoreOpening& opening)
{
    const auto state = TRY(existingFile(opening));
    if (!state.hasLog)
        TRY(mustHaveReadableContent(opening));

    std::unique_ptr<StoreConnection> connection;
    if (const auto problem = writingProblem(opening.file)) {
        connection = TRY(connectWithoutWriting(opening, state, *problem));
    } else {
        if (state.schemaVersion < currentSchemaVersion)
            TRY(alone(opening, Kind::earlierVersionInUse, [&] { return migrateIfNeeded(opening); }));
        connection = TRY(connectWritably(opening));
    }
    if (opening.role == StoreRole::owner)
        connection->set(StoreConnection::Checkpoints::own);
    return std::shared_ptr<StoreDatabase>(new StoreDatabase(opening, std::move(connection)));
}

} // namespace stintbook
