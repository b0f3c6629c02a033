#include "Export/ExportSnapshot.h"

namespace stintbook {

ExportSnapshot snapshotOf(const ExportDocumentModel& document, ExportSnapshotID id, Instant createdAt)
{
    const auto& request = document.request;
    return {
        .id = id,
        .createdAt = createdAt,
        .format = request.format,
        .mode = request.mode,
        .fields = request.fields,
        .rangeStart = request.rangeStart,
        .rangeEnd = request.rangeEnd,
        .clientFilterID = request.clientFilterID,
        .clientFilterName = document.clientFilterName,
        .projectFilterID = request.projectFilterID,
        .projectFilterName = document.projectFilterName,
        .lines = document.lines,
        .days = document.days,
        .totals = document.totals,
    };
}

ExportDocumentModel documentOf(const ExportSnapshot& snapshot)
{
    const auto& code = snapshot.totals.currencyCode;
    return {
        .request =
            {
                .rangeStart = snapshot.rangeStart,
                .rangeEnd = snapshot.rangeEnd,
                .clientFilterID = snapshot.clientFilterID,
                .projectFilterID = snapshot.projectFilterID,
                .mode = snapshot.mode,
                .format = snapshot.format,
                .fields = snapshot.fields,
            },
        .currency = code ? BillingCurrency::fromText(*code) : std::nullopt,
        .lines = snapshot.lines,
        .days = snapshot.days,
        .totals = snapshot.totals,
        .clientFilterName = snapshot.clientFilterName,
        .projectFilterName = snapshot.projectFilterName,
    };
}

ExportReceipt receiptFor(const ExportSnapshot& snapshot)
{
    return {
        .snapshotID = snapshot.id,
        .createdAt = snapshot.createdAt,
        .format = snapshot.format,
        .dayCount = static_cast<int>(snapshot.days.size()),
        .lineCount = static_cast<int>(snapshot.lines.size()),
    };
}

} // namespace stintbook
