#include <cstdlib>
#include <vector>

#include <benchmark/benchmark.h>

#include "App/RulePreviewDesk.h"
#include "CrowdedRules.h"
#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/PersistentReviewStore.h"

namespace stintbook {
namespace {

/// A store of thirty days of 1,500 stretches of work.
struct BusyMonth : CrowdedRules {
    BusyMonth()
    {
        std::vector<ActivitySegment> segments;
        Instant at;
        for (int day = 0; day < usualPreviewDays; ++day) {
            at = calendar.dayOf(firstDay + Seconds{86'400.0 * day}).start + Seconds{8 * 3600.0};
            for (int i = 0; i < 1500; ++i) {
                segments.push_back(work(at, {5 + static_cast<double>(below(30))}, below(20'000)).segment);
                // A pause after every twelfth, so that there are many blocks.
                at = segments.back().end + Seconds{i % 12 == 0 ? 60.0 : 0.0};
            }
        }
        today = at;

        auto& review = store->review();
        bool isFilled = store->segments().save(segments).has_value();
        for (const auto& client : directory.clients())
            isFilled = isFilled && review.saveClient(client);
        for (const auto& project : directory.projects())
            isFilled = isFilled && review.saveProject(project);
        if (!isFilled || !review.replaceAttributionRules(rules))
            std::abort();
    }

    static constexpr Instant firstDay{1.8e9};
    CalendarContext calendar = CalendarContext::inZone("Europe/Berlin").value();
    std::unique_ptr<OpenedStore> store = OpenedStore::inMemory();
    Instant today;
};

/// As after a change of a rule: days are read, blocks built and the preview is made anew.
void previewAMonth(benchmark::State& state)
{
    BusyMonth month;
    const RulePreviewDesk desk(*month.store, month.calendar);
    std::size_t blocks = 0;
    for (auto _ : state) {
        const auto preview = desk.preview(usualPreviewDays, month.today);
        blocks = preview.value().blocks.size();
    }
    state.counters["blocks"] = static_cast<double>(blocks);
}
BENCHMARK(previewAMonth)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace stintbook
