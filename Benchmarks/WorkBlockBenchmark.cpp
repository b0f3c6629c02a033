#include <benchmark/benchmark.h>

#include "CrowdedRules.h"
#include "Review/WorkBlockBuilder.h"
#include "Rules/RuleConflicts.h"

namespace stintbook {
namespace {

enum class Titles { recurring, allDifferent };

/// A day of ten thousand short stretches of work.
struct CrowdedDay : CrowdedRules {
    explicit CrowdedDay(Titles titles)
    {
        Instant at{1.8e9};
        for (std::size_t i = 0; i < 10'000; ++i) {
            // One long stretch in the middle, into which the short ones before it fold one by one.
            const double length = i == 5000 ? 300 : 1 + static_cast<double>(below(14));
            segments.push_back(work(at, {length}, titles == Titles::recurring ? below(300) : i));
            at = segments.back().segment.end;
        }
    }

    std::vector<FreeSegment> segments;
};

void buildDay(benchmark::State& state, Titles titles)
{
    const CrowdedDay day(titles);
    const auto calendar = CalendarContext::inZone("Europe/Berlin").value();
    std::size_t blocks = 0;
    for (auto _ : state) {
        // As when a day is opened: the engines are prepared anew.
        const WorkBlockBuilder builder(calendar, AttributionEngine(day.rules, day.directory),
                                       ExclusionEngine({}));
        blocks = builder.blocks(day.segments, {}).size();
    }
    state.counters["blocks"] = static_cast<double>(blocks);
}
BENCHMARK_CAPTURE(buildDay, recurringTitles, Titles::recurring)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(buildDay, allTitlesDifferent, Titles::allDifferent)->Unit(benchmark::kMillisecond);

void findConflicts(benchmark::State& state)
{
    const CrowdedDay day(Titles::recurring);
    for (auto _ : state)
        benchmark::DoNotOptimize(conflicts(day.rules, day.directory));
}
BENCHMARK(findConflicts)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace stintbook
