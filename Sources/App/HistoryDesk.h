#pragma once

#include <expected>
#include <string>

#include "App/AppPreferences.h"
#include "App/HistoryRetention.h"
#include "App/OpenedStore.h"
#include "App/Ports/RunningInstance.h"
#include "Base/Instant.h"
#include "Domain/ActivityDataScope.h"
#include "Domain/DeletedActivity.h"

namespace stintbook {

/// Deletes history for a process that does not record: where a running copy holds the store, that does it;
/// otherwise it is done here, and nobody begins to record meanwhile.
class HistoryDesk {
public:
    using Outcome = HistoryOutcome;

    /// All but the environment outlive the desk.
    HistoryDesk(Environment environment, RunningInstance& running, AppPreferences& preferences,
                CalendarContext calendar);

    Outcome deleteActivity(const ActivityDataScope& scope, const DeletionProgress& progress = {}) const;
    /// What another window would remove, to be confirmed before it is applied.
    std::expected<RetentionChangeRequest, RetentionChangeUnknown> change(const RetentionWindow& chosen,
                                                                         Instant now) const;
    /// Removes what the change removes, then stores the window. Where that cannot be stored, what is removed
    /// stays so.
    Outcome apply(const RetentionChangeRequest& request, const DeletionProgress& progress = {}) const;
    /// What the present window no longer keeps; nothing where history is kept until it is deleted.
    Outcome cleanUp(Instant now, const DeletionProgress& progress = {}) const;

private:
    Outcome deleteHere(OpenedStore& store, const ActivityDataScope& scope,
                       const DeletionProgress& progress) const;
    Outcome handOver(const StoreHeld& held, const ActivityDataScope& scope,
                     const DeletionProgress& progress) const;

    Environment m_environment;
    RunningInstance& m_running;
    AppPreferences& m_preferences;
    CalendarContext m_calendar;
};

} // namespace stintbook
