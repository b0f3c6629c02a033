#include <random>

#include <benchmark/benchmark.h>

#include "Review/RulePrecedencePreview.h"
#include "Review/WorkBlockBuilder.h"

namespace stintbook {
namespace {

/// Thirty days of 1,500 stretches of work, about which there are a thousand rules.
class BusyMonth {
public:
    BusyMonth()
    {
        const Client client{.id = {uuid()}, .name = "Client"};
        std::vector<Project> projects;
        for (int i = 0; i < 20; ++i)
            projects.push_back({.id = {uuid()}, .clientID = client.id, .name = "Project"});
        for (int i = 0; i < 1000; ++i)
            rules.push_back({.id = {uuid()},
                             .priority = i,
                             .match = match(i),
                             .clientID = client.id,
                             .projectID = projects[m_random() % projects.size()].id});
        directory = AssignmentDirectory({client}, std::move(projects));
        for (int day = 0; day < 30; ++day) {
            auto& segments = days.emplace_back();
            Instant at = calendar.dayOf({1.8e9 + 86400.0 * day}).start + Seconds{8 * 3600.0};
            for (int i = 0; i < 1500; ++i) {
                segments.push_back(segment(at));
                // A pause after every twelfth, so that there are many blocks.
                at = segments.back().segment.end + Seconds{i % 12 == 0 ? 60.0 : 0.0};
            }
        }
    }

    CalendarContext calendar = CalendarContext::inZone("Europe/Berlin").value();
    std::vector<AttributionRule> rules;
    AssignmentDirectory directory;
    std::vector<std::vector<FreeSegment>> days;

private:
    UUID uuid()
    {
        UUID id;
        for (auto& byte : id.bytes)
            byte = static_cast<std::uint8_t>(m_random());
        return id;
    }

    std::string numbered(const char* name, std::size_t bound)
    {
        return name + std::to_string(m_random() % bound);
    }

    RuleMatch match(int i)
    {
        RuleMatch match;
        if (i % 3 == 0)
            match.applicationBundleIdentifier = numbered("org.example.Application", 40);
        if (i % 3 == 1)
            match.browserDomain = BrowserDomain::fromText(numbered("site", 100) + ".example.org");
        if (match.isEmpty() || m_random() % 2 == 0)
            match.titleContains = numbered("Überblick ", 1000);
        return match;
    }

    FreeSegment segment(Instant start)
    {
        const auto application = numbered("org.example.Application", 40);
        ActivitySegment segment{.id = {uuid()},
                                .start = start,
                                .end = start + Seconds{5.0 + static_cast<double>(m_random() % 30)}};
        segment.application = ApplicationIdentity{application, application};
        segment.context = FocusedContext::windowTitle(numbered("Überblick ", 20'000)
                                                      + " — a document with a name of usual length");
        if (m_random() % 3 == 0)
            segment.browserDomain = BrowserDomain::fromText("www." + numbered("site", 100) + ".example.org");
        segment.evidence = ContextEvidence::applicationAndWindow;
        segment.timeZone = calendar.stamp(start);
        return {segment, segment.id};
    }

    std::mt19937 m_random{1};
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
