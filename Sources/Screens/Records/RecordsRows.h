#pragma once

#include <QDate>
#include <QString>
#include <optional>
#include <vector>

#include "App/DayBook.h"
#include "Billing/AmountFormat.h"
#include "Screens/Models/RowModel.h"

namespace stintbook {

/// What Records keeps of a day that was read.
struct DayRecord {
    RecordsDayState state = RecordsDayState::needsReview;
    std::vector<ReviewedDayLine> lines;

    friend bool operator==(const DayRecord&, const DayRecord&) = default;
};

/// A day, or the month above its days.
struct RecordRow {
    /// The day's, or "2026-11".
    QString id;
    bool isMonth = false;
    QDate date;
    bool isSelected = false;
    /// A month's are there once all its days were read.
    std::optional<RecordsDayState> state;
    std::optional<ReviewedWorkTotals> totals;

    friend bool operator==(const RecordRow&, const RecordRow&) = default;
};

/// One piece of work of a day, or what several days did for one client and project.
struct RecordLineRow {
    QString id;
    QString title;
    QString account;
    QString color;
    QString times;
    QString tracked;
    QString billed;
    QString amount;
    bool isBillable = false;
    bool isReviewed = false;

    friend bool operator==(const RecordLineRow&, const RecordLineRow&) = default;
};

/// The date that the day bears where it was recorded.
QDate dateOf(const LocalDay& day);
QString monthOf(const QString& dayID);
QString accountOf(const ReviewedDayLine& line);
QString colorOf(const ReviewedDayLine& line, const AssignmentDirectory& directory);

std::vector<RecordLineRow> workRows(const OpenedDay& day, const WorkFilter& filter,
                                    const AssignmentDirectory& directory, const CalendarContext& calendar,
                                    const AmountText& amounts);
std::vector<RecordLineRow> accountRows(const std::vector<ReviewedDayLine>& lines,
                                       const AssignmentDirectory& directory, const AmountText& amounts);

} // namespace stintbook
