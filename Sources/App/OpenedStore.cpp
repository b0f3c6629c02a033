#include "App/OpenedStore.h"

#include "Base/Try.h"
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

std::expected<std::filesystem::path, StoreOpeningProblem> placeOf(const Environment& environment)
{
    auto location = storeLocation({.baseDirectory = {}, .environment = environment});
    if (!location)
        return std::unexpected(StoreUnavailable{message(location.error(), home(environment))});
    return *std::move(location);
}

std::expected<std::shared_ptr<StoreDatabase>, StoreOpeningProblem> databaseIn(
    const std::filesystem::path& file, StoreRole role)
{
    auto database = StoreDatabase::open({.file = file, .role = role, .fileSystem = {}});
    if (!database)
        return std::unexpected(StoreUnavailable{message(database.error())});
    return *std::move(database);
}

} // namespace

std::string message(const StoreOpeningProblem& problem)
{
    if (const auto* held = std::get_if<StoreHeld>(&problem))
        return message(held->holder);
    return std::get<StoreUnavailable>(problem).sentence;
}

std::expected<StoreClaim, StoreOpeningProblem> StoreClaim::take(const Environment& environment)
{
    auto file = TRY(placeOf(environment));
    auto lock = StoreInstanceLock::acquire(file);
    if (!lock)
        return std::unexpected(StoreHeld{file, lock.error()});
    return StoreClaim(std::move(file), std::move(*lock));
}

OpenedStore::OpenedStore(std::filesystem::path file, std::shared_ptr<StoreDatabase> database)
    : m_file(std::move(file))
    , m_database(std::move(database))
    , m_segments(std::make_shared<PersistentActivitySegmentRepository>(m_database))
    , m_review(std::make_shared<PersistentReviewStore>(m_database))
{
}

std::expected<std::unique_ptr<OpenedStore>, StoreOpeningProblem> OpenedStore::open(
    const Environment& environment, StoreRole role)
{
    if (role == StoreRole::owner) {
        auto claim = TRY(StoreClaim::take(environment));
        return open(claim);
    }
    auto file = TRY(placeOf(environment));
    auto database = TRY(databaseIn(file, role));
    return std::unique_ptr<OpenedStore>(new OpenedStore(std::move(file), std::move(database)));
}

std::expected<std::unique_ptr<OpenedStore>, StoreOpeningProblem> OpenedStore::open(StoreClaim& claim)
{
    auto database = TRY(databaseIn(claim.m_file, StoreRole::owner));
    std::unique_ptr<OpenedStore> store(new OpenedStore(claim.m_file, std::move(database)));
    store->m_lock = std::move(claim.m_lock);
    return store;
}

std::unique_ptr<OpenedStore> OpenedStore::inMemory()
{
    return std::unique_ptr<OpenedStore>(new OpenedStore({}, StoreDatabase::inMemory()));
}

OpenedStore::~OpenedStore() = default;

} // namespace stintbook
