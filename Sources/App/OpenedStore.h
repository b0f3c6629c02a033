#pragma once

#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "Domain/PersistenceError.h"
#include "Store/StoreDatabase.h"
#include "Store/StoreInstanceLock.h"
#include "Store/StoreLocation.h"

namespace stintbook {

class PersistentActivitySegmentRepository;
class PersistentReviewStore;

/// Another copy holds the store.
struct StoreHeld {
    std::filesystem::path file;
    StoreHeldElsewhere holder;
};

/// The store could not be opened; it is as it was. The sentence is for people.
struct StoreUnavailable {
    std::string sentence;
};

using StoreOpeningProblem = std::variant<StoreHeld, StoreUnavailable>;
std::string message(const StoreOpeningProblem& problem);

/// The right to open the store as its owner: its place is known and its lock is held.
class StoreClaim {
public:
    /// Resolves the location ($STINTBOOK_STORE_DIRECTORY, else the data directory) and takes the lock. Never
    /// waits.
    static std::expected<StoreClaim, StoreOpeningProblem> take(const Environment& environment);

private:
    friend class OpenedStore;
    StoreClaim(std::filesystem::path file, StoreInstanceLock lock)
        : m_file(std::move(file))
        , m_lock(std::move(lock))
    {
    }

    std::filesystem::path m_file;
    StoreInstanceLock m_lock;
};

/// The local store with its repositories, for one thread at a time.
class OpenedStore {
public:
    /// Resolves the location ($STINTBOOK_STORE_DIRECTORY, else the data directory), takes the lock where
    /// the role asks for it, opens and migrates.
    static std::expected<std::unique_ptr<OpenedStore>, StoreOpeningProblem> open(
        const Environment& environment, StoreRole role);
    /// Opens and migrates what was claimed. The claim passes to the store when it succeeds, and stays otherwise.
    static std::expected<std::unique_ptr<OpenedStore>, StoreOpeningProblem> open(StoreClaim& claim);
    /// Without a file and without a lock.
    static std::unique_ptr<OpenedStore> inMemory();
    ~OpenedStore();

    /// Empty for a store in memory.
    const std::filesystem::path& file() const { return m_file; }
    PersistentActivitySegmentRepository& segments() { return *m_segments; }
    PersistentReviewStore& review() { return *m_review; }
    StoreDatabase& database() { return *m_database; }
    /// For whoever confines them to an executor.
    std::shared_ptr<PersistentActivitySegmentRepository> sharedSegments() const { return m_segments; }
    std::shared_ptr<PersistentReviewStore> sharedReview() const { return m_review; }
    std::shared_ptr<StoreDatabase> sharedDatabase() const { return m_database; }

private:
    OpenedStore(std::filesystem::path file, std::shared_ptr<StoreDatabase> database);

    std::filesystem::path m_file;
    std::optional<StoreInstanceLock> m_lock;
    std::shared_ptr<StoreDatabase> m_database;
    std::shared_ptr<PersistentActivitySegmentRepository> m_segments;
    std::shared_ptr<PersistentReviewStore> m_review;
};

} // namespace stintbook
