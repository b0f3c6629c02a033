#pragma once

#include <cstddef>
#include <deque>
#include <expected>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <variant>

#include "Base/Executor.h"
#include "Capture/CaptureWriterBarrier.h"
#include "Domain/ActivityDataScope.h"
#include "Domain/DeletedActivity.h"
#include "Domain/PersistenceError.h"
#include "Store/StoreDatabase.h"

namespace stintbook {

/// The store is not open.
struct ActivityDeletionUnavailable { };

/// The store would not take what was recorded last, which might belong to what was to be deleted.
struct ActivityDeletionRefused {
    std::size_t unsavedSegmentCount = 0;
};

/// Why nothing was deleted.
using ActivityDeletionProblem =
    std::variant<ActivityDeletionUnavailable, ActivityDeletionRefused, PersistenceError>;
std::string message(const ActivityDeletionProblem& problem);

/// Whoever deletes recorded history when it is asked to, on the executor on which it is asked.
class ActivityDeleting {
public:
    using Outcome = std::expected<DeletedActivity, ActivityDeletionProblem>;
    using Reply = std::move_only_function<void(Outcome)>;

    virtual ~ActivityDeleting() = default;
    /// Replies once, unless it ends before.
    virtual void deleteActivity(const ActivityDataScope& scope, Reply reply, DeletionProgress progress) = 0;
};

/// Deletes recorded history so that capture neither stops observing nor writes meanwhile what is to go: it
/// settles its evidence first and is released as soon as the records are gone, whatever came of it. One deletion
/// at a time; what is asked for meanwhile waits its turn.
///
/// Confined to the home executor; the store's work runs on another one.
class ActivityDeletionCoordinator final : public ActivityDeleting {
public:
    struct Collaborators {
        /// This process owns it.
        std::shared_ptr<StoreDatabase> store;
        /// Null while capture is not running.
        CaptureWriterBarrier* writer = nullptr;
        /// For the store's work; not the queue on which capture saves, which has to go on.
        std::shared_ptr<Executor> work;
        /// Where replies and progress are told, and on which the coordinator lives; capture's own where there
        /// is a writer.
        Executor& home;
        /// The one in force counts the days of a scope that names none.
        std::function<CalendarContext()> calendar;
        /// Told when activity was deleted, before the reply.
        std::function<void()> deleted = {};
    };

    explicit ActivityDeletionCoordinator(Collaborators collaborators);
    /// Stops.
    ~ActivityDeletionCoordinator() override;
    ActivityDeletionCoordinator(const ActivityDeletionCoordinator&) = delete;
    ActivityDeletionCoordinator& operator=(const ActivityDeletionCoordinator&) = delete;

    void deleteActivity(const ActivityDataScope& scope, Reply reply, DeletionProgress progress = {}) override;
    /// What is not committed by now is not deleted, nor what is asked for later.
    void stop() { m_stop.request_stop(); }

private:
    struct Deletion {
        ActivityDataScope scope;
        Reply reply;
        DeletionProgress progress;
    };

    void startFirst();
    void remove();
    void removed(const Stored<int>& dayCount);
    void release(std::move_only_function<void()> then);
    void end(Outcome outcome);
    template <typename Work, typename Then> void run(Work work, Then then);

    Collaborators m_collaborators;
    /// The first one is under way.
    std::deque<Deletion> m_deletions;
    std::stop_source m_stop;
    /// What comes back after the coordinator's end finds this gone.
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace stintbook
