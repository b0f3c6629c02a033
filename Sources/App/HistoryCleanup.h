#pragma once

#include <functional>
#include <memory>
#include <string>

#include "App/ActivityDeletionCoordinator.h"
#include "App/AppPreferences.h"
#include "Base/Executor.h"
#include "Base/TimeSource.h"
#include "Domain/CalendarContext.h"

namespace stintbook {

/// Remembers and logs what a cleanup came to.
void noteCleanup(AppPreferences& preferences, Instant at, const DeletedActivity& deleted);
void noteFailedCleanup(const std::string& reason);

/// Where automatic cleanup is on, deletes the observed activity that the retention window no longer keeps, and
/// remembers when it did. Both are what the user chose last, also in another process. Days that hold no activity
/// are left alone, and so is everything where history is kept until it is deleted. A failure changes nothing; both
/// outcomes are logged.
///
/// Confined to the executor of its timers, which is that of the deletion and of the preferences.
class HistoryCleanup {
public:
    /// What is referred to outlives the cleanup.
    struct Collaborators {
        AppPreferences& preferences;
        /// What they are stored in, on an executor that may wait for a disk.
        Confined<PreferenceStoring> stored;
        Executor& home;
        ActivityDeleting& deletion;
        std::function<CalendarContext()> calendar;
        TimeSource& timeSource;
        Timers& timers;
    };

    explicit HistoryCleanup(Collaborators collaborators);

    /// From now on: at once, and after each local midnight.
    void start();
    /// The system's time zone is another one: the next midnight comes at another time.
    void calendarChanged();

private:
    void clean();
    void cleanAsChosen();
    void scheduleNext();

    Collaborators m_collaborators;
    std::unique_ptr<Timers::Scheduled> m_next;
    /// What comes back after the cleanup's end finds this gone.
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace stintbook
