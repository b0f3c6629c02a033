#pragma once

#include <chrono>
#include <stop_token>
#include <vector>

#include "Domain/ActivityDataScope.h"
#include "Domain/DeletedActivity.h"
#include "Store/StoreDatabase.h"

/// Deleting recorded history, by the store's owner. A deletion takes two steps, so that capture waits for the
/// first alone.
namespace stintbook {

struct DeletionCourse {
    DeletionProgress progress;
    /// Asked for, a deletion that is not committed yet changes nothing, and the second step is left for the next
    /// start.
    std::stop_token stop;
    /// How long a reader of an older state is waited for.
    std::chrono::milliseconds patience{5000};
};

/// Why a deletion that was asked to stop did not happen.
PersistenceError deletionStopped();

/// Removes a scope's records in one transaction; answers how many local days held observed activity.
///
/// Recorded segments and reviewed items are taken by their time. No segment crosses a day of the zone that it
/// was recorded in, but one from another zone may cross the scope's bounds: it is cut there, so that nothing
/// inside stays and nothing outside is lost. An approval goes when the whole of its day lies in the scope, or all
/// reviewed work of that day did; the approval of a day that lost a part fits that day no more.
Stored<int> deleteActivity(StoreDatabase& database, const ActivityDataScope& scope,
                           const CalendarContext& calendar, const DeletionCourse& course = {});

/// Removes what a committed deletion left in the store's files: in the log, in free pages, and in copies made
/// before a migration, which go whole. Saving goes on meanwhile.
DeletedActivity::Remains eraseDeletedRemains(StoreDatabase& database, const DeletionCourse& course = {});

/// The days of the calendar on which a scope has observed activity, in order.
Stored<std::vector<LocalDay>> recordedDays(StoreDatabase& database, const ActivityDataScope& scope,
                                           const CalendarContext& calendar);

} // namespace stintbook
