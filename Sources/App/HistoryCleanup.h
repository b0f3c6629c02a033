#pragma once

#include <expected>
#include <functional>
#include <memory>
#include <string>

#include "App/ActivityDeletionCoordinator.h"
#include "App/AppPreferences.h"
#include "Base/TimeSource.h"
#include "Domain/CalendarContext.h"

namespace stintbook {

/// Remembers and logs what a cleanup came to.
void noteCleanup(AppPreferences& preferences, Instant at, const DeletedActivity& deleted);
void noteFailedCleanup(const std::string& reason);

/// Deletes the observed activity that the retention window no longer keeps, and remembers when it did. Days
/// that hold none are left alone, and so is everything where history is kept until it is deleted.
///
/// Confined to the executor of its timers, which is that of the deletion.
class HistoryCleanup {
public:
    /// All outlive the cleanup, but for the copies of `calendar`.
    struct Collaborators {
        AppPreferences& preferences;
        ActivityDeleting& deletion;
        std::function<CalendarContext()> calendar;
        TimeSource& timeSource;
        Timers& timers;
    };
    using Outcome = ActivityDeletionCoordinator::Outcome;
    using Done = std::function<void(const Outcome&)>;

    explicit HistoryCleanup(Collaborators collaborators);

    /// From now on where automatic cleanup is on: at once, and after each local midnight. `done` is told of
    /// each cleanup.
    void startAutomatic(Done done = {});
    /// The system's time zone is another one: the next midnight comes at another time.
    void calendarChanged();
    /// One cleanup, asked for. A failure changes nothing; both are logged.
    void run(Done done, DeletionProgress progress = {});

private:
    void cleanAutomatically();
    void scheduleNext();

    Collaborators m_collaborators;
    Done m_done;
    std::unique_ptr<Timers::Scheduled> m_next;
    /// A deletion that ends after the cleanup did finds this gone.
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace stintbook
