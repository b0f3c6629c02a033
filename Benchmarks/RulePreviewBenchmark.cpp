#include <algorithm>
#include <iterator>

#include <benchmark/benchmark.h>

#include "CrowdedRules.h"
#include "Review/RulePrecedencePreview.h"
#include "Review/WorkBlockBuilder.h"

namespace stintbook {
namespace {

/// Thirty days of 1,500 stretches of work.
struct BusyMonth : CrowdedRules {
    BusyMonth()
    {
        for (int day = 0; day < 30; ++day) {
            auto& segments = days.emplace_back();
            Instant at = calendar.dayOf({1.8e9 + 86400.0 * day}).start + Seconds{8 * 3600.0};
            for (int i = 0; i < 1500; ++i) {
                segments.push_back(work(at, {5 + static_cast<double>(below(30))}, below(20'000)));
                // A pause after every twelfth, so that there are many blocks.
                at = segments.back().segment.end + Seconds{i % 12 == 0 ? 60.0 : 0.0};
            }
        }
    }

    CalendarContext calendar = CalendarContext::inZone("Europe/Berlin").value();
    std::vector<std::vector<FreeSegment>> days;
};

/// As after a change of a rule: the engine, the blocks and the preview are made anew.
void previewAMonth(benchmark::State& state)
{
    const BusyMonth month;
    RulePrecedencePreview preview;
    for (auto _ : state) {
        const WorkBlockBuilder builder(month.calendar, AttributionEngine(month.rules, month.directory),
                                       ExclusionEngine({}));
        std::vector<WorkBlock> blocks;
        for (const auto& day : month.days)
            std::ranges::move(builder.blocks(day, {}), std::back_inserter(blocks));
        preview = rulePrecedencePreview(month.rules, std::move(blocks));
    }
    state.counters["blocks"] = static_cast<double>(preview.blocks.size());
}
BENCHMARK(previewAMonth)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace stintbook
