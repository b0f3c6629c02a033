#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <unordered_map>

#include "App/DayBook.h"
#include "Rules/AttributionRule.h"
#include "Screens/Review/ReviewRows.h"
#include "Screens/Window/StoreDesk.h"

namespace stintbook {

/// A day as it was read, with all that is shown of it. Made on the desk's thread, shown on the window's, and never
/// changed.
struct DayView {
    OpenedDay day;
    CalendarContext calendar = CalendarContext::system();
    std::map<RuleID, AttributionRule> rules;
    /// What the day's items were frozen from, as far as it is still recorded.
    std::unordered_map<SegmentID, const ActivitySegment*> frozen;
    std::vector<SubjectRow> subjects;
    std::vector<SpanRow> spans;
    /// Of the edits that can be taken back and done again; empty without one.
    QString undoTitle;
    QString redoTitle;
    /// Of the store, to know whether there is anything new.
    std::int64_t dataVersion = 0;

    const ReviewDay& content() const { return day.content(); }
    const AssignmentDirectory& directory() const { return day.loaded->directory; }
    /// What the subject was recorded as; empty for work that was added by hand, and where a cleanup removed it.
    std::vector<WorkBlockSegment> lineage(const ReviewedWorkItem& item) const;
    std::vector<WorkBlockSegment> lineage(const ReviewSubject& subject) const;
};

/// The view that is given while it shows that day as it still is; otherwise a new one.
Stored<std::shared_ptr<const DayView>> readDay(const DayBook& book, const LocalDay& day,
                                               StoreDesk::Workplace& place,
                                               const std::shared_ptr<const DayView>& shown);

} // namespace stintbook
