#pragma once

#include <map>
#include <memory>
#include <unordered_map>

#include "App/DayBook.h"
#include "Domain/AssignmentDirectory.h"
#include "Rules/AttributionRule.h"
#include "Screens/Review/ReviewRows.h"

namespace stintbook {

/// A day as it was read, with all that is shown of it. Made on the desk's thread, shown on the window's, and never
/// changed.
struct DayView {
    OpenedDay day;
    CalendarContext calendar = CalendarContext::system();
    AssignmentDirectory directory;
    std::map<RuleID, AttributionRule> rules;
    /// Into what was recorded of the day.
    std::unordered_map<SegmentID, const ActivitySegment*> segments;
    std::vector<SubjectRow> subjects;
    std::vector<SpanRow> spans;
    /// Of the edits that can be taken back and done again; empty without one.
    QString undoTitle;
    QString redoTitle;

    /// What the subject was recorded as; empty for work that was added by hand, and where a cleanup removed it.
    std::vector<WorkBlockSegment> lineage(const ReviewSubject& subject) const;
};

Stored<std::shared_ptr<const DayView>> readDay(const DayBook& book, const LocalDay& day, OpenedStore& store,
                                               const EditHistory& history);

} // namespace stintbook
