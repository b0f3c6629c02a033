#include "Billing/ReviewedDayReading.h"

#include <algorithm>

#include "Billing/HourlyRate.h"
#include "Review/ReadyToBill.h"

namespace stintbook {

namespace {

enum class Layer { derived, reviewed };

/// One item or block before it is measured and priced.
struct PieceOfWork {
    UUID id;
    Interval time;
    std::optional<std::string> description;
    std::optional<AttributionAssignment> assignment;
    Layer layer;
};

std::vector<PieceOfWork> includedWork(const ReviewDay& day)
{
    std::vector<PieceOfWork> work;
    for (const auto& item : day.items) {
        if (item.isIncluded())
            work.push_back(
                {item.id.uuid, item.interval(), item.description, item.assignment, Layer::reviewed});
    }
    for (const auto& block : day.blocks) {
        if (!block.review.isIgnored)
            work.push_back(
                {block.id, block.interval(), std::nullopt, block.effectiveAssignment(), Layer::derived});
    }
    std::ranges::stable_sort(work, {}, [](const PieceOfWork& piece) { return piece.time.start; });
    return work;
}

/// The line that a piece of work makes, still without its figures.
ReviewedDayLine emptyLine(const PieceOfWork& piece, const AssignmentDirectory& directory)
{
    ReviewedDayLine line;
    line.isReviewed = piece.layer == Layer::reviewed;
    if (!piece.assignment)
        return line;
    line.clientID = piece.assignment->clientID;
    line.projectID = piece.assignment->projectID;
    line.isBillable = piece.assignment->isBillable;
    if (const auto* client = directory.client(*line.clientID))
        line.clientName = client->name;
    if (const auto* project = directory.project(*line.projectID))
        line.projectName = project->name;
    return line;
}

bool isSameLine(const ReviewedDayLine& a, const ReviewedDayLine& b)
{
    return a.isReviewed == b.isReviewed && a.isBillable == b.isBillable && a.clientID == b.clientID
        && a.projectID == b.projectID;
}

BillingBook::Terms terms(const ReviewedDayLine& line, const BillingBook& billing)
{
    if (line.clientID)
        return billing.resolve(*line.clientID, *line.projectID);
    return {.hourlyRate = std::nullopt,
            .rounding = billing.settings.defaultRounding.value_or(RoundingPolicy::exact)};
}

void addUp(std::optional<Decimal>& sum, const std::optional<Decimal>& amount)
{
    if (amount)
        sum = sum.value_or(Decimal()) + *amount;
}

DayWork priced(PieceOfWork piece, const AssignmentDirectory& directory, const BillingBook& billing)
{
    auto line = emptyLine(piece, directory);
    const auto [hourlyRate, rounding] = terms(line, billing);
    line.trackedSeconds = Decimal::wholeSeconds(piece.time.length().value);
    line.billedSeconds = billedSeconds(line.trackedSeconds, rounding);
    line.amount = amount(line.billedSeconds, hourlyRate,
                         line.isBillable ? Billability::billable : Billability::nonBillable);
    return {piece.id, piece.time, std::move(piece.description), std::move(line)};
}

std::string accountName(const ReviewedDayLine& line)
{
    return line.clientName.value_or("Unavailable client") + " / "
        + line.projectName.value_or("Unavailable project");
}

} // namespace

std::vector<DayWork> dayWork(const ReviewDay& day, const AssignmentDirectory& directory,
                             const BillingBook& billing)
{
    std::vector<DayWork> work;
    for (auto& piece : includedWork(day))
        work.push_back(priced(std::move(piece), directory, billing));
    return work;
}

std::vector<ReviewedDayLine> gathered(const std::vector<ReviewedDayLine>& lines)
{
    std::vector<ReviewedDayLine> sums;
    for (const auto& line : lines) {
        const auto sum =
            std::ranges::find_if(sums, [&](const auto& candidate) { return isSameLine(line, candidate); });
        if (sum == sums.end()) {
            sums.push_back(line);
            continue;
        }
        sum->trackedSeconds += line.trackedSeconds;
        sum->billedSeconds += line.billedSeconds;
        addUp(sum->amount, line.amount);
    }
    return sums;
}

bool WorkFilter::includes(const ReviewedDayLine& line) const
{
    return (!clientID || line.clientID == clientID) && (!projectID || line.projectID == projectID);
}

ReviewedWorkTotals totals(const std::vector<ReviewedDayLine>& lines)
{
    ReviewedWorkTotals totals;
    for (const auto& line : lines) {
        totals.billedSeconds += line.billedSeconds;
        totals.trackedSeconds += line.trackedSeconds;
        addUp(totals.knownAmount, line.amount);
        totals.unpricedBillableCount += line.isBillable && !line.amount ? 1 : 0;
        totals.lineCount += 1;
        if (!line.clientID)
            continue;
        auto account = accountName(line);
        if (std::ranges::find(totals.accountNames, account) == totals.accountNames.end())
            totals.accountNames.push_back(std::move(account));
    }
    if (totals.unpricedBillableCount == 0)
        totals.amount = totals.knownAmount;
    return totals;
}

ReviewedDayReading reading(const ReviewDay& day, const std::optional<ReviewedDayApproval>& approval,
                           const AssignmentDirectory& directory, const BillingBook& billing)
{
    ReviewedDayReading result{.day = day.day,
                              .revision = revision(day.items),
                              .isReady = false,
                              .items = day.items,
                              .work = dayWork(day, directory, billing),
                              .lines = {},
                              .currency = billing.settings.currency,
                              .notReadyReason = std::nullopt};
    for (const auto& piece : result.work)
        result.lines.push_back(piece.line);
    result.lines = gathered(result.lines);
    result.isReady = status(approval, result.revision) == ReviewedDayStatus::ready;
    const auto blockers = eligibility(day).blockers;
    if (!result.isReady && !blockers.empty())
        result.notReadyReason = message(blockers.front());
    return result;
}

} // namespace stintbook
