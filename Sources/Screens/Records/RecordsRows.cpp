#include "Screens/Records/RecordsRows.h"

#include <QObject>
#include <algorithm>

#include "Review/WorkTitles.h"
#include "Screens/Models/Texts.h"

namespace stintbook {

namespace {

/// The figures of a line, and whose it is.
RecordLineRow rowOf(const ReviewedDayLine& line, const AssignmentDirectory& directory,
                    const AmountText& amounts)
{
    const int unpriced = line.isBillable && !line.amount ? 1 : 0;
    return {.id = {},
            .title = {},
            .account = accountOf(line),
            .color = colorOf(line, directory),
            .times = {},
            .tracked = shortDuration(line.trackedSeconds),
            .billed = shortDuration(line.billedSeconds),
            .amount = line.isBillable ? text(amounts.text(line.amount, unpriced)) : QString(),
            .isBillable = line.isBillable,
            .isReviewed = line.isReviewed};
}

/// What a block was about: the title of most of its time, or its application.
QString titleOf(const UUID& id, const ReviewDay& day)
{
    const auto block = std::ranges::find(day.blocks, id, &WorkBlock::id);
    if (block == day.blocks.end())
        return {};
    const auto titles = workTitles(block->lineage);
    return text(titles.empty() ? block->application.displayName : titles.front().text);
}

} // namespace

QDate dateOf(const LocalDay& day)
{
    return QDate::fromString(text(dayID(day)).left(10), Qt::ISODate);
}

QString monthOf(const QString& dayID)
{
    return dayID.left(7);
}

QString accountOf(const ReviewedDayLine& line)
{
    if (!line.clientID)
        return QObject::tr("Unassigned");
    return QStringLiteral("%1 / %2").arg(
        line.clientName ? text(*line.clientName) : QObject::tr("Unavailable client"),
        line.projectName ? text(*line.projectName) : QObject::tr("Unavailable project"));
}

QString colorOf(const ReviewedDayLine& line, const AssignmentDirectory& directory)
{
    const auto* client = line.clientID ? directory.client(*line.clientID) : nullptr;
    return client != nullptr && client->color ? text(client->color->hex()) : QString();
}

std::vector<RecordLineRow> workRows(const OpenedDay& day, const WorkFilter& filter,
                                    const AssignmentDirectory& directory, const CalendarContext& calendar,
                                    const AmountText& amounts)
{
    std::vector<RecordLineRow> rows;
    for (const auto& piece : day.work) {
        if (!filter.includes(piece.line))
            continue;
        auto& row = rows.emplace_back(rowOf(piece.line, directory, amounts));
        row.id = text(piece.id);
        row.times = timesOf(piece.time, calendar);
        row.title = piece.description ? text(*piece.description) : titleOf(piece.id, day.content());
    }
    return rows;
}

std::vector<RecordLineRow> accountRows(const std::vector<ReviewedDayLine>& lines,
                                       const AssignmentDirectory& directory, const AmountText& amounts)
{
    std::vector<RecordLineRow> rows;
    for (const auto& line : gathered(lines)) {
        auto& row = rows.emplace_back(rowOf(line, directory, amounts));
        row.id = QStringLiteral("%1 %2 %3").arg(row.account).arg(line.isBillable).arg(line.isReviewed);
    }
    return rows;
}

} // namespace stintbook
