#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "Capture/CapturePause.h"
#include "Capture/MachineSuspensions.h"
#include "Capture/PipelineInput.h"
#include "Capture/SegmentBuilder.h"
#include "Capture/SegmentSaver.h"
#include "Capture/UnsavedSegmentKeeping.h"

namespace stintbook {

/// Applies everything that capture is told, one input after the other, to the segment builder, and saves
/// what closes. It owns the decisions: what of an observation is kept, when its user is idle, what a
/// sleep, an inactive session, a pause or a deletion holds back, and what the clock did meanwhile.
///
/// Confined to capture's executor, on which the store's answers come back. It reads no clock: time is
/// what its inputs say, so that a recorded day replays as it was lived.
class CaptureCoordinator {
public:
    struct Collaborators {
        Confined<ActivitySegmentRepository> repository;
        Executor& capture;
        Timers& timers;
        CapturePauseStoring& pauseStore;
        /// Null where nothing outlives the process, as in a replay.
        UnsavedSegmentKeeping* unsavedSegments = nullptr;
    };
    using StatusFollower = std::function<void(const CaptureStatus&)>;
    using InputFollower = std::function<void(const PipelineInput&)>;
    using ShutDown = std::move_only_function<void(CaptureShutdownOutcome)>;

    CaptureCoordinator(CaptureConfiguration configuration, Collaborators collaborators);

    /// Told each new value; not the present one.
    void followStatus(StatusFollower follower) { m_statusFollower = std::move(follower); }
    /// Told each input just before it is applied, a stored pause included.
    void followInputs(InputFollower follower) { m_inputFollower = std::move(follower); }

    /// Begins active, or paused where a pause is stored that has not ended. Once.
    void start(const CaptureStart& start);
    /// Before the start and after a stop nothing comes of an input but its reply.
    void apply(PipelineInput input);
    /// A pause that ends by `now` ends, at its deadline; whether one did. `apply` does this first.
    bool advanceTo(Instant now);
    /// Offers the store what is pending.
    void savePending() { m_saver.save(); }
    /// Stops at the given instant and saves what is pending, within the retry policy. A later call gets the
    /// first one's outcome.
    void shutdown(Instant at, ShutDown done);

    const CaptureStatus& status() const { return m_currentStatus; }
    bool isRunning() const { return m_runtime.phase != CaptureRuntimeState::Phase::stopped; }
    /// Whether a pause, a sleep or an inactive session keeps work from being observed.
    bool isHeld() const { return m_runtime.isPaused() || m_suspensions.isAny(); }
    bool keepsTitles() const
    {
        return m_retainsTitleContext && m_permission == CapturePermissionState::granted;
    }
    bool isBrowserContextEnabled() const { return m_browserContextEnabled; }
    bool isIdle() const { return m_isIdle; }
    const std::optional<SegmentBuilder::OpenSegment>& openSegment() const { return m_builder.open; }
    std::size_t unsavedCount() const { return m_saver.unsavedCount(); }
    /// The end of the last interval that the store took.
    std::optional<Instant> accountedThrough() const { return m_saver.accountedThrough(); }

private:
    struct AwakeSample {
        Instant at;
        Seconds awake;
    };

    void applyInput(input::Frontmost& frontmost);
    void applyInput(const input::Boundary& boundary);
    void applyInput(const input::IdleSample& sample);
    void applyInput(const input::NoObservation& noObservation);
    void applyInput(const input::Pause& pause);
    void applyInput(const input::Resume& resume);
    void applyInput(const input::PermissionChanged& change);
    void applyInput(const input::CalendarContextChanged& change);
    void applyInput(const input::BrowserDomainPolled& poll);
    void applyInput(const input::TitleContextRetained& preference);
    void applyInput(const input::BrowserContextEnabled& preference);
    void applyInput(const input::ClockSet& change);
    void applyInput(input::ResolveForDeletion& deletion);
    void applyInput(input::ReleaseAfterDeletion& deletion);
    void applyInput(input::CoordinationPoint& point);
    void applyInput(const input::Stop& stop);

    void suspend(const ActivitySuspended& suspended);
    void resume(const ActivityResumed& resumed);
    void recoverSleep(const input::IdleSample& sample);
    void detectSleep(const AwakeSample& previous, const input::IdleSample& sample);
    void judgeIdleness(const input::IdleSample& sample);
    void endPause(Instant at);
    void takePendingSnapshot();
    void switchToPendingSnapshot();
    void settle(Instant at);
    void observe(Instant at);
    template <typename Change> void reobserveIfChanged(Change change);

    const FocusedContext& keptContext() const;
    const std::optional<BrowserDomain>& keptBrowserDomain() const;
    template <typename Input> void feed(const Input& input) { append(m_builder.ingest(input)); }
    void append(std::vector<ActivitySegment>&& closed);
    void finishInput();
    void keepUnsaved();
    void answerWhileNotRunning(PipelineInput& input);

    CaptureConfiguration m_configuration;
    CapturePauseStoring& m_pauseStore;
    UnsavedSegmentKeeping* m_unsavedSegments;
    StatusFollower m_statusFollower;
    InputFollower m_inputFollower;

    SegmentBuilder m_builder;
    SegmentSaver m_saver;
    CaptureRuntimeState m_runtime;
    CapturePermissionState m_permission = CapturePermissionState::notGranted;
    bool m_retainsTitleContext = true;
    bool m_browserContextEnabled = false;
    bool m_isIdle = false;

    std::optional<FrontmostApplicationSnapshot> m_currentSnapshot;
    FocusedContext m_currentFocusedContext;
    /// In front, but not to be observed yet.
    std::optional<FrontmostApplicationSnapshot> m_pendingSnapshot;
    FocusedContext m_pendingFocusedContext;
    std::optional<BrowserDomain> m_currentBrowserDomain;
    /// Kept so that feeding the builder reuses its strings.
    ContextObservation m_observation;

    MachineSuspensions m_suspensions;
    std::optional<AwakeSample> m_lastAwakeSample;
    /// The end of the last sleep that was reported.
    std::optional<Instant> m_lastWake;
    /// The instant of the last input.
    Instant m_now;

    /// Something closed, or the open segment's extent is to outlive the process: kept when the input is applied.
    bool m_mustKeep = false;

    CaptureStatus m_currentStatus;
    bool m_hasStarted = false;
    std::optional<CaptureShutdownOutcome> m_shutdownOutcome;
    std::vector<ShutDown> m_shutdownWaiters;
};

} // namespace stintbook
