#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include "Billing/HourlyRate.h"
#include "Export/Timesheet/TimesheetPDF.h"

namespace stintbook {
namespace {

/// A year of billing in one document: every line with a description of its own, which takes two or three lines.
ExportDocumentModel longTimesheet(int lineCount)
{
    const auto calendar = CalendarContext::inZone("Europe/Berlin").value();
    ExportDocumentModel document{.currency = BillingCurrency::fromText("EUR")};
    auto& request = document.request;
    request.rangeStart = calendar.dayOn({2026, 1, 1}).value();
    request.rangeEnd = calendar.dayOn({2026, 12, 31}).value();
    request.mode = ExportMode::detailed;
    request.format = ExportFormat::timesheetPDF;
    request.fields = ExportFieldSet::standard(request.mode);
    for (int i = 0; i < lineCount; ++i) {
        const auto day = calendar.dayOn(CivilDate{2026, 1, 1}.plusDays(i * 365 / lineCount)).value();
        ExportLine line{.dayID = dayID(day), .dayStart = day.start, .timeZoneIdentifier = "Europe/Berlin"};
        line.clientName = "Client " + std::to_string(i % 20);
        line.projectName = "Project " + std::to_string(i % 60);
        line.description = "Entry " + std::to_string(i) + ": what was done, in a few words that wrap";
        line.actualSeconds = line.billedSeconds = 360 * (1 + i % 37);
        line.hourlyRate = Decimal(80 + i % 7);
        line.amount = amount(line.billedSeconds, line.hourlyRate, Billability::billable);
        line.currencyCode = "EUR";
        document.lines.push_back(std::move(line));
    }
    document.totals = totals(document.lines, document.currency);
    return document;
}

void timesheetOfTenThousandLines(benchmark::State& state)
{
    const auto document = longTimesheet(10'000);
    for (auto _ : state)
        benchmark::DoNotOptimize(timesheetPDF(document, {"en_US", "en_US"}, Instant{1.8e9}));
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["peakMegabytes"] = static_cast<double>(usage.ru_maxrss) / 1024;
}
BENCHMARK(timesheetOfTenThousandLines)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
} // namespace stintbook
