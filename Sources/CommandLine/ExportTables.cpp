#include "CommandLine/ExportTables.h"

#include <fmt/format.h>

#include "CommandLine/ExportJSON.h"
#include "CommandLine/Formatting.h"
#include "CommandLine/Table.h"

namespace stintbook {

namespace {

constexpr int descriptionWidth = 50;
constexpr auto right = Table::Alignment::right;

void printLines(Session& session, const std::vector<ExportLine>& lines,
                const std::optional<BillingCurrency>& currency)
{
    Table table({{"Day"},
                 {"From"},
                 {"To"},
                 {"Client / Project"},
                 {"Description"},
                 {"Tracked", right},
                 {"Billed", right},
                 {"Amount", right}});
    for (const auto& line : lines) {
        const auto calendar = CalendarContext::inZone(line.timeZoneIdentifier).value_or(session.calendar());
        const auto locale = session.locale("LC_TIME");
        table.add({line.dayID, shownTime(line.start, calendar, locale), shownTime(line.end, calendar, locale),
                   line.clientName + " / " + line.projectName,
                   shownInCells(line.description.value_or(""), descriptionWidth),
                   shownDuration(line.actualSeconds), shownDuration(line.billedSeconds),
                   line.isBillable ? shownAmount(session, line.amount, currency) : "not billable"});
    }
    session.output() << table;
}

void printTotals(Session& session, const ExportTotals& totals, const std::optional<BillingCurrency>& currency)
{
    session.output() << fmt::format("\nTracked {}, billed {} ({} billable, {} not billable), amount {}\n",
                                    shownDuration(totals.actualSeconds), shownDuration(totals.billedSeconds),
                                    shownDuration(totals.billableBilledSeconds),
                                    shownDuration(totals.nonBillableBilledSeconds),
                                    shownAmount(session, totals.amount, currency));
}

} // namespace

void printPreview(Session& session, const CalendarContext&, const ExportPreview& preview)
{
    printLines(session, preview.document.lines, preview.document.currency);
    printTotals(session, preview.document.totals, preview.document.currency);
    printRemarks(session, preview);
}

void printRemarks(Session& session, const ExportPreview& preview)
{
    const auto& blocked = preview.document.blockedDays;
    if (!blocked.empty()) {
        session.errors() << blockedDaysHeading(blocked) << '\n';
        for (const auto& day : blocked)
            session.errors() << fmt::format("  {}  {}\n", dayID(day.day), day.reason.value_or(""));
    }
    if (preview.unreviewedDuration > Seconds{0}) {
        session.errors() << unreviewedNote(shownDuration(preview.unreviewedDuration)) << '\n';
    }
}

void print(Session& session, const ExportReceipt& receipt)
{
    if (session.isJSON()) {
        session.printJSON([&](JsonWriter& json) { writeMembers(json, receipt); });
        return;
    }
    session.output() << fmt::format("Exported {} {} of {} {}. Recorded as {}.\n", receipt.lineCount,
                                    receipt.lineCount == 1 ? "line" : "lines", receipt.dayCount,
                                    receipt.dayCount == 1 ? "day" : "days", receipt.snapshotID.text());
}

void printHistory(Session& session, const std::vector<ExportSnapshot>& snapshots)
{
    Table table({{"When"},
                 {"Format"},
                 {"From"},
                 {"To"},
                 {"Days", right},
                 {"Lines", right},
                 {"Billed", right},
                 {"Amount", right},
                 {"Identifier"}});
    const auto calendar = session.calendar();
    for (const auto& snapshot : snapshots) {
        const auto currency = snapshot.totals.currencyCode
            ? BillingCurrency::fromText(*snapshot.totals.currencyCode)
            : std::nullopt;
        table.add({shownDateTime(snapshot.createdAt, calendar, session.locale("LC_TIME")),
                   std::string(rawValue(snapshot.format)), dayID(snapshot.rangeStart),
                   dayID(snapshot.rangeEnd), std::to_string(snapshot.days.size()),
                   std::to_string(snapshot.lines.size()), shownDuration(snapshot.totals.billedSeconds),
                   shownAmount(session, snapshot.totals.amount, currency), snapshot.id.text()});
    }
    session.output() << table;
}

void printSnapshot(Session& session, const ExportSnapshot& snapshot)
{
    const auto document = documentOf(snapshot);
    printLines(session, document.lines, document.currency);
    printTotals(session, document.totals, document.currency);
}

} // namespace stintbook
