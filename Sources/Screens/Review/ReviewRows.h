#pragma once

#include <QStringList>
#include <string>
#include <unordered_map>
#include <vector>

#include "App/DayBook.h"
#include "Base/Identifier.h"
#include "Review/SubjectState.h"
#include "Screens/Models/RowModel.h"

/// A day's parts as its screen shows them: texts and numbers. All but the words of a search are made away from the
/// window's thread.
namespace stintbook {

struct DayView;

/// A block, an item, or brief blocks that are gathered into one row.
struct SubjectRow {
    UUID id;
    /// What is edited when the row is: itself, or what it gathers.
    std::vector<UUID> subjects;
    QString title;
    /// Further titles, at a glance.
    QString moreTitles;
    /// "08:35 – 08:39".
    QString times;
    QString duration;
    QString application;
    /// Empty without an assignment.
    QString client;
    QString project;
    /// "#RRGGBB", or empty where the client has none.
    QString color;
    /// A raw value of `SubjectState`.
    QString state;
    bool isUnresolved = false;
    /// Seconds since the day's beginning.
    double start = 0;
    double end = 0;

    friend bool operator==(const SubjectRow&, const SubjectRow&) = default;
};

/// Idle time, or time without a record.
struct SpanRow {
    UUID id;
    /// "Idle" and the like.
    QString title;
    QString times;
    QString duration;
    bool isIdle = false;
    double start = 0;
    double end = 0;

    friend bool operator==(const SpanRow&, const SpanRow&) = default;
};

/// One recorded piece of what is inspected.
struct LineageRow {
    /// Of the recorded segment and the piece's start: split work shares segments.
    std::string id;
    QString times;
    QString duration;
    QString application;
    QString title;
    QString domain;

    friend bool operator==(const LineageRow&, const LineageRow&) = default;
};

/// "Assigned by rule" and the like.
QString stateText(SubjectState state);

std::vector<RowModel<SubjectRow>::Role> subjectRoles();
std::vector<SubjectRow> subjectRows(const DayView& view);
std::vector<SpanRow> spanRows(const DayView& view);
/// What a search looks into, by row, folded: titles, domains, descriptions, applications, clients and projects.
std::unordered_map<UUID, std::string> searchedWords(const DayView& view);
std::vector<LineageRow> lineageRows(const std::vector<WorkBlockSegment>& lineage,
                                    const CalendarContext& calendar);

} // namespace stintbook
