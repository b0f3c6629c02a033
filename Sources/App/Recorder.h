#pragma once

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "App/ActivityDeletionCoordinator.h"
#include "App/AppPreferences.h"
#include "App/EvidenceBarrier.h"
#include "App/OpenedStore.h"
#include "App/Ports/RunningInstance.h"
#include "Base/Executor.h"
#include "Base/TimeSource.h"
#include "Capture/AccessibilityPermissionMonitor.h"
#include "Capture/CaptureConfiguration.h"
#include "Capture/CaptureCoordinator.h"
#include "Capture/CapturePause.h"
#include "Capture/ObservationPipeline.h"
#include "Capture/TraceWriter.h"
#include "Store/UnsavedSegmentFile.h"

namespace stintbook {

/// Records into a store that this process owns: the coordinator with everything it works with.
///
/// Confined to capture's executor, but for construction and destruction, which happen while that executor
/// does not run. The store is written on a queue of its own.
class Recorder final : public InstanceRequestHandling {
public:
    /// What the platform provides. All outlive the recorder.
    struct Desktop {
        FrontmostApplicationProviding& frontmost;
        std::shared_ptr<FocusedWindowProviding> focusedWindow;
        std::shared_ptr<BrowserDomainProviding> browserDomain;
        SystemBoundaryProviding& boundaries;
        IdleStateProviding& idle;
        std::shared_ptr<AccessibilityTrustProbing> accessibilityTrust;
        CalendarContextProviding& calendar;
        /// For `status`: "frontmost: x11", ….
        std::vector<std::string> sources;
    };
    struct Clockwork {
        TimeSource& timeSource;
        Timers& timers;
        Executor& capture;
    };

    Recorder(OpenedStore& store, Desktop desktop, Clockwork clockwork, CaptureConfiguration configuration,
             CapturePauseStoring& pauses);

    /// Also writes everything that capture is told as a trace. Before the start; false when the file cannot
    /// be written.
    bool traceTo(const std::filesystem::path& file);

    /// Saves what a killed process left behind, then observes.
    void start(const AppPreferences& preferences);
    /// Calls back when everything that was handed to the store so far is in it, or refused.
    void settle(std::function<void()> done);
    /// Stops observing and saves what is left.
    void shutdown(CaptureCoordinator::ShutDown done);

    /// Told each new value; not the present one.
    void followStatus(CaptureCoordinator::StatusFollower follower);
    /// For deletions and cleanups that this process wishes itself.
    ActivityDeletionCoordinator& deletion() { return m_deletion; }

    InstanceStatus status() override;
    void pause(std::optional<Instant> until) override;
    void resume() override;
    void deleteActivity(const ActivityDataScope& scope, Reply<DeletedActivity> reply,
                        DeletionProgress progress) override;
    void flush(Reply<void> reply) override;
    void activate() override;
    void quit() override;

private:
    OpenedStore& m_store;
    std::vector<std::string> m_sources;
    TimeSource& m_timeSource;
    Executor& m_capture;
    UnsavedSegmentFile m_unsavedSegments;
    std::ofstream m_traceFile;
    std::optional<TraceWriter> m_trace;

    std::shared_ptr<SerialExecutor> m_storeQueue = std::make_shared<SerialExecutor>("store");
    std::shared_ptr<SerialExecutor> m_accessibilityQueue = std::make_shared<SerialExecutor>("accessibility");
    Confined<ActivitySegmentRepository> m_repository;
    CaptureCoordinator m_coordinator;
    AccessibilityPermissionMonitor m_permission;
    ObservationPipeline m_pipeline;
    EvidenceBarrier m_barrier;
    ActivityDeletionCoordinator m_deletion;
};

} // namespace stintbook
