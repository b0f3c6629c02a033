#include "App/CaptureSession.h"

#include <utility>
#include <variant>

#include "Base/Log.h"

namespace stintbook {

namespace {

void logResult(const ShutdownResult& result)
{
    const auto* outcome = std::get_if<CaptureShutdownOutcome>(&result);
    if (outcome == nullptr) {
        log::error("Termination deadline expired before the shutdown flush finished; any evidence still in "
                   "memory is lost");
    } else if (outcome->kind == CaptureShutdownOutcome::Kind::incomplete) {
        log::error("Shutdown flush left {} segment(s) unsaved; the store did not accept them",
                   outcome->unsavedSegmentCount);
    } else if (outcome->kind == CaptureShutdownOutcome::Kind::persisted) {
        log::event("Shutdown flush persisted every observed segment");
    }
}

} // namespace

CaptureSession::CaptureSession(Collaborators collaborators)
    : m_collaborators(collaborators)
    , m_recorder(collaborators.store, collaborators.desktop.providers(),
                 {.timeSource = collaborators.timeSource,
                  .timers = collaborators.desktop.timers(),
                  .capture = collaborators.desktop.executor()},
                 collaborators.configuration, collaborators.pauses)
{
    m_collaborators.desktop.setBeforeSleep(
        [this](std::function<void()> done) { m_recorder.settle(std::move(done)); });
}

CaptureSession::~CaptureSession()
{
    m_collaborators.desktop.end();
}

template <typename Work> void CaptureSession::onCapture(Work work)
{
    m_collaborators.desktop.executor().post([this, work = std::move(work)]() mutable { work(m_recorder); });
}

template <typename Work> void CaptureSession::onMain(Work work) const
{
    m_collaborators.main.post([isAlive = std::weak_ptr(m_isAlive), work = std::move(work)]() mutable {
        if (!isAlive.expired())
            work();
    });
}

void CaptureSession::start(const ObservedContext& context, Recorder::Followers followers)
{
    auto& publishing = m_collaborators.desktop.publishing();
    decltype(followers.activation) activation;
    if (followers.activation)
        activation = [this, follower = std::move(followers.activation)](ApplicationWindow window,
                                                                        const std::string& token) {
            onMain([follower, window, token] { follower(window, token); });
        };
    m_recorder.follow(
        {.status =
             [this, &publishing, follower = std::move(followers.status)](const CaptureStatus& status) {
                 publishing.announceStatus();
                 onMain([follower, status] { follower(status); });
             },
         .deletion = [this, follower = std::move(followers.deletion)] { onMain(follower); },
         .activation = std::move(activation),
         .calendar = [this, follower = std::move(followers.calendar)] { onMain(follower); }});
    onCapture([context, &publishing](Recorder& recorder) {
        recorder.start(context);
        publishing.publish(recorder);
    });
    m_collaborators.desktop.begin();
}

void CaptureSession::observe(const ObservedContext& context)
{
    onCapture([context](Recorder& recorder) { recorder.observe(context); });
}

void CaptureSession::pause(const RequestedPause& pause)
{
    onCapture([pause](Recorder& recorder) { recorder.pause(pause.deadline); });
}

void CaptureSession::resume()
{
    onCapture([](Recorder& recorder) { recorder.resume(); });
}

void CaptureSession::requestAccessibility(std::function<void()> done)
{
    onCapture([this, done = std::move(done)](Recorder& recorder) mutable {
        recorder.requestAccessibility([this, done = std::move(done)] { onMain(done); });
    });
}

void CaptureSession::deleteActivity(const ActivityDataScope& scope, Reply reply, DeletionProgress progress)
{
    DeletionProgress shown;
    if (progress)
        shown = [this, progress = std::move(progress)](double done) {
            onMain([progress, done] { progress(done); });
        };
    onCapture([this, scope, reply = std::move(reply), shown = std::move(shown)](Recorder& recorder) mutable {
        recorder.deleteActivity(
            scope, ActivityDeleting::Reply([this, reply = std::move(reply)](Outcome outcome) mutable {
                onMain([reply = std::move(reply), outcome = std::move(outcome)]() mutable {
                    reply(std::move(outcome));
                });
            }),
            std::move(shown));
    });
}

void CaptureSession::flush(InstanceRequestHandling::Reply<void> reply)
{
    onCapture([this, reply = std::move(reply)](Recorder& recorder) mutable {
        recorder.flush([this, reply = std::move(reply)](std::expected<void, std::string> saved) mutable {
            onMain(
                [reply = std::move(reply), saved = std::move(saved)]() mutable { reply(std::move(saved)); });
        });
    });
}

ShutdownResult CaptureSession::shutdown()
{
    const auto result = BoundedShutdown::run<CaptureShutdownOutcome>([this](const auto& complete) {
        onCapture([complete](Recorder& recorder) { recorder.shutdown(complete); });
    });
    logResult(result);
    return result;
}

} // namespace stintbook
