#pragma once

#include "Export/ExportDocumentModel.h"
#include "StoreSamples.h"

namespace stintbook {

inline const auto sampleClient = numbered<ClientID>(1);
inline const auto sampleProject = numbered<ProjectID>(1);

inline ExportSnapshot sampleSnapshot(std::uint32_t index)
{
    const auto line = [](const char* name, std::optional<Decimal> rate, std::optional<Decimal> amount) {
        return ExportLine{.dayID = "2026-11-20@Europe/Berlin",
                          .dayStart = sampleDay.start,
                          .timeZoneIdentifier = sampleDay.timeZoneIdentifier,
                          .start = sampleDay.start,
                          .end = sampleDay.start + Seconds{901},
                          .clientName = name,
                          .projectName = "Website",
                          .actualSeconds = 901,
                          .billedSeconds = 1080,
                          .hourlyRate = rate,
                          .amount = amount,
                          .currencyCode = "EUR",
                          .rounding = RoundingPolicy::nearestSixMinutes};
    };
    ExportSnapshot snapshot{.id = numbered<ExportSnapshotID>(index + 1),
                            .createdAt = {1795190000.5 + index},
                            .format = ExportFormat::timesheetPDF,
                            .mode = ExportMode::detailed,
                            .rangeStart = sampleDay,
                            .rangeEnd = sampleDay,
                            .clientFilterID = sampleClient,
                            .clientFilterName = "Müller"};
    snapshot.fields.includesDate = true;
    snapshot.fields.includesBillableState = true;
    snapshot.lines = {line("B", Decimal::parse("87.5"), Decimal::parse("26.25")),
                      line("A", Decimal::parse("0.1"), Decimal::parse("0.03")), line("C", {}, {})};
    snapshot.lines[0].description = "Offer, \"urgent\"\n🙂";
    snapshot.lines[2].isBillable = false;
    snapshot.days = {
        {"2026-11-20@Europe/Berlin", sampleDay.start, sampleDay.timeZoneIdentifier, std::string(64, 'a')}};
    snapshot.totals = totals(snapshot.lines, BillingCurrency::fromText("EUR"));
    return snapshot;
}

/// Something of everything that a store keeps.
inline void fill(const std::shared_ptr<StoreDatabase>& database)
{
    PersistentActivitySegmentRepository recorded(database);
    PersistentReviewStore store(database);
    const auto domain = BrowserDomain::fromText("example.org");
    auto segment = sampleSegment(0);
    segment.browserDomain = domain;
    EXPECT_TRUE(recorded.save({{segment}}));
    EXPECT_TRUE(store.apply(
        {.upserts = {sampleItem(0)},
         .reviewUpserts = {{segment.id, {AttributionAssignment{sampleClient, sampleProject, true}}}},
         .approval = ReviewedDayApproval{sampleDay, {"r"}, {}}}));
    EXPECT_TRUE(store.saveClient({sampleClient, "Müller & Co", false, ClientColor::fromText("#000000")}));
    EXPECT_TRUE(store.saveSettings({BillingCurrency::fromText("EUR"), RoundingPolicy::exact}));
    EXPECT_TRUE(store.saveClientBilling(sampleClient, {Decimal(1), RoundingPolicy::exact}));
    EXPECT_TRUE(store.saveProjectBilling(sampleProject, {Decimal(1), RoundingPolicy::exact}));
    EXPECT_TRUE(store.append(sampleSnapshot(0)));
    EXPECT_TRUE(store.replaceAttributionRules(
        {{numbered<RuleID>(1), true, 0, {"a", domain, "t"}, sampleClient, sampleProject, {}}}));
    EXPECT_TRUE(store.replaceExclusionRules({{numbered<RuleID>(2), true, 0, {.titleContains = "t"}}}));
}

} // namespace stintbook
