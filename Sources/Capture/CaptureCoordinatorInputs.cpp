#include <algorithm>
#include <cstdint>
#include <utility>

#include "Base/Log.h"
#include "Capture/CaptureCoordinator.h"

namespace stintbook {

namespace {

std::int64_t wholeSeconds(Seconds length)
{
    return static_cast<std::int64_t>(length.value);
}

bool isSameApplication(const std::optional<FrontmostApplicationSnapshot>& a,
                       const FrontmostApplicationSnapshot& b)
{
    return a && a->identity.bundleIdentifier == b.identity.bundleIdentifier;
}

} // namespace

// What is in front

void CaptureCoordinator::applyInput(input::Frontmost& frontmost)
{
    // A domain belongs to the browser in front, also while nothing is observed.
    const auto& inFront = m_pendingSnapshot ? m_pendingSnapshot : m_currentSnapshot;
    if (!isSameApplication(inFront, frontmost.snapshot))
        m_currentBrowserDomain.reset();

    m_pendingSnapshot = std::move(frontmost.snapshot);
    m_pendingFocusedContext = std::move(frontmost.focused);
    if (!isHeld() && !m_saver.isHeld())
        switchToPendingSnapshot();
}

void CaptureCoordinator::applyInput(const input::BrowserDomainPolled& poll)
{
    const auto& inFront = m_pendingSnapshot ? m_pendingSnapshot : m_currentSnapshot;
    const bool isOfFront = inFront && inFront->identity.bundleIdentifier == poll.browserBundleIdentifier;
    const bool isKnown = isOfFront && poll.reading.kind == BrowserDomainReading::Kind::domain;
    const auto& domain = isKnown ? poll.reading.domain : std::nullopt;
    if (domain != m_currentBrowserDomain)
        reobserveIfChanged([&] { m_currentBrowserDomain = domain; });
}

void CaptureCoordinator::applyInput(const input::PermissionChanged& change)
{
    reobserveIfChanged([&] { m_permission = change.permission; });
}

void CaptureCoordinator::applyInput(const input::TitleContextRetained& preference)
{
    reobserveIfChanged([&] { m_retainsTitleContext = preference.isRetained; });
}

void CaptureCoordinator::applyInput(const input::BrowserContextEnabled& preference)
{
    reobserveIfChanged([&] {
        m_browserContextEnabled = preference.isEnabled;
        if (!preference.isEnabled)
            m_currentBrowserDomain.reset();
    });
}

void CaptureCoordinator::applyInput(const input::CalendarContextChanged& change)
{
    m_builder.calendarContext = change.calendar;
}

const FocusedContext& CaptureCoordinator::keptContext() const
{
    static const FocusedContext none;
    return keepsTitles() ? m_currentFocusedContext : none;
}

const std::optional<BrowserDomain>& CaptureCoordinator::keptBrowserDomain() const
{
    static const std::optional<BrowserDomain> none;
    // It is that of what is in front, which an observation may still have to wait for.
    const bool isOfPending = m_pendingSnapshot && !isSameApplication(m_currentSnapshot, *m_pendingSnapshot);
    return m_browserContextEnabled && !isOfPending ? m_currentBrowserDomain : none;
}

template <typename Change> void CaptureCoordinator::reobserveIfChanged(Change change)
{
    const auto context = keptContext();
    const auto domain = keptBrowserDomain();
    change();
    if (!isHeld() && (context != keptContext() || domain != keptBrowserDomain()))
        observe(m_now);
}

void CaptureCoordinator::takePendingSnapshot()
{
    if (!m_pendingSnapshot)
        return;
    m_currentSnapshot = std::move(m_pendingSnapshot);
    m_currentFocusedContext = std::move(m_pendingFocusedContext);
    m_pendingSnapshot.reset();
}

void CaptureCoordinator::switchToPendingSnapshot()
{
    // A title that changes by itself does not bring an idle user back.
    const bool isTitleChange = isSameApplication(m_currentSnapshot, *m_pendingSnapshot);
    takePendingSnapshot();
    if (!(isTitleChange && m_isIdle))
        observe(m_now);
}

void CaptureCoordinator::observe(Instant at)
{
    if (!m_currentSnapshot)
        return;
    m_isIdle = false;
    m_observation.application = m_currentSnapshot->identity;
    m_observation.context = keptContext();
    m_observation.browserDomain = keptBrowserDomain();
    m_observation.evidence = m_observation.context.isNone() ? ContextEvidence::applicationOnly
                                                            : ContextEvidence::applicationAndWindow;
    m_observation.observedAt = at;
    feed(m_observation);
}

// Whether its user is there, and whether the machine was awake

void CaptureCoordinator::applyInput(const input::IdleSample& sample)
{
    const auto previous = std::exchange(m_lastAwakeSample, AwakeSample{sample.at, sample.awake});
    if (m_suspensions.sleep)
        recoverSleep(sample);
    else if (previous && !isHeld())
        detectSleep(*previous, sample);
    if (!isHeld())
        judgeIdleness(sample);
    m_mustKeep = true;
}

void CaptureCoordinator::recoverSleep(const input::IdleSample& sample)
{
    const auto& sleep = *m_suspensions.sleep;
    if (!sleep.awakeAtStart)
        return;
    const auto asleep = (sample.at - sleep.startedAt) - (sample.awake - *sleep.awakeAtStart);
    if (asleep <= m_configuration.sleepDetectionThreshold)
        return;
    log::event(
        "Recovered a system sleep whose wake notification never arrived; the machine was asleep for {}s",
        wholeSeconds(asleep));
    resume({SystemResumeCause::systemWake, sample.at});
}

void CaptureCoordinator::detectSleep(const AwakeSample& previous, const input::IdleSample& sample)
{
    if (m_lastWake && previous.at < *m_lastWake)
        return; // that one was reported
    const auto elapsed = sample.at - previous.at;
    const auto missing = elapsed - (sample.awake - previous.awake);
    if (elapsed <= Seconds{} || missing <= m_configuration.sleepDetectionThreshold)
        return;
    log::event("Detected unreported sleep of {}s", wholeSeconds(missing));

    const auto earliest = m_builder.open ? m_builder.open->start : previous.at;
    const auto start = std::max(sample.at - missing, earliest);
    feed(GapBegan{GapReason::systemSleep, start});
    if (m_currentSnapshot)
        observe(sample.at);
    else
        append(m_builder.close(sample.at));
}

void CaptureCoordinator::judgeIdleness(const input::IdleSample& sample)
{
    const bool isIdle = sample.idle >= m_configuration.idleThreshold;
    const auto& open = m_builder.open;
    if (isIdle == m_isIdle) {
        if (!isIdle && open && open->gapReason == GapReason::noObservation)
            observe(sample.at);
        return;
    }

    m_isIdle = isIdle;
    auto lastInput = sample.at - sample.idle;
    if (open && lastInput < open->start) {
        if (isIdle)
            log::event("Idle onset clamped to recorded evidence: last input was {}s behind it",
                       wholeSeconds(open->start - lastInput));
        lastInput = open->start;
    }
    feed(IdleChanged{isIdle, lastInput});
    if (!isIdle)
        observe(lastInput);
}

void CaptureCoordinator::applyInput(const input::NoObservation& noObservation)
{
    if (isHeld())
        return;
    auto since = noObservation.since;
    if (m_builder.open)
        since = std::max(since, m_builder.open->start);
    feed(GapBegan{GapReason::noObservation, since});
}

// What holds work back

void CaptureCoordinator::applyInput(const input::Boundary& boundary)
{
    if (const auto* suspended = std::get_if<ActivitySuspended>(&boundary.boundary))
        suspend({suspended->reason, boundary.at});
    else
        resume({std::get<ActivityResumed>(boundary.boundary).cause, boundary.at});
}

void CaptureCoordinator::suspend(const ActivitySuspended& suspended)
{
    MachineSuspension suspension{.startedAt = suspended.at};
    if (m_lastAwakeSample)
        suspension.awakeAtStart = m_lastAwakeSample->awake + (suspended.at - m_lastAwakeSample->at);
    const bool isSleep = suspended.reason == GapReason::systemSleep;
    (isSleep ? m_suspensions.sleep : m_suspensions.session) = suspension;
    m_suspensions.lastReported = suspended.reason;

    settle(suspended.at);
    if (isSleep)
        m_mustKeep = true;
}

void CaptureCoordinator::resume(const ActivityResumed& resumed)
{
    if (resumed.cause == SystemResumeCause::systemWake) {
        if (m_suspensions.sleep)
            m_lastWake = resumed.at;
        m_suspensions.sleep.reset();
    } else {
        m_suspensions.session.reset();
    }
    settle(resumed.at);
}

void CaptureCoordinator::applyInput(const input::Pause& pause)
{
    m_runtime = CaptureRuntimeState::paused(pause.until);
    settle(pause.at);
    m_pauseStore.save(CapturePause{pause.until, pause.duration});
}

void CaptureCoordinator::applyInput(const input::Resume& resume)
{
    endPause(resume.at);
}

void CaptureCoordinator::endPause(Instant at)
{
    m_runtime = CaptureRuntimeState::active();
    m_pauseStore.save(std::nullopt);
    settle(at);
}

/// Begins the gap of what holds work back now or, where nothing does, observes what is in front.
void CaptureCoordinator::settle(Instant at)
{
    if (m_runtime.isPaused())
        return feed(GapBegan{GapReason::capturePaused, at});
    if (const auto reason = m_suspensions.reason())
        return feed(GapBegan{*reason, at});
    takePendingSnapshot();
    observe(at);
}

void CaptureCoordinator::applyInput(const input::ClockSet& change)
{
    const auto before = std::max(change.from, m_now);
    append(m_builder.close(before));

    // What is remembered happened on the former clock.
    const auto shift = change.at - before;
    if (m_lastAwakeSample)
        m_lastAwakeSample->at = m_lastAwakeSample->at + shift;
    if (m_lastWake)
        m_lastWake = *m_lastWake + shift;
    for (auto* suspension : {&m_suspensions.sleep, &m_suspensions.session}) {
        if (*suspension)
            (*suspension)->startedAt = (*suspension)->startedAt + shift;
    }

    m_now = change.at;
    settle(m_now);
    advanceTo(m_now);
}

// Deletions and the end

void CaptureCoordinator::applyInput(input::ResolveForDeletion& deletion)
{
    append(m_builder.closeAndContinue(m_now));
    keepUnsaved();
    m_saver.hold([this, reply = std::move(deletion.reply)](CaptureWriterBarrierOutcome outcome) mutable {
        // What is deleted must not come back from what was kept of it.
        keepUnsaved();
        reply(outcome);
    });
}

void CaptureCoordinator::applyInput(input::ReleaseAfterDeletion& deletion)
{
    m_saver.release();
    if (isRunning() && !isHeld() && m_pendingSnapshot)
        switchToPendingSnapshot();
    deletion.reply();
}

void CaptureCoordinator::applyInput(input::CoordinationPoint& point)
{
    point.reply();
}

void CaptureCoordinator::applyInput(const input::Stop& stop)
{
    feed(GapBegan{GapReason::captureStopped, stop.at});
    append(m_builder.close(stop.at));
    m_runtime = CaptureRuntimeState::stopped();
    log::event("Capture stopped; {} segment(s) awaiting the final flush", m_saver.unsavedCount());
}

} // namespace stintbook
