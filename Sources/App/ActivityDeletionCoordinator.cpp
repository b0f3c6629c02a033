#include "App/ActivityDeletionCoordinator.h"

#include <utility>

#include <fmt/format.h>

#include "Store/ActivityDeletion.h"

namespace stintbook {

namespace {

std::string sentence(const ActivityDeletionUnavailable& /*problem*/)
{
    return "The local store is unavailable, so nothing was deleted.";
}

std::string sentence(const ActivityDeletionRefused& refusal)
{
    return fmt::format("The local store would not accept {} recently recorded interval{}, so nothing was "
                       "deleted. Try again once the store is answering.",
                       refusal.unsavedSegmentCount, refusal.unsavedSegmentCount == 1 ? "" : "s");
}

std::string sentence(const PersistenceError& error)
{
    return message(error) + " Nothing was deleted.";
}

} // namespace

std::string message(const ActivityDeletionProblem& problem)
{
    return std::visit([](const auto& which) { return sentence(which); }, problem);
}

ActivityDeletionCoordinator::ActivityDeletionCoordinator(Collaborators collaborators)
    : m_collaborators(std::move(collaborators))
{
}

ActivityDeletionCoordinator::~ActivityDeletionCoordinator()
{
    stop();
}

/// Has the store's work done elsewhere, and `then(result)` here.
template <typename Work, typename Then> void ActivityDeletionCoordinator::run(Work work, Then then)
{
    DeletionProgress progress;
    if (const auto& wanted = m_deletions.front().progress)
        progress = [&home = m_collaborators.home, report = wanted](double done) {
            home.post([report, done] { report(done); });
        };
    const Confined<StoreDatabase> store(m_collaborators.work, m_collaborators.store);
    store.ask([work = std::move(work), course = DeletionCourse{std::move(progress), m_stop.get_token()}](
                  StoreDatabase& database) { return work(database, course); },
              m_collaborators.home,
              [isAlive = std::weak_ptr(m_isAlive), then = std::move(then)](auto result) mutable {
                  if (!isAlive.expired())
                      then(std::move(result));
              });
}

void ActivityDeletionCoordinator::deleteActivity(const ActivityDataScope& scope, Reply reply,
                                                 DeletionProgress progress)
{
    m_deletions.push_back({scope, std::move(reply), std::move(progress)});
    if (m_deletions.size() == 1)
        startFirst();
}

void ActivityDeletionCoordinator::startFirst()
{
    if (m_stop.stop_requested())
        return end(std::unexpected(ActivityDeletionProblem(deletionStopped())));
    if (m_collaborators.writer == nullptr)
        return remove();
    m_collaborators.writer->resolveEvidenceForDeletion(
        [this, isAlive = std::weak_ptr(m_isAlive)](CaptureWriterBarrierOutcome outcome) {
            if (isAlive.expired())
                return;
            if (outcome.isResolved())
                return remove();
            release([this, outcome] {
                end(std::unexpected(ActivityDeletionRefused{outcome.unsavedSegmentCount}));
            });
        });
}

/// Lets capture write again, then goes on.
void ActivityDeletionCoordinator::release(std::move_only_function<void()> then)
{
    if (m_collaborators.writer == nullptr)
        return then();
    m_collaborators.writer->releaseAfterDeletion(
        [isAlive = std::weak_ptr(m_isAlive), then = std::move(then)]() mutable {
            if (!isAlive.expired())
                then();
        });
}

void ActivityDeletionCoordinator::remove()
{
    run(
        [scope = m_deletions.front().scope,
         calendar = m_collaborators.calendar()](StoreDatabase& store, const DeletionCourse& course) {
            return stintbook::deleteActivity(store, scope, countingCalendar(scope, calendar), course);
        },
        [this](Stored<int> dayCount) {
            release([this, dayCount = std::move(dayCount)] { removed(dayCount); });
        });
}

void ActivityDeletionCoordinator::removed(const Stored<int>& dayCount)
{
    if (!dayCount)
        return end(std::unexpected(ActivityDeletionProblem(dayCount.error())));
    run([](StoreDatabase& store, const DeletionCourse& course) { return eraseDeletedRemains(store, course); },
        [this, count = *dayCount](DeletedActivity::Remains remains) {
            end(DeletedActivity{count, remains});
        });
}

void ActivityDeletionCoordinator::end(Outcome outcome)
{
    if (outcome && m_collaborators.deleted)
        m_collaborators.deleted();
    // Still the first while it is told, so that nothing that is asked for then overtakes those that wait.
    auto reply = std::move(m_deletions.front().reply);
    const std::weak_ptr isAlive(m_isAlive);
    reply(std::move(outcome));
    if (isAlive.expired())
        return;
    m_deletions.pop_front();
    if (!m_deletions.empty())
        startFirst();
}

} // namespace stintbook
