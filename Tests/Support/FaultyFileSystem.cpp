#include "Support/FaultyFileSystem.h"

#include <csignal>
#include <filesystem>
#include <limits>
#include <map>
#include <optional>
#include <random>
#include <vector>

#include <sqlite3.h>

#include "Support/TemporaryDirectory.h"

namespace stintbook {

namespace {

constexpr int never = std::numeric_limits<int>::max();

using Fault = FaultyFileSystem::Fault;

/// A file as it is on the disk for certain, and what was asked of it since.
struct UnsyncedFile {
    struct Change {
        std::size_t offset = 0;
        /// Absent: the file was cut at the offset.
        std::optional<std::string> bytes;
    };

    std::string synced;
    std::vector<Change> changes;
};

struct State {
    int operations = 0;
    int failsFrom = never;
    Fault fault = Fault::inputOutput;
    bool hasFailed = false;
    /// By path; kept only for a loss of power.
    std::map<std::string, UnsyncedFile> unsynced;
};

/// The callbacks of a VFS know nothing but the library's own structures.
State s_state;

enum class Kind { write, other };

/// Present when this operation fails.
std::optional<int> failure(Kind kind, int inputOutputError)
{
    if (++s_state.operations < s_state.failsFrom)
        return std::nullopt;
    const bool isFull = s_state.fault == Fault::diskFull;
    if (isFull && kind == Kind::other)
        return std::nullopt;
    if (s_state.fault == Fault::inputOutputOnce && s_state.hasFailed)
        return std::nullopt;
    if (s_state.fault == Fault::kill)
        raise(SIGKILL);
    s_state.hasFailed = true;
    return isFull ? SQLITE_FULL : inputOutputError;
}

/// A file of this VFS; the system's own one follows it in memory.
struct File {
    sqlite3_file base;
    /// Lives as long as the file is open; null for a temporary one.
    const char* path;

    sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* real(sqlite3_file* file)
{
    return reinterpret_cast<File*>(file)->real();
}

/// What a loss of power may take from the file; null where nobody asks.
UnsyncedFile* unsynced(sqlite3_file* file)
{
    const auto* path = reinterpret_cast<File*>(file)->path;
    if (s_state.fault != Fault::powerLoss || path == nullptr)
        return nullptr;
    const auto [place, isNew] = s_state.unsynced.try_emplace(path);
    if (isNew)
        place->second.synced = contentsOf(path);
    return &place->second;
}

/// Forwards a method unchanged.
template <auto method, typename... Arguments> int forwarded(sqlite3_file* file, Arguments... arguments)
{
    return (real(file)->pMethods->*method)(real(file), arguments...);
}

int writeTo(sqlite3_file* file, const void* data, int amount, sqlite3_int64 offset)
{
    const bool wasWell = !s_state.hasFailed;
    const auto error = failure(Kind::write, SQLITE_IOERR_WRITE);
    if (!error) {
        if (auto* known = unsynced(file))
            known->changes.push_back(
                {static_cast<std::size_t>(offset),
                 std::string(static_cast<const char*>(data), static_cast<std::size_t>(amount))});
        return forwarded<&sqlite3_io_methods::xWrite>(file, data, amount, offset);
    }
    if (wasWell && s_state.fault == Fault::tornWrite)
        forwarded<&sqlite3_io_methods::xWrite>(file, data, amount / 2, offset);
    return *error;
}

int truncate(sqlite3_file* file, sqlite3_int64 size)
{
    if (const auto error = failure(Kind::other, SQLITE_IOERR_TRUNCATE))
        return *error;
    if (auto* known = unsynced(file))
        known->changes.push_back({static_cast<std::size_t>(size), std::nullopt});
    return forwarded<&sqlite3_io_methods::xTruncate>(file, size);
}

int sync(sqlite3_file* file, int flags)
{
    if (const auto error = failure(Kind::other, SQLITE_IOERR_FSYNC))
        return *error;
    if (auto* known = unsynced(file))
        *known = {.synced = contentsOf(reinterpret_cast<File*>(file)->path), .changes = {}};
    return forwarded<&sqlite3_io_methods::xSync>(file, flags);
}

const sqlite3_io_methods methods = {
    .iVersion = 2,
    .xClose = forwarded<&sqlite3_io_methods::xClose>,
    .xRead = forwarded<&sqlite3_io_methods::xRead, void*, int, sqlite3_int64>,
    .xWrite = writeTo,
    .xTruncate = truncate,
    .xSync = sync,
    .xFileSize = forwarded<&sqlite3_io_methods::xFileSize, sqlite3_int64*>,
    .xLock = forwarded<&sqlite3_io_methods::xLock, int>,
    .xUnlock = forwarded<&sqlite3_io_methods::xUnlock, int>,
    .xCheckReservedLock = forwarded<&sqlite3_io_methods::xCheckReservedLock, int*>,
    .xFileControl = forwarded<&sqlite3_io_methods::xFileControl, int, void*>,
    .xSectorSize = forwarded<&sqlite3_io_methods::xSectorSize>,
    .xDeviceCharacteristics = forwarded<&sqlite3_io_methods::xDeviceCharacteristics>,
    .xShmMap = forwarded<&sqlite3_io_methods::xShmMap, int, int, int, volatile void**>,
    .xShmLock = forwarded<&sqlite3_io_methods::xShmLock, int, int, int>,
    .xShmBarrier = [](sqlite3_file* file) { real(file)->pMethods->xShmBarrier(real(file)); },
    .xShmUnmap = forwarded<&sqlite3_io_methods::xShmUnmap, int>,
    .xFetch = nullptr,
    .xUnfetch = nullptr,
};

sqlite3_vfs* system(sqlite3_vfs* own)
{
    return static_cast<sqlite3_vfs*>(own->pAppData);
}

int openFile(sqlite3_vfs* own, sqlite3_filename name, sqlite3_file* file, int flags, int* resultingFlags)
{
    const int result = system(own)->xOpen(system(own), name, real(file), flags, resultingFlags);
    file->pMethods = real(file)->pMethods != nullptr ? &methods : nullptr;
    reinterpret_cast<File*>(file)->path = name;
    return result;
}

int deleteFile(sqlite3_vfs* own, const char* name, int syncsDirectory)
{
    if (const auto error = failure(Kind::other, SQLITE_IOERR_DELETE))
        return *error;
    s_state.unsynced.erase(name);
    return system(own)->xDelete(system(own), name, syncsDirectory);
}

} // namespace

struct FaultyFileSystem::Registration {
    sqlite3_vfs vfs = *sqlite3_vfs_find(nullptr);

    Registration()
    {
        auto* original = sqlite3_vfs_find(nullptr);
        vfs.szOsFile += static_cast<int>(sizeof(File));
        vfs.zName = "faulty";
        vfs.pAppData = original;
        vfs.xOpen = openFile;
        vfs.xDelete = deleteFile;
        // The others hand the VFS on without looking at it, or look at what was copied.
        sqlite3_vfs_register(&vfs, 0);
    }
    ~Registration() { sqlite3_vfs_unregister(&vfs); }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
};

FaultyFileSystem::FaultyFileSystem()
    : m_registration(std::make_unique<Registration>())
{
    recover();
}

FaultyFileSystem::~FaultyFileSystem() = default;

std::string FaultyFileSystem::name() const
{
    return m_registration->vfs.zName;
}

void FaultyFileSystem::failFrom(int operation, Fault fault)
{
    s_state = {};
    s_state.failsFrom = operation;
    s_state.fault = fault;
}

void FaultyFileSystem::recover()
{
    s_state = {};
}

void FaultyFileSystem::losePower(unsigned seed)
{
    std::mt19937 random(seed);
    for (const auto& [path, file] : s_state.unsynced) {
        auto contents = file.synced;
        for (const auto& [offset, bytes] : file.changes) {
            if (random() % 2 == 0)
                continue;
            contents.resize(bytes ? std::max(contents.size(), offset + bytes->size()) : offset);
            if (bytes)
                contents.replace(offset, bytes->size(), *bytes);
        }
        writeFile(path, contents);
        // Memory that processes shared is gone, too.
        std::filesystem::remove(path + "-shm");
    }
    recover();
}

bool FaultyFileSystem::hasFailed() const
{
    return s_state.hasFailed;
}

} // namespace stintbook
