#include "App/HistoryDesk.h"

#include <optional>
#include <utility>

#include "App/ActivityDeletionCoordinator.h"
#include "App/HistoryCleanup.h"
#include "App/StatusOfCopy.h"
#include "Base/Try.h"
#include "Store/UnsavedSegmentFile.h"

namespace stintbook {

namespace {

std::unexpected<HistoryKept> kept(const ActivityDeletionProblem& problem)
{
    return std::unexpected(HistoryKept{message(problem)});
}

} // namespace

HistoryDesk::HistoryDesk(Environment environment, RunningInstance& running, AppPreferences& preferences,
                         CalendarContext calendar)
    : m_environment(std::move(environment))
    , m_running(running)
    , m_preferences(preferences)
    , m_calendar(std::move(calendar))
{
}

HistoryDesk::Outcome HistoryDesk::deleteActivity(const ActivityDataScope& scope,
                                                 const DeletionProgress& progress) const
{
    const auto store = OpenedStore::open(m_environment, StoreRole::owner);
    if (store)
        return deleteHere(**store, scope, progress);
    if (const auto* held = std::get_if<StoreHeld>(&store.error()))
        return handOver(*held, scope, progress);
    return std::unexpected(HistoryKept{message(ActivityDeletionProblem(ActivityDeletionUnavailable{})) + " "
                                       + message(store.error())});
}

HistoryDesk::Outcome HistoryDesk::deleteHere(OpenedStore& store, const ActivityDataScope& scope,
                                             const DeletionProgress& progress) const
{
    // What a killed recorder left behind belongs to history, too.
    UnsavedSegmentFile unsaved(store.file());
    if (!unsaved.recover(store.segments()))
        return kept(ActivityDeletionRefused{unsaved.carried().size()});

    InlineExecutor here;
    ActivityDeletionCoordinator coordinator({.store = store.sharedDatabase(),
                                             .writer = nullptr,
                                             .work = std::make_shared<InlineExecutor>(),
                                             .home = here,
                                             .calendar = [this] { return m_calendar; }});
    std::optional<ActivityDeletionCoordinator::Outcome> outcome;
    coordinator.deleteActivity(
        scope, [&](ActivityDeletionCoordinator::Outcome result) { outcome = std::move(result); }, progress);
    if (!*outcome)
        return kept(outcome->error());
    return **outcome;
}

HistoryDesk::Outcome HistoryDesk::handOver(const StoreHeld& held, const ActivityDataScope& scope,
                                           const DeletionProgress& progress) const
{
    const auto copy = statusOfCopyWith(m_running, held.file);
    if (!copy)
        return std::unexpected(HistoryKept{copy.error()});
    if (!*copy)
        return std::unexpected(HistoryKept{message(StoreOpeningProblem(held))});
    auto deleted = m_running.deleteActivity(scope, progress);
    if (!deleted)
        return std::unexpected(HistoryKept{std::move(deleted).error()});
    return *deleted;
}

std::expected<RetentionChangeRequest, RetentionChangeUnknown> HistoryDesk::change(
    const RetentionWindow& chosen, Instant now) const
{
    const auto store = OpenedStore::open(m_environment, StoreRole::guest);
    if (!store)
        return std::unexpected(RetentionChangeUnknown{});
    return retentionChange((*store)->database(), m_preferences.retentionWindow(), chosen, m_calendar, now);
}

HistoryDesk::Outcome HistoryDesk::apply(const RetentionChangeRequest& request,
                                        const DeletionProgress& progress) const
{
    DeletedActivity deleted;
    if (request.scope)
        deleted = TRY(deleteActivity(*request.scope, progress));
    return keep(m_preferences, request.window, deleted);
}

HistoryDesk::Outcome HistoryDesk::cleanUp(Instant now, const DeletionProgress& progress) const
{
    const auto cutoff = retentionCutoff(m_preferences.retentionWindow(), m_calendar, now);
    if (!cutoff)
        return DeletedActivity{};
    auto outcome = deleteActivity(DaysBefore{*cutoff}, progress);
    if (outcome)
        noteCleanup(m_preferences, now, *outcome);
    else
        noteFailedCleanup(outcome.error().sentence);
    return outcome;
}

} // namespace stintbook
