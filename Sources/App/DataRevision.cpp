#include "App/DataRevision.h"

#include <utility>

#include "Store/StoreDatabase.h"

namespace stintbook {

DataRevision::DataRevision(Executor& main, Timers& timers, std::function<void()> raised)
    : m_main(main)
    , m_timers(timers)
    , m_raised(std::move(raised))
{
}

void DataRevision::raise()
{
    ++m_value;
    m_raised();
}

void DataRevision::follow(const OpenedStore& store, std::shared_ptr<Executor> elsewhere,
                          StoreChangeWatching& changes)
{
    m_store.emplace(std::move(elsewhere), store.sharedDatabase());
    // What is committed reaches the log first.
    const auto log = store.file().string() + "-wal";
    changes.watch(log, [this, &main = m_main, isAlive = std::weak_ptr(m_isAlive)] {
        main.post([this, isAlive] {
            if (!isAlive.expired())
                written();
        });
    });
    ask();
}

void DataRevision::written()
{
    if (!m_settling)
        m_settling = m_timers.after(settlingTime, [this] {
            m_settling.reset();
            ask();
        });
}

void DataRevision::ask()
{
    m_store->ask([](StoreDatabase& database) { return database.dataVersion(); }, m_main,
                 [this, isAlive = std::weak_ptr(m_isAlive)](const Stored<std::int64_t>& version) {
                     if (isAlive.expired() || !version)
                         return;
                     const auto former = std::exchange(m_version, *version);
                     if (former && *former != *version)
                         raise();
                 });
}

} // namespace stintbook
