#include "App/CaptureSession.h"

#include <utility>
#include <variant>

#include <fmt/format.h>

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

CaptureSession::CaptureSession(Collaborators collaborators, RunningCopy::Activation activation)
    : m_collaborators(std::move(collaborators))
    , m_copy(activation ? [this, activation = std::move(activation)](
                              ApplicationWindow window,
                              const std::string& token) { onMain([=] { activation(window, token); }); }
                        : RunningCopy::Activation())
{
    auto& desktop = m_collaborators.desktop;
    desktop.executor().post([this, &desktop] { desktop.publishing().publish(m_copy); });
    desktop.begin();
}

CaptureSession::~CaptureSession()
{
    m_collaborators.desktop.end();
}

template <typename Work> void CaptureSession::onRecorder(Work work)
{
    m_collaborators.desktop.executor().post([this, work = std::move(work)]() mutable {
        if (m_recorder)
            work(*m_recorder);
    });
}

template <typename Work> void CaptureSession::onMain(Work work) const
{
    m_collaborators.main.post([isAlive = std::weak_ptr(m_isAlive), work = std::move(work)]() mutable {
        if (!isAlive.expired())
            work();
    });
}

void CaptureSession::record(OpenedStore& store, const ObservedContext& context, Recorder::Followers followers,
                            Recording begun)
{
    m_collaborators.desktop.executor().post(
        [this, &store, context, followers = std::move(followers), begun = std::move(begun)]() mutable {
            auto problem = begin(store, std::move(followers));
            const bool isBegun = !problem;
            onMain([begun = std::move(begun), problem = std::move(problem)] { begun(problem); });
            if (isBegun)
                m_recorder->start(context);
        });
}

std::optional<std::string> CaptureSession::begin(OpenedStore& store, Recorder::Followers followers)
{
    auto& desktop = m_collaborators.desktop;
    if (!desktop.canSeeApplications())
        return "This desktop does not tell which application is in front, so nothing was recorded.";
    m_recorder.emplace(store, desktop.providers(),
                       Recorder::Clockwork{.timeSource = m_collaborators.timeSource,
                                           .timers = desktop.timers(),
                                           .capture = desktop.executor()},
                       m_collaborators.configuration, m_collaborators.pauses);
    if (const auto& trace = m_collaborators.trace; trace && !m_recorder->traceTo(*trace)) {
        m_recorder.reset();
        return fmt::format("The trace “{}” could not be written, so nothing was recorded.", trace->string());
    }
    m_recorder->follow({.status =
                            [this, follower = std::move(followers.status)](const CaptureStatus& status) {
                                m_collaborators.desktop.publishing().announceStatus();
                                onMain([follower, status] { follower(status); });
                            },
                        .deletion = [this, follower = std::move(followers.deletion)] { onMain(follower); },
                        .calendar = [this, follower = std::move(followers.calendar)] { onMain(follower); }});
    desktop.setBeforeSleep([this](std::function<void()> done) { m_recorder->settle(std::move(done)); });
    m_copy.setRecorder(*m_recorder);
    return std::nullopt;
}

void CaptureSession::observe(const ObservedContext& context)
{
    onRecorder([context](Recorder& recorder) { recorder.observe(context); });
}

void CaptureSession::pause(const RequestedPause& pause)
{
    onRecorder([pause](Recorder& recorder) { recorder.pause(pause.deadline); });
}

void CaptureSession::resume()
{
    onRecorder([](Recorder& recorder) { recorder.resume(); });
}

void CaptureSession::requestAccessibility(std::function<void()> done)
{
    onRecorder([this, done = std::move(done)](Recorder& recorder) mutable {
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
    onRecorder([this, scope, reply = std::move(reply), shown = std::move(shown)](Recorder& recorder) mutable {
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
    onRecorder([this, reply = std::move(reply)](Recorder& recorder) mutable {
        recorder.flush([this, reply = std::move(reply)](std::expected<void, std::string> saved) mutable {
            onMain(
                [reply = std::move(reply), saved = std::move(saved)]() mutable { reply(std::move(saved)); });
        });
    });
}

ShutdownResult CaptureSession::shutdown()
{
    const auto result = BoundedShutdown::run<CaptureShutdownOutcome>([this](const auto& complete) {
        m_collaborators.desktop.executor().post([this, complete] {
            if (m_recorder)
                m_recorder->shutdown(complete);
            else
                complete(CaptureShutdownOutcome{});
        });
    });
    logResult(result);
    return result;
}

} // namespace stintbook
