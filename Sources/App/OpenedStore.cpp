#include "App/OpenedStore.h"

#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {

namespace {

std::optional<std::filesystem::path> home(const Environment& environment)
{
    const auto found = environment.find("HOME");
    if (found == environment.end() || found->second.empty())
        return std::nullopt;
    return found->second;
}

} // namespace

std::string message(const StoreOpeningProblem& problem)
{
    if (const auto* held = std::get_if<StoreHeld>(&problem))
        return message(held->holder);
    return std::get<StoreUnavailable>(problem).sentence;
}

std::expected<std::unique_ptr<OpenedStore>, StoreOpeningProblem> OpenedStore::open(
    const Environment& environment, StoreRole role)
{
    auto location = storeLocation({.baseDirectory = {}, .environment = environment});
    if (!location)
        return std::unexpected(StoreUnavailable{message(location.error(), home(environment))});

    std::unique_ptr<OpenedStore> store(new OpenedStore);
    store->m_file = *std::move(location);
    if (role == StoreRole::owner) {
        auto lock = StoreInstanceLock::acquire(store->m_file);
        if (!lock)
            return std::unexpected(StoreHeld{store->m_file, lock.error()});
        store->m_lock = std::move(*lock);
    }
    auto database = StoreDatabase::open({.file = store->m_file, .role = role, .fileSystem = {}});
    if (!database)
        return std::unexpected(StoreUnavailable{message(database.error())});
    store->m_database = *std::move(database);
    store->m_segments = std::make_shared<PersistentActivitySegmentRepository>(store->m_database);
    store->m_review = std::make_shared<PersistentReviewStore>(store->m_database);
    return store;
}

OpenedStore::~OpenedStore() = default;

} // namespace stintbook
