#include "CommandLine/ExportJSON.h"

#include "Store/ActivityDataRecords.h"
#include "Store/RecordWriting.h"

namespace stintbook {

void writeMembers(JsonWriter& json, const ExportPreview& preview)
{
    const auto& document = preview.document;
    json.key("blockedDays");
    json.array(document.blockedDays, [&](const ExportBlockedDay& day) {
        json.object([&] {
            json.member("dayID", dayID(day.day));
            json.member("reason", day.reason);
        });
    });
    if (document.currency)
        json.member("currencyCode", document.currency->code());
    recordArray(json, "days", document.days);
    recordArray(json, "lines", document.lines);
    recordArray(json, "summaryRows", summaryRows(document.lines));
    recordMember(json, "totals", document.totals);
    json.member("unreviewedDuration", preview.unreviewedDuration);
}

void writeSnapshots(JsonWriter& json, const std::vector<ExportSnapshot>& snapshots)
{
    recordArray(json, "snapshots", snapshots);
}

void writeMembers(JsonWriter& json, const ExportReceipt& receipt)
{
    json.member("createdAt", receipt.createdAt);
    json.member("dayCount", receipt.dayCount);
    json.member("format", rawValue(receipt.format));
    json.member("lineCount", receipt.lineCount);
    json.member("snapshotID", receipt.snapshotID);
}

} // namespace stintbook
