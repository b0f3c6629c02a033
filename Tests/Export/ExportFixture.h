#pragma once

#include <string_view>

#include "Base/Decimal.h"
#include "Domain/CalendarContext.h"
#include "Export/ExportDocumentModel.h"

namespace stintbook {

inline Decimal decimal(std::string_view text)
{
    return Decimal::parse(text).value();
}

/// A ledger with one client, its two projects and a day's worth of ready items in Berlin.
struct ExportFixture {
    CalendarContext calendar = CalendarContext::inZone("Europe/Berlin").value();
    Client acme{.id = ClientID::random(), .name = "Acme"};
    Client bolt{.id = ClientID::random(), .name = "Bolt & Söhne"};
    Project website{.id = ProjectID::random(), .clientID = acme.id, .name = "Website"};
    Project support{.id = ProjectID::random(), .clientID = bolt.id, .name = "Support"};
    AssignmentDirectory directory{{acme, bolt}, {website, support}};
    BillingBook billing{
        .settings = {.currency = BillingCurrency::fromText("EUR")},
        .clients = {{acme.id, {.hourlyRate = Decimal(100)}}},
        .projects = {},
    };
    LocalDay monday = dayOn(16);
    LocalDay tuesday = dayOn(17);

    LocalDay dayOn(int dayOfNovember2026) const { return *calendar.dayOn({2026, 11, dayOfNovember2026}); }

    static ReviewedWorkItem item(const Project& project, const LocalDay& day, double startHour,
                                 double seconds)
    {
        const Instant start = day.start + Seconds{startHour * 3600};
        return {
            .id = ReviewedItemID::random(),
            .day = day,
            .start = start,
            .end = start + Seconds{seconds},
            .origin = ReviewedItemOrigin::manual,
            .assignment = {project.clientID, project.id, true},
        };
    }

    static ExportDayInput ready(const LocalDay& day, std::vector<ReviewedWorkItem> items)
    {
        return {.day = day, .revision = {std::string(64, 'a')}, .isReady = true, .items = std::move(items)};
    }

    ExportRequest request(ExportMode mode = ExportMode::detailed) const
    {
        return {
            .rangeStart = monday,
            .rangeEnd = tuesday,
            .mode = mode,
            .format = exportFormat(ExportFormatKind::csv, mode),
            .fields = ExportFieldSet::standard(mode),
        };
    }

    ExportDocumentModel document(std::vector<ExportDayInput> days) const
    {
        return buildDocument(request(), std::move(days), directory, billing);
    }
    ExportDocumentModel documentWith(std::vector<ReviewedWorkItem> items) const
    {
        return document({ready(monday, std::move(items))});
    }
};

} // namespace stintbook
