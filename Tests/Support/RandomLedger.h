#pragma once

#include <array>
#include <string>
#include <vector>

#include "Export/ExportSnapshot.h"
#include "Review/ReviewedLayerMutation.h"
#include "Store/PersistentActivitySegmentRepository.h"
#include "Store/PersistentReviewStore.h"
#include "Support/RandomWork.h"

namespace stintbook {

/// Fills a store with a bit of everything that it can hold, awkward texts and numbers among it. The same seed
/// gives the same ledger.
class RandomLedger {
public:
    explicit RandomLedger(unsigned seed)
        : m_work(seed)
    {
    }

    /// False when the store refused something.
    bool fill(const std::shared_ptr<StoreDatabase>& database)
    {
        PersistentActivitySegmentRepository recorded(database);
        PersistentReviewStore store(database);
        bool isStored = true;
        for (auto client : m_work.directory().clients()) {
            client.name += text();
            if (m_work.oneIn(2))
                client.color = ClientColor::fromText("a0b1c2");
            isStored &= store.saveClient(client).has_value();
            if (m_work.oneIn(2))
                isStored &= store.saveClientBilling(client.id, {rate(), rounding()}).has_value();
        }
        for (auto project : m_work.directory().projects()) {
            project.name += text();
            // One client is archived and takes none.
            if (store.saveProject(project))
                m_projects.push_back(project);
        }
        if (m_work.oneIn(2))
            isStored &= store.saveSettings({BillingCurrency::fromText("JPY"), rounding()}).has_value();
        isStored &= store.replaceAttributionRules(rules()).has_value();
        isStored &= store.replaceExclusionRules({{{m_work.uuid()}, false, -3, m_work.match()}}).has_value();

        const auto segments = day();
        isStored &= recorded.save(segments).has_value();
        isStored &= store.apply(review(segments)).has_value();
        for (auto count = m_work.below(3); count > 0; --count)
            isStored &= store.append(snapshot()).has_value();
        return isStored;
    }

private:
    std::string text()
    {
        static const std::vector<std::string> texts{"", "/slash\\ \"quoted\"",
                                                    "tab\tline\nreturn\r\b\f\x01\x1f\x7f",
                                                    "Ünïcödé 日本 עברית 😀", std::string("zero\0byte", 9)};
        return m_work.anyOf<std::string>(texts);
    }
    std::optional<std::string> perhapsText()
    {
        return m_work.oneIn(2) ? std::optional(text()) : std::nullopt;
    }
    Decimal number()
    {
        static const std::vector<std::string> numbers{"0", "0.1", std::string(38, '7'),
                                                      "0." + std::string(37, '0') + "1", "87.50"};
        return *Decimal::parse(m_work.anyOf<std::string>(numbers));
    }
    std::optional<Decimal> rate() { return m_work.oneIn(2) ? std::optional(number()) : std::nullopt; }
    std::optional<RoundingPolicy> rounding()
    {
        return m_work.oneIn(2) ? std::optional(RoundingPolicy::nearestSixMinutes) : std::nullopt;
    }
    AttributionAssignment assignment()
    {
        const auto& project = m_work.anyOf<Project>(m_projects);
        return {project.clientID, project.id, m_work.oneIn(2)};
    }

    std::vector<AttributionRule> rules()
    {
        auto rules = m_work.rules(m_work.below(5));
        for (auto& rule : rules) {
            const auto target = assignment();
            rule.clientID = target.clientID;
            rule.projectID = target.projectID;
        }
        return rules;
    }

    /// Stretches of odd lengths, one behind the other.
    std::vector<ActivitySegment> day()
    {
        std::vector<ActivitySegment> segments;
        auto at = m_day.start + Seconds{0.1 * static_cast<double>(m_work.below(1000))};
        for (auto count = m_work.below(30); count > 0; --count) {
            auto segment = m_work.segment(at, {static_cast<double>(1 + m_work.below(1'000'000)) / 999.0});
            segment.timeZone = {"Europe/Berlin", 3600};
            if (!segment.context.isNone())
                segment.context.text += text();
            if (m_work.oneIn(5)) {
                segment.kind = ActivityKind::gap;
                segment.gapReason = GapReason::systemSleep;
                segment.application.reset();
            }
            at = segment.end;
            segments.push_back(std::move(segment));
        }
        return segments;
    }

    ReviewedLayerMutation review(const std::vector<ActivitySegment>& segments)
    {
        ReviewedLayerMutation mutation;
        for (const auto& segment : segments) {
            if (m_work.oneIn(3)) {
                mutation.upserts.push_back({.id = {m_work.uuid()},
                                            .day = m_day,
                                            .start = segment.start,
                                            .end = segment.end,
                                            .assignment = assignment(),
                                            .description = perhapsText(),
                                            .slices = {{segment.id, segment.start, segment.end}}});
            } else if (m_work.oneIn(3)) {
                mutation.reviewUpserts[segment.id] = {.assignment = assignment(),
                                                      .isIgnored = m_work.oneIn(2)};
            }
        }
        // Its activity may be gone since.
        mutation.reviewUpserts[{m_work.uuid()}] = {.isConfirmed = true};
        mutation.upserts.push_back({.id = {m_work.uuid()},
                                    .day = m_day,
                                    .start = m_day.start,
                                    .end = m_day.start + Seconds{0.3},
                                    .origin = ReviewedItemOrigin::manual,
                                    .assignment = assignment(),
                                    .description = text(),
                                    .slices = {},
                                    .disposition = ReviewedItemDisposition::ignored});
        mutation.approval =
            ReviewedDayApproval{m_day, {std::string(64, 'a')}, m_day.start + Seconds{1e6 / 3}};
        return mutation;
    }

    /// Two may be of one instant.
    ExportSnapshot snapshot()
    {
        ExportSnapshot snapshot;
        snapshot.id = {m_work.uuid()};
        snapshot.createdAt = m_day.start + Seconds{static_cast<double>(m_work.below(2))};
        snapshot.fields = ExportFieldSet::standard(ExportMode::detailed);
        snapshot.rangeStart = snapshot.rangeEnd = m_day;
        snapshot.clientFilterName = perhapsText();
        for (auto count = m_work.below(4); count > 0; --count) {
            ExportLine line;
            line.dayID = dayID(m_day);
            line.dayStart = m_day.start;
            line.timeZoneIdentifier = m_day.timeZoneIdentifier;
            line.start = m_day.start;
            line.end = m_day.start + Seconds{1};
            line.clientName = text();
            line.description = perhapsText();
            line.actualSeconds = number();
            line.hourlyRate = rate();
            line.amount = rate();
            snapshot.lines.push_back(std::move(line));
            snapshot.days.push_back({dayID(m_day), m_day.start, m_day.timeZoneIdentifier, text()});
        }
        snapshot.totals = totals(snapshot.lines, BillingCurrency::fromText("EUR"));
        return snapshot;
    }

    RandomWork m_work;
    LocalDay m_day{{1795129200}, "Europe/Berlin"};
    std::vector<Project> m_projects;
};

} // namespace stintbook
