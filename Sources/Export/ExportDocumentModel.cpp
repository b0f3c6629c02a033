#include "Export/ExportDocumentModel.h"

#include <algorithm>

#include <fmt/format.h>

#include "Billing/HourlyRate.h"

namespace stintbook {

namespace {

std::string clientName(const AssignmentDirectory& directory, ClientID id)
{
    const auto* client = directory.client(id);
    return client ? client->name : "Unavailable client";
}

std::string projectName(const AssignmentDirectory& directory, ProjectID id)
{
    const auto* project = directory.project(id);
    return project ? project->name : "Unavailable project";
}

bool isWanted(const ReviewedWorkItem& item, const ExportRequest& request)
{
    const auto& [client, project, isBillable] = item.assignment;
    return item.isIncluded() && request.clientFilterID.value_or(client) == client
        && request.projectFilterID.value_or(project) == project;
}

ExportLine lineFor(const ReviewedWorkItem& item, const LocalDay& day, const AssignmentDirectory& directory,
                   const BillingBook& billing)
{
    const auto& [client, project, isBillable] = item.assignment;
    const auto terms = billing.resolve(client, project);
    const auto actual = Decimal::wholeSeconds(item.interval().length().value);
    const auto billed = billedSeconds(actual, terms.rounding);
    const auto billability = isBillable ? Billability::billable : Billability::nonBillable;
    ExportLine line{
        .dayID = dayID(day),
        .dayStart = day.start,
        .timeZoneIdentifier = day.timeZoneIdentifier,
        .start = item.start,
        .end = item.end,
        .clientName = clientName(directory, client),
        .projectName = projectName(directory, project),
        .description = item.description,
        .actualSeconds = actual,
        .billedSeconds = billed,
        .isBillable = isBillable,
        .hourlyRate = terms.hourlyRate,
        .amount = amount(billed, terms.hourlyRate, billability),
        .rounding = terms.rounding,
    };
    if (const auto& currency = billing.settings.currency)
        line.currencyCode = currency->code();
    return line;
}

} // namespace

std::string message(ExportBlock block)
{
    switch (block) {
    case ExportBlock::daysNotReady:
        return "Export blocked.";
    case ExportBlock::noIncludedWork:
        return "There is nothing to export yet";
    }
    return {};
}

std::optional<ExportBlock> ExportDocumentModel::block() const
{
    if (!lines.empty())
        return std::nullopt;
    return blockedDays.empty() ? ExportBlock::noIncludedWork : ExportBlock::daysNotReady;
}

ExportDocumentModel buildDocument(const ExportRequest& request, std::vector<ExportDayInput> days,
                                  const AssignmentDirectory& directory, const BillingBook& billing)
{
    ExportDocumentModel document{.request = request.normalised(), .currency = billing.settings.currency};
    if (const auto& client = request.clientFilterID)
        document.clientFilterName = clientName(directory, *client);
    if (const auto& project = request.projectFilterID)
        document.projectFilterName = projectName(directory, *project);

    const Interval range = document.request.interval();
    std::erase_if(days, [&](const ExportDayInput& input) { return !range.contains(input.day.start); });
    std::ranges::stable_sort(days, {}, &ExportDayInput::day);
    for (auto& [day, revision, isReady, items, notReadyReason] : days) {
        if (!isReady) {
            document.blockedDays.push_back({day, notReadyReason});
            continue;
        }
        std::erase_if(items, [&](const auto& item) { return !isWanted(item, request); });
        std::ranges::stable_sort(items, {}, &ReviewedWorkItem::start);
        for (const auto& item : items)
            document.lines.push_back(lineFor(item, day, directory, billing));
        if (!items.empty())
            document.days.push_back({dayID(day), day.start, day.timeZoneIdentifier, revision.value});
    }
    document.totals = totals(document.lines, document.currency);
    return document;
}

std::string blockedDaysHeading(const std::vector<ExportBlockedDay>& days)
{
    return days.size() == 1 ? "1 day needs review" : fmt::format("{} days need review", days.size());
}

} // namespace stintbook
