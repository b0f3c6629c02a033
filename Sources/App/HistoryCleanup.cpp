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

void HistoryCleanup::clean()
{
    m_collaborators.stored.ask([](PreferenceStoring& stored) { stored.refresh(); }, m_collaborators.home,
                               [this, isAlive = std::weak_ptr(m_isAlive)] {
                                   if (!isAlive.expired())
                                       cleanAsChosen();
                               });
}

void HistoryCleanup::cleanAsChosen()
{
    auto& preferences = m_collaborators.preferences;
    preferences.takeOverRetention();
    if (!preferences.automaticCleanupEnabled())
        return;
    const auto now = m_collaborators.timeSource.now();
    const auto cutoff = retentionCutoff(preferences.retentionWindow(), m_collaborators.calendar(), now);
    if (!cutoff)
        return;
    m_collaborators.deletion.deleteActivity(
        DaysBefore{*cutoff},
        [this, now, isAlive = std::weak_ptr(m_isAlive)](const ActivityDeleting::Outcome& outcome) {
            if (isAlive.expired())
                return;
            if (outcome)
                noteCleanup(m_collaborators.preferences, now, *outcome);
            else
                noteFailedCleanup(message(outcome.error()));
        },
        {});
}

} // namespace stintbook
