#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "Base/Executor.h"
#include "Base/TimeSource.h"
#include "Capture/AccessibilityPermissionMonitor.h"
#include "Capture/BrowserDomainProviding.h"
#include "Capture/CalendarContextProviding.h"
#include "Capture/CaptureCoordinator.h"
#include "Capture/CapturePause.h"
#include "Capture/CaptureWriterBarrier.h"
#include "Capture/FocusedWindowProviding.h"
#include "Capture/IdleStateProviding.h"
#include "Capture/OrderedInputs.h"
#include "Capture/TraceWriter.h"

namespace stintbook {

/// Feeds the coordinator: turns what the providers report, polls and the user's wishes into one stream of
/// inputs whose instants never fall. Nothing is read that would not be kept, and nothing is polled that
/// would not be read.
///
/// Confined to capture's executor but for the writer's barrier, which may be asked from any thread.
/// Titles and domains are read on the accessibility queue; what happens meanwhile waits its turn.
class ObservationPipeline final : public CaptureWriterBarrier {
public:
    /// All outlive the pipeline. Providers report on capture's thread.
    struct Providers {
        FrontmostApplicationProviding& frontmost;
        /// This and the next one on the accessibility queue.
        Confined<FocusedWindowProviding> focusedWindow;
        Confined<BrowserDomainProviding> browserDomain;
        SystemBoundaryProviding& boundaries;
        IdleStateProviding& idle;
        AccessibilityPermissionMonitor& permission;
        CalendarContextProviding& calendar;
    };
    struct Clockwork {
        TimeSource& timeSource;
        Timers& timers;
        Executor& capture;
    };

    ObservationPipeline(CaptureConfiguration configuration, Providers providers, Clockwork clockwork,
                        CaptureCoordinator& coordinator);
    ~ObservationPipeline() override = default;
    ObservationPipeline(const ObservationPipeline&) = delete;
    ObservationPipeline& operator=(const ObservationPipeline&) = delete;

    /// Also writes everything from the start on as a trace. Before the start; the writer outlives the
    /// pipeline.
    void traceTo(TraceWriter& trace);
    /// Told of each change of the system's time zone. Before the start.
    void followCalendar(std::function<void()> follower) { m_calendarFollower = std::move(follower); }
    void start(bool retainsTitleContext, bool browserContextEnabled);
    /// Ends the producers, waits for no reading any more, and has the coordinator save what is left.
    void shutdown(CaptureCoordinator::ShutDown done);

    void pause(const RequestedPause& pause);
    void resume();
    void setRetainsTitleContext(bool isRetained);
    void setBrowserContextEnabled(bool isEnabled);

    void resolveEvidenceForDeletion(Resolved reply) override;
    void releaseAfterDeletion(Released reply) override;

private:
    /// What of the application in front is worth reading now.
    struct Interest {
        bool inTitle = false;
        bool inDomain = false;
    };
    struct SampleTime {
        Instant at;
        Seconds awake;
    };

    Instant now();
    Instant happened(Instant reported);
    void noticeClockSet(Instant wall);

    template <typename Input> void feed(Input input);
    void applyReady();
    void applyNext(PipelineInput input);

    void permissionAnswered(CapturePermissionState state);
    void frontReported(const FrontmostWindow& window);
    void titleChanged(Instant at);
    void observeTitle(Instant at);
    void observeFront(Instant at);
    void readDomain(Instant at);
    void pollIdle();
    /// False when the provider had none.
    bool sampleIdle(Instant at);
    void noticeMissing(Instant at);
    void scheduleBrowserPoll();
    void schedulePauseEnd();
    Interest interest() const;

    CaptureConfiguration m_configuration;
    Providers m_providers;
    Clockwork m_clockwork;
    CaptureCoordinator& m_coordinator;
    TraceWriter* m_trace = nullptr;
    std::function<void()> m_calendarFollower;

    OrderedInputs m_inputs;
    bool m_isApplying = false;
    bool m_isRunning = false;
    Instant m_startedAt;
    /// That of the last input taken in.
    Instant m_lastAt;

    std::optional<OrderedInputs::Place> m_firstPermission;
    std::optional<FrontmostWindow> m_front;
    std::optional<Instant> m_lastTitleAt;
    std::optional<SampleTime> m_lastSample;
    /// Polls since then that came to nothing.
    int m_missedSamples = 0;
    bool m_isReadingDomain = false;

    std::unique_ptr<Timers::Scheduled> m_idlePoll;
    std::unique_ptr<Timers::Scheduled> m_browserPoll;
    std::unique_ptr<Timers::Scheduled> m_laterTitle;
    std::unique_ptr<Timers::Scheduled> m_pauseEnd;
    std::optional<Instant> m_scheduledPauseEnd;
    /// Answers that come after the pipeline's end find this gone.
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace stintbook
