#pragma once

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "App/ActivityDeletionCoordinator.h"
#include "App/EvidenceBarrier.h"
#include "App/OpenedStore.h"
#include "App/Ports/RunningInstance.h"
#include "Base/Executor.h"
#include "Base/TimeSource.h"
#include "Capture/AccessibilityPermissionMonitor.h"
#include "Capture/CaptureConfiguration.h"
#include "Capture/CaptureCoordinator.h"
#include "Capture/CapturePause.h"
#include "Capture/DesktopProviders.h"
#include "Capture/ObservationPipeline.h"
#include "Capture/TraceWriter.h"
#include "Store/UnsavedSegmentFile.h"

namespace stintbook {

/// What of an application in front is recorded beside its name.
struct ObservedContext {
    bool includesTitles = true;
    bool includesDomains = false;

    friend bool operator==(const ObservedContext&, const ObservedContext&) = default;
};

/// Records into a store that this process owns: the coordinator with everything it works with.
///
/// Confined to capture's executor, but for its destruction, which happens when that executor no longer runs. The
/// store is written on a queue of its own.
class Recorder final : public ActivityDeleting {
public:
    struct Clockwork {
        TimeSource& timeSource;
        Timers& timers;
        Executor& capture;
    };

    /// Each is called on capture's thread.
    struct Followers {
        /// Told each new value; not the present one.
        CaptureCoordinator::StatusFollower status;
        /// Recorded activity was deleted, on whose request ever.
        std::function<void()> deletion;
        /// The system's time zone is another one.
        std::function<void()> calendar;
    };

    Recorder(OpenedStore& store, DesktopProviders desktop, Clockwork clockwork,
             CaptureConfiguration configuration, CapturePauseStoring& pauses);

    /// Also writes everything that capture is told as a trace. Before the start; false when the file cannot
    /// be written.
    bool traceTo(const std::filesystem::path& file);

    /// Before the start.
    void follow(Followers followers);
    /// Saves what a killed process left behind, then observes.
    void start(const ObservedContext& context);
    void observe(const ObservedContext& context);
    /// Shows the system's question for accessibility, and calls back when it is known what became of it so far.
    void requestAccessibility(std::function<void()> done);
    /// Calls back when everything that was handed to the store so far is in it, or refused.
    void settle(std::function<void()> done);
    /// Stops observing and saves what is left.
    void shutdown(CaptureCoordinator::ShutDown done);

    void deleteActivity(const ActivityDataScope& scope, ActivityDeleting::Reply reply,
                        DeletionProgress progress) override;

    /// Without the process, which the publisher adds.
    InstanceStatus status() const;
    /// Absent deadline: until resumed.
    void pause(std::optional<Instant> until);
    void resume();
    /// Saves everything that was recorded so far, the open segment up to now included.
    void flush(InstanceRequestHandling::Reply<void> reply);

private:
    OpenedStore& m_store;
    std::vector<std::string> m_sources;
    TimeSource& m_timeSource;
    Executor& m_capture;
    UnsavedSegmentFile m_unsavedSegments;
    Followers m_followers;
    ObservedContext m_context;
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
