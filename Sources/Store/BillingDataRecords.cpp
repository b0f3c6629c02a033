#include <algorithm>
#include <string>

#include "Store/ActivityDataRecords.h"
#include "Store/RecordWriting.h"

namespace stintbook {

void write(JsonWriter& json, const BillingSettings& settings)
{
    json.object([&] {
        if (settings.currency)
            json.member("currencyCode", settings.currency->code());
        json.member("defaultRounding", rawText(settings.defaultRounding));
    });
}

void write(JsonWriter& json, ClientID clientID, const ClientBillingDefaults& defaults)
{
    json.object([&] {
        json.member("clientID", clientID);
        json.member("hourlyRate", defaults.hourlyRate);
        json.member("rounding", rawText(defaults.rounding));
    });
}

void write(JsonWriter& json, ProjectID projectID, const ProjectBillingOverrides& overrides)
{
    json.object([&] {
        json.member("hourlyRate", overrides.hourlyRate);
        json.member("projectID", projectID);
        json.member("rounding", rawText(overrides.rounding));
    });
}

void write(JsonWriter& json, const ExportFieldSet& fields)
{
    static constexpr auto sortedTokens = [] {
        auto tokens = exportFieldTokens;
        std::ranges::sort(tokens, {}, &ExportFieldToken::token);
        return tokens;
    }();
    json.object([&] {
        for (const auto& [token, field] : sortedTokens)
            json.member(token, fields.*field);
    });
}

void write(JsonWriter& json, const ExportLine& line)
{
    json.object([&] {
        json.member("actualSeconds", line.actualSeconds);
        json.member("amount", line.amount);
        json.member("billedSeconds", line.billedSeconds);
        json.member("clientName", line.clientName);
        json.member("currencyCode", line.currencyCode);
        json.member("dayID", line.dayID);
        json.member("dayStart", line.dayStart);
        json.member("description", line.description);
        json.member("end", line.end);
        json.member("hourlyRate", line.hourlyRate);
        json.member("isBillable", line.isBillable);
        json.member("projectName", line.projectName);
        json.member("rounding", rawValue(line.rounding));
        json.member("start", line.start);
        json.member("timeZoneIdentifier", line.timeZoneIdentifier);
    });
}

void write(JsonWriter& json, const ExportSummaryRow& row)
{
    json.object([&] {
        json.member("actualSeconds", row.actualSeconds);
        json.member("amount", row.amount);
        json.member("billedSeconds", row.billedSeconds);
        json.member("clientName", row.clientName);
        json.member("currencyCode", row.currencyCode);
        json.member("dayID", row.dayID);
        json.member("dayStart", row.dayStart);
        json.member("hourlyRate", row.hourlyRate);
        json.member("isBillable", row.isBillable);
        json.member("lineCount", row.lineCount);
        json.member("projectName", row.projectName);
        json.member("rounding", rawValue(row.rounding));
        json.member("timeZoneIdentifier", row.timeZoneIdentifier);
    });
}

void write(JsonWriter& json, const ExportDayRevision& day)
{
    json.object([&] {
        json.member("dayID", day.dayID);
        json.member("dayStart", day.dayStart);
        json.member("revision", day.revision);
        json.member("timeZoneIdentifier", day.timeZoneIdentifier);
    });
}

void write(JsonWriter& json, const ExportTotals& totals)
{
    json.object([&] {
        json.member("actualSeconds", totals.actualSeconds);
        json.member("amount", totals.amount);
        json.member("billableBilledSeconds", totals.billableBilledSeconds);
        json.member("billedSeconds", totals.billedSeconds);
        json.member("currencyCode", totals.currencyCode);
        json.member("knownAmount", totals.knownAmount);
        json.member("nonBillableBilledSeconds", totals.nonBillableBilledSeconds);
        json.member("unpricedLineCount", totals.unpricedLineCount);
    });
}

void write(JsonWriter& json, const ExportSnapshot& snapshot)
{
    json.object([&] {
        json.member("clientFilterID", snapshot.clientFilterID);
        json.member("clientFilterName", snapshot.clientFilterName);
        json.member("createdAt", snapshot.createdAt);
        recordArray(json, "days", snapshot.days);
        recordMember(json, "fields", snapshot.fields);
        json.member("format", rawValue(snapshot.format));
        json.member("id", snapshot.id);
        recordArray(json, "lines", snapshot.lines);
        json.member("mode", rawValue(snapshot.mode));
        json.member("projectFilterID", snapshot.projectFilterID);
        json.member("projectFilterName", snapshot.projectFilterName);
        json.member("rangeEnd", snapshot.rangeEnd.start);
        json.member("rangeEndDayID", dayID(snapshot.rangeEnd));
        json.member("rangeEndTimeZoneIdentifier", snapshot.rangeEnd.timeZoneIdentifier);
        json.member("rangeStart", snapshot.rangeStart.start);
        json.member("rangeStartDayID", dayID(snapshot.rangeStart));
        json.member("rangeStartTimeZoneIdentifier", snapshot.rangeStart.timeZoneIdentifier);
        recordMember(json, "totals", snapshot.totals);
    });
}

} // namespace stintbook
