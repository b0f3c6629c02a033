#include "App/HistoryCleanup.h"

#include <utility>

#include "App/HistoryRetention.h"
#include "Base/Log.h"

namespace stintbook {

void noteCleanup(AppPreferences& preferences, Instant at, const DeletedActivity& deleted)
{
    preferences.setLastAutomaticCleanup(at);
    if (deleted.dayCount > 0)
        log::event("Retention cleanup removed {} day(s)", deleted.dayCount);
}

void noteFailedCleanup(const std::string& reason)
{
    log::error("Retention cleanup failed: {}", reason);
}

HistoryCleanup::HistoryCleanup(Collaborators collaborators)
    : m_collaborators(std::move(collaborators))
{
}

void HistoryCleanup::startAutomatic(Done done)
{
    m_done = std::move(done);
    cleanAutomatically();
}

void HistoryCleanup::calendarChanged()
{
    if (m_next)
        scheduleNext();
}

void HistoryCleanup::run(Done done, DeletionProgress progress)
{
    auto& preferences = m_collaborators.preferences;
    const auto now = m_collaborators.timeSource.now();
    const auto cutoff = retentionCutoff(preferences.retentionWindow(), m_collaborators.calendar(), now);
    if (!cutoff) {
        if (done)
            done(DeletedActivity{});
        return;
    }
    m_collaborators.deletion.deleteActivity(
        DaysBefore{*cutoff},
        [this, now, isAlive = std::weak_ptr(m_isAlive), done = std::move(done)](const Outcome& outcome) {
            if (isAlive.expired())
                return;
            if (outcome)
                noteCleanup(m_collaborators.preferences, now, *outcome);
            else
                noteFailedCleanup(message(outcome.error()));
            if (done)
                done(outcome);
        },
        std::move(progress));
}

void HistoryCleanup::cleanAutomatically()
{
    scheduleNext();
    if (m_collaborators.preferences.automaticCleanupEnabled())
        run(m_done);
}

void HistoryCleanup::scheduleNext()
{
    const auto midnight = m_collaborators.calendar().nextDayStart(m_collaborators.timeSource.now());
    m_next = m_collaborators.timers.at(midnight, [this] { cleanAutomatically(); });
}

} // namespace stintbook
