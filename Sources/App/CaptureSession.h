#pragma once

#include <functional>
#include <memory>

#include "App/Ports/ObservedDesktop.h"
#include "App/Recorder.h"
#include "Capture/BoundedShutdown.h"

namespace stintbook {

using ShutdownResult = BoundedShutdown::Outcome<CaptureShutdownOutcome>;

/// Capture as the main executor meets it, to which this is confined: the recorder, the desktop's thread on which
/// it lives, and the way between the two.
class CaptureSession final : public ActivityDeleting {
public:
    /// All outlive the session.
    struct Collaborators {
        ObservedDesktop& desktop;
        OpenedStore& store;
        CapturePauseStoring& pauses;
        TimeSource& timeSource;
        Executor& main;
        CaptureConfiguration configuration;
    };

    explicit CaptureSession(Collaborators collaborators);
    /// Waits for what is running on the desktop's thread.
    ~CaptureSession() override;
    CaptureSession(const CaptureSession&) = delete;
    CaptureSession& operator=(const CaptureSession&) = delete;

    /// Also writes everything that capture is told as a trace. Before the start; false when the file cannot be
    /// written.
    bool traceTo(const std::filesystem::path& file) { return m_recorder.traceTo(file); }
    /// The followers are told on the main executor.
    void start(const ObservedContext& context, Recorder::Followers followers);
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
    template <typename Work> void onCapture(Work work);
    template <typename Work> void onMain(Work work) const;

    Collaborators m_collaborators;
    Recorder m_recorder;
    /// What reaches the main executor after the session's end finds this gone.
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace stintbook
