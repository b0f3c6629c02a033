#include "CommandLine/WorkTables.h"

#include <algorithm>

#include <fmt/format.h>

#include "App/ClientBook.h"
#include "CommandLine/Formatting.h"
#include "CommandLine/Table.h"

namespace stintbook {

namespace {

constexpr int titleWidth = 60;
constexpr auto right = Table::Alignment::right;

/// "Client / Project", and what is unusual about it.
std::string account(const std::optional<AttributionAssignment>& assignment,
                    const AssignmentDirectory& directory)
{
    if (!assignment)
        return "—";
    const auto* client = directory.client(assignment->clientID);
    const auto* project = directory.project(assignment->projectID);
    return fmt::format("{} / {}{}", client != nullptr ? client->name : "Unavailable client",
                       project != nullptr ? project->name : "Unavailable project",
                       assignment->isBillable ? "" : " (not billable)");
}

std::string state(const WorkBlock& block)
{
    if (block.review.isIgnored)
        return "ignored";
    if (block.isInUnsettledConflict())
        return "conflict";
    if (!block.effectiveAssignment())
        return "unassigned";
    if (block.review.isConfirmed)
        return "confirmed";
    return block.review.assignment ? "assigned" : "by rule";
}

struct Row {
    Instant start;
    std::vector<std::string> cells;
};

} // namespace

void printWork(Session& session, const CalendarContext& calendar, const std::vector<WorkBlock>& blocks,
               const std::vector<ReviewedWorkItem>& items,
               const std::set<ReviewedItemID>& itemsWithoutDetails)
{
    const auto directory = orRefuse(ClientBook(session.store()).directory());
    const auto locale = session.locale("LC_TIME");
    const auto row = [&](Interval when, const std::string& what,
                         const std::optional<AttributionAssignment>& assignment, std::string itsState,
                         const UUID& id) {
        return Row{when.start,
                   {shownTime(when.start, calendar, locale), shownTime(when.end, calendar, locale),
                    shownDuration(when.length()), shownInCells(what, titleWidth),
                    shownInCells(account(assignment, directory), titleWidth), std::move(itsState),
                    id.upperCaseText()}};
    };
    std::vector<Row> rows;
    for (const auto& block : blocks)
        rows.push_back(row(block.interval(), block.application.displayName, block.effectiveAssignment(),
                           state(block), block.id));
    for (const auto& item : items)
        rows.push_back(row(item.interval(), item.description.value_or(""), item.assignment,
                           std::string(item.isIncluded() ? "reviewed" : "ignored")
                               + (itemsWithoutDetails.contains(item.id) ? "*" : ""),
                           item.id.uuid));
    std::ranges::stable_sort(rows, {}, &Row::start);

    Table table(
        {{"From"}, {"To"}, {"Time", right}, {"Work"}, {"Client / Project"}, {"State"}, {"Identifier"}});
    for (auto& entry : rows)
        table.add(std::move(entry.cells));
    session.output() << table;
    if (!itemsWithoutDetails.empty())
        session.output() << "* " << detailsRemovedNote << '\n';
}

void printSegments(Session& session, const CalendarContext& calendar,
                   const std::vector<ActivitySegment>& segments)
{
    const auto locale = session.locale("LC_TIME");
    Table table({{"From"}, {"To"}, {"Time", right}, {"Kind"}, {"Application"}, {"Title"}, {"Domain"}});
    for (const auto& segment : segments) {
        table.add({shownTime(segment.start, calendar, locale), shownTime(segment.end, calendar, locale),
                   shownDuration(segment.length()),
                   std::string(segment.gapReason ? rawValue(*segment.gapReason) : rawValue(segment.kind)),
                   segment.application ? segment.application->displayName : "",
                   shownInCells(segment.context.text, titleWidth),
                   segment.browserDomain ? segment.browserDomain->host() : ""});
    }
    session.output() << table;
}

void printDays(Session& session, const std::vector<ListedDay>& days)
{
    Table table(
        {{"Day"}, {"Work", right}, {"Idle", right}, {"Gaps", right}, {"Unreviewed", right}, {"State"}});
    for (const auto& day : days) {
        table.add({dayID(day.summary.day), shownDuration(day.summary.workDuration),
                   shownDuration(day.summary.idleDuration), shownDuration(day.summary.gapDuration),
                   shownDuration(day.unreviewedDuration), std::string(label(day.recordsState))});
    }
    session.output() << table;
}

void printDay(Session& session, const CalendarContext& calendar, const OpenedDay& day)
{
    auto& output = session.output();
    const auto& recorded = day.summary.day;
    output << fmt::format("{}  {}\n", dayID(recorded.day), label(day.recordsState));
    output << fmt::format("Work {}, idle {}, gaps {}; assigned {}, unassigned {}, unresolved {}\n\n",
                          shownDuration(recorded.workDuration), shownDuration(recorded.idleDuration),
                          shownDuration(recorded.gapDuration), shownDuration(day.summary.assignedDuration),
                          shownDuration(day.summary.unassignedDuration),
                          shownDuration(day.summary.unresolvedDuration));
    printWork(session, calendar, day.content().blocks, day.content().items, day.loaded->itemsWithoutDetails);
    output << '\n';

    Table lines({{"Client / Project"}, {"Tracked", right}, {"Billed", right}, {"Amount", right}});
    for (const auto& line : day.lines) {
        lines.add({line.clientID ? fmt::format("{} / {}{}", line.clientName.value_or("Unavailable client"),
                                               line.projectName.value_or("Unavailable project"),
                                               line.isBillable ? "" : " (not billable)")
                                 : "Unassigned",
                   shownDuration(line.trackedSeconds), shownDuration(line.billedSeconds),
                   shownAmount(session, line.amount, day.currency)});
    }
    lines.add({"Total", shownDuration(day.totals.trackedSeconds), shownDuration(day.totals.billedSeconds),
               shownAmount(session, day.totals.amount, day.currency)});
    output << lines;

    if (day.status == ReviewedDayStatus::ready) {
        output << "\nThis day is ready to bill.\n";
        if (day.unreviewedDuration > Seconds{0})
            output << fmt::format("{} of work was recorded since and is not part of it.\n",
                                  shownDuration(day.unreviewedDuration));
        return;
    }
    for (const auto blocker : day.blockers)
        output << '\n' << message(blocker);
    if (!day.blockers.empty())
        output << '\n';
}

} // namespace stintbook
