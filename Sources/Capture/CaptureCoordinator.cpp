#include "Capture/CaptureCoordinator.h"

#include <algorithm>
#include <utility>

#include "Base/Log.h"

namespace stintbook {

CaptureCoordinator::CaptureCoordinator(CaptureConfiguration configuration, Collaborators collaborators)
    : m_configuration(configuration)
    , m_pauseStore(collaborators.pauseStore)
    , m_unsavedSegments(collaborators.unsavedSegments)
    , m_builder(*CalendarContext::inZone("UTC")) // until the start says which
    , m_saver(std::move(collaborators.repository), collaborators.capture, collaborators.timers,
              configuration.shutdownRetryPolicy)
{
}

void CaptureCoordinator::start(const CaptureStart& start)
{
    m_hasStarted = true;
    m_now = start.at;
    m_builder.calendarContext = start.calendar;
    m_permission = start.permission;
    m_retainsTitleContext = start.retainsTitleContext;
    m_browserContextEnabled = start.browserContextEnabled;
    m_runtime = CaptureRuntimeState::active();

    if (const auto stored = m_pauseStore.load()) {
        if (stored->deadline && *stored->deadline <= start.at) {
            m_pauseStore.save(std::nullopt);
        } else {
            m_runtime = CaptureRuntimeState::paused(stored->deadline);
            feed(GapBegan{GapReason::capturePaused, start.at});
            if (m_inputFollower)
                m_inputFollower(input::Pause{stored->deadline, stored->length, start.at});
        }
    }
    finishInput();
    log::event("Capture started");
}

void CaptureCoordinator::apply(PipelineInput input)
{
    if (!isRunning())
        return answerWhileNotRunning(input);

    if (m_inputFollower)
        m_inputFollower(input);
    const auto* clockSet = std::get_if<input::ClockSet>(&input);
    advanceTo(clockSet ? clockSet->from : instantOf(input));
    if (!clockSet)
        m_now = instantOf(input);
    std::visit([this](auto& alternative) { applyInput(alternative); }, input);
    finishInput();
}

bool CaptureCoordinator::advanceTo(Instant now)
{
    if (!m_runtime.isPaused() || !m_runtime.until || now < *m_runtime.until)
        return false;
    m_now = std::max(*m_runtime.until, m_now);
    endPause(m_now);
    finishInput();
    return true;
}

void CaptureCoordinator::shutdown(Instant at, ShutDown done)
{
    if (!m_hasStarted)
        return done({CaptureShutdownOutcome::Kind::notRunning});
    if (m_shutdownOutcome)
        return done(*m_shutdownOutcome);
    m_shutdownWaiters.push_back(std::move(done));
    if (m_shutdownWaiters.size() > 1)
        return;

    apply(input::Stop{at});
    m_saver.flush([this](CaptureShutdownOutcome outcome) {
        m_shutdownOutcome = outcome;
        keepUnsaved();
        for (auto& waiter : std::exchange(m_shutdownWaiters, {}))
            waiter(outcome);
    });
}

void CaptureCoordinator::append(std::vector<ActivitySegment>&& closed)
{
    m_mustKeep = m_mustKeep || !closed.empty();
    m_saver.append(std::move(closed));
}

void CaptureCoordinator::finishInput()
{
    // Until the store has answered, only what is kept beside it outlives the process.
    if (m_mustKeep)
        keepUnsaved();
    if (isRunning() && m_configuration.savePolicy == SavePolicy::afterEveryInput)
        m_saver.save();

    const CaptureStatus status{m_runtime, m_permission};
    if (status == m_currentStatus)
        return;
    m_currentStatus = status;
    if (m_statusFollower)
        m_statusFollower(status);
}

void CaptureCoordinator::keepUnsaved()
{
    m_mustKeep = false;
    if (!m_unsavedSegments)
        return;
    auto segments = m_saver.unsaved();
    const auto open = m_builder.extent(m_now);
    segments.insert(segments.end(), open.begin(), open.end());
    m_unsavedSegments->keep(segments);
}

void CaptureCoordinator::answerWhileNotRunning(PipelineInput& input)
{
    if (auto* deletion = std::get_if<input::ResolveForDeletion>(&input)) {
        deletion->reply({unsavedCount()});
    } else if (auto* release = std::get_if<input::ReleaseAfterDeletion>(&input)) {
        applyInput(*release);
        m_saver.save();
    } else if (auto* point = std::get_if<input::CoordinationPoint>(&input)) {
        point->reply();
    }
}

} // namespace stintbook
