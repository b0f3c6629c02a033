#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "App/Ports/ObservedDesktop.h"
#include "App/Recorder.h"
#include "App/RunningCopy.h"
#include "Capture/BoundedShutdown.h"

namespace stintbook {

using ShutdownResult = BoundedShutdown::Outcome<CaptureShutdownOutcome>;

/// Capture as the main executor meets it, to which this is confined: the desktop's thread, what others are answered
/// there from its beginning on, the recorder that comes to live on it, and the way between the two executors.
class CaptureSession final : public ActivityDeleting {
public:
    /// All outlive the session.
    struct Collaborators {
        ObservedDesktop& desktop;
        CapturePauseStoring& pauses;
        TimeSource& timeSource;
        Executor& main;
        CaptureConfiguration configuration;
        /// Also writes everything that capture is told as a trace.
        std::optional<std::filesystem::path> trace;
    };

    /// From now on others find this copy. Who wants it to come forward is told on, on the main executor; an empty
    /// activation has no window.
    CaptureSession(Collaborators collaborators, RunningCopy::Activation activation);
    /// Waits for what is running on the desktop's thread.
    ~CaptureSession() override;
    CaptureSession(const CaptureSession&) = delete;
    CaptureSession& operator=(const CaptureSession&) = delete;

    /// A sentence when nothing can be recorded.
    using Recording = std::function<void(std::optional<std::string> problem)>;

    /// Begins to record into the store, which outlives the session. All are called on the main executor. Once.
    void record(OpenedStore& store, const ObservedContext& context, Recorder::Followers followers,
                Recording begun);
    // These do nothing, and call nothing back, where nothing is recorded.
    void observe(const ObservedContext& context);
    void pause(const RequestedPause& pause);
    void resume();
    void requestAccessibility(std::function<void()> done);
    void deleteActivity(const ActivityDataScope& scope, Reply reply, DeletionProgress progress) override;
    /// Saves everything that was recorded so far, the open segment up to now included.
    void flush(InstanceRequestHandling::Reply<void> reply);

    /// Saves what is left, within `BoundedShutdown::deadline`, and logs what came of it. Afterwards nothing more
    /// comes of any call. Once.
    ShutdownResult shutdown();

private:
    std::optional<std::string> begin(OpenedStore& store, Recorder::Followers followers);
    template <typename Work> void onRecorder(Work work);
    template <typename Work> void onMain(Work work) const;

    Collaborators m_collaborators;
    // These two belong to the desktop's thread, until it has ended.
    std::optional<Recorder> m_recorder;
    RunningCopy m_copy;
    /// What reaches the main executor after the session's end finds this gone.
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace stintbook
