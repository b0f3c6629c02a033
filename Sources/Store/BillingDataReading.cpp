#include <algorithm>

#include "Store/ActivityDataReading.h"
#include "Store/RecordReading.h"

namespace stintbook {

namespace {

JsonRead<BillingCurrency> currency(const JsonValue& value)
{
    if (auto currency = BillingCurrency::fromText(TRY(value.text())))
        return *std::move(currency);
    return value.problem("is no currency");
}

/// Terms of a client or a project, which are written alike.
template <typename ID, typename Terms>
JsonRead<std::pair<ID, Terms>> terms(const JsonValue& value, std::string_view owner)
{
    auto object = TRY(JsonObject::of(value));
    std::pair<ID, Terms> record;
    record.first = TRY(object.required(owner, jsonIdentifier<ID>));
    record.second.hourlyRate = TRY(object.optional("hourlyRate", jsonAmount));
    record.second.rounding = TRY(object.optional("rounding", jsonCase<RoundingPolicy>));
    TRY(object.mustHoldNothingElse());
    return record;
}

JsonRead<ExportFieldSet> fields(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    ExportFieldSet fields;
    for (const auto& [token, field] : exportFieldTokens)
        fields.*field = TRY(object.required(token, jsonFlag));
    TRY(object.mustHoldNothingElse());
    return fields;
}

JsonRead<ExportLine> line(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    ExportLine line;
    line.actualSeconds = TRY(object.required("actualSeconds", jsonAmount));
    line.amount = TRY(object.optional("amount", jsonAmount));
    line.billedSeconds = TRY(object.required("billedSeconds", jsonAmount));
    line.clientName = TRY(object.required("clientName", jsonText));
    line.currencyCode = TRY(object.optional("currencyCode", jsonText));
    line.dayID = TRY(object.required("dayID", jsonText));
    line.dayStart = TRY(object.required("dayStart", jsonInstant));
    line.description = TRY(object.optional("description", jsonText));
    line.end = TRY(object.required("end", jsonInstant));
    line.hourlyRate = TRY(object.optional("hourlyRate", jsonAmount));
    line.isBillable = TRY(object.required("isBillable", jsonFlag));
    line.projectName = TRY(object.required("projectName", jsonText));
    line.rounding = TRY(object.required("rounding", jsonCase<RoundingPolicy>));
    line.start = TRY(object.required("start", jsonInstant));
    line.timeZoneIdentifier = TRY(object.required("timeZoneIdentifier", jsonTimeZone));
    TRY(object.mustHoldNothingElse());
    return line;
}

JsonRead<ExportDayRevision> dayRevision(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    ExportDayRevision day;
    day.dayID = TRY(object.required("dayID", jsonText));
    day.dayStart = TRY(object.required("dayStart", jsonInstant));
    day.revision = TRY(object.required("revision", jsonText));
    day.timeZoneIdentifier = TRY(object.required("timeZoneIdentifier", jsonTimeZone));
    TRY(object.mustHoldNothingElse());
    return day;
}

JsonRead<ExportTotals> jsonTotals(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    ExportTotals totals;
    totals.actualSeconds = TRY(object.required("actualSeconds", jsonAmount));
    totals.amount = TRY(object.optional("amount", jsonAmount));
    totals.billableBilledSeconds = TRY(object.required("billableBilledSeconds", jsonAmount));
    totals.billedSeconds = TRY(object.required("billedSeconds", jsonAmount));
    totals.currencyCode = TRY(object.optional("currencyCode", jsonText));
    totals.knownAmount = TRY(object.optional("knownAmount", jsonAmount));
    totals.nonBillableBilledSeconds = TRY(object.required("nonBillableBilledSeconds", jsonAmount));
    totals.unpricedLineCount = TRY(object.required("unpricedLineCount", jsonInteger));
    TRY(object.mustHoldNothingElse());
    return totals;
}

/// The store keeps the lines' amounts and adds them up when it is read.
JsonRead<void> mustBeTheSum(const ExportSnapshot& snapshot, JsonObject& object)
{
    std::optional<Decimal> sum;
    for (const auto& line : snapshot.lines)
        addIfPresent(sum, line.amount);
    if (sum != snapshot.totals.knownAmount)
        return object.problem("totals", "has another \"knownAmount\" than its lines");
    return {};
}

} // namespace

template <> JsonRead<BillingSettings> readRecord(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    BillingSettings settings;
    settings.currency = TRY(object.optional("currencyCode", currency));
    settings.defaultRounding = TRY(object.optional("defaultRounding", jsonCase<RoundingPolicy>));
    TRY(object.mustHoldNothingElse());
    return settings;
}

template <> JsonRead<std::pair<ClientID, ClientBillingDefaults>> readRecord(const JsonValue& value)
{
    return terms<ClientID, ClientBillingDefaults>(value, "clientID");
}

template <> JsonRead<std::pair<ProjectID, ProjectBillingOverrides>> readRecord(const JsonValue& value)
{
    return terms<ProjectID, ProjectBillingOverrides>(value, "projectID");
}

template <> JsonRead<ExportSnapshot> readRecord(const JsonValue& value)
{
    auto object = TRY(JsonObject::of(value));
    ExportSnapshot snapshot;
    snapshot.clientFilterID = TRY(object.optional("clientFilterID", jsonIdentifier<ClientID>));
    snapshot.clientFilterName = TRY(object.optional("clientFilterName", jsonText));
    snapshot.createdAt = TRY(object.required("createdAt", jsonInstant));
    snapshot.days = TRY(object.list("days", dayRevision));
    snapshot.fields = TRY(object.required("fields", fields));
    snapshot.format = TRY(object.required("format", jsonCase<ExportFormat>));
    snapshot.id = TRY(object.required("id", jsonIdentifier<ExportSnapshotID>));
    snapshot.lines = TRY(object.list("lines", line));
    snapshot.mode = TRY(object.required("mode", jsonCase<ExportMode>));
    snapshot.projectFilterID = TRY(object.optional("projectFilterID", jsonIdentifier<ProjectID>));
    snapshot.projectFilterName = TRY(object.optional("projectFilterName", jsonText));
    snapshot.rangeEnd = TRY(requiredDay(object, {"rangeEndDayID", "rangeEnd", "rangeEndTimeZoneIdentifier"}));
    snapshot.rangeStart =
        TRY(requiredDay(object, {"rangeStartDayID", "rangeStart", "rangeStartTimeZoneIdentifier"}));
    snapshot.totals = TRY(object.required("totals", jsonTotals));
    TRY(object.mustHoldNothingElse());
    TRY(mustBeTheSum(snapshot, object));
    return snapshot;
}

} // namespace stintbook
