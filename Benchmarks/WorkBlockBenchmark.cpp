#include <random>

#include <benchmark/benchmark.h>

#include "Review/WorkBlockBuilder.h"
#include "Rules/RuleConflicts.h"

namespace stintbook {
namespace {

/// A day of ten thousand short stretches of work, and a thousand rules about it.
class CrowdedDay {
public:
    enum class Titles { recurring, allDifferent };

    explicit CrowdedDay(Titles titles)
        : m_titles(titles)
    {
        const Client client{.id = {uuid()}, .name = "Client"};
        std::vector<Project> projects;
        for (int i = 0; i < 20; ++i)
            projects.push_back({.id = {uuid()}, .clientID = client.id, .name = "Project"});
        for (int i = 0; i < 1000; ++i) {
            rules.push_back({.id = {uuid()},
                             .priority = i,
                             .match = match(i),
                             .clientID = client.id,
                             .projectID = projects[m_random() % projects.size()].id});
        }
        directory = AssignmentDirectory({client}, std::move(projects));

        Instant at{1.8e9};
        for (int i = 0; i < 10'000; ++i) {
            // One long stretch in the middle, into which the short ones before it fold one by one.
            segments.push_back(segment(at, i == 5000 ? 300 : 1 + static_cast<double>(m_random() % 14)));
            at = segments.back().segment.end;
        }
    }

    std::vector<AttributionRule> rules;
    AssignmentDirectory directory;
    std::vector<FreeSegment> segments;

private:
    UUID uuid()
    {
        UUID id;
        for (auto& byte : id.bytes)
            byte = static_cast<std::uint8_t>(m_random());
        return id;
    }

    static std::string numbered(const char* name, std::size_t number)
    {
        return name + std::to_string(number);
    }

    RuleMatch match(int i)
    {
        RuleMatch match;
        if (i % 3 == 0)
            match.applicationBundleIdentifier = numbered("org.example.Application", m_random() % 40);
        if (i % 3 == 1)
            match.browserDomain =
                BrowserDomain::fromText(numbered("site", m_random() % 100) + ".example.org");
        if (match.isEmpty() || m_random() % 2 == 0)
            match.titleContains = numbered("Überblick ", m_random() % 1000);
        return match;
    }

    FreeSegment segment(Instant start, double length)
    {
        const auto application = numbered("org.example.Application", m_random() % 40);
        const auto document = m_titles == Titles::recurring ? m_random() % 300 : m_count++;
        ActivitySegment segment{.id = {uuid()}, .start = start, .end = start + Seconds{length}};
        segment.application = ApplicationIdentity{application, application};
        segment.context = FocusedContext::windowTitle(numbered("Überblick ", document)
                                                      + " — a document with a name of usual length");
        if (m_random() % 3 == 0)
            segment.browserDomain =
                BrowserDomain::fromText("www." + numbered("site", m_random() % 100) + ".example.org");
        segment.evidence = ContextEvidence::applicationAndWindow;
        segment.timeZone = {"Europe/Berlin", 7200};
        return {segment, segment.id};
    }

    Titles m_titles;
    std::size_t m_count = 0;
    std::mt19937 m_random{1};
};

void buildDay(benchmark::State& state, CrowdedDay::Titles titles)
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
BENCHMARK_CAPTURE(buildDay, recurringTitles, CrowdedDay::Titles::recurring)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(buildDay, allTitlesDifferent, CrowdedDay::Titles::allDifferent)
    ->Unit(benchmark::kMillisecond);

void findConflicts(benchmark::State& state)
{
    const CrowdedDay day(CrowdedDay::Titles::recurring);
    for (auto _ : state)
        benchmark::DoNotOptimize(conflicts(day.rules, day.directory));
}
BENCHMARK(findConflicts)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace stintbook
