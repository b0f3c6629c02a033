#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Capture/FreshSegmentID.h"
#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/StoreDatabase.h"

namespace stintbook {
namespace {

constexpr Seconds day{86'400};
constexpr int segmentsADay = 960;
constexpr Instant firstDay{1'483'225'200};

ActivitySegment segment(int index)
{
    static const std::vector<std::string> applications = {"org.mozilla.firefox", "org.gnome.TextEditor",
                                                          "org.gnome.Terminal", "org.libreoffice.Writer"};
    const auto start = firstDay + Seconds{day.value / segmentsADay} * index;
    ActivitySegment segment{.id = freshSegmentID(),
                            .start = start,
                            .end = start + Seconds{day.value / segmentsADay},
                            .timeZone = {"Europe/Berlin", 3600}};
    if (index % segmentsADay == 0) {
        segment.kind = ActivityKind::gap;
        segment.gapReason = GapReason::systemSleep;
        return segment;
    }
    const auto& application = applications[static_cast<std::size_t>(index) % applications.size()];
    segment.application = {application, application};
    segment.context =
        FocusedContext::windowTitle("A document of some length, number " + std::to_string(index % 500));
    segment.evidence = ContextEvidence::applicationAndWindow;
    if (index % 4 == 0)
        segment.browserDomain = BrowserDomain::fromText("docs.example.org");
    return segment;
}

/// A store that holds so many days, in a directory of its own for as long as the benchmark runs.
class History {
public:
    explicit History(int days)
        : m_days(days)
    {
        auto name = (std::filesystem::temp_directory_path() / "velloran-benchmark-XXXXXX").string();
        m_directory = mkdtemp(name.data());
        m_database = *StoreDatabase::open({.file = m_directory / "Velloran.store"});
        fill();
    }
    ~History()
    {
        m_database.reset();
        std::filesystem::remove_all(m_directory);
    }
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    static History& of(int days)
    {
        static std::unique_ptr<History> history;
        if (!history || history->m_days != days)
            history = std::make_unique<History>(days);
        return *history;
    }

    const std::shared_ptr<StoreDatabase>& database() const { return m_database; }
    std::filesystem::path file() const { return m_database->file(); }
    Interval middleDay() const
    {
        const auto start = firstDay + day * (m_days / 2);
        return {start, start + day};
    }

private:
    void fill() const
    {
        PersistentActivitySegmentRepository repository(m_database);
        std::vector<ActivitySegment> segments;
        for (int index = 0; index < m_days * segmentsADay; ++index) {
            segments.push_back(segment(index));
            if (segments.size() < 20 * segmentsADay && index + 1 < m_days * segmentsADay)
                continue;
            if (!repository.save(segments))
                std::abort();
            segments.clear();
        }
    }

    int m_days;
    std::filesystem::path m_directory;
    std::shared_ptr<StoreDatabase> m_database;
};

void readADay(benchmark::State& state)
{
    const auto& history = History::of(static_cast<int>(state.range(0)));
    const PersistentActivitySegmentRepository repository(history.database());
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(repository.segments(history.middleDay()));
}

void openAndReadADay(benchmark::State& state)
{
    const auto& history = History::of(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        const PersistentActivitySegmentRepository repository(
            *StoreDatabase::open({.file = history.file(), .role = StoreRole::guest}));
        benchmark::DoNotOptimize(repository.segments(history.middleDay()));
    }
}

void listApplications(benchmark::State& state)
{
    const auto& history = History::of(static_cast<int>(state.range(0)));
    const PersistentActivitySegmentRepository repository(history.database());
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(repository.observedApplications());
}

/// What a replay of a year costs the store.
void saveAYear(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(History(365).database());
}

/// A month, and ten years of 3.5 million segments.
constexpr int month = 30;
constexpr int tenYears = 3650;

BENCHMARK(saveAYear)->Unit(benchmark::kSecond)->Iterations(1);
BENCHMARK(readADay)->Arg(month)->Unit(benchmark::kMillisecond);
BENCHMARK(openAndReadADay)->Arg(month)->Unit(benchmark::kMillisecond);
BENCHMARK(listApplications)->Arg(month)->Unit(benchmark::kMillisecond);
BENCHMARK(readADay)->Arg(tenYears)->Unit(benchmark::kMillisecond);
BENCHMARK(openAndReadADay)->Arg(tenYears)->Unit(benchmark::kMillisecond);
BENCHMARK(listApplications)->Arg(tenYears)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace stintbook
