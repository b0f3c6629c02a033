#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <vector>

#include <benchmark/benchmark.h>

#include "App/ClientBook.h"
#include "App/DayBook.h"
#include "CrowdedRules.h"
#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {
namespace {

/// A day of ten thousand segments and fifty rules, in a store of its own.
class BusyDay {
public:
    BusyDay()
    {
        auto name = (std::filesystem::temp_directory_path() / "velloran-benchmark-XXXXXX").string();
        m_directory = mkdtemp(name.data());
        store = OpenedStore::open({{"STINTBOOK_STORE_DIRECTORY", m_directory.string()}}, StoreRole::owner)
                    .value();

        ClientBook clients(*store);
        target.clientID =
            clients.addClient({.name = "Client", .color = {}, .rate = {}, .rounding = {}}).value();
        target.projectID =
            clients.addProject({.clientID = target.clientID, .name = "Project", .rate = {}, .rounding = {}})
                .value();

        CrowdedRules crowd;
        crowd.rules.resize(50);
        for (auto& rule : crowd.rules) {
            rule.clientID = target.clientID;
            rule.projectID = target.projectID;
        }
        std::vector<ActivitySegment> segments;
        for (auto at = day.start + Seconds{8 * 3600}; segments.size() < 10'000; at = segments.back().end) {
            auto segment =
                crowd.work(at, {1 + static_cast<double>(crowd.below(9))}, crowd.below(300)).segment;
            // Somebody stays with an application for a while.
            if (segments.size() % 27 != 0)
                segment.application = segments.back().application;
            segments.push_back(std::move(segment));
        }
        store->review().replaceAttributionRules(crowd.rules).value();
        store->segments().save(segments).value();
    }
    ~BusyDay()
    {
        store.reset();
        std::filesystem::remove_all(m_directory);
    }
    BusyDay(const BusyDay&) = delete;
    BusyDay& operator=(const BusyDay&) = delete;

    const CalendarContext calendar = CalendarContext::inZone("Europe/Berlin").value();
    const LocalDay day = calendar.dayOn({2026, 11, 20}).value();
    std::unique_ptr<OpenedStore> store;
    WorkTarget target;

private:
    std::filesystem::path m_directory;
};

void openADay(benchmark::State& state)
{
    const BusyDay busy;
    std::size_t blocks = 0;
    for ([[maybe_unused]] auto _ : state)
        blocks = DayBook(*busy.store, busy.calendar).open(busy.day).value().content().blocks.size();
    state.counters["blocks"] = static_cast<double>(blocks);
}

/// As a window does: a block is ignored or restored, and the day looked at again.
void editADay(benchmark::State& state)
{
    const BusyDay busy;
    EditSession session;
    bool isIgnored = false;
    for ([[maybe_unused]] auto _ : state) {
        DayBook book(*busy.store, busy.calendar, &session);
        state.PauseTiming();
        const auto blocks = book.open(busy.day).value().content().blocks;
        const std::vector ids{blocks[blocks.size() / 2].id};
        state.ResumeTiming();
        if (isIgnored)
            book.restore(busy.day, ids).value();
        else
            book.ignore(busy.day, ids).value();
        isIgnored = !isIgnored;
        benchmark::DoNotOptimize(book.open(busy.day).value());
    }
}

BENCHMARK(openADay)->Unit(benchmark::kMillisecond);
BENCHMARK(editADay)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace stintbook
