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
/// Confined to its home, which is that of the deletion and of the preferences.
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
    };

    explicit HistoryCleanup(Collaborators collaborators);

    void clean();

private:
    void cleanAsChosen();

    Collaborators m_collaborators;
    /// What comes back after the cleanup's end finds this gone.
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace stintbook
