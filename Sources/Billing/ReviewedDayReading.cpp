#include "Billing/ReviewedDayReading.h"

#include <algorithm>

#include "Billing/HourlyRate.h"
#include "Review/ReadyToBill.h"

namespace stintbook {

namespace {

enum class Layer { derived, reviewed };

/// One item or block, as lines see it.
struct PieceOfWork {
    Interval time;
    std::optional<AttributionAssignment> assignment;
    Layer layer;
};

std::vector<PieceOfWork> includedWork(const ReviewDay& day)
{
    std::vector<PieceOfWork> work;
    for (const auto& item : day.items) {
        if (item.isIncluded())
            work.push_back({item.interval(), item.assignment, Layer::reviewed});
    }
    for (const auto& block : day.blocks) {
        if (!block.review.isIgnored)
            work.push_back({block.interval(), block.effectiveAssignment(), Layer::derived});
    }
    std::ranges::stable_sort(work, {}, [](const PieceOfWork& piece) { return piece.time.start; });
    return work;
}

/// The line that a piece of work belongs to, still without its figures.
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

bool belongs(const PieceOfWork& piece, const ReviewedDayLine& line)
{
    if (line.isReviewed != (piece.layer == Layer::reviewed)
        || line.clientID.has_value() != piece.assignment.has_value())
        return false;
    return !piece.assignment
        || *piece.assignment == AttributionAssignment{*line.clientID, *line.projectID, line.isBillable};
}

BillingBook::Terms terms(const PieceOfWork& piece, const BillingBook& billing)
{
    if (piece.assignment)
        return billing.resolve(piece.assignment->clientID, piece.assignment->projectID);
    return {.hourlyRate = std::nullopt,
            .rounding = billing.settings.defaultRounding.value_or(RoundingPolicy::exact)};
}

void addUp(std::optional<Decimal>& sum, const std::optional<Decimal>& amount)
{
    if (amount)
        sum = sum.value_or(Decimal()) + *amount;
}

void add(const PieceOfWork& piece, const BillingBook& billing, ReviewedDayLine& line)
{
    const auto [hourlyRate, rounding] = terms(piece, billing);
    const auto tracked = Decimal::wholeSeconds(piece.time.length().value);
    const auto billed = billedSeconds(tracked, rounding);
    line.trackedSeconds += tracked;
    line.billedSeconds += billed;
    addUp(line.amount,
          amount(billed, hourlyRate, line.isBillable ? Billability::billable : Billability::nonBillable));
}

std::string accountName(const ReviewedDayLine& line)
{
    return line.clientName.value_or("Unavailable client") + " / "
        + line.projectName.value_or("Unavailable project");
}

} // namespace

std::vector<ReviewedDayLine> dayLines(const ReviewDay& day, const AssignmentDirectory& directory,
                                      const BillingBook& billing)
{
    std::vector<ReviewedDayLine> lines;
    for (const auto& piece : includedWork(day)) {
        auto line =
            std::ranges::find_if(lines, [&](const auto& candidate) { return belongs(piece, candidate); });
        if (line == lines.end())
            line = lines.insert(line, emptyLine(piece, directory));
        add(piece, billing, *line);
    }
    return lines;
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
                              .lines = dayLines(day, directory, billing),
                              .currency = billing.settings.currency,
                              .notReadyReason = std::nullopt};
    result.isReady = status(approval, result.revision) == ReviewedDayStatus::ready;
    const auto blockers = eligibility(day).blockers;
    if (!result.isReady && !blockers.empty())
        result.notReadyReason = message(blockers.front());
    return result;
}

} // namespace stintbook
